// SPDX-License-Identifier: GPL-3.0-or-later
#include "workbench/runtime_commands.h"

namespace workbench {

void AddRuntimeCommands(CLI::App &app) {
    AddAddRemoveCommands(app);
    AddScenarioCommand(app);
}

} // namespace workbench
