// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/list_options.h"
#include "sets/board.h"
#include "sets/decode.h"
#include "sets/run_options.h"
#include "sets/sensor_table.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

struct Line {
    const Sensor *sensor;
    Decoded decoded;
};

std::vector<Line> SelectLines(const StaticSet &set, const std::string &filter) {
    const Decoder decoder;
    std::vector<Line> out;
    for (const Sensor &sensor : set.sensors) {
        Decoded decoded = decoder.Decode(sensor);
        if (filter.empty() || MatchesGlob(decoded.name, filter))
            out.push_back({&sensor, std::move(decoded)});
    }
    return out;
}

Style ThresholdStyle(const std::string &key) {
    if (key == "LNC" || key == "UNC")
        return Style::kWarm;
    return Style::kHot;
}

void AddThresholds(const Decoded &d, std::vector<Cell> &row) {
    for (size_t i = 0; i < 6; ++i)
        if (i < d.thresholds.size() && d.thresholds[i].readable)
            row.push_back({FormatNumber(d.thresholds[i].value), ThresholdStyle(d.thresholds[i].key)});
        else
            row.push_back({"-", Style::kDim});
}

std::vector<Cell> Row(const Line &line) {
    const Decoded &d = line.decoded;
    std::vector<Cell> row = {{std::to_string(line.sensor->ordinal), Style::kDim},
                             {d.name, Style::kBold},
                             {KindText(d.kind)},
                             {d.sensor_type_text},
                             {d.entity_text},
                             {Hex(line.sensor->record[SDR_ENTITY_INSTANCE])},
                             {ReadingText(d), d.reading ? Style::kPlain : Style::kDim}};
    AddThresholds(d, row);
    row.push_back({DeviceText(line.sensor->entry)});
    return row;
}

std::string Summary(const StaticSet &set, const std::vector<Line> &lines) {
    size_t full = 0;
    for (const Line &line : lines)
        full += line.decoded.kind == RecordKind::kFull;
    const std::string of =
        lines.size() == set.sensors.size() ? "" : " of " + std::to_string(set.sensors.size());
    return std::to_string(lines.size()) + of +
           (lines.size() == 1 && of.empty() ? " sensor (" : " sensors (") + std::to_string(full) + " full, " +
           std::to_string(lines.size() - full) + " compact), profile " + set.profile->name + ", board " +
           BoardText(set.board) + "\n";
}

std::string RenderTable(const StaticSet &set, const std::vector<Line> &lines) {
    std::vector<Column> columns = SensorColumns("#");
    columns.push_back({"DEVICE"});
    Table table(std::move(columns));
    for (const Line &line : lines)
        table.Add(Row(line));
    return table.Render(ColourWanted()) + "\n" + Summary(set, lines);
}

std::string RenderJson(const StaticSet &set, const std::vector<Line> &lines) {
    Json out = SetJson(set);
    out["sensors"] = Json::array();
    for (const Line &line : lines)
        out["sensors"].push_back(SensorJson(*line.sensor, line.decoded));
    return Dump(out);
}

void List(const ListOptions &options) {
    if (options.run.profile == "all")
        return ListAll(options);
    const StaticSet set = BuildStaticSet(options.run);
    const std::vector<Line> lines = SelectLines(set, options.filter);
    PrintOut(options.json ? RenderJson(set, lines) : RenderTable(set, lines));
}

} // namespace

void AddListCommand(Command &program) {
    Command command = program.AddCommand("list", "One line per sensor of a board's set, decoded");
    const auto options = std::make_shared<ListOptions>();
    AddRunOptions(command, options->run, "; all: counts of every profile");
    command.AddOption("-f,--filter", options->filter, "Only sensors whose name matches, e.g. 'CPU_*'")
        .Takes("GLOB");
    command.AddFlag("--json", options->json, "JSON with raw and decoded values");
    command.Runs([options] { List(*options); });
}

} // namespace workbench
