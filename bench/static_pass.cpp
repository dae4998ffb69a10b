// SPDX-License-Identifier: GPL-3.0-or-later
//
// static_pass FILE [profile ...]: what the library adds to the calls that it cannot avoid.  A whole pass of a profile
// over the fullest board beside the same platform calls made with no library in between, over a platform that costs
// next to nothing.  FILE is what `record_passes` wrote.  Exit 1 when a pass builds another set than on the simulated
// platform, or the two sides do not make the same calls; a ratio over its budget is a line to read.
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>

#include "bench/measure.h"
#include "bench/profiles.h"
#include "bench/replay.h"
#include "bench/sdr_compiler.h"
#include "bench/thin_platform.h"

namespace {

using bench::Bytes;
using bench::Profile;
using bench::RecordedPass;
using bench::Spread;
using bench::Step;
using bench::StoreKind;

constexpr double kBudgets[] = {1.1, 1.2}; // by store
// Many and short, the two sides in turn: both meet the same load of the machine.
constexpr int kRepetitions = 75;
constexpr double kSliceSeconds = 0.002; // of one side in one repetition; at least one pass

constexpr size_t kRecordsMax = 2048;
uint8_t g_slots[kRecordsMax * SDR_SLOT_SIZE];
DevTabEntry g_entries[kRecordsMax];
uint16_t g_count = 0;

void RunPass(const Profile &profile) {
    profile.driver(g_slots, g_entries, &g_count);
}

// ---- both sides do the same ---------------------------------------------------------------------

struct Calls {
    uint64_t counts[sim::kCallCount] = {};
};

Calls TakeCalls() {
    Calls taken;
    memcpy(taken.counts, bench::g_calls, sizeof(taken.counts));
    memset(bench::g_calls, 0, sizeof(bench::g_calls));
    return taken;
}

void CheckCalls(const std::string &what, const Calls &pass, const Calls &replay) {
    for (size_t id = 0; id < sim::kCallCount; ++id) {
        if (pass.counts[id] != replay.counts[id])
            throw std::runtime_error(what + ": the pass calls " + std::string(sim::kCalls[id].name) + " " +
                                     std::to_string(pass.counts[id]) + " times, the replay " +
                                     std::to_string(replay.counts[id]) + " times");
    }
}

void CheckSet(const std::string &what, const Profile &profile, const RecordedPass &recorded) {
    if (g_count != recorded.records() || (profile.records != 0 && g_count != profile.records))
        throw std::runtime_error(what + ": " + std::to_string(g_count) +
                                 " records, on the simulated platform " + std::to_string(recorded.records()) +
                                 ", expected " + std::to_string(profile.records));
    if (memcmp(g_slots, recorded.slots.data(), recorded.slots.size()) != 0 ||
        memcmp(g_entries, recorded.entries.data(), recorded.entries.size()) != 0)
        throw std::runtime_error(what + ": another set than on the simulated platform");
}

// ---- one profile with one store -----------------------------------------------------------------

struct Times { // seconds of one pass
    Spread pass, calls, ratio, own;
};

// The replay's walk over its steps is no platform call: it is measured alone and taken off.
Times Measure(const std::string &what, const Profile &profile, const std::vector<Step> &steps) {
    const std::vector<Step> idle = bench::IdleSteps(steps.size());
    const auto pass = [&] { RunPass(profile); };
    const auto replay = [&] { bench::Run(steps); };
    const auto walk = [&] { bench::Run(idle); };
    const int runs = std::max(1, int(kSliceSeconds / bench::CpuSecondsOf(3, replay)));
    std::vector<double> passes, calls, ratios, owns;
    for (int repetition = 0; repetition < kRepetitions; ++repetition) {
        TakeCalls();
        passes.push_back(bench::CpuSecondsOf(runs, pass));
        const Calls made = TakeCalls();
        const double replayed = bench::CpuSecondsOf(runs, replay);
        CheckCalls(what, made, TakeCalls());
        calls.push_back(replayed - bench::CpuSecondsOf(runs, walk));
        ratios.push_back(passes.back() / calls.back());
        owns.push_back(passes.back() - calls.back());
    }
    return {bench::SpreadOf(passes), bench::SpreadOf(calls), bench::SpreadOf(ratios), bench::SpreadOf(owns)};
}

struct Result {
    Times times;
    Times in_memory;
    bool within = false;
};

void PrintHead() {
    std::printf(
        "CPU time (user and system) of a whole static pass over the fullest board, beside the same\n"
        "platform calls in the same order with no library, the walk over them taken off.  Microseconds,\n"
        "median [min max] of %d repetitions; ratio: of the two sides of one repetition; own: what the\n"
        "library adds, in nanoseconds for each record.  in memory: own and ratio once more with neither\n"
        "file nor semaphore, the library beside bare tables.\n\n",
        kRepetitions);
    std::printf("%-8s %-5s %7s %-20s %-20s %-19s %-8s %6s %13s\n", "profile", "store", "records", "   pass",
                "  calls", "ratio", "budget", "own", "in memory");
}

void PrintLine(const Profile &profile, StoreKind store, const Result &result) {
    const Times &times = result.times;
    const auto print = [](const Spread &spread) {
        std::printf(" %6.0f [%5.0f %5.0f]", spread.median * 1e6, spread.min * 1e6, spread.max * 1e6);
    };
    std::printf("%-8s %-5s %7u", profile.name, bench::kStoreNames[store], unsigned{g_count});
    print(times.pass);
    print(times.calls);
    std::printf(" %5.3f [%5.3f %5.3f] %3.1f %-4s %6.0f %6.0f %6.2f\n", times.ratio.median, times.ratio.min,
                times.ratio.max, kBudgets[store], result.within ? "PASS" : "over",
                times.own.median * 1e9 / g_count, result.in_memory.own.median * 1e9 / g_count,
                result.in_memory.ratio.median);
    std::fflush(stdout);
}

Result RunStore(bench::Store &file, const Profile &profile, const RecordedPass &recorded, StoreKind store) {
    const std::string what = std::string(profile.name) + ", " + bench::kStoreNames[store] + " store";
    file.Fill(store == bench::kFull ? bench::FullStore(recorded.slots) : Bytes());
    const std::vector<Step> steps = bench::StepsOf(recorded.calls[store]);
    Result result;
    for (const bool in_memory : {false, true}) {
        file.KeepInMemory(in_memory);
        RunPass(profile);
        CheckSet(what, profile, recorded);
        (in_memory ? result.in_memory : result.times) = Measure(what, profile, steps);
    }
    file.KeepInMemory(false);
    result.within = result.times.ratio.median <= kBudgets[store];
    PrintLine(profile, store, result);
    return result;
}

// ---- all ----------------------------------------------------------------------------------------

void PrintSummary(const std::vector<Result> (&results)[bench::kStoreKinds]) {
    std::printf("\n");
    for (const StoreKind store : {bench::kEmpty, bench::kFull}) {
        std::vector<double> ratios, bare;
        size_t within = 0;
        for (const Result &result : results[store]) {
            ratios.push_back(result.times.ratio.median);
            bare.push_back(result.in_memory.ratio.median);
            within += result.within;
        }
        const Spread ratio = bench::SpreadOf(ratios), in_memory = bench::SpreadOf(bare);
        std::printf("%-5s store: %zu of %zu within %.1f; ratio %.3f to %.3f, in memory %.2f to %.2f\n",
                    bench::kStoreNames[store], within, results[store].size(), kBudgets[store], ratio.min,
                    ratio.max, in_memory.min, in_memory.max);
    }
}

bool Chosen(const Profile &profile, int argc, char **argv) {
    for (int at = 2; at < argc; ++at)
        if (argv[at] == std::string(profile.name))
            return true;
    return argc == 2;
}

bool NamesAreKnown(int argc, char **argv) {
    for (int at = 2; at < argc; ++at) {
        bool known = false;
        for (const Profile &profile : bench::Profiles())
            known = known || argv[at] == std::string(profile.name);
        if (!known) {
            std::fprintf(stderr, "static_pass: there is no profile %s\n", argv[at]);
            return false;
        }
    }
    return true;
}

void RunAll(int argc, char **argv) {
    const bench::Recording recording = bench::Load(argv[1]);
    bench::g_answers = recording.answers;
    std::vector<Result> results[bench::kStoreKinds];
    std::vector<bench::OurPass> ours;
    bench::Store file;
    PrintHead();
    for (const Profile &profile : bench::Profiles()) {
        if (!Chosen(profile, argc, argv))
            continue;
        const RecordedPass &recorded = recording.passes.at(profile.name);
        for (const StoreKind store : {bench::kEmpty, bench::kFull})
            results[store].push_back(RunStore(file, profile, recorded, store));
        const Result &empty = results[bench::kEmpty].back();
        ours.push_back({profile.name, recorded.slots, empty.times.pass.median, empty.in_memory.pass.median});
    }
    PrintSummary(results);
    bench::CompareWithCompiler(ours);
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: static_pass FILE [profile ...]\n");
        return 2;
    }
    if (!NamesAreKnown(argc, argv))
        return 2;
    try {
        RunAll(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "static_pass: %s\n", error.what());
        return 1;
    }
    return 0;
}
