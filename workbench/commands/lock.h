// SPDX-License-Identifier: GPL-3.0-or-later
//
// How a comparison of locks is told.
#ifndef OXA_WORKBENCH_COMMANDS_LOCK_H
#define OXA_WORKBENCH_COMMANDS_LOCK_H

#include <string>

#include "lock/compare.h"

namespace workbench {

struct LockReport {
    std::string lock, boards; // as given
    LockComparison comparison;
};

std::string LockAsText(const LockReport &report);
std::string LockForGithub(const LockReport &report);  // annotations of a workflow's log
std::string LockAsMarkdown(const LockReport &report); // for a comment
std::string LockAsJson(const LockReport &report);

} // namespace workbench
#endif
