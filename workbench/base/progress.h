// SPDX-License-Identifier: GPL-3.0-or-later
//
// "checking 12 of 90 sets" for work that takes more than a second: on standard error, and only where that is a terminal.
#ifndef OXA_WORKBENCH_BASE_PROGRESS_H
#define OXA_WORKBENCH_BASE_PROGRESS_H

#include <chrono>
#include <string>

namespace workbench {

void KeepProgressBack(); // from now on: of a child whose parent tells how far all of them are

class Progress {
public:
    // `doing` is "checking", `what` is "sets".
    Progress(std::string doing, size_t all, std::string what);
    ~Progress(); // takes the line away
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    void Done(size_t count);

private:
    std::string doing_, what_;
    size_t all_;
    bool terminal_, shown_ = false;
    std::chrono::steady_clock::time_point began_;
};

} // namespace workbench
#endif
