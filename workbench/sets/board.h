// SPDX-License-Identifier: GPL-3.0-or-later
//
// The board that a command was given.
#ifndef OXA_WORKBENCH_SETS_BOARD_H
#define OXA_WORKBENCH_SETS_BOARD_H

#include <string>

#include "simulator/board_file.h"

namespace workbench {

// "capture:FILE" is the machine on which it was recorded.  Read when it is asked for first, then kept: a pipe gives its board once, and commands that need several sets ask for
// it again.  InputError with a line for each mistake.
const sim::BoardFile &BoardOf(const std::string &path);

// The name that the file gives the board, to stand behind its path: ' ("rack 7")'.  Empty without one.
std::string NameBehind(const sim::Board &board, const std::string &path);
std::string BoardText(const std::string &path); // path and name

} // namespace workbench
#endif
