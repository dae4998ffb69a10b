// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/set_compare.h"

#include <algorithm>
#include <functional>
#include <map>

#include "base/text.h"
#include "explain/explain.h"

namespace workbench {
namespace {

using Key = std::string;
using KeyOf = std::function<Key(const Side &, size_t)>;

Key Bytes(std::initializer_list<unsigned> bytes) {
    Key out;
    for (const unsigned byte : bytes)
        out += Hex(byte);
    return out;
}

// What the scanner reads for the sensor: the same place under another name is the same sensor renamed.
Key Place(const Side &source, size_t i) {
    const Sensor &s = source.set.sensors[i];
    return Bytes({s.entry[0], s.entry[1], s.entry[2], s.entry[3], s.record[SDR_ENTITY_ID]});
}

// The next best thing where no entries are known.
Key RecordPlace(const Side &source, size_t i) {
    const Record &r = source.set.sensors[i].record;
    return Bytes({r[SDR_RECORD_TYPE], r[SDR_ENTITY_ID], r[SDR_ENTITY_INSTANCE], r[SDR_SENSOR_TYPE],
                  r[SDR_EVENT_TYPE], r[SDR_BASE_UNIT]});
}

Key Name(const Side &source, size_t i) {
    return source.decoded[i].name;
}

// Finds partners among the sensors that have none yet, one kind of likeness after the other.
class Matcher {
public:
    Matcher(const Side &left, const Side &right)
        : left_(left), right_(right), partner_(left.set.sensors.size(), kNone),
          taken_(right.set.sensors.size()) {}

    // Sensors of equal key in their order; only_single: keys that several of one side share are left alone.
    void Match(const KeyOf &key, bool only_single = false) {
        std::map<Key, std::vector<size_t>> on_left, on_right;
        for (size_t i = 0; i < partner_.size(); ++i)
            if (partner_[i] == kNone)
                on_left[key(left_, i)].push_back(i);
        for (size_t i = 0; i < taken_.size(); ++i)
            if (!taken_[i])
                on_right[key(right_, i)].push_back(i);
        for (const auto &[k, mine] : on_left) {
            const std::vector<size_t> &theirs = on_right[k];
            if (only_single && (mine.size() > 1 || theirs.size() > 1))
                continue;
            for (size_t i = 0; i < std::min(mine.size(), theirs.size()); ++i) {
                partner_[mine[i]] = theirs[i];
                taken_[theirs[i]] = true;
            }
        }
    }

    static constexpr size_t kNone = static_cast<size_t>(-1);
    const std::vector<size_t> &Partners() const {
        return partner_;
    }
    bool Taken(size_t right) const {
        return taken_[right];
    }

private:
    const Side &left_, &right_;
    std::vector<size_t> partner_;
    std::vector<bool> taken_;
};

// Given by the repository, or following from the name.
bool IsOfNoInterest(const Field &field, bool in_entry) {
    static const std::vector<std::string> kRecord = {
        "record ID", "sensor number", "sensor owner LUN", "record length", "ID string type/length",
        "ID string", "unused"};
    if (in_entry) // copies of record bytes are told once
        return field.set_by.rfind("SDR byte", 0) == 0 || field.name == "sensor number" ||
               field.name == "owner LUN";
    return std::find(kRecord.begin(), kRecord.end(), field.name) != kRecord.end();
}

std::vector<std::string> Without(const std::vector<std::string> &lines,
                                 const std::vector<std::string> &other) {
    std::vector<std::string> out;
    for (const std::string &line : lines)
        if (std::find(other.begin(), other.end(), line) == other.end())
            out.push_back(line);
    return out;
}

std::string FieldHex(const Field &field, std::span<const uint8_t> bytes) {
    return HexBytes(bytes.subspan(field.offset, field.size));
}

void CompareFields(const std::vector<Field> &left, const std::vector<Field> &right,
                   std::span<const uint8_t> left_bytes, std::span<const uint8_t> right_bytes, bool in_entry,
                   std::vector<FieldChange> &out) {
    for (const Field &mine : left) {
        const auto theirs = std::find_if(right.begin(), right.end(), [&mine](const Field &f) {
            return f.name == mine.name && f.offset == mine.offset;
        });
        if (theirs == right.end() || IsOfNoInterest(mine, in_entry))
            continue; // a field that the other kind of record lacks: the kind itself is told
        const std::string old_hex = FieldHex(mine, left_bytes), new_hex = FieldHex(*theirs, right_bytes);
        FieldChange change{in_entry, mine.offset, mine.name, Without(mine.meaning, theirs->meaning),
                           Without(theirs->meaning, mine.meaning)};
        if (change.left.empty() && change.right.empty() && old_hex == new_hex)
            continue;
        if (change.left.empty() && change.right.empty()) {
            change.left = {old_hex};
            change.right = {new_hex};
        }
        out.push_back(std::move(change));
    }
}

std::vector<FieldChange> Changes(const Side &left, const Side &right, size_t i, size_t k) {
    std::vector<FieldChange> out;
    const Sensor &a = left.set.sensors[i], &b = right.set.sensors[k];
    CompareFields(ExplainRecord(a, left.decoded[i]), ExplainRecord(b, right.decoded[k]), a.record, b.record,
                  false, out);
    if (left.has_entries && right.has_entries)
        CompareFields(ExplainEntry(a), ExplainEntry(b), a.entry, b.entry, true, out);
    return out;
}

} // namespace

Side MakeSide(StaticSet set, const std::string &label) {
    Side out{std::move(set), label, true, {}};
    const Decoder decoder;
    for (const Sensor &sensor : out.set.sensors) {
        out.has_entries = out.has_entries && sensor.has_entry;
        out.decoded.push_back(decoder.Decode(sensor));
    }
    return out;
}

bool Comparison::Equal() const {
    return removed.empty() && added.empty() &&
           std::all_of(
               pairs.begin(), pairs.end(),
               [](const SensorPair &pair) { return !pair.renamed && pair.changes.empty(); });
}

Comparison CompareSources(const Side &left, const Side &right) {
    const bool entries = left.has_entries && right.has_entries;
    const KeyOf place = entries ? Place : RecordPlace;
    Matcher matcher(left, right);
    matcher.Match([&place](const Side &s, size_t i) { return Name(s, i) + "\n" + place(s, i); });
    matcher.Match(Name);
    matcher.Match(place, !entries);
    Comparison out;
    for (size_t i = 0; i < left.set.sensors.size(); ++i) {
        const size_t k = matcher.Partners()[i];
        if (k == Matcher::kNone)
            out.removed.push_back(i);
        else
            out.pairs.push_back({i, k, Name(left, i) != Name(right, k), Changes(left, right, i, k)});
    }
    for (size_t k = 0; k < right.set.sensors.size(); ++k)
        if (!matcher.Taken(k))
            out.added.push_back(k);
    return out;
}

std::string WhatText(const Side &side, size_t i) {
    const Decoded &d = side.decoded[i];
    std::string out = std::string(KindText(d.kind)) + ", " + d.sensor_type_text + ", " + d.entity_text + " " +
                      Hex(side.set.sensors[i].record[SDR_ENTITY_INSTANCE]);
    if (d.reading)
        out += ", " + d.reading->formula;
    return side.has_entries ? out + ", " + DeviceText(side.set.sensors[i].entry) : out;
}

bool CanHaveThresholds(const Sensor &sensor) {
    return sensor.record[SDR_RECORD_TYPE] == 0x01 && sensor.record[SDR_EVENT_TYPE] == 0x01 &&
           sensor.record[SDR_READING_MASK] != 0;
}

bool LosesThresholds(const Side &left, const Side &right, const SensorPair &pair) {
    const Record &mine = left.set.sensors[pair.left].record, &theirs = right.set.sensors[pair.right].record;
    if (!CanHaveThresholds(left.set.sensors[pair.left]))
        return false;
    return pair.renamed || theirs[SDR_RECORD_TYPE] != 0x01 ||
           mine[SDR_READING_MASK] != theirs[SDR_READING_MASK];
}

} // namespace workbench
