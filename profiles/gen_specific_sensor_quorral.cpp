// SPDX-License-Identifier: Apache-2.0
//
// The Quorral profile.
#include "profiles/disk_names.h"
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Quorral", .acFile = "gen_specific_sensor_quorral.c"},
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
        Row(kBmcBootUp, "GenBMCBootSDR", "BMC_Boot"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kEventLog, "GenEventLogSDR", "Event_Log"),
        Row(kSystemBoot, "GenSYSBootSDR", "SYS_Boot"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
        Row(kUidButton, "GenUIDButtonSDR", "UID_Button"),
        Row(kPcieAggregate, "GenPCIeStatusSDR", "PCIe_Status"),
        Row(kFirmwareProgress, "GenSYSProgressSDR", "SYS_Progress"),
        Row(kOsBoot, "GenOSBootSDR", "OS_Boot"),
        Row(kBiosBootUp, "GenBiosBootUpSDR", "BIOS_Boot_Up"),
        Row(kManagementEngine, "GenMESDR", "ME"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kDiskMaxTemp, "GenHDDTempSDR", "HDD_Temp"),
        Row(kLeakage, "GenLeakageSDR", "Leakage"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault"),
        Row(kFirmwareUpdate, "GenFWUpdateSDR", "FW_Update"),
        Row(kInletTemp, "GenINLETTEMPSDR", "Inlet_Temp"),
        Row(kEnvHumidity, "GenENVHUMISDR", "Env_Humi"),
        Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
        Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail")),
    InGroup(Group::kCpu,
        Row(kCpuTemp, "GenCPUTempSDR", "Cpu%d_Temp", OnSmallBoard("CPU_Temp")),
        Row(kCpuVrTemp, "GenCPUVRTempSDR", "Cpu%d_VR_Temp", Refused("CPUx_VR_Temp")),
        Row(kCpuCoreVolts, "GenCPUCOREVoltageSDR", "Cpu%d_Volts", Refused("CPUx_Volts")),
        Row(kCpuStatus, "GenCPUStatusSDR", "Cpu%d_Status", OnSmallBoard("CPU_Status")),
        Row(kMemoryHot, "GenCpuxMEMG0HotSDR", "Cpu%d_MEMG0_Hot"),
        Row(kCpuVrPower, "GenCPUxVRPwrSDR", "CPU%d_VR_Pwr"),
        Row(kDimmVrPower, "GenPxDIMMVRPwrSDR", "P%d_DIMM_VR_Pwr")),
    kCommonDimms,
    InGroup(Group::kDimmGroup,
        Row(kDimmGroupTemp, "", "DIMMG%d_Temp", Announced("dimm group sensor"))),
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "PSU%d_Vout"),
        Row(kPsuSupply, "GenPSUSypplyDR", "PSU%d_Supply"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuInputPower, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PSU%d_Pout")),
    kCommonPsuRedundancy,
    InGroup(Group::kFan,
        Row(kFanStatus, "", "FAN%d_Status", Announced("Fan status"))),
    kCommonDisks,
    InGroup(Group::kNvme,
        Row(kNvmeTemp, "", "NVME_TEMP_%02u")),
    kCommonDiskGroups,
    kCommonOcps,
    kCommonOcpErrors,
    InGroup(Group::kPcie,
        Row(kPcieStatus, "", "PCIE%d_Status")),
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir);
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

constexpr DiskNames kDiskNames = {.acStatus = "HDD%d_Status",
                                  .acTemp = "NVME%d_Temp",
                                  .bSystemInstance = true,
                                  .acNullText = "%s failed! pucSDRRec == NULL."};

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Quorral_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Quorral_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Quorral_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Quorral_GenHDDPowerSDR)
OXA_STATIC_GENERATOR(Quorral_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Quorral_GenBMCBootSDR)
OXA_STATIC_GENERATOR(Quorral_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Quorral_GenEventLogSDR)
OXA_STATIC_GENERATOR(Quorral_GenSYSBootSDR)
OXA_STATIC_GENERATOR(Quorral_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Quorral_GenUIDButtonSDR)
OXA_STATIC_GENERATOR(Quorral_GenPCIeStatusSDR)
OXA_STATIC_GENERATOR(Quorral_GenSYSProgressSDR)
OXA_STATIC_GENERATOR(Quorral_GenOSBootSDR)
OXA_STATIC_GENERATOR(Quorral_GenBiosBootUpSDR)
OXA_STATIC_GENERATOR(Quorral_GenMESDR)
OXA_STATIC_GENERATOR(Quorral_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Quorral_GenHDDTempSDR)
OXA_STATIC_GENERATOR(Quorral_GenLeakageSDR)
OXA_STATIC_GENERATOR(Quorral_GenPowerFaultSDR)
OXA_STATIC_GENERATOR(Quorral_GenFWUpdateSDR)
OXA_STATIC_GENERATOR(Quorral_GenINLETTEMPSDR)
OXA_STATIC_GENERATOR(Quorral_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Quorral_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Quorral_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Quorral_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Quorral_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Quorral_GenNTPSyncFailSDR)

OXA_INDEXED_GENERATOR(Quorral_GenCPUxVRPwrSDR)
OXA_INDEXED_GENERATOR(Quorral_GenPxDIMMVRPwrSDR)
OXA_INDEXED_GENERATOR(Quorral_GenPSUSypplyDR)

OXA_INDEX_LAST_GENERATOR(Quorral_GenCpuxMEMG0HotSDR)

OXA_INDEXED_GENERATOR(Quorral_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Quorral_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Quorral_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Quorral_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Quorral_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Quorral_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Quorral_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Quorral_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Quorral_GenSwitchBoardInOROutletTempSDR)

int32_t Quorral_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return oxa::RenameDisk(kProfile.tBase.tHead.tName, kDiskNames, pucSDRRec, ucSlotOffset);
}

void OXA_AddQuorralStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenQuorralStaticSDRTab, ucQuorralStaticSDRCnt});
}
