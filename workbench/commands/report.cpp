// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "base/version.h"
#include "commands/commands.h"
#include "report/against.h"
#include "report/page.h"
#include "report/set_document.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

struct ReportOptions {
    std::vector<std::string> boards, profiles;
    std::string output, against;
    LoginOptions login; // where that is a BMC
    bool json = false;
};

struct Reported {
    RunOptions run;
    BuiltSet built;
    std::vector<Decoded> decoded;
};

std::vector<std::string> ProfilesOn(const ReportOptions &options, const std::string &board) {
    if (options.profiles.empty())
        return {SettledProfile("", board)};
    std::vector<std::string> out;
    for (const std::string &given : options.profiles)
        if (given == "all")
            for (const Profile *profile : ProfilesWithDriver())
                out.push_back(profile->name);
        else
            out.push_back(FindProfile(given).name);
    return out;
}

void CheckBoards(const std::vector<std::string> &boards) {
    std::vector<std::string> faults;
    for (const std::string &board : boards)
        if (const std::string fault = BoardFault(board); !fault.empty())
            faults.push_back(fault);
    if (!faults.empty())
        throw InputError(Join(faults, "\n"));
}

// Every board under every profile, each once.
std::vector<RunOptions> RunsOf(const ReportOptions &options) {
    CheckBoards(options.boards);
    std::vector<RunOptions> out;
    for (const std::string &board : options.boards)
        for (const std::string &profile : ProfilesOn(options, board)) {
            const auto same = [&](const RunOptions &run) {
                return run.board == board && run.profile == profile;
            };
            if (std::none_of(out.begin(), out.end(), same))
                out.push_back({board, profile});
        }
    return out;
}

std::vector<Reported> BuildSets(const std::vector<RunOptions> &runs) {
    std::vector<Reported> out;
    const Decoder decoder;
    BuildStaticSetsApart(runs, "building", [&](const RunOptions &run, const BuiltSet &built) {
        out.push_back({run, built, {}});
        for (const Sensor &sensor : built.set.sensors)
            out.back().decoded.push_back(decoder.Decode(sensor));
    });
    return out;
}

std::string TitleOf(const std::string &board) {
    const std::string &name = BoardOf(board).board.name;
    return name.empty() ? std::filesystem::path(board).stem().string() : name;
}

Json SetLine(const Reported &one) {
    Json out{{"title", TitleOf(one.run.board)}};
    if (one.built.no_set.empty()) {
        out.update(SetJson(one.built.set));
        return out;
    }
    out["board"] = one.run.board;
    out["profile"] = ProfileJson(FindProfile(one.run.profile).id);
    out["no_set"] = one.built.no_set;
    return out;
}

// The documents of the sets, null for those that could not be built.
std::vector<Json> Documents(const std::vector<Reported> &sets, const std::optional<Against> &against) {
    std::vector<RunOptions> runs;
    for (const Reported &one : sets)
        if (one.built.no_set.empty())
            runs.push_back(one.run);
    const std::vector<Json> why = WhyOfSets(runs);
    std::vector<Json> out;
    size_t asked = 0;
    for (const Reported &one : sets) {
        Json differences;
        if (!one.built.no_set.empty()) {
            out.push_back(nullptr);
            continue;
        }
        const StaticSet &set = one.built.set;
        if (against)
            differences = against->Of(out.size(), one.run.board, {set, one.run.board, true, one.decoded});
        out.push_back(SetDocument(set, one.decoded, why.at(asked++), differences));
    }
    return out;
}

size_t BuiltOf(const std::vector<Reported> &sets) {
    return static_cast<size_t>(std::count_if(
        sets.begin(), sets.end(), [](const Reported &one) { return one.built.no_set.empty(); }));
}

// Why sets are missing, a line each.
std::string Missing(const std::vector<Reported> &sets) {
    std::string out;
    for (const Reported &one : sets)
        if (!one.built.no_set.empty())
            out += (out.empty() ? "profile " : "\nprofile ") + one.run.profile + ": " + one.built.no_set;
    return out;
}

std::string ReportSummary(const ReportOptions &options, const std::vector<Reported> &sets) {
    const size_t built = BuiltOf(sets);
    size_t sensors = 0;
    for (const Reported &one : sets)
        sensors += one.built.set.sensors.size();
    return options.output + ": " + std::to_string(built) + (built == 1 ? " set, " : " sets, ") +
           std::to_string(sensors) + (sensors == 1 ? " sensor\n" : " sensors\n");
}

void WriteReport(const ReportOptions &options) {
    KeepJsonApart(options.output, options.json);
    const std::vector<RunOptions> runs = RunsOf(options);
    std::optional<Against> against;
    if (!options.against.empty())
        against.emplace(options.against, runs, options.login);
    const std::vector<Reported> sets = BuildSets(runs);
    if (BuiltOf(sets) == 0)
        throw SetError(Missing(sets));
    Json report{{"format", kJsonFormat}, {"program", std::string(kVersionText)}, {"sets", Json::array()}};
    for (const Reported &one : sets)
        report["sets"].push_back(SetLine(one));
    const std::string page = PageText(report, Documents(sets, against));
    WriteResult(options.output, page);
    if (options.output != kStandardOutput)
        PrintOut(options.json
                     ? Dump({{"page", options.output}, {"bytes", page.size()}, {"sets", report["sets"]}})
                     : ReportSummary(options, sets));
    if (BuiltOf(sets) == sets.size())
        return;
    throw SetError(Missing(sets)); // the page has the others
}

} // namespace

void AddReportCommand(Command &program) {
    Command command = program.AddCommand("report", "A page to look at: sets, limits, every byte, why");
    const auto options = std::make_shared<ReportOptions>();
    AddBoardsOption(command, options->boards, "Board description (TOML); several times for several")
        .Required();
    AddProfilesOption(command, options->profiles,
                      "Customer profile: " + AvailableProfiles() +
                          ", or all; several times for several; default: each board's own");
    command.AddOutput(options->output, "Replace FILE, an HTML page that needs no network").Required();
    command
        .AddOption(
            "--against", options->against,
            "Mark what differs from PROFILE (on each board), PROFILE@BOARD, a file of export, a lock, or bmc://HOST")
        .Takes("SET")
        .Completes(CompleteProfiles);
    AddLoginOptions(command, options->login);
    command.AddFlag("--json", options->json, "JSON with what was written, instead of a line");
    command.Footer(
        "Exit status: 0 written; 1 one of the sets could not be built, and the page says why (nothing is written\n"
        "when there is none at all); 2 wrong input (nothing is written).");
    command.Example("oxa-sensors report --board boards/two_socket_2u.toml --output set.html");
    command.Runs([options] { WriteReport(*options); });
}

} // namespace workbench
