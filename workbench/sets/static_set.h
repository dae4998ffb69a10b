// SPDX-License-Identifier: GPL-3.0-or-later
//
// Runs one board through one profile's driver on the simulated platform and keeps what it built.  A set can come from
// elsewhere too (room sources).
#ifndef OXA_WORKBENCH_SETS_STATIC_SET_H
#define OXA_WORKBENCH_SETS_STATIC_SET_H

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "oxa/records.h"

namespace workbench {

using Record = std::array<uint8_t, SDR_SLOT_SIZE>;
using Entry = std::array<uint8_t, DEV_TAB_ENTRY_SIZE>;
using StaticDriver = void (*)(uint8_t *records, DevTabEntry *entries, uint16_t *count);

struct Profile {
    const char *name;
    uint32_t id;
    StaticDriver driver; // null: the library has none for this customer
};

// A profile is named in any case, or by the number that the firmware gives it (custom id).
const Profile *ProfileNamed(const std::string &name); // with driver or without; null for an unknown one
const Profile &NamedProfile(const std::string &name); // the same; InputError for an unknown one
const Profile &FindProfile(const std::string &name);  // InputError for one without driver too
std::vector<const Profile *> ProfilesWithDriver();    // in the order of their ids
std::vector<const Profile *> AllProfiles();
std::string AvailableProfiles(); // "default, ..."

std::string ProfileName(uint32_t id); // "ferrisk", or "profile 99"

// The profile that was given (option or environment), else the one that the board file names, else default.
// InputError for a board file that cannot be used.
std::string SettledProfile(const std::string &given, const std::string &board);

struct RunOptions {
    std::string board;
    std::string profile; // empty: the board's own
    bool trace = false;  // everything that crossed the platform border, on standard error
    bool log = false;    // the library's log lines only
};

constexpr size_t kLongestName = 16; // of a sensor, in its record and wherever it is kept
constexpr size_t kRecordHeader =
    SDR_RECORD_LENGTH + 1; // id, version, type and length: what the length leaves out

// Limits that a BMC goes by now; users set others than the record's.
struct ActiveLimits {
    uint8_t mask = 0;             // which there are, as in the record's readable mask
    std::array<uint8_t, 6> raw{}; // UNR UC UNC LNR LC LNC, as in the record
};

struct Sensor {
    unsigned ordinal = 0; // 1-based place in the set
    Record record{};
    Entry entry{};
    bool has_entry = true;              // false: a record without its device-table entry
    std::optional<ActiveLimits> active; // of a sensor whose BMC was asked
};

// A record of a repository that is no sensor with a reading: read, shown, and compared with nothing.
struct AsideRecord {
    size_t place = 0; // among all records, from 1
    uint16_t record_id = 0;
    uint8_t type = 0;
    std::string kind; // "FRU locator"
    std::string name; // may be empty
    std::string what; // "FRU id 17, Power Supply 0x01"
    std::vector<uint8_t> bytes;
};

struct StaticSet {
    std::string board;                // empty: not built from a board
    const Profile *profile = nullptr; // null: not known
    std::vector<Sensor> sensors;
    std::string source; // where it comes from, when not from a board
    std::vector<AsideRecord> aside;
    const std::string &Label() const {
        return board.empty() ? source : board;
    }
};

// InputError: the board file or profile cannot be used.  SetError: the pass ended without a count, or broke a
// rule that every pass keeps.
StaticSet BuildStaticSet(const RunOptions &options);

// The same in a process of its own, for commands that need several sets: the library's state has no reset.
StaticSet BuildStaticSetApart(const RunOptions &options);

// The set, or why there is none (SetError's words).
struct BuiltSet {
    StaticSet set;
    std::string no_set;
};

// Many sets on all processors, taken in their order; `doing` is told when it takes long.  InputError as above.
void BuildStaticSetsApart(std::vector<RunOptions> runs, const std::string &doing,
                          const std::function<void(const RunOptions &, const BuiltSet &)> &take);

// What is wrong with a board file; empty: nothing.
std::string BoardFault(const std::string &board);

// What crossed the platform border, or the library's log lines only, on standard error.
void PrintPlatformTrace(bool trace, bool log);

unsigned RecordSize(const Record &record); // header and body; above 64 when the length byte is wrong

} // namespace workbench
#endif
