// SPDX-License-Identifier: GPL-3.0-or-later
//
// The board files of boards/ and boards/guards, found once for all tests.
#ifndef OXA_TESTS_SUPPORT_BOARDS_H
#define OXA_TESTS_SUPPORT_BOARDS_H

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/board_file.h"
#include "support/build_facts.h"

namespace tests {

// "guards-psu_count_255": the path below boards/ with dashes and without ".toml", as in tests/model/expected.
inline std::vector<std::string> BoardNames() {
    namespace fs = std::filesystem;
    const fs::path boards = InSource("boards");
    std::vector<std::string> names;
    for (const auto &file : fs::recursive_directory_iterator(boards)) {
        if (file.path().extension() != ".toml")
            continue;
        std::string name = fs::relative(file.path(), boards).replace_extension().string();
        std::replace(name.begin(), name.end(), '/', '-');
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

inline std::string BoardPath(std::string name) {
    const size_t dash = name.find('-');
    if (dash != std::string::npos)
        name[dash] = '/';
    return InSource("boards/" + name + ".toml");
}

inline sim::Board LoadBoard(const std::string &name) {
    return sim::LoadBoard(BoardPath(name)).board;
}

// The board with the calls that its file lets fail.
inline void StartBoard(const std::string &name) {
    const sim::BoardFile file = sim::LoadBoard(BoardPath(name));
    sim::Start(file.board);
    for (const sim::Fault &fault : file.faults)
        sim::AddFault(fault);
}

} // namespace tests
#endif
