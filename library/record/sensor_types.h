// SPDX-License-Identifier: Apache-2.0
//
// IPMI sensor types (SDR byte 12, event byte 10) and event/reading types (SDR byte 13, event byte 12).
#ifndef OXA_RECORD_SENSOR_TYPES_H
#define OXA_RECORD_SENSOR_TYPES_H

#include <cstdint>

namespace oxa {

enum SensorType : uint8_t {
    kTypeTemperature = 0x01,
    kTypeVoltage = 0x02,
    kTypeCurrent = 0x03,
    kTypeFan = 0x04,
    kTypeChassisIntrusion = 0x05,
    kTypeProcessor = 0x07,
    kTypePowerSupply = 0x08,
    kTypePowerUnit = 0x09,
    kTypeCoolingDevice = 0x0A,
    kTypeOtherUnits = 0x0B,
    kTypeMemory = 0x0C,
    kTypeDriveSlot = 0x0D,
    kTypeFirmwareProgress = 0x0F,
    kTypeEventLog = 0x10,
    kTypeSystemEvent = 0x12,
    kTypeCriticalInterrupt = 0x13,
    kTypeButton = 0x14,
    kTypeModule = 0x15,
    kTypeAddInCard = 0x17,
    kTypeChassis = 0x18,
    kTypeCable = 0x1B,
    kTypeBootInitiated = 0x1D,
    kTypeBootError = 0x1E,
    kTypeOsBoot = 0x1F,
    kTypeOsStop = 0x20,
    kTypeSlotConnector = 0x21,
    kTypeAcpiState = 0x22,
    kTypeWatchdog2 = 0x23,
    kTypePlatformAlert = 0x24,
    kTypeLan = 0x27,
    kTypeSubsystemHealth = 0x28,
    kTypeBattery = 0x29,
    kTypeVersionChange = 0x2B
};

enum EventType : uint8_t {
    kEventThreshold = 0x01,
    kEventState = 0x03, // asserted, deasserted
    kEventPredictive = 0x04,
    kEventLimit = 0x05,
    kEventSeverity = 0x07,
    kEventDevicePresent = 0x08,
    kEventAvailability = 0x0A,
    kEventRedundancy = 0x0B,
    kEventSpecific = 0x6F // the sensor type's own states
};

} // namespace oxa
#endif
