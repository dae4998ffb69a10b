// SPDX-License-Identifier: Apache-2.0
//
// Full records of sensors that come at run time: temperature, voltage, power, fan speed.  One body builds
// all of them; where a kind departs from the temperature sensor it says so in its own step.
#include <cstring>

#include "oxa/platform.h"
#include "sdr/gen_specific_sensor_data_generators.h"
#include "sdr/gen_specific_sensor_data_kinds.h"
#include "sdr/oxa_log.h"
#include "sdr/sdr_templates.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr const char *kFile = "gen_specific_sensor_data.c";
constexpr uint16_t kFanlessBoardId = 0x5497;
constexpr uint8_t kLumoraPowerSensorType = 0x0B; // this profile's power sensors are "other units-based"
constexpr uint8_t kWholeWatts = 1;
constexpr uint8_t kSfpSlot = 0xFF; // what the scanner finds in byte 45 of an OCP port in that profile
constexpr uint8_t kNibble = 0x0F;
constexpr uint8_t kThresholdCnt = 6;
constexpr uint8_t kEntityAddInCard = 0x0B;

enum class FullKind : uint8_t { kTemp, kVolt, kPower, kFan };

struct FullModel {
    char acGenerator[24];
    FullKind eKind;
    SdrHead tHead;
};
constexpr FullModel kTempModel = {"GenSpecificTempSDR", FullKind::kTemp, kTempTemplate};
constexpr FullModel kVoltModel = {"GenSpecificVoltSDR", FullKind::kVolt, kVoltTemplate};
constexpr FullModel kPowerModel = {"GenSpecificPowerSDR", FullKind::kPower, kPowerTemplate};
constexpr FullModel kFanModel = {"GenSpecificFanSpeedSDR", FullKind::kFan, kFanTemplate};

struct FullDraft : SpecificDraft {
    FullKind eKind;
    FullDraft(const FullModel &tModel, SpecificSensorParam &tDescription)
        : SpecificDraft(tModel.acGenerator, tDescription), eKind(tModel.eKind) {}
};

bool BoardHasFans(const char *pcFunc) {
    uint16_t wBoardId = 0;
    const int32_t sdwRet = get_default_board_id(&wBoardId);
    if (sdwRet < 0)
        wBoardId = 0;
    OXA_INFO(kModuleSdr, kFile, pcFunc, "GenSpecificFanSpeedSDR: sdwRet = %d wBoardId = %x!", sdwRet,
             wBoardId);
    if (wBoardId != kFanlessBoardId)
        return true;
    OXA_INFO(kModuleSdr, kFile, pcFunc, "The board does not support adding sensor FAN_SPEED.");
    return false;
}

// Only NVMe disks have a temperature; where one is mounted decides its name.
bool TakeDisk(FullDraft &tDraft) {
    SpecificSensorParam &tParam = tDraft.tParam;
    if (tParam.ucDeviceType != kNvmeDisk)
        return true;
    if (tParam.SubDeviceType != kNvme) {
        OXA_TRACE(kModuleSdr, kFile, tDraft.pcFunc,
                  "this sensor is not support, ucCardType:%d, ucSubCardType:%d!", tParam.ucDeviceType,
                  tParam.SubDeviceType);
        return false;
    }
    tDraft.ConvertSlot();
    tDraft.tQuery.SubDeviceType = getNvmeFrontInfo(tDraft.ucOriginalSlot);
    return true;
}

void LogDescription(const FullDraft &tDraft) {
    const SpecificSensorParam &t = tDraft.tParam;
    OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc, "originalHddSilk:%u, SlotId:%u!\n",
             t.ucDeviceType == kNvmeDisk ? tDraft.ucOriginalSlot : 0, t.SlotId);
    OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc,
             "DeviceType = %u, SensorDevType = %u, SubDeviceType = %u, bitmap=0x%x, "
             "threshold:0x%x,0x%x,0x%x,0x%x,0x%x,0x%x, Hystersis:%u, ucBrenmorSensorIndex:%u!",
             t.ucDeviceType, t.dwSensorDevType, t.SubDeviceType, t.wBitmap, t.ucUNR, t.ucUC, t.ucUNC, t.ucLNC,
             t.ucLC, t.ucLNR, t.ucHysteresis, t.ucBrenmorSensorIndex);
}

uint8_t FindName(FullDraft &tDraft) {
    SpecificSensorParam &tParam = tDraft.tParam;
    if (tDraft.eKind == FullKind::kFan)
        return getSensorInfo(&tDraft.tQuery, tParam.SlotId, 0);
    return getPurchaseCardInfo(&tDraft.tQuery, &tParam, tParam.ucBrenmorSensorIndex);
}

void LogName(const FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    const char *pcName = tDraft.tQuery.acName;
    if (tDraft.eKind == FullKind::kFan)
        OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc,
                 "Add SDR: GenSpecificFanSpeedSDR  called getSensorInfo,Idx:%d,BitMap:%x,Name:%s .",
                 tParam.SlotId, tParam.wBitmap, pcName);
    else
        OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc, "Add SDR: %s  Name:%s.", tDraft.pcFunc, pcName);
    if (tDraft.eKind == FullKind::kVolt)
        OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc, "Add SDR: GenSpecificVoltSDR: bitmap=0x%x",
                 tParam.wBitmap);
}

// The name's length, or what the generator gives instead of a record.
bool TakeName(FullDraft &tDraft, uint8_t &ucLen) {
    ucLen = FindName(tDraft);
    if (ucLen == 0) {
        OXA_WARN(kModuleSdr, kFile, tDraft.pcFunc, "this sensor is not support!");
        ucLen = GEN_SDR_SKIPPED;
        return false;
    }
    if (ucLen > kNameMax) {
        OXA_ERROR(kModuleSdr, kFile, tDraft.pcFunc, "Unable to Get Sensor Name!");
        ucLen = GEN_SDR_FAILED;
        return false;
    }
    LogName(tDraft);
    tDraft.tParam.wBitmap = tDraft.tQuery.wBitmap;
    return true;
}

// Instances count on from the slot; eight bits wide, they wrap.
void SetEntityOfCard(FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    uint8_t &ucInstance = tDraft.aucSDR[SDR_ENTITY_INSTANCE];
    if (tParam.ucDeviceType == kNvmeDisk)
        ucInstance = tParam.SlotId;
    else if (tParam.ucDeviceType != kRaidSingle && tParam.SlotId < kNoSlot)
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.SlotId);
    if (tDraft.dwCustomId == CUSTOM_ID_LUMORA && tParam.ucDeviceType == kOcp &&
        tParam.SubDeviceType == kPort) {
        ucInstance |= kInstanceRelative;
        tDraft.aucSDR[FULL_SDR_SLOT] = kSfpSlot;
    }
    if (tParam.ucDeviceType == kMluUbbSfp)
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.ucBrenmorSensorIndex);
    modifyEntityInstance(&ucInstance, tDraft.aucSDR[SDR_ENTITY_ID], tParam.ucDeviceType);
}

void SetEntity(FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    uint8_t &ucInstance = tDraft.aucSDR[SDR_ENTITY_INSTANCE];
    if (tDraft.eKind == FullKind::kFan) { // a fan stays a fan, and slot 255 counts like any other
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.SlotId);
        return;
    }
    tDraft.aucSDR[SDR_ENTITY_ID] = getentityid(tParam.ucDeviceType);
    if (tDraft.eKind != FullKind::kPower)
        SetEntityOfCard(tDraft);
    else if (tParam.SlotId < kNoSlot)
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.SlotId);
}

// Upper limits of GPUs and NICs that this customer wants whatever the description says.
void ForceTempLimits(FullDraft &tDraft) {
    if (tDraft.aucSDR[SDR_ENTITY_ID] != kEntityAddInCard)
        return;
    for (const FixedLimits &t : kFerriskLimits) {
        if (t.ucDeviceType != tDraft.tParam.ucDeviceType)
            continue;
        SetThresholdMasks(tDraft.aucSDR, kFerriskLimitBits);
        tDraft.aucSDR[FULL_SDR_UNC] = t.ucUNC;
        tDraft.aucSDR[FULL_SDR_UC] = t.ucUC;
        tDraft.aucSDR[FULL_SDR_UNR] = t.ucUNR;
    }
}

// The same customer's plain fans: the described lower critical limit warns, and two counts below it is
// critical.
constexpr uint8_t kFerriskFanMasks[] = {0x05, 0x02, 0x05, 0x02, 0x13, 0x13}; // bytes 14 to 19

void ForceFanLimits(FullDraft &tDraft) {
    const uint8_t ucType = tDraft.tParam.ucDeviceType;
    if (ucType != kFanPlain && ucType != kFanFront && ucType != kFanRear)
        return;
    memcpy(tDraft.aucSDR + SDR_ASSERT_MASK, kFerriskFanMasks, sizeof(kFerriskFanMasks));
    tDraft.aucSDR[FULL_SDR_LNC] = tDraft.tParam.ucLC;
    tDraft.aucSDR[FULL_SDR_LC] = static_cast<uint8_t>(tDraft.tParam.ucLC - 2);
}

void SetThresholds(FullDraft &tDraft) {
    const SpecificSensorParam &t = tDraft.tParam;
    uint8_t *const pucSDR = tDraft.aucSDR;
    const uint8_t aucLimit[kThresholdCnt] = {t.ucLNC, t.ucLC, t.ucLNR, t.ucUNC, t.ucUC, t.ucUNR}; // by bit
    for (uint8_t ucBit = 0; ucBit < kThresholdCnt; ++ucBit)
        if (t.wBitmap >> ucBit & 1)
            pucSDR[kThresholdMasks[ucBit].ucOffset] = aucLimit[ucBit];
    SetThresholdMasks(pucSDR, static_cast<uint8_t>(t.wBitmap));
    if (t.ucHysteresis != 0)
        pucSDR[FULL_SDR_HYST_POSITIVE] = pucSDR[FULL_SDR_HYST_NEGATIVE] = t.ucHysteresis;
    if (tDraft.dwCustomId != CUSTOM_ID_FERRISK)
        return;
    if (tDraft.eKind == FullKind::kTemp)
        ForceTempLimits(tDraft);
    else if (tDraft.eKind == FullKind::kFan)
        ForceFanLimits(tDraft);
}

bool IsGpuPower(uint8_t ucDeviceType) {
    switch (ucDeviceType) {
    case kGpu:
    case kOam:
    case kSxm:
    case kGpuSlotPower:
    case kOamSlotPower:
    case kSxmSlotPower:
        return true;
    default:
        return false;
    }
}

void SetGpuFactors(FullDraft &tDraft, uint16_t wBoardId) {
    uint8_t *const pucM = tDraft.aucSDR + FULL_SDR_M_VALUE_LS_8_BITS;
    uint8_t *const pucB = tDraft.aucSDR + FULL_SDR_B_VALUE_LS_8_BITS;
    GetGpuPowerAccuracy(wBoardId, tDraft.tParam.ucDeviceType, tDraft.tParam.SlotId, pucM, pucB);
    OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc,
             "Add SDR: GenSpecificPowerSDR: aucTemp[FULL_SDR_M_VALUE_LS_8_BITS]:%u, "
             "aucTemp[FULL_SDR_B_VALUE_LS_8_BITS]:%u",
             *pucM, *pucB);
}

// How a power reading converts, and which of a card's power sensors this is.
void FinishPower(FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    uint8_t &ucM = tDraft.aucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
    uint8_t &ucIndex = tDraft.aucSDR[FULL_SDR_SENSOR_INDEX];
    ucM = kPowerM;
    uint16_t wBoardId = 0;
    if (get_default_board_id(&wBoardId) < 0) {
        wBoardId = 0;
        OXA_WARN(kModuleSdr, kFile, tDraft.pcFunc, "get Board Id failed!");
    }
    if (IsGpuPower(tParam.ucDeviceType))
        SetGpuFactors(tDraft, wBoardId);
    if (tParam.ucDeviceType == kHyper || tParam.ucDeviceType == kNeo || tParam.ucDeviceType == kSmartNicCard)
        ucM = kWholeWatts;
    if (tParam.ucDeviceType == kHyper)
        ucIndex = tParam.ucBrenmorSensorIndex;
    else if (tParam.ucDeviceType == kNeo)
        ucIndex = static_cast<uint8_t>(tParam.SubDeviceType << 4 | (tParam.ucSensorSeq & kNibble));
}

// What follows once the user's thresholds are in.
void Finish(FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    if (tDraft.eKind == FullKind::kPower)
        return FinishPower(tDraft);
    if (tDraft.eKind == FullKind::kFan) {
        tDraft.aucSDR[FULL_SDR_SLOT] = tParam.ucBrenmorSensorIndex;
        OXA_INFO(kModuleSdr, kFile, tDraft.pcFunc, "ucSensorAccuracy = %u", tParam.ucBrenmorSensorIndex);
        return;
    }
    tDraft.aucSDR[FULL_SDR_SENSOR_INDEX] =
        useBrenmorSensorIndex(tParam.ucDeviceType)
            ? tParam.ucBrenmorSensorIndex
            : static_cast<uint8_t>(tDraft.tQuery.SubDeviceType << 4 | (tParam.ucSensorSeq & kNibble));
}

void FillTemplate(FullDraft &tDraft, const FullModel &tModel) {
    uint8_t *const pucSDR = tDraft.aucSDR;
    tDraft.UseTemplate(tModel.tHead, kFullHeadSize);
    pucSDR[FULL_SDR_OEM] = tDraft.tParam.ucDeviceType;
    pucSDR[FULL_SDR_SLOT] = tDraft.tParam.SlotId;
    if (tDraft.eKind == FullKind::kVolt)
        GetVoltAccuracy(tDraft.tParam.ucDeviceType, pucSDR + FULL_SDR_M_VALUE_LS_8_BITS,
                        pucSDR + FULL_SDR_EXPONENTS);
    if (tDraft.eKind == FullKind::kPower && tDraft.dwCustomId == CUSTOM_ID_LUMORA)
        pucSDR[SDR_SENSOR_TYPE] = kLumoraPowerSensorType;
}

uint8_t GenFullSDR(const FullModel &tModel, SpecificSensorParam *ptParam, uint8_t *pucSDR) {
    if (IsMissing(tModel.acGenerator, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    if (tModel.eKind == FullKind::kFan && !BoardHasFans(tModel.acGenerator))
        return GEN_SDR_FAILED;
    FullDraft tDraft(tModel, *ptParam);
    FillTemplate(tDraft, tModel);
    if (!TakeDisk(tDraft))
        return GEN_SDR_SKIPPED;
    LogDescription(tDraft);
    uint8_t ucLen;
    if (!TakeName(tDraft, ucLen))
        return ucLen;
    SetEntity(tDraft);
    tDraft.PutName(FULL_SDR_NAME, ucLen);
    SetThresholds(tDraft);
    ModifySensorThresholdByFile(tDraft.aucSDR);
    Finish(tDraft);
    return tDraft.Publish(pucSDR, static_cast<uint8_t>(FULL_SDR_NAME + ucLen));
}

} // namespace

uint8_t GenSpecificTempSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFullSDR(kTempModel, ptParam, pucSDR);
}

uint8_t GenSpecificVoltSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFullSDR(kVoltModel, ptParam, pucSDR);
}

uint8_t GenSpecificPowerSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFullSDR(kPowerModel, ptParam, pucSDR);
}

uint8_t GenSpecificFanSpeedSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFullSDR(kFanModel, ptParam, pucSDR);
}
