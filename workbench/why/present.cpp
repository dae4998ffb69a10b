// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "why/why.h"

namespace workbench {
namespace {

constexpr uint64_t kOtherBytes = 0x0101010101010101u; // changes every byte of an answer by one bit

std::vector<const Sensor *> SensorsOf(const Trial &trial, const Row &row) {
    std::vector<const Sensor *> all;
    for (const Sensor &sensor : trial.sensors)
        if (Built(row, sensor))
            all.push_back(&sensor);
    return all;
}

// The same sensor in another set: of as many as before the one in its place, else the one of its name.
const Sensor *SameIn(const Trial &other, const Row &row, const Trial &base, const Sensor &sensor) {
    const std::vector<const Sensor *> before = SensorsOf(base, row), after = SensorsOf(other, row);
    for (size_t i = 0; before.size() == after.size() && i < before.size(); ++i)
        if (before[i]->ordinal == sensor.ordinal)
            return after[i];
    for (const Sensor *candidate : after)
        if (NameOf(*candidate) == NameOf(sensor))
            return candidate;
    return nullptr;
}

// Answers worth trying: what the pass may compare with, one more, one less, nothing, and other bytes.
std::vector<uint64_t> OtherValues(const sim::Event &event, const Row &row) {
    const uint64_t value = ValueOf(event);
    std::vector<uint64_t> values;
    for (const oxa::Need &need : oxa::kNeeds)
        if (need.eGroup == row.group && event.function == need.pcCall && need.eWant == oxa::Want::kIsNot)
            values.insert(values.end(), need.awValues, need.awValues + need.ucValues);
    if (!event.text.empty())
        return {event.text[0] == 'Z' ? uint64_t{'Y'} : uint64_t{'Z'}};
    if (value > 1)
        values.push_back(value - 1);
    values.insert(values.end(), {0, value + 1, value ^ kOtherBytes});
    values.erase(std::remove(values.begin(), values.end(), value), values.end());
    return values;
}

void Compare(const Sensor &before, const Sensor &after, Asked &asked) {
    for (unsigned at = 0; at < SDR_SLOT_SIZE; ++at)
        if (before.record[at] != after.record[at])
            asked.record_bytes.insert(at);
    for (unsigned at = 0; at < DEV_TAB_ENTRY_SIZE; ++at)
        if (before.entry[at] != after.entry[at])
            asked.entry_bytes.insert(at);
}

bool HasValue(const sim::Event &event) {
    return !event.failed && (event.output || !event.text.empty() || !Failing(event));
}

Asked Try(const Trials &trials, const sim::Event &event, const Row &row, const Sensor &sensor) {
    Asked asked{event, false, trials.PlaceOf(event), {}, {}, {}};
    std::vector<std::pair<std::string, sim::Fault>> others;
    for (const uint64_t value : HasValue(event) ? OtherValues(event, row) : std::vector<uint64_t>{})
        if (const auto rule = Answering(event, value))
            others.emplace_back(event.text.empty() ? ValueText(event, value) : "another text", *rule);
    if (const auto rule = Failing(event); rule && !event.failed)
        others.emplace_back("fails", *rule);
    for (const auto &[words, rule] : others) {
        const Trial &other = trials.With({rule});
        const Sensor *same = SameIn(other, row, trials.AsItIs(), sensor);
        if (same != nullptr)
            Compare(sensor, *same, asked);
        else if (std::find(asked.gone_when.begin(), asked.gone_when.end(), words) == asked.gone_when.end())
            asked.gone_when.push_back(words);
    }
    return asked;
}

} // namespace

Present WhyPresent(const Trials &trials, const Row &row, const Sensor &sensor) {
    const Events &trace = trials.AsItIs().trace;
    const RecordMarks marks = MarkRecords(trace).at(sensor.ordinal - 1u);
    std::vector<size_t> questions;
    for (const Answered &answered : AnswersToNeeds(trace, row, marks.begun))
        if (answered.at < trace.size())
            questions.push_back(answered.at);
    const std::vector<size_t> own = OwnQuestions(trace, marks, row);
    questions.insert(questions.end(), own.begin(), own.end());
    Present present{&row, sensor, {}};
    const size_t of_group = questions.size() - own.size();
    std::set<std::string> seen;
    for (size_t i = 0; i < questions.size(); ++i) {
        const sim::Event &event = trace[questions[i]];
        if (!seen.insert(CallText(event)).second)
            continue;
        present.asked.push_back(Try(trials, event, row, sensor));
        present.asked.back().of_group = i < of_group;
    }
    return present;
}

} // namespace workbench
