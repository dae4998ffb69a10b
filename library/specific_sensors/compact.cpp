// SPDX-License-Identifier: Apache-2.0
//
// Compact records of states that come at run time: disks, cards, GPU cards, memory.  One body builds all of
// them.
#include "library/record/log.h"
#include "library/specific_sensors/device_types.h"
#include "library/specific_sensors/generator.h"
#include "library/specific_sensors/templates.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

enum class CompactSensor : uint8_t { kDisk, kCard, kMemory };

struct CompactModel {
    char acGenerator[28];
    CompactSensor eSensor;
    SdrHead tHead;
};
constexpr CompactModel kDiskModel = {"GenSpecificStatusSDR", CompactSensor::kDisk, kDiskStatusTemplate};
constexpr CompactModel kCardModel = {"GenSpecificCardStatusSDR", CompactSensor::kCard, kCardStatusTemplate};
constexpr CompactModel kGpuCardModel = {"GenSablinGPUCardStatusSDR", CompactSensor::kCard,
                                        kGpuCardStatusTemplate};
constexpr CompactModel kMemoryModel = {"GenMEMStatusSpecificSDR", CompactSensor::kMemory, kMemStatusTemplate};

// The name is looked up by the number that is printed at the disk, the scanner goes by the slot itself.
void TakeDisk(SpecificDraft &tDraft) {
    const SpecificSensorParam &t = tDraft.tParam;
    if (t.SubDeviceType == kNvme)
        tDraft.tQuery.SubDeviceType = getNvmeFrontInfo(tDraft.ucOriginalSlot);
    tDraft.ConvertSlot();
    OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
             "DeviceType = 0x%x, SensorDevType = 0x%x, SubDeviceType = 0x%x, originalHddSilk = 0x%x, "
             "SlotId = 0x%x!",
             t.ucDeviceType, t.dwSensorDevType, t.SubDeviceType, tDraft.ucOriginalSlot, t.SlotId);
    tDraft.aucSDR[COMPACT_SDR_SLOT] = tDraft.ucOriginalSlot;
    tDraft.aucSDR[COMPACT_SDR_OEM] = t.ucDeviceType;
}

void SetEntityOfCard(SpecificDraft &tDraft) {
    const SpecificSensorParam &t = tDraft.tParam;
    uint8_t &ucInstance = tDraft.aucSDR[SDR_ENTITY_INSTANCE];
    tDraft.aucSDR[SDR_ENTITY_ID] = getentityid(t.ucDeviceType);
    if (t.SlotId < kNoSlot)
        ucInstance = static_cast<uint8_t>(ucInstance + t.SlotId);
    modifyEntityInstance(&ucInstance, tDraft.aucSDR[SDR_ENTITY_ID], t.ucDeviceType);
}

void LogName(const SpecificDraft &tDraft, CompactSensor eSensor) {
    const SpecificSensorParam &t = tDraft.tParam;
    const char *pcName = tDraft.tQuery.acName;
    if (eSensor == CompactSensor::kDisk)
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc, "Add SDR: GenSpecificStatusSDR  Name:%s.",
                 pcName);
    else if (eSensor == CompactSensor::kCard)
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
                 "Add SDR: GenSpecificCardStatusSDR DeviceType = 0x%x, SensorDevType = %u Name:%s.",
                 t.ucDeviceType, t.dwSensorDevType, pcName);
    else
        OXA_INFO(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
                 "Add SDR: GenMEMStatusSpecificSDR DeviceType = 0x%x, SensorDevType = %u Name: %s.",
                 t.ucDeviceType, t.dwSensorDevType, pcName);
}

// The name's length, or what the generator gives instead of a record.
bool TakeName(SpecificDraft &tDraft, CompactSensor eSensor, uint8_t &ucLen) {
    const SpecificSensorParam &t = tDraft.tParam;
    ucLen = getPurchaseCardInfo(&tDraft.tQuery, &t, t.ucBrenmorSensorIndex);
    if (ucLen == 0) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
                 "DeviceType = 0x%x, SensorDevType = %u, this sensor is not %s!", t.ucDeviceType,
                 t.dwSensorDevType, eSensor == CompactSensor::kMemory ? "supported" : "support");
        ucLen = GEN_SDR_SKIPPED;
        return false;
    }
    if (ucLen > kNameMax) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, tDraft.pcFunc,
                  "DeviceType = 0x%x, SensorDevType = %u, Unable to Get Sensor Name!", t.ucDeviceType,
                  t.dwSensorDevType);
        ucLen = GEN_SDR_FAILED;
        return false;
    }
    LogName(tDraft, eSensor);
    return true;
}

uint8_t GenCompactSDR(const CompactModel &tModel, SpecificSensorParam *ptParam, uint8_t *pucSDR) {
    if (ReportNull(tModel.acGenerator, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    SpecificDraft tDraft(tModel.acGenerator, *ptParam);
    tDraft.UseTemplate(tModel.tHead, kCompactHeadSize);
    if (tModel.eSensor == CompactSensor::kDisk)
        TakeDisk(tDraft);
    uint8_t ucLen;
    if (!TakeName(tDraft, tModel.eSensor, ucLen))
        return ucLen;
    if (tModel.eSensor == CompactSensor::kCard)
        SetEntityOfCard(tDraft);
    tDraft.PutName(COMPACT_SDR_NAME, ucLen);
    return tDraft.Publish(pucSDR, static_cast<uint8_t>(COMPACT_SDR_NAME + ucLen));
}

} // namespace

uint8_t GenSpecificStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenCompactSDR(kDiskModel, ptParam, pucSDR);
}

uint8_t GenSpecificCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenCompactSDR(kCardModel, ptParam, pucSDR);
}

uint8_t GenSablinGPUCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenCompactSDR(kGpuCardModel, ptParam, pucSDR);
}

uint8_t GenMEMStatusSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenCompactSDR(kMemoryModel, ptParam, pucSDR);
}
