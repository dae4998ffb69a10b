// SPDX-License-Identifier: Apache-2.0
//
// A profile's constant from its list of sensors, checked by the compiler.
#ifndef OXA_STATIC_SENSORS_MAKE_PROFILE_H
#define OXA_STATIC_SENSORS_MAKE_PROFILE_H

#include "library/static_sensors/make_row.h"
#include "library/static_sensors/profile.h"

namespace oxa {

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void step_without_the_rows_that_it_walks();
void no_row_of_that_generator();

inline constexpr Rows<kRowTexts> kEndOfRows = {};

template <size_t N, size_t M> constexpr size_t CopyRows(Rows<N> &tTo, size_t nAt, const Rows<M> &tFrom) {
    for (size_t n = 0; n < M; ++n)
        tTo.auc[nAt + n] = tFrom.auc[n];
    return nAt + M;
}
template <size_t... N> constexpr Rows<(N + ...)> Join(const Rows<N> &...atRows) {
    Rows<(N + ...)> t = {};
    size_t nAt = 0;
    ((nAt = CopyRows(t, nAt, atRows)), ...);
    return t;
}

constexpr bool SameText(const uint8_t *puc, const char *pc) {
    for (; *puc == static_cast<uint8_t>(*pc); ++puc, ++pc)
        if (*pc == '\0')
            return true;
    return false;
}

// ---- checks -----------------------------------------------------------------------------------------------

constexpr bool Walks(const PassOrder &tPass, Step eWanted) {
    for (const Step eStep : tPass.aeSteps) {
        if (eStep == Step::kEnd) // as what a group without a step gives
            return false;
        if (eStep == eWanted)
            return true;
    }
    return false;
}

// The step that walks a group's rows.
constexpr Step StepOf(Group eGroup) {
    switch (eGroup) {
    case Group::kTable:
        return Step::kTable;
    case Group::kRackTable:
        return Step::kRackBoard;
    case Group::kCduTable:
    case Group::kCduFan:
    case Group::kCduSupply:
        return Step::kLiquidCooling;
    case Group::kSwitchPower:
    case Group::kSwitchTemp:
        return Step::kSwitchCard;
    case Group::kSwitchAir:
        return Step::kSwitchAir;
    case Group::kCpu:
    case Group::kCpuMore:
        return Step::kCpus;
    case Group::kCpuDomain:
        return Step::kCpuDomains;
    case Group::kPsu:
    case Group::kPsuRedundancy:
        return Step::kPsus;
    case Group::kDimm:
    case Group::kDimmGroup:
        return Step::kMemory;
    case Group::kPcie:
        return Step::kPcie;
    case Group::kFan:
        return Step::kFans;
    case Group::kDisk:
    case Group::kNvme:
    case Group::kDiskGroup:
        return Step::kDisks;
    case Group::kOcp:
    case Group::kOcpError:
        return Step::kOcp;
    case Group::kPowerModule:
        return Step::kPowerModules;
    case Group::kUbbRetimer:
        return Step::kUbbRetimers;
    case Group::kSwitchChip:
        return Step::kSwitchChips;
    case Group::kGpuRail:
        return Step::kGpuRails;
    case Group::kLanSwitch:
        return Step::kLanSwitch;
    default:
        return Step::kEnd;
    }
}

// How often a text stands in the rows: at kRowTexts their functions, else what the offset byte points at.
template <size_t N> constexpr size_t Count(const Rows<N> &t, RowByte eWhere, const char *pcText) {
    size_t nFound = 0;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        nFound += SameText(t.auc + nRow + (eWhere == kRowTexts ? uint8_t{kRowTexts} : t.auc[nRow + eWhere]),
                           pcText);
    return nFound;
}
template <size_t P> constexpr const char *PatternOf(const char (&acName)[P], const auto &...) {
    return acName;
}
template <size_t P> constexpr const char *PatternOf(const TwoDigitName<P> &tName, const auto &...) {
    return tName.ac;
}

// What is asked of every row of a profile's list.
constexpr bool IsWalked(const PassOrder &tPass, Group eGroup) {
    return Walks(tPass, StepOf(eGroup));
}
// (The voltage domains of the two CPUs share their patterns: the printed number tells them apart.)
template <size_t N> constexpr bool NamedOnce(const Rows<N> &t, Group eGroup, const char *pcPattern) {
    return eGroup == Group::kCpuDomain || Count(t, kRowName, pcPattern) == 1;
}
template <size_t N> constexpr bool GeneratedOnce(const Rows<N> &t, const char *pcFunction) {
    return *pcFunction == '\0' || Count(t, kRowTexts, pcFunction) == 1;
}
template <size_t N> constexpr bool StandsTogether(const Rows<N> &t, Group eGroup) {
    size_t nRuns = 0;
    bool bIn = false;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow]) {
        const bool bNow = t.auc[nRow + kRowGroup] == static_cast<uint8_t>(eGroup);
        nRuns += bNow && !bIn;
        bIn = bNow;
    }
    return nRuns == 1;
}

// These steps walk rows that have to be there.
template <size_t N> constexpr bool HasRows(const Rows<N> &t, Group eGroup) {
    size_t nRow = 0;
    while (t.auc[nRow] != 0 && t.auc[nRow + kRowGroup] != static_cast<uint8_t>(eGroup))
        nRow += t.auc[nRow];
    return t.auc[nRow] != 0;
}
template <size_t N> constexpr void CheckSteps(const PassOrder &tPass, const Rows<N> &t) {
    constexpr Group aeNeeded[] = {Group::kDimmGroup, Group::kFan, Group::kCpuDomain};
    for (const Group eGroup : aeNeeded)
        if (Walks(tPass, StepOf(eGroup)) && !HasRows(t, eGroup))
            step_without_the_rows_that_it_walks();
    if ((tPass.ucCduFans != 0 && !HasRows(t, Group::kCduFan)) ||
        (tPass.ucCduSupplies != 0 && !HasRows(t, Group::kCduSupply)))
        step_without_the_rows_that_it_walks();
}

// ---- the constant -----------------------------------------------------------------------------------------

template <size_t N> struct ProfileWithRows {
    StaticProfile tProfile;
    Rows<N> tRows;
};
static_assert(offsetof(ProfileWithRows<1>, tRows) == sizeof(StaticProfile));

template <size_t N>
constexpr ProfileWithRows<N> MakeProfile(const ProfileNames &tNames, const PassOrder &tPass,
                                         const Rows<N> &tRows) {
    ProfileWithRows<N> t = {{tNames, tPass, {}}, tRows};
    CheckSteps(tPass, tRows);
    for (uint16_t &w : t.tProfile.awFirstRow)
        w = N - kRowTexts; // the end row
    uint8_t ucLast = 0;
    for (size_t nRow = 0; tRows.auc[nRow] != 0; nRow += tRows.auc[nRow]) {
        const uint8_t ucGroup = tRows.auc[nRow + kRowGroup];
        if (ucGroup != ucLast)
            t.tProfile.awFirstRow[ucGroup] = static_cast<uint16_t>(nRow);
        ucLast = ucGroup;
        if (tRows.auc[nRow + tRows.auc[nRow] + kRowGroup] != ucGroup)
            t.tRows.auc[nRow + kRowGroup] = static_cast<uint8_t>(ucGroup | kLastOfGroup);
    }
    return t;
}

// Where the row of an exported generator stands.
template <size_t N> consteval uint16_t FindRow(const Rows<N> &t, const char *pcFunction) {
    size_t nRow = 0;
    while (t.auc[nRow] != 0 && !SameText(t.auc + nRow + kRowTexts, pcFunction))
        nRow += t.auc[nRow];
    if (t.auc[nRow] == 0)
        no_row_of_that_generator();
    return static_cast<uint16_t>(nRow);
}

} // namespace oxa
#endif
