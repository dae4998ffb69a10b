// SPDX-License-Identifier: Apache-2.0
//
// How a sensor data record is laid out: the bytes of full and compact records from a few meaningful fields,
// the rule that turns thresholds into event and reading masks, and the templates that the run-time generators
// start from.  Everything here is worked out by the compiler.
#ifndef OXA_SDR_LAYOUT_H
#define OXA_SDR_LAYOUT_H

#include <cstddef>
#include <cstdint>

#include "oxa/exports.h"

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

// Raw thresholds in the order of SDR bytes 36 to 41.
struct Limits {
    uint8_t ucUNR = 0, ucUC = 0, ucUNC = 0, ucLNR = 0, ucLC = 0, ucLNC = 0;
};

// A template announces the thresholds that it gives a value.
constexpr uint8_t LimitBits(const Limits &t) {
    return static_cast<uint8_t>((t.ucLNC ? THRESH_BIT_LNC : 0) | (t.ucLC ? THRESH_BIT_LC : 0) |
                                (t.ucLNR ? THRESH_BIT_LNR : 0) | (t.ucUNC ? THRESH_BIT_UNC : 0) |
                                (t.ucUC ? THRESH_BIT_UC : 0) | (t.ucUNR ? THRESH_BIT_UNR : 0));
}

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

// ---- building a record's head at compile time -------------------------------------------------------------

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void thresholds_out_of_order();
void exponent_out_of_range();

// What a reading is: sensor type, unit and conversion (M x raw + B) x 10^R.
struct Reading {
    uint8_t ucSensorType = 0;
    uint8_t ucUnits1 = 0x00; // 0x80 two's complement, 0x01 percentage, 0x02 rate by the modifier unit
    uint8_t ucBaseUnit = 0;
    uint8_t ucModifierUnit = 0;
    uint8_t ucM = 1;
    uint8_t ucB = 0;
    int sdwR = 0;
};

inline constexpr uint8_t kUnitsSigned = 0x80;
inline constexpr uint8_t kUnitsPercent = 0x01;
inline constexpr uint8_t kUnitsRate = 0x02; // base unit per modifier unit
inline constexpr Reading kCelsius = {.ucSensorType = 0x01, .ucUnits1 = kUnitsSigned, .ucBaseUnit = 0x01};
constexpr Reading Volts(uint8_t ucM, int sdwR) {
    return {.ucSensorType = 0x02, .ucBaseUnit = 0x04, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading Amperes(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = 0x03, .ucBaseUnit = 0x05, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading Rpm(uint8_t ucM) {
    return {.ucSensorType = 0x04, .ucBaseUnit = 0x12, .ucM = ucM};
}
constexpr Reading Watts(uint8_t ucM, uint8_t ucSensorType = 0x08) {
    return {.ucSensorType = ucSensorType, .ucBaseUnit = 0x06, .ucM = ucM};
}

struct FullFields {
    uint8_t ucEntityId = 0;
    uint8_t ucEntityInstance = kInstanceBase;
    Reading tReading = {};
    Limits tLimits = {};
    uint8_t ucEventType = 0x01; // threshold
    uint8_t ucHysteresis = 3;
    // Departures: a range that does not follow from the sign, and the masks of a discrete sensor in a full
    // record.
    bool bRangeGiven = false;
    uint8_t ucMax = 0, ucMin = 0;
    uint16_t wDiscreteMask = 0;
};

struct CompactFields {
    uint8_t ucEntityId = 0;
    uint8_t ucEntityInstance = kInstanceBase;
    uint8_t ucInit = 0x67;
    uint8_t ucCaps = 0x40;
    uint8_t ucSensorType = 0;
    uint8_t ucEventType = 0x6F; // sensor-specific
    uint16_t wAssert = 0;
    uint16_t wDeassert = 0;
    uint16_t wReading = 0;
    uint8_t ucUnits1 = 0;
    uint8_t aucSharing[2] = {0x11, 0x00};
    uint8_t ucHysteresis = 1;
};

// Bytes 0 to 47; a compact record uses the first 32 of them.
struct SdrHead {
    uint8_t auc[kFullHeadSize] = {};
};

constexpr SdrHead CommonHead(uint8_t ucType, uint8_t ucEntityId, uint8_t ucInstance) {
    SdrHead t;
    t.auc[SDR_VERSION] = kSdrVersion;
    t.auc[SDR_RECORD_TYPE] = ucType;
    t.auc[SDR_OWNER_ID] = kOwnerBmc;
    t.auc[SDR_ENTITY_ID] = ucEntityId;
    t.auc[SDR_ENTITY_INSTANCE] = ucInstance;
    return t;
}

// Lower limits rise, upper limits rise, absent ones (0) do not count; signed readings compare signed.
constexpr void CheckLimits(const Limits &t, bool bSigned) {
    const uint8_t aucRising[6] = {t.ucLNR, t.ucLC, t.ucLNC, t.ucUNC, t.ucUC, t.ucUNR};
    int sdwLast = -1000;
    for (uint8_t uc : aucRising) {
        if (uc == 0)
            continue;
        const int sdwNow = bSigned ? static_cast<int8_t>(uc) : uc;
        if (sdwNow <= sdwLast)
            thresholds_out_of_order();
        sdwLast = sdwNow;
    }
}

constexpr void SetWord(SdrHead &tHead, uint8_t ucOffset, uint16_t wValue) {
    tHead.auc[ucOffset] = static_cast<uint8_t>(wValue);
    tHead.auc[ucOffset + 1] = static_cast<uint8_t>(wValue >> 8);
}

constexpr SdrHead FullHead(const FullFields &t) {
    SdrHead tHead = CommonHead(kRecordFull, t.ucEntityId, t.ucEntityInstance);
    const Reading &tReading = t.tReading;
    const bool bSigned = tReading.ucUnits1 == kUnitsSigned;
    CheckLimits(t.tLimits, bSigned);
    if (tReading.sdwR < -8 || tReading.sdwR > 7)
        exponent_out_of_range();
    tHead.auc[SDR_SENSOR_INIT] = 0x7F;
    tHead.auc[SDR_SENSOR_CAPS] = 0x68;
    tHead.auc[SDR_SENSOR_TYPE] = tReading.ucSensorType;
    tHead.auc[SDR_EVENT_TYPE] = t.ucEventType;
    SetThresholdMasks(tHead.auc, LimitBits(t.tLimits));
    for (uint8_t uc = 0; t.wDiscreteMask != 0 && uc < 3; ++uc)
        SetWord(tHead, static_cast<uint8_t>(SDR_ASSERT_MASK + 2 * uc), t.wDiscreteMask);
    tHead.auc[SDR_UNITS_1] = tReading.ucUnits1;
    tHead.auc[SDR_BASE_UNIT] = tReading.ucBaseUnit;
    tHead.auc[SDR_MODIFIER_UNIT] = tReading.ucModifierUnit;
    tHead.auc[FULL_SDR_M_VALUE_LS_8_BITS] = tReading.ucM;
    tHead.auc[FULL_SDR_B_VALUE_LS_8_BITS] = tReading.ucB;
    tHead.auc[FULL_SDR_EXPONENTS] = static_cast<uint8_t>(static_cast<unsigned>(tReading.sdwR) << 4);
    tHead.auc[FULL_SDR_SENSOR_MAX] = t.bRangeGiven ? t.ucMax : bSigned ? 0x7F : 0xFF;
    tHead.auc[FULL_SDR_SENSOR_MIN] = t.bRangeGiven ? t.ucMin : bSigned ? 0x80 : 0x00;
    tHead.auc[FULL_SDR_UNR] = t.tLimits.ucUNR;
    tHead.auc[FULL_SDR_UC] = t.tLimits.ucUC;
    tHead.auc[FULL_SDR_UNC] = t.tLimits.ucUNC;
    tHead.auc[FULL_SDR_LNR] = t.tLimits.ucLNR;
    tHead.auc[FULL_SDR_LC] = t.tLimits.ucLC;
    tHead.auc[FULL_SDR_LNC] = t.tLimits.ucLNC;
    tHead.auc[FULL_SDR_HYST_POSITIVE] = t.ucHysteresis;
    tHead.auc[FULL_SDR_HYST_NEGATIVE] = t.ucHysteresis;
    return tHead;
}

constexpr SdrHead CompactHead(const CompactFields &t) {
    SdrHead tHead = CommonHead(kRecordCompact, t.ucEntityId, t.ucEntityInstance);
    tHead.auc[SDR_SENSOR_INIT] = t.ucInit;
    tHead.auc[SDR_SENSOR_CAPS] = t.ucCaps;
    tHead.auc[SDR_SENSOR_TYPE] = t.ucSensorType;
    tHead.auc[SDR_EVENT_TYPE] = t.ucEventType;
    SetWord(tHead, SDR_ASSERT_MASK, t.wAssert);
    SetWord(tHead, SDR_DEASSERT_MASK, t.wDeassert);
    SetWord(tHead, SDR_READING_MASK, t.wReading);
    tHead.auc[SDR_UNITS_1] = t.ucUnits1;
    tHead.auc[COMPACT_SDR_SHARING_1] = t.aucSharing[0];
    tHead.auc[COMPACT_SDR_SHARING_2] = t.aucSharing[1];
    tHead.auc[COMPACT_SDR_HYST_POSITIVE] = t.ucHysteresis;
    tHead.auc[COMPACT_SDR_HYST_NEGATIVE] = t.ucHysteresis;
    return tHead;
}

} // namespace oxa
#endif
