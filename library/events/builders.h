// SPDX-License-Identifier: Apache-2.0
//
// The nineteen event builders as data: per builder the list of its values and the steps that make its record.
// The library composes records from these tables; whoever turns records back into calls reads them as well.
// What a builder does besides (profile rules, lookups, lines) stands in plain.cpp and rules.cpp.
#ifndef OXA_EVENTS_BUILDERS_H
#define OXA_EVENTS_BUILDERS_H

#include "library/events/step.h"
#include "library/record/entities.h"
#include "library/record/sensor_types.h"

namespace oxa::sel {

enum RecordType : uint8_t {
    kSystemEvent = 0x02,
    kOemStamped = 0xC0,
    kOemPowerButton = 0xCD,
    kOemUnstamped = 0xE0
};
constexpr uint8_t kGeneratorBmc = 0x20; // the BMC's own address

// Entities with rules of their own.
enum RuledEntity : uint8_t {
    kUsageProcessor = kEntityProcessor,
    kUsageDisk = kEntityDiskBay,
    kUsageMemory = kEntityMemoryDevice,
    kAlarmFanCooling = kEntityFan,
    kAlarmCoolingUnit = kEntityCoolingUnit,
    kAlarmAirInlet = kEntityAirInlet,
    kAlarmChassis = kEntityAlarmedChassis
};

// ---- the frame of a record -------------------------------------------------------------------------

constexpr Steps<3> SystemEvent(uint8_t ucSensorType) {
    return {{{SEL_RECORD_TYPE, kLiteral, 0xFF, kSystemEvent},
             {SEL_GENERATOR_ID, kLiteral, 0xFF, kGeneratorBmc},
             {SEL_SENSOR_TYPE, kLiteral, 0xFF, ucSensorType}}};
}
// An OEM record names the device's entity instead of the generator.
constexpr Steps<2> Oem(uint8_t ucRecordType, uint8_t ucSensorType) {
    return {
        {{SEL_RECORD_TYPE, kLiteral, 0xFF, ucRecordType}, {SEL_SENSOR_TYPE, kLiteral, 0xFF, ucSensorType}}};
}
constexpr Steps<1> Entity(uint8_t ucEntityId) {
    return Set(SEL_GENERATOR_ID, ucEntityId);
}
constexpr Steps<1> EntityFrom(Value eValue) {
    return Take(SEL_GENERATOR_ID, eValue);
}
constexpr Steps<1> Data1(uint8_t uc) {
    return Set(SEL_EVENT_DATA_1, uc);
}
constexpr Steps<1> Data1(Value e) {
    return Take(SEL_EVENT_DATA_1, e);
}
constexpr Steps<1> Data2(uint8_t uc) {
    return Set(SEL_EVENT_DATA_2, uc);
}
constexpr Steps<1> Data2(Value e) {
    return Take(SEL_EVENT_DATA_2, e);
}
constexpr Steps<1> Data3(uint8_t uc) {
    return Set(SEL_EVENT_DATA_3, uc);
}
constexpr Steps<1> Data3(Value e) {
    return Take(SEL_EVENT_DATA_3, e);
}
constexpr Steps<1> Type(SensorType e) {
    return Set(SEL_SENSOR_TYPE, e);
}
constexpr Steps<1> SensorFrom(Value e) {
    return Take(SEL_SENSOR_NUM, e);
}
constexpr Steps<1> LunFrom(Value e) {
    return Take(SEL_GENERATOR_ID_2, e, 0x03);
}

// One line per rule below.
// clang-format off

// ---- memory, processors, firmware ------------------------------------------------------------------

constexpr auto kMemPredictiveFaultValues = List(kDimmNum, Checked(kAssertFlag));
constexpr auto kMemPredictiveFault = MakeBuilder(
    "addMemPredictiveFault", FailText::kFail, kMemPredictiveFaultValues,
    SystemEvent(kTypeMemory), Dir(kEventPredictive), Data1(0x01), Data2(kDimmNum));

// A machine check (offset 11) puts the bank's high bit into bit 7 where the bank is known.
constexpr auto kCpuErrorValues =
    List(kCpuNum, kBankHighBit, kBankNum, kOffset, Checked(kAssertFlag), kFoundNumber);
constexpr auto kCpuError = MakeBuilder(
    "addCPUError", FailText::kFail, kCpuErrorValues,
    SystemEvent(kTypeProcessor), SensorFrom(kFoundNumber), Dir(kEventSpecific), Data1(kOffset), Data2(kCpuNum), Data3(kBankNum),
    When(kOffset, {11}), Unless(kBankNum, 0xFF), Take(SEL_EVENT_DATA_3, kBankHighBit, 0x80, 7));

constexpr auto kMemErrorValues = List(kDimmNum, kOffset, kErrorNum, Checked(kAssertFlag), kFoundNumber);
constexpr auto kMemError = MakeBuilder(
    "addMemError", FailText::kFail, kMemErrorValues,
    SystemEvent(kTypeMemory), SensorFrom(kFoundNumber), Dir(kEventSpecific), Data1(kOffset), Data2(kDimmNum), Data3(kErrorNum));

constexpr auto kPostErrorValues = List();
constexpr auto kPostError = MakeBuilder(
    "addPOSTErrorSel", FailText::kFail, kPostErrorValues,
    SystemEvent(kTypeFirmwareProgress), Set(SEL_EVENT_DIR_TYPE, kEventSpecific), Data1(0x80), Data2(0xFA));

constexpr auto kS0PowerButtonValues = List();
constexpr auto kS0PowerButton = MakeBuilder(
    "addS0PowerButtonSel", FailText::kFail, kS0PowerButtonValues,
    Oem(kOemPowerButton, 0xBA), Entity(0xDD), Set(SEL_GENERATOR_ID_2, 0xB3), Set(SEL_EVM_REV, 0),
    Set(SEL_SENSOR_NUM, 0xCB), Set(SEL_EVENT_DIR_TYPE, 0x02));

// ---- cards, ports, buses ---------------------------------------------------------------------------

constexpr auto kGpuSlotErrorValues = List(kSlotNum);
constexpr auto kGpuSlotError = MakeBuilder(
    "addGpuSlotErrorSel", FailText::kFail, kGpuSlotErrorValues,
    SystemEvent(kTypeCable), Set(SEL_EVENT_DIR_TYPE, kEventSpecific), Data1(0x01), Data2(kSlotNum));

constexpr auto kI2cStatusValues = List(kEventData3, Checked(kAssertFlag), kSensorNumber, kLun);
constexpr auto kI2cStatus = MakeBuilder(
    "addI2CStatusSel", FailText::kFail, kI2cStatusValues,
    SystemEvent(kTypeSlotConnector), LunFrom(kLun), SensorFrom(kSensorNumber), Dir(kEventSpecific),
    Data1(0xB8), Data2(0x7B), Data3(kEventData3));

// The event number is only logged; byte 9 holds device and port.
constexpr auto kNetPortValues =
    List(kEntityId, kSlotNum, kNetPortSilkId, kDeviceIndex, Byte(kPort), Byte(kSubInterfaceType), Byte(kSubIndex),
         Byte(kEventNum), Byte(kEventDir));
constexpr auto kNetPort = MakeBuilder(
    "addNETPortSEL", FailText::kNamedFailed, kNetPortValues,
    Oem(kOemStamped, kTypeLan), EntityFrom(kEntityId), TakeNibbles(SEL_GENERATOR_ID_2, kSubInterfaceType, kSubIndex),
    TakeNibbles(SEL_EVM_REV, kDeviceIndex, kPort), Dir(kEventSpecific), Data2(kSlotNum), Data3(kNetPortSilkId));

constexpr auto kTrapAlarmValues = List(kEntityId, kReason, kEventNum, kEventDir);
constexpr auto kTrapAlarm = MakeBuilder(
    "addTrapSELAlarm", FailText::kFailed, kTrapAlarmValues,
    Oem(kOemStamped, kTypePlatformAlert), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Dir(kEventSpecific),
    Data1(0x03), Data2(kReason));

// ---- storage ---------------------------------------------------------------------------------------

// Events without a line of their own are sent without types and direction.
constexpr auto kControllerValues = List(kEntityId, kController, kEventNum, kEventDir);
constexpr auto kControllerEvent = MakeBuilder(
    "addControllerSEL", FailText::kNamedFailed, kControllerValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Data2(kController),
    When(kEventNum, {18}), Type(kTypeTemperature), Dir(kEventSeverity), Data1(0xA2),
    When(kEventNum, {19}), Type(kTypeBattery), Dir(kEventSpecific), Data1(0xA0));

// Predicted faults are all written as event 24; the numbered events carry the sensor of the slot.
constexpr uint8_t kDiskLife = 21;
constexpr uint8_t kDiskPredicted = 24;
constexpr Range kDiskPredictions[] = {{27, 29}};
constexpr Range kDiskNumbered[] = {19, kDiskLife, kDiskPredicted, {27, 29}, 30, 31};
constexpr auto kDiskValues = List(kEntityId, kSlotNum, kEventNum, kEventDir, kFoundNumber);
constexpr auto kDisk = MakeBuilder(
    "addDiskSEL", FailText::kNamedFailed, kDiskValues,
    Oem(kOemUnstamped, kTypeDriveSlot), TakeWord(SEL_TIMESTAMP, kSlotNum), EntityFrom(kEntityId), Dir(kEventSpecific),
    Data1(0xA1), Data3(kEventNum),
    When(kEventNum, {20, 25}), Type(kTypeTemperature), Dir(kEventSeverity),
    When(kEventNum, {kDiskLife, 22, 25, 31}), Data1(0xA2),
    When(kEventNum, kDiskNumbered), Entity(kEntityDisk), SensorFrom(kFoundNumber),
    When(kEventNum, kDiskPredictions), Data3(kDiskPredicted));

constexpr auto kLogicalDiskValues = List(kEntityId, kEventNum, kCtrlIndex, kTargetId, kAssertFlag);
constexpr auto kLogicalDisk = MakeBuilder(
    "addLDSEL", FailText::kNamedFailed, kLogicalDiskValues,
    Oem(kOemStamped, kTypeDriveSlot), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Dir(kEventRedundancy),
    Data1(0xA6), Data2(kCtrlIndex), Data3(kTargetId),
    When(kEventNum, {130}), Data1(0xA2),
    When(kEventNum, {131}), Entity(kEntityDisk), Dir(kEventSpecific));

// ---- power -----------------------------------------------------------------------------------------

constexpr Range kPowerModuleForecasts[] = {{30, 33}};
constexpr auto kPowerModuleValues = List(kLocation, kEventNum, kEventDir, kFoundNumber);
constexpr auto kPowerModule = MakeBuilder(
    "addPEMSEL", FailText::kFailed, kPowerModuleValues,
    Oem(kOemStamped, kTypePowerSupply), Entity(kEntityPowerSupply), SensorFrom(kFoundNumber), Data2(kLocation),
    Data3(kEventNum),
    When(kEventNum, {17, 19, 21, 23, 25, 26, 28}), Dir(kEventSpecific), Data1(0xA1),
    When(kEventNum, {18, 20, 22, 24, 27, 29}), Dir(kEventSpecific), Data1(0xA2),
    When(kEventNum, kPowerModuleForecasts), Type(kTypeFan), Set(SEL_SENSOR_NUM, 0), Dir(kEventPredictive), Data1(0xA1),
    When(kEventNum, {34}), Type(kTypePowerUnit), Dir(kEventLimit), Data1(0xA1));

constexpr auto kPowerDropValues = List(kDropType, kCpuIndex, kReasonMask, Checked(kEventDir), kFoundNumber);
constexpr auto kPowerDrop = MakeBuilder(
    "addPowerDropSEL", FailText::kFail, kPowerDropValues,
    SystemEvent(kTypePowerSupply), LunFrom(kFoundNumber), SensorFrom(kFoundNumber), Dir(kEventSpecific), Data1(0x01),
    TakeNibbles(SEL_EVENT_DATA_2, kCpuIndex, kDropType), Data3(kReasonMask));

// ---- load and alarms -------------------------------------------------------------------------------

constexpr auto kUsageValues = List(kEntityId, kUsage, kNonCritical, kIndex, kEventDir);
constexpr auto kUsageEvent = MakeBuilder(
    "addUsageSEL", FailText::kFailed, kUsageValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kUsage), Dir(kEventLimit), Data1(0xA1),
    Data2(kIndex), Data3(kNonCritical),
    When(kEntityId, {kUsageProcessor}), Type(kTypeProcessor),
    When(kEntityId, {kUsageDisk}), Type(kTypeDriveSlot),
    When(kEntityId, {kUsageMemory}), Type(kTypeMemory));

// Entities and reasons without a line of their own are sent without types and direction.
constexpr auto kAlarmValues = List(kEntityId, kReason, kEventDir, kFoundInletTemp);
constexpr auto kAlarm = MakeBuilder(
    "addSELAlarm", FailText::kFailed, kAlarmValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kReason),
    When(kEntityId, {kAlarmFanCooling}), Type(kTypeFan), Dir(kEventAvailability), Data1(0x04),
    When(kEntityId, {kAlarmCoolingUnit}), Type(kTypeSlotConnector), Dir(kEventSpecific),
        And(kReason, {9, 10, 11, 20}), Data1(0xA0), Data2(0x79),
        And(kReason, {12, 13}), Data1(0xA9), Data2(0x78), Data3(1),
        And(kReason, {14}), Data1(0xA4), Data2(0x78),
        And(kReason, {{15, 18}}), Data1(0xA9), Data2(0x79), Data3(2),
    When(kEntityId, {kAlarmAirInlet}), Type(kTypeSubsystemHealth), Dir(kEventSpecific), Data1(0xE4), Data2(kFoundInletTemp),
    When(kEntityId, {kAlarmChassis}),
        And(kReason, {0, 1}), Type(kTypeChassis), Dir(kEventAvailability), Data1(0x02),
        And(kReason, {32}), Type(kTypeSlotConnector), Dir(kEventSpecific), Data1(0xA8), Data2(0x7A));

// ---- liquid cooling --------------------------------------------------------------------------------

constexpr auto kMinorCduFaultValues = List(kReason, kAssertFlag);
constexpr auto kMinorCduFault = MakeBuilder(
    "addMinorCDUFaultSel", FailText::kFailed, kMinorCduFaultValues,
    Oem(kOemStamped, kTypeModule), Entity(kEntityCdu), Dir(kEventSeverity), Data1(0xA1), Data2(kReason), Data3(0xFF));

constexpr auto kMajorCduFaultValues = List(kReason, kSlotNum, kAssertFlag);
constexpr auto kMajorCduFault = MakeBuilder(
    "addMajorCDUFaultSel", FailText::kFailed, kMajorCduFaultValues,
    Oem(kOemStamped, kTypeModule), Entity(kEntityCdu), Dir(kEventSeverity), Data1(0xA2), Data2(kReason), Data3(kSlotNum));

// LUN, types and number are the leak sensor's own; kinds 1 to 3 say where the leak is.
constexpr auto kLeakageValues = List(kKind, Byte(kDeassertFlag), Byte(kPosition), kFoundNumber,
                                            kFoundSensorType, kFoundEventType, kFoundLun);
constexpr auto kLeakageEvent = MakeBuilder(
    "addLeakageSel", FailText::kFail, kLeakageValues,
    SystemEvent(0), LunFrom(kFoundLun), Take(SEL_SENSOR_TYPE, kFoundSensorType), SensorFrom(kFoundNumber),
    Take(SEL_EVENT_DIR_TYPE, kFoundEventType), Data1(0x01), Data2(0xFF),
    When(kDeassertFlag, {1}), Set(SEL_EVENT_DIR_TYPE, 0x80, 0x80),
    When(kKind, {{1, 3}}), Data1(0x81), TakeNibbles(SEL_EVENT_DATA_2, kPosition, kKind));

// clang-format on

} // namespace oxa::sel
#endif
