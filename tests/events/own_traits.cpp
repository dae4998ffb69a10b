// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the event units ask about a profile, for programs that hold them without the profiles.
#include "library/record/traits.h"
#include "oxa/records.h"

namespace oxa {

const ProfileTraits &TraitsOf(uint32_t dwCustomId) {
    static constexpr ProfileTraits kKestrin = {.bKeepsMemoryState = true,
                                               .bHasMemoryOffset14 = true,
                                               .bHidesPowerForecasts = true,
                                               .bHidesDiskLife = true};
    static constexpr ProfileTraits kVorana = {.bReportsPowerDrop = true};
    static constexpr ProfileTraits kLumora = {.bReportsLeakGone = true};
    static constexpr ProfileTraits kOther = {};
    switch (dwCustomId) {
    case CUSTOM_ID_KESTRIN:
        return kKestrin;
    case CUSTOM_ID_VORANA:
        return kVorana;
    case CUSTOM_ID_LUMORA:
        return kLumora;
    default:
        return kOther;
    }
}

} // namespace oxa
