// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every function that the library exports, behind one shape: arguments come from bytes, and what its header says of the
// result is held against what came out.  The fuzzer and the gate of faults (tests/faults) call them.
#ifndef OXA_FUZZ_ENTRY_POINTS_H
#define OXA_FUZZ_ENTRY_POINTS_H

#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/reader.h"

namespace fuzz {

// The library did not do what its header says.
struct BrokenPromise : std::runtime_error {
    using std::runtime_error::runtime_error;
};
inline void Require(bool kept, const std::string &what) {
    if (!kept)
        throw BrokenPromise(what);
}

struct EntryPoint {
    std::string name;
    size_t argument_bytes = 0; // how many bytes its arguments are made of
    void (*call)(Reader &arguments, void *function) = nullptr;
    void *function = nullptr;
};

// All but the static drivers and generators.
const std::vector<EntryPoint> &EntryPoints();
// The static generators; their one argument byte is the index.
const std::vector<EntryPoint> &StaticGenerators();

// Runs a profile's driver over the platform as it stands; false: there is no such profile.
bool RunDriver(uint32_t custom_id);

} // namespace fuzz
#endif
