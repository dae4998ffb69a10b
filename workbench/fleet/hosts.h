// SPDX-License-Identifier: GPL-3.0-or-later
//
// A list of machines: a line for each, with the board and the profile that the lock has for it.
//
//     # host           board          profile
//     10.1.0.7         two_socket_2u  kestrin
//     10.1.0.8:6623    two_socket_2u  kestrin
#ifndef OXA_WORKBENCH_FLEET_HOSTS_H
#define OXA_WORKBENCH_FLEET_HOSTS_H

#include <string>
#include <vector>

#include "lock/file.h"

namespace workbench {

struct Host {
    std::string address; // as written
    std::string board, profile;
    size_t line = 0;
    std::string Machine() const { // what the lock has sensors for
        return board + " " + profile;
    }
};

// InputError with a line for each mistake (file, line, column): words that are missing or too many, no address, a board or
// a profile that is not in the lock, a host that stands there twice; for a list without hosts too.
std::vector<Host> ReadHosts(const std::string &path, const Lock &lock);

} // namespace workbench
#endif
