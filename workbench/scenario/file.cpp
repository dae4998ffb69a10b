// SPDX-License-Identifier: GPL-3.0-or-later
//
// Reads a story.
#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "base/text.h"
#include "events/sel_calls.h"
#include "runtime/description_rules.h"
#include "scenario/rules.h"
#include "scenario/scenario.h"

namespace workbench {
namespace {

using namespace sim::rules;

constexpr const char *kExample = "scenarios/day.toml";

// ---- one description for every slot ----------------------------------------------------------------

std::vector<SpecificSensorParam> SpellOut(const StepDraft &draft, const Where &where, uint32_t line) {
    std::vector<SpecificSensorParam> out;
    const bool adds = draft.action == "add";
    const auto add_one = [&](DescriptionDraft description) {
        if (!description.sensor_class && !adds)
            description.sensor_class = kPsuFruClass; // nothing else can be removed
        if (!description.sensor_class)
            Fail(where, line, where.At(draft.action).Label() + " has no key 'class'",
                 "say which sensor class is added");
        out.push_back(Finish(description));
    };
    const std::vector<DescriptionDraft> &descriptions = adds ? draft.add : draft.remove;
    if (!draft.slots) {
        std::for_each(descriptions.begin(), descriptions.end(), add_one);
        return out;
    }
    for (const uint8_t slot : *draft.slots)
        for (DescriptionDraft description : descriptions) {
            if (description.slot)
                Fail(where, line, where.At(draft.action).Label() + " gives a slot beside 'slots'",
                     "give one of them");
            description.slot = slot;
            add_one(description);
        }
    return out;
}

// ---- one step --------------------------------------------------------------------------------------

// A rule that could never act is refused by the platform; it is asked here, where the line is known.
void TryFaults(const std::vector<sim::Fault> &faults, const Where &where, uint32_t line) {
    for (const sim::Fault &fault : faults)
        try {
            sim::AddFault(fault);
        } catch (const std::invalid_argument &error) {
            Fail(where, line, error.what(), "give a rule that can act");
        }
    sim::ClearFaults();
}

std::vector<EventCall> ReadEvents(const StepDraft &draft, const Where &where, uint32_t line) {
    std::vector<EventCall> out;
    for (const std::string &text : draft.events) {
        std::istringstream stream(text);
        std::vector<std::string> words;
        for (std::string word; stream >> word;)
            words.push_back(word);
        try {
            const BuilderView &builder = FindBuilder(words.empty() ? "" : words.front());
            if (!words.empty())
                words.erase(words.begin());
            out.push_back({BuilderName(builder), ParseArguments(builder, words)});
        } catch (const InputError &error) {
            Fail(where, line, where.At("event").Label() + " is no call of a builder", error.what());
        }
    }
    return out;
}

void CheckExpectation(const StepDraft &draft, const Step &step, const Where &where, uint32_t line) {
    if (!step.expect)
        return;
    const std::vector<std::string> known = OutcomeWords(draft.action);
    for (const std::string &word : step.expect->words)
        if (std::find(known.begin(), known.end(), word) == known.end())
            Fail(where, line, "unknown outcome '" + word + "' in " + where.At("expect").Label(),
                 Suggestion(word, known, draft.action + " comes to " + Join(known, ", ")));
    const size_t outcomes =
        std::max({step.params.size(), step.events.size(), step.thresholds.size(), size_t{1}}) * step.repeat;
    if (step.expect->words.size() > 1 && step.expect->words.size() != outcomes)
        Fail(where, line,
             where.At("expect").Label() + " lists " + std::to_string(step.expect->words.size()) + " outcomes",
             "the step has " + std::to_string(outcomes));
}

// The key that says what happens; exactly one.
std::string ActionOf(const toml::table &table, const Where &where) {
    std::vector<std::string> found;
    for (const auto &[key, node] : InFileOrder(table))
        if (const std::vector<std::string> all = ActionKeys();
            std::find(all.begin(), all.end(), key) != all.end())
            found.push_back(key);
    if (found.size() != 1)
        Fail(where, found.size() < 2 ? LineOf(table) : LineOf(table, found[1]),
             where.Header() + (found.empty() ? " says nothing that happens"
                                             : " has both '" + found[0] + "' and '" + found[1] + "'"),
             "give one of " + Join(ActionKeys(), ", "));
    return found.front();
}

// Keys that only some actions have.
void CheckKeys(const toml::table &table, const StepDraft &draft, const Where &where) {
    const bool described = draft.action == "add" || draft.action == "remove";
    const std::pair<const char *, bool> limited[] = {
        {"slots", described},
        {"record", draft.action == "add"},
        {"repeat", described || draft.action == "event"},
    };
    for (const auto &[key, fits] : limited)
        if (table.contains(key) && !fits)
            Fail(where, LineOf(table, key),
                 "'" + std::string(key) + "' in " + where.Header() + " does not go with '" + draft.action +
                     "'",
                 "leave it out");
}

// The story so far, while it is read.
struct StorySoFar {
    Scenario &scenario;
    toml::table board; // as changed
    uint32_t custom_id = 0;
    bool record = true;
};

sim::Board BoardNow(const StorySoFar &reading, const Where &where, uint32_t line) {
    Draft draft;
    draft.board.name = reading.scenario.board.name;
    try {
        ReadTable({.path = reading.scenario.board_path, .section = "", .key = ""}, reading.board,
                  FileRules(draft));
    } catch (const sim::BoardError &error) {
        const std::string text = error.what(); // the place in it means nothing: the table has two sources
        Fail(where, line, "the board cannot become this (" + text.substr(text.find(": ") + 2) + ")",
             "change what goes together in one step");
    }
    draft.board.custom_id = reading.custom_id;
    draft.board.files.clear(); // they are there since the first start
    return draft.board;
}

Step ReadStep(StorySoFar &reading, const Where &where, const toml::table &table) {
    StepDraft draft;
    ReadTable(where, table, StepRules(draft));
    draft.action = ActionOf(table, where);
    CheckKeys(table, draft, where);
    const uint32_t line = LineOf(table, draft.action);
    Step step;
    step.line = LineOf(table);
    step.name = draft.name;
    step.action = draft.action;
    step.repeat = draft.repeat;
    step.record = draft.record.value_or(reading.record);
    step.params = SpellOut(draft, where, line);
    step.faults = draft.fault_draft.faults;
    TryFaults(step.faults, where, line);
    step.events = ReadEvents(draft, where, line);
    step.thresholds = Settled(draft.thresholds);
    step.expect = draft.expect;
    CheckExpectation(draft, step, where, table.contains("expect") ? LineOf(table, "expect") : line);
    if (draft.change != nullptr) {
        Merge(reading.board, *draft.change);
        step.files = draft.change_draft.board.files;
    }
    if (draft.profile)
        reading.custom_id = *draft.profile;
    if (step.action == "change" || step.action == "restart")
        step.board = BoardNow(reading, where, line);
    return step;
}

void LoadBoard(StorySoFar &reading, const ScenarioDraft &draft) {
    Scenario &scenario = reading.scenario;
    const std::filesystem::path folder = std::filesystem::path(scenario.path).parent_path();
    scenario.board_path = (folder / draft.board).lexically_normal().string();
    scenario.board = LoadBoardFor(scenario.board_path, "");
    scenario.board_faults = LoadFaultsOf(scenario.board_path);
    if (draft.profile)
        scenario.board.custom_id = *draft.profile;
    reading.board = LoadToml(scenario.board_path, "boards/two_socket_2u.toml");
    reading.board.erase("fault"); // kept apart: they are in force in every life
    reading.custom_id = scenario.board.custom_id;
    reading.record = draft.record;
}

} // namespace

Scenario LoadScenario(const std::string &path) {
    return AsInput([&] {
        toml::table file = LoadToml(path, kExample);
        ListSingleTables(file);
        Scenario scenario;
        scenario.path = path;
        const Where top{.path = path, .section = "", .key = ""};
        ScenarioDraft draft;
        ReadTable(top, file, ScenarioRules(draft));
        scenario.name = draft.name;
        StorySoFar reading{scenario, {}, 0, true};
        LoadBoard(reading, draft);
        const Where where = top.At("step").Inside(true);
        for (const toml::table *step : draft.steps)
            scenario.steps.push_back(ReadStep(reading, where, *step));
        return scenario;
    });
}

} // namespace workbench
