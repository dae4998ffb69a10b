// SPDX-License-Identifier: GPL-3.0-or-later
#include "events/sel_calls.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "base/errors.h"
#include "base/text.h"
#include "library/record/leakage_key.h"
#include "sets/static_set.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

namespace tables = oxa::sel;
using Words = std::vector<uint32_t>;

template <class... A, size_t... N>
uint32_t CallEach(uint32_t (*function)(A...), const Words &words, std::index_sequence<N...>) {
    return function(static_cast<A>(words.at(N))...);
}
template <class... A> std::function<uint32_t(const Words &)> With(uint32_t (*function)(A...)) {
    return
        [function](const Words &words) { return CallEach(function, words, std::index_sequence_for<A...>{}); };
}

uint32_t CallLeakage(const Words &words) {
    const LeakageInfo info{static_cast<uint8_t>(words.at(1)), static_cast<uint8_t>(words.at(2))};
    return addLeakageSel(words.at(0), &info);
}

#define OXA_BUILDER(name)                                                                                    \
    { #name, With(name) }
const std::map<std::string, std::function<uint32_t(const Words &)>> &Functions() {
    static const std::map<std::string, std::function<uint32_t(const Words &)>> all = {
        OXA_BUILDER(addMemPredictiveFault),
        OXA_BUILDER(addPOSTErrorSel),
        OXA_BUILDER(addS0PowerButtonSel),
        OXA_BUILDER(addGpuSlotErrorSel),
        OXA_BUILDER(addMinorCDUFaultSel),
        OXA_BUILDER(addMajorCDUFaultSel),
        OXA_BUILDER(addNETPortSEL),
        OXA_BUILDER(addControllerSEL),
        OXA_BUILDER(addDiskSEL),
        OXA_BUILDER(addLDSEL),
        OXA_BUILDER(addPEMSEL),
        OXA_BUILDER(addUsageSEL),
        OXA_BUILDER(addSELAlarm),
        OXA_BUILDER(addCPUError),
        OXA_BUILDER(addMemError),
        OXA_BUILDER(addI2CStatusSel),
        OXA_BUILDER(addTrapSELAlarm),
        OXA_BUILDER(addPowerDropSEL),
        {"addLeakageSel", CallLeakage},
    };
    return all;
}
#undef OXA_BUILDER

std::string ItemName(const BuilderView &builder, size_t position) {
    return ValueName(builder.ptItem[position].eValue);
}

[[noreturn]] void Refuse(const BuilderView &builder, const std::string &why) {
    throw InputError(BuilderName(builder) + ": " + why + "; usage: " + Signature(builder));
}

uint32_t ParseNumber(const BuilderView &builder, size_t position, const std::string &text) {
    if (text == "?")
        return 0;
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const char *const first = text.data() + (hex ? 2 : 0), *const last = text.data() + text.size();
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(first, last, value, hex ? 16 : 10);
    if (first == last || end != last || (error != std::errc{} && error != std::errc::result_out_of_range))
        Refuse(builder, "'" + text + "' for " + ItemName(builder, position) + " is not a number");
    // a checked flag is a word for the library to judge, so only the width counts here
    const uint32_t most = builder.ptItem[position].ucBits == 8 ? 0xFF : 0xFFFFFFFFu;
    if (error != std::errc{} || value > most)
        Refuse(builder, ItemName(builder, position) + " " + text + " is above " + std::to_string(most));
    return value;
}

size_t FindArgument(const BuilderView &builder, const std::string &name) {
    std::vector<std::string> names;
    for (size_t n = 0; n < ArgumentCount(builder); ++n) {
        names.push_back(ItemName(builder, n));
        if (names.back() == name)
            return n;
    }
    const auto nearest = NearestNames(name, names, 1);
    Refuse(builder,
           "no argument '" + name + "'" + (nearest.empty() ? "" : "; did you mean " + nearest[0] + "?"));
}

// A platform on which every lookup of the candidate answers what the candidate says.
sim::Board BoardFor(const Candidate &candidate) {
    sim::Board board;
    std::optional<uint32_t> number;
    uint32_t slot = 0;
    for (size_t n = 0; n < candidate.values.size(); ++n) {
        const uint32_t value = candidate.values[n].value;
        const tables::Value what = candidate.builder->ptItem[n].eValue;
        if (what == tables::kFoundNumber)
            number = value;
        else if (what == tables::kFoundInletTemp)
            board.inlet_temperature = static_cast<uint8_t>(value);
        else if (what == tables::kSlotNum)
            slot = value;
    }
    if (!number)
        return board;
    sim::SensorNumbers &directory = board.sensor_numbers;
    const uint8_t disk[] = {oxa::kEntityDisk, oxa::kTypeDriveSlot, oxa::kEventSpecific,
                            static_cast<uint8_t>(slot), 0};
    const uint8_t leak[] = {oxa::kLeakageEntityId, oxa::kLeakageSensorType, oxa::kLeakageEventType, 0, 0};
    directory.by_key[HexBytes(disk)] = *number;
    directory.by_key[HexBytes(leak)] = *number;
    for (const FoundValue &value : candidate.values) {
        directory.cpu[value.value] = *number;
        directory.dimm[value.value] = *number;
        directory.power_module[value.value] = *number;
    }
    directory.power_fault = *number;
    return board;
}

// The simulated directory knows no LUN but 0: where one was looked up its bits are left out of the
// comparison.
void DropFoundLun(const BuilderView &builder, SelBytes &bytes) {
    for (size_t n = 0; n < builder.ucItems; ++n)
        if (builder.ptItem[n].eValue == tables::kFoundLun)
            bytes[SEL_GENERATOR_ID_2] = 0;
}

} // namespace

std::vector<std::string> BuilderNames() {
    std::vector<std::string> out;
    for (const BuilderView &builder : Builders())
        out.push_back(BuilderName(builder));
    return out;
}

std::string BuilderName(const BuilderView &builder) {
    return builder.ptHead->acName;
}

const BuilderView &FindBuilder(const std::string &name) {
    for (const BuilderView &builder : Builders())
        if (name == builder.ptHead->acName)
            return builder;
    const auto nearest = NearestNames(name, BuilderNames());
    throw InputError("no event builder '" + name + "'" +
                     (nearest.empty() ? "; 'oxa-sensors event --list' names them"
                                      : std::string("; did you mean ") + Join(nearest, ", ") + "?"));
}

size_t ArgumentCount(const BuilderView &builder) {
    size_t count = 0;
    while (count < builder.ucItems && !tables::IsFound(builder.ptItem[count].eValue))
        ++count;
    return count;
}

std::string Signature(const BuilderView &builder) {
    std::string out = BuilderName(builder);
    for (size_t n = 0; n < ArgumentCount(builder); ++n)
        out += std::string(" ") + ItemName(builder, n);
    return out;
}

std::vector<uint32_t> ParseArguments(const BuilderView &builder, const std::vector<std::string> &words) {
    const size_t count = ArgumentCount(builder);
    std::vector<std::optional<uint32_t>> values(count);
    size_t next = 0;
    for (const std::string &word : words) {
        const size_t equals = word.find('=');
        size_t position = next;
        if (equals != std::string::npos)
            position = FindArgument(builder, word.substr(0, equals));
        else if (next++ >= count)
            Refuse(builder, "takes " + std::to_string(count) + " arguments, '" + word + "' is one too many");
        if (values[position])
            Refuse(builder, ItemName(builder, position) + " is given twice");
        values[position] =
            ParseNumber(builder, position, equals == std::string::npos ? word : word.substr(equals + 1));
    }
    std::vector<uint32_t> out;
    for (size_t n = 0; n < count; ++n) {
        if (!values[n])
            Refuse(builder, ItemName(builder, n) + " is missing");
        out.push_back(*values[n]);
    }
    return out;
}

std::string CallText(const BuilderView &builder, const std::vector<uint32_t> &values,
                     const std::vector<bool> &unknown) {
    std::string out = BuilderName(builder);
    for (size_t n = 0; n < ArgumentCount(builder); ++n)
        out += std::string(" ") + ItemName(builder, n) + "=" +
               (n < unknown.size() && unknown[n] ? "?" : std::to_string(values[n]));
    return out;
}

uint32_t CallBuilder(const BuilderView &builder, const std::vector<uint32_t> &arguments) {
    return Functions().at(BuilderName(builder))(arguments);
}

std::vector<std::string> ProfilesThatWrite(const Candidate &candidate) {
    sim::Start(BoardFor(candidate));
    sim::SetTracing(false);
    SelBytes wanted = Composed(candidate);
    DropFoundLun(*candidate.builder, wanted);
    std::vector<uint32_t> arguments;
    for (size_t n = 0; n < ArgumentCount(*candidate.builder); ++n)
        arguments.push_back(candidate.values[n].value);
    std::vector<std::string> out;
    for (const Profile *profile : AllProfiles()) {
        sim::CurrentBoard().custom_id = profile->id;
        sim::EventLog().clear();
        CallBuilder(*candidate.builder, arguments);
        const auto &log = sim::EventLog();
        if (log.size() == 1 && std::equal(wanted.begin(), wanted.end(), log[0].begin()))
            out.push_back(profile->name);
    }
    sim::SetTracing(true);
    return out;
}

SelBytes Composed(const Candidate &candidate) {
    std::vector<uint32_t> values;
    for (const FoundValue &value : candidate.values)
        values.push_back(value.value);
    values.push_back(0);
    uint8_t bytes[SEL_RECORD_SIZE];
    tables::Compose(candidate.builder->ptStep, candidate.builder->ptHead->ucSteps, values.data(), bytes);
    SelBytes out;
    std::copy(std::begin(bytes), std::end(bytes), out.begin());
    return out;
}

} // namespace workbench
