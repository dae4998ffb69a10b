// SPDX-License-Identifier: GPL-3.0-or-later
//
// Sudden death: the process is killed between two platform calls or in the middle of a write, where a kill from outside
// would hardly ever hit.
#include <algorithm>
#include <csignal>
#include <unistd.h>

#include "simulator/state.h"

namespace sim {

namespace {

std::function<void()> &LastWords() {
    static auto *const last = new std::function<void()>;
    return *last;
}

} // namespace

void Die() {
    TheState().mutex.unlock(); // nobody comes back to the call that holds it
    if (LastWords())
        LastWords()();
    for (;;)
        kill(getpid(), SIGKILL);
}

std::optional<size_t> LastBytes(State &state, size_t size) {
    if (++state.writes != state.die_in_write)
        return std::nullopt;
    return std::min(size, static_cast<size_t>(static_cast<double>(size) * state.share_of_last_write));
}

void DieAtCall(uint64_t k) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.die_at_call = k;
}

void DieAtChange(uint64_t k) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.die_at_change = k;
}

uint64_t ChangesMade() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return state.changes;
}

uint64_t WritesMade() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return state.writes;
}

void BeforeDying(std::function<void()> last) {
    LastWords() = std::move(last);
}

void DieInWrite(uint64_t k, double share) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    state.die_in_write = k;
    state.share_of_last_write = share;
}

} // namespace sim
