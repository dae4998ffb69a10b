// SPDX-License-Identifier: GPL-3.0-or-later
//
// Fault sweeps over the entry points of run-time sensors: every call to the platform that can fail fails once,
// and then that one with all that follow, each time in a process of its own.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_DISPATCH_FAULTS_H
#define OXA_TESTS_SPECIFIC_SENSORS_DISPATCH_FAULTS_H

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "specific_sensors/dispatch_fixture.h"

namespace faults {

using dispatch::Bytes;
using Calls = std::set<std::string>;

// How one call of an entry point ended.
struct Run {
    int64_t result = 0;
    bool clean = false;        // nothing failed
    bool from_then_on = false; // every call after the first that failed, failed as well
    Calls failed;              // functions that failed
    Bytes clean_record;        // what the clean run added last; empty: nothing
    bool Failed(const std::string &call) const {
        return failed.count(call) != 0;
    }
    bool OnlyFailed(const std::string &call) const {
        return failed.size() == 1 && Failed(call);
    }
    bool AnyFailed(const Calls &calls) const;
    bool BoundedFailed() const; // a memory or string function
};

struct Scenario {
    std::string name;
    sim::Board board = {};
    std::map<std::string, Bytes> files = {};
    std::function<void()> before = {}; // what happened earlier in the process; nothing fails there
    std::function<int64_t()> act = {};
    std::function<void(const Run &)> judge = {};
};

// Runs the scenario cleanly once and then with every fault; gives the number of calls that can fail.
size_t Sweep(const Scenario &scenario, bool from_then_on);

inline Bytes BytesOf(const std::string &text) {
    return {text.begin(), text.end()};
}
std::vector<std::string> LinesIn(const std::string &text);

std::vector<Scenario> AddScenarios();   // SDR_AddSpecificSensor
std::vector<Scenario> OtherScenarios(); // the others

} // namespace faults
#endif
