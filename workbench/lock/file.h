// SPDX-License-Identifier: GPL-3.0-or-later
//
// A lock: what the library builds for every board and profile, as it is now or as a file remembers it.
#ifndef OXA_WORKBENCH_LOCK_FILE_H
#define OXA_WORKBENCH_LOCK_FILE_H

#include <string>
#include <vector>

#include "lock/line.h"
#include "lock/tables.h"

namespace workbench {

struct Lock {
    std::vector<SensorLine> sensors; // of a board and profile in the order of its set
    std::vector<TableLine> tables;
};

// What is wrong, a line each; nothing is made of a lock that has any.
struct LockFaults {
    std::vector<std::string> lines;
};

// Every profile with a set on every board of the folder.  InputError for the folder; faults for boards without a set.
Lock BuildLock(const std::string &folder, LockFaults &faults);

std::string Text(const Lock &lock);

bool IsLock(const std::string &path); // a file that begins as one of any format

// Faults name file, line and column.
Lock ReadLock(const std::string &path, LockFaults &faults);

} // namespace workbench
#endif
