// SPDX-License-Identifier: GPL-3.0-or-later
//
// "capture:FILE" in place of a board description: the machine on which it was recorded.
#ifndef OXA_WORKBENCH_REPLAY_CAPTURED_BOARD_H
#define OXA_WORKBENCH_REPLAY_CAPTURED_BOARD_H

#include <string>

#include "replay/machine.h"
#include "simulator/board_file.h"

namespace workbench {

bool NamesCapture(const std::string &board);

// The board that gives the answers.  An answer that no board file can say (a name that is not printable, a second fan
// of one number) is among the unsaid.
CapturedMachine MachineOf(const Capture &capture);

// The description as board-from writes it; InputError for a file that is no capture.
std::string CapturedBoardText(const Capture &capture, const CapturedMachine &machine);

// Of a name that NamesCapture; BoardError when the machine's answers make no board.
sim::BoardFile CapturedBoard(const std::string &board);

} // namespace workbench
#endif
