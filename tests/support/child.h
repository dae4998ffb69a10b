// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef OXA_TESTS_SUPPORT_CHILD_H
#define OXA_TESTS_SUPPORT_CHILD_H

namespace tests {

// Ends a forked child: what it printed is written, nothing of the parent's end is done a second time.  Where coverage
// is counted the counters are written too.
[[noreturn]] void EndChild(int status);

} // namespace tests

#endif
