// SPDX-License-Identifier: GPL-3.0-or-later
//
// The commands about run time; they add themselves to the command line.  A command whose result is printed and no
// success ends with CLI::RuntimeError(1).
#ifndef OXA_WORKBENCH_RUNTIME_COMMANDS_H
#define OXA_WORKBENCH_RUNTIME_COMMANDS_H

namespace CLI {
class App;
}

namespace workbench {

void AddRuntimeCommands(CLI::App &app);   // all of them
void AddAddRemoveCommands(CLI::App &app); // add, remove
void AddScenarioCommand(CLI::App &app);   // scenario

} // namespace workbench
#endif
