// SPDX-License-Identifier: GPL-3.0-or-later
//
// The JSON form of sensors: the same in list, show and export.
#ifndef OXA_WORKBENCH_SETS_SET_JSON_H
#define OXA_WORKBENCH_SETS_SET_JSON_H

#include "base/json.h"
#include "sets/decode.h"

namespace workbench {

Json SetJson(const StaticSet &set); // board, profile, counts; sensors are added by the caller
Json SensorJson(const Sensor &sensor, const Decoded &decoded);

} // namespace workbench
#endif
