// SPDX-License-Identifier: GPL-3.0-or-later
//
// The nine profiles, and in what their passes differ.
#ifndef OXA_TESTS_SUPPORT_PROFILES_H
#define OXA_TESTS_SUPPORT_PROFILES_H

#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "library/profiles/catalogue.h"

namespace tests {

using Driver = void (*)(uint8_t *, DevTabEntry *, uint16_t *);

struct Profile {
    std::string name;   // "Kestrin": as in the names of its functions
    std::string folder; // "kestrin": as in the names of files
    uint32_t custom_id;
    Driver driver;
    bool table_first;   // the records of its table come before the groups
    bool fans;          // has a fan pass
    bool pcie;          // has a PCIe slot pass
    bool cdu;           // has the sensors of a liquid-cooling unit
    size_t alarm_loads; // how often a pass over one PSU loads its alarm configuration

    std::string DriverName() const {
        return "OXA_Add" + name + "StaticSensor";
    }
    std::string File() const {
        return "gen_specific_sensor_" + folder + ".c";
    }
};
inline std::ostream &operator<<(std::ostream &out, const Profile &profile) {
    return out << profile.name;
}

inline const std::vector<Profile> &Profiles() {
    static const std::vector<Profile> kProfiles = {
        {"Default", "default", CUSTOM_ID_DEFAULT, oxa::DriverOf(CUSTOM_ID_DEFAULT), false, true, true, true,
         1},
        {"Kestrin", "kestrin", CUSTOM_ID_KESTRIN, oxa::DriverOf(CUSTOM_ID_KESTRIN), true, true, true, true,
         1},
        {"Astrel", "astrel", CUSTOM_ID_ASTREL, oxa::DriverOf(CUSTOM_ID_ASTREL), true, true, true, false, 1},
        {"Pellago", "pellago", CUSTOM_ID_PELLAGO, oxa::DriverOf(CUSTOM_ID_PELLAGO), true, true, true, false,
         1},
        {"Vorana", "vorana", CUSTOM_ID_VORANA, oxa::DriverOf(CUSTOM_ID_VORANA), true, false, true, false, 1},
        {"Lumora", "lumora", CUSTOM_ID_LUMORA, oxa::DriverOf(CUSTOM_ID_LUMORA), true, false, false, false, 1},
        // it has a supply record in the place of the status
        {"Quorral", "quorral", CUSTOM_ID_QUORRAL, oxa::DriverOf(CUSTOM_ID_QUORRAL), true, true, true, false,
         0},
        {"Durnow", "durnow", CUSTOM_ID_DURNOW, oxa::DriverOf(CUSTOM_ID_DURNOW), true, true, true, false, 1},
        {"Ferrisk", "ferrisk", CUSTOM_ID_FERRISK, oxa::DriverOf(CUSTOM_ID_FERRISK), true, false, false, false,
         1},
    };
    return kProfiles;
}

// Whose single sensors the library names: the nine, and Sablin, which has no static set.
struct NamedProfile {
    uint32_t custom_id;
    std::string folder;
};
inline std::ostream &operator<<(std::ostream &out, const NamedProfile &profile) {
    return out << profile.folder;
}
inline const std::vector<NamedProfile> &NamedProfiles() {
    static const std::vector<NamedProfile> kNamed = [] {
        std::vector<NamedProfile> named;
        for (const Profile &profile : Profiles())
            named.push_back({profile.custom_id, profile.folder});
        named.push_back({CUSTOM_ID_SABLIN, "sablin"});
        return named;
    }();
    return kNamed;
}

inline const Profile &FindProfile(const std::string &name) {
    for (const Profile &profile : Profiles())
        if (profile.name == name)
            return profile;
    std::abort();
}

inline std::string ProfileName(const testing::TestParamInfo<Profile> &info) {
    return info.param.name;
}

} // namespace tests
#endif
