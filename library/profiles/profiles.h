// SPDX-License-Identifier: Apache-2.0
//
// What the list of profiles says, for the profiles' own files.
#ifndef OXA_PROFILES_PROFILES_H
#define OXA_PROFILES_PROFILES_H

#include "library/record/traits.h"
#include "library/static_sensors/profile.h"
#include "oxa/records.h"

// Each profile defines these.  Hidden, so that a pointer at them costs no symbol lookup.
extern "C" {
#pragma GCC visibility push(hidden)
#define PROFILE(id, name, plain, driver, unit, traits, names, count)                                         \
    extern const oxa::ProfileTraits traits;                                                                  \
    extern const SnrInfoRec names[];                                                                         \
    extern const uint8_t count;
#define PROFILE_WITHOUT_DRIVER(id, name, plain, traits, names, count)                                        \
    extern const oxa::ProfileTraits traits;                                                                  \
    extern const SnrInfoRec names[];                                                                         \
    extern const uint8_t count;
#include "library/profiles/profiles.def"
#pragma GCC visibility pop
}

namespace oxa {

// Compile-time fault.
void no_profile_of_that_id_has_a_driver();

// How the profile calls itself in log lines.
consteval ProfileNames NamesOf(uint32_t dwCustomId) {
    switch (dwCustomId) {
#define PROFILE(id, name, plain, driver, unit, ...)                                                          \
    case id:                                                                                                 \
        return {name,                                                                                        \
                unit,                                                                                        \
                #driver,                                                                                     \
                name "_GetFanMaxCountByHal_",                                                                \
                name "_GetFanSilkByIndexByHal",                                                              \
                name "_CheckHddIsSupportNvmeByHal_"};
#include "library/profiles/profiles.def"
    default:
        no_profile_of_that_id_has_a_driver();
        return {};
    }
}

} // namespace oxa
#endif
