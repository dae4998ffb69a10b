// SPDX-License-Identifier: Apache-2.0
//
// The builders' tables as one list, with the names of their values: for programs that list, explain or decode
// events.  The library itself has no use for it, and its objects hold none of it.
#ifndef OXA_EVENTS_CATALOGUE_H
#define OXA_EVENTS_CATALOGUE_H

#include "library/events/builders.h"

namespace oxa::sel {

struct ValueName {
    Value eValue;
    char acName[19];
};
// In the order of Value; arguments as the exported declarations call them.
constexpr ValueName kValueNames[] = {
    {kAssertFlag, "assertFlag"},
    {kEventDir, "eventDir"},
    {kBankHighBit, "bankHighBit"},
    {kBankNum, "bankNum"},
    {kController, "controller"},
    {kCpuIndex, "cpuIndex"},
    {kCpuNum, "cpuNum"},
    {kCtrlIndex, "ctrlIndex"},
    {kDeviceIndex, "deviceIndex"},
    {kDimmNum, "dimmNum"},
    {kDropType, "dropType"},
    {kEntityId, "entityId"},
    {kErrorNum, "errorNum"},
    {kEventData3, "eventData3"},
    {kEventNum, "eventNum"},
    {kIndex, "index"},
    {kKind, "kind"},
    {kLocation, "location"},
    {kLun, "lun"},
    {kNetPortSilkId, "netPortSilkId"},
    {kNonCritical, "nonCritical"},
    {kOffset, "offset"},
    {kPort, "port"},
    {kReason, "reason"},
    {kReasonMask, "reasonMask"},
    {kSensorNumber, "sensorNumber"},
    {kSlotNum, "slotNum"},
    {kSubIndex, "subIndex"},
    {kSubInterfaceType, "subInterfaceType"},
    {kTargetId, "targetId"},
    {kUsage, "usage"},
    {kDeassertFlag, "deassertFlag"},
    {kPosition, "position"},
    {kFoundNumber, "foundNumber"},
    {kFoundSensorType, "foundSensorType"},
    {kFoundEventType, "foundEventType"},
    {kFoundLun, "foundLun"},
    {kFoundInletTemp, "foundInletTemp"},
};
constexpr bool NamesAreInOrder() {
    for (size_t n = 0; n < kValueCount; ++n)
        if (kValueNames[n].eValue != n)
            return false;
    return sizeof(kValueNames) / sizeof(kValueNames[0]) == kValueCount;
}
static_assert(NamesAreInOrder());

constexpr bool IsFound(Value eValue) {
    return eValue >= kFirstFound;
}

struct BuilderView {
    const Head *ptHead;
    const Step *ptStep; // ptHead->ucSteps of them
    const Item *ptItem; // the arguments in their order, then what is looked up
    uint8_t ucItems;
};

template <size_t nSteps, size_t nValues>
constexpr BuilderView View(const Builder<nSteps, nValues> &tBuilder, const Values<nValues> &tValues) {
    return {&tBuilder.tHead, tBuilder.atStep, tValues.at, nValues};
}

constexpr BuilderView kBuilders[] = {
    View(kMemPredictiveFault, kMemPredictiveFaultValues),
    View(kPostError, kPostErrorValues),
    View(kS0PowerButton, kS0PowerButtonValues),
    View(kGpuSlotError, kGpuSlotErrorValues),
    View(kMinorCduFault, kMinorCduFaultValues),
    View(kMajorCduFault, kMajorCduFaultValues),
    View(kNetPort, kNetPortValues),
    View(kControllerEvent, kControllerValues),
    View(kDisk, kDiskValues),
    View(kLogicalDisk, kLogicalDiskValues),
    View(kPowerModule, kPowerModuleValues),
    View(kUsageEvent, kUsageValues),
    View(kAlarm, kAlarmValues),
    View(kCpuError, kCpuErrorValues),
    View(kMemError, kMemErrorValues),
    View(kI2cStatus, kI2cStatusValues),
    View(kTrapAlarm, kTrapAlarmValues),
    View(kPowerDrop, kPowerDropValues),
    View(kLeakageEvent, kLeakageValues),
};
static_assert(sizeof(kBuilders) / sizeof(kBuilders[0]) == 19);

} // namespace oxa::sel
#endif
