// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/build_facts.h"

#include <cstdlib>

namespace tests {

std::string InSource(const std::string &path) {
    return OXA_SOURCE_DIR "/" + path;
}

namespace {

size_t StepUnlessGiven(size_t step) {
    const char *given = std::getenv("OXA_SWEEP_STEP"); // a checker under which everything is slow
    return given != nullptr ? std::strtoul(given, nullptr, 10) : step;
}

} // namespace

size_t SweepStep() {
    return StepUnlessGiven(OXA_SWEEP_STEP);
}

size_t LongSweepStep() {
    return StepUnlessGiven(10 * OXA_SWEEP_STEP);
}

} // namespace tests
