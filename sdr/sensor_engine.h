// SPDX-License-Identifier: Apache-2.0
//
// The engine that turns one row into one record and its device-table entry.
#ifndef OXA_SDR_SENSOR_ENGINE_H
#define OXA_SDR_SENSOR_ENGINE_H

#include "sdr/sensor_log.h"
#include "sdr/sensor_row_stored.h"

namespace oxa {

inline constexpr uint16_t kSmallBoardId = 0x5497;

// Which one of several: the three agree but for disks (printed number) and OCP error sensors (restored slot).
// They travel in one register.
class At {
public:
    constexpr At() : dwAll(0) {}
    constexpr explicit At(uint8_t ucAll) : dwAll(ucAll * 0x010101u) {}
    constexpr At(uint8_t ucIndex, uint8_t ucNumber, uint8_t ucOffset3)
        : dwAll(ucIndex | static_cast<uint32_t>(ucNumber) << 8 | static_cast<uint32_t>(ucOffset3) << 16) {}
    constexpr uint8_t Index() const { // moves the entity instance
        return static_cast<uint8_t>(dwAll);
    }
    constexpr uint8_t Number() const { // printed in the name
        return static_cast<uint8_t>(dwAll >> 8);
    }
    constexpr uint8_t Offset3() const { // goes to the device-table entry
        return static_cast<uint8_t>(dwAll >> 16);
    }

private:
    uint32_t dwAll;
};

// Builds the record of tRow into the slot and the entry; the generator contract: (record length byte + 5)
// modulo 256 when a record was written, 0 when not.
uint8_t BuildSensor(const ProfileName &tProfile, RowView tRow, At tAt, uint8_t *pucSDRRec,
                    DevTabEntry *ptDEVTab);

} // namespace oxa
#endif
