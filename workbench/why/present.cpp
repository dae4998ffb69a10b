// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "why/why.h"

namespace workbench {
namespace {

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

// What the pass compares an answer with.
std::vector<uint64_t> ComparedWith(const sim::Event &event, const Row &row) {
    std::vector<uint64_t> values;
    for (const oxa::Need &need : oxa::kNeeds)
        if (need.eGroup == row.group && event.function == need.pcCall && need.eWant == oxa::Want::kIsNot)
            values.insert(values.end(), need.awValues, need.awValues + need.ucValues);
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

Asked Try(const Trials &trials, const sim::Event &event, const Row &row, const Sensor &sensor) {
    Asked asked{event, false, trials.PlaceOf(event), {}, {}, {}};
    for (const auto &[words, rule] : OtherAnswers(event, ComparedWith(event, row))) {
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
