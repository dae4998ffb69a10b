// SPDX-License-Identifier: GPL-3.0-or-later
//
// FRU ids: who gives which ones, and where two givers can meet.
#include <algorithm>

#include "checks/findings.h"

namespace workbench {
namespace {

constexpr uint32_t kOffsetProfile =
    CUSTOM_ID_SABLIN; // its machines of inner product 7 start eight ids higher
constexpr unsigned kOffset = 8;

// Part number first..last has FRU id number + base.
struct FruUser {
    const char *name;
    unsigned first, last;
    unsigned base;
    bool numbered; // tell the part numbers that meet
};

std::vector<FruUser> UsersOf(unsigned offset) {
    std::vector<FruUser> out = {
        {"PSU", 1, 99, 16 + offset, true},    // number + 16, no upper bound is checked
        {"card pool", 33, 36, offset, false}, // purchase cards
        {"sub card", 59, 59, 0, false},       // never shifted
    };
    if (offset != 0) {
        out.push_back({"SL200 pool", 1, 8, 0, false});
        out.push_back({"exhausted card pool", 7, 7, 0, false}); // 255 + 8 in eight bits
    }
    return out;
}

std::string RangeText(unsigned from, unsigned to) {
    return from == to ? std::to_string(from) : std::to_string(from) + "-" + std::to_string(to);
}

void CheckPair(const char *profile, const FruUser &a, const FruUser &b, std::vector<Finding> &out) {
    const unsigned from = std::max(a.first + a.base, b.first + b.base);
    const unsigned to = std::min(a.last + a.base, b.last + b.base);
    if (from > to)
        return;
    std::string subject = a.name;
    if (a.numbered)
        subject.append(" ").append(RangeText(from - a.base, to - a.base));
    subject.append(", ").append(b.name);
    out.push_back({"fru-id", profile, subject, "both can give FRU id " + RangeText(from, to), {}, ""});
}

} // namespace

std::vector<Finding> CheckFruIds(const Profile &profile) {
    std::vector<Finding> out;
    for (const unsigned offset : {0u, kOffset}) {
        if (offset != 0 && profile.id != kOffsetProfile)
            continue;
        const std::vector<FruUser> users = UsersOf(offset);
        for (size_t i = 0; i < users.size(); ++i)
            for (size_t k = i + 1; k < users.size(); ++k)
                CheckPair(offset == 0 ? "all" : profile.name, users[i], users[k], out);
    }
    return out;
}

} // namespace workbench
