// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/notes.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "sets/decode.h"
#include "sets/run_options.h"
#include "sets/select.h"
#include "sets/set_json.h"
#include "sets/set_numbers.h"
#include "sources/freeipmi_cache.h"
#include "sources/source.h"

namespace workbench {
namespace {

struct ExportOptions : SourceOptions {
    std::string format = "raw"; // raw, json, csv, freeipmi-cache
    std::string output = kStandardOutput;
    bool json = false; // another word for the format
    std::vector<std::string> filter;
    bool keep_ids = false; // leave record ids at 0
    bool number = false;   // give sensor numbers
};

std::string JsonText(const StaticSet &set, const std::vector<Selected> &selected) {
    Json out = SetJson(set);
    out["sensors"] = Json::array();
    for (const Selected &one : selected)
        out["sensors"].push_back(SensorJson(*one.sensor, one.decoded));
    return Dump(out);
}

std::string Quoted(const std::string &text) {
    if (text.find_first_of(",\"\n") == std::string::npos)
        return text;
    std::string out = "\"";
    for (const char c : text)
        out += c == '"' ? std::string("\"\"") : std::string(1, c);
    return out + "\"";
}

constexpr const char *kCsvHeader =
    "ordinal,record_id,name,kind,sensor_number,owner_lun,sensor_type,sensor_type_text,event_type,"
    "event_type_text,entity_id,entity_text,entity_instance,formula,unit,m,b,r_exponent,b_exponent,signed,"
    "lnr,lc,lnc,unc,uc,unr,hysteresis_positive,hysteresis_negative,device_code,device_item,device_index,"
    "scan_flag,bus,address,record,entry\n";

void AddCsvReading(const Decoded &d, std::vector<std::string> &row) {
    if (!d.reading) {
        row.insert(row.end(), 7, "");
    } else {
        const Reading &r = *d.reading;
        row.insert(row.end(),
                   {r.formula, r.unit, std::to_string(r.m), std::to_string(r.b), std::to_string(r.r_exponent),
                    std::to_string(r.b_exponent), r.is_signed ? "1" : "0"});
    }
    for (size_t i = 0; i < 6; ++i)
        row.push_back(
            i < d.thresholds.size() && d.thresholds[i].readable ? FormatNumber(d.thresholds[i].value) : "");
}

std::string CsvRow(const Sensor &sensor, const Decoded &d) {
    const Entry &entry = sensor.entry;
    std::vector<std::string> row = {std::to_string(sensor.ordinal),
                                    std::to_string(d.record_id),
                                    d.name,
                                    KindText(d.kind),
                                    std::to_string(d.sensor_number),
                                    std::to_string(d.owner_lun),
                                    Hex(d.sensor_type),
                                    d.sensor_type_text,
                                    Hex(d.event_type),
                                    d.event_type_text,
                                    Hex(d.entity_id),
                                    d.entity_text,
                                    Hex(sensor.record[SDR_ENTITY_INSTANCE])};
    AddCsvReading(d, row);
    std::vector<std::string> device = {
        Hex(entry[0]), std::to_string(entry[1]), std::to_string(entry[3]), Hex(entry[5]), Hex(entry[6]),
        Hex(entry[7])};
    if (!sensor.has_entry)
        device.assign(device.size(), "");
    row.insert(row.end(), {std::to_string(d.hysteresis_positive), std::to_string(d.hysteresis_negative)});
    row.insert(row.end(), device.begin(), device.end());
    row.insert(row.end(), {HexBytes({sensor.record.data(), RecordSize(sensor.record)}),
                           sensor.has_entry ? HexBytes(entry) : ""});
    for (std::string &field : row)
        field = Quoted(field);
    return Join(row, ",") + "\n";
}

constexpr const char *kCacheFormat = "freeipmi-cache";

std::string CsvText(const std::vector<Selected> &selected) {
    std::string out = kCsvHeader;
    for (const Selected &one : selected)
        out += CsvRow(*one.sensor, one.decoded);
    return out;
}

std::string RawTextOf(const std::vector<Selected> &selected) {
    StaticSet part;
    for (const Selected &one : selected)
        part.sensors.push_back(*one.sensor);
    return RawText(part);
}

std::string Text(const ExportOptions &options, const SourceSet &source) {
    const auto selected =
        SelectSensors(source.set, options.filter); // a record that nobody can read is not exported
    if (options.format == "csv")
        return CsvText(selected);
    if (options.format == "json")
        return JsonText(source.set, selected);
    const std::string raw = RawTextOf(selected);
    return options.format == "raw" ? raw : FreeIpmiCache(raw, selected.size(), source.stamps);
}

void Export(const ExportOptions &options) {
    if (options.format != "csv" && options.format != "json")
        KeepFromTerminal(options.output, "raw records are");
    SourceSet source = LoadSource(options, "export");
    const bool built = !source.set.board.empty(); // a repository has given no numbers yet
    if (built && !options.keep_ids)
        SetRecordIds(source.set);
    if (built && (options.number || options.format == kCacheFormat))
        SetSensorNumbers(source.set, "--number");
    WriteResult(options.output, Text(options, source));
}

// --json is what every other command has; beside another format it is a contradiction.
void SettleFormat(ExportOptions &options, bool format_given) {
    if (options.json && format_given && options.format != "json")
        throw InputError("--json contradicts --format " + options.format);
    if (options.json)
        options.format = "json";
}

} // namespace

void AddExportCommand(Command &program) {
    Command command =
        program.AddCommand("export", "Write a board's set, or that of a file or a BMC, for other programs");
    const auto options = std::make_shared<ExportOptions>();
    AddSourceOptions(command, *options);
    const Option format =
        command
            .AddOption(
                "--format", options->format,
                "raw (default): records as 'ipmitool sdr dump' writes them; json; csv: one line per sensor; "
                "freeipmi-cache: what FreeIPMI's tools take with --sdr-cache-file")
            .OneOf({"raw", "json", "csv", kCacheFormat})
            .Takes("raw|json|csv|freeipmi-cache");
    command.AddOutput(options->output, "Replace FILE in one step").ShowsDefault();
    AddFilterOption(command, options->filter);
    command.AddFlag("--json", options->json, "The same as --format json");
    command.AddFlag("--keep-ids", options->keep_ids,
                    "Leave record ids at 0 instead of numbering them from 1 (those of files and BMCs stay)");
    command.AddFlag("--number", options->number,
                    "Number the sensors 1 to 254, then on LUN 1 and LUN 3; default: 0, as built");
    command.Example("oxa-sensors export --board boards/base_48.toml --format csv --output sensors.csv");
    command.Runs([options, format] {
        KeepNotesBack();
        SettleFormat(*options, format.Given());
        Export(*options);
    });
}

} // namespace workbench
