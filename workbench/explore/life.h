// SPDX-License-Identifier: GPL-3.0-or-later
//
// The machine on which a story is walked: the library, its files in memory, the repository.  One of them in a process.
#ifndef OXA_WORKBENCH_EXPLORE_LIFE_H
#define OXA_WORKBENCH_EXPLORE_LIFE_H

#include <map>
#include <optional>

#include "explore/move.h"
#include "runtime/calls.h"

namespace workbench {

class Life {
public:
    explicit Life(const World &world) : world_(world) {}

    void Begin(); // the first one: no files, no records
    // False when the move is none here: the fault's call does not come, the process does not die.  A move with a kill
    // forks; the process that calls goes on with what the dead one left.
    bool Make(const Move &move);
    // What the user set, by sensor; of several (the process died while the last were saved) any.
    const std::map<std::string, std::vector<UserThresholds>> &Limits() const {
        return limits_;
    }
    unsigned FaultsUsed() const {
        return faults_used_;
    }
    const std::optional<UserThresholds> &
    LastLimits() const { // what a user sets now; nothing without a sensor
        return offered_;
    }

private:
    void StartAnew(const RepositoryState &repository, const std::vector<sim::Fault> &more = {});
    void Do(const Move &move);
    void SetLimits();
    bool DieIn(const Move &move);
    bool Fail(const Move &move);

    const World &world_;
    std::map<std::string, std::vector<UserThresholds>> limits_; // by sensor, see Limits
    std::optional<UserThresholds> offered_;
    unsigned faults_used_ = 0;
};

} // namespace workbench
#endif
