// SPDX-License-Identifier: Apache-2.0
//
// FRU ids of cards: which are given out.  A failed request gives kNoFruId.
#ifndef OXA_SPECIFIC_SENSORS_FRU_IDS_H
#define OXA_SPECIFIC_SENSORS_FRU_IDS_H

#include <cstdint>

namespace oxa {

inline constexpr uint8_t kNoFruId = 255;
inline constexpr uint8_t kSubCardFruId = 59;

// pcFunc: who asks, for the log.
uint8_t TakeSL200FruId(const char *pcFunc, uint8_t ucSlotId); // 1 to 8, by the slot
bool TakeSubCardFruId(const char *pcFunc);

} // namespace oxa
#endif
