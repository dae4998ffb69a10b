// SPDX-License-Identifier: Apache-2.0
//
// The Durnow profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Durnow", .acFile = "gen_specific_sensor_durnow.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                Step::kPsus, Step::kFans, Step::kDisks, Step::kOcp, Step::kPcie,
                Step::kSwitchCard, Step::kSwitchAir}};

constexpr auto kRows = ProfileRows(
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
    kCommonCpus,
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuInputPower, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PSU%d_Pout")),
    kCommonPsuRedundancy,
    InGroup(Group::kFan,
        Row(kFanStatus, "", "FAN_STATUS_%02d", Announced("Fan status"))),
    kCommonDisks,
    kCommonNvmes,
    kCommonDiskGroups,
    kCommonOcps,
    kCommonOcpErrors,
    kCommonPcie,
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir);
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

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
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenDurnowStaticSDRTab, ucDurnowStaticSDRCnt});
}
