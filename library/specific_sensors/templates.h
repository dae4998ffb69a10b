// SPDX-License-Identifier: Apache-2.0
//
// The records that the run-time generators start from: one sensor description fills in the rest.
#ifndef OXA_SPECIFIC_SENSORS_TEMPLATES_H
#define OXA_SPECIFIC_SENSORS_TEMPLATES_H

#include "library/record/entities.h"
#include "library/record/head.h"

namespace oxa {

// Until the name is known a template carries these in its length bytes.
inline constexpr uint8_t kFullTemplateLength = 0x24;
inline constexpr uint8_t kFullTemplateIdByte = 0xCB;

constexpr SdrHead RunTimeFull(const FullFields &t) {
    SdrHead tHead = FullHead(t);
    tHead.auc[SDR_RECORD_LENGTH] = kFullTemplateLength;
    tHead.auc[FULL_SDR_ID_TYPE_LEN] = kFullTemplateIdByte;
    return tHead;
}

inline constexpr SdrHead kTempTemplate =
    RunTimeFull({.ucEntityId = kEntityAddInCard, .tReading = kReadsCelsius});
inline constexpr SdrHead kVoltTemplate =
    RunTimeFull({.ucEntityId = kEntityPowerSupply, .tReading = ReadsVolts(200, -2)});
inline constexpr SdrHead kPowerTemplate =
    RunTimeFull({.ucEntityId = kEntityAddInCard, .tReading = ReadsWatts(4)});
inline constexpr SdrHead kFanTemplate = RunTimeFull({.ucEntityId = kEntityFan, .tReading = ReadsRpm(100)});

inline constexpr uint8_t kPowerM = 5; // what the power template's M becomes once the user's thresholds are in

// Compact records: no analog reading, the device in bytes 29 and 30.
inline constexpr SdrHead kDiskStatusTemplate = CompactHead({.ucEntityId = kEntityDisk,
                                                            .ucEntityInstance = 0x00,
                                                            .ucInit = 0x63,
                                                            .ucCaps = 0xC0,
                                                            .ucSensorType = kTypeDriveSlot,
                                                            .wAssert = 0x0001,
                                                            .wDeassert = 0x0001,
                                                            .wReading = 0x0047,
                                                            .ucUnits1 = kUnitsNoAnalog,
                                                            .aucSharing = {0x01, 0x00},
                                                            .ucHysteresis = 0});
constexpr SdrHead CardStatus(uint8_t ucSensorType, uint8_t ucEventType) {
    return CompactHead({.ucEntityId = kEntityAddInCard,
                        .ucInit = 0x63,
                        .ucSensorType = ucSensorType,
                        .ucEventType = ucEventType,
                        .wAssert = 0x0006,
                        .wDeassert = 0x0006,
                        .wReading = 0x7FFF,
                        .aucSharing = {0x00, 0x01},
                        .ucHysteresis = 0});
}
inline constexpr SdrHead kCardStatusTemplate = CardStatus(kTypeModule, kEventSeverity);
inline constexpr SdrHead kGpuCardStatusTemplate = CardStatus(kTypeAddInCard, kEventSpecific);
inline constexpr SdrHead kMemStatusTemplate = CompactHead({.ucEntityId = kEntityAddInCard,
                                                           .ucInit = 0x7F,
                                                           .ucSensorType = kTypeMemory,
                                                           .wAssert = 0x0042,
                                                           .wDeassert = 0x0042,
                                                           .wReading = 0x0042});

// FRU device locator: the FRU id stands in bytes 6 and 8.
struct FruLocatorHead {
    uint8_t auc[FRU_SDR_NAME] = {};
};
// Length, channel, entity id and the byte of the name's length are each locator's own.
constexpr FruLocatorHead FruLocator() {
    FruLocatorHead t;
    t.auc[SDR_VERSION] = kSdrVersion;
    t.auc[SDR_RECORD_TYPE] = kRecordFruLocator;
    t.auc[FRU_SDR_ACCESS_ADDRESS] = 0x20;
    t.auc[FRU_SDR_LUN_BUS] = 0x80;     // logical FRU device
    t.auc[FRU_SDR_DEVICE_TYPE] = 0x10; // FRU inventory device behind a management controller
    return t;
}
constexpr FruLocatorHead kFruLocatorTemplate = FruLocator();
inline constexpr uint8_t kFruLocatorBaseLength = FRU_SDR_NAME - kSdrHeaderSize;

inline constexpr uint8_t kFixedLimitBits = THRESH_BIT_UNC | THRESH_BIT_UC | THRESH_BIT_UNR;

// ---- the numbers as they stand in the printed tables ------------------------------------------------------

static_assert(kTempTemplate.auc[SDR_UNITS_1] == 0x80 && kTempTemplate.auc[FULL_SDR_SENSOR_MAX] == 0x7F &&
              kTempTemplate.auc[FULL_SDR_SENSOR_MIN] == 0x80 &&
              kTempTemplate.auc[FULL_SDR_HYST_POSITIVE] == 3);
static_assert(kVoltTemplate.auc[FULL_SDR_M_VALUE_LS_8_BITS] == 200 &&
              kVoltTemplate.auc[FULL_SDR_EXPONENTS] == 0xE0);
static_assert(kPowerTemplate.auc[SDR_SENSOR_TYPE] == 0x08 && kPowerTemplate.auc[SDR_BASE_UNIT] == 0x06);
static_assert(kFanTemplate.auc[SDR_SENSOR_TYPE] == 0x04 && kFanTemplate.auc[SDR_BASE_UNIT] == 0x12);
static_assert(kDiskStatusTemplate.auc[SDR_READING_MASK] == 0x47 &&
              kCardStatusTemplate.auc[SDR_READING_MASK + 1] == 0x7F);
static_assert(kFruLocatorBaseLength == 11);

// A threshold's share of the masks, and all of them together.
constexpr SdrHead MasksOf(uint8_t ucBits) {
    SdrHead t;
    SetThresholdMasks(t.auc, ucBits);
    return t;
}
constexpr bool HasMasks(uint8_t ucBits, uint8_t uc14, uint8_t uc15, uint8_t uc16, uint8_t uc17) {
    const SdrHead t = MasksOf(ucBits);
    return t.auc[14] == uc14 && t.auc[15] == uc15 && t.auc[16] == uc16 && t.auc[17] == uc17 &&
           t.auc[18] == ucBits && t.auc[19] == ucBits;
}
static_assert(HasMasks(THRESH_BIT_LNC, 0x01, 0x10, 0x01, 0x00));
static_assert(HasMasks(THRESH_BIT_LC, 0x04, 0x20, 0x04, 0x00));
static_assert(HasMasks(THRESH_BIT_LNR, 0x10, 0x40, 0x10, 0x00));
static_assert(HasMasks(THRESH_BIT_UNC, 0x80, 0x00, 0x80, 0x10));
static_assert(HasMasks(THRESH_BIT_UC, 0x00, 0x02, 0x00, 0x22));
static_assert(HasMasks(THRESH_BIT_UNR, 0x00, 0x08, 0x00, 0x48));
static_assert(HasMasks(0, 0, 0, 0, 0));
static_assert(HasMasks(kFixedLimitBits, 0x80, 0x0A, 0x80, 0x7A));

} // namespace oxa
#endif
