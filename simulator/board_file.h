// SPDX-License-Identifier: GPL-3.0-or-later
//
// Reads a board description (TOML) into a Board.  Everything wrong in the file is told by one BoardError, a line for
// each mistake: "boards/x.toml:12:1: unknown key 'cuont' in [dimms]; did you mean 'count'?".  boards/README.md documents
// the keys.
#ifndef OXA_SIMULATOR_BOARD_FILE_H
#define OXA_SIMULATOR_BOARD_FILE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/board.h"
#include "simulator/board_keys.h"
#include "simulator/simulator.h"

namespace sim {

struct Place { // in a file, counted from 1; line 0: the file as a whole
    uint32_t line = 0, column = 0;
};

struct Mistake {
    std::string path;
    Place place;
    std::string wrong, right; // what is wrong, what would be right

    std::string Text() const; // one line
};

constexpr size_t kMostMistakes = 20; // that are told of a file

class BoardError : public std::runtime_error {
public:
    explicit BoardError(std::vector<Mistake> mistakes);
    const std::vector<Mistake> &Mistakes() const { // in the order of the file
        return mistakes_;
    }

private:
    std::vector<Mistake> mistakes_;
};

struct BoardFile {
    Board board;
    std::vector<Mistake> notes;              // what may be so, but can have no effect
    std::vector<Fault> faults;               // the [[fault]] tables: what a teaching board lets go wrong
    std::shared_ptr<const BoardLines> lines; // where its keys stand
};

// Reads the file once: it may be a pipe.
BoardFile LoadBoard(const std::string &path);
BoardFile LoadBoardText(const std::string &text, const std::string &shown_path);

// How places of DIMMs are counted: dimms.dimms_per_cpu, dimms.slots_per_channel.
struct DimmPlaces {
    uint8_t per_cpu = 0; // 0: counting does not start again at the next CPU
    uint8_t per_channel = 2;
};
// What a pattern such as "{letter}{slot}" names the DIMM; nothing when it is no pattern.
std::optional<std::string> DimmNameByPattern(std::string_view pattern, uint32_t dimm,
                                             const DimmPlaces &places);

// Every key that a board file may hold, section by section in the order of the README.
struct BoardKey {
    std::string section; // "cpus", "disks.backplane", "" for the sections themselves
    std::string key;     // "*": any key of the form that `expected` tells
    std::string expected;
};
std::vector<BoardKey> BoardKeys();

} // namespace sim
#endif
