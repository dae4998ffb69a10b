// SPDX-License-Identifier: Apache-2.0
//
// What is asked of the board before a record is built, and what is said about it.
#include <cstring>

#include "sdr/sensor_engine_draft.h"

namespace oxa {

namespace {

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

const char *SensorIdText(uint8_t ucId) {
    for (const SensorIdName &t : kSensorIdNames)
        if (t.ucId == ucId)
            return t.acName;
    return "";
}

// "The board does not support adding sensor <text>.": the text may print the index, so it becomes part of the
// format.
void Refuse(const Draft &tDraft) {
    const char *const apc[] = {"The board does not support adding sensor ",
                               tDraft.tRow.HasVariant() ? tDraft.tRow.Variant() : tDraft.tRow.Name(), "."};
    char acFormat[64];
    size_t n = 0;
    for (const char *pc : apc)
        while (*pc != '\0' && n < sizeof(acFormat) - 1)
            acFormat[n++] = *pc++;
    acFormat[n] = '\0';
    if (tDraft.Has(kRefusalWarns))
        DRAFT_WARN(kModuleSdr, tDraft, acFormat, tDraft.tAt.ucIndex);
    else
        DRAFT_INFO(tDraft, acFormat, tDraft.tAt.ucIndex);
}

// The flag says that the board has the sensor, whatever the call is named; it decides also after a failed
// call.
bool BoardHas(const Draft &tDraft) {
    uint8_t ucSupportFlag = 0;
    const uint8_t ucId = tDraft.Does().ucGateId;
    const int32_t sdwRet = HAL_GetSensorNotSupportFlagBySensor(ucId, &ucSupportFlag);
    if (sdwRet != 0)
        DRAFT_WARN(kModuleQuery, tDraft,
                   "HAL_GetSensorNotSupportFlagBySensor(SENSOR_%s, &ucSupportFlag) = [%X]",
                   SensorIdText(ucId), static_cast<unsigned>(sdwRet));
    if (ucSupportFlag != 0)
        return true;
    Refuse(tDraft);
    return false;
}

bool KindWanted(const Draft &tDraft) {
    uint8_t ucSupportFlag = 1;
    if (HAL_GetSensorSupportFlagBySensor(tDraft.Does().ucGateId, &ucSupportFlag) != 0 || ucSupportFlag != 0)
        return true;
    Refuse(tDraft);
    return false;
}

bool IsIntel(const Draft &tDraft) {
    uint8_t ucCpuType = CPU_TYPE_UNKNOWN;
    const int32_t sdwRet = HAL_GetCpuType(&ucCpuType);
    if (sdwRet == 0)
        return ucCpuType == CPU_TYPE_INTEL;
    DRAFT_WARN(kModuleQuery, tDraft, "HAL_GetCpuType(&ucCpuType) = [%X]", static_cast<unsigned>(sdwRet));
    return false;
}

bool HasPch(const Draft &tDraft) {
    if (IsIntel(tDraft))
        return BoardHas(tDraft);
    DRAFT_INFO(tDraft, "The board has no pch");
    return false;
}

bool CpuIntel(const Draft &tDraft) {
    if (IsIntel(tDraft))
        return true;
    DRAFT_INFO(tDraft, "OXA_Add%sStaticSensor: CpuType != CPU_TYPE_INTEL, no %s", tDraft.tProfile.acName,
               tDraft.tRow.Name());
    return false;
}

// Reading the registers clears nothing by itself: what was read is written back.
bool RenewPowerFault(const Draft &tDraft) {
    if (!BoardHas(tDraft))
        return false;
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

bool LiquidNot2(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() != 2)
        return true;
    DRAFT_ERROR(kModuleAssert, tDraft, "assertion failed: GetLiquidCoolingFlag() != (2)");
    return false;
}

bool LiquidIs1(const Draft &tDraft) {
    if (GetLiquidCoolingFlag() == 1)
        return true;
    DRAFT_ERROR(kModuleAssert, tDraft, "assertion failed: GetLiquidCoolingFlag() == (1)");
    return false;
}

void TakeAccuracy(Draft &tDraft, uint32_t dwAccuracy) {
    tDraft.ucM = ConvertIntToUnsignedChar(static_cast<int32_t>(dwAccuracy));
}

bool FanAccuracy(Draft &tDraft) {
    if (!LiquidNot2(tDraft))
        return false;
    uint32_t dwAccuracy = 0;
    if (HAL_GetFanPowerAccuracy(&dwAccuracy) != 0)
        dwAccuracy = 0;
    TakeAccuracy(tDraft, dwAccuracy);
    if (dwAccuracy != 0)
        return true;
    DRAFT_WARN(kModuleQuery, tDraft, "get fan power accuracy failed or Accuracy is %u.", dwAccuracy);
    return false;
}

bool DiskAccuracy(Draft &tDraft) {
    uint32_t dwHDDPowerAccuracy = 0;
    if (HAL_GetHddPowerAccuracy(&dwHDDPowerAccuracy) != 0)
        dwHDDPowerAccuracy = 0;
    TakeAccuracy(tDraft, dwHDDPowerAccuracy);
    if (dwHDDPowerAccuracy != 0)
        return true;
    DRAFT_WARN(kModuleQuery, tDraft, "get hdd power accuracy failed or dwHDDPowerAccuracy = %u.\n",
               dwHDDPowerAccuracy);
    return false;
}

bool DimmAccuracy(Draft &tDraft) {
    uint32_t dwAccuracy = 0;
    if (HAL_GetDimmPowerAccuracy(&dwAccuracy) != 0) {
        OXA_DEBUG(kDebugChannel, tDraft.tProfile.acFile, "get mem power accuracy failed\n");
        return false;
    }
    TakeAccuracy(tDraft, dwAccuracy);
    return true;
}

// Reads the board id, 0 when that fails, and writes it to the log.
void LogBoardId(Draft &tDraft, const char *pcFormat, const char *pcWho) {
    const int32_t sdwRet = get_default_board_id(&tDraft.wBoardId);
    if (sdwRet < 0)
        tDraft.wBoardId = 0;
    DRAFT_INFO(tDraft, pcFormat, pcWho, sdwRet, tDraft.wBoardId);
}

// The total power of the switch board is measured on some boards only, and there only with the right card.
bool CardIs(uint8_t ucCard, uint16_t wCardId) {
    return GetCardOnlineStatus(ucCard) == 1 && GetCardBoardId(ucCard) == wCardId;
}

bool SwitchSensorsValid() {
    uint8_t ucValid = 0;
    return MW_GetSWSensorVail(&ucValid) == 0 && ucValid != 0;
}

bool MeasuresSwitchPower(uint16_t wBoardId) {
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

bool SwitchPower(Draft &tDraft) {
    LogBoardId(tDraft, "OXA_Add%sSensor for SW_Total_Power: sdwRet = %d wBoardId = 0x%x!",
               tDraft.tProfile.acName);
    if (MeasuresSwitchPower(tDraft.wBoardId))
        return true;
    Refuse(tDraft);
    return false;
}

void LogProductId(const Draft &tDraft, const char *pcFormat, const char *pcWho) {
    uint32_t dwProductId = 0;
    const int32_t sdwRet = MW_GetInnerProductId(&dwProductId);
    if (sdwRet != 0)
        dwProductId = 0;
    DRAFT_INFO(tDraft, pcFormat, pcWho, sdwRet, dwProductId);
}

bool BoardPower(Draft &tDraft) {
    LogBoardId(tDraft, "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d wBoardId = %x!", tDraft.tProfile.acName);
    LogProductId(tDraft, "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d productId = %x!",
                 tDraft.tProfile.acName);
    if (tDraft.wBoardId != kSmallBoardId)
        return true;
    Refuse(tDraft);
    return false;
}

bool ProductLine(const Draft &tDraft) {
    const Label tLabel(tDraft.tProfile, tDraft.tRow.Generator());
    LogProductId(tDraft, "%s for POWER_WATTS: sdwRet = %d productId = %x!", tLabel.ac);
    return true;
}

bool PsuInRange(const Draft &tDraft) {
    uint8_t ucPsuCnt = 0;
    if (HAL_GetPsuMaxCount(&ucPsuCnt) != 0)
        ucPsuCnt = 0;
    if (tDraft.tAt.ucIndex <= ucPsuCnt)
        return true;
    DRAFT_INFO(tDraft, "pem ucInstance large max pem num!");
    return false;
}

bool PsuStatus(const Draft &tDraft) {
    if (LoadPsuAlarmCfg() != 0)
        DRAFT_WARN(kModuleQuery, tDraft, "LoadPsuAlarmCfg failed!");
    return PsuInRange(tDraft);
}

bool DimmName(Draft &tDraft) {
    HalDimmDevInfo tInfo = {};
    if (HAL_GetDimmDevInfoByDimmNum(tDraft.tAt.ucIndex, &tInfo) == 0 &&
        HAL_GetDimmSensorNameIndex(&tInfo, tDraft.acText, sizeof(tDraft.acText)) == 0)
        return true;
    DRAFT_ERROR(kModuleSdr, tDraft, "Get mem sensor name index fail\n");
    return false;
}

bool CpuVoltage(Draft &tDraft) {
    if (HAL_GetCpuVoltSdrInfoforSensor(tDraft.Does().ucGateId, &tDraft.tVoltage) == 0)
        return true;
    DRAFT_ERROR(kModuleSdr, tDraft, "Get Cpu Voltage Sensor SDR Info fail!");
    return false;
}

bool AirIndex(const Draft &tDraft) {
    if (tDraft.tAt.ucIndex <= 3)
        return true;
    DRAFT_NAMED(OXA_INFO, kModuleSdr, tDraft, "%s switchBoardTempNum[%d] error!", tDraft.tAt.ucIndex);
    return false;
}

} // namespace

bool PassGate(Draft &tDraft) {
    switch (tDraft.Does().eGate) {
    case Gate::kNone:
        return true;
    case Gate::kBoardHas:
        return BoardHas(tDraft);
    case Gate::kKindWanted:
        return KindWanted(tDraft);
    case Gate::kPch:
        return HasPch(tDraft);
    case Gate::kPowerFault:
        return RenewPowerFault(tDraft);
    case Gate::kLiquidNot2:
        return LiquidNot2(tDraft);
    case Gate::kLiquidIs1:
        return LiquidIs1(tDraft);
    case Gate::kFanAccuracy:
        return FanAccuracy(tDraft);
    case Gate::kDimmAccuracy:
        return DimmAccuracy(tDraft);
    case Gate::kDiskAccuracy:
        return DiskAccuracy(tDraft);
    case Gate::kBoardPower:
        return BoardPower(tDraft);
    case Gate::kPsuStatus:
        return PsuStatus(tDraft);
    case Gate::kPsuInRange:
        return PsuInRange(tDraft);
    case Gate::kCpuIntel:
        return CpuIntel(tDraft);
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
    }
    return false;
}

void WriteBoardLine(Draft &tDraft) {
    if (tDraft.Does().eBoardLine == BoardLine::kOwn) {
        const Label tLabel(tDraft.tProfile, tDraft.tRow.Generator());
        LogBoardId(tDraft, "%s: sdwRet = %d wBoardId = %x!", tLabel.ac);
        return;
    }
    LogBoardId(tDraft,
               tDraft.Does().eBoardLine == BoardLine::kPowerWatts
                   ? "OXA_Add%sSensor for POWER_WATTS: sdwRet = %d wBoardId = %x!"
                   : "OXA_Add%sSensor for INPUT_TEMP: sdwRet = %d wBoardId = %x!",
               tDraft.tProfile.acName);
}

void SayKnown(const Draft &tDraft) {
    switch (tDraft.Does().eKnown) {
    case Known::kSilent:
        return;
    case Known::kInfo:
        DRAFT_NAMED(OXA_INFO, kModuleSdr, tDraft, "%s sensor already exist!");
        return;
    case Known::kInfoNewline:
        DRAFT_NAMED(OXA_INFO, kModuleSdr, tDraft, "%s sensor already exist!\n");
        return;
    case Known::kWarnNewline:
        DRAFT_NAMED(OXA_WARN, kModuleSdr, tDraft, "%s sensor already exist!\n");
        return;
    // Texts of another generator, kept as they are.
    case Known::kSwitchVoltsWarn:
        DRAFT_WARN(kModuleSdr, tDraft, "%s_GenSwitchBoardVoltsSDR sensor already exist!",
                   tDraft.tProfile.acName);
        return;
    case Known::kSwitchVolts:
        DRAFT_INFO(tDraft, "Default_GenSwitchBoardVoltsSDR sensor already exist!");
        return;
    case Known::kCpuStatus:
        DRAFT_INFO(tDraft, "%s_GenCPUStatusSDR sensor already exist!\n", tDraft.tProfile.acName);
        return;
    case Known::kFru:
        DRAFT_INFO(tDraft, "The %s already exists in fru.", tDraft.tRow.Name());
        return;
    }
}

const char *PickName(Draft &tDraft, uint8_t &ucNumber) {
    const RowView &tRow = tDraft.tRow;
    const uint8_t ucIndex = tDraft.tAt.ucIndex;
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
    return nullptr;
}

} // namespace oxa
