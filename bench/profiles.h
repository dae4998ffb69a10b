// SPDX-License-Identifier: GPL-3.0-or-later
//
// The profiles that have a static driver, and how many records each of them builds on the fullest board.
#ifndef OXA_BENCH_PROFILES_H
#define OXA_BENCH_PROFILES_H

#include <map>
#include <string_view>
#include <vector>

#include "library/profiles/catalogue.h"

namespace bench {

struct Profile {
    const char *name;
    oxa::StaticDriverFn driver;
    uint16_t records; // 0: nobody has counted them
};

inline const std::vector<Profile> &Profiles() {
    static const std::map<std::string_view, uint16_t> counted = {
        {"default", 637}, {"kestrin", 703}, {"pellago", 602}, {"vorana", 629}, {"astrel", 582},
        {"quorral", 637}, {"lumora", 562},  {"durnow", 604},  {"ferrisk", 579}};
    static const std::vector<Profile> profiles = [] {
        std::vector<Profile> out;
        for (const oxa::ProfileView &profile : oxa::kProfiles) {
            const auto count = counted.find(profile.pcName);
            if (const oxa::StaticDriverFn driver = oxa::DriverOf(profile.dwCustomId))
                out.push_back({profile.pcName, driver, count == counted.end() ? uint16_t{0} : count->second});
        }
        return out;
    }();
    return profiles;
}

} // namespace bench
#endif
