// SPDX-License-Identifier: GPL-3.0-or-later
//
// Why a sensor is in a set, and why one is not.  What is told was tried: the pass is run again with one answer of the
// platform changed.
#ifndef OXA_WORKBENCH_WHY_WHY_H
#define OXA_WORKBENCH_WHY_WHY_H

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "sets/rows.h"
#include "why/reading.h"
#include "why/trials.h"

namespace workbench {

// A question, what was answered, and what hangs on the answer.
struct Asked {
    sim::Event event;
    bool of_group = false;                        // the pass asks it before it walks the row's group
    std::string from;                             // where the answer stands, see Trials::PlaceOf
    std::set<unsigned> record_bytes, entry_bytes; // that another answer changes
    std::vector<std::string> gone_when; // answers with which the sensor is not in the set: "0", "fails"
};

struct Present {
    const Row *row;
    Sensor sensor;
    std::vector<Asked> asked;
};

// The ways in which a row gives no sensor.
enum class Cause {
    kGate,       // the board's answer to what is asked before the record is built
    kCallFailed, // a platform call that failed
    kStored,     // the extended store has a record of the name
    kPrint,      // the name could not be printed
    kWrap,       // the entity instance would pass 255
    kPassEnded,  // the pass ended before, or without a count
    kNotWalked,  // the step does not walk the group on this board
    kCount,      // no such index on this board
    kBelowFirst  // a printed CPU number below the first one
};
std::string Word(Cause cause); // "gate", for JSON

struct Absent {
    const Row *row;
    Cause cause = Cause::kCount;
    std::string text;              // what happened, in words
    std::string line;              // of the library's log; empty: it said nothing
    std::vector<Asked> decided_by; // the answers that decide
    std::string tried; // what was tried and brought the sensor; empty: nothing did, or nothing could
    std::vector<std::string> built; // the row's sensors that are in the set
};

Present WhyPresent(const Trials &trials, const Row &row, const Sensor &sensor);
// Why the row gives nothing, or with a name: nothing of that name.
Absent WhyAbsent(const Trials &trials, const Row &row, const std::optional<std::string> &name);

} // namespace workbench
#endif
