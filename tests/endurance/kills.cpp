// SPDX-License-Identifier: GPL-3.0-or-later
//
// kills [--kills N] [--seed S]
//   A process of the library is killed N times in the middle of the mix and started again on the same files.  Nine kills of
//   ten are the process's own, before a platform call or inside a write, and come the same for the same seed; the last
//   tenth comes from outside, by the clock.  After each the files are held to what a kill may leave (judge below), and the
//   next start to what the library then does (Caller::CheckStart).
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <new>
#include <stdexcept>

#include "endurance/caller.h"
#include "endurance/options.h"
#include "oxa/specific_sensors.h"
#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace {

using endurance::kAfter;
using endurance::kBefore;

constexpr unsigned kSecondsOfALife = 60; // one takes a fraction of a second: more is an endless loop
constexpr uint64_t kStepsOfALife = 400;
constexpr uint32_t kCallsOfALife = 12000;
constexpr uint32_t kWritesOfALife = 120;

struct Shared {
    endurance::Journal journal;
    endurance::Repository repository;
    char failure[256] = {};
};

Shared &MakeShared() {
    void *page = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED)
        throw std::runtime_error("no shared memory");
    return *new (page) Shared;
}

// ---- a life ------------------------------------------------------------------------------------------

struct Plan {
    uint64_t seed = 0;
    uint32_t profile = 0;
    uint64_t call = 0;         // 0: not before a call
    uint64_t write = 0;        // 0: not in a write
    double share = 0;          // of that write
    unsigned microseconds = 0; // 0: not by the clock
};

Plan PlanLife(uint64_t seed, uint64_t number, uint64_t all) {
    std::mt19937_64 random(seed * 1000003 + number);
    Plan plan;
    plan.seed = random();
    plan.profile = number < all / 2 ? CUSTOM_ID_DEFAULT : CUSTOM_ID_VORANA; // one change of the profile
    if (number >= all - all / 10)
        plan.microseconds = 1 + static_cast<unsigned>(random() % 60000);
    else if (random() % 2 == 0)
        plan.call = 1 + random() % kCallsOfALife;
    else {
        plan.write = 1 + random() % kWritesOfALife;
        plan.share = static_cast<double>(random() % 1000) / 1000;
        if (random() % 8 == 0)
            plan.share = 0;
    }
    return plan;
}

[[noreturn]] void Live(const Plan &plan, const sim::Board &board, const std::string &root, Shared &shared) {
    alarm(kSecondsOfALife);
    try {
        endurance::Caller caller(plan.seed, board, plan.profile, root, shared.journal, shared.repository);
        sim::DieAtCall(plan.call);
        sim::DieInWrite(plan.write, plan.share);
        caller.CheckStart();
        caller.Repair();
        caller.CheckEverything();
        for (uint64_t step = 0; step < kStepsOfALife || plan.microseconds != 0; ++step)
            caller.Step();
        caller.CheckEverything();
        _exit(0);
    } catch (const std::exception &error) {
        std::snprintf(shared.failure, sizeof shared.failure, "%s", error.what());
    }
    _exit(1);
}

// ---- what it left ------------------------------------------------------------------------------------

// Read without the simulator: the parent never starts it.
std::vector<uint8_t> Read(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <size_t N> bool Is(const std::vector<uint8_t> &file, const endurance::Image<N> &image) {
    return file.size() == image.size && std::equal(file.begin(), file.end(), image.bytes);
}
template <size_t N> bool IsBeginningOf(const std::vector<uint8_t> &file, const endurance::Image<N> &image) {
    return file.size() <= image.size && std::equal(file.begin(), file.end(), image.bytes);
}

using Tally = std::map<std::string, unsigned>;

// A file is what it was, or a beginning of what it was to become.  Gives whether it is new and whole.
template <size_t N>
bool JudgeImage(const std::string &path, endurance::Image<N> (&images)[2], const char *name, Tally &tally) {
    const std::vector<uint8_t> file = Read(path);
    const bool old = Is(file, images[kBefore]);
    const bool whole = Is(file, images[kAfter]);
    if (!old && !whole) {
        if (!IsBeginningOf(file, images[kAfter]))
            throw std::runtime_error(std::string(name) + " is neither old nor a beginning of the new one");
        ++tally[std::string(name) + (file.empty() ? " empty" : " torn")];
    }
    images[kAfter].size = static_cast<uint32_t>(file.size()); // what the next life begins with
    std::copy(file.begin(), file.end(), images[kAfter].bytes);
    images[kBefore] = images[kAfter];
    return whole;
}

// A FRU id in the file of the cards: before, after, missing, or the number after it cut short.
void JudgeCards(const std::string &path, const endurance::Journal &journal, Tally &tally) {
    const std::vector<uint8_t> file = Read(path);
    const std::string text(file.begin(), file.end());
    if (!text.empty() && text.back() != '\n')
        ++tally["FRU id file torn"];
    for (size_t row = 0; row < endurance::kCards; ++row) {
        const std::string key = std::string("\n") + gPurchaseCardInfo[row].acName + "_FruId =";
        const size_t at = text.find(key);
        const std::string rest = at == std::string::npos ? "" : text.substr(at + key.size());
        const std::string id = rest.substr(0, rest.find('\n'));
        const std::string before = std::to_string(journal.cards[kBefore][row]);
        const std::string after = std::to_string(journal.cards[kAfter][row]);
        const bool cut = rest.size() == id.size() && (after.starts_with(id) || before.starts_with(id));
        if (!id.empty() && id != before && id != after && !cut)
            throw std::runtime_error("a FRU id that no card had");
        if (!id.empty() && id != before && id != after)
            ++tally["FRU id cut short"];
    }
}

// Of the record file the next start asks the library itself; here only what is to be counted.
void JudgeSupplies(const std::string &path, const Shared &shared, Tally &tally) {
    const std::vector<uint8_t> file = Read(path);
    const std::string text(file.begin(), file.end());
    if (!text.empty() && text.back() != '\n')
        ++tally["record file torn"];
    if (text.empty() && shared.journal.steps > 1000)
        ++tally["record file empty"];
    for (uint8_t index = 1; index <= endurance::kSupplies; ++index) {
        const uint16_t id = shared.journal.supplies[kBefore][index];
        const std::string section =
            "[PSU_" + std::to_string(index) + "]\nsdrRecId=" + std::to_string(id) + "\nPresence=1\n";
        const bool recorded = id != 0 && text.find(section) != std::string::npos;
        if (recorded && shared.repository.Find(id) == nullptr)
            ++tally["locator deleted, still recorded"];
    }
    for (const endurance::KeptRecord *record : shared.repository.All()) {
        if (record->bytes[SDR_RECORD_TYPE] != 0x11 || record->bytes[FRU_SDR_ENTITY_ID] != 0x0A)
            continue;
        if (text.find("sdrRecId=" + std::to_string(record->id) + "\nPresence=1\n") == std::string::npos)
            ++tally["locator in the repository, not recorded"];
    }
}

void Judge(const std::string &root, Shared &shared, Tally &tally) {
    endurance::Journal &journal = shared.journal;
    JudgeCards(root + "/var/tmp/purchaseCardFruId", journal, tally);
    JudgeSupplies(root + "/var/SpecificSDRRec", shared, tally);
    const auto entries_before = journal.entries[kBefore];
    const bool sdrs_new = JudgeImage(root + "/var/tmp/extSDR.dat", journal.sdrs, "extSDR.dat", tally);
    JudgeImage(root + "/var/tmp/extDevTab.dat", journal.entries, "extDevTab.dat", tally);
    const bool entries_changed =
        !Is({journal.entries[kAfter].bytes, journal.entries[kAfter].bytes + journal.entries[kAfter].size},
            entries_before);
    if (entries_changed && !sdrs_new)
        throw std::runtime_error("entries were written before the records");
    const size_t slots = journal.sdrs[kAfter].size / SDR_SLOT_SIZE;
    if (slots != journal.entries[kAfter].size / DEV_TAB_ENTRY_SIZE)
        ++tally["records without entries, or the reverse"];
    JudgeImage(root + "/conf/BMC1/sensor_threshold.dat", journal.thresholds, "sensor_threshold.dat", tally);
}

// ---- one after the other -----------------------------------------------------------------------------

void RunLife(const Plan &plan, const sim::Board &board, const std::string &root, Shared &shared,
             Tally &tally) {
    const pid_t process = fork();
    if (process < 0)
        throw std::runtime_error("no process");
    if (process == 0)
        Live(plan, board, root, shared);
    if (plan.microseconds != 0) {
        usleep(plan.microseconds);
        kill(process, SIGKILL);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        throw std::runtime_error("the process does not come to an end");
    if (WIFSIGNALED(status) && WTERMSIG(status) != SIGKILL)
        throw std::runtime_error("the process died of signal " + std::to_string(WTERMSIG(status)));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        throw std::runtime_error(shared.failure[0] != '\0' ? shared.failure : "the process ended itself");
    if (WIFSIGNALED(status))
        ++tally[plan.call != 0    ? "killed before a call"
                : plan.write != 0 ? "killed in a write"
                                  : "killed by the clock"];
    Judge(root, shared, tally);
}

constexpr uint64_t kEnoughToSeeAll = 1000;
constexpr const char *kMustBeSeen[] = {
    "extSDR.dat torn",
    "extSDR.dat empty",
    "extDevTab.dat torn",
    "extDevTab.dat empty",
    "record file torn",
    "sensor_threshold.dat torn",
    "sensor_threshold.dat empty",
    "FRU id file torn",
    "locator in the repository, not recorded",
    "locator deleted, still recorded",
    "records without entries, or the reverse",
};

void Run(const endurance::Options &options, const std::string &root) {
    Shared &shared = MakeShared();
    const sim::Board board = sim::LoadBoard(OXA_SOURCE_DIR "/boards/base_48.toml").board;
    Tally tally;
    uint64_t killed = 0, lives = 0;
    const uint64_t most = options.kills * 3;
    for (; killed < options.kills && lives < most; ++lives) {
        const Plan plan = PlanLife(options.seed, lives, options.kills);
        const unsigned before =
            tally["killed before a call"] + tally["killed in a write"] + tally["killed by the clock"];
        try {
            RunLife(plan, board, root, shared, tally);
        } catch (const std::exception &error) {
            throw std::runtime_error("life " + std::to_string(lives) + ": " + error.what());
        }
        const unsigned after =
            tally["killed before a call"] + tally["killed in a write"] + tally["killed by the clock"];
        killed += after - before;
    }
    for (const auto &[what, times] : tally)
        std::printf("  %-42s %5u\n", what.c_str(), times);
    std::printf("%llu kills in %llu lives, %llu whole steps\n", static_cast<unsigned long long>(killed),
                static_cast<unsigned long long>(lives),
                static_cast<unsigned long long>(shared.journal.steps));
    if (killed < options.kills)
        throw std::runtime_error("too few lives end by a kill");
    for (const char *what : kMustBeSeen)
        if (options.kills >= kEnoughToSeeAll && tally[what] == 0)
            throw std::runtime_error(std::string("never seen: ") + what);
}

} // namespace

int main(int argc, char **argv) {
    const endurance::Options options = endurance::ReadOptions(argc, argv, {"--kills", "--seed"});
    std::printf("seed %llu\n", static_cast<unsigned long long>(options.seed));
    std::fflush(stdout);
    const std::string folder = sim::Root();
    int code = 0;
    try {
        Run(options, folder + "/root");
    } catch (const std::exception &error) {
        std::printf("FAILED: %s\n", error.what());
        code = 1;
    }
    std::filesystem::remove_all(folder);
    return code;
}
