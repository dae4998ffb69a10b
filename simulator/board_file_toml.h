// SPDX-License-Identifier: GPL-3.0-or-later
//
// A TOML file as a table: boards, stories, descriptions.
#ifndef OXA_SIMULATOR_BOARD_FILE_TOML_H
#define OXA_SIMULATOR_BOARD_FILE_TOML_H

#include <memory>
#include <string>

#include "simulator/toml_text.h"

namespace sim {

// BoardError when the file cannot be read, is too long (input.h) or is no TOML; `example` is one that can:
// "a board file such as boards/two_socket_2u.toml".
toml::table LoadToml(const std::string &path, const std::string &example);
toml::table ParseToml(const std::string &text, const std::string &shown_path);

class BoardLines;
std::shared_ptr<const BoardLines> LinesOf(toml::table &&table);

} // namespace sim
#endif
