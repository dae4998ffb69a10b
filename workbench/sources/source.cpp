// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/source.h"

#include <algorithm>
#include <fstream>
#include <span>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/input.h"
#include "base/json.h"
#include "base/text.h"
#include "replay/captured_board.h"
#include "runtime/bmc.h"
#include "sets/aside.h"
#include "sets/decode.h"

namespace workbench {
namespace {

constexpr std::string_view kScheme = "bmc://";

std::string ReadWholeFile(const std::string &path) {
    struct stat info {};
    std::ifstream file(path, std::ios::binary);
    if (stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode) || !file)
        throw InputError("'" + path + "' is neither a profile (" + AvailableProfiles() +
                         "), PROFILE@BOARD, capture:FILE, bmc://HOST, nor a file that can be read");
    return ReadAllOf(file, path);
}

std::string Where(const std::string &path, size_t number) {
    return path + ": record " + std::to_string(number) + ": ";
}

Sensor &AddSensor(StaticSet &set) {
    set.sensors.emplace_back();
    set.sensors.back().ordinal = static_cast<unsigned>(set.sensors.size());
    return set.sensors.back();
}

// ---- records ---------------------------------------------------------------------------------------------

// Sensors that can be read, and everything else apart.
class RecordTaker {
public:
    explicit RecordTaker(StaticSet &set) : set_(set) {}
    void Take(std::span<const uint8_t> record) {
        ++place_;
        const uint8_t type = record[SDR_RECORD_TYPE];
        if (type != 0x01 && type != 0x02)
            return set_.aside.push_back(Aside(place_, record));
        try {
            TakeSensor(record);
        } catch (const SetError &error) {
            set_.aside.push_back(Aside(place_, record, error.what()));
        }
    }

private:
    void TakeSensor(std::span<const uint8_t> record) {
        if (record.size() > SDR_SLOT_SIZE)
            throw SetError("record " + std::to_string(place_) + ": " + std::to_string(record.size()) +
                           " bytes; a sensor's record has at most " + std::to_string(SDR_SLOT_SIZE));
        Sensor sensor;
        sensor.has_entry = false;
        sensor.ordinal = static_cast<unsigned>(place_); // to be named in an error
        std::copy(record.begin(), record.end(), sensor.record.begin());
        decoder_.Decode(sensor);
        sensor.ordinal = static_cast<unsigned>(set_.sensors.size()) + 1;
        set_.sensors.push_back(sensor);
    }
    StaticSet &set_;
    Decoder decoder_;
    size_t place_ = 0;
};

// Those that standard tools take for a record.
bool IsVersion(uint8_t version) {
    return version == 0x51 || version == 0x01 || version == 0x02;
}

void ReadRaw(const std::string &path, const std::string &content, StaticSet &set) {
    const std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t *>(content.data()), content.size());
    RecordTaker taker(set);
    size_t number = 0;
    for (size_t at = 0; at < bytes.size();) {
        const std::string where = Where(path, ++number);
        if (bytes.size() - at < kRecordHeader)
            throw InputError(where + "the file ends within its header");
        const size_t size = bytes[at + SDR_RECORD_LENGTH] + kRecordHeader;
        if (!IsVersion(bytes[at + SDR_VERSION]))
            throw InputError(where +
                             "no sensor data record (is this a file of 'ipmitool sdr dump' or 'oxa-sensors "
                             "export'?)");
        if (bytes.size() - at < size)
            throw InputError(where + "the file ends within it");
        taker.Take(bytes.subspan(at, size));
        at += size;
    }
}

// "00 00 51"; the target's remaining bytes stay.
void ReadHex(const std::string &text, const std::string &where, uint8_t *to, size_t size) {
    std::istringstream words(text);
    std::string word;
    for (size_t i = 0; words >> word; ++i) {
        if (i >= size || word.size() != 2 ||
            word.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) // no sign either
            throw InputError(where + "'" + Printable(word.substr(0, 20)) + "' is no byte of it");
        to[i] = static_cast<uint8_t>(std::stoul(word, nullptr, 16));
    }
}

// A part of what export wrote; InputError when it is not there or of another kind.
const Json &PartOf(const Json &json, const char *key, Json::value_t kind, const std::string &where) {
    const auto found = json.find(key);
    if (found == json.end() || found->type() != kind)
        throw InputError(where + "no set of 'oxa-sensors export --json': '" + key + "' is " +
                         (found == json.end()             ? "missing"
                          : kind == Json::value_t::object ? "no object"
                          : kind == Json::value_t::array  ? "no list"
                                                          : "no text"));
    return *found;
}

void RefuseUnreadable(const std::string &path, const Decoder &decoder, const Sensor &sensor) {
    try {
        decoder.Decode(sensor);
    } catch (const SetError &error) {
        throw InputError(path + ": " + error.what());
    }
}

void ReadJson(const std::string &path, const std::string &text, StaticSet &set) {
    const Json json = ParseJson(path, text);
    const Decoder decoder;
    const std::string whole = path + ": ";
    if (const auto told = json.find("profile"); told == json.end() || !told->is_null()) { // null: not known
        const Json &profile = PartOf(json, "profile", Json::value_t::object, whole);
        set.profile = ProfileNamed(PartOf(profile, "name", Json::value_t::string, whole));
    }
    for (const Json &item : PartOf(json, "sensors", Json::value_t::array, whole)) {
        const std::string where = Where(path, set.sensors.size() + 1);
        Sensor &sensor = AddSensor(set);
        ReadHex(PartOf(item, "record", Json::value_t::string, where), where, sensor.record.data(),
                sensor.record.size());
        const auto entry = item.find("entry");
        sensor.has_entry = entry == item.end() || !entry->is_null();
        if (sensor.has_entry)
            ReadHex(PartOf(item, "entry", Json::value_t::string, where), where, sensor.entry.data(),
                    sensor.entry.size());
        RefuseUnreadable(path, decoder, sensor);
    }
}

// The first thing that one types; the profile is missing.
void RefuseBoardFile(const std::string &path) {
    if (MatchesGlob(path, "*.toml"))
        throw InputError(path + " is a board description; with a profile before it, it is a set: " +
                         ProfilesWithDriver().front()->name + "@" + path);
}

StaticSet FromFile(const std::string &path) {
    RefuseBoardFile(path);
    const std::string content = ReadWholeFile(path);
    StaticSet set;
    set.source = path;
    const size_t first = content.find_first_not_of(" \t\r\n");
    const bool raw = content.size() >= kRecordHeader && IsVersion(static_cast<uint8_t>(content[SDR_VERSION]));
    if (!raw && first != std::string::npos && content[first] == '{')
        ReadJson(path, content, set);
    else
        ReadRaw(path, content, set);
    if (set.sensors.empty())
        throw InputError(path + ": no records " + (set.aside.empty() ? "" : "of sensors ") + "in it");
    return set;
}

StaticSet FromBoard(const std::string &given, const std::string &board, const RunOptions &run) {
    const std::string profile = NamedProfile(given).name;
    if (board.empty())
        throw InputError("'" + profile + "' needs a board: --board FILE, or " + profile + "@FILE");
    RunOptions options = run;
    options.profile = profile;
    options.board = board;
    return BuildStaticSetApart(options);
}

} // namespace

SourceSet ReadBmc(const sim::Bmc &bmc, const std::string &label, bool thresholds) {
    const LiveRepository live = ReadLiveRepositoryOf(bmc, thresholds);
    SourceSet out{{}, label, {live.version, live.added_at, live.erased_at}};
    out.set.source = label;
    RecordTaker taker(out.set);
    for (const sim::RepositoryRecord &record : live.records)
        taker.Take(record.bytes);
    for (Sensor &sensor : out.set.sensors) {
        const uint8_t lun = sensor.record[SDR_OWNER_LUN] & 3;
        const auto active = live.thresholds.find({lun, sensor.record[SDR_SENSOR_NUM]});
        if (active != live.thresholds.end() && sensor.record[SDR_RECORD_TYPE] == 0x01)
            sensor.active = active->second;
    }
    return out;
}

SourceSet LoadSource(const std::string &text, const RunOptions &run, const LoginOptions &login) {
    if (text.starts_with(kScheme))
        return ReadBmc(BmcAt(text.substr(kScheme.size()), login, text), text, true);
    const bool capture = NamesCapture(text); // under its own profile
    const size_t at = capture ? std::string::npos : text.find('@');
    const std::string profile = capture ? SettledProfile("", text) : text.substr(0, at);
    if (ProfileNamed(profile) == nullptr && (at == std::string::npos || access(text.c_str(), F_OK) == 0))
        return {FromFile(text), text, {}};
    const std::string board = at == std::string::npos ? run.board : text.substr(at + 1);
    StaticSet set = FromBoard(profile, capture ? text : board, run);
    const std::string label = std::string(set.profile->name) + "@" + set.board;
    return {std::move(set), label, {}};
}

SourceSet LoadSourceToCompare(const std::string &text, const RunOptions &run, const LoginOptions &login) {
    try {
        return LoadSource(text, run, login);
    } catch (const SetError &error) {
        throw InputError(text + ": " + error.what());
    }
}

} // namespace workbench
