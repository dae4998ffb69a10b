/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What the library keeps in files: the record file and the extended store; and the CPU presence test.
 *
 * - /var/SpecificSDRRec, the record file: an INI file that says which record id the repository gave to the FRU locator
 *   of a power supply or card, and whether the device is there.  Not locked: its writers must not overlap.
 * - /var/tmp/extSDR.dat, the extended store: up to #EXT_SLOT_MAX SDRs in slots of 64 bytes, no header.
 *   /var/tmp/extDevTab.dat: as many device-table entries of 32 bytes, entry n for slot n.
 *   The library reads the store to tell whether a sensor is there already; it never adds to it by itself.  Every read
 *   and every write takes the system-wide semaphore 12313 for its whole duration.
 */
#ifndef OXA_STORE_H
#define OXA_STORE_H

#include "oxa/records.h"

#include <stdint.h>

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/** \name Record file */
/** @{ */

/**
 * Writes a device's entry into the record file.
 *
 * Call it when the repository has taken the FRU locator of a power supply; SDR_DeleteSpecificSDR() clears the entry
 * itself.  SDR_AddSpecificSensor() does not tell the record id.  The platform knows it, whose IPMICMD_AddSDR() handed
 * the record on and got the id in the response, and so does the service that owns the repository; a caller that reaches
 * neither reads the repository back (IPMI Get SDR) and takes the id of the record of type 0x11 with the entity and
 * instance of the device (bytes 12 and 13; a power supply: 0x0A and its index).
 *
 * Nothing is written, and a line says so, when the file cannot be loaded or the class is another; a failed save is not
 * noticed.
 *
 * \param[in] dwEntityID        device class: 10 power supply, 11 card, 224 GPU base board
 * \param[in] dwEntityInstance  index of the device: of a power supply from 1, up to 9 digits
 * \param[in] dwRecID           its record id in the repository; stored as 0 unless dwPresence is 1
 * \param[in] dwPresence        1 present, 0 gone; other values are stored as they are and count as gone
 *
 * Loads, changes and saves the whole file: one writer at a time over all processes.
 */
void SDR_UpdateSpecificSDRRecFile(uint32_t dwEntityID, uint32_t dwEntityInstance, uint32_t dwRecID,
                                  uint32_t dwPresence);

/**
 * Tells the record id of a power supply's FRU locator (the name is spelled so).
 *
 * \param[in] ucEntityID        device class; only 10, power supply, is read back: any other is a warning and 0
 * \param[in] ucEntityInstance  index of the power supply, from 1
 * \return the record id (low 16 bits of what is stored); 0 when there is none, the power supply is not marked present,
 *         or the file cannot be loaded (error line)
 *
 * Reads the file only.
 */
uint16_t SDR_GetSepcificFruSDRRecID(uint8_t ucEntityID, uint8_t ucEntityInstance);
/** @} */

/**
 * \name Extended store, whole files
 * All four lock the semaphore, open the file (making an empty one where it is missing), go to its start, read or write,
 * close it and unlock.  A null pointer is an error line and 0.  What fails in the file is a line on the debug channel.
 * From any thread or process, with memory of the caller's own.
 * @{
 */

/**
 * Reads the SDRs of the extended store.
 * \param[out] pData  room for dwLen bytes
 * \param[in]  dwLen  how many at most; a full store has 16,320
 * \return number of bytes read; 0 for an empty or unreadable file; -1 when the semaphore cannot be had
 */
int32_t readExtSDRFile(uint8_t *pData, uint32_t dwLen);

/**
 * Replaces the SDRs of the extended store.
 * \param[in] pData  dwLen bytes: slots of 64, left-aligned records
 * \param[in] dwLen  how many
 * \return 0, also when the file could not be written (the debug channel says so; a file that cannot be emptied keeps
 *         its old content); -1 when the semaphore cannot be had
 */
int32_t writeExtSDRFile(const uint8_t *pData, uint32_t dwLen);

/**
 * Reads the device-table entries of the extended store.
 * \param[out] pData  room for dwLen bytes
 * \param[in]  dwLen  how many at most; a full store has 8,160
 * \return number of bytes read; 0 for an empty or unreadable file; -1 when the semaphore cannot be had
 */
int32_t readExtDevTabFile(uint8_t *pData, uint32_t dwLen);

/**
 * Replaces the device-table entries of the extended store.
 * \param[in] pData  dwLen bytes: entries of 32
 * \param[in] dwLen  how many
 * \return 0, also when the file could not be written; -1 when the semaphore cannot be had
 */
int32_t writeExtDevTabFile(const uint8_t *pData, uint32_t dwLen);
/** @} */

/** \name Questions to the extended store */
/** @{ */

/**
 * Tells whether a sensor of this record type and name is stored.
 *
 * Every generator asks this about the record it built.  Compared are full with full and compact with compact records,
 * names whole and to the letter, entity and number not; any other record type is never found.  So one stored record
 * stands for all of its name: CPU_PROCHOT of all CPUs, CPU_TEMP and CPU_STATUS of all on board 0x5497 (profile 0).
 * Reads the store afresh into #g_extSdrData.
 *
 * \param[in] pSDRData  the record, 64 bytes; a null pointer is an error line and 0
 * \return 1 stored; 0 not stored, or the store is empty or unreadable
 *
 * One thread at a time (the image is shared).
 */
int32_t checkSensorExist(const uint8_t *pSDRData);

/**
 * Counts the device-table entries that are stored.
 * \return whole entries of 32 bytes, up to #EXT_SLOT_MAX; 0 when the file is empty or unreadable
 *
 * Takes 8.2 KB of stack; from any thread.
 */
uint32_t getExtDevTabCount(void);

/**
 * Image of the extended SDR file, 255 slots of 64 bytes: scratch memory of the library.
 *
 * Valid within one call only: checkSensorExist() reads the file into it, and the list of disk backplanes is borrowed
 * from it and cleared afterwards.  A program may look at it right after checkSensorExist(), and should not write it.
 */
extern uint8_t g_extSdrData[16320];
OXA_SASSERT(16320 == EXT_SLOT_MAX * SDR_SLOT_SIZE, "g_extSdrData");
/** @} */

/**
 * Tells whether the sensors of a CPU are to be added; the static drivers ask it for each.
 *
 * Yes when the platform's CPU reduce flag is 0 or cannot be read (no service object is a failed call); else when the
 * CPU is online.  A failed call is a warning, a CPU that is offline an info line.
 *
 * \param[in] ucCpuIndex  number of the CPU, from 0
 * \return 1 add, 0 do not
 *
 * From any thread.
 */
uint8_t OXA_CheckifAddCpuSensorByIndex(uint8_t ucCpuIndex);

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
