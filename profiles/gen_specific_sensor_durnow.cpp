// SPDX-License-Identifier: Apache-2.0
//
// The Durnow profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr auto kProfile = MakeProfile(
    {.tName = {.acName = "Durnow", .acFile = "gen_specific_sensor_durnow.c"},
     .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                 Step::kPsus, Step::kFans, Step::kDisks, Step::kOcp, Step::kPcie,
                 Step::kSwitchCard, Step::kSwitchAir}},

    InGroup(Group::kTable,
        Row(kDiskPower, "GenHDDTotalPowerSDR", "HDD_Total_Power"),
        Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
        Row(kCpuPower, "GenCPUTotalPowerSDR", "CPU_Total_Power"),
        Row(kFanPower, "GenFANPowerSDR", "FAN_Power"),
        Row(kMemPower, "GenMEMTotalPowerSDR", "MEM_Total_Power"),
        Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
        Row(kSystemRestart, "GenSysRestartSDR", "Sys_Restart"),
        Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
        Row(kInletTemp, "GenINPUTTEMPSDR", "Input_Temp"),
        Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
        Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
        Row(kLeakage, "GenLeakageSDR", "Leakage"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault")),
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
        Row(kPsuInputPower, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PSU%d_Pout")),
    InGroup(Group::kPsuRedundancy,
        Row(kPsuRedundancy, "GenPSURedundantSDR", "PSU_Redundant", Second("PSU_Redundant_M"))),
    InGroup(Group::kFan,
        Row(kFanStatus, "", "FAN_STATUS_%02d", Announced("Fan status"))),
    InGroup(Group::kDisk,
        Row(kDiskStatus, "GenHDDStatusSDR", "HDD%u_Status")),
    InGroup(Group::kNvme,
        Row(kNvmeTemp, "", "NVME%u_Temp")),
    InGroup(Group::kDiskGroup,
        Row(kDiskGroupTemp, "", "DISKG%d_Temp")),
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "OCP%d_Temp")),
    InGroup(Group::kOcpError,
        Row(kOcpError, "", "OCP%d_Err")),
    InGroup(Group::kPcie,
        Row(kPcieStatus, "GenPCIeStatusSDR", "PCIE%d_Status")),
    InGroup(Group::kSwitchPower,
        Row(kSwitchVolts, "GenSwitchBoardVoltsSDR", "SW%d_Volt"),
        Row(kSwitchCurrent, "GenSwitchBoardCurrentSDR", "SW%d_Current")),
    InGroup(Group::kSwitchTemp,
        Row(kSwitchTemp, "GenSwitchBoardTempSDR", "SW%d_Temp")),
    InGroup(Group::kSwitchAir,
        Row(kSwitchAirTemp, "GenSwitchBoardInOROutletTempSDR", "SW_Input_Temp_0%c", Second("SW_Output_T_0%c"))));
// clang-format on

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Durnow_GenHDDTotalPowerSDR)
OXA_STATIC_GENERATOR(Durnow_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Durnow_GenCPUTotalPowerSDR)
OXA_STATIC_GENERATOR(Durnow_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Durnow_GenMEMTotalPowerSDR)
OXA_STATIC_GENERATOR(Durnow_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Durnow_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Durnow_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Durnow_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Durnow_GenSysRestartSDR)
OXA_STATIC_GENERATOR(Durnow_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Durnow_GenINPUTTEMPSDR)
OXA_STATIC_GENERATOR(Durnow_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Durnow_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Durnow_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Durnow_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Durnow_GenLeakageSDR)
OXA_STATIC_GENERATOR(Durnow_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Durnow_GenPowerFaultSDR)

OXA_INDEXED_GENERATOR(Durnow_GenInputVoltsSDR)
OXA_INDEXED_GENERATOR(Durnow_GenOutputVoltsSDR)
OXA_INDEXED_GENERATOR(Durnow_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Durnow_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Durnow_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Durnow_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Durnow_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Durnow_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Durnow_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Durnow_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Durnow_GenSwitchBoardInOROutletTempSDR)

void OXA_AddDurnowStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    const oxa::StaticTables tTables = {.ptTable = atGenDurnowStaticSDRTab,
                                       .ucTableCnt = ucDurnowStaticSDRCnt};
    oxa::RunStaticPass(kProfile.tHead, kProfile.tRows.auc, tTables, pucSDRRec, ptDEVTab, pucSensorCnt);
}
