// SPDX-License-Identifier: GPL-3.0-or-later
#include "why/reading.h"

#include <algorithm>

#include "simulator/calls.h"
#include "why/trials.h"

namespace workbench {
namespace {

bool IsCopy(const sim::Event &event, size_t size, size_t count) {
    return event.kind == sim::Kind::kCall && event.function == "memcpy_s" &&
           event.args == "size=" + std::to_string(size) + " count=" + std::to_string(count);
}

bool IsHandedOver(const Events &trace, size_t at) {
    return IsCopy(trace[at], SDR_SLOT_SIZE, SDR_SLOT_SIZE) && trace[at].result == 0 &&
           at + 1 < trace.size() && IsCopy(trace[at + 1], DEV_TAB_ENTRY_SIZE, DEV_TAB_ENTRY_SIZE) &&
           trace[at + 1].result == 0;
}

bool IsSign(const sim::Event &event, const std::string &function) {
    if (event.kind == sim::Kind::kLog)
        return event.function != function;
    return event.kind == sim::Kind::kDebug || IsBegun(event) || IsNamed(event) ||
           IsCopy(event, DEV_TAB_ENTRY_SIZE, DEV_TAB_ENTRY_SIZE);
}

} // namespace

bool IsBegun(const sim::Event &event) {
    return IsCopy(event, SDR_SLOT_SIZE, sizeof(oxa::SdrHead));
}

bool IsNamed(const sim::Event &event) {
    return event.kind == sim::Kind::kCall && event.function == "snprintf_s";
}

std::string FormatOf(const sim::Event &event) {
    const std::string key = "format=\"";
    const size_t at = event.args.find(key);
    return at == std::string::npos
               ? ""
               : event.args.substr(at + key.size(), event.args.size() - at - key.size() - 1);
}

std::vector<RecordMarks> MarkRecords(const Events &trace) {
    std::vector<RecordMarks> all;
    RecordMarks last;
    for (size_t at = 0; at < trace.size(); ++at)
        if (IsBegun(trace[at]))
            last.begun = at;
        else if (IsNamed(trace[at]))
            last.named = at;
        else if (IsHandedOver(trace, at))
            all.push_back(last);
    return all;
}

bool IsQuestion(const sim::Event &event) {
    static constexpr std::string_view kStore[] = {"OAL_",           "sigwrap_",     "lseek", "ftruncate",
                                                  "oxa_strerror_s", "epldio_write", "MW_Set"};
    const size_t id = sim::FindCall(event.function);
    return event.kind == sim::Kind::kCall && id != sim::kCallCount && !sim::kCalls[id].bounded &&
           std::none_of(std::begin(kStore), std::end(kStore),
                        [&](std::string_view prefix) { return event.function.starts_with(prefix); });
}

bool IsLine(const sim::Event &event) {
    return event.kind == sim::Kind::kLog || event.kind == sim::Kind::kDebug;
}

size_t BeginOf(const Events &trace, size_t at, const std::string &function) {
    while (at > 0 && !IsSign(trace[at - 1], function))
        --at;
    return at;
}

std::vector<size_t> OwnQuestions(const Events &trace, const RecordMarks &marks, const Row &row) {
    std::vector<size_t> own;
    for (size_t at = BeginOf(trace, marks.begun, row.function); at < marks.named; ++at)
        if (IsQuestion(trace[at]))
            own.push_back(at);
    return own;
}

std::vector<Answered> AnswersToNeeds(const Events &trace, const Row &row, size_t before) {
    std::vector<Answered> all;
    for (const oxa::Need &need : oxa::kNeeds) {
        if (need.eGroup != row.group)
            continue;
        Answered answered{&need, trace.size()};
        for (size_t at = 0; at < std::min(before, trace.size()); ++at)
            if (trace[at].function == need.pcCall && (*need.pcArgs == '\0' || trace[at].args == need.pcArgs))
                answered.at = at;
        all.push_back(answered);
    }
    return all;
}

bool IsMet(const oxa::Need &need, const sim::Event &event) {
    if (event.failed || (event.output ? event.result != 0 : false))
        return false;
    const uint64_t value = ValueOf(event);
    if (need.eWant == oxa::Want::kAtLeast)
        return static_cast<int64_t>(value) >= need.awValues[0];
    const bool is =
        std::find(need.awValues, need.awValues + need.ucValues, value) != need.awValues + need.ucValues;
    return is == (need.eWant == oxa::Want::kIs);
}

} // namespace workbench
