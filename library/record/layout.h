// SPDX-License-Identifier: Apache-2.0
//
// Numbers of a sensor data record and the rule that turns thresholds into event and reading masks.
#ifndef OXA_RECORD_LAYOUT_H
#define OXA_RECORD_LAYOUT_H

#include <cstddef>
#include <cstdint>

#include "oxa/records.h"

namespace oxa {

inline constexpr uint8_t kRecordFull = 0x01;
inline constexpr uint8_t kRecordCompact = 0x02;
inline constexpr uint8_t kRecordFruLocator = 0x11;
inline constexpr uint8_t kSdrVersion = 0x51;
inline constexpr uint8_t kOwnerBmc = 0x20;
inline constexpr uint8_t kIdTypeAscii = 0xC0; // ID string type/length: 8-bit ASCII plus the length
inline constexpr uint8_t kNameMax = 16;
inline constexpr uint8_t kNameFill = 0xFF;
inline constexpr uint8_t kSdrHeaderSize = 5; // what the record length byte does not count
inline constexpr uint8_t kFullHeadSize = FULL_SDR_NAME;
inline constexpr uint8_t kCompactHeadSize = COMPACT_SDR_NAME;
inline constexpr uint8_t kFullBaseLength = FULL_SDR_NAME - kSdrHeaderSize; // record length without the name
inline constexpr uint8_t kCompactBaseLength =
    COMPACT_SDR_NAME - kSdrHeaderSize; // the same of a compact record
static_assert(kFullBaseLength == 43 && kCompactBaseLength == 27);

inline constexpr uint8_t kInstanceBase = 0x60;     // first device-relative number of a system entity
inline constexpr uint8_t kInstanceRelative = 0x80; // bit 7: instance relative to its own controller

// ---- thresholds and masks ---------------------------------------------------------------------------------

// What one threshold adds to SDR bytes 14 to 17, in the order of the bitmap's bits (LNC LC LNR UNC UC UNR).
struct ThresholdMask {
    uint8_t aucMask[4];
    uint8_t ucOffset; // SDR byte of the threshold itself
};
constexpr ThresholdMask kThresholdMasks[6] = {
    {{0x01, 0x10, 0x01, 0x00}, FULL_SDR_LNC}, {{0x04, 0x20, 0x04, 0x00}, FULL_SDR_LC},
    {{0x10, 0x40, 0x10, 0x00}, FULL_SDR_LNR}, {{0x80, 0x00, 0x80, 0x10}, FULL_SDR_UNC},
    {{0x00, 0x02, 0x00, 0x22}, FULL_SDR_UC},  {{0x00, 0x08, 0x00, 0x48}, FULL_SDR_UNR},
};

// Widens the masks of a full record by the thresholds of ucBits; bytes 18 and 19 take the bits themselves.
constexpr void SetThresholdMasks(uint8_t *pucSDR, uint8_t ucBits) {
    if (ucBits == 0)
        return;
    for (uint8_t ucBit = 0; ucBit < 6; ++ucBit)
        for (uint8_t uc = 0; (ucBits >> ucBit & 1) && uc < 4; ++uc)
            pucSDR[SDR_ASSERT_MASK + uc] =
                static_cast<uint8_t>(pucSDR[SDR_ASSERT_MASK + uc] | kThresholdMasks[ucBit].aucMask[uc]);
    pucSDR[SDR_READING_MASK] = ucBits;
    pucSDR[SDR_READING_MASK + 1] = ucBits;
}

} // namespace oxa
#endif
