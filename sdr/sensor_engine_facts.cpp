// SPDX-License-Identifier: Apache-2.0
//
// What some sensors take from the board on their way: CPU number, bus client, conversion and limits.
#include "sdr/sensor_engine_draft.h"

namespace oxa {

namespace {

// A CPU's number counted from 0; a printed number below the first one stands for none.
[[gnu::noinline]] void CountCpu(Draft &tDraft) {
    uint8_t ucStart = 0;
    const int32_t sdwRet = HAL_GetCpuSilkScreenIndexFixValue(&ucStart);
    if (sdwRet != 0) {
        ucStart = 0;
        DRAFT_WARN(kModuleQuery, tDraft, "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [%X]",
                   sdwRet);
    }
    tDraft.bBelowSilk = tDraft.tAt.Index() < ucStart;
    tDraft.ucCpu = tDraft.bBelowSilk ? 0 : static_cast<uint8_t>(tDraft.tAt.Index() - ucStart);
}

[[gnu::noinline]] bool SayNoClient(const Draft &tDraft, const char *pcFormat) {
    DRAFT_NAMED(kWarn, kModuleQuery, tDraft, pcFormat);
    return false;
}

[[gnu::noinline]] bool GetClient(Draft &tDraft) {
    HalI2cClient tClient = {0, 0};
    int32_t sdwRet = 0;
    const char *pcFormat = nullptr;
    switch (tDraft.Does().eClient) {
    case Client::kNone:
        return true;
    case Client::kCpuRegulator:
        if (tDraft.bBelowSilk)
            return true;
        pcFormat = "%s CPUVRTempCoreVolts_GetI2cClientByInstance failed!";
        sdwRet = HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(tDraft.ucCpu, &tClient);
        break;
    case Client::kInlet:
        pcFormat = "%s InputTemp_GetI2cClient failed!";
        sdwRet = HAL_InputTemp_GetI2cClient(&tClient);
        break;
    case Client::kSwitch:
        pcFormat = "%s SWTICH_GetI2cClientByInstance failed!";
        sdwRet = HAL_SWTICH_GetI2cClientByInstance(tDraft.tAt.Index(), &tClient);
        break;
    }
    tDraft.tEntry.ucBus = tClient.ucBus;
    tDraft.tEntry.ucAddr = tClient.ucAddr;
    if (sdwRet >= 0)
        return true;
    return SayNoClient(tDraft, pcFormat);
}

[[gnu::noinline]] void TakeVoltage(Draft &tDraft) {
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

bool Ask(Draft &tDraft) {
    if (tDraft.Does().eGate != Gate::kNone && !PassGate(tDraft))
        return false;
    if (tDraft.Has(kSilkReread))
        CountCpu(tDraft);
    if (tDraft.bBelowSilk && tDraft.Has(kDropBelowSilk))
        return false;
    return tDraft.Does().eBoardLine == BoardLine::kNone || WriteBoardLine(tDraft);
}

bool ChangeTemplate(Draft &tDraft) {
    if (tDraft.Does().eGate == Gate::kCpuVoltage)
        TakeVoltage(tDraft);
    else if (tDraft.ucM != 0)
        tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS] = tDraft.ucM;
    if (tDraft.Has(kSlotInRecord))
        tDraft.aucSDR[COMPACT_SDR_SLOT] = tDraft.tAt.Index();
    if (tDraft.Has(kIndexInItem))
        tDraft.tEntry.ucItem = static_cast<uint8_t>(tDraft.tEntry.ucItem + tDraft.tAt.Index());
    if (tDraft.Has(kRelativeOnSmallBoard) && tDraft.wBoardId == kSmallBoardId)
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] |= kInstanceRelative;
    return GetClient(tDraft);
}

} // namespace oxa
