// SPDX-License-Identifier: Apache-2.0
//
// Device codes of the sensor scanner (offset 0 of a device-table entry) and its marks (offset 20).
#ifndef OXA_RECORD_DEVICE_CODES_H
#define OXA_RECORD_DEVICE_CODES_H

#include <cstdint>

namespace oxa {

enum DeviceCode : uint8_t {
    kDeviceInletTemp = 0x00,
    kDeviceRackPower = 0x3B,
    kDeviceOutletTemp = 0x40,
    kDeviceHumidity = 0x41,
    kDevicePdbTemp = 0x42,
    kDevicePchTemp = 0x43,
    kDeviceRail12V = 0x44,
    kDeviceSwitchVolts = 0x45,
    kDeviceSwitchCurrent = 0x46,
    kDeviceSwitchTemp = 0x47,
    kDeviceSwitchAirTemp = 0x48,
    kDeviceCpuTemp = 0x49,
    kDeviceCpuVrTemp = 0x4A,
    kDeviceCpuCoreVolts = 0x4B,
    kDeviceCpuDomainVolts = 0x4C,
    kDeviceCpuState = 0x4D,
    kDeviceMemoryTemp = 0x4E,
    kDevicePsuVolts = 0x4F,
    kDevicePsuPower = 0x50,
    kDevicePsuCurrent = 0x51,
    kDevicePsuTemp = 0x52,
    kDevicePsuState = 0x53,
    kDeviceFanState = 0x54,
    kDeviceSystemEvent = 0x55,
    kDeviceDiskTemp = 0x56,
    kDevicePcieState = 0x57,
    kDevicePowerModuleTemp = 0x58,
    kDeviceUbbRetimerTemp = 0x59,
    kDeviceSwitchChipTemp = 0x5A,
    kDeviceLanSwitchTemp = 0x5B,
    kDeviceCpuCurrent = 0x5C,
    kDeviceVrPower = 0x5D,
    kDeviceLeak = 0x5E,
    kDeviceGpuTemp = 0x64,
    kDeviceFanSpeed = 0x66,
    kDeviceCardVolts = 0x8D,
    kDeviceGpuCardState = 0x8E,
    kDeviceKestrinCdu = 0x8F,
    kDeviceMtRetimerTemp = 0x91,
    kDeviceUbbTemp = 0x92,
    kDeviceBoardPowerItem = 0x93,
    kDeviceSp925dTemp = 0x94,
    kDeviceRail54V = 0x95,
    kDeviceNebulaMatrixTemp = 0x96,
    kDeviceBackplaneTemp = 0x99,
    kDeviceBackplane12V = 0x9A,
    kDeviceTotalPower = 0x9E,
    kDeviceNetCardTemp = 0x9F,
    kDeviceOamPcbTemp = 0xA2,
    kDeviceMetaxRetimerTemp = 0xA3,
    kDeviceMgxTemp = 0xA4,
    kDeviceDefaultCdu = 0xA6,
    kDeviceHalvikTemp = 0xA8,
    kDeviceMemoryState = 0xA9,
    kDeviceCardState = 0xAA,
    kDeviceMluTemp = 0xAC,
    kDeviceOamMcdTemp = 0xAD,
    kDeviceNeoPower = 0xAE,
    kDeviceNeoTemp = 0xAF,
    kDeviceGigaHyper3Temp = 0xB0,
    kDeviceSmartNicPower = 0xB1,
    kDeviceSmartNicCardTemp = 0xB2,
    kDevicePcieTemp = 0xB5,
    kDeviceHgxTemp = 0xB6,
    kDeviceRetimerTemp = 0xB7,
    kDeviceHyperPower = 0xB8,
    kDeviceHyperTemp = 0xB9,
    kDeviceGpuMemoryTemp = 0xBE,
    kDeviceBrenmorTemp = 0xBF,
    kDeviceAicTemp = 0xCB,
    kDeviceHbaTemp = 0xCC,
    kDeviceOcpTemp = 0xCD,
    kDeviceNicTemp = 0xCE,
    kDeviceFcTemp = 0xD1,
    kDeviceGpuPower = 0xD7,
    kDevicePowerOfPartB = 0xD8,
    kDevicePowerOfPart = 0xD9,
    kDevicePowerOfPartC = 0xDA,
    kDeviceRaidSingleTemp = 0xDC,
    kDeviceRaidTemp = 0xDD,
    kDeviceDiskState = 0xF0,
    kDeviceNvmeTemp = 0xF2
};

inline constexpr uint8_t kScanned = 0x80; // scan flag (offset 5)

enum DeviceMark : uint8_t { kMarkDisk = 0x25, kMark54V = 0x28, kMarkNone = 0xFF };

} // namespace oxa
#endif
