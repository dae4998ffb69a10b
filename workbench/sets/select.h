// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which sensors of a set are meant: one rule for every command that takes names.
#ifndef OXA_WORKBENCH_SETS_SELECT_H
#define OXA_WORKBENCH_SETS_SELECT_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

struct Selected {
    const Sensor *sensor;
    Decoded decoded;
};

// A name as it stands, a name in another case, or a shell pattern in any case.  Spelt exactly, a name means no other.
bool IsMeant(const std::string &name, const std::string &wanted);

// The sensors that one of `wanted` means, in the set's order, each once; all for an empty list.  InputError with the
// nearest names for a word that means none.
std::vector<Selected> SelectSensors(const StaticSet &set, const std::vector<std::string> &wanted);

} // namespace workbench
#endif
