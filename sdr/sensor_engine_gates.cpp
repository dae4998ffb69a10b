// SPDX-License-Identifier: Apache-2.0
//
// What is asked of the board before a record is built, and what is said about it.
#include <cstring>

#include "sdr/sensor_engine_draft.h"

namespace oxa {

namespace {

// Each gate keeps its room to itself: PassGate jumps to it and is off the stack.
#define GATE [[gnu::noinline]] bool

// Sensor identifiers as the firmware's headers spell them, without "SENSOR_".
struct SensorIdName {
    uint8_t ucId;
    char acName[21];
};
constexpr SensorIdName kSensorIdNames[] = {
    {SENSOR_BP_FRONT_12V, "BP_FRONT_12V"},
    {SENSOR_BP_REAR_12V, "BP_REAR_12V"},
    {SENSOR_BP_FRONT_TEMP, "BP_FRONT_TEMP"},
    {SENSOR_BP_REAR_TEMP, "BP_REAR_TEMP"},
    {SENSOR_SYS_54_VOLT, "SYS_54_VOLT"},
    {SENSOR_GPU_54_VOLT, "GPU_54_VOLT"},
    {SENSOR_PDB_BOARD_POWER, "PDB_BOARD_POWER"},
    {SENSOR_NIC_POWER, "NIC_POWER"},
    {SENSOR_GPU_BOARD_POWER, "GPU_BOARD_POWER"},
    {SENSOR_CPU_VR_TEMP, "CPU_VR_TEMP"},
    {SENSOR_CPU_VOLTS, "CPU_VOLTS"},
    {SENSOR_INPUT_TEMP, "INPUT_TEMP"},
    {SENSOR_OUTPUT_TEMP, "OUTPUT_TEMP"},
    {SENSOR_ENV_HUMI, "ENV_HUMI"},
    {SENSOR_PDB_TEMP, "PDB_TEMP"},
    {SENSOR_VCC12V, "VCC12V"},
    {SENSOR_POWER_FAULT, "POWER_FAULT"},
    {SENSOR_CPU_VCORE_CURRENT, "CPU_VCORE_CURRENT"},
    {SENSOR_CPU_VCORE1_CURRENT1, "CPU_VCORE1_CURRENT1"},
    {SENSOR_CPU_VSOC_CURRENT, "CPU_VSOC_CURRENT"},
    {SENSOR_CPU_DDR_VDD1_CURRENT, "CPU_DDR_VDD1_CURRENT"},
    {SENSOR_PCH_TEMP, "PCH_TEMP"},
    {SENSOR_POWER_BUTTON, "POWER_BUTTON"},
    {SENSOR_UID_BUTTON, "UID_BUTTON"},
    {SENSOR_INTRUSION, "INTRUSION"},
    {SENSOR_ME, "ME"},
    {SENSOR_PWR_MODULE_TEMP, "PWR_MODULE_TEMP"},
    {SENSOR_UBB_RT_TEMP, "UBB_RT_TEMP"},
};

// The same without the room that short names leave: identifier, name, NUL.
constexpr size_t SizeOfIdTexts() {
    size_t nSize = 0;
    for (const SensorIdName &t : kSensorIdNames)
        nSize += 1 + TextSize(t.acName);
    return nSize;
}
struct IdTexts {
    char ac[SizeOfIdTexts()] = {};

    constexpr IdTexts() {
        char *pcTo = ac;
        for (const SensorIdName &t : kSensorIdNames) {
            *pcTo++ = static_cast<char>(t.ucId);
            for (size_t n = 0; n < TextSize(t.acName); ++n)
                *pcTo++ = t.acName[n];
        }
    }
};
constexpr IdTexts kIdTexts;

const char *SensorIdText(uint8_t ucId) {
    for (const char *pc = kIdTexts.ac; pc != kIdTexts.ac + sizeof(kIdTexts.ac); pc = Behind(pc + 1))
        if (static_cast<uint8_t>(*pc) == ucId)
            return pc + 1;
    return "";
}

// The text is the sensor's name where the row gives no other.
GATE Refuse(const Draft &tDraft) {
    SayRefusal(tDraft.tProfile, tDraft.tRow,
               tDraft.Has(kRefusalWarns) ? OXA_REMARK(kWarn, kModuleSdr) : OXA_REMARK(kInfo, kModuleSdr),
               tDraft.tAt.Index());
    return false;
}

GATE WarnFlag(const Draft &tDraft, int32_t sdwRet) {
    SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kWarn, kModuleQuery),
            "HAL_GetSensorNotSupportFlagBySensor(SENSOR_%s, &ucSupportFlag) = [%X]",
            SensorIdText(tDraft.Does().ucGateId), sdwRet);
    return true;
}

// The flag says that the board has the sensor, whatever the call is named; it decides also after a failed
// call.
GATE BoardHas(const Draft &tDraft) {
    uint8_t ucSupportFlag = 0;
    const int32_t sdwRet = HAL_GetSensorNotSupportFlagBySensor(tDraft.Does().ucGateId, &ucSupportFlag);
    if (sdwRet != 0)
        WarnFlag(tDraft, sdwRet);
    return ucSupportFlag != 0 || Refuse(tDraft);
}

GATE KindWanted(const Draft &tDraft) {
    uint8_t ucSupportFlag = 1;
    if (HAL_GetSensorSupportFlagBySensor(tDraft.Does().ucGateId, &ucSupportFlag) != 0 || ucSupportFlag != 0)
        return true;
    return Refuse(tDraft);
}

GATE IsIntel(const Draft &tDraft) {
    uint8_t ucCpuType = CPU_TYPE_UNKNOWN;
    const int32_t sdwRet = HAL_GetCpuType(&ucCpuType);
    if (sdwRet == 0)
        return ucCpuType == CPU_TYPE_INTEL;
    DRAFT_WARN(kModuleQuery, tDraft, "HAL_GetCpuType(&ucCpuType) = [%X]", sdwRet);
    return false;
}

GATE SayNoPch(const Draft &tDraft) {
    DRAFT_INFO(tDraft, "The board has no pch");
    return false;
}

GATE HasPch(const Draft &tDraft) {
    return IsIntel(tDraft) ? BoardHas(tDraft) : SayNoPch(tDraft);
}

GATE CpuIntel(const Draft &tDraft) {
    if (IsIntel(tDraft))
        return true;
    SayProfileText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kInfo, kModuleSdr),
                   "OXA_Add%sStaticSensor: CpuType != CPU_TYPE_INTEL, no %s", tDraft.tRow.Name());
    return false;
}

// Reading the registers clears nothing by itself: what was read is written back.
GATE RenewRegisters(const Draft &tDraft) {
    uint8_t ucValue = 0;
    if (epldio_read(PMIC_POWER_FAULT_REG_5350, &ucValue) == 0)
        epldio_write(PMIC_POWER_FAULT_REG_5350, ucValue);
    else
        DRAFT_WARN(kModuleQuery, tDraft, "epldio_read PMIC_POWER_FAULT_REG_5350 failed.\n");
    if (epldio_read(PMIC_POWER_FAULT_REG_6900G5, &ucValue) == 0)
        epldio_write(PMIC_POWER_FAULT_REG_6900G5, ucValue);
    else
        DRAFT_WARN(kModuleQuery, tDraft, "epldio_read PMIC_POWER_FAULT_REG_6900G5 failed.\n");
    return true;
}

GATE PowerFault(const Draft &tDraft) {
    return BoardHas(tDraft) && RenewRegisters(tDraft);
}

GATE LiquidNot2(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() != 2)
        return true;
    DRAFT_ERROR(kModuleAssert, tDraft, "assertion failed: GetLiquidCoolingFlag() != (2)");
    return false;
}

GATE LiquidIs1(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() == 1)
        return true;
    DRAFT_ERROR(kModuleAssert, tDraft, "assertion failed: GetLiquidCoolingFlag() == (1)");
    return false;
}

void TakeAccuracy(Draft &tDraft, uint32_t dwAccuracy) {
    tDraft.ucM = ConvertIntToUnsignedChar(static_cast<int32_t>(dwAccuracy));
}

GATE ReadFanAccuracy(Draft &tDraft) {
    uint32_t dwAccuracy = 0;
    if (HAL_GetFanPowerAccuracy(&dwAccuracy) != 0)
        dwAccuracy = 0;
    TakeAccuracy(tDraft, dwAccuracy);
    if (dwAccuracy != 0)
        return true;
    DRAFT_WARN(kModuleQuery, tDraft, "get fan power accuracy failed or Accuracy is %u.",
               static_cast<int>(dwAccuracy));
    return false;
}

GATE FanAccuracy(Draft &tDraft) {
    return LiquidNot2(tDraft) && ReadFanAccuracy(tDraft);
}

GATE DiskAccuracy(Draft &tDraft) {
    uint32_t dwHDDPowerAccuracy = 0;
    if (HAL_GetHddPowerAccuracy(&dwHDDPowerAccuracy) != 0)
        dwHDDPowerAccuracy = 0;
    TakeAccuracy(tDraft, dwHDDPowerAccuracy);
    if (dwHDDPowerAccuracy != 0)
        return true;
    DRAFT_WARN(kModuleQuery, tDraft, "get hdd power accuracy failed or dwHDDPowerAccuracy = %u.\n",
               static_cast<int>(dwHDDPowerAccuracy));
    return false;
}

GATE DimmAccuracy(Draft &tDraft) {
    uint32_t dwAccuracy = 0;
    if (HAL_GetDimmPowerAccuracy(&dwAccuracy) != 0) {
        OXA_DEBUG(kDebugChannel, tDraft.tProfile.acFile, "get mem power accuracy failed\n");
        return false;
    }
    TakeAccuracy(tDraft, dwAccuracy);
    return true;
}

// Reads the board id, 0 when that fails.
int32_t ReadBoardId(Draft &tDraft) {
    const int32_t sdwRet = get_default_board_id(&tDraft.wBoardId);
    if (sdwRet < 0)
        tDraft.wBoardId = 0;
    return sdwRet;
}

// A line that names the profile, with the board id.
GATE LogBoardId(Draft &tDraft, const char *pcFormat) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kInfo, kModuleSdr), pcFormat, tDraft.tProfile.acName, sdwRet,
            tDraft.wBoardId);
    return true;
}

GATE LogOwnBoardLine(Draft &tDraft) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    DRAFT_NAMED(kInfo, kModuleSdr, tDraft, "%s: sdwRet = %d wBoardId = %x!", sdwRet, tDraft.wBoardId);
    return true;
}

// The total power of the switch board is measured on some boards only, and there only with the right card.
bool CardIs(uint8_t ucCard, uint16_t wCardId) {
    return GetCardOnlineStatus(ucCard) == 1 && GetCardBoardId(ucCard) == wCardId;
}

[[gnu::noinline]] bool SwitchSensorsValid() {
    uint8_t ucValid = 0;
    return MW_GetSWSensorVail(&ucValid) == 0 && ucValid != 0;
}

[[gnu::noinline]] bool MeasuresSwitchPower(uint16_t wBoardId) {
    switch (wBoardId) {
    case 0x5600:
        return CardIs(1, 0x560A);
    case 0x5502:
        return SwitchSensorsValid();
    case 0x55DE:
    case 0x550F:
        return CardIs(2, 0x5510);
    default:
        return false;
    }
}

GATE SwitchPower(Draft &tDraft) {
    LogBoardId(tDraft, "OXA_Add%sSensor for SW_Total_Power: sdwRet = %d wBoardId = 0x%x!");
    return MeasuresSwitchPower(tDraft.wBoardId) || Refuse(tDraft);
}

// Reads the product id for the log only.
int32_t ReadProductId(uint32_t &dwProductId) {
    dwProductId = 0;
    const int32_t sdwRet = MW_GetInnerProductId(&dwProductId);
    if (sdwRet != 0)
        dwProductId = 0;
    return sdwRet;
}

GATE LogProductId(const Draft &tDraft) {
    uint32_t dwProductId;
    const int32_t sdwRet = ReadProductId(dwProductId);
    SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kInfo, kModuleSdr),
            "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d productId = %x!", tDraft.tProfile.acName, sdwRet,
            static_cast<int>(dwProductId));
    return true;
}

GATE BoardPower(Draft &tDraft) {
    LogBoardId(tDraft, "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d wBoardId = %x!");
    LogProductId(tDraft);
    return tDraft.wBoardId != kSmallBoardId || Refuse(tDraft);
}

GATE ProductLine(const Draft &tDraft) {
    uint32_t dwProductId;
    const int32_t sdwRet = ReadProductId(dwProductId);
    DRAFT_NAMED(kInfo, kModuleSdr, tDraft, "%s for POWER_WATTS: sdwRet = %d productId = %x!", sdwRet,
                static_cast<int>(dwProductId));
    return true;
}

GATE PsuInRange(const Draft &tDraft) {
    uint8_t ucPsuCnt = 0;
    if (HAL_GetPsuMaxCount(&ucPsuCnt) != 0)
        ucPsuCnt = 0;
    if (tDraft.tAt.Index() <= ucPsuCnt)
        return true;
    DRAFT_INFO(tDraft, "pem ucInstance large max pem num!");
    return false;
}

GATE PsuStatus(const Draft &tDraft) {
    if (LoadPsuAlarmCfg() != 0)
        DRAFT_WARN(kModuleQuery, tDraft, "LoadPsuAlarmCfg failed!");
    return PsuInRange(tDraft);
}

GATE DimmName(Draft &tDraft) {
    HalDimmDevInfo tInfo = {};
    if (HAL_GetDimmDevInfoByDimmNum(tDraft.tAt.Index(), &tInfo) == 0 &&
        HAL_GetDimmSensorNameIndex(&tInfo, tDraft.acText, sizeof(tDraft.acText)) == 0)
        return true;
    DRAFT_ERROR(kModuleSdr, tDraft, "Get mem sensor name index fail\n");
    return false;
}

GATE CpuVoltage(Draft &tDraft) {
    if (HAL_GetCpuVoltSdrInfoforSensor(tDraft.Does().ucGateId, &tDraft.tVoltage) == 0)
        return true;
    DRAFT_ERROR(kModuleSdr, tDraft, "Get Cpu Voltage Sensor SDR Info fail!");
    return false;
}

GATE AirIndex(const Draft &tDraft) {
    if (tDraft.tAt.Index() <= 3)
        return true;
    DRAFT_NAMED(kInfo, kModuleSdr, tDraft, "%s switchBoardTempNum[%d] error!", tDraft.tAt.Index());
    return false;
}

} // namespace

namespace {

// Gates that take something along, or belong to few sensors.
bool PassRareGate(Draft &tDraft) {
    switch (tDraft.Does().eGate) {
    case Gate::kFanAccuracy:
        return FanAccuracy(tDraft);
    case Gate::kDimmAccuracy:
        return DimmAccuracy(tDraft);
    case Gate::kDiskAccuracy:
        return DiskAccuracy(tDraft);
    case Gate::kSwitchPower:
        return SwitchPower(tDraft);
    case Gate::kProductLine:
        return ProductLine(tDraft);
    case Gate::kDimmName:
        return DimmName(tDraft);
    case Gate::kCpuVoltage:
        return CpuVoltage(tDraft);
    case Gate::kAirIndex:
        return AirIndex(tDraft);
    default:
        return true;
    }
}

} // namespace

bool PassGate(Draft &tDraft) {
    switch (tDraft.Does().eGate) {
    case Gate::kBoardHas:
        return BoardHas(tDraft);
    case Gate::kKindWanted:
        return KindWanted(tDraft);
    case Gate::kPch:
        return HasPch(tDraft);
    case Gate::kPowerFault:
        return PowerFault(tDraft);
    case Gate::kLiquidNot2:
        return LiquidNot2(tDraft);
    case Gate::kLiquidIs1:
        return LiquidIs1(tDraft);
    case Gate::kBoardPower:
        return BoardPower(tDraft);
    case Gate::kPsuStatus:
        return PsuStatus(tDraft);
    case Gate::kPsuInRange:
        return PsuInRange(tDraft);
    case Gate::kCpuIntel:
        return CpuIntel(tDraft);
    default:
        return PassRareGate(tDraft);
    }
}

bool WriteBoardLine(Draft &tDraft) {
    switch (tDraft.Does().eBoardLine) {
    case BoardLine::kOwn:
        return LogOwnBoardLine(tDraft);
    case BoardLine::kPowerWatts:
        return LogBoardId(tDraft, "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d wBoardId = %x!");
    case BoardLine::kInputTemp:
        return LogBoardId(tDraft, "OXA_Add%sSensor for INPUT_TEMP: sdwRet = %d wBoardId = %x!");
    case BoardLine::kNone:
        break;
    }
    return true;
}

void SayKnown(const Draft &tDraft) {
    switch (tDraft.Does().eKnown) {
    case Known::kSilent:
        return;
    case Known::kInfo:
        DRAFT_NAMED(kInfo, kModuleSdr, tDraft, "%s sensor already exist!");
        return;
    case Known::kInfoNewline:
        DRAFT_NAMED(kInfo, kModuleSdr, tDraft, "%s sensor already exist!\n");
        return;
    case Known::kWarnNewline:
        DRAFT_NAMED(kWarn, kModuleSdr, tDraft, "%s sensor already exist!\n");
        return;
    // Texts of another generator, kept as they are.
    case Known::kSwitchVoltsWarn:
        SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kWarn, kModuleSdr),
                "%s_GenSwitchBoardVoltsSDR sensor already exist!", tDraft.tProfile.acName);
        return;
    case Known::kSwitchVolts:
        DRAFT_INFO(tDraft, "Default_GenSwitchBoardVoltsSDR sensor already exist!");
        return;
    case Known::kCpuStatus:
        SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kInfo, kModuleSdr),
                "%s_GenCPUStatusSDR sensor already exist!\n", tDraft.tProfile.acName);
        return;
    case Known::kFru:
        SayText(DRAFT_SPEAKER(tDraft), OXA_REMARK(kInfo, kModuleSdr), "The %s already exists in fru.",
                tDraft.tRow.Name());
        return;
    }
}

const char *PickName(Draft &tDraft, uint8_t &ucNumber) {
    const RowView &tRow = tDraft.tRow;
    const uint8_t ucIndex = tDraft.tAt.Index();
    switch (tDraft.Does().eNaming) {
    case Naming::kNumber:
    case Naming::kText:
        return tRow.Name();
    case Naming::kSmallBoard:
        return tDraft.wBoardId == kSmallBoardId ? tRow.Variant() : tRow.Name();
    case Naming::kSecondGroup:
        return ucIndex == 0 ? tRow.Name() : ucIndex == 1 ? tRow.Variant() : nullptr;
    case Naming::kLongNumber:
        return ucNumber > 0x0F ? tRow.Variant() : tRow.Name();
    case Naming::kInletOutlet:
        ucNumber = static_cast<uint8_t>('1' + ucIndex % 2);
        return ucIndex < 2 ? tRow.Name() : tRow.Variant();
    }
    __builtin_unreachable(); // the compiler has checked every kind
}

} // namespace oxa
