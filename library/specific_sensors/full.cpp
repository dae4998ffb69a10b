// SPDX-License-Identifier: Apache-2.0
//
// Full records of sensors that come at run time: temperature, voltage, power, fan speed.  One body builds
// all of them; where a kind departs from the temperature sensor it says so in its own step.
#include <cstring>

#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/generator.h"
#include "library/specific_sensors/templates.h"
#include "oxa/thresholds.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr uint8_t kOneWattACount = 1;
constexpr uint8_t kSfpSlot = 0xFF; // what the scanner finds in byte 45 of an OCP port in that profile
constexpr uint8_t kNibble = 0x0F;
constexpr uint8_t kThresholdCnt = 6;

enum class FullSensor : uint8_t { kTemp, kVolt, kPower, kFan };

struct FullModel {
    char acGenerator[24];
    FullSensor eSensor;
    SdrHead tHead;
};
constexpr FullModel kTempModel = {"GenSpecificTempSDR", FullSensor::kTemp, kTempTemplate};
constexpr FullModel kVoltModel = {"GenSpecificVoltSDR", FullSensor::kVolt, kVoltTemplate};
constexpr FullModel kPowerModel = {"GenSpecificPowerSDR", FullSensor::kPower, kPowerTemplate};
constexpr FullModel kFanModel = {"GenSpecificFanSpeedSDR", FullSensor::kFan, kFanTemplate};

struct FullDraft : SpecificDraft {
    FullSensor eSensor;
    FullDraft(const FullModel &tModel, SpecificSensorParam &tDescription)
        : SpecificDraft(tModel.acGenerator, tDescription), eSensor(tModel.eSensor) {}
};

bool BoardHasFans(const char *pcFunc) {
    uint16_t wBoardId = 0;
    const int32_t sdwRet = get_default_board_id(&wBoardId);
    if (sdwRet < 0)
        wBoardId = 0;
    OXA_INFO(kModuleSdr, kSensorDataUnit, pcFunc, "GenSpecificFanSpeedSDR: sdwRet = %d wBoardId = %x!",
             sdwRet, wBoardId);
    if (wBoardId != kBoardSmall)
        return true;
    OXA_INFO(kModuleSdr, kSensorDataUnit, pcFunc, "The board does not support adding sensor FAN_SPEED.");
    return false;
}

// Only NVMe disks have a temperature; where one is mounted decides its name.
bool TakeDisk(FullDraft &tDraft) {
    SpecificSensorParam &tParam = tDraft.tParam;
    if (tParam.ucDeviceType != kNvmeDisk)
        return true;
    if (tParam.SubDeviceType != kNvme) {
        OXA_TRACE(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
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
    OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "originalHddSilk:%u, SlotId:%u!\n",
             t.ucDeviceType == kNvmeDisk ? tDraft.ucOriginalSlot : 0, t.SlotId);
    OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
             "DeviceType = %u, SensorDevType = %u, SubDeviceType = %u, bitmap=0x%x, "
             "threshold:0x%x,0x%x,0x%x,0x%x,0x%x,0x%x, Hystersis:%u, ucBrenmorSensorIndex:%u!",
             t.ucDeviceType, t.dwSensorDevType, t.SubDeviceType, t.wBitmap, t.ucUNR, t.ucUC, t.ucUNC, t.ucLNC,
             t.ucLC, t.ucLNR, t.ucHysteresis, t.ucBrenmorSensorIndex);
}

uint8_t FindName(FullDraft &tDraft) {
    SpecificSensorParam &tParam = tDraft.tParam;
    if (tDraft.eSensor == FullSensor::kFan)
        return getSensorInfo(&tDraft.tQuery, tParam.SlotId, 0);
    return getPurchaseCardInfo(&tDraft.tQuery, &tParam, tParam.ucBrenmorSensorIndex);
}

void LogName(const FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    const char *pcName = tDraft.tQuery.acName;
    if (tDraft.eSensor == FullSensor::kFan)
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
                 "Add SDR: GenSpecificFanSpeedSDR  called getSensorInfo,Idx:%d,BitMap:%x,Name:%s .",
                 tParam.SlotId, tParam.wBitmap, pcName);
    else
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "Add SDR: %s  Name:%s.", tDraft.pcFunc, pcName);
    if (tDraft.eSensor == FullSensor::kVolt)
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "Add SDR: GenSpecificVoltSDR: bitmap=0x%x",
                 tParam.wBitmap);
}

// The name's length, or what the generator gives instead of a record.
bool TakeName(FullDraft &tDraft, uint8_t &ucLen) {
    ucLen = FindName(tDraft);
    if (ucLen == 0) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "this sensor is not support!");
        ucLen = GEN_SDR_SKIPPED;
        return false;
    }
    if (ucLen > kNameMax) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "Unable to Get Sensor Name!");
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
    if (tDraft.tTraits.bRelativeOcpPorts && tParam.ucDeviceType == kOcp && tParam.SubDeviceType == kPort) {
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
    if (tDraft.eSensor == FullSensor::kFan) { // a fan stays a fan, and slot 255 counts like any other
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.SlotId);
        return;
    }
    tDraft.aucSDR[SDR_ENTITY_ID] = getentityid(tParam.ucDeviceType);
    if (tDraft.eSensor != FullSensor::kPower)
        SetEntityOfCard(tDraft);
    else if (tParam.SlotId < kNoSlot)
        ucInstance = static_cast<uint8_t>(ucInstance + tParam.SlotId);
}

// Upper limits of cards that the customer wants whatever the description says.
void ForceTempLimits(FullDraft &tDraft) {
    if (tDraft.aucSDR[SDR_ENTITY_ID] != kEntityAddInCard)
        return;
    for (const FixedLimits &t : tDraft.tTraits.atFixedLimits) {
        if (t.ucDeviceType == 0 || t.ucDeviceType != tDraft.tParam.ucDeviceType)
            continue;
        SetThresholdMasks(tDraft.aucSDR, kFixedLimitBits);
        tDraft.aucSDR[FULL_SDR_UNC] = t.ucUNC;
        tDraft.aucSDR[FULL_SDR_UC] = t.ucUC;
        tDraft.aucSDR[FULL_SDR_UNR] = t.ucUNR;
    }
}

// Plain fans of the same customer: the described lower critical limit warns, and two counts below it is
// critical.
constexpr uint8_t kForcedFanMasks[] = {0x05, 0x02, 0x05, 0x02, 0x13, 0x13}; // bytes 14 to 19

void ForceFanLimits(FullDraft &tDraft) {
    const uint8_t ucType = tDraft.tParam.ucDeviceType;
    if (!tDraft.tTraits.bForcesFanLimits ||
        (ucType != kFanPlain && ucType != kFanFront && ucType != kFanRear))
        return;
    memcpy(tDraft.aucSDR + SDR_ASSERT_MASK, kForcedFanMasks, sizeof(kForcedFanMasks));
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
    if (tDraft.eSensor == FullSensor::kTemp)
        ForceTempLimits(tDraft);
    else if (tDraft.eSensor == FullSensor::kFan)
        ForceFanLimits(tDraft);
}

void SetGpuFactors(FullDraft &tDraft, uint16_t wBoardId) {
    uint8_t *const pucM = tDraft.aucSDR + FULL_SDR_M_VALUE_LS_8_BITS;
    uint8_t *const pucB = tDraft.aucSDR + FULL_SDR_B_VALUE_LS_8_BITS;
    GetGpuPowerAccuracy(wBoardId, tDraft.tParam.ucDeviceType, tDraft.tParam.SlotId, pucM, pucB);
    OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
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
        OXA_WARN(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "get Board Id failed!");
    }
    const DeviceType &tType = DeviceTypeOf(tParam.ucDeviceType);
    if (tType.Has(kGpuPower))
        SetGpuFactors(tDraft, wBoardId);
    if (tType.Has(kWholeWatts))
        ucM = kOneWattACount;
    if (tParam.ucDeviceType == kHyper)
        ucIndex = tParam.ucBrenmorSensorIndex;
    else if (tParam.ucDeviceType == kNeo)
        ucIndex = static_cast<uint8_t>(tParam.SubDeviceType << 4 | (tParam.ucSensorSeq & kNibble));
}

// What follows once the user's thresholds are in.
void Finish(FullDraft &tDraft) {
    const SpecificSensorParam &tParam = tDraft.tParam;
    if (tDraft.eSensor == FullSensor::kPower)
        return FinishPower(tDraft);
    if (tDraft.eSensor == FullSensor::kFan) {
        tDraft.aucSDR[FULL_SDR_SLOT] = tParam.ucBrenmorSensorIndex;
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "ucSensorAccuracy = %u",
                 tParam.ucBrenmorSensorIndex);
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
    if (tDraft.eSensor == FullSensor::kVolt)
        GetVoltAccuracy(tDraft.tParam.ucDeviceType, pucSDR + FULL_SDR_M_VALUE_LS_8_BITS,
                        pucSDR + FULL_SDR_EXPONENTS);
    if (tDraft.eSensor == FullSensor::kPower && tDraft.tTraits.ucPowerSensorType != 0)
        pucSDR[SDR_SENSOR_TYPE] = tDraft.tTraits.ucPowerSensorType;
}

uint8_t GenFullSDR(const FullModel &tModel, SpecificSensorParam *ptParam, uint8_t *pucSDR) {
    if (ReportNull(tModel.acGenerator, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    if (tModel.eSensor == FullSensor::kFan && !BoardHasFans(tModel.acGenerator))
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
