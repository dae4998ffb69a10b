// SPDX-License-Identifier: Apache-2.0
//
// Device-table entries: what the sensor scanner needs to know to read the sensor of an SDR.
#include "oxa/exports.h"
#include "oxa/platform.h"
#include "sdr/oxa_log.h"

namespace oxa {
namespace {

constexpr const char *kFile = "gen_specific_sensor_devtab.c";

constexpr uint8_t kScanFlag = 0x80;
constexpr uint8_t kPlainMark = 0xFF;
constexpr uint8_t kDiskMark = 0x25;
constexpr uint8_t kInstanceBase = 0x60;
constexpr uint8_t kRecordCompact = 0x02;
constexpr uint8_t kOemNvmeDisk = 0x3B;
constexpr uint8_t kOemPlainVolt = 0x1F;
constexpr uint8_t kOemMemStatus[] = {0x12, 0x20, 0x21};

// What a sensor kind changes in an entry besides its code.
enum KindFlag : uint8_t {
    kScan = 0x01,       // scan flag
    kIndex44 = 0x02,    // index from SDR byte 44 instead of byte 45
    kSubKindOem = 0x04, // sub-kind = OEM byte
    kSubKindOne = 0x08, // sub-kind = 1
    kDisk = 0x10,       // marked as a disk's
    kMByte = 0x20,      // M from SDR byte 24
    kS5Slot = 0x40,     // scan flag only when the card stays powered in S5
    kNibbles44 = 0x80   // item and sub item from the nibbles of SDR byte 44 (temperature kinds: always)
};

// One row per run of OEM bytes; item 0 leaves the item alone.
struct KindRow {
    uint8_t ucFirst;
    uint8_t ucLast;
    uint8_t ucCode;
    uint8_t ucItem;
    uint8_t ucFlags;
};

constexpr KindRow kTempKinds[] = {
    {0x02, 0x02, 0x64, 0, 0},
    {0x03, 0x03, 0xDD, 0, 0},
    {0x04, 0x04, 0xDC, 0, 0},
    {0x05, 0x05, 0xCE, 0, kSubKindOne},
    {0x06, 0x06, 0xCD, 0, kScan},
    {0x0D, 0x0D, 0xCB, 0, 0},
    {0x0F, 0x0F, 0xCC, 0, 0},
    {0x10, 0x10, 0xD1, 0, 0},
    {0x11, 0x11, 0xBF, 0, kScan | kIndex44},
    {0x12, 0x12, 0xBE, 0, 0},
    {0x13, 0x13, 0xCE, 0, kS5Slot | kSubKindOne},
    {0x14, 0x14, 0xB9, 0, kScan | kIndex44},
    {0x15, 0x15, 0xB7, 0, kIndex44},
    {0x16, 0x1B, 0xB6, 0, kIndex44 | kSubKindOem},
    {0x1C, 0x1D, 0xB5, 0, 0},
    {0x1E, 0x1F, 0x64, 0, 0},
    {0x20, 0x21, 0xBE, 0, 0},
    {0x22, 0x22, 0xB2, 0, 0},
    {0x23, 0x23, 0xB0, 0, kScan | kIndex44},
    {0x24, 0x24, 0xAF, 0, kScan | kMByte},
    {0x25, 0x25, 0xAD, 0, 0},
    {0x26, 0x29, 0xAC, 0, kIndex44 | kSubKindOem},
    {0x2B, 0x2C, 0xCE, 0, kSubKindOne},
    {0x2D, 0x2D, 0xAC, 0, kIndex44 | kSubKindOem},
    {0x2E, 0x2E, 0xA8, 0, kScan | kIndex44},
    {0x2F, 0x2F, 0xB7, 0, kIndex44},
    {0x30, 0x30, 0xA3, 0, kIndex44},
    {0x31, 0x31, 0xA2, 0, 0},
    {0x32, 0x35, 0xA4, 0, kIndex44 | kSubKindOem},
    {0x36, 0x37, 0x9F, 0, 0},
    {0x3B, 0x3B, 0xF2, 0, kDisk},
    {0x3C, 0x3C, 0x96, 0, kScan | kIndex44},
    {0x3D, 0x3D, 0x94, 0, kScan | kIndex44},
    {0x3E, 0x40, 0x92, 3, kIndex44 | kSubKindOem},
    {0x41, 0x41, 0x91, 0, kIndex44 | kSubKindOem},
    {0x42, 0x42, 0x92, 5, kIndex44},
    {0x43, 0x43, 0x92, 8, 0},
    {0x44, 0x49, 0xB6, 0, kIndex44 | kSubKindOem},
};

constexpr KindRow kPowerKinds[] = {
    {0x02, 0x02, 0xD7, 0, kMByte},
    {0x08, 0x08, 0xD9, 0, 0},
    {0x09, 0x09, 0xD8, 0, 0},
    {0x0A, 0x0A, 0xDA, 0, 0},
    {0x14, 0x14, 0xB8, 0, kScan | kIndex44},
    {0x1E, 0x1F, 0xD7, 0, kMByte},
    {0x22, 0x22, 0xB1, 0, kMByte},
    {0x24, 0x24, 0xAE, 0, kScan | kMByte | kNibbles44},
    {0x38, 0x3A, 0xD7, 0, kMByte},
};

template <uint32_t N> consteval bool RowsAscend(const KindRow (&atRows)[N]) {
    for (uint32_t dwRow = 0; dwRow < N; ++dwRow) {
        if (atRows[dwRow].ucLast < atRows[dwRow].ucFirst ||
            (dwRow > 0 && atRows[dwRow].ucFirst <= atRows[dwRow - 1].ucLast)) {
            return false;
        }
    }
    return true;
}
static_assert(RowsAscend(kTempKinds) && RowsAscend(kPowerKinds), "a kind stands in two rows");

// Every entry starts like this, also one that is refused afterwards.
void FillCommon(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    *ptEntry = DevTabEntry{};
    ptEntry->ucSensorNum = pucSDR[SDR_SENSOR_NUM];
    ptEntry->ucOwnerLun = pucSDR[SDR_OWNER_LUN];
    ptEntry->ucMark = kPlainMark;
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
    if (sdwRet != 0) {
        return sdwRet;
    }
    if (ucSlot == ucEntityInstance - kInstanceBase) {
        OXA_WARN(kModuleSdr, kFile, __func__, "entityInstance %d is S5 slot, is support power off sacn!!\n",
                 ucEntityInstance);
        ptEntry->ucScanFlag = kScanFlag;
    }
    return 0;
}

void ApplyKind(const KindRow &tRow, const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    ptEntry->ucDevCode = tRow.ucCode;
    if ((tRow.ucFlags & kNibbles44) != 0) {
        FillNibbles(pucSDR, ptEntry);
    }
    if (tRow.ucItem != 0) {
        ptEntry->ucItem = tRow.ucItem;
    }
    if ((tRow.ucFlags & kIndex44) != 0) {
        ptEntry->ucIndex = pucSDR[FULL_SDR_SENSOR_INDEX];
    }
    if ((tRow.ucFlags & kScan) != 0) {
        ptEntry->ucScanFlag = kScanFlag;
    }
    if ((tRow.ucFlags & kSubKindOem) != 0) {
        ptEntry->ucSubKind = pucSDR[FULL_SDR_OEM];
    }
    if ((tRow.ucFlags & kSubKindOne) != 0) {
        ptEntry->ucSubKind = 1;
    }
    if ((tRow.ucFlags & kDisk) != 0) {
        ptEntry->ucMark = kDiskMark;
    }
    if ((tRow.ucFlags & kMByte) != 0) {
        ptEntry->ucM = pucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
    }
}

const KindRow *FindKind(const KindRow *ptRow, uint32_t dwCnt, uint8_t ucOem) {
    for (; dwCnt != 0; --dwCnt, ++ptRow) {
        if (ucOem >= ptRow->ucFirst && ucOem <= ptRow->ucLast) {
            return ptRow;
        }
    }
    return nullptr;
}

int32_t genTempSensorDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    FillNibbles(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    const KindRow *ptRow = FindKind(kTempKinds, sizeof(kTempKinds) / sizeof(KindRow), pucSDR[FULL_SDR_OEM]);
    if (ptRow == nullptr) {
        return -1;
    }
    ApplyKind(*ptRow, pucSDR, ptEntry);
    if ((ptRow->ucFlags & kS5Slot) != 0 && getSNICGpioCtrlStatus(pucSDR[SDR_ENTITY_INSTANCE], ptEntry) != 0) {
        OXA_WARN(kModuleSdr, kFile, __func__, "getSNICGpioCtrlStatus failed!!\n");
    }
    return 0;
}

// An entry that already carries a code is another's work and stays; the board id is read (and its failure
// reported) before that is looked at.
int32_t genPowerSensorDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    uint16_t wBoardId = 0;
    if (get_default_board_id(&wBoardId) < 0) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "get Board Id failed\n");
    }
    if (ptEntry->ucDevCode != 0) {
        return 0;
    }
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    const KindRow *ptRow = FindKind(kPowerKinds, sizeof(kPowerKinds) / sizeof(KindRow), pucSDR[FULL_SDR_OEM]);
    if (ptRow == nullptr) {
        return -1;
    }
    ApplyKind(*ptRow, pucSDR, ptEntry);
    return 0;
}

int32_t genFanSpeedDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = 0x66;
    ptEntry->ucScanFlag = kScanFlag;
    ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    ptEntry->ucM = pucSDR[FULL_SDR_M_VALUE_LS_8_BITS];
    return 0;
}

int32_t genCardStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = 0xAA;
    return 0;
}

int32_t genGpuCardStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = 0x8E;
    ptEntry->ucIndex = static_cast<uint8_t>(pucSDR[SDR_ENTITY_INSTANCE] - kInstanceBase);
    return 0;
}

int32_t genMemStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = 0xA9;
    const uint8_t ucInstance = pucSDR[SDR_ENTITY_INSTANCE];
    ptEntry->ucIndex =
        ucInstance < kInstanceBase ? ucInstance : static_cast<uint8_t>(ucInstance - kInstanceBase);
    for (const uint8_t ucOem : kOemMemStatus) {
        if (pucSDR[COMPACT_SDR_OEM] == ucOem) {
            return 0;
        }
    }
    return -1;
}

int32_t genDiskStatusDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucIndex = pucSDR[COMPACT_SDR_SLOT];
    if (pucSDR[COMPACT_SDR_OEM] != kOemNvmeDisk) {
        return -1;
    }
    ptEntry->ucDevCode = 0xF0;
    ptEntry->ucMark = kDiskMark;
    return 0;
}

int32_t genCardVoltDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    FillCommon(pucSDR, ptEntry);
    ptEntry->ucDevCode = 0x8D;
    if (pucSDR[FULL_SDR_OEM] == kOemPlainVolt) {
        ptEntry->ucItem = 1;
        ptEntry->ucIndex = pucSDR[FULL_SDR_SLOT];
    }
    return 0;
}

} // namespace
} // namespace oxa

using namespace oxa;

const SensorDevTabRow g_atSensorDevTab[9] = {
    {0x01, 0x01, {0, 0}, genTempSensorDevTable},  {0x08, 0x01, {0, 0}, genPowerSensorDevTable},
    {0x0B, 0x01, {0, 0}, genPowerSensorDevTable}, {0x04, 0x01, {0, 0}, genFanSpeedDevTable},
    {0x15, 0x07, {0, 0}, genCardStatusDevTable},  {0x17, 0x6F, {0, 0}, genGpuCardStatusDevTable},
    {0x0C, 0x6F, {0, 0}, genMemStatusDevTable},   {0x0D, 0x6F, {0, 0}, genDiskStatusDevTable},
    {0x02, 0x01, {0, 0}, genCardVoltDevTable},
};
const uint32_t g_dwDevTabCnt = sizeof(g_atSensorDevTab) / sizeof(g_atSensorDevTab[0]);

int32_t GenDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry) {
    if (pucSDR == nullptr || ptEntry == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! The input parameter is null.", __func__);
        return -1;
    }
    const uint8_t ucSensorType = pucSDR[SDR_SENSOR_TYPE];
    const uint8_t ucEventType = pucSDR[SDR_EVENT_TYPE];
    for (const SensorDevTabRow &tRow : g_atSensorDevTab) {
        if (tRow.ucSensorType != ucSensorType || tRow.ucEventType != ucEventType) {
            continue;
        }
        if (tRow.pfnGen(pucSDR, ptEntry) == 0) {
            return 0;
        }
        const bool bCompact = pucSDR[SDR_RECORD_TYPE] == kRecordCompact;
        OXA_ERROR(kModuleSdr, kFile, __func__,
                  "get sensor dev table failed: sensortype = 0x%x, eventtype = 0x%x, oem=%d\n", ucSensorType,
                  ucEventType, pucSDR[bCompact ? COMPACT_SDR_OEM : FULL_SDR_OEM]);
        return -1;
    }
    OXA_WARN(kModuleSdr, kFile, __func__, "There is not DevType for SensorType= 0x%x and EventType = 0x%x\n",
             ucSensorType, ucEventType);
    return -1;
}
