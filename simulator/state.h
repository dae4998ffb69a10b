// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the simulated platform keeps between two calls of the library: one state for the process.
#ifndef OXA_SIMULATOR_STATE_H
#define OXA_SIMULATOR_STATE_H

#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "oxa/platform.h"
#include "simulator/calls.h"
#include "simulator/simulator.h"

namespace sim {

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
    std::thread::id holder = {};
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
    std::condition_variable semaphore_freed;
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

// ---- sudden death -------------------------------------------------------------------------------

[[noreturn]] void Die(); // the lock is held
// Counts a write; how many bytes of it still come when the process is to die in it.
std::optional<size_t> LastBytes(State &state, size_t size);

} // namespace sim
#endif
