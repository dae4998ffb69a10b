// SPDX-License-Identifier: GPL-3.0-or-later
//
// What serve tells of a machine, and the lines to try.
#ifndef OXA_WORKBENCH_COMMANDS_SERVE_H
#define OXA_WORKBENCH_COMMANDS_SERVE_H

#include <string>

#include "base/json.h"
#include "serve/machine.h"

namespace workbench {

std::string AddressOf(const ServedMachine &machine); // "127.0.0.1:9001"
std::string IpmiTool(const ServedMachine &machine);  // how a line of ipmitool begins
std::string FreeIpmi(const ServedMachine &machine, const std::string &program); // and of FreeIPMI

std::string WelcomeText(const ServedMachine &machine, bool waits); // waits: until Ctrl-C
Json WelcomeJson(const ServedMachine &machine);

} // namespace workbench
#endif
