// SPDX-License-Identifier: Apache-2.0
//
// What each sensor looks like, once, whether several profiles have it or one.  A profile's rows give it a
// name.
#ifndef OXA_SDR_SENSOR_KINDS_H
#define OXA_SDR_SENSOR_KINDS_H

#include "sdr/sensor_row.h"

namespace oxa {

enum Kind : uint8_t {
    // air, temperatures and rails of the board
    kInletTemp,
    kOutletTemp,
    kEnvHumidity,
    kPchTemp,
    kPdbTemp,
    kMiddlePdbTemp,
    kRail12V,
    kRail12VStandby,
    // power
    kBoardPower,
    kCpuPower,
    kMemPower,
    kDiskPower,
    kFanPower,
    // per CPU
    kCpuProchot,
    kCpuTemp,
    kCpuTjmax,
    kCpuTcontrol,
    kCpuDtsTemp,
    kCpuVrTemp,
    kCpuCoreVolts,
    kCpuStatus,
    kCpu0Domain0Volts,
    kCpu0Domain1Volts,
    kCpu1Domain0Volts,
    kCpu1Domain1Volts,
    // per DIMM
    kDimmTemp,
    kDimmStatus,
    kDimmGroupTemp,
    // per PSU
    kPsuInputVolts,
    kPsuOutputVolts,
    kPsuInputCurrent,
    kPsuOutputCurrent,
    kPsuInputPower,
    kPsuOutputPower,
    kPsuPower,
    kPsuTemp,
    kPsuStatus,
    kPsuSupply,
    kPsuFanStatus,
    kPsuRedundancy,
    // fans and leaks
    kFanStatus,
    kFanStatusHex,
    kFanRedundancy,
    kLeakage,
    // disks and cards
    kDiskStatus,
    kNvmeTemp,
    kDiskGroupTemp,
    kDiskMaxTemp,
    kOcpTemp,
    kOcpError,
    kPcieStatus,
    kMotherBoard,
    // switch board
    kSwitchVolts,
    kSwitchCurrent,
    kSwitchTemp,
    kSwitchAirTemp,
    kSwitchChipTemp,
    kSwitchGroupTemp,
    // discrete sensors of the system
    kPowerButton,
    kUidButton,
    kEventLog,
    kOsBoot,
    kAcpiState,
    kSystemRestart,
    kSystemBoot,
    kBmcBootUp,
    kOsStop,
    kIntrusion,
    kLanLeashLost,
    kManagementEngine,
    kNtpSyncFail,
    kPowerFault,
    kFirmwareProgress,
    kBiosBootUp,
    kSystemEvent,
    kCriticalInterrupt,
    kWatchdog2,
    kBootError,
    kSystemHealth,
    kFirmwareUpdate,
    kBmcStatus,
    kI2cStatus,
    kPcieAggregate,
    kSystemShutdown,
    // power readings that report as other units
    kCpuPowerOther,
    kMemPowerOther,
    kDiskPowerOther,
    kFanPowerOther,
    kPsuInputPowerOther,
    kPsuOutputPowerOther,
    // sensors of single profiles
    kCpuSinglePower,
    kCpuVcoreCurrent,
    kCpuVcore1Current,
    kCpuVsocCurrent,
    kCpuDdrVdd1Current,
    kCpuVrPower,
    kDimmVrPower,
    kMemoryHot,
    kTotalPower,
    kLanSwitchTemp,
    kPowerModuleTemp,
    kUbbRetimerTemp,
    kRail54V,
    kGpuRail54V,
    kPdbBoardPower,
    kNicPower,
    kGpuBoardPower,
    kSwitchTotalPower,
    kRackInletTemp,
    kRackPower,
    kFrontBackplane12V,
    kRearBackplane12V,
    kFrontBackplaneTemp,
    kRearBackplaneTemp,
    // liquid-cooling units, by what is read: the Default model ...
    kCduInletTemp,
    kCduDewTemp,
    kCduSupplyTemp,
    kCduDiffTemp,
    kCduHumidity,
    kCduFanSetting,
    kCduSupplyPressure,
    kCduFlowRate,
    kCduFanSpeed,
    kCduReturnTemp,
    kCduReturnPressure,
    kCduDiffPressure,
    kCduConductivity,
    // ... and the Kestrin one
    kCdu2InletTemp,
    kCdu2CoolantInTemp,
    kCdu2CoolantOutTemp,
    kCdu2FlowRate,
    kCdu2SupplyPressure,
    kCdu2ReturnPressure,
    kCdu2OutputPower,
    kCdu2FanPower,
    kCdu2PumpPower,
    kCdu2FanSpeed,
    kCdu2InputVolts,
    kCdu2OutputVolts,
    kCdu2OutputCurrent,
    kCdu2Leakage,
    kCdu2Level,
    kCdu2Flow,
    kCdu2PressureHigh,
    kCdu2PressureLow,
    kKindCount
};

// All sensors as they are stored, and the heads of their records.
inline constexpr size_t kHeadBytes = 2480; // sensor_kinds.cpp works it out and compares
struct KindTable {
    StoredKind at[kKindCount];
    uint8_t aucHeads[kHeadBytes];
};
[[gnu::visibility("hidden")]] extern const KindTable kSensorKinds;

} // namespace oxa
#endif
