// SPDX-License-Identifier: Apache-2.0
//
// What names the leak sensor: the static record is built with these three numbers, and leakage events ask the
// sensor directory for them.
#ifndef OXA_SDR_LEAKAGE_KEY_H
#define OXA_SDR_LEAKAGE_KEY_H

#include <cstdint>

namespace oxa {

inline constexpr uint8_t kLeakageEntityId = 0x1E;   // cooling unit
inline constexpr uint8_t kLeakageSensorType = 0x0A; // cooling device
inline constexpr uint8_t kLeakageEventType = 0x03;  // state asserted, deasserted

} // namespace oxa
#endif
