// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "base/text.h"
#include "explain/explain.h"

namespace workbench {
namespace {

using Lines = std::vector<std::string>;

// What a field's words are made from.
struct View {
    const Sensor &sensor;
    const Decoded &d;
    uint8_t operator[](unsigned offset) const {
        return sensor.record[offset];
    }
    unsigned Word(unsigned offset) const {
        return (*this)[offset] | (*this)[offset + 1] << 8;
    }
};

std::string Plural(unsigned count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string Value(const View &v, double value) {
    const std::string unit = v.d.reading ? v.d.reading->unit : "";
    return FormatNumber(value) + (unit.empty() || unit == "%" ? unit : " " + unit);
}

std::string Counts(const View &v, uint8_t raw) { // a difference in raw counts
    const std::string text = Plural(raw, "count");
    return v.d.reading && v.d.reading->IsLinear() ? text + ", " + Value(v, raw * v.d.reading->factor) : text;
}

Lines Id(const View &v, unsigned at) {
    return {v.Word(at) == 0 ? "0: the repository assigns one" : std::to_string(v.Word(at))};
}
Lines Version(const View &v, unsigned at) {
    return {v[at] == 0x51 ? "IPMI 1.5 and 2.0" : "unknown version"};
}
Lines Type(const View &v, unsigned) {
    return {v.d.kind == RecordKind::kFull ? "full sensor record" : "compact sensor record"};
}
Lines Length(const View &v, unsigned at) {
    return {Plural(v[at], "byte") + " follow; the record has " + std::to_string(v[at] + 5)};
}
Lines Owner(const View &v, unsigned at) {
    const std::string kind = v[at] & 1 ? "system software id " : "slave address ";
    return {kind + Hex(v[at] & (v[at] & 1 ? 0xFF : 0xFE)) + (v[at] == 0x20 ? ": the BMC" : "")};
}
Lines Lun(const View &v, unsigned at) {
    return {"LUN " + std::to_string(v[at] & 3) + ", channel " + std::to_string(v[at] >> 4)};
}
Lines Number(const View &v, unsigned at) {
    return {v[at] == 0 ? "0: given when the sensor is added" : std::to_string(v[at])};
}
Lines EntityId(const View &v, unsigned) {
    return {v.d.entity_text};
}
Lines Instance(const View &v, unsigned at) {
    const unsigned number = v[at] & 0x7F;
    std::string text = number >= 0x60 ? "device-relative " + std::to_string(number - 0x60)
                                      : "system-relative " + std::to_string(number);
    return {text + (v[at] & 0x80 ? ", logical container (bit 7)" : "")};
}

Lines Init(const View &v, unsigned at) {
    static constexpr const char *kOn[8] = {"sensor scanning on by default", "events on by default",
                                           "initialise sensor type",        "initialise hysteresis",
                                           "initialise thresholds",         "initialise event masks",
                                           "initialise scanning",           "settable by commands"};
    Lines set;
    for (int bit = 7; bit >= 0; --bit)
        if (v[at] >> bit & 1)
            set.push_back(kOn[bit]);
    return {set.empty() ? "nothing is initialised" : Join(set, ", ")};
}

Lines Capabilities(const View &v, unsigned) {
    static constexpr const char *kThreshold[4] = {"no thresholds", "thresholds readable",
                                                  "thresholds readable and settable", "thresholds fixed"};
    static constexpr const char *kHysteresis[4] = {"no hysteresis", "hysteresis readable",
                                                   "hysteresis readable and settable", "hysteresis fixed"};
    static constexpr const char *kEvents[4] = {"events per state", "events for the whole sensor only",
                                               "events switched globally only", "no events"};
    const Decoded &d = v.d;
    Lines out = {d.auto_rearm ? "rearms by itself" : "rearmed by hand", kHysteresis[d.hysteresis_support & 3],
                 kThreshold[d.threshold_support & 3], kEvents[d.event_control & 3]};
    if (d.entity_ignore)
        out.insert(out.begin(), "ignored when the entity is absent");
    return {Join(out, ", ")};
}

Lines SensorType(const View &v, unsigned) {
    return {v.d.sensor_type_text};
}
Lines EventType(const View &v, unsigned) {
    return {v.d.event_type_text};
}

Lines StateLines(const std::vector<State> &states, const std::string &none) {
    Lines out;
    for (const State &s : states)
        out.push_back("bit " + std::to_string(s.offset) + ": " + s.text);
    return out.empty() ? Lines{none} : out;
}

// Bits 12 to 14 of a threshold sensor's masks say which comparisons a reading returns.
void AddComparisons(const View &v, unsigned at, const char *side, Lines &out) {
    static constexpr const char *kLevel[3] = {"non-critical", "critical", "non-recoverable"};
    if (!v.d.IsThreshold())
        return;
    for (unsigned i = 0; i < 3; ++i)
        if (v.Word(at) >> (12 + i) & 1)
            out.push_back("bit " + std::to_string(12 + i) + ": a reading tells " + side + " " + kLevel[i]);
}

Lines Assertion(const View &v, unsigned at) {
    Lines out = StateLines(v.d.assertion, "no assertion events");
    AddComparisons(v, at, "lower", out);
    return out;
}
Lines Deassertion(const View &v, unsigned at) {
    Lines out = StateLines(v.d.deassertion, "no deassertion events");
    AddComparisons(v, at, "upper", out);
    return out;
}
Lines ReadingStates(const View &v, unsigned) {
    return StateLines(v.d.readable, "no states");
}

Lines ThresholdList(const View &v, bool Threshold::*which, const char *none) {
    Lines names;
    for (const Threshold &t : v.d.thresholds)
        if (t.*which)
            names.push_back(t.key);
    return {names.empty() ? none : Join(names, ", ")};
}
Lines Readable(const View &v, unsigned) {
    return ThresholdList(v, &Threshold::readable, "no threshold exists");
}
Lines Settable(const View &v, unsigned) {
    return ThresholdList(v, &Threshold::settable, "no threshold can be set");
}

Lines Units1(const View &v, unsigned at) {
    static constexpr const char *kFormat[4] = {"unsigned reading", "1's complement reading",
                                               "2's complement reading (signed)", "no analog reading"};
    Lines out = {kFormat[v[at] >> 6]};
    if (v[at] & 1)
        out[0] += ", percentage";
    return out;
}
Lines BaseUnit(const View &v, unsigned) {
    return {v.d.unit_text};
}
Lines ModifierUnit(const View &v, unsigned at) {
    return {v[at] == 0 ? "none" : "unit code " + Hex(v[at])};
}
Lines Linear(const View &v, unsigned at) {
    return {(v[at] & 0x7F) == 0 ? "linear" : "function " + std::to_string(v[at] & 0x7F)};
}
Lines FactorM(const View &v, unsigned) {
    if (!v.d.reading)
        return {"not used"};
    return {"M = " + std::to_string(v.d.reading->m) + "; the reading is " + v.d.reading->formula};
}
Lines FactorMHigh(const View &v, unsigned at) {
    return {"M bits 8-9 = " + std::to_string(v[at] >> 6) + ", tolerance " + std::to_string(v[at] & 0x3F)};
}
Lines FactorB(const View &v, unsigned) {
    return {v.d.reading ? "B = " + std::to_string(v.d.reading->b) : "not used"};
}
Lines FactorBHigh(const View &v, unsigned at) {
    return {"B bits 8-9 = " + std::to_string(v[at] >> 6) +
            ", accuracy bits 0-5 = " + std::to_string(v[at] & 0x3F)};
}
Lines Accuracy(const View &v, unsigned at) {
    static constexpr const char *kDirection[4] = {"no direction", "input", "output", "reserved direction"};
    return {"accuracy bits 6-9 = " + std::to_string(v[at] >> 4) + ", exponent " +
            std::to_string(v[at] >> 2 & 3) + ", " + kDirection[v[at] & 3]};
}
Lines Exponents(const View &v, unsigned) {
    if (!v.d.reading)
        return {"not used"};
    return {"R exponent " + std::to_string(v.d.reading->r_exponent) + ", B exponent " +
            std::to_string(v.d.reading->b_exponent)};
}
Lines AnalogFlags(const View &v, unsigned) {
    if (!v.d.reading)
        return {"not used"};
    Lines out;
    if (v.d.reading->has_nominal)
        out.push_back("nominal reading given");
    if (v.d.reading->has_normal_maximum)
        out.push_back("normal maximum given");
    if (v.d.reading->has_normal_minimum)
        out.push_back("normal minimum given");
    return {out.empty() ? "nominal reading, normal maximum and minimum are not given" : Join(out, ", ")};
}
Lines Range(const View &v, bool given, double value) {
    return {v.d.reading && given ? Value(v, value) : "not given"};
}
Lines Nominal(const View &v, unsigned) {
    return v.d.reading ? Range(v, v.d.reading->has_nominal, v.d.reading->nominal) : Lines{"not used"};
}
Lines NormalMax(const View &v, unsigned) {
    return v.d.reading ? Range(v, v.d.reading->has_normal_maximum, v.d.reading->normal_maximum)
                       : Lines{"not used"};
}
Lines NormalMin(const View &v, unsigned) {
    return v.d.reading ? Range(v, v.d.reading->has_normal_minimum, v.d.reading->normal_minimum)
                       : Lines{"not used"};
}
Lines SensorMax(const View &v, unsigned) {
    return {v.d.reading ? Value(v, v.d.reading->maximum) : "not used"};
}
Lines SensorMin(const View &v, unsigned) {
    return {v.d.reading ? Value(v, v.d.reading->minimum) : "not used"};
}
Lines ThresholdValue(const View &v, unsigned at) {
    const Threshold *t = v.d.FindThreshold(at);
    if (t == nullptr)
        return {"not used"};
    return {t->readable  ? Value(v, t->value)
            : v[at] == 0 ? "absent"
                         : "absent (the readable mask leaves it out)"};
}
Lines Hysteresis(const View &v, unsigned at) {
    return {v[at] == 0 ? "none" : Counts(v, v[at])};
}
Lines Sharing1(const View &v, unsigned) {
    return {"shared by " + Plural(v.d.share_count, "sensor") + ", name modifier " +
            (v.d.share_modifier_type == 0 ? "numeric" : "alphabetic")};
}
Lines Sharing2(const View &v, unsigned) {
    return {std::string("entity instance ") +
            (v.d.share_instances ? "counts up with each sensor" : "is the same for all") +
            ", name modifier starts at " + std::to_string(v.d.share_modifier_offset)};
}
Lines Raw(const View &v, unsigned at) {
    return {std::to_string(v[at])};
}
Lines Reserved(const View &, unsigned) {
    return {"reserved"};
}
Lines IdType(const View &v, unsigned at) {
    static constexpr const char *kCode[4] = {"unicode", "BCD plus", "6-bit ASCII", "8-bit ASCII"};
    return {std::string(kCode[v[at] >> 6]) + ", " + Plural(v[at] & 0x1F, "character")};
}
Lines Name(const View &v, unsigned) {
    return {"\"" + v.d.name + "\""};
}

struct FieldRow {
    unsigned offset, size;
    const char *name;
    Lines (*words)(const View &, unsigned);
};

constexpr FieldRow kHead[] = {
    {0, 2, "record ID", Id},
    {2, 1, "SDR version", Version},
    {3, 1, "record type", Type},
    {4, 1, "record length", Length},
    {5, 1, "sensor owner ID", Owner},
    {6, 1, "sensor owner LUN", Lun},
    {7, 1, "sensor number", Number},
    {8, 1, "entity ID", EntityId},
    {9, 1, "entity instance", Instance},
    {10, 1, "initialisation", Init},
    {11, 1, "capabilities", Capabilities},
    {12, 1, "sensor type", SensorType},
    {13, 1, "event/reading type", EventType},
    {14, 2, "assertion mask", Assertion},
    {16, 2, "deassertion mask", Deassertion},
};
constexpr FieldRow kThresholdMasks[] = {{18, 1, "readable thresholds", Readable},
                                        {19, 1, "settable thresholds", Settable}};
constexpr FieldRow kDiscreteMask[] = {{18, 2, "reading mask", ReadingStates}};
constexpr FieldRow kUnits[] = {
    {20, 1, "units 1", Units1}, {21, 1, "base unit", BaseUnit}, {22, 1, "modifier unit", ModifierUnit}};
constexpr FieldRow kFull[] = {
    {23, 1, "linearisation", Linear},
    {24, 1, "M", FactorM},
    {25, 1, "M high, tolerance", FactorMHigh},
    {26, 1, "B", FactorB},
    {27, 1, "B high, accuracy", FactorBHigh},
    {28, 1, "accuracy, direction", Accuracy},
    {29, 1, "exponents", Exponents},
    {30, 1, "analog flags", AnalogFlags},
    {31, 1, "nominal reading", Nominal},
    {32, 1, "normal maximum", NormalMax},
    {33, 1, "normal minimum", NormalMin},
    {34, 1, "sensor maximum", SensorMax},
    {35, 1, "sensor minimum", SensorMin},
    {36, 1, "UNR threshold", ThresholdValue},
    {37, 1, "UC threshold", ThresholdValue},
    {38, 1, "UNC threshold", ThresholdValue},
    {39, 1, "LNR threshold", ThresholdValue},
    {40, 1, "LC threshold", ThresholdValue},
    {41, 1, "LNC threshold", ThresholdValue},
    {42, 1, "positive hysteresis", Hysteresis},
    {43, 1, "negative hysteresis", Hysteresis},
    {44, 1, "sensor index", Raw},
    {45, 1, "slot", Raw},
    {46, 1, "OEM: device type", Raw},
    {47, 1, "ID string type/length", IdType},
};
constexpr FieldRow kCompact[] = {
    {23, 1, "record sharing 1", Sharing1},
    {24, 1, "record sharing 2", Sharing2},
    {25, 1, "positive hysteresis", Hysteresis},
    {26, 1, "negative hysteresis", Hysteresis},
    {27, 2, "reserved", Reserved},
    {29, 1, "slot", Raw},
    {30, 1, "OEM: device type", Raw},
    {31, 1, "ID string type/length", IdType},
};

template <size_t N> void AddRows(const View &view, const FieldRow (&rows)[N], std::vector<Field> &out) {
    // Of a record without its entry nobody knows who built it.
    const Row *built_by = view.sensor.has_entry ? RowThatBuilt(view.sensor) : nullptr;
    for (const FieldRow &row : rows)
        out.push_back(
            {row.offset, row.size, row.name, row.words(view, row.offset), Origin(built_by, 'S', row.offset)});
}

void AddName(const View &view, std::vector<Field> &out) {
    const unsigned start = view.d.kind == RecordKind::kFull ? FULL_SDR_NAME : COMPACT_SDR_NAME;
    const unsigned length = std::min<unsigned>(view[start - 1] & 0x1F, 16);
    const char *base = view.d.kind == RecordKind::kFull ? "43" : "27";
    if (length > 0)
        out.push_back({start, length, "ID string", Name(view, start), ""});
    if (start + length < SDR_SLOT_SIZE)
        out.push_back({start + length,
                       SDR_SLOT_SIZE - start - length,
                       "unused",
                       {"rest of the slot, not part of the record"},
                       ""});
    if (!view.sensor.has_entry)
        return;
    for (Field &field : out)
        if (field.offset == SDR_RECORD_LENGTH)
            field.set_by = std::string(base) + " + name length";
        else if (field.offset == start - 1)
            field.set_by = "0xC0 + name length";
}

} // namespace

std::vector<Field> ExplainRecord(const Sensor &sensor, const Decoded &decoded) {
    const View view{sensor, decoded};
    std::vector<Field> out;
    AddRows(view, kHead, out);
    if (decoded.IsThreshold() && decoded.kind == RecordKind::kFull)
        AddRows(view, kThresholdMasks, out);
    else
        AddRows(view, kDiscreteMask, out);
    AddRows(view, kUnits, out);
    if (decoded.kind == RecordKind::kFull)
        AddRows(view, kFull, out);
    else
        AddRows(view, kCompact, out);
    AddName(view, out);
    return out;
}

} // namespace workbench
