// SPDX-License-Identifier: Apache-2.0
//
// What a sensor description and the name tables are keyed by: sensor class, device type, sub type; and what
// follows from the device type alone.
#ifndef OXA_SPECIFIC_SENSORS_DEVICE_TYPES_H
#define OXA_SPECIFIC_SENSORS_DEVICE_TYPES_H

#include <cstddef>
#include <cstdint>

#include "library/record/device_codes.h"
#include "library/record/entities.h"

namespace oxa::snr {

// Sensor class words.
enum SensorClass : uint32_t {
    kClassTemp = 0x0100,
    kClassVolt = 0x0200,
    kClassFan = 0x0403,
    kClassPower = 0x0803,
    kClassMemStatus = 0x0C01,
    kClassDiskStatus = 0x0D00,
    kClassCardStatus = 0x1501,
    kClassGpuCard = 0x1700
};

// Device types (device_types.def), and positions of fans in the rows of class kClassFan.
enum DeviceTypeNumber : uint8_t {
#define DEVICE_TYPE(name, number, ...) name = number,
#include "library/specific_sensors/device_types.def"
#undef DEVICE_TYPE

    kFanFront = 0,
    kFanRear = 1,
    kFanPlain = 255
};

// Sub device types.
enum SubDeviceType : uint8_t {
    kMain = 0,
    kPort = 1, // SFP or optical port
    kGpuMax = 9,
    kGpuAvg = 10,

    kFanVariant = 2, // class kClassFan

    kNvme = 1, // disks; where an NVMe disk is mounted decides between the last two
    kSata = 2,
    kSas = 3,
    kNvmeFront = 4,
    kNvmeRear = 5,

    kNeoCpu = 3, // NEO card
    kNeoInlet = 4,
    kNeoVr = 5,
    kNeoNic = 6,
    kNeoOpt = 7,
    kNeoDimm = 8
};

// ---- what follows from a device type -----------------------------------------------------------------------

// What the scanner's entry takes from the record besides the device code.
enum ScannerFlag : uint8_t {
    kScan = 0x01,       // scan flag
    kIndex44 = 0x02,    // index from SDR byte 44 instead of byte 45
    kSubKindOem = 0x04, // sub-kind = OEM byte
    kSubKindOne = 0x08, // sub-kind = 1
    kDiskMark = 0x10,   // marked as a disk's
    kCopyM = 0x20,      // M from SDR byte 24
    kS5Slot = 0x40,     // scan flag only when the card stays powered in S5
    kNibbles44 = 0x80   // item and sub item from the nibbles of SDR byte 44 (temperatures: always)
};
struct Scanner {
    uint8_t ucCode = 0; // 0: the scanner reads no such sensor
    uint8_t ucFlags = 0;
    uint8_t ucItem = 0; // 0 leaves the item alone
};

enum DeviceTrait : uint16_t {
    kOwnIndex = 0x01,         // sensors are numbered by the description's sensor index
    kRelativeInstance = 0x02, // instance bit 7
    kPlainPorts = 0x04,       // ports are numbered without a leading zero also where slots have one
    kFrontSlots = 0x08,       // may sit in a front slot, which changes the name
    kGpuPower = 0x10,         // power is worked out from the list of GPUs
    kOneSlotPower = 0x20,     // and only that of its own slot
    kWholeWatts = 0x40,       // power counts in watts
    kMemoryStates = 0x80      // the scanner reads memory states of it
};

struct DeviceType {
    uint8_t eEntity = kEntityAddInCard;
    Scanner tTemp = {};
    Scanner tPower = {};
    uint16_t wTraits = 0;

    constexpr bool Has(DeviceTrait e) const {
        return (wTraits & e) != 0;
    }
};

// Of any number; one that no line has is a plain add-in card that the scanner does not read.
const DeviceType &DeviceTypeOf(uint8_t ucNumber);

} // namespace oxa::snr
#endif
