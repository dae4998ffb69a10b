// SPDX-License-Identifier: GPL-3.0-or-later
//
// The commands about events; each adds itself to the command line.
#ifndef OXA_WORKBENCH_SEL_COMMANDS_H
#define OXA_WORKBENCH_SEL_COMMANDS_H

namespace CLI {
class App;
}

namespace workbench {

void AddEventCommand(CLI::App &app);
void AddDecodeSelCommand(CLI::App &app);

} // namespace workbench
#endif
