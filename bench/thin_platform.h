// SPDX-License-Identifier: GPL-3.0-or-later
//
// A platform that costs next to nothing: every fact is a look-up in a table, a log line is dropped unread.  Only
// what the extended store needs is real: the file, and the semaphore in front of it.
#ifndef OXA_BENCH_THIN_PLATFORM_H
#define OXA_BENCH_THIN_PLATFORM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/answers.h"
#include "simulator/calls.h"

namespace bench {

extern Answers g_answers;

// How often each platform function was called.  One addition a call, the same for whoever calls.
extern uint64_t g_calls[sim::kCallCount];
#define OXA_BENCH_COUNT(name) ++bench::g_calls[sim::Id(name)]

// The store's file in a directory of its own and a semaphore of its own; both are gone with the object.
class Store {
public:
    Store();
    ~Store();
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;

    void Fill(const std::vector<uint8_t> &bytes);

    // From now on the store's calls take from memory and the semaphore is always free: what is left is the library
    // and the tables.
    void KeepInMemory(bool on);

private:
    std::string directory_;
};

} // namespace bench
#endif
