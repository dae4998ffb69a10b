// SPDX-License-Identifier: Apache-2.0
//
// The Pellago profile.
#include "profiles/disk_names.h"
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Pellago", .acFile = "gen_specific_sensor_pellago.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kCpuDomains,
                Step::kPsus, Step::kFans, Step::kDisks, Step::kOcp, Step::kPcie,
                Step::kSwitchCard, Step::kSwitchAir}};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
        Row(kCpuPower, "GenCPUPowerSDR", "CPU_Power"),
        Row(kMemPower, "GenMEMPowerSDR", "MEM_Power"),
        Row(kFanPower, "GenFANPowerSDR", "FAN_Power"),
        Row(kDiskPower, "GenHDDPowerSDR", "HDD_Power"),
        Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kEventLog, "GenSELStatusSDR", "SEL_Status"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
        Row(kSystemRestart, "GenSysRestartSDR", "Sys_Restart"),
        Row(kOsStop, "GenOSStopSDR", "OS_Stop"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
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
        Row(kCpuSinglePower, "GenCPUSinglePowerSDR", "CPU%d_Power")),
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuPower, "GenPSUPowerSDR", "PSU%d_Power")),
    kCommonPsuRedundancy,
    InGroup(Group::kFan,
        Row(kFanStatus, "", "FAN%d_Status", Announced("Fan status"))),
    InGroup(Group::kDisk,
        Row(kDiskStatus, "GenDiskStatusSDR", "Disk%u_Status")),
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
                                  .bSystemInstance = false,
                                  .acNullText = "%s failed! The input parameter pucSDRRec is null."};

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Pellago_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Pellago_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Pellago_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Pellago_GenHDDPowerSDR)
OXA_STATIC_GENERATOR(Pellago_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Pellago_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Pellago_GenSELStatusSDR)
OXA_STATIC_GENERATOR(Pellago_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Pellago_GenSysRestartSDR)
OXA_STATIC_GENERATOR(Pellago_GenOSStopSDR)
OXA_STATIC_GENERATOR(Pellago_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Pellago_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Pellago_GenINLETTEMPSDR)
OXA_STATIC_GENERATOR(Pellago_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Pellago_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Pellago_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Pellago_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Pellago_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Pellago_GenLeakageSDR)
OXA_STATIC_GENERATOR(Pellago_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Pellago_GenPowerFaultSDR)

OXA_INDEXED_GENERATOR(Pellago_GenPSUPowerSDR)
OXA_INDEXED_GENERATOR(Pellago_GenDiskStatusSDR)

OXA_INDEX_LAST_GENERATOR(Pellago_GenCPUSinglePowerSDR)

OXA_INDEXED_GENERATOR(Pellago_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Pellago_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Pellago_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Pellago_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Pellago_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Pellago_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Pellago_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Pellago_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Pellago_GenSwitchBoardInOROutletTempSDR)

int32_t Pellago_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return oxa::RenameDisk(kProfile.tBase.tHead.tName, kDiskNames, pucSDRRec, ucSlotOffset);
}

void OXA_AddPellagoStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenPellagoStaticSDRTab, ucPellagoStaticSDRCnt});
}
