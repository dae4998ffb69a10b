// SPDX-License-Identifier: Apache-2.0
//
// From a sensor description to its name: the profile's pattern, the numbers in it, and the three renames
// (cards in front slots, card families with names of their own, GPU units by their place on one board).
//
// A name is at most 16 characters.  A longer one is cut where it is stored and reported by its length, which
// the callers refuse; a length of 0 says that the sensor is not offered.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "sdr/gen_specific_sensor_data_generators.h"
#include "sdr/gen_specific_sensor_data_kinds.h"
#include "sdr/oxa_log.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr const char *kFile = "gen_specific_sensor_data.c";
constexpr uint16_t kSablinBoardId = 0x54E0;
constexpr uint8_t kLocationFront = 1;
constexpr uint8_t kSilkSize = 32;
constexpr char kFrontSilk[] = "F-Slot";
constexpr uint8_t kFrontSilkLen = sizeof(kFrontSilk) - 1;

struct NamePair {
    char acFrom[SENSOR_NAME_SIZE];
    char acTo[SENSOR_NAME_SIZE];
};

// What a pattern becomes when the card sits in a front slot.
constexpr NamePair kFrontNames[] = {
    {"RAID_TEMP_*", "RAID_TEMP_F-*"},
    {"Raid*_Temp", "RaidF-*_Temp"},
    {"P*_Raid_Temp", "PF-*_Raid_Temp"},
    {"RAID*_Temp", "RAIDF-*_Temp"},
    {"HBA_TEMP_*", "HBA_TEMP_F-*"},
    {"HBA*_Temp", "HBAF-*_Temp"},
    {"P*_HBA_Temp", "PF-*_HBA_Temp"},
    {"NIC_SFP#_TEMP_*", "NIC_SFP#_T_F-*"},
    {"NIC*_SFP#_Temp", "NICF-*_SFP#_Temp"},
    {"P*_Net_SFP#_Temp", "PF-*_Net_SFP#_T"},
    {"P*_NIC_SFP#_Temp", "PF-*_NIC_SFP#_T"},
    {"NIC_TEMP_*", "NIC_TEMP_F-*"},
    {"NIC*_Temp", "NICF-*_Temp"},
    {"P*_Net_Temp", "PF-*_Net_Temp"},
    {"P*_NIC_Temp", "PF-*_NIC_Temp"},
    {"FC_TEMP_*", "FC_TEMP_F-*"},
    {"FC*_Temp", "FCF-*_Temp"},
    {"P*_FC_Temp", "PF-*_FC_Temp"},
    {"SNIC_NIC_TEMP_*", "SNIC_NIC_T_F-*"},
    {"SNIC*_NIC_Temp", "SNICF-*_NIC_Temp"},
    {"P*_SNIC_NIC_Temp", "PF-*_SNIC_NIC_T"},
    {"SNIC_SFP#_T_*", "SNIC_SFP#_T_F-*"},
    {"SNIC*_SFP#_Temp", "SNICF-*_SFP#_T"},
    {"P*_SNIC_SFP#_T", "PF-*_SNIC_SFP#_T"},
};
static_assert(std::size(kFrontNames) == 24);

// All of them follow one rule, so that the left column is enough to keep: "*" becomes "F-*", and of a name
// that is too long then "Temp" becomes "T".
constexpr void MakeFrontName(char (&acTo)[SENSOR_NAME_SIZE], const char *pcFrom, size_t nFrom) {
    const bool bTooLong = nFrom + 2 > kNameMax;
    char *pcTo = acTo;
    for (const char *pc = pcFrom; *pc != '\0'; ++pc) {
        if (*pc == '*') {
            *pcTo++ = 'F';
            *pcTo++ = '-';
        }
        *pcTo++ = *pc;
        if (bTooLong && *pc == 'T')
            pc += 3;
    }
}

constexpr size_t Length(const char *pc) {
    size_t n = 0;
    while (pc[n] != '\0')
        ++n;
    return n;
}
constexpr bool FollowTheRule() {
    for (const NamePair &tPair : kFrontNames) {
        char acMade[SENSOR_NAME_SIZE] = {};
        MakeFrontName(acMade, tPair.acFrom, Length(tPair.acFrom));
        if (!std::equal(std::begin(acMade), std::end(acMade), tPair.acTo))
            return false;
    }
    return true;
}
static_assert(FollowTheRule());

constexpr size_t SizeOfFrontPatterns() {
    size_t n = 0;
    for (const NamePair &tPair : kFrontNames)
        n += Length(tPair.acFrom) + 1;
    return n;
}
struct FrontPatterns { // one behind the other
    char ac[SizeOfFrontPatterns()] = {};

    constexpr FrontPatterns() {
        char *pcTo = ac;
        for (const NamePair &tPair : kFrontNames)
            pcTo = std::copy_n(tPair.acFrom, Length(tPair.acFrom) + 1, pcTo);
    }
};
constexpr FrontPatterns kFrontPatterns;

// GPU units of board 0x54E0, named by row and place.
struct GpuName {
    char acFrom[5];
    char acTo[4];
};
constexpr GpuName kSablinGpuNames[] = {
    {"GU05", "RA3"}, {"GU04", "RA2"}, {"GU03", "RA1"}, {"GU08", "RB3"},
    {"GU07", "RB2"}, {"GU06", "RB1"}, {"GU10", "RC2"}, {"GU09", "RC1"},
};
static_assert(std::size(kSablinGpuNames) == 8);

// Counts on over all NIC names of the Ferrisk profile for as long as the library is loaded.
uint8_t g_ucFerriskNicPort;

uint8_t NameLength(const SnrQuery *ptInfo) {
    return static_cast<uint8_t>(strnlen_s(ptInfo->acName, kNameMax));
}

bool Contains(const char *pcText, const char *pcNeedle) {
    const size_t nNeedle = strnlen_s(pcNeedle, kNameMax);
    const size_t nText = strnlen_s(pcText, kNameMax);
    for (size_t i = 0; i + nNeedle <= nText; i++) {
        if (memcmp(pcText + i, pcNeedle, nNeedle) == 0)
            return true;
    }
    return false;
}

// Returns the length that the name would have, whatever fits of it is stored.
uint8_t ReplaceInName(SnrQuery *ptInfo, const char *pcPattern, const char *pcReplacement) {
    char acNew[SENSOR_NAME_SIZE];
    const uint8_t ucLen = strrpc(acNew, ptInfo->acName, pcPattern, pcReplacement);
    memcpy(ptInfo->acName, acNew, sizeof(acNew));
    return ucLen;
}

const SnrSpecificInfoRow *FindProfile(uint32_t dwCustomId) {
    for (uint32_t i = 0; i < g_dwSdrCustomCnt; i++) {
        const SnrSpecificInfoRow *ptRow = &g_atSnrSpecificInfo[i];
        if (ptRow->dwCustomId == dwCustomId && ptRow->pucSnrCnt != nullptr && ptRow->ptInfo != nullptr)
            return ptRow;
    }
    return nullptr;
}

uint8_t CountPresentOcpCards() {
    const uint8_t ucMax = GetOcpNetCardMaxCount();
    const uint32_t dwPresent = GetOcpPresentStatus();
    uint8_t ucCnt = 0;
    for (uint8_t i = 0; i < ucMax && i < 32; i++)
        ucCnt = static_cast<uint8_t>(ucCnt + (dwPresent >> i & 1));
    return ucCnt;
}

// Cards whose ports are numbered without a leading zero also where slots have one.
bool HasPlainPorts(uint8_t ucDeviceType, uint32_t dwCustomId) {
    if (dwCustomId != CUSTOM_ID_DEFAULT && dwCustomId != CUSTOM_ID_SABLIN)
        return false;
    switch (ucDeviceType) {
    case kGpu:
    case kNic:
    case kOcp:
    case kSmartNic:
    case kNeo:
    case kNicHt:
    case kNicSw:
        return true;
    default:
        return false;
    }
}

bool CanSitInFrontSlot(uint8_t ucDeviceType) {
    switch (ucDeviceType) {
    case kRaid:
    case kNic:
    case kHba:
    case kFc:
    case kSmartNic:
        return true;
    default:
        return false;
    }
}

bool IsSablinGpuSensor(const SnrQuery *ptInfo) {
    switch (ptInfo->dwSensorDevType) {
    case kTemp:
        return ptInfo->ucDeviceType == kGpu &&
               (ptInfo->SubDeviceType == kGpuMax || ptInfo->SubDeviceType == kGpuAvg);
    case kPower:
        return ptInfo->ucDeviceType == kGpuSlotPower && ptInfo->SubDeviceType == kMain;
    case kGpuCard:
        return ptInfo->ucDeviceType == kGpu && ptInfo->SubDeviceType == kMain;
    default:
        return false;
    }
}

// A number that could not be printed leaves an empty text, which no name is built from.
void PrintNumber(char *pSilkInfo, const char *pcFormat, int sdwNumber) {
    if (snprintf_s(pSilkInfo, SENSOR_NAME_SIZE, pcFormat, sdwNumber) < 0)
        pSilkInfo[0] = '\0';
}

// Replaces every pcMark of the name by the number; 0 = the number could not be printed.
uint8_t FillNumber(SnrQuery *ptInfo, const char *pcMark, uint8_t ucNumber, uint32_t dwCustomId,
                   uint8_t ucPlainFlag) {
    char acSilk[SENSOR_NAME_SIZE] = {};
    getSilkInfo(ptInfo, acSilk, ucNumber, dwCustomId, ucPlainFlag);
    if (acSilk[0] == '\0')
        return 0;
    return ReplaceInName(ptInfo, pcMark, acSilk);
}

} // namespace

void getCustomSensorInfo(SnrQuery *ptInfo, uint32_t dwCustomId) {
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! The input parameter ptInfo is null.", __func__);
        return;
    }
    const SnrSpecificInfoRow *ptProfile = FindProfile(dwCustomId);
    if (ptProfile == nullptr)
        return;

    for (uint32_t i = 0; i < *ptProfile->pucSnrCnt; i++) {
        const SnrInfoRec *ptRec = &ptProfile->ptInfo[i];
        if (ptRec->dwSensorDevType != ptInfo->dwSensorDevType ||
            ptRec->ucDeviceType != ptInfo->ucDeviceType || ptRec->SubDeviceType != ptInfo->SubDeviceType)
            continue;
        memcpy(ptInfo->acName, ptRec->acName, kNameMax);
        ptInfo->acName[kNameMax] = '\0';
        if (ptRec->wBitmap != kKeepBitmap)
            ptInfo->wBitmap = ptRec->wBitmap;
        return;
    }
}

uint8_t getSensorInfo(SnrQuery *ptInfo, uint8_t ucSlot, uint8_t ucPort) {
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! ptInfo == NULL.", __func__);
        return 0;
    }
    const uint32_t dwCustomId = ReadProfile();
    getCustomSensorInfo(ptInfo, dwCustomId);
    if (ptInfo->acName[0] == '\0' || memcmp(ptInfo->acName, "null", 4) == 0) {
        OXA_WARN(kModuleSdr, kFile, __func__, "this sensor is not support custom id %d !",
                 static_cast<int>(dwCustomId));
        return 0;
    }

    modifyPcieSlotName(&ucSlot, ptInfo);
    uint8_t ucLen = NameLength(ptInfo);
    if (Contains(ptInfo->acName, "*"))
        ucLen = FillNumber(ptInfo, "*", ucSlot, dwCustomId, 0);
    if (ucLen == 0 || ucLen > kNameMax)
        return ucLen;

    if (Contains(ptInfo->acName, "#"))
        ucLen = FillNumber(ptInfo, "#", ucPort, dwCustomId, HasPlainPorts(ptInfo->ucDeviceType, dwCustomId));
    if (ucLen == 0 || ucLen > kNameMax)
        return ucLen;

    return dwCustomId == CUSTOM_ID_SABLIN ? modifySablinGpuSensorName(ptInfo) : ucLen;
}

uint8_t getPurchaseCardInfo(SnrQuery *ptInfo, const SpecificSensorParam *ptParam, uint8_t ucSensorIndex) {
    if (IsMissing(__func__, ptInfo, ptParam))
        return 0;
    for (const CardSnrRow &tRow : g_atPurchaseCardSnrInfo) {
        if (tRow.dwSensorDevType == ptParam->dwSensorDevType && tRow.ucDeviceType == ptInfo->ucDeviceType)
            return getNameInfo(ptInfo, ucSensorIndex, &tRow);
    }
    switch (ptParam->dwSensorDevType) {
    case kTemp:
        return getSensorInfo(ptInfo, ptParam->SlotId, ptParam->ucSensorSeq);
    case kPower:
    case kMemStatus:
    case kDiskStatus:
    case kGpuCard:
        return getSensorInfo(ptInfo, ptParam->SlotId, 0);
    case kVolt:
        return getSensorInfo(ptInfo, ptParam->SlotId, ptParam->ucSecondPort);
    default:
        return 0;
    }
}

uint8_t getNameInfo(SnrQuery *ptInfo, uint8_t ucSensorIndex, const CardSnrRow *ptRow) {
    if (IsMissing(__func__, ptInfo, ptRow) || IsMissing(__func__, ptRow->ptEntry))
        return 0;
    for (uint8_t i = 0; i < ptRow->ucCnt; i++) {
        if (ptRow->ptEntry[i].ucSensorIndex != ucSensorIndex)
            continue;
        memcpy(ptInfo->acName, ptRow->ptEntry[i].acName, kNameMax);
        ptInfo->acName[kNameMax] = '\0';
        return NameLength(ptInfo);
    }
    return 0;
}

void getSilkInfo(const SnrQuery *ptInfo, char *pSilkInfo, uint8_t ucNumber, uint32_t dwCustomId,
                 uint8_t ucPlainFlag) {
    if (ptInfo == nullptr || pSilkInfo == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! ptInfo == NULL || pSilkInfo == NULL.", __func__);
        return;
    }
    const uint8_t ucOcpCnt = CountPresentOcpCards();
    if (ptInfo->dwSensorDevType == kFan && dwCustomId == CUSTOM_ID_KESTRIN)
        return PrintNumber(pSilkInfo, "%X", ucNumber);
    if (ptInfo->dwSensorDevType == kFan && dwCustomId == CUSTOM_ID_DURNOW)
        return PrintNumber(pSilkInfo, "%02d", ucNumber);

    if (ucPlainFlag != 1) {
        if (dwCustomId == CUSTOM_ID_DEFAULT || dwCustomId == CUSTOM_ID_SABLIN)
            return PrintNumber(pSilkInfo, "%02d", ucNumber);
        // Ferrisk numbers its NICs on from the OCP cards, in the order they turn up.
        if (dwCustomId == CUSTOM_ID_FERRISK && ptInfo->ucDeviceType == kNic)
            return PrintNumber(pSilkInfo, "%d", ucOcpCnt + g_ucFerriskNicPort++);
    }
    PrintNumber(pSilkInfo, "%d", ucNumber);
}

uint8_t strrpc(char *pcOut, const char *pcSrc, const char *pcPattern, const char *pcReplacement) {
    if (pcOut == nullptr) {
        OXA_ERROR(kModuleSdr, kFile, __func__, "%s failed! The input parameter is null.", __func__);
        return 0;
    }
    if (IsMissing(__func__, pcSrc, pcPattern) || IsMissing(__func__, pcReplacement))
        return 0;
    const size_t nSrc = strnlen_s(pcSrc, kNameMax);
    const size_t nPattern = strnlen_s(pcPattern, SENSOR_NAME_SIZE);
    uint8_t ucOut = 0;
    const auto Append = [&](char c) {
        if (ucOut < kNameMax)
            pcOut[ucOut] = c;
        if (ucOut < 255)
            ucOut++;
    };
    for (size_t i = 0; i < nSrc;) {
        // an empty pattern stands nowhere
        if (nPattern == 0 || i + nPattern > nSrc || memcmp(pcSrc + i, pcPattern, nPattern) != 0) {
            Append(pcSrc[i++]);
            continue;
        }
        for (const char *pc = pcReplacement; *pc != '\0'; pc++)
            Append(*pc);
        i += nPattern;
    }
    pcOut[ucOut < kNameMax ? ucOut : kNameMax] = '\0';
    return ucOut;
}

int32_t getFSlotInfo(uint8_t ucSlot, uint8_t *changedSlot) {
    if (changedSlot == nullptr) {
        OXA_ERROR(kModuleAssert, kFile, __func__, "assertion failed: changedSlot != 0");
        return -1;
    }
    uint8_t ucLocation = 0;
    if (Hal_GetPcieLocationByPcieSlot(ucSlot, &ucLocation) != 0 || ucLocation != kLocationFront)
        return -1;
    char acSilk[kSilkSize] = {};
    if (Hal_GetPcieSilkByPcieSlot(ucSlot, acSilk, sizeof(acSilk)) != 0)
        return -1;
    if (memcmp(acSilk, kFrontSilk, kFrontSilkLen) != 0)
        return -1;

    uint32_t dwNumber = 0;
    for (uint32_t i = kFrontSilkLen; i < sizeof(acSilk) && acSilk[i] != '\0'; i++) {
        if (acSilk[i] < '0' || acSilk[i] > '9')
            return -1;
        dwNumber = dwNumber * 10 + static_cast<uint32_t>(acSilk[i] - '0');
    }
    *changedSlot = static_cast<uint8_t>(dwNumber);
    return 0;
}

void modifyPcieSlotName(uint8_t *ucInstance, SnrQuery *ptInfo) {
    if (ucInstance == nullptr) {
        OXA_ERROR(kModuleAssert, kFile, __func__, "assertion failed: ucInstance != 0");
        return;
    }
    if (ptInfo == nullptr) {
        OXA_ERROR(kModuleAssert, kFile, __func__, "assertion failed: ptInfo != 0");
        return;
    }
    uint8_t ucFrontSlot = 0;
    if (!CanSitInFrontSlot(ptInfo->ucDeviceType) || getFSlotInfo(*ucInstance, &ucFrontSlot) != 0)
        return;
    size_t nSize;
    for (const char *pc = kFrontPatterns.ac; pc != std::end(kFrontPatterns.ac); pc += nSize) {
        nSize = Length(pc) + 1; // our own: the walk must end at the end whatever the platform counts
        if (memcmp(ptInfo->acName, pc, nSize) != 0)
            continue;
        memset(ptInfo->acName, 0, sizeof(ptInfo->acName));
        MakeFrontName(ptInfo->acName, pc, nSize - 1);
        *ucInstance = ucFrontSlot;
        return;
    }
}

uint8_t modifySablinGpuSensorName(SnrQuery *ptInfo) {
    if (IsMissing(__func__, ptInfo))
        return 0;
    uint16_t wBoardId = 0;
    const int32_t sdwRet = get_default_board_id(&wBoardId);
    if (sdwRet < 0)
        wBoardId = 0;
    OXA_INFO(kModuleSdr, kFile, __func__, "modifySablinGpuSensorName: sdwRet = %d wBoardId = %x!", sdwRet,
             wBoardId);
    if (!IsSablinGpuSensor(ptInfo))
        return NameLength(ptInfo);
    if (wBoardId != kSablinBoardId) {
        OXA_INFO(kModuleSdr, kFile, __func__, "The board does not support adding sensor RAx.");
        return 0;
    }
    for (const GpuName &tPair : kSablinGpuNames) {
        if (Contains(ptInfo->acName, tPair.acFrom))
            return ReplaceInName(ptInfo, tPair.acFrom, tPair.acTo);
    }
    return NameLength(ptInfo);
}
