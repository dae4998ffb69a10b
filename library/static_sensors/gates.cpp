// SPDX-License-Identifier: Apache-2.0
//
// What is asked of the board before a record is built, and what is said about it.
#include "library/static_sensors/draft.h"
#include "library/static_sensors/kinds/kinds.h"

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

// Every identifier that a kind asks for has its text, so the search needs no end.
constexpr bool HasText(uint8_t ucId) {
    for (const SensorIdName &t : kSensorIdNames)
        if (t.ucId == ucId)
            return true;
    return false;
}
constexpr bool EveryFlagHasText() {
    for (const SensorKind &t : kKinds)
        if ((t.tDoes.eGate == Gate::kBoardHas || t.tDoes.eGate == Gate::kPch ||
             t.tDoes.eGate == Gate::kPowerFault) &&
            !HasText(t.tDoes.ucGateId))
            return false;
    return true;
}
static_assert(EveryFlagHasText());

const char *SensorIdText(uint8_t ucId) {
    const SensorIdName *pt = kSensorIdNames;
    while (pt->ucId != ucId)
        ++pt;
    return pt->acName;
}

// The text is the sensor's name where the row gives no other.
const char *RefusedText(const Draft &tDraft) {
    return tDraft.tRow.HasVariant() ? tDraft.tRow.Variant() : tDraft.tRow.Name();
}

GATE Refuse(const Draft &tDraft) {
    if (tDraft.Has(kRefusalWarns))
        OXA_WARN(kModuleSdr, tDraft.Unit(), tDraft.Function(), "The board does not support adding sensor %s.",
                 RefusedText(tDraft));
    else
        OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "The board does not support adding sensor %s.",
                 RefusedText(tDraft));
    return false;
}

// Of a part of which there are several: the index stands in the text, where it has "%d".
GATE RefusePart(const Draft &tDraft) {
    const char *pcText = RefusedText(tDraft);
    int sdwBefore = 0;
    while (pcText[sdwBefore] != '%')
        ++sdwBefore;
    OXA_WARN(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "The board does not support adding sensor %.*s%u%s.", sdwBefore, pcText, tDraft.tAt.ucIndex,
             pcText + sdwBefore + 2);
    return false;
}

GATE WarnFlag(const Draft &tDraft, int32_t sdwRet) {
    OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
             "HAL_GetSensorNotSupportFlagBySensor(SENSOR_%s, &ucSupportFlag) = [%X]",
             SensorIdText(tDraft.Does().ucGateId), static_cast<uint32_t>(sdwRet));
    return true;
}

// The flag says that the board has the sensor, whatever the call is named; it decides also after a failed
// call.
GATE BoardHas(const Draft &tDraft) {
    uint8_t ucSupportFlag = 0;
    const int32_t sdwRet = HAL_GetSensorNotSupportFlagBySensor(tDraft.Does().ucGateId, &ucSupportFlag);
    if (sdwRet != 0)
        WarnFlag(tDraft, sdwRet);
    if (ucSupportFlag != 0)
        return true;
    return Refuse(tDraft);
}

GATE PartWanted(const Draft &tDraft) {
    uint8_t ucSupportFlag = 1;
    if (HAL_GetSensorSupportFlagBySensor(tDraft.Does().ucGateId, &ucSupportFlag) != 0 || ucSupportFlag != 0)
        return true;
    return RefusePart(tDraft);
}

GATE IsIntel(const Draft &tDraft) {
    uint8_t ucCpuType = CPU_TYPE_UNKNOWN;
    const int32_t sdwRet = HAL_GetCpuType(&ucCpuType);
    if (sdwRet == 0)
        return ucCpuType == CPU_TYPE_INTEL;
    OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(), "HAL_GetCpuType(&ucCpuType) = [%X]",
             static_cast<uint32_t>(sdwRet));
    return false;
}

GATE ReportNoPch(const Draft &tDraft) {
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "The board has no pch");
    return false;
}

GATE HasPch(const Draft &tDraft) {
    return IsIntel(tDraft) ? BoardHas(tDraft) : ReportNoPch(tDraft);
}

GATE CpuIntel(const Draft &tDraft) {
    if (IsIntel(tDraft))
        return true;
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "OXA_Add%sStaticSensor: CpuType != CPU_TYPE_INTEL, no %s", tDraft.ProfileName(),
             tDraft.tRow.Name());
    return false;
}

// Reading the registers clears nothing by itself: what was read is written back.
GATE RenewRegisters(const Draft &tDraft) {
    uint8_t ucValue = 0;
    if (epldio_read(PMIC_POWER_FAULT_REG_5350, &ucValue) == 0)
        epldio_write(PMIC_POWER_FAULT_REG_5350, ucValue);
    else
        OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
                 "epldio_read PMIC_POWER_FAULT_REG_5350 failed.\n");
    if (epldio_read(PMIC_POWER_FAULT_REG_6900G5, &ucValue) == 0)
        epldio_write(PMIC_POWER_FAULT_REG_6900G5, ucValue);
    else
        OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
                 "epldio_read PMIC_POWER_FAULT_REG_6900G5 failed.\n");
    return true;
}

GATE PowerFault(const Draft &tDraft) {
    if (!BoardHas(tDraft))
        return false;
    return RenewRegisters(tDraft);
}

GATE LiquidNot2(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() != 2)
        return true;
    OXA_ERROR(kModuleAssert, tDraft.Unit(), tDraft.Function(),
              "assertion failed: GetLiquidCoolingFlag() != (2)");
    return false;
}

GATE LiquidIs1(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() == 1)
        return true;
    OXA_ERROR(kModuleAssert, tDraft.Unit(), tDraft.Function(),
              "assertion failed: GetLiquidCoolingFlag() == (1)");
    return false;
}

void TakeAccuracy(Draft &tDraft, uint32_t dwAccuracy) {
    tDraft.ucM = AccuracyByte(static_cast<int32_t>(dwAccuracy));
}

GATE ReadFanAccuracy(Draft &tDraft) {
    uint32_t dwAccuracy = 0;
    if (HAL_GetFanPowerAccuracy(&dwAccuracy) != 0)
        dwAccuracy = 0;
    TakeAccuracy(tDraft, dwAccuracy);
    if (dwAccuracy != 0)
        return true;
    OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
             "get fan power accuracy failed or Accuracy is %u.", static_cast<int>(dwAccuracy));
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
    OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(),
             "get hdd power accuracy failed or dwHDDPowerAccuracy = %u.\n",
             static_cast<int>(dwHDDPowerAccuracy));
    return false;
}

GATE DimmAccuracy(Draft &tDraft) {
    uint32_t dwAccuracy = 0;
    if (HAL_GetDimmPowerAccuracy(&dwAccuracy) != 0) {
        OXA_DEBUG(kDebugChannel, tDraft.Unit(), "get mem power accuracy failed\n");
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

[[gnu::noinline]] void LogBoardOfPower(Draft &tDraft) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d wBoardId = %x!", tDraft.ProfileName(), sdwRet,
             tDraft.wBoardId);
}

[[gnu::noinline]] void LogBoardOfInput(Draft &tDraft) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "OXA_Add%sSensor for INPUT_TEMP: sdwRet = %d wBoardId = %x!", tDraft.ProfileName(), sdwRet,
             tDraft.wBoardId);
}

[[gnu::noinline]] void LogBoardOfSwitch(Draft &tDraft) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "OXA_Add%sSensor for SW_Total_Power: sdwRet = %d wBoardId = 0x%x!", tDraft.ProfileName(), sdwRet,
             tDraft.wBoardId);
}

[[gnu::noinline]] void LogOwnBoardLine(Draft &tDraft) {
    const int32_t sdwRet = ReadBoardId(tDraft);
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "%s: sdwRet = %d wBoardId = %x!",
             tDraft.Function(), sdwRet, tDraft.wBoardId);
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
    case kBoardSwitchPower:
        return CardIs(1, kCardTotalPower);
    case kBoardSwitchAir:
        return SwitchSensorsValid();
    case kBoardSwitchCardB:
    case kBoardSwitchCardA:
        return CardIs(2, kCardSwitchPower);
    default:
        return false;
    }
}

GATE SwitchPower(Draft &tDraft) {
    LogBoardOfSwitch(tDraft);
    if (MeasuresSwitchPower(tDraft.wBoardId))
        return true;
    return Refuse(tDraft);
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
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(),
             "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d productId = %x!", tDraft.ProfileName(), sdwRet,
             dwProductId);
    return true;
}

GATE BoardPower(Draft &tDraft) {
    LogBoardOfPower(tDraft);
    LogProductId(tDraft);
    if (tDraft.wBoardId != kBoardSmall)
        return true;
    return Refuse(tDraft);
}

GATE ProductLine(const Draft &tDraft) {
    uint32_t dwProductId;
    const int32_t sdwRet = ReadProductId(dwProductId);
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "%s for POWER_WATTS: sdwRet = %d productId = %x!",
             tDraft.Function(), sdwRet, static_cast<int>(dwProductId));
    return true;
}

GATE PsuInRange(const Draft &tDraft) {
    uint8_t ucPsuCnt = 0;
    if (HAL_GetPsuMaxCount(&ucPsuCnt) != 0)
        ucPsuCnt = 0;
    if (tDraft.tAt.ucIndex <= ucPsuCnt)
        return true;
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "pem ucInstance large max pem num!");
    return false;
}

GATE PsuStatus(const Draft &tDraft) {
    if (LoadPsuAlarmCfg() != 0)
        OXA_WARN(kModuleQuery, tDraft.Unit(), tDraft.Function(), "LoadPsuAlarmCfg failed!");
    return PsuInRange(tDraft);
}

GATE DimmName(Draft &tDraft) {
    HalDimmDevInfo tInfo = {};
    if (HAL_GetDimmDevInfoByDimmNum(tDraft.tAt.ucIndex, &tInfo) == 0 &&
        HAL_GetDimmSensorNameIndex(&tInfo, tDraft.acText, sizeof(tDraft.acText)) == 0)
        return true;
    OXA_ERROR(kModuleSdr, tDraft.Unit(), tDraft.Function(), "Get mem sensor name index fail\n");
    return false;
}

GATE CpuVoltage(Draft &tDraft) {
    if (HAL_GetCpuVoltSdrInfoforSensor(tDraft.Does().ucGateId, &tDraft.tVoltage) == 0)
        return true;
    OXA_ERROR(kModuleSdr, tDraft.Unit(), tDraft.Function(), "Get Cpu Voltage Sensor SDR Info fail!");
    return false;
}

GATE AirIndex(const Draft &tDraft) {
    if (tDraft.tAt.ucIndex <= 3)
        return true;
    OXA_INFO(kModuleSdr, tDraft.Unit(), tDraft.Function(), "%s switchBoardTempNum[%d] error!",
             tDraft.Function(), tDraft.tAt.ucIndex);
    return false;
}

} // namespace

bool PassGate(Draft &tDraft) {
    switch (tDraft.Does().eGate) {
    case Gate::kNone:
        return true; // BuildSensor does not come here for it
    case Gate::kBoardHas:
        return BoardHas(tDraft);
    case Gate::kPartWanted:
        return PartWanted(tDraft);
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
        break;
    }
    return AirIndex(tDraft);
}

void WriteBoardLine(Draft &tDraft) {
    switch (tDraft.Does().eBoardLine) {
    case BoardLine::kNone:
        return;
    case BoardLine::kOwn:
        return LogOwnBoardLine(tDraft);
    case BoardLine::kPowerWatts:
        return LogBoardOfPower(tDraft);
    case BoardLine::kInputTemp:
        return LogBoardOfInput(tDraft);
    }
}

} // namespace oxa
