// SPDX-License-Identifier: Apache-2.0
#include "library/specific_sensors/generator.h"

#include <cstring>

#include "library/record/log.h"
#include "oxa/store.h"

namespace oxa {

bool ReportNull(const char *pcFunc, const void *pvArgument) {
    if (pvArgument != nullptr)
        return false;
    OXA_ERROR(kModuleSdr, kSensorDataUnit, pcFunc, "%s failed! The input parameter is null.", pcFunc);
    return true;
}

uint32_t ReadProfile() {
    uint32_t dwCustomId = kProfileWhenUnreadable;
    return IPMI_LoadCustomID(&dwCustomId) == 0 ? dwCustomId : kProfileWhenUnreadable;
}

SpecificDraft::SpecificDraft(const char *pcGenerator, SpecificSensorParam &tDescription)
    : pcFunc(pcGenerator), tParam(tDescription), tTraits(TraitsOf(ReadProfile())), tQuery(),
      ucOriginalSlot(tDescription.SlotId) {
    tQuery.dwSensorDevType = tParam.dwSensorDevType;
    tQuery.ucDeviceType = tParam.ucDeviceType;
    tQuery.SubDeviceType = tParam.SubDeviceType;
    tQuery.wBitmap = tParam.wBitmap;
}

void SpecificDraft::UseTemplate(const SdrHead &tHead, uint8_t ucHeadSize) {
    memset(aucSDR, kNameFill, sizeof(aucSDR));
    memcpy(aucSDR, tHead.auc, ucHeadSize);
}

void SpecificDraft::ConvertSlot() {
    uint8_t ucSlot = ucOriginalSlot;
    oxa_CustomSlotConversion(&ucSlot);
    tParam.SlotId = ucSlot;
}

void SpecificDraft::PutName(uint8_t ucOffset, uint8_t ucLen) {
    aucSDR[SDR_RECORD_LENGTH] = static_cast<uint8_t>(ucOffset - kSdrHeaderSize + ucLen);
    aucSDR[ucOffset - 1] = static_cast<uint8_t>(kIdTypeAscii + ucLen);
    memcpy(aucSDR + ucOffset, tQuery.acName, ucLen);
}

uint8_t SpecificDraft::Publish(uint8_t *pucSDR, uint8_t ucLen) const {
    if (checkSensorExist(aucSDR) == 1) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, pcFunc, "This sensor is already exist!");
        return GEN_SDR_SKIPPED;
    }
    return memcpy_s(pucSDR, SDR_SLOT_SIZE, aucSDR, ucLen) == 0 ? ucLen : static_cast<uint8_t>(GEN_SDR_FAILED);
}

} // namespace oxa
