// SPDX-License-Identifier: GPL-3.0-or-later
//
// CPU time of this process (user and system), so that other programs on the machine count little.
#ifndef OXA_BENCH_MEASURE_H
#define OXA_BENCH_MEASURE_H

#include <algorithm>
#include <ctime>
#include <vector>

namespace bench {

inline double CpuSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

// Of one run, the mean over as many as are asked for.
template <class Work> double CpuSecondsOf(int runs, Work work) {
    const double start = CpuSeconds();
    for (int run = 0; run < runs; ++run)
        work();
    return (CpuSeconds() - start) / runs;
}

struct Spread {
    double median = 0;
    double min = 0;
    double max = 0;
};

inline Spread SpreadOf(std::vector<double> values) {
    if (values.empty())
        return {};
    std::sort(values.begin(), values.end());
    return {values[values.size() / 2], values.front(), values.back()};
}

} // namespace bench
#endif
