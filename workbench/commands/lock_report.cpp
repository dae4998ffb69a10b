// SPDX-License-Identifier: GPL-3.0-or-later
//
// lock --check: the differences, then what they mean, as text, annotations, Markdown and JSON.
#include <algorithm>

#include "base/json.h"
#include "base/markup.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/lock.h"

namespace workbench {
namespace {

constexpr size_t kNamesInDrift = 6;

std::string Where(const Drift &drift) {
    if (drift.what == "board" || drift.what == "table")
        return "";
    const std::string boards =
        drift.boards.size() > 3 ? std::to_string(drift.boards.size()) + " boards" : Join(drift.boards, ", ");
    return drift.names.size() <= 1 ? boards : boards + "; " + std::to_string(drift.count) + " records";
}

// One line of text without columns: "default INPUT_TEMP: UC 50 °C -> 48 °C (11 boards)".
std::string Sentence(const Drift &drift) {
    std::vector<std::string> head;
    for (const std::string &word : {drift.profile, drift.subject})
        if (!word.empty())
            head.push_back(word);
    const std::string where = Where(drift);
    return drift.what + " " + Join(head, " ") + ": " + drift.text + (where.empty() ? "" : " (" + where + ")");
}

// ---- what it means ---------------------------------------------------------------------------------------

struct MeaningLine {
    const char *key;  // of JSON
    const char *text; // followed by profiles and names
    const NamesByProfile DriftMeaning::*names;
};
constexpr MeaningLine kDriftMeanings[] = {
    {"thresholds_dropped", "Stored user thresholds that are not found again (name and readable mask)",
     &DriftMeaning::dropped},
    {"thresholds_read_otherwise", "Stored user thresholds whose bytes are other values now",
     &DriftMeaning::read_anew},
    {"thresholds_in_force", "Stored user thresholds stay in force over the changed limits",
     &DriftMeaning::outranked},
    {"names_gone", "Names that monitoring may ask for and that are gone", &DriftMeaning::names_gone},
    {"names_read_otherwise", "Names that stay and are read otherwise", &DriftMeaning::new_meaning},
};

std::string MeaningText(const NamesByProfile &names) {
    std::vector<std::string> parts;
    for (const auto &[profile, list] : names)
        parts.push_back(profile + " " + NamesText({list.begin(), list.end()}, kNamesInDrift));
    return parts.empty() ? "none" : Join(parts, "; ");
}

std::vector<std::string> MeaningLines(const LockReport &report, bool empty_too) {
    std::vector<std::string> out;
    for (const MeaningLine &line : kDriftMeanings)
        if (const NamesByProfile &names = report.comparison.meaning.*line.names; empty_too || !names.empty())
            out.push_back(std::string(line.text) + ": " + MeaningText(names));
    return out;
}

std::string RenewCommand(const LockReport &report) {
    return "oxa-sensors lock --boards " + report.boards + " -o " + report.lock;
}

std::string Summary(const LockReport &report) {
    const LockComparison &c = report.comparison;
    const std::string built = std::to_string(c.sensors) + " sensors of " + std::to_string(c.sets) + " sets";
    if (c.drifts.empty())
        return report.lock + ": " + built + " are as locked";
    return report.lock + ": " + std::to_string(c.drifts.size()) +
           (c.drifts.size() == 1 ? " difference; " : " differences; ") + built + " are built now";
}

// ---- text ------------------------------------------------------------------------------------------------

Style StyleOf(const Drift &drift) {
    return drift.what == "added" || drift.what == "board" ? Style::kPlain
           : drift.what == "changed"                      ? Style::kWarm
                                                          : Style::kHot;
}

std::string TableText(const LockReport &report) {
    Table table({{"WHAT"}, {"PROFILE"}, {"SENSOR"}, {"CHANGE"}, {"WHERE"}});
    for (const Drift &d : report.comparison.drifts)
        table.Add({{d.what, StyleOf(d)},
                   {d.profile.empty() ? "-" : d.profile},
                   {d.subject, Style::kBold},
                   {d.text},
                   {Where(d), Style::kDim}});
    return table.Render(ColourWanted());
}

// ---- github ----------------------------------------------------------------------------------------------

std::string Annotation(const LockReport &report, const char *level, size_t line, const std::string &text) {
    return std::string("::") + level + " file=" + GithubText(report.lock, true) +
           (line == 0 ? "" : ",line=" + std::to_string(line)) + ",title=Sensors::" + GithubText(text) + "\n";
}

Json ByProfileJson(const NamesByProfile &names) {
    Json out = Json::object();
    for (const auto &[profile, list] : names)
        out[profile] = list;
    return out;
}

} // namespace

std::string LockAsText(const LockReport &report) {
    if (report.comparison.drifts.empty())
        return Summary(report) + "\n";
    return TableText(report) + "\n" + Summary(report) + "\n" + Join(MeaningLines(report, true), "\n") +
           "\nIf all of it is meant: " + RenewCommand(report) + "\n";
}

std::string LockForGithub(const LockReport &report) {
    std::string out;
    for (const Drift &drift : report.comparison.drifts)
        out += Annotation(report, "error", drift.line, Sentence(drift));
    for (const std::string &line : MeaningLines(report, false))
        out += Annotation(report, "warning", 0, line);
    if (!out.empty())
        out += Annotation(report, "notice", 0, "If all of it is meant: " + RenewCommand(report));
    return out + Summary(report) + "\n";
}

std::string LockAsMarkdown(const LockReport &report) {
    std::string out = "### Sensors\n\n" + MarkdownText(Summary(report)) + "\n";
    if (report.comparison.drifts.empty())
        return out;
    out += "\n| what | profile | sensor | change | where |\n|---|---|---|---|---|\n";
    for (const Drift &d : report.comparison.drifts)
        out += "| " + d.what + " | " + MarkdownText(d.profile) + " | " + MarkdownText(d.subject) + " | " +
               MarkdownText(d.text) + " | " + MarkdownText(Where(d)) + " |\n";
    out += "\n";
    for (const std::string &line : MeaningLines(report, true))
        out += "- " + MarkdownText(line) + "\n";
    return out + "\nIf all of it is meant: `" + RenewCommand(report) + "`\n";
}

std::string LockAsJson(const LockReport &report) {
    Json out{{"lock", report.lock},
             {"boards", report.boards},
             {"sets", report.comparison.sets},
             {"sensors", report.comparison.sensors},
             {"differences", Json::array()}};
    for (const Drift &d : report.comparison.drifts)
        out["differences"].push_back({{"what", d.what},
                                      {"profile", d.profile.empty() ? Json(nullptr) : Json(d.profile)},
                                      {"subject", d.subject},
                                      {"text", d.text},
                                      {"names", d.names},
                                      {"boards", d.boards},
                                      {"records", d.count},
                                      {"line", d.line == 0 ? Json(nullptr) : Json(d.line)}});
    for (const MeaningLine &line : kDriftMeanings)
        out[line.key] = ByProfileJson(report.comparison.meaning.*line.names);
    return Dump(out);
}

} // namespace workbench
