// SPDX-License-Identifier: GPL-3.0-or-later
//
// What became of every sensor of one set in another one.
#ifndef OXA_WORKBENCH_COMPARE_SET_COMPARE_H
#define OXA_WORKBENCH_COMPARE_SET_COMPARE_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

// One side of a comparison.
struct Side {
    StaticSet set;
    std::string label;            // what the user wrote, completed by the board
    bool has_entries = false;     // device-table entries are known
    std::vector<Decoded> decoded; // one per sensor
};

// SetError for a record that cannot be decoded.
Side MakeSide(StaticSet set, const std::string &label);

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

Comparison CompareSources(const Side &left, const Side &right);

// "full, Temperature, Air Inlet 0x60, signed, 1 °C, 0x00/0"
std::string WhatText(const Side &side, size_t i);

// A user's saved thresholds are found again by ID string and readable mask; this pair's are not.
bool LosesThresholds(const Side &left, const Side &right, const SensorPair &pair);
bool CanHaveThresholds(const Sensor &sensor);

} // namespace workbench
#endif
