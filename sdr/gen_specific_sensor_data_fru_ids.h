// SPDX-License-Identifier: Apache-2.0
//
// FRU ids of cards: which are given out.  A failed request gives kNoFruId.
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_FRU_IDS_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_FRU_IDS_H

#include <cstdint>

namespace oxa {

inline constexpr uint8_t kNoFruId = 255;
inline constexpr uint8_t kSubCardFruId = 59;

// Who asks, for the log.
uint8_t TakeSL200FruId(const char *pcFunc,
                       uint8_t ucSlotId); // machines with a FRU id offset: 1 to 8, by slot
void GiveBackSL200FruId(uint8_t ucFruId);
bool TakeSubCardFruId(const char *pcFunc);

} // namespace oxa
#endif
