// SPDX-License-Identifier: GPL-3.0-or-later
//
// Why a row gives nothing.  The trace tells where its records ended; where it says nothing the platform's answers do,
// and each is tried.
#include <algorithm>
#include <cstdio>
#include <map>

#include "base/text.h"
#include "why/why.h"

namespace workbench {
namespace {

// What is looked for, and what is known of it so far.
struct Search {
    const Trials &trials;
    const Row &row;
    const std::optional<std::string> &name;
    Absent found;

    const Events &trace() const {
        return trials.AsItIs().trace;
    }
    bool IsWanted(const Sensor &sensor) const {
        return Built(row, sensor) && (!name || NameOf(sensor) == *name);
    }
    bool ComesWith(const Trial &trial) const {
        return trial.counted && std::any_of(
                                    trial.sensors.begin(), trial.sensors.end(),
                                    [this](const Sensor &sensor) { return IsWanted(sensor); });
    }
    void Decide(const sim::Event &event) {
        found.decided_by.push_back({event, false, trials.PlaceOf(event), {}, {}, {}});
    }
    bool OneOfSeveral() const { // of which another may be in the set
        return name && HasNumber(row);
    }
};

std::string LineText(const sim::Event &event) {
    const std::string who = event.kind == sim::Kind::kLog ? event.function + ": " : "";
    return who + Printable(OneLine(event.text));
}

// The line that was written right behind an event.
std::string LineBehind(const Events &trace, size_t at) {
    for (++at; at < trace.size() && !IsQuestion(trace[at]) && !IsBegun(trace[at]); ++at)
        if (IsLine(trace[at]))
            return LineText(trace[at]);
    return "";
}

std::string AnswerText(const sim::Event &event) {
    return CallText(event) + (event.failed ? " failed" : " answered " + ValueText(event));
}

// An answer that brings the sensor, of those that a gate or a count may wait for.
std::string TryOthers(const Search &search, const sim::Event &event) {
    const uint64_t value = ValueOf(event);
    for (const uint64_t other : {uint64_t{1}, value + 1, uint64_t{0}, uint64_t{2}})
        if (const auto rule = Answering(event, other); rule && (event.failed || other != value))
            if (search.ComesWith(search.trials.With({*rule})))
                return "with " + CallText(event) + " answering " + ValueText(event, other) +
                       " it is in the set";
    return "";
}

// ---- the pass did not get there -------------------------------------------------------------------------------

std::vector<sim::Event> DistinctQuestions(const Events &trace) {
    std::vector<sim::Event> all;
    std::set<std::string> seen;
    for (const sim::Event &event : trace)
        if (IsQuestion(event) && seen.insert(CallText(event)).second)
            all.push_back(event);
    return all;
}

std::string LastLine(const Events &trace) {
    const auto last = std::find_if(trace.rbegin(), trace.rend(),
                                   [](const sim::Event &event) { return event.kind == sim::Kind::kLog; });
    return last == trace.rend() ? "" : LineText(*last);
}

bool ByPassWithoutCount(Search &search) {
    if (search.trials.AsItIs().counted)
        return false;
    search.found.cause = Cause::kPassEnded;
    search.found.text = "the pass ended without a count: nothing of it is in the set";
    search.found.line = LastLine(search.trace());
    for (const sim::Event &event : DistinctQuestions(search.trace())) {
        if (event.rule ? search.trials.WithoutFault(*event.rule).counted : false) {
            search.Decide(event);
            search.found.tried = "without that [[fault]] the pass writes a count";
        } else if (const auto rule = Answering(event, 1);
                   rule && !event.rule && search.trials.With({*rule}).counted) {
            search.Decide(event);
            search.found.tried = "with " + CallText(event) + " answering 1 the pass writes a count";
        }
    }
    return true;
}

bool ByRackBoard(Search &search) {
    const std::vector<Row> &rows = RowsOf(search.trials.profile());
    const bool has_rack = std::any_of(rows.begin(), rows.end(),
                                      [](const Row &row) { return row.group == oxa::Group::kRackTable; });
    if (!has_rack || search.row.group == oxa::Group::kRackTable)
        return false;
    for (const sim::Event &event : search.trace())
        if (event.function == "get_default_board_id" && !event.failed && ValueOf(event) == oxa::kBoardRack) {
            search.found.cause = Cause::kPassEnded;
            search.found.text =
                "the pass ended before: the rack management board has its own table and nothing else";
            search.Decide(event);
            search.found.tried = TryOthers(search, event);
            return true;
        }
    return false;
}

// ---- the record was begun -------------------------------------------------------------------------------------

// Rows of voltage domains share their patterns; which domain it is was asked.
bool IsOfRow(const Events &trace, size_t named, const Row &row) {
    const std::string format = FormatOf(trace[named]);
    if (format != row.name && (row.variant.empty() || format != row.variant))
        return false;
    const oxa::Behaviour &does = row.Kind().tDoes;
    if (does.eGate != oxa::Gate::kCpuVoltage)
        return true;
    size_t begun = named;
    while (begun > 0 && !IsBegun(trace[begun]))
        --begun;
    const std::string wanted = "index=" + std::to_string(does.ucGateId);
    for (size_t at = BeginOf(trace, begun, row.function); at < begun; ++at)
        if (trace[at].function == "HAL_GetCpuVoltSdrInfoforSensor" && trace[at].args == wanted)
            return true;
    return false;
}

void TellPrintFailed(Search &search, size_t named) {
    search.found.cause = Cause::kPrint;
    search.found.text = "its name could not be printed";
    search.Decide(search.trace()[named]);
}

// What became of a record whose name was printed: true when it was not handed over.
bool EndedBehindName(Search &search, size_t named) {
    const Events &trace = search.trace();
    const sim::Event *read = nullptr;
    for (size_t at = named + 1; at < trace.size() && !IsBegun(trace[at]) && !IsNamed(trace[at]); ++at) {
        const sim::Event &event = trace[at];
        if (event.function == "sigwrap_read")
            read = &event;
        if (event.kind == sim::Kind::kLog && event.function == "checkSensorExist") {
            search.found.cause = Cause::kStored;
            search.found.text = "the extended store has a record of that name already";
            search.found.line = LineText(event);
            if (read != nullptr)
                search.Decide(*read);
            return true;
        }
        if (event.kind == sim::Kind::kDebug && event.text.find("may wrap") != std::string::npos) {
            TellPrintFailed(search, named);
            search.found.line = LineText(event);
            return true;
        }
        if (event.failed && event.function == "memcpy_s") {
            search.found.cause = Cause::kCallFailed;
            search.found.text = "the finished record could not be copied";
            search.Decide(event);
            return true;
        }
    }
    return false;
}

bool ByName(Search &search) {
    const Events &trace = search.trace();
    for (size_t at = 0; at < trace.size(); ++at) {
        if (!IsNamed(trace[at]) || !IsOfRow(trace, at, search.row))
            continue;
        if (trace[at].result < 0) {
            if (search.OneOfSeveral())
                continue; // which one it was is seen when the fault is taken away
            TellPrintFailed(search, at);
            return true;
        }
        if (search.name && trace[at].text.substr(0, search.name->size()) != *search.name)
            continue;
        if (EndedBehindName(search, at))
            return true;
    }
    return false;
}

// ---- a fault of the board file -------------------------------------------------------------------------------

bool ByFault(Search &search, bool failed) {
    std::map<size_t, bool> tried;
    const Events &trace = search.trace();
    for (size_t at = 0; at < trace.size(); ++at) {
        const sim::Event &event = trace[at];
        if (!event.rule || event.failed != failed)
            continue;
        const auto [entry, first] = tried.try_emplace(*event.rule, false);
        if (!first || !search.ComesWith(search.trials.WithoutFault(*event.rule)))
            continue;
        const bool below = event.function == "HAL_GetCpuSilkScreenIndexFixValue" &&
                           (search.row.Kind().tDoes.ucFlags & oxa::kDropBelowFirstCpu) != 0;
        search.found.cause = IsNamed(event) ? Cause::kPrint
                             : failed       ? Cause::kCallFailed
                             : below        ? Cause::kBelowFirst
                                            : Cause::kGate;
        search.found.text = IsNamed(event)     ? "its name could not be printed"
                            : below && !failed ? "its printed CPU number is below the first one"
                                               : AnswerText(event);
        search.found.line = LineBehind(trace, at);
        search.found.tried = "without that [[fault]] it is in the set";
        search.Decide(event);
        return true;
    }
    return false;
}

// ---- refused before it was begun -----------------------------------------------------------------------------

// The last line of the row in its own part of the trace, where no record was begun behind it.
bool IsRefusal(const Events &trace, size_t at, const Row &row) {
    const sim::Event &event = trace[at];
    if (event.kind != sim::Kind::kLog || row.function.empty() || event.function != row.function)
        return false;
    const size_t begin = BeginOf(trace, at, row.function);
    if (begin > 0 && (IsNamed(trace[begin - 1]) || trace[begin - 1].function == "checkSensorExist"))
        return false; // about a record that was named
    for (size_t next = at + 1; next < trace.size(); ++next) {
        if (IsBegun(trace[next]) || trace[next].function == row.function)
            return false;
        if (IsLine(trace[next]))
            break;
    }
    return true;
}

bool ByRefusal(Search &search) {
    const Events &trace = search.trace();
    std::set<std::string> seen;
    for (size_t at = 0; at < trace.size(); ++at) {
        if (!IsRefusal(trace, at, search.row))
            continue;
        size_t question = at;
        while (question > BeginOf(trace, at, search.row.function) && !IsQuestion(trace[question]))
            --question;
        if (!IsQuestion(trace[question]) || !seen.insert(CallText(trace[question])).second)
            continue;
        const sim::Event &event = trace[question];
        const std::string tried = TryOthers(search, event);
        if (tried.empty() && search.OneOfSeveral())
            continue; // another index was refused
        search.found.cause = event.failed ? Cause::kCallFailed : Cause::kGate;
        search.found.text = AnswerText(event);
        search.found.line = LineText(trace[at]);
        search.found.tried = tried;
        search.Decide(event);
        return true;
    }
    return false;
}

// ---- the instance ----------------------------------------------------------------------------------------------

bool AddsIndex(const Row &row) {
    const oxa::InstanceRule rule = row.Kind().tDoes.eInstance;
    return rule == oxa::InstanceRule::kAdd || rule == oxa::InstanceRule::kAddOnly;
}

// Whether the pass came to this index: a part has this number, or there are as many parts.
bool Reached(const Search &search, unsigned index) {
    const Events &trace = search.trace();
    for (const auto &[need, last] : AnswersToNeeds(trace, search.row, trace.size()))
        for (size_t at = 0; need->bEach && at < trace.size(); ++at)
            if (trace[at].function == need->pcCall && !trace[at].failed && ValueOf(trace[at]) == index)
                return true;
    const std::vector<Answered> needs = AnswersToNeeds(trace, search.row, trace.size());
    return std::none_of(needs.begin(), needs.end(), [&](const Answered &answer) {
        return answer.need->bEach ||
               (answer.need->bCount && answer.at < trace.size() && ValueOf(trace[answer.at]) < index);
    });
}

// Whether an index that the pass came to moves the instance past 255 and prints this name.
bool Passes255(const Search &search) {
    const unsigned base = search.row.Kind().tHead.auc[SDR_ENTITY_INSTANCE];
    if (!search.name)
        return search.found.built.empty();
    for (unsigned index = 256 - base; base != 0 && index < 256; ++index) {
        char printed[64];
        std::snprintf(printed, sizeof printed, search.row.name.c_str(), index);
        if (*search.name == std::string(printed).substr(0, search.name->size()) && Reached(search, index))
            return true;
    }
    return false;
}

bool ByWrap(Search &search) {
    const Events &trace = search.trace();
    if (!AddsIndex(search.row) || search.row.name.find("%s") != std::string::npos || !Passes255(search))
        return false;
    for (size_t at = 1; at < trace.size(); ++at) {
        if (trace[at].kind != sim::Kind::kDebug || !IsBegun(trace[at - 1]) ||
            trace[at].text.find("ucInstance may wrap") == std::string::npos)
            continue;
        for (const auto &[need, answer] : AnswersToNeeds(trace, search.row, at)) {
            if (answer < trace.size() && !need->bEach && !IsMet(*need, trace[answer]))
                return false;
            if (answer < trace.size() && need->bCount)
                search.Decide(trace[answer]);
        }
        search.found.cause = Cause::kWrap;
        search.found.text = "its entity instance would pass 255";
        search.found.line = LineText(trace[at]);
        return true;
    }
    return false;
}

// ---- the group was not walked --------------------------------------------------------------------------------

// The need as an answer that meets it, for every call or, where it was asked, for this one.
std::optional<sim::Fault> Meeting(const oxa::Need &need, const Events &trace, size_t at) {
    sim::Event asked;
    asked.function = need.pcCall;
    asked.args = need.pcArgs;
    if (at < trace.size())
        asked = trace[at];
    const uint64_t value =
        need.eWant == oxa::Want::kIsNot ? (need.bEach ? 1 : ValueOf(asked) + 1) : need.awValues[0];
    return Answering(asked, std::max<uint64_t>(value, need.bEach ? 1 : value));
}

std::string WantText(const oxa::Need &need, const sim::Event &event) {
    std::vector<std::string> values;
    for (unsigned i = 0; i < need.ucValues; ++i)
        values.push_back(ValueText(event, need.awValues[i]));
    const std::string all = Join(values, " or ");
    return need.eWant == oxa::Want::kIs      ? "must be " + all
           : need.eWant == oxa::Want::kIsNot ? "must not be " + all
                                             : "must be at least " + all;
}

void TellUnmet(Search &search, const std::vector<Answered> &needs) {
    const Events &trace = search.trace();
    std::vector<sim::Fault> rules;
    std::vector<std::string> wanted;
    for (const auto &[need, at] : needs) {
        const bool asked = at < trace.size();
        if (asked && IsMet(*need, trace[at]))
            continue;
        if (const auto rule = Meeting(*need, trace, at))
            rules.push_back(*rule);
        if (asked) {
            search.Decide(trace[at]);
            wanted.push_back(AnswerText(trace[at]) + " and " + WantText(*need, trace[at]));
        }
    }
    search.found.text = Join(wanted, "; ");
    if (search.ComesWith(search.trials.With(rules)))
        search.found.tried = rules.size() == 1 ? "with that answer it is in the set"
                                               : "with all of them answered so it is in the set";
}

bool ByNeeds(Search &search) {
    const Events &trace = search.trace();
    const std::vector<Answered> needs = AnswersToNeeds(trace, search.row, trace.size());
    for (const auto &[need, at] : needs) {
        if (at == trace.size() || IsMet(*need, trace[at]) || (need->bEach && search.OneOfSeveral()))
            continue;
        search.found.cause = trace[at].failed ? Cause::kCallFailed
                             : need->bCount   ? Cause::kCount
                                              : Cause::kNotWalked;
        TellUnmet(search, needs);
        return true;
    }
    return false;
}

// One of several parts that was left out: an offline CPU, a fan without number, a disk that is no NVMe disk.
bool ByPart(Search &search) {
    const Events &trace = search.trace();
    std::set<std::string> seen;
    for (const auto &[need, last] : AnswersToNeeds(trace, search.row, trace.size())) {
        for (size_t at = 0; need->bEach && at < trace.size(); ++at) {
            if (trace[at].function != need->pcCall || IsMet(*need, trace[at]) ||
                !seen.insert(CallText(trace[at])).second)
                continue;
            const auto rule = Meeting(*need, trace, at);
            if (!rule || !search.ComesWith(search.trials.With({*rule})))
                continue;
            search.found.cause = trace[at].failed ? Cause::kCallFailed : Cause::kNotWalked;
            search.found.text = AnswerText(trace[at]) + " and " + WantText(*need, trace[at]);
            search.found.line = LineBehind(trace, at);
            search.found.tried = "with that answer it is in the set";
            search.Decide(trace[at]);
            return true;
        }
    }
    return false;
}

void TellCount(Search &search) {
    const Events &trace = search.trace();
    search.found.cause = Cause::kCount;
    search.found.text = "no such index on this board";
    for (const auto &[need, at] : AnswersToNeeds(trace, search.row, trace.size()))
        if (need->bCount && at < trace.size())
            search.Decide(trace[at]);
}

} // namespace

std::string Word(Cause cause) {
    switch (cause) {
    case Cause::kGate:
        return "gate";
    case Cause::kCallFailed:
        return "call failed";
    case Cause::kStored:
        return "stored already";
    case Cause::kPrint:
        return "name not printed";
    case Cause::kWrap:
        return "instance wraps";
    case Cause::kPassEnded:
        return "pass ended";
    case Cause::kNotWalked:
        return "not walked";
    case Cause::kCount:
        return "no such index";
    case Cause::kBelowFirst:
        return "below the first CPU";
    }
    return "";
}

Absent WhyAbsent(const Trials &trials, const Row &row, const std::optional<std::string> &name) {
    Search search{trials, row, name, {}};
    search.found.row = &row;
    for (const Sensor &sensor : trials.AsItIs().sensors)
        if (Built(row, sensor))
            search.found.built.push_back(NameOf(sensor));
    if (ByPassWithoutCount(search) || ByRackBoard(search) || ByName(search) || ByFault(search, true) ||
        ByRefusal(search) || ByWrap(search) || ByNeeds(search) || ByPart(search) || ByFault(search, false))
        return search.found;
    TellCount(search);
    return search.found;
}

} // namespace workbench
