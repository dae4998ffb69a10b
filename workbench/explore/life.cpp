// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/life.h"

#include <algorithm>
#include <cstring>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/errors.h"
#include "oxa/records.h"
#include "runtime/platform.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

// ---- what a dying process leaves -------------------------------------------------------------------

// Memory that this process shares with those that it forks.
class Estate {
public:
    Estate()
        : begin_(static_cast<uint8_t *>(
              mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
        if (begin_ == MAP_FAILED)
            throw SetError("no shared memory");
    }
    ~Estate() {
        munmap(begin_, kSize);
    }
    Estate(const Estate &) = delete;
    Estate &operator=(const Estate &) = delete;

    void Leave() {
        at_ = 0;
        for (const std::string &path : sim::LibraryPaths()) {
            Put(sim::FileExists(path));
            PutBytes(sim::ReadFile(path));
        }
        const RepositoryState repository = CurrentRepository();
        Put(repository.next_id);
        Put(static_cast<uint32_t>(repository.records.size()));
        for (const sim::RepositoryRecord &record : repository.records) {
            Put(record.id);
            PutBytes(record.bytes);
        }
    }
    RepositoryState Inherit() {
        at_ = 0;
        sim::RemoveMemoryFiles();
        for (const std::string &path : sim::LibraryPaths()) {
            const bool there = Get<bool>();
            const std::vector<uint8_t> bytes = GetBytes();
            if (there)
                sim::WriteFile(path, bytes);
        }
        RepositoryState repository;
        repository.next_id = Get<uint16_t>();
        repository.records.resize(Get<uint32_t>());
        for (sim::RepositoryRecord &record : repository.records) {
            record.id = Get<uint16_t>();
            record.bytes = GetBytes();
        }
        return repository;
    }

private:
    static constexpr size_t kSize = 1 << 20; // all files and a full repository are less
    template <class T> void Put(T value) {
        std::memcpy(begin_ + at_, &value, sizeof value);
        at_ += sizeof value;
    }
    template <class T> T Get() {
        T value;
        std::memcpy(&value, begin_ + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }
    void PutBytes(const std::vector<uint8_t> &bytes) {
        Put(static_cast<uint32_t>(bytes.size()));
        std::copy(bytes.begin(), bytes.end(), begin_ + at_);
        at_ += bytes.size();
    }
    std::vector<uint8_t> GetBytes() {
        const uint32_t size = Get<uint32_t>();
        std::vector<uint8_t> bytes(begin_ + at_, begin_ + at_ + size);
        at_ += size;
        return bytes;
    }
    uint8_t *begin_;
    size_t at_ = 0;
};

Estate &TheEstate() {
    static Estate estate; // of this process and those that it forks
    return estate;
}

constexpr int kLives = 7; // exit status of a process that was to die

// ---- limits ----------------------------------------------------------------------------------------

// The limits of the first sensor by name, the critical one a step lower.
std::optional<UserThresholds> LimitsToSet() {
    std::map<std::string, const sim::RepositoryRecord *> full; // by name
    for (const sim::RepositoryRecord &record : sim::Repository()) {
        std::vector<uint8_t> slot = record.bytes;
        slot.resize(SDR_SLOT_SIZE);
        if (slot[SDR_RECORD_TYPE] == kFullRecord)
            full.emplace(NameOf(slot.data()), &record);
    }
    if (full.empty())
        return std::nullopt;
    const auto &[name, first] = *full.begin();
    UserThresholds out;
    out.sensor = name;
    out.mask = first->bytes[SDR_READING_MASK];
    std::copy_n(first->bytes.begin() + FULL_SDR_UNR, 6, out.values);
    if (out.mask & THRESH_BIT_UC)
        --out.values[1];
    return out;
}

} // namespace

void Life::StartAnew(const RepositoryState &repository, const std::vector<sim::Fault> &more) {
    std::vector<sim::Fault> faults = world_.board_faults;
    faults.insert(faults.end(), more.begin(), more.end());
    sim::ForgetLibraryState();
    sim::Board board = world_.board;
    board.files.clear(); // they are there since the first start
    StartWith(std::move(board), faults, repository);
    StartLibrary();
}

void Life::Begin() {
    limits_.clear();
    faults_used_ = 0;
    sim::RemoveMemoryFiles();
    sim::ForgetLibraryState();
    StartWith(world_.board, world_.board_faults, {});
    StartLibrary();
}

void Life::SetLimits() {
    offered_ = LimitsToSet();
    if (!offered_)
        return;
    if (SaveThresholds(*offered_).word != "not-saved")
        limits_[offered_->sensor] = {*offered_};
}

void Life::Do(const Move &move) {
    if (move.what == What::kRestart)
        return StartAnew(CurrentRepository());
    if (move.what == What::kLimits)
        return SetLimits();
    const Part &part = world_.parts[move.part];
    if (move.what == What::kComes)
        for (const SpecificSensorParam &param : part.params)
            AddSensor(param, true);
    if (move.what == What::kGoes)
        RemoveSensor(part.params.front());
    if (move.what == What::kFails) {
        const EventCall event = part.Event();
        WriteEvent(event.builder, event.arguments);
    }
}

// In a process of its own; what it leaves is the next life's.
bool Life::DieIn(const Move &move) {
    Estate &estate = TheEstate();
    const pid_t process = fork();
    if (process < 0)
        throw SetError("no process");
    if (process == 0) {
        sim::BeforeDying([&estate] { estate.Leave(); });
        if (move.kill.change != 0)
            sim::DieAtChange(sim::ChangesMade() + move.kill.change);
        else
            sim::DieInWrite(sim::WritesMade() + move.kill.write, move.kill.percent / 100.0);
        Do(move);
        _exit(kLives);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kLives)
        return false;
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL)
        throw SetError("the library's process ended by itself, status " + std::to_string(status));
    if (move.what == What::kLimits) {
        offered_ = LimitsToSet();
        if (const auto old = limits_.find(offered_->sensor); old != limits_.end())
            old->second.push_back(*offered_); // the old ones or these
    }
    StartAnew(estate.Inherit());
    return true;
}

bool Life::Make(const Move &move) {
    faults_used_ += move.HasFault();
    if (move.Dies())
        return DieIn(move);
    if (move.fault != 0)
        return Fail(move);
    Do(move);
    return true;
}

bool Life::Fail(const Move &move) {
    const FaultKind &kind = FaultKinds()[move.fault - 1];
    const bool restarts = move.what == What::kRestart; // its calls are counted from nothing
    sim::Fault rule{kind.call};
    rule.occurrence = static_cast<uint32_t>((restarts ? 0 : sim::CountCalls(kind.call)) + move.occurrence);
    if (kind.result >= 0)
        rule.result = kind.result;
    if (restarts) {
        StartAnew(CurrentRepository(), {rule});
    } else {
        sim::AddFault(rule);
        Do(move);
    }
    const bool came = sim::CountCalls(kind.call) >= *rule.occurrence;
    sim::ClearFaults();
    for (const sim::Fault &fault : world_.board_faults)
        sim::AddFault(fault);
    return came;
}

} // namespace workbench
