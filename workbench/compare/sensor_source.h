// SPDX-License-Identifier: GPL-3.0-or-later
//
// One side of a comparison: a set that is built now, or one that was exported earlier.
#ifndef OXA_WORKBENCH_COMPARE_SENSOR_SOURCE_H
#define OXA_WORKBENCH_COMPARE_SENSOR_SOURCE_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

struct SensorSource {
    std::string label;                // what the user wrote, completed by the board
    const Profile *profile = nullptr; // null: not known (raw records do not tell)
    bool has_entries = false;         // device-table entries are known
    std::vector<Sensor> sensors;
    std::vector<Decoded> decoded; // one per sensor
};

// PROFILE, PROFILE@BOARD, or a file that export wrote (raw or JSON).  InputError for anything else, and for a
// set that cannot be built or read.
SensorSource LoadSensorSource(const std::string &text, const RunOptions &run);

} // namespace workbench
#endif
