/* SPDX-License-Identifier: GPL-3.0-or-later */
/**
 * \file
 * \brief The simulated platform for C programs: a board file under the library, on a desk.
 *
 * liboxasimulator defines every function of platform.h for the board that is open, so a program that is linked with it
 * and with the library has a machine to ask.  It is made for desks and tests and is under the GPL, unlike the library.
 * \code
 *   OxaSimulator *ptSim = oxa_simulator_open("boards/two_socket_2u.toml");
 *   if (ptSim != NULL && oxa_simulator_run(ptSim, "default") == 0)
 *       printf("%zu sensors\n", oxa_simulator_count(ptSim));
 *   else
 *       fprintf(stderr, "%s\n", oxa_simulator_error());
 *   oxa_simulator_close(ptSim);
 * \endcode
 *
 * While a board is open the program may call the library itself as well, run-time sensors and events included.  Files that
 * the library owns are kept in memory, one set of them for a run.
 *
 * One board of a process at a time, and one thread.  Before a board is open the library must not be called.
 */
#ifndef OXA_SIMULATOR_H
#define OXA_SIMULATOR_H

#include <stddef.h>
#include <stdint.h>

#include "oxa/records.h"

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

typedef struct OxaSimulator OxaSimulator; /**< an open board and the set that was built for it last */

/**
 * Reads a board file and puts the board, with what it lets go wrong, under the library.
 * \param[in] pcBoardFile  path of a board description (TOML)
 * \return the board; null when the file cannot be used or another board is open, oxa_simulator_error() tells why
 */
OxaSimulator *oxa_simulator_open(const char *pcBoardFile);

/**
 * Builds the static set of a profile.
 *
 * Each run starts anew: the board as its file has it, an empty extended store, and a library that remembers nothing.
 * (A variable of the library that a program names, like #gRegisterInfo, may be the program's own copy: that stays.)
 * \param[in,out] ptSim      an open board
 * \param[in]     pcProfile  name of a profile, as oxa-sensors takes it: "default", "kestrin", ...
 * \return 0; -1 when there is no such profile or it has no driver, or when the pass ended without a count
 */
int oxa_simulator_run(OxaSimulator *ptSim, const char *pcProfile);

/**
 * Tells how many sensors the last run built.
 * \param[in] ptSim  an open board
 * \return their number; 0 when the last run failed, and before the first
 */
size_t oxa_simulator_count(const OxaSimulator *ptSim);

/**
 * Gives a record of the last run.
 * \param[in] ptSim   an open board
 * \param[in] nIndex  which, from 0
 * \return #SDR_SLOT_SIZE bytes, until the next run; null from the count on
 */
const uint8_t *oxa_simulator_record(const OxaSimulator *ptSim, size_t nIndex);

/**
 * Gives the device-table entry of a record of the last run.
 * \param[in] ptSim   an open board
 * \param[in] nIndex  which, from 0
 * \return the entry, until the next run; null from the count on
 */
const DevTabEntry *oxa_simulator_entry(const OxaSimulator *ptSim, size_t nIndex);

/**
 * Gives everything back.  The library must not be called until a board is open again.
 * \param[in] ptSim  an open board; null: nothing to do
 */
void oxa_simulator_close(OxaSimulator *ptSim);

/**
 * Tells why the last call of oxa_simulator_open() or oxa_simulator_run() that failed did.
 * \return one line, until one of the two fails again; empty before the first failure
 */
const char *oxa_simulator_error(void);

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
