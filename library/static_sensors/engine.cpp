// SPDX-License-Identifier: Apache-2.0
//
// The way of every record.  What only some sensors need stands in the other files of the engine; the way
// itself is kept short, it is walked for every record of a pass.
#include "library/static_sensors/engine.h"

#include <bit>
#include <cstring>

#include "library/static_sensors/draft.h"
#include "oxa/store.h"

namespace oxa {

namespace {

[[gnu::noinline]] bool ReportWrap(const Draft &tDraft) {
    if (tDraft.Does().eInstance == InstanceRule::kAddOrKeep)
        return true;
    OXA_DEBUG(kDebugChannel, tDraft.Unit(), "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n");
    return false;
}

// Moves the entity instance by the index, or drops the record where that would pass 255.
[[gnu::always_inline]] inline bool AddToInstance(Draft &tDraft, uint32_t dwInstance) {
    dwInstance += tDraft.aucSDR[SDR_ENTITY_INSTANCE];
    if (dwInstance > 0xFF)
        return ReportWrap(tDraft);
    tDraft.aucSDR[SDR_ENTITY_INSTANCE] = static_cast<uint8_t>(dwInstance);
    return true;
}

// Entity instance and the entry's index.
bool SetInstance(Draft &tDraft, InstanceRule eRule) {
    uint8_t &ucOffset3 = tDraft.tEntry.ucIndex;
    switch (eRule) {
    case InstanceRule::kNone:
    case InstanceRule::kCpuClientOnly:
        return true;
    case InstanceRule::kAllOnes:
        ucOffset3 = 0xFF;
        return true;
    case InstanceRule::kIndexOnly:
        ucOffset3 = tDraft.tAt.ucOffset3;
        return true;
    case InstanceRule::kSlotAndByte29:
        tDraft.aucSDR[COMPACT_SDR_SLOT] = tDraft.tAt.ucIndex;
        [[fallthrough]];
    case InstanceRule::kSlot:
        ucOffset3 = tDraft.tAt.ucOffset3;
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] = tDraft.tAt.ucIndex;
        return true;
    case InstanceRule::kCpuIndexOnly:
        ucOffset3 = tDraft.ucCpu;
        return true;
    case InstanceRule::kCpu:
        ucOffset3 = tDraft.ucCpu;
        return AddToInstance(tDraft, tDraft.ucCpu);
    case InstanceRule::kAddOnly:
        return AddToInstance(tDraft, tDraft.tAt.ucIndex);
    case InstanceRule::kAdd:
    case InstanceRule::kAddOrKeep:
        break;
    }
    ucOffset3 = tDraft.tAt.ucOffset3;
    return AddToInstance(tDraft, tDraft.tAt.ucIndex);
}

int PrintName(Draft &tDraft, char *pcName, Naming eNaming) {
    if (eNaming == Naming::kNumber)
        return snprintf_s(pcName, SENSOR_NAME_SIZE, tDraft.tRow.Name(), tDraft.tAt.ucNumber);
    if (eNaming == Naming::kText)
        return snprintf_s(pcName, SENSOR_NAME_SIZE, tDraft.tRow.Name(), tDraft.acText);
    uint8_t ucNumber = tDraft.tAt.ucNumber;
    const char *pcPattern = PickName(tDraft, ucNumber);
    return pcPattern == nullptr ? -1 : snprintf_s(pcName, SENSOR_NAME_SIZE, pcPattern, ucNumber);
}

// Prints the name in its place and fills what is behind it: a printing function may leave anything there.
bool PutName(Draft &tDraft, uint8_t ucHead, Naming eNaming) {
    uint8_t *pucName = tDraft.aucSDR + ucHead;
    if (PrintName(tDraft, reinterpret_cast<char *>(pucName), eNaming) < 0)
        return false;
    const uint32_t dwNameLen = static_cast<uint8_t>(strnlen_s(reinterpret_cast<char *>(pucName), kNameMax));
    if (dwNameLen > 0xFF - kIdTypeAscii) {
        OXA_DEBUG(kDebugChannel, tDraft.Unit(), "ucNameLen + 0xC0 may wrap!\n");
        return false;
    }
    if (dwNameLen < kNameMax)
        memset(pucName + dwNameLen, kNameFill, kNameMax - dwNameLen);
    pucName[-1] = static_cast<uint8_t>(kIdTypeAscii + dwNameLen);
    tDraft.aucSDR[SDR_RECORD_LENGTH] = static_cast<uint8_t>(ucHead - kSdrHeaderSize + dwNameLen);
    return true;
}

// The entry repeats what the scanner needs of the record: bytes 8 to 10 and 12, 13 stand in offsets 21 to 25,
// behind the mark, so they are copied as words.
void FillEntry(Draft &tDraft, const SensorKind &tKind) {
    uint8_t *pucEntry = reinterpret_cast<uint8_t *>(&tDraft.tEntry);
    uint32_t dwEntity;
    memcpy(&dwEntity, tDraft.aucSDR + SDR_ENTITY_ID, sizeof(dwEntity));
    dwEntity = dwEntity << 8 | tKind.tDoes.tDevice.ucMark;
    memcpy(pucEntry + offsetof(DevTabEntry, ucMark), &dwEntity, sizeof(dwEntity));
    memcpy(pucEntry + offsetof(DevTabEntry, ucSensorType), tDraft.aucSDR + SDR_SENSOR_TYPE, 2);
    if (tKind.ucHeadSize == kFullHeadSize)
        tDraft.tEntry.ucM = tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
}
static_assert(offsetof(DevTabEntry, ucSensorInit) == offsetof(DevTabEntry, ucMark) + 3);
static_assert(std::endian::native == std::endian::little);

uint8_t Publish(const Draft &tDraft, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {
    if (checkSensorExist(tDraft.aucSDR) == 1) {
        WriteDuplicateNotice(tDraft);
        return 0;
    }
    if (memcpy_s(pucSDRRec, SDR_SLOT_SIZE, tDraft.aucSDR, SDR_SLOT_SIZE) != 0)
        return 0;
    if (memcpy_s(ptDEVTab, DEV_TAB_ENTRY_SIZE, &tDraft.tEntry, DEV_TAB_ENTRY_SIZE) != 0)
        return 0;
    return static_cast<uint8_t>(tDraft.aucSDR[SDR_RECORD_LENGTH] + kSdrHeaderSize);
}

// The entry, and of the slot what a compact record leaves empty; a full one has its name there.
void ClearBehindHead(Result &tResult) {
    memset(reinterpret_cast<uint8_t *>(&tResult) + FULL_SDR_NAME, 0, sizeof(tResult) - FULL_SDR_NAME);
}
static_assert(offsetof(Result, aucSDR) == 0 &&
              offsetof(Result, tEntry) + sizeof(DevTabEntry) == sizeof(Result));

// The limits that the row gives, and the masks that announce them.
void PutOwnLimits(Draft &tDraft, const uint8_t *pucLimits) {
    memcpy(tDraft.aucSDR + SDR_ASSERT_MASK, pucLimits, kRowMaskBytes);
    memcpy(tDraft.aucSDR + FULL_SDR_UNR, pucLimits + kRowMaskBytes, kRowLimitBytes);
}

[[gnu::noinline]] uint8_t ReportNull(const Draft &tDraft) {
    OXA_ERROR(kModuleSdr, tDraft.Unit(), tDraft.Function(), "%s failed! The input parameter is null.",
              tDraft.Function());
    return 0;
}

} // namespace

uint8_t BuildSensor(const StaticProfile &tProfile, RowView tRow, const At &tAt, uint8_t *pucSDRRec,
                    DevTabEntry *ptDEVTab) {
    const SensorKind &tKind = KindOf(tRow.Kind());
    const Behaviour &tDoes = tKind.tDoes;
    Draft tDraft(tProfile, tKind, tRow, tAt);
    if (pucSDRRec == nullptr || ptDEVTab == nullptr)
        return ReportNull(tDraft);
    if (tDoes.eGate != Gate::kNone && !PassGate(tDraft))
        return 0;
    if (tKind.bAsksForFacts && !AskForFacts(tDraft))
        return 0;
    if (memcpy_s(tDraft.aucSDR, SDR_SLOT_SIZE, tKind.tHead.auc, sizeof(SdrHead)) != 0)
        return 0;
    ClearBehindHead(tDraft);
    if (const uint8_t *pucLimits = tRow.OwnLimits())
        PutOwnLimits(tDraft, pucLimits);
    tDraft.tEntry.ucDevCode = tDoes.tDevice.ucCode;
    tDraft.tEntry.ucItem = tDoes.tDevice.ucItem;
    tDraft.tEntry.ucScanFlag = tDoes.tDevice.ucScanFlag;
    if (!SetInstance(tDraft, tDoes.eInstance))
        return 0;
    if (tKind.bHasPlatformValues && !ApplyPlatformValues(tDraft))
        return 0;
    FillEntry(tDraft, tKind);
    if (!PutName(tDraft, tKind.ucHeadSize, tDoes.eNaming))
        return 0;
    return Publish(tDraft, pucSDRRec, ptDEVTab);
}

} // namespace oxa
