// SPDX-License-Identifier: GPL-3.0-or-later
//
// Records of a repository that are no sensors with readings: locators, event-only records, associations, OEM records.
#ifndef OXA_WORKBENCH_SETS_ASIDE_H
#define OXA_WORKBENCH_SETS_ASIDE_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/json.h"
#include "sets/static_set.h"

namespace workbench {

// A record of at least its header.  `why`: a sensor's record that cannot be read, and what is wrong with it.
AsideRecord Aside(size_t place, std::span<const uint8_t> record, const std::string &why = "");

// "4 FRU locators, 1 OEM record"; empty for none.
std::string AsideCount(const std::vector<AsideRecord> &records);

// "set aside: 4 FRU locators, 1 OEM record" as a line; nothing for none.
std::string AsideLine(const StaticSet &set);

Json AsideJson(const std::vector<AsideRecord> &records);

} // namespace workbench
#endif
