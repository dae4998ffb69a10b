// SPDX-License-Identifier: GPL-3.0-or-later
//
// TOML files of the commands about run time, read with the rules that board files are read with: a wrong key or
// value is one line with file, line, column and the nearest known key.  Only description*.cpp and scenario/ include
// this.
#ifndef OXA_WORKBENCH_RUNTIME_TOML_FILE_H
#define OXA_WORKBENCH_RUNTIME_TOML_FILE_H

#include <string>

#include "base/errors.h"
#include "simulator/board_file_sections.h"
#include "simulator/board_file_toml.h"

namespace workbench {

// The reader's errors as InputError.
template <class Function> auto AsInput(Function read) {
    try {
        return read();
    } catch (const sim::BoardError &error) {
        throw InputError(error.what());
    }
}

// Hands on what a word of the command line would be in a TOML file: a number, else a text.
template <class Function> void AsNode(const std::string &word, Function use) {
    if (const auto number = sim::rules::ParseNumber(word))
        use(toml::value<int64_t>(*number));
    else
        use(toml::value<std::string>(word));
}

} // namespace workbench
#endif
