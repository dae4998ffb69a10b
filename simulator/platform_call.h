// SPDX-License-Identifier: GPL-3.0-or-later
//
// The frame around every platform function: its arguments as text, the faults that may hit it, what it answers.
#ifndef OXA_SIMULATOR_PLATFORM_CALL_H
#define OXA_SIMULATOR_PLATFORM_CALL_H

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "oxa/platform.h"
#include "simulator/simulator.h"
#include "simulator/state.h"

namespace sim {

inline constexpr uint8_t kRubbish = 0xA5;     // what a failed call leaves in its outputs
inline constexpr int kBoundBroken = 22;       // what the bounded functions answer to a broken bound
inline constexpr uint16_t kIpmiFailed = 0xC3; // what an IPMI call answers when a fault hits it

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
    // Lets other threads call until one of them has made it true; false: the time is over.
    template <class Until>
    bool Wait(std::condition_variable &changed, uint32_t milliseconds, const Until &until) {
        return changed.wait_for(lock_, std::chrono::milliseconds(milliseconds), until);
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

} // namespace sim
#endif
