// SPDX-License-Identifier: Apache-2.0
//
// Thresholds that a user set: kept in the sensor service's table and, so that they survive a restart, in
// one file that holds an image of it.  Records built at run time get them laid over their own.
//
// A table is 14 KB.  It lives on the stack of the one function that needs it: a shared one would race with
// a save.
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "library/record/layout.h"
#include "library/record/log.h"
#include "oxa/thresholds.h"

using namespace oxa;

namespace {

constexpr char kThresholdFile[] = "/conf/BMC1/sensor_threshold.dat";
constexpr uint32_t kNameField = 16;
constexpr uint8_t kNameLenMask = 0x1F; // five bits, although the ID string's length has six: kept
constexpr uint8_t kThresholdCnt = 6;   // SDR bytes 36 to 41: UNR UC UNC LNR LC LNC, mask bits 5 to 0
constexpr uint8_t kThresholdInfoSize = 8;
static_assert(offsetof(SensorThreshEntry, aucExtra) - offsetof(SensorThreshEntry, ucUNR) == kThresholdCnt);

// The profile the table is saved under; known from start to the end of the process.
uint32_t g_dwCustomId;

// A name as it may be printed: the field has no room for a terminator.
struct PrintedName {
    char ac[kNameField + 1];
    explicit PrintedName(const char *pcName) {
        memcpy(ac, pcName, kNameField);
        ac[kNameField] = '\0';
    }
};

// The thresholds of an entry, and the two bytes behind them.
constexpr size_t kThresholdsAt = offsetof(SensorThreshEntry, ucUNR);
uint8_t *ThresholdsOf(SensorThreshEntry &tEntry) {
    return reinterpret_cast<uint8_t *>(&tEntry) + kThresholdsAt;
}
const uint8_t *ThresholdsOf(const SensorThreshEntry &tEntry) {
    return reinterpret_cast<const uint8_t *>(&tEntry) + kThresholdsAt;
}

uint32_t FieldLength(const char *pcName) {
    const size_t nLen = oxa_strnlen_s(pcName, kNameField);
    return nLen < kNameField ? static_cast<uint32_t>(nLen) : kNameField;
}

uint32_t UsedEntries(const SensorThreshTable &tTable) {
    return tTable.wCount < SENSOR_MAX_COUNT ? tTable.wCount : SENSOR_MAX_COUNT;
}

// A short read keeps what came; the rest is zero.
bool ReadTable(SensorThreshTable &tTable) {
    memset(&tTable, 0, sizeof(tTable));
    FILE *ptFile = nullptr;
    if (oxa_fopen_s(&ptFile, kThresholdFile, "rb+") != 0) {
        OXA_ERROR(kModuleSdr, kThresholdUnit, "InitSdrThresholdInfoFromFile", "oxa_fopen_s %s failed",
                  kThresholdFile);
        return false;
    }
    uint8_t *const pucTable = reinterpret_cast<uint8_t *>(&tTable);
    const size_t nRead = fread(pucTable, 1, sizeof(tTable), ptFile);
    if (nRead < sizeof(tTable)) {
        OXA_INFO(kModuleSdr, kThresholdUnit, "InitSdrThresholdInfoFromFile", "fread failed!!!");
        memset(pucTable + nRead, 0, sizeof(tTable) - nRead);
    }
    oxa_fclose_s(ptFile);
    return true;
}

void WriteSdrThresholdInfoToFile(const SensorThreshTable &tTable) {
    FILE *ptFile = nullptr;
    if (oxa_fopen_s(&ptFile, kThresholdFile, "wb") != 0) {
        OXA_ERROR(kModuleSdr, kThresholdUnit, __func__, "oxa_fopen_s failed");
        return;
    }
    const int nWritten = static_cast<int>(fwrite(&tTable, sizeof(tTable), 1, ptFile));
    if (nWritten != 1)
        OXA_INFO(kModuleSdr, kThresholdUnit, __func__, "writeCount:%d != 1!!!", nWritten);
    oxa_fclose_s(ptFile);
}

// The entry to write: the sensor's own, else the next free one; SENSOR_MAX_COUNT when there is none.
uint32_t FindToSave(const SensorThreshTable &tTable, const char *pcName) {
    const uint32_t dwUsed = UsedEntries(tTable);
    for (uint32_t dw = 0; dw < dwUsed; ++dw)
        if (memcmp(tTable.atEntry[dw].acName, pcName, kNameField) == 0)
            return dw;
    return dwUsed;
}

// False when a sensor of this name cannot be stored.
bool StoreEntry(SensorThreshTable &tTable, const char *pcName, const uint8_t *pucThresholds, uint16_t wMask) {
    constexpr char kFunc[] = "SaveSdrThresholdInfoInFile";
    const uint32_t dwIndex = FindToSave(tTable, pcName);
    if (dwIndex >= SENSOR_MAX_COUNT) {
        OXA_ERROR(kModuleSdr, kThresholdUnit, kFunc, "sensorCount:%d >= SENSOR_MAX_COUNT!!!",
                  static_cast<int>(tTable.wCount));
        return false;
    }
    const uint32_t dwLen = FieldLength(pcName);
    if (dwLen == 0) {
        OXA_ERROR(kModuleSdr, kThresholdUnit, kFunc, "oxa_strnlen_s failed, %s", PrintedName(pcName).ac);
        return false;
    }
    SensorThreshEntry &tEntry = tTable.atEntry[dwIndex];
    if (dwIndex == tTable.wCount) {
        memset(tEntry.acName, 0, sizeof(tEntry.acName));
        ++tTable.wCount;
    }
    memcpy(tEntry.acName, pcName, dwLen);
    tEntry.acName[dwLen] = '\0';
    memcpy(ThresholdsOf(tEntry), pucThresholds, kThresholdInfoSize);
    tEntry.ucZero = 0;
    tEntry.wMask = wMask;
    return true;
}

const SensorThreshEntry *FindStored(const SensorThreshTable &tTable, const uint8_t *pucSDR) {
    const uint32_t dwLen = pucSDR[FULL_SDR_ID_TYPE_LEN] & kNameLenMask;
    const uint32_t dwUsed = dwLen > kNameField ? 0 : UsedEntries(tTable);
    for (uint32_t dw = 0; dw < dwUsed; ++dw) {
        const char *pcName = tTable.atEntry[dw].acName;
        if (memcmp(pcName, pucSDR + FULL_SDR_NAME, dwLen) == 0 && FieldLength(pcName) == dwLen)
            return &tTable.atEntry[dw];
    }
    return nullptr;
}

// Three thresholds that rise strictly, as far as the mask has them.
constexpr uint8_t kLowerRising[3] = {3, 4, 5}; // LNR LC LNC
constexpr uint8_t kUpperRising[3] = {2, 1, 0}; // UNC UC UNR

constexpr bool HasBit(uint8_t ucMask, uint8_t ucThreshold) {
    return (ucMask >> (kThresholdCnt - 1 - ucThreshold) & 1) != 0;
}

bool Rises(const uint8_t *pucThresholds, uint8_t ucMask, const uint8_t (&aucRising)[3]) {
    int sdwLast = -1;
    for (const uint8_t uc : aucRising) {
        if (!HasBit(ucMask, uc))
            continue;
        if (pucThresholds[uc] <= sdwLast)
            return false;
        sdwLast = pucThresholds[uc];
    }
    return true;
}

void updateSdrThreshold(uint8_t *pucSDR, const SensorThreshEntry &tEntry) {
    const PrintedName tName(tEntry.acName);
    const uint8_t ucMask = pucSDR[SDR_READING_MASK];
    const uint8_t ucLast = static_cast<uint8_t>(tEntry.wMask);
    if (ucMask != ucLast) {
        OXA_WARN(kModuleSdr, kThresholdUnit, __func__,
                 "sensor %s last mask %x, now mask %x, cannot modify threshold", tName.ac, ucLast, ucMask);
        return;
    }
    uint8_t auc[kThresholdCnt];
    memcpy(auc, pucSDR + FULL_SDR_UNR, sizeof(auc));
    for (uint8_t uc = 0; uc < kThresholdCnt; ++uc)
        if (HasBit(ucMask, uc))
            auc[uc] = ThresholdsOf(tEntry)[uc];
    if (!Rises(auc, ucMask, kLowerRising) || !Rises(auc, ucMask, kUpperRising)) {
        OXA_INFO(kModuleSdr, kThresholdUnit, __func__,
                 "update sensor %s mask 0x%x, threshold %u, %u, %u, %u, %u, %u failed", tName.ac, ucMask,
                 auc[0], auc[1], auc[2], auc[3], auc[4], auc[5]);
        return;
    }
    OXA_INFO(kModuleSdr, kThresholdUnit, __func__,
             "update sensor %s mask 0x%x, threshold %u, %u, %u, %u, %u, %u successfully", tName.ac, ucMask,
             auc[0], auc[1], auc[2], auc[3], auc[4], auc[5]);
    memcpy(pucSDR + FULL_SDR_UNR, auc, sizeof(auc));
}

bool FetchTable(SensorThreshTable &tTable, const char *pcFunc) {
    if (MW_GetSensorThreshInfo(&tTable) == 0)
        return true;
    OXA_ERROR(kModuleSdr, kThresholdUnit, pcFunc, "MW Get Sensor Thresh Info failed!");
    return false;
}

} // namespace

void InitSdrThresholdInfoFromFile(uint32_t customId) {
    g_dwCustomId = customId;
    SensorThreshTable tTable;
    if (!ReadTable(tTable))
        return;
    if (tTable.dwCustomId == customId) {
        MW_SetSensorThreshInfo(&tTable);
        return;
    }
    OXA_WARN(kModuleSdr, kThresholdUnit, __func__, "last customid %u, now: %u, delete sensor thread",
             tTable.dwCustomId, customId);
    if (unlink(kThresholdFile) != 0)
        OXA_INFO(kModuleSdr, kThresholdUnit, __func__, "unlink failed!!!");
}

void SaveSdrThresholdInfoInFile(const char *sensorName, const uint8_t *thresholdInfo, uint16_t mask) {
    if (sensorName == nullptr) {
        OXA_ERROR(kModuleAssert, kThresholdUnit, __func__, "assertion failed: sensorName != 0");
        return;
    }
    if (thresholdInfo == nullptr) {
        OXA_ERROR(kModuleAssert, kThresholdUnit, __func__, "assertion failed: thresholdInfo != 0");
        return;
    }
    SensorThreshTable tTable;
    if (!FetchTable(tTable, __func__) || !StoreEntry(tTable, sensorName, thresholdInfo, mask))
        return;
    tTable.dwCustomId = g_dwCustomId;
    MW_SetSensorThreshInfo(&tTable);
    WriteSdrThresholdInfoToFile(tTable);
}

void ModifySensorThresholdByFile(uint8_t *pucSDR) {
    if (pucSDR == nullptr || pucSDR[SDR_RECORD_TYPE] != kRecordFull)
        return;
    SensorThreshTable tTable;
    if (!FetchTable(tTable, __func__))
        return;
    const SensorThreshEntry *ptEntry = FindStored(tTable, pucSDR);
    if (ptEntry != nullptr)
        updateSdrThreshold(pucSDR, *ptEntry);
}
