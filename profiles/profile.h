// SPDX-License-Identifier: Apache-2.0
//
// A customer profile is one constant: how it calls itself, the order of its static pass, and its rows.
#ifndef OXA_PROFILES_PROFILE_H
#define OXA_PROFILES_PROFILE_H

#include "profiles/sensor_kinds.h"
#include "sdr/sensor_engine.h"

namespace oxa {

// The parts of a static pass, in the order that a profile gives them.  Every pass ends with the count.
enum class Step : uint8_t {
    kEnd,
    kRackBoard,  // the rack management board has its own table and nothing else
    kFacts,      // what the board is made of
    kTable,      // the static generator table
    kSwitchCard, // volts and currents, or temperatures, of the switch-board card
    kSwitchAir,  // inlets and outlets of the switch board
    kCpus,
    kCpuDomains, // only the processor with voltage domains
    kMemory,
    kPsus, // then the redundancy of the PSU groups
    kPcie,
    kFans,
    kDisks,
    kOcp,
    kPowerModules, // then their number is reported
    kUbbRetimers,
    kSwitchChips,
    kGpuRails,
    kLanSwitch,
    kLiquidCooling // only where a CDU is managed
};
inline constexpr size_t kStepMax = 24;

// Where a profile's pass departs from the others'.
enum ProfileFlag : uint8_t {
    kPrintsDiskSilk = 0x01,     // disks are numbered by their printed number where it differs from the slot
    kOnlyPresentOcp = 0x02,     // OCP positions without a card are left out
    kShortFinalLine = 0x04,     // "Add<Profile>Sensor: ucCnt = %d!"
    kCduNamesGenerators = 0x08, // announcements of CDU records begin with the generator's name
};

struct ProfileHead {
    ProfileName tName;
    Step aeSteps[kStepMax]; // ends with kEnd
    uint8_t ucFlags = 0;
    uint8_t ucCduFans = 0;     // how many fans and
    uint8_t ucCduSupplies = 0; // power supplies its liquid-cooling unit has
};

// Rows end with a row of length 0 in no group.
template <size_t N> struct Profile {
    ProfileHead tHead;
    Rows<N> tRows;
};

// ---- writing rows down ---------------------------------------------------------------------------------------

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
// A name whose number never has more than two digits.
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

// ---- checks and look-ups by the compiler ------------------------------------------------------------------

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
// The row is looked up by the compiler: nRow is a constant.
#define OXA_STATIC_GENERATOR(function)                                                                       \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                                            \
        constexpr size_t nRow = oxa::RowOffset(kProfile, #function);                                         \
        return BuildOne(pucSDRRec, ptDEVTab, kProfile.tRows.auc + nRow);                                     \
    }
#define OXA_INDEXED_GENERATOR(function)                                                                      \
    uint8_t function(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                           \
        constexpr size_t nRow = oxa::RowOffset(kProfile, #function);                                         \
        return BuildOneOf(ucIndex, pucSDRRec, ptDEVTab, kProfile.tRows.auc + nRow);                          \
    }
#define OXA_INDEX_LAST_GENERATOR(function)                                                                   \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex) {                           \
        constexpr size_t nRow = oxa::RowOffset(kProfile, #function);                                         \
        return BuildOneOf(ucIndex, pucSDRRec, ptDEVTab, kProfile.tRows.auc + nRow);                          \
    }

#endif
