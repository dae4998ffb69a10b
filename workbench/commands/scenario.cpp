// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors scenario: runs a story and shows what each step came to and what stands at the end.
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "events/sel_words.h"
#include "runtime/bmc.h"
#include "runtime/bmc_options.h"
#include "runtime/platform.h"
#include "scenario/scenario.h"
#include "sets/board.h"
#include "sets/set_json.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

struct ScenarioOptions {
    std::string path;
    BmcOptions bmc;
    bool json = false, log = false;
};

// Where the story ended: in memory, or at a BMC with what that had before.
struct Final {
    std::vector<RecordView> records;
    std::vector<BmcEvent> events;
    size_t other_records = 0, other_events = 0; // that the BMC had before the story
    std::vector<std::string> differences;       // between what was sent and what the BMC holds
};

// ---- the end at a BMC ------------------------------------------------------------------------------

template <class T> size_t DropKnown(std::vector<T> &now, const std::vector<T> &before) {
    const size_t all = now.size();
    std::erase_if(now, [&](const T &item) {
        return std::any_of(before.begin(), before.end(),
                           [&](const T &old) { return old.id == item.id && old.bytes == item.bytes; });
    });
    return all - now.size();
}

// The BMC gives record ids, and numbers sensors that come with number 0; a LUN has 254 of them.
std::vector<uint8_t> Comparable(std::vector<uint8_t> bytes) {
    bytes.resize(std::min(bytes.size(), RecordSize(bytes)));
    bytes[SDR_RECORD_ID] = bytes[SDR_RECORD_ID + 1] = 0;
    if (bytes[SDR_RECORD_TYPE] < 0x10)
        bytes[SDR_SENSOR_NUM] = bytes[SDR_OWNER_LUN] = 0;
    return bytes;
}

std::vector<std::string> Compare(const std::vector<sim::RepositoryRecord> &sent,
                                 const std::vector<sim::RepositoryRecord> &held) {
    std::vector<std::vector<uint8_t>> left;
    std::vector<std::string> out;
    for (const sim::RepositoryRecord &record : held)
        left.push_back(Comparable(record.bytes));
    for (const sim::RepositoryRecord &record : sent) {
        const auto found = std::find(left.begin(), left.end(), Comparable(record.bytes));
        if (found == left.end())
            out.push_back("the BMC lacks " + RecordText(ViewRecord(record)));
        else
            left.erase(found);
    }
    for (const std::vector<uint8_t> &bytes : left)
        out.push_back("the BMC holds what was not added: " + HexBytes(bytes));
    return out;
}

struct BmcBefore {
    std::vector<sim::RepositoryRecord> records;
    std::vector<BmcEvent> events;
};

Final ReadBack(const sim::Bmc &bmc, const BmcBefore &before, const StoryEnd &end) {
    Final out;
    std::vector<sim::RepositoryRecord> records = ReadRepositoryOf(bmc);
    out.other_records = DropKnown(records, before.records);
    out.differences = Compare(end.repository.records, records);
    out.records = ViewRecords(records);
    out.events = ReadEventLogOf(bmc);
    out.other_events = DropKnown(out.events, before.events);
    if (out.events.size() != end.events.size())
        out.differences.push_back("the BMC has " + std::to_string(out.events.size()) + " new events of " +
                                  std::to_string(end.events.size()) + " that were sent");
    return out;
}

Final InMemory(const StoryEnd &end) {
    Final out;
    out.records = ViewRecords(end.repository.records);
    for (const std::vector<uint8_t> &bytes : end.events)
        out.events.push_back({static_cast<uint16_t>(out.events.size() + 1), bytes});
    return out;
}

// ---- telling it ------------------------------------------------------------------------------------

std::string EventText(const BmcEvent &event) {
    SelBytes bytes{};
    std::copy_n(event.bytes.begin(), std::min(event.bytes.size(), bytes.size()), bytes.begin());
    return StandardText(bytes);
}

std::string EventTable(const std::vector<BmcEvent> &events, bool colour) {
    Table table({{"ID", true}, {"RECORD"}, {"DECODED"}});
    for (const BmcEvent &event : events)
        table.Add({{std::to_string(event.id), Style::kDim}, {HexBytes(event.bytes)}, {EventText(event)}});
    return table.Render(colour);
}

std::string Plural(size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string Others(size_t count, const std::string &noun) {
    return count == 0 ? "" : "; the BMC had " + Plural(count, noun) + " before";
}

std::vector<size_t> Unexpected(const Json &steps) {
    std::vector<size_t> out;
    for (const Json &step : steps)
        if (step.at("expected").is_boolean() && !step["expected"].get<bool>())
            out.push_back(step.at("step").get<size_t>() + 1);
    return out;
}

std::string EndVerdict(const StoryEnd &end) {
    size_t judged = 0;
    for (const Json &step : end.steps)
        judged += step.at("expected").is_boolean();
    std::string out = Plural(end.steps.size(), "step");
    const std::vector<size_t> unexpected = Unexpected(end.steps);
    if (unexpected.empty())
        return out + (judged == 0 ? ", nothing was expected"
                                  : ", " + std::to_string(judged) + " with an expectation, all as expected");
    std::vector<std::string> numbers;
    for (const size_t number : unexpected)
        numbers.push_back(std::to_string(number));
    return out + ", " + std::to_string(unexpected.size()) + " of " + std::to_string(judged) +
           " NOT as expected: " + Join(numbers, ", ");
}

bool Good(const StoryEnd &end, const Final &final) {
    return Unexpected(end.steps).empty() && final.differences.empty() && end.violations.empty();
}

std::string Render(const ScenarioOptions &options, const Scenario &scenario, const StoryEnd &end,
                   const Final &final) {
    const bool colour = ColourWanted();
    std::string out = (scenario.name.empty() ? scenario.path : scenario.name) + "\nboard " +
                      scenario.board_path + NameBehind(scenario.board, scenario.board_path) + ", profile " +
                      ProfileName(scenario.board.custom_id) +
                      (options.bmc.Given() ? ", BMC at " + options.bmc.address : "") + "\n\n";
    out += StepsText(scenario, end.steps, options.log, colour);
    out +=
        "Repository at the end: " + CountText(final.records) + Others(final.other_records, "record") + "\n";
    if (!final.records.empty())
        out += RecordTable(final.records, colour);
    out += "\nEvent log at the end: " + Plural(final.events.size(), "event") +
           Others(final.other_events, "event") + "\n";
    if (!final.events.empty())
        out += EventTable(final.events, colour);
    out += "\n" + EndVerdict(end) + "\n";
    for (const std::string &difference : final.differences)
        out += "! " + difference + "\n";
    for (const std::string &violation : end.violations)
        out += "! broken rule of the platform: " + OneLine(violation) + "\n";
    return out;
}

std::string RenderJson(const ScenarioOptions &options, const Scenario &scenario, const StoryEnd &end,
                       const Final &final) {
    Json out = {{"scenario", scenario.path},
                {"name", scenario.name},
                {"board", scenario.board_path},
                {"profile", ProfileJson(scenario.board.custom_id)},
                {"bmc", options.bmc.Given() ? Json(options.bmc.address) : Json(nullptr)},
                {"as_expected", Good(end, final)},
                {"steps", Json::array()},
                {"repository", Json::array()},
                {"events", Json::array()},
                {"differences", final.differences},
                {"violations", end.violations}};
    for (size_t i = 0; i < end.steps.size(); ++i) {
        const Step &step = scenario.steps[i];
        const Json &told = end.steps[i];
        out["steps"].push_back({{"step", i + 1},
                                {"line", step.line},
                                {"name", step.name},
                                {"action", step.action},
                                {"life", told.at("life")},
                                {"outcomes", told.at("outcomes")},
                                {"records", told.at("records")},
                                {"events", told.at("events")},
                                {"expected", told.at("expected")},
                                {"unexpected", told.at("unexpected")}});
    }
    for (const RecordView &record : final.records)
        out["repository"].push_back(RecordJson(record));
    for (const BmcEvent &event : final.events)
        out["events"].push_back(
            {{"record_id", event.id}, {"bytes", HexBytes(event.bytes)}, {"standard", EventText(event)}});
    return Dump(out);
}

void RunScenarioCommand(const ScenarioOptions &options) {
    const std::optional<sim::Bmc> bmc = ChosenBmc(options.bmc);
    const Scenario scenario = LoadScenario(options.path);
    BmcBefore before;
    if (bmc)
        before = {ReadRepositoryOf(*bmc), ReadEventLogOf(*bmc)};
    const StoryEnd end = RunScenario(scenario, bmc);
    const Final final = bmc ? ReadBack(*bmc, before, end) : InMemory(end);
    PrintOut(options.json ? RenderJson(options, scenario, end, final)
                          : Render(options, scenario, end, final));
    if (!Good(end, final))
        throw ExitStatus(1);
}

} // namespace

void AddScenarioCommand(Command &program) {
    Command command = program.AddCommand("scenario", "Run a story of parts that come and go, step by step");
    const auto options = std::make_shared<ScenarioOptions>();
    command.AddOption("FILE", options->path, "The story (TOML), see scenarios/README.md")
        .Required()
        .Takes("");
    AddBmcOptions(command, options->bmc, "Sessions lead to a BMC over RMCP+");
    command.AddFlag("--log", options->log, "Show the library's log lines under every step");
    command.AddFlag("--json", options->json, "JSON with outcomes, log lines, repository and event log");
    command.Footer("Exit status: 0 every step came to what the story expects; 1 one did not, a rule of the\n"
                   "platform was broken, or the BMC holds something else; 2 wrong input.");
    command.Example("oxa-sensors scenario scenarios/day.toml");
    command.Runs([options] { RunScenarioCommand(*options); });
}

} // namespace workbench
