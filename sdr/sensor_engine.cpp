// SPDX-License-Identifier: Apache-2.0
//
// The way of every record.  What only some sensors need stands in the other files of the engine; the way
// itself is kept short, it is walked for every record of a pass.
#include "sdr/sensor_engine.h"

#include <bit>
#include <cstring>

#include "sdr/sensor_engine_draft.h"

namespace oxa {

namespace {

// Moves the entity instance by the index, or drops the record where that would pass 255.
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

// Entity instance and the entry's index.
bool Settle(Draft &tDraft, Place ePlace) {
    uint8_t &ucOffset3 = tDraft.tEntry.ucIndex;
    switch (ePlace) {
    case Place::kNone:
    case Place::kCpuClientOnly:
        return true;
    case Place::kAllOnes:
        ucOffset3 = 0xFF;
        return true;
    case Place::kIndexOnly:
        ucOffset3 = tDraft.tAt.Offset3();
        return true;
    case Place::kSlot:
        ucOffset3 = tDraft.tAt.Offset3();
        tDraft.aucSDR[SDR_ENTITY_INSTANCE] = tDraft.tAt.Index();
        return true;
    case Place::kCpuIndexOnly:
        ucOffset3 = tDraft.ucCpu;
        return true;
    case Place::kCpu:
        ucOffset3 = tDraft.ucCpu;
        return AddToInstance(tDraft, tDraft.ucCpu);
    case Place::kAddOnly:
        return AddToInstance(tDraft, tDraft.tAt.Index());
    case Place::kAdd:
    case Place::kAddOrKeep:
        ucOffset3 = tDraft.tAt.Offset3();
        return AddToInstance(tDraft, tDraft.tAt.Index());
    }
    return false;
}

int PrintName(Draft &tDraft, char *pcName, Naming eNaming) {
    if (eNaming == Naming::kNumber)
        return snprintf_s(pcName, SENSOR_NAME_SIZE, tDraft.tRow.Name(), tDraft.tAt.Number());
    uint8_t ucNumber = tDraft.tAt.Number();
    const char *pcPattern = PickName(tDraft, ucNumber);
    if (pcPattern == nullptr)
        return -1;
    return eNaming == Naming::kText ? snprintf_s(pcName, SENSOR_NAME_SIZE, pcPattern, tDraft.acText)
                                    : snprintf_s(pcName, SENSOR_NAME_SIZE, pcPattern, ucNumber);
}

// Prints the name in its place and fills what is behind it: a printing function may leave anything there.
bool PutName(Draft &tDraft, uint8_t ucHead, Naming eNaming) {
    uint8_t *pucName = tDraft.aucSDR + ucHead;
    if (PrintName(tDraft, reinterpret_cast<char *>(pucName), eNaming) < 0)
        return false;
    const uint32_t dwNameLen = static_cast<uint8_t>(strnlen_s(reinterpret_cast<char *>(pucName), kNameMax));
    if ((~dwNameLen & 0xFF) < kIdTypeAscii) {
        OXA_DEBUG(kDebugChannel, tDraft.tProfile.acFile, "ucNameLen + 0xC0 may wrap!\n");
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
void FillEntry(Draft &tDraft, const Device &tDevice, bool bFull) {
    uint8_t *pucEntry = reinterpret_cast<uint8_t *>(&tDraft.tEntry);
    uint32_t dwEntity;
    memcpy(&dwEntity, tDraft.aucSDR + SDR_ENTITY_ID, sizeof(dwEntity));
    dwEntity = dwEntity << 8 | tDevice.ucMark;
    memcpy(pucEntry + offsetof(DevTabEntry, ucMark), &dwEntity, sizeof(dwEntity));
    memcpy(pucEntry + offsetof(DevTabEntry, ucSensorType), tDraft.aucSDR + SDR_SENSOR_TYPE, 2);
    if (bFull)
        tDraft.tEntry.ucM = tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
}
static_assert(offsetof(DevTabEntry, ucSensorInit) == offsetof(DevTabEntry, ucMark) + 3);
static_assert(std::endian::native == std::endian::little);

uint8_t Publish(const Draft &tDraft, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {
    if (checkSensorExist(tDraft.aucSDR) == 1) {
        SayKnown(tDraft);
        return 0;
    }
    if (memcpy_s(pucSDRRec, SDR_SLOT_SIZE, tDraft.aucSDR, SDR_SLOT_SIZE) != 0)
        return 0;
    if (memcpy_s(ptDEVTab, DEV_TAB_ENTRY_SIZE, &tDraft.tEntry, DEV_TAB_ENTRY_SIZE) != 0)
        return 0;
    return static_cast<uint8_t>(tDraft.aucSDR[SDR_RECORD_LENGTH] + kSdrHeaderSize);
}

[[gnu::noinline]] uint8_t SayNull(const Draft &tDraft) {
    DRAFT_NAMED(kError, kModuleSdr, tDraft, "%s failed! The input parameter is null.");
    return 0;
}

} // namespace

uint8_t BuildSensor(const ProfileName &tProfile, const SensorKind &tKind, RowView tRow, At tAt,
                    uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {
    const Traits &tDoes = tKind.tTraits;
    Draft tDraft(tProfile, tKind, tRow, tAt);
    if (pucSDRRec == nullptr || ptDEVTab == nullptr)
        return SayNull(tDraft);
    if ((tDoes.ucOdd & kAsks) != 0 && !Ask(tDraft))
        return 0;
    if (memcpy_s(tDraft.aucSDR, SDR_SLOT_SIZE, tKind.tHead.auc, sizeof(tKind.tHead)) != 0)
        return 0;
    memset(tDraft.aucSDR + FULL_SDR_NAME, tDoes.ucTail, kNameMax);
    memset(&tDraft.tEntry, 0, sizeof(tDraft.tEntry));
    memcpy(&tDraft.tEntry, &tKind.tDevice, 2); // code and item
    tDraft.tEntry.ucScanFlag = tKind.tDevice.ucScanFlag;
    if (!Settle(tDraft, tDoes.ePlace))
        return 0;
    if ((tDoes.ucOdd & kChanges) != 0 && !ChangeTemplate(tDraft))
        return 0;
    const bool bFull = tDoes.ucTail != 0;
    FillEntry(tDraft, tKind.tDevice, bFull);
    if (!PutName(tDraft, bFull ? kFullHeadSize : kCompactHeadSize, tDoes.eNaming))
        return 0;
    return Publish(tDraft, pucSDRRec, ptDEVTab);
}
static_assert(offsetof(Device, ucCode) == 0 && offsetof(Device, ucItem) == 1);
static_assert(offsetof(DevTabEntry, ucDevCode) == 0 && offsetof(DevTabEntry, ucItem) == 1);

} // namespace oxa
