// SPDX-License-Identifier: Apache-2.0
//
// The Vorana profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Vorana", .acFile = "gen_specific_sensor_vorana.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                Step::kPsus, Step::kDisks, Step::kOcp, Step::kPcie, Step::kSwitchCard,
                Step::kSwitchAir}};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
        Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
        Row(kCpuPower, "GenCPUPowerSDR", "CPU_Power"),
        Row(kMemPower, "GenMEMPowerSDR", "MEM_Power"),
        Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
        Row(kFanPower, "GenFANPowerSDR", "FAN_Power"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kUidButton, "GenUIDButtonSDR", "UID_Button"),
        Row(kBmcBootUp, "GenBMCBootUpSDR", "BMC_Boot_Up"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kEventLog, "GenSELStatusSDR", "SEL_Status"),
        Row(kAcpiState, "GenACPIPWRSDR", "ACPI_PWR"),
        Row(kSystemRestart, "GenSysRestartSDR", "Sys_Restart"),
        Row(kSystemShutdown, "GenSysShutdownSDR", "Sys_Shutdown"),
        Row(kDiskPower, "GenHDDTotalPowerSDR", "HDD_Total_Power"),
        Row(kSystemHealth, "GenSysHealthSDR", "Sys_Health"),
        Row(kInletTemp, "GenINLETTEMPSDR", "Inlet_Temp"),
        Row(kEnvHumidity, "GenENVHUMISDR", "Env_Humi"),
        Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
        Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
        Row(kLeakage, "GenLeakageSDR", "Leakage"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault")),
    kCommonCpus,
    InGroup(Group::kCpuMore,
        Row(kCpuDtsTemp, "GenCPUDTSTempSDR", "CPU%d_DTS_Temp"),
        Row(kCpuVcoreCurrent, "GenCPUVcoreCurrentSDR", "CPU%d_Vcore_A", Refused("CPUx_Vcore_A")),
        Row(kCpuVcore1Current, "GenCPUVcore1CurrentSDR", "CPU%d_Vcore1_A", Refused("CPUx_Vcore1_A")),
        Row(kCpuVsocCurrent, "GenCPUVSOCCurrentSDR", "CPU%d_VSOC_A", Refused("CPUx_VSOC_A")),
        Row(kCpuDdrVdd1Current, "GenCPUDDRVdd1CurrentSDR", TwoDigits("CPU%d_DDR_VDD1_A"), Refused("CPUx_DDR_VDD1_A"))),
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenPSUVinSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenPSUVoutSDR", "PSU%d_Vout"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuInputPower, "GenPSUPinSDR", "PSU%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPoutSDR", "PSU%d_Pout")),
    kCommonPsuRedundancy,
    kCommonDisks,
    kCommonNvmes,
    kCommonDiskGroups,
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "NIC%d_Temp", Announced("nic temp"))),
    InGroup(Group::kOcpError,
        Row(kOcpError, "", "NIC%d_Err")),
    kCommonPcie,
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir);
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Vorana_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Vorana_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Vorana_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Vorana_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Vorana_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Vorana_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Vorana_GenUIDButtonSDR)
OXA_STATIC_GENERATOR(Vorana_GenBMCBootUpSDR)
OXA_STATIC_GENERATOR(Vorana_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Vorana_GenSELStatusSDR)
OXA_STATIC_GENERATOR(Vorana_GenACPIPWRSDR)
OXA_STATIC_GENERATOR(Vorana_GenSysRestartSDR)
OXA_STATIC_GENERATOR(Vorana_GenSysShutdownSDR)
OXA_STATIC_GENERATOR(Vorana_GenHDDTotalPowerSDR)
OXA_STATIC_GENERATOR(Vorana_GenSysHealthSDR)
OXA_STATIC_GENERATOR(Vorana_GenINLETTEMPSDR)
OXA_STATIC_GENERATOR(Vorana_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Vorana_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Vorana_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Vorana_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Vorana_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Vorana_GenLeakageSDR)
OXA_STATIC_GENERATOR(Vorana_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Vorana_GenPowerFaultSDR)

OXA_INDEXED_GENERATOR(Vorana_GenCPUDTSTempSDR)
OXA_INDEXED_GENERATOR(Vorana_GenPSUPinSDR)
OXA_INDEXED_GENERATOR(Vorana_GenPSUPoutSDR)
OXA_INDEXED_GENERATOR(Vorana_GenPSUVinSDR)
OXA_INDEXED_GENERATOR(Vorana_GenPSUVoutSDR)
OXA_INDEXED_GENERATOR(Vorana_GenPSUStatusSDR)

OXA_INDEX_LAST_GENERATOR(Vorana_GenCPUVcoreCurrentSDR)
OXA_INDEX_LAST_GENERATOR(Vorana_GenCPUVcore1CurrentSDR)
OXA_INDEX_LAST_GENERATOR(Vorana_GenCPUVSOCCurrentSDR)
OXA_INDEX_LAST_GENERATOR(Vorana_GenCPUDDRVdd1CurrentSDR)

OXA_INDEXED_GENERATOR(Vorana_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Vorana_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Vorana_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Vorana_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Vorana_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Vorana_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Vorana_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Vorana_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Vorana_GenSwitchBoardInOROutletTempSDR)

void OXA_AddVoranaStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenVoranaStaticSDRTab, ucVoranaStaticSDRCnt});
}
