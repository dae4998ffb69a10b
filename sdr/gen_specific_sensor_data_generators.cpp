// SPDX-License-Identifier: Apache-2.0
#include "sdr/gen_specific_sensor_data_generators.h"

#include <cstring>

#include "oxa/platform.h"
#include "sdr/oxa_log.h"

namespace oxa {
namespace {

constexpr const char *kFile = "gen_specific_sensor_data.c";

} // namespace

bool IsMissing(const char *pcFunc, const void *pvArgument) {
    if (pvArgument != nullptr)
        return false;
    OXA_ERROR(kModuleSdr, kFile, pcFunc, "%s failed! The input parameter is null.", pcFunc);
    return true;
}

uint32_t ReadProfile() {
    uint32_t dwCustomId = CUSTOM_ID_DEFAULT;
    return IPMI_LoadCustomID(&dwCustomId) == 0 ? dwCustomId : static_cast<uint32_t>(CUSTOM_ID_DEFAULT);
}

SpecificDraft::SpecificDraft(const char *pcGenerator, SpecificSensorParam &tDescription)
    : pcFunc(pcGenerator), tParam(tDescription), dwCustomId(ReadProfile()), tQuery(),
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
        OXA_WARN(kModuleSdr, kFile, pcFunc, "This sensor is already exist!");
        return GEN_SDR_SKIPPED;
    }
    return memcpy_s(pucSDR, SDR_SLOT_SIZE, aucSDR, ucLen) == 0 ? ucLen : static_cast<uint8_t>(GEN_SDR_FAILED);
}

} // namespace oxa
