// SPDX-License-Identifier: GPL-3.0-or-later
//
// The state that a story has come to: what makes two of them equal, and what is broken in one.
#ifndef OXA_WORKBENCH_EXPLORE_STATE_H
#define OXA_WORKBENCH_EXPLORE_STATE_H

#include "explore/life.h"

namespace workbench {

struct Broken {
    std::string rule; // "record-file no-entry"
    std::string text; // "[PSU_1]: record 4 ('PSU1_FRU') of the repository is not recorded"
};

struct WalkState {
    uint64_t digest = 0;
    std::vector<Broken> broken;
};

// Of the machine as it stands in this process.  Equal are states that differ in record ids and in the order of records,
// slots, sections and disks of the registry only: the library tells none of them apart by these.
WalkState Judge(const World &world, const Life &life);

} // namespace workbench
#endif
