// SPDX-License-Identifier: GPL-3.0-or-later
//
// The keys of a story.  Only file.cpp and rules.cpp include this.
#ifndef OXA_WORKBENCH_SCENARIO_RULES_H
#define OXA_WORKBENCH_SCENARIO_RULES_H

#include <optional>
#include <string>
#include <vector>

#include "runtime/description.h"
#include "runtime/toml_file.h"
#include "scenario/scenario.h"

namespace workbench {

struct ThresholdsDraft {
    std::string sensor;
    std::optional<uint8_t> unr, uc, unc, lnr, lc, lnc;
    std::optional<uint16_t> mask; // absent: of the thresholds that are given
};

struct StepDraft {
    std::string action;
    std::string name;
    std::optional<std::vector<uint8_t>> slots;
    uint32_t repeat = 1;
    std::optional<bool> record;
    std::vector<DescriptionDraft> add, remove;
    const toml::table *change = nullptr;
    sim::rules::Draft change_draft; // what the change alone says
    sim::rules::Draft fault_draft;
    std::vector<ThresholdsDraft> thresholds;
    std::optional<uint32_t> profile; // of a restart
    std::vector<std::string> events;
    std::optional<Kill> kill;
    std::optional<Expectation> expect;
};

struct ScenarioDraft {
    std::string name, board;
    std::optional<uint32_t> profile;
    bool record = true;
    std::vector<const toml::table *> steps;
};

std::vector<std::string> ActionKeys();
sim::rules::Rules StepRules(StepDraft &draft);
sim::rules::Rules ScenarioRules(ScenarioDraft &draft);

std::vector<UserThresholds> Settled(const std::vector<ThresholdsDraft> &drafts);

// A single table where several may stand becomes a list of one.
void ListSingleTables(toml::table &file);

// Tables are merged, everything else is replaced.
void Merge(toml::table &into, const toml::table &from);

} // namespace workbench
#endif
