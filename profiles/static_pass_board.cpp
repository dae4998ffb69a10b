// SPDX-License-Identifier: Apache-2.0
//
// The steps for disks, the generator tables and the switch board.
#include <cstring>

#include "oxa/platform.h"
#include "profiles/static_pass.h"
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

// The platform's list is bigger than this pass may take from the stack, so it is borrowed from the image of
// the extended store (which is read afresh before each use) and only the slot ranges are kept.
static_assert(sizeof(HalHddBackpanelList) <= sizeof(g_extSdrData));
bool ReadDiskRanges(DiskRanges &tRanges) {
    const HalHddBackpanelService *ptService = HalHddBackpanelInst();
    if (ptService == nullptr || ptService->GetBackPanelList == nullptr)
        return false;
    memset(g_extSdrData, 0, sizeof(HalHddBackpanelList));
    const bool bRead =
        ptService->GetBackPanelList(reinterpret_cast<HalHddBackpanelList *>(g_extSdrData)) == 0;
    if (bRead)
        memcpy(&tRanges.dwCount, g_extSdrData + offsetof(HalHddBackpanelList, count),
               sizeof(tRanges.dwCount));
    for (uint32_t dw = 0; bRead && dw < tRanges.Walked(); ++dw) {
        const uint8_t *pucRec =
            g_extSdrData + offsetof(HalHddBackpanelList, atRec) + dw * sizeof(HalHddBackpanelRec);
        tRanges.at[dw] = {pucRec[offsetof(HalHddBackpanelRec, ucStartSlot)],
                          pucRec[offsetof(HalHddBackpanelRec, ucDiskCnt)]};
    }
    memset(g_extSdrData, 0, sizeof(HalHddBackpanelList));
    return bRead;
}

bool IsNvme(const StaticPass &tPass, uint8_t ucSlot) {
    uint8_t ucIsNvme = 0;
    int32_t sdwRet = -1;
    const HalHddBackpanelService *ptService = HalHddBackpanelInst();
    if (ptService != nullptr && ptService->CheckHddIsSupportNvme != nullptr)
        sdwRet = ptService->CheckHddIsSupportNvme(ucSlot, &ucIsNvme);
    if (sdwRet == 0)
        return ucIsNvme == 1;
    const ProfileName &tName = tPass.tProfile.tName;
    const Label tLabel(tName, "CheckHddIsSupportNvmeByHal_");
    // another profile's name in the text, kept as it is
    OXA_ERROR(kModuleSdr, tName.acFile, tLabel.ac,
              "Quorral_CheckHddIsSupportNvmeByHal failed, slot:%u, result:%u!", ucSlot,
              static_cast<unsigned>(sdwRet));
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
    tPass.AddGroup(Group::kDisk, At(ucSlot, ucPrinted, ucSlot));
    if (!IsNvme(tPass, ucSlot))
        return;
    if (!bOtherSilk)
        oxa_CustomSlotConversion(&ucPrinted);
    tPass.AddGroup(Group::kNvme, At(ucSlot, ucPrinted, ucSlot));
}

Outcome AddBackplane(StaticPass &tPass, uint8_t ucIndex, DiskRange tRange) {
    PASS_INFO(tPass, "%s for Disk Sensor: backPanelIndex = %d, ucCnt = %d!,startslt = %d, diskCnt = %d",
              tPass.tDriver.ac, ucIndex, tPass.wCnt, tRange.ucStartSlot, tRange.ucDiskCnt);
    const uint32_t dwEnd = uint32_t{tRange.ucStartSlot} + tRange.ucDiskCnt;
    if (dwEnd > 255) {
        PASS_INFO(tPass, "diskIndex may overflow.\n");
        return Outcome::kEndWithoutCount;
    }
    for (uint32_t dwSlot = tRange.ucStartSlot; dwSlot < dwEnd; ++dwSlot)
        AddDisk(tPass, static_cast<uint8_t>(dwSlot));
    if (tPass.tFacts.SensorSimpleFlag == 1 && tRange.ucDiskCnt != 0)
        tPass.AddGroup(Group::kDiskGroup, At(ucIndex));
    return Outcome::kGoOn;
}

void WalkTable(StaticPass &tPass, const StaticGenFn *ptTable, uint8_t ucRows, const char *pcFormat) {
    for (uint8_t ucIndex = 0; ucIndex < ucRows; ++ucIndex) {
        PASS_INFO(tPass, pcFormat, tPass.tProfile.tName.acName, ucIndex, tPass.wCnt);
        tPass.Count(ptTable[ucIndex](tPass.Slot(), tPass.Entry()));
    }
}

// The indexed sensors of the liquid-cooling unit; one profile announces them by their generators' names.
void AddCduEach(StaticPass &tPass, Group eGroup, uint8_t ucLast) {
    for (uint8_t ucIndex = 1; ucIndex <= ucLast; ++ucIndex)
        for (RowView tRow = tPass.First(eGroup); tRow.GroupOf() == eGroup; tRow = tRow.Next()) {
            const Label tGenerator(tPass.tProfile.tName, tRow.Generator());
            PASS_INFO(tPass, "%s for CDU: ucIndex = %d, ucCnt = %d!",
                      tPass.Has(kCduNamesGenerators) ? tGenerator.ac : tPass.tDriver.ac, ucIndex, tPass.wCnt);
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
    PASS_INFO(tPass, "%s for Disk Sensor: hddBackPanelDevInfoList->count = %d", tPass.tDriver.ac,
              static_cast<int>(tRanges.dwCount));
    for (uint8_t ucIndex = 0; ucIndex < tRanges.Walked(); ++ucIndex)
        if (AddBackplane(tPass, ucIndex, tRanges.at[ucIndex]) != Outcome::kGoOn)
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
        PASS_INFO(tPass, "OXA_Add%sRMCStaticSensor: ucIndex = %d, ucCnt = %d, uc%sRMCStaticSDRCnt = %d!",
                  tPass.tProfile.tName.acName, ucIndex, tPass.wCnt, tPass.tProfile.tName.acName,
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
    PASS_INFO(tPass, "%s for SwitchBoard!", tPass.tDriver.ac);
    const uint8_t ucInstances = bPower ? 4 : 8;
    for (uint8_t ucInstance = 1; ucInstance <= ucInstances; ++ucInstance)
        tPass.AddGroup(bPower ? Group::kSwitchPower : Group::kSwitchTemp, At(ucInstance));
    return Outcome::kGoOn;
}

Outcome AddSwitchAir(StaticPass &tPass) {
    if (tPass.tFacts.wBoardId != 0x5502 || !SwitchCardOnline(tPass.tFacts) ||
        GetCardBoardId(kSwitchCard) != 0x5504)
        return Outcome::kGoOn;
    PASS_INFO(tPass, "%s for SwitchBoard Temp!", tPass.tDriver.ac);
    for (uint8_t ucIndex = 0; ucIndex < 4; ++ucIndex)
        tPass.AddGroup(Group::kSwitchAir, At(ucIndex));
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
    tPass.AddGroup(Group::kLanSwitch, At());
    return Outcome::kGoOn;
}

} // namespace oxa
