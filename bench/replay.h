// SPDX-License-Identifier: GPL-3.0-or-later
//
// The platform calls of a traced static pass, made again in the same order with no library in between.
#ifndef OXA_BENCH_REPLAY_H
#define OXA_BENCH_REPLAY_H

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/simulator.h"

namespace bench {

struct Step;
using Action = void (*)(const Step &);

struct Step {
    Action action = nullptr;
    uint32_t first = 0;  // first number among the traced arguments
    uint32_t second = 0; // second one
    sim::Event event;
};

// Throws std::runtime_error when the trace holds a call that nothing here knows how to make.
std::vector<Step> StepsOf(const std::vector<sim::Event> &trace);

void Run(const std::vector<Step> &steps);

} // namespace bench
#endif
