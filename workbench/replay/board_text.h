// SPDX-License-Identifier: GPL-3.0-or-later
//
// A board as a board file says it: what has its default is left out.
#ifndef OXA_WORKBENCH_REPLAY_BOARD_TEXT_H
#define OXA_WORKBENCH_REPLAY_BOARD_TEXT_H

#include <string>
#include <vector>

#include "simulator/board.h"
#include "simulator/simulator.h"

namespace workbench {

std::string BoardText(const sim::Board &board, const std::vector<sim::Fault> &faults);

} // namespace workbench
#endif
