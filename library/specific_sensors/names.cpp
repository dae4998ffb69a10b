// SPDX-License-Identifier: Apache-2.0
//
// From a sensor description to its name: the profile's pattern and the numbers in it, or the entry of a card
// family that has names of its own.
//
// A name is at most 16 characters.  A longer one is cut where it is stored and reported by its length, which
// the callers refuse; a length of 0 says that the sensor is not offered.
#include <cstring>

#include "library/record/log.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/generator.h"
#include "library/specific_sensors/name_text.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr uint16_t kBitmapOfDescription = 65535; // of a table row: the description's threshold bitmap stands

// Counts on over all NIC names of a profile that numbers them so, for as long as the library is loaded.
uint8_t g_ucNicPort;

const SnrSpecificInfoRow *FindProfile(uint32_t dwCustomId) {
    for (uint32_t i = 0; i < g_dwSdrCustomCnt; ++i) {
        const SnrSpecificInfoRow *ptRow = &g_atSnrSpecificInfo[i];
        if (ptRow->dwCustomId == dwCustomId && ptRow->pucSnrCnt != nullptr && ptRow->ptInfo != nullptr)
            return ptRow;
    }
    return nullptr;
}

uint8_t CountPresentOcpCards() {
    const uint8_t ucMax = GetOcpNetCardMaxCount();
    const uint32_t dwPresent = GetOcpPresentStatus();
    uint8_t ucCnt = 0;
    for (uint8_t i = 0; i < ucMax && i < 32; ++i)
        ucCnt = static_cast<uint8_t>(ucCnt + (dwPresent >> i & 1));
    return ucCnt;
}

// A number that could not be printed leaves an empty text, which no name is built from.
void PrintNumber(char *pSilkInfo, const char *pcFormat, int sdwNumber) {
    if (snprintf_s(pSilkInfo, SENSOR_NAME_SIZE, pcFormat, sdwNumber) < 0)
        pSilkInfo[0] = '\0';
}

// Replaces every pcMark of the name by the number; 0 = the number could not be printed.
uint8_t FillNumber(SnrQuery *ptInfo, const char *pcMark, uint8_t ucNumber, uint32_t dwCustomId,
                   uint8_t ucPlainFlag) {
    char acSilk[SENSOR_NAME_SIZE] = {};
    getSilkInfo(ptInfo, acSilk, ucNumber, dwCustomId, ucPlainFlag);
    if (acSilk[0] == '\0')
        return 0;
    return ReplaceInName(*ptInfo, pcMark, acSilk);
}

} // namespace

void getCustomSensorInfo(SnrQuery *ptInfo, uint32_t dwCustomId) {
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "%s failed! The input parameter ptInfo is null.",
                  __func__);
        return;
    }
    const SnrSpecificInfoRow *ptProfile = FindProfile(dwCustomId);
    if (ptProfile == nullptr)
        return;

    for (uint32_t i = 0; i < *ptProfile->pucSnrCnt; ++i) {
        const SnrInfoRec *ptRec = &ptProfile->ptInfo[i];
        if (ptRec->dwSensorDevType != ptInfo->dwSensorDevType ||
            ptRec->ucDeviceType != ptInfo->ucDeviceType || ptRec->SubDeviceType != ptInfo->SubDeviceType)
            continue;
        memcpy(ptInfo->acName, ptRec->acName, kNameMax);
        ptInfo->acName[kNameMax] = '\0';
        if (ptRec->wBitmap != kBitmapOfDescription)
            ptInfo->wBitmap = ptRec->wBitmap;
        return;
    }
}

uint8_t getSensorInfo(SnrQuery *ptInfo, uint8_t ucSlot, uint8_t ucPort) {
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "%s failed! ptInfo == NULL.", __func__);
        return 0;
    }
    const uint32_t dwCustomId = ReadProfile();
    getCustomSensorInfo(ptInfo, dwCustomId);
    if (ptInfo->acName[0] == '\0' || memcmp(ptInfo->acName, "null", 4) == 0) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, __func__, "this sensor is not support custom id %d !",
                 static_cast<int>(dwCustomId));
        return 0;
    }

    modifyPcieSlotName(&ucSlot, ptInfo);
    uint8_t ucLen = NameLength(ptInfo);
    if (Contains(ptInfo->acName, "*"))
        ucLen = FillNumber(ptInfo, "*", ucSlot, dwCustomId, 0);
    if (ucLen == 0 || ucLen > kNameMax)
        return ucLen;

    if (Contains(ptInfo->acName, "#"))
        ucLen = FillNumber(ptInfo, "#", ucPort, dwCustomId,
                           TraitsOf(dwCustomId).bTwoDigitSlots &&
                               DeviceTypeOf(ptInfo->ucDeviceType).Has(kPlainPorts));
    if (ucLen == 0 || ucLen > kNameMax)
        return ucLen;

    return TraitsOf(dwCustomId).bGpusNamedByPlace ? modifySablinGpuSensorName(ptInfo) : ucLen;
}

uint8_t getPurchaseCardInfo(SnrQuery *ptInfo, const SpecificSensorParam *ptParam, uint8_t ucSensorIndex) {
    if (ReportNull(__func__, ptInfo, ptParam))
        return 0;
    for (const CardSnrRow &tRow : g_atPurchaseCardSnrInfo)
        if (tRow.dwSensorDevType == ptParam->dwSensorDevType && tRow.ucDeviceType == ptInfo->ucDeviceType)
            return getNameInfo(ptInfo, ucSensorIndex, &tRow);
    switch (ptParam->dwSensorDevType) {
    case kClassTemp:
        return getSensorInfo(ptInfo, ptParam->SlotId, ptParam->ucSensorSeq);
    case kClassPower:
    case kClassMemStatus:
    case kClassDiskStatus:
    case kClassGpuCard:
        return getSensorInfo(ptInfo, ptParam->SlotId, 0);
    case kClassVolt:
        return getSensorInfo(ptInfo, ptParam->SlotId, ptParam->ucSecondPort);
    default:
        return 0;
    }
}

uint8_t getNameInfo(SnrQuery *ptInfo, uint8_t ucSensorIndex, const CardSnrRow *ptRow) {
    if (ReportNull(__func__, ptInfo, ptRow) || ReportNull(__func__, ptRow->ptEntry))
        return 0;
    for (uint8_t i = 0; i < ptRow->ucCnt; ++i) {
        if (ptRow->ptEntry[i].ucSensorIndex != ucSensorIndex)
            continue;
        memcpy(ptInfo->acName, ptRow->ptEntry[i].acName, kNameMax);
        ptInfo->acName[kNameMax] = '\0';
        return NameLength(ptInfo);
    }
    return 0;
}

void getSilkInfo(const SnrQuery *ptInfo, char *pSilkInfo, uint8_t ucNumber, uint32_t dwCustomId,
                 uint8_t ucPlainFlag) {
    if (ptInfo == nullptr || pSilkInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "%s failed! ptInfo == NULL || pSilkInfo == NULL.",
                  __func__);
        return;
    }
    const uint8_t ucOcpCnt = CountPresentOcpCards();
    const ProfileTraits &tTraits = TraitsOf(dwCustomId);
    if (ptInfo->dwSensorDevType == kClassFan && tTraits.eFanNumber == FanNumber::kHexadecimal)
        return PrintNumber(pSilkInfo, "%X", ucNumber);
    if (ptInfo->dwSensorDevType == kClassFan && tTraits.eFanNumber == FanNumber::kTwoDigits)
        return PrintNumber(pSilkInfo, "%02d", ucNumber);

    if (ucPlainFlag != 1) {
        if (tTraits.bTwoDigitSlots)
            return PrintNumber(pSilkInfo, "%02d", ucNumber);
        if (tTraits.bNicsCountOnFromOcp && ptInfo->ucDeviceType == kNic)
            return PrintNumber(pSilkInfo, "%d", ucOcpCnt + g_ucNicPort++);
    }
    PrintNumber(pSilkInfo, "%d", ucNumber);
}
