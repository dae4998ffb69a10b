// SPDX-License-Identifier: GPL-3.0-or-later
//
// All stories up to a length, each state once: level by level, so that the first story that breaks something is the
// shortest.
#ifndef OXA_WORKBENCH_EXPLORE_WALK_H
#define OXA_WORKBENCH_EXPLORE_WALK_H

#include "explore/move.h"

namespace workbench {

// A step that breaks what held before it.
struct BrokenStory {
    std::string rule;    // "one-record"
    std::string subject; // "psu comes; after record-file no-entry": its last step, and what was broken before
    std::string text;    // what is broken
    std::vector<Move> moves;
};

struct WalkResult {
    size_t states = 0;               // different ones, the first among them
    size_t steps = 0;                // that were taken from them
    std::vector<size_t> levels;      // new states after so many steps
    std::vector<BrokenStory> broken; // the shortest first; each rule and subject once
};

// Learns the names of the parts' records.  InputError for a part that the library does not add on a fresh machine.  Files
// must be kept in memory.
void LearnNames(World &world);

WalkResult Walk(const World &world, unsigned depth);

} // namespace workbench
#endif
