// SPDX-License-Identifier: GPL-3.0-or-later
//
// Many machines at a time, each read by a process of its own: whatever a BMC answers, or does not, concerns nobody else.
#ifndef OXA_WORKBENCH_FLEET_FLEET_H
#define OXA_WORKBENCH_FLEET_FLEET_H

#include <optional>
#include <string>
#include <vector>

#include "fleet/hosts.h"
#include "fleet/machine.h"
#include "runtime/bmc_options.h"

namespace workbench {

struct FleetOptions {
    LoginOptions login;
    uint16_t at_once = 32; // machines
    uint16_t retries = 1;  // of a machine that could not be read
    uint16_t limit = 120;  // seconds for one machine, retries and all
    bool active = false;   // ask for the thresholds in force too
};

struct HostResult {
    Host host;
    std::optional<MachineResult> machine; // nothing: it could not be read
    std::string why;                      // without the address, so that machines can be told together
    unsigned tries = 1;
};

// In the order of the list; progress on standard error where that is a terminal.
std::vector<HostResult> VerifyFleet(const std::vector<Host> &hosts, const Lock &lock,
                                    const FleetOptions &options);

// What is told of several machines at once.
struct Group {
    std::string what;               // of a difference, or "unread"
    std::vector<std::string> names; // of sensors; equal but for their numbers
    std::string text;
    std::vector<size_t> machines; // places in the list
};

// Differences that are alike, those of most machines first.
std::vector<Group> DifferenceGroups(const std::vector<HostResult> &results);
std::vector<Group> ActiveGroups(const std::vector<HostResult> &results);
std::vector<Group> UnreadGroups(const std::vector<HostResult> &results);

} // namespace workbench
#endif
