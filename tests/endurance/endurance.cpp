// SPDX-License-Identifier: GPL-3.0-or-later
//
// endurance [--steps N] [--seed S]
//   One process of the library takes N steps of the mix.  Memory, descriptors, semaphores and sessions must not grow after
//   the first tenth, and every file must be consistent all the time.
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "endurance/caller.h"
#include "endurance/options.h"
#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsMeasured = false; // freed memory is kept for a while; leaks are looked for at the end
#else
constexpr bool kMemoryIsMeasured = true;
#endif
constexpr uint64_t kEnoughForMemory = 100000; // steps; shorter runs are still filling their containers
constexpr long kMostHeapGrowth = 16 * 1024;   // bytes: less than a byte for fifty steps of a million
constexpr long kMostRssGrowth = 512 * 1024;

struct Use {
    long rss = 0;  // bytes
    long heap = 0; // bytes
    long files = 0;
};

Use Measure() {
    Use out;
    std::ifstream statm("/proc/self/statm");
    long whole = 0;
    statm >> whole >> out.rss;
    out.rss *= sysconf(_SC_PAGESIZE);
    out.heap = kMemoryIsMeasured ? static_cast<long>(mallinfo2().uordblks) : 0;
    for (int descriptor = 0; descriptor < 4096; ++descriptor) {
        struct stat facts;
        out.files += fstat(descriptor, &facts) == 0 ? 1 : 0;
    }
    return out;
}

double Seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void RequireNoGrowth(const Use &first, const Use &last, uint64_t steps) {
    std::printf("after the first tenth and at the end: resident %ld and %ld KB, heap %ld and %ld bytes, "
                "descriptors %ld and %ld\n",
                first.rss / 1024, last.rss / 1024, first.heap, last.heap, first.files, last.files);
    if (last.files != first.files)
        throw std::runtime_error("descriptors grow");
    if (!kMemoryIsMeasured || steps < kEnoughForMemory)
        return;
    if (last.heap - first.heap > kMostHeapGrowth)
        throw std::runtime_error("the heap grows");
    if (last.rss - first.rss > kMostRssGrowth)
        throw std::runtime_error("resident memory grows");
}

void Run(const endurance::Options &options) {
    const std::string root = sim::Root() + "/root";
    const auto journal = std::make_unique<endurance::Journal>();
    const auto repository = std::make_unique<endurance::Repository>();
    const sim::Board board = sim::LoadBoard(OXA_SOURCE_DIR "/boards/two_socket_2u.toml").board;
    endurance::Caller caller(options.seed, board, 0, root, *journal, *repository);
    const double began = Seconds();
    const uint64_t check = std::max<uint64_t>(options.steps / 1000, 1);
    Use first;
    for (uint64_t step = 1; step <= options.steps; ++step) {
        caller.Step();
        if (step % check == 0)
            caller.CheckEverything();
        if (step == options.steps / 10)
            first = Measure();
    }
    caller.CheckEverything();
    const Use last = Measure();
    const double took = Seconds() - began;
    std::printf("%s%llu steps in %.1f s, %.0f a second\n", caller.Tally().c_str(),
                static_cast<unsigned long long>(options.steps), took,
                static_cast<double>(options.steps) / took);
    RequireNoGrowth(first, last, options.steps);
}

} // namespace

int main(int argc, char **argv) {
    const endurance::Options options = endurance::ReadOptions(argc, argv, {"--steps", "--seed"});
    std::printf("seed %llu\n", static_cast<unsigned long long>(options.seed));
    std::fflush(stdout);
    const std::string folder = sim::Root(); // removed at exit, whatever Run does to the root
    int code = 0;
    try {
        Run(options);
    } catch (const std::exception &error) {
        std::printf("FAILED: %s\n", error.what());
        code = 1;
    }
    std::filesystem::remove_all(folder);
    return code;
}
