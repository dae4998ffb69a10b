/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Profile Kestrin (CUSTOM_ID_KESTRIN, 1): driver, generators, tables.
 *
 * What every driver does stands in records.h under "What all static drivers do"; what every generator does stands at
 * #StaticGenFn, #IndexedGenFn and #IndexLastGenFn.  Here stand the sensors: what each is, its "name" (in it # stands
 * for a number, ## for one with at least two digits, ? for 1 or 2), its unit, and when there is none.  Sensors without
 * a unit report states.
 */
#ifndef OXA_PROFILES_KESTRIN_H
#define OXA_PROFILES_KESTRIN_H

#include "oxa/records.h"

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Builds the whole static set of profile Kestrin in one pass.
 *
 * Order of the pass: the rack management board (0x5605): its table and nothing else, facts of the board, static
 * table, CPUs, memory, CPU voltage domains, PSUs and their redundancy, fans, disks, OCP cards, PCIe slots,
 * switch-board card, switch-board air, power modules, retimers, switch chips, GPU supplies, liquid cooling.
 * Records at most, and so slots and entries that the arrays need: 40 of the table, 5 per CPU, 2 per DIMM (or 1 per
 * CPU under simplification), 4 CPU voltage domains, 8 per PSU and 2, 1 per fan, 2 per disk slot and 1 per
 * backplane, 2 per OCP card, 1 per PCIe slot, 8 of the switch-board card, 4 of its air, 4 power modules, 8
 * retimers, 1 per switch chip, 8 GPU supplies, 24 of the liquid cooling.
 * After the power modules their number is reported (MW_SetPWRModuleOnlineNum()), also when it is 0.  Disks are
 * numbered by their printed number where it differs from the slot.
 *
 * Built by the driver itself, by no function of its own, at the place of its part in the order:
 *   - per CPU whose sensors are wanted (OXA_CheckifAddCpuSensorByIndex()), # its printed number: throttling
 *     "CPU#_Prochot"; temperature "CPU#_Temp", degrees C ("CPU_Temp" on board 0x5497); temperature of its voltage
 *     regulator "CPU#_VR_Temp", degrees C, where the board has SENSOR_CPU_VR_TEMP and tells the bus client of the
 *     regulator; state "CPU#_Status" ("CPU_Status" on board 0x5497).
 *   - per DIMM, not under simplification, (label) what HAL_GetDimmSensorNameIndex() tells: temperature
 *     "DIMM(label)_Temp", degrees C; state "DIMM(label)_Status".
 *   - per CPU socket under simplification, if there are DIMMs, # from 0: temperature "DIMMG#_Temp", degrees C.
 *   - per PSU, # from 1: state of its fan "PS#_Fan_Status" (# hexadecimal); current out of it "PS#_Iout", 1 A a
 *     count; temperature "PS#_Temp", degrees C; power into it "PS#_Pin", 14 W a count; power out of it "PS#_Pout", 13
 *     W a count.
 *   - per PSU group (HAL_GetPsuGroupCount() 1 or 2, HAL_GetPsuCountPerGroup() not 0): redundancy "PS_Redundant" of
 *     group 0, "PS_Redundant_M" of group 1.
 *   - per fan, # its printed number (0xFF: no record): presence "SYS_Fan#_Present" (# hexadecimal), "SYS_Fan#_PRES"
 *     from number 16 on.
 *   - per disk slot, where FruSdrInitPathChoice() is 1, # the printed number (Hal_GetHddSilkByHddSlot()) where it
 *     differs from the slot, else the slot from 0: state "HDD#_Status".
 *   - per NVMe disk (CheckHddIsSupportNvme()), besides its state, # the same printed number where it differs, else
 *     the slot as oxa_CustomSlotConversion() turns it: temperature "NVME#_Temp", degrees C, upper critical 70.
 *   - per backplane with disk slots, under simplification, besides its disks, # from 0: temperature "DISKG#_Temp",
 *     degrees C.
 *   - per OCP card, # its position from 1: temperature "OCP#_Temp", degrees C; error "OCP#_Err".
 *   - per PCIe slot, # as Hal_GetPcieSlotByIndex() tells it: state "PCIE#_Status".
 *   - per switch chip (Hal_GetSwiTempSensorCnt()), # from 1: temperature "SWP65G50A#_Temp", degrees C (with three
 *     digits cut to 16 characters).
 *
 * \param[out] pucSDRRec     slots of 64 bytes, filled from the first on
 * \param[out] ptDEVTab      entries, entry n for slot n
 * \param[out] pucSensorCnt  how many were filled; left alone when the pass ended early (see records.h)
 *
 * A null pointer is an error line, and nothing is written.  One thread at a time; logs a line or more for every record.
 */
void OXA_AddKestrinStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/** \name Static table: 40 rows, in this order */
/** @{ */
/** Highest junction temperature of the processors, "CPU_Tjmax"; degrees C; Intel processors only. */
uint8_t Kestrin_GenCPUTjmaxSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Control temperature of the processors, "CPU_Tcontrol"; degrees C; Intel processors only. */
uint8_t Kestrin_GenCPUTControlSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V standby supply of the board, "SYS_12V_Standby"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4. */
uint8_t Kestrin_GenSYS12VStandbySDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the disks, "HDD_Total_Power"; the platform tells the watts a count (HAL_GetHddPowerAccuracy()); none
 *  where it cannot or says 0. */
uint8_t Kestrin_GenHDDTotalPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Redundancy of the fans, "Fan_Redundancy"; not in liquid-cooling mode 2. */
uint8_t Kestrin_GenFanRedundancySDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of all processors, "CPU_Total_Power"; 6 W a count. */
uint8_t Kestrin_GenCPUTotalPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the fans, "Fan_Total_Power"; the platform tells the watts a count (HAL_GetFanPowerAccuracy()); none
 *  where it cannot or says 0, or in liquid-cooling mode 2. */
uint8_t Kestrin_GenFanTotalPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the memory, "MEM_Total_Power"; the platform tells the watts a count (HAL_GetDimmPowerAccuracy()); none
 *  where it cannot. */
uint8_t Kestrin_GenMEMTotalPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the machine, "Board_Power"; 17 W a count; not on board 0x5497. */
uint8_t Kestrin_GenBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the chipset, "PCH_Temp"; degrees C; on boards with Intel processors and SENSOR_PCH_TEMP. */
uint8_t Kestrin_GenPCHTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Button of the identification light, "UID_Button"; where the board has SENSOR_UID_BUTTON. */
uint8_t Kestrin_GenUIDButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Boot of the BMC, "BMC_Boot_Up". */
uint8_t Kestrin_GenBMCBootUpSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power button, "Power_Button"; where the board has SENSOR_POWER_BUTTON. */
uint8_t Kestrin_GenPowerButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the event log: cleared, full, almost full, "Event_Log". */
uint8_t Kestrin_GenEventLogSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** ACPI state of the system, "ACPI_Status". */
uint8_t Kestrin_GenACPIStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Why the system was restarted, "Restart_Init". */
uint8_t Kestrin_GenRestartInitiatedSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Stop of the operating system, "OS_Stop". */
uint8_t Kestrin_GenOSStopSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** LAN cable that was pulled, "LAN_Leash_Lost". */
uint8_t Kestrin_GenLanLeashLostSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Progress of the system firmware: error, hang, progress, "SYS_FW_Progress". */
uint8_t Kestrin_GenSYSFWProgressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** System events, "System_Event". */
uint8_t Kestrin_GenSystemEventSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Critical interrupts, "Critical_INT". */
uint8_t Kestrin_GenCriticalINTSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Watchdog of the system, "Watchdog2". */
uint8_t Kestrin_GenWatchdog2SDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the mainboard, by severity, "Mother_Board". */
uint8_t Kestrin_GenMotherBoardSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Chassis that was opened, "Intrusion"; where the board has SENSOR_INTRUSION. */
uint8_t Kestrin_GenIntrusionSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Errors of the boot, "Boot_Error". */
uint8_t Kestrin_GenBootErrorSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that comes in, "Inlet_Temp"; degrees C, upper limits 45, 50, 52; where the board has
 *  SENSOR_INPUT_TEMP and tells the bus client of its sensor. */
uint8_t Kestrin_GenINLETTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Humidity of the air that comes in, "ENV_Humi"; percent; where the board has SENSOR_ENV_HUMI. */
uint8_t Kestrin_GenENVHUMISDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Leak of the liquid cooling, "Leakage"; only in liquid-cooling mode 1. */
uint8_t Kestrin_GenLeakageSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that goes out, "Outlet_Temp"; degrees C; where the board has SENSOR_OUTPUT_TEMP. */
uint8_t Kestrin_GenOutletTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V supply of the board, "SYS_12V"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4; where the board has
 *  SENSOR_VCC12V. */
uint8_t Kestrin_GenSYS12VSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the power distribution board, "PDB_Temp"; degrees C; where the board has SENSOR_PDB_TEMP. */
uint8_t Kestrin_GenPDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the middle power distribution board, "Middle_PDB_Temp"; degrees C; where the board has
 *  SENSOR_PDB_TEMP. */
uint8_t Kestrin_GenMiddlePDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Time synchronisation that failed, "NTP_Sync_Fail". */
uint8_t Kestrin_GenNTPSyncFailSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the switch board, "SW_Total_Power"; 1 W a count; on board 0x5502 where MW_GetSWSensorVail() says
 *  valid; with switch card 0x560A in place 1 on board 0x5600, 0x5510 in place 2 on 0x55DE and 0x550F. */
uint8_t Kestrin_GenSwitchBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power fault of the board, "Power_Fault"; its registers are read and written back; where the board has
 *  SENSOR_POWER_FAULT. */
uint8_t Kestrin_GenPowerFaultSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 54 V supply of the system, "SYS_54V"; 0.3 V a count, limits 30.6, 32.1, 69.9, 70.5; where the board has
 *  SENSOR_SYS_54_VOLT. */
uint8_t Kestrin_GenSYS54VoltSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the power distribution board, "PDB_Board_Power"; 9 W a count; where the board has
 *  SENSOR_PDB_BOARD_POWER. */
uint8_t Kestrin_GenPDBBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the network cards, "NIC_Power"; 2 W a count; where the board has SENSOR_NIC_POWER. */
uint8_t Kestrin_GenNICPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the GPU board, "GPU_Board_Power"; 8 W a count; where the board has SENSOR_GPU_BOARD_POWER. */
uint8_t Kestrin_GenGPUBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the switch chips as a group, "SwitchG_Temp"; degrees C. */
uint8_t Kestrin_GenSwitchGTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Kestrin driver walks it in the
 *  step "static table".  Read-only. */
extern const StaticGenFn atGenKestrinStaticSDRTab[40];
/** Rows of #atGenKestrinStaticSDRTab: 40. */
extern const uint8_t ucKestrinStaticSDRCnt;
/** @} */

/** \name Static table of the rack management board: 2 rows, in this order */
/** @{ */
/** Temperature of the air that comes in, "EnTemp"; degrees C, upper limits 45, 50, 52; where the platform tells
 *  the bus client of its sensor. */
uint8_t Kestrin_GenENTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the rack, "RackPower"; VA, 236 x raw + 118. */
uint8_t Kestrin_GenRackPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Kestrin driver walks it, and
 *  nothing else, on board 0x5605.  Read-only. */
extern const StaticGenFn atGenKestrinRMCStaticSDRTab[2];
/** Rows of #atGenKestrinRMCStaticSDRTab: 2. */
extern const uint8_t ucKestrinRMCStaticSDRCnt;
/** @} */

/** \name Liquid-cooling table: 14 rows, in this order */
/** @{ */
/** Air into the unit, "CDU_Inlet_Temp"; degrees C. */
uint8_t Kestrin_GenCDUInletTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Coolant into the unit, "CDU_Coolant_Tin"; 7 degrees C a count. */
uint8_t Kestrin_GenCDUCoolantTinSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Coolant out of the unit, "CDU_Coolant_Tout"; 7 degrees C a count. */
uint8_t Kestrin_GenCDUCoolantToutSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Flow of the coolant, "CDU_Flow_Rate"; 0.05 l/min a count. */
uint8_t Kestrin_GenCDUFlowRateSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure of the coolant to the machines, "CDU_Supply_Press"; 0.05 kPa a count. */
uint8_t Kestrin_GenCDUSupplyPressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure of the coolant from the machines, "CDU_Return_Press"; 0.05 kPa a count. */
uint8_t Kestrin_GenCDUReturnPressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power out of its power supplies, "CDU_PS_Out_Power"; 11 W a count. */
uint8_t Kestrin_GenCDUPsOutPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of its fans, "CDU_Fan_Power"; 6 W a count. */
uint8_t Kestrin_GenCDUFanPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of its pumps, "CDU_Pump_Power"; 4 W a count. */
uint8_t Kestrin_GenCDUPumpPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Leak, "CDU_LQD_Leakage". */
uint8_t Kestrin_GenCDULQDLeakageSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Level of the coolant, "CDU_LQD_Level". */
uint8_t Kestrin_GenCDULQDLevelSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Flow of the coolant, a state, "CDU_LQD_Flow". */
uint8_t Kestrin_GenCDULQDFlowSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure too high, "CDU_LQD_PRESS_H". */
uint8_t Kestrin_GenCDULQDPressHSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure too low, "CDU_LQD_PRESS_L". */
uint8_t Kestrin_GenCDULQDPressLSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Kestrin driver walks it where a
 *  CDU is managed (IPMI_GetCduManageConfig()).  Read-only. */
extern const StaticGenFn atKestrinCDUSDRTab[14];
/** Rows of #atKestrinCDUSDRTab: 14. */
extern const uint8_t ucKestrinCDUSDRCnt;
/** @} */

/** \name One record per index */
/** @{ */
/** State of a PSU, "PS#_Status"; loads the PSU alarm configuration first; none above the number of PSUs.  Index:
 *  PSU from 1. */
uint8_t Kestrin_GenPSStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage into a PSU, "PS#_Vin"; 2 V a count; unless the board refuses SENSOR_KIND_INPUT_VOLTS.  Index: PSU from
 *  1. */
uint8_t Kestrin_GenPSVinSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage out of a PSU, "PS#_Vout"; 1 V a count; unless the board refuses SENSOR_KIND_OUTPUT_VOLTS.  Index: PSU
 *  from 1. */
uint8_t Kestrin_GenPSVoutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of a power module, "PWR_Mod#_Temp"; degrees C; where the board has SENSOR_PWR_MODULE_TEMP.  Index:
 *  power module 1 to 4. */
uint8_t Kestrin_GenPwrModuleTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of a retimer of the GPU base board, "UBB_RT#_Temp"; degrees C; where the board has
 *  SENSOR_UBB_RT_TEMP.  Index: retimer 1 to 8. */
uint8_t Kestrin_GenUBBRTTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Speed of a fan of the unit, "CDU_Fan#_Speed"; 28 rpm a count.  Index: fan 1 to 4. */
uint8_t Kestrin_GenCDUFanSpeedSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage into a power supply of the unit, "CDU_PS#_Vin"; 1 V a count.  Index: power supply 1, 2. */
uint8_t Kestrin_GenCDUPsVinSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage out of a power supply of the unit, "CDU_PS#_Vout"; 0.25 V a count.  Index: power supply 1, 2. */
uint8_t Kestrin_GenCDUPsVoutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current out of a power supply of the unit, "CDU_PS#_Iout"; 0.2 A a count.  Index: power supply 1, 2. */
uint8_t Kestrin_GenCDUPsIoutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

/** \name One record per index, index last */
/** @{ */
/** 54 V supply of a GPU, "GPU#_PWR_Volts"; 0.3 V a count, limits 30.6, 32.1, 69.9, 70.5; where the board has
 *  SENSOR_GPU_54_VOLT.  Index: GPU 1 to 8. */
uint8_t Kestrin_GenGPU54VoltSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex);
/** @} */

/** \name The profile's own copies of the Default generators of the same suffix */
/** @{ */
/** Voltage of domain 0 of CPU 0, "CPU#_D0_N2" ("CPU_Volts" on board 0x5497); described by
 *  HAL_GetCpuVoltSdrInfoforSensor(1); none where that fails.  Index: printed number of the CPU. */
uint8_t Kestrin_GenCPU0D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 0, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(2); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Kestrin_GenCPU0D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 0 of CPU 1, "CPU#_D0_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(3); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Kestrin_GenCPU1D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 1, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(4); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Kestrin_GenCPU1D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Core voltage of a processor, "CPU#_Volts"; 0.01 V a count, limits 1.2, 1.25, 1.3, 2.3, 2.35, 2.4; where the
 *  board has SENSOR_CPU_VOLTS and tells the bus client of the regulator.  Index: printed number of the CPU. */
uint8_t Kestrin_GenCPUCOREVoltageSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of the switch board, "SW#_Volt"; 0.2 V a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Kestrin_GenSwitchBoardVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current of the switch board, "SW#_Current"; 1 A a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Kestrin_GenSwitchBoardCurrentSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the switch board, "SW#_Temp"; degrees C.  Index: instance 1 to 8. */
uint8_t Kestrin_GenSwitchBoardTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air into and out of the switch board, "SW_Input_Temp_0?" and "SW_Output_T_0?"; degrees C.
 *  Index: 0, 1 in, 2, 3 out; no record above 3. */
uint8_t Kestrin_GenSwitchBoardInOROutletTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
