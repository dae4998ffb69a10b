// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/list_columns.h"
#include "commands/list_options.h"
#include "sets/active.h"
#include "sets/aside.h"
#include "sets/decode.h"
#include "sets/run_options.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

std::string Summary(const StaticSet &set, const std::vector<ListLine> &lines) {
    size_t full = 0;
    for (const ListLine &line : lines)
        full += line.decoded.kind == RecordKind::kFull;
    const std::string of =
        lines.size() == set.sensors.size() ? "" : " of " + std::to_string(set.sensors.size());
    return std::to_string(lines.size()) + of +
           (lines.size() == 1 && of.empty() ? " sensor (" : " sensors (") + std::to_string(full) + " full, " +
           std::to_string(lines.size() - full) + " compact), " + OriginText(set) + "\n" + AsideLine(set);
}

// Of the table that is as wide as the terminal.
std::string LeftOut(const std::vector<const ListColumn *> &shown, size_t width) {
    std::vector<std::string> out;
    for (const ListColumn &column : ListColumns())
        if (std::find(shown.begin(), shown.end(), &column) == shown.end())
            out.push_back(column.name);
    return out.empty() ? ""
                       : "left out in " + std::to_string(width) + " columns: " + Join(out, ", ") +
                             " (--columns chooses)\n";
}

// Records that are no sensors are told where the whole source is.
std::string AsideTable(const ListOptions &options, const StaticSet &set) {
    if (set.aside.empty() || !options.filter.empty())
        return "";
    Table table({{"ID", true}, {"NAME"}, {"SET ASIDE"}, {"WHAT"}});
    for (const AsideRecord &record : set.aside)
        table.Add({{std::to_string(record.record_id), Style::kDim},
                   {record.name.empty() ? "-" : record.name, Style::kBold},
                   {record.kind},
                   {record.what}});
    return table.Render(ColourWanted()) + "\n";
}

std::string ActiveTextOf(const StaticSet &set, const std::vector<ListLine> &lines) {
    std::vector<Decoded> decoded;
    for (const ListLine &line : lines)
        decoded.push_back(line.decoded);
    const std::string text = ActiveText(decoded, set.Label());
    return text.empty() ? "" : text + "\n";
}

std::string RenderTable(const ListOptions &options, const StaticSet &set,
                        const std::vector<ListLine> &lines) {
    const size_t width = options.columns.empty() ? TerminalWidth() : 0;
    const auto columns = width != 0 ? FittingColumns(lines, width) : ChosenColumns(options.columns);
    Table table = ListTable(columns, lines);
    if (!options.no_header)
        return table.Render(ColourWanted()) + "\n" + AsideTable(options, set) + ActiveTextOf(set, lines) +
               Summary(set, lines) + (width != 0 ? LeftOut(columns, width) : "");
    table.WithoutHeader();
    return table.Render(ColourWanted());
}

std::string RenderJson(const StaticSet &set, const std::vector<ListLine> &lines) {
    Json out = SetJson(set);
    out["sensors"] = Json::array();
    for (const ListLine &line : lines)
        out["sensors"].push_back(SensorJson(*line.sensor, line.decoded));
    return Dump(out);
}

void Settle(const ListOptions &options) {
    ChosenColumns(options.columns);
    if (options.json && (!options.columns.empty() || options.no_header))
        throw InputError("--columns and --no-header are about the table; --json has none");
    if (options.run.profile == "all" && !options.from.empty())
        throw InputError("--profile all counts the sets of a board; --from is another source");
    if (options.run.profile == "all" && (!options.columns.empty() || !options.sort.empty()))
        throw InputError("--columns and --sort are about sensors; --profile all counts them");
}

void List(const ListOptions &options) {
    Settle(options);
    if (options.run.profile == "all" && !options.run.board.empty())
        return ListAll(options);
    const StaticSet set = LoadSource(options, "list").set;
    std::vector<ListLine> lines = SelectSensors(set, options.filter);
    if (!options.sort.empty())
        SortLines(lines, options.sort);
    if (options.reverse)
        std::reverse(lines.begin(), lines.end());
    PrintOut(options.json ? RenderJson(set, lines) : RenderTable(options, set, lines));
}

} // namespace

void AddListCommand(Command &program) {
    Command command =
        program.AddCommand("list", "One line per sensor of a board's set, of a file or of a BMC, decoded");
    const auto options = std::make_shared<ListOptions>();
    AddSourceOptions(command, *options, "; all: counts of every profile");
    AddFilterOption(command, options->filter);
    std::vector<std::string> names;
    for (const ListColumn &column : ListColumns())
        names.push_back(column.name);
    command
        .AddOption("--columns", options->columns,
                   "Columns to show, with commas between: " + Join(names, ", ") +
                       "; default: those that fit into the terminal")
        .Takes("LIST")
        .Completes([names](const GivenWords &) { return names; });
    command.AddOption("--sort", options->sort, "Sort by a column; sensors without a value come last")
        .Takes("COLUMN")
        .OneOf(names);
    command.AddFlag("--reverse", options->reverse, "The last line first");
    command.AddFlag("--no-header", options->no_header, "Lines of sensors only, no header and no summary");
    command.AddFlag("--json", options->json, "JSON with raw and decoded values");
    command.Example("oxa-sensors list --board boards/base_48.toml --columns name,uc --sort uc --no-header");
    command.Runs([options] { List(*options); });
}

} // namespace workbench
