/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Thresholds that a user set, kept over restarts and laid over the records built at run time.
 *
 * They live in two places: the platform's live table (MW_GetSensorThreshInfo(), MW_SetSensorThreshInfo()) and its image
 * in /conf/BMC1/sensor_threshold.dat.  A sensor is known by its name, and the file by the profile it was saved under.
 * Sensors of the same name share one entry.
 *
 * Each function takes 14.5 KB of stack.  None returns a result: what fails is logged, and the caller goes on.  No lock
 * is held; two saves at the same time, from whatever threads or processes, may lose one.
 */
#ifndef OXA_THRESHOLDS_H
#define OXA_THRESHOLDS_H

#include <stdint.h>

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Takes the saved thresholds into the platform's live table; call it once when the process starts.
 *
 * A file that was saved under another profile is deleted.  A file that cannot be opened leaves the live table as it is
 * (error line); of a file that is too short the rest counts as 0.
 *
 * \param[in] customId  the profile of this machine (CUSTOM_ID_DEFAULT, ...); later saves are kept under it.  A process
 *                      that never calls this saves under profile 0.
 *
 * Not together with SaveSdrThresholdInfoInFile() in another thread.  Files: reads or deletes the threshold file.
 */
void InitSdrThresholdInfoFromFile(uint32_t customId);

/**
 * Keeps a user's thresholds of one sensor, in the live table and in the file.
 *
 * The sensor's entry is replaced, or a new one is made.  A table with #SENSOR_MAX_COUNT sensors (platform.h) takes no
 * new ones, a sensor without a name is refused, and without the live table nothing is saved; each is an error line.
 *
 * \param[in] sensorName     name of the sensor: a field of 16 bytes, all of which are read; a shorter name is filled up
 *                           with 0.  A null pointer is an error line, nothing is saved.
 * \param[in] thresholdInfo  8 bytes: raw UNR, UC, UNC, LNR, LC, LNC (the order of SDR bytes 36 to 41) and two that are
 *                           stored and not applied.  A null pointer is an error line, nothing is saved.
 * \param[in] mask           low byte: which thresholds the sensor has (THRESH_BIT_...), as in byte 18 of its SDR
 *
 * Files: rewrites the threshold file whole; records that exist already are not changed.
 */
void SaveSdrThresholdInfoInFile(const char *sensorName, const uint8_t *thresholdInfo, uint16_t mask);

/**
 * Lays the saved thresholds of a sensor over its record.
 *
 * Looks the record's name up in the live table (not in the file).  Bytes 36 to 41 are changed as far as byte 18 of the
 * record has them.  Left alone, with a line why: a sensor whose saved mask is not byte 18 of the record, and thresholds
 * that would not rise strictly from LNR over LC to LNC or from UNC over UC to UNR.  The comparison is unsigned, also
 * for sensors with signed readings.  Without the live table there is an error line.  Left alone without a line: a null
 * pointer, a record that is no full one, a sensor that has no saved thresholds.  All specific generators of full
 * records call it.
 *
 * \param[in,out] pucSDR  the record, 64 bytes, changed in place
 *
 * Touches no file; may be called from any thread.
 */
void ModifySensorThresholdByFile(uint8_t *pucSDR);

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
