// SPDX-License-Identifier: Apache-2.0
//
// Builders that ask somebody: the profile, the sensor directory, the inlet.
#include <unistd.h>

#include "library/events/frame.h"
#include "library/record/leakage_key.h"

using namespace oxa;
using namespace oxa::sel;

// One customer keeps a state instead of an event: 1 = the module is sound.
uint32_t addMemPredictiveFault(uint32_t dimmNum, uint32_t assertFlag) {
    SEL_INFO(kMemPredictiveFault, "addMemPredictiveFault dimmNum:%u, assertFlag:%u", dimmNum, assertFlag);
    if (!IsLegal(kMemPredictiveFault.tHead, assertFlag))
        return OXA_FAILED;
    if (TraitsOf(ReadCustomId()).bKeepsMemoryState) {
        MW_SetMemPredictiveFailureState(dimmNum, assertFlag ^ 1);
        return OXA_OK;
    }
    return Send(kMemPredictiveFault, dimmNum, assertFlag);
}

uint32_t addCPUError(uint32_t cpuNum, uint32_t bankHighBit, uint32_t bankNum, uint32_t offset,
                     uint32_t assertFlag) {
    SEL_INFO(kCpuError, "addCPUError ucCPUNum:%u, ucOffset:%u, ucBankNum:%u,assertFlag:%u", cpuNum, offset,
             bankNum, assertFlag);
    if (!IsLegal(kCpuError.tHead, assertFlag))
        return OXA_FAILED;
    uint32_t dwSensorNum = 0;
    CheckNumber(kCpuError.tHead, MW_GetCPUSensorNumber(cpuNum, &dwSensorNum), dwSensorNum);
    SEL_INFO(kCpuError, "ucCPUNum:%u, dwSensorNum:%u", cpuNum, dwSensorNum);
    return Send(kCpuError, cpuNum, bankHighBit, bankNum, offset, assertFlag, dwSensorNum);
}

// Offset 14 is one customer's; elsewhere it is no event.
uint32_t addMemError(uint32_t dimmNum, uint32_t offset, uint32_t errorNum, uint32_t assertFlag) {
    constexpr uint32_t kRareOffset = 14;
    SEL_INFO(kMemError, "addMemrror dimmNum:%u, ucOffset:%u, ucErrorNum:%u,assertFlag:%u", dimmNum, offset,
             errorNum, assertFlag);
    if (!IsLegal(kMemError.tHead, assertFlag))
        return OXA_FAILED;
    if (offset == kRareOffset && !TraitsOf(ReadCustomId()).bHasMemoryOffset14)
        return OXA_OK;
    uint32_t dwSensorNum = 0;
    CheckNumber(kMemError.tHead, MW_GetMemSensorNumber(dimmNum, &dwSensorNum), dwSensorNum);
    SEL_INFO(kMemError, "dimmNum:%u, dwSensorNum:%u", dimmNum, dwSensorNum);
    return Send(kMemError, dimmNum, offset, errorNum, assertFlag, dwSensorNum);
}

// Forecasts are not reported everywhere; the lookup and its line come all the same.
uint32_t addPEMSEL(uint32_t location, uint32_t eventNum, uint32_t eventDir) {
    SEL_INFO(kPowerModule, "addPEMSEL uclocation:%u, ucEventNum:%u, ucEventDir:%u", location, eventNum,
             eventDir);
    uint32_t dwSensorNum = 0;
    CheckNumber(kPowerModule.tHead, MW_GetPemSensorNumber(location, &dwSensorNum), dwSensorNum);
    SEL_INFO(kPowerModule, "addPEMSEL dwSensorNum:%d", static_cast<int32_t>(dwSensorNum));
    if (IsOneOf(eventNum, kPowerModuleForecasts) && TraitsOf(ReadCustomId()).bHidesPowerForecasts)
        return OXA_FAILED;
    return Send(kPowerModule, location, eventNum, eventDir, dwSensorNum);
}

// The profile comes first here, then the flag.
uint32_t addPowerDropSEL(uint32_t dropType, uint32_t cpuIndex, uint32_t reasonMask, uint32_t eventDir) {
    SEL_INFO(kPowerDrop, "addPowerDropSEL ucDropType:%u, ucCpuIndex:%u, ucReasonMask:%u,ucEventDir:%u",
             dropType, cpuIndex, reasonMask, eventDir);
    const uint32_t dwCustomId = ReadCustomId();
    if (!TraitsOf(dwCustomId).bReportsPowerDrop) {
        SEL_ERROR(kPowerDrop, "customId:%u, only vorana support addPowerDropSEL", dwCustomId);
        return OXA_FAILED;
    }
    if (!IsLegal(kPowerDrop.tHead, eventDir))
        return OXA_FAILED;
    uint32_t dwSensorNum = 0;
    CheckNumber(kPowerDrop.tHead, MW_GetPowerFaultSensorNum(&dwSensorNum), dwSensorNum);
    return Send(kPowerDrop, dropType, cpuIndex, reasonMask, eventDir, dwSensorNum);
}

uint32_t addSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventDir) {
    SEL_INFO(kAlarm, "addSELAlarm EntityID[%u], Reason[%u], EventDir[%u].", entityId, reason, eventDir);
    uint8_t ucInletTemp = 0;
    if (entityId == kAlarmAirInlet && MW_GetInletTempInfo(&ucInletTemp) != 0)
        ucInletTemp = 0;
    if (entityId == kAlarmFanCooling) // has no sensor of its own
        SEL_INFO(kAlarm, "IPMI_ENTITY_ID_FAN_COOLING ucSelRec[SEL_SENSOR_NUM] = %u.", 0u);
    return Send(kAlarm, entityId, reason, eventDir, ucInletTemp);
}

// ---- disks -----------------------------------------------------------------------------------------

namespace {

// With this file present only predicted faults come through.
constexpr char kTestMarker[] = "/var/test_disk_fault_predict";
constexpr uint32_t kSlotCount = 256; // a slot is one byte of the directory's key

uint32_t FindDiskNumber(uint32_t dwSlotNum) {
    if (dwSlotNum >= kSlotCount)
        return 0;
    const MwSensorKey tKey = {kEntityDisk, kTypeDriveSlot, kEventSpecific, static_cast<uint8_t>(dwSlotNum),
                              0};
    uint32_t dwSensorNum = 0;
    if (MW_GetSensorNumber(&tKey, &dwSensorNum) == 0)
        return dwSensorNum;
    SEL_ERROR(kDisk, "addDiskSEL get sensor number fail, slot id %u", dwSlotNum);
    return 0;
}

// Worn disks are not reported everywhere.
bool IsIgnored(uint32_t dwEventNum) {
    if (dwEventNum != kDiskLife || !TraitsOf(ReadCustomId()).bHidesDiskLife)
        return false;
    SEL_INFO(kDisk, "addDiskSEL ignore Disk life for Kestrin.");
    return true;
}

} // namespace

uint32_t addDiskSEL(uint32_t entityId, uint32_t slotNum, uint32_t eventNum, uint32_t eventDir) {
    SEL_INFO(kDisk, "addDiskSEL EntityID[%u], SlotNum[%u], EventNum[%u], EventDir[%u].", entityId, slotNum,
             eventNum, eventDir);
    const bool bTestMode = access(kTestMarker, F_OK) == 0;
    const bool bPredicted = IsOneOf(eventNum, kDiskPredictions);
    if (bTestMode && !bPredicted)
        return OXA_OK;
    OXA_ERROR(kModuleDiskTrace, kEventUnit, kDisk.tHead.acName, "dwSlotNum: %d ucEventNum: 0x%x",
              static_cast<int32_t>(slotNum), bPredicted ? kDiskPredicted : eventNum);
    if (IsIgnored(eventNum))
        return OXA_OK;
    const uint32_t dwSensorNum = IsOneOf(eventNum, kDiskNumbered) ? FindDiskNumber(slotNum) : 0;
    return Send(kDisk, entityId, slotNum, eventNum, eventDir, dwSensorNum);
}

// ---- leaks -----------------------------------------------------------------------------------------

// Not everybody is told that a leak is gone.
uint32_t addLeakageSel(uint32_t kind, const LeakageInfo *ptLeakageInfo) {
    if (ptLeakageInfo == nullptr) {
        OXA_ERROR(kModuleAssert, kEventUnit, kLeakageEvent.tHead.acName,
                  "assertion failed: ptLeakageInfo != 0");
        return OXA_FAILED;
    }
    const MwSensorKey tKey = {kLeakageEntityId, kLeakageSensorType, kLeakageEventType, 0, 0};
    MwSpecificSensorInfo tInfo = {};
    if (MW_GetSpecificSensorInfo(&tKey, &tInfo) != 0) {
        SEL_ERROR(kLeakageEvent, "MW_GetSpecificSensorInfo fail");
        return OXA_FAILED;
    }
    if (ptLeakageInfo->ucDeassertFlag == 1 && !TraitsOf(ReadCustomId()).bReportsLeakGone)
        return OXA_FAILED;
    return Send(kLeakageEvent, kind, ptLeakageInfo->ucDeassertFlag, ptLeakageInfo->ucPosition,
                tInfo.ucSensorNum, tInfo.ucSensorType, tInfo.ucEventType, tInfo.ucOwnerLun);
}
