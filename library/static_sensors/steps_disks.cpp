// SPDX-License-Identifier: Apache-2.0
//
// The step for disks, backplane by backplane.
#include "library/record/log.h"
#include "library/static_sensors/pass.h"
#include "library/store/backplanes.h"

namespace oxa {

namespace {

struct DiskRange {
    uint8_t ucStartSlot;
    uint8_t ucDiskCnt;
};

struct DiskRanges {
    uint32_t dwCount = 0; // as told, may exceed the array
    DiskRange at[HAL_HDD_BACKPANEL_MAX];
    uint32_t Usable() const {
        return dwCount < HAL_HDD_BACKPANEL_MAX ? dwCount : HAL_HDD_BACKPANEL_MAX;
    }
};

// Of the platform's list only the slot ranges are kept while disks are built.
[[gnu::noinline]] bool ReadDiskRanges(DiskRanges &tRanges) {
    const Backplanes tBackplanes;
    if (!tBackplanes.IsRead())
        return false;
    tRanges.dwCount = tBackplanes.Reported();
    for (uint32_t dw = 0; dw < tRanges.Usable(); ++dw)
        tRanges.at[dw] = {tBackplanes.Record(dw).ucStartSlot, tBackplanes.Record(dw).ucDiskCnt};
    return true;
}

[[gnu::noinline]] bool IsNvme(const StaticPass &tPass, uint8_t ucSlot) {
    uint8_t ucIsNvme = 0;
    int32_t sdwRet = -1;
    const HalHddBackpanelService *ptService = HalHddBackpanelInst();
    if (ptService != nullptr && ptService->CheckHddIsSupportNvme != nullptr)
        sdwRet = ptService->CheckHddIsSupportNvme(ucSlot, &ucIsNvme);
    if (sdwRet == 0)
        return ucIsNvme == 1;
    // another profile's name in the text, kept as it is
    OXA_ERROR(kModuleSdr, tPass.Unit(), tPass.tProfile.tNames.acNvmeSlot,
              "Quorral_CheckHddIsSupportNvmeByHal failed, slot:%u, result:%u!", ucSlot,
              static_cast<uint32_t>(sdwRet));
    return false;
}

// The number that is printed at the slot, where the profile goes by it and it differs from the slot.
bool HasOtherSilk(const StaticPass &tPass, uint8_t ucSlot, uint8_t &ucSilk) {
    ucSilk = ucSlot;
    if (!tPass.Order().bPrintsDiskSilk || Hal_CheckHddSlotIsDiffHddSilk(ucSlot) != 1)
        return false;
    if (Hal_GetHddSilkByHddSlot(ucSlot, &ucSilk) != 0)
        ucSilk = ucSlot;
    return true;
}

void AddDisk(StaticPass &tPass, uint8_t ucSlot) {
    uint8_t ucPrinted = ucSlot;
    const bool bOtherSilk = HasOtherSilk(tPass, ucSlot, ucPrinted);
    tPass.AddGroup(tPass.tProfile.FirstRow(Group::kDisk), At(ucSlot, ucPrinted, ucSlot));
    if (!IsNvme(tPass, ucSlot))
        return;
    if (!bOtherSilk)
        oxa_CustomSlotConversion(&ucPrinted);
    tPass.AddGroup(tPass.tProfile.FirstRow(Group::kNvme), At(ucSlot, ucPrinted, ucSlot));
}

[[gnu::noinline]] void AnnounceBackplane(const StaticPass &tPass, uint8_t ucIndex, DiskRange tRange) {
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(),
             "%s for Disk Sensor: backPanelIndex = %d, ucCnt = %d!,startslt = %d, diskCnt = %d",
             tPass.Driver(), ucIndex, tPass.wCnt, tRange.ucStartSlot, tRange.ucDiskCnt);
}

StepResult AddBackplane(StaticPass &tPass, uint8_t ucIndex, DiskRange tRange) {
    AnnounceBackplane(tPass, ucIndex, tRange);
    const uint32_t dwEnd = uint32_t{tRange.ucStartSlot} + tRange.ucDiskCnt;
    if (dwEnd > 255) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "diskIndex may overflow.\n");
        return StepResult::kEndWithoutCount;
    }
    for (uint32_t dwSlot = tRange.ucStartSlot; dwSlot < dwEnd; ++dwSlot)
        AddDisk(tPass, static_cast<uint8_t>(dwSlot));
    if (tPass.tFacts.SensorSimpleFlag == 1 && tRange.ucDiskCnt != 0)
        tPass.AddGroup(tPass.tProfile.FirstRow(Group::kDiskGroup), At(ucIndex));
    return StepResult::kGoOn;
}

} // namespace

StepResult AddDisks(StaticPass &tPass) {
    DiskRanges tRanges;
    if (FruSdrInitPathChoice() != 1 || !ReadDiskRanges(tRanges))
        return StepResult::kGoOn;
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(),
             "%s for Disk Sensor: hddBackPanelDevInfoList->count = %d", tPass.Driver(),
             static_cast<int>(tRanges.dwCount));
    for (uint32_t dwIndex = 0; dwIndex < tRanges.Usable(); ++dwIndex)
        if (AddBackplane(tPass, static_cast<uint8_t>(dwIndex), tRanges.at[dwIndex]) != StepResult::kGoOn)
            return StepResult::kEndWithoutCount;
    return StepResult::kGoOn;
}

} // namespace oxa
