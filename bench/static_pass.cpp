// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the library adds to the calls that it cannot avoid.  Every record of a static pass is looked up in the
// extended store: semaphore, open, seek, read, close.  One pass over the fullest board is traced, then every
// platform call of it is made again in the same order with no library in between.  Beside it the duplicate
// scan and a plain comparison of names over the same store.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "bench/replay.h"
#include "oxa/exports.h"
#include "simulator/board_file.h"

namespace {

constexpr char kBoard[] = OXA_SOURCE_DIR "/boards/fullest.toml";
constexpr char kStore[] = "/var/tmp/extSDR.dat";
constexpr double kBudget = 1.1;

using Bytes = std::vector<uint8_t>;

Bytes g_records;                     // of one pass
Bytes g_stores[2];                   // empty; 255 slots, none of which is a record of the pass
std::vector<bench::Step> g_steps[2]; // of one pass, by store
size_t g_lookups = 0;                // in the store, of one pass
uint8_t g_image[EXT_SLOT_MAX * SDR_SLOT_SIZE];

size_t NameOffset(const uint8_t *slot) {
    return slot[SDR_RECORD_TYPE] == 1 ? FULL_SDR_NAME : COMPACT_SDR_NAME;
}

size_t NameLength(const uint8_t *slot) {
    return slot[NameOffset(slot) - 1] & 0x3Fu;
}

using Driver = decltype(&OXA_AddDefaultStaticSensor);
const std::map<std::string, Driver> kDrivers = {
    {"default", OXA_AddDefaultStaticSensor}, {"kestrin", OXA_AddKestrinStaticSensor},
    {"pellago", OXA_AddPellagoStaticSensor}, {"vorana", OXA_AddVoranaStaticSensor},
    {"astrel", OXA_AddAstrelStaticSensor},   {"quorral", OXA_AddQuorralStaticSensor},
    {"lumora", OXA_AddLumoraStaticSensor},   {"durnow", OXA_AddDurnowStaticSensor},
    {"ferrisk", OXA_AddFerriskStaticSensor}};

// The profile is taken from the environment (OXA_PROFILE), Default when it says nothing.
Driver ChosenDriver() {
    const char *name = std::getenv("OXA_PROFILE");
    return kDrivers.at(name ? name : "default");
}

void RunPass() {
    static const Driver driver = ChosenDriver();
    sim::StaticArrays &arrays = sim::CallerArrays();
    driver(arrays.slots, arrays.entries, &arrays.count);
    benchmark::DoNotOptimize(arrays.count);
}

// The pass's own records with the last character of each name changed.
Bytes FullStore(const Bytes &records) {
    Bytes store;
    for (size_t at = 0; store.size() < sizeof(g_image); at = (at + SDR_SLOT_SIZE) % records.size()) {
        Bytes slot(records.begin() + long(at), records.begin() + long(at) + SDR_SLOT_SIZE);
        slot[NameOffset(slot.data()) + NameLength(slot.data()) - 1] = '~';
        store.insert(store.end(), slot.begin(), slot.end());
    }
    return store;
}

void UseStore(long full) {
    sim::WriteFile(kStore, g_stores[full]);
}

void Learn() {
    sim::Start(sim::LoadBoardFile(kBoard));
    sim::SetTraceBounded(true);
    for (long full : {0L, 1L}) {
        UseStore(full);
        sim::ClearTrace();
        RunPass();
        g_steps[full] = bench::StepsOf(sim::Trace());
        const sim::StaticArrays &arrays = sim::CallerArrays();
        g_records.assign(arrays.slots, arrays.slots + size_t{arrays.count} * SDR_SLOT_SIZE);
        g_stores[1] = FullStore(g_records);
    }
    g_lookups = sim::CountCalls("sigwrap_open_mode");
    sim::SetTracing(false);
    sim::ClearTrace();
}

void StaticPass(benchmark::State &state) {
    UseStore(state.range(0));
    for (auto _ : state)
        RunPass();
    state.counters["records"] = double(sim::CallerArrays().count);
}

void PlatformCalls(benchmark::State &state) {
    UseStore(state.range(0));
    for (auto _ : state)
        bench::Run(g_steps[state.range(0)]);
    state.counters["calls"] = double(g_steps[state.range(0)].size());
}

// The file calls straight into the kernel, past the simulated platform.
void SystemCalls(benchmark::State &state) {
    UseStore(state.range(0));
    const std::string path = sim::RealPath(kStore);
    for (auto _ : state) {
        for (size_t lookup = 0; lookup < g_lookups; ++lookup) {
            const long fd = syscall(SYS_openat, AT_FDCWD, path.c_str(), O_RDWR | O_CREAT, 0775);
            syscall(SYS_lseek, fd, 0, SEEK_SET);
            benchmark::DoNotOptimize(syscall(SYS_read, fd, g_image, sizeof(g_image)));
            syscall(SYS_close, fd);
        }
    }
    state.counters["calls"] = double(4 * g_lookups);
}

bool NaiveExists(const uint8_t *record) {
    const int32_t bytes = readExtSDRFile(g_image, sizeof(g_image));
    for (int32_t at = 0; at + int32_t{SDR_SLOT_SIZE} <= bytes; at += SDR_SLOT_SIZE) {
        const uint8_t *slot = g_image + at;
        if (slot[SDR_RECORD_TYPE] != record[SDR_RECORD_TYPE])
            continue;
        const size_t length = std::max(NameLength(slot), NameLength(record));
        if (std::memcmp(slot + NameOffset(slot), record + NameOffset(record), length) == 0)
            return true;
    }
    return false;
}

template <typename Lookup> void LookUpAll(benchmark::State &state, Lookup lookup) {
    UseStore(1);
    for (auto _ : state) {
        for (size_t at = 0; at < g_records.size(); at += SDR_SLOT_SIZE)
            benchmark::DoNotOptimize(lookup(&g_records[at]));
    }
}

void ReadStore(benchmark::State &state) {
    LookUpAll(state, [](const uint8_t *) { return readExtSDRFile(g_image, sizeof(g_image)); });
}

void DuplicateScan(benchmark::State &state) {
    LookUpAll(state, [](const uint8_t *record) { return checkSensorExist(record) != 0; });
}

void NaiveScan(benchmark::State &state) {
    LookUpAll(state, NaiveExists);
}

BENCHMARK(StaticPass)->Name("static_pass/store")->Arg(0)->Arg(1);
BENCHMARK(PlatformCalls)->Name("same_platform_calls/store")->Arg(0)->Arg(1);
BENCHMARK(SystemCalls)->Name("bare_system_calls/store")->Arg(0)->Arg(1);
BENCHMARK(ReadStore)->Name("look_up_all/read_only");
BENCHMARK(DuplicateScan)->Name("look_up_all/library");
BENCHMARK(NaiveScan)->Name("look_up_all/naive");

// The console's output; keeps the time of each benchmark (the median when it is repeated) for the lines at
// the end.
class Reporter : public benchmark::ConsoleReporter {
public:
    Reporter() : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (median || (run.run_type == Run::RT_Iteration && run.repetitions <= 1))
                times_[run.run_name.function_name + run.run_name.args] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void PrintPass(const char *store, const std::string &suffix) {
        const double pass = times_["static_pass/store" + suffix];
        const double platform = times_["same_platform_calls/store" + suffix];
        const double bare = times_["bare_system_calls/store" + suffix];
        if (pass == 0 || platform == 0 || bare == 0)
            return;
        std::printf("%-6s store: whole pass / same platform calls without the library %.3f (budget %.1f)\n",
                    store, pass / platform, kBudget);
        std::printf("%-6s store: library's own time on top of the bare system calls   %.3f\n", store,
                    (pass - platform + bare) / bare);
    }

    void PrintScan() {
        const double read = times_["look_up_all/read_only"];
        const double library = times_["look_up_all/library"] - read;
        const double naive = times_["look_up_all/naive"] - read;
        if (read != 0 && library > 0 && naive > 0)
            std::printf("full   store: plain comparison / duplicate scan, reading left out      %.2f\n",
                        naive / library);
    }

private:
    std::map<std::string, double> times_;
};

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    Learn();
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintPass("empty", "0");
    reporter.PrintPass("full", "1");
    reporter.PrintScan();
    return 0;
}
