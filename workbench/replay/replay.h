// SPDX-License-Identifier: GPL-3.0-or-later
//
// A capture played: the entries are called again in their order, and the library gets the recorded answers.
#ifndef OXA_WORKBENCH_REPLAY_REPLAY_H
#define OXA_WORKBENCH_REPLAY_REPLAY_H

#include <string>
#include <vector>

#include "replay/player.h"

namespace workbench {

struct Replayed {
    size_t entries = 0, calls = 0; // that were played
    size_t moved = 0;              // log lines that stand on another line of the source
    std::vector<ReplayDifference> differences;
    std::vector<std::string> notes; // entries that this program does not know or cannot call
    std::string died;               // how the process of the library ended before its time; empty: it did not
};

// In a process of its own.
Replayed Replay(const Capture &capture);

} // namespace workbench
#endif
