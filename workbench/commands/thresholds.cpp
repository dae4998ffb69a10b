// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors thresholds: the command line of its three commands, and show.

#include <memory>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/thresholds.h"
#include "oxa/platform.h"
#include "sets/run_options.h"
#include "sets/sensor_table.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

constexpr const char *kShowFooter = "Exit status: 0 done; 2 no image, or a damaged one.";
constexpr const char *kSetFooter =
    "Values are raw bytes, or with --board in the sensor's units. Without --mask the entry's mask gains the\n"
    "thresholds that are given; with --board it is the record's readable mask.\n"
    "Exit status: 0 done; 2 wrong input (nothing is written).";
constexpr const char *kPreflightFooter =
    "Exit status: 0 every entry applies; 1 some are refused, orphaned or dropped; 2 wrong input, or a "
    "board that has no set.";

// ---- show ------------------------------------------------------------------------------------------

// What keeps the overlay from using an entry, whatever the record; empty for nothing.
std::string EntryNote(const ThresholdImage &image, size_t index) {
    const StoredThresholds &entry = image.entries[index];
    if (const auto first = image.Find(entry.name); *first != index)
        return "never found: entry " + std::to_string(*first + 1) + " has the same name";
    if (const std::string fault = OrderFault(entry.mask, entry.six); !fault.empty())
        return "never applied: " + fault;
    return "";
}

std::vector<Cell> EntryRow(const ThresholdImage &image, size_t index) {
    const StoredThresholds &entry = image.entries[index];
    std::vector<Cell> row = {
        {std::to_string(index + 1), Style::kDim}, {entry.name, Style::kBold}, {MaskText(entry.mask)}};
    for (const ThresholdPlace &place : kThresholdPlaces)
        if (entry.Has(place))
            row.push_back({std::to_string(entry.six[place.index])});
        else
            row.push_back({"-", Style::kDim});
    row.push_back({HexBytes(entry.further)});
    row.push_back({EntryNote(image, index), Style::kHot});
    return row;
}

std::string RenderText(const std::string &file, const ThresholdImage &image) {
    std::vector<Column> columns = {{"#", true}, {"NAME"}, {"MASK"}};
    AddLimitColumns(columns);
    columns.insert(columns.end(), {{"FURTHER"}, {"NOTE"}});
    Table table(std::move(columns));
    for (size_t i = 0; i < image.entries.size(); ++i)
        table.Add(EntryRow(image, i));
    return file + ": saved under " + SavedUnder(image.custom_id) + ", " +
           std::to_string(image.entries.size()) + " of " + std::to_string(SENSOR_MAX_COUNT) +
           " entries, raw values\n" + (image.entries.empty() ? "" : "\n" + table.Render(ColourWanted()));
}

std::string RenderJson(const std::string &file, const ThresholdImage &image) {
    Json out{{"file", file},
             {"saved_under", ProfileJson(image.custom_id)},
             {"count", image.entries.size()},
             {"entries", Json::array()}};
    for (size_t i = 0; i < image.entries.size(); ++i) {
        Json entry = StoredJson(image.entries[i]);
        const std::string note = EntryNote(image, i);
        entry["note"] = note.empty() ? Json(nullptr) : Json(note);
        out["entries"].push_back(std::move(entry));
    }
    return Dump(out);
}

// ---- the command line ------------------------------------------------------------------------------

void AddRecordOptions(Command &command, RecordOptions &records, bool board_required) {
    AddBoardOption(command, records.board, "Board description (TOML) whose records are looked at")
        .Required(board_required);
    AddProfileOption(
        command, records.profile,
        "Customer profile of the machine; default: the board's, else the one that FILE was saved "
        "under, else default");
    command
        .AddOption(
            "--description", records.descriptions,
            "Besides the static set a sensor that is added at run time (TOML); several times for several")
        .Takes("FILE")
        .OneValueEach();
    AddTraceOptions(command, records.trace, records.log);
}

void AddShow(Command &group) {
    Command command = group.AddCommand("show", "The entries of a file, decoded");
    const auto options = std::make_shared<ThresholdsShowOptions>();
    command.AddOption("FILE", options->file, "Threshold image (14,344 bytes)").Required().Takes("");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(kShowFooter);
    command.Example("oxa-sensors thresholds show users.dat");
    command.Runs([options] { ShowThresholds(*options); });
}

void AddSet(Command &group) {
    Command command =
        group.AddCommand("set", "Store a sensor's thresholds as the BMC would; makes a missing file");
    const auto options = std::make_shared<ThresholdsSetOptions>();
    command.AddOption("FILE", options->file, "Threshold image to write").Required().Takes("");
    command.AddOption("-s,--sensor", options->sensor, "Sensor name, 1 to 16 characters")
        .Required()
        .Takes("NAME")
        .Completes(CompleteSensors);
    for (const ThresholdPlace &place : kThresholdPlaces)
        command
            .AddOption(std::string("--") + place.option, options->values[place.option],
                       std::string(place.key) + " threshold")
            .Takes("N");
    command.AddOption("--mask", options->mask, "The entry's mask, 0x01 LNC to 0x20 UNR; not with --board")
        .Takes("N");
    command
        .AddOption("--further", options->further,
                   "The two bytes that are stored and not applied; default: as they are, else 0 0")
        .Takes("N N")
        .Values(2);
    command.AddFlag("--raw", options->raw, "Values are raw bytes also with --board");
    AddRecordOptions(command, options->records, false);
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(kSetFooter);
    command.Example(
        "oxa-sensors thresholds set users.dat --board boards/base_48.toml --sensor INPUT_TEMP --uc 51");
    command.Runs([options] { SetThresholds(*options); });
}

void AddPreflight(Command &group) {
    Command command = group.AddCommand(
        "preflight",
        "Which entries apply to a board's records, which are refused and why, which are orphaned");
    const auto options = std::make_shared<ThresholdsPreflightOptions>();
    command.AddOption("FILE", options->file, "Threshold image").Required().Takes("");
    AddRecordOptions(command, options->records, true);
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(kPreflightFooter);
    command.Example("oxa-sensors thresholds preflight users.dat --board boards/base_48.toml");
    command.Runs([options] {
        if (const int status = PreflightThresholds(*options); status != kOk)
            throw ExitStatus(status);
    });
}

} // namespace

FileBytes ReadExistingThresholdFile(const std::string &path) {
    auto bytes = ReadThresholdFile(path);
    if (!bytes)
        throw InputError(path + ": no such file; 'oxa-sensors thresholds set' makes one");
    return *bytes;
}

void ShowThresholds(const ThresholdsShowOptions &options) {
    const ThresholdImage image = ParseThresholdImage(options.file, ReadExistingThresholdFile(options.file));
    PrintOut(options.json ? RenderJson(options.file, image) : RenderText(options.file, image));
}

void AddThresholdsCommand(Command &program) {
    Command group = program.AddCommand("thresholds", "Show, set and try a file of user thresholds");
    group.NeedsCommand();
    group.Footer("Exit status: 0 done; 1 preflight: not every entry applies; 2 wrong input.");
    group.Example(
        "oxa-sensors thresholds set users.dat --board boards/base_48.toml --sensor INPUT_TEMP --uc 51");
    AddShow(group);
    AddSet(group);
    AddPreflight(group);
}

} // namespace workbench
