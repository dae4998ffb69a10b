// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the files hold before and after the step that is under way.  Plain memory, so that it can be shared with a process
// that outlives the caller and looks at what a kill left.
#ifndef OXA_TESTS_ENDURANCE_JOURNAL_H
#define OXA_TESTS_ENDURANCE_JOURNAL_H

#include <cstdint>
#include <cstring>

#include "oxa/platform.h"
#include "oxa/records.h"

namespace endurance {

constexpr uint8_t kSupplies = 12; // power supplies, from 1
constexpr uint8_t kCards = 10;    // rows of the card catalogue that are tried

template <size_t N> struct Image { // of a file; size 0: empty or missing
    uint32_t size = 0;
    uint8_t bytes[N] = {};
};

enum { kBefore, kAfter };

struct Journal {
    Image<EXT_SLOT_MAX * SDR_SLOT_SIZE> sdrs[2];
    Image<EXT_SLOT_MAX * DEV_TAB_ENTRY_SIZE> entries[2];
    Image<sizeof(SensorThreshTable)> thresholds[2];
    uint16_t supplies[2][kSupplies + 1] = {}; // record ids
    uint8_t cards[2][kCards] = {};            // FRU ids
    uint64_t steps = 0;                       // done so far

    // The step is over: what came after it is what is before the next one.
    void Settle() {
        std::memcpy(&sdrs[kBefore], &sdrs[kAfter], sizeof sdrs[0]);
        std::memcpy(&entries[kBefore], &entries[kAfter], sizeof entries[0]);
        std::memcpy(&thresholds[kBefore], &thresholds[kAfter], sizeof thresholds[0]);
        std::memcpy(supplies[kBefore], supplies[kAfter], sizeof supplies[0]);
        std::memcpy(cards[kBefore], cards[kAfter], sizeof cards[0]);
    }
};

} // namespace endurance
#endif
