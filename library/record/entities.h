// SPDX-License-Identifier: Apache-2.0
//
// IPMI entity ids (SDR byte 8).
#ifndef OXA_RECORD_ENTITIES_H
#define OXA_RECORD_ENTITIES_H

#include <cstdint>

namespace oxa {

enum Entity : uint8_t {
    kEntityProcessor = 0x03,
    kEntityDisk = 0x04,
    kEntityManagementSoftware = 0x06,
    kEntitySystemBoard = 0x07,
    kEntityMemoryModule = 0x08,
    kEntityPowerSupply = 0x0A,
    kEntityAddInCard = 0x0B,
    kEntityFrontPanel = 0x0C,
    kEntitySwitchBoard = 0x10,
    kEntityPowerUnit = 0x13,
    kEntityPowerModule = 0x14,
    kEntityPowerBoard = 0x15,
    kEntityChassis = 0x17,
    kEntityDiskBay = 0x1A,
    kEntityFan = 0x1D,
    kEntityCoolingUnit = 0x1E,
    kEntityMemoryDevice = 0x20,
    kEntitySystemManagement = 0x21,
    kEntityBios = 0x22,
    kEntityOperatingSystem = 0x23,
    kEntityController = 0x2E,
    kEntitySystemBus = 0x31,
    kEntityAirInlet = 0x37,
    // the maker's own, from 90h
    kEntityAlarmedChassis = 0x90,
    kEntitySmartNic = 0x96,
    kEntityOcp = 0x97,
    kEntityCardPart = 0xE0, // GPU base boards and what sits on them
    kEntityModulePart = 0xE1,
    kEntityPort = 0xE2,
    kEntityCdu = 0xE4 // cooling distribution unit
};

} // namespace oxa
#endif
