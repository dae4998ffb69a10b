// SPDX-License-Identifier: GPL-3.0-or-later
//
// Calls of the platform as the library makes them.
#ifndef OXA_TESTS_SIMULATOR_FIRMWARE_CALLS_H
#define OXA_TESTS_SIMULATOR_FIRMWARE_CALLS_H

#include "oxa/platform.h"

inline constexpr char kUnit[] = "specific_sdr_file.c";

inline uint16_t OpenSession(IpmiLocalSession &session) {
    uint8_t privilege = 4;
    return LIBIPMI_Create_IPMI_Local_Session(&session, "", "", &privilege, 0, 2, 10);
}

#endif
