// SPDX-License-Identifier: Apache-2.0
//
// Builders that ask nobody: a line, a record.
#include "library/events/frame.h"

using namespace oxa;
using namespace oxa::sel;

uint32_t addPOSTErrorSel(void) {
    SEL_INFO(kPostError, "addPOSTErrorSel");
    return Send(kPostError);
}

uint32_t addS0PowerButtonSel(void) {
    SEL_INFO(kS0PowerButton, "addS0PowerButtonSel");
    return Send(kS0PowerButton);
}

uint32_t addGpuSlotErrorSel(uint32_t slotNum) {
    SEL_INFO(kGpuSlotError, "addGpuSlotErrorSel slotNum:%u", slotNum);
    return Send(kGpuSlotError, slotNum);
}

uint32_t addMinorCDUFaultSel(uint32_t reason, uint32_t assertFlag) {
    SEL_INFO(kMinorCduFault, "addMinorCDUFaultSel ucReason[%u], ucAssertFlag[%u].", reason, assertFlag);
    return Send(kMinorCduFault, reason, assertFlag);
}

uint32_t addMajorCDUFaultSel(uint32_t reason, uint32_t slotNum, uint32_t assertFlag) {
    SEL_INFO(kMajorCduFault, "addMajorCDUFaultSel Reason[%u], SlotNum[%u], AssertFlag[%u].", reason, slotNum,
             assertFlag);
    return Send(kMajorCduFault, reason, slotNum, assertFlag);
}

uint32_t addNETPortSEL(uint32_t entityId, uint32_t slotNum, uint32_t netPortSilkId, uint32_t deviceIndex,
                       uint8_t port, uint8_t subInterfaceType, uint8_t subIndex, uint8_t eventNum,
                       uint8_t eventDir) {
    SEL_INFO(kNetPort,
             "addNETPortSEL EntityID[%u], SlotNum[%u], NetPortSilkId[%u], DeviceIndex[%u], Port[%u], "
             "NetPortSubinterfacetype[%u], NetPortSubindex[%u], EventNum[%u], EventDir[%u].",
             entityId, slotNum, netPortSilkId, deviceIndex, port, subInterfaceType, subIndex, eventNum,
             eventDir);
    return Send(kNetPort, entityId, slotNum, netPortSilkId, deviceIndex, port, subInterfaceType, subIndex,
                eventNum, eventDir);
}

uint32_t addControllerSEL(uint32_t entityId, uint32_t controller, uint32_t eventNum, uint32_t eventDir) {
    SEL_INFO(kControllerEvent, "addControllerSEL EntityID[%u], Controller[%u], EventNum[%u], EventDir[%u].",
             entityId, controller, eventNum, eventDir);
    return Send(kControllerEvent, entityId, controller, eventNum, eventDir);
}

uint32_t addLDSEL(uint32_t entityId, uint32_t eventNum, uint32_t ctrlIndex, uint32_t targetId,
                  uint32_t assertFlag) {
    SEL_INFO(kLogicalDisk,
             "addLDSEL EntityID[%u], EventNum[%u], ctrlIndex[%u], targetId[%u], AssertFlag[%u].", entityId,
             eventNum, ctrlIndex, targetId, assertFlag);
    return Send(kLogicalDisk, entityId, eventNum, ctrlIndex, targetId, assertFlag);
}

uint32_t addUsageSEL(uint32_t entityId, uint32_t usage, uint32_t nonCritical, uint32_t index,
                     uint32_t eventDir) {
    SEL_INFO(kUsageEvent,
             "addUsageSEL ucEntityID:%u, ucUsage:%u, ucNonCritical:%u, ucIndex:%u, ucEventDir:%u", entityId,
             usage, nonCritical, index, eventDir);
    return Send(kUsageEvent, entityId, usage, nonCritical, index, eventDir);
}

uint32_t addI2CStatusSel(uint32_t eventData3, uint32_t assertFlag, uint32_t sensorNumber, uint32_t lun) {
    if (!IsLegal(kI2cStatus.tHead, assertFlag))
        return OXA_FAILED;
    return Send(kI2cStatus, eventData3, assertFlag, sensorNumber, lun);
}

// The line names three values and is given four; it has always said so.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-extra-args"
uint32_t addTrapSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventNum, uint32_t eventDir) {
    SEL_INFO(kTrapAlarm, "addTrapSELAlarm EntityID[%u], Reason[%u], EventDir[%u].", entityId, reason,
             eventNum, eventDir);
    return Send(kTrapAlarm, entityId, reason, eventNum, eventDir);
}
#pragma GCC diagnostic pop
