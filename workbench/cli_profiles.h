// SPDX-License-Identifier: GPL-3.0-or-later
//
// The command lines of the commands that look at several sets.
#ifndef OXA_WORKBENCH_CLI_PROFILES_H
#define OXA_WORKBENCH_CLI_PROFILES_H

#include <CLI/CLI.hpp>

#include "workbench/commands.h"

namespace workbench {

void AddDiff(CLI::App &app, DiffOptions &options);
void AddCheck(CLI::App &app, CheckOptions &options);

} // namespace workbench
#endif
