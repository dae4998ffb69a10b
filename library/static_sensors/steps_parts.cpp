// SPDX-License-Identifier: Apache-2.0
//
// The steps for parts of which a board has several: processors, memory, power supplies, slots, fans and
// cards.
#include "library/record/log.h"
#include "library/static_sensors/pass.h"
#include "oxa/store.h"

namespace oxa {

namespace {

constexpr uint8_t kCountUnusable = 0xFF;
constexpr uint8_t kDoubledCpusMax = 0x79; // above it the doubled CPU count in the log reads 0
constexpr uint8_t kPsuGroupMax = 2;

// A count that cannot be walked with an 8-bit index ends the whole pass.
bool CountUsable(const StaticPass &tPass, uint8_t ucCount, const char *pcFormat) {
    if (ucCount != kCountUnusable)
        return true;
    OXA_WARN(kModuleSdr, tPass.Unit(), tPass.Driver(), pcFormat, ucCount);
    return false;
}

void AddPsuRedundancy(StaticPass &tPass) {
    uint8_t ucGroupCnt = 0;
    uint8_t ucPsuPerGroup = 0;
    if (HAL_GetPsuGroupCount(&ucGroupCnt) != 0 || ucGroupCnt > kPsuGroupMax)
        return;
    if (HAL_GetPsuCountPerGroup(&ucPsuPerGroup) != 0 || ucPsuPerGroup == 0)
        return;
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kPsuRedundancy);
    for (uint8_t ucGroup = 0; ucGroup < ucGroupCnt; ++ucGroup)
        tPass.AddGroup(tFirst, At(ucGroup));
}

// Announced on the debug channel, unlike all others.
[[gnu::noinline]] void AnnounceDimmGroup(const StaticPass &tPass, RowView tRow, uint8_t ucIndex) {
    OXA_DEBUG(kDebugChannel, tPass.Unit(), "%s for %s: ucIndex = %d, ucCnt = %d!", tPass.Driver(),
              tRow.Announced(), ucIndex, tPass.wCnt);
}

void AddDimmGroups(StaticPass &tPass) {
    const StaticFacts &tFacts = tPass.tFacts;
    const RowView tRow = tPass.tProfile.FirstRow(Group::kDimmGroup);
    const uint8_t ucGroupCnt = tFacts.ucDimmMaxCount == 0 ? 0 : tFacts.ucCpuMaxCount;
    for (uint8_t ucIndex = 0; ucIndex < ucGroupCnt; ++ucIndex) {
        AnnounceDimmGroup(tPass, tRow, ucIndex);
        tPass.Add(tRow, At(ucIndex));
    }
}

// The fan service is asked afresh for every fan.  Without it the fan is built all the same, as number 0.
bool ReadFanSilk(const StaticPass &tPass, uint8_t ucFanIndex, uint8_t &ucSilk) {
    const char *pcWho = tPass.tProfile.tNames.acFanSilk;
    ucSilk = 0;
    const HalFanService *ptFan = HalFanInst();
    if (ptFan == nullptr) {
        OXA_ERROR(kModuleAssert, tPass.Unit(), pcWho, "assertion failed: halFan != 0");
        return true;
    }
    const int32_t sdwRet =
        ptFan->GetFanSilkByIndex == nullptr ? -1 : ptFan->GetFanSilkByIndex(ucFanIndex, &ucSilk);
    if (sdwRet == 0)
        return ucSilk != 0xFF;
    OXA_WARN(kModuleQuery, tPass.Unit(), pcWho, "%s FanIndex[%u] failed,result:%u!", pcWho, ucFanIndex,
             static_cast<uint32_t>(sdwRet));
    return false;
}

} // namespace

StepResult AddCpus(StaticPass &tPass) {
    const uint8_t ucCPUCnt = tPass.tFacts.ucCpuMaxCount;
    const uint32_t dwStart = tPass.tFacts.ucCpuSilkStartIndex;
    const uint32_t dwEnd = dwStart + ucCPUCnt;
    if (dwEnd > 255) {
        OXA_WARN(kModuleSdr, tPass.Unit(), tPass.Driver(),
                 "ucIndex may overflow. (ucCPUCnt+ucCpuSilkStart) = %d!\n", static_cast<int>(dwEnd));
        return StepResult::kEndWithoutCount;
    }
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kCpu);
    const RowView tMore = tPass.tProfile.FirstRow(Group::kCpuMore);
    const uint32_t dwCnt = ucCPUCnt > kDoubledCpusMax ? 0 : 2u * ucCPUCnt;
    for (uint32_t dwIndex = dwStart; dwIndex < dwEnd; ++dwIndex) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(),
                 "%s for CPU: dwIndex = %d,ucCPUCnt = %d, dwCnt = %d!", tPass.Driver(),
                 static_cast<int>(dwIndex), ucCPUCnt, static_cast<int>(dwCnt));
        if (OXA_CheckifAddCpuSensorByIndex(static_cast<uint8_t>(dwIndex - dwStart)) != 1)
            continue;
        tPass.AddGroup(tFirst, At(static_cast<uint8_t>(dwIndex)));
        tPass.AddGroup(tMore, At(static_cast<uint8_t>(dwIndex)));
    }
    return StepResult::kGoOn;
}

// The rows of the group stand in pairs: the domains of CPU 0, then those of CPU 1.
StepResult AddCpuDomains(StaticPass &tPass) {
    if (tPass.tFacts.ucCpuType != CPU_TYPE_DOMAIN_VOLT)
        return StepResult::kGoOn;
    RowView tRow = tPass.tProfile.FirstRow(Group::kCpuDomain);
    for (uint8_t ucCpu = 0; ucCpu < 2; ++ucCpu) {
        const bool bAdd = OXA_CheckifAddCpuSensorByIndex(ucCpu) == 1;
        for (uint8_t ucDomain = 0; ucDomain < 2; ++ucDomain, tRow = tRow.Next())
            if (bAdd && tPass.Add(tRow, At(static_cast<uint8_t>(tPass.tFacts.ucCpuSilkStartIndex + ucCpu))))
                OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for CPU Voltage:  ucCnt = %d!",
                         tPass.Driver(), tPass.wCnt);
    }
    return StepResult::kGoOn;
}

StepResult AddPsus(StaticPass &tPass) {
    const uint8_t ucPSUCnt = tPass.tFacts.ucPSUCnt;
    if (!CountUsable(tPass, ucPSUCnt, "ucIndex may overflow. dwPSUCnt = %d!\n"))
        return StepResult::kEndWithoutCount;
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kPsu);
    for (uint8_t ucIndex = 1; ucIndex <= ucPSUCnt; ++ucIndex) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for PSU Sensor: dwIndex = %d, ucCnt = %d!",
                 tPass.Driver(), ucIndex, tPass.wCnt);
        tPass.AddGroup(tFirst, At(ucIndex));
    }
    if (ucPSUCnt != 0)
        AddPsuRedundancy(tPass);
    return StepResult::kGoOn;
}

StepResult AddMemory(StaticPass &tPass) {
    const uint8_t ucDimmCnt = tPass.tFacts.ucDimmMaxCount;
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for Mem Status Sensor: ucDimmCnt = %d!",
             tPass.Driver(), ucDimmCnt);
    if (!CountUsable(tPass, ucDimmCnt, "ucIndex may overflow. dwDimmCnt = %d!\n"))
        return StepResult::kEndWithoutCount;
    if (tPass.tFacts.SensorSimpleFlag == 1) {
        AddDimmGroups(tPass);
        return StepResult::kGoOn;
    }
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kDimm);
    for (uint8_t ucIndex = 0; ucIndex < ucDimmCnt; ++ucIndex)
        tPass.AddGroup(tFirst, At(ucIndex));
    return StepResult::kGoOn;
}

StepResult AddPcie(StaticPass &tPass) {
    const uint8_t ucPcieCnt = tPass.tFacts.ucPcieCnt;
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for Pcie Status Sensor ucPcieCnt = %d!",
             tPass.Driver(), ucPcieCnt);
    if (!CountUsable(tPass, ucPcieCnt, "ucIndex may overflow. ucPcieCnt = %d!\n"))
        return StepResult::kEndWithoutCount;
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kPcie);
    for (uint8_t ucIndex = 1; ucIndex <= ucPcieCnt; ++ucIndex) {
        uint8_t ucSlot = 0;
        if (Hal_GetPcieSlotByIndex(ucIndex, &ucSlot) == 0)
            tPass.AddGroup(tFirst, At(ucSlot));
        else
            OXA_WARN(kModuleQuery, tPass.Unit(), tPass.Driver(),
                     "%s for Pcie Status Sensor failed! ucIndex = %d!", tPass.Driver(), ucIndex);
    }
    return StepResult::kGoOn;
}

StepResult AddFans(StaticPass &tPass) {
    const uint8_t ucFanCnt = tPass.tFacts.ucFanCnt;
    if (!CountUsable(tPass, ucFanCnt, "ucIndex may overflow. ucFanCnt = %d!\n"))
        return StepResult::kEndWithoutCount;
    const RowView tRow = tPass.tProfile.FirstRow(Group::kFan);
    for (uint8_t ucIndex = 0; ucIndex < ucFanCnt; ++ucIndex) {
        uint8_t ucSilk = 0;
        if (!ReadFanSilk(tPass, ucIndex, ucSilk))
            continue;
        if (tRow.IsAnnounced())
            tPass.Announce(tRow, ucIndex);
        tPass.Add(tRow, At(ucSilk));
    }
    return StepResult::kGoOn;
}

// The error sensor comes whatever became of the temperature; its entry points at the restored slot.
StepResult AddOcp(StaticPass &tPass) {
    const uint8_t ucOCPCnt = tPass.tFacts.ucOCPCnt;
    if (!CountUsable(tPass, ucOCPCnt, "ucIndex may overflow. ucOCPCnt = %d!\n"))
        return StepResult::kEndWithoutCount;
    const RowView tTemp = tPass.tProfile.FirstRow(Group::kOcp);
    const RowView tError = tPass.tProfile.FirstRow(Group::kOcpError);
    const uint32_t dwPresent = tPass.Order().bOnlyPresentOcp ? GetOcpPresentStatus() : ~0u;
    for (uint8_t ucIndex = 1; ucIndex <= ucOCPCnt; ++ucIndex) {
        if (tPass.Order().bOnlyPresentOcp && (ucIndex > 32 || (dwPresent >> (ucIndex - 1) & 1) == 0))
            continue;
        if (!tTemp.IsAnnounced())
            OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(),
                     "%s for OCP temp: ucIndex = %d, ucCnt = %d, ucOCPCnt:%d!", tPass.Driver(), ucIndex,
                     tPass.wCnt, ucOCPCnt);
        tPass.AddGroup(tTemp, At(ucIndex));
        tPass.AddGroup(tError, At(ucIndex, ucIndex, RestoreOcpSlot(ucIndex)));
    }
    return StepResult::kGoOn;
}

} // namespace oxa
