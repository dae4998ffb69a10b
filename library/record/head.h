// SPDX-License-Identifier: Apache-2.0
//
// The bytes of full and compact records in front of their names, from a few meaningful fields, worked out by
// the compiler.  Masks are derived from the limits, never typed.
#ifndef OXA_RECORD_HEAD_H
#define OXA_RECORD_HEAD_H

#include "library/record/layout.h"
#include "library/record/units.h"

namespace oxa {

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void limits_out_of_order();
void exponent_out_of_range();

struct FullFields {
    uint8_t ucEntityId = 0;
    uint8_t ucEntityInstance = kInstanceBase;
    Reading tReading = {};
    Limits tLimits = {};
    uint8_t ucEventType = kEventThreshold;
    uint8_t ucHysteresis = 3; // counts
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
    uint8_t ucEventType = kEventSpecific;
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

// The six limits by the bit that announces them: LNC LC LNR UNC UC UNR.
struct LimitsByBit {
    Quantity at[6];
    constexpr explicit LimitsByBit(const Limits &t) : at{t.lnc, t.lc, t.lnr, t.unc, t.uc, t.unr} {}
};

// Limits rise from the lowest to the highest.
constexpr void CheckRising(const Limits &t) {
    const Quantity atRising[6] = {t.lnr, t.lc, t.lnc, t.unc, t.uc, t.unr};
    const Quantity *ptLast = nullptr;
    for (const Quantity &tNow : atRising) {
        if (!tNow.bGiven)
            continue;
        if (ptLast != nullptr && tNow.value <= ptLast->value)
            limits_out_of_order();
        ptLast = &tNow;
    }
}

// Puts the limits that are given in their places and announces them in the masks.
constexpr void PutLimits(SdrHead &tHead, const Limits &tLimits, const Reading &tReading) {
    CheckRising(tLimits);
    const LimitsByBit tByBit(tLimits);
    uint8_t ucBits = 0;
    for (uint8_t ucBit = 0; ucBit < 6; ++ucBit) {
        if (!tByBit.at[ucBit].bGiven)
            continue;
        tHead.auc[kThresholdMasks[ucBit].ucOffset] = CountOf(tByBit.at[ucBit], tReading);
        ucBits = static_cast<uint8_t>(ucBits | 1 << ucBit);
    }
    SetThresholdMasks(tHead.auc, ucBits);
}

constexpr void SetWord(SdrHead &tHead, uint8_t ucOffset, uint16_t wValue) {
    tHead.auc[ucOffset] = static_cast<uint8_t>(wValue);
    tHead.auc[ucOffset + 1] = static_cast<uint8_t>(wValue >> 8);
}

constexpr SdrHead FullHead(const FullFields &t) {
    SdrHead tHead = CommonHead(kRecordFull, t.ucEntityId, t.ucEntityInstance);
    const Reading &tReading = t.tReading;
    const bool bSigned = tReading.ucUnits1 == kUnitsSigned;
    if (tReading.sdwR < -8 || tReading.sdwR > 7)
        exponent_out_of_range();
    tHead.auc[SDR_SENSOR_INIT] = 0x7F;
    tHead.auc[SDR_SENSOR_CAPS] = 0x68;
    tHead.auc[SDR_SENSOR_TYPE] = tReading.ucSensorType;
    tHead.auc[SDR_EVENT_TYPE] = t.ucEventType;
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
    tHead.auc[FULL_SDR_HYST_POSITIVE] = t.ucHysteresis;
    tHead.auc[FULL_SDR_HYST_NEGATIVE] = t.ucHysteresis;
    PutLimits(tHead, t.tLimits, tReading);
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
