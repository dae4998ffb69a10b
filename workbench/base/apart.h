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

// The same for works 0 to count - 1, so many at a time; 0: as many as there are processors.  What each came to is taken in
// their order, while later ones still run.
void RunManyApart(size_t count, const std::function<void(size_t, const Say &)> &work,
                  const std::function<void(size_t, const Apart &)> &take, size_t at_once = 0);

} // namespace workbench
#endif
