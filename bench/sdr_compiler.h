// SPDX-License-Identifier: GPL-3.0-or-later
//
// The same set of records made by OpenIPMI's compiler for sensor data records, `sdrcomp`.
#ifndef OXA_BENCH_SDR_COMPILER_H
#define OXA_BENCH_SDR_COMPILER_H

#include <vector>

#include "bench/recording.h"

namespace bench {

struct OurPass {
    const char *profile;
    Bytes slots;
    double seconds;        // CPU time of the pass
    double memory_seconds; // with the store in memory
};

// Prints a line for each pass, or one line when there is no sdrcomp.
void CompareWithCompiler(const std::vector<OurPass> &passes);

} // namespace bench
#endif
