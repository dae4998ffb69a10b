// SPDX-License-Identifier: GPL-3.0-or-later
//
// The files of a machine, as its library found them, and what went wrong with them.
#ifndef OXA_WORKBENCH_REPLAY_MACHINE_FILES_H
#define OXA_WORKBENCH_REPLAY_MACHINE_FILES_H

#include "replay/machine.h"

namespace workbench {

// A file is as it was read first; what the library itself had written by then is not there at the start.
void AddFiles(const Capture &capture, CapturedMachine &machine);

} // namespace workbench
#endif
