// SPDX-License-Identifier: GPL-3.0-or-later
//
// Reads a story.
#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/notes.h"
#include "base/text.h"
#include "events/sel_calls.h"
#include "runtime/description_rules.h"
#include "scenario/rules.h"
#include "scenario/scenario.h"

namespace workbench {
namespace {

using namespace sim::rules;
using sim::Place;

constexpr const char *kExample = "a story such as scenarios/day.toml";

// ---- one description for every slot ----------------------------------------------------------------

std::vector<SpecificSensorParam> SpellOut(const StepDraft &draft, const Where &where, const Place &place) {
    std::vector<SpecificSensorParam> out;
    const bool adds = draft.action == "add";
    const auto add_one = [&](DescriptionDraft description) {
        if (!description.sensor_class && !adds)
            description.sensor_class = kPsuFruClass; // nothing else can be removed
        if (!description.sensor_class)
            Fail(where, place, where.At(draft.action).Label() + " has no key 'class'",
                 "say which sensor class is added");
        if (!adds && !NamesWhatGoes(description))
            Fail(where, place, where.At(draft.action).Label() + " has no key 'slot'",
                 "say which power supply is removed");
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
                Fail(where, place, where.At(draft.action).Label() + " gives a slot beside 'slots'",
                     "give one of them");
            description.slot = slot;
            add_one(description);
        }
    return out;
}

// ---- one step --------------------------------------------------------------------------------------

// A rule that could never act is refused by the platform; it is asked here, where the line is known.
void TryFaults(const std::vector<sim::Fault> &faults, const Where &where, const Place &place) {
    for (const sim::Fault &fault : faults)
        try {
            sim::AddFault(fault);
        } catch (const std::invalid_argument &error) {
            Fail(where, place, error.what(), "give a rule that can act");
        }
    sim::ClearFaults();
}

std::vector<EventCall> ReadEvents(const StepDraft &draft, const Where &where, const Place &place) {
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
            Fail(where, place, where.At("event").Label() + " is no call of a builder", error.what());
        }
    }
    return out;
}

void CheckExpectation(const StepDraft &draft, const Step &step, const Where &where, const Place &place) {
    if (!step.expect)
        return;
    const std::vector<std::string> known = OutcomeWords(draft.action);
    for (const std::string &word : step.expect->words)
        if (std::find(known.begin(), known.end(), word) == known.end())
            Fail(where, place, "unknown outcome '" + word + "' in " + where.At("expect").Label(),
                 Suggestion(word, known, draft.action + " comes to " + Join(known, ", ")));
    const size_t outcomes =
        std::max({step.params.size(), step.events.size(), step.thresholds.size(), size_t{1}}) * step.repeat;
    if (step.expect->words.size() > 1 && !step.kill && step.expect->words.size() != outcomes)
        Fail(where, place,
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
        Fail(where, found.size() < 2 ? PlaceOf(table) : PlaceOf(table, found[1]),
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
        {"kill", described || draft.action == "event" || draft.action == "thresholds"},
    };
    for (const auto &[key, fits] : limited)
        if (table.contains(key) && !fits)
            Fail(where, PlaceOf(table, key),
                 "'" + std::string(key) + "' in " + where.Header() + " does not go with '" + draft.action +
                     "'",
                 "leave it out");
}

// The story so far, while it is read.
struct StorySoFar {
    Scenario &scenario;
    toml::table board;       // as changed
    bool board_known = true; // false after a mistake in it or in a change
    uint32_t custom_id = 0;
    bool record = true;
    bool killed = false; // in the step before
};

sim::Board BoardNow(const StorySoFar &reading, const Where &where, const Place &place) {
    Draft draft;
    draft.board.name = reading.scenario.board.name;
    try {
        ReadTable({.path = reading.scenario.board_path, .section = "", .key = ""}, reading.board,
                  FileRules(draft));
    } catch (const sim::BoardError &error) {
        const sim::Mistake &first =
            error.Mistakes().front(); // its place means nothing: the table has two sources
        Fail(where, place, "the board cannot become this (" + first.wrong + "; " + first.right + ")",
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
    const Place place = PlaceOf(table, draft.action);
    if (std::exchange(reading.killed, draft.kill.has_value()) && draft.action != "restart")
        Fail(where, place, "the process was killed in the step before",
             "give a step with 'restart' between them");
    Step step;
    step.line = PlaceOf(table).line;
    step.name = draft.name;
    step.action = draft.action;
    step.repeat = draft.repeat;
    step.record = draft.record.value_or(reading.record);
    step.params = SpellOut(draft, where, place);
    step.faults = draft.fault_draft.faults;
    TryFaults(step.faults, where, place);
    step.events = ReadEvents(draft, where, place);
    step.thresholds = Settled(draft.thresholds);
    step.kill = draft.kill;
    step.expect = draft.expect;
    CheckExpectation(draft, step, where, table.contains("expect") ? PlaceOf(table, "expect") : place);
    if (draft.change != nullptr) {
        Merge(reading.board, *draft.change);
        step.files = draft.change_draft.board.files;
    }
    if (draft.profile)
        reading.custom_id = *draft.profile;
    if (reading.board_known && (step.action == "change" || step.action == "restart"))
        step.board = BoardNow(reading, where, place);
    return step;
}

// What is wrong with the file as a whole is the story's mistake, what is wrong in it its own.
toml::table OpenBoard(const std::string &path, const Where &where, const Place &place) {
    try {
        return sim::LoadToml(path, kBoardExample);
    } catch (const sim::BoardError &error) {
        const sim::Mistake &first = error.Mistakes().front();
        if (first.place.line != 0)
            throw;
        Fail(where, place, where.Label() + ": " + path + " " + first.wrong,
             first.right + ", seen from the folder of the story");
    }
}

void LoadBoard(StorySoFar &reading, const ScenarioDraft &draft, const Where &where, const toml::table &file) {
    Scenario &scenario = reading.scenario;
    const std::filesystem::path folder = std::filesystem::path(scenario.path).parent_path();
    scenario.board_path = (folder / draft.board).lexically_normal().string();
    reading.record = draft.record;
    reading.board = OpenBoard(scenario.board_path, where, PlaceOf(*file.get("board")));
    Draft read = ReadBoard(reading.board, scenario.board_path);
    for (const sim::Mistake &note : read.notes)
        TellNote(note.Text());
    scenario.board = std::move(read.board);
    scenario.board_faults = std::move(read.faults);
    if (draft.profile)
        scenario.board.custom_id = *draft.profile;
    reading.board.erase("fault"); // kept apart: they are in force in every life
    reading.custom_id = scenario.board.custom_id;
}

// All that can be read is, so that one run tells every mistake.
void ReadStory(const Where &top, toml::table &file, Scenario &scenario) {
    Mistakes mistakes;
    ScenarioDraft draft;
    StorySoFar reading{scenario, {}, true, 0, true, false};
    mistakes.Try([&] { ReadTable(top, file, ScenarioRules(draft)); });
    scenario.name = draft.name;
    if (!draft.board.empty())
        mistakes.Try([&] { LoadBoard(reading, draft, top.At("board"), file); });
    const Where where = top.At("step").Inside(true);
    for (const toml::table *step : draft.steps) {
        reading.board_known = reading.board_known && mistakes.None();
        mistakes.Try([&] { scenario.steps.push_back(ReadStep(reading, where, *step)); });
    }
    mistakes.ThrowIfAny();
}

} // namespace

Scenario LoadScenario(const std::string &path) {
    return AsInput([&] {
        toml::table file = sim::LoadToml(path, kExample);
        ListSingleTables(file);
        Scenario scenario;
        scenario.path = path;
        ReadStory({.path = path, .section = "", .key = ""}, file, scenario);
        return scenario;
    });
}

} // namespace workbench
