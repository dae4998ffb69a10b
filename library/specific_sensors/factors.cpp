// SPDX-License-Identifier: Apache-2.0
//
// Small lookups behind single SDR bytes: FRU id offset, entity id and instance, sensor index, conversion
// factors.
#include "library/record/boards.h"
#include "library/record/layout.h"
#include "library/record/log.h"
#include "library/record/traits.h"
#include "library/record/units.h"
#include "library/specific_sensors/device_types.h"
#include "oxa/specific_sensors.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

// ---- FRU id offset ------------------------------------------------------------------------------

constexpr uint8_t kOffsetUnresolved = 255;

// The cached offset, xor kOffsetUnresolved: zero at load means unresolved and needs no initialised data.
uint8_t g_ucFruIdOffsetCache;

uint8_t ResolveFruIdOffset() {
    uint32_t dwCustomId = 0;
    if (IPMI_LoadCustomID(&dwCustomId) != 0)
        return 0;
    const ProfileTraits &tTraits = TraitsOf(dwCustomId);
    if (tTraits.ucFruIdOffset == 0)
        return 0;
    uint32_t dwProductId = 0;
    if (MW_GetInnerProductId(&dwProductId) != 0)
        return 0;
    return dwProductId == tTraits.dwFruIdOffsetProduct ? tTraits.ucFruIdOffset : 0;
}

// ---- GPU power ----------------------------------------------------------------------------------

constexpr uint8_t kGpuSlotMax = 81;
constexpr uint16_t kGpuTwiceReportedVendor = 0xCABC; // lists a card of two halves twice
constexpr uint32_t kGpuTotalPowerMax = 65024;
constexpr uint8_t kReadingMax = 255;

struct PowerFactors {
    uint8_t ucM, ucB;
};
constexpr PowerFactors kGpuPowerOver = {255, 128};

struct BoardPowerFactors {
    uint16_t wBoardId;
    PowerFactors tFactors;
};
constexpr BoardPowerFactors kGpuPowerByBoard[] = {{kBoardSwitchAir, {17, 9}}, {kBoardSwitchCardA, {22, 11}}};
constexpr PowerFactors kGpuPowerOtherBoard = {4, 2};

// The smallest M with which one reading byte reaches the power, and a B of half a step.
constexpr PowerFactors FactorsOf(uint32_t dwPowerW) {
    if (dwPowerW == 0)
        return {0, 0};
    const uint32_t dwM = (dwPowerW - 1) / kReadingMax + 1;
    const uint32_t dwB = dwM > 1 ? ((dwM - 1) >> 1) + 1 : 0;
    return {static_cast<uint8_t>(dwM), static_cast<uint8_t>(dwB)};
}
static_assert(FactorsOf(1).ucM == 1 && FactorsOf(1).ucB == 0);
static_assert(FactorsOf(255).ucM == 1 && FactorsOf(255).ucB == 0);
static_assert(FactorsOf(256).ucM == 2 && FactorsOf(256).ucB == 1);
static_assert(FactorsOf(511).ucM == 3 && FactorsOf(511).ucB == 2);
static_assert(FactorsOf(kGpuTotalPowerMax).ucM == 255 && FactorsOf(kGpuTotalPowerMax).ucB == 128);

// One bit per slot that was counted.
class SlotFlags {
public:
    bool Has(uint8_t ucSlot) const {
        return adw[ucSlot / 32] >> ucSlot % 32 & 1;
    }
    void Set(uint8_t ucSlot) {
        adw[ucSlot / 32] |= uint32_t{1} << ucSlot % 32;
    }

private:
    uint32_t adw[kGpuSlotMax / 32 + 1] = {};
};

bool HasUsablePower(const GpuAssetRec &tGpu) {
    return tGpu.dwPowerW != MW_GPU_POWER_UNKNOWN && tGpu.ucSlot <= kGpuSlotMax;
}

PowerFactors BoardFallback(uint16_t wBoardId) {
    OXA_INFO(kModuleSdr, kSensorDataUnit, "GetGpuPowerAccuracy", "Add SDR: GetGpuPowerAccuracy BoardId:0x%x.",
             wBoardId);
    for (const BoardPowerFactors &tRow : kGpuPowerByBoard)
        if (tRow.wBoardId == wBoardId)
            return tRow.tFactors;
    return kGpuPowerOtherBoard;
}

PowerFactors TotalPowerFactors(const GpuAssetInfo &tInfo, uint16_t wBoardId) {
    OXA_INFO(kModuleSdr, kSensorDataUnit, "GetGpuPowerAccuracy", "Add SDR: GetGpuPowerAccuracy gpuCnt:%u.",
             tInfo.dwCount);
    if (tInfo.dwCount == 0 || tInfo.dwCount > MW_GPU_ASSET_MAX)
        return BoardFallback(wBoardId);

    SlotFlags tCounted;
    uint64_t qwTotal = 0;
    for (uint32_t i = 0; i < tInfo.dwCount; ++i) {
        const GpuAssetRec &tGpu = tInfo.atGpu[i];
        if (!HasUsablePower(tGpu) || (tGpu.wVendorId == kGpuTwiceReportedVendor && tCounted.Has(tGpu.ucSlot)))
            continue;
        qwTotal += tGpu.dwPowerW;
        tCounted.Set(tGpu.ucSlot);
        OXA_INFO(kModuleSdr, kSensorDataUnit, "GetGpuPowerAccuracy",
                 "Add SDR: GetGpuPowerAccuracy gpuIndex:%u gpuPower:%u vendor 0x%x.", i, tGpu.dwPowerW,
                 tGpu.wVendorId);
        if (qwTotal > kGpuTotalPowerMax) {
            OXA_ERROR(kModuleSdr, kSensorDataUnit, "GetGpuPowerAccuracy",
                      "Add SDR: GetGpuPowerAccuracy  gpuTotalPowerW:%u is over MAC_SENSOR_READING.",
                      static_cast<uint32_t>(qwTotal));
            return kGpuPowerOver;
        }
    }
    return FactorsOf(static_cast<uint32_t>(qwTotal));
}

PowerFactors SlotPowerFactors(const GpuAssetInfo &tInfo, uint8_t ucSlot) {
    const uint32_t dwCnt = tInfo.dwCount < MW_GPU_ASSET_MAX ? tInfo.dwCount : MW_GPU_ASSET_MAX;
    bool bCounted = false;
    uint32_t dwPower = 0;
    for (uint32_t i = 0; i < dwCnt; ++i) {
        const GpuAssetRec &tGpu = tInfo.atGpu[i];
        if (tGpu.ucSlot != ucSlot || !HasUsablePower(tGpu))
            continue;
        if (tGpu.wVendorId == kGpuTwiceReportedVendor && bCounted)
            break;
        if (tGpu.dwPowerW > UINT32_MAX - dwPower)
            break;
        dwPower += tGpu.dwPowerW;
        bCounted = true;
    }
    OXA_INFO(kModuleSdr, kSensorDataUnit, "GetGpuPowerAccuracy",
             "Add SDR: GetGpuPowerAccuracy single power gpuSlot:%u gpuPower:%u.", ucSlot, dwPower);
    return FactorsOf(dwPower);
}

} // namespace

uint8_t GetSdrFruIdOffset(void) {
    const uint8_t ucCached = g_ucFruIdOffsetCache ^ kOffsetUnresolved;
    if (ucCached < kOffsetUnresolved)
        return ucCached;
    const uint8_t ucOffset = ResolveFruIdOffset();
    g_ucFruIdOffsetCache = ucOffset ^ kOffsetUnresolved;
    return ucOffset;
}

uint8_t SetSdrFruIdOffset(uint8_t ucOffset) {
    return ucOffset;
}

uint8_t getentityid(uint8_t ucDeviceType) {
    return DeviceTypeOf(ucDeviceType).eEntity;
}

void modifyEntityInstance(uint8_t *entityInstance, uint8_t ucEntityId, uint8_t ucDeviceType) {
    if (entityInstance == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: entityInstance != 0");
        return;
    }
    if (DeviceTypeOf(ucDeviceType).Has(kRelativeInstance) || ucEntityId == kEntityCardPart)
        *entityInstance |= kInstanceRelative;
}

bool useBrenmorSensorIndex(uint8_t ucDeviceType) {
    return DeviceTypeOf(ucDeviceType).Has(kOwnIndex);
}

void GetVoltAccuracy(uint8_t ucDeviceType, uint8_t *pucM, uint8_t *pucExp) {
    if (ucDeviceType != kSxm || pucM == nullptr || pucExp == nullptr)
        return;
    *pucM = 100;
    *pucExp = 0xC0; // R -4: 0.01 V a count
}

void GetGpuPowerAccuracy(uint16_t wBoardId, uint8_t ucDeviceType, uint8_t ucSlot, uint8_t *ucSdrM,
                         uint8_t *ucSdrB) {
    if (ucSdrM == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: ucSdrM != 0");
        return;
    }
    if (ucSdrB == nullptr) {
        OXA_ERROR(kModuleAssert, kSensorDataUnit, __func__, "assertion failed: ucSdrB != 0");
        return;
    }
    GpuAssetInfo tInfo;
    if (MW_GetGPUAssetInfo(&tInfo) != 0)
        tInfo.dwCount = 0;
    const bool bOneSlot = DeviceTypeOf(ucDeviceType).Has(kOneSlotPower);
    const PowerFactors tFactors =
        bOneSlot ? SlotPowerFactors(tInfo, ucSlot) : TotalPowerFactors(tInfo, wBoardId);
    *ucSdrM = tFactors.ucM;
    *ucSdrB = tFactors.ucB;
}

uint8_t ConvertIntToUnsignedChar(int32_t sdwValue) {
    return AccuracyByte(sdwValue);
}
