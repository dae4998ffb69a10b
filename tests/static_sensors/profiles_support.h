// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the nine profiles share: the drivers by name, and a pass of any of them.
#ifndef OXA_TESTS_STATIC_SENSORS_PROFILES_SUPPORT_H
#define OXA_TESTS_STATIC_SENSORS_PROFILES_SUPPORT_H

#include "static_sensors/default_support.h"

namespace profile_sets {

using namespace default_set;

using Driver = void (*)(uint8_t *, DevTabEntry *, uint16_t *);

struct Profile {
    std::string name;   // "Kestrin": as in the names of its functions
    std::string folder; // "kestrin": as in the names of files
    Driver driver;
    bool fans; // has a fan pass
    bool pcie; // has a PCIe slot pass
};
inline std::ostream &operator<<(std::ostream &out, const Profile &profile) {
    return out << profile.name;
}

inline const std::vector<Profile> &OtherProfiles() { // all but Default
    static const std::vector<Profile> kProfiles = {
        {"Kestrin", "kestrin", OXA_AddKestrinStaticSensor, true, true},
        {"Astrel", "astrel", OXA_AddAstrelStaticSensor, true, true},
        {"Pellago", "pellago", OXA_AddPellagoStaticSensor, true, true},
        {"Vorana", "vorana", OXA_AddVoranaStaticSensor, false, true},
        {"Lumora", "lumora", OXA_AddLumoraStaticSensor, false, false},
        {"Quorral", "quorral", OXA_AddQuorralStaticSensor, true, true},
        {"Durnow", "durnow", OXA_AddDurnowStaticSensor, true, true},
        {"Ferrisk", "ferrisk", OXA_AddFerriskStaticSensor, false, false},
    };
    return kProfiles;
}

inline const Profile &FindProfile(const std::string &name) {
    for (const Profile &profile : OtherProfiles())
        if (profile.name == name)
            return profile;
    std::abort();
}

// A pass of one driver over the platform as it stands (after sim::Start and faults).
inline Outcome RunPass(Driver driver) {
    sim::StaticArrays &arrays = sim::CallerArrays(4096, kUntouched);
    arrays.count = kCallersCount;
    driver(arrays.slots, arrays.entries, &arrays.count);
    Outcome out{arrays.count != kCallersCount, arrays.count, {}};
    const size_t slots = out.written ? arrays.count : arrays.capacity;
    for (size_t i = 0; i < slots; ++i) {
        Record record{{arrays.slots + 64 * i, arrays.slots + 64 * i + 64}, Bytes(32)};
        if (!out.written && record.sdr == Bytes(64, kUntouched))
            break;
        std::memcpy(record.entry.data(), arrays.entries + i, 32);
        out.records.push_back(record);
    }
    return out;
}

inline Outcome RunPass(Driver driver, const sim::Board &board) {
    sim::Start(board);
    std::filesystem::remove(sim::RealPath(kStorePath)); // of an earlier pass of the same test
    return RunPass(driver);
}

// One of everything, and two records of an NVMe disk.
inline sim::Board SmallBoard() {
    sim::Board board = BaseBoard();
    board.cpus = {.count = 1, .silk_start = 1, .type = 1};
    board.psus = {.count = 1, .group_count = 1, .count_per_group = 1};
    board.dimms = {.count = 1, .names = {"A0"}};
    board.pcie.slots = {{.slot = 2}};
    board.fans.count = 1;
    board.ocp = {.count = 1, .present = 1};
    board.disks.backplanes = {{3, 1, "Front"}};
    board.disks.nvme_slots = {3};
    return board;
}

inline std::string ProfileName(const testing::TestParamInfo<Profile> &info) {
    return info.param.name;
}

inline std::string Replace(std::string text, const std::string &what, const std::string &with) {
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

} // namespace profile_sets

#endif
