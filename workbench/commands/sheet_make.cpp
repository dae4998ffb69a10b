// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors sheet rows, sheet image: what can be made of a sheet.
#include <algorithm>

#include "base/errors.h"
#include "base/json.h"
#include "base/notes.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/sheet.h"
#include "explain/explain.h"
#include "oxa/platform.h"
#include "sets/set_json.h"
#include "sheet/rows.h"
#include "thresholds/image.h"
#include "thresholds/platform.h"

namespace workbench {
namespace {

constexpr size_t kNamesKept = 6;

// Limits of the set whose cell is empty: neither a row nor a user can take them away.
std::vector<std::string> KeptLimits(const JudgedSheet &judged) {
    std::vector<std::string> out;
    for (const SheetFinding &finding : judged.judgement.findings)
        if (finding.rule == "gone" && std::find(out.begin(), out.end(), finding.name) == out.end())
            out.push_back(finding.name);
    return out;
}

std::string SheetWhere(const SheetOptions &options, const SheetSensor &sensor) {
    const SheetPlace &place = sensor.row->place;
    return options.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": " +
           place.cell + ": " + sensor.sensor->name + ": ";
}

// ---- rows ------------------------------------------------------------------------------------------

// The compiler counts with the kind's factor; where the platform tells another, no row can be right.
std::vector<std::string> FactorFaults(const SheetOptions &options, const JudgedSheet &judged) {
    std::vector<std::string> out;
    for (const SheetSensor &sensor : judged.judgement.sensors) {
        const Sensor &record = judged.sensors[static_cast<size_t>(sensor.sensor - judged.set.data())];
        const std::string origin = Origin(RowThatBuilt(record), 'S', FULL_SDR_M_VALUE_LS_8_BITS);
        if (sensor.Changes() && !origin.empty())
            out.push_back(SheetWhere(options, sensor) + "its factor is not the list's (" + origin +
                          "), so no row can give its limits");
    }
    return out;
}

std::string RowsText(const JudgedSheet &judged, const std::string &list, const ListEdits &edits,
                     const std::vector<std::string> &kept) {
    unsigned bytes = 0;
    size_t grown = 0;
    for (const ListEdit &edit : edits.edits) {
        bytes += edit.bytes;
        grown += edit.bytes != 0;
    }
    std::string out = list + ": " + std::to_string(edits.edits.size()) +
                      (edits.edits.size() == 1 ? " row changes, " : " rows change, ") +
                      std::to_string(bytes) + " bytes more (" + std::to_string(grown) +
                      " without limits of their own before)\n";
    if (!kept.empty())
        out += "empty in the sheet and not to be taken away by a row: " + NamesText(kept, kNamesKept) + "\n";
    return out + SkippedText(judged) + Patch(list, edits.edits);
}

Json RowsJson(const SheetOptions &options, const JudgedSheet &judged, const std::string &list,
              const ListEdits &edits, const std::vector<std::string> &kept) {
    Json out{{"sheet", options.file},
             {"board", options.run.board},
             {"profile", ProfileJson(judged.profile->id)},
             {"list", list},
             {"kept", kept},
             {"skipped", judged.skipped},
             {"rows", Json::array()}};
    for (const ListEdit &edit : edits.edits)
        out["rows"].push_back({{"line", edit.line},
                               {"old", edit.old},
                               {"new", edit.now},
                               {"sensors", edit.sensors},
                               {"bytes", edit.bytes}});
    return out;
}

// ---- image -----------------------------------------------------------------------------------------

// The record's limits with the sheet's over them, under the record's mask: under another it would not apply.
StoredThresholds EntryOf(const SheetSensor &sensor, const Record &record) {
    StoredThresholds entry;
    entry.name = sensor.sensor->name;
    entry.mask = record[SDR_READING_MASK];
    for (size_t i = 0; i < kSheetLimits; ++i)
        entry.six[kThresholdPlaces[i].index] = sensor.counts[i].value_or(sensor.sensor->thresholds[i].raw);
    return entry;
}

struct Image {
    std::vector<StoredThresholds> entries;
    std::vector<const Sensor *> sensors; // that the entries are for
};

Image MakeImage(const SheetOptions &options, const JudgedSheet &judged) {
    Image image;
    std::vector<std::string> faults;
    for (const SheetSensor &sensor : judged.judgement.sensors) {
        const Sensor &record = judged.sensors[static_cast<size_t>(sensor.sensor - judged.set.data())];
        const bool told = !image.entries.empty() && image.entries.back().name == sensor.sensor->name;
        if (!sensor.row->HasLimits() || told)
            continue;
        for (size_t i = 0; i < kSheetLimits; ++i)
            if (sensor.row->limits[i] && !sensor.sensor->thresholds[i].readable)
                faults.push_back(SheetWhere(options, sensor) + "the record has no " + kSheetLimitKeys[i] +
                                 ", and a user's thresholds add none");
        image.entries.push_back(EntryOf(sensor, record.record));
        image.sensors.push_back(&record);
        if (const std::string fault = OrderFault(image.entries.back().mask, image.entries.back().six);
            !fault.empty())
            faults.push_back(SheetWhere(options, sensor) + fault +
                             " as bytes, which are compared without sign");
    }
    if (image.entries.size() > SENSOR_MAX_COUNT)
        faults.push_back(options.file + ": " + std::to_string(image.entries.size()) +
                         " sensors with limits; a file of user thresholds holds " +
                         std::to_string(SENSOR_MAX_COUNT));
    if (!faults.empty())
        EndWith(faults);
    return image;
}

// Saved by the library itself, and every record asked whether it takes its entry.
FileBytes SaveImage(const JudgedSheet &judged, const Image &image) {
    StartWithThresholds(judged.profile->id, std::nullopt);
    FileBytes bytes;
    for (const StoredThresholds &entry : image.entries)
        bytes = SaveOnPlatform(entry);
    for (size_t i = 0; i < image.entries.size(); ++i) {
        const OverlayResult result = OfferToOverlay(image.sensors[i]->record);
        if (result.what != Overlay::kApplied || result.after != image.entries[i].six)
            throw InputError(image.entries[i].name +
                             ": the library does not apply the entry: " + result.line);
    }
    return bytes;
}

} // namespace

void SheetRows(const SheetOptions &options) {
    JudgedSheet judged;
    LoadSheet(options, judged);
    EndAtFindings(options, judged);
    if (const std::vector<std::string> faults = FactorFaults(options, judged); !faults.empty())
        EndWith(faults);
    const std::string list = options.list.empty()
                                 ? std::string("library/profiles/") + judged.profile->name + ".def"
                                 : options.list;
    const ListEdits edits = EditList(list, judged.judgement.sensors);
    if (!edits.faults.empty())
        EndWith(edits.faults);
    const std::vector<std::string> kept = KeptLimits(judged);
    PrintOut(options.json ? Dump(RowsJson(options, judged, list, edits, kept))
                          : RowsText(judged, list, edits, kept));
}

void SheetImage(const SheetOptions &options) {
    KeepJsonApart(options.output, options.json);
    KeepFromTerminal(options.output, "an image is");
    JudgedSheet judged;
    LoadSheet(options, judged);
    EndAtFindings(options, judged);
    const Image image = MakeImage(options, judged);
    if (image.entries.empty())
        throw InputError(options.file + ": no limits in it" +
                         (judged.skipped.empty() ? "" : " for this board"));
    const FileBytes bytes = SaveImage(judged, image);
    WriteResult(options.output, std::string(bytes.begin(), bytes.end()));
    const std::vector<std::string> kept = KeptLimits(judged);
    if (options.json)
        return PrintOut(Dump({{"sheet", options.file},
                              {"board", options.run.board},
                              {"image", options.output},
                              {"profile", ProfileJson(judged.profile->id)},
                              {"entries", image.entries.size()},
                              {"kept", kept},
                              {"skipped", judged.skipped}}));
    std::string remarks = SkippedText(judged);
    if (!kept.empty())
        remarks += "empty in the sheet, kept from the record: " + NamesText(kept, kNamesKept) + "\n";
    if (options.output != kStandardOutput)
        return PrintOut(remarks + options.output + ": " + std::to_string(image.entries.size()) + " of " +
                        std::to_string(SENSOR_MAX_COUNT) + " entries, " + SavedUnder(judged.profile->id) +
                        "\n");
    TellNotes(remarks);
}

} // namespace workbench
