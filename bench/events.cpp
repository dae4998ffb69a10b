// SPDX-License-Identifier: GPL-3.0-or-later
//
// What one event costs: a whole builder beside the platform calls that it cannot avoid, over the in-memory event log.
#include <benchmark/benchmark.h>

#include <climits>

#include "oxa/exports.h"
#include "oxa/platform.h"
#include "simulator/simulator.h"

namespace {

void Begin() {
    static const bool begun = [] {
        sim::Board board;
        board.sel_limit = UINT_MAX;
        sim::Start(board);
        sim::SetTracing(false);
        return true;
    }();
    benchmark::DoNotOptimize(begun);
    sim::EventLog().clear();
}

void GpuSlotError(benchmark::State &state) {
    Begin();
    for (auto _ : state)
        benchmark::DoNotOptimize(addGpuSlotErrorSel(3));
}

// A builder with many rules.
void Alarm(benchmark::State &state) {
    Begin();
    for (auto _ : state)
        benchmark::DoNotOptimize(addSELAlarm(30, 12, 0));
}

// Info line, session, record, session.
void PlatformCalls(benchmark::State &state) {
    Begin();
    for (auto _ : state) {
        IpmiLocalSession session = {};
        uint8_t privilege = 4;
        uint8_t response[3] = {};
        const char nobody[8] = {};
        const uint8_t record[SEL_RECORD_SIZE] = {0, 0, 2, 0, 0, 0, 0, 0x20, 0, 4, 0x1B, 0, 0x6F, 1, 3, 0};
        _ssp_info(52, "oxa_specific_sel.c", 1, "addGpuSlotErrorSel", "addGpuSlotErrorSel slotNum:%u", 3u);
        LIBIPMI_Create_IPMI_Local_Session(&session, nobody, nobody, &privilege, 0, 2, 100);
        benchmark::DoNotOptimize(IPMICMD_AddSELEntry(&session, record, response, 100));
        LIBIPMI_CloseSession(&session);
    }
}

BENCHMARK(GpuSlotError)->Name("event/addGpuSlotErrorSel")->Iterations(200000);
BENCHMARK(Alarm)->Name("event/addSELAlarm")->Iterations(200000);
BENCHMARK(PlatformCalls)->Name("event/same_platform_calls")->Iterations(200000);

} // namespace

BENCHMARK_MAIN();
