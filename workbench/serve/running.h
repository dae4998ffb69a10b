// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a running serve leaves in its folder for others: its port and its sensors.
#ifndef OXA_WORKBENCH_SERVE_RUNNING_H
#define OXA_WORKBENCH_SERVE_RUNNING_H

#include <cstdint>
#include <string>
#include <vector>

#include "serve/sensors.h"

namespace workbench {

// Anew whenever a sensor has come; readers see the old list or the new one.
void TellOthers(const std::string &folder, uint16_t port, const std::vector<ServedSensor> &sensors);

struct RunningServe {
    std::string folder;
    uint16_t port = 0;
    std::vector<ServedSensor> sensors; // their reading is that of the start
};

// Those of this user that run now, in the folder for temporary files.
std::vector<RunningServe> RunningServes();

} // namespace workbench
#endif
