// SPDX-License-Identifier: GPL-3.0-or-later
//
// A story in a TOML file: what happens to a server's parts, step by step, and what each step should come to.
#ifndef OXA_WORKBENCH_SCENARIO_SCENARIO_H
#define OXA_WORKBENCH_SCENARIO_SCENARIO_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "runtime/calls.h"
#include "runtime/platform.h"
#include "simulator/bmc_session_freeipmi.h"
#include "simulator/simulator.h"

namespace workbench {

struct Expectation {
    std::vector<std::string> words; // one for all outcomes, or one for each
    std::optional<uint32_t> code;
    std::optional<std::string> name;                         // of the record
    std::vector<std::pair<std::string, uint8_t>> thresholds; // of the record: "uc", raw
    std::optional<uint32_t> records;                         // in the repository afterwards
    std::optional<uint32_t> events;                          // in the event log afterwards
    std::optional<std::string> log;                          // part of a line of every outcome
};

struct EventCall {
    std::string builder;
    std::vector<uint32_t> arguments;
};

// Where in its step the process dies; exactly one of change and write is given.
struct Kill {
    uint32_t change = 0; // before the n-th platform call of the step that can change a file or the repository
    uint32_t write = 0;  // in the n-th write of a file,
    uint32_t percent = 0; // when this much of it has come
};

struct Step {
    uint32_t line = 0;
    std::string name;
    std::string action; // "add": the key that says what happens
    uint32_t repeat = 1;
    bool record = true;                      // do what the library's caller does after an add
    std::vector<SpecificSensorParam> params; // add, remove: one for every slot and description
    std::vector<sim::Fault> faults;          // fault; occurrences count from the step on
    std::vector<EventCall> events;
    std::vector<UserThresholds> thresholds;
    sim::Board board;                                  // change: from the step on; restart: of the next life
    std::map<std::string, std::vector<uint8_t>> files; // change: written there and then
    std::optional<Kill> kill;
    std::optional<Expectation> expect;
};

struct Scenario {
    std::string path, name, board_path;
    sim::Board board;
    std::vector<sim::Fault> board_faults; // in force in every life
    std::vector<Step> steps;
};

// InputError with file and line.
Scenario LoadScenario(const std::string &path);

// What happened: one object per step with "outcomes", and the repository and event log at the end.
struct StoryEnd {
    Json steps = Json::array();
    RepositoryState repository;
    std::vector<std::vector<uint8_t>> events;
    std::vector<std::string> violations;
};

// Every life in a process of its own; SetError when one ends by itself.
StoryEnd RunScenario(const Scenario &scenario, const std::optional<sim::Bmc> &bmc);

// Adds "expected" (true, false, null) and "unexpected" (texts) to a step's object.
void JudgeStep(const Step &step, Json &told);

// Text of all steps.
std::string StepsText(const Scenario &scenario, const Json &steps, bool log, bool colour);

} // namespace workbench
#endif
