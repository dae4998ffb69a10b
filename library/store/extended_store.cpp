// SPDX-License-Identifier: Apache-2.0
//
// The extended store: the SDRs and device-table entries that were added at run time, kept in two files of a
// volatile directory, and the question whether a sensor is already stored.
#include <cstring>

#include "library/record/layout.h"
#include "library/record/log.h"
#include "library/store/whole_file.h"
#include "oxa/store.h"

// Scratch image of the extended SDR file: valid within one call only.  Aligned because the scan reads words.
alignas(8) uint8_t g_extSdrData[EXT_SLOT_MAX * SDR_SLOT_SIZE];

namespace oxa {
namespace {

constexpr uint8_t kNameLenMask = 0x3F;
constexpr int32_t kSlot = SDR_SLOT_SIZE;
constexpr uint32_t kWordSize = sizeof(uint32_t);

// Where a record type keeps its name and what fits there within the slot; the length byte stands before the
// name.
struct NameField {
    uint8_t ucOffset;
    uint8_t ucRoom;
};
constexpr NameField kFullName = {FULL_SDR_NAME, SDR_SLOT_SIZE - FULL_SDR_NAME};
constexpr NameField kCompactName = {COMPACT_SDR_NAME, SDR_SLOT_SIZE - COMPACT_SDR_NAME};
static_assert(kFullName.ucRoom == 16 && kCompactName.ucRoom == 32);

uint32_t WordAt(const uint8_t *pucByte) {
    uint32_t dwWord;
    memcpy(&dwWord, pucByte, sizeof(dwWord));
    return dwWord;
}

uint32_t NameLength(const uint8_t *pucSDR, const NameField &tField) {
    const uint32_t dwLen = pucSDR[tField.ucOffset - 1] & kNameLenMask;
    return dwLen < tField.ucRoom ? dwLen : tField.ucRoom;
}

// The larger of the two lengths decides, so a name is no match for a longer one that begins with it.
bool SameName(const uint8_t *pucSlot, const uint8_t *pucSDR, const NameField &tField) {
    const uint32_t dwStored = NameLength(pucSlot, tField);
    const uint32_t dwWanted = NameLength(pucSDR, tField);
    return memcmp(pucSlot + tField.ucOffset, pucSDR + tField.ucOffset,
                  dwStored > dwWanted ? dwStored : dwWanted) == 0;
}

// The next slot from pucSlot that has a word at dwOffset, else pucEnd.  It runs over every stored slot for every
// record that is built: one word, four slots a round, is less than four instructions a slot.
const uint8_t *FindWord(const uint8_t *pucSlot, const uint8_t *pucEnd, uint32_t dwOffset, uint32_t dwWord) {
    for (; pucEnd - pucSlot >= 4 * kSlot; pucSlot += 4 * kSlot) {
        const uint8_t *puc = pucSlot + dwOffset;
        if (WordAt(puc) == dwWord)
            return pucSlot;
        if (WordAt(puc + kSlot) == dwWord)
            return pucSlot + kSlot;
        if (WordAt(puc + 2 * kSlot) == dwWord)
            return pucSlot + 2 * kSlot;
        if (WordAt(puc + 3 * kSlot) == dwWord)
            return pucSlot + 3 * kSlot;
    }
    while (pucSlot != pucEnd && WordAt(pucSlot + dwOffset) != dwWord)
        pucSlot += kSlot;
    return pucSlot;
}

// The last four characters of the wanted name are looked for first, since numbered sensors differ there.  A name
// below four characters is compared with every slot.
bool IsStored(const uint8_t *pucSlot, const uint8_t *pucEnd, const uint8_t *pucSDR, const NameField &tField) {
    const uint32_t dwLen = NameLength(pucSDR, tField);
    const bool bShort = dwLen < kWordSize;
    const uint32_t dwOffset = tField.ucOffset + (bShort ? 0 : dwLen - kWordSize);
    const uint32_t dwWord = WordAt(pucSDR + dwOffset);
    for (; pucSlot != pucEnd; pucSlot += kSlot) {
        if (!bShort)
            pucSlot = FindWord(pucSlot, pucEnd, dwOffset, dwWord);
        if (pucSlot == pucEnd)
            return false;
        if (pucSlot[SDR_RECORD_TYPE] == pucSDR[SDR_RECORD_TYPE] && SameName(pucSlot, pucSDR, tField))
            return true;
    }
    return false;
}

int32_t AccessExtFile(const char *pcFunc, const char *pcPath, uint8_t *pucRead, const uint8_t *pucWrite,
                      uint32_t dwLen) {
    if (pucRead == nullptr && pucWrite == nullptr) {
        OXA_ERROR(kModuleSdr, kFileUnit, pcFunc, "%s failed! pData == NULL.", pcFunc);
        return 0;
    }
    return ReadWriteExtSDRFile(pcPath, pucRead, pucWrite, dwLen);
}

} // namespace
} // namespace oxa

using namespace oxa;

int32_t readExtSDRFile(uint8_t *pData, uint32_t dwLen) {
    return AccessExtFile(__func__, kExtSDRFile, pData, nullptr, dwLen);
}

int32_t writeExtSDRFile(const uint8_t *pData, uint32_t dwLen) {
    return AccessExtFile(__func__, kExtSDRFile, nullptr, pData, dwLen);
}

int32_t readExtDevTabFile(uint8_t *pData, uint32_t dwLen) {
    return AccessExtFile(__func__, kExtDevTabFile, pData, nullptr, dwLen);
}

int32_t writeExtDevTabFile(const uint8_t *pData, uint32_t dwLen) {
    return AccessExtFile(__func__, kExtDevTabFile, nullptr, pData, dwLen);
}

int32_t checkSensorExist(const uint8_t *pSDRData) {
    if (pSDRData == nullptr) {
        OXA_ERROR(kModuleSdr, kFileUnit, __func__, "%s failed! pSDRData == NULL.", __func__);
        return 0;
    }
    const int32_t sdwRead = ReadWriteExtSDRFile(kExtSDRFile, g_extSdrData, nullptr, sizeof(g_extSdrData));
    if (sdwRead < 1)
        return 0;
    const uint8_t ucType = pSDRData[SDR_RECORD_TYPE];
    if (ucType != kRecordFull && ucType != kRecordCompact)
        return 0;
    const uint32_t dwRead = static_cast<uint32_t>(sdwRead);
    const uint32_t dwSlots = dwRead < sizeof(g_extSdrData) ? dwRead / SDR_SLOT_SIZE : EXT_SLOT_MAX;
    const uint8_t *pucEnd = g_extSdrData + dwSlots * SDR_SLOT_SIZE;
    if (!IsStored(g_extSdrData, pucEnd, pSDRData, ucType == kRecordFull ? kFullName : kCompactName))
        return 0;
    OXA_INFO(kModuleSdr, kFileUnit, __func__, "This sensor is already exist!");
    return 1;
}

uint32_t getExtDevTabCount(void) {
    uint8_t aucEntries[EXT_SLOT_MAX * DEV_TAB_ENTRY_SIZE] = {};
    const int32_t sdwRead = readExtDevTabFile(aucEntries, sizeof(aucEntries));
    return sdwRead < 0 ? 0 : static_cast<uint32_t>(sdwRead) / DEV_TAB_ENTRY_SIZE;
}
