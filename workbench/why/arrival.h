// SPDX-License-Identifier: GPL-3.0-or-later
//
// Why a sensor that comes while the BMC runs is as it is, or does not come: the library's call is made again with one
// answer of the platform, or one key of the description, changed.
#ifndef OXA_WORKBENCH_WHY_ARRIVAL_H
#define OXA_WORKBENCH_WHY_ARRIVAL_H

#include <set>
#include <string>
#include <vector>

#include "runtime/calls.h"
#include "sets/static_set.h"
#include "why/why.h"

namespace workbench {

// A key of the description, and what hangs on its value.
struct KeyTold {
    std::string key;
    std::string value;
    std::set<unsigned> record_bytes, entry_bytes; // that another value changes
    std::vector<std::string> gone_when;           // values with which nothing is added
    std::vector<std::string> added_when;          // of a sensor that is not added: with which it is
};

struct Arrival {
    Outcome outcome;
    Sensor sensor; // record and device-table entry as they were added; of a locator there is no entry
    std::vector<KeyTold> keys;
    std::vector<Asked> asked;
    std::vector<std::string> tried; // of a sensor that is not added: "with ... answering 1 it is added"
    bool Added() const {
        return outcome.record.has_value();
    }
};

// On a platform that has just been started.  InputError for a board or profile that cannot be used.
Arrival WhyItArrives(const std::string &board, const std::string &profile, const SpecificSensorParam &param);

} // namespace workbench
#endif
