// SPDX-License-Identifier: GPL-3.0-or-later
//
// Start, faults, trace and invariants.  Files and arrays are in simulator_files.cpp, the text of events in
// simulator_format.cpp.
#include "simulator/simulator.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "simulator/platform_call.h"

namespace sim {

State &TheState() {
    static State *const state = new State; // never destroyed: calls may come until the very end
    return *state;
}

PendingStat &ThePendingStat() {
    static thread_local PendingStat pending;
    return pending;
}

void State::Violate(std::string text) {
    constexpr size_t kMost = 1000; // a loop that goes wrong must not eat the memory
    if (violations.size() < kMost)
        violations.push_back(std::move(text));
}

void State::Record(Event event) {
    if (trace_limit != 0 && trace.size() >= 2 * trace_limit)
        trace.erase(trace.begin(), trace.end() - static_cast<std::ptrdiff_t>(trace_limit));
    trace.push_back(std::move(event));
}

void State::Note(std::string text) {
    if (tracing) {
        Event event;
        event.kind = Kind::kNote;
        event.text = std::move(text);
        Record(std::move(event));
    }
}

// ---- the frame around a platform function -------------------------------------------------------

void Call::Enter() {
    if (++state_.calls == state_.die_at_call) [[unlikely]]
        Die();
    if (kCalls[id_].changes && ++state_.changes == state_.die_at_change) [[unlikely]]
        Die();
    CallCounter &counter = state_.counters[id_];
    ++counter.since_start;
    ++counter.since_clear;
    traced_ = state_.tracing && (state_.trace_bounded || !kCalls[id_].bounded);
    PendingStat &pending = ThePendingStat();
    if (pending.epoch != 0) [[unlikely]] {
        if (pending.epoch == state_.epoch && id_ != Id("_ssp_error")) {
            state_.Violate("sspFailedStat (" + std::string(pending.file) + ":" +
                           std::to_string(pending.line) + ") is followed by " +
                           std::string(kCalls[id_].name) + ", not by an error line");
            pending.epoch = 0;
        }
    }
}

bool Call::ArgsAreRead() const {
    return (traced_ && kCalls[id_].nature != Nature::kLine) || state_.counters[id_].rules_need_args;
}

namespace {

// "index=2" is not found in "index=21".
bool ArgsMatch(const std::string &args, const std::string &wanted) {
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    for (size_t at = args.find(wanted); at != std::string::npos; at = args.find(wanted, at + 1)) {
        const size_t end = at + wanted.size();
        const bool cut =
            !wanted.empty() && is_digit(wanted.back()) && end < args.size() && is_digit(args[end]);
        if (!cut)
            return true;
    }
    return false;
}

bool OccurrenceMatches(const Fault &fault, uint64_t count) {
    if (!fault.occurrence)
        return true;
    return fault.from_then_on ? count >= *fault.occurrence : count == *fault.occurrence;
}

} // namespace

void Call::Decide() {
    const CallCounter &counter = state_.counters[id_];
    const Nature nature = kCalls[id_].nature;
    if (nature == Nature::kFails || nature == Nature::kGetter) {
        const uint64_t number = ++state_.failable;
        if (state_.fail_at != 0 && (number == state_.fail_at || number == state_.fail_also_at ||
                                    (state_.fail_from_then_on && number > state_.fail_at)))
            fails_ = true;
    }
    if (counter.has_rules) {
        for (ActiveFault &active : state_.faults) {
            if (active.id != id_ || (active.fault.args && !ArgsMatch(args_, *active.fault.args)))
                continue;
            ++active.matched;
            const uint64_t count = active.fault.args ? active.matched : counter.since_start;
            if (rule_ == nullptr && OccurrenceMatches(active.fault, count)) {
                rule_ = &active.fault;
                rule_number_ = static_cast<size_t>(&active - state_.faults.data());
            }
        }
    }
    if (rule_ != nullptr)
        fails_ = !rule_->succeed && nature != Nature::kSteady;
    state_.fault_hit = state_.fault_hit || fails_ || rule_ != nullptr;
}

bool Call::FailsOrNull(std::initializer_list<const void *> pointers) {
    const bool null = std::find(pointers.begin(), pointers.end(), nullptr) != pointers.end();
    if (null && !null_) {
        null_ = true;
        state_.Violate("null pointer given to " + std::string(kCalls[id_].name) + "(" + args_ + ")");
    }
    return fails_ || null;
}

void Call::SetFirst(void *out, size_t size) {
    for (size_t byte = 0; byte < size; ++byte)
        static_cast<uint8_t *>(out)[byte] = static_cast<uint8_t>(*rule_->output >> (8 * byte));
}

void Call::Spoil(void *out, size_t size, size_t first_field) {
    std::memset(out, kRubbish, size);
    if (rule_ != nullptr && rule_->output)
        SetFirst(out, first_field);
}

void Call::SpoilBuffer(void *out, size_t size) {
    const bool given = rule_ != nullptr && rule_->output;
    std::memset(out, given ? static_cast<int>(*rule_->output & 0xFF) : kRubbish, size);
}

Call::~Call() {
    if (traced_ && kCalls[id_].nature != Nature::kLine) {
        Event event;
        event.function = kCalls[id_].name;
        event.args = std::move(args_);
        event.result = result_;
        event.failed = fails_;
        event.output = output_;
        event.rule = rule_number_;
        event.text = std::move(text_);
        state_.Record(std::move(event));
    }
    lock_.unlock();
    errno = errno_;
}

// ---- set-up -------------------------------------------------------------------------------------

void CloseEverything(State &state); // simulator_files.cpp
void MakeRoot();

void Start(Board board) {
    State &state = TheState();
    {
        const std::lock_guard lock(state.mutex);
        CloseEverything(state);
        ++state.epoch;
        state.board = std::move(board);
        state.faults.clear();
        state.fail_at = 0;
        state.failable = 0;
        state.calls = state.die_at_call = 0;
        state.changes = state.die_at_change = 0;
        state.writes = state.die_in_write = 0;
        state.fault_hit = false;
        std::fill(std::begin(state.counters), std::end(state.counters), CallCounter{});
        state.trace.clear();
        state.violations.clear();
        state.repository.clear();
        state.next_record_id = 1;
        state.event_log.clear();
        state.thresholds.reset();
        state.next_session = 1;
        state.guarded = Guarded{};
    }
    MakeRoot();
    for (const auto &[path, bytes] : state.board.files)
        WriteFile(path, bytes);
}

Board &CurrentBoard() {
    return TheState().board;
}

// ---- faults -------------------------------------------------------------------------------------

namespace {

// A rule that could never do anything is a mistake of its writer, and a test built on it would prove nothing.
void CheckRule(const Fault &fault, size_t id) {
    const auto refuse = [&](const char *why) {
        throw std::invalid_argument("fault rule for '" + fault.call + "': " + why);
    };
    if (id == kCallCount)
        refuse("no such platform function");
    const Nature nature = kCalls[id].nature;
    if (nature == Nature::kVoid || nature == Nature::kLine)
        refuse("this function returns nothing");
    if (nature == Nature::kSteady && !fault.result && !fault.output)
        refuse("this function cannot fail: the rule must give result or output");
    if ((fault.null_object || fault.null_operation) && nature != Nature::kGetter)
        refuse("only a service getter can give null");
    if (fault.occurrence && *fault.occurrence == 0)
        refuse("occurrences are counted from 1");
}

} // namespace

void AddFault(const Fault &fault) {
    const size_t id = FindCall(fault.call);
    CheckRule(fault, id);
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.faults.push_back({fault, id, 0});
    state.counters[id].has_rules = true;
    state.counters[id].rules_need_args = state.counters[id].rules_need_args || fault.args.has_value();
}

void ClearFaults() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.faults.clear();
    state.fail_at = 0;
    for (CallCounter &counter : state.counters) {
        counter.has_rules = false;
        counter.rules_need_args = false;
    }
}

void FailCall(uint64_t k, bool from_then_on) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.fail_at = k;
    state.fail_from_then_on = from_then_on;
    state.fail_also_at = 0;
}

void FailBothCalls(uint64_t k, uint64_t l) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.fail_at = k;
    state.fail_from_then_on = false;
    state.fail_also_at = l;
}

uint64_t FailableCalls() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return state.failable;
}

bool FaultWasHit() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return state.fault_hit;
}

std::vector<std::string> CallNames() {
    std::vector<std::string> names;
    for (const CallFacts &facts : kCalls)
        names.emplace_back(facts.name);
    return names;
}

// ---- trace --------------------------------------------------------------------------------------

const std::vector<Event> &Trace() {
    return TheState().trace;
}

void ClearTrace() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.trace.clear();
    for (CallCounter &counter : state.counters)
        counter.since_clear = 0;
}

void SetTracing(bool on) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.tracing = on;
}

void SetTraceLimit(size_t events) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.trace_limit = events;
}

void SetPrintingLines(bool on) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.printing_lines = on;
}

void SetTraceBounded(bool on) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.trace_bounded = on;
}

std::vector<Event> Logs() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    std::vector<Event> logs;
    std::copy_if(state.trace.begin(), state.trace.end(), std::back_inserter(logs),
                 [](const Event &event) { return event.kind == Kind::kLog; });
    return logs;
}

std::vector<std::string> LogTexts() {
    std::vector<std::string> texts;
    for (Event &event : Logs())
        texts.push_back(std::move(event.text));
    return texts;
}

std::vector<std::string> LogTexts(Level level) {
    std::vector<std::string> texts;
    for (Event &event : Logs())
        if (event.level == level)
            texts.push_back(std::move(event.text));
    return texts;
}

size_t CountCalls(const std::string &function) {
    const size_t id = FindCall(function);
    if (id == kCallCount)
        throw std::invalid_argument("CountCalls: no such platform function: " + function);
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return static_cast<size_t>(state.counters[id].since_clear);
}

size_t CountText(const std::string &text) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return static_cast<size_t>(std::count_if(state.trace.begin(), state.trace.end(), [&](const Event &event) {
        const bool line =
            event.kind == Kind::kLog || event.kind == Kind::kDebug || event.kind == Kind::kAudit;
        return line && event.text == text;
    }));
}

// ---- invariants ---------------------------------------------------------------------------------

void CheckGuards(const State &state, std::vector<std::string> &violations); // simulator_files.cpp

std::vector<std::string> Violations() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    std::vector<std::string> all = state.violations;
    const PendingStat &pending = ThePendingStat();
    if (pending.epoch == state.epoch) {
        all.push_back("sspFailedStat (" + std::string(pending.file) + ":" + std::to_string(pending.line) +
                      ") is followed by nothing");
    }
    for (const auto &[session, number] : state.sessions)
        all.push_back("session " + std::to_string(number) + " is still open");
    for (const auto &[handle, ini] : state.inis)
        all.push_back("INI file " + ini->path + " is still open");
    for (const auto &[descriptor, path] : state.descriptors)
        all.push_back("file " + path + " is still open (descriptor)");
    for (const auto &[stream, path] : state.streams)
        all.push_back("file " + path + " is still open (stream)");
    for (const auto &[key, semaphore] : state.semaphores)
        if (semaphore.locked)
            all.push_back("semaphore " + std::to_string(key) + " is still locked");
    CheckGuards(state, all);
    return all;
}

// ---- repository and event log -------------------------------------------------------------------

std::vector<RepositoryRecord> &Repository() {
    return TheState().repository;
}

uint16_t &NextRecordId() {
    return TheState().next_record_id;
}

std::vector<std::vector<uint8_t>> &EventLog() {
    return TheState().event_log;
}

} // namespace sim
