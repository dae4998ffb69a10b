// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors sheet: the command line of its four commands, export and check.
#include "commands/sheet.h"

#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "sets/run_options.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

constexpr size_t kNamesListed = 12;
constexpr const char *kColumns =
    "The first row names the columns, in any order: Name (or Sensor), Unit, LNR, LC, LNC, UNC, UC, UNR.\n"
    "Comma, semicolon or tab; decimal point or comma; an empty cell or \"-\" is no limit.\n";

// ---- export ----------------------------------------------------------------------------------------

void LoadSet(const SheetOptions &options, JudgedSheet &out) {
    try {
        StaticSet set = BuildStaticSetApart(options.run);
        const Decoder decoder;
        for (const Sensor &sensor : set.sensors)
            out.set.push_back(decoder.Decode(sensor));
        out.sensors = std::move(set.sensors);
        out.profile = set.profile;
    } catch (const SetError &error) { // nothing to hold a sheet against
        throw InputError(error.what());
    }
}

CsvStyle StyleOf(const std::string &word) {
    return word == "semicolon" ? CsvStyle::kSemicolon : word == "tab" ? CsvStyle::kTab : CsvStyle::kComma;
}

Json ExportJson(const SheetOptions &options, const JudgedSheet &judged) {
    Json out{{"board", options.run.board},
             {"profile", ProfileJson(judged.profile->id)},
             {"sheet", options.output == kStandardOutput ? Json(nullptr) : Json(options.output)},
             {"sensors", Json::array()}};
    for (const Decoded &sensor : judged.set) {
        if (!CanHaveLimits(sensor))
            continue;
        out["sensors"].push_back(
            {{"name", sensor.name}, {"unit", sensor.reading->unit}, {"thresholds", ThresholdsJson(sensor)}});
    }
    return out;
}

void SheetExport(const SheetOptions &options) {
    JudgedSheet judged;
    LoadSet(options, judged);
    const std::string sheet = SheetOf(judged.set, StyleOf(options.style));
    if (!options.json || options.output != kStandardOutput)
        WriteResult(options.output, sheet);
    if (options.json)
        PrintOut(Dump(ExportJson(options, judged)));
}

// ---- check -----------------------------------------------------------------------------------------

std::string CheckText(const SheetOptions &options, const JudgedSheet &judged) {
    std::string out;
    for (const SheetFinding &finding : judged.judgement.findings)
        out += FindingText(options.file, finding) + "\n";
    for (const SheetCell &cell : judged.sheet.ignored)
        out += options.file + ": column " + cell.place.cell + " '" + Printable(cell.text) +
               "' is not looked at\n";
    const std::vector<std::string> &none = judged.judgement.without_limits;
    if (!none.empty())
        out += options.file + ": no limits in sheet and set: " + NamesText(none, kNamesListed) + "\n";
    if (const std::string skipped = SkippedText(judged); !skipped.empty())
        out += options.file + ": " + skipped;
    const size_t found = judged.judgement.findings.size();
    return out + options.file + ": " + std::to_string(judged.sheet.rows.size()) + " sensors in the sheet, " +
           (found == 0 ? "the set is as in the sheet"
                       : std::to_string(found) + (found == 1 ? " difference" : " differences")) +
           "; profile " + judged.profile->name + ", board " + options.run.board + "\n";
}

Json PlaceJson(const SheetPlace &place) {
    if (place.line == 0)
        return nullptr;
    return {{"line", place.line}, {"column", place.column}, {"cell", place.cell}};
}

Json CheckJson(const SheetOptions &options, const JudgedSheet &judged) {
    Json out{{"sheet", options.file},
             {"board", options.run.board},
             {"profile", ProfileJson(judged.profile->id)},
             {"rows", judged.sheet.rows.size()},
             {"without_limits", judged.judgement.without_limits},
             {"skipped", judged.skipped},
             {"findings", Json::array()},
             {"ignored_columns", Json::array()}};
    for (const SheetFinding &f : judged.judgement.findings)
        out["findings"].push_back({{"rule", f.rule},
                                   {"name", f.name},
                                   {"text", f.text},
                                   {"place", PlaceJson(f.place)},
                                   {"in_the_way", f.in_the_way}});
    for (const SheetCell &cell : judged.sheet.ignored)
        out["ignored_columns"].push_back(Printable(cell.text));
    return out;
}

void SheetCheck(const SheetOptions &options) {
    JudgedSheet judged;
    LoadSheet(options, judged);
    PrintOut(options.json ? Dump(CheckJson(options, judged)) : CheckText(options, judged));
    if (!judged.judgement.findings.empty())
        throw ExitStatus(1);
}

// ---- the command line ------------------------------------------------------------------------------

Command Add(Command &group, const std::string &name, const std::string &about,
            const std::shared_ptr<SheetOptions> &options, const std::string &footer) {
    Command command = group.AddCommand(name, about);
    if (name != "export")
        command.AddOption("FILE", options->file, "The sheet").Required().Takes("");
    AddRunOptions(command, options->run);
    if (name != "export")
        command.AddFlag("--skip-absent", options->skip_absent,
                        "Leave out sensors that the profile has a row for and this board has not");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(footer);
    command.Example("oxa-sensors sheet " + name + (name == "export" ? "" : " limits.csv") +
                    " --board boards/base_48.toml" +
                    (name == "export"  ? " | tee limits.csv"
                     : name == "image" ? " -o sensor_threshold.dat"
                                       : ""));
    return command;
}

void AddExport(Command &group) {
    const auto options = std::make_shared<SheetOptions>();
    Command command = Add(group, "export", "The limits of a set as a sheet", options,
                          "Exit status: 0 done; 2 wrong input (nothing is written).");
    command.AddOutput(options->output, "Replace FILE in one step").ShowsDefault();
    command
        .AddOption(
            "--style", options->style,
            "comma; semicolon (decimal comma, byte order mark, CR LF, for most European spreadsheets); tab")
        .OneOf({"comma", "semicolon", "tab"})
        .Takes("WORD")
        .ShowsDefault();
    command.Runs([options] { SheetExport(*options); });
}

void AddCheck(Command &group) {
    const auto options = std::make_shared<SheetOptions>();
    Command command =
        Add(group, "check", "Where sheet and set differ, and what no byte can hold", options,
            std::string(kColumns) + "Exit status: 0 the set is as in the sheet; 1 it is not; 2 wrong input.");
    command.Runs([options] { SheetCheck(*options); });
}

void AddRound(Command &command, const std::shared_ptr<SheetOptions> &options) {
    command.AddFlag("--round", options->round, "Take the nearest byte of a value that no byte holds");
}

void AddRows(Command &group) {
    const auto options = std::make_shared<SheetOptions>();
    Command command =
        Add(group, "rows", "What the sheet makes of the profile's list: a patch, and what it costs", options,
            "Exit status: 0 done; 2 wrong input, or a sheet that no rows can say.");
    command.AddOption("--list", options->list, "The list; default: library/profiles/<profile>.def")
        .Takes("FILE");
    AddRound(command, options);
    command.Runs([options] { SheetRows(*options); });
}

void AddImage(Command &group) {
    const auto options = std::make_shared<SheetOptions>();
    Command command = Add(
        group, "image", "The sheet as a file of user thresholds", options,
        "Exit status: 0 done; 2 wrong input, or a sheet that no such file can hold (nothing is written).");
    command.AddOutput(options->output, "The file").Required();
    AddRound(command, options);
    command.Runs([options] { SheetImage(*options); });
}

void SkipAbsent(JudgedSheet &out) {
    const auto absent = [](const SheetFinding &finding) { return finding.rule == "absent"; };
    for (const SheetFinding &finding : out.judgement.findings)
        if (absent(finding))
            out.skipped.push_back(finding.name);
    std::erase_if(out.judgement.findings, absent);
}

} // namespace

void EndWith(const std::vector<std::string> &faults) {
    throw InputError(Join(faults, "\n"));
}

std::string FindingText(const std::string &file, const SheetFinding &finding) {
    const SheetPlace &place = finding.place;
    const std::string where = place.line == 0 ? ""
                                              : std::to_string(place.line) + ":" +
                                                    std::to_string(place.column) + ": " + place.cell + ":";
    return file + ":" + where + " " + finding.name + ": " + finding.text;
}

void LoadSheet(const SheetOptions &options, JudgedSheet &out) {
    std::vector<SheetFault> faults;
    out.sheet = ReadSheet(options.file, faults);
    std::vector<std::string> lines;
    for (const SheetFault &fault : faults)
        lines.push_back(options.file + ":" + std::to_string(fault.place.line) + ":" +
                        std::to_string(fault.place.column) + ": " +
                        (fault.place.cell.empty() ? "" : fault.place.cell + ": ") + fault.text);
    if (!lines.empty())
        EndWith(lines);
    LoadSet(options, out);
    out.judgement = JudgeSheet(out.sheet, out.set, *out.profile, options.round);
    if (options.skip_absent)
        SkipAbsent(out);
}

std::string SkippedText(const JudgedSheet &judged) {
    const size_t count = judged.skipped.size();
    if (count == 0)
        return "";
    return std::to_string(count) + (count == 1 ? " sensor is" : " sensors are") +
           " not on this board and left out: " + NamesText(judged.skipped, kNamesListed) + "\n";
}

void EndAtFindings(const SheetOptions &options, const JudgedSheet &judged) {
    std::vector<std::string> lines;
    for (const SheetFinding &finding : judged.judgement.findings)
        if (finding.in_the_way)
            lines.push_back(FindingText(options.file, finding) +
                            (finding.rule == "byte"     ? "; --round takes the nearest"
                             : finding.rule == "absent" ? "; --skip-absent leaves it out"
                                                        : ""));
    if (!lines.empty())
        EndWith(lines);
}

void AddSheetCommand(Command &program) {
    Command group =
        program.AddCommand("sheet", "A customer's list of limits in real units: export, check, rows, image");
    group.NeedsCommand();
    group.Footer("Exit status: 0 done; 1 check: sheet and set differ; 2 wrong input.");
    group.Example("oxa-sensors sheet export --board boards/base_48.toml");
    AddExport(group);
    AddCheck(group);
    AddRows(group);
    AddImage(group);
}

} // namespace workbench
