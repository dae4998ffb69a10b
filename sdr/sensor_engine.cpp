// SPDX-License-Identifier: Apache-2.0
#include "sdr/sensor_engine.h"

#include <cstring>

#include "sdr/sensor_engine_draft.h"

namespace oxa {

// Longest: "Default_GenSwitchBoardInOROutletTempSDR" and "OXA_AddDefaultStaticSensor"; cut at 47 characters.
Label::Label(const ProfileName &tProfile, const char *pcGenerator) {
    const bool bDriver = *pcGenerator == '\0';
    const char *const apc[] = {bDriver ? "OXA_Add" : "", tProfile.acName, bDriver ? "StaticSensor" : "_",
                               pcGenerator};
    size_t n = 0;
    for (const char *pc : apc)
        while (*pc != '\0' && n < sizeof(ac) - 1)
            ac[n++] = *pc++;
    ac[n] = '\0';
}

uint8_t ReadSilkStart(const ProfileName &tProfile, const char *pcFunction) {
    uint8_t ucCpuSilkStartIndex = 0;
    const int32_t sdwRet = HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex);
    if (sdwRet == 0)
        return ucCpuSilkStartIndex;
    OXA_WARN(kModuleQuery, tProfile.acFile, pcFunction,
             "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [%X]", static_cast<unsigned>(sdwRet));
    return 0;
}

namespace {

// A CPU's number counted from 0; a printed number below the first one stands for none.
void CountCpu(Draft &tDraft) {
    const Label tLabel(tDraft.tProfile, tDraft.tRow.Generator());
    const uint8_t ucStart = ReadSilkStart(tDraft.tProfile, tLabel.ac);
    tDraft.bBelowSilk = tDraft.tAt.ucIndex < ucStart;
    tDraft.ucCpu = tDraft.bBelowSilk ? 0 : static_cast<uint8_t>(tDraft.tAt.ucIndex - ucStart);
}

bool Fill(Draft &tDraft) {
    const SdrHead &tHead = tDraft.tKind.tHead;
    const bool bFull = tHead.auc[SDR_RECORD_TYPE] == kRecordFull;
    const size_t nHead = bFull ? kFullHeadSize : kCompactHeadSize;
    uint8_t *pucSDR = tDraft.aucSDR;
    if (memcpy_s(pucSDR, sizeof(tDraft.aucSDR), tHead.auc, nHead) != 0)
        return false;
    if (memset_s(pucSDR + nHead, sizeof(tDraft.aucSDR) - nHead, kNameFill, kNameMax) != 0)
        return false;
    // what stands behind a compact record's name stays zero
    if (!bFull && memset_s(pucSDR + FULL_SDR_NAME, kNameMax, 0, kNameMax) != 0)
        return false;
    return memset_s(&tDraft.tEntry, sizeof(tDraft.tEntry), 0, sizeof(tDraft.tEntry)) == 0;
}

void TakeVoltage(Draft &tDraft) {
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

bool AddToInstance(Draft &tDraft, uint8_t ucInstance) {
    uint8_t &ucSdrInstance = tDraft.aucSDR[SDR_ENTITY_INSTANCE];
    if (0xFF - ucInstance >= ucSdrInstance) {
        ucSdrInstance = static_cast<uint8_t>(ucSdrInstance + ucInstance);
        return true;
    }
    if (tDraft.Does().ePlace == Place::kAddOrKeep)
        return true;
    OXA_DEBUG(kDebugChannel, tDraft.tProfile.acFile, "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n");
    return false;
}

bool Settle(Draft &tDraft) {
    uint8_t &ucOffset3 = tDraft.tEntry.ucIndex;
    ucOffset3 = tDraft.tAt.ucOffset3;
    switch (tDraft.Does().ePlace) {
    case Place::kNone:
    case Place::kCpuClientOnly:
        ucOffset3 = tDraft.Does().tDevice.ucIndex;
        return true;
    case Place::kIndexOnly:
        return true;
    case Place::kSlot:
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] = tDraft.tAt.ucIndex;
        return true;
    case Place::kCpuIndexOnly:
        ucOffset3 = tDraft.ucCpu;
        return true;
    case Place::kCpu:
        ucOffset3 = tDraft.ucCpu;
        return AddToInstance(tDraft, tDraft.ucCpu);
    case Place::kAddOnly:
        ucOffset3 = 0;
        return AddToInstance(tDraft, tDraft.tAt.ucIndex);
    case Place::kAdd:
    case Place::kAddOrKeep:
        return AddToInstance(tDraft, tDraft.tAt.ucIndex);
    }
    return false;
}

bool GetClient(Draft &tDraft) {
    int32_t sdwRet = 0;
    const char *pcFormat = nullptr;
    switch (tDraft.Does().eClient) {
    case Client::kNone:
        return true;
    case Client::kCpuRegulator:
        if (tDraft.bBelowSilk)
            return true;
        pcFormat = "%s CPUVRTempCoreVolts_GetI2cClientByInstance failed!";
        sdwRet = HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(tDraft.ucCpu, &tDraft.tClient);
        break;
    case Client::kInlet:
        pcFormat = "%s InputTemp_GetI2cClient failed!";
        sdwRet = HAL_InputTemp_GetI2cClient(&tDraft.tClient);
        break;
    case Client::kSwitch:
        pcFormat = "%s SWTICH_GetI2cClientByInstance failed!";
        sdwRet = HAL_SWTICH_GetI2cClientByInstance(tDraft.tAt.ucIndex, &tDraft.tClient);
        break;
    }
    if (sdwRet >= 0)
        return true;
    DRAFT_NAMED(OXA_WARN, kModuleQuery, tDraft, pcFormat);
    return false;
}

bool PutName(Draft &tDraft) {
    uint8_t ucNumber = tDraft.tAt.ucNumber;
    const char *pcPattern = PickName(tDraft, ucNumber);
    if (pcPattern == nullptr)
        return false;
    const int nPrinted = tDraft.Does().eNaming == Naming::kText
                             ? snprintf_s(tDraft.acName, sizeof(tDraft.acName), pcPattern, tDraft.acText)
                             : snprintf_s(tDraft.acName, sizeof(tDraft.acName), pcPattern, ucNumber);
    if (nPrinted < 0)
        return false;
    const uint8_t ucNameLen = static_cast<uint8_t>(strnlen_s(tDraft.acName, kNameMax));
    if (static_cast<uint8_t>(~ucNameLen) < kIdTypeAscii) {
        OXA_DEBUG(kDebugChannel, tDraft.tProfile.acFile, "ucNameLen + 0xC0 may wrap!\n");
        return false;
    }
    const bool bFull = tDraft.aucSDR[SDR_RECORD_TYPE] == kRecordFull;
    const size_t nHead = bFull ? kFullHeadSize : kCompactHeadSize;
    tDraft.aucSDR[nHead - 1] = static_cast<uint8_t>(kIdTypeAscii + ucNameLen);
    tDraft.aucSDR[SDR_RECORD_LENGTH] = static_cast<uint8_t>(nHead - kSdrHeaderSize + ucNameLen);
    return memcpy_s(tDraft.aucSDR + nHead, kNameMax, tDraft.acName, ucNameLen) == 0;
}

// The entry repeats what the scanner needs of the record.
void FillEntry(Draft &tDraft) {
    DevTabEntry &tEntry = tDraft.tEntry;
    const uint8_t *pucSDR = tDraft.aucSDR;
    const Device &tDevice = tDraft.Does().tDevice;
    tEntry.ucDevCode = tDevice.ucCode;
    tEntry.ucItem =
        static_cast<uint8_t>(tDevice.ucItem + (tDraft.Has(kIndexInItem) ? tDraft.tAt.ucIndex : 0));
    tEntry.ucScanFlag = tDevice.ucScanFlag;
    tEntry.ucBus = tDraft.tClient.ucBus;
    tEntry.ucAddr = tDraft.tClient.ucAddr;
    tEntry.ucMark = tDevice.ucMark;
    tEntry.ucEntityId = pucSDR[SDR_ENTITY_ID];
    tEntry.ucEntityInstance = pucSDR[SDR_ENTITY_INSTANCE];
    tEntry.ucSensorInit = pucSDR[SDR_SENSOR_INIT];
    tEntry.ucSensorType = pucSDR[SDR_SENSOR_TYPE];
    tEntry.ucEventType = pucSDR[SDR_EVENT_TYPE];
    if (pucSDR[SDR_RECORD_TYPE] == kRecordFull)
        tEntry.ucM = pucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
}

uint8_t Publish(const Draft &tDraft, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {
    if (checkSensorExist(tDraft.aucSDR) == 1) {
        SayKnown(tDraft);
        return 0;
    }
    if (memcpy_s(pucSDRRec, SDR_SLOT_SIZE, tDraft.aucSDR, sizeof(tDraft.aucSDR)) != 0)
        return 0;
    if (memcpy_s(ptDEVTab, DEV_TAB_ENTRY_SIZE, &tDraft.tEntry, sizeof(tDraft.tEntry)) != 0)
        return 0;
    return static_cast<uint8_t>(tDraft.aucSDR[SDR_RECORD_LENGTH] + kSdrHeaderSize);
}

// What the gate and the board told goes into the record.
bool TakeFacts(Draft &tDraft) {
    const Behaviour &tDoes = tDraft.Does();
    if (tDoes.eGate == Gate::kCpuVoltage)
        TakeVoltage(tDraft);
    else if (tDraft.ucM != 0)
        tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS] = tDraft.ucM;
    if (tDraft.Has(kSlotInRecord))
        tDraft.aucSDR[COMPACT_SDR_SLOT] = tDraft.tAt.ucIndex;
    if (tDraft.Has(kRelativeOnSmallBoard) && tDraft.wBoardId == kSmallBoardId)
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] |= kInstanceRelative;
    return Settle(tDraft);
}

} // namespace

uint8_t BuildSensor(const ProfileName &tProfile, const SensorKind &tKind, RowView tRow, At tAt,
                    uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {
    if (pucSDRRec == nullptr || ptDEVTab == nullptr) {
        const Label tLabel(tProfile, tRow.Generator());
        OXA_ERROR(kModuleSdr, tProfile.acFile, tLabel.ac, "%s failed! The input parameter is null.",
                  tLabel.ac);
        return 0;
    }
    Draft tDraft(tProfile, tKind, tRow, tAt);
    if (!PassGate(tDraft))
        return 0;
    if (tDraft.Has(kSilkReread))
        CountCpu(tDraft);
    if (tDraft.bBelowSilk && tDraft.Has(kDropBelowSilk))
        return 0;
    if (tDraft.Does().eBoardLine != BoardLine::kNone)
        WriteBoardLine(tDraft);
    if (!Fill(tDraft) || !TakeFacts(tDraft) || !GetClient(tDraft) || !PutName(tDraft))
        return 0;
    FillEntry(tDraft);
    return Publish(tDraft, pucSDRRec, ptDEVTab);
}

} // namespace oxa
