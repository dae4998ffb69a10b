// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the FRU devices of a BMC simulator hold.
#ifndef OXA_WORKBENCH_SERVE_FRU_H
#define OXA_WORKBENCH_SERVE_FRU_H

#include <string>

namespace workbench {

// The ipmi_sim commands for a device behind every FRU id: locators may come at any time.  Device 0 is the
// machine.
std::string FruCommands(const std::string &machine, const std::string &customer);

} // namespace workbench
#endif
