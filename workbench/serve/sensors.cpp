// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/sensors.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "base/errors.h"
#include "base/text.h"
#include "sets/set_numbers.h"

namespace workbench {
namespace {

constexpr uint8_t kTemperature = 0x01; // sensor type
constexpr uint8_t kVoltage = 0x02;
constexpr double kRoomTemperature = 30, kMains = 230, kRail = 12;
constexpr unsigned kQuarterScale = 64; // raw

unsigned Raw16(const Record &record, unsigned offset) {
    return record[offset] | record[offset + 1] << 8;
}

// ---- readings ----------------------------------------------------------------------------------------

// Lowest and highest raw reading in the order of the values.
std::pair<int, int> RawRange(const Reading &r) {
    return r.is_signed ? std::pair{-128, 127} : std::pair{0, 255};
}

unsigned RawOf(const Reading &r, double value) {
    if (r.factor == 0)
        return 0;
    const auto [low, high] = RawRange(r);
    return static_cast<uint8_t>(
        std::clamp(static_cast<int>(std::lround((value - r.offset) / r.factor)), low, high));
}

std::optional<double> Limit(const Decoded &d, std::initializer_list<unsigned> innermost_first) {
    for (const unsigned offset : innermost_first) {
        const Threshold *threshold = d.FindThreshold(offset);
        if (threshold != nullptr && threshold->readable)
            return threshold->value;
    }
    return std::nullopt;
}

// A reading for a sensor without limits.
unsigned UsualReading(const Decoded &d) {
    const Reading &r = *d.reading;
    if (d.sensor_type == kTemperature)
        return RawOf(r, kRoomTemperature);
    if (d.sensor_type == kVoltage)
        return RawOf(r, r.maximum > kMains + 100 ? kMains : kRail);
    return kQuarterScale;
}

// A reading that no limit minds: halfway between the limits, or well inside the one there is.
unsigned QuietReading(const Decoded &d) {
    const Reading &r = *d.reading;
    const auto upper = Limit(d, {FULL_SDR_UNC, FULL_SDR_UC, FULL_SDR_UNR});
    const auto lower = Limit(d, {FULL_SDR_LNC, FULL_SDR_LC, FULL_SDR_LNR});
    if (upper && lower)
        return RawOf(r, (*upper + *lower) / 2);
    if (upper)
        return RawOf(r,
                     d.sensor_type == kTemperature ? std::min(kRoomTemperature, *upper * 0.6) : *upper * 0.6);
    if (lower)
        return RawOf(r, *lower * 1.5);
    return UsualReading(d);
}

// The state of a part that is there and well.
unsigned QuietState(uint8_t event_type, uint8_t sensor_type) {
    switch (event_type) {
    case 0x03: // state: deasserted
    case 0x04: // predictive failure: deasserted
    case 0x05: // limit: not exceeded
    case 0x06: // performance: met
    case 0x07: // severity: OK
    case 0x0B: // redundancy: full
        return 1;
    case 0x08: // device: present
    case 0x09: // device: enabled
        return 2;
    case 0x6F:
        break;
    default:
        return 0;
    }
    switch (sensor_type) {
    case 0x07: // processor: present
        return 1 << 7;
    case 0x08: // power supply: present
    case 0x0D: // drive slot: present
        return 1;
    case 0x0C: // memory: present
        return 1 << 6;
    case 0x22: // ACPI: S0, working
        return 1;
    default:
        return 0;
    }
}

// ---- names of files ----------------------------------------------------------------------------------

std::string FileName(const Decoded &d) {
    std::string out;
    for (const char c : d.name)
        out += std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-' || c == '+' ? c : '_';
    return out.empty() ? "sensor" : out;
}

// Sensors that share a name get their place in the set behind it.
void NameFiles(std::vector<ServedSensor> &all) {
    std::map<std::string, unsigned> uses;
    for (const ServedSensor &served : all)
        ++uses[served.file];
    for (ServedSensor &served : all)
        if (uses[served.file] > 1)
            served.file.append(".").append(std::to_string(served.sensor.ordinal));
}

// ---- the simulator's language ------------------------------------------------------------------------

std::string Bits(unsigned value, unsigned count) {
    std::string out;
    for (unsigned bit = count; bit-- > 0;)
        out += (value >> bit & 1) != 0 ? '1' : '0';
    return out;
}

using Words = std::vector<std::string>;

std::string Line(const std::string &command, const Record &record, Words words) {
    words.insert(words.begin(), {command, "0x20", std::to_string(record[SDR_OWNER_LUN] & 3),
                                 std::to_string(record[SDR_SENSOR_NUM])});
    return Join(words, " ") + "\n";
}

std::string Thresholds(const ServedSensor &served) {
    const Record &record = served.sensor.record;
    const Decoded &d = served.decoded;
    Words limits = {std::to_string(d.threshold_support), Bits(record[SDR_READING_MASK], 6)};
    for (unsigned offset = FULL_SDR_UNR; offset <= FULL_SDR_LNC; ++offset) // the simulator's order too
        limits.push_back(std::to_string(record[offset]));
    return Line("sensor_set_value", record, {std::to_string(served.reading), "0"}) +
           Line("sensor_set_threshold", record, limits) +
           Line("sensor_set_hysteresis", record,
                {std::to_string(d.hysteresis_support), std::to_string(d.hysteresis_positive),
                 std::to_string(d.hysteresis_negative)});
}

std::string States(const ServedSensor &served) {
    std::string out;
    for (unsigned bit = 0; bit < 15; ++bit)
        if ((served.reading >> bit & 1) != 0)
            out += Line("sensor_set_bit", served.sensor.record, {std::to_string(bit), "1", "0"});
    return out;
}

// In a threshold sensor's masks bits 12 to 14 tell what can be compared, not what can happen.
std::string Events(const ServedSensor &served) {
    const Record &record = served.sensor.record;
    const unsigned real = served.decoded.IsThreshold() ? 0x0FFF : 0x7FFF;
    const std::string assertion = Bits(Raw16(record, SDR_ASSERT_MASK) & real, 15);
    const std::string deassertion = Bits(Raw16(record, SDR_DEASSERT_MASK) & real, 15);
    return Line("sensor_set_event_support", record,
                {"enable", "scanning", "per-state", assertion, deassertion, assertion, deassertion});
}

} // namespace

ServedSensor SensorToServe(const Sensor &sensor) {
    const Decoder decoder;
    const Decoded d = decoder.Decode(sensor);
    const unsigned reading = d.IsThreshold() && d.reading ? QuietReading(d)
                                                          : QuietState(d.event_type, d.sensor_type) &
                                                                Raw16(sensor.record, SDR_READING_MASK);
    return {sensor, d, FileName(d), reading};
}

std::vector<ServedSensor> SensorsToServe(StaticSet &set) {
    SetRecordIds(set);
    SetSensorNumbers(set, "a BMC");
    std::vector<ServedSensor> out;
    for (const Sensor &sensor : set.sensors)
        out.push_back(SensorToServe(sensor));
    NameFiles(out);
    return out;
}

std::string SimulatorCommands(const ServedSensor &served, const std::string &folder) {
    const Record &record = served.sensor.record;
    std::string out = Line("sensor_add", record,
                           {Hex(record[SDR_SENSOR_TYPE]), Hex(record[SDR_EVENT_TYPE]), "poll", "200", "file",
                            '"' + folder + "/" + served.file + '"'});
    out += served.decoded.IsThreshold() ? Thresholds(served) : States(served);
    return out + Events(served);
}

std::string ReadingText(const Reading &r, unsigned raw) {
    const int count = r.is_signed ? static_cast<int8_t>(raw) : static_cast<int>(raw & 0xFF);
    return FormatNumber(Rounded(r.factor * count + r.offset)) + (r.unit.empty() ? "" : " " + r.unit);
}

int RawAboveCritical(const ServedSensor &served) {
    const Threshold *limit = served.decoded.FindThreshold(FULL_SDR_UC);
    if (limit == nullptr || !limit->readable || !served.decoded.reading)
        return -1;
    const Reading &r = *served.decoded.reading;
    if (r.factor <= 0 || limit->raw >= (r.is_signed ? 127 : 255))
        return -1;
    return limit->raw + 1;
}

} // namespace workbench
