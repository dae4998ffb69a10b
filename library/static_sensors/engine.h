// SPDX-License-Identifier: Apache-2.0
//
// The engine that turns one row into one record and its device-table entry.
#ifndef OXA_STATIC_SENSORS_ENGINE_H
#define OXA_STATIC_SENSORS_ENGINE_H

#include "library/static_sensors/profile.h"

namespace oxa {

// Which one of several: the three agree but for disks (printed number) and OCP error sensors (restored slot).
struct At {
    uint8_t ucIndex = 0;   // moves the entity instance
    uint8_t ucNumber = 0;  // printed in the name
    uint8_t ucOffset3 = 0; // goes to the device-table entry

    constexpr At() = default;
    constexpr explicit At(uint8_t uc) : At(uc, uc, uc) {}
    constexpr At(uint8_t uc, uint8_t ucPrinted, uint8_t ucEntry)
        : ucIndex(uc), ucNumber(ucPrinted), ucOffset3(ucEntry) {}
};

// Builds the record of tRow into the slot and the entry; the generator contract: (record length byte + 5)
// modulo 256 when a record was written, 0 when not.
uint8_t BuildSensor(const StaticProfile &tProfile, RowView tRow, const At &tAt, uint8_t *pucSDRRec,
                    DevTabEntry *ptDEVTab);

} // namespace oxa
#endif
