// SPDX-License-Identifier: GPL-3.0-or-later
//
// A set as the page has it: what list --json tells of every sensor, every field of its bytes, and why it is there.
#ifndef OXA_WORKBENCH_REPORT_SET_DOCUMENT_H
#define OXA_WORKBENCH_REPORT_SET_DOCUMENT_H

#include <string>
#include <vector>

#include "base/json.h"
#include "sets/decode.h"

namespace workbench {

// Why each sensor is there: {"rows": [...], "asked": [...], "sensors": [{"row": 0, "asked": [3, 4]}, ...]}, for each
// of the runs.
std::vector<Json> WhyOfSets(const std::vector<RunOptions> &runs);

// `differences` as Against::Of gives them, or null.
Json SetDocument(const StaticSet &set, const std::vector<Decoded> &decoded, const Json &why,
                 const Json &differences);

} // namespace workbench
#endif
