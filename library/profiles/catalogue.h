// SPDX-License-Identifier: Apache-2.0
//
// The profiles as one list: for programs that run, list or name them.  The library itself has no use for it,
// and its objects hold none of it.
#ifndef OXA_PROFILES_CATALOGUE_H
#define OXA_PROFILES_CATALOGUE_H

#include "oxa/records.h"

extern "C" {
#define PROFILE(id, name, plain, driver, ...) void driver(uint8_t *, DevTabEntry *, uint16_t *);
#include "library/profiles/profiles.def"
}

namespace oxa {

struct ProfileView {
    const char *pcName;         // "kestrin"
    const char *pcFunctionName; // "Kestrin", as in the names of its functions
    uint32_t dwCustomId;
    const char *pcUnit; // in log lines; empty without a driver
};

// In the order in which the library searches their name tables.
inline constexpr ProfileView kProfiles[] = {
#define PROFILE(id, name, plain, driver, unit, ...) {plain, name, id, unit},
#define PROFILE_WITHOUT_DRIVER(id, name, plain, ...) {plain, name, id, ""},
#include "library/profiles/profiles.def"
};

using StaticDriverFn = void (*)(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

// Null: there is no such profile, or it has names of run-time sensors only.  (A function, so that who only wants the
// names need not be linked with the library.)
inline StaticDriverFn DriverOf(uint32_t dwCustomId) {
    switch (dwCustomId) {
#define PROFILE(id, name, plain, driver, ...)                                                                \
    case id:                                                                                                 \
        return driver;
#include "library/profiles/profiles.def"
    default:
        return nullptr;
    }
}

} // namespace oxa
#endif
