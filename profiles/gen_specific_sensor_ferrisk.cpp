// SPDX-License-Identifier: Apache-2.0
//
// The Ferrisk profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Ferrisk", .acFile = "gen_specific_sensor_ferrisk.c"},
    .aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kPsus,
                Step::kDisks, Step::kOcp, Step::kSwitchCard, Step::kSwitchAir},
    .ucFlags = kOnlyPresentOcp};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
        Row(kCpuPower, "GenCPUPowerSDR", "CPU_Power"),
        Row(kMemPower, "GenMEMPowerSDR", "MEM_Power"),
        Row(kFanPower, "GenFANPowerSDR", "FAN_Power"),
        Row(kDiskPower, "GenHDDPowerSDR", "HDD_Power"),
        Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
        Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
        Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
        Row(kWatchdog2, "GenIPMIWatchdogSDR", "IPMI_Watchdog"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kBiosBootUp, "GenBiosBootUpSDR", "BIOS_Boot_Up"),
        Row(kOsBoot, "GenOSBootSDR", "OS_Boot"),
        Row(kI2cStatus, "GenI2CStatusSDR", "I2C_Status"),
        Row(kFirmwareUpdate, "GenFWUpdateSDR", "FW_Update"),
        Row(kBmcStatus, "GenBMCStatusSDR", "BMC_Status"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
        Row(kEventLog, "GenSELStatusSDR", "SEL_Status"),
        Row(kFrontBackplane12V, "GenFrontBp12VSDR", "Front_BP_12V"),
        Row(kRearBackplane12V, "GenRearBp12VSDR", "Rear_BP_12V"),
        Row(kFrontBackplaneTemp, "GenFrontBPTempSDR", "BP_F_Temp_Max"),
        Row(kRearBackplaneTemp, "GenRearBPTempSDR", "BP_R_Temp_Max"),
        Row(kPcieAggregate, "GenPCIEStatusSDR", "PCIE_Status"),
        Row(kSystemBoot, "GenSysBootInitSDR", "Sys_Boot_Init"),
        Row(kOsStop, "GenOSStopSDR", "OS_Stop"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault")),
    kCommonCpus,
    kCommonDimms,
    kCommonDimmGroups,
    InGroup(Group::kPsu,
        Row(kPsuInputVolts, "GenPSUVinSDR", "PSU%d_Vin"),
        Row(kPsuOutputVolts, "GenPSUVoutSDR", "PSU%d_Vout"),
        Row(kPsuInputCurrent, "GenPSUIINSDR", "PSU%d_Iin"),
        Row(kPsuOutputCurrent, "GenPSUIOutSDR", "PSU%d_Iout"),
        Row(kPsuInputPower, "GenPSUPInSDR", "PSU%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PSU%d_Pout"),
        Row(kPsuTemp, "GenPSUTempSDR", "PSU%d_Temp"),
        Row(kPsuStatus, "GenPSUStatusSDR", "PSU%d_Status")),
    kCommonPsuRedundancy,
    kCommonDisks,
    kCommonNvmes,
    kCommonDiskGroups,
    InGroup(Group::kOcp,
        Row(kOcpTemp, "", "NIC%d_Temp", Announced("nic temp"))),
    InGroup(Group::kOcpError,
        Row(kOcpError, "", "NIC%d_Err")),
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir);
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Ferrisk_GenCPUPowerSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenMEMPowerSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenFANPowerSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenHDDPowerSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Ferrisk_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenIPMIWatchdogSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenBiosBootUpSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenOSBootSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenI2CStatusSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenFWUpdateSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenBMCStatusSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenSELStatusSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenFrontBp12VSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenRearBp12VSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenFrontBPTempSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenRearBPTempSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenPCIEStatusSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenSysBootInitSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenOSStopSDR)
OXA_STATIC_GENERATOR(Ferrisk_GenPowerFaultSDR)

OXA_INDEXED_GENERATOR(Ferrisk_GenPSUVinSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUVoutSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUIINSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUIOutSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUPInSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUPOutSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUTempSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenPSUStatusSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Ferrisk_GenSwitchBoardInOROutletTempSDR)

void OXA_AddFerriskStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenFerriskStaticSDRTab, ucFerriskStaticSDRCnt});
}
