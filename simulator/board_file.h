// SPDX-License-Identifier: GPL-3.0-or-later
//
// Reads a board description (TOML) into a Board.  Anything wrong in the file is a BoardError whose text is
// one line: "boards/x.toml:12: unknown key 'cuont' in [dimms]; did you mean 'count'?".  A fault of the file
// as a whole (it cannot be read) is told for line 0.  boards/README.md documents the keys.
#ifndef OXA_SIMULATOR_BOARD_FILE_H
#define OXA_SIMULATOR_BOARD_FILE_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/board.h"
#include "simulator/simulator.h"

namespace sim {

struct BoardError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Board LoadBoardFile(const std::string &path);
Board LoadBoardText(const std::string &text, const std::string &shown_path); // for tests

// The [[fault]] tables of the same file: what a teaching board lets go wrong.
std::vector<Fault> LoadBoardFaults(const std::string &path);
std::vector<Fault> LoadBoardFaultsText(const std::string &text, const std::string &shown_path);

// The name of a DIMM that has none of its own: channel letter and slot in the channel, two slots to a
// channel: "A0", "A1", "B0", ... "Z1", "AA0", ...
std::string DefaultDimmName(uint32_t dimm);

// Every key that a board file may hold, section by section in the order of the README.
struct BoardKey {
    std::string section; // "cpus", "disks.backplane", "" for the sections themselves
    std::string key;     // "*": any key of the form that `expected` tells
    std::string expected;
};
std::vector<BoardKey> BoardKeys();

} // namespace sim
#endif
