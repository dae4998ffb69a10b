// SPDX-License-Identifier: GPL-3.0-or-later
//
// What one failing platform call does to a pass over the Default set, told by the rules: which records are
// missing or changed beside the clean pass, and which lines come and go.
#ifndef OXA_TESTS_STATIC_SENSORS_DEFAULT_FAULTS_EXPECT_H
#define OXA_TESTS_STATIC_SENSORS_DEFAULT_FAULTS_EXPECT_H

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/static_pass.h"

namespace tests {

// One call of the clean pass that can fail.
struct FailableCall {
    std::string name, args;
    size_t occurrence = 0; // of that name, from 1
    size_t event = 0;      // place in the trace
    size_t record = 0;     // the record that was being built: how many were looked up in the store before
};

struct CleanPass {
    sim::Board board;
    Outcome outcome;
    std::vector<sim::Event> trace;
    std::vector<FailableCall> calls; // the k-th call that can fail is calls[k - 1]
    std::vector<Line> lines;
};
CleanPass RunCleanPass(const sim::Board &board);

struct Expectation {
    bool known = false; // a rule exists for this call
    bool written = true;
    std::function<void(sim::Board &)> like; // the pass goes as if the board were so
    std::vector<size_t> missing;            // records of the clean pass
    std::map<size_t, Record> changed;
    std::vector<Line> more, fewer; // lines that come, lines that go
};
Expectation Expect(const CleanPass &clean, const FailableCall &call);

// Lines of the last pass, comparable between passes: running counts and source lines masked, sorted, without
// the remark that the store is empty, which comes once per look into it.
std::vector<Line> ComparableLines();

} // namespace tests

#endif
