// SPDX-License-Identifier: Apache-2.0
//
// The record file: which id the repository gave to the FRU locator of a power supply or card, and whether
// the device is there.  Only power supplies are read back.
#include "library/store/record_file.h"

#include "library/record/log.h"
#include "oxa/store.h"

using namespace oxa;

namespace {

constexpr char kRecordFile[] = "/var/SpecificSDRRec";
constexpr char kKeyRecId[] = "sdrRecId";
constexpr char kKeyPresence[] = "Presence";
constexpr uint32_t kPresent = 1;

// A section name is cut to what its buffer holds.
constexpr uint32_t kWrittenSectionSize = 17;
constexpr uint32_t kReadSectionSize = 16;

const char *SectionFormat(uint32_t dwEntityID) {
    switch (dwEntityID) {
    case kDeviceClassCard:
        return "PurchaseCard_%d";
    case kDeviceClassUbb:
        return "PurchaseUBB_%d";
    case kDeviceClassPsu:
        return "PSU_%d";
    default:
        return nullptr;
    }
}

// The opened record file, null when it cannot be had; what is asked for is logged first.
IniFile *OpenRecordFile(const char *pcFunc, uint32_t dwEntityID, uint32_t dwEntityInstance,
                        uint32_t dwRecID) {
    OXA_INFO(kModuleSdr, kFileUnit, pcFunc, "%s:=====ucEntityID:ucEntityInstance:wRecID: %x, %d, %d.\n",
             pcFunc, dwEntityID, static_cast<int>(dwEntityInstance), static_cast<int>(dwRecID));
    IniFile *ptIni = nullptr;
    if (IniLoadFile(kRecordFile, &ptIni) == 0 && ptIni != nullptr)
        return ptIni;
    OXA_ERROR(kModuleSdr, kFileUnit, pcFunc, "%s: file creation failed.\n", pcFunc);
    return nullptr;
}

} // namespace

void SDR_UpdateSpecificSDRRecFile(uint32_t dwEntityID, uint32_t dwEntityInstance, uint32_t dwRecID,
                                  uint32_t dwPresence) {
    IniFile *ptIni = OpenRecordFile(__func__, dwEntityID, dwEntityInstance, dwRecID);
    if (ptIni == nullptr)
        return;
    const char *pcFormat = SectionFormat(dwEntityID);
    char acSection[kWrittenSectionSize];
    if (pcFormat == nullptr)
        OXA_INFO(kModuleSdr, kFileUnit, __func__, "%s: input device type is not support, %d.\n", __func__,
                 static_cast<int>(dwEntityID));
    else if (snprintf_s(acSection, sizeof(acSection), pcFormat, static_cast<int>(dwEntityInstance)) >= 0) {
        IniSetUInt(ptIni, acSection, kKeyRecId, dwPresence == kPresent ? dwRecID : 0);
        IniSetUInt(ptIni, acSection, kKeyPresence, dwPresence);
        IniSaveFile(ptIni, kRecordFile);
    }
    IniCloseFile(ptIni);
}

uint16_t SDR_GetSepcificFruSDRRecID(uint8_t ucEntityID, uint8_t ucEntityInstance) {
    IniFile *ptIni = OpenRecordFile(__func__, ucEntityID, ucEntityInstance, 0);
    if (ptIni == nullptr)
        return 0;
    uint32_t dwPresence = 0;
    uint32_t dwRecID = 0;
    char acSection[kReadSectionSize];
    if (ucEntityID != kDeviceClassPsu) {
        OXA_WARN(kModuleSdr, kFileUnit, __func__, "%s: input device type is not support, %d.\n", __func__,
                 ucEntityID);
    } else if (snprintf_s(acSection, sizeof(acSection), SectionFormat(ucEntityID), ucEntityInstance) >= 0) {
        dwPresence = IniGetUInt(ptIni, acSection, kKeyPresence, 0);
        dwRecID = IniGetUInt(ptIni, acSection, kKeyRecId, 0);
    }
    IniCloseFile(ptIni);
    return dwPresence == kPresent ? static_cast<uint16_t>(dwRecID) : 0;
}
