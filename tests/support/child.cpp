// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/child.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace tests {

void EndChild(int status) {
    std::fflush(nullptr);
#ifdef OXA_COVERAGE
    std::exit(status); // each counted object writes its counters from an exit handler of its own
#else
    _exit(status);
#endif
}

} // namespace tests
