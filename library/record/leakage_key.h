// SPDX-License-Identifier: Apache-2.0
//
// What names the leak sensor: the static record is built with these three numbers, and leakage events ask the
// sensor directory for them.
#ifndef OXA_RECORD_LEAKAGE_KEY_H
#define OXA_RECORD_LEAKAGE_KEY_H

#include "library/record/entities.h"
#include "library/record/sensor_types.h"

namespace oxa {

inline constexpr uint8_t kLeakageEntityId = kEntityCoolingUnit;
inline constexpr uint8_t kLeakageSensorType = kTypeCoolingDevice;
inline constexpr uint8_t kLeakageEventType = kEventState;

} // namespace oxa
#endif
