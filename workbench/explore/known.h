// SPDX-License-Identifier: GPL-3.0-or-later
//
// What stories break although the library does what it is to do: explore/known_findings.toml.
#ifndef OXA_WORKBENCH_EXPLORE_KNOWN_H
#define OXA_WORKBENCH_EXPLORE_KNOWN_H

#include "explore/walk.h"

namespace workbench {

struct KnownStory {
    std::string rule, subject; // patterns
    std::string reason;
    std::vector<std::string> story; // one that shows it, in words
};
const std::vector<KnownStory> &KnownStories();

const KnownStory *KnownOf(const BrokenStory &broken); // null: it is new

} // namespace workbench
#endif
