// SPDX-License-Identifier: Apache-2.0
//
// The extended store: the SDRs and device-table entries that were added at run time, kept in two files of a
// volatile directory, and the question whether a sensor is already stored.
#include <bit>
#include <cstring>

#include "oxa/exports.h"
#include "oxa/platform.h"
#include "sdr/NVRAccess.h"
#include "sdr/oxa_log.h"
#include "sdr/sdr_layout.h"

// Scratch image of the extended SDR file: valid within one call only.  Aligned because the scan reads words.
alignas(8) uint8_t g_extSdrData[EXT_SLOT_MAX * SDR_SLOT_SIZE];

namespace oxa {
namespace {

constexpr const char *kFile = "specific_sdr_file.c";
constexpr uint8_t kNameLenMask = 0x3F;
constexpr uint32_t kProbeSize = 4;
constexpr uint32_t kWholeWord = 0xFFFFFFFFu;
static_assert(std::endian::native == std::endian::little, "a mask of n bytes covers the first n characters");

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
    std::memcpy(&dwWord, pucByte, sizeof(dwWord));
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
    return std::memcmp(pucSlot + tField.ucOffset, pucSDR + tField.ucOffset,
                       dwStored > dwWanted ? dwStored : dwWanted) == 0;
}

// The wanted name as the scan compares it: words of four characters, the last four first (where numbered
// sensors differ), then the first twelve.  Words of a shorter name overlap; all of them lie within the wanted
// name, whose characters must agree whatever length is stored.  A name below four characters is one masked
// word.
struct NameProbe {
    uint32_t adwWord[4];
    uint32_t adwOffset[4];
    uint32_t dwMask;
    uint8_t ucType;
};

NameProbe MakeProbe(const uint8_t *pucSDR, const NameField &tField) {
    const uint32_t dwLen = NameLength(pucSDR, tField);
    const uint32_t dwLast = dwLen < kProbeSize ? 0 : (dwLen < 16 ? dwLen : 16) - kProbeSize;
    const uint32_t dwSecond = dwLast < kProbeSize ? dwLast : kProbeSize;
    const uint32_t dwThird = dwLast < 2 * kProbeSize ? dwLast : 2 * kProbeSize;
    const uint8_t *pucName = pucSDR + tField.ucOffset;
    NameProbe tProbe;
    tProbe.adwWord[0] = WordAt(pucName + dwLast);
    tProbe.adwWord[1] = WordAt(pucName);
    tProbe.adwWord[2] = WordAt(pucName + dwSecond);
    tProbe.adwWord[3] = WordAt(pucName + dwThird);
    tProbe.adwOffset[0] = tField.ucOffset + dwLast;
    tProbe.adwOffset[1] = tField.ucOffset;
    tProbe.adwOffset[2] = tField.ucOffset + dwSecond;
    tProbe.adwOffset[3] = tField.ucOffset + dwThird;
    tProbe.dwMask = dwLen < kProbeSize ? (1u << (8 * dwLen)) - 1 : kWholeWord;
    tProbe.ucType = pucSDR[SDR_RECORD_TYPE];
    return tProbe;
}

const uint8_t *FindStoredShortName(const uint8_t *pucSlot, const uint8_t *pucEnd, const NameProbe &tProbe) {
    for (; pucSlot != pucEnd; pucSlot += SDR_SLOT_SIZE) {
        const uint32_t dwDiff = WordAt(pucSlot + tProbe.adwOffset[0]) ^ tProbe.adwWord[0];
        if (pucSlot[SDR_RECORD_TYPE] == tProbe.ucType && (dwDiff & tProbe.dwMask) == 0) {
            break;
        }
    }
    return pucSlot;
}

// The next slot from pucSlot (there is at least one) that may hold the wanted name, else pucEnd.  It runs
// over every stored slot for every record that is built, so it is a leaf that keeps everything in registers:
// 9 to 18 instructions a slot.
[[gnu::noinline]] const uint8_t *FindStoredName(const uint8_t *pucSlot, const uint8_t *pucEnd,
                                                const NameProbe &tProbe) {
    const auto [dwWord0, dwWord1, dwWord2, dwWord3] = tProbe.adwWord;
    const auto [dwOffset0, dwOffset1, dwOffset2, dwOffset3] = tProbe.adwOffset;
    const uint32_t dwType = tProbe.ucType;
    do {
        if (pucSlot[SDR_RECORD_TYPE] == dwType && WordAt(pucSlot + dwOffset0) == dwWord0 &&
            WordAt(pucSlot + dwOffset1) == dwWord1 && WordAt(pucSlot + dwOffset2) == dwWord2 &&
            WordAt(pucSlot + dwOffset3) == dwWord3) {
            break;
        }
        pucSlot += SDR_SLOT_SIZE;
    } while (pucSlot != pucEnd);
    return pucSlot;
}

// Out of line, so that its frame is not on the stack while the file is read.
[[gnu::noinline]] bool IsStored(const uint8_t *pucSlot, const uint8_t *pucEnd, const uint8_t *pucSDR,
                                const NameField &tField) {
    const NameProbe tProbe = MakeProbe(pucSDR, tField);
    while (pucSlot != pucEnd) {
        pucSlot = tProbe.dwMask == kWholeWord ? FindStoredName(pucSlot, pucEnd, tProbe)
                                              : FindStoredShortName(pucSlot, pucEnd, tProbe);
        if (pucSlot == pucEnd) {
            break;
        }
        if (SameName(pucSlot, pucSDR, tField)) {
            return true;
        }
        pucSlot += SDR_SLOT_SIZE;
    }
    return false;
}

int32_t AccessExtFile(const char *pcFunc, const char *pcPath, uint8_t *pucRead, const uint8_t *pucWrite,
                      uint32_t dwLen) {
    if (pucRead == nullptr && pucWrite == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, pcFunc, "%s failed! pData == NULL.", pcFunc);
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
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! pSDRData == NULL.", __func__);
        return 0;
    }
    const int32_t sdwRead = ReadWriteExtSDRFile(kExtSDRFile, g_extSdrData, nullptr, sizeof(g_extSdrData));
    if (sdwRead < 1) {
        return 0;
    }
    const uint8_t ucType = pSDRData[SDR_RECORD_TYPE];
    if (ucType != kRecordFull && ucType != kRecordCompact) {
        return 0;
    }
    const uint32_t dwRead = static_cast<uint32_t>(sdwRead);
    const uint32_t dwSlots = dwRead < sizeof(g_extSdrData) ? dwRead / SDR_SLOT_SIZE : EXT_SLOT_MAX;
    const uint8_t *pucEnd = g_extSdrData + dwSlots * SDR_SLOT_SIZE;
    if (!IsStored(g_extSdrData, pucEnd, pSDRData, ucType == kRecordFull ? kFullName : kCompactName)) {
        return 0;
    }
    OXA_INFO(kModuleSdr, kFile, __func__, "This sensor is already exist!");
    return 1;
}

uint32_t getExtDevTabCount(void) {
    uint8_t aucEntries[EXT_SLOT_MAX * DEV_TAB_ENTRY_SIZE] = {};
    const int32_t sdwRead = readExtDevTabFile(aucEntries, sizeof(aucEntries));
    return sdwRead < 0 ? 0 : static_cast<uint32_t>(sdwRead) / DEV_TAB_ENTRY_SIZE;
}
