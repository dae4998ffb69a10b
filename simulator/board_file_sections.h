// SPDX-License-Identifier: GPL-3.0-or-later
//
// The keys of a board file, section by section.  Only board_file*.cpp and workbench/runtime/toml_file.h include this.
#ifndef OXA_SIMULATOR_BOARD_FILE_SECTIONS_H
#define OXA_SIMULATOR_BOARD_FILE_SECTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/board_file_rules.h"

namespace sim::rules {

// How the file names DIMMs; becomes Dimms::names.
struct DimmNaming {
    std::string pattern;            // "{letter}{slot}"; empty: default names
    std::vector<std::string> names; // of the first DIMMs; the others follow the pattern
    DimmPlaces places;
};

// What a file says, before conveniences are spelled out.
struct Draft {
    Board board;
    std::vector<Mistake> notes;
    std::vector<Fault> faults;
    DimmNaming dimm_naming;
    std::vector<uint8_t> plain_pcie_slots; // pcie.slots
    std::vector<PcieSlot> pcie_slots;      // [[pcie.slot]]
};

inline constexpr const char *kBoardExample = "a board file such as boards/two_socket_2u.toml";

Draft ReadBoard(const toml::table &table, const std::string &shown_path); // BoardError
Rules FileRules(Draft &draft);
// What a key of a table whose keys are numbers means, whether it is written as number or as word.
std::optional<uint32_t> KeyNumber(const std::string &section, std::string_view key);
Rules DimmRules(Draft &draft);
void NameDimms(Draft &draft, const Where &where, const toml::table &table);

} // namespace sim::rules
#endif
