// SPDX-License-Identifier: GPL-3.0-or-later
#include "fleet/machine.h"

#include <algorithm>
#include <map>

#include "base/text.h"
#include "lock/changes.h"
#include "sets/active.h"

namespace workbench {
namespace {

using Lines = std::vector<const SensorLine *>;

struct LiveSensor {
    SensorLine line;
    std::vector<std::string> active;
    bool taken = false;
};

std::vector<LiveSensor> LiveSensors(const StaticSet &set, const std::string &board, const Profile &profile) {
    const Decoder decoder;
    std::vector<LiveSensor> out;
    for (const Sensor &sensor : set.sensors) {
        const Decoded decoded = decoder.Decode(sensor);
        out.push_back({LineOf(board, profile, sensor, decoded), ActiveLines(decoded)});
    }
    return out;
}

// Its partner's device: a repository does not tell.
SensorLine WithDeviceOf(SensorLine line, const SensorLine &locked) {
    line.words[kLockDevice] = locked.words[kLockDevice];
    line.words[kLockSum] = locked.words[kLockSum];
    return line;
}

std::string InsteadText(const LineChange &change) {
    if (change.from.empty())
        return change.what + " " + change.to + ", which the lock has not";
    if (change.to.empty())
        return change.what + " " + change.from + " is missing";
    return (change.what.empty() ? "" : change.what + " ") + change.to + " instead of " + change.from;
}

class Comparison {
public:
    Comparison(const LockedMachine &locked, std::vector<LiveSensor> &live) : locked_(locked), live_(live) {}

    MachineResult Run() {
        const Lines missing = WithoutPartner(
            WithoutPartner(WithoutPartner(locked_.sensors, NameAndEntity), NameOnly), AllButName, true);
        for (const SensorLine *line : missing)
            out_.differences.push_back({"missing", line->Name(), "is missing (" + WhatText(*line) + ")"});
        for (const LiveSensor &sensor : live_)
            if (!sensor.taken)
                TellExtra(sensor.line);
        return std::move(out_);
    }

private:
    using KeyOf = std::string (*)(const SensorLine &);
    static std::string NameOnly(const SensorLine &line) {
        return line.Name();
    }
    static std::string NameAndEntity(const SensorLine &line) {
        return line.Name() + "\n" + line.words[kLockEntity];
    }
    // What stays when somebody gives a sensor another name.
    static std::string AllButName(const SensorLine &line) {
        const auto &w = line.words;
        return Join({w[kLockKind], w[kLockType], w[kLockEntity], w[kLockFactor], w[kLockUnit]}, " ");
    }

    // Pairs lines with free sensors of the same key, in their order, and gives back those that find none.  only_single: where
    // several have the key nobody knows which is which.
    Lines WithoutPartner(const Lines &lines, KeyOf key, bool only_single = false) {
        std::map<std::string, std::vector<LiveSensor *>> free;
        std::map<std::string, size_t> wanted;
        for (LiveSensor &sensor : live_)
            if (!sensor.taken)
                free[key(sensor.line)].push_back(&sensor);
        for (const SensorLine *line : lines)
            ++wanted[key(*line)];
        Lines left;
        for (const SensorLine *line : lines) {
            std::vector<LiveSensor *> &candidates = free[key(*line)];
            if (candidates.empty() || (only_single && (candidates.size() > 1 || wanted[key(*line)] > 1))) {
                left.push_back(line);
                continue;
            }
            Pair(*line, *candidates.front());
            candidates.erase(candidates.begin());
        }
        return left;
    }

    void Pair(const SensorLine &line, LiveSensor &sensor) {
        sensor.taken = true;
        ++out_.sensors;
        if (sensor.line.Name() != line.Name())
            out_.differences.push_back({"renamed", line.Name(), "is called " + sensor.line.Name()});
        for (const LineChange &change : DifferencesOf(line, WithDeviceOf(sensor.line, line)))
            out_.differences.push_back({"changed", line.Name(), InsteadText(change)});
        for (const std::string &text : sensor.active)
            out_.active.push_back({"active", line.Name(), text});
    }

    void TellExtra(const SensorLine &line) {
        const std::string name = line.Name();
        const auto &patterns = locked_.run_time_names;
        if (std::any_of(patterns.begin(), patterns.end(),
                        [&name](const std::string &pattern) { return MatchesGlob(name, pattern); }))
            ++out_.run_time;
        else
            out_.differences.push_back({"extra", name, "is not in the lock (" + WhatText(line) + ")"});
    }

    const LockedMachine &locked_;
    std::vector<LiveSensor> &live_;
    MachineResult out_;
};

} // namespace

LockedMachine MachineOf(const Lock &lock, const std::string &board, const std::string &profile) {
    LockedMachine out;
    for (const SensorLine &line : lock.sensors)
        if (line.Board() == board && line.Profile() == profile)
            out.sensors.push_back(&line);
    for (const TableLine &line : lock.tables) {
        const bool ours = OfProfile(line) && FromLockWord(line.key[0]) == profile;
        if (!ours && line.tag != "@family")
            continue;
        std::string pattern = FromLockWord(line.value[0]); // slot "*", port "#"
        std::replace(pattern.begin(), pattern.end(), '#', '*');
        out.run_time_names.push_back(std::move(pattern));
    }
    return out;
}

MachineResult CompareMachine(const LockedMachine &locked, const StaticSet &set) {
    const SensorLine &first = *locked.sensors.front();
    static const Profile none{"-", 0, nullptr}; // of a lock that knows profiles which this program does not
    const Profile *profile = ProfileNamed(first.Profile());
    std::vector<LiveSensor> live = LiveSensors(set, first.Board(), profile != nullptr ? *profile : none);
    MachineResult out = Comparison(locked, live).Run();
    out.aside = set.aside.size();
    return out;
}

} // namespace workbench
