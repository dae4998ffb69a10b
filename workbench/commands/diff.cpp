// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "compare/set_compare.h"
#include "sets/active.h"
#include "sets/aside.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sources/source.h"

namespace workbench {
namespace {

constexpr size_t kNamesInGroup = 4;

struct DiffOptions {
    RunOptions run;          // board: where a side names none
    LoginOptions login;      // at BMCs
    std::string left, right; // sources
    bool json = false;
};

struct Sides {
    Side left, right;
    Comparison comparison;
};

// What people and programs that rely on the left set lose with the right one.
struct Breakage {
    std::vector<std::string> thresholds;  // names whose saved thresholds are not found again
    std::vector<std::string> names_gone;  // names that monitoring may ask for
    std::vector<std::string> new_meaning; // names that stay but are read another way
    bool other_profile = false;           // the saved file is dropped as a whole
};

bool IsChanged(const SensorPair &pair) {
    return !pair.renamed && !pair.changes.empty();
}

// Units, states or the way from a raw reading to a value.
bool ReadsOtherwise(const SensorPair &pair) {
    static const std::vector<std::string> kFields = {
        "record type",   "sensor type", "event/reading type", "units 1", "base unit", "modifier unit",
        "linearisation", "M",           "M high, tolerance",  "B",       "exponents", "B high, accuracy",
        "reading mask"};
    return std::any_of(pair.changes.begin(), pair.changes.end(), [](const FieldChange &change) {
        return !change.in_entry && std::find(kFields.begin(), kFields.end(), change.field) != kFields.end();
    });
}

Breakage FindBreakage(const Sides &s) {
    Breakage out;
    out.other_profile = s.left.set.profile != nullptr && s.right.set.profile != nullptr &&
                        s.left.set.profile != s.right.set.profile;
    for (const size_t i : s.comparison.removed) {
        out.names_gone.push_back(s.left.decoded[i].name);
        if (CanHaveThresholds(s.left.set.sensors[i]))
            out.thresholds.push_back(s.left.decoded[i].name);
    }
    for (const SensorPair &pair : s.comparison.pairs) {
        const std::string &name = s.left.decoded[pair.left].name;
        if (LosesThresholds(s.left, s.right, pair))
            out.thresholds.push_back(name);
        if (pair.renamed)
            out.names_gone.push_back(name);
        else if (ReadsOtherwise(pair))
            out.new_meaning.push_back(name);
    }
    return out;
}

std::string Names(const std::vector<std::string> &names) {
    std::vector<std::string> told(names.begin(),
                                  names.begin() + static_cast<long>(std::min(names.size(), kNamesInGroup)));
    if (names.size() > kNamesInGroup)
        told.push_back("...");
    return " (" + Join(told, ", ") + ")";
}

std::string SensorCount(size_t count) {
    return std::to_string(count) + (count == 1 ? " sensor" : " sensors");
}

std::string NameCount(size_t count) {
    return std::to_string(count) + (count == 1 ? " name is" : " names are");
}

std::string ThresholdLine(const Breakage &b) {
    const std::string head = "Saved user thresholds (found by name and readable mask): ";
    if (b.other_profile)
        return head + "all are dropped, the profile differs; by name and mask " +
               (b.thresholds.empty()
                    ? "none would be lost\n"
                    : SensorCount(b.thresholds.size()) + " would lose theirs" + Names(b.thresholds) + "\n");
    return head + (b.thresholds.empty() ? "none is lost\n"
                                        : SensorCount(b.thresholds.size()) +
                                              (b.thresholds.size() == 1 ? " loses its own" : " lose theirs") +
                                              Names(b.thresholds) + "\n");
}

std::string MonitoringLine(const Breakage &b) {
    std::vector<std::string> parts;
    if (!b.names_gone.empty())
        parts.push_back(NameCount(b.names_gone.size()) + " gone" + Names(b.names_gone));
    if (!b.new_meaning.empty())
        parts.push_back(NameCount(b.new_meaning.size()) + " read otherwise" + Names(b.new_meaning));
    return "Monitoring that keys on names: " + (parts.empty() ? "nothing breaks" : Join(parts, "; ")) + "\n";
}

std::string ChangeText(const FieldChange &change) {
    const std::string left = Join(change.left, ", "), right = Join(change.right, ", ");
    return std::string(change.in_entry ? "entry: " : "") + change.field + ": " + (left.empty() ? "-" : left) +
           " -> " + (right.empty() ? "-" : right);
}

void AddPair(const Sides &s, const SensorPair &pair, Table &table) {
    const std::string &name = s.left.decoded[pair.left].name;
    std::vector<Cell> row = {
        {pair.renamed ? "renamed" : "changed", Style::kWarm}, {name, Style::kBold}, {""}, {""}};
    if (pair.renamed)
        row[2] = {s.right.decoded[pair.right].name, Style::kBold};
    for (const FieldChange &change : pair.changes) {
        row[3] = {ChangeText(change)};
        table.Add(row);
        row = {{""}, {""}, {""}, {""}};
    }
    if (pair.changes.empty())
        table.Add(row);
}

size_t Count(const Comparison &c, bool (*which)(const SensorPair &)) {
    return static_cast<size_t>(std::count_if(c.pairs.begin(), c.pairs.end(), which));
}

size_t Renamed(const Comparison &c) {
    return Count(
        c, [](const SensorPair &pair) { return pair.renamed; });
}
size_t Changed(const Comparison &c) {
    return Count(c, IsChanged);
}
size_t Same(const Comparison &c) {
    return c.pairs.size() - Renamed(c) - Changed(c);
}

std::string Heading(const char *letter, const Side &side) {
    return std::string(letter) + ": " + side.label + ", " + SensorCount(side.set.sensors.size()) +
           (side.has_entries ? "" : " (records only, no device table)") +
           (side.set.aside.empty() ? "" : "; set aside: " + AsideCount(side.set.aside)) + "\n";
}

std::string RenderText(const Sides &s) {
    Table table({{"CHANGE"}, {"A"}, {"B"}, {"WHAT"}});
    const Comparison &c = s.comparison;
    for (const size_t i : c.removed)
        table.Add(
            {{"removed", Style::kHot}, {s.left.decoded[i].name, Style::kBold}, {""}, {WhatText(s.left, i)}});
    for (const size_t k : c.added)
        table.Add(
            {{"added", Style::kHot}, {""}, {s.right.decoded[k].name, Style::kBold}, {WhatText(s.right, k)}});
    for (const SensorPair &pair : c.pairs)
        if (pair.renamed)
            AddPair(s, pair, table);
    for (const SensorPair &pair : c.pairs)
        if (IsChanged(pair))
            AddPair(s, pair, table);
    const Breakage breakage = FindBreakage(s);
    return Heading("A", s.left) + Heading("B", s.right) + "\n" +
           (c.Equal() ? "" : table.Render(ColourWanted()) + "\n") + std::to_string(c.removed.size()) +
           " removed, " + std::to_string(c.added.size()) + " added, " + std::to_string(Renamed(c)) +
           " renamed, " + std::to_string(Changed(c)) + " changed, " + std::to_string(Same(c)) +
           " the same\n" + ActiveText(s.left.decoded, s.left.label) +
           ActiveText(s.right.decoded, s.right.label) + ThresholdLine(breakage) + MonitoringLine(breakage);
}

Json SideJson(const Side &side) {
    Json out{{"source", side.label}, {"count", side.set.sensors.size()}, {"device_table", side.has_entries}};
    out["profile"] = side.set.profile != nullptr ? ProfileJson(side.set.profile->id) : Json(nullptr);
    out["set_aside"] = AsideJson(side.set.aside);
    out["active"] = ActiveJson(side.decoded);
    return out;
}

Json SensorsJson(const Side &side, const std::vector<size_t> &which) {
    Json out = Json::array();
    for (const size_t i : which)
        out.push_back({{"name", side.decoded[i].name}, {"ordinal", i + 1}, {"what", WhatText(side, i)}});
    return out;
}

Json PairJson(const Sides &s, const SensorPair &pair) {
    Json out{{"name", s.left.decoded[pair.left].name}};
    if (pair.renamed)
        out["new_name"] = s.right.decoded[pair.right].name;
    out["changes"] = Json::array();
    for (const FieldChange &change : pair.changes)
        out["changes"].push_back({{"where", change.in_entry ? "entry" : "record"},
                                  {"offset", change.offset},
                                  {"field", change.field},
                                  {"a", change.left},
                                  {"b", change.right}});
    return out;
}

std::string RenderJson(const Sides &s) {
    const Comparison &c = s.comparison;
    const Breakage breakage = FindBreakage(s);
    Json out{{"a", SideJson(s.left)}, {"b", SideJson(s.right)}, {"equal", c.Equal()}, {"same", Same(c)}};
    out["removed"] = SensorsJson(s.left, c.removed);
    out["added"] = SensorsJson(s.right, c.added);
    out["renamed"] = Json::array();
    out["changed"] = Json::array();
    for (const SensorPair &pair : c.pairs)
        if (pair.renamed || IsChanged(pair))
            out[pair.renamed ? "renamed" : "changed"].push_back(PairJson(s, pair));
    out["breaks"] = {{"saved_thresholds", breakage.thresholds},
                     {"all_saved_thresholds", breakage.other_profile},
                     {"names_gone", breakage.names_gone},
                     {"names_read_otherwise", breakage.new_meaning}};
    return Dump(out);
}

Side LoadSide(const std::string &text, const DiffOptions &options) {
    SourceSet source = LoadSourceToCompare(text, options.run, options.login);
    return MakeSide(std::move(source.set), source.label);
}

void Diff(const DiffOptions &options) {
    Sides s{LoadSide(options.left, options), LoadSide(options.right, options), {}};
    s.comparison = CompareSources(s.left, s.right);
    PrintOut(options.json ? RenderJson(s) : RenderText(s));
    if (!s.comparison.Equal())
        throw ExitStatus(1);
}

} // namespace

void AddDiffCommand(Command &program) {
    Command command =
        program.AddCommand("diff", "What differs between two profiles, boards, files of records or BMCs");
    const auto options = std::make_shared<DiffOptions>();
    command.AddOption("A", options->left, "The set as it was")
        .Required()
        .Takes("")
        .Completes(CompleteProfiles);
    command.AddOption("B", options->right, "The set as it is to be")
        .Required()
        .Takes("")
        .Completes(CompleteProfiles);
    AddBoardOption(command, options->run.board, "Board description (TOML) for a side that names none");
    AddLoginOptions(command, options->login);
    command.AddFlag("--json", options->json, "JSON with every field that differs");
    command.Footer(std::string("A and B: ") + kSourceHelp +
                   "Exit status: 0 equal; 1 different; 2 wrong input, or a side that has no set.");
    command.Example("oxa-sensors diff default@boards/base_48.toml kestrin@boards/base_48.toml");
    command.Runs([options] { Diff(*options); });
}

} // namespace workbench
