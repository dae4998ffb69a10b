// SPDX-License-Identifier: Apache-2.0
//
// The renames of sensors by where their device sits: cards in front slots, GPU units by their place on one board.
#include <cstring>
#include <iterator>

#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/generator.h"
#include "library/specific_sensors/name_text.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr uint8_t kLocationFront = 1;
constexpr uint8_t kSilkSize = 32;
constexpr char kFrontSilk[] = "F-Slot";
constexpr uint8_t kFrontSilkLen = sizeof(kFrontSilk) - 1;

struct NamePair {
    char acFrom[SENSOR_NAME_SIZE];
    char acTo[SENSOR_NAME_SIZE];
};

// What a pattern becomes when the card sits in a front slot.
constexpr NamePair kFrontNames[] = {
    {"RAID_TEMP_*", "RAID_TEMP_F-*"},
    {"Raid*_Temp", "RaidF-*_Temp"},
    {"P*_Raid_Temp", "PF-*_Raid_Temp"},
    {"RAID*_Temp", "RAIDF-*_Temp"},
    {"HBA_TEMP_*", "HBA_TEMP_F-*"},
    {"HBA*_Temp", "HBAF-*_Temp"},
    {"P*_HBA_Temp", "PF-*_HBA_Temp"},
    {"NIC_SFP#_TEMP_*", "NIC_SFP#_T_F-*"},
    {"NIC*_SFP#_Temp", "NICF-*_SFP#_Temp"},
    {"P*_Net_SFP#_Temp", "PF-*_Net_SFP#_T"},
    {"P*_NIC_SFP#_Temp", "PF-*_NIC_SFP#_T"},
    {"NIC_TEMP_*", "NIC_TEMP_F-*"},
    {"NIC*_Temp", "NICF-*_Temp"},
    {"P*_Net_Temp", "PF-*_Net_Temp"},
    {"P*_NIC_Temp", "PF-*_NIC_Temp"},
    {"FC_TEMP_*", "FC_TEMP_F-*"},
    {"FC*_Temp", "FCF-*_Temp"},
    {"P*_FC_Temp", "PF-*_FC_Temp"},
    {"SNIC_NIC_TEMP_*", "SNIC_NIC_T_F-*"},
    {"SNIC*_NIC_Temp", "SNICF-*_NIC_Temp"},
    {"P*_SNIC_NIC_Temp", "PF-*_SNIC_NIC_T"},
    {"SNIC_SFP#_T_*", "SNIC_SFP#_T_F-*"},
    {"SNIC*_SFP#_Temp", "SNICF-*_SFP#_T"},
    {"P*_SNIC_SFP#_T", "PF-*_SNIC_SFP#_T"},
};
static_assert(std::size(kFrontNames) == 24);

// GPU units by row and place.
struct GpuName {
    char acFrom[5];
    char acTo[4];
};
constexpr GpuName kGpuPlaces[] = {
    {"GU05", "RA3"}, {"GU04", "RA2"}, {"GU03", "RA1"}, {"GU08", "RB3"},
    {"GU07", "RB2"}, {"GU06", "RB1"}, {"GU10", "RC2"}, {"GU09", "RC1"},
};
static_assert(std::size(kGpuPlaces) == 8);

// Both end with a NUL; what stands behind it does not count.
bool SameName(const char *pcName, const char *pcOther) {
    for (; *pcName == *pcOther; ++pcName, ++pcOther)
        if (*pcName == '\0')
            return true;
    return false;
}

bool IsGpuUnit(const SnrQuery *ptInfo) {
    switch (ptInfo->dwSensorDevType) {
    case kClassTemp:
        return ptInfo->ucDeviceType == kGpu &&
               (ptInfo->SubDeviceType == kGpuMax || ptInfo->SubDeviceType == kGpuAvg);
    case kClassPower:
        return ptInfo->ucDeviceType == kGpuSlotPower && ptInfo->SubDeviceType == kMain;
    case kClassGpuCard:
        return ptInfo->ucDeviceType == kGpu && ptInfo->SubDeviceType == kMain;
    default:
        return false;
    }
}

} // namespace

int32_t getFSlotInfo(uint8_t ucSlot, uint8_t *changedSlot) {
    if (changedSlot == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: changedSlot != 0");
        return -1;
    }
    uint8_t ucLocation = 0;
    if (Hal_GetPcieLocationByPcieSlot(ucSlot, &ucLocation) != 0 || ucLocation != kLocationFront)
        return -1;
    char acSilk[kSilkSize] = {};
    if (Hal_GetPcieSilkByPcieSlot(ucSlot, acSilk, sizeof(acSilk)) != 0)
        return -1;
    if (memcmp(acSilk, kFrontSilk, kFrontSilkLen) != 0)
        return -1;

    uint32_t dwNumber = 0;
    for (uint32_t i = kFrontSilkLen; i < sizeof(acSilk) && acSilk[i] != '\0'; ++i) {
        if (acSilk[i] < '0' || acSilk[i] > '9')
            return -1;
        dwNumber = dwNumber * 10 + static_cast<uint32_t>(acSilk[i] - '0');
    }
    *changedSlot = static_cast<uint8_t>(dwNumber);
    return 0;
}

void modifyPcieSlotName(uint8_t *ucInstance, SnrQuery *ptInfo) {
    if (ucInstance == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: ucInstance != 0");
        return;
    }
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: ptInfo != 0");
        return;
    }
    uint8_t ucFrontSlot = 0;
    if (!DeviceTypeOf(ptInfo->ucDeviceType).Has(kFrontSlots) || getFSlotInfo(*ucInstance, &ucFrontSlot) != 0)
        return;
    for (const NamePair &tPair : kFrontNames) {
        if (!SameName(ptInfo->acName, tPair.acFrom))
            continue;
        memcpy(ptInfo->acName, tPair.acTo, sizeof(ptInfo->acName));
        *ucInstance = ucFrontSlot;
        return;
    }
}

uint8_t modifySablinGpuSensorName(SnrQuery *ptInfo) {
    if (ReportNull(__func__, ptInfo))
        return 0;
    uint16_t wBoardId = 0;
    const int32_t sdwRet = get_default_board_id(&wBoardId);
    if (sdwRet < 0)
        wBoardId = 0;
    OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "modifySablinGpuSensorName: sdwRet = %d wBoardId = %x!",
             sdwRet, wBoardId);
    if (!IsGpuUnit(ptInfo))
        return NameLength(ptInfo);
    if (wBoardId != kBoardGpuPlaces) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "The board does not support adding sensor RAx.");
        return 0;
    }
    for (const GpuName &tPair : kGpuPlaces)
        if (Contains(ptInfo->acName, tPair.acFrom))
            return ReplaceInName(*ptInfo, tPair.acFrom, tPair.acTo);
    return NameLength(ptInfo);
}
