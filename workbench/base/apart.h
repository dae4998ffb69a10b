// SPDX-License-Identifier: GPL-3.0-or-later
//
// Work in a process of its own: the library keeps state that has no reset, so whoever needs it fresh runs it in a
// child.
#ifndef OXA_WORKBENCH_BASE_APART_H
#define OXA_WORKBENCH_BASE_APART_H

#include <functional>
#include <string>

namespace workbench {

struct Apart {
    std::string said; // all of it, also when the process ended before its time
    int status = 0;   // of waitpid
};

using Say = std::function<void(const std::string &)>;

// Runs the work in a child until it returns or the child dies; what it says is handed over at once.  SetError when
// there is no pipe or no process.
Apart RunApart(const std::function<void(const Say &)> &work);

} // namespace workbench
#endif
