// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors thresholds set: what the BMC would store, stored by the library itself.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/thresholds.h"
#include "sets/counts.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

// What is to be stored, and what it was made from.
struct Plan {
    uint32_t custom_id = 0;
    std::optional<FileBytes> file;
    ThresholdImage image;
    std::optional<OfferedRecord> record;
    StoredThresholds entry;
};

// ---- what was typed --------------------------------------------------------------------------------

std::optional<double> Number(const std::string &word) {
    char *end = nullptr;
    const double value = std::strtod(word.c_str(), &end);
    if (word.empty() || std::isspace(static_cast<unsigned char>(word[0])) || *end != '\0' ||
        !std::isfinite(value))
        return std::nullopt;
    return value;
}

unsigned WholeNumber(const std::string &option, const std::string &word, unsigned most, const char *hint) {
    const auto value = Number(word);
    if (!value || *value != std::floor(*value) || *value < 0 || *value > most)
        throw InputError(option + " " + word + ": a whole number 0 to " + std::to_string(most) +
                         " is wanted" + hint);
    return static_cast<unsigned>(*value);
}

const std::string &Given(const ThresholdsSetOptions &options, const ThresholdPlace &place) {
    return options.values.at(place.option);
}

// The byte whose value in the sensor's units was typed.
uint8_t RawOf(const OfferedRecord &record, const std::string &option, const std::string &word) {
    const auto wanted = Number(word);
    if (!wanted)
        throw InputError(option + " " + word + ": a number is wanted");
    const NearCounts near = FindCounts(*record.decoded.reading, *wanted);
    if (near.exact)
        return *near.exact;
    if (near.below && near.above)
        throw InputError(option + " " + word + ": " + record.decoded.name + " has nothing between " +
                         record.InUnits(*near.below) + " and " + record.InUnits(*near.above));
    throw InputError(option + " " + word + ": " + record.decoded.name +
                     (near.below ? " ends at " : " begins at ") +
                     record.InUnits(near.below ? *near.below : *near.above));
}

// ---- the record ------------------------------------------------------------------------------------

// A name as it stands, else in another case: the entry is stored under the record's name.
OfferedRecord FindRecord(const ThresholdsSetOptions &options, uint32_t custom_id) {
    std::vector<std::string> names;
    bool compact = false;
    std::optional<OfferedRecord> found;
    for (OfferedRecord &record : CollectRecords(options.records, options.file, custom_id)) {
        const bool exact = record.decoded.name == options.sensor;
        const bool meant = SameName(record.decoded.name, options.sensor);
        compact = compact || (meant && !record.IsFull());
        if (!record.IsFull())
            continue;
        names.push_back(record.decoded.name);
        if (exact || (meant && !found))
            found = std::move(record);
        if (exact)
            break;
    }
    if (found)
        return std::move(*found);
    const std::string where = " on " + options.records.board + " with profile " + ProfileName(custom_id);
    if (compact)
        throw InputError(options.sensor + where + " is a compact record: it has no thresholds");
    const auto nearest = NearestNames(options.sensor, names);
    throw InputError("no full record '" + options.sensor + "'" + where +
                     (nearest.empty() ? "" : "; did you mean " + Join(nearest, ", ") + "?"));
}

void RefuseMissingThresholds(const ThresholdsSetOptions &options, const OfferedRecord &record) {
    for (const ThresholdPlace &place : kThresholdPlaces)
        if (!Given(options, place).empty() && !(record.Mask() & place.bit))
            throw InputError(std::string("--") + place.option + ": " + options.sensor + " has no " +
                             place.key + "; its readable mask is " + MaskText(record.Mask()));
}

// ---- the entry -------------------------------------------------------------------------------------

void TakeValues(const ThresholdsSetOptions &options, Plan &plan) {
    const bool units = plan.record && plan.record->decoded.reading && !options.raw;
    const char *hint = options.records.board.empty() ? " (with --board in the sensor's units)" : "";
    for (const ThresholdPlace &place : kThresholdPlaces) {
        const std::string &word = Given(options, place);
        const std::string option = std::string("--") + place.option;
        if (!word.empty())
            plan.entry.six[place.index] = units ? RawOf(*plan.record, option, word)
                                                : static_cast<uint8_t>(WholeNumber(option, word, 255, hint));
    }
    for (size_t i = 0; i < options.further.size(); ++i)
        plan.entry.further[i] = static_cast<uint8_t>(WholeNumber("--further", options.further[i], 255, ""));
}

unsigned GivenBits(const ThresholdsSetOptions &options) {
    unsigned bits = 0;
    for (const ThresholdPlace &place : kThresholdPlaces)
        bits |= Given(options, place).empty() ? 0 : place.bit;
    return bits;
}

// Without a record: the mask that is given, else what the entry had and what is given; no value is guessed.
void SettleMask(const ThresholdsSetOptions &options, const std::optional<StoredThresholds> &old, Plan &plan) {
    const unsigned given = GivenBits(options), had = old ? old->mask : 0;
    const unsigned mask =
        options.mask.empty() ? (had | given) : WholeNumber("--mask", options.mask, 0xFFFF, "");
    for (const ThresholdPlace &place : kThresholdPlaces) {
        if (given & place.bit && !(mask & place.bit))
            throw InputError(std::string("--") + place.option + ": --mask " + options.mask + " leaves " +
                             place.key + " out");
        if (mask & place.bit && !((given | had) & place.bit))
            throw InputError("--mask " + options.mask + " has " + place.key + "; give --" + place.option +
                             " too");
    }
    plan.entry.mask = static_cast<uint16_t>(mask);
}

// With a record: its mask, and for what is not given the entry's values if it has that mask, else the record's.
void StartFromRecord(const std::optional<StoredThresholds> &old, Plan &plan) {
    const uint8_t mask = plan.record->Mask();
    const bool keep = old && static_cast<uint8_t>(old->mask) == mask;
    plan.entry.six = keep ? old->six : plan.record->Six();
    plan.entry.mask = keep ? old->mask : mask;
}

void MakeEntry(const ThresholdsSetOptions &options, Plan &plan) {
    const auto found = plan.image.Find(options.sensor);
    const std::optional<StoredThresholds> old =
        found ? std::optional(plan.image.entries[*found]) : std::nullopt;
    if (GivenBits(options) == 0 && options.mask.empty() && options.further.empty())
        throw InputError("nothing to set: give at least one of --lnr, --lc, --lnc, --unc, --uc, --unr");
    plan.entry = old.value_or(StoredThresholds{});
    plan.entry.name = options.sensor;
    if (plan.record) {
        if (!options.mask.empty())
            throw InputError(
                "--mask and --board (or OXA_BOARD) contradict each other: the record has a mask, " +
                MaskText(plan.record->Mask()));
        RefuseMissingThresholds(options, *plan.record);
        StartFromRecord(old, plan);
    } else {
        SettleMask(options, old, plan);
    }
    TakeValues(options, plan);
    for (const ThresholdPlace &place : kThresholdPlaces)
        if (!plan.record && !plan.entry.Has(place))
            plan.entry.six[place.index] = 0;
}

// ---- the file --------------------------------------------------------------------------------------

void SettleProfile(const ThresholdsSetOptions &options, Plan &plan) {
    plan.file = ReadThresholdFile(options.file);
    if (plan.file)
        plan.image = ParseThresholdImage(options.file, *plan.file);
    plan.custom_id = SettledMachine(options.records, plan.image);
    if (plan.file && plan.custom_id != plan.image.custom_id)
        throw InputError(options.file + ": saved under " + SavedUnder(plan.image.custom_id) +
                         "; a machine of " + SavedUnder(plan.custom_id) +
                         " deletes it when it starts, so nothing can be added to it");
}

void CheckName(const std::string &name) {
    const bool printable = std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; });
    if (name.empty() || name.size() > kLongestName || !printable)
        throw InputError("--sensor '" + name + "': a name has 1 to 16 printable ASCII characters");
}

// The overlay would refuse it on every record: better told now than never.
void RefuseWrongOrder(const StoredThresholds &entry) {
    if (OfferToOverlay(BareRecord(entry)).what != Overlay::kOutOfOrder)
        return;
    throw InputError(entry.name + ": " + OrderFault(entry.mask, entry.six) +
                     " (raw bytes, compared without sign): the overlay would refuse the entry");
}

// Without a record: an entry of that name in another case is meant.
std::string NameOfEntry(const ThresholdImage &image, const std::string &wanted) {
    if (image.Find(wanted))
        return wanted;
    for (const StoredThresholds &entry : image.entries)
        if (SameName(entry.name, wanted))
            return entry.name;
    return wanted;
}

// The name that was given becomes the sensor's own.
Plan MakePlan(ThresholdsSetOptions &options) {
    CheckName(options.sensor);
    Plan plan;
    SettleProfile(options, plan);
    if (options.records.board.empty() && !options.records.descriptions.empty())
        throw InputError("--description needs --board");
    if (!options.records.board.empty())
        plan.record = FindRecord(options, plan.custom_id);
    options.sensor = plan.record ? plan.record->decoded.name : NameOfEntry(plan.image, options.sensor);
    MakeEntry(options, plan);
    return plan;
}

std::string Values(const Plan &plan) {
    std::vector<std::string> out;
    for (const ThresholdPlace &place : kThresholdPlaces) {
        const uint8_t raw = plan.entry.six[place.index];
        const std::string units = plan.record && plan.record->decoded.reading
                                      ? plan.record->InUnits(raw) + " (raw " + std::to_string(raw) + ")"
                                      : std::to_string(raw);
        if (plan.entry.Has(place))
            out.push_back(std::string(place.key) + " " + units);
    }
    return out.empty() ? "no threshold" : Join(out, ", ");
}

} // namespace

void SetThresholds(const ThresholdsSetOptions &given) {
    ThresholdsSetOptions options = given;
    const Plan plan = MakePlan(options);
    StartWithThresholds(plan.custom_id, plan.file);
    const FileBytes bytes = SaveOnPlatform(plan.entry);
    RefuseWrongOrder(plan.entry);
    PrintPlatformTrace(options.records.trace, options.records.log);
    const ThresholdImage image = ParseThresholdImage(options.file, bytes);
    WriteFileAtomically(options.file, std::string(bytes.begin(), bytes.end()));
    const size_t index = image.Find(options.sensor).value_or(0);
    if (!options.json)
        return PrintOut(options.sensor + ": " + Values(plan) + "; mask " + MaskText(plan.entry.mask) + ", " +
                        SavedUnder(image.custom_id) + ", entry " + std::to_string(index + 1) + " of " +
                        std::to_string(image.entries.size()) + " in " + options.file + "\n");
    Json out{{"file", options.file},
             {"saved_under", ProfileJson(image.custom_id)},
             {"index", index + 1},
             {"count", image.entries.size()},
             {"created", !plan.file.has_value()}};
    out["entry"] = StoredJson(image.entries.at(index));
    PrintOut(Dump(out));
}

} // namespace workbench
