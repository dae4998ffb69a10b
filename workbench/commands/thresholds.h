// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the three thresholds commands take from the command line.
#ifndef OXA_WORKBENCH_COMMANDS_THRESHOLDS_H
#define OXA_WORKBENCH_COMMANDS_THRESHOLDS_H

#include <map>
#include <string>
#include <vector>

#include "thresholds/platform.h"

namespace workbench {

struct ThresholdsShowOptions {
    std::string file;
    bool json = false;
};
void ShowThresholds(const ThresholdsShowOptions &options);

struct ThresholdsSetOptions {
    std::string file, sensor;
    RecordOptions records;                     // board: empty, values are raw
    std::map<std::string, std::string> values; // by "lnr" ..., as typed; empty: not given
    std::string mask;
    std::vector<std::string> further;
    bool raw = false, json = false;
};
void SetThresholds(const ThresholdsSetOptions &options);

struct ThresholdsPreflightOptions {
    std::string file;
    RecordOptions records;
    bool json = false;
};
// 0: every entry applies, 1: not.
int PreflightThresholds(const ThresholdsPreflightOptions &options);

// The file, which must be there.
FileBytes ReadExistingThresholdFile(const std::string &path);

} // namespace workbench
#endif
