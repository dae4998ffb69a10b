// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/decode.h"

#include <algorithm>
#include <cstdlib>
#include <freeipmi/freeipmi.h>
#include <span>
#include <utility>

#include "base/errors.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr uint8_t kFormatTwosComplement = 2;
constexpr uint8_t kFormatNone = 3; // units byte: no analog reading
constexpr const char *kFunctions[] = {"",   "ln", "log10", "log2", "e^",   "10^",
                                      "2^", "1/", "sqr",   "cube", "sqrt", "cube^-1"};
constexpr uint8_t kLastFunction = 11; // of the linearizations that a record tells all of

struct ThresholdPlace {
    const char *key, *name;
    unsigned offset;
    unsigned index; // in libfreeipmi's argument order: LNC LC LNR UNC UC UNR
};
constexpr ThresholdPlace kThresholds[] = {
    {"LNR", "lower non-recoverable", FULL_SDR_LNR, 2}, {"LC", "lower critical", FULL_SDR_LC, 1},
    {"LNC", "lower non-critical", FULL_SDR_LNC, 0},    {"UNC", "upper non-critical", FULL_SDR_UNC, 3},
    {"UC", "upper critical", FULL_SDR_UC, 4},          {"UNR", "upper non-recoverable", FULL_SDR_UNR, 5},
};

// One record in the hands of libfreeipmi.  Every parse call goes through Call(), which turns a refusal into
// SetError.
class Parser {
public:
    Parser(ipmi_sdr_ctx_t context, const Sensor &sensor)
        : context_(context), sensor_(sensor), size_(RecordSize(sensor.record)) {
        if (size_ > sensor.record.size())
            Fail("its length byte " + Hex(sensor.record[SDR_RECORD_LENGTH]) + " reaches beyond the slot");
    }

    template <class Function, class... Outputs> void Call(Function parse, Outputs... outputs) const {
        if (parse(context_, sensor_.record.data(), size_, outputs...) < 0)
            Fail(std::string("libfreeipmi: ") + ipmi_sdr_ctx_errormsg(context_));
    }

    // For the parse functions that fill N values of one type, one pointer each.
    template <class Value, size_t N, class Function> std::array<Value, N> Values(Function parse) const {
        std::array<Value, N> out{};
        [&]<size_t... I>(std::index_sequence<I...>) {
            Call(parse, &out[I]...);
        }
        (std::make_index_sequence<N>{});
        return out;
    }

    // The same for values that libfreeipmi allocates; a null one counts as 0.
    template <size_t N, class Function> std::array<double, N> Numbers(Function parse) const {
        const auto pointers = Values<double *, N>(parse);
        std::array<double, N> out{};
        for (size_t i = 0; i < N; ++i) {
            out[i] = pointers[i] != nullptr ? *pointers[i] : 0;
            std::free(pointers[i]);
        }
        return out;
    }

    [[noreturn]] void Fail(const std::string &why) const {
        throw SetError("record " + std::to_string(sensor_.ordinal) + ": " + why);
    }

    const Record &record() const {
        return sensor_.record;
    }
    unsigned size() const {
        return size_;
    }
    uint8_t operator[](unsigned offset) const {
        return sensor_.record[offset];
    }

private:
    ipmi_sdr_ctx_t context_;
    const Sensor &sensor_;
    unsigned size_;
};

// The bits of a mask that are on; a threshold sensor's has more behind them, for what can be compared.
std::vector<State> MaskStates(const Parser &p, const Decoded &d, unsigned offset) {
    const unsigned mask = p[offset] | p[offset + 1] << 8;
    const unsigned count = d.IsThreshold() ? 12 : 15;
    std::vector<State> out;
    for (unsigned i = 0; i < count; ++i)
        if (mask >> i & 1)
            out.push_back({i, StateText(d.event_type, d.sensor_type, i)});
    return out;
}

// ---- names -----------------------------------------------------------------------------------------------

std::string BcdPlus(std::span<const uint8_t> bytes) {
    constexpr char kDigits[] = "0123456789 -.:,_";
    std::string out;
    for (const uint8_t byte : bytes)
        out += {kDigits[byte >> 4], kDigits[byte & 0x0F]};
    return out;
}

// Six bits a character, the first one lowest.
std::string SixBitAscii(std::span<const uint8_t> bytes) {
    std::string out;
    for (size_t bit = 0; bit + 6 <= bytes.size() * 8; bit += 6) {
        const size_t at = bit / 8;
        const unsigned word = bytes[at] | (at + 1 < bytes.size() ? bytes[at + 1] << 8 : 0);
        out += static_cast<char>((word >> bit % 8 & 0x3F) + 0x20);
    }
    return out;
}

void DecodeHead(const Parser &p, Decoded &d) {
    uint8_t type = 0, ignored = 0, container = 0;
    p.Call(ipmi_sdr_parse_record_id_and_type, &d.record_id, &type);
    if (type != 0x01 && type != 0x02)
        p.Fail("record type " + Hex(type) + " is no sensor record");
    d.kind = type == 0x01 ? RecordKind::kFull : RecordKind::kCompact;
    d.owner_id = p[SDR_OWNER_ID];
    p.Call(ipmi_sdr_parse_sensor_owner_lun, &d.owner_lun, &ignored);
    p.Call(ipmi_sdr_parse_sensor_number, &d.sensor_number);
    p.Call(ipmi_sdr_parse_entity_id_instance_type, &d.entity_id, &d.entity_instance, &container);
    d.entity_is_container = container != 0;
    d.entity_text = EntityText(d.entity_id);
    p.Call(ipmi_sdr_parse_sensor_type, &d.sensor_type);
    d.sensor_type_text = SensorTypeText(d.sensor_type);
    p.Call(ipmi_sdr_parse_event_reading_type_code, &d.event_type);
    d.event_type_text = EventTypeText(d.event_type);
    d.init = p[SDR_SENSOR_INIT];
    d.capabilities = p[SDR_SENSOR_CAPS];
    p.Call(ipmi_sdr_parse_sensor_capabilities, &d.event_control, &d.threshold_support, &d.hysteresis_support,
           &d.auto_rearm, &d.entity_ignore);
    const unsigned at = d.kind == RecordKind::kFull ? FULL_SDR_NAME : COMPACT_SDR_NAME;
    d.name = IdText(std::span(p.record()).first(p.size()), at - 1);
}

void DecodeStates(const Parser &p, Decoded &d) {
    d.assertion = MaskStates(p, d, SDR_ASSERT_MASK);
    d.deassertion = MaskStates(p, d, SDR_DEASSERT_MASK);
    if (!d.IsThreshold())
        d.readable = MaskStates(p, d, SDR_READING_MASK);
}

std::string UnitString(const Parser &p, bool abbreviated) {
    const auto units = p.Values<uint8_t, 5>(ipmi_sdr_parse_sensor_units);
    char text[256] = {};
    if (ipmi_sensor_units_string(units[0], units[1], units[2], units[3], units[4], text, sizeof text - 1,
                                 abbreviated) <= 0)
        return "";
    return text;
}

std::string ShortUnit(const Parser &p) {
    const std::string unit = UnitString(p, true);
    if (unit == "C" || unit == "F")
        return "°" + unit;
    return unit == "unspecified" ? "" : unit;
}

double Convert(const Parser &p, const Reading &r, uint8_t raw) {
    double value = 0;
    if (ipmi_sensor_decode_value(static_cast<int8_t>(r.r_exponent), static_cast<int8_t>(r.b_exponent),
                                 static_cast<int16_t>(r.m), static_cast<int16_t>(r.b), r.linearization,
                                 r.format, raw, &value) < 0)
        p.Fail("libfreeipmi cannot convert the reading " + Hex(raw));
    return value;
}

std::string FormulaText(const Reading &r) {
    const std::string unit = r.unit.empty() ? "" : " " + r.unit;
    const std::string sign = r.is_signed ? "signed, " : "";
    std::string text =
        r.is_signed && r.offset == 0 ? FormatNumber(r.factor) : "x * " + FormatNumber(r.factor);
    if (r.offset != 0)
        text += (r.offset < 0 ? " - " : " + ") + FormatNumber(r.offset < 0 ? -r.offset : r.offset);
    return sign + (r.IsLinear() ? text : std::string(kFunctions[r.linearization]) + "(" + text + ")") + unit;
}

void DecodeRanges(const Parser &p, Reading &r) {
    const auto given = p.Values<uint8_t, 3>(ipmi_sdr_parse_sensor_reading_ranges_specified);
    const auto ranges = p.Numbers<5>(ipmi_sdr_parse_sensor_reading_ranges);
    r.has_nominal = given[0] != 0;
    r.has_normal_maximum = given[1] != 0;
    r.has_normal_minimum = given[2] != 0;
    r.nominal = ranges[0];
    r.normal_maximum = ranges[1];
    r.normal_minimum = ranges[2];
    r.maximum = ranges[3];
    r.minimum = ranges[4];
}

void DecodeReading(const Parser &p, Decoded &d) {
    if (d.kind != RecordKind::kFull || p[SDR_UNITS_1] >> 6 == kFormatNone ||
        (p[FULL_SDR_LINEARIZATION] & 0x7F) > kLastFunction)
        return; // what a count stands for then differs from reading to reading, and is not in the record
    Reading r;
    int8_t r_exponent = 0, b_exponent = 0;
    int16_t m = 0, b = 0;
    p.Call(ipmi_sdr_parse_sensor_decoding_data, &r_exponent, &b_exponent, &m, &b, &r.linearization,
           &r.format);
    r.r_exponent = r_exponent;
    r.b_exponent = b_exponent;
    r.m = m;
    r.b = b;
    r.is_signed = r.format == kFormatTwosComplement;
    const uint8_t function = std::exchange(r.linearization, 0);
    r.offset = Convert(p, r, 0);
    r.factor = Convert(p, r, 1) - r.offset;
    r.linearization = function;
    r.unit = ShortUnit(p);
    r.formula = FormulaText(r);
    DecodeRanges(p, r);
    d.reading = r;
}

void DecodeThresholds(const Parser &p, Decoded &d) {
    if (d.kind != RecordKind::kFull || !d.IsThreshold() || !d.reading)
        return;
    const auto raw = p.Values<uint8_t, 6>(ipmi_sdr_parse_thresholds_raw);
    const auto value = p.Numbers<6>(ipmi_sdr_parse_thresholds);
    const auto readable = p.Values<uint8_t, 6>(ipmi_sdr_parse_threshold_readable);
    const auto settable = p.Values<uint8_t, 6>(ipmi_sdr_parse_threshold_settable);
    for (const ThresholdPlace &t : kThresholds)
        d.thresholds.push_back({t.key,
                                t.name,
                                t.offset,
                                raw[t.index],
                                readable[t.index] != 0,
                                settable[t.index] != 0,
                                value[t.index],
                                {},
                                0});
}

// The bits of a readable mask go from LNC up, those of ActiveLimits as the record's bytes.
void DecodeActive(const Parser &p, const std::optional<ActiveLimits> &active, Decoded &d) {
    for (Threshold &t : d.thresholds) {
        const auto place = std::find_if(std::begin(kThresholds), std::end(kThresholds),
                                        [&t](const ThresholdPlace &one) { return one.offset == t.offset; });
        if (!active || (active->mask >> place->index & 1) == 0)
            continue;
        t.active_raw = active->raw[t.offset - FULL_SDR_UNR];
        t.active_value = Convert(p, *d.reading, *t.active_raw);
    }
}

void DecodeTail(const Parser &p, Decoded &d) {
    if (d.kind == RecordKind::kFull) {
        p.Call(ipmi_sdr_parse_hysteresis, &d.hysteresis_positive, &d.hysteresis_negative);
        return;
    }
    d.hysteresis_positive = p[COMPACT_SDR_HYST_POSITIVE];
    d.hysteresis_negative = p[COMPACT_SDR_HYST_NEGATIVE];
    p.Call(ipmi_sdr_parse_sensor_record_sharing, &d.share_count, &d.share_modifier_type,
           &d.share_modifier_offset, &d.share_instances);
}

} // namespace

struct Decoder::Impl {
    ipmi_sdr_ctx_t context = ipmi_sdr_ctx_create();
    Impl() {
        if (context == nullptr)
            throw SetError("libfreeipmi gives no SDR context");
    }
    ~Impl() {
        ipmi_sdr_ctx_destroy(context);
    }
};

Decoder::Decoder() : impl_(std::make_unique<Impl>()) {}
Decoder::~Decoder() = default;

Decoded Decoder::Decode(const Sensor &sensor) const {
    const Parser parser(impl_->context, sensor);
    Decoded d;
    DecodeHead(parser, d);
    DecodeStates(parser, d);
    d.unit_text = UnitString(parser, false);
    DecodeReading(parser, d);
    DecodeThresholds(parser, d);
    DecodeActive(parser, sensor.active, d);
    DecodeTail(parser, d);
    return d;
}

std::string IdText(std::span<const uint8_t> record, size_t at) {
    if (at + 1 >= record.size())
        return "";
    const size_t size = std::min<size_t>(record[at] & 0x1F, record.size() - at - 1);
    const std::span<const uint8_t> bytes = record.subspan(at + 1, size);
    const std::string plain(bytes.begin(), std::find(bytes.begin(), bytes.end(), 0));
    switch (record[at] >> 6) {
    case 1:
        return BcdPlus(bytes);
    case 2:
        return SixBitAscii(bytes);
    default:
        return Printable(plain);
    }
}

const Threshold *Decoded::FindThreshold(unsigned offset) const {
    for (const Threshold &t : thresholds)
        if (t.offset == offset)
            return &t;
    return nullptr;
}

std::string SensorTypeText(uint8_t type) {
    const char *text = ipmi_get_sensor_type_string(type);
    return text != nullptr ? text : Hex(type);
}

std::string EntityText(uint8_t id) {
    if (id == 0x37)
        return "Air Inlet"; // a later addition to the IPMI table, which libfreeipmi takes for an OEM id
    const char *text = ipmi_get_entity_id_string(id);
    return text != nullptr ? text : Hex(id);
}

std::string EventTypeText(uint8_t event_type) {
    switch (ipmi_event_reading_type_code_class(event_type)) {
    case IPMI_EVENT_READING_TYPE_CODE_CLASS_THRESHOLD:
        return "threshold";
    case IPMI_EVENT_READING_TYPE_CODE_CLASS_GENERIC_DISCRETE:
        return "generic discrete";
    case IPMI_EVENT_READING_TYPE_CODE_CLASS_SENSOR_SPECIFIC_DISCRETE:
        return "sensor-specific discrete";
    case IPMI_EVENT_READING_TYPE_CODE_CLASS_OEM:
        return "OEM";
    default:
        return "unknown";
    }
}

std::string StateText(uint8_t event_type, uint8_t sensor_type, unsigned offset) {
    char text[512] = {};
    const bool specific = ipmi_event_reading_type_code_class(event_type) ==
                          IPMI_EVENT_READING_TYPE_CODE_CLASS_SENSOR_SPECIFIC_DISCRETE;
    const int length = specific
                           ? ipmi_get_sensor_type_message_short(sensor_type, offset, text, sizeof text - 1)
                           : ipmi_get_generic_event_message_short(event_type, offset, text, sizeof text - 1);
    return length > 0 ? text : "state " + std::to_string(offset);
}

const char *KindText(RecordKind kind) {
    return kind == RecordKind::kFull ? "full" : "compact";
}

std::string DeviceText(const Entry &entry) {
    return Hex(entry[0]) + "/" + std::to_string(entry[1]);
}

} // namespace workbench
