// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every exported generator of the eight other profiles, and the liquid-cooling ones of Default, behind one
// shape: the index that the tests call it with, the sensor that it writes then, and what it asks the platform
// first.
#ifndef OXA_TESTS_STATIC_SENSORS_PROFILES_GENERATORS_H
#define OXA_TESTS_STATIC_SENSORS_PROFILES_GENERATORS_H

#include <functional>
#include <vector>

#include "static_sensors/profiles_support.h"

namespace profile_sets {

enum class Ask {
    kNothing,
    kFlag,            // a support flag by sensor
    kKind,            // a support flag by kind
    kIntel,           // the CPU type
    kPch,             // the CPU type, then a support flag
    kFans,            // the liquid-cooling mode: not 2
    kLeakage,         // the liquid-cooling mode: 1
    kAccuracy,        // a power accuracy
    kFansAndAccuracy, // mode and accuracy
    kNotSmallBoard,   // the board id: not 5497h
    kSwitchPower      // board id and cards
};

struct Generator {
    std::string name;
    std::string sensor; // the record that it writes on GeneratorBoard()
    Ask ask;
    uint32_t number;     // of the flag or the kind
    std::string refused; // how a refusal names the sensor
    std::function<uint8_t(uint8_t *, DevTabEntry *)> call;

    std::string File() const {
        std::string profile = name.substr(0, name.find('_'));
        profile[0] = static_cast<char>(std::tolower(profile[0]));
        return "gen_specific_sensor_" + profile + ".c";
    }
    std::string Suffix() const { // "Kestrin_GenNICPowerSDR" gives "NICPowerSDR"
        return name.substr(name.find("_Gen") + 4);
    }
    std::string Prefix() const {
        return name.substr(0, name.find("_Gen") + 4);
    }
};

#define PLAIN(function, sensor, ask, number, refused)                                                        \
    Generator {                                                                                              \
#function, sensor, ask, number, refused,                                                             \
            [](uint8_t * slot, DevTabEntry * entry) { return function(slot, entry); }                        \
    }
#define INDEXED(function, index, sensor, ask, number, refused)                                               \
    Generator {                                                                                              \
#function, sensor, ask, number, refused,                                                             \
            [](uint8_t * slot, DevTabEntry * entry) { return function(index, slot, entry); }                 \
    }
#define INDEXLAST(function, index, sensor, ask, number, refused)                                             \
    Generator {                                                                                              \
#function, sensor, ask, number, refused,                                                             \
            [](uint8_t * slot, DevTabEntry * entry) { return function(slot, entry, index); }                 \
    }

inline const std::vector<Generator> &Generators() {
    // clang-format off
    static const std::vector<Generator> kAll = {
        // Default
        PLAIN(Default_GenCDUInletTempSDR, "CDU_INLET_TEMP", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUDewTempSDR, "CDU_DEW_TEMP", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUSupplyTempSDR, "CDU_SUPPLY_TEMP", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUDiffTempSDR, "CDU_DIFF_TEMP", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUEnvHumiSDR, "CDU_ENV_HUMI", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUISetFanSpdSDR, "CDU_SET_FAN_SPD", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUSupplyPressSDR, "CDU_SUPPLY_PRESS", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUFlowRateSDR, "CDU_FLOW_RATE", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUReturnTempSDR, "CDU_RETURN_TEMP", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUReturnPressSDR, "CDU_RETURN_PRESS", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUDiffPressSDR, "CDU_DIFF_PRESS", Ask::kNothing, 0, ""),
        PLAIN(Default_GenCDUECSDR, "CDU_EC_us/cm", Ask::kNothing, 0, ""),
        INDEXED(Default_GenCDUFanSpeedSDR, 2, "CDU_FAN_SPD_02", Ask::kNothing, 0, ""),
        // Kestrin
        PLAIN(Kestrin_GenCPUTjmaxSDR, "CPU_Tjmax", Ask::kIntel, 0, "CPU_Tjmax"),
        PLAIN(Kestrin_GenCPUTControlSDR, "CPU_Tcontrol", Ask::kIntel, 0, "CPU_Tcontrol"),
        PLAIN(Kestrin_GenSYS12VStandbySDR, "SYS_12V_Standby", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenHDDTotalPowerSDR, "HDD_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Kestrin_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Kestrin_GenCPUTotalPowerSDR, "CPU_Total_Power", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenFanTotalPowerSDR, "Fan_Total_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Kestrin_GenMEMTotalPowerSDR, "MEM_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Kestrin_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Kestrin_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Kestrin_GenUIDButtonSDR, "UID_Button", Ask::kFlag, 123, "UID_Button"),
        PLAIN(Kestrin_GenBMCBootUpSDR, "BMC_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Kestrin_GenEventLogSDR, "Event_Log", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenRestartInitiatedSDR, "Restart_Init", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenOSStopSDR, "OS_Stop", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenLanLeashLostSDR, "LAN_Leash_Lost", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenSYSFWProgressSDR, "SYS_FW_Progress", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenSystemEventSDR, "System_Event", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCriticalINTSDR, "Critical_INT", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenWatchdog2SDR, "Watchdog2", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenMotherBoardSDR, "Mother_Board", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenIntrusionSDR, "Intrusion", Ask::kFlag, 124, "Intrusion"),
        PLAIN(Kestrin_GenBootErrorSDR, "Boot_Error", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenINLETTEMPSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Kestrin_GenENVHUMISDR, "ENV_Humi", Ask::kFlag, 105, "ENV_Humi"),
        PLAIN(Kestrin_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Kestrin_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Kestrin_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Kestrin_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Kestrin_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Kestrin_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenSwitchBoardPowerSDR, "SW_Total_Power", Ask::kSwitchPower, 0, "SW_Total_Power"),
        PLAIN(Kestrin_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        PLAIN(Kestrin_GenSYS54VoltSDR, "SYS_54V", Ask::kFlag, 25, "SYS_54V"),
        PLAIN(Kestrin_GenPDBBoardPowerSDR, "PDB_Board_Power", Ask::kFlag, 27, "PDB_Board_Power"),
        PLAIN(Kestrin_GenNICPowerSDR, "NIC_Power", Ask::kFlag, 28, "NIC_Power"),
        PLAIN(Kestrin_GenGPUBoardPowerSDR, "GPU_Board_Power", Ask::kFlag, 29, "GPU_Board_Power"),
        PLAIN(Kestrin_GenSwitchGTempSDR, "SwitchG_Temp", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenENTEMPSDR, "EnTemp", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenRackPowerSDR, "RackPower", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Kestrin_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenPSStatusSDR, 1, "PS1_Status", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenPSVinSDR, 1, "PS1_Vin", Ask::kKind, 3, "PS1_Vin"),
        INDEXED(Kestrin_GenPSVoutSDR, 1, "PS1_Vout", Ask::kKind, 4, "PS1_Vout"),
        INDEXED(Kestrin_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenPwrModuleTempSDR, 2, "PWR_Mod2_Temp", Ask::kFlag, 126, "PWR_Modx_Temp"),
        INDEXED(Kestrin_GenUBBRTTempSDR, 2, "UBB_RT2_Temp", Ask::kFlag, 127, "UBB_RTx_Temp"),
        INDEXLAST(Kestrin_GenGPU54VoltSDR, 2, "GPU2_PWR_Volts", Ask::kFlag, 26, "GPUx_PWR_Volts"),
        PLAIN(Kestrin_GenCDUInletTempSDR, "CDU_Inlet_Temp", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUCoolantTinSDR, "CDU_Coolant_Tin", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUCoolantToutSDR, "CDU_Coolant_Tout", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUFlowRateSDR, "CDU_Flow_Rate", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUSupplyPressSDR, "CDU_Supply_Press", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUReturnPressSDR, "CDU_Return_Press", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUPsOutPowerSDR, "CDU_PS_Out_Power", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUFanPowerSDR, "CDU_Fan_Power", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDUPumpPowerSDR, "CDU_Pump_Power", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDULQDLeakageSDR, "CDU_LQD_Leakage", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDULQDLevelSDR, "CDU_LQD_Level", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDULQDFlowSDR, "CDU_LQD_Flow", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDULQDPressHSDR, "CDU_LQD_PRESS_H", Ask::kNothing, 0, ""),
        PLAIN(Kestrin_GenCDULQDPressLSDR, "CDU_LQD_PRESS_L", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCDUFanSpeedSDR, 2, "CDU_Fan2_Speed", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCDUPsVinSDR, 2, "CDU_PS2_Vin", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCDUPsVoutSDR, 2, "CDU_PS2_Vout", Ask::kNothing, 0, ""),
        INDEXED(Kestrin_GenCDUPsIoutSDR, 2, "CDU_PS2_Iout", Ask::kNothing, 0, ""),
        // Pellago
        PLAIN(Pellago_GenCPUPowerSDR, "CPU_Power", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenMEMPowerSDR, "MEM_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Pellago_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Pellago_GenHDDPowerSDR, "HDD_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Pellago_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Pellago_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Pellago_GenSELStatusSDR, "SEL_Status", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenSysRestartSDR, "Sys_Restart", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenOSStopSDR, "OS_Stop", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Pellago_GenIntrusionSDR, "Intrusion", Ask::kFlag, 124, "Intrusion"),
        PLAIN(Pellago_GenINLETTEMPSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Pellago_GenENVHUMISDR, "Env_Humi", Ask::kFlag, 105, "Env_Humi"),
        PLAIN(Pellago_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Pellago_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Pellago_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Pellago_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Pellago_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Pellago_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Pellago_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        INDEXED(Pellago_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXLAST(Pellago_GenCPUSinglePowerSDR, 1, "CPU1_Power", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenPSUPowerSDR, 1, "PSU1_Power", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenDiskStatusSDR, 3, "Disk3_Status", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Pellago_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        // Vorana
        PLAIN(Vorana_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Vorana_GenCPUPowerSDR, "CPU_Power", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenMEMPowerSDR, "MEM_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Vorana_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Vorana_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Vorana_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Vorana_GenUIDButtonSDR, "UID_Button", Ask::kFlag, 123, "UID_Button"),
        PLAIN(Vorana_GenBMCBootUpSDR, "BMC_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Vorana_GenSELStatusSDR, "SEL_Status", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenACPIPWRSDR, "ACPI_PWR", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenSysRestartSDR, "Sys_Restart", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenSysShutdownSDR, "Sys_Shutdown", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenHDDTotalPowerSDR, "HDD_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Vorana_GenSysHealthSDR, "Sys_Health", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenINLETTEMPSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Vorana_GenENVHUMISDR, "Env_Humi", Ask::kFlag, 105, "Env_Humi"),
        PLAIN(Vorana_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Vorana_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Vorana_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Vorana_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Vorana_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Vorana_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Vorana_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        INDEXED(Vorana_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Vorana_GenCPUDTSTempSDR, 1, "CPU1_DTS_Temp", Ask::kNothing, 0, ""),
        INDEXLAST(Vorana_GenCPUVcoreCurrentSDR, 1, "CPU1_Vcore_A", Ask::kFlag, 109, "CPUx_Vcore_A"),
        INDEXLAST(Vorana_GenCPUVcore1CurrentSDR, 1, "CPU1_Vcore1_A", Ask::kFlag, 110, "CPUx_Vcore1_A"),
        INDEXLAST(Vorana_GenCPUVSOCCurrentSDR, 1, "CPU1_VSOC_A", Ask::kFlag, 111, "CPUx_VSOC_A"),
        INDEXLAST(Vorana_GenCPUDDRVdd1CurrentSDR, 1, "CPU1_DDR_VDD1_A", Ask::kFlag, 112, "CPUx_DDR_VDD1_A"),
        INDEXED(Vorana_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenPSUVinSDR, 1, "PSU1_Vin", Ask::kKind, 3, "PSU1_Vin"),
        INDEXED(Vorana_GenPSUVoutSDR, 1, "PSU1_Vout", Ask::kKind, 4, "PSU1_Vout"),
        INDEXED(Vorana_GenPSUStatusSDR, 1, "PSU1_Status", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenPSUPinSDR, 1, "PSU1_Pin", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenPSUPoutSDR, 1, "PSU1_Pout", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Vorana_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        // Astrel
        PLAIN(Astrel_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Astrel_GenCPUTotalPowerSDR, "CPU_Total_Power", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenMEMTotalPowerSDR, "MEM_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Astrel_GenFanTotalPowerSDR, "Fan_Total_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Astrel_GenHDDTotalPowerSDR, "HDD_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Astrel_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Astrel_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Astrel_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Astrel_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenSysRestartSDR, "Sys_Restart", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenBMCBootUpSDR, "BMC_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenOSStopSDR, "OS_Stop", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenINLETTEMPSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Astrel_GenENVHUMISDR, "Env_Humi", Ask::kFlag, 105, "Env_Humi"),
        PLAIN(Astrel_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Astrel_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Astrel_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Astrel_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Astrel_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Astrel_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Astrel_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        INDEXED(Astrel_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Astrel_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenInputVoltsSDR, 1, "PSU1_Vin", Ask::kKind, 3, "PSU1_Vin"),
        INDEXED(Astrel_GenOutputVoltsSDR, 1, "PSU1_Vout", Ask::kKind, 4, "PSU1_Vout"),
        INDEXED(Astrel_GenPSUPowerSDR, 1, "PSU1_Power", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenPSUStatusSDR, 1, "PSU1_Status", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Astrel_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        // Quorral
        PLAIN(Quorral_GenCPUPowerSDR, "CPU_Power", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenMEMPowerSDR, "MEM_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Quorral_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Quorral_GenHDDPowerSDR, "HDD_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Quorral_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Quorral_GenBMCBootSDR, "BMC_Boot", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Quorral_GenEventLogSDR, "Event_Log", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenSYSBootSDR, "SYS_Boot", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenUIDButtonSDR, "UID_Button", Ask::kFlag, 123, "UID_Button"),
        PLAIN(Quorral_GenPCIeStatusSDR, "PCIe_Status", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenSYSProgressSDR, "SYS_Progress", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenOSBootSDR, "OS_Boot", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenBiosBootUpSDR, "BIOS_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenMESDR, "ME", Ask::kFlag, 125, "ME"),
        PLAIN(Quorral_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Quorral_GenHDDTempSDR, "HDD_Temp", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Quorral_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        PLAIN(Quorral_GenFWUpdateSDR, "FW_Update", Ask::kNothing, 0, ""),
        PLAIN(Quorral_GenINLETTEMPSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Quorral_GenENVHUMISDR, "Env_Humi", Ask::kFlag, 105, "Env_Humi"),
        PLAIN(Quorral_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Quorral_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Quorral_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Quorral_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Quorral_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenCPUCOREVoltageSDR, 1, "Cpu1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXLAST(Quorral_GenCpuxMEMG0HotSDR, 1, "Cpu1_MEMG0_Hot", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenCPUxVRPwrSDR, 1, "CPU1_VR_Pwr", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenPxDIMMVRPwrSDR, 1, "P1_DIMM_VR_Pwr", Ask::kAccuracy, 0, ""),
        INDEXED(Quorral_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenPSUSypplyDR, 1, "PSU1_Supply", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Quorral_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        // Lumora
        PLAIN(Lumora_GenInletTempSDR, "Inlet_Temp", Ask::kFlag, 103, "Inlet_Temp"),
        PLAIN(Lumora_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Lumora_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Lumora_GenTotalPowerSDR, "Total_Power", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenCPUPowerSDR, "CPU_Power", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenMEMPowerSDR, "MEM_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Lumora_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Lumora_GenHDDPowerSDR, "HDD_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Lumora_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Lumora_GenENVHUMISDR, "Env_Humi", Ask::kFlag, 105, "Env_Humi"),
        PLAIN(Lumora_GenUIDButtonSDR, "UID_Button", Ask::kFlag, 123, "UID_Button"),
        PLAIN(Lumora_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Lumora_GenSysBootSDR, "Sys_Boot", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenACPIStateSDR, "ACPI_State", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenOSBootSDR, "OS_Boot", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenBMCBootUpSDR, "BMC_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenEventLogSDR, "Event_Log", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Lumora_GenMESDR, "ME", Ask::kFlag, 125, "ME"),
        PLAIN(Lumora_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Lumora_GenPcieStatusSDR, "PCIe_Status", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Lumora_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Lumora_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        PLAIN(Lumora_GenBootErrorSDR, "Boot_Error", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenIntrusionSDR, "Intrusion", Ask::kFlag, 124, "Intrusion"),
        PLAIN(Lumora_GenBiosBootUpSDR, "BIOS_Boot_Up", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Lumora_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenPSUPInSDR, 1, "PSU1_Pin", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenPSUPOutSDR, 1, "PSU1_Pout", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Lumora_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        PLAIN(Lumora_GenLanSwitchBoardTempSDR, "LAN_SW_Temp", Ask::kNothing, 0, ""),
        // Durnow
        PLAIN(Durnow_GenHDDTotalPowerSDR, "HDD_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Durnow_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Durnow_GenCPUTotalPowerSDR, "CPU_Total_Power", Ask::kNothing, 0, ""),
        PLAIN(Durnow_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Durnow_GenMEMTotalPowerSDR, "MEM_Total_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Durnow_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Durnow_GenPCHTempSDR, "PCH_Temp", Ask::kPch, 121, "PCH_Temp"),
        PLAIN(Durnow_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Durnow_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Durnow_GenSysRestartSDR, "Sys_Restart", Ask::kNothing, 0, ""),
        PLAIN(Durnow_GenIntrusionSDR, "Intrusion", Ask::kFlag, 124, "Intrusion"),
        PLAIN(Durnow_GenINPUTTEMPSDR, "Input_Temp", Ask::kFlag, 103, "Input_Temp"),
        PLAIN(Durnow_GenOutletTempSDR, "Outlet_Temp", Ask::kFlag, 104, "Outlet_Temp"),
        PLAIN(Durnow_GenSYS12VSDR, "SYS_12V", Ask::kFlag, 107, "SYS_12V"),
        PLAIN(Durnow_GenPDBTEMPSDR, "PDB_Temp", Ask::kFlag, 106, "PDB_Temp"),
        PLAIN(Durnow_GenMiddlePDBTEMPSDR, "Middle_PDB_Temp", Ask::kFlag, 106, "Middle_PDB_Temp"),
        PLAIN(Durnow_GenLeakageSDR, "Leakage", Ask::kLeakage, 0, ""),
        PLAIN(Durnow_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Durnow_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        INDEXED(Durnow_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Durnow_GenCPU0D0N2SDR, 0, "CPU0_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenCPU0D1N2SDR, 0, "CPU0_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenCPU1D0N2SDR, 1, "CPU1_D0_N2", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenCPU1D1N2SDR, 1, "CPU1_D1_N2", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenInputVoltsSDR, 1, "PSU1_Vin", Ask::kKind, 3, "PSU1_Vin"),
        INDEXED(Durnow_GenOutputVoltsSDR, 1, "PSU1_Vout", Ask::kKind, 4, "PSU1_Vout"),
        INDEXED(Durnow_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Durnow_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
        // Ferrisk
        PLAIN(Ferrisk_GenCPUPowerSDR, "CPU_Power", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenMEMPowerSDR, "MEM_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Ferrisk_GenFANPowerSDR, "FAN_Power", Ask::kFansAndAccuracy, 0, ""),
        PLAIN(Ferrisk_GenHDDPowerSDR, "HDD_Power", Ask::kAccuracy, 0, ""),
        PLAIN(Ferrisk_GenBoardPowerSDR, "Board_Power", Ask::kNotSmallBoard, 0, "Board_Power"),
        PLAIN(Ferrisk_GenFanRedundancySDR, "Fan_Redundancy", Ask::kFans, 0, ""),
        PLAIN(Ferrisk_GenACPIStatusSDR, "ACPI_Status", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenIntrusionSDR, "Intrusion", Ask::kFlag, 124, "Intrusion"),
        PLAIN(Ferrisk_GenIPMIWatchdogSDR, "IPMI_Watchdog", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenPowerButtonSDR, "Power_Button", Ask::kFlag, 122, "Power_Button"),
        PLAIN(Ferrisk_GenBiosBootUpSDR, "BIOS_Boot_Up", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenOSBootSDR, "OS_Boot", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenI2CStatusSDR, "I2C_Status", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenFWUpdateSDR, "FW_Update", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenBMCStatusSDR, "BMC_Status", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenNTPSyncFailSDR, "NTP_Sync_Fail", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenSELStatusSDR, "SEL_Status", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenFrontBp12VSDR, "Front_BP_12V", Ask::kFlag, 19, "Front_BP_12V"),
        PLAIN(Ferrisk_GenRearBp12VSDR, "Rear_BP_12V", Ask::kFlag, 20, "Rear_BP_12V"),
        PLAIN(Ferrisk_GenFrontBPTempSDR, "BP_F_Temp_Max", Ask::kFlag, 21, "BP_F_Temp_Max"),
        PLAIN(Ferrisk_GenRearBPTempSDR, "BP_R_Temp_Max", Ask::kFlag, 22, "BP_R_Temp_Max"),
        PLAIN(Ferrisk_GenPCIEStatusSDR, "PCIE_Status", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenSysBootInitSDR, "Sys_Boot_Init", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenOSStopSDR, "OS_Stop", Ask::kNothing, 0, ""),
        PLAIN(Ferrisk_GenPowerFaultSDR, "Power_Fault", Ask::kFlag, 108, "Power_Fault"),
        INDEXED(Ferrisk_GenCPUCOREVoltageSDR, 1, "CPU1_Volts", Ask::kFlag, 102, "CPUx_Volts"),
        INDEXED(Ferrisk_GenPSUVinSDR, 1, "PSU1_Vin", Ask::kKind, 3, "PSU1_Vin"),
        INDEXED(Ferrisk_GenPSUVoutSDR, 1, "PSU1_Vout", Ask::kKind, 4, "PSU1_Vout"),
        INDEXED(Ferrisk_GenPSUIINSDR, 1, "PSU1_Iin", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenPSUIOutSDR, 1, "PSU1_Iout", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenPSUPInSDR, 1, "PSU1_Pin", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenPSUPOutSDR, 1, "PSU1_Pout", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenPSUTempSDR, 1, "PSU1_Temp", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenPSUStatusSDR, 1, "PSU1_Status", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenSwitchBoardVoltsSDR, 2, "SW2_Volt", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenSwitchBoardCurrentSDR, 2, "SW2_Current", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenSwitchBoardTempSDR, 2, "SW2_Temp", Ask::kNothing, 0, ""),
        INDEXED(Ferrisk_GenSwitchBoardInOROutletTempSDR, 0, "SW_Input_Temp_01", Ask::kNothing, 0, ""),
    };
    // clang-format on
    return kAll;
}

#undef PLAIN
#undef INDEXED
#undef INDEXLAST

inline const Generator &FindGenerator(const std::string &name) {
    for (const Generator &generator : Generators())
        if (name == generator.name)
            return generator;
    std::abort();
}

inline bool OneOf(const std::string &text, std::initializer_list<const char *> all) {
    return std::any_of(all.begin(), all.end(), [&](const char *one) { return text == one; });
}

// A board on which every generator writes its record.
inline sim::Board GeneratorBoard() {
    sim::Board board = BaseBoard();
    board.board_id = 0x5502;
    board.switch_board.sensors_valid = 1;
    board.liquid_cooling_mode = 1;
    return board;
}

// One call of a generator over fresh memory.
struct Built {
    uint8_t result = 0;
    Record record;
    bool Untouched() const {
        return record.sdr == Bytes(64, kUntouched) && record.entry == Bytes(32, kUntouched);
    }
};
inline Built Build(const std::function<uint8_t(uint8_t *, DevTabEntry *)> &call) {
    Built built;
    built.record = {Bytes(64, kUntouched), Bytes(32, kUntouched)};
    DevTabEntry entry;
    std::memcpy(&entry, built.record.entry.data(), 32);
    built.result = call(built.record.sdr.data(), &entry);
    std::memcpy(built.record.entry.data(), &entry, 32);
    return built;
}
inline Built Build(const Generator &generator) {
    return Build(generator.call);
}
inline Built Build(const std::string &name) {
    return Build(FindGenerator(name));
}
template <class Function> Built BuildIndexed(Function function, uint8_t index) {
    return Build([=](uint8_t *slot, DevTabEntry *entry) { return function(index, slot, entry); });
}

} // namespace profile_sets

#endif
