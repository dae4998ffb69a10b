// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the gate runs with faults: a board and a call.
#ifndef OXA_TESTS_FAULTS_CASES_H
#define OXA_TESTS_FAULTS_CASES_H

#include <functional>
#include <string>
#include <vector>

#include "simulator/board.h"
#include "simulator/simulator.h"

namespace faults {

struct Case {
    std::string name; // "board base_48, driver of kestrin"
    const sim::Board *board = nullptr;
    const std::vector<sim::Fault> *rules = nullptr; // that the board file lets fail
    std::function<void()> prepare;                  // state that the call finds; made without faults
    std::function<void()> run;
    bool in_pairs = false;
    uint64_t every = 1; // of its faults
};

// Parts: "entry_points", "generators", "passes", "pairs".  The boards live as long as the program.
std::vector<Case> CasesOf(const std::string &part);

} // namespace faults
#endif
