// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the Default set's groups share.
#ifndef OXA_TESTS_PROFILES_DEFAULT_SUPPORT_H
#define OXA_TESTS_PROFILES_DEFAULT_SUPPORT_H

#include "support/static_pass.h"

namespace tests {

constexpr size_t kBare = 24; // records of BareBoard(), which come after the groups

inline std::vector<std::string> GroupNames(const Outcome &outcome) {
    auto names = outcome.Names();
    names.resize(names.size() - std::min(names.size(), kBare));
    return names;
}

inline sim::Board DiskBoard() {
    sim::Board board = BareBoard();
    board.disks.backplanes = {{0, 2, "Front"}, {10, 0, "Rear"}, {20, 1, "Rear"}};
    board.disks.nvme_slots = {1, 20};
    board.disks.conversion = {{20, 99}};
    return board;
}

inline constexpr char kInstanceWrap[] = "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n";

} // namespace tests

#endif
