// SPDX-License-Identifier: Apache-2.0
#include "profiles/static_pass.h"

#include "oxa/platform.h"
#include "sdr/oxa_log.h"

namespace oxa {

uint8_t BuildAlone(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwPlace, const ProfileBase &tProfile) {
    return BuildSensor(tProfile.tHead.tName, RowAt(tProfile, dwPlace), At(), pucSDRRec, ptDEVTab);
}

uint8_t BuildIndexed(uint32_t dwIndexAndPlace, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,
                     const ProfileBase &tProfile) {
    return BuildSensor(tProfile.tHead.tName, RowAt(tProfile, dwIndexAndPlace >> 8),
                       At(static_cast<uint8_t>(dwIndexAndPlace)), pucSDRRec, ptDEVTab);
}

void Say(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdw) {
    Say(PASS_SPEAKER(tPass), tRemark, pcFormat, sdw);
}
void SayNamed(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdw) {
    SayNamed(PASS_SPEAKER(tPass), tRemark, pcFormat, sdw);
}
void SayNamed(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdwA, int sdwB, int sdwC,
              int sdwD) {
    SayNamed(PASS_SPEAKER(tPass), tRemark, pcFormat, sdwA, sdwB, sdwC, sdwD);
}

RowView StaticPass::First(Group eGroup) const {
    return RowAt(tBase, tBase.tGroups.aw[static_cast<size_t>(eGroup)]);
}

[[gnu::noinline]] void StaticPass::Announce(RowView tRow, At tAt) const {
    SayNamedText(tProfile.tName, "", OXA_REMARK(kInfo, kModuleSdr), "%s for %s: ucIndex = %d, ucCnt = %d!",
                 tRow.Announced(), tAt.Index(), wCnt);
}

void StaticPass::AddGroup(RowView tFirst, At tAt) {
    if (tFirst.IsEnd())
        return;
    RowView tRow = tFirst;
    do { // the end row is in no group
        if (tRow.IsAnnounced())
            Announce(tRow, tAt);
        Add(tRow, tAt);
        tRow = tRow.Next();
    } while (tRow.GroupOf() == tFirst.GroupOf());
}

uint8_t StaticPass::AddEach(Group eGroup, uint8_t ucLast) {
    const RowView tFirst = First(eGroup);
    const uint16_t wBefore = wCnt;
    for (uint32_t dwIndex = 1; dwIndex <= ucLast; ++dwIndex)
        AddGroup(tFirst, At(static_cast<uint8_t>(dwIndex)));
    return static_cast<uint8_t>(wCnt - wBefore);
}

namespace {

// A failed query warns and the fact keeps its default.
void KeepFact(const StaticPass &tPass, int32_t sdwRet, uint8_t &ucFact, const char *pcFormat) {
    if (sdwRet == 0)
        return;
    ucFact = 0;
    PASS_WARN(kModuleQuery, tPass, pcFormat, sdwRet);
}

uint8_t ReadFanMaxCount(const StaticPass &tPass) {
    const ProfileName &tName = tPass.tProfile.tName;
    constexpr const char *pcWho = "GetFanMaxCountByHal_";
    const HalFanService *ptFan = HalFanInst();
    if (ptFan == nullptr) {
        Say(tName, pcWho, OXA_REMARK(kError, kModuleAssert), "assertion failed: halFan != 0");
        return 0;
    }
    uint8_t ucFanCnt = 0;
    const int32_t sdwRet = ptFan->GetFanMaxCount == nullptr ? -1 : ptFan->GetFanMaxCount(&ucFanCnt);
    if (sdwRet == 0)
        return ucFanCnt;
    Say(tName, pcWho, OXA_REMARK(kError, kModuleSdr), "Get fan max count failed, result:%u!", sdwRet);
    return 0;
}

void GatherParts(StaticPass &tPass) {
    StaticFacts &t = tPass.tFacts;
    KeepFact(tPass, HAL_GetCpuMaxCount(&t.ucCpuMaxCount), t.ucCpuMaxCount,
             "HAL_GetCpuMaxCount(&ucCpuMaxCount) = [%X]");
    KeepFact(tPass, HAL_GetCpuSilkScreenIndexFixValue(&t.ucCpuSilkStartIndex), t.ucCpuSilkStartIndex,
             "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [%X]");
    KeepFact(tPass, HAL_GetDimmMaxCount(&t.ucDimmMaxCount), t.ucDimmMaxCount,
             "HAL_GetDimmMaxCount(&ucDimmMaxCount) = [%X]");
    t.ucPcieCnt = Hal_GetStandPcieSlotCounts();
    KeepFact(tPass, HAL_GetCpuType(&t.ucCpuType), t.ucCpuType, "HAL_GetCpuType(&ucCpuType) = [%X]");
    t.ucFanCnt = ReadFanMaxCount(tPass);
    t.ucOCPCnt = GetOcpNetCardMaxCount();
    KeepFact(tPass, HAL_IsNeedSensorSimplification(&t.SensorSimpleFlag), t.SensorSimpleFlag,
             "HAL_IsNeedSensorSimplification(&SensorSimpleFlag) = [%X]");
    t.ucSwitchBoardFlag = GetSwitchBoardSupportFlag();
}

void ApplyBoardRules(StaticFacts &t) {
    if (t.wBoardId == 0x558B || t.wBoardId == 0x5580)
        t.ucOCPCnt = 0;
    if (t.wBoardId == kSmallBoardId)
        t.ucPSUCnt = t.ucPowerManage = t.ucOCPCnt = t.ucFanCnt = t.ucPcieCnt = 0;
}

// Steps of single profiles.
Outcome RunOwnStep(StaticPass &tPass, Step eStep) {
    switch (eStep) {
    case Step::kRackBoard:
        return AddRackBoard(tPass);
    case Step::kPowerModules:
        return AddPowerModules(tPass);
    case Step::kUbbRetimers:
        return AddUbbRetimers(tPass);
    case Step::kSwitchChips:
        return AddSwitchChips(tPass);
    case Step::kGpuRails:
        return AddGpuRails(tPass);
    case Step::kLanSwitch:
        return AddLanSwitch(tPass);
    default:
        return Outcome::kGoOn;
    }
}

Outcome RunStep(StaticPass &tPass, Step eStep) {
    switch (eStep) {
    case Step::kFacts:
        return GatherFacts(tPass);
    case Step::kTable:
        return AddTable(tPass);
    case Step::kSwitchCard:
        return AddSwitchCard(tPass);
    case Step::kSwitchAir:
        return AddSwitchAir(tPass);
    case Step::kCpus:
        return AddCpus(tPass);
    case Step::kCpuDomains:
        return AddCpuDomains(tPass);
    case Step::kMemory:
        return AddMemory(tPass);
    case Step::kPsus:
        return AddPsus(tPass);
    case Step::kPcie:
        return AddPcie(tPass);
    case Step::kFans:
        return AddFans(tPass);
    case Step::kDisks:
        return AddDisks(tPass);
    case Step::kOcp:
        return AddOcp(tPass);
    case Step::kLiquidCooling:
        return AddLiquidCooling(tPass);
    default:
        return RunOwnStep(tPass, eStep);
    }
}

Outcome RunSteps(StaticPass &tPass) {
    Outcome eOutcome = Outcome::kGoOn;
    for (const Step *peStep = tPass.tProfile.aeSteps; *peStep != Step::kEnd && eOutcome == Outcome::kGoOn;
         ++peStep)
        eOutcome = RunStep(tPass, *peStep);
    return eOutcome;
}

void LogCount(const StaticPass &tPass) {
    if (tPass.Has(kShortFinalLine))
        SayText(PASS_SPEAKER(tPass), OXA_REMARK(kInfo, kModuleSdr), "Add%sSensor: ucCnt = %d!",
                tPass.tProfile.tName.acName, tPass.wCnt);
    else
        PASS_NAMED(kInfo, kModuleSdr, tPass, "%s: ucCnt = %d!", tPass.wCnt);
}

} // namespace

// Two facts are fatal: without the number of PSUs or the board id there is no pass.
Outcome GatherFacts(StaticPass &tPass) {
    StaticFacts &t = tPass.tFacts;
    GatherParts(tPass);
    if (HAL_GetPsuMaxCount(&t.ucPSUCnt) != 0) {
        PASS_ERROR(tPass, "get pem max count failed\n");
        return Outcome::kEndWithoutCount;
    }
    if (HAL_GetIsSupportPowerManage(&t.ucPowerManage) != 0)
        t.ucPowerManage = 0;
    if (get_default_board_id(&t.wBoardId) < 0) {
        PASS_ERROR(tPass, "get Board Id failed\n");
        return Outcome::kEndWithoutCount;
    }
    ApplyBoardRules(t);
    return Outcome::kGoOn;
}

void StaticPass::Run(uint8_t *pucSlots, DevTabEntry *ptEntries, uint16_t *pucSensorCnt) {
    if (pucSlots == nullptr || ptEntries == nullptr || pucSensorCnt == nullptr) {
        PASS_NAMED(kError, kModuleSdr, *this,
                   "%s failed! pucSDRRec == NULL || ptDEVTab == NULL || pucSensorCnt == NULL.");
        return;
    }
    pucSDRRec = pucSlots;
    ptDEVTab = ptEntries;
    const Outcome eOutcome = RunSteps(*this);
    if (eOutcome == Outcome::kEndWithoutCount)
        return;
    if (eOutcome == Outcome::kGoOn)
        LogCount(*this);
    *pucSensorCnt = wCnt;
}

void RunStaticPass(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt,
                   const ProfileBase &tProfile, const StaticTables &tTables) {
    StaticPass tPass(tProfile, tTables);
    tPass.Run(pucSDRRec, ptDEVTab, pucSensorCnt);
}

} // namespace oxa
