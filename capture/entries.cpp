/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The entry points of the library, with the capture before them.
 */
#include "capture/through.h"
#include "oxa/exports.h"

namespace oxa::capture {
namespace {

using Driver = void (*)(uint8_t *, DevTabEntry *, uint16_t *);

constexpr uint16_t kCountNotWritten = 0xFFFF; // a driver writes its count last, or not at all

// How many sensors were built; nothing is written where the pass ended without a count.
bool Pass(Driver pfnReal, uint8_t *pucSlots, DevTabEntry *ptEntries, uint16_t *pwCount) {
    if (pwCount == nullptr) {
        pfnReal(pucSlots, ptEntries, pwCount);
        return false;
    }
    const uint16_t wBefore = *pwCount;
    *pwCount = kCountNotWritten;
    pfnReal(pucSlots, ptEntries, pwCount);
    const bool bCounted = *pwCount != kCountNotWritten;
    *pwCount = bCounted ? *pwCount : wBefore;
    return bCounted;
}

void ThroughDriver(uint16_t wId, uint8_t *pucSlots, DevTabEntry *ptEntries, uint16_t *pwCount) {
    const Driver pfnReal = reinterpret_cast<Driver>(RealOf(wId));
    if (pfnReal == nullptr)
        return;
    if (!IsTold(kEntryBegin))
        return pfnReal(pucSlots, ptEntries, pwCount);
    Part atParts[] = {Out(pucSlots, 0), Out(ptEntries, 0), Out(pwCount)};
    Way tWay(kEntryBegin, wId, atParts, 3);
    if (Pass(pfnReal, pucSlots, ptEntries, pwCount)) {
        atParts[0].size = *pwCount * SDR_SLOT_SIZE;
        atParts[1].size = *pwCount * DEV_TAB_ENTRY_SIZE;
    } else {
        atParts[2].data = nullptr;
    }
    tWay.End(nullptr);
}

} // namespace
} // namespace oxa::capture

using namespace oxa::capture;

#define DRIVER(name)                                                                                         \
    void name(uint8_t *a, DevTabEntry *b, uint16_t *c) {                                                     \
        ThroughDriver(Id(#name), a, b, c);                                                                   \
    }
#define ENTRY(result, name, parameters, arguments, ...)                                                      \
    result name parameters {                                                                                 \
        return Told<result>(IsTold(kEntryBegin) ? kEntryBegin : kNothing, Id(#name), Gather(__VA_ARGS__),    \
                            OXA_REAL(result, name, arguments));                                              \
    }

extern "C" {
#include "capture/entries.def"
}
