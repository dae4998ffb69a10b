// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/build_facts.h"

namespace tests {

std::string InSource(const std::string &path) {
    return OXA_SOURCE_DIR "/" + path;
}

size_t SweepStep() {
    return OXA_SWEEP_STEP;
}

} // namespace tests
