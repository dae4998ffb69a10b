// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/record_differ.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

namespace tests {
namespace {

enum class Show {
    kByte,      // 0x2A
    kNumber,    // 42
    kReading,   // in units, by the record's factors
    kHysteresis // in units, without the offset
};

struct Field {
    size_t first, last;
    const char *name;
    Show show = Show::kByte;
};

enum : uint8_t { kFull = 0x01, kCompact = 0x02, kFru = 0x11 };

const std::vector<Field> kHead = {
    {0, 1, "record id"},
    {2, 2, "SDR version"},
    {3, 3, "record type"},
    {4, 4, "record length", Show::kNumber},
};
const std::vector<Field> kSensor = {
    {5, 5, "owner id"},         {6, 6, "owner LUN"},          {7, 7, "sensor number"},
    {8, 8, "entity id"},        {9, 9, "entity instance"},    {10, 10, "initialisation"},
    {11, 11, "capabilities"},   {12, 12, "sensor type"},      {13, 13, "event type"},
    {14, 15, "assertion mask"}, {16, 17, "deassertion mask"}, {18, 19, "reading mask"},
    {20, 20, "units 1"},        {21, 21, "base unit"},        {22, 22, "modifier unit"},
};
const std::vector<Field> kFullFields = {
    {23, 23, "linearisation"},
    {24, 24, "M", Show::kNumber},
    {25, 25, "M high bits, tolerance"},
    {26, 26, "B", Show::kNumber},
    {27, 27, "B high bits, accuracy"},
    {28, 28, "accuracy, direction"},
    {29, 29, "exponents"},
    {30, 30, "analog flags"},
    {31, 31, "nominal reading", Show::kReading},
    {32, 32, "normal maximum", Show::kReading},
    {33, 33, "normal minimum", Show::kReading},
    {34, 34, "sensor maximum", Show::kReading},
    {35, 35, "sensor minimum", Show::kReading},
    {36, 36, "UNR", Show::kReading},
    {37, 37, "UC", Show::kReading},
    {38, 38, "UNC", Show::kReading},
    {39, 39, "LNR", Show::kReading},
    {40, 40, "LC", Show::kReading},
    {41, 41, "LNC", Show::kReading},
    {42, 42, "positive hysteresis", Show::kHysteresis},
    {43, 43, "negative hysteresis", Show::kHysteresis},
    {44, 44, "sensor index"},
    {45, 45, "slot", Show::kNumber},
    {46, 46, "OEM"},
};
const std::vector<Field> kCompactFields = {
    {23, 24, "sharing"},  {25, 25, "positive hysteresis"}, {26, 26, "negative hysteresis"},
    {27, 28, "reserved"}, {29, 29, "slot", Show::kNumber}, {30, 30, "OEM"},
};
const std::vector<Field> kFruFields = {
    {5, 5, "access address"},
    {6, 6, "FRU id", Show::kNumber},
    {7, 7, "LUN, bus"},
    {8, 8, "channel", Show::kNumber},
    {9, 9, "reserved"},
    {10, 10, "device type"},
    {11, 11, "device type modifier"},
    {12, 12, "entity id"},
    {13, 13, "entity instance"},
    {14, 14, "OEM"},
};
const std::vector<Field> kEntryFields = {
    {0, 0, "device code"},
    {1, 1, "item"},
    {2, 2, "sub item"},
    {3, 3, "index", Show::kNumber},
    {4, 4, "sensor number"},
    {5, 5, "scan flag"},
    {6, 6, "bus"},
    {7, 7, "address"},
    {8, 8, "sub kind"},
    {9, 15, "reserved"},
    {16, 16, "owner LUN"},
    {17, 19, "reserved"},
    {20, 20, "mark"},
    {21, 21, "entity id"},
    {22, 22, "entity instance"},
    {23, 23, "initialisation"},
    {24, 24, "sensor type"},
    {25, 25, "event type"},
    {26, 26, "M", Show::kNumber},
    {27, 31, "reserved"},
};

int At(const Bytes &bytes, size_t at) {
    return at < bytes.size() ? bytes[at] : -1;
}

// Where the byte with the length of the name stands; none for another kind of record.
size_t NameByte(const Bytes &sdr) {
    const int type = At(sdr, 3);
    return type == kFull ? 47 : type == kCompact ? 31 : type == kFru ? 15 : sdr.size();
}

// ---- one value ----------------------------------------------------------------------------------

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof(text), "%g", value);
    return text;
}

std::string BytesText(const Bytes &bytes, const Field &field) {
    if (field.last >= bytes.size())
        return "(missing)";
    if (field.show == Show::kNumber)
        return std::to_string(bytes[field.first]);
    std::string text = "0x"; // the byte with the highest weight comes last
    for (size_t at = field.last + 1; at-- > field.first;)
        text += Hex({bytes[at]});
    return text;
}

int SignExtended(int value, int bits) {
    return value & 1 << (bits - 1) ? value - (1 << bits) : value;
}

// Readings are (M x + B 10^K1) 10^K2; hystereses leave the offset out.
double Converted(const Bytes &sdr, int raw, bool offset) {
    const int m = SignExtended(sdr[24] | (sdr[25] & 0xC0) << 2, 10);
    const int b = SignExtended(sdr[26] | (sdr[27] & 0xC0) << 2, 10);
    const int k2 = SignExtended(sdr[29] >> 4, 4), k1 = SignExtended(sdr[29] & 15, 4);
    const bool two_complement = sdr[20] >> 6 == 2;
    const int x = offset && two_complement ? SignExtended(raw, 8) : raw;
    return (m * x + (offset ? b * std::pow(10, k1) : 0)) * std::pow(10, k2);
}

std::string UnitName(int unit) {
    static const std::pair<int, const char *> kUnits[] = {{0, ""},     {1, "°C"},   {4, "V"},    {5, "A"},
                                                          {6, "W"},    {9, "VA"},   {14, "kPa"}, {15, "psi"},
                                                          {18, "rpm"}, {23, "min"}, {37, "l"}};
    for (const auto &[number, name] : kUnits)
        if (number == unit)
            return name;
    return "unit " + std::to_string(unit);
}

std::string Unit(const Bytes &sdr) {
    const std::string base = (sdr[20] & 1 ? "%" : "") + UnitName(sdr[21]);
    const int modifier = sdr[20] >> 1 & 3;
    return modifier == 1   ? base + "/" + UnitName(sdr[22])
           : modifier == 2 ? base + "*" + UnitName(sdr[22])
                           : base;
}

bool HasUnits(const Field &field) {
    return field.show == Show::kReading || field.show == Show::kHysteresis;
}

std::string Difference(const Bytes &expected, const Bytes &got, const Field &field) {
    const bool linear = expected.size() > 47 && got.size() > 47 && expected[23] == 0 && got[23] == 0;
    if (!HasUnits(field) || !linear)
        return BytesText(expected, field) + " -> " + BytesText(got, field);
    const bool offset = field.show == Show::kReading;
    const std::string old_unit = Unit(expected), new_unit = Unit(got);
    const auto with = [](const std::string &unit) { return unit.empty() ? "" : " " + unit; };
    const std::string before = Number(Converted(expected, expected[field.first], offset));
    const std::string after = Number(Converted(got, got[field.first], offset));
    if (before == after && old_unit == new_unit) // factors that tell no bytes apart
        return BytesText(expected, field) + " -> " + BytesText(got, field);
    return before + (old_unit == new_unit ? "" : with(old_unit)) + " -> " + after + with(new_unit);
}

// ---- fields -------------------------------------------------------------------------------------

void Compare(const std::string &what, const std::vector<Field> &fields, const Bytes &expected,
             const Bytes &got, std::vector<std::string> &lines) {
    for (const Field &field : fields) {
        bool same = true;
        for (size_t at = field.first; at <= field.last; ++at)
            same = same && At(expected, at) == At(got, at);
        if (same)
            continue;
        const std::string place = field.first == field.last
                                      ? std::to_string(field.first)
                                      : std::to_string(field.first) + "-" + std::to_string(field.last);
        lines.push_back(what + (field.first == field.last ? " " : "s ") + place + ", " + field.name + ": " +
                        Difference(expected, got, field));
    }
}

// Bytes that belong to no field, one line each.
void CompareRest(size_t first, const char *name, const Bytes &expected, const Bytes &got,
                 std::vector<std::string> &lines) {
    for (size_t at = first; at < std::max(expected.size(), got.size()); ++at)
        Compare("byte", {{at, at, name}}, expected, got, lines);
}

void CompareNames(const Bytes &expected, const Bytes &got, std::vector<std::string> &lines) {
    const size_t at = NameByte(expected);
    const std::string old_name = NameOf(expected), new_name = NameOf(got);
    if (old_name != new_name) {
        lines.push_back("byte " + std::to_string(at + 1) + ", name: '" + old_name + "' -> '" + new_name +
                        "'");
        return;
    }
    Compare("byte", {{at, at, "name type and length"}}, expected, got, lines);
    CompareRest(at + 1, "filling after the name", expected, got, lines);
}

const std::vector<Field> &FieldsOf(int type) {
    return type == kFull ? kFullFields : type == kCompact ? kCompactFields : kFruFields;
}

std::string Indented(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines)
        text += "  " + line + "\n";
    return text;
}

std::vector<std::string> NamesOf(const std::vector<Record> &records) {
    std::vector<std::string> names;
    for (const Record &record : records)
        names.push_back(record.Name());
    std::sort(names.begin(), names.end());
    return names;
}

std::string Without(const std::vector<std::string> &all, const std::vector<std::string> &others) {
    std::vector<std::string> rest;
    std::set_difference(all.begin(), all.end(), others.begin(), others.end(), std::back_inserter(rest));
    std::string text;
    for (const std::string &name : rest)
        text += " '" + name + "'";
    return text.empty() ? " nothing" : text;
}

} // namespace

std::string NameOf(const Bytes &sdr) {
    const size_t at = NameByte(sdr);
    if (at >= sdr.size())
        return "";
    const size_t first = at + 1, length = std::min<size_t>(sdr[at] & 0x3F, 16);
    const size_t end = std::min(first + length, sdr.size());
    return {sdr.begin() + static_cast<std::ptrdiff_t>(first), sdr.begin() + static_cast<std::ptrdiff_t>(end)};
}

std::ostream &operator<<(std::ostream &out, const Record &record) {
    return out << record.Name() << " [" << Hex(record.sdr) << "] [" << Hex(record.entry) << "]";
}

std::vector<std::string> SdrDiff(const Bytes &expected, const Bytes &got) {
    std::vector<std::string> lines;
    if (expected == got)
        return lines;
    Compare("byte", kHead, expected, got, lines);
    const int type = At(expected, 3);
    if (type != At(got, 3) || NameByte(expected) == expected.size()) {
        CompareRest(5, "of another kind of record", expected, got, lines);
        return lines;
    }
    if (type != kFru)
        Compare("byte", kSensor, expected, got, lines);
    Compare("byte", FieldsOf(type), expected, got, lines);
    CompareNames(expected, got, lines);
    return lines;
}

std::vector<std::string> EntryDiff(const Bytes &expected, const Bytes &got) {
    std::vector<std::string> lines;
    Compare("entry byte", kEntryFields, expected, got, lines);
    return lines;
}

std::vector<std::string> RecordDiff(const Record &expected, const Record &got) {
    std::vector<std::string> lines = SdrDiff(expected.sdr, got.sdr);
    const std::vector<std::string> entry = EntryDiff(expected.entry, got.entry);
    lines.insert(lines.end(), entry.begin(), entry.end());
    return lines;
}

testing::AssertionResult SdrFailure(const Bytes &expected, const Bytes &got) {
    return testing::AssertionFailure() << "'" << NameOf(expected) << "' differs, expected -> got:\n"
                                       << Indented(SdrDiff(expected, got));
}

testing::AssertionResult EntryFailure(const Bytes &expected, const Bytes &got) {
    return testing::AssertionFailure() << "the entry differs, expected -> got:\n"
                                       << Indented(EntryDiff(expected, got));
}

testing::AssertionResult SameRecord(const Record &expected, const Record &got) {
    if (expected == got)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "'" << expected.Name() << "' differs, expected -> got:\n"
                                       << Indented(RecordDiff(expected, got));
}

testing::AssertionResult SameRecords(const std::vector<Record> &expected, const std::vector<Record> &got) {
    if (expected == got)
        return testing::AssertionSuccess();
    testing::AssertionResult failure = testing::AssertionFailure();
    if (expected.size() != got.size()) {
        const auto wanted = NamesOf(expected), have = NamesOf(got);
        return failure << expected.size() << " -> " << got.size()
                       << " records; missing:" << Without(wanted, have)
                       << "; too much:" << Without(have, wanted);
    }
    for (size_t i = 0; i < got.size(); ++i)
        if (expected[i] != got[i])
            failure << "record " << i << " '" << expected[i].Name() << "' differs, expected -> got:\n"
                    << Indented(RecordDiff(expected[i], got[i]));
    return failure;
}

} // namespace tests
