// SPDX-License-Identifier: GPL-3.0-or-later
#include "specific_sensors/dispatch_faults.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "support/child.h"

namespace faults {

namespace {

using testing::IsEmpty;

const Calls kBounded = {"memcpy_s",     "oxa_memcpy_s", "memset_s",
                        "oxa_memset_s", "snprintf_s",   "oxa_snprintf_s"};

constexpr int kJudged = 0; // what a child exits with
constexpr int kWrong = 1;
constexpr int kBeyond = 2; // there is no such call any more

// What the clean run hands to the others.
struct Shared {
    uint8_t record[256];
    size_t size;
};
Shared &TheShared() {
    static Shared *const shared = static_cast<Shared *>(
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    return *shared;
}

class RootDirectory {
public:
    RootDirectory() {
        path_ = (std::filesystem::temp_directory_path() / "oxa-sweep-XXXXXX").string();
        if (mkdtemp(path_.data()) == nullptr)
            std::abort();
    }
    ~RootDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::string &path() const {
        return path_;
    }

private:
    std::string path_;
};

void Prepare(const Scenario &scenario, const std::string &root) {
    std::filesystem::remove_all(root);
    sim::SetRoot(root);
    sim::SetTraceBounded(true);
    sim::Start(scenario.board);
    for (const auto &[path, content] : scenario.files)
        sim::WriteFile(path, content);
    if (scenario.before)
        scenario.before();
    sim::ClearTrace();
}

Run Observe(int64_t result, bool clean, bool from_then_on) {
    Run run;
    run.result = result;
    run.clean = clean;
    run.from_then_on = from_then_on;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.failed)
            run.failed.insert(event.function);
    }
    Shared &shared = TheShared();
    if (clean && !sim::Repository().empty()) {
        const Bytes &record = sim::Repository().back().bytes;
        shared.size = record.size();
        std::copy(record.begin(), record.end(), shared.record);
    }
    run.clean_record.assign(shared.record, shared.record + shared.size);
    return run;
}

// What is said about a call that failed: a line with one of these in it.
const std::map<std::string, std::vector<std::string>> kSaid = {
    {"LIBIPMI_Create_IPMI_Local_Session", {"Failed to create IPMI Session wRet(0xc3) !"}},
    {"IPMICMD_AddSDR", {"Failed to add SDR to IPMI: 0xc3\n"}},
    {"IPMICMD_DeleteSDR", {"delete sdr failed, result:195, recordid:0x1.\n"}},
    {"LIBIPMI_HL_SendMsgToFRU", {"Failed to send fru data to IPMI: 0xc3"}},
    {"IniLoadFile", {": file creation failed.\n"}},
    {"OXA_IniLoadFile", {"OXA_IniLoadFile is fail!!!\n", "LoadPurchaseCardFruId : LoadIniFile is fail!!!\n"}},
    {"MW_GetSensorThreshInfo", {"MW Get Sensor Thresh Info failed!"}},
    {"oxa_fopen_s", {"oxa_fopen_s /conf/BMC1/sensor_threshold.dat failed", "oxa_fopen_s failed"}},
    {"fread", {"fread failed!!!"}},
    {"fwrite", {"writeCount:0 != 1!!!"}},
    {"unlink", {"unlink failed!!!"}},
    {"get_default_board_id",
     {"get Board Id failed!", "GenSpecificFanSpeedSDR: sdwRet = -1 wBoardId = 0!",
      "modifySablinGpuSensorName: sdwRet = -1 wBoardId = 0!"}},
    {"OAL_SemCreate", {"sem create failed, line="}},
    {"OAL_SemLockByKey", {"sem lock failed, line="}},
    {"OAL_SemUnLockByKey", {"sem lock failed, line="}},
    {"sigwrap_open_mode", {"open /var/tmp/extSDR.dat failed!"}},
    {"lseek", {"lseek function getting failed\n"}},
    {"sigwrap_read", {"Error in reading the file /var/tmp/extSDR.dat due to error: "}},
};

bool IsSaid(const std::vector<std::string> &texts) {
    const std::vector<sim::Event> &trace = sim::Trace();
    return std::any_of(trace.begin(), trace.end(), [&](const sim::Event &event) {
        return (event.kind == sim::Kind::kLog || event.kind == sim::Kind::kDebug) &&
               std::any_of(texts.begin(), texts.end(), [&](const std::string &text) {
                   return event.text.find(text) != std::string::npos;
               });
    });
}

// One run: the k-th call fails; 0: none.
int RunOne(const Scenario &scenario, const std::string &root, uint64_t k, bool from_then_on) {
    Prepare(scenario, root);
    if (k != 0)
        sim::FailCall(sim::FailableCalls() + k, from_then_on);
    const int64_t result = scenario.act();
    if (k != 0 && !sim::FaultWasHit())
        return kBeyond;
    const Run run = Observe(result, k == 0, from_then_on);
    SCOPED_TRACE(scenario.name + ", call " + std::to_string(k) + (from_then_on ? " and on" : "") + " (" +
                 (run.failed.empty() ? "none" : testing::PrintToString(run.failed)) + "), result " +
                 std::to_string(result));
    EXPECT_EQ(k == 0, run.failed.empty());
    for (const std::string &call : run.failed) {
        const auto said = kSaid.find(call);
        EXPECT_TRUE(said == kSaid.end() || IsSaid(said->second)) << call << " failed without a word";
    }
    scenario.judge(run);
    EXPECT_THAT(sim::Violations(), IsEmpty());
    return testing::Test::HasFailure() ? kWrong : kJudged;
}

// The same in a process of its own, because the library's state has no reset.
int RunApart(const Scenario &scenario, const std::string &root, uint64_t k, bool from_then_on) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int end = RunOne(scenario, root, k, from_then_on);
        tests::EndChild(end);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return kWrong;
    if (WIFSIGNALED(status)) // no failure of this process: its children inherit those
        std::cout << scenario.name << ", call " << k << (from_then_on ? " and on" : "") << ": signal "
                  << WTERMSIG(status) << std::endl;
    return WIFEXITED(status) ? WEXITSTATUS(status) : kWrong;
}

} // namespace

bool Run::AnyFailed(const Calls &calls) const {
    return std::any_of(calls.begin(), calls.end(), [&](const std::string &call) { return Failed(call); });
}

bool Run::BoundedFailed() const {
    return AnyFailed(kBounded);
}

std::vector<std::string> LinesIn(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

size_t Sweep(const Scenario &scenario, bool from_then_on) {
    constexpr uint64_t kMost = 1000;
    const RootDirectory root;
    TheShared().size = 0;
    size_t wrong = 0;
    uint64_t k = 0;
    for (; k < kMost; ++k) {
        const int end = RunApart(scenario, root.path(), k, from_then_on);
        if (end == kBeyond)
            break;
        wrong += end == kJudged ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0u) << "runs that broke a rule";
    EXPECT_LT(k, kMost);
    return k - 1;
}

namespace {

std::vector<Scenario> AllScenarios() {
    std::vector<Scenario> all = AddScenarios();
    for (Scenario &scenario : OtherScenarios())
        all.push_back(std::move(scenario));
    return all;
}
std::vector<std::string> AllNames() {
    std::vector<std::string> names;
    for (const Scenario &scenario : AllScenarios())
        names.push_back(scenario.name);
    return names;
}

class EveryCall : public testing::TestWithParam<std::string> {
protected:
    static void SweepOver(bool from_then_on) {
        for (const Scenario &scenario : AllScenarios()) {
            if (scenario.name != GetParam())
                continue;
            const size_t calls = Sweep(scenario, from_then_on);
            EXPECT_GT(calls, 0u);
            RecordProperty("runs", static_cast<int>(calls));
            std::cout << "[ RUNS     ] " << scenario.name << ": " << calls
                      << (from_then_on ? " from then on" : " once") << std::endl;
        }
    }
};

TEST_P(EveryCall, FailingOnceHasAStatedOutcome) {
    SweepOver(false);
}

TEST_P(EveryCall, FailingFromThenOnHasAStatedOutcome) {
    SweepOver(true);
}

INSTANTIATE_TEST_SUITE_P(RunTime, EveryCall, testing::ValuesIn(AllNames()),
                         [](const testing::TestParamInfo<std::string> &info) { return info.param; });

} // namespace
} // namespace faults
