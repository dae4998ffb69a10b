/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Profile Ferrisk (CUSTOM_ID_FERRISK, 16): driver, generators, tables.
 *
 * What every driver does stands in records.h under "What all static drivers do"; what every generator does stands at
 * #StaticGenFn, #IndexedGenFn and #IndexLastGenFn.  Here stand the sensors: what each is, its "name" (in it # stands
 * for a number, ## for one with at least two digits, ? for 1 or 2), its unit, and when there is none.  Sensors without
 * a unit report states.
 */
#ifndef OXA_PROFILES_FERRISK_H
#define OXA_PROFILES_FERRISK_H

#include "oxa/records.h"

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Builds the whole static set of profile Ferrisk in one pass.
 *
 * Order of the pass: facts of the board, static table, CPUs, memory, PSUs and their redundancy, disks, OCP cards,
 * switch-board card, switch-board air.
 * Records at most, and so slots and entries that the arrays need: 25 of the table, 4 per CPU, 2 per DIMM (or 1 per
 * CPU under simplification), 8 per PSU and 2, 2 per disk slot and 1 per backplane, 2 per OCP card, 8 of the
 * switch-board card, 4 of its air.
 * OCP positions without a card (GetOcpPresentStatus()) are left out.
 *
 * Built by the driver itself, by no function of its own, at the place of its part in the order:
 *   - per CPU whose sensors are wanted (OXA_CheckifAddCpuSensorByIndex()), # its printed number: temperature
 *     "CPU#_Temp", degrees C ("CPU_Temp" on board 0x5497); temperature of its voltage regulator "CPU#_VR_Temp",
 *     degrees C, where the board has SENSOR_CPU_VR_TEMP and tells the bus client of the regulator; state
 *     "CPU#_Status" ("CPU_Status" on board 0x5497).
 *   - per DIMM, not under simplification, (label) what HAL_GetDimmSensorNameIndex() tells: temperature
 *     "DIMM(label)_Temp", degrees C; state "DIMM(label)_Status".
 *   - per CPU socket under simplification, if there are DIMMs, # from 0: temperature "DIMMG#_Temp", degrees C.
 *   - per PSU group (HAL_GetPsuGroupCount() 1 or 2, HAL_GetPsuCountPerGroup() not 0): redundancy "PSU_Redundant" of
 *     group 0, "PSU_Redundant_M" of group 1.
 *   - per disk slot, where FruSdrInitPathChoice() is 1, # the slot from 0: state "HDD#_Status".
 *   - per NVMe disk (CheckHddIsSupportNvme()), besides its state, # the slot as oxa_CustomSlotConversion() turns it:
 *     temperature "NVME#_Temp", degrees C, upper critical 70.
 *   - per backplane with disk slots, under simplification, besides its disks, # from 0: temperature "DISKG#_Temp",
 *     degrees C.
 *   - per OCP card, # its position from 1: temperature "NIC#_Temp", degrees C; error "NIC#_Err".
 *
 * \param[out] pucSDRRec     slots of 64 bytes, filled from the first on
 * \param[out] ptDEVTab      entries, entry n for slot n
 * \param[out] pucSensorCnt  how many were filled; left alone when the pass ended early (see records.h)
 *
 * A null pointer is an error line, and nothing is written.  One thread at a time; logs a line or more for every record.
 */
void OXA_AddFerriskStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/** \name Static table: 25 rows, in this order */
/** @{ */
/** Power of all processors, "CPU_Power"; 6 W a count. */
uint8_t Ferrisk_GenCPUPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the memory, "MEM_Power"; the platform tells the watts a count (HAL_GetDimmPowerAccuracy()); none where
 *  it cannot. */
uint8_t Ferrisk_GenMEMPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the fans, "FAN_Power"; the platform tells the watts a count (HAL_GetFanPowerAccuracy()); none where it
 *  cannot or says 0, or in liquid-cooling mode 2. */
uint8_t Ferrisk_GenFANPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the disks, "HDD_Power"; the platform tells the watts a count (HAL_GetHddPowerAccuracy()); none where
 *  it cannot or says 0. */
uint8_t Ferrisk_GenHDDPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the machine, "Board_Power"; 17 W a count; not on board 0x5497. */
uint8_t Ferrisk_GenBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Redundancy of the fans, "Fan_Redundancy"; not in liquid-cooling mode 2. */
uint8_t Ferrisk_GenFanRedundancySDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** ACPI state of the system, "ACPI_Status". */
uint8_t Ferrisk_GenACPIStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Chassis that was opened, "Intrusion"; where the board has SENSOR_INTRUSION. */
uint8_t Ferrisk_GenIntrusionSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Watchdog of the system, "IPMI_Watchdog". */
uint8_t Ferrisk_GenIPMIWatchdogSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power button, "Power_Button"; where the board has SENSOR_POWER_BUTTON. */
uint8_t Ferrisk_GenPowerButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Progress of the system firmware, "BIOS_Boot_Up". */
uint8_t Ferrisk_GenBiosBootUpSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Boot of the operating system, "OS_Boot". */
uint8_t Ferrisk_GenOSBootSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the I2C buses, the sensor of addI2CStatusSel(), "I2C_Status". */
uint8_t Ferrisk_GenI2CStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Change of firmware versions, "FW_Update". */
uint8_t Ferrisk_GenFWUpdateSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Health of the BMC, "BMC_Status". */
uint8_t Ferrisk_GenBMCStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Time synchronisation that failed, "NTP_Sync_Fail". */
uint8_t Ferrisk_GenNTPSyncFailSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the event log: cleared, full, almost full, "SEL_Status". */
uint8_t Ferrisk_GenSELStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V supply of the front backplanes, "Front_BP_12V"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4; where the
 *  board has SENSOR_BP_FRONT_12V. */
uint8_t Ferrisk_GenFrontBp12VSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V supply of the rear backplanes, "Rear_BP_12V"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4; where the board
 *  has SENSOR_BP_REAR_12V. */
uint8_t Ferrisk_GenRearBp12VSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the front backplanes, the highest, "BP_F_Temp_Max"; degrees C, upper limits 58, 60; where the
 *  board has SENSOR_BP_FRONT_TEMP. */
uint8_t Ferrisk_GenFrontBPTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the rear backplanes, the highest, "BP_R_Temp_Max"; degrees C, upper limits 58, 60; where the
 *  board has SENSOR_BP_REAR_TEMP. */
uint8_t Ferrisk_GenRearBPTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Errors of all PCIe buses, "PCIE_Status". */
uint8_t Ferrisk_GenPCIEStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Boot of the system that was initiated, "Sys_Boot_Init". */
uint8_t Ferrisk_GenSysBootInitSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Stop of the operating system, "OS_Stop". */
uint8_t Ferrisk_GenOSStopSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power fault of the board, "Power_Fault"; its registers are read and written back; where the board has
 *  SENSOR_POWER_FAULT. */
uint8_t Ferrisk_GenPowerFaultSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Ferrisk driver walks it in the
 *  step "static table".  Read-only. */
extern const StaticGenFn atGenFerriskStaticSDRTab[25];
/** Rows of #atGenFerriskStaticSDRTab: 25. */
extern const uint8_t ucFerriskStaticSDRCnt;
/** @} */

/** \name One record per index */
/** @{ */
/** Voltage into a PSU, "PSU#_Vin"; 2 V a count; unless the board refuses SENSOR_KIND_INPUT_VOLTS.  Index: PSU from
 *  1. */
uint8_t Ferrisk_GenPSUVinSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage out of a PSU, "PSU#_Vout"; 1 V a count; unless the board refuses SENSOR_KIND_OUTPUT_VOLTS.  Index: PSU
 *  from 1. */
uint8_t Ferrisk_GenPSUVoutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current into a PSU, "PSU#_Iin"; 0.1 A a count.  Index: PSU from 1. */
uint8_t Ferrisk_GenPSUIINSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current out of a PSU, "PSU#_Iout"; 1 A a count.  Index: PSU from 1. */
uint8_t Ferrisk_GenPSUIOutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power into a PSU, "PSU#_Pin"; 14 W a count.  Index: PSU from 1. */
uint8_t Ferrisk_GenPSUPInSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power out of a PSU, "PSU#_Pout"; 13 W a count.  Index: PSU from 1. */
uint8_t Ferrisk_GenPSUPOutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of a PSU, "PSU#_Temp"; degrees C.  Index: PSU from 1. */
uint8_t Ferrisk_GenPSUTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of a PSU, "PSU#_Status"; loads the PSU alarm configuration first; none above the number of PSUs.  Index:
 *  PSU from 1. */
uint8_t Ferrisk_GenPSUStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

/** \name The profile's own copies of the Default generators of the same suffix */
/** @{ */
/** Core voltage of a processor, "CPU#_Volts"; 0.01 V a count, limits 1.2, 1.25, 1.3, 2.3, 2.35, 2.4; where the
 *  board has SENSOR_CPU_VOLTS and tells the bus client of the regulator.  Index: printed number of the CPU. */
uint8_t Ferrisk_GenCPUCOREVoltageSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of the switch board, "SW#_Volt"; 0.2 V a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Ferrisk_GenSwitchBoardVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current of the switch board, "SW#_Current"; 1 A a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Ferrisk_GenSwitchBoardCurrentSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the switch board, "SW#_Temp"; degrees C.  Index: instance 1 to 8. */
uint8_t Ferrisk_GenSwitchBoardTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air into and out of the switch board, "SW_Input_Temp_0?" and "SW_Output_T_0?"; degrees C.
 *  Index: 0, 1 in, 2, 3 out; no record above 3. */
uint8_t Ferrisk_GenSwitchBoardInOROutletTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
