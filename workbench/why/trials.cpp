// SPDX-License-Identifier: GPL-3.0-or-later
#include "why/trials.h"

#include <algorithm>
#include <cstring>

#include "base/text.h"
#include "sets/board.h"
#include "simulator/calls.h"

namespace workbench {
namespace {

constexpr size_t kCapacity = 24576;           // as in static_set.cpp: no board reaches this
constexpr uint16_t kCountNotWritten = 0xFFFF; // no set has this many sensors

Sensor SensorAt(const sim::StaticArrays &arrays, unsigned at) {
    Sensor sensor;
    sensor.ordinal = at + 1;
    std::memcpy(sensor.record.data(), arrays.slots + size_t{at} * SDR_SLOT_SIZE, SDR_SLOT_SIZE);
    std::memcpy(sensor.entry.data(), &arrays.entries[at], DEV_TAB_ENTRY_SIZE);
    return sensor;
}

sim::Nature NatureOf(const sim::Event &event) {
    const size_t id = sim::FindCall(event.function);
    return id == sim::kCallCount ? sim::Nature::kVoid : sim::kCalls[id].nature;
}

std::string Describe(const sim::Fault &fault) {
    const auto number = [](const auto &value) { return value ? std::to_string(*value) : "-"; };
    return fault.call + " " + number(fault.result) + " " + number(fault.output) +
           (fault.succeed ? " succeeds" : " fails");
}

constexpr uint64_t kOtherBytes = 0x0101010101010101u; // changes every byte of an answer by one bit

std::vector<uint64_t> OtherValues(const sim::Event &event, std::vector<uint64_t> values) {
    const uint64_t value = ValueOf(event);
    if (!event.text.empty())
        return {event.text[0] == 'Z' ? uint64_t{'Y'} : uint64_t{'Z'}};
    if (value > 1)
        values.push_back(value - 1);
    values.insert(values.end(), {0, value + 1, value ^ kOtherBytes});
    values.erase(std::remove(values.begin(), values.end(), value), values.end());
    return values;
}

// A number that differs in every byte says nothing to a reader; what is told in bytes does.
std::string WordsOf(const sim::Event &event, uint64_t value) {
    if (!event.text.empty())
        return "another text";
    const std::string words = ValueText(event, value);
    const bool plain = words == std::to_string(static_cast<int64_t>(value));
    return plain && value == (ValueOf(event) ^ kOtherBytes) ? "another number" : words;
}

bool HasValue(const sim::Event &event) {
    return !event.failed && (event.output || !event.text.empty() || !Failing(event));
}

std::string KeyText(const sim::AnswerPlace &place) { // "[psus] count"
    return place.section.empty() ? "[" + place.key + "]" : "[" + place.section + "] " + place.key;
}

} // namespace

Trials::Trials(const RunOptions &options)
    : path_(options.board), profile_(FindProfile(SettledProfile(options.profile, options.board))),
      board_(BoardOf(options.board).board), faults_(BoardOf(options.board).faults),
      lines_(BoardOf(options.board).lines) {
    sim::KeepFilesInMemory();
    board_.custom_id = profile_.id; // the machine belongs to the customer whose driver runs
    as_it_is_ = Run({}, std::nullopt, true);
}

const Trial &Trials::With(const std::vector<sim::Fault> &answers) const {
    if (answers.size() != 1 || answers[0].args) // of one sensor or part: nobody asks for it again
        return latest_ = Run(answers, std::nullopt, false);
    const std::string key = Describe(answers[0]);
    const auto found = tried_.find(key);
    return found != tried_.end() ? found->second : tried_[key] = Run(answers, std::nullopt, false);
}

const Trial &Trials::WithoutFault(size_t number) const {
    const std::string key = "without " + std::to_string(number);
    const auto found = tried_.find(key);
    return found != tried_.end() ? found->second : tried_[key] = Run({}, number, false);
}

Trial Trials::Run(const std::vector<sim::Fault> &answers, std::optional<size_t> left_out, bool traced) const {
    sim::ForgetLibraryState();
    sim::RemoveMemoryFiles();
    sim::Start(board_);
    sim::SetTracing(traced);
    sim::SetTraceBounded(traced);
    for (const sim::Fault &answer : answers) // the first that matches decides
        sim::AddFault(answer);
    for (size_t i = 0; i < faults_.size(); ++i)
        if (i != left_out)
            sim::AddFault(faults_[i]);
    sim::StaticArrays &arrays = sim::CallerArrays(kCapacity);
    arrays.count = kCountNotWritten;
    profile_.driver(arrays.slots, arrays.entries, &arrays.count);
    Trial trial;
    trial.counted = arrays.count != kCountNotWritten;
    for (unsigned i = 0; trial.counted && i < arrays.count; ++i)
        trial.sensors.push_back(SensorAt(arrays, i));
    if (traced)
        trial.trace = sim::Trace();
    return trial;
}

std::string Trials::PlaceOf(const sim::Event &event) const {
    return workbench::PlaceOf(path_, *lines_, event);
}

std::string PlaceOf(const std::string &path, const sim::BoardLines &lines, const sim::Event &event) {
    if (event.rule)
        return path + ":" + std::to_string(lines.FaultLine(*event.rule)) + ": [[fault]]";
    const sim::AnswerPlace place = lines.Of(event.function, event.args);
    if (place.key.empty())
        return "";
    return place.line == 0 ? "default of " + KeyText(place)
                           : path + ":" + std::to_string(place.line) + ": " + KeyText(place);
}

uint64_t ValueOf(const sim::Event &event) {
    return event.output ? *event.output : static_cast<uint64_t>(event.result);
}

std::string ValueText(const sim::Event &event) {
    if (event.failed)
        return "failed";
    if (!event.text.empty())
        return "\"" + Printable(event.text) + "\"";
    return ValueText(event, ValueOf(event));
}

std::string ValueText(const sim::Event &event, uint64_t value) {
    const auto byte = [value](unsigned at) { return static_cast<unsigned>(value >> (8 * at) & 0xFF); };
    if (event.function.find("I2cClient") != std::string::npos)
        return "bus " + std::to_string(byte(0)) + ", address " + Hex(byte(1));
    if (event.function == "get_default_board_id" || event.function == "GetCardBoardId")
        return Hex(static_cast<unsigned>(value), 4);
    if (event.function == "HAL_GetCpuVoltSdrInfoforSensor")
        return "M " + std::to_string(byte(0)) + ", B " + std::to_string(byte(1)) + ", exponents " +
               Hex(byte(2)) + ", mask " + Hex(byte(3));
    if (event.function == "HAL_GetDimmDevInfoByDimmNum")
        return "DIMM " + std::to_string(byte(0));
    if (NatureOf(event) == sim::Nature::kGetter)
        return value != 0 ? "a service" : "no service";
    return std::to_string(static_cast<int64_t>(value));
}

std::string CallText(const sim::Event &event) {
    return event.function + "(" + event.args + ")";
}

std::optional<sim::Fault> Answering(const sim::Event &event, uint64_t value) {
    sim::Fault fault{.call = event.function};
    if (!event.args.empty())
        fault.args = event.args;
    switch (NatureOf(event)) {
    case sim::Nature::kFails:
        fault.succeed = true;
        if (event.function == "FruSdrInitPathChoice")
            fault.result = static_cast<int64_t>(value);
        else
            fault.output = value;
        return fault;
    case sim::Nature::kSteady:
        fault.result = static_cast<int64_t>(value);
        return fault;
    case sim::Nature::kGetter:
        fault.succeed = value != 0;
        fault.null_object = value == 0;
        return fault;
    default:
        return std::nullopt;
    }
}

std::optional<sim::Fault> Failing(const sim::Event &event) {
    if (NatureOf(event) != sim::Nature::kFails)
        return std::nullopt;
    sim::Fault fault{.call = event.function};
    if (!event.args.empty())
        fault.args = event.args;
    return fault;
}

std::vector<OtherAnswer> OtherAnswers(const sim::Event &event, std::vector<uint64_t> also) {
    std::vector<OtherAnswer> out;
    for (const uint64_t value :
         HasValue(event) ? OtherValues(event, std::move(also)) : std::vector<uint64_t>{})
        if (const auto rule = Answering(event, value))
            out.push_back({WordsOf(event, value), *rule});
    if (const auto rule = Failing(event); rule && !event.failed)
        out.push_back({"fails", *rule});
    return out;
}

} // namespace workbench
