// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "explain/explain.h"
#include "sets/active.h"
#include "sets/aside.h"
#include "sets/board.h"
#include "sets/decode.h"
#include "sets/run_options.h"
#include "sets/select.h"
#include "sets/set_json.h"
#include "sources/source.h"

namespace workbench {
namespace {

constexpr unsigned kBytesPerLine = 8;
constexpr size_t kMeaningWidth = 76;

struct ShowOptions : SourceOptions {
    bool json = false;
    std::vector<std::string> names;
};

std::string OffsetText(unsigned offset, unsigned size) {
    return size > 1 ? std::to_string(offset) + "-" + std::to_string(offset + size - 1)
                    : std::to_string(offset);
}

std::string HexLine(const Field &field, std::span<const uint8_t> bytes, unsigned line) {
    const unsigned from = line * kBytesPerLine;
    if (from >= field.size)
        return "";
    return HexBytes(bytes.subspan(field.offset + from, std::min(kBytesPerLine, field.size - from)));
}

// The meaning, long lines wrapped; what set the byte stands behind it where there is room.
std::vector<std::string> Words(const Field &field) {
    std::vector<std::string> out;
    for (const std::string &line : field.meaning)
        for (std::string &part : Wrap(line, kMeaningWidth))
            out.push_back(std::move(part));
    if (field.set_by.empty())
        return out;
    const std::string origin = "= " + field.set_by;
    if (!out.empty() && out.back().size() + 2 + origin.size() <= kMeaningWidth)
        out.back() += "  " + origin;
    else
        out.push_back(origin);
    return out;
}

void AddField(const Field &field, std::span<const uint8_t> bytes, Table &table) {
    const std::vector<std::string> words = Words(field);
    const size_t hex_lines = (field.size + kBytesPerLine - 1) / kBytesPerLine;
    for (unsigned line = 0; line < std::max(words.size(), hex_lines); ++line)
        table.Add({{line == 0 ? OffsetText(field.offset, field.size) : "", Style::kDim},
                   {HexLine(field, bytes, line)},
                   {line == 0 ? field.name : "", Style::kBold},
                   {line < words.size() ? words[line] : ""}});
}

std::string RenderFields(const std::vector<Field> &fields, std::span<const uint8_t> bytes, bool colour) {
    Table table({{"BYTE", true}, {"HEX"}, {"FIELD"}, {"MEANING"}});
    for (const Field &field : fields)
        AddField(field, bytes, table);
    return table.Render(colour);
}

std::string Whose(const StaticSet &set) {
    if (set.board.empty())
        return OriginText(set);
    const std::string board = NameBehind(BoardOf(set.board).board, set.board);
    return std::string("profile ") + set.profile->name + (board.empty() ? "" : ", board" + board);
}

std::string InForce(const Decoded &sensor) {
    const auto lines = ActiveLines(sensor);
    return lines.empty() ? "the record's thresholds" : Join(lines, "\n          ");
}

// A record that is no sensor's: what is known of it, and its bytes.
std::string RenderAside(const AsideRecord &record) {
    std::string out = (record.name.empty() ? "-" : record.name) + ": " + record.kind + " of " +
                      std::to_string(record.bytes.size()) + " bytes, record " +
                      std::to_string(record.record_id) + (record.what.empty() ? "" : ", " + record.what) +
                      "\n\n";
    constexpr size_t kPerLine = 16;
    const std::span<const uint8_t> bytes(record.bytes);
    for (size_t at = 0; at < bytes.size(); at += kPerLine)
        out += "  " + HexBytes(bytes.subspan(at, std::min(kPerLine, bytes.size() - at))) + "\n";
    return out;
}

bool MeansASensor(const StaticSet &set, const std::string &word) {
    try {
        return !SelectSensors(set, {word}).empty();
    } catch (const InputError &) {
        return false;
    }
}

// The records that are no sensors and that a word means; words that mean nothing else are taken away.
std::vector<const AsideRecord *> TakeAside(const StaticSet &set, std::vector<std::string> &wanted) {
    std::vector<const AsideRecord *> out;
    for (const AsideRecord &record : set.aside)
        if (!record.name.empty() &&
            std::any_of(wanted.begin(), wanted.end(),
                        [&record](const std::string &word) { return IsMeant(record.name, word); }))
            out.push_back(&record);
    std::erase_if(wanted, [&](const std::string &word) {
        return std::any_of(out.begin(), out.end(),
                           [&word](const auto *one) { return IsMeant(one->name, word); }) &&
               !MeansASensor(set, word);
    });
    return out;
}

std::string RenderSensor(const StaticSet &set, const Selected &found, bool colour) {
    const Sensor &sensor = *found.sensor;
    std::string out = Paint(found.decoded.name, Style::kBold, colour) + ": " + KindText(found.decoded.kind) +
                      " record of " + std::to_string(RecordSize(sensor.record)) + " bytes, sensor " +
                      std::to_string(sensor.ordinal) + " of " + std::to_string(set.sensors.size()) + ", " +
                      Whose(set) + "\n\n";
    out += "Record\n" + RenderFields(ExplainRecord(sensor, found.decoded), sensor.record, colour);
    if (sensor.active)
        out += "\nIn force: " + InForce(found.decoded) + "\n";
    if (sensor.has_entry)
        out += "\nDevice-table entry\n" + RenderFields(ExplainEntry(sensor), sensor.entry, colour);
    return out;
}

Json FieldsJson(const std::vector<Field> &fields, std::span<const uint8_t> bytes) {
    Json out = Json::array();
    for (const Field &f : fields) {
        Json field{{"offset", f.offset},
                   {"size", f.size},
                   {"bytes", HexBytes(bytes.subspan(f.offset, f.size))},
                   {"field", f.name},
                   {"meaning", f.meaning}};
        field["set_by"] = f.set_by.empty() ? Json(nullptr) : Json(f.set_by);
        out.push_back(std::move(field));
    }
    return out;
}

std::string DetailsJson(const StaticSet &set, const std::vector<Selected> &found) {
    Json out = SetJson(set);
    out["sensors"] = Json::array();
    for (const Selected &f : found) {
        Json sensor = SensorJson(*f.sensor, f.decoded);
        sensor["record_fields"] = FieldsJson(ExplainRecord(*f.sensor, f.decoded), f.sensor->record);
        sensor["entry_fields"] =
            f.sensor->has_entry ? FieldsJson(ExplainEntry(*f.sensor), f.sensor->entry) : Json(nullptr);
        out["sensors"].push_back(std::move(sensor));
    }
    return Dump(out);
}

void Show(const ShowOptions &options) {
    const StaticSet set = LoadSource(options, "show").set;
    std::vector<std::string> names = options.names;
    const std::vector<const AsideRecord *> aside = TakeAside(set, names);
    const std::vector<Selected> found = names.empty() ? std::vector<Selected>() : SelectSensors(set, names);
    if (options.json)
        return PrintOut(DetailsJson(set, found));
    std::string out;
    const bool colour = ColourWanted();
    for (const Selected &f : found) {
        out += out.empty() ? "" : "\n";
        out += RenderSensor(set, f, colour);
    }
    for (const AsideRecord *record : aside)
        out += (out.empty() ? "" : "\n") + RenderAside(*record);
    PrintOut(out);
}

} // namespace

void AddShowCommand(Command &program) {
    Command command = program.AddCommand("show", "Every byte of a sensor's record and device-table entry");
    const auto options = std::make_shared<ShowOptions>();
    AddSourceOptions(command, *options);
    command.AddOption("NAME", options->names, "Sensor names, or patterns such as 'PSU_*_01', in any case")
        .Required()
        .Takes("")
        .Completes(CompleteSensors);
    command.AddFlag("--json", options->json, "JSON with the fields of record and entry");
    command.Example("oxa-sensors show --board boards/base_48.toml INPUT_TEMP 'cpu_volts_*'");
    command.Runs([options] { Show(*options); });
}

} // namespace workbench
