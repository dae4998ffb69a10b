// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sensors of a BMC simulator: for each record of a set a file with its reading, and the commands that make
// ipmi_sim read it and watch its limits.
#ifndef OXA_WORKBENCH_SERVE_SENSORS_H
#define OXA_WORKBENCH_SERVE_SENSORS_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

struct ServedSensor {
    Sensor sensor; // numbered
    Decoded decoded;
    std::string file;     // name of the file that holds the reading
    unsigned reading = 0; // at the start: a raw byte, or the bits of the states that are on
};

// Numbers the set and picks readings at which no sensor complains.  SetError for a set that no BMC can hold.
std::vector<ServedSensor> SensorsToServe(StaticSet &set);

// The same for one sensor that has its number.  SetError for a record that cannot be read.
ServedSensor SensorToServe(const Sensor &sensor);

// The ipmi_sim commands for one sensor whose reading stands in folder/file.
std::string SimulatorCommands(const ServedSensor &served, const std::string &folder);

// The value of a raw reading with its unit: "14.5 V".
std::string ReadingText(const Reading &reading, unsigned raw);

// A raw reading just above the upper critical limit; -1 when the sensor has none that a reading can pass.
int RawAboveCritical(const ServedSensor &served);

} // namespace workbench
#endif
