// SPDX-License-Identifier: Apache-2.0
//
// The Kestrin profile.
#include "profiles/static_pass.h"

namespace {

using namespace oxa;

// A row a line.
// clang-format off
constexpr ProfileHead kHead = {
    .tName = {.acName = "Kestrin", .acFile = "gen_specific_sensor_kestrin.c"},
    .aeSteps = {Step::kRackBoard, Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                Step::kCpuDomains, Step::kPsus, Step::kFans, Step::kDisks, Step::kOcp,
                Step::kPcie, Step::kSwitchCard, Step::kSwitchAir, Step::kPowerModules, Step::kUbbRetimers,
                Step::kSwitchChips, Step::kGpuRails, Step::kLiquidCooling},
    .ucFlags = kPrintsDiskSilk | kShortFinalLine | kCduNamesGenerators,
    .ucCduFans = 4,
    .ucCduSupplies = 2};

constexpr auto kRows = ProfileRows(
    InGroup(Group::kTable,
        Row(kCpuTjmax, "GenCPUTjmaxSDR", "CPU_Tjmax"),
        Row(kCpuTcontrol, "GenCPUTControlSDR", "CPU_Tcontrol"),
        Row(kRail12VStandby, "GenSYS12VStandbySDR", "SYS_12V_Standby"),
        Row(kDiskPower, "GenHDDTotalPowerSDR", "HDD_Total_Power"),
        Row(kFanRedundancy, "GenFanRedundancySDR", "Fan_Redundancy"),
        Row(kCpuPower, "GenCPUTotalPowerSDR", "CPU_Total_Power"),
        Row(kFanPower, "GenFanTotalPowerSDR", "Fan_Total_Power"),
        Row(kMemPower, "GenMEMTotalPowerSDR", "MEM_Total_Power"),
        Row(kBoardPower, "GenBoardPowerSDR", "Board_Power"),
        Row(kPchTemp, "GenPCHTempSDR", "PCH_Temp"),
        Row(kUidButton, "GenUIDButtonSDR", "UID_Button"),
        Row(kBmcBootUp, "GenBMCBootUpSDR", "BMC_Boot_Up"),
        Row(kPowerButton, "GenPowerButtonSDR", "Power_Button"),
        Row(kEventLog, "GenEventLogSDR", "Event_Log"),
        Row(kAcpiState, "GenACPIStatusSDR", "ACPI_Status"),
        Row(kSystemRestart, "GenRestartInitiatedSDR", "Restart_Init"),
        Row(kOsStop, "GenOSStopSDR", "OS_Stop"),
        Row(kLanLeashLost, "GenLanLeashLostSDR", "LAN_Leash_Lost"),
        Row(kFirmwareProgress, "GenSYSFWProgressSDR", "SYS_FW_Progress"),
        Row(kSystemEvent, "GenSystemEventSDR", "System_Event"),
        Row(kCriticalInterrupt, "GenCriticalINTSDR", "Critical_INT"),
        Row(kWatchdog2, "GenWatchdog2SDR", "Watchdog2"),
        Row(kMotherBoard, "GenMotherBoardSDR", "Mother_Board"),
        Row(kIntrusion, "GenIntrusionSDR", "Intrusion"),
        Row(kBootError, "GenBootErrorSDR", "Boot_Error"),
        Row(kInletTemp, "GenINLETTEMPSDR", "Inlet_Temp"),
        Row(kEnvHumidity, "GenENVHUMISDR", "ENV_Humi"),
        Row(kLeakage, "GenLeakageSDR", "Leakage"),
        Row(kOutletTemp, "GenOutletTempSDR", "Outlet_Temp"),
        Row(kRail12V, "GenSYS12VSDR", "SYS_12V"),
        Row(kPdbTemp, "GenPDBTEMPSDR", "PDB_Temp"),
        Row(kMiddlePdbTemp, "GenMiddlePDBTEMPSDR", "Middle_PDB_Temp"),
        Row(kNtpSyncFail, "GenNTPSyncFailSDR", "NTP_Sync_Fail"),
        Row(kSwitchTotalPower, "GenSwitchBoardPowerSDR", "SW_Total_Power"),
        Row(kPowerFault, "GenPowerFaultSDR", "Power_Fault"),
        Row(kRail54V, "GenSYS54VoltSDR", "SYS_54V"),
        Row(kPdbBoardPower, "GenPDBBoardPowerSDR", "PDB_Board_Power"),
        Row(kNicPower, "GenNICPowerSDR", "NIC_Power"),
        Row(kGpuBoardPower, "GenGPUBoardPowerSDR", "GPU_Board_Power"),
        Row(kSwitchGroupTemp, "GenSwitchGTempSDR", "SwitchG_Temp")),
    InGroup(Group::kRackTable,
        Row(kRackInletTemp, "GenENTEMPSDR", "EnTemp"),
        Row(kRackPower, "GenRackPowerSDR", "RackPower")),
    InGroup(Group::kCduTable,
        Row(kCdu2InletTemp, "GenCDUInletTempSDR", "CDU_Inlet_Temp"),
        Row(kCdu2CoolantInTemp, "GenCDUCoolantTinSDR", "CDU_Coolant_Tin"),
        Row(kCdu2CoolantOutTemp, "GenCDUCoolantToutSDR", "CDU_Coolant_Tout"),
        Row(kCdu2FlowRate, "GenCDUFlowRateSDR", "CDU_Flow_Rate"),
        Row(kCdu2SupplyPressure, "GenCDUSupplyPressSDR", "CDU_Supply_Press"),
        Row(kCdu2ReturnPressure, "GenCDUReturnPressSDR", "CDU_Return_Press"),
        Row(kCdu2OutputPower, "GenCDUPsOutPowerSDR", "CDU_PS_Out_Power"),
        Row(kCdu2FanPower, "GenCDUFanPowerSDR", "CDU_Fan_Power"),
        Row(kCdu2PumpPower, "GenCDUPumpPowerSDR", "CDU_Pump_Power"),
        Row(kCdu2Leakage, "GenCDULQDLeakageSDR", "CDU_LQD_Leakage"),
        Row(kCdu2Level, "GenCDULQDLevelSDR", "CDU_LQD_Level"),
        Row(kCdu2Flow, "GenCDULQDFlowSDR", "CDU_LQD_Flow"),
        Row(kCdu2PressureHigh, "GenCDULQDPressHSDR", "CDU_LQD_PRESS_H"),
        Row(kCdu2PressureLow, "GenCDULQDPressLSDR", "CDU_LQD_PRESS_L")),
    InGroup(Group::kCpu,
        Row(kCpuProchot, "GenCPUProchotSDR", "CPU%d_Prochot", Announced("CPU Prochot")),
        Row(kCpuTemp, "GenCPUTempSDR", "CPU%d_Temp", OnSmallBoard("CPU_Temp")),
        Row(kCpuVrTemp, "GenCPUVRTempSDR", "CPU%d_VR_Temp", Refused("CPUx_VR_Temp")),
        Row(kCpuCoreVolts, "GenCPUCOREVoltageSDR", "CPU%d_Volts", Refused("CPUx_Volts")),
        Row(kCpuStatus, "GenCPUStatusSDR", "CPU%d_Status", OnSmallBoard("CPU_Status"))),
    kCommonDimms,
    kCommonDimmGroups,
    kCommonCpuDomains,
    InGroup(Group::kPsu,
        Row(kPsuStatus, "GenPSStatusSDR", "PS%d_Status"),
        Row(kPsuFanStatus, "GenPSFanStatusSDR", "PS%X_Fan_Status"),
        Row(kPsuOutputCurrent, "GenPSIoutSDR", "PS%d_Iout"),
        Row(kPsuInputVolts, "GenPSVinSDR", "PS%d_Vin"),
        Row(kPsuOutputVolts, "GenPSVoutSDR", "PS%d_Vout"),
        Row(kPsuTemp, "GenPSUTempSDR", "PS%d_Temp"),
        Row(kPsuInputPower, "GenPSUPInSDR", "PS%d_Pin"),
        Row(kPsuOutputPower, "GenPSUPOutSDR", "PS%d_Pout")),
    InGroup(Group::kPsuRedundancy,
        Row(kPsuRedundancy, "GenPSURedundantSDR", "PS_Redundant", Second("PS_Redundant_M"))),
    InGroup(Group::kFan,
        Row(kFanStatusHex, "", "SYS_Fan%1X_Present", Second("SYS_Fan%X_PRES"), Announced("Fan status"))),
    kCommonDisks,
    kCommonNvmes,
    kCommonDiskGroups,
    kCommonOcps,
    kCommonOcpErrors,
    kCommonPcie,
    kCommonSwitchPower,
    kCommonSwitchTemps,
    kCommonSwitchAir,
    InGroup(Group::kPowerModule,
        Row(kPowerModuleTemp, "GenPwrModuleTempSDR", "PWR_Mod%d_Temp", Refused("PWR_Modx_Temp"))),
    InGroup(Group::kUbbRetimer,
        Row(kUbbRetimerTemp, "GenUBBRTTempSDR", "UBB_RT%d_Temp", Refused("UBB_RTx_Temp"), Announced("UBB RT"))),
    InGroup(Group::kSwitchChip,
        Row(kSwitchChipTemp, "", TwoDigits("SWP65G50A%d_Temp"))),
    InGroup(Group::kGpuRail,
        Row(kGpuRail54V, "GenGPU54VoltSDR", "GPU%u_PWR_Volts", Refused("GPUx_PWR_Volts"))),
    InGroup(Group::kCduFan,
        Row(kCdu2FanSpeed, "GenCDUFanSpeedSDR", "CDU_Fan%d_Speed")),
    InGroup(Group::kCduSupply,
        Row(kCdu2InputVolts, "GenCDUPsVinSDR", "CDU_PS%d_Vin"),
        Row(kCdu2OutputVolts, "GenCDUPsVoutSDR", "CDU_PS%d_Vout"),
        Row(kCdu2OutputCurrent, "GenCDUPsIoutSDR", "CDU_PS%d_Iout")));
// clang-format on

constexpr auto kProfile = MakeProfile<OwnSize(kRows)>(kHead, kRows);

OXA_GENERATOR_ENTRY(kProfile)

} // namespace

OXA_STATIC_GENERATOR(Kestrin_GenCPUTjmaxSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCPUTControlSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSYS12VStandbySDR)
OXA_STATIC_GENERATOR(Kestrin_GenHDDTotalPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenFanRedundancySDR)
OXA_STATIC_GENERATOR(Kestrin_GenCPUTotalPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenFanTotalPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenMEMTotalPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenBoardPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenPCHTempSDR)
OXA_STATIC_GENERATOR(Kestrin_GenUIDButtonSDR)
OXA_STATIC_GENERATOR(Kestrin_GenBMCBootUpSDR)
OXA_STATIC_GENERATOR(Kestrin_GenPowerButtonSDR)
OXA_STATIC_GENERATOR(Kestrin_GenEventLogSDR)
OXA_STATIC_GENERATOR(Kestrin_GenACPIStatusSDR)
OXA_STATIC_GENERATOR(Kestrin_GenRestartInitiatedSDR)
OXA_STATIC_GENERATOR(Kestrin_GenOSStopSDR)
OXA_STATIC_GENERATOR(Kestrin_GenLanLeashLostSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSYSFWProgressSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSystemEventSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCriticalINTSDR)
OXA_STATIC_GENERATOR(Kestrin_GenWatchdog2SDR)
OXA_STATIC_GENERATOR(Kestrin_GenMotherBoardSDR)
OXA_STATIC_GENERATOR(Kestrin_GenIntrusionSDR)
OXA_STATIC_GENERATOR(Kestrin_GenBootErrorSDR)
OXA_STATIC_GENERATOR(Kestrin_GenINLETTEMPSDR)
OXA_STATIC_GENERATOR(Kestrin_GenENVHUMISDR)
OXA_STATIC_GENERATOR(Kestrin_GenLeakageSDR)
OXA_STATIC_GENERATOR(Kestrin_GenOutletTempSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSYS12VSDR)
OXA_STATIC_GENERATOR(Kestrin_GenPDBTEMPSDR)
OXA_STATIC_GENERATOR(Kestrin_GenMiddlePDBTEMPSDR)
OXA_STATIC_GENERATOR(Kestrin_GenNTPSyncFailSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSwitchBoardPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenPowerFaultSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSYS54VoltSDR)
OXA_STATIC_GENERATOR(Kestrin_GenPDBBoardPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenNICPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenGPUBoardPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenSwitchGTempSDR)
OXA_STATIC_GENERATOR(Kestrin_GenENTEMPSDR)
OXA_STATIC_GENERATOR(Kestrin_GenRackPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUInletTempSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUCoolantTinSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUCoolantToutSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUFlowRateSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUSupplyPressSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUReturnPressSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUPsOutPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUFanPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDUPumpPowerSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDULQDLeakageSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDULQDLevelSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDULQDFlowSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDULQDPressHSDR)
OXA_STATIC_GENERATOR(Kestrin_GenCDULQDPressLSDR)

OXA_INDEXED_GENERATOR(Kestrin_GenPSStatusSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenPSVinSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenPSVoutSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenPwrModuleTempSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenUBBRTTempSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCDUFanSpeedSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCDUPsVinSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCDUPsVoutSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCDUPsIoutSDR)

OXA_INDEX_LAST_GENERATOR(Kestrin_GenGPU54VoltSDR)

OXA_INDEXED_GENERATOR(Kestrin_GenCPU0D0N2SDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCPU0D1N2SDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCPU1D0N2SDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCPU1D1N2SDR)
OXA_INDEXED_GENERATOR(Kestrin_GenCPUCOREVoltageSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenSwitchBoardVoltsSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenSwitchBoardCurrentSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenSwitchBoardTempSDR)
OXA_INDEXED_GENERATOR(Kestrin_GenSwitchBoardInOROutletTempSDR)

void OXA_AddKestrinStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    oxa::RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tBase,
                       {atGenKestrinStaticSDRTab, ucKestrinStaticSDRCnt, atKestrinCDUSDRTab,
                        ucKestrinCDUSDRCnt, atGenKestrinRMCStaticSDRTab, ucKestrinRMCStaticSDRCnt});
}
