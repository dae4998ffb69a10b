// SPDX-License-Identifier: Apache-2.0
//
// What some sensors take from the board on their way: CPU number, bus client, conversion and limits.
#include "library/static_sensors/draft.h"

namespace oxa {

namespace {

// A CPU's number counted from 0; a printed number below the first one stands for none.
[[gnu::noinline]] void CountCpu(Draft &tDraft) {
    uint8_t ucStart = 0;
    const int32_t sdwRet = HAL_GetCpuSilkScreenIndexFixValue(&ucStart);
    if (sdwRet != 0) {
        ucStart = 0;
        OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
                 "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [%X]",
                 static_cast<uint32_t>(sdwRet));
    }
    tDraft.bBelowFirstCpu = tDraft.tAt.ucIndex < ucStart;
    tDraft.ucCpu = tDraft.bBelowFirstCpu ? 0 : static_cast<uint8_t>(tDraft.tAt.ucIndex - ucStart);
}

[[gnu::noinline]] bool ReportNoClient(const Draft &tDraft) {
    const char *pcUnit = tDraft.Unit();
    const char *pcFunction = tDraft.Function();
    const Client eClient = tDraft.Does().eClient;
    if (eClient == Client::kCpuRegulator)
        OXA_WARN(kModuleQuery, pcUnit, pcFunction, "%s CPUVRTempCoreVolts_GetI2cClientByInstance failed!",
                 pcFunction);
    else if (eClient == Client::kInlet)
        OXA_WARN(kModuleQuery, pcUnit, pcFunction, "%s InputTemp_GetI2cClient failed!", pcFunction);
    else
        OXA_WARN(kModuleQuery, pcUnit, pcFunction, "%s SWTICH_GetI2cClientByInstance failed!", pcFunction);
    return false;
}

[[gnu::noinline]] bool GetClient(Draft &tDraft) {
    HalI2cClient tClient = {0, 0};
    int32_t sdwRet = 0;
    switch (tDraft.Does().eClient) {
    case Client::kNone:
        return true;
    case Client::kCpuRegulator:
        if (tDraft.bBelowFirstCpu)
            return true;
        sdwRet = HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(tDraft.ucCpu, &tClient);
        break;
    case Client::kInlet:
        sdwRet = HAL_InputTemp_GetI2cClient(&tClient);
        break;
    case Client::kSwitch:
        sdwRet = HAL_SWTICH_GetI2cClientByInstance(tDraft.tAt.ucIndex, &tClient);
        break;
    }
    tDraft.tEntry.ucBus = tClient.ucBus;
    tDraft.tEntry.ucAddr = tClient.ucAddr;
    if (sdwRet >= 0)
        return true;
    return ReportNoClient(tDraft);
}

[[gnu::noinline]] void PutVoltage(Draft &tDraft) {
    const HalCpuVoltSdrInfo &t = tDraft.tVoltage;
    const uint8_t aucLimit[6] = {t.ucLNC, t.ucLC, t.ucLNR, t.ucUNC, t.ucUC, t.ucUNR};
    uint8_t *pucSDR = tDraft.aucSDR;
    pucSDR[FULL_SDR_M_VALUE_LS_8_BITS] = t.ucM;
    pucSDR[FULL_SDR_B_VALUE_LS_8_BITS] = t.ucB;
    pucSDR[FULL_SDR_EXPONENTS] = t.ucExp;
    SetThresholdMasks(pucSDR, t.ucMask);
    for (uint8_t ucBit = 0; ucBit < 6; ++ucBit)
        if (t.ucMask >> ucBit & 1)
            pucSDR[kThresholdMasks[ucBit].ucOffset] = aucLimit[ucBit];
}

} // namespace

bool AskForFacts(Draft &tDraft) {
    if (tDraft.Has(kCpuFromFirst))
        CountCpu(tDraft);
    if (tDraft.bBelowFirstCpu && tDraft.Has(kDropBelowFirstCpu))
        return false;
    WriteBoardLine(tDraft);
    return true;
}

bool ApplyPlatformValues(Draft &tDraft) {
    if (tDraft.Does().eGate == Gate::kCpuVoltage)
        PutVoltage(tDraft);
    else if (tDraft.ucM != 0)
        tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS] = tDraft.ucM;
    if (tDraft.Has(kIndexInItem))
        tDraft.tEntry.ucItem = static_cast<uint8_t>(tDraft.tEntry.ucItem + tDraft.tAt.ucIndex);
    if (tDraft.Has(kRelativeOnSmallBoard) && tDraft.wBoardId == kBoardSmall)
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] |= kInstanceRelative;
    return GetClient(tDraft);
}

} // namespace oxa
