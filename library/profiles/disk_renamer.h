// SPDX-License-Identifier: Apache-2.0
//
// Disk sensor records that were built elsewhere and are renamed by the printed number of their disk.
#ifndef OXA_PROFILES_DISK_RENAMER_H
#define OXA_PROFILES_DISK_RENAMER_H

#include "library/static_sensors/profile.h"

namespace oxa {

struct DiskNames {
    char acStatus[SENSOR_NAME_SIZE]; // of a compact record
    char acTemp[SENSOR_NAME_SIZE];   // of an NVMe temperature record
    bool bSystemInstance;            // temperatures of other entities count their instance from 60h
    char acNullText[64];             // what is said about a missing record
};

// Moves the entity instance by ucSlotOffset where that does not wrap, converts it into the printed number and
// names the record by it.  Records of other kinds stay as they are.  0, or -1 for a missing record.
// pcFunction: the exported function, for the log.
int32_t RenameDisk(const ProfileNames &tProfile, const DiskNames &tNames, uint8_t *pucSDRRec,
                   uint8_t ucSlotOffset, const char *pcFunction);

} // namespace oxa
#endif
