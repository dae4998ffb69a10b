// SPDX-License-Identifier: Apache-2.0
//
// One sensor into the repository, one out of it, and a sub card's status to the FRU service: each over a
// local session of its own.
#include <cstring>

#include "library/record/local_session.h"
#include "library/record/log.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/disk_registry.h"
#include "library/store/record_file.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr uint32_t kSessionLastWord = 10;
constexpr uint32_t kCommandLastWord = 20;
constexpr uint8_t kAddResponseSize = 3;
constexpr uint8_t kDeleteSize = 4; // request and response alike
constexpr uint32_t kPsuFru = 0xFF0A;

constexpr uint8_t kSubCardHead[] = {0x12, 0x00, 0x8E, 0x01};
constexpr uint8_t kSubCardStatusSize = 20;
constexpr uint8_t kSubCardMsgSize = 25;

// Which of a disk's two registered sensors a description is; 0: none.
uint32_t DiskSensorOf(const SpecificSensorParam &tParam) {
    if (tParam.ucDeviceType != kNvmeDisk)
        return 0;
    return tParam.dwSensorDevType == kClassTemp         ? static_cast<uint32_t>(kRegisterTemp)
           : tParam.dwSensorDevType == kClassDiskStatus ? static_cast<uint32_t>(kRegisterStatus)
                                                        : 0;
}

const AddSDRHndlrRow *FindHandler(uint32_t dwSensorDevType) {
    for (uint32_t dw = 0; dw < g_dwAddSDRHndlrCnt; ++dw)
        if (g_atAddSDRHndlrTab[dw].dwSensorDevType == dwSensorDevType)
            return &g_atAddSDRHndlrTab[dw];
    return nullptr;
}

// OXA_OK and a record, or why there is none.
uint32_t BuildSDR(SpecificSensorParam &tParam, uint8_t *pucSDR, uint8_t &ucLen) {
    constexpr char kFunc[] = "SDR_AddSpecificSensor";
    const uint32_t dwType = tParam.dwSensorDevType;
    OXA_INFO(kModuleSdr, kDispatchUnit, kFunc, "Add SDR: sensor device type: 0x%x", dwType);
    const AddSDRHndlrRow *ptRow = FindHandler(dwType);
    if (ptRow == nullptr) {
        OXA_INFO(kModuleSdr, kDispatchUnit, kFunc, "Device type 0x%x is not supported to add SDR.", dwType);
        return OXA_NOT_SUPPORTED;
    }
    if (ptRow->pfnGen == nullptr) {
        OXA_INFO(kModuleSdr, kDispatchUnit, kFunc, "There is no hndlr function for device type %d!\n",
                 static_cast<int>(dwType));
        return OXA_FAILED;
    }
    ucLen = ptRow->pfnGen(&tParam, pucSDR, ptRow->dwSensorDevType);
    if (ucLen == GEN_SDR_FAILED) {
        OXA_ERROR(kModuleSdr, kDispatchUnit, kFunc, "Add SDR: GenSDRHndlr ucRecLen = 0.");
        return OXA_FAILED;
    }
    if (ucLen == GEN_SDR_SKIPPED) {
        OXA_INFO(kModuleSdr, kDispatchUnit, kFunc, "Add SDR: GenSDRHndlr. This sensor is not support.");
        return OXA_NOT_SUPPORTED;
    }
    return OXA_OK;
}

uint16_t addSDRtoIPMI(const uint8_t *pucSDR, uint8_t ucLen) {
    IpmiLocalSession tSession;
    uint16_t wRet = OpenLocalSession(tSession, kSessionLastWord);
    if (wRet != 0) {
        OXA_ERROR(kModuleSdr, kDispatchUnit, __func__, "Failed to create IPMI Session wRet(0x%x) !!!\n",
                  wRet);
        return wRet;
    }
    uint8_t aucResponse[kAddResponseSize] = {};
    wRet = IPMICMD_AddSDR(&tSession, pucSDR, ucLen, aucResponse, kCommandLastWord);
    if (wRet != 0)
        OXA_ERROR(kModuleSdr, kDispatchUnit, __func__, "Failed to add SDR to IPMI: 0x%x\n", wRet);
    LIBIPMI_CloseSession(&tSession);
    return wRet;
}

uint16_t deleteSDRFromIPMI(uint16_t wRecID) {
    IpmiLocalSession tSession;
    uint16_t wRet = OpenLocalSession(tSession, kSessionLastWord);
    if (wRet != 0) {
        OXA_ERROR(kModuleSdr, kDispatchUnit, __func__, "Failed to create IPMI Session wRet(0x%x) !!!\n",
                  wRet);
        return wRet;
    }
    const uint8_t aucRequest[kDeleteSize] = {0, 0, static_cast<uint8_t>(wRecID),
                                             static_cast<uint8_t>(wRecID >> 8)};
    uint8_t aucResponse[kDeleteSize] = {};
    wRet = IPMICMD_DeleteSDR(&tSession, aucRequest, aucResponse, kCommandLastWord);
    // written after every delete: readers of the log tell success by the result in it
    constexpr char kFunc[] = "SDR_DeleteSpecificSDR";
    OXA_ERROR(kModuleSdr, kDispatchUnit, kFunc, "%s: delete sdr failed, result:%d, recordid:0x%x.\n", kFunc,
              wRet, wRecID);
    LIBIPMI_CloseSession(&tSession);
    return wRet;
}

} // namespace

uint32_t SDR_AddSpecificSensor(SpecificSensorParam *ptParam) {
    if (ptParam == nullptr) {
        OXA_ERROR(kModuleSdr, kDispatchUnit, __func__, "%s failed! ptParam == NULL.", __func__);
        return OXA_OK;
    }
    uint8_t aucSDR[SDR_SLOT_SIZE] = {};
    const uint8_t ucSlot = ptParam->SlotId; // the generator may convert it
    const uint32_t dwDiskSensor = DiskSensorOf(*ptParam);
    if (dwDiskSensor != 0 && isHasRegister(ucSlot, static_cast<int32_t>(dwDiskSensor)) != 0)
        return OXA_FAILED;
    uint8_t ucLen;
    const uint32_t dwBuilt = BuildSDR(*ptParam, aucSDR, ucLen);
    if (dwBuilt != OXA_OK)
        return dwBuilt;
    const uint16_t wRet = addSDRtoIPMI(aucSDR, ucLen);
    if (wRet != 0)
        OXA_ERROR(kModuleSdr, kDispatchUnit, __func__, "Add SDR Record failed for retCode = 0x%x", wRet);
    // a disk whose record was refused counts as registered all the same
    if (dwDiskSensor == kRegisterTemp)
        setHddRegisterInfo(ucSlot, dwDiskSensor, ptParam->SubDeviceType);
    else if (dwDiskSensor == kRegisterStatus)
        setHddRegisterInfo(ucSlot, dwDiskSensor, static_cast<uint8_t>(ptParam->wBitmap));
    return wRet;
}

int32_t SDR_DeleteSpecificSDR(SpecificSensorParam *ptParam) {
    if (ptParam == nullptr) {
        OXA_WARN(kModuleSdr, kDispatchUnit, __func__, "%s: input is null.\n", __func__);
        return -1;
    }
    if (ptParam->dwSensorDevType != kPsuFru) {
        OXA_WARN(kModuleSdr, kDispatchUnit, __func__, "%s: input device type is not support, %d.\n", __func__,
                 static_cast<int>(ptParam->dwSensorDevType));
        return 1;
    }
    const uint16_t wRecID = SDR_GetSepcificFruSDRRecID(kDeviceClassPsu, ptParam->SlotId);
    if (wRecID == 0)
        return 0;
    const uint16_t wRet = deleteSDRFromIPMI(wRecID);
    OXA_INFO(kModuleSdr, kDispatchUnit, __func__, "%s: result of DelSDR is %d, wRecID is 0x%x.\n", __func__,
             wRet, wRecID);
    if (wRet == 0)
        SDR_UpdateSpecificSDRRecFile(kDeviceClassPsu, ptParam->SlotId, 0, 0);
    return wRet;
}

uint32_t SendSubCardStatusToFRU(const uint8_t *pSubCardInfo) {
    OXA_INFO(kModuleSubCard, kDispatchUnit, __func__, "SendSubCardStatusToFRU Is Called!");
    if (pSubCardInfo == nullptr) {
        OXA_ERROR(kModuleSubCard, kDispatchUnit, __func__, "pSubCardInfo is null.");
        return OXA_OK;
    }
    uint8_t aucMsg[kSubCardMsgSize] = {};
    memcpy(aucMsg, kSubCardHead, sizeof(kSubCardHead));
    memcpy(aucMsg + sizeof(kSubCardHead), pSubCardInfo, kSubCardStatusSize);
    IpmiLocalSession tSession;
    uint16_t wRet = OpenLocalSession(tSession, kSessionLastWord);
    if (wRet != 0) {
        OXA_ERROR(kModuleSubCard, kDispatchUnit, __func__, "Failed to create IPMI Session wRet(0x%x) !",
                  wRet);
        return wRet;
    }
    wRet = LIBIPMI_HL_SendMsgToFRU(&tSession, aucMsg, kCommandLastWord);
    if (wRet != 0)
        OXA_ERROR(kModuleSubCard, kDispatchUnit, __func__, "Failed to send fru data to IPMI: 0x%x", wRet);
    LIBIPMI_CloseSession(&tSession);
    return wRet;
}
