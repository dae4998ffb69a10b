// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/line.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <span>

#include "base/text.h"

namespace workbench {
namespace {

std::string HexWord(std::span<const uint8_t> bytes) {
    std::string out;
    for (const uint8_t byte : bytes)
        out += Hex(byte).substr(2);
    return out;
}

std::string HexWord(uint8_t byte) {
    return HexWord(std::span(&byte, 1));
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string DeviceWord(const Entry &entry) {
    std::string out = HexWord(entry[0]) + "/" + std::to_string(entry[1]) + "." + std::to_string(entry[2]) +
                      "." + std::to_string(entry[3]);
    if (entry[6] != 0 || entry[7] != 0)
        out += "@" + std::to_string(entry[6]) + "." + HexWord(entry[7]);
    return out;
}

std::string FactorWord(const Decoded &d) {
    if (!d.reading)
        return "-";
    std::string out = (d.reading->is_signed ? "signed*" : "x*") + FormatNumber(d.reading->factor);
    if (d.reading->offset != 0)
        out += (d.reading->offset < 0 ? "" : "+") + FormatNumber(d.reading->offset);
    return out;
}

std::string LimitsWord(const Decoded &d) {
    std::vector<std::string> out;
    for (const Threshold &t : d.thresholds)
        if (t.readable)
            out.push_back(Lower(t.key) + "=" + FormatNumber(t.value));
    return out.empty() ? "-" : Join(out, ",");
}

std::string MasksWord(const Record &record) {
    const std::span<const uint8_t> bytes(record);
    return HexWord(bytes.subspan(SDR_ASSERT_MASK, 2)) + "." + HexWord(bytes.subspan(SDR_DEASSERT_MASK, 2)) +
           "." + HexWord(bytes.subspan(SDR_READING_MASK, 2));
}

std::string SumWord(const Sensor &sensor) {
    uint32_t crc = 0xFFFFFFFF;
    const auto add = [&crc](uint8_t byte) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    };
    std::for_each(sensor.record.begin(), sensor.record.end(), add);
    std::for_each(sensor.entry.begin(), sensor.entry.end(), add);
    return Hex(~crc, 8).substr(2);
}

// "°" is two bytes of UTF-8 and stays: the unit is read by people.
std::string UnitWord(const Decoded &d) {
    if (!d.reading || d.reading->unit.empty())
        return "-";
    std::string out = d.reading->unit;
    std::replace(out.begin(), out.end(), ' ', '_');
    return out;
}

} // namespace

std::string LockWord(const std::string &text) {
    std::string out;
    for (const char c : text) {
        const bool odd = c == '%' || (out.empty() && (c == '@' || c == '#'));
        if (c > ' ' && c <= '~' && !odd)
            out += c;
        else
            out += "%" + HexWord(static_cast<uint8_t>(c));
    }
    return out.empty() ? "%" : out;
}

namespace {
// In a sensor's name "#" is for what stands behind it.
std::string NameWord(const std::string &name) {
    std::string out;
    for (const char c : LockWord(name))
        out += c == '#' ? std::string("%23") : std::string(1, c);
    return out;
}
} // namespace

std::string FromLockWord(const std::string &word) {
    std::string out;
    for (size_t i = 0; i < word.size(); ++i) {
        if (word[i] != '%') {
            out += word[i];
            continue;
        }
        if (i + 2 < word.size()) {
            const auto c = static_cast<char>(std::strtoul(word.substr(i + 1, 2).c_str(), nullptr, 16));
            out += (c >= 0 && c < ' ') || c == 0x7F ? '?' : c;
        }
        i += 2;
    }
    return out;
}

std::string SensorLine::Board() const {
    return FromLockWord(words[kLockBoard]);
}
std::string SensorLine::Profile() const {
    return FromLockWord(words[kLockProfile]);
}
std::string SensorLine::Name() const {
    return FromLockWord(words[kLockName].substr(0, words[kLockName].find('#')));
}

std::vector<std::pair<std::string, std::string>> SensorLine::Limits() const {
    std::vector<std::pair<std::string, std::string>> out;
    for (size_t from = 0; from < words[kLockLimits].size();) {
        const size_t end = std::min(words[kLockLimits].find(',', from), words[kLockLimits].size());
        const std::string one = words[kLockLimits].substr(from, end - from);
        if (const size_t sign = one.find('='); sign != std::string::npos)
            out.emplace_back(one.substr(0, sign), one.substr(sign + 1));
        from = end + 1;
    }
    return out;
}

SensorLine LineOf(const std::string &board, const Profile &profile, const Sensor &sensor,
                  const Decoded &decoded) {
    const Record &r = sensor.record;
    SensorLine line;
    line.words = {LockWord(board),
                  LockWord(profile.name),
                  NameWord(decoded.name),
                  KindText(decoded.kind),
                  HexWord(r[SDR_SENSOR_TYPE]) + "/" + HexWord(r[SDR_EVENT_TYPE]),
                  HexWord(r[SDR_ENTITY_ID]) + "." + HexWord(r[SDR_ENTITY_INSTANCE]),
                  DeviceWord(sensor.entry),
                  FactorWord(decoded),
                  UnitWord(decoded),
                  LimitsWord(decoded),
                  MasksWord(r),
                  std::to_string(decoded.hysteresis_positive) + "/" +
                      std::to_string(decoded.hysteresis_negative),
                  HexWord(r[SDR_SENSOR_INIT]) + HexWord(r[SDR_SENSOR_CAPS]),
                  SumWord(sensor)};
    return line;
}

std::string Text(const SensorLine &line) {
    return Join({line.words.begin(), line.words.end()}, " ");
}

std::string Text(const TableLine &line) {
    return line.tag + " " + Join(line.key, " ") + (line.value.empty() ? "" : " " + Join(line.value, " "));
}

} // namespace workbench
