// SPDX-License-Identifier: GPL-3.0-or-later
//
// Lets the library, as it is loaded into this program, call other functions than those of the simulated platform.
#ifndef OXA_WORKBENCH_REPLAY_REDIRECT_H
#define OXA_WORKBENCH_REPLAY_REDIRECT_H

#include <string>

namespace workbench {

struct Redirection {
    std::string name;
    void *function = nullptr;
};

// Every place where the library keeps the address of one of these imported functions.  For good: a process of its own.
// SetError when the library is no shared object here, or may not be written to.
void RedirectLibrary(const Redirection *first, const Redirection *last);

} // namespace workbench
#endif
