/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The functions that the library imports, with the capture before them.  Whoever else calls them comes through here
 * too, and straight to the real ones.
 */
#include <errno.h>
#include <limits.h>
#include <stdarg.h>
#include <sys/mman.h>
#include <unistd.h>

#include "capture/print.h"
#include "capture/through.h"
#include "oxa/platform.h"

#define EXPORTED __attribute__((visibility("default")))

namespace oxa::capture {
namespace {

uint32_t Least(size_t nA, size_t nB) {
    return static_cast<uint32_t>(nA < nB ? nA : nB);
}

size_t Length(const char *pcText, size_t nMost) {
    return pcText != nullptr ? strnlen(pcText, nMost) : 0;
}

// ---- bounded calls: told afterwards, and only where they did not do what a sound one does ----------------------------

template <class R, class F> R Quietly(uint16_t wId, bool bRuns, F real) {
    g_tThread.bLibraryRuns = false;
    const R result = Called<R>(RealOf(wId), real);
    g_tThread.bLibraryRuns = bRuns;
    return result;
}

void TellUnsound(uint16_t wId, const Part *ptParts, unsigned dwCount, const Part &tResult) {
    Tell(kCall, wId, ptParts, dwCount, &tResult, errno);
}

// ---- what a format makes of its arguments ----------------------------------------------------------------------------

// A long text is neither on the stack, which is small in some threads of a firmware, nor on the heap.
struct Formatted {
    Formatted(const char *pcFormat, va_list tList);
    ~Formatted() {
        if (pcText != acUsual)
            munmap(const_cast<char *>(pcText), static_cast<size_t>(nLength) + 1);
    }
    Formatted(const Formatted &) = delete;

    const char *pcText;
    int nLength; // negative: no text
    char acUsual[512];
};

Formatted::Formatted(const char *pcFormat, va_list tList) : pcText(acUsual) {
    va_list tAgain;
    va_copy(tAgain, tList);
    nLength = Print(acUsual, sizeof(acUsual), pcFormat, tList);
    if (nLength < 0)
        acUsual[0] = '\0';
    if (nLength >= static_cast<int>(sizeof(acUsual))) {
        const size_t nRoom = static_cast<size_t>(nLength) + 1;
        void *const pvLong = mmap(nullptr, nRoom, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pvLong != MAP_FAILED) {
            pcText = static_cast<char *>(pvLong);
            Print(static_cast<char *>(pvLong), nRoom, pcFormat, tAgain);
        }
    }
    va_end(tAgain);
}

int ThroughPrint(uint16_t wId, char *pcTo, size_t nRoom, const char *pcFormat, va_list tList) {
    using Printer = int (*)(char *, size_t, const char *, ...);
    const Formatted tMade(pcFormat, tList);
    const bool bRuns = g_tThread.bLibraryRuns;
    const int nResult = Quietly<int>(wId, bRuns, [&](void *pvReal) {
        return reinterpret_cast<Printer>(pvReal)(pcTo, nRoom, "%s", tMade.pcText);
    });
    if (!bRuns)
        return nResult;
    const bool bFits = tMade.nLength >= 0 && static_cast<size_t>(tMade.nLength) < nRoom;
    const Part atParts[] = {Out(pcTo, static_cast<uint32_t>(nRoom)), Number(nRoom), Text(tMade.pcText)};
    if (bFits && nResult == tMade.nLength)
        ++g_tThread.dwPassedOver;
    else
        TellUnsound(wId, atParts, 3, Number(nResult));
    return nResult;
}

void ThroughLine(uint16_t wId, uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunction,
                 const char *pcFormat, va_list tList) {
    using Line = void (*)(uint32_t, const char *, uint32_t, const char *, const char *, ...);
    const Formatted tMade(pcFormat, tList);
    const auto real = [&] {
        Called<void>(RealOf(wId), [&](void *pvReal) {
            reinterpret_cast<Line>(pvReal)(dwModule, pcFile, dwLine, pcFunction, "%s", tMade.pcText);
        });
    };
    if (!IsTold(kCall))
        return real();
    const auto tParts =
        Gather(Number(dwModule), Text(pcFile), Number(dwLine), Text(pcFunction), Text(tMade.pcText));
    Told<void>(kCall, wId, tParts, real);
}

void ThroughChannel(uint16_t wId, uint32_t dwLevel, const char *pcFormat, va_list tList) {
    using Channel = void (*)(uint32_t, const char *, ...);
    const Formatted tMade(pcFormat, tList);
    const auto real = [&] {
        Called<void>(RealOf(wId),
                     [&](void *pvReal) { reinterpret_cast<Channel>(pvReal)(dwLevel, "%s", tMade.pcText); });
    };
    if (!IsTold(kCall))
        return real();
    Told<void>(kCall, wId, Gather(Number(dwLevel), Text(tMade.pcText)), real);
}

// ---- service objects: the library gets one of ours, with the operations that the real one has ------------------------

template <class T> const T *g_ptReal; // the object that was given out last

template <class T> unsigned OperationsOf(const T *ptReal) {
    constexpr unsigned kOperations = sizeof(T) / sizeof(void *);
    void *apvOperations[kOperations];
    memcpy(apvOperations, ptReal, sizeof(T));
    unsigned dwHas = 0;
    for (unsigned i = 0; i < kOperations; ++i)
        dwHas |= apvOperations[i] != nullptr ? 1u << i : 0;
    return dwHas;
}

} // namespace
} // namespace oxa::capture

using namespace oxa::capture;

#define OPERATION(service, operation, parameters, arguments, ...)                                            \
    static int32_t operation parameters {                                                                    \
        const service *const ptReal = __atomic_load_n(&g_ptReal<service>, __ATOMIC_ACQUIRE);                 \
        const auto real = [&] { return ptReal->operation arguments; };                                       \
        if (!IsTold(kCall))                                                                                  \
            return real();                                                                                   \
        return Told<int32_t>(kCall, Id(#service "." #operation), Gather(__VA_ARGS__), real);                 \
    }
#include "capture/calls.def"

namespace oxa::capture {
namespace {

// One of ours for every choice of operations, so that what one thread was given stays as it is.
template <class T, auto... kOperation> constexpr T Wrapped(unsigned dwHas) {
    unsigned dwBit = 1;
    const auto choose = [&](auto pfnOperation) {
        const bool bHas = (dwHas & dwBit) != 0;
        dwBit <<= 1;
        return bHas ? pfnOperation : nullptr;
    };
    return T{choose(kOperation)...};
}

template <class T, auto... kOperation> const T *WrapService(uint16_t wId) {
    static constexpr T kWrapped[] = {Wrapped<T, kOperation...>(0), Wrapped<T, kOperation...>(1),
                                     Wrapped<T, kOperation...>(2), Wrapped<T, kOperation...>(3)};
    const T *ptReal = nullptr;
    // the result that is told: 0 for none, else 4 and a bit for every operation that there is
    const auto real = [&]() -> uint32_t {
        ptReal = Called<const T *>(RealOf(wId),
                                   [](void *pvReal) { return reinterpret_cast<const T *(*)()>(pvReal)(); });
        return ptReal != nullptr ? 4 + OperationsOf(ptReal) : 0;
    };
    if (!IsTold(kCall)) {
        real();
        return ptReal;
    }
    if (Told<uint32_t>(kCall, wId, Gather(), real) == 0)
        return nullptr;
    __atomic_store_n(&g_ptReal<T>, ptReal, __ATOMIC_RELEASE);
    return &kWrapped[OperationsOf(ptReal)];
}

} // namespace
} // namespace oxa::capture

#define CALL(result, name, parameters, arguments, ...)                                                       \
    EXPORTED result name parameters {                                                                        \
        return Told<result>(IsTold(kCall) ? kCall : kNothing, Id(#name), Gather(__VA_ARGS__),                \
                            OXA_REAL(result, name, arguments));                                              \
    }
#define BOUNDED(result, name, parameters, arguments, sound, ...)                                             \
    EXPORTED result name parameters {                                                                        \
        const bool bRuns = g_tThread.bLibraryRuns;                                                           \
        const result nResult = Quietly<result>(Id(#name), bRuns, [&](void *pvReal) {                         \
            return reinterpret_cast<decltype(&name)>(pvReal) arguments;                                      \
        });                                                                                                  \
        if (bRuns && nResult == static_cast<result>(sound)) {                                                \
            ++g_tThread.dwPassedOver;                                                                        \
        } else if (bRuns) {                                                                                  \
            const auto tParts = Gather(__VA_ARGS__);                                                         \
            TellUnsound(Id(#name), tParts.at, tParts.kCount, Number(nResult));                               \
        }                                                                                                    \
        return nResult;                                                                                      \
    }
#define PRINT(name)                                                                                          \
    EXPORTED int name(char *a, size_t b, const char *c, ...) {                                               \
        va_list tList;                                                                                       \
        va_start(tList, c);                                                                                  \
        const int nResult = ThroughPrint(Id(#name), a, b, c, tList);                                         \
        va_end(tList);                                                                                       \
        return nResult;                                                                                      \
    }
#define LINE(name)                                                                                           \
    EXPORTED void name(uint32_t a, const char *b, uint32_t c, const char *d, const char *e, ...) {           \
        va_list tList;                                                                                       \
        va_start(tList, e);                                                                                  \
        ThroughLine(Id(#name), a, b, c, d, e, tList);                                                        \
        va_end(tList);                                                                                       \
    }
#define CHANNEL(name)                                                                                        \
    EXPORTED void name(uint32_t a, const char *b, ...) {                                                     \
        va_list tList;                                                                                       \
        va_start(tList, b);                                                                                  \
        ThroughChannel(Id(#name), a, b, tList);                                                              \
        va_end(tList);                                                                                       \
    }
#define SERVICE(type, name, ...)                                                                             \
    EXPORTED const type *name() {                                                                            \
        return WrapService<type, __VA_ARGS__>(Id(#name));                                                    \
    }

extern "C" {
#include "capture/calls.def"
}
