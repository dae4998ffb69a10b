// SPDX-License-Identifier: Apache-2.0
//
// The way of every record.  What only some sensors need stands in the other files of the engine; the way
// itself is kept short, it is walked for every record of a pass.
#include "sdr/sensor_engine.h"

#include <bit>
#include <cstring>

#include "sdr/sensor_engine_draft.h"
#include "sdr/sensor_kinds.h"

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
    __builtin_unreachable(); // the compiler has checked every kind
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
    if (dwNameLen > 0xFF - kIdTypeAscii) {
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
void FillEntry(Draft &tDraft, uint8_t ucMark, bool bFull) {
    uint8_t *pucEntry = reinterpret_cast<uint8_t *>(&tDraft.tEntry);
    uint32_t dwEntity;
    memcpy(&dwEntity, tDraft.aucSDR + SDR_ENTITY_ID, sizeof(dwEntity));
    dwEntity = dwEntity << 8 | ucMark;
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

// The entry, and of the slot what a compact record leaves empty; a full one has its name there.
void ClearBehindHead(Result &tResult) {
    memset(reinterpret_cast<uint8_t *>(&tResult) + FULL_SDR_NAME, 0, sizeof(tResult) - FULL_SDR_NAME);
}
static_assert(offsetof(Result, aucSDR) == 0 &&
              offsetof(Result, tEntry) + sizeof(DevTabEntry) == sizeof(Result));

// An address in a register.  The compiler would rather work out that of a constant at each use.
template <typename T> T *Pinned(T *pt) {
    asm("" : "+r"(pt));
    return pt;
}

[[gnu::noinline]] uint8_t SayNull(const Draft &tDraft) {
    DRAFT_NAMED(kError, kModuleSdr, tDraft, "%s failed! The input parameter is null.");
    return 0;
}

} // namespace

uint8_t BuildSensor(const ProfileName &tProfile, RowView tRow, At tAt, uint8_t *pucSDRRec,
                    DevTabEntry *ptDEVTab) {
    const KindTable &tKinds = *Pinned(&kSensorKinds);
    const StoredKind &tKind = *Pinned(&tKinds.at[tRow.Kind()]);
    Draft tDraft(tProfile, tKind, tRow, tAt);
    if (pucSDRRec == nullptr || ptDEVTab == nullptr)
        return SayNull(tDraft);
    if (tKind.bAsks && !Ask(tDraft))
        return 0;
    if (memcpy_s(tDraft.aucSDR, SDR_SLOT_SIZE, tKinds.aucHeads + kHeadStep * tKind.ucHead, sizeof(SdrHead)) !=
        0)
        return 0;
    memcpy(tDraft.aucSDR + SDR_ENTITY_ID, tKind.aucEntity, sizeof(tKind.aucEntity));
    tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS] = tKind.ucByte24;
    const bool bFull = tKind.bFull;
    ClearBehindHead(tDraft);
    memcpy(&tDraft.tEntry, tKind.aucDevice, sizeof(tKind.aucDevice)); // code and item
    tDraft.tEntry.ucScanFlag = tKind.ucFlags & kScanned;
    if (!Settle(tDraft, tKind.ePlace))
        return 0;
    if (tKind.bChanges && !ChangeTemplate(tDraft))
        return 0;
    FillEntry(tDraft, tKind.ucMark, bFull);
    if (!PutName(tDraft, bFull ? kFullHeadSize : kCompactHeadSize, tKind.eNaming))
        return 0;
    return Publish(tDraft, pucSDRRec, ptDEVTab);
}
static_assert(offsetof(DevTabEntry, ucDevCode) == 0 && offsetof(DevTabEntry, ucItem) == 1);

} // namespace oxa
