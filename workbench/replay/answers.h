// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every function that the library imports, answered by the player of the entry that runs.
#ifndef OXA_WORKBENCH_REPLAY_ANSWERS_H
#define OXA_WORKBENCH_REPLAY_ANSWERS_H

#include "replay/player.h"

namespace workbench {

// From now on the library of this process asks players instead of the simulated platform; see RedirectLibrary.
void LetPlayersAnswer();

// Who answers; until another one is named, he must live.
void UsePlayer(Player *player);

} // namespace workbench
#endif
