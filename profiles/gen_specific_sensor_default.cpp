// SPDX-License-Identifier: Apache-2.0
//
// The Default profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Default", .acFile = "gen_specific_sensor_default.c"},
    .aeSteps = {Step::kFacts, Step::kSwitchCard, Step::kCpus, Step::kPsus, Step::kMemory,
                Step::kPcie, Step::kFans, Step::kDisks, Step::kOcp, Step::kTable,
                Step::kCpuDomains, Step::kLiquidCooling, Step::kSwitchAir},
    .ucCduFans = 6};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
        Row(kFanRedundancy, "GenFanRedundancySDR", "FAN_REDUNDANCY"),
        Row(kCpuPower, "GenCPUPowerSDR", "CPU_POWER"),
        Row(kMemPower, "GenMEMPowerSDR", "MEM_POWER"),
        Row(kDiskPower, "GenHDDPowerSDR", "HDD_POWER"),
        Row(kBoardPower, "GenBoardPowerSDR", "POWER_WATTS"),
        Row(kFanPower, "GenFANPowerSDR", "FAN_POWER"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_TEMP"),
        Row(kPowerButton, "GenPowerButtonSDR", "POWER_BUTTON"),
        Row(kEventLog, "GenEventLogSDR", "EVENT_LOG"),
        Row(kOsBoot, "GenOSBootSDR", "OS_BOOT"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_STATUS"),
        Row(kSystemRestart, "GenSysRestartSDR", "SYS_RESTART"),
        Row(kUidButton, "GenUIDButtonSDR", "UID_BUTTON"),
        Row(kBmcBootUp, "GenBMCBootUpSDR", "BMC_BOOT_UP"),
        Row(kOsStop, "GenOSStopSDR", "OS_STOP"),
        Row(kIntrusion, "GenIntrusionSDR", "INTRUSION"),
        Row(kLeakage, "GenLeakageSDR", "LEAKAGE"),
        Row(kInletTemp, "GenINPUTTEMPSDR", "INPUT_TEMP"),
        Row(kEnvHumidity, "GenENVHUMISDR", "ENV_HUMI"),
        Row(kManagementEngine, "GenMESDR", "ME"),
        Row(kOutletTemp, "GenOUTPUTTEMPSDR", "OUTPUT_TEMP"),
        Row(kRail12V, "GenVCC12VSDR", "VCC12V"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_TEMP"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "MIDDLEPDB_TEMP"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_SYNC_FAIL"),
        Row(kPowerFault, "GenPowerFaultSDR", "POWER_FAULT")),
    InGroup(Group::kCduTable,
        Row(kCduInletTemp, "GenCDUInletTempSDR", "CDU_INLET_TEMP"),
        Row(kCduDewTemp, "GenCDUDewTempSDR", "CDU_DEW_TEMP"),
        Row(kCduSupplyTemp, "GenCDUSupplyTempSDR", "CDU_SUPPLY_TEMP"),
        Row(kCduDiffTemp, "GenCDUDiffTempSDR", "CDU_DIFF_TEMP"),
        Row(kCduHumidity, "GenCDUEnvHumiSDR", "CDU_ENV_HUMI"),
        Row(kCduFanSetting, "GenCDUISetFanSpdSDR", "CDU_SET_FAN_SPD"),
        Row(kCduSupplyPressure, "GenCDUSupplyPressSDR", "CDU_SUPPLY_PRESS"),
        Row(kCduFlowRate, "GenCDUFlowRateSDR", "CDU_FLOW_RATE"),
        Row(kCduReturnTemp, "GenCDUReturnTempSDR", "CDU_RETURN_TEMP"),
        Row(kCduReturnPressure, "GenCDUReturnPressSDR", "CDU_RETURN_PRESS"),
        Row(kCduDiffPressure, "GenCDUDiffPressSDR", "CDU_DIFF_PRESS"),
        Row(kCduConductivity, "GenCDUECSDR", "CDU_EC_us/cm")),
    InGroup(Group::kCduFan,
        Row(kCduFanSpeed, "GenCDUFanSpeedSDR", "CDU_FAN_SPD_%02d")),
    InGroup(Group::kCpu,
        Row(kCpuProchot, "GenCPUProchotSDR", "CPU_PROCHOT"),
        Row(kCpuTemp, "GenCPUTempSDR", "CPU_TEMP_%02d", OnSmallBoard("CPU_TEMP")),
        Row(kCpuVrTemp, "GenCPUVRTempSDR", "CPU_VR_TEMP_%02d", Refused("CPU_VR_TEMP_0x")),
        Row(kCpuCoreVolts, "GenCPUCOREVoltageSDR", "CPU_VOLTS_%02d", Refused("CPU_VOLTS_0x")),
        Row(kCpuStatus, "GenCPUStatusSDR", "CPU_STATUS_%02d", OnSmallBoard("CPU_STATUS"))),
    InGroup(Group::kCpuDomain,
        Row(kCpu0Domain0Volts, "GenCPU0D0N2SDR", "CPU%d_D0_N2", OnSmallBoard("CPU_VOLTS")),
        Row(kCpu0Domain1Volts, "GenCPU0D1N2SDR", "CPU%d_D1_N2"),
        Row(kCpu1Domain0Volts, "GenCPU1D0N2SDR", "CPU%d_D0_N2"),
        Row(kCpu1Domain1Volts, "GenCPU1D1N2SDR", "CPU%d_D1_N2")),
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenInputVoltsSDR", "INPUT_VOLTS_%02d", Refused("INPUT_VOLTS%d")),
        Row(kPsuOutputVolts, "GenOutputVoltsSDR", "OUTPUT_VOLTS_%02d", Refused("OUTPUT_VOLTS%d")),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU_STATUS_%02d"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU_TEMP_%02d"),
        Row(kPsuInputPower, "GenPSUPInSDR", "PSU_PIN_%02d"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PSU_POUT_%02d")),
    InGroup(Group::kPsuRedundancy,
        Row(kPsuRedundancy, "GenPSURedundantSDR", "PSU_REDUNDANT", Second("PSU_REDUNDANT_M"))),
    InGroup(Group::kDimm,
        Row(kDimmTemp, "GenDIMMTempSDR", "MEM_TEMP_%s"),
        Row(kDimmStatus, "GenMEMStatusSDR", "MEM_STATUS_%s")),
    InGroup(Group::kDimmGroup,
        Row(kDimmGroupTemp, "", "DIMMG%d_TEMP", Announced("dimm group"))),
    InGroup(Group::kPcie,
        Row(kPcieStatus, "GenPCIeStatusSDR", "PCIE_STATUS_%02d")),
    InGroup(Group::kFan,
        Row(kFanStatus, "", "FAN_STATUS_%02d")),
    InGroup(Group::kDisk,
        Row(kDiskStatus, "GenHDDStatusSDR", "HDD_STATUS_%02u")),
    InGroup(Group::kNvme,
        Row(kNvmeTemp, "", "NVME_TEMP_%02u")),
    InGroup(Group::kDiskGroup,
        Row(kDiskGroupTemp, "", "DISKG%d_TEMP")),
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "OCP_TEMP_%02d")),
    InGroup(Group::kOcpError,
        Row(kOcpError, "", "OCP_ERR_%02d")),
    InGroup(Group::kSwitchPower,
        Row(kSwitchVolts, "GenSwitchBoardVoltsSDR", "SW_VOLT_%02d"),
        Row(kSwitchCurrent, "GenSwitchBoardCurrentSDR", "SW_CURRENT_%02d")),
    InGroup(Group::kSwitchTemp,
        Row(kSwitchTemp, "GenSwitchBoardTempSDR", "SW_TEMP_%02d")),
    InGroup(Group::kSwitchAir,
        Row(kSwitchAirTemp, "GenSwitchBoardInOROutletTempSDR", "SW_INPUT_TEMP_0%c", Second("SW_OUTPUT_T_0%c"))));
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Default_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Default_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Default_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Default_GenHDDPowerSDR)
OXA_STATIC_GENERATOR(Default_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Default_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Default_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Default_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Default_GenEventLogSDR)
OXA_STATIC_GENERATOR(Default_GenOSBootSDR)
OXA_STATIC_GENERATOR(Default_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Default_GenSysRestartSDR)
OXA_STATIC_GENERATOR(Default_GenUIDButtonSDR)
OXA_STATIC_GENERATOR(Default_GenBMCBootUpSDR)
OXA_STATIC_GENERATOR(Default_GenOSStopSDR)
OXA_STATIC_GENERATOR(Default_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Default_GenLeakageSDR)
OXA_STATIC_GENERATOR(Default_GenINPUTTEMPSDR)
OXA_STATIC_GENERATOR(Default_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Default_GenMESDR)
OXA_STATIC_GENERATOR(Default_GenOUTPUTTEMPSDR)
OXA_STATIC_GENERATOR(Default_GenVCC12VSDR)
OXA_STATIC_GENERATOR(Default_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Default_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Default_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Default_GenPowerFaultSDR)

OXA_STATIC_GENERATOR(Default_GenCDUInletTempSDR)
OXA_STATIC_GENERATOR(Default_GenCDUDewTempSDR)
OXA_STATIC_GENERATOR(Default_GenCDUSupplyTempSDR)
OXA_STATIC_GENERATOR(Default_GenCDUDiffTempSDR)
OXA_STATIC_GENERATOR(Default_GenCDUEnvHumiSDR)
OXA_STATIC_GENERATOR(Default_GenCDUISetFanSpdSDR)
OXA_STATIC_GENERATOR(Default_GenCDUSupplyPressSDR)
OXA_STATIC_GENERATOR(Default_GenCDUFlowRateSDR)
OXA_STATIC_GENERATOR(Default_GenCDUReturnTempSDR)
OXA_STATIC_GENERATOR(Default_GenCDUReturnPressSDR)
OXA_STATIC_GENERATOR(Default_GenCDUDiffPressSDR)
OXA_STATIC_GENERATOR(Default_GenCDUECSDR)

OXA_INDEXED_GENERATOR(Default_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Default_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Default_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Default_GenCPUProchotSDR)
OXA_INDEXED_GENERATOR(Default_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Default_GenInputVoltsSDR)
OXA_INDEXED_GENERATOR(Default_GenOutputVoltsSDR)
OXA_INDEXED_GENERATOR(Default_GenPSUStatusSDR)
OXA_INDEXED_GENERATOR(Default_GenPSUTempSDR)
OXA_INDEXED_GENERATOR(Default_GenPSUPInSDR)
OXA_INDEXED_GENERATOR(Default_GenPSUPOutSDR)
OXA_INDEXED_GENERATOR(Default_GenPSURedundantSDR)
OXA_INDEXED_GENERATOR(Default_GenPCIeStatusSDR)
OXA_INDEXED_GENERATOR(Default_GenHDDStatusSDR)
OXA_INDEXED_GENERATOR(Default_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Default_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Default_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Default_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Default_GenCDUFanSpeedSDR)
OXA_INDEXED_GENERATOR(Default_GenSwitchBoardInOROutletTempSDR)

void OXA_AddDefaultStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(
        pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
        {atGenDefaultStaticSDRTab, ucDefaultStaticSDRCnt, atGenDefaultCDUSDRTab, ucDefaultCDUSDRCnt});
}
