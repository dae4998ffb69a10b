// SPDX-License-Identifier: Apache-2.0
//
// Rows that several profiles share, kept once.  A profile that has one of these groups names it; a table row
// of a profile that stands here word by word is not stored again with the profile.
#ifndef OXA_PROFILES_SHARED_ROWS_H
#define OXA_PROFILES_SHARED_ROWS_H

#include "profiles/profile_rows.h"
#include "sdr/sensor_row_stored.h"

namespace oxa {

// A row a line.
// clang-format off
inline constexpr auto kCommonCpus = InGroup(Group::kCpu,
    Row(kCpuTemp, "GenCPUTempSDR", "CPU%d_Temp", OnSmallBoard("CPU_Temp")),
    Row(kCpuVrTemp, "GenCPUVRTempSDR", "CPU%d_VR_Temp", Refused("CPUx_VR_Temp")),
    Row(kCpuCoreVolts, "GenCPUCOREVoltageSDR", "CPU%d_Volts", Refused("CPUx_Volts")),
    Row(kCpuStatus, "GenCPUStatusSDR", "CPU%d_Status", OnSmallBoard("CPU_Status")));
inline constexpr auto kCommonCpuDomains = InGroup(Group::kCpuDomain,
    Row(kCpu0Domain0Volts, "GenCPU0D0N2SDR", "CPU%d_D0_N2", OnSmallBoard("CPU_Volts")),
    Row(kCpu0Domain1Volts, "GenCPU0D1N2SDR", "CPU%d_D1_N2"),
    Row(kCpu1Domain0Volts, "GenCPU1D0N2SDR", "CPU%d_D0_N2"),
    Row(kCpu1Domain1Volts, "GenCPU1D1N2SDR", "CPU%d_D1_N2"));
inline constexpr auto kCommonDimms = InGroup(Group::kDimm,
    Row(kDimmTemp, "GenDIMMTempSDR", "DIMM%s_Temp"),
    Row(kDimmStatus, "GenMEMStatusSDR", "DIMM%s_Status"));
inline constexpr auto kCommonDimmGroups = InGroup(Group::kDimmGroup,
    Row(kDimmGroupTemp, "", "DIMMG%d_Temp", Announced("dimm group")));
inline constexpr auto kCommonPsuRedundancy = InGroup(Group::kPsuRedundancy,
    Row(kPsuRedundancy, "GenPSURedundantSDR", "PSU_Redundant", Second("PSU_Redundant_M")));
inline constexpr auto kCommonDisks = InGroup(Group::kDisk,
    Row(kDiskStatus, "GenHDDStatusSDR", "HDD%u_Status"));
inline constexpr auto kCommonNvmes = InGroup(Group::kNvme,
    Row(kNvmeTemp, "", "NVME%u_Temp"));
inline constexpr auto kCommonDiskGroups = InGroup(Group::kDiskGroup,
    Row(kDiskGroupTemp, "", "DISKG%d_Temp"));
inline constexpr auto kCommonOcps = InGroup(Group::kOcp,
    Row(kOcpTemp, "", "OCP%d_Temp"));
inline constexpr auto kCommonOcpErrors = InGroup(Group::kOcpError,
    Row(kOcpError, "", "OCP%d_Err"));
inline constexpr auto kCommonPcie = InGroup(Group::kPcie,
    Row(kPcieStatus, "GenPCIeStatusSDR", "PCIE%d_Status"));
inline constexpr auto kCommonSwitchPower = InGroup(Group::kSwitchPower,
    Row(kSwitchVolts, "GenSwitchBoardVoltsSDR", "SW%d_Volt"),
    Row(kSwitchCurrent, "GenSwitchBoardCurrentSDR", "SW%d_Current"));
inline constexpr auto kCommonSwitchTemps = InGroup(Group::kSwitchTemp,
    Row(kSwitchTemp, "GenSwitchBoardTempSDR", "SW%d_Temp"));
inline constexpr auto kCommonSwitchAir = InGroup(Group::kSwitchAir,
    Row(kSwitchAirTemp, "GenSwitchBoardInOROutletTempSDR", "SW_Input_Temp_0%c", Second("SW_Output_T_0%c")));

// Of the static tables.
inline constexpr auto kCommonTable = InGroup(Group::kTable,
    Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
    Row(kCpuPower, "GenCPUTotalPowerSDR", "CPU_Total_Power"),
    Row(kMemPower, "GenMEMTotalPowerSDR", "MEM_Total_Power"),
    Row(kFanPower, "GenFanTotalPowerSDR", "Fan_Total_Power"),
    Row(kDiskPower, "GenHDDTotalPowerSDR", "HDD_Total_Power"),
    Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
    Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
    Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
    Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
    Row(kSystemRestart, "GenSysRestartSDR", "Sys_Restart"),
    Row(kBmcBootUp, "GenBMCBootUpSDR", "BMC_Boot_Up"),
    Row(kOsStop, "GenOSStopSDR", "OS_Stop"),
    Row(kInletTemp, "GenINLETTEMPSDR", "Inlet_Temp"),
    Row(kEnvHumidity, "GenENVHUMISDR", "Env_Humi"),
    Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
    Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
    Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
    Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
    Row(kLeakage, "GenLeakageSDR", "Leakage"),
    Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
    Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault"),
    Row(kFanPower, "GenFANPowerSDR", "FAN_Power"),
    Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
    Row(kCpuPower, "GenCPUPowerSDR", "CPU_Power"),
    Row(kMemPower, "GenMEMPowerSDR", "MEM_Power"),
    Row(kDiskPower, "GenHDDPowerSDR", "HDD_Power"),
    Row(kBiosBootUp, "GenBiosBootUpSDR", "BIOS_Boot_Up"),
    Row(kOsBoot, "GenOSBootSDR", "OS_Boot"),
    Row(kFirmwareUpdate, "GenFWUpdateSDR", "FW_Update"),
    Row(kEventLog, "GenSELStatusSDR", "SEL_Status"),
    Row(kUidButton, "GenUIDButtonSDR", "UID_Button"),
    Row(kEventLog, "GenEventLogSDR", "Event_Log"),
    Row(kBootError, "GenBootErrorSDR", "Boot_Error"),
    Row(kManagementEngine, "GenMESDR", "ME"));
// clang-format on

inline constexpr Rows<2> kEndOfRows = {};
inline constexpr auto kSharedRows =
    Join(kCommonTable, kCommonCpus, kCommonCpuDomains, kCommonDimms, kCommonDimmGroups, kCommonPsuRedundancy,
         kCommonDisks, kCommonNvmes, kCommonDiskGroups, kCommonOcps, kCommonOcpErrors, kCommonPcie,
         kCommonSwitchPower, kCommonSwitchTemps, kCommonSwitchAir, kEndOfRows);

// The same as they are stored.  (An inline constant would be reached through the offset table.)
inline constexpr auto kSharedRowsStored = StoreRows<StoredSizeOf(kSharedRows)>(kSharedRows);
[[gnu::visibility("hidden")]] extern const Rows<sizeof(kSharedRowsStored.auc)> kSharedRowData;

} // namespace oxa
#endif
