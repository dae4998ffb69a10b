// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the library adds to the system calls it cannot avoid.  Every record that a static pass builds is
// looked up in the extended store: semaphore, open, seek, read, close.  The same calls are recorded from one
// pass and then made with no library, in the same order; the last lines give the ratio of the two.  Beside it
// the duplicate scan and a plain comparison of names over the same store.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "oxa/exports.h"
#include "oxa/platform.h"
#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace {

constexpr char kBoard[] = OXA_SOURCE_DIR "/boards/fullest.toml";
constexpr char kStore[] = "/var/tmp/extSDR.dat";
constexpr uint32_t kSemKey = 12313;
constexpr uint32_t kSemWait = 2000;
constexpr double kBudget = 1.1;

using Bytes = std::vector<uint8_t>;

Bytes g_records;                     // of one pass
Bytes g_full_store;                  // 255 slots, none of which is a record of the pass
std::vector<std::string> g_sequence; // the file and semaphore calls of one pass
uint8_t g_image[EXT_SLOT_MAX * SDR_SLOT_SIZE];

size_t NameOffset(const uint8_t *slot) {
    return slot[SDR_RECORD_TYPE] == 1 ? FULL_SDR_NAME : COMPACT_SDR_NAME;
}

size_t NameLength(const uint8_t *slot) {
    return slot[NameOffset(slot) - 1] & 0x3Fu;
}

void RunPass() {
    sim::StaticArrays &arrays = sim::CallerArrays();
    OXA_AddDefaultStaticSensor(arrays.slots, arrays.entries, &arrays.count);
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

void Learn() {
    sim::Start(sim::LoadBoardFile(kBoard));
    RunPass();
    const sim::StaticArrays &arrays = sim::CallerArrays();
    g_records.assign(arrays.slots, arrays.slots + size_t{arrays.count} * SDR_SLOT_SIZE);
    for (const sim::Event &event : sim::Trace()) {
        const bool file = event.function.starts_with("sigwrap_") || event.function.starts_with("OAL_Sem") ||
                          event.function == "lseek";
        if (event.kind == sim::Kind::kCall && file)
            g_sequence.push_back(event.function);
    }
    g_full_store = FullStore(g_records);
    sim::SetTracing(false);
    sim::ClearTrace();
}

void UseStore(bool full) {
    sim::WriteFile(kStore, full ? g_full_store : Bytes{});
}

// One recorded call.
void Replay(const std::string &call, int32_t &fd) {
    if (call == "OAL_SemCreate")
        benchmark::DoNotOptimize(OAL_SemCreate(kSemKey));
    else if (call == "OAL_SemLockByKey")
        benchmark::DoNotOptimize(OAL_SemLockByKey(kSemKey, kSemWait));
    else if (call == "sigwrap_open_mode")
        fd = sigwrap_open_mode(kStore, O_RDWR | O_CREAT, 0775);
    else if (call == "lseek")
        benchmark::DoNotOptimize(lseek(fd, 0, SEEK_SET));
    else if (call == "sigwrap_read")
        benchmark::DoNotOptimize(sigwrap_read(fd, g_image, sizeof(g_image)));
    else if (call == "sigwrap_close")
        sigwrap_close(fd);
    else if (call == "OAL_SemUnLockByKey")
        benchmark::DoNotOptimize(OAL_SemUnLockByKey(kSemKey, kSemWait));
}

void StaticPass(benchmark::State &state) {
    UseStore(state.range(0) != 0);
    for (auto _ : state)
        RunPass();
    state.counters["records"] = double(sim::CallerArrays().count);
}

void SystemCallsAlone(benchmark::State &state) {
    UseStore(state.range(0) != 0);
    int32_t fd = -1;
    for (auto _ : state) {
        for (const std::string &call : g_sequence)
            Replay(call, fd);
    }
    state.counters["calls"] = double(g_sequence.size());
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
    UseStore(true);
    for (auto _ : state) {
        for (size_t at = 0; at < g_records.size(); at += SDR_SLOT_SIZE)
            benchmark::DoNotOptimize(lookup(&g_records[at]));
    }
}

void ReadStoreAlone(benchmark::State &state) {
    LookUpAll(state, [](const uint8_t *) { return readExtSDRFile(g_image, sizeof(g_image)); });
}

void DuplicateScan(benchmark::State &state) {
    LookUpAll(state, [](const uint8_t *record) { return checkSensorExist(record) != 0; });
}

void NaiveScan(benchmark::State &state) {
    LookUpAll(state, NaiveExists);
}

BENCHMARK(StaticPass)->Name("static_pass/store")->Arg(0)->Arg(1);
BENCHMARK(SystemCallsAlone)->Name("system_calls_alone/store")->Arg(0)->Arg(1);
BENCHMARK(ReadStoreAlone)->Name("scan/read_alone");
BENCHMARK(DuplicateScan)->Name("scan/library");
BENCHMARK(NaiveScan)->Name("scan/naive");

// The console's output, and the median (or only) time of each benchmark for the lines at the end.
class Reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (median || (run.run_type == Run::RT_Iteration && run.repetitions <= 1))
                times_[run.run_name.function_name + "/" + run.run_name.args] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void PrintRatio(const char *what, const std::string &one, const std::string &other) const {
        if (!times_.contains(one) || !times_.contains(other))
            return;
        std::printf("%-62s %.3f\n", what, times_.at(one) / times_.at(other));
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
    std::printf("budget of the first two: %.1f\n", kBudget);
    reporter.PrintRatio("whole pass / system calls alone, empty store:", "static_pass/store/0",
                        "system_calls_alone/store/0");
    reporter.PrintRatio("whole pass / system calls alone, full store:", "static_pass/store/1",
                        "system_calls_alone/store/1");
    reporter.PrintRatio("duplicate scan / naive scan, both with reading the store:", "scan/library/",
                        "scan/naive/");
    return 0;
}
