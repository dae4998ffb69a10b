// SPDX-License-Identifier: Apache-2.0
//
// The Astrel profile.
#include "profiles/disk_names.h"
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Astrel", .acFile = "gen_specific_sensor_astrel.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                Step::kPsus, Step::kFans, Step::kDisks, Step::kOcp, Step::kPcie,
                Step::kSwitchCard, Step::kSwitchAir}};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
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
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault")),
    kCommonCpus,
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuPower, "GenPSUPowerSDR", "PSU%d_Power"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status")),
    kCommonPsuRedundancy,
    InGroup(Group::kFan,
        Row(kFanStatus, "", "Fan%d_Status", Announced("Fan status"))),
    InGroup(Group::kDisk,
        Row(kDiskStatus, "GenHDDStatusSDR", "Disk%u_Status")),
    InGroup(Group::kNvme,
        Row(kNvmeTemp, "", "NVME_TEMP_%02u")),
    kCommonDiskGroups,
    kCommonOcps,
    kCommonOcpErrors,
    kCommonPcie,
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir);
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

constexpr DiskNames kDiskNames = {.acStatus = "Disk%d_Status",
                                  .acTemp = "Disk%d_Temp",
                                  .bSystemInstance = true,
                                  .acNullText = "%s failed! pucSDRRec == NULL."};

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Astrel_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Astrel_GenCPUTotalPowerSDR)
OXA_STATIC_GENERATOR(Astrel_GenMEMTotalPowerSDR)
OXA_STATIC_GENERATOR(Astrel_GenFanTotalPowerSDR)
OXA_STATIC_GENERATOR(Astrel_GenHDDTotalPowerSDR)
OXA_STATIC_GENERATOR(Astrel_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Astrel_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Astrel_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Astrel_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Astrel_GenSysRestartSDR)
OXA_STATIC_GENERATOR(Astrel_GenBMCBootUpSDR)
OXA_STATIC_GENERATOR(Astrel_GenOSStopSDR)
OXA_STATIC_GENERATOR(Astrel_GenINLETTEMPSDR)
OXA_STATIC_GENERATOR(Astrel_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Astrel_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Astrel_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Astrel_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Astrel_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Astrel_GenLeakageSDR)
OXA_STATIC_GENERATOR(Astrel_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Astrel_GenPowerFaultSDR)

OXA_INDEXED_GENERATOR(Astrel_GenInputVoltsSDR)
OXA_INDEXED_GENERATOR(Astrel_GenOutputVoltsSDR)
OXA_INDEXED_GENERATOR(Astrel_GenPSUPowerSDR)
OXA_INDEXED_GENERATOR(Astrel_GenPSUStatusSDR)
OXA_INDEXED_GENERATOR(Astrel_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Astrel_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Astrel_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Astrel_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Astrel_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Astrel_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Astrel_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Astrel_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Astrel_GenSwitchBoardInOROutletTempSDR)

int32_t Astrel_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return oxa::RenameDisk(kProfile.tBase.tHead.tName, kDiskNames, pucSDRRec, ucSlotOffset);
}

void OXA_AddAstrelStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenAstrelStaticSDRTab, ucAstrelStaticSDRCnt});
}
