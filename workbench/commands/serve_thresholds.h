// SPDX-License-Identifier: GPL-3.0-or-later
//
// Thresholds that somebody sets at a BMC that is served, kept in a file as a BMC keeps them.
#ifndef OXA_WORKBENCH_COMMANDS_SERVE_THRESHOLDS_H
#define OXA_WORKBENCH_COMMANDS_SERVE_THRESHOLDS_H

#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "runtime/bmc.h"
#include "serve/machine.h"

namespace workbench {

// InputError for a file into which nothing can be saved; before anybody sets what would be lost.
void RefuseUnwritable(const std::string &file);

class ThresholdKeeper {
public:
    // InputError for a file that is there and holds no thresholds of the machine's profile.
    ThresholdKeeper(const std::string &file, const ServedMachine &machine);

    // What was set since the last time goes into the file, saved by the library.  Looks once a second, or now.
    void Pass(bool now = false);

private:
    std::map<SensorPlace, ActiveLimits> Read() const;
    void Save(const ServedSensor &sensor, const ActiveLimits &limits) const;

    const std::string file_;
    const ServedMachine &machine_;
    const uint32_t custom_id_;
    std::map<SensorPlace, ActiveLimits> known_;
    std::time_t looked_ = 0;
};

} // namespace workbench
#endif
