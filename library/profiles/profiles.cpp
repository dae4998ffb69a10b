// SPDX-License-Identifier: Apache-2.0
//
// The profiles by their ids: traits, and the table of name tables.
#include "library/profiles/profiles.h"

#include "oxa/specific_sensors.h"

namespace oxa {

namespace {

constexpr ProfileTraits kNothingSpecial = {};

} // namespace

const ProfileTraits &TraitsOf(uint32_t dwCustomId) {
    switch (dwCustomId) {
    default:
        return kNothingSpecial;
#define PROFILE(id, name, plain, driver, unit, traits, ...)                                                  \
    case id:                                                                                                 \
        return traits;
#define PROFILE_WITHOUT_DRIVER(id, name, plain, traits, ...)                                                 \
    case id:                                                                                                 \
        return traits;
#include "library/profiles/profiles.def"
    }
}

} // namespace oxa

constinit const SnrSpecificInfoRow g_atSnrSpecificInfo[] = {
#define PROFILE(id, name, plain, driver, unit, traits, names, count) {id, &count, names},
#define PROFILE_WITHOUT_DRIVER(id, name, plain, traits, names, count) {id, &count, names},
#include "library/profiles/profiles.def"
};
constinit const uint32_t g_dwSdrCustomCnt = sizeof(g_atSnrSpecificInfo) / sizeof(g_atSnrSpecificInfo[0]);
