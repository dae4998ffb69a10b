// SPDX-License-Identifier: Apache-2.0
//
// The Lumora profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Lumora", .acFile = "gen_specific_sensor_lumora.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                Step::kPsus, Step::kDisks, Step::kOcp, Step::kSwitchCard, Step::kSwitchAir,
                Step::kLanSwitch}};

constexpr auto kRows = ProfileRows(
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
    kCommonCpus,
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuInputPowerOther, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPowerOther, "GenPSUPOutSDR", "PSU%d_Pout")),
    kCommonPsuRedundancy,
    kCommonDisks,
    kCommonNvmes,
    kCommonDiskGroups,
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "OCP%d_Temp", Announced("OCP sdr"))),
    kCommonOcpErrors,
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir,
    InGroup(Group::kLanSwitch,
        Row(kLanSwitchTemp, "GenLanSwitchBoardTempSDR", "LAN_SW_Temp")));
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

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
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenLumoraStaticSDRTab, ucLumoraStaticSDRCnt});
}
