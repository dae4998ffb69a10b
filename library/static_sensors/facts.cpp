// SPDX-License-Identifier: Apache-2.0
//
// What the board is made of, asked once for the whole pass.
#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/static_sensors/pass.h"

namespace oxa {

namespace {

// A failed query warns and the fact keeps its default.
void KeepFact(const StaticPass &tPass, int32_t sdwRet, uint8_t &ucFact, const char *pcFormat) {
    if (sdwRet == 0)
        return;
    ucFact = 0;
    OXA_WARN(kModuleQuery, tPass.Unit(), tPass.Driver(), pcFormat, static_cast<uint32_t>(sdwRet));
}

uint8_t ReadFanMaxCount(const StaticPass &tPass) {
    const char *pcWho = tPass.tProfile.tNames.acFanCount;
    const HalFanService *ptFan = HalFanInst();
    if (ptFan == nullptr) {
        OXA_ERROR(kModuleAssert, tPass.Unit(), pcWho, "assertion failed: halFan != 0");
        return 0;
    }
    uint8_t ucFanCnt = 0;
    const int32_t sdwRet = ptFan->GetFanMaxCount == nullptr ? -1 : ptFan->GetFanMaxCount(&ucFanCnt);
    if (sdwRet == 0)
        return ucFanCnt;
    OXA_ERROR(kModuleSdr, tPass.Unit(), pcWho, "Get fan max count failed, result:%u!",
              static_cast<uint32_t>(sdwRet));
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
    if (t.wBoardId == kBoardNoOcpA || t.wBoardId == kBoardNoOcpB)
        t.ucOCPCnt = 0;
    if (t.wBoardId == kBoardSmall)
        t.ucPSUCnt = t.ucPowerManage = t.ucOCPCnt = t.ucFanCnt = t.ucPcieCnt = 0;
}

} // namespace

// Two facts are fatal: without the number of PSUs or the board id there is no pass.
StepResult GatherFacts(StaticPass &tPass) {
    StaticFacts &t = tPass.tFacts;
    GatherParts(tPass);
    if (HAL_GetPsuMaxCount(&t.ucPSUCnt) != 0) {
        OXA_ERROR(kModuleSdr, tPass.Unit(), tPass.Driver(), "get pem max count failed\n");
        return StepResult::kEndWithoutCount;
    }
    if (HAL_GetIsSupportPowerManage(&t.ucPowerManage) != 0)
        t.ucPowerManage = 0;
    if (get_default_board_id(&t.wBoardId) < 0) {
        OXA_ERROR(kModuleSdr, tPass.Unit(), tPass.Driver(), "get Board Id failed\n");
        return StepResult::kEndWithoutCount;
    }
    ApplyBoardRules(t);
    return StepResult::kGoOn;
}

} // namespace oxa
