// SPDX-License-Identifier: GPL-3.0-or-later
//
// A story that was walked, as a file for oxa-sensors scenario.
#ifndef OXA_WORKBENCH_EXPLORE_STORY_H
#define OXA_WORKBENCH_EXPLORE_STORY_H

#include "explore/walk.h"

namespace workbench {

// `folder`: where the file will lie; the board is looked for from there.
std::string StoryToml(const World &world, const BrokenStory &story, const std::string &folder);

} // namespace workbench
#endif
