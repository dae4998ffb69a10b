// SPDX-License-Identifier: GPL-3.0-or-later
//
// What `record_passes` takes down from the simulated platform and the benchmarks read: the board's answers, and of every
// profile the set that a pass builds and the platform calls that it makes, with an empty and with a full store.
#ifndef OXA_BENCH_RECORDING_H
#define OXA_BENCH_RECORDING_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "bench/answers.h"

namespace bench {

using Bytes = std::vector<uint8_t>;
enum StoreKind { kEmpty, kFull, kStoreKinds };
inline constexpr const char *kStoreNames[] = {"empty", "full"};

struct RecordedCall {
    std::string function; // as in simulator/calls.h, or lseek
    uint32_t first = 0;   // the numbers among its arguments
    uint32_t second = 0;
    std::string format; // snprintf_s
    std::string text;   // what it printed
};

struct RecordedPass {
    Bytes slots;   // SDR_SLOT_SIZE bytes each
    Bytes entries; // DEV_TAB_ENTRY_SIZE bytes each
    std::vector<RecordedCall> calls[kStoreKinds];

    size_t records() const {
        return slots.size() / SDR_SLOT_SIZE;
    }
};

struct Recording {
    Answers answers = {};
    std::map<std::string, RecordedPass> passes; // by the profile's name
};

// Both throw std::runtime_error.
void Save(const Recording &recording, const std::string &path);
Recording Load(const std::string &path);

// A store without a free slot and without a sensor of the pass: its own records with the last character of each
// name changed, so that they look as much like the wanted ones as stored sensors do.
Bytes FullStore(const Bytes &slots);

// Where a slot keeps its name; the length is in the byte before it.
size_t NameOffset(const uint8_t *slot);
size_t NameLength(const uint8_t *slot);

} // namespace bench
#endif
