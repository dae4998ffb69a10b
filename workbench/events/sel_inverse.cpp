// SPDX-License-Identifier: GPL-3.0-or-later
#include "events/sel_inverse.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/text.h"
#include "library/record/leakage_key.h"

namespace workbench {
namespace {

namespace tables = oxa::sel;
using tables::Step;

constexpr unsigned kBits = SEL_RECORD_SIZE * 8;

// Where one bit of a record comes from.
struct BitSource {
    int value = -1;   // position in the builder's list; -1: always `bit`
    uint8_t bit = 0;  // of the value, or the bit itself
    bool put = false; // a step set it
};
using BitMap = std::array<BitSource, kBits>;

// All values for which the same steps hold, and the bits that these steps make.
struct Regime {
    std::vector<Interval> ranges; // per value of the list
    BitMap bits{};
};

bool Bit(const uint8_t *bytes, unsigned at) {
    return (bytes[at / 8] >> (at % 8) & 1) != 0;
}

// ---- from the tables to regimes --------------------------------------------------------------------

// Runs one step over chosen values and tells what it did, so that only the library knows what a step means.
SelBytes PutInto(const Step &step, std::vector<uint32_t> values, uint8_t fill) {
    SelBytes bytes;
    bytes.fill(fill);
    tables::Put(step, values.data(), bytes.data());
    return bytes;
}

void AddPut(const Step &step, size_t value_count, BitMap &map) {
    std::vector<uint32_t> values(value_count + 1, 0);
    const SelBytes ones = PutInto(step, values, 0x00), kept = PutInto(step, values, 0xFF);
    for (unsigned at = 0; at < kBits; ++at)
        if (Bit(ones.data(), at) || !Bit(kept.data(), at))
            map[at] = {-1, static_cast<uint8_t>(Bit(ones.data(), at)), true};
    if (step.ucSource == tables::kLiteral)
        return;
    for (uint8_t bit = 0; bit < 32; ++bit) {
        values[step.ucSource] = uint32_t{1} << bit;
        const SelBytes moved = PutInto(step, values, 0x00);
        for (unsigned at = 0; at < kBits; ++at)
            if (Bit(moved.data(), at))
                map[at] = {step.ucSource, bit, true};
    }
}

BitMap MapBits(const BuilderView &builder, const std::vector<uint32_t> &values) {
    uint8_t start[SEL_RECORD_SIZE];
    tables::Compose(builder.ptStep, 0, values.data(), start);
    BitMap map;
    for (unsigned at = 0; at < kBits; ++at)
        map[at] = {-1, static_cast<uint8_t>(Bit(start, at)), false};
    tables::Truth truth;
    for (const Step *step = builder.ptStep; step != builder.ptStep + builder.ptHead->ucSteps; ++step)
        if (step->ucOp >= SEL_RECORD_SIZE)
            truth.Take(step->ucOp, tables::Range(step->ucLow, step->ucHigh).Has(values[step->ucSource]));
        else if (truth.bWhen && truth.bAnd)
            AddPut(*step, builder.ucItems, map);
    return map;
}

// What the sensor directory answers about the leak sensor is what it was asked for.
Interval Domain(const tables::Item &item) {
    if (item.eValue == tables::kFoundSensorType)
        return {oxa::kLeakageSensorType, oxa::kLeakageSensorType};
    if (item.eValue == tables::kFoundEventType)
        return {oxa::kLeakageEventType, oxa::kLeakageEventType};
    return {0, LargestValue(item)};
}

// The tests of a builder cut the numbers into intervals within which every test has one answer.
std::vector<Interval> Cut(const BuilderView &builder, uint8_t position) {
    const Interval domain = Domain(builder.ptItem[position]);
    std::set<uint32_t> starts = {domain.from};
    for (const Step *step = builder.ptStep; step != builder.ptStep + builder.ptHead->ucSteps; ++step)
        if (step->ucOp >= SEL_RECORD_SIZE && step->ucSource == position)
            for (const uint32_t start : {uint32_t{step->ucLow}, step->ucHigh + 1u})
                if (start > domain.from && start <= domain.to)
                    starts.insert(start);
    std::vector<Interval> out;
    for (auto it = starts.begin(); it != starts.end(); ++it)
        out.push_back({*it, std::next(it) == starts.end() ? domain.to : *std::next(it) - 1});
    return out;
}

std::vector<Regime> MakeRegimes(const BuilderView &builder) {
    std::vector<Regime> out(1);
    for (uint8_t position = 0; position < builder.ucItems; ++position) {
        std::vector<Regime> longer;
        for (const Regime &regime : out)
            for (const Interval &range : Cut(builder, position)) {
                longer.push_back(regime);
                longer.back().ranges.push_back(range);
            }
        out = std::move(longer);
    }
    for (Regime &regime : out) {
        std::vector<uint32_t> values;
        for (const Interval &range : regime.ranges)
            values.push_back(range.from);
        values.push_back(0); // a builder without values still gives a valid pointer
        regime.bits = MapBits(builder, values);
    }
    return out;
}

const std::vector<Regime> &RegimesOf(size_t builder) {
    static const auto all = [] {
        std::vector<std::vector<Regime>> out;
        for (const BuilderView &view : Builders())
            out.push_back(MakeRegimes(view));
        return out;
    }();
    return all[builder];
}

// ---- from a record to values -----------------------------------------------------------------------

// Bits that every log keeps and that the reader knows.
bool Counts(const SelRecord &record, unsigned at) {
    const unsigned byte = at / 8;
    if (byte < SEL_RECORD_TYPE)
        return false;
    const bool stamp = byte >= SEL_TIMESTAMP && byte < SEL_GENERATOR_ID;
    return Bit(record.known.data(), at) && !(stamp && IsStamped(record.bytes[SEL_RECORD_TYPE]));
}

// The smallest value of the interval with these bits.
std::optional<uint32_t> Smallest(const Interval &range, uint32_t known, uint32_t bits) {
    if (bits >= range.from && bits <= range.to)
        return bits;
    constexpr uint32_t kFarEnough = 1u << 16; // tests compare bytes, what is known beside them are bytes
    for (uint32_t n = 0; n < kFarEnough && n <= range.to - range.from; ++n)
        if (((range.from + n) & known) == bits)
            return range.from + n;
    return std::nullopt;
}

std::optional<std::vector<FoundValue>> Solve(const Regime &regime, const SelRecord &record) {
    std::vector<FoundValue> values(regime.ranges.size());
    for (unsigned at = 0; at < kBits; ++at) {
        if (!Counts(record, at))
            continue;
        const BitSource &source = regime.bits[at];
        const bool bit = Bit(record.bytes.data(), at);
        if (source.value < 0) {
            if (bit != (source.bit != 0))
                return std::nullopt;
            continue;
        }
        FoundValue &value = values[static_cast<size_t>(source.value)];
        const uint32_t mask = uint32_t{1} << source.bit;
        if ((value.known & mask) != 0 && ((value.value & mask) != 0) != bit)
            return std::nullopt;
        value.known |= mask;
        value.value |= bit ? mask : 0;
    }
    for (size_t n = 0; n < values.size(); ++n) {
        const auto smallest = Smallest(regime.ranges[n], values[n].known, values[n].value);
        if (!smallest)
            return std::nullopt;
        values[n].value = *smallest;
        if (values[n].known == 0)
            values[n].possible = {regime.ranges[n]};
    }
    return values;
}

// Two regimes that the record cannot tell apart are one answer: the smaller values, and all intervals.
bool SameEvidence(const std::vector<FoundValue> &a, const std::vector<FoundValue> &b) {
    return std::equal(
        a.begin(), a.end(), b.begin(),
        [](const FoundValue &x, const FoundValue &y) {
            return x.known == y.known && (x.value & x.known) == (y.value & y.known);
        });
}

void Merge(std::vector<FoundValue> &into, const std::vector<FoundValue> &from) {
    for (size_t n = 0; n < into.size(); ++n)
        for (const Interval &range : from[n].possible) {
            auto &ranges = into[n].possible;
            const bool there = std::any_of(ranges.begin(), ranges.end(), [&range](const Interval &known) {
                return known.from <= range.from && range.to <= known.to;
            });
            if (!there && !ranges.empty() && ranges.back().to + 1 == range.from)
                ranges.back().to = range.to;
            else if (!there)
                ranges.push_back(range);
        }
}

void AddAnswer(const BuilderView &builder, std::vector<FoundValue> values, std::vector<Candidate> &out) {
    for (Candidate &candidate : out)
        if (candidate.builder == &builder && SameEvidence(candidate.values, values))
            return Merge(candidate.values, values);
    out.push_back({&builder, std::move(values)});
}

// ---- origins ---------------------------------------------------------------------------------------

std::string BitsText(unsigned low, unsigned high) {
    if (low == 0 && high == 7)
        return "";
    return low == high ? " in bit " + std::to_string(low)
                       : " in bits " + std::to_string(low) + "-" + std::to_string(high);
}

std::string SourceText(const BuilderView &builder, const BitSource &first, unsigned low, unsigned high) {
    const tables::Value value = builder.ptItem[first.value].eValue;
    std::string out = (tables::IsFound(value) ? "looked up: " : "") + ValueName(value);
    const unsigned from = first.bit;
    if (from != 0 && high - low == 7)
        out += " bits " + std::to_string(from) + "-" + std::to_string(from + 7);
    return out + BitsText(low, high);
}

} // namespace

std::span<const BuilderView> Builders() {
    return tables::kBuilders;
}

SelRecord WholeRecord(const SelBytes &bytes) {
    SelRecord record{bytes, {}};
    record.known.fill(0xFF);
    return record;
}

bool IsStamped(uint8_t record_type) {
    return record_type < 0xE0;
}

std::vector<Candidate> Decode(const SelRecord &record) {
    std::vector<Candidate> out;
    for (size_t builder = 0; builder < Builders().size(); ++builder)
        for (const Regime &regime : RegimesOf(builder))
            if (auto values = Solve(regime, record))
                AddAnswer(Builders()[builder], std::move(*values), out);
    return out;
}

std::array<std::string, SEL_RECORD_SIZE> Origins(const BuilderView &builder,
                                                 const std::vector<uint32_t> &values) {
    std::vector<uint32_t> padded = values;
    padded.push_back(0);
    const BitMap map = MapBits(builder, padded);
    std::array<std::string, SEL_RECORD_SIZE> out;
    for (unsigned byte = 0; byte < SEL_RECORD_SIZE; ++byte) {
        std::vector<std::string> parts;
        unsigned literal = 0;
        bool literal_put = false;
        for (unsigned low = 0; low < 8;) {
            const BitSource &source = map[byte * 8 + low];
            unsigned high = low;
            while (source.value >= 0 && high < 7 && map[byte * 8 + high + 1].value == source.value)
                ++high;
            if (source.value >= 0)
                parts.insert(parts.begin(), SourceText(builder, source, low, high));
            else if (source.put) {
                literal_put = true;
                literal |= static_cast<unsigned>(source.bit) << low;
            }
            low = high + 1;
        }
        if (literal_put && (literal != 0 || parts.empty()))
            parts.push_back(Hex(literal));
        out[byte] = Join(parts, ", ");
    }
    return out;
}

std::string ValueName(tables::Value value) {
    return tables::kValueNames[value].acName;
}

uint32_t LargestValue(const tables::Item &item) {
    if (item.bZeroOrOne)
        return 1;
    switch (item.eValue) {
    case tables::kFoundSensorType:
    case tables::kFoundEventType:
    case tables::kFoundLun:
    case tables::kFoundInletTemp:
        return 0xFF;
    default:
        return item.ucBits >= 32 ? 0xFFFFFFFFu : (1u << item.ucBits) - 1;
    }
}

} // namespace workbench
