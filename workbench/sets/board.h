// SPDX-License-Identifier: GPL-3.0-or-later
//
// The board that a command was given.
#ifndef OXA_WORKBENCH_SETS_BOARD_H
#define OXA_WORKBENCH_SETS_BOARD_H

#include <string>

#include "simulator/board_file.h"

namespace workbench {

// Read when it is asked for first, then kept: a pipe gives its board once, and commands that need several sets ask for
// it again.  InputError with a line for each mistake.
const sim::BoardFile &BoardOf(const std::string &path);

} // namespace workbench
#endif
