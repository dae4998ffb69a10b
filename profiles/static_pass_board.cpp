// SPDX-License-Identifier: Apache-2.0
//
// The steps for disks, the generator tables and the switch board.
#include <cstddef>
#include <cstring>

#include "oxa/platform.h"
#include "profiles/static_pass.h"
#include "sdr/backpanels.h"
#include "sdr/oxa_log.h"

namespace oxa {

namespace {

constexpr uint8_t kSwitchCard = 2; // the card that is the switch board
constexpr uint8_t kOnline = 1;
constexpr uint16_t kRackBoardId = 0x5605;
constexpr uint8_t kPowerModules = 4;
constexpr uint8_t kUbbRetimers = 8;
constexpr uint8_t kGpuRails = 8;

struct DiskRange {
    uint8_t ucStartSlot;
    uint8_t ucDiskCnt;
};

struct DiskRanges {
    uint32_t dwCount = 0; // as told, may exceed the array
    DiskRange at[HAL_HDD_BACKPANEL_MAX];
    uint32_t Walked() const {
        return dwCount < HAL_HDD_BACKPANEL_MAX ? dwCount : HAL_HDD_BACKPANEL_MAX;
    }
};

// The platform's list is borrowed; only the slot ranges are kept.
[[gnu::noinline]] bool ReadDiskRanges(DiskRanges &tRanges) {
    const Backpanels tPanels;
    if (!tPanels.IsRead())
        return false;
    tRanges.dwCount = tPanels.Told();
    for (uint32_t dw = 0; dw < tRanges.Walked(); ++dw) {
        const uint8_t *pucRec = tPanels.Record(dw);
        tRanges.at[dw] = {pucRec[offsetof(HalHddBackpanelRec, ucStartSlot)],
                          pucRec[offsetof(HalHddBackpanelRec, ucDiskCnt)]};
    }
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
    Say(tPass.tProfile.tName, "CheckHddIsSupportNvmeByHal_", OXA_REMARK(kError, kModuleSdr),
        "Quorral_CheckHddIsSupportNvmeByHal failed, slot:%u, result:%u!", ucSlot, sdwRet);
    return false;
}

// The number that is printed at the slot, where the profile goes by it and it differs from the slot.
bool HasOtherSilk(const StaticPass &tPass, uint8_t ucSlot, uint8_t &ucSilk) {
    ucSilk = ucSlot;
    if (!tPass.Has(kPrintsDiskSilk) || Hal_CheckHddSlotIsDiffHddSilk(ucSlot) != 1)
        return false;
    if (Hal_GetHddSilkByHddSlot(ucSlot, &ucSilk) != 0)
        ucSilk = ucSlot;
    return true;
}

void AddDisk(StaticPass &tPass, uint8_t ucSlot) {
    uint8_t ucPrinted = ucSlot;
    const bool bOtherSilk = HasOtherSilk(tPass, ucSlot, ucPrinted);
    tPass.AddGroup(tPass.First(Group::kDisk), At(ucSlot, ucPrinted, ucSlot));
    if (!IsNvme(tPass, ucSlot))
        return;
    if (!bOtherSilk)
        oxa_CustomSlotConversion(&ucPrinted);
    tPass.AddGroup(tPass.First(Group::kNvme), At(ucSlot, ucPrinted, ucSlot));
}

[[gnu::noinline]] void AnnounceBackplane(const StaticPass &tPass, uint8_t ucIndex, DiskRange tRange) {
    PASS_NAMED(kInfo, kModuleSdr, tPass,
               "%s for Disk Sensor: backPanelIndex = %d, ucCnt = %d!,startslt = %d, diskCnt = %d", ucIndex,
               tPass.wCnt, tRange.ucStartSlot, tRange.ucDiskCnt);
}

Outcome AddBackplane(StaticPass &tPass, uint8_t ucIndex, DiskRange tRange) {
    AnnounceBackplane(tPass, ucIndex, tRange);
    const uint32_t dwEnd = uint32_t{tRange.ucStartSlot} + tRange.ucDiskCnt;
    if (dwEnd > 255) {
        PASS_INFO(tPass, "diskIndex may overflow.\n");
        return Outcome::kEndWithoutCount;
    }
    for (uint32_t dwSlot = tRange.ucStartSlot; dwSlot < dwEnd; ++dwSlot)
        AddDisk(tPass, static_cast<uint8_t>(dwSlot));
    if (tPass.tFacts.SensorSimpleFlag == 1 && tRange.ucDiskCnt != 0)
        tPass.AddGroup(tPass.First(Group::kDiskGroup), At(ucIndex));
    return Outcome::kGoOn;
}

void WalkTable(StaticPass &tPass, const StaticGenFn *ptTable, uint8_t ucRows, const char *pcFormat) {
    for (uint8_t ucIndex = 0; ucIndex < ucRows; ++ucIndex) {
        SayText(PASS_SPEAKER(tPass), OXA_REMARK(kInfo, kModuleSdr), pcFormat, tPass.tProfile.tName.acName,
                ucIndex, tPass.wCnt);
        tPass.Count(ptTable[ucIndex](tPass.Slot(), tPass.Entry()));
    }
}

// The indexed sensors of the liquid-cooling unit; one profile announces them by their generators' names.
void AddCduEach(StaticPass &tPass, Group eGroup, uint8_t ucLast) {
    const RowView tFirst = tPass.First(eGroup);
    for (uint8_t ucIndex = 1; ucIndex <= ucLast; ++ucIndex)
        for (RowView tRow = tFirst; tRow.GroupOf() == eGroup; tRow = tRow.Next()) {
            if (tPass.Has(kCduNamesGenerators))
                SayAsDriver(tPass.tProfile.tName, tRow.Generator(), OXA_REMARK(kInfo, kModuleSdr),
                            "%s for CDU: ucIndex = %d, ucCnt = %d!", ucIndex, tPass.wCnt);
            else
                PASS_NAMED(kInfo, kModuleSdr, tPass, "%s for CDU: ucIndex = %d, ucCnt = %d!", ucIndex,
                           tPass.wCnt);
            tPass.Add(tRow, At(ucIndex));
        }
}

bool SwitchCardOnline(const StaticFacts &tFacts) {
    return tFacts.ucSwitchBoardFlag == 1 && GetCardOnlineStatus(kSwitchCard) == kOnline;
}

} // namespace

Outcome AddDisks(StaticPass &tPass) {
    DiskRanges tRanges;
    if (FruSdrInitPathChoice() != 1 || !ReadDiskRanges(tRanges))
        return Outcome::kGoOn;
    PASS_NAMED(kInfo, kModuleSdr, tPass, "%s for Disk Sensor: hddBackPanelDevInfoList->count = %d",
               static_cast<int>(tRanges.dwCount));
    for (uint32_t dwIndex = 0; dwIndex < tRanges.Walked(); ++dwIndex)
        if (AddBackplane(tPass, static_cast<uint8_t>(dwIndex), tRanges.at[dwIndex]) != Outcome::kGoOn)
            return Outcome::kEndWithoutCount;
    return Outcome::kGoOn;
}

Outcome AddTable(StaticPass &tPass) {
    WalkTable(tPass, tPass.tTables.ptTable, tPass.tTables.ucTableCnt,
              "OXA_Add%sStaticSensor: ucIndex = %d, ucCnt = %d!");
    return Outcome::kGoOn;
}

Outcome AddLiquidCooling(StaticPass &tPass) {
    IpmiCduManageConfig tConfig = {0};
    if (IPMI_GetCduManageConfig(&tConfig) != 0 || tConfig.ucEnable != 1)
        return Outcome::kGoOn;
    WalkTable(tPass, tPass.tTables.ptCdu, tPass.tTables.ucCduCnt,
              "OXA_Add%sCDUSensor: ucIndex = %d, ucCnt = %d!");
    AddCduEach(tPass, Group::kCduFan, tPass.tProfile.ucCduFans);
    AddCduEach(tPass, Group::kCduSupply, tPass.tProfile.ucCduSupplies);
    return Outcome::kGoOn;
}

// The rack management board has two sensors and asks the board for nothing but its id.
Outcome AddRackBoard(StaticPass &tPass) {
    uint16_t wBoardId = 0;
    if (get_default_board_id(&wBoardId) < 0) {
        PASS_ERROR(tPass, "get Board Id failed\n");
        return Outcome::kEndWithoutCount;
    }
    if (wBoardId != kRackBoardId)
        return Outcome::kGoOn;
    const StaticTables &tTables = tPass.tTables;
    for (uint8_t ucIndex = 0; ucIndex < tTables.ucRackCnt; ++ucIndex) {
        SayRackRow(PASS_SPEAKER(tPass), OXA_REMARK(kInfo, kModuleSdr), ucIndex, tPass.wCnt,
                   tTables.ucRackCnt);
        tPass.Count(tTables.ptRack[ucIndex](tPass.Slot(), tPass.Entry()));
    }
    return Outcome::kEndWithCount;
}

// Volts and currents, or temperatures, by what card it is.
Outcome AddSwitchCard(StaticPass &tPass) {
    const uint16_t wBoardId = tPass.tFacts.wBoardId;
    if (wBoardId != 0x550F && wBoardId != 0x55DE && wBoardId != 0x55D8)
        return Outcome::kGoOn;
    if (!SwitchCardOnline(tPass.tFacts))
        return Outcome::kGoOn;
    const uint16_t wCardId = GetCardBoardId(kSwitchCard);
    const bool bPower = wCardId == 0x5510;
    if (!bPower && wCardId != 0x5517)
        return Outcome::kGoOn;
    PASS_NAMED(kInfo, kModuleSdr, tPass, "%s for SwitchBoard!");
    tPass.AddEach(bPower ? Group::kSwitchPower : Group::kSwitchTemp, bPower ? 4 : 8);
    return Outcome::kGoOn;
}

Outcome AddSwitchAir(StaticPass &tPass) {
    if (tPass.tFacts.wBoardId != 0x5502 || !SwitchCardOnline(tPass.tFacts) ||
        GetCardBoardId(kSwitchCard) != 0x5504)
        return Outcome::kGoOn;
    PASS_NAMED(kInfo, kModuleSdr, tPass, "%s for SwitchBoard Temp!");
    const RowView tFirst = tPass.First(Group::kSwitchAir);
    for (uint8_t ucIndex = 0; ucIndex < 4; ++ucIndex)
        tPass.AddGroup(tFirst, At(ucIndex));
    return Outcome::kGoOn;
}

// Their number is reported, also when there is none.
Outcome AddPowerModules(StaticPass &tPass) {
    MW_SetPWRModuleOnlineNum(tPass.AddEach(Group::kPowerModule, kPowerModules));
    return Outcome::kGoOn;
}

Outcome AddUbbRetimers(StaticPass &tPass) {
    tPass.AddEach(Group::kUbbRetimer, kUbbRetimers);
    return Outcome::kGoOn;
}

Outcome AddSwitchChips(StaticPass &tPass) {
    tPass.AddEach(Group::kSwitchChip, Hal_GetSwiTempSensorCnt());
    return Outcome::kGoOn;
}

Outcome AddGpuRails(StaticPass &tPass) {
    tPass.AddEach(Group::kGpuRail, kGpuRails);
    return Outcome::kGoOn;
}

Outcome AddLanSwitch(StaticPass &tPass) {
    tPass.AddGroup(tPass.First(Group::kLanSwitch), At());
    return Outcome::kGoOn;
}

} // namespace oxa
