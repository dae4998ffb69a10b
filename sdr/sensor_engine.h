// SPDX-License-Identifier: Apache-2.0
//
// The engine that turns one row into one record and its device-table entry.
#ifndef OXA_SDR_SENSOR_ENGINE_H
#define OXA_SDR_SENSOR_ENGINE_H

#include "sdr/sensor_row.h"

namespace oxa {

inline constexpr uint16_t kSmallBoardId = 0x5497;

// How a profile calls itself in function names and log lines.
struct ProfileName {
    char acName[8];  // "Default"
    char acFile[34]; // "gen_specific_sensor_default.c"
};

// The name of the function that a log line carries: "<Profile>_<generator>", or the profile's driver.
struct Label {
    char ac[48];
    Label(const ProfileName &tProfile, const char *pcGenerator);
};

// Which one of several: the three agree but for disks (printed number) and OCP error sensors (restored slot).
struct At {
    uint8_t ucIndex = 0;   // moves the entity instance
    uint8_t ucNumber = 0;  // printed in the name
    uint8_t ucOffset3 = 0; // goes to the device-table entry
    constexpr At() = default;
    constexpr explicit At(uint8_t ucAll) : ucIndex(ucAll), ucNumber(ucAll), ucOffset3(ucAll) {}
    constexpr At(uint8_t ucWhich, uint8_t ucPrinted, uint8_t ucEntry)
        : ucIndex(ucWhich), ucNumber(ucPrinted), ucOffset3(ucEntry) {}
};

// Builds the record of tRow into the slot and the entry; the generator contract: (record length byte + 5)
// modulo 256 when a record was written, 0 when not.
uint8_t BuildSensor(const ProfileName &tProfile, const SensorKind &tKind, RowView tRow, At tAt,
                    uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);

// First printed CPU number; 0 with a warning when the board does not tell.
uint8_t ReadSilkStart(const ProfileName &tProfile, const char *pcFunction);

} // namespace oxa
#endif
