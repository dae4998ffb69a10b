// SPDX-License-Identifier: Apache-2.0
#include "profiles/disk_names.h"

#include <cstring>

#include "oxa/platform.h"
#include "sdr/oxa_log.h"

namespace oxa {

namespace {

constexpr char kNvmePrefix[] = "NVME_TEMP_";
constexpr uint8_t kEntityDisk = 0x04;
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

int32_t RenameDisk(const ProfileName &tProfile, const DiskNames &tNames, uint8_t *pucSDRRec,
                   uint8_t ucSlotOffset) {
    if (pucSDRRec == nullptr) {
        const Label tLabel(tProfile, "ModifyDiskSensorName");
        OXA_ERROR(kModuleSdr, tProfile.acFile, tLabel.ac, tNames.acNullText, tLabel.ac);
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
