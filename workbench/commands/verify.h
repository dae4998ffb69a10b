// SPDX-License-Identifier: GPL-3.0-or-later
//
// How the state of a fleet is told.
#ifndef OXA_WORKBENCH_COMMANDS_VERIFY_H
#define OXA_WORKBENCH_COMMANDS_VERIFY_H

#include <string>
#include <vector>

#include "fleet/fleet.h"

namespace workbench {

struct FleetReport {
    std::string lock, hosts; // as given
    std::vector<HostResult> results;
    bool active = false; // thresholds in force were asked for
    size_t Different() const;
    size_t Unread() const;
};

std::string FleetAsText(const FleetReport &report);
std::string FleetForGithub(const FleetReport &report); // annotations of a workflow's log
std::string FleetAsMarkdown(const FleetReport &report);
std::string FleetAsJunit(const FleetReport &report); // a test case for each machine
std::string FleetAsJson(const FleetReport &report);

} // namespace workbench
#endif
