// SPDX-License-Identifier: GPL-3.0-or-later
//
// The options of every command that builds one set: --board, --profile, --trace, --log.
#ifndef OXA_WORKBENCH_SETS_RUN_OPTIONS_H
#define OXA_WORKBENCH_SETS_RUN_OPTIONS_H

#include "base/command_line.h"
#include "sets/static_set.h"

namespace workbench {

// `more` is added to the list of profiles.
void AddRunOptions(Command &command, RunOptions &run, const std::string &more = "");
void AddTraceOptions(Command &command, bool &trace, bool &log);

} // namespace workbench
#endif
