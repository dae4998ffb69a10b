// SPDX-License-Identifier: Apache-2.0
#include "library/static_sensors/pass.h"

#include "library/record/log.h"

namespace oxa {

[[gnu::noinline]] void StaticPass::Announce(RowView tRow, uint8_t ucIndex) const {
    OXA_INFO(kModuleSdr, Unit(), Driver(), "%s for %s: ucIndex = %d, ucCnt = %d!", Driver(), tRow.Announced(),
             ucIndex, wCnt);
}

void StaticPass::AddGroup(RowView tFirst, const At &tAt) {
    if (tFirst.IsEnd())
        return;
    for (RowView tRow = tFirst;; tRow = tRow.Next()) {
        if (tRow.IsAnnounced())
            Announce(tRow, tAt.ucIndex);
        Add(tRow, tAt);
        if (tRow.IsLastOfGroup())
            return;
    }
}

uint8_t StaticPass::AddEach(Group eGroup, uint8_t ucLast) {
    const RowView tFirst = tProfile.FirstRow(eGroup);
    const uint16_t wBefore = wCnt;
    for (uint32_t dwIndex = 1; dwIndex <= ucLast; ++dwIndex)
        AddGroup(tFirst, At(static_cast<uint8_t>(dwIndex)));
    return static_cast<uint8_t>(wCnt - wBefore);
}

namespace {

void LogCount(const StaticPass &tPass) {
    if (tPass.Order().bShortFinalLine)
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "Add%sSensor: ucCnt = %d!", tPass.ProfileName(),
                 tPass.wCnt);
    else
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s: ucCnt = %d!", tPass.Driver(), tPass.wCnt);
}

StepResult RunStep(StaticPass &tPass, Step eStep) {
    switch (eStep) {
    case Step::kRackBoard:
        return AddRackBoard(tPass);
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
    case Step::kLiquidCooling:
        return AddLiquidCooling(tPass);
    case Step::kEnd:
        break;
    }
    LogCount(tPass);
    return StepResult::kEndWithCount;
}

StepResult RunSteps(StaticPass &tPass) {
    const Step *peStep = tPass.Order().aeSteps;
    StepResult eResult = StepResult::kGoOn;
    while (eResult == StepResult::kGoOn)
        eResult = RunStep(tPass, *peStep++);
    return eResult;
}

} // namespace

void RunStaticPass(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt,
                   const StaticProfile &tProfile, const StaticTables &tTables) {
    StaticPass tPass(tProfile, tTables, pucSDRRec, ptDEVTab);
    if (pucSDRRec == nullptr || ptDEVTab == nullptr || pucSensorCnt == nullptr) {
        OXA_ERROR(kModuleSdr, tPass.Unit(), tPass.Driver(),
                  "%s failed! pucSDRRec == NULL || ptDEVTab == NULL || pucSensorCnt == NULL.",
                  tPass.Driver());
        return;
    }
    if (RunSteps(tPass) == StepResult::kEndWithCount)
        *pucSensorCnt = tPass.wCnt;
}

} // namespace oxa
