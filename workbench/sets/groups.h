// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which part of the machine a static sensor is counted for.
#ifndef OXA_WORKBENCH_SETS_GROUPS_H
#define OXA_WORKBENCH_SETS_GROUPS_H

#include <string>
#include <vector>

#include "sets/static_set.h"

namespace workbench {

// In the order in which summaries show them; the first one is what no other group claims.
const std::vector<std::string> &GroupNames();
const std::string &GroupOf(const Sensor &sensor);

} // namespace workbench
#endif
