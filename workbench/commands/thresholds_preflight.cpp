// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors thresholds preflight: every full record of a board is offered to the library's overlay; what it says
// is told entry by entry.
#include <algorithm>

#include "base/errors.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/thresholds.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

constexpr const char *kNote = "The library lays stored thresholds over the temperature, voltage, power and "
                              "fan records that it makes at run\n"
                              "time (--description). Its static pass does not call the overlay; static "
                              "records are offered to it here only.\n";

enum class Status { kApplies, kRefused, kOrphaned, kDropped };

const char *StatusText(Status status) {
    switch (status) {
    case Status::kApplies:
        return "applies";
    case Status::kRefused:
        return "refused";
    case Status::kOrphaned:
        return "orphaned";
    default:
        return "dropped";
    }
}

// One record of the entry's name and what became of it.
struct Offer {
    const OfferedRecord *record;
    Status status;
    std::string what; // changes, or why not
    OverlayResult result;
};

struct Verdict {
    Status status = Status::kOrphaned;
    std::string why; // of entries that no record was offered for
    std::vector<Offer> offers;
};

struct Preflight {
    const ThresholdsPreflightOptions &options;
    uint32_t custom_id = 0;
    ThresholdImage image;
    std::vector<OfferedRecord> records;
    bool dropped = false;
    std::vector<Verdict> verdicts; // one per entry
};

// ---- running it ------------------------------------------------------------------------------------

std::string Changes(const OfferedRecord &record, const SixThresholds &after) {
    const SixThresholds before = record.Six();
    std::vector<std::string> out;
    for (const ThresholdPlace &place : kThresholdPlaces)
        if (before[place.index] != after[place.index])
            out.push_back(std::string(place.key) + " " + record.InUnits(before[place.index]) + " -> " +
                          record.InUnits(after[place.index]));
    return out.empty() ? "no change" : Join(out, ", ");
}

Offer Describe(const OfferedRecord &record, const StoredThresholds &entry, OverlayResult result) {
    switch (result.what) {
    case Overlay::kApplied:
        return {&record, Status::kApplies, Changes(record, result.after), result};
    case Overlay::kOutOfOrder:
        return {&record, Status::kRefused, "order: " + OrderFault(entry.mask, entry.six), result};
    default:
        return {&record, Status::kRefused,
                "mask: saved under " + MaskText(static_cast<uint8_t>(entry.mask)) + "; the record has " +
                    MaskText(record.Mask()),
                result};
    }
}

std::string WhyOrphaned(const Preflight &run, const std::string &name) {
    std::vector<std::string> names;
    for (const OfferedRecord &record : run.records) {
        if (record.decoded.name == name)
            return "the record of that name is compact: it has no thresholds";
        if (record.IsFull())
            names.push_back(record.decoded.name);
    }
    const auto nearest = NearestNames(name, names, 1);
    return "no full record of that name" + (nearest.empty() ? "" : "; the nearest is " + nearest[0]);
}

void Judge(Preflight &run) {
    run.verdicts.resize(run.image.entries.size());
    for (const OfferedRecord &record : run.records) {
        if (!record.IsFull())
            continue;
        OverlayResult result = OfferToOverlay(record.sensor.record);
        const auto entry = run.image.Find(record.decoded.name);
        if (result.what != Overlay::kNoEntry && entry)
            run.verdicts[*entry].offers.push_back(
                Describe(record, run.image.entries[*entry], std::move(result)));
    }
    for (size_t i = 0; i < run.verdicts.size(); ++i) {
        Verdict &verdict = run.verdicts[i];
        const std::string &name = run.image.entries[i].name;
        const size_t first = *run.image.Find(name);
        if (first != i) {
            verdict = {Status::kRefused, "entry " + std::to_string(first + 1) + " has the same name", {}};
        } else if (verdict.offers.empty()) {
            verdict.why = WhyOrphaned(run, name);
        } else {
            const bool good =
                std::all_of(verdict.offers.begin(), verdict.offers.end(),
                            [](const Offer &offer) { return offer.status == Status::kApplies; });
            verdict.status = good ? Status::kApplies : Status::kRefused;
        }
    }
}

void Drop(Preflight &run) {
    run.dropped = true;
    const std::string why = "a machine of " + SavedUnder(run.custom_id) + " deletes the file at its start";
    run.verdicts.assign(run.image.entries.size(), {Status::kDropped, why, {}});
}

size_t Count(const Preflight &run, Status status) {
    return static_cast<size_t>(std::count_if(
        run.verdicts.begin(), run.verdicts.end(),
        [status](const Verdict &verdict) { return verdict.status == status; }));
}

// ---- telling it ------------------------------------------------------------------------------------

std::string Head(const Preflight &run) {
    const size_t full = static_cast<size_t>(std::count_if(
        run.records.begin(), run.records.end(), [](const OfferedRecord &record) { return record.IsFull(); }));
    return run.options.file + ": saved under " + SavedUnder(run.image.custom_id) + ", " +
           std::to_string(run.image.entries.size()) +
           (run.image.entries.size() == 1 ? " entry\n" : " entries\n") + run.options.records.board +
           ", profile " + ProfileName(run.custom_id) + ": " + std::to_string(full) + " full records\n";
}

std::string Summary(const Preflight &run) {
    std::string out = std::to_string(Count(run, Status::kApplies)) +
                      (Count(run, Status::kApplies) == 1 ? " applies, " : " apply, ") +
                      std::to_string(Count(run, Status::kRefused)) + " refused, " +
                      std::to_string(Count(run, Status::kOrphaned)) + " orphaned";
    if (run.dropped)
        out += ", " + std::to_string(Count(run, Status::kDropped)) + " dropped";
    return out + "\n";
}

Style StatusStyle(Status status) {
    return status == Status::kApplies                                 ? Style::kPlain
           : status == Status::kRefused || status == Status::kDropped ? Style::kHot
                                                                      : Style::kWarm;
}

std::vector<Cell> VerdictRow(const Preflight &run, size_t index, Status status, const std::string &origin,
                             const std::string &what) {
    return {{std::to_string(index + 1), Style::kDim},
            {StatusText(status), StatusStyle(status)},
            {run.image.entries[index].name, Style::kBold},
            {origin, Style::kPlain},
            {what, Style::kPlain}};
}

std::string RenderText(const Preflight &run) {
    Table table({{"#", true}, {"STATUS"}, {"NAME"}, {"RECORD"}, {"WHAT"}});
    for (size_t i = 0; i < run.verdicts.size(); ++i) {
        const Verdict &verdict = run.verdicts[i];
        for (const Offer &offer : verdict.offers)
            table.Add(VerdictRow(run, i, offer.status, offer.record->origin, offer.what));
        if (verdict.offers.empty())
            table.Add(VerdictRow(run, i, verdict.status, "-", verdict.why));
    }
    std::string out = Head(run) + "\n";
    if (!run.verdicts.empty())
        out.append(table.Render(ColourWanted())).append("\n");
    return out + Summary(run) + kNote;
}

Json OfferJson(const StoredThresholds &entry, const Offer &offer) {
    Json out{{"origin", offer.record->origin},
             {"status", StatusText(offer.status)},
             {"what", offer.what},
             {"entry_mask", static_cast<uint8_t>(entry.mask)},
             {"record_mask", offer.record->Mask()},
             {"line", offer.result.line}};
    for (const ThresholdPlace &place : kThresholdPlaces) {
        const uint8_t before = offer.record->Six()[place.index], after = offer.result.after[place.index];
        if (!(offer.record->Mask() & place.bit)) {
            out["thresholds"][place.option] = nullptr;
            continue;
        }
        const auto value = [&offer](uint8_t raw) {
            const auto units = offer.record->Value(raw);
            return units ? Json(*units) : Json(nullptr);
        };
        out["thresholds"][place.option] = {{"before", {{"raw", before}, {"value", value(before)}}},
                                           {"after", {{"raw", after}, {"value", value(after)}}}};
    }
    return out;
}

std::string RenderJson(const Preflight &run) {
    Json out{{"file", run.options.file},
             {"saved_under", ProfileJson(run.image.custom_id)},
             {"board", run.options.records.board},
             {"profile", ProfileJson(run.custom_id)},
             {"applies", Count(run, Status::kApplies)},
             {"refused", Count(run, Status::kRefused)},
             {"orphaned", Count(run, Status::kOrphaned)},
             {"dropped", Count(run, Status::kDropped)},
             {"entries", Json::array()}};
    for (size_t i = 0; i < run.verdicts.size(); ++i) {
        const Verdict &verdict = run.verdicts[i];
        Json entry{{"name", run.image.entries[i].name}, {"status", StatusText(verdict.status)}};
        entry["why"] = verdict.why.empty() ? Json(nullptr) : Json(verdict.why);
        entry["records"] = Json::array();
        for (const Offer &offer : verdict.offers)
            entry["records"].push_back(OfferJson(run.image.entries[i], offer));
        out["entries"].push_back(std::move(entry));
    }
    return Dump(out);
}

} // namespace

int PreflightThresholds(const ThresholdsPreflightOptions &options) {
    const FileBytes bytes = ReadExistingThresholdFile(options.file);
    Preflight run{options, 0, ParseThresholdImage(options.file, bytes), {}, false, {}};
    run.custom_id = SettledMachine(options.records, run.image);
    run.records = CollectRecords(options.records, options.file, run.custom_id);
    if (StartWithThresholds(run.custom_id, bytes))
        Judge(run);
    else
        Drop(run);
    PrintPlatformTrace(options.records.trace, options.records.log);
    PrintOut(options.json ? RenderJson(run) : RenderText(run));
    return Count(run, Status::kApplies) == run.verdicts.size() ? kOk : kNoSet;
}

} // namespace workbench
