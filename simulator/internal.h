// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the units of the simulated platform share: the state and Call, the frame around every platform
// function.
#ifndef OXA_SIMULATOR_INTERNAL_H
#define OXA_SIMULATOR_INTERNAL_H

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "oxa/platform.h"
#include "simulator/calls.h"
#include "simulator/simulator.h"

namespace sim {

inline constexpr uint8_t kRubbish = 0xA5;     // what a failed call leaves in its outputs
inline constexpr int kBoundBroken = 22;       // what the bounded functions answer to a broken bound
inline constexpr uint16_t kIpmiFailed = 0xC3; // what an IPMI call answers when a fault hits it

// ---- state --------------------------------------------------------------------------------------

struct ActiveFault {
    Fault fault;
    size_t id = 0;
    uint64_t matched = 0; // calls whose arguments matched so far
};

struct CallCounter {
    uint64_t since_start = 0;
    uint64_t since_clear = 0;
    bool has_rules = false;
    bool rules_need_args = false;
};

struct OpenIni { // behind an IniFile handle
    std::string path;
    std::vector<std::pair<std::string, std::vector<std::pair<std::string, uint32_t>>>> sections;
};

struct Semaphore {
    bool created = false;
    bool locked = false;
};

struct Guarded {
    std::vector<uint8_t> memory;
    StaticArrays arrays;
    bool made = false;
};

struct State {
    std::mutex mutex;
    uint64_t epoch = 1; // counts Start
    Board board;

    std::vector<ActiveFault> faults;
    uint64_t fail_at = 0; // 0: off
    bool fail_from_then_on = false;
    uint64_t fail_also_at = 0; // 0: off
    uint64_t failable = 0;
    uint64_t calls = 0, die_at_call = 0; // 0: off
    uint64_t changes = 0, die_at_change = 0;
    uint64_t writes = 0, die_in_write = 0;
    double share_of_last_write = 0;
    bool fault_hit = false;
    CallCounter counters[kCallCount] = {};

    bool tracing = true;
    bool trace_bounded = false;
    size_t trace_limit = 0; // 0: none
    bool printing_lines = false;
    std::vector<Event> trace;
    std::vector<std::string> violations;

    std::vector<RepositoryRecord> repository;
    uint16_t next_record_id = 1;
    std::vector<std::vector<uint8_t>> event_log;
    std::optional<SensorThreshTable> thresholds; // set once the library replaced the table

    uint32_t next_session = 1;
    std::map<const IpmiLocalSession *, uint32_t> sessions;
    std::map<const IniFile *, std::unique_ptr<OpenIni>> inis;
    std::map<uint32_t, Semaphore> semaphores;
    std::map<int, std::string> descriptors; // files that sigwrap_open_mode gave out
    std::map<FILE *, std::string> streams;  // files that oxa_fopen_s gave out
    Guarded guarded;

    void Violate(std::string text);
    void Record(Event event);
    void Note(std::string text);
};
State &TheState();
inline Board &TheBoard() {
    return TheState().board;
}

// Which error statistic waits for its error line, per thread.
struct PendingStat {
    uint64_t epoch = 0; // of the Start it belongs to; 0: none waits
    uint32_t line = 0;
    char file[64] = {};
};
PendingStat &ThePendingStat();

// ---- arguments as text --------------------------------------------------------------------------

struct Bytes {
    const uint8_t *data = nullptr;
    size_t size = 0;
};
struct FileOf { // the path behind a descriptor, a stream or an INI handle
    std::optional<int> descriptor = {};
    FILE *stream = nullptr;
    const IniFile *ini = nullptr;
};
struct SessionOf {
    const IpmiLocalSession *session = nullptr;
};

std::string Hex(const uint8_t *data, size_t size); // "51 20"
void AppendQuoted(std::string &out, const char *text);
void AppendValue(std::string &out, const char *text);
void AppendValue(std::string &out, const Bytes &bytes);
void AppendValue(std::string &out, const FileOf &file);
void AppendValue(std::string &out, const SessionOf &session);
template <class T>
requires std::is_integral_v<T>
void AppendValue(std::string &out, T value) {
    out += std::to_string(value);
}

inline void AppendArgs(std::string &) {}
template <class V, class... Rest>
void AppendArgs(std::string &out, const char *name, const V &value, const Rest &...rest) {
    if (!out.empty())
        out += ' ';
    out += name;
    out += '=';
    AppendValue(out, value);
    AppendArgs(out, rest...);
}

// ---- the frame around a platform function -------------------------------------------------------

// How many bytes of an out-parameter a rule's `output` sets: its first field.
template <class T> inline constexpr size_t kFirstField = std::min<size_t>(sizeof(T), 8);
template <> inline constexpr size_t kFirstField<HalHddBackpanelList> = 4;
template <> inline constexpr size_t kFirstField<GpuAssetInfo> = 4;
template <> inline constexpr size_t kFirstField<SensorThreshTable> = 4;
template <> inline constexpr size_t kFirstField<MwSpecificSensorInfo> = 1;

// Holds the lock for the length of the call, keeps errno, decides about faults and records the event.
// Arguments are given as name, value, name, value; they become text only when somebody reads it.
class Call {
public:
    template <class... Parts> explicit Call(size_t id, const Parts &...parts) : id_(id) {
        Enter();
        if (ArgsAreRead())
            AppendArgs(args_, parts...);
        Decide();
    }
    ~Call();
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    State &state() {
        return state_;
    }
    bool Fails() const {
        return fails_;
    }
    bool FailsOrNull(std::initializer_list<const void *> pointers); // null: a violation
    const Fault *rule() const {
        return rule_;
    }
    int FaultErrno(int usual) const {
        return rule_ != nullptr && rule_->errno_value != 0 ? rule_->errno_value : usual;
    }

    // Result of the call: the rule's or the one that fits; remembered for the trace.
    template <class R> R Return(R usual) {
        const R result = rule_ != nullptr && rule_->result ? static_cast<R>(*rule_->result) : usual;
        result_ = static_cast<int64_t>(result);
        return result;
    }
    // Result of a function that cannot fail: a rule sets it by `result` or by `output`.
    template <class R> R Value(R usual) {
        if (rule_ != nullptr && !rule_->result && rule_->output)
            usual = static_cast<R>(*rule_->output);
        return Return(usual);
    }
    void SetErrno(int value) {
        errno_ = value;
    }
    void SetText(std::string text) {
        text_ = std::move(text);
    }                                              // shown with the event
    void SetOutput(const void *out, size_t size) { // what the caller got, for the trace
        output_ = 0;
        for (size_t byte = 0; byte < size; ++byte)
            *output_ |= uint64_t{static_cast<const uint8_t *>(out)[byte]} << (8 * byte);
    }
    bool Traced() const {
        return traced_;
    }

    // Rubbish or the rule's value into an out-parameter of a call that failed.
    void Spoil(void *out, size_t size, size_t first_field);
    void SpoilBuffer(void *out, size_t size); // the rule's value fills the whole buffer
    template <class T> void Spoil(T *out) {
        Spoil(out, sizeof(T), kFirstField<T>);
    }
    // The rule's value over an out-parameter of a call that succeeded.
    template <class T> void Override(T *out) {
        if (rule_ != nullptr && rule_->output)
            SetFirst(out, kFirstField<T>);
    }

private:
    void Enter();
    bool ArgsAreRead() const;
    void Decide();
    void SetFirst(void *out, size_t size);

    int errno_ = errno;
    State &state_ = TheState();
    std::unique_lock<std::mutex> lock_{state_.mutex};
    size_t id_;
    bool traced_ = false;
    bool fails_ = false;
    bool null_ = false; // reported once per call
    const Fault *rule_ = nullptr;
    std::optional<size_t> rule_number_;
    std::optional<uint64_t> output_;
    int64_t result_ = 0;
    std::string args_;
    std::string text_;
};

// The usual shape: one out-parameter, 0 or -1.  `present` false: the board has no answer.
template <class T> int32_t GiveIf(Call &call, bool present, T *out, const std::type_identity_t<T> &value) {
    if (call.FailsOrNull({out}) || (!present && !(call.rule() != nullptr && call.rule()->succeed))) {
        if (out != nullptr)
            call.Spoil(out);
        return call.Return<int32_t>(-1);
    }
    *out = value;
    call.Override(out);
    call.SetOutput(out, kFirstField<T>);
    return call.Return<int32_t>(0);
}
template <class T> int32_t Give(Call &call, T *out, const std::type_identity_t<T> &value) {
    return GiveIf(call, true, out, value);
}
// No out-parameter, 0 or -1.
inline int32_t Plain(Call &call) {
    return call.Return<int32_t>(call.Fails() ? -1 : 0);
}
// A service getter: the object, one whose operations are null, or null.
template <class T> const T *GiveService(Call &call, bool present, const T &object) {
    static constexpr T kNullOperations{};
    const Fault *rule = call.rule();
    const T *given = present ? &object : nullptr;
    if (call.Fails())
        given = rule != nullptr && rule->null_operation ? &kNullOperations : nullptr;
    call.Return<int32_t>(given != nullptr ? 1 : 0);
    return given;
}
template <class K, class V>
V Lookup(const std::map<K, V> &map, const std::type_identity_t<K> &key, V absent) {
    const auto found = map.find(key);
    return found == map.end() ? absent : found->second;
}

// ---- sudden death -------------------------------------------------------------------------------

[[noreturn]] void Die(); // the lock is held
// Counts a write; how many bytes of it still come when the process is to die in it.
std::optional<size_t> LastBytes(State &state, size_t size);

// ---- files under the root -----------------------------------------------------------------------

void CloseDescriptor(int descriptor);
void CloseStream(FILE *stream, const std::string &library_path);
void MakeParents(const std::string &real_path);
std::optional<std::vector<uint8_t>> ReadWhole(const std::string &real_path, int &error); // error: errno
bool WriteWhole(const std::string &real_path, const std::vector<uint8_t> &bytes);        // errno
void NoteStorageTrouble(const std::string &real_path, int error); // kept when it is one of the storage
// Without a lock, for the functions of the C library that the simulator stands in front of.
bool IsLibraryDescriptor(int descriptor);
void MarkLibraryDescriptor(int descriptor, bool ours);
bool IsLibraryStream(FILE *stream);
void MarkLibraryStream(FILE *stream, bool ours);
bool IsLibraryPath(const char *path);
bool IsLibraryUnit(const char *file); // source file names that may stand in lines

} // namespace sim
#endif
