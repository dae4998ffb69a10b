// SPDX-License-Identifier: GPL-3.0-or-later
#include "why/arrival.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/text.h"
#include "oxa/specific_sensors.h"
#include "runtime/platform.h"
#include "sets/board.h"
#include "why/reading.h"

namespace workbench {
namespace {

constexpr char kProfileCall[] = "IPMI_LoadCustomID";

struct Place {
    const char *key;
    size_t offset, size;
};
#define PLACE(key, member)                                                                                   \
    { key, offsetof(SpecificSensorParam, member), sizeof(SpecificSensorParam::member) }
constexpr Place kPlaces[] = {

    PLACE("device_type", ucDeviceType),
    PLACE("slot", SlotId),
    PLACE("bitmap", wBitmap),
    PLACE("unr", ucUNR),
    PLACE("uc", ucUC),
    PLACE("unc", ucUNC),
    PLACE("lnc", ucLNC),
    PLACE("lc", ucLC),
    PLACE("lnr", ucLNR),
    PLACE("hysteresis", ucHysteresis),
    PLACE("index", ucBrenmorSensorIndex),
    PLACE("sub_type", SubDeviceType),
    PLACE("seq", ucSensorSeq),
    PLACE("second_port", ucSecondPort),
};
#undef PLACE

uint32_t ValueAt(const SpecificSensorParam &param, const Place &place) {
    uint32_t value = 0;
    std::memcpy(&value, reinterpret_cast<const uint8_t *>(&param) + place.offset, place.size);
    return value;
}

SpecificSensorParam WithValue(SpecificSensorParam param, const Place &place, uint32_t value) {
    std::memcpy(reinterpret_cast<uint8_t *>(&param) + place.offset, &value, place.size);
    return param;
}

// What one call came to.
struct Call {
    Outcome outcome;
    Sensor sensor;
    Events trace; // from the call on
};

class Calls {
public:
    Calls(const std::string &board, const std::string &profile)
        : board_(LoadBoardFor(board, profile)), faults_(BoardOf(board).faults) {
        sim::KeepFilesInMemory();
    }

    Call Make(const SpecificSensorParam &param, const std::vector<sim::Fault> &answers) const {
        sim::ForgetLibraryState();
        sim::RemoveMemoryFiles();
        std::vector<sim::Fault> rules = answers; // the first that matches decides
        rules.insert(rules.end(), faults_.begin(), faults_.end());
        StartWith(board_, {}, {});
        sim::SetTracing(true);
        sim::SetTraceBounded(true);
        for (const sim::Fault &rule : rules)
            sim::AddFault(rule);
        StartLibrary();
        const size_t mark = sim::Trace().size();
        Call call;
        call.outcome = AddSensor(param, false);
        call.trace.assign(sim::Trace().begin() + static_cast<long>(mark), sim::Trace().end());
        if (call.outcome.record)
            call.sensor = SensorOf(*call.outcome.record);
        return call;
    }

private:
    // The caller on a BMC asks for the entry afterwards.
    static Sensor SensorOf(const RecordView &view) {
        Sensor sensor;
        sensor.ordinal = 1;
        std::copy_n(view.bytes.begin(), std::min(view.bytes.size(), sensor.record.size()),
                    sensor.record.begin());
        DevTabEntry entry{};
        if (!view.IsLocator() && GenDevTable(sensor.record.data(), &entry) == 0)
            std::memcpy(sensor.entry.data(), &entry, sizeof entry);
        return sensor;
    }

    sim::Board board_;
    std::vector<sim::Fault> faults_;
};

template <class Bytes> void AddChanged(const Bytes &before, const Bytes &after, std::set<unsigned> &out) {
    for (unsigned at = 0; at < before.size(); ++at)
        if (before[at] != after[at])
            out.insert(at);
}

void Once(std::vector<std::string> &list, const std::string &word) {
    if (std::find(list.begin(), list.end(), word) == list.end())
        list.push_back(word);
}

// Sessions and files carry what was built; nothing of it is decided there.
bool Decides(const sim::Event &event) {
    return IsQuestion(event) && !event.function.starts_with("LIBIPMI_") &&
           !event.function.starts_with("IPMICMD_") && !event.function.starts_with("Ini") &&
           event.function != "oxa_fopen_s";
}

void TryKeys(const Calls &calls, const SpecificSensorParam &param, const Call &base, Arrival &out) {
    for (const Place &place : kPlaces) {
        const uint32_t value = ValueAt(param, place);
        KeyTold told{place.key, std::to_string(value), {}, {}, {}, {}};
        for (const uint32_t other : {value - 1, 0u, 1u, value + 1, value ^ 0x0101u}) {
            const SpecificSensorParam changed = WithValue(param, place, other);
            if (ValueAt(changed, place) == value)
                continue;
            const Call call = calls.Make(changed, {});
            const std::string word = std::to_string(ValueAt(changed, place));
            if (!call.outcome.record)
                base.outcome.record ? Once(told.gone_when, word) : void();
            else if (!base.outcome.record)
                Once(told.added_when, word);
            else if (call.outcome.record->IsLocator() == base.outcome.record->IsLocator()) {
                AddChanged(base.sensor.record, call.sensor.record, told.record_bytes);
                AddChanged(base.sensor.entry, call.sensor.entry, told.entry_bytes);
            }
        }
        out.keys.push_back(std::move(told));
    }
}

// The profile is an answer too: those of other customers are tried.
std::vector<uint64_t> OtherProfiles(const sim::Event &event) {
    std::vector<uint64_t> out;
    if (event.function == kProfileCall)
        for (const Profile *profile : AllProfiles())
            out.push_back(profile->id);
    return out;
}

std::string PlaceOfAnswer(const std::string &board, const sim::Event &event) {
    if (event.function == kProfileCall && !event.rule)
        return "profile " + ProfileName(sim::CurrentBoard().custom_id);
    return PlaceOf(board, *BoardOf(board).lines, event);
}

void TryAnswers(const Calls &calls, const std::string &board, const SpecificSensorParam &param,
                const Call &base, Arrival &out) {
    std::set<std::string> seen;
    for (const sim::Event &event : base.trace) {
        if (!Decides(event) || !seen.insert(CallText(event)).second)
            continue;
        Asked asked{event, false, PlaceOfAnswer(board, event), {}, {}, {}};
        for (const auto &[words, rule] : OtherAnswers(event, OtherProfiles(event))) {
            const Call call = calls.Make(param, {rule});
            if (!call.outcome.record) {
                if (base.outcome.record)
                    Once(asked.gone_when, words);
                continue;
            }
            if (!base.outcome.record)
                Once(out.tried, "with " + CallText(event) +
                                    (words == "fails" ? " failing" : " answering " + words) + " it is added");
            else {
                AddChanged(base.sensor.record, call.sensor.record, asked.record_bytes);
                AddChanged(base.sensor.entry, call.sensor.entry, asked.entry_bytes);
            }
        }
        out.asked.push_back(std::move(asked));
    }
}

} // namespace

Arrival WhyItArrives(const std::string &board, const std::string &profile, const SpecificSensorParam &param) {
    const Calls calls(board, profile);
    const Call base = calls.Make(param, {});
    Arrival out;
    out.outcome = base.outcome;
    out.sensor = base.sensor;
    TryKeys(calls, param, base, out);
    TryAnswers(calls, board, param, base, out);
    return out;
}

} // namespace workbench
