// SPDX-License-Identifier: GPL-3.0-or-later
//
// The ways in which a command can end badly.
#ifndef OXA_WORKBENCH_BASE_ERRORS_H
#define OXA_WORKBENCH_BASE_ERRORS_H

#include <stdexcept>

namespace workbench {

enum ExitCode { kOk = 0, kNoSet = 1, kBadInput = 2 };

// What the user gave cannot be used: a board file, a name, an option, an output path.  A line for each mistake.  Exit 2.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library ran, but what came out is no usable set.  Exit 1.
struct SetError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Everything is printed, and the exit status is not 0: a finding, a step that came out otherwise.
struct ExitStatus {
    explicit ExitStatus(int number) : status(number) {}
    int status;
};

} // namespace workbench
#endif
