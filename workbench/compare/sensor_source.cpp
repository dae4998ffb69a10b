// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/sensor_source.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

#include "base/errors.h"
#include "base/input.h"
#include "base/json.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr size_t kHeader = SDR_RECORD_LENGTH + 1;

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
        if (bytes.size() - at < kHeader)
            throw InputError(where + "the file ends within its header");
        const size_t size = static_cast<uint8_t>(bytes[at + SDR_RECORD_LENGTH]) + kHeader;
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
            throw InputError(where + "'" + word + "' is no byte of it");
        to[i] = static_cast<uint8_t>(value);
    }
}

void ReadJson(const std::string &path, const std::string &text, SensorSource &source) {
    try {
        const Json json = Json::parse(text);
        const std::string profile = json.at("profile").at("name");
        if (IsProfileName(profile))
            source.profile = &FindProfile(profile);
        source.has_entries = true;
        for (const Json &item : json.at("sensors")) {
            const std::string where = Where(path, source.sensors.size() + 1);
            Sensor &sensor = AddSensor(source);
            ReadHex(item.at("record"), where, sensor.record.data(), sensor.record.size());
            ReadHex(item.at("entry"), where, sensor.entry.data(), sensor.entry.size());
        }
    } catch (const Json::exception &error) {
        throw InputError(path + ": no set of 'oxa-sensors export --json': " + OneLine(error.what()));
    }
}

SensorSource FromFile(const std::string &path) {
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

SensorSource FromBoard(const std::string &profile, const std::string &board, const RunOptions &run) {
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
    if (!IsProfileName(profile))
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
