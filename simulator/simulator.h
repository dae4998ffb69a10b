// SPDX-License-Identifier: GPL-3.0-or-later
//
// The simulated platform: defines every function that the library imports (oxa/platform.h) on top of a Board,
// with fault injection, a trace of everything that crosses the border, and invariants that are always on.
// One process holds one simulated platform and one fresh copy of the library.
#ifndef OXA_SIMULATOR_SIMULATOR_H
#define OXA_SIMULATOR_SIMULATOR_H

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "oxa/platform.h"
#include "oxa/records.h"
#include "simulator/board.h"

namespace sim {

// ---- set-up -------------------------------------------------------------------------------------

// The platform has no place for the library's files: no folder can be made, the disk is full.  The text names the path
// and the cause.
struct StorageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Forgets faults, trace, violations, repository and event log, and takes over the board; board.files are
// written under the root directory, which is there afterwards; StorageError.  The library's own state is not touched (it has no reset): one test, one
// process.
void Start(Board board);

// Sets the library back to what it was when the program began, so that one process can make many runs.  Only between
// calls, and only of the shared object.
void ForgetLibraryState();

// What the library keeps between calls, as it stands; where it stands, for who looks for a variable in it.
struct LibraryMemory {
    const uint8_t *begin = nullptr;
    std::vector<uint8_t> bytes;
};
LibraryMemory KeptByLibrary();

Board &CurrentBoard(); // may be changed while running: the platform reads it at every call

// Directory that stands for "/" of the library's paths.  Default: a fresh directory under TMPDIR, removed at
// exit.  SetRoot comes before Start (which writes the board's files); a directory given by hand is never
// removed.
void SetRoot(const std::string &directory);
std::string Root();
// SIGINT, SIGTERM and SIGHUP remove the directory that was made here before they end the process.
void RemoveRootWhenInterrupted();
std::string RealPath(const std::string &library_path);
// Instead of a directory, for programs that make many short runs: the library's files are in memory and never on disk.
// Call it before everything else.  Where a file ends up in the file system (RealPath) means nothing then.
void KeepFilesInMemory();
void RemoveMemoryFiles();
std::vector<uint8_t> ReadFile(const std::string &library_path);                     // empty when absent
void WriteFile(const std::string &library_path, const std::vector<uint8_t> &bytes); // StorageError
std::vector<std::string> LibraryPaths(); // the files that the library itself writes
bool FileExists(const std::string &library_path);
// StorageError when the system itself refused a write of the library in this process ("cannot write <path>: No space left
// on device"): what came of the library's calls tells of the disk then.
void CheckStorage();

// ---- faults -------------------------------------------------------------------------------------

// A rule hits calls of one function by name ("HAL_GetCpuMaxCount"; service operations:
// "HalFanService.GetFanSilkByIndex", "HalCpuService.GetCpuReduceFlag",
// "HalHddBackpanelService.GetBackPanelList", ".CheckHddIsSupportNvme").
struct Fault {
    std::string call;
    // The n-th call of that name since Start (1-based); absent: every one.  With args: the n-th call that
    // matches them since the rule was added.
    std::optional<uint32_t> occurrence = {};
    bool from_then_on = false;            // with occurrence: that one and all later ones
    std::optional<std::string> args = {}; // only calls whose traced arguments contain this text, e.g.
                                          // "index=2" (which does not match "index=21")
    std::optional<int64_t> result = {};   // what is returned; absent: the function's usual failure value
    std::optional<uint64_t> output =
        {};                      // what lands in the (first) out-parameter; absent: rubbish (0xA5 bytes)
    bool succeed = false;        // return success (or `result`) but with `output`
    bool null_object = false;    // service getters: return null
    bool null_operation = false; // service getters: return an object whose operations are null
    int errno_value = 0;         // file calls
};
// Rules are tried in the order they were added, the first that matches decides.  A rule that could never act
// (an unknown call, a call that cannot fail without `result` or `output`, ...) throws std::invalid_argument.
void AddFault(const Fault &fault);
void ClearFaults();

std::vector<std::string> CallNames(); // every name that a rule may give

// Makes the k-th platform call that can fail (1-based, counted since Start) fail, once or from then on; 0:
// off. A rule that hits the same call goes first.
void FailCall(uint64_t k, bool from_then_on = false);
void FailBothCalls(uint64_t k, uint64_t l); // in the same way, both once
uint64_t FailableCalls();                   // how many calls that can fail were made since Start
bool FaultWasHit();                         // at least one fault rule or FailCall took effect since Start

// ---- trace --------------------------------------------------------------------------------------

enum class Kind {
    kCall,  // platform call: function, args, result
    kLog,   // _ssp_*: level, module, file, line, function, text
    kStat,  // sspFailedStat: file, line
    kDebug, // IDBG_LINUXAPP_DbgOut: level, text
    kAudit, // IDBG_LINUXAPP_AuditOut: level, text
    kNote   // the simulator's own remarks (a record added to the repository, ...)
};
enum class Level { kDebug, kInfo, kWarn, kError };

struct Event {
    Kind kind = Kind::kCall;
    std::string function; // kCall: the platform function; kLog: the function name in the line
    std::string args;     // kCall: "index=2 slot=3"
    int64_t result = 0;   // kCall
    bool failed = false;  // kCall: by a fault
    std::optional<uint64_t> output =
        {}; // kCall: first field of what was handed out through the out-parameter
    std::optional<size_t> rule =
        {};                     // kCall: the fault rule that decided, counted from 0 in the order of AddFault
    Level level = Level::kInfo; // kLog
    uint32_t number = 0;        // kLog: module number; kDebug, kAudit: channel level
    std::string file;           // kLog, kStat: source file name as given by the library
    uint32_t line = 0;
    std::string text; // kCall: the text that a call gave (names, printed texts); otherwise: formatted text of
                      // a log line, newline kept; "[file:line]" prefixes of debug lines kept
};
const std::vector<Event> &Trace();
void ClearTrace();
// Off for benchmarks: nothing is recorded, and lines are not printed, so their texts are not checked.
void SetTracing(bool on);
// Keeps the latest events only, at least so many of them and at most twice as many; 0: all.  For runs without end.
void SetTraceLimit(size_t events);
// With tracing off: lines are printed, and so their texts checked, all the same.
void SetPrintingLines(bool on);
// The bounded memory and string functions are left out of the trace unless asked for; faults count them
// always.
void SetTraceBounded(bool on);
// One line per event, line numbers masked ("#"): for golden files and for people.
std::string Format(const Event &event);

// Conveniences over the trace.
std::vector<Event> Logs();           // log lines only
std::vector<std::string> LogTexts(); // their texts
std::vector<std::string> LogTexts(Level level);
size_t CountCalls(const std::string &function); // calls of one platform function since Start or ClearTrace,
                                                // traced or not
size_t CountText(const std::string &text);      // log, debug and audit lines with exactly this text

// ---- sudden death -------------------------------------------------------------------------------
// The process kills itself (SIGKILL), as if somebody else had done it at that very moment.  Both settings end with
// Start.

// Before the k-th platform call since Start (1-based; every function counts, log lines too) does anything; 0: off.
void DieAtCall(uint64_t k);
// Before the k-th call since Start (1-based) that can change a file, the repository or the event log; 0: off.
void DieAtChange(uint64_t k);
uint64_t ChangesMade(); // such calls since Start
// In the k-th write of the library's files since Start (1-based), when this share of its bytes (0 to 1) has come; an
// INI file and a file of the extended store are empty by then.  0: off.
void DieInWrite(uint64_t k, double share);
uint64_t WritesMade(); // since Start
// What the process does last in such a death: repository and files in memory die with it.  It stays over Start.
void BeforeDying(std::function<void()> last);

// ---- invariants ---------------------------------------------------------------------------------
// A failure statistic directly before every error line, of the same file and line, and nowhere else; sessions, INI handles, files and
// semaphores balanced; module numbers and levels from the allowed sets; the file name in a line belongs to
// the library; no line without a function name.  Balance is judged when the list is read.
std::vector<std::string> Violations();

// ---- repository and event log (in memory) -------------------------------------------------------
struct RepositoryRecord {
    uint16_t id = 0;
    std::vector<uint8_t> bytes;
};
std::vector<RepositoryRecord> &Repository();
uint16_t &NextRecordId(); // of the record that is added next; may be set, to go on from an earlier run
std::vector<std::vector<uint8_t>> &EventLog();
// The live threshold table: what the board gives until the library replaces it.
SensorThreshTable ThresholdTable();

// ---- caller arrays with guard bytes -------------------------------------------------------------
// Slots and entries for a static pass, surrounded by guard bytes that Violations() checks.
struct StaticArrays {
    uint8_t *slots = nullptr;       // 64 bytes each
    DevTabEntry *entries = nullptr; // 32 bytes each
    uint16_t count = 0;
    size_t capacity = 0;
};
StaticArrays &CallerArrays(size_t capacity = 2048, uint8_t fill = 0xEE); // made once per Start

} // namespace sim
#endif
