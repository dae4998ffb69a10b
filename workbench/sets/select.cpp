// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/select.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"

namespace workbench {
namespace {

[[noreturn]] void FailUnknown(const StaticSet &set, const std::string &wanted,
                              const std::vector<Selected> &all) {
    std::vector<std::string> names;
    for (const Selected &one : all)
        names.push_back(one.decoded.name);
    const std::vector<std::string> nearest = NearestNames(wanted, names);
    throw InputError(set.Label() + ": no sensor '" + wanted + "' among " + std::to_string(names.size()) +
                     (nearest.empty() ? "" : "; did you mean " + Join(nearest, ", ") + "?"));
}

// Marks what one word means.
void Mark(const StaticSet &set, const std::vector<Selected> &all, const std::string &wanted,
          std::vector<bool> &meant) {
    const bool exact = std::any_of(all.begin(), all.end(),
                                   [&wanted](const Selected &one) { return one.decoded.name == wanted; });
    bool found = false;
    for (size_t i = 0; i < all.size(); ++i) {
        const std::string &name = all[i].decoded.name;
        if (exact ? name != wanted : !IsMeant(name, wanted))
            continue;
        meant[i] = found = true;
    }
    if (!found)
        FailUnknown(set, wanted, all);
}

} // namespace

bool IsMeant(const std::string &name, const std::string &wanted) {
    return SameName(name, wanted) || (HasWildcard(wanted) && MatchesGlob(name, wanted));
}

std::vector<Selected> SelectSensors(const StaticSet &set, const std::vector<std::string> &wanted) {
    const Decoder decoder;
    std::vector<Selected> all;
    for (const Sensor &sensor : set.sensors)
        all.push_back({&sensor, decoder.Decode(sensor)});
    if (wanted.empty())
        return all;
    std::vector<bool> meant(all.size(), false);
    for (const std::string &word : wanted)
        Mark(set, all, word, meant);
    std::vector<Selected> out;
    for (size_t i = 0; i < all.size(); ++i)
        if (meant[i])
            out.push_back(std::move(all[i]));
    return out;
}

} // namespace workbench
