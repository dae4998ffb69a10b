// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/sensor_source.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/input.h"
#include "base/json.h"
#include "base/text.h"

namespace workbench {
namespace {

std::string ReadWholeFile(const std::string &path) {
    struct stat info {};
    std::ifstream file(path, std::ios::binary);
    if (stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode) || !file)
        throw InputError("'" + path + "' is neither a profile (" + AvailableProfiles() +
                         "), PROFILE@BOARD, nor a file that can be read");
    return ReadAllOf(file, path);
}

std::string Where(const std::string &path, size_t number) {
    return path + ": record " + std::to_string(number) + ": ";
}

Sensor &AddSensor(SensorSource &source) {
    source.sensors.emplace_back();
    source.sensors.back().ordinal = static_cast<unsigned>(source.sensors.size());
    return source.sensors.back();
}

void ReadRaw(const std::string &path, const std::string &bytes, SensorSource &source) {
    for (size_t at = 0; at < bytes.size();) {
        const std::string where = Where(path, source.sensors.size() + 1);
        if (bytes.size() - at < kRecordHeader)
            throw InputError(where + "the file ends within its header");
        const size_t size = static_cast<uint8_t>(bytes[at + SDR_RECORD_LENGTH]) + kRecordHeader;
        if (size > SDR_SLOT_SIZE || bytes[at + SDR_VERSION] != 0x51)
            throw InputError(where + "no sensor record (is this a file of 'oxa-sensors export'?)");
        if (bytes.size() - at < size)
            throw InputError(where + "the file ends within it");
        std::copy_n(bytes.begin() + static_cast<long>(at), size, AddSensor(source).record.begin());
        at += size;
    }
}

// "00 00 51"; the target's remaining bytes stay.
void ReadHex(const std::string &text, const std::string &where, uint8_t *to, size_t size) {
    std::istringstream words(text);
    std::string word;
    for (size_t i = 0; words >> word; ++i) {
        char *end = nullptr;
        const unsigned long value = std::strtoul(word.c_str(), &end, 16);
        if (i >= size || word.size() != 2 || *end != '\0')
            throw InputError(where + "'" + Printable(word.substr(0, 20)) + "' is no byte of it");
        to[i] = static_cast<uint8_t>(value);
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

void ReadJson(const std::string &path, const std::string &text, SensorSource &source) {
    const Json json = ParseJson(path, text);
    const std::string whole = path + ": ";
    const Json &told = PartOf(json, "profile", Json::value_t::object, whole);
    const std::string profile = PartOf(told, "name", Json::value_t::string, whole);
    source.profile = ProfileNamed(profile);
    source.has_entries = true;
    for (const Json &item : PartOf(json, "sensors", Json::value_t::array, whole)) {
        const std::string where = Where(path, source.sensors.size() + 1);
        Sensor &sensor = AddSensor(source);
        ReadHex(PartOf(item, "record", Json::value_t::string, where), where, sensor.record.data(),
                sensor.record.size());
        ReadHex(PartOf(item, "entry", Json::value_t::string, where), where, sensor.entry.data(),
                sensor.entry.size());
    }
}

// The first thing that one types; the profile is missing.
void RefuseBoardFile(const std::string &path) {
    if (MatchesGlob(path, "*.toml"))
        throw InputError(path + " is a board description; with a profile before it, it is a set: " +
                         ProfilesWithDriver().front()->name + "@" + path);
}

SensorSource FromFile(const std::string &path) {
    RefuseBoardFile(path);
    const std::string content = ReadWholeFile(path);
    SensorSource source;
    source.label = path;
    const size_t first = content.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && content[first] == '{')
        ReadJson(path, content, source);
    else
        ReadRaw(path, content, source);
    if (source.sensors.empty())
        throw InputError(path + ": no records in it");
    return source;
}

SensorSource FromBoard(const std::string &given, const std::string &board, const RunOptions &run) {
    const std::string profile = NamedProfile(given).name;
    if (board.empty())
        throw InputError("'" + profile + "' needs a board: --board FILE, or " + profile + "@FILE");
    RunOptions options = run;
    options.profile = profile;
    options.board = board;
    StaticSet set = BuildStaticSetApart(options);
    return {profile + "@" + board, set.profile, true, std::move(set.sensors), {}};
}

SensorSource LoadUndecoded(const std::string &text, const RunOptions &run) {
    const size_t at = text.find('@');
    const std::string profile = text.substr(0, at);
    if (ProfileNamed(profile) == nullptr && (at == std::string::npos || access(text.c_str(), F_OK) == 0))
        return FromFile(text);
    return FromBoard(profile, at == std::string::npos ? run.board : text.substr(at + 1), run);
}

} // namespace

SensorSource LoadSensorSource(const std::string &text, const RunOptions &run) {
    try {
        SensorSource source = LoadUndecoded(text, run);
        const Decoder decoder;
        for (const Sensor &sensor : source.sensors)
            source.decoded.push_back(decoder.Decode(sensor));
        return source;
    } catch (const SetError &error) { // without a set there is nothing to compare
        throw InputError(text + ": " + error.what());
    }
}

} // namespace workbench
