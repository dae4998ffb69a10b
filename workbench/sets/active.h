// SPDX-License-Identifier: GPL-3.0-or-later
//
// Thresholds in force at a BMC that are not the record's: somebody set them.
#ifndef OXA_WORKBENCH_SETS_ACTIVE_H
#define OXA_WORKBENCH_SETS_ACTIVE_H

#include <string>
#include <vector>

#include "base/json.h"
#include "sets/decode.h"

namespace workbench {

// "UC 50 °C, active 47 °C: set by a user", a line for each; empty: all are the record's, or no BMC was asked.
std::vector<std::string> ActiveLines(const Decoded &sensor);

// "In force at bmc://10.0.0.1:" and the lines below; nothing for none.
std::string ActiveText(const std::vector<Decoded> &sensors, const std::string &where);

// [{"name", "threshold", "record", "active"}]; null when no BMC was asked.
Json ActiveJson(const std::vector<Decoded> &sensors);

} // namespace workbench
#endif
