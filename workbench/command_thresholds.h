// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors thresholds: reads, writes and tries a file of user thresholds.
#ifndef OXA_WORKBENCH_COMMAND_THRESHOLDS_H
#define OXA_WORKBENCH_COMMAND_THRESHOLDS_H

namespace CLI {
class App;
}

namespace workbench {

void AddThresholdsCommand(CLI::App &app);

} // namespace workbench
#endif
