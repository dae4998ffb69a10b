// SPDX-License-Identifier: GPL-3.0-or-later
//
// why --description: a sensor that comes at run time.
#include <algorithm>

#include "base/errors.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/why_text.h"
#include "runtime/description.h"
#include "sets/set_json.h"
#include "why/arrival.h"
#include "why/why_json.h"

namespace workbench {
namespace {

struct Told {
    const Profile *profile;
    Arrival arrival;
    std::vector<Field> record_fields, entry_fields;
};

// A locator's fields, as IPMI names them.
constexpr struct {
    unsigned offset, size;
    const char *name;
} kLocatorFields[] = {{0, 2, "record ID"},
                      {2, 1, "SDR version"},
                      {3, 1, "record type"},
                      {4, 1, "record length"},
                      {5, 1, "access address"},
                      {6, 1, "FRU id"},
                      {7, 1, "logical, LUN, bus"},
                      {8, 1, "channel"},
                      {9, 1, "reserved"},
                      {10, 1, "device type"},
                      {11, 1, "device type modifier"},
                      {12, 1, "entity ID"},
                      {13, 1, "entity instance"},
                      {14, 1, "OEM"},
                      {15, 1, "ID string type/length"},
                      {16, SDR_SLOT_SIZE - 16, "ID string"}};

std::vector<Field> FieldsOf(const Arrival &arrival) {
    const RecordView &record = *arrival.outcome.record;
    if (!record.IsLocator())
        return ExplainRecord(arrival.sensor, *record.decoded);
    std::vector<Field> out;
    const auto size = static_cast<unsigned>(record.bytes.size());
    for (const auto &field : kLocatorFields)
        if (field.offset < size)
            out.push_back({field.offset, std::min(field.size, size - field.offset), field.name, {}, ""});
    return out;
}

Told Ask(const WhyOptions &options, const Profile &profile, const SpecificSensorParam &param) {
    Told out{&profile, WhyItArrives(options.run.board, profile.name, param), {}, {}};
    if (out.arrival.Added())
        out.record_fields = FieldsOf(out.arrival);
    if (out.arrival.Added() && !out.arrival.outcome.record->IsLocator())
        out.entry_fields = ExplainEntry(out.arrival.sensor);
    return out;
}

NamedBytes BytesOf(const Told &told, const std::set<unsigned> &record, const std::set<unsigned> &entry) {
    return Named(record, entry, told.record_fields, told.entry_fields);
}

std::string KeyText(const Told &told, const KeyTold &key) {
    const std::string sets = SetsText(BytesOf(told, key.record_bytes, key.entry_bytes));
    if (sets.empty() && key.gone_when.empty() && key.added_when.empty())
        return "";
    return WordLine("key", key.key + " = " + key.value) + WordLine("  sets", sets) +
           WordLine("  gone", key.gone_when.empty() ? "" : "when it is " + OrText(key.gone_when)) +
           WordLine("  added", key.added_when.empty() ? "" : "when it is " + OrText(key.added_when));
}

std::string Render(const Told &told, bool colour) {
    const Arrival &arrival = told.arrival;
    const Outcome &outcome = arrival.outcome;
    const std::string name = arrival.Added() ? outcome.record->name : "no sensor";
    std::string out = Paint(name, Style::kBold, colour) + ": " + outcome.word + ", profile " +
                      told.profile->name + "\n" + WordLine("is", outcome.subject) +
                      WordLine("record", arrival.Added() ? RecordText(*outcome.record) : "") +
                      WordLine("why", outcome.why) +
                      WordLine("log", arrival.Added() || outcome.log.empty() ? "" : outcome.log.back());
    for (const KeyTold &key : arrival.keys)
        out += KeyText(told, key);
    for (const Asked &asked : arrival.asked)
        out += AskedText(asked, SetsText(BytesOf(told, asked.record_bytes, asked.entry_bytes)));
    for (const std::string &tried : arrival.tried)
        out += WordLine("tried", tried);
    return out;
}

Json ToldJson(const Told &told) {
    Json out = ProfileJson(told.profile->id);
    out.update(OutcomeJson(told.arrival.outcome));
    out["keys"] = Json::array();
    for (const KeyTold &key : told.arrival.keys) {
        const NamedBytes bytes = BytesOf(told, key.record_bytes, key.entry_bytes);
        out["keys"].push_back({{"key", key.key},
                               {"value", key.value},
                               {"record_bytes", BytesJson(bytes.record)},
                               {"entry_bytes", BytesJson(bytes.entry)},
                               {"gone_when", key.gone_when},
                               {"added_when", key.added_when}});
    }
    out["asked"] = Json::array();
    for (const Asked &asked : told.arrival.asked) {
        const NamedBytes bytes = BytesOf(told, asked.record_bytes, asked.entry_bytes);
        Json one = AskedJson(asked);
        one["record_bytes"] = BytesJson(bytes.record);
        one["entry_bytes"] = BytesJson(bytes.entry);
        one["gone_when"] = asked.gone_when;
        out["asked"].push_back(std::move(one));
    }
    out["tried"] = told.arrival.tried;
    return out;
}

std::vector<const Profile *> ProfilesOf(const WhyOptions &options) {
    if (options.run.profile == "all")
        return AllProfiles(); // a profile without a driver has sensors at run time too
    return {&NamedProfile(SettledProfile(options.run.profile, options.run.board))};
}

} // namespace

void WhyDescription(const WhyOptions &options) {
    const SpecificSensorParam param = Finish(LoadDescription(options.description));
    std::vector<Told> all;
    for (const Profile *profile : ProfilesOf(options))
        all.push_back(Ask(options, *profile, param));
    std::string text;
    Json json{
        {"board", options.run.board}, {"description", DescriptionJson(param)}, {"profiles", Json::array()}};
    for (const Told &told : all) {
        text += (text.empty() ? "" : "\n") + Render(told, ColourWanted());
        json["profiles"].push_back(ToldJson(told));
    }
    PrintOut(options.json ? Dump(json) : text);
    if (std::any_of(all.begin(), all.end(), [](const Told &told) { return !told.arrival.Added(); }))
        throw ExitStatus(kNoSet);
}

} // namespace workbench
