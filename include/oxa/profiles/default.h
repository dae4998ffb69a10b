/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Profile Default (CUSTOM_ID_DEFAULT, 0): driver, generators, tables.
 *
 * What every driver does stands in records.h under "What all static drivers do"; what every generator does stands at
 * #StaticGenFn, #IndexedGenFn and #IndexLastGenFn.  Here stand the sensors: what each is, its "name" (in it # stands
 * for a number, ## for one with at least two digits, ? for 1 or 2), its unit, and when there is none.  Sensors without
 * a unit report states.
 */
#ifndef OXA_PROFILES_DEFAULT_H
#define OXA_PROFILES_DEFAULT_H

#include "oxa/records.h"

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Builds the whole static set of profile Default in one pass.
 *
 * Order of the pass: facts of the board, switch-board card, CPUs, PSUs and their redundancy, memory, PCIe slots,
 * fans, disks, OCP cards, static table, CPU voltage domains, liquid cooling, switch-board air.
 * Records at most, and so slots and entries that the arrays need: 26 of the table, 8 of the switch-board card, 5
 * per CPU, 6 per PSU and 2, 2 per DIMM (or 1 per CPU under simplification), 1 per PCIe slot, 1 per fan, 2 per disk
 * slot and 1 per backplane, 2 per OCP card, 4 CPU voltage domains, 18 of the liquid cooling, 4 of its air.
 *
 * Built by the driver itself, by no function of its own, at the place of its part in the order:
 *   - per CPU whose sensors are wanted (OXA_CheckifAddCpuSensorByIndex()), # its printed number: temperature
 *     "CPU_TEMP_##", degrees C ("CPU_TEMP" on board 0x5497); temperature of its voltage regulator "CPU_VR_TEMP_##",
 *     degrees C, where the board has SENSOR_CPU_VR_TEMP and tells the bus client of the regulator; state
 *     "CPU_STATUS_##" ("CPU_STATUS" on board 0x5497).
 *   - per DIMM, not under simplification, (label) what HAL_GetDimmSensorNameIndex() tells: temperature
 *     "MEM_TEMP_(label)", degrees C; state "MEM_STATUS_(label)".
 *   - per CPU socket under simplification, if there are DIMMs, # from 0: temperature "DIMMG#_TEMP", degrees C.
 *   - per fan, # its printed number (0xFF: no record): presence "FAN_STATUS_##".
 *   - per NVMe disk (CheckHddIsSupportNvme()), besides its state, # the slot as oxa_CustomSlotConversion() turns it:
 *     temperature "NVME_TEMP_##", degrees C, upper critical 70.
 *   - per backplane with disk slots, under simplification, besides its disks, # from 0: temperature "DISKG#_TEMP",
 *     degrees C.
 *   - per OCP card, # its position from 1: temperature "OCP_TEMP_##", degrees C; error "OCP_ERR_##".
 *
 * \param[out] pucSDRRec     slots of 64 bytes, filled from the first on
 * \param[out] ptDEVTab      entries, entry n for slot n
 * \param[out] pucSensorCnt  how many were filled; left alone when the pass ended early (see records.h)
 *
 * A null pointer is an error line, and nothing is written.  One thread at a time; logs a line or more for every record.
 */
void OXA_AddDefaultStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/** \name Static table: 26 rows, in this order */
/** @{ */
/** Redundancy of the fans, "FAN_REDUNDANCY"; not in liquid-cooling mode 2. */
uint8_t Default_GenFanRedundancySDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of all processors, "CPU_POWER"; 6 W a count. */
uint8_t Default_GenCPUPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the memory, "MEM_POWER"; the platform tells the watts a count (HAL_GetDimmPowerAccuracy()); none where
 *  it cannot. */
uint8_t Default_GenMEMPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the disks, "HDD_POWER"; the platform tells the watts a count (HAL_GetHddPowerAccuracy()); none where
 *  it cannot or says 0. */
uint8_t Default_GenHDDPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the machine, "POWER_WATTS"; 17 W a count; not on board 0x5497. */
uint8_t Default_GenBoardPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power of the fans, "FAN_POWER"; the platform tells the watts a count (HAL_GetFanPowerAccuracy()); none where it
 *  cannot or says 0, or in liquid-cooling mode 2. */
uint8_t Default_GenFANPowerSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the chipset, "PCH_TEMP"; degrees C; on boards with Intel processors and SENSOR_PCH_TEMP. */
uint8_t Default_GenPCHTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power button, "POWER_BUTTON"; where the board has SENSOR_POWER_BUTTON. */
uint8_t Default_GenPowerButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of the event log: cleared, full, almost full, "EVENT_LOG". */
uint8_t Default_GenEventLogSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Boot of the operating system, "OS_BOOT". */
uint8_t Default_GenOSBootSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** ACPI state of the system, "ACPI_STATUS". */
uint8_t Default_GenACPIStatusSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Why the system was restarted, "SYS_RESTART". */
uint8_t Default_GenSysRestartSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Button of the identification light, "UID_BUTTON"; where the board has SENSOR_UID_BUTTON. */
uint8_t Default_GenUIDButtonSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Boot of the BMC, "BMC_BOOT_UP". */
uint8_t Default_GenBMCBootUpSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Stop of the operating system, "OS_STOP". */
uint8_t Default_GenOSStopSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Chassis that was opened, "INTRUSION"; where the board has SENSOR_INTRUSION. */
uint8_t Default_GenIntrusionSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Leak of the liquid cooling, "LEAKAGE"; only in liquid-cooling mode 1. */
uint8_t Default_GenLeakageSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that comes in, "INPUT_TEMP"; degrees C, upper limits 45, 50, 52; where the board has
 *  SENSOR_INPUT_TEMP and tells the bus client of its sensor. */
uint8_t Default_GenINPUTTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Humidity of the air that comes in, "ENV_HUMI"; percent; where the board has SENSOR_ENV_HUMI. */
uint8_t Default_GenENVHUMISDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Health of the management engine, "ME"; where the board has SENSOR_ME. */
uint8_t Default_GenMESDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air that goes out, "OUTPUT_TEMP"; degrees C; where the board has SENSOR_OUTPUT_TEMP. */
uint8_t Default_GenOUTPUTTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** 12 V supply of the board, "VCC12V"; 0.1 V a count, limits 9.6, 10.8, 13.2, 14.4; where the board has
 *  SENSOR_VCC12V. */
uint8_t Default_GenVCC12VSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the power distribution board, "PDB_TEMP"; degrees C; where the board has SENSOR_PDB_TEMP. */
uint8_t Default_GenPDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the middle power distribution board, "MIDDLEPDB_TEMP"; degrees C; where the board has
 *  SENSOR_PDB_TEMP. */
uint8_t Default_GenMiddlePDBTEMPSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Time synchronisation that failed, "NTP_SYNC_FAIL". */
uint8_t Default_GenNTPSyncFailSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power fault of the board, "POWER_FAULT"; its registers are read and written back; where the board has
 *  SENSOR_POWER_FAULT. */
uint8_t Default_GenPowerFaultSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Default driver walks it in the
 *  step "static table".  Read-only. */
extern const StaticGenFn atGenDefaultStaticSDRTab[26];
/** Rows of #atGenDefaultStaticSDRTab: 26. */
extern const uint8_t ucDefaultStaticSDRCnt;
/** @} */

/** \name Liquid-cooling table: 12 rows, in this order */
/** @{ */
/** Air into the unit, "CDU_INLET_TEMP"; degrees C. */
uint8_t Default_GenCDUInletTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Dew point, "CDU_DEW_TEMP"; degrees C. */
uint8_t Default_GenCDUDewTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Coolant to the machines, "CDU_SUPPLY_TEMP"; degrees C. */
uint8_t Default_GenCDUSupplyTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Difference of the coolant temperatures, "CDU_DIFF_TEMP"; degrees C. */
uint8_t Default_GenCDUDiffTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Humidity, "CDU_ENV_HUMI"; percent. */
uint8_t Default_GenCDUEnvHumiSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Speed that the fans are set to, "CDU_SET_FAN_SPD"; percent. */
uint8_t Default_GenCDUISetFanSpdSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure of the coolant to the machines, "CDU_SUPPLY_PRESS"; 100 kPa a count. */
uint8_t Default_GenCDUSupplyPressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Flow of the coolant, "CDU_FLOW_RATE"; 1 l/min a count. */
uint8_t Default_GenCDUFlowRateSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Coolant from the machines, "CDU_RETURN_TEMP"; degrees C. */
uint8_t Default_GenCDUReturnTempSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Pressure of the coolant from the machines, "CDU_RETURN_PRESS"; 4 kPa a count. */
uint8_t Default_GenCDUReturnPressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Difference of the pressures, "CDU_DIFF_PRESS"; 4 kPa a count. */
uint8_t Default_GenCDUDiffPressSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Conductivity of the coolant, "CDU_EC_us/cm"; 8 microsiemens/cm a count. */
uint8_t Default_GenCDUECSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** The generators above in this order, which is the order of their records.  The Default driver walks it where a
 *  CDU is managed (IPMI_GetCduManageConfig()).  Read-only. */
extern const StaticGenFn atGenDefaultCDUSDRTab[12];
/** Rows of #atGenDefaultCDUSDRTab: 12. */
extern const uint8_t ucDefaultCDUSDRCnt;
/** @} */

/** \name One record per index */
/** @{ */
/** Voltage of the switch board, "SW_VOLT_##"; 0.2 V a count; none without its bus client.  Index: instance 1 to 4. */
uint8_t Default_GenSwitchBoardVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Current of the switch board, "SW_CURRENT_##"; 1 A a count; none without its bus client.  Index: instance 1 to
 *  4. */
uint8_t Default_GenSwitchBoardCurrentSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the switch board, "SW_TEMP_##"; degrees C.  Index: instance 1 to 8. */
uint8_t Default_GenSwitchBoardTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Processor that throttles itself, "CPU_PROCHOT".  Index: printed number of the CPU.  Every CPU has one of this same
 *  name: entity instance and byte 3 of the entry tell them apart.  checkSensorExist() goes by the name: once one of
 *  them is in the extended store no CPU gets another.  Thresholds it has none, it is a state. */
uint8_t Default_GenCPUProchotSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Core voltage of a processor, "CPU_VOLTS_##"; 0.01 V a count, limits 1.2, 1.25, 1.3, 2.3, 2.35, 2.4; where the
 *  board has SENSOR_CPU_VOLTS and tells the bus client of the regulator.  Index: printed number of the CPU. */
uint8_t Default_GenCPUCOREVoltageSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage into a PSU, "INPUT_VOLTS_##"; 2 V a count; unless the board refuses SENSOR_KIND_INPUT_VOLTS.  Index:
 *  PSU from 1. */
uint8_t Default_GenInputVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage out of a PSU, "OUTPUT_VOLTS_##"; 1 V a count; unless the board refuses SENSOR_KIND_OUTPUT_VOLTS.
 *  Index: PSU from 1. */
uint8_t Default_GenOutputVoltsSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of a PSU, "PSU_STATUS_##"; loads the PSU alarm configuration first; none above the number of PSUs.
 *  Index: PSU from 1. */
uint8_t Default_GenPSUStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of a PSU, "PSU_TEMP_##"; degrees C.  Index: PSU from 1. */
uint8_t Default_GenPSUTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power into a PSU, "PSU_PIN_##"; 14 W a count.  Index: PSU from 1. */
uint8_t Default_GenPSUPInSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Power out of a PSU, "PSU_POUT_##"; 13 W a count.  Index: PSU from 1. */
uint8_t Default_GenPSUPOutSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Redundancy of a PSU group, "PSU_REDUNDANT" and "PSU_REDUNDANT_M".  Index: group 0, 1; no record above 1. */
uint8_t Default_GenPSURedundantSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of a PCIe slot: fault, installed, "PCIE_STATUS_##".  Index: slot, as Hal_GetPcieSlotByIndex() tells it. */
uint8_t Default_GenPCIeStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** State of a disk, "HDD_STATUS_##".  Index: disk slot from 0. */
uint8_t Default_GenHDDStatusSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 0 of CPU 0, "CPU#_D0_N2" ("CPU_VOLTS" on board 0x5497); described by
 *  HAL_GetCpuVoltSdrInfoforSensor(1); none where that fails.  Index: printed number of the CPU. */
uint8_t Default_GenCPU0D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 0, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(2); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Default_GenCPU0D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 0 of CPU 1, "CPU#_D0_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(3); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Default_GenCPU1D0N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Voltage of domain 1 of CPU 1, "CPU#_D1_N2"; described by HAL_GetCpuVoltSdrInfoforSensor(4); none where that
 *  fails.  Index: printed number of the CPU. */
uint8_t Default_GenCPU1D1N2SDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Speed of a fan of the unit, "CDU_FAN_SPD_##"; 100 rpm a count.  Index: fan 1 to 6. */
uint8_t Default_GenCDUFanSpeedSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** Temperature of the air into and out of the switch board, "SW_INPUT_TEMP_0?" and "SW_OUTPUT_T_0?"; degrees C.
 *  Index: 0, 1 in, 2, 3 out; no record above 3. */
uint8_t Default_GenSwitchBoardInOROutletTempSDR(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
