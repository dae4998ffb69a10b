// SPDX-License-Identifier: Apache-2.0
//
// Device-table entries: what the sensor scanner needs to know to read the sensor of an SDR.
#include "library/record/layout.h"
#include "library/record/log.h"
#include "library/record/sensor_types.h"
#include "library/specific_sensors/device_types.h"
#include "oxa/specific_sensors.h"

using namespace oxa::snr;

namespace oxa {
namespace {

// Every entry starts like this, also one that is refused afterwards.
void FillCommon(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    *ptEntry = DevTabEntry{};
    ptEntry->ucSensorNum = pucSDR[SDR_SENSOR_NUM];
    ptEntry->ucOwnerLun = pucSDR[SDR_OWNER_LUN];
    ptEntry->ucMark = kMarkNone;
    ptEntry->ucEntityId = pucSDR[SDR_ENTITY_ID];
    ptEntry->ucEntityInstance = pucSDR[SDR_ENTITY_INSTANCE];
    ptEntry->ucSensorInit = pucSDR[SDR_SENSOR_INIT];
    ptEntry->ucSensorType = pucSDR[SDR_SENSOR_TYPE];
    ptEntry->ucEventType = pucSDR[SDR_EVENT_TYPE];
}

void FillNibbles(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    ptEntry->ucItem = pucSDR[FULL_SDR_SENSOR_INDEX] >> 4;
    ptEntry->ucSubItem = pucSDR[FULL_SDR_SENSOR_INDEX] & 0x0F;
}

// Flags the entry when the card in question is the one that stays powered in S5.
int32_t getSNICGpioCtrlStatus(uint8_t ucEntityInstance, DevTabEntry *ptEntry) {
    uint8_t ucSlot = 0;
    const int32_t sdwRet = GetBlueFieldS5PcieSlotNum(&ucSlot);
    if (sdwRet != 0)
        return sdwRet;
    if (ucSlot == ucEntityInstance - kInstanceBase) {
        OXA_WARN(kModuleSdr, kDeviceTableUnit, __func__,
                 "entityInstance %d is S5 slot, is support power off sacn!!\n", ucEntityInstance);
        ptEntry->ucScanFlag = kScanned;
    }
    return 0;
}

void ApplyScanner(const Scanner &t, const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    ptEntry->ucDevCode = t.ucCode;
    if ((t.ucFlags & kNibbles44) != 0)
        FillNibbles(pucSDR, ptEntry);
    if (t.ucItem != 0)
        ptEntry->ucItem = t.ucItem;
    if ((t.ucFlags & kIndex44) != 0)
        ptEntry->ucIndex = pucSDR[FULL_SDR_SENSOR_INDEX];
    if ((t.ucFlags & kScan) != 0)
        ptEntry->ucScanFlag = kScanned;
    if ((t.ucFlags & kSubKindOem) != 0)
        ptEntry->ucSubKind = pucSDR[FULL_SDR_OEM];
    if ((t.ucFlags & kSubKindOne) != 0)
        ptEntry->ucSubKind = 1;
    if ((t.ucFlags & kDiskMark) != 0)
        ptEntry->ucMark = kMarkDisk;
    if ((t.ucFlags & kCopyM) != 0)
        ptEntry->ucM = pucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
}

int32_t genTempSensorDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    FillNibbles(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    const Scanner &tScanner = DeviceTypeOf(pucSDR[FULL_SDR_OEM]).tTemp;
    if (tScanner.ucCode == 0)
        return -1;
    ApplyScanner(tScanner, pucSDR, ptEntry);
    if ((tScanner.ucFlags & kS5Slot) != 0 && getSNICGpioCtrlStatus(pucSDR[SDR_ENTITY_INSTANCE], ptEntry) != 0)
        OXA_WARN(kModuleSdr, kDeviceTableUnit, __func__, "getSNICGpioCtrlStatus failed!!\n");
    return 0;
}

// An entry that already carries a code is another's work and stays; the board id is read (and its failure
// reported) before that is looked at.
int32_t genPowerSensorDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    uint16_t wBoardId = 0;
    if (get_default_board_id(&wBoardId) < 0)
        OXA_ERROR(kModuleSdr, kDeviceTableUnit, __func__, "get Board Id failed\n");
    if (ptEntry->ucDevCode != 0)
        return 0;
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    const Scanner &tScanner = DeviceTypeOf(pucSDR[FULL_SDR_OEM]).tPower;
    if (tScanner.ucCode == 0)
        return -1;
    ApplyScanner(tScanner, pucSDR, ptEntry);
    return 0;
}

int32_t genFanSpeedDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = kDeviceFanSpeed;
    ptEntry->ucScanFlag = kScanned;
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    ptEntry->ucM = pucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
    return 0;
}

int32_t genCardStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = kDeviceCardState;
    return 0;
}

int32_t genGpuCardStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = kDeviceGpuCardState;
    ptEntry->ucIndex = static_cast<uint8_t>(pucSDR[SDR_ENTITY_INSTANCE] - kInstanceBase);
    return 0;
}

int32_t genMemStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = kDeviceMemoryState;
    const uint8_t ucInstance = pucSDR[SDR_ENTITY_INSTANCE];
    ptEntry->ucIndex =
        ucInstance < kInstanceBase ? ucInstance : static_cast<uint8_t>(ucInstance - kInstanceBase);
    return DeviceTypeOf(pucSDR[COMPACT_SDR_OEM]).Has(kMemoryStates) ? 0 : -1;
}

int32_t genDiskStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[COMPACT_SDR_SLOT];
    if (pucSDR[COMPACT_SDR_OEM] != kNvmeDisk)
        return -1;
    ptEntry->ucDevCode = kDeviceDiskState;
    ptEntry->ucMark = kMarkDisk;
    return 0;
}

int32_t genCardVoltDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = kDeviceCardVolts;
    if (pucSDR[FULL_SDR_OEM] == kSxm) {
        ptEntry->ucItem = 1;
        ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    }
    return 0;
}

} // namespace
} // namespace oxa

using namespace oxa;

// clang-format off
const SensorDevTabRow g_atSensorDevTab[9] = {
    {kTypeTemperature, kEventThreshold, {0, 0}, genTempSensorDevTable},
    {kTypePowerSupply, kEventThreshold, {0, 0}, genPowerSensorDevTable},
    {kTypeOtherUnits, kEventThreshold, {0, 0}, genPowerSensorDevTable},
    {kTypeFan, kEventThreshold, {0, 0}, genFanSpeedDevTable},
    {kTypeModule, kEventSeverity, {0, 0}, genCardStatusDevTable},
    {kTypeAddInCard, kEventSpecific, {0, 0}, genGpuCardStatusDevTable},
    {kTypeMemory, kEventSpecific, {0, 0}, genMemStatusDevTable},
    {kTypeDriveSlot, kEventSpecific, {0, 0}, genDiskStatusDevTable},
    {kTypeVoltage, kEventThreshold, {0, 0}, genCardVoltDevTable},
};
// clang-format on
const uint32_t g_dwDevTabCnt = sizeof(g_atSensorDevTab) / sizeof(g_atSensorDevTab[0]);

int32_t GenDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    if (pucSDR == nullptr || ptEntry == nullptr) {
        OXA_ERROR(kModuleSdr, kDeviceTableUnit, __func__, "%s failed! The input parameter is null.",
                  __func__);
        return -1;
    }
    const uint8_t ucSensorType = pucSDR[SDR_SENSOR_TYPE];
    const uint8_t ucEventType = pucSDR[SDR_EVENT_TYPE];
    for (const SensorDevTabRow &tRow : g_atSensorDevTab) {
        if (tRow.ucSensorType != ucSensorType || tRow.ucEventType != ucEventType)
            continue;
        if (tRow.pfnGen(pucSDR, ptEntry) == 0)
            return 0;
        const bool bCompact = pucSDR[SDR_RECORD_TYPE] == kRecordCompact;
        OXA_ERROR(kModuleSdr, kDeviceTableUnit, __func__,
                  "get sensor dev table failed: sensortype = 0x%x, eventtype = 0x%x, oem=%d\n", ucSensorType,
                  ucEventType, pucSDR[bCompact ? COMPACT_SDR_OEM : FULL_SDR_OEM]);
        return -1;
    }
    OXA_WARN(kModuleSdr, kDeviceTableUnit, __func__,
             "There is not DevType for SensorType= 0x%x and EventType = 0x%x\n", ucSensorType, ucEventType);
    return -1;
}
