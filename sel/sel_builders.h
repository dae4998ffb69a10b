// SPDX-License-Identifier: Apache-2.0
//
// The nineteen event builders as data: per builder the list of its values and the steps that make its record.
// The library composes records from these tables; whoever turns records back into calls reads them as well.
// What a builder does besides (profile rules, lookups, lines) stands in oxa_specific_sel_*.cpp.
#ifndef OXA_SEL_BUILDERS_H
#define OXA_SEL_BUILDERS_H

#include "sel/sel_step.h"

namespace oxa::sel {

enum RecordType : uint8_t {
    kSystemEvent = 0x02,
    kOemStamped = 0xC0,
    kOemPowerButton = 0xCD,
    kOemUnstamped = 0xE0
};
constexpr uint8_t kGeneratorBmc = 0x20; // the BMC's own address

enum SensorType : uint8_t {
    kTemperature = 0x01,
    kFan = 0x04,
    kProcessor = 0x07,
    kPowerSupply = 0x08,
    kPowerUnit = 0x09,
    kMemory = 0x0C,
    kDriveSlot = 0x0D,
    kFirmwareProgress = 0x0F,
    kModuleBoard = 0x15,
    kChassis = 0x18,
    kCable = 0x1B,
    kSlotConnector = 0x21,
    kPlatformAlert = 0x24,
    kLan = 0x27,
    kSubsystemHealth = 0x28,
    kBattery = 0x29
};

enum EventType : uint8_t {
    kPredictive = 0x04,
    kLimit = 0x05,
    kSeverity = 0x07,
    kAvailability = 0x0A,
    kRedundancy = 0x0B,
    kSpecific = 0x6F
};

enum EntityId : uint8_t {
    kEntityDisk = 0x04,
    kEntityPowerModule = 0x0A,
    kEntityCdu = 0xE4,
    // entities with rules of their own
    kUsageProcessor = 3,
    kUsageDisk = 26,
    kUsageMemory = 32,
    kAlarmFanCooling = 29,
    kAlarmCoolingUnit = 30,
    kAlarmAirInlet = 55,
    kAlarmChassis = 144
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
    SystemEvent(kMemory), Dir(kPredictive), Data1(0x01), Data2(kDimmNum));

// A machine check (offset 11) puts the bank's high bit into bit 7 where the bank is known.
constexpr auto kCpuErrorValues =
    List(kCpuNum, kBankHighBit, kBankNum, kOffset, Checked(kAssertFlag), kFoundNumber);
constexpr auto kCpuError = MakeBuilder(
    "addCPUError", FailText::kFail, kCpuErrorValues,
    SystemEvent(kProcessor), SensorFrom(kFoundNumber), Dir(kSpecific), Data1(kOffset), Data2(kCpuNum), Data3(kBankNum),
    When(kOffset, {11}), Unless(kBankNum, 0xFF), Take(SEL_EVENT_DATA_3, kBankHighBit, 0x80, 7));

constexpr auto kMemErrorValues = List(kDimmNum, kOffset, kErrorNum, Checked(kAssertFlag), kFoundNumber);
constexpr auto kMemError = MakeBuilder(
    "addMemError", FailText::kFail, kMemErrorValues,
    SystemEvent(kMemory), SensorFrom(kFoundNumber), Dir(kSpecific), Data1(kOffset), Data2(kDimmNum), Data3(kErrorNum));

constexpr auto kPostErrorValues = List();
constexpr auto kPostError = MakeBuilder(
    "addPOSTErrorSel", FailText::kFail, kPostErrorValues,
    SystemEvent(kFirmwareProgress), Set(SEL_EVENT_DIR_TYPE, kSpecific), Data1(0x80), Data2(0xFA));

constexpr auto kS0PowerButtonValues = List();
constexpr auto kS0PowerButton = MakeBuilder(
    "addS0PowerButtonSel", FailText::kFail, kS0PowerButtonValues,
    Oem(kOemPowerButton, 0xBA), Entity(0xDD), Set(SEL_GENERATOR_ID_2, 0xB3), Set(SEL_EVM_REV, 0),
    Set(SEL_SENSOR_NUM, 0xCB), Set(SEL_EVENT_DIR_TYPE, 0x02));

// ---- cards, ports, buses ---------------------------------------------------------------------------

constexpr auto kGpuSlotErrorValues = List(kSlotNum);
constexpr auto kGpuSlotError = MakeBuilder(
    "addGpuSlotErrorSel", FailText::kFail, kGpuSlotErrorValues,
    SystemEvent(kCable), Set(SEL_EVENT_DIR_TYPE, kSpecific), Data1(0x01), Data2(kSlotNum));

constexpr auto kI2cStatusValues = List(kEventData3, Checked(kAssertFlag), kSensorNumber, kLun);
constexpr auto kI2cStatus = MakeBuilder(
    "addI2CStatusSel", FailText::kFail, kI2cStatusValues,
    SystemEvent(kSlotConnector), LunFrom(kLun), SensorFrom(kSensorNumber), Dir(kSpecific),
    Data1(0xB8), Data2(0x7B), Data3(kEventData3));

// The event number is only logged; byte 9 holds device and port.
constexpr auto kNetPortValues =
    List(kEntityId, kSlotNum, kNetPortSilkId, kDeviceIndex, Byte(kPort), Byte(kSubInterfaceType), Byte(kSubIndex),
         Byte(kEventNum), Byte(kEventDir));
constexpr auto kNetPort = MakeBuilder(
    "addNETPortSEL", FailText::kNamedFailed, kNetPortValues,
    Oem(kOemStamped, kLan), EntityFrom(kEntityId), TakeNibbles(SEL_GENERATOR_ID_2, kSubInterfaceType, kSubIndex),
    TakeNibbles(SEL_EVM_REV, kDeviceIndex, kPort), Dir(kSpecific), Data2(kSlotNum), Data3(kNetPortSilkId));

constexpr auto kTrapAlarmValues = List(kEntityId, kReason, kEventNum, kEventDir);
constexpr auto kTrapAlarm = MakeBuilder(
    "addTrapSELAlarm", FailText::kFailed, kTrapAlarmValues,
    Oem(kOemStamped, kPlatformAlert), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Dir(kSpecific),
    Data1(0x03), Data2(kReason));

// ---- storage ---------------------------------------------------------------------------------------

// Events without a line of their own are sent without types and direction.
constexpr auto kControllerValues = List(kEntityId, kController, kEventNum, kEventDir);
constexpr auto kControllerEvent = MakeBuilder(
    "addControllerSEL", FailText::kNamedFailed, kControllerValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Data2(kController),
    When(kEventNum, {18}), Type(kTemperature), Dir(kSeverity), Data1(0xA2),
    When(kEventNum, {19}), Type(kBattery), Dir(kSpecific), Data1(0xA0));

// Predicted faults are all written as event 24; the numbered events carry the sensor of the slot.
constexpr uint8_t kDiskLife = 21;
constexpr uint8_t kDiskPredicted = 24;
constexpr Range kDiskPredictions[] = {{27, 29}};
constexpr Range kDiskNumbered[] = {19, kDiskLife, kDiskPredicted, {27, 29}, 30, 31};
constexpr auto kDiskValues = List(kEntityId, kSlotNum, kEventNum, kEventDir, kFoundNumber);
constexpr auto kDisk = MakeBuilder(
    "addDiskSEL", FailText::kNamedFailed, kDiskValues,
    Oem(kOemUnstamped, kDriveSlot), TakeWord(SEL_TIMESTAMP, kSlotNum), EntityFrom(kEntityId), Dir(kSpecific),
    Data1(0xA1), Data3(kEventNum),
    When(kEventNum, {20, 25}), Type(kTemperature), Dir(kSeverity),
    When(kEventNum, {kDiskLife, 22, 25, 31}), Data1(0xA2),
    When(kEventNum, kDiskNumbered), Entity(kEntityDisk), SensorFrom(kFoundNumber),
    When(kEventNum, kDiskPredictions), Data3(kDiskPredicted));

constexpr auto kLogicalDiskValues = List(kEntityId, kEventNum, kCtrlIndex, kTargetId, kAssertFlag);
constexpr auto kLogicalDisk = MakeBuilder(
    "addLDSEL", FailText::kNamedFailed, kLogicalDiskValues,
    Oem(kOemStamped, kDriveSlot), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kEventNum), Dir(kRedundancy),
    Data1(0xA6), Data2(kCtrlIndex), Data3(kTargetId),
    When(kEventNum, {130}), Data1(0xA2),
    When(kEventNum, {131}), Entity(kEntityDisk), Dir(kSpecific));

// ---- power -----------------------------------------------------------------------------------------

constexpr Range kPowerModuleForecasts[] = {{30, 33}};
constexpr auto kPowerModuleValues = List(kLocation, kEventNum, kEventDir, kFoundNumber);
constexpr auto kPowerModule = MakeBuilder(
    "addPEMSEL", FailText::kFailed, kPowerModuleValues,
    Oem(kOemStamped, kPowerSupply), Entity(kEntityPowerModule), SensorFrom(kFoundNumber), Data2(kLocation),
    Data3(kEventNum),
    When(kEventNum, {17, 19, 21, 23, 25, 26, 28}), Dir(kSpecific), Data1(0xA1),
    When(kEventNum, {18, 20, 22, 24, 27, 29}), Dir(kSpecific), Data1(0xA2),
    When(kEventNum, kPowerModuleForecasts), Type(kFan), Set(SEL_SENSOR_NUM, 0), Dir(kPredictive), Data1(0xA1),
    When(kEventNum, {34}), Type(kPowerUnit), Dir(kLimit), Data1(0xA1));

constexpr auto kPowerDropValues = List(kDropType, kCpuIndex, kReasonMask, Checked(kEventDir), kFoundNumber);
constexpr auto kPowerDrop = MakeBuilder(
    "addPowerDropSEL", FailText::kFail, kPowerDropValues,
    SystemEvent(kPowerSupply), LunFrom(kFoundNumber), SensorFrom(kFoundNumber), Dir(kSpecific), Data1(0x01),
    TakeNibbles(SEL_EVENT_DATA_2, kCpuIndex, kDropType), Data3(kReasonMask));

// ---- load and alarms -------------------------------------------------------------------------------

constexpr auto kUsageValues = List(kEntityId, kUsage, kNonCritical, kIndex, kEventDir);
constexpr auto kUsageEvent = MakeBuilder(
    "addUsageSEL", FailText::kFailed, kUsageValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kUsage), Dir(kLimit), Data1(0xA1),
    Data2(kIndex), Data3(kNonCritical),
    When(kEntityId, {kUsageProcessor}), Type(kProcessor),
    When(kEntityId, {kUsageDisk}), Type(kDriveSlot),
    When(kEntityId, {kUsageMemory}), Type(kMemory));

// Entities and reasons without a line of their own are sent without types and direction.
constexpr auto kAlarmValues = List(kEntityId, kReason, kEventDir, kFoundInletTemp);
constexpr auto kAlarm = MakeBuilder(
    "addSELAlarm", FailText::kFailed, kAlarmValues,
    Oem(kOemStamped, 0), EntityFrom(kEntityId), Take(SEL_GENERATOR_ID_2, kReason),
    When(kEntityId, {kAlarmFanCooling}), Type(kFan), Dir(kAvailability), Data1(0x04),
    When(kEntityId, {kAlarmCoolingUnit}), Type(kSlotConnector), Dir(kSpecific),
        And(kReason, {9, 10, 11, 20}), Data1(0xA0), Data2(0x79),
        And(kReason, {12, 13}), Data1(0xA9), Data2(0x78), Data3(1),
        And(kReason, {14}), Data1(0xA4), Data2(0x78),
        And(kReason, {{15, 18}}), Data1(0xA9), Data2(0x79), Data3(2),
    When(kEntityId, {kAlarmAirInlet}), Type(kSubsystemHealth), Dir(kSpecific), Data1(0xE4), Data2(kFoundInletTemp),
    When(kEntityId, {kAlarmChassis}),
        And(kReason, {0, 1}), Type(kChassis), Dir(kAvailability), Data1(0x02),
        And(kReason, {32}), Type(kSlotConnector), Dir(kSpecific), Data1(0xA8), Data2(0x7A));

// ---- liquid cooling --------------------------------------------------------------------------------

constexpr auto kMinorCduFaultValues = List(kReason, kAssertFlag);
constexpr auto kMinorCduFault = MakeBuilder(
    "addMinorCDUFaultSel", FailText::kFailed, kMinorCduFaultValues,
    Oem(kOemStamped, kModuleBoard), Entity(kEntityCdu), Dir(kSeverity), Data1(0xA1), Data2(kReason), Data3(0xFF));

constexpr auto kMajorCduFaultValues = List(kReason, kSlotNum, kAssertFlag);
constexpr auto kMajorCduFault = MakeBuilder(
    "addMajorCDUFaultSel", FailText::kFailed, kMajorCduFaultValues,
    Oem(kOemStamped, kModuleBoard), Entity(kEntityCdu), Dir(kSeverity), Data1(0xA2), Data2(kReason), Data3(kSlotNum));

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
