// SPDX-License-Identifier: GPL-3.0-or-later
//
// A step of a story that explore walks: something happens to a part, or to the library's process, perhaps with a platform
// call that fails or a kill in the middle of it.
#ifndef OXA_WORKBENCH_EXPLORE_MOVE_H
#define OXA_WORKBENCH_EXPLORE_MOVE_H

#include <cstdint>
#include <string>
#include <vector>

#include "explore/parts.h"

namespace workbench {

enum class What : uint8_t { kComes, kGoes, kFails, kLimits, kRestart };

struct Move {
    What what = What::kRestart;
    uint8_t part = 0;
    uint8_t fault = 0;       // in FaultKinds(), from 1; 0: none
    uint16_t occurrence = 0; // the n-th call of it within the step
    Kill kill{};             // neither change nor write: none
    bool Dies() const {
        return kill.change != 0 || kill.write != 0;
    }
    bool HasFault() const { // one of the faults that a story may have
        return fault != 0 || Dies();
    }
};

struct FaultKind {
    const char *call;
    const char *words;   // "the repository refuses the record"
    int64_t result = -1; // below 0: the call's usual failure
};
const std::vector<FaultKind> &FaultKinds();

struct World { // what stays as it is on a walk
    sim::Board board;
    std::vector<sim::Fault> board_faults;
    std::string board_path;
    std::vector<Part> parts;
    unsigned faults = 0; // that a story may have
};

// Moves without faults.
std::vector<Move> PlainMoves(const World &world);

std::string MoveText(const World &world, const Move &move);  // "psu 1 comes; killed before change 3"
std::string MoveClass(const World &world, const Move &move); // the same without numbers: "psu comes, killed"

} // namespace workbench
#endif
