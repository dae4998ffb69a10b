// SPDX-License-Identifier: GPL-3.0-or-later
//
// The platform calls of a pass, made again in the same order with the same arguments and no library in between.
#ifndef OXA_BENCH_REPLAY_H
#define OXA_BENCH_REPLAY_H

#include <cstdint>
#include <vector>

#include "bench/recording.h"

namespace bench {

struct Step {
    void (*call)(const Step &);
    uint32_t first;
    uint32_t second;
    void *to;         // where the call puts what it gives
    const void *from; // what it copies, or the format that it prints
};

// Throws std::runtime_error when nothing here knows how to make a call.
std::vector<Step> StepsOf(const std::vector<RecordedCall> &calls);

// As many steps that call nothing: what the loop itself costs.
std::vector<Step> IdleSteps(size_t count);

inline void Run(const std::vector<Step> &steps) {
    for (const Step &step : steps)
        step.call(step);
}

} // namespace bench
#endif
