// SPDX-License-Identifier: GPL-3.0-or-later
//
// Compiled, not run: the recorder's list of calls is the simulator's, in the same order.
#include "capture/names.h"
#include "simulator/calls.h"

static_assert(
    [] {
        for (size_t id = 0; id < sim::kCallCount; ++id)
            if (id >= oxa::capture::kNameCount || sim::kCalls[id].name != oxa::capture::kNames[id])
                return false;
        return true;
    }(),
    "a call of simulator/calls.h has no row in capture/calls.def, or another place");
