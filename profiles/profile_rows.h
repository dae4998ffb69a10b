// SPDX-License-Identifier: Apache-2.0
//
// How rows are written down.
#ifndef OXA_PROFILES_PROFILE_ROWS_H
#define OXA_PROFILES_PROFILE_ROWS_H

#include "sdr/sensor_kinds.h"

namespace oxa {

// What a row may add to its name.
enum class TextUse : uint8_t { kVariant, kAnnouncement };
template <size_t N, TextUse kUse> struct Extra { char ac[N]; };
template <TextUse kUse, size_t N> constexpr Extra<N, kUse> Copied(const char (&acText)[N]) {
    Extra<N, kUse> t = {};
    for (size_t n = 0; n < N; ++n)
        t.ac[n] = acText[n];
    return t;
}
// "The board does not support adding sensor <text>.", where the text is not the name.
template <size_t N> constexpr auto Refused(const char (&acText)[N]) {
    return Copied<TextUse::kVariant>(acText);
}
template <size_t N> constexpr auto OnSmallBoard(const char (&acText)[N]) {
    CheckName(acText);
    return Copied<TextUse::kVariant>(acText);
}
template <size_t N> constexpr auto Second(const char (&acText)[N]) {
    CheckName(acText);
    return Copied<TextUse::kVariant>(acText);
}
// The driver writes "... for <text>: ucIndex = %d, ucCnt = %d!" before each record of the row.
template <size_t N> constexpr auto Announced(const char (&acText)[N]) {
    return Copied<TextUse::kAnnouncement>(acText);
}
// A name that is at most 16 characters with two digits; with more it is cut.
template <size_t N> struct TwoDigitName { char ac[N]; };
template <size_t N> constexpr TwoDigitName<N> TwoDigits(const char (&acText)[N]) {
    TwoDigitName<N> t = {};
    for (size_t n = 0; n < N; ++n)
        t.ac[n] = acText[n];
    return t;
}

inline constexpr Extra<1, TextUse::kVariant> kNoVariant = {};
inline constexpr Extra<1, TextUse::kAnnouncement> kNoAnnouncement = {};

template <size_t G, size_t P, size_t V = 1, size_t A = 1>
constexpr auto Row(Kind eKind, const char (&acGenerator)[G], const char (&acName)[P],
                   const Extra<V, TextUse::kVariant> &tVariant = kNoVariant,
                   const Extra<A, TextUse::kAnnouncement> &tAnnounced = kNoAnnouncement) {
    CheckName(acName);
    return MakeRow(eKind, acGenerator, acName, tVariant.ac, tAnnounced.ac);
}
template <size_t G, size_t P, size_t A>
constexpr auto Row(Kind eKind, const char (&acGenerator)[G], const char (&acName)[P],
                   const Extra<A, TextUse::kAnnouncement> &tAnnounced) {
    return Row(eKind, acGenerator, acName, kNoVariant, tAnnounced);
}
template <size_t G, size_t P, size_t V = 1>
constexpr auto Row(Kind eKind, const char (&acGenerator)[G], const TwoDigitName<P> &tName,
                   const Extra<V, TextUse::kVariant> &tVariant = kNoVariant) {
    CheckName(tName.ac, 2);
    return MakeRow(eKind, acGenerator, tName.ac, tVariant.ac, "");
}

} // namespace oxa
#endif
