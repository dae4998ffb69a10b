// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/serve_thresholds.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/output.h"
#include "thresholds/image.h"
#include "thresholds/platform.h"

namespace workbench {
namespace {

constexpr char kSaved = 'S', kRefused = 'R'; // what the child says first

std::string Saved(uint32_t custom_id, const std::string &file, const StoredThresholds &entry) {
    try {
        StartWithThresholds(custom_id, ReadThresholdFile(file));
        const FileBytes bytes = SaveOnPlatform(entry);
        return kSaved + std::string(bytes.begin(), bytes.end());
    } catch (const std::exception &error) {
        return kRefused + std::string(error.what());
    }
}

} // namespace

void RefuseUnwritable(const std::string &file) {
    const bool is_there = access(file.c_str(), F_OK) == 0;
    const std::string folder = std::filesystem::path(file).parent_path().string();
    const std::string asked = is_there ? file : folder.empty() ? "." : folder;
    if (access(asked.c_str(), W_OK) != 0)
        throw InputError(file + ": cannot write: " + std::strerror(errno));
}

ThresholdKeeper::ThresholdKeeper(const std::string &file, const ServedMachine &machine)
    : file_(file), machine_(machine), custom_id_(NamedProfile(machine.run().profile).id) {
    if (const auto bytes = ReadThresholdFile(file)) {
        const ThresholdImage image = ParseThresholdImage(file, *bytes);
        if (image.custom_id != custom_id_)
            throw InputError(file + ": saved under " + SavedUnder(image.custom_id) + "; the machine is " +
                             SavedUnder(custom_id_));
    }
    known_ = Read();
}

std::map<SensorPlace, ActiveLimits> ThresholdKeeper::Read() const {
    std::vector<RecordBytes> records;
    for (const ServedSensor &sensor : machine_.sensors())
        records.emplace_back(sensor.sensor.record.begin(), sensor.sensor.record.end());
    return ReadThresholdsOf({.port = machine_.port()}, records);
}

// The library keeps state that has no reset: each save is a process.
void ThresholdKeeper::Save(const ServedSensor &sensor, const ActiveLimits &limits) const {
    StoredThresholds entry;
    entry.name = sensor.decoded.name;
    entry.mask = sensor.sensor.record[SDR_READING_MASK];
    entry.six = limits.raw;
    const Apart answer = RunApart([&](const Say &say) { say(Saved(custom_id_, file_, entry)); });
    if (!answer.said.empty() && answer.said[0] == kSaved)
        return WriteFileAtomically(file_, answer.said.substr(1));
    std::fprintf(stderr, "oxa-sensors: %s: thresholds of %s are not saved: %s\n", file_.c_str(),
                 entry.name.c_str(), answer.said.empty() ? "the library ended" : answer.said.c_str() + 1);
}

void ThresholdKeeper::Pass(bool now) {
    const std::time_t time = std::time(nullptr);
    if (!now && time == looked_)
        return;
    looked_ = time;
    const std::map<SensorPlace, ActiveLimits> found = Read();
    for (const ServedSensor &sensor : machine_.sensors()) {
        const Record &record = sensor.sensor.record;
        const auto limits = found.find({record[SDR_OWNER_LUN] & 3, record[SDR_SENSOR_NUM]});
        if (limits == found.end())
            continue;
        const auto before = known_.find(limits->first);
        // Of a sensor that has come meanwhile the record tells what nobody has set.
        const bool as_before = before != known_.end()
                                   ? before->second.raw == limits->second.raw
                                   : std::equal(limits->second.raw.begin(), limits->second.raw.end(),
                                                record.begin() + FULL_SDR_UNR);
        if (!as_before)
            Save(sensor, limits->second);
    }
    known_ = found;
}

} // namespace workbench
