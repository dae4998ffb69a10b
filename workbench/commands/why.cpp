// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/why_text.h"
#include "explain/explain.h"
#include "sets/decode.h"
#include "sets/run_options.h"
#include "why/why.h"
#include "why/why_json.h"

namespace workbench {
namespace {

constexpr size_t kMostNames = 8;

// What is to be told about one profile.
struct WhyAnswers {
    const Profile *profile;
    size_t sensors = 0, rows = 0; // in the set, in the list
    std::vector<Present> present;
    std::vector<std::pair<std::string, Absent>> absent; // under the name that was asked for
    std::vector<std::string> elsewhere;                 // names that only other profiles have
};

// ---- what is asked about ---------------------------------------------------------------------------------------

std::string SampleName(const Row &row) { // of a row that is there for several sensors, for patterns
    const size_t at = row.name.find('%');
    if (at == std::string::npos)
        return row.name;
    return row.name.substr(0, at) + "1" +
           row.name.substr(row.name.find_first_not_of("0123456789", at + 1) + 1);
}

bool HasSensor(const Trial &trial, const Row &row) {
    return std::any_of(
        trial.sensors.begin(), trial.sensors.end(),
        [&row](const Sensor &sensor) { return Built(row, sensor); });
}

void AddPattern(const Trials &trials, const std::string &pattern, WhyAnswers &out) {
    for (const Row &row : RowsOf(trials.profile())) {
        for (const Sensor &sensor : trials.AsItIs().sensors)
            if (Built(row, sensor) && MatchesGlob(NameOf(sensor), pattern))
                out.present.push_back(WhyPresent(trials, row, sensor));
        if (!HasSensor(trials.AsItIs(), row) && MatchesGlob(SampleName(row), pattern))
            out.absent.emplace_back(row.name, WhyAbsent(trials, row, std::nullopt));
    }
}

// Of several rows with one pattern (a voltage domain of each CPU) the first that gave no sensor.
const Row *RowOf(const Trials &trials, const std::string &name) {
    const Row *first = nullptr;
    for (const Row &row : RowsOf(trials.profile())) {
        if (row.name != name && !MakesName(row, name))
            continue;
        if (!HasSensor(trials.AsItIs(), row))
            return &row;
        first = first != nullptr ? first : &row;
    }
    return first;
}

void AddName(const Trials &trials, const std::string &name, WhyAnswers &out) {
    const size_t before = out.present.size();
    for (const Sensor &sensor : trials.AsItIs().sensors)
        for (const Row &row : RowsOf(trials.profile()))
            if (NameOf(sensor) == name && Built(row, sensor))
                out.present.push_back(WhyPresent(trials, row, sensor));
    if (out.present.size() != before)
        return;
    const Row *const row = RowOf(trials, name);
    if (row == nullptr)
        return out.elsewhere.push_back(name);
    const bool whole_row = row->name == name && HasNumber(*row);
    out.absent.emplace_back(name, WhyAbsent(trials, *row, whole_row ? std::nullopt : std::optional(name)));
}

std::vector<std::string> ProfilesWith(const std::string &name) {
    std::vector<std::string> out;
    for (const Profile *profile : ProfilesWithDriver())
        for (const Row &row : RowsOf(*profile))
            if (MakesName(row, name)) {
                out.push_back(std::string(profile->name) + " (" + RowPlace(row) + ")");
                break;
            }
    return out;
}

// A name that no list can give is a mistake of who asks.
void CheckNames(const std::vector<std::string> &names, const std::vector<const Profile *> &profiles) {
    for (const std::string &name : names) {
        std::vector<std::string> known;
        bool found = false;
        for (const Profile *profile : ProfilesWithDriver())
            for (const Row &row : RowsOf(*profile)) {
                found = found || row.name == name || MakesName(row, name) ||
                        (HasWildcard(name) && MatchesGlob(SampleName(row), name));
                if (std::find(profiles.begin(), profiles.end(), profile) != profiles.end())
                    known.push_back(SampleName(row));
            }
        if (found || HasWildcard(name))
            continue;
        const std::vector<std::string> nearest = NearestNames(name, known);
        throw InputError("no profile has a sensor '" + name + "'" +
                         (nearest.empty() ? "" : "; did you mean " + Join(nearest, ", ") + "?"));
    }
}

// Nor is a pattern that nothing has told anything of.
void CheckPatterns(const std::vector<std::string> &names, const std::vector<WhyAnswers> &all) {
    const auto told = [](const WhyAnswers &answers, const std::string &pattern) {
        return std::any_of(
                   answers.present.begin(), answers.present.end(),
                   [&](const Present &present) { return MatchesGlob(NameOf(present.sensor), pattern); }) ||
               std::any_of(answers.absent.begin(), answers.absent.end(), [&](const auto &absent) {
                   return MatchesGlob(SampleName(*absent.second.row), pattern);
               });
    };
    for (const std::string &name : names)
        if (HasWildcard(name) && std::none_of(all.begin(), all.end(),
                                              [&](const WhyAnswers &answers) { return told(answers, name); }))
            throw InputError(
                "no sensor or row of " +
                (all.size() > 1 ? "any profile" : std::string("profile ") + all[0].profile->name) +
                " fits '" + name + "'");
}

WhyAnswers Ask(const WhyOptions &options, const Profile &profile) {
    RunOptions run = options.run;
    run.profile = profile.name;
    const Trials trials(run);
    WhyAnswers out{&profile, trials.AsItIs().sensors.size(), RowsOf(profile).size(), {}, {}, {}};
    for (const std::string &name : options.names)
        HasWildcard(name) ? AddPattern(trials, name, out) : AddName(trials, name, out);
    if (options.dropped)
        for (const Row &row : RowsOf(profile))
            if (!HasSensor(trials.AsItIs(), row))
                out.absent.emplace_back(row.name, WhyAbsent(trials, row, std::nullopt));
    return out;
}

// ---- bytes by their fields --------------------------------------------------------------------------------------

NamedBytes FieldsOf(const Present &present, const Asked &asked) {
    return Named(asked.record_bytes, asked.entry_bytes,
                 ExplainRecord(present.sensor, Decoder().Decode(present.sensor)),
                 ExplainEntry(present.sensor));
}

// ---- text -------------------------------------------------------------------------------------------------------

std::string RowText(const Row &row, const Profile &profile) {
    return WordLine("row", RowPlace(row) + ", row " + std::to_string(row.place) + " of " +
                               std::to_string(RowsOf(profile).size()) + " of the profile") +
           WordLine("kind", KindName(row) + ", " + KindPlace(row)) +
           WordLine("group", std::string(row.Words().pcName) + ": " + row.Words().pcWords) +
           WordLine("logs as", row.function.empty() ? "the driver" : row.function);
}

std::string RenderPresent(const WhyAnswers &answers, const Present &present, bool colour) {
    std::string out = Paint(NameOf(present.sensor), Style::kBold, colour) + ": in the set of " +
                      answers.profile->name + ", sensor " + std::to_string(present.sensor.ordinal) + " of " +
                      std::to_string(answers.sensors) + "\n" + RowText(*present.row, *answers.profile);
    for (const Asked &asked : present.asked)
        out += AskedText(asked, SetsText(FieldsOf(present, asked)));
    return out + (present.asked.empty() ? WordLine("asked", "nothing: every board has it") : "");
}

std::string BuiltText(std::vector<std::string> names) {
    const size_t more = names.size() > kMostNames ? names.size() - kMostNames : 0;
    names.resize(names.size() - more);
    return Join(names, ", ") + (more != 0 ? " and " + std::to_string(more) + " more" : "");
}

std::string RenderAbsent(const WhyAnswers &answers, const std::string &name, const Absent &absent,
                         bool colour) {
    std::string out = Paint(name, Style::kBold, colour) + ": not in the set of " + answers.profile->name +
                      " (" + Word(absent.cause) + ")\n" + RowText(*absent.row, *answers.profile);
    out += WordLine("why", absent.text) + WordLine("log", absent.line);
    for (const Asked &asked : absent.decided_by)
        out += AskedText(asked, "");
    return out + WordLine("tried", absent.tried) + WordLine("built", BuiltText(absent.built));
}

std::string RenderElsewhere(const WhyAnswers &answers, const std::string &name, bool colour) {
    return Paint(name, Style::kBold, colour) + ": no row of profile " + answers.profile->name +
           " makes it\n" + WordLine("has it", Join(ProfilesWith(name), ", "));
}

std::string RenderNames(const WhyAnswers &answers, bool colour) {
    std::vector<std::string> parts;
    for (const Present &present : answers.present)
        parts.push_back(RenderPresent(answers, present, colour));
    for (const auto &[name, absent] : answers.absent)
        parts.push_back(RenderAbsent(answers, name, absent, colour));
    for (const std::string &name : answers.elsewhere)
        parts.push_back(RenderElsewhere(answers, name, colour));
    return Join(parts, "\n");
}

std::string FromText(const Absent &absent) {
    std::vector<std::string> places;
    for (const Asked &asked : absent.decided_by)
        if (!asked.from.empty() && std::find(places.begin(), places.end(), asked.from) == places.end())
            places.push_back(asked.from);
    return Join(places, "; ");
}

std::string RenderDropped(const WhyAnswers &answers, const std::string &board, bool colour) {
    Table table({{"LINE", true}, {"NAME"}, {"CAUSE"}, {"WHY"}, {"FROM"}});
    for (const auto &[name, absent] : answers.absent)
        table.Add({{std::to_string(absent.row->line), Style::kDim},
                   {name, Style::kBold},
                   {Word(absent.cause)},
                   {absent.text},
                   {FromText(absent)}});
    const std::string rows = answers.absent.empty() ? "" : table.Render(colour) + "\n";
    return rows + std::to_string(answers.absent.size()) + " of " + std::to_string(answers.rows) +
           " rows of " + RowsOf(*answers.profile).front().file + " gave nothing, board " + board + "\n";
}

// ---- JSON -------------------------------------------------------------------------------------------------------

Json PresentJson(const Present &present) {
    Json out{{"name", NameOf(present.sensor)},
             {"in_set", true},
             {"ordinal", present.sensor.ordinal},
             {"row", RowJson(*present.row)},
             {"asked", Json::array()}};
    for (const Asked &asked : present.asked) {
        Json one = AskedJson(asked);
        one["of_group"] = asked.of_group;
        const NamedBytes bytes = FieldsOf(present, asked);
        one["record_bytes"] = BytesJson(bytes.record);
        one["entry_bytes"] = BytesJson(bytes.entry);
        one["gone_when"] = asked.gone_when;
        out["asked"].push_back(std::move(one));
    }
    return out;
}

Json AbsentJson(const std::string &name, const Absent &absent) {
    Json out{{"name", name},
             {"in_set", false},
             {"cause", Word(absent.cause)},
             {"text", absent.text},
             {"log", absent.line},
             {"tried", absent.tried},
             {"built", absent.built},
             {"row", RowJson(*absent.row)},
             {"decided_by", Json::array()}};
    for (const Asked &asked : absent.decided_by)
        out["decided_by"].push_back(AskedJson(asked));
    return out;
}

Json AnswersJson(const WhyAnswers &answers) {
    Json out{{"name", answers.profile->name},
             {"id", answers.profile->id},
             {"count", answers.sensors},
             {"rows", answers.rows},
             {"sensors", Json::array()}};
    for (const Present &present : answers.present)
        out["sensors"].push_back(PresentJson(present));
    for (const auto &[name, absent] : answers.absent)
        out["sensors"].push_back(AbsentJson(name, absent));
    for (const std::string &name : answers.elsewhere)
        out["sensors"].push_back(
            {{"name", name}, {"in_set", false}, {"cause", "no row"}, {"profiles", ProfilesWith(name)}});
    return out;
}

// ---- the command ------------------------------------------------------------------------------------------------

void CheckWhyOptions(const WhyOptions &options) {
    if (options.dropped + !options.names.empty() + !options.description.empty() != 1)
        throw InputError("why: give one or more names, or --dropped, or --description");
}

std::string Render(const WhyOptions &options, const std::vector<WhyAnswers> &all) {
    std::string out;
    const bool colour = ColourWanted();
    for (const WhyAnswers &answers : all)
        out +=
            (out.empty() ? "" : "\n") + (options.dropped ? RenderDropped(answers, options.run.board, colour)
                                                         : RenderNames(answers, colour));
    return out;
}

void Why(const WhyOptions &options) {
    CheckWhyOptions(options);
    if (!options.description.empty())
        return WhyDescription(options);
    const std::vector<const Profile *> profiles =
        options.run.profile == "all"
            ? ProfilesWithDriver()
            : std::vector{&FindProfile(SettledProfile(options.run.profile, options.run.board))};
    CheckNames(options.names, profiles);
    std::vector<WhyAnswers> all;
    for (const Profile *profile : profiles)
        all.push_back(Ask(options, *profile));
    CheckPatterns(options.names, all);
    if (options.json) {
        Json out{{"board", options.run.board}, {"profiles", Json::array()}};
        for (const WhyAnswers &answers : all)
            out["profiles"].push_back(AnswersJson(answers));
        PrintOut(Dump(out));
    } else {
        PrintOut(Render(options, all));
    }
    const bool missing = std::any_of(all.begin(), all.end(), [](const WhyAnswers &answers) {
        return !answers.absent.empty() || !answers.elsewhere.empty();
    });
    if (missing && !options.dropped)
        throw ExitStatus(kNoSet);
}

} // namespace

void AddWhyCommand(Command &program) {
    Command command = program.AddCommand("why", "Why a sensor is in a board's set, or why it is not");
    const auto options = std::make_shared<WhyOptions>();
    AddBoardOption(command, options->run.board, "Board description (TOML)").Required();
    AddProfileOption(command, options->run.profile,
                     "Customer profile: " + AvailableProfiles() + ", or all; default: the board's");
    command.AddOption("NAME", options->names, "Sensor names, or patterns such as 'PSU_*_01'")
        .Takes("")
        .Completes(CompleteSensors);
    command.AddFlag("--dropped", options->dropped,
                    "Every row of the profile that gave no sensor, with the reason");
    command
        .AddOption("--description", options->description,
                   "A sensor that comes at run time, as add takes it, instead of names")
        .Takes("FILE");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(
        "Exit status: 0 all of them are in the set (or added), or --dropped; 1 one is not; 2 wrong input, among\n"
        "it a name that no profile has.");
    command.Example("oxa-sensors why --board boards/two_socket_2u.toml FAN_STATUS_03");
    command.Runs([options] { Why(*options); });
}

} // namespace workbench
