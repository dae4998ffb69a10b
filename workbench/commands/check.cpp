// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>
#include <sstream>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "checks/findings.h"
#include "commands/commands.h"
#include "sets/aside.h"
#include "sets/board_files.h"
#include "sets/run_options.h"
#include "sources/source.h"

namespace workbench {
namespace {

constexpr size_t kTextWidth = 76;

struct CheckOptions : SourceOptions { // board: empty for none; profile: one or "all"
    std::string boards;               // folder of board files; empty: none
    bool json = false;
    bool verbose = false;
};

struct Scale { // of one analog sensor
    std::string board, profile, name, unit;
    double minimum, maximum, step;
};

struct Report {
    size_t sets = 0, tables = 0;
    std::vector<Finding> findings;
    std::vector<Scale> scales;
    std::vector<std::string> unused;
    std::vector<std::string> unreadable; // what is wrong with board files of a folder
    std::vector<AsideRecord> aside;      // of --from
    size_t Known() const {
        return static_cast<size_t>(std::count_if(
            findings.begin(), findings.end(), [](const Finding &f) { return f.IsKnown(); }));
    }
};

std::vector<std::string> BoardsOf(const CheckOptions &options) {
    std::vector<std::string> out;
    if (!options.run.board.empty())
        out.push_back(options.run.board);
    if (options.boards.empty())
        return out;
    const std::vector<std::string> files = BoardFilesOf(options.boards);
    out.insert(out.end(), files.begin(), files.end());
    std::sort(out.begin(), out.end());
    return out;
}

std::vector<const Profile *> ProfilesOf(const CheckOptions &options) {
    if (options.run.profile == "all")
        return AllProfiles();
    return {&NamedProfile(options.run.profile)};
}

// One line for a finding, however many boards have it; the text is the first one's.
void Add(Report &report, Finding finding) {
    for (Finding &told : report.findings)
        if (told.rule == finding.rule && told.profile == finding.profile && told.subject == finding.subject) {
            told.boards.insert(told.boards.end(), finding.boards.begin(), finding.boards.end());
            return;
        }
    report.findings.push_back(std::move(finding));
}

void AddScales(const StaticSet &set, const std::vector<Decoded> &decoded, Report &report) {
    for (const Decoded &d : decoded)
        if (d.reading)
            report.scales.push_back({set.Label(), ProfileWord(set), d.name, d.reading->unit,
                                     d.reading->minimum, d.reading->maximum, d.reading->factor});
}

void CheckOne(const StaticSet &set, Report &report) {
    const Decoder decoder;
    std::vector<Decoded> decoded;
    for (const Sensor &sensor : set.sensors)
        decoded.push_back(decoder.Decode(sensor));
    for (Finding &finding : CheckSet(set, decoded))
        Add(report, std::move(finding));
    AddScales(set, decoded, report);
}

void CheckBuilt(const RunOptions &run, const BuiltSet &built, Report &report) {
    const auto add_failure = [&](const std::string &why) {
        Add(report, {"no-set", run.profile, run.board, why, {run.board}, ""});
    };
    if (!built.no_set.empty())
        return add_failure(built.no_set);
    try {
        CheckOne(built.set, report);
    } catch (const SetError &error) {
        add_failure(error.what());
    }
}

// A broken file of a folder is told and does not keep the others from being checked.
std::vector<std::string> UsableBoards(const CheckOptions &options, Report &report) {
    std::vector<std::string> out;
    for (const std::string &board : BoardsOf(options)) {
        const std::string fault = BoardFault(board);
        if (fault.empty())
            out.push_back(board);
        else if (options.boards.empty())
            throw InputError(fault);
        else
            report.unreadable.push_back(fault);
    }
    return out;
}

void ExplainFindings(Report &report) {
    KnownFindings known;
    for (Finding &finding : report.findings)
        known.Explain(finding);
    std::stable_partition(report.findings.begin(), report.findings.end(),
                          [](const Finding &finding) { return !finding.IsKnown(); });
    report.unused = known.Unused();
}

// One set that was built elsewhere; which findings are known depends on the profile, where it is known.
Report CheckSource(const CheckOptions &options) {
    SourceOptions source = options;
    if (options.run.profile == "all")
        source.run.profile.clear();
    const StaticSet set = LoadSource(source, "check").set;
    Report report;
    report.sets = 1;
    report.aside = set.aside;
    CheckOne(set, report);
    ExplainFindings(report);
    return report;
}

Report RunChecks(const CheckOptions &options) {
    Report report;
    const std::vector<const Profile *> profiles = ProfilesOf(options);
    const std::vector<std::string> boards = UsableBoards(options, report);
    std::vector<RunOptions> runs;
    for (const Profile *profile : profiles)
        for (const std::string &board : boards)
            if (profile->driver != nullptr) {
                runs.push_back(options.run);
                runs.back().profile = profile->name;
                runs.back().board = board;
            }
    report.sets = runs.size();
    BuildStaticSetsApart(runs, "checking", [&report](const RunOptions &run, const BuiltSet &built) {
        CheckBuilt(run, built, report);
    });
    for (const Profile *profile : profiles) { // the simulated platform starts here, not earlier
        ++report.tables;
        for (const auto check : {CheckTables, CheckFruIds})
            for (Finding &finding : check(*profile))
                Add(report, std::move(finding));
    }
    ExplainFindings(report);
    return report;
}

void AddFinding(const Finding &finding, Table &table) {
    std::string text = finding.text;
    if (finding.boards.size() > 1)
        text += " (and on " + std::to_string(finding.boards.size() - 1) + " more)";
    std::vector<Cell> row = {
        {finding.IsKnown() ? "known" : "NEW", finding.IsKnown() ? Style::kDim : Style::kHot},
        {finding.rule},
        {finding.profile},
        {finding.subject, Style::kBold},
        {""}};
    for (const std::string &line : Wrap(text, kTextWidth)) {
        row[4] = {line};
        table.Add(row);
        row = {{""}, {""}, {""}, {""}, {""}};
    }
    for (const std::string &line : Wrap(finding.reason, kTextWidth - 2))
        if (!line.empty())
            table.Add({{""}, {""}, {""}, {""}, {"= " + line, Style::kDim}});
}

std::string ScaleText(const Report &report) {
    Table table({{"BOARD"}, {"PROFILE"}, {"SENSOR"}, {"FROM", true}, {"TO", true}, {"STEP", true}, {"UNIT"}});
    for (const Scale &s : report.scales)
        table.Add({{s.board, Style::kDim},
                   {s.profile},
                   {s.name, Style::kBold},
                   {FormatNumber(s.minimum)},
                   {FormatNumber(s.maximum)},
                   {FormatNumber(s.step)},
                   {s.unit}});
    std::string out = report.scales.empty() ? "" : table.Render(ColourWanted()) + "\n";
    for (const std::string &entry : report.unused)
        out += "not met here: " + entry + "\n";
    return out + (report.unused.empty() ? "" : "\n");
}

std::string Whose(const CheckOptions &options) {
    const std::string profile =
        options.run.profile == "all" ? "all profiles" : "profile " + options.run.profile;
    if (options.from.empty())
        return profile;
    return options.run.profile == "all" ? options.from : profile + ", " + options.from;
}

std::string RenderText(const Report &report, const CheckOptions &options) {
    Table table({{"STATUS"}, {"RULE"}, {"PROFILE"}, {"SUBJECT"}, {"FINDING"}});
    for (const Finding &finding : report.findings)
        AddFinding(finding, table);
    const size_t known = report.Known();
    return (options.verbose ? ScaleText(report) : "") +
           (report.findings.empty() ? "" : table.Render(ColourWanted()) + "\n") +
           std::to_string(report.sets) + (report.sets == 1 ? " set and " : " sets and ") +
           std::to_string(report.tables) +
           (report.tables == 1 ? " name table checked: " : " name tables checked: ") +
           std::to_string(report.findings.size() - known) + " new findings, " + std::to_string(known) +
           " known; " + Whose(options) + "\n" +
           (report.aside.empty() ? "" : "set aside: " + AsideCount(report.aside) + "\n");
}

Json ScalesJson(const Report &report) {
    Json out = Json::array();
    for (const Scale &s : report.scales)
        out.push_back({{"board", s.board},
                       {"profile", s.profile},
                       {"name", s.name},
                       {"minimum", Rounded(s.minimum)},
                       {"maximum", Rounded(s.maximum)},
                       {"step", Rounded(s.step)},
                       {"unit", s.unit}});
    return out;
}

std::string RenderJson(const Report &report, bool verbose) {
    Json out{{"sets", report.sets},
             {"tables", report.tables},
             {"new", report.findings.size() - report.Known()},
             {"known", report.Known()}};
    out["findings"] = Json::array();
    for (const Finding &f : report.findings)
        out["findings"].push_back({{"known", f.IsKnown()},
                                   {"rule", f.rule},
                                   {"profile", f.profile},
                                   {"subject", f.subject},
                                   {"text", f.text},
                                   {"boards", f.boards},
                                   {"reason", f.IsKnown() ? Json(f.reason) : Json(nullptr)}});
    out["unreadable"] = report.unreadable;
    out["set_aside"] = AsideJson(report.aside);
    if (verbose) {
        out["scales"] = ScalesJson(report);
        out["not_met"] = report.unused;
    }
    return Dump(out);
}

void Check(const CheckOptions &options) {
    if (!options.from.empty() && !options.boards.empty())
        throw InputError("--from is one set; --boards is a folder of others");
    const Report report = options.from.empty() ? RunChecks(options) : CheckSource(options);
    PrintOut(options.json ? RenderJson(report, options.verbose) : RenderText(report, options));
    for (const std::string &fault : report.unreadable) {
        std::istringstream mistakes(fault); // a line for each
        for (std::string line; std::getline(mistakes, line);)
            std::fprintf(stderr, "oxa-sensors: %s\n", line.c_str());
    }
    if (!report.unreadable.empty())
        throw ExitStatus(kBadInput);
    if (report.Known() != report.findings.size())
        throw ExitStatus(kNoSet);
}

} // namespace

void AddCheckCommand(Command &program) {
    Command command =
        program.AddCommand("check", "Names, instances, thresholds, scales and FRU ids that cannot be right");
    const auto options = std::make_shared<CheckOptions>();
    options->run.profile = "all";
    command
        .AddOption("-b,--board", options->run.board,
                   "Board description (TOML); default: OXA_BOARD, unless --boards is given; without one: the "
                   "name tables only")
        .Takes("FILE")
        .Completes(CompleteBoards);
    command.AddOption("--boards", options->boards, "Every *.toml of a folder").Takes("DIR");
    AddFromOption(command, options->from);
    AddLoginOptions(command, options->login);
    AddProfileOption(command, options->run.profile, "One customer profile, or all").ShowsDefault();
    command.AddFlag("-v,--verbose", options->verbose, "Full scale and step of every analog sensor too");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(
        "Exit status: 0 nothing found, or known findings only; 1 new findings; 2 wrong input.\n"
        "Of a folder, files that cannot be read are told and the others are checked; the status is 2 then.");
    command.Example("oxa-sensors check --boards boards --profile kestrin");
    command.Runs([options] {
        if (options->run.board.empty() && options->boards.empty() && options->from.empty())
            options->run.board = EnvironmentValue(kBoardVariable);
        Check(*options);
    });
}

} // namespace workbench
