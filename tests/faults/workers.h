// SPDX-License-Identifier: GPL-3.0-or-later
//
// Processes that share the cases among them.  A worker notes in shared memory what it is about to do, so that a crash
// is told with its case.
#ifndef OXA_TESTS_FAULTS_WORKERS_H
#define OXA_TESTS_FAULTS_WORKERS_H

#include <cstdint>
#include <functional>
#include <string>

namespace faults {

struct Desk { // of one worker, shared with its parent
    uint64_t runs = 0;
    uint64_t hits = 0;              // runs in which a fault took effect
    uint64_t broken = 0;            // runs that broke a rule; each is printed
    uint64_t first = 0, second = 0; // calls that fail; 0: none
    bool from_then_on = false;
    char name[256] = {};

    std::string Told() const; // "board base_48, driver of default, call 7 fails"
};

struct Total {
    uint64_t runs = 0, hits = 0, broken = 0, crashes = 0;
};

// work(worker, workers, desk) in as many processes as there are processors.
Total ShareOut(const std::function<void(size_t, size_t, Desk &)> &work);

} // namespace faults
#endif
