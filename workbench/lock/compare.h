// SPDX-License-Identifier: GPL-3.0-or-later
//
// What became of a lock, and what it means for those who rely on it.
#ifndef OXA_WORKBENCH_LOCK_COMPARE_H
#define OXA_WORKBENCH_LOCK_COMPARE_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "lock/file.h"

namespace workbench {

// One difference, on however many boards and of however many sensors with equal names but for their numbers.
struct Drift {
    std::string what;    // "changed", "renamed", "removed", "added", "order", "board", "profile", "table"
    std::string profile; // empty: all of them
    std::string subject; // "INPUT_TEMP", "PSU_TEMP_*"
    std::string text;    // "UC 50 °C -> 48 °C"
    std::vector<std::string> names, boards;
    size_t count = 0; // records
    size_t line = 0;  // of the lock, the first one; 0: it has none
};

using NamesByProfile = std::map<std::string, std::set<std::string>>;

// What users and programs notice that rely on the locked sets.
struct DriftMeaning {
    NamesByProfile dropped;     // stored user thresholds that are not applied any more
    NamesByProfile outranked;   // limits that changed where a stored user threshold stays in force
    NamesByProfile read_anew;   // stored user thresholds whose bytes are other values now
    NamesByProfile names_gone;  // names that monitoring may ask for
    NamesByProfile new_meaning; // names that stay and are read otherwise
};

struct LockComparison {
    std::vector<Drift> drifts;
    DriftMeaning meaning;
    size_t sensors = 0, sets = 0; // that are built now
};

LockComparison CompareLocks(const Lock &locked, const Lock &now);

// Of one board and profile: for each locked line the one that it became; null: there is none.
using SensorLines = std::vector<const SensorLine *>;
SensorLines PartnersOf(const SensorLines &locked, const SensorLines &now);

} // namespace workbench
#endif
