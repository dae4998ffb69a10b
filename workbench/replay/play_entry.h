// SPDX-License-Identifier: GPL-3.0-or-later
//
// Calls a function of the library with what a capture says that it was given.
#ifndef OXA_WORKBENCH_REPLAY_PLAY_ENTRY_H
#define OXA_WORKBENCH_REPLAY_PLAY_ENTRY_H

#include <string>

#include "replay/capture.h"
#include "replay/player.h"

namespace workbench {

// Empty, or why it cannot be called.
std::string PlayEntry(const CapturedEntry &entry, Player &player);

} // namespace workbench
#endif
