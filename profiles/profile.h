// SPDX-License-Identifier: Apache-2.0
//
// A customer profile is one constant: how it calls itself, the order of its static pass, and its rows.
#ifndef OXA_PROFILES_PROFILE_H
#define OXA_PROFILES_PROFILE_H

#include "profiles/sensor_kinds.h"
#include "sdr/sensor_engine.h"

namespace oxa {

// The parts of a static pass.  A profile lists them in its order; the pass begins with the board's facts and
// ends with the count in every profile.
enum class Step : uint8_t {
    kEnd,
    kSwitchCard, // volts and currents, or temperatures, of the switch-board card
    kCpus,
    kPsus, // then the redundancy of the PSU groups
    kMemory,
    kPcie,
    kFans,
    kDisks,
    kOcp,
    kTable,         // the static generator table
    kCpuDomains,    // only the processor with voltage domains
    kLiquidCooling, // only where a CDU is managed
    kSwitchAir      // inlets and outlets of the switch board
};
inline constexpr size_t kStepMax = 24;

struct ProfileHead {
    ProfileName tName;
    Step aeSteps[kStepMax]; // ends with kEnd
};

// Rows end with a row of length 0 in no group.
template <size_t N> struct Profile {
    ProfileHead tHead;
    Rows<N> tRows;
};

// ---- writing rows down
// ----------------------------------------------------------------------------------------

// What a row may add to its name: the text of the refusal where that is not the name, or a second name.
template <size_t N> struct Variant { char ac[N]; };
template <size_t N> constexpr Variant<N> Copied(const char (&acText)[N]) {
    Variant<N> t = {};
    for (size_t n = 0; n < N; ++n)
        t.ac[n] = acText[n];
    return t;
}
template <size_t N> constexpr Variant<N> Refused(const char (&acText)[N]) {
    return Copied(acText); // "The board does not support adding sensor <text>."
}
template <size_t N> constexpr Variant<N> OnSmallBoard(const char (&acText)[N]) {
    CheckName(acText);
    return Copied(acText);
}
template <size_t N> constexpr Variant<N> Second(const char (&acText)[N]) {
    CheckName(acText);
    return Copied(acText);
}

template <size_t G, size_t P>
constexpr auto Row(Kind eKind, const char (&acGenerator)[G], const char (&acName)[P]) {
    return MakeRow(eKind, acGenerator, acName, "");
}
template <size_t G, size_t P, size_t V>
constexpr auto Row(Kind eKind, const char (&acGenerator)[G], const char (&acName)[P],
                   const Variant<V> &tVariant) {
    return MakeRow(eKind, acGenerator, acName, tVariant.ac);
}

// ---- checks and look-ups by the compiler
// ------------------------------------------------------------------------

constexpr bool SameBytesText(const uint8_t *pucA, const uint8_t *pucB) {
    while (*pucA == *pucB && *pucA != '\0')
        ++pucA, ++pucB;
    return *pucA == *pucB;
}

// Every group's rows stand together, and no name pattern or exported generator stands twice.  (The voltage
// domains of the two CPUs share their patterns: the printed number tells them apart.)
template <size_t N> constexpr void CheckRows(const Rows<N> &t) {
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow]) {
        bool bLeft = false;
        for (size_t nOther = nRow + t.auc[nRow]; t.auc[nOther] != 0; nOther += t.auc[nOther]) {
            const bool bSameGroup = t.auc[nOther + kRowGroup] == t.auc[nRow + kRowGroup];
            if (bSameGroup && bLeft)
                row_stands_outside_its_group();
            bLeft |= !bSameGroup;
            const bool bDomains =
                bSameGroup && t.auc[nRow + kRowGroup] == static_cast<uint8_t>(Group::kCpuDomain);
            if (!bDomains && SameBytesText(t.auc + nRow + t.auc[nRow + kRowName],
                                           t.auc + nOther + t.auc[nOther + kRowName]))
                sensor_name_twice_in_a_profile();
            if (t.auc[nRow + kRowTexts] != '\0' &&
                SameBytesText(t.auc + nRow + kRowTexts, t.auc + nOther + kRowTexts))
                sensor_name_twice_in_a_profile();
        }
    }
}

template <size_t... N>
constexpr Profile<(N + ...) + 2> MakeProfile(const ProfileHead &tHead, const Rows<N> &...atRows) {
    constexpr Rows<2> tEnd = {};
    const Profile<(N + ...) + 2> t = {tHead, Join(atRows..., tEnd)};
    CheckRows(t.tRows);
    return t;
}

// Where the row of an exported generator stands, by the function's name "<Profile>_<generator>".
template <size_t N> constexpr size_t RowOffset(const Profile<N> &tProfile, const char *pcFunction) {
    for (const char *pc = tProfile.tHead.tName.acName; *pc != '\0'; ++pc)
        if (*pcFunction++ != *pc)
            no_row_of_that_generator();
    if (*pcFunction++ != '_')
        no_row_of_that_generator();
    const uint8_t *puc = tProfile.tRows.auc;
    for (size_t nRow = 0; puc[nRow] != 0; nRow += puc[nRow])
        if (SameText(puc + nRow + kRowTexts, pcFunction))
            return nRow;
    no_row_of_that_generator();
    return 0;
}

} // namespace oxa

// Exported generators.  A profile's file names its constant kProfile and says for each function of its
// contract that it builds the row of the same name: alone, or one record per index.
#define OXA_GENERATOR_ENTRY(profile)                                                                         \
    [[gnu::noinline]] uint8_t BuildOne(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, const uint8_t *pucRow) {   \
        return oxa::BuildSensor(profile.tHead.tName, oxa::kSensorKinds.at[pucRow[oxa::kRowKind]], {pucRow},  \
                                oxa::At(), pucSDRRec, ptDEVTab);                                             \
    }                                                                                                        \
    [[gnu::noinline]] uint8_t BuildOneOf(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,         \
                                         const uint8_t *pucRow) {                                            \
        return oxa::BuildSensor(profile.tHead.tName, oxa::kSensorKinds.at[pucRow[oxa::kRowKind]], {pucRow},  \
                                oxa::At(ucIndex), pucSDRRec, ptDEVTab);                                      \
    }
#define OXA_STATIC_GENERATOR(function)                                                                       \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                                            \
        return BuildOne(pucSDRRec, ptDEVTab, kProfile.tRows.auc + oxa::RowOffset(kProfile, #function));      \
    }
#define OXA_INDEXED_GENERATOR(function)                                                                      \
    uint8_t function(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                           \
        return BuildOneOf(ucIndex, pucSDRRec, ptDEVTab,                                                      \
                          kProfile.tRows.auc + oxa::RowOffset(kProfile, #function));                         \
    }

#endif
