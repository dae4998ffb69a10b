// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/readings.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <set>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr unsigned kMostByte = 255, kMostStates = 0x7FFF;
constexpr size_t kLongest = 64; // characters of a reading

std::string Trim(const std::string &text) {
    const size_t from = text.find_first_not_of(" \t\r\n");
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(" \t\r\n") - from + 1);
}

// "51", "0x33"; nothing for anything else.
std::optional<unsigned> WholeNumber(const std::string &text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    const std::string digits = hex ? text.substr(2) : text;
    if (digits.empty() || digits.size() > 8 ||
        digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") != std::string::npos)
        return std::nullopt;
    return static_cast<unsigned>(std::stoul(digits, nullptr, hex ? 16 : 10));
}

// "°C", "C" and "c" are one unit, and so are "L / min" and "l/min".
std::string UnitWord(const std::string &unit) {
    std::string out;
    for (const char c : unit)
        if (c > ' ' && c <= '~')
            out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

// The counts at both ends of the scale, the one with the lowest value first.
std::pair<int, int> Ends(const Reading &r) {
    const std::pair<int, int> counts = r.is_signed ? std::pair{-128, 127} : std::pair{0, 255};
    return r.factor < 0 ? std::pair{counts.second, counts.first} : counts;
}

std::string HoldsText(const Decoded &sensor) {
    if (!sensor.reading)
        return sensor.name + " holds the bits of its states, 0 to " + Hex(kMostStates, 4);
    const auto [low, high] = Ends(*sensor.reading);
    return sensor.name + " holds " + ReadingText(*sensor.reading, static_cast<unsigned>(low)) + " to " +
           ReadingText(*sensor.reading, static_cast<unsigned>(high)) + ", or a raw byte, 0 to 255";
}

[[noreturn]] void Refuse(const Decoded &sensor, const std::string &text) {
    throw InputError(sensor.name + ": '" + Printable(text) + "' is no reading of it: " + HoldsText(sensor));
}

// A number with the sensor's unit behind it.
unsigned ParseValue(const Decoded &sensor, const std::string &text) {
    char *end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const std::string unit = UnitWord(end);
    if (end == text.c_str() || !std::isfinite(value) || !sensor.reading || unit.empty() ||
        unit != UnitWord(sensor.reading->unit) || sensor.reading->factor == 0)
        Refuse(sensor, text);
    const Reading &r = *sensor.reading;
    const auto [low, high] = Ends(r);
    const double count = std::round((value - r.offset) / r.factor);
    if (count < std::min(low, high) || count > std::max(low, high))
        Refuse(sensor, text);
    return static_cast<uint8_t>(static_cast<int>(count));
}

} // namespace

unsigned ParseReading(const Decoded &sensor, const std::string &text) {
    const std::string word = Trim(text);
    if (word.size() > kLongest)
        Refuse(sensor, word.substr(0, kLongest));
    const auto raw = WholeNumber(word);
    if (!raw)
        return ParseValue(sensor, word);
    if (*raw > (sensor.reading ? kMostByte : kMostStates))
        Refuse(sensor, word);
    return *raw;
}

ReadingFiles::ReadingFiles(const std::string &folder)
    : readings_(folder + "/readings"), raw_(folder + "/raw") {
    for (const std::string &path : {readings_, raw_})
        if (mkdir(path.c_str(), 0700) != 0)
            throw InputError(path + ": cannot make a folder");
    watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch_ < 0 || inotify_add_watch(watch_, readings_.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0)
        throw SetError(readings_ + ": cannot be watched");
}

ReadingFiles::~ReadingFiles() {
    if (watch_ >= 0)
        close(watch_);
}

void ReadingFiles::Put(const ServedSensor &sensor) {
    for (const std::string &folder : {raw_, readings_})
        WriteTemporaryFile(folder + "/" + sensor.file, std::to_string(sensor.reading) + "\n");
}

void ReadingFiles::PassOne(const std::vector<ServedSensor> &sensors, const std::string &file) {
    const auto found = std::find_if(sensors.begin(), sensors.end(),
                                    [&file](const ServedSensor &sensor) { return sensor.file == file; });
    if (found == sensors.end())
        return; // an editor's own files, or a sensor that is just being added
    std::ifstream stream(readings_ + "/" + file);
    std::string text;
    if (!std::getline(stream, text) || Trim(text).empty())
        return; // being written
    try {
        const unsigned raw = ParseReading(found->decoded, text);
        WriteTemporaryFile(raw_ + "/" + file, std::to_string(raw) + "\n");
    } catch (const InputError &error) {
        std::fprintf(stderr, "oxa-sensors: %s\n", error.what());
    }
}

void ReadingFiles::Pass(const std::vector<ServedSensor> &sensors) {
    alignas(inotify_event) char events[16384];
    std::set<std::string> files; // one that was written twice is read once
    for (ssize_t size; (size = read(watch_, events, sizeof events)) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(events + at);
            if (event->len > 0)
                files.insert(event->name);
            at += static_cast<ssize_t>(sizeof *event + event->len);
        }
    for (const std::string &file : files)
        PassOne(sensors, file);
}

} // namespace workbench
