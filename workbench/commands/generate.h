// SPDX-License-Identifier: GPL-3.0-or-later
//
// Files that the build makes from the commands as they are described.
#ifndef OXA_WORKBENCH_COMMANDS_GENERATE_H
#define OXA_WORKBENCH_COMMANDS_GENERATE_H

#include <string>

#include "base/command_view.h"

namespace workbench {

std::string ManualPage(const CommandView &program); // oxa-sensors(1)
std::string
CompletionScript(const std::string &shell); // InputError for a shell that is none of bash, zsh, fish

} // namespace workbench
#endif
