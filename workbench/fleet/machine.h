// SPDX-License-Identifier: GPL-3.0-or-later
//
// One machine's set held against the lines that a lock has for its board and profile.
#ifndef OXA_WORKBENCH_FLEET_MACHINE_H
#define OXA_WORKBENCH_FLEET_MACHINE_H

#include <string>
#include <vector>

#include "lock/file.h"
#include "sets/static_set.h"

namespace workbench {

struct Difference {
    std::string what; // "changed", "renamed", "missing", "extra"
    std::string name; // in the lock; of an extra one at the machine
    std::string text; // "UC 48 °C instead of 50 °C"
};

struct MachineResult {
    std::vector<Difference> differences;
    std::vector<Difference> active; // limits that a user set; no differences
    size_t sensors = 0;             // that the lock has and the machine too
    size_t run_time = 0;            // that have the name of a run-time sensor of the profile
    size_t aside = 0;               // records that are no sensors
};

// What the lock has for one board and profile.
struct LockedMachine {
    std::vector<const SensorLine *> sensors;
    std::vector<std::string> run_time_names; // patterns
};
LockedMachine MachineOf(const Lock &lock, const std::string &board, const std::string &profile);

// A repository has no device table: what the lock tells of it, and its sums, are not compared.  SetError for a record
// that cannot be decoded.
MachineResult CompareMachine(const LockedMachine &locked, const StaticSet &set);

} // namespace workbench
#endif
