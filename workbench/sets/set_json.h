// SPDX-License-Identifier: GPL-3.0-or-later
//
// The JSON form of sensors: the same in list, show and export.
#ifndef OXA_WORKBENCH_SETS_SET_JSON_H
#define OXA_WORKBENCH_SETS_SET_JSON_H

#include "base/json.h"
#include "sets/decode.h"

namespace workbench {

Json ProfileJson(uint32_t id);                    // {"name": "kestrin", "id": 1}
std::string LowerKey(const Threshold &threshold); // "lnr"
Json SetJson(const StaticSet &set);               // board, profile, counts; sensors are added by the caller
Json ThresholdsJson(const Decoded &decoded); // all six, null where the readable mask says that there is none
Json SensorJson(const Sensor &sensor, const Decoded &decoded);

} // namespace workbench
#endif
