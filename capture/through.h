/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The way through to a real function: a process that dies within it has noted that it was called.
 */
#ifndef OXA_CAPTURE_THROUGH_H
#define OXA_CAPTURE_THROUGH_H

#include "capture/names.h"
#include "capture/recorder.h"

namespace oxa::capture {

// What a function that is not there would answer: it failed.
template <class R> R NoAnswer() {
    if constexpr (std::is_pointer_v<R>)
        return nullptr;
    else if constexpr (std::is_signed_v<R> || sizeof(R) == 2) // 2 bytes: a completion code
        return static_cast<R>(-1);
    else
        return R{};
}

// From the begin of a call to its end.
class Way {
public:
    // `eBegin`: kEntryBegin, kCall; kNothing is not told.
    Way(BlockKind eBegin, uint16_t wId, const Part *ptParts, unsigned dwCount);
    void End(const Part *ptResult); // null: it returns nothing

private:
    void Begin();

    const Part *m_ptParts;
    int m_nErrno;
    uint16_t m_wId;
    uint8_t m_ucCount;
    BlockKind m_eBegin;
    uint8_t
        m_aucBefore[8]; // a parameter that goes in and comes out: no call of the firmware has a longer one
};

inline bool IsTold(BlockKind eBegin) {
    return eBegin == kEntryBegin ? Recording() : g_tThread.bLibraryRuns;
}

// A call, or an entry, that is told; `real` makes it.
template <class R, class F, unsigned N>
R Told(BlockKind eBegin, uint16_t wId, const Parts<N> &tParts, const F &real) {
    Way tWay(eBegin, wId, tParts.at, N);
    if constexpr (std::is_same_v<R, void>) {
        real();
        tWay.End(nullptr);
    } else {
        const R result = real();
        const Part tResult = Number(result);
        tWay.End(&tResult);
        return result;
    }
}

// The real function, called; where it is not there, the call failed.
template <class R, class F> R Called(void *pvReal, const F &real) {
    if (pvReal != nullptr) [[likely]]
        return real(pvReal);
    if constexpr (!std::is_same_v<R, void>)
        return NoAnswer<R>();
}

} // namespace oxa::capture

#define OXA_REAL(result, name, arguments)                                                                    \
    [&, pvReal = RealOf(Id(#name))]() {                                                                      \
        return Called<result>(pvReal,                                                                        \
                              [&](void *pv) { return reinterpret_cast<decltype(&name)>(pv) arguments; });    \
    }
#endif
