// SPDX-License-Identifier: Apache-2.0
//
// What the generators of run-time sensors do alike, whatever record they build.  A generator gives the
// record's length, GEN_SDR_FAILED or GEN_SDR_SKIPPED, and writes the caller's buffer only when it gives a
// length.
#ifndef OXA_SPECIFIC_SENSORS_GENERATOR_H
#define OXA_SPECIFIC_SENSORS_GENERATOR_H

#include "library/record/head.h"
#include "library/record/traits.h"
#include "oxa/specific_sensors.h"

namespace oxa {

inline constexpr uint8_t kNoSlot = 255;

// True when an argument is missing, which is said under the function's name.
bool ReportNull(const char *pcFunc, const void *pvArgument);
inline bool ReportNull(const char *pcFunc, const void *pvA, const void *pvB) {
    return ReportNull(pcFunc, pvA == nullptr ? pvA : pvB);
}

uint32_t ReadProfile(); // kProfileWhenUnreadable when it cannot be read

// A record on its way from a description to the caller.
struct SpecificDraft {
    const char *pcFunc;
    SpecificSensorParam &tParam;
    const ProfileTraits &tTraits; // of the profile as it was when the record was begun
    SnrQuery tQuery;              // what the name tables are asked for, and the name
    uint8_t ucOriginalSlot;
    uint8_t aucSDR[SDR_SLOT_SIZE];

    SpecificDraft(const char *pcGenerator, SpecificSensorParam &tDescription);

    void UseTemplate(const SdrHead &tHead, uint8_t ucHeadSize);
    // The slot becomes the number that is printed at it.
    void ConvertSlot();
    void PutName(uint8_t ucOffset, uint8_t ucLen);
    // Refused when a sensor of this type and name is stored already.
    uint8_t Publish(uint8_t *pucSDR, uint8_t ucLen) const;
};

} // namespace oxa
#endif
