/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Profile Pellago (CUSTOM_ID_PELLAGO, 2): driver, generators, tables, disk-name rewriter.
 *
 * What every driver does stands in records.h under "What all static drivers do"; what every generator does stands at
 * #StaticGenFn, #IndexedGenFn and #IndexLastGenFn.  Here stand the sensors: what each is, its "name" (in it # stands
 * for a number, ## for one with at least two digits, ? for 1 or 2), its unit, and when there is none.  Sensors without
 * a unit report states.
 */
#ifndef OXA_PROFILES_PELLAGO_H
#define OXA_PROFILES_PELLAGO_H

#include "oxa/records.h"

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Builds the whole static set of profile Pellago in one pass.
 *
 * Order of the pass: facts of the board, static table, CPUs, memory, CPU voltage domains, PSUs and their
 * redundancy, fans, disks, OCP cards, PCIe slots, switch-board card, switch-board air.
 * Records at most, and so slots and entries that the arrays need: 21 of the table, 5 per CPU, 2 per DIMM (or 1 per
 * CPU under simplification), 4 CPU voltage domains, 5 per PSU and 2, 1 per fan, 2 per disk slot and 1 per
 * backplane, 2 per OCP card, 1 per PCIe slot, 8 of the switch-board card, 4 of its air.
 *
 * Built by the driver itself, by no function of its own, at the place of its part in the order:
 *   - per CPU whose sensors are wanted (OXA_CheckifAddCpuSensorByIndex()), # its printed number: temperature
 *     "CPU#_Temp", degrees C ("CPU_Temp" on board 0x5497); temperature of its voltage regulator "CPU#_VR_Temp",
 *     degrees C, where the board has SENSOR_CPU_VR_TEMP and tells the bus client of the regulator; state
 *     "CPU#_Status" ("CPU_Status" on board 0x5497).
 *   - per DIMM, not under simplification, (label) what HAL_GetDimmSensorNameIndex() tells: temperature
 *     "DIMM(label)_Temp", degrees C; state "DIMM(label)_Status".
 *   - per CPU socket under simplification, if there are DIMMs, # from 0: temperature "DIMMG#_Temp", degrees C.
 *   - per PSU, # from 1: voltage into it "PSU#_Vin", 2 V a count, unless the board refuses SENSOR_KIND_INPUT_VOLTS;
 *     voltage out of it "PSU#_Vout", 1 V a count, unless the board refuses SENSOR_KIND_OUTPUT_VOLTS; state
 *     "PSU#_Status" (loads the PSU alarm configuration first); temperature "PSU#_Temp", degrees C.
 *   - per PSU group (HAL_GetPsuGroupCount() 1 or 2, HAL_GetPsuCountPerGroup() not 0): redundancy "PSU_Redundant" of
 *     group 0, "PSU_Redundant_M" of group 1.
 *   - per fan, # its printed number (0xFF: no record): presence "FAN#_Status".
 *   - per NVMe disk (CheckHddIsSupportNvme()), besides its state, # the slot as oxa_CustomSlotConversion() turns it:
 *     temperature "NVME_TEMP_##", degrees C, upper critical 70.
 *   - per backplane with disk slots, under simplification, besides its disks, # from 0: temperature "DISKG#_Temp",
 *     degrees C.
 *   - per OCP card, # its position from 1: temperature "OCP#_Temp", degrees C; error "OCP#_Err".
 *   - per PCIe slot, # as Hal_GetPcieSlotByIndex() tells it: state "PCIE#_Status".
 *
 * \param[out] pucSDRRec     slots of 64 bytes, filled from the first on
 * \param[out] ptDEVTab      entries, entry n for slot n
 * \param[out] pucSensorCnt  how many were filled; left alone when the pass ended early (see records.h)
 *
 * A null pointer is an error line, and nothing is written.  One thread at a time; logs a line or more for every record.
 */
void OXA_AddPellagoStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/**
 * Renames a disk record that was built elsewhere by the printed number of its disk.
 *
 * A compact record becomes "Disk#_Status", a full record whose name begins with "NVME_TEMP_" becomes "Disk#_Temp"; any
 * other record stays as it is.  The number is the entity instance (byte 9)
 * plus the offset (left out where that would pass 255), converted by oxa_CustomSlotConversion().  Name, name length,
 * record length and entity instance (now that number) are changed in place; nothing is when the name cannot be printed.
 * \param[in,out] pucSDRRec     the record, 64 bytes
 * \param[in]     ucSlotOffset  what the printed number has more than the instance
 * \return 0, also when nothing was changed; -1 (and an error line) for a null record
 *
 * Otherwise silent; touches nothing but the record, so it may be called from any thread.
 */
int32_t Pellago_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset);

/** \name Static table: 21 rows, in this order */
/** @{ */
/** Power of all processors, "CPU_Power"; 6 W a count. */
uint8_t Pellago_GenCPUPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the memory, "MEM_Power"; the platform tells the watts a count (HAL_GetDimmPowerAccuracy()); none where
 *  it cannot. */
uint8_t Pellago_GenMEMPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the fans, "FAN_Power"; the platform tells the watts a count (HAL_GetFanPowerAccuracy()); none where it
 *  cannot or says 0, or in liquid-cooling mode 2. */
uint8_t Pellago_GenFANPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the disks, "HDD_Power"; the platform tells the watts a count (HAL_GetHddPowerAccuracy()); none where
 *  it cannot or says 0. */
uint8_t Pellago_GenHDDPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the machine, "Board_Power"; 17 W a count; not on board 0x5497. */
uint8_t Pellago_GenBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power button, "Power_Button"; where the board has SENSOR_POWER_BUTTON. */
uint8_t Pellago_GenPowerButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the event log: cleared, full, almost full, "SEL_Status". */
uint8_t Pellago_GenSELStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** ACPI state of the system, "ACPI_Status". */
uint8_t Pellago_GenACPIStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Why the system was restarted, "Sys_Restart". */
uint8_t Pellago_GenSysRestartSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Stop of the operating system, "OS_Stop". */
uint8_t Pellago_GenOSStopSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the chipset, "PCH_Temp"; degrees C; on boards with Intel processors and SENSOR_PCH_TEMP. */
uint8_t Pellago_GenPCHTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Chassis that was opened, "Intrusion"; where the board has SENSOR_INTRUSION. */
uint8_t Pellago_GenIntrusionSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that comes in, "Inlet_Temp"; degrees C, upper limits 45, 50, 52; where the board has
 *  SENSOR_INPUT_TEMP and tells the bus client of its sensor. */
uint8_t Pellago_GenINLETTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Humidity of the air that comes in, "Env_Humi"; percent; where the board has SENSOR_ENV_HUMI. */
uint8_t Pellago_GenENVHUMISDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that goes out, "Outlet_Temp"; degrees C; where the board has SENSOR_OUTPUT_TEMP. */
uint8_t Pellago_GenOutletTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V supply of the board, "SYS_12V"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4; where the board has
 *  SENSOR_VCC12V. */
uint8_t Pellago_GenSYS12VSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the power distribution board, "PDB_Temp"; degrees C; where the board has SENSOR_PDB_TEMP. */
uint8_t Pellago_GenPDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the middle power distribution board, "Middle_PDB_Temp"; degrees C; where the board has
 *  SENSOR_PDB_TEMP. */
uint8_t Pellago_GenMiddlePDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Leak of the liquid cooling, "Leakage"; only in liquid-cooling mode 1. */
uint8_t Pellago_GenLeakageSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Time synchronisation that failed, "NTP_Sync_Fail". */
uint8_t Pellago_GenNTPSyncFailSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power fault of the board, "Power_Fault"; its registers are read and written back; where the board has
 *  SENSOR_POWER_FAULT. */
uint8_t Pellago_GenPowerFaultSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Pellago driver walks it in the
 *  step "static table".  Read-only. */
extern const StaticGenFn atGenPellagoStaticSDRTab[21];
/** Rows of #atGenPellagoStaticSDRTab: 21. */
extern const uint8_t ucPellagoStaticSDRCnt;
/** @} */

/** \name One record per index */
/** @{ */
/** Power of a PSU, "PSU#_Power"; 14 W a count.  Index: PSU from 1. */
uint8_t Pellago_GenPSUPowerSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of a disk, "Disk#_Status".  Index: disk slot from 0. */
uint8_t Pellago_GenDiskStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

/** \name One record per index, index last */
/** @{ */
/** Power of a processor, "CPU#_Power"; 3 W a count; none below the first printed number.  Index: printed number of
 *  the CPU. */
uint8_t Pellago_GenCPUSinglePowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex);
/** @} */

/** \name The profile's own copies of the Default generators of the same suffix */
/** @{ */
/** Voltage of domain 0 of CPU 0, "CPU#_D0_N2" ("CPU_Volts" on board 0x5497); described by
 *  HAL_GetCpuVoltSdrInfoforSensor(1); none where that fails.  Index: printed number of the CPU. */
uint8_t Pellago_GenCPU0D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 0, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(2); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Pellago_GenCPU0D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 0 of CPU 1, "CPU#_D0_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(3); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Pellago_GenCPU1D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 1, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(4); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Pellago_GenCPU1D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Core voltage of a processor, "CPU#_Volts"; 0.01 V a count, limits 1.2, 1.25, 1.3, 2.3, 2.35, 2.4; where the
 *  board has SENSOR_CPU_VOLTS and tells the bus client of the regulator.  Index: printed number of the CPU. */
uint8_t Pellago_GenCPUCOREVoltageSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of the switch board, "SW#_Volt"; 0.2 V a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Pellago_GenSwitchBoardVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current of the switch board, "SW#_Current"; 1 A a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Pellago_GenSwitchBoardCurrentSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the switch board, "SW#_Temp"; degrees C.  Index: instance 1 to 8. */
uint8_t Pellago_GenSwitchBoardTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air into and out of the switch board, "SW_Input_Temp_0?" and "SW_Output_T_0?"; degrees C.
 *  Index: 0, 1 in, 2, 3 out; no record above 3. */
uint8_t Pellago_GenSwitchBoardInOROutletTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
