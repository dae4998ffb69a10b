// SPDX-License-Identifier: GPL-3.0-or-later
//
// The page: one HTML file that needs nothing else.  Its markup is always the same; everything that is told of sensors
// stands in it as JSON.
#ifndef OXA_WORKBENCH_REPORT_PAGE_H
#define OXA_WORKBENCH_REPORT_PAGE_H

#include <string>
#include <vector>

#include "base/json.h"

namespace workbench {

// `report` lists the sets, `sets` has the document of each of them, null for one that could not be built.
std::string PageText(const Json &report, const std::vector<Json> &sets);

} // namespace workbench
#endif
