// SPDX-License-Identifier: Apache-2.0
//
// What all event builders do alike.  A builder writes its info line, has its flag checked, applies its
// profile rule, looks up what it needs and says what came out, and sends.
#ifndef OXA_EVENTS_FRAME_H
#define OXA_EVENTS_FRAME_H

#include "library/events/builders.h"
#include "library/record/log.h"
#include "library/record/traits.h"

namespace oxa::sel {

// Line of a builder, under the builder's name.
#define SEL_INFO(builder, ...) OXA_INFO(kModuleSel, kEventUnit, (builder).tHead.acName, __VA_ARGS__)
#define SEL_ERROR(builder, ...) OXA_ERROR(kModuleSel, kEventUnit, (builder).tHead.acName, __VA_ARGS__)

// A checked flag is 0 or 1; anything else is an error line, and the event is not sent.
bool IsLegal(const Head &tHead, uint32_t dwFlag);

// Profile number, read afresh by each rule that asks for it; Default when it cannot be read.
uint32_t ReadCustomId();

// After a lookup in the sensor directory: one that failed left rubbish, so the number is 0.
void CheckNumber(const Head &tHead, int32_t sdwRet, uint32_t &dwSensorNum);

// Composes the record from the builder's values and sends it, a second time when the first one fails.
uint32_t ComposeAndSend(const Head &tHead, const Step *ptStep, const uint32_t *pdwValue);

template <size_t nSteps, size_t nValues, class... T>
inline uint32_t Send(const Builder<nSteps, nValues> &tBuilder, T... dwValue) {
    static_assert(sizeof...(T) == nValues, "the values of the builder's list, in its order");
    const uint32_t adwValue[nValues + 1] = {dwValue...};
    return ComposeAndSend(tBuilder.tHead, tBuilder.atStep, adwValue);
}

} // namespace oxa::sel
#endif
