// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the build tells the tests.  Functions and not macros on the command line: a test unit is then compiled the same
// way wherever the tree lies and whatever the tier, so a compiler cache finds it again.
#ifndef OXA_TESTS_SUPPORT_BUILD_FACTS_H
#define OXA_TESTS_SUPPORT_BUILD_FACTS_H

#include <cstddef>
#include <string>

namespace tests {

// A file of the source tree: InSource("boards/small_5497.toml").
std::string InSource(const std::string &path);

// A sweep takes every so many steps: 1 in the fastest build, more where each step takes many times as long.
size_t SweepStep();

// Of a sweep that takes a minute even there: a tenth, unless OXA_SWEEP_STEP is set.
size_t LongSweepStep();

} // namespace tests

#endif
