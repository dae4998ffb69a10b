// SPDX-License-Identifier: GPL-3.0-or-later
//
// Two lines of one sensor.
#ifndef OXA_WORKBENCH_LOCK_CHANGES_H
#define OXA_WORKBENCH_LOCK_CHANGES_H

#include <string>
#include <vector>

#include "lock/line.h"

namespace workbench {

// "UC", "50 °C", "48 °C".  A limit that only one line has is empty in the other; an entity is not named.
struct LineChange {
    std::string what, from, to;
    bool is_limit = false;
};

// What the lines spell out and the name does not.
std::vector<LineChange> DifferencesOf(const SensorLine &old, const SensorLine &now);

// What differs but the name, in the units of the reading: "UC 50 °C -> 48 °C".
std::vector<std::string> ChangesOf(const SensorLine &old, const SensorLine &now);

// A user's stored thresholds are found by name and readable mask.
bool CanHaveThresholds(const SensorLine &line);
bool KeepsThresholds(const SensorLine &old, const SensorLine &now);

// Units, states or the way from a raw reading to a value.
bool ReadsOtherwise(const SensorLine &old, const SensorLine &now);

std::string WhatText(const SensorLine &line); // "full, Temperature, Air Inlet 0x60, UC 50 °C"

} // namespace workbench
#endif
