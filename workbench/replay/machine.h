// SPDX-License-Identifier: GPL-3.0-or-later
//
// The machine behind a capture: the board that gives the answers which were recorded.
#ifndef OXA_WORKBENCH_REPLAY_MACHINE_H
#define OXA_WORKBENCH_REPLAY_MACHINE_H

#include <string>
#include <vector>

#include "replay/asked.h"
#include "replay/capture.h"
#include "simulator/board.h"
#include "simulator/simulator.h"

namespace workbench {

struct CapturedMachine {
    sim::Board board;
    std::vector<sim::Fault> faults;  // calls that failed, and answers that no key gives
    std::vector<std::string> unsaid; // answers that a board cannot give, a line each
};

// What a question was answered first counts; one that is answered otherwise later is among the unsaid.  `questions`: those
// of the capture, or some of them.  Without the files.
CapturedMachine MachineOf(const Capture &capture, const std::vector<AskedOnce> &questions);

} // namespace workbench
#endif
