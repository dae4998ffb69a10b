/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Writes calls to the capture; what stands before the functions (calls.cpp, entries.cpp) tells it what went in and
 * what came out.  Nothing here fails for the caller, and errno stays as it is.
 */
#ifndef OXA_CAPTURE_RECORDER_H
#define OXA_CAPTURE_RECORDER_H

#include "capture/format.h"
#include "capture/parts.h"

namespace oxa::capture {

struct Thread {
    // The library runs in this thread, called through one of its entry points, while a capture is written: what is called
    // now is called by the library.  Not so within a function of the firmware that it called.
    bool bLibraryRuns;
    bool bEntered;         // an entry of this thread is told; one within it, called by the firmware, is not
    uint8_t ucNumber;      // from 1; 0: not known yet
    uint32_t dwPassedOver; // bounded calls that were sound and are not told
};
extern __thread Thread g_tThread;

// Whether an entry is told.  Opens the capture that OXA_CAPTURE names when it is asked for the first time; false: there
// is none (any more), or the entry stands within another one.
bool Recording();

// kEntryBegin: the parameters in their order; kEntryEnd: those that came out, and the result (null: none); kCall:
// both.  errno is told where it is another than before, and at the begin of an entry.  `pucBefore`: what a
// parameter that goes in and comes out was before the call; null where it did not change.  False: the entry cannot be told.
bool Tell(BlockKind eKind, uint16_t wId, const Part *ptParts, unsigned dwCount, const Part *ptResult,
          int nErrnoBefore, const uint8_t *pucBefore = nullptr);

// The functions behind ours, as far as they were looked for.
extern void *g_apvReal[];
// Null, which is told once, where there is none.
void *FindReal(uint16_t wId);
inline void *RealOf(uint16_t wId) {
    void *const pvReal = __atomic_load_n(&g_apvReal[wId], __ATOMIC_RELAXED);
    return pvReal != nullptr ? pvReal : FindReal(wId);
}

} // namespace oxa::capture
#endif
