// SPDX-License-Identifier: Apache-2.0
//
// Which disks already have their temperature and status records, and on which side of the chassis a disk
// sits.
//
// Nothing is ever taken out: a disk that is pulled and put back gets no new records until the library is
// loaded anew.
#include <cstring>

#include "library/record/log.h"
#include "library/record/traits.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/disk_registry.h"
#include "library/store/backplanes.h"
#include "oxa/specific_sensors.h"

HddRegisterInfo gRegisterInfo;

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr uint8_t kHddTracked = 1; // the only disk kind whose two sensors are told apart
constexpr char kFront[] = "Front";

uint32_t UsableEntries() {
    return gRegisterInfo.registerSlotNum < HDD_REGISTER_MAX ? gRegisterInfo.registerSlotNum
                                                            : HDD_REGISTER_MAX;
}

bool IsOnFrontBackplane(const HalHddBackpanelRec &tBackplane, uint32_t dwIndex, int32_t sdwSlot) {
    char acLocation[HAL_HDD_LOCATION_LEN]; // the platform's may lack its NUL
    memcpy(acLocation, tBackplane.acLocation, sizeof(acLocation));
    acLocation[HAL_HDD_LOCATION_LEN - 1] = '\0';
    OXA_INFO(kModuleSdr, kSensorDataUnit, "getNvmeFrontInfo",
             "register Disk Sensor: backPanelIndex = %d, startslt = %d, diskCnt = %d, Location = %s",
             static_cast<int>(dwIndex), tBackplane.ucStartSlot, tBackplane.ucDiskCnt, acLocation);
    // eight bits wide: a backplane that runs over 255 holds no slot
    const uint8_t ucLast = static_cast<uint8_t>(tBackplane.ucStartSlot + tBackplane.ucDiskCnt - 1);
    return tBackplane.ucDiskCnt != 0 && sdwSlot >= tBackplane.ucStartSlot && sdwSlot <= ucLast &&
           memcmp(acLocation, kFront, sizeof(kFront)) == 0;
}

} // namespace

uint32_t isHasRegister(int32_t sdwSlot, int32_t sdwKind) {
    OXA_WARN(kModuleSdr, kSensorDataUnit, __func__, "slotid:%d, type:%d, gRegisterInfo.registerSlotNum:%d!\n",
             sdwSlot, sdwKind, gRegisterInfo.registerSlotNum);
    const uint32_t dwEntries = UsableEntries();
    for (uint32_t dw = 0; dw < dwEntries; ++dw) {
        const HddRegisterEntry &tHdd = gRegisterInfo.tHddInfo[dw];
        OXA_INFO(kModuleSdr, kSensorDataUnit, __func__,
                 "gRegisterInfo.tHddInfo[index].slotNum:%d, gRegisterInfo.tHddInfo[index].hddType:%d, "
                 "gRegisterInfo.tHddInfo[index].statusFlag:%d, gRegisterInfo.tHddInfo[index].tempFlag:%d.\n",
                 tHdd.slotNum, tHdd.hddType, tHdd.statusFlag, tHdd.tempFlag);
        if (tHdd.slotNum != sdwSlot)
            continue;
        if (tHdd.hddType != kHddTracked)
            return 1;
        switch (sdwKind) {
        case kRegisterTemp:
            return tHdd.tempFlag != 0;
        case kRegisterStatus:
            return tHdd.statusFlag != 0;
        default:
            return 1;
        }
    }
    return 0;
}

uint32_t setHddRegisterInfo(uint32_t dwSlot, uint32_t dwKind, uint32_t dwHddType) {
    OXA_INFO(kModuleSdr, kSensorDataUnit, __func__,
             "slotid:%d, type:%d, hddType:%d, gRegisterInfo.registerSlotNum:%d!\n", static_cast<int>(dwSlot),
             static_cast<int>(dwKind), static_cast<int>(dwHddType), gRegisterInfo.registerSlotNum);
    const uint32_t dwEntries = UsableEntries();
    uint32_t dwIndex = 0;
    while (dwIndex < dwEntries && gRegisterInfo.tHddInfo[dwIndex].slotNum != dwSlot)
        ++dwIndex;
    if (dwIndex >= HDD_REGISTER_MAX)
        return 0;
    HddRegisterEntry &tHdd = gRegisterInfo.tHddInfo[dwIndex];
    if (tHdd.hddType == 0) {
        tHdd.hddType = static_cast<uint8_t>(dwHddType);
        tHdd.slotNum = static_cast<uint8_t>(dwSlot);
        ++gRegisterInfo.registerSlotNum;
    }
    if (dwKind == kRegisterTemp)
        tHdd.tempFlag = 1;
    else if (dwKind == kRegisterStatus)
        tHdd.statusFlag = 1;
    else
        return 0;
    OXA_INFO(kModuleSdr, kSensorDataUnit, __func__,
             "index:%d, gRegisterInfo.tHddInfo[index].hddType:%d, gRegisterInfo.tHddInfo[index].slotNum:%d, "
             "gRegisterInfo.tHddInfo[index].statusFlag:%d, gRegisterInfo.tHddInfo[index].tempFlag:%d\n",
             static_cast<int>(dwIndex), tHdd.hddType, tHdd.slotNum, tHdd.statusFlag, tHdd.tempFlag);
    return 0;
}

uint8_t getNvmeFrontInfo(int32_t sdwSlot) {
    const Backplanes tBackplanes;
    const uint32_t dwUsable = tBackplanes.Usable();
    for (uint32_t dw = 0; dw < dwUsable; ++dw)
        if (IsOnFrontBackplane(tBackplanes.Record(dw), dw, sdwSlot))
            return kNvmeFront;
    return kNvmeRear;
}

int32_t isNeedRegisterHddSdr(void) {
    uint32_t dwCustomId = 0;
    if (IPMI_LoadCustomID(&dwCustomId) != 0)
        return -1;
    return TraitsOf(dwCustomId).bRegistersDisks ? 1 : 0;
}
