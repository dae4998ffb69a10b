// SPDX-License-Identifier: GPL-3.0-or-later
//
// What one event costs: a whole builder beside the platform calls that it cannot avoid, over a platform that takes
// every record and keeps none.
#include <benchmark/benchmark.h>

#include "bench/thin_platform.h"
#include "oxa/events.h"

namespace {

// Every iteration writes one event, or the figure is of something else.
template <typename Builder> void WriteEvents(benchmark::State &state, Builder build) {
    uint64_t &written = bench::g_calls[sim::Id("IPMICMD_AddSELEntry")];
    written = 0;
    for (auto _ : state)
        build();
    if (written != uint64_t(state.iterations()))
        state.SkipWithError("not one event for each call");
}

void GpuSlotError(benchmark::State &state) {
    WriteEvents(
        state, [] { benchmark::DoNotOptimize(addGpuSlotErrorSel(3)); });
}

// A builder with many rules.
void Alarm(benchmark::State &state) {
    WriteEvents(
        state, [] { benchmark::DoNotOptimize(addSELAlarm(30, 12, 0)); });
}

// Info line, session, record, session.
void PlatformCalls(benchmark::State &state) {
    WriteEvents(
        state,
        [] {
            IpmiLocalSession session = {};
            uint8_t privilege = 4;
            uint8_t response[3] = {};
            const char nobody[8] = {};
            const uint8_t record[SEL_RECORD_SIZE] = {0, 0, 2, 0, 0, 0, 0, 0x20, 0, 4, 0x1B, 0, 0x6F, 1, 3, 0};
            _ssp_info(52, "oxa_specific_sel.c", 1, "addGpuSlotErrorSel", "addGpuSlotErrorSel slotNum:%u", 3u);
            LIBIPMI_Create_IPMI_Local_Session(&session, nobody, nobody, &privilege, 0, 2, 100);
            benchmark::DoNotOptimize(IPMICMD_AddSELEntry(&session, record, response, 100));
            LIBIPMI_CloseSession(&session);
        });
}

BENCHMARK(GpuSlotError)->Name("event/addGpuSlotErrorSel");
BENCHMARK(Alarm)->Name("event/addSELAlarm");
BENCHMARK(PlatformCalls)->Name("event/same_platform_calls");

} // namespace

BENCHMARK_MAIN();
