// SPDX-License-Identifier: Apache-2.0
//
// The Lumora profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr auto kProfile = MakeProfile(
    {.tName = {.acName = "Lumora", .acFile = "gen_specific_sensor_lumora.c"},
     .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                 Step::kPsus, Step::kDisks, Step::kOcp, Step::kSwitchCard, Step::kSwitchAir,
                 Step::kLanSwitch}},

    InGroup(Group::kTable,
        Row(kInletTemp, "GenInletTempSDR", "Inlet_Temp"),
        Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kTotalPower, "GenTotalPowerSDR", "Total_Power"),
        Row(kCpuPowerOther, "GenCPUPowerSDR", "CPU_Power"),
        Row(kMemPowerOther, "GenMEMPowerSDR", "MEM_Power"),
        Row(kFanPowerOther, "GenFANPowerSDR", "FAN_Power"),
        Row(kDiskPowerOther, "GenHDDPowerSDR", "HDD_Power"),
        Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
        Row(kEnvHumidity, "GenENVHUMISDR", "Env_Humi"),
        Row(kUidButton, "GenUIDButtonSDR", "UID_Button"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kSystemBoot, "GenSysBootSDR", "Sys_Boot"),
        Row(kAcpiState, "GenACPIStateSDR", "ACPI_State"),
        Row(kOsBoot, "GenOSBootSDR", "OS_Boot"),
        Row(kBmcBootUp, "GenBMCBootUpSDR", "BMC_Boot_Up"),
        Row(kEventLog, "GenEventLogSDR", "Event_Log"),
        Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
        Row(kManagementEngine, "GenMESDR", "ME"),
        Row(kLeakage, "GenLeakageSDR", "Leakage"),
        Row(kPcieAggregate, "GenPcieStatusSDR", "PCIe_Status"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault"),
        Row(kBootError, "GenBootErrorSDR", "Boot_Error"),
        Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
        Row(kBiosBootUp, "GenBiosBootUpSDR", "BIOS_Boot_Up")),
    InGroup(Group::kCpu,
        Row(kCpuTemp, "GenCPUTempSDR", "CPU%d_Temp", OnSmallBoard("CPU_Temp")),
        Row(kCpuVrTemp, "GenCPUVRTempSDR", "CPU%d_VR_Temp", Refused("CPUx_VR_Temp")),
        Row(kCpuCoreVolts, "GenCPUCOREVoltageSDR", "CPU%d_Volts", Refused("CPUx_Volts")),
        Row(kCpuStatus, "GenCPUStatusSDR", "CPU%d_Status", OnSmallBoard("CPU_Status"))),
    InGroup(Group::kDimm,
        Row(kDimmTemp, "GenDIMMTempSDR", "DIMM%s_Temp"),
        Row(kDimmStatus, "GenMEMStatusSDR", "DIMM%s_Status")),
    InGroup(Group::kDimmGroup,
        Row(kDimmGroupTemp, "", "DIMMG%d_Temp", Announced("dimm group"))),
    InGroup(Group::kCpuDomain,
        Row(kCpu0Domain0Volts, "GenCPU0D0N2SDR", "CPU%d_D0_N2", OnSmallBoard("CPU_Volts")),
        Row(kCpu0Domain1Volts, "GenCPU0D1N2SDR", "CPU%d_D1_N2"),
        Row(kCpu1Domain0Volts, "GenCPU1D0N2SDR", "CPU%d_D0_N2"),
        Row(kCpu1Domain1Volts, "GenCPU1D1N2SDR", "CPU%d_D1_N2")),
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuInputPowerOther, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPowerOther, "GenPSUPOutSDR", "PSU%d_Pout")),
    InGroup(Group::kPsuRedundancy,
        Row(kPsuRedundancy, "GenPSURedundantSDR", "PSU_Redundant", Second("PSU_Redundant_M"))),
    InGroup(Group::kDisk,
        Row(kDiskStatus, "GenHDDStatusSDR", "HDD%u_Status")),
    InGroup(Group::kNvme,
        Row(kNvmeTemp, "", "NVME%u_Temp")),
    InGroup(Group::kDiskGroup,
        Row(kDiskGroupTemp, "", "DISKG%d_Temp")),
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "OCP%d_Temp", Announced("OCP sdr"))),
    InGroup(Group::kOcpError,
        Row(kOcpError, "", "OCP%d_Err")),
    InGroup(Group::kSwitchPower,
        Row(kSwitchVolts, "GenSwitchBoardVoltsSDR", "SW%d_Volt"),
        Row(kSwitchCurrent, "GenSwitchBoardCurrentSDR", "SW%d_Current")),
    InGroup(Group::kSwitchTemp,
        Row(kSwitchTemp, "GenSwitchBoardTempSDR", "SW%d_Temp")),
    InGroup(Group::kSwitchAir,
        Row(kSwitchAirTemp, "GenSwitchBoardInOROutletTempSDR", "SW_Input_Temp_0%c", Second("SW_Output_T_0%c"))),
    InGroup(Group::kLanSwitch,
        Row(kLanSwitchTemp, "GenLanSwitchBoardTempSDR", "LAN_SW_Temp")));
// clang-format on

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Lumora_GenInletTempSDR)
OXA_STATIC_GENERATOR(Lumora_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Lumora_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Lumora_GenTotalPowerSDR)
OXA_STATIC_GENERATOR(Lumora_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Lumora_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Lumora_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Lumora_GenHDDPowerSDR)
OXA_STATIC_GENERATOR(Lumora_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Lumora_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Lumora_GenUIDButtonSDR)
OXA_STATIC_GENERATOR(Lumora_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Lumora_GenSysBootSDR)
OXA_STATIC_GENERATOR(Lumora_GenACPIStateSDR)
OXA_STATIC_GENERATOR(Lumora_GenOSBootSDR)
OXA_STATIC_GENERATOR(Lumora_GenBMCBootUpSDR)
OXA_STATIC_GENERATOR(Lumora_GenEventLogSDR)
OXA_STATIC_GENERATOR(Lumora_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Lumora_GenMESDR)
OXA_STATIC_GENERATOR(Lumora_GenLeakageSDR)
OXA_STATIC_GENERATOR(Lumora_GenPcieStatusSDR)
OXA_STATIC_GENERATOR(Lumora_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Lumora_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Lumora_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Lumora_GenPowerFaultSDR)
OXA_STATIC_GENERATOR(Lumora_GenBootErrorSDR)
OXA_STATIC_GENERATOR(Lumora_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Lumora_GenBiosBootUpSDR)
OXA_STATIC_GENERATOR(Lumora_GenLanSwitchBoardTempSDR)

OXA_INDEXED_GENERATOR(Lumora_GenPSUPInSDR)
OXA_INDEXED_GENERATOR(Lumora_GenPSUPOutSDR)
OXA_INDEXED_GENERATOR(Lumora_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Lumora_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Lumora_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Lumora_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Lumora_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Lumora_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Lumora_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Lumora_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Lumora_GenSwitchBoardInOROutletTempSDR)

void OXA_AddLumoraStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    const oxa::StaticTables tTables = {.ptTable = atGenLumoraStaticSDRTab,
                                       .ucTableCnt = ucLumoraStaticSDRCnt};
    oxa::RunStaticPass(kProfile.tHead, kProfile.tRows.auc, tTables, pucSDRRec, ptDEVTab, pucSensorCnt);
}
