// SPDX-License-Identifier: Apache-2.0
#include "library/profiles/disk_renamer.h"

#include <cstring>

#include "library/record/entities.h"
#include "library/record/log.h"

namespace oxa {

namespace {

constexpr char kNvmePrefix[] = "NVME_TEMP_";
constexpr uint8_t kLengthBits = 0x3F;

// The name's place follows from the head in front of it.
void Rename(uint8_t *pucSDRRec, uint8_t ucInstance, uint8_t ucSlotOffset, const char *pcPattern,
            uint8_t ucHead) {
    if (0xFF - ucInstance >= ucSlotOffset)
        ucInstance = static_cast<uint8_t>(ucInstance + ucSlotOffset);
    oxa_CustomSlotConversion(&ucInstance);
    char acName[SENSOR_NAME_SIZE] = {};
    if (snprintf_s(acName, sizeof(acName), pcPattern, ucInstance) < 0)
        return;
    const uint8_t ucNameLen = static_cast<uint8_t>(strnlen_s(acName, kNameMax));
    if (memcpy_s(pucSDRRec + ucHead, kNameMax, acName, kNameMax) != 0)
        return;
    uint8_t &ucIdByte = pucSDRRec[ucHead - 1];
    ucIdByte = static_cast<uint8_t>((ucIdByte & ~kLengthBits) | (ucNameLen & kLengthBits));
    pucSDRRec[SDR_RECORD_LENGTH] = static_cast<uint8_t>(ucNameLen + ucHead - kSdrHeaderSize);
    pucSDRRec[SDR_ENTITY_INSTANCE] = ucInstance;
}

} // namespace

int32_t RenameDisk(const ProfileNames &tProfile, const DiskNames &tNames, uint8_t *pucSDRRec,
                   uint8_t ucSlotOffset, const char *pcFunction) {
    if (pucSDRRec == nullptr) {
        OXA_ERROR(kModuleSdr, tProfile.acUnit, pcFunction, tNames.acNullText, pcFunction);
        return -1;
    }
    uint8_t ucInstance = pucSDRRec[SDR_ENTITY_INSTANCE];
    if (pucSDRRec[SDR_RECORD_TYPE] == kRecordCompact)
        Rename(pucSDRRec, ucInstance, ucSlotOffset, tNames.acStatus, kCompactHeadSize);
    if (pucSDRRec[SDR_RECORD_TYPE] != kRecordFull ||
        memcmp(pucSDRRec + kFullHeadSize, kNvmePrefix, sizeof(kNvmePrefix) - 1) != 0)
        return 0;
    if (tNames.bSystemInstance && pucSDRRec[SDR_ENTITY_ID] != kEntityDisk)
        ucInstance = static_cast<uint8_t>(ucInstance - kInstanceBase);
    Rename(pucSDRRec, ucInstance, ucSlotOffset, tNames.acTemp, kFullHeadSize);
    return 0;
}

} // namespace oxa
