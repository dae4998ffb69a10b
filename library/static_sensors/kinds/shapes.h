// SPDX-License-Identifier: Apache-2.0
//
// Shapes that several kinds share: what the kinds of a part have in common is said once.
#ifndef OXA_STATIC_SENSORS_KINDS_SHAPES_H
#define OXA_STATIC_SENSORS_KINDS_SHAPES_H

#include "library/record/entities.h"
#include "library/record/leakage_key.h"
#include "library/static_sensors/kind.h"
#include "oxa/platform.h"

namespace oxa {

inline constexpr uint8_t kRelativeBase = kInstanceBase | kInstanceRelative;
static_assert(kRelativeBase == 0xE0);

// A discrete sensor with the same states in its three masks.
constexpr SensorKind Discrete(Entity eEntity, SensorType eType, EventType eEvent, uint16_t wStates,
                              const Behaviour &tDoes) {
    return Compact({.ucEntityId = eEntity,
                    .ucSensorType = eType,
                    .ucEventType = eEvent,
                    .wAssert = wStates,
                    .wDeassert = wStates,
                    .wReading = wStates},
                   tDoes);
}

// A full record of one entity that counts its instances from 60h, or from E0h.
constexpr SensorKind Analog(Entity eEntity, const Reading &tReading, const Behaviour &tDoes) {
    return Full({.ucEntityId = eEntity, .tReading = tReading}, tDoes);
}
constexpr SensorKind RelativeAnalog(Entity eEntity, const Reading &tReading, const Behaviour &tDoes) {
    return Full({.ucEntityId = eEntity, .ucEntityInstance = kRelativeBase, .tReading = tReading}, tDoes);
}

// A discrete sensor of the system: one item of the event device, scanned.
constexpr SensorKind System(uint8_t ucItem, Entity eEntity, SensorType eType, EventType eEvent,
                            uint16_t wStates, Gate eGate = Gate::kNone, uint8_t ucGateId = 0) {
    return Discrete(eEntity, eType, eEvent, wStates,
                    {.tDevice = {kDeviceSystemEvent, ucItem, kScanned},
                     .eGate = eGate,
                     .ucGateId = ucGateId,
                     .eNotice = DuplicateNotice::kInfo});
}

// Severity states of a board or card: asserted and deasserted for two of them, readable in full.
constexpr CompactFields SeverityOf(Entity eEntity, uint8_t ucInit) {
    return {.ucEntityId = eEntity,
            .ucInit = ucInit,
            .ucSensorType = kTypeModule,
            .ucEventType = kEventSeverity,
            .wAssert = 0x0006,
            .wDeassert = 0x0006,
            .wReading = 0x7FFF,
            .aucSharing = {0x00, 0x01},
            .ucHysteresis = 0};
}

// The same power reading under the sensor type of other units.
constexpr SensorKind AsOtherUnits(SensorKind t) {
    t.tHead.auc[SDR_SENSOR_TYPE] = kTypeOtherUnits;
    return t;
}

// ---- processors -------------------------------------------------------------------------------------------

// Conversion and limits of a voltage domain are described by the platform, by domain number.
constexpr SensorKind CpuDomainVolts(uint8_t ucDomain, Behaviour tDoes = {}) {
    tDoes.tDevice = {kDeviceCpuDomainVolts, ucDomain};
    tDoes.eGate = Gate::kCpuVoltage;
    tDoes.ucGateId = ucDomain;
    tDoes.eInstance = InstanceRule::kCpuClientOnly;
    tDoes.eClient = Client::kCpuRegulator;
    tDoes.ucFlags |= kCpuFromFirst;
    return Analog(kEntityProcessor, ReadsVolts(0, 0), tDoes);
}

constexpr SensorKind CpuCurrent(uint8_t ucItem, uint8_t ucSensorId) {
    return RelativeAnalog(kEntityProcessor, ReadsAmperes(2),
                          {.tDevice = {kDeviceCpuCurrent, ucItem},
                           .eGate = Gate::kBoardHas,
                           .ucGateId = ucSensorId,
                           .eInstance = InstanceRule::kCpuIndexOnly,
                           .ucFlags = kCpuFromFirst});
}

// ---- power supplies ---------------------------------------------------------------------------------------

constexpr SensorKind PsuVolts(uint8_t ucItem, uint8_t ucPart, const Reading &tReading) {
    return Analog(kEntityPowerSupply, tReading,
                  {.tDevice = {kDevicePsuVolts, ucItem, kScanned},
                   .eGate = Gate::kPartWanted,
                   .ucGateId = ucPart,
                   .eInstance = InstanceRule::kIndexOnly,
                   .eNotice = DuplicateNotice::kWarnNewline,
                   .ucFlags = kRefusalWarns});
}

constexpr SensorKind PsuReading(uint8_t ucCode, uint8_t ucItem, const Reading &tReading) {
    return Analog(kEntityPowerSupply, tReading,
                  {.tDevice = {ucCode, ucItem, kScanned},
                   .eInstance = InstanceRule::kAddOrKeep,
                   .eNotice = DuplicateNotice::kInfo});
}

// ---- rails, backplanes, boards ----------------------------------------------------------------------------

inline constexpr Limits kLimits12V = {
    .lc = Volts(9.6), .lnc = Volts(10.8), .unc = Volts(13.2), .uc = Volts(14.4)};
inline constexpr Limits kLimits54V = {
    .lc = Volts(30.6), .lnc = Volts(32.1), .unc = Volts(69.9), .uc = Volts(70.5)};

constexpr SensorKind Backplane12V(uint8_t ucItem, uint8_t ucSensorId) {
    return Full({.ucEntityId = kEntityAddInCard,
                 .ucEntityInstance = kRelativeBase,
                 .tReading = ReadsVolts(100, -3),
                 .tLimits = kLimits12V},
                {.tDevice = {kDeviceBackplane12V, ucItem}, .eGate = Gate::kBoardHas, .ucGateId = ucSensorId});
}
constexpr SensorKind BackplaneTemp(uint8_t ucItem, uint8_t ucSensorId) {
    return Full(
        {.ucEntityId = kEntityAddInCard,
         .ucEntityInstance = kRelativeBase,
         .tReading = kReadsCelsius,
         .tLimits = {.unc = Celsius(58), .uc = Celsius(60)},
         .ucHysteresis = 2},
        {.tDevice = {kDeviceBackplaneTemp, ucItem}, .eGate = Gate::kBoardHas, .ucGateId = ucSensorId});
}

// Power of single boards, items of one device.
constexpr SensorKind BoardPowerItem(uint8_t ucItem, Entity eEntity, uint8_t ucM, uint8_t ucSensorId) {
    return RelativeAnalog(
        eEntity, ReadsWatts(ucM),
        {.tDevice = {kDeviceBoardPowerItem, ucItem}, .eGate = Gate::kBoardHas, .ucGateId = ucSensorId});
}

// ---- liquid-cooling units ---------------------------------------------------------------------------------

constexpr Reading ReadsKilopascals(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = kTypeOtherUnits, .ucBaseUnit = kUnitKilopascal, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading ReadsLitresPerMinute(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = kTypeOtherUnits,
            .ucUnits1 = kUnitsRate,
            .ucBaseUnit = kUnitLitre,
            .ucModifierUnit = kUnitMinute,
            .ucM = ucM,
            .sdwR = sdwR};
}
constexpr Reading ReadsCelsiusTimes(uint8_t ucM) {
    Reading t = kReadsCelsius;
    t.ucM = ucM;
    return t;
}

// One reading of a unit: an item of its device; one of several moves the instance.
constexpr SensorKind CduReading(uint8_t ucCode, uint8_t ucItem, const Reading &tReading,
                                InstanceRule eInstance = InstanceRule::kNone) {
    return RelativeAnalog(kEntityCdu, tReading,
                          {.tDevice = {ucCode, ucItem, kScanned}, .eInstance = eInstance});
}

// A leak detector of a unit, an item of the same device.
constexpr SensorKind CduDetector(uint8_t ucItem) {
    return Compact({.ucEntityId = kEntityCdu,
                    .ucEntityInstance = kRelativeBase,
                    .ucSensorType = kTypeCoolingDevice,
                    .ucEventType = kEventState,
                    .wReading = 0xFFFF},
                   {.tDevice = {kDeviceKestrinCdu, ucItem, kScanned}});
}

} // namespace oxa
#endif
