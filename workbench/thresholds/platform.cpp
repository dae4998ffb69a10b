// SPDX-License-Identifier: GPL-3.0-or-later
#include "thresholds/platform.h"

#include <cstring>

#include "base/errors.h"
#include "base/text.h"
#include "oxa/specific_sensors.h"
#include "oxa/thresholds.h"
#include "runtime/description.h"
#include "runtime/platform.h"
#include "sets/board.h"
#include "sets/counts.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

constexpr char kThresholdPath[] = "/conf/BMC1/sensor_threshold.dat";

const Profile &ProfileOf(const std::string &file, uint32_t custom_id) {
    for (const Profile *profile : AllProfiles())
        if (profile->id == custom_id)
            return *profile;
    throw InputError(file + ": saved under " + SavedUnder(custom_id) +
                     ", which the library does not know; --profile tells which machine is meant");
}

void AddStaticSet(const RecordOptions &options, const Profile &profile, const Decoder &decoder,
                  std::vector<OfferedRecord> &out) {
    if (profile.driver == nullptr && !options.descriptions.empty())
        return; // all its sensors are added at run time
    RunOptions run;
    run.board = options.board;
    run.profile = profile.name;
    run.trace = options.trace;
    run.log = options.log;
    try {
        for (const Sensor &sensor : BuildStaticSetApart(run).sensors)
            out.push_back({"static set, " + std::to_string(sensor.ordinal), sensor, decoder.Decode(sensor)});
    } catch (const SetError &error) { // nothing to try the file on
        throw InputError(error.what());
    }
}

std::string LastLine() {
    const auto logs = sim::Logs();
    return logs.empty() ? "it logs nothing" : OneLine(logs.back().text);
}

// What the library adds to the repository of a machine without stored thresholds.
OfferedRecord Generate(const std::string &path, const Decoder &decoder) {
    SpecificSensorParam param = Finish(LoadDescription(path));
    sim::ClearTrace();
    const size_t before = sim::Repository().size();
    const uint32_t result = SDR_AddSpecificSensor(&param);
    if (result != OXA_OK || sim::Repository().size() != before + 1)
        throw InputError(path + ": the library adds no sensor of this description: " + LastLine());
    const auto &bytes = sim::Repository().back().bytes;
    if (bytes.at(SDR_RECORD_TYPE) != 0x01 && bytes.at(SDR_RECORD_TYPE) != 0x02)
        throw InputError(path + ": a FRU device locator has no thresholds");
    OfferedRecord out;
    out.origin = "run time, " + path;
    std::memcpy(out.sensor.record.data(), bytes.data(), std::min(bytes.size(), out.sensor.record.size()));
    out.decoded = decoder.Decode(out.sensor);
    return out;
}

void AddRunTimeSensors(const RecordOptions &options, const Profile &profile, const Decoder &decoder,
                       std::vector<OfferedRecord> &out) {
    if (options.descriptions.empty())
        return;
    sim::Board board = LoadBoardFor(options.board, profile.name);
    board.thresholds.clear();
    StartWith(std::move(board), BoardOf(options.board).faults, {});
    for (const std::string &path : options.descriptions) {
        out.push_back(Generate(path, decoder));
        PrintPlatformTrace(options.trace, options.log);
    }
}

std::string NameField(const std::string &name) {
    std::string field = name;
    field.resize(kLongestName, '\0');
    return field;
}

} // namespace

SixThresholds OfferedRecord::Six() const {
    SixThresholds six;
    std::memcpy(six.data(), sensor.record.data() + FULL_SDR_UNR, six.size());
    return six;
}

std::optional<double> OfferedRecord::Value(uint8_t raw) const {
    if (!decoded.reading)
        return std::nullopt;
    return ValueOf(*decoded.reading, raw);
}

std::string OfferedRecord::InUnits(uint8_t raw) const {
    const auto value = Value(raw);
    if (!value)
        return std::to_string(raw);
    return workbench::InUnits(*decoded.reading, *value);
}

// Most boards name no profile, which reads as default: the image knows better then.
uint32_t SettledMachine(const RecordOptions &options, const ThresholdImage &image) {
    if (!options.profile.empty())
        return NamedProfile(options.profile).id;
    const uint32_t board = options.board.empty() ? 0 : LoadBoardFor(options.board, "").custom_id;
    return board != 0 ? board : image.custom_id;
}

std::vector<OfferedRecord> CollectRecords(const RecordOptions &options, const std::string &file,
                                          uint32_t custom_id) {
    const Profile &profile = ProfileOf(file, custom_id);
    const Decoder decoder;
    std::vector<OfferedRecord> out;
    AddStaticSet(options, profile, decoder, out);
    AddRunTimeSensors(options, profile, decoder, out);
    return out;
}

bool StartWithThresholds(uint32_t custom_id, const std::optional<FileBytes> &file) {
    sim::Board board;
    board.custom_id = custom_id;
    sim::Start(std::move(board));
    if (file)
        sim::WriteFile(kThresholdPath, *file);
    InitSdrThresholdInfoFromFile(custom_id);
    return !file || sim::FileExists(kThresholdPath);
}

OverlayResult OfferToOverlay(const Record &record) {
    const size_t mark = sim::Logs().size();
    Record copy = record;
    ModifySensorThresholdByFile(copy.data());
    OverlayResult result;
    std::memcpy(result.after.data(), copy.data() + FULL_SDR_UNR, result.after.size());
    const auto logs = sim::Logs();
    if (logs.size() == mark)
        return result;
    result.line = OneLine(logs.back().text);
    result.what = result.line.ends_with("successfully") ? Overlay::kApplied
                  : result.line.ends_with("failed")     ? Overlay::kOutOfOrder
                                                        : Overlay::kOtherMask;
    return result;
}

FileBytes SaveOnPlatform(const StoredThresholds &entry) {
    uint8_t info[8];
    std::memcpy(info, entry.six.data(), entry.six.size());
    std::memcpy(info + entry.six.size(), entry.further.data(), entry.further.size());
    const size_t mark = sim::Logs().size();
    SaveSdrThresholdInfoInFile(NameField(entry.name).c_str(), info, entry.mask);
    sim::CheckStorage();
    if (sim::Logs().size() > mark)
        throw InputError("the library refuses to save " + entry.name + ": " + LastLine());
    return sim::ReadFile(kThresholdPath);
}

Record BareRecord(const StoredThresholds &entry) {
    Record record{};
    record[SDR_RECORD_TYPE] = 0x01;
    record[SDR_READING_MASK] = static_cast<uint8_t>(entry.mask);
    record[FULL_SDR_ID_TYPE_LEN] = static_cast<uint8_t>(0xC0 + entry.name.size());
    std::memcpy(record.data() + FULL_SDR_NAME, entry.name.data(), entry.name.size());
    return record;
}

} // namespace workbench
