// SPDX-License-Identifier: GPL-3.0-or-later
//
// What became of every sensor of one set in another one.
#ifndef OXA_WORKBENCH_COMPARE_SET_COMPARE_H
#define OXA_WORKBENCH_COMPARE_SET_COMPARE_H

#include <string>
#include <vector>

#include "compare/sensor_source.h"

namespace workbench {

// A field of record or entry whose bytes or whose meaning differ; the meaning is in units.
struct FieldChange {
    bool in_entry = false;
    unsigned offset = 0;
    std::string field;
    std::vector<std::string> left, right; // only the lines that differ
};

struct SensorPair {
    size_t left = 0, right = 0; // places in the two sets, from 0
    bool renamed = false;
    std::vector<FieldChange> changes;
};

struct Comparison {
    std::vector<SensorPair> pairs; // in the order of the left set; equal ones too
    std::vector<size_t> removed, added;
    bool Equal() const;
};

Comparison CompareSources(const SensorSource &left, const SensorSource &right);

// "full, Temperature, Air Inlet 0x60, signed, 1 °C, 0x00/0"
std::string WhatText(const SensorSource &source, size_t i);

// A user's saved thresholds are found again by ID string and readable mask; this pair's are not.
bool LosesThresholds(const SensorSource &left, const SensorSource &right, const SensorPair &pair);
bool CanHaveThresholds(const Sensor &sensor);

} // namespace workbench
#endif
