// SPDX-License-Identifier: GPL-3.0-or-later
//
// Event records read backwards.  The builders' tables (library/events/catalogue.h) say what a record is composed of;
// here the same tables say which calls can have composed a given record, and what set each of its bits.
#ifndef OXA_WORKBENCH_EVENTS_SEL_INVERSE_H
#define OXA_WORKBENCH_EVENTS_SEL_INVERSE_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "library/events/catalogue.h"

namespace workbench {

using oxa::sel::BuilderView;
using SelBytes = std::array<uint8_t, SEL_RECORD_SIZE>;

// The catalogue; its tables are copied into every unit that includes them, this copy is the workbench's.
std::span<const BuilderView> Builders();

// A record of which perhaps not every bit is known.  Ids and time stamps are never asked for.
struct SelRecord {
    SelBytes bytes{};
    SelBytes known{}; // bits that are known
};
SelRecord WholeRecord(const SelBytes &bytes);

struct Interval {
    uint32_t from = 0;
    uint32_t to = 0;
};

// What a record tells about one value of a builder.
struct FoundValue {
    uint32_t value = 0; // the smallest that fits
    uint32_t known = 0; // the bits of it that stand in the record
    // What it can be where no bit of it stands in the record; otherwise empty.
    std::vector<Interval> possible;
};

struct Candidate {
    const BuilderView *builder = nullptr;
    std::vector<FoundValue> values; // in the order of the builder's list, looked-up values included
};

// Every call that can have made the record, in the order of the catalogue.  The leak sensor's own types are
// taken to be those that the sensor directory is asked with.
std::vector<Candidate> Decode(const SelRecord &record);

// What the IPMI event log does to a record type's time stamp: it fills it, unless the type has none.
bool IsStamped(uint8_t record_type);

// What sets each byte of the record that a call with these values makes: "0xA1", "slotNum",
// "eventDir in bit 7, 0x6F".
std::array<std::string, SEL_RECORD_SIZE> Origins(const BuilderView &builder,
                                                 const std::vector<uint32_t> &values);

std::string ValueName(oxa::sel::Value value);
uint32_t LargestValue(const oxa::sel::Item &item);

} // namespace workbench
#endif
