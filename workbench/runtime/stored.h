// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the extended store and the repository tell sensors apart by, and what ties a device-table entry to its record.
// Records are a whole slot of SDR_SLOT_SIZE bytes, whatever they hold.
#ifndef OXA_WORKBENCH_RUNTIME_STORED_H
#define OXA_WORKBENCH_RUNTIME_STORED_H

#include <cstdint>
#include <string>

#include "oxa/records.h"

namespace workbench {

constexpr uint8_t kFullRecord = 0x01, kCompactRecord = 0x02, kLocatorRecord = 0x11;
constexpr uint8_t kPsuEntity = 0x0A; // of a power supply's locator

bool IsSensorRecord(const uint8_t *record);                      // full or compact
std::string NameOf(const uint8_t *record);                       // the bytes of its name; of a locator too
std::string TypeAndName(const uint8_t *record);                  // "full CPU1_TEMP"
bool IsLocatorOf(const uint8_t *record, uint8_t entity);         // 0x0A power supply
bool EntryFits(const DevTabEntry &entry, const uint8_t *record); // as far as both tell of the same sensor

} // namespace workbench
#endif
