// SPDX-License-Identifier: Apache-2.0
//
// The card catalogue, the FRU ids that cards get, and the file in which other programs find them.
//
// Ids are given out for as long as the library is loaded; the file is never read back into the pools.
#include "library/specific_sensors/fru_ids.h"

#include "library/record/log.h"
#include "library/specific_sensors/generator.h"

extern "C" {

const PurchaseCardRow gPurchaseCardInfo[11] = {
    {0x010B, "HyperCard", 1},  {0x01E0, "Biren UBB", 2},    {0x02E0, "HGX UBB", 3},
    {0x020B, "NEO CARD", 4},   {0x03E0, "P800 UBB", 5},     {0x04E0, "HBB-M9D", 6},
    {0x030B, "HalvikCard", 7}, {0x05E0, "OXA UBB1.5  ", 8}, {0x06E0, "METAX UBB", 9},
    {0x07E0, "MT UBB", 10},    {0x040B, "SL200 Card", 11},
};

} // extern "C"

namespace oxa {
namespace {

constexpr char kFruIdFile[] = "/var/tmp/purchaseCardFruId";
constexpr uint32_t kAuditLevel = 191;
constexpr uint32_t kSectionSize = 32;
constexpr uint32_t kKeySize = 48;

// A pool is one flag per id.
constexpr uint8_t kUsed = 255;
constexpr uint8_t kCardFirstFruId = 33;
constexpr uint8_t kCardFruIds = 4;
constexpr uint8_t kSL200FirstSlot = 3; // the card in this slot gets id 1
constexpr uint8_t kSL200FruIds = 8;
uint8_t g_aucCardPool[kCardFruIds];
uint8_t g_aucSL200Pool[kSL200FruIds];
uint8_t g_ucSubCardUsed;

bool Take(const char *pcFunc, uint8_t &ucFlag, uint8_t ucFruId) {
    if (ucFlag == kUsed) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, pcFunc, "FruId = %d Has Been Used !", ucFruId);
        return false;
    }
    ucFlag = kUsed;
    OXA_INFO(kModuleSdr, kSensorDataUnit, pcFunc, "FruId = %d Is Allocated !", ucFruId);
    return true;
}

const PurchaseCardRow *FindCard(uint16_t wDevType) {
    for (const PurchaseCardRow &tRow : gPurchaseCardInfo)
        if (tRow.wDevType == wDevType)
            return &tRow;
    return nullptr;
}

// The keys of one card in the file; both end in a blank.
struct CardKeys {
    char acFruId[kKeySize];
    char acSlotId[kKeySize];
    bool Print(const char *pcName) {
        return snprintf_s(acFruId, sizeof(acFruId), "%s_FruId ", pcName) >= 0 &&
               snprintf_s(acSlotId, sizeof(acSlotId), "%s_SlotId ", pcName) >= 0;
    }
};

int32_t StoreFruId(IniFile *ptIni, uint16_t wDevType, const char *pcName, uint8_t ucSlotId, uint8_t ucFruId) {
    constexpr char kFunc[] = "SavePurchaseCardFruId";
    char acSection[kSectionSize];
    if (GetPurchaseCardInfoSectionStr(wDevType, acSection) != 0) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, kFunc, "GetPurchaseCardInfoSectionStr is fail!!\n");
        return -1;
    }
    CardKeys tKeys;
    if (!tKeys.Print(pcName))
        return -1;
    IniSetUInt(ptIni, acSection, tKeys.acFruId, ucFruId);
    IniSetUInt(ptIni, acSection, tKeys.acSlotId, ucSlotId);
    IniSaveFile(ptIni, kFruIdFile);
    return 0;
}

int32_t FetchFruId(IniFile *ptIni, uint16_t wDevType, const char *pcName, uint8_t &ucSlotId,
                   uint8_t &ucFruId) {
    char acSection[kSectionSize];
    if (GetPurchaseCardInfoSectionStr(wDevType, acSection) != 0) {
        OXA_DEBUG(kDebugChannel, kSensorDataUnit, "%s : GetPurchaseCardInfoSectionStr is fail!!!\n",
                  "LoadPurchaseCardFruId");
        return -1;
    }
    CardKeys tKeys;
    if (!tKeys.Print(pcName))
        return -1;
    ucFruId = static_cast<uint8_t>(IniGetUInt(ptIni, acSection, tKeys.acFruId, 0));
    ucSlotId = static_cast<uint8_t>(IniGetUInt(ptIni, acSection, tKeys.acSlotId, 0));
    return 0;
}

} // namespace

uint8_t TakeSL200FruId(const char *pcFunc, uint8_t ucSlotId) {
    if (ucSlotId < kSL200FirstSlot || ucSlotId >= kSL200FirstSlot + kSL200FruIds) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, pcFunc, "slotId:%u Is invalid !", ucSlotId);
        return kNoFruId;
    }
    const uint8_t ucIndex = static_cast<uint8_t>(ucSlotId - kSL200FirstSlot);
    const uint8_t ucFruId = static_cast<uint8_t>(ucIndex + 1);
    return Take(pcFunc, g_aucSL200Pool[ucIndex], ucFruId) ? ucFruId : kNoFruId;
}

bool TakeSubCardFruId(const char *pcFunc) {
    return Take(pcFunc, g_ucSubCardUsed, kSubCardFruId);
}

} // namespace oxa

using namespace oxa;

// From the highest id down.
uint8_t GetNoUsedFruIdForPurchaseCard(void) {
    for (uint8_t uc = kCardFruIds; uc > 0; --uc) {
        const uint8_t ucFruId = static_cast<uint8_t>(kCardFirstFruId + uc - 1);
        if (Take(__func__, g_aucCardPool[uc - 1], ucFruId))
            return ucFruId;
    }
    return kNoFruId;
}

void SetFruValidState(uint8_t ucFruId) {
    if (ucFruId >= kCardFirstFruId && ucFruId < kCardFirstFruId + kCardFruIds) {
        g_aucCardPool[ucFruId - kCardFirstFruId] = 0;
        return;
    }
    OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "SetFruValidState is fail!fruId:%d", ucFruId);
    IDBG_LINUXAPP_AuditOut(kAuditLevel, "[%s:%d]SetFruValidState is fail!!!", kSensorDataUnit, __LINE__);
}

const char *GetPurchaseCardName(uint16_t wDevType) {
    const PurchaseCardRow *ptRow = FindCard(wDevType);
    return ptRow == nullptr ? nullptr : ptRow->acName;
}

int32_t GetPurchaseCardInfoSectionStr(uint16_t wDevType, char *pcSection) {
    if (ReportNull(__func__, pcSection))
        return -1;
    const char *pcName = GetPurchaseCardName(wDevType);
    if (pcName == nullptr || snprintf_s(pcSection, kSectionSize, "%s", pcName) < 0)
        return -1;
    return 0;
}

void FillSdrOEMValue(uint16_t wDevType, uint8_t *pucOEM) {
    if (ReportNull(__func__, pucOEM))
        return;
    const PurchaseCardRow *ptRow = FindCard(wDevType);
    if (ptRow != nullptr)
        *pucOEM = ptRow->ucOEM;
}

int32_t SavePurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t ucSlotId, uint8_t ucFruId) {
    if (ReportNull(__func__, pcName))
        return -1;
    IniFile *ptIni = nullptr;
    if (OXA_IniLoadFile(kFruIdFile, &ptIni) != 0 || ptIni == nullptr) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "OXA_IniLoadFile is fail!!!\n");
        return -1;
    }
    const int32_t sdwRet = StoreFruId(ptIni, wDevType, pcName, ucSlotId, ucFruId);
    IniCloseFile(ptIni);
    if (sdwRet == 0)
        OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "Ini Is Valid!");
    return sdwRet;
}

int32_t LoadPurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t *slotId, uint8_t *fruId) {
    if (pcName == nullptr) {
        OXA_DEBUG(kDebugChannel, kSensorDataUnit, "%s : purchase card Info is null!!!\n", __func__);
        return -1;
    }
    if (slotId == nullptr) {
        IDBG_LINUXAPP_DbgOut(kDebugChannel, "assertion failed: slotId != 0"); // no unit and line here
        return -1;
    }
    if (fruId == nullptr) {
        IDBG_LINUXAPP_DbgOut(kDebugChannel, "assertion failed: fruId != 0"); // no unit and line here
        return -1;
    }
    IniFile *ptIni = nullptr;
    if (OXA_IniLoadFile(kFruIdFile, &ptIni) != 0 || ptIni == nullptr) {
        OXA_DEBUG(kDebugChannel, kSensorDataUnit, "%s : LoadIniFile is fail!!!\n", __func__);
        return -1;
    }
    const int32_t sdwRet = FetchFruId(ptIni, wDevType, pcName, *slotId, *fruId);
    IniCloseFile(ptIni);
    return sdwRet;
}
