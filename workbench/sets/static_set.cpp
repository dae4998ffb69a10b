// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/static_set.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "base/errors.h"
#include "base/text.h"
#include "library/profiles/catalogue.h"
#include "sets/board.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

const std::vector<Profile> &Profiles() {
    static const std::vector<Profile> profiles = [] {
        std::vector<Profile> out;
        for (const oxa::ProfileView &profile : oxa::kProfiles)
            out.push_back({profile.pcName, profile.dwCustomId, oxa::DriverOf(profile.dwCustomId)});
        std::sort(out.begin(), out.end(), [](const Profile &a, const Profile &b) { return a.id < b.id; });
        return out;
    }();
    return profiles;
}

// Every counted group is limited by 8-bit numbers (the disks of 32 backplanes are most of it): no board
// reaches this.
constexpr size_t kCapacity = 24576;

// A driver writes its count once, at the end; no set has this many sensors.
constexpr uint16_t kCountNotWritten = 0xFFFF;

// A pass that ends early returns right after the line that says why, whatever that line's level.
std::string LastLogLine() {
    const auto logs = sim::Logs();
    if (logs.empty())
        return "it logged nothing";
    return "its last line: " + logs.back().function + ": " + OneLine(logs.back().text);
}

StaticSet CollectSensors(const RunOptions &options, const Profile &profile, const sim::StaticArrays &arrays) {
    StaticSet set{options.board, &profile, {}, {}, {}};
    for (unsigned i = 0; i < arrays.count; ++i) {
        Sensor sensor;
        sensor.ordinal = i + 1;
        std::memcpy(sensor.record.data(), arrays.slots + size_t{i} * SDR_SLOT_SIZE, SDR_SLOT_SIZE);
        std::memcpy(sensor.entry.data(), &arrays.entries[i], DEV_TAB_ENTRY_SIZE);
        set.sensors.push_back(sensor);
    }
    return set;
}

// Puts the board and what it lets go wrong under the library.
void StartBoard(const RunOptions &options, const Profile &profile) {
    const sim::BoardFile &file = BoardOf(options.board);
    sim::Board board = file.board;
    board.custom_id = profile.id; // the machine belongs to the customer whose driver runs
    sim::Start(std::move(board));
    for (const sim::Fault &fault : file.faults)
        sim::AddFault(fault);
}

} // namespace

void PrintPlatformTrace(bool trace, bool log) {
    for (const sim::Event &event : sim::Trace())
        if (trace || (log && event.kind == sim::Kind::kLog))
            std::fprintf(stderr, "%s\n", OneLine(sim::Format(event)).c_str());
}

const Profile *ProfileNamed(const std::string &name) {
    for (const Profile &profile : Profiles())
        if (SameName(name, profile.name) || name == std::to_string(profile.id))
            return &profile;
    return nullptr;
}

const Profile &NamedProfile(const std::string &name) {
    if (const Profile *profile = ProfileNamed(name))
        return *profile;
    std::vector<std::string> names;
    for (const Profile &profile : Profiles())
        names.push_back(profile.name);
    const std::vector<std::string> nearest = NearestNames(name, names, 1);
    throw InputError("unknown profile '" + name + "'; available: " + Join(names, ", ") +
                     (nearest.empty() ? "" : "; did you mean " + nearest[0] + "?"));
}

const Profile &FindProfile(const std::string &name) {
    const Profile &profile = NamedProfile(name);
    if (profile.driver == nullptr)
        throw InputError(
            "profile '" + std::string(profile.name) +
            "' has no static driver (its sensors are added at run time); available: " + AvailableProfiles());
    return profile;
}

std::vector<const Profile *> AllProfiles() {
    std::vector<const Profile *> out;
    for (const Profile &profile : Profiles())
        out.push_back(&profile);
    return out;
}

std::vector<const Profile *> ProfilesWithDriver() {
    std::vector<const Profile *> out = AllProfiles();
    std::erase_if(out, [](const Profile *profile) { return profile->driver == nullptr; });
    return out;
}

std::string AvailableProfiles() {
    std::vector<std::string> names;
    for (const Profile *profile : ProfilesWithDriver())
        names.push_back(profile->name);
    return Join(names, ", ");
}

std::string ProfileName(uint32_t id) {
    for (const Profile *profile : AllProfiles())
        if (profile->id == id)
            return profile->name;
    return "profile " + std::to_string(id);
}

std::string SettledProfile(const std::string &given, const std::string &board) {
    if (!given.empty())
        return given;
    const uint32_t id = BoardOf(board).board.custom_id;
    if (const Profile *profile = ProfileNamed(std::to_string(id)))
        return profile->name;
    throw InputError(board + ": custom_id " + std::to_string(id) +
                     " is no profile's; --profile tells which is meant: " + AvailableProfiles());
}

std::string BoardFault(const std::string &board) {
    try {
        BoardOf(board);
        return "";
    } catch (const InputError &error) {
        return error.what();
    }
}

StaticSet BuildStaticSet(const RunOptions &options) {
    const Profile &profile = FindProfile(SettledProfile(options.profile, options.board));
    StartBoard(options, profile);
    sim::StaticArrays &arrays = sim::CallerArrays(kCapacity);
    arrays.count = kCountNotWritten;
    profile.driver(arrays.slots, arrays.entries, &arrays.count);
    PrintPlatformTrace(options.trace, options.log);
    sim::CheckStorage();
    if (arrays.count == kCountNotWritten)
        throw SetError(options.board + ": the pass ended without a count; " + LastLogLine());
    if (const auto violations = sim::Violations(); !violations.empty())
        throw SetError(options.board + ": the pass broke a rule: " + OneLine(Join(violations, "; ")));
    return CollectSensors(options, profile, arrays);
}

unsigned RecordSize(const Record &record) {
    return record[SDR_RECORD_LENGTH] + kRecordHeader;
}

} // namespace workbench
