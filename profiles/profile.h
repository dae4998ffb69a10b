// SPDX-License-Identifier: Apache-2.0
//
// A customer profile is one constant: how it calls itself, the order of its static pass, and its rows.
#ifndef OXA_PROFILES_PROFILE_H
#define OXA_PROFILES_PROFILE_H

#include "profiles/shared_rows.h"
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

// Where each group's first row stands: an offset in the profile's own rows, or with the high bit in the
// shared ones.
struct GroupIndex {
    uint16_t aw[static_cast<size_t>(Group::kCount)];
};
inline constexpr uint16_t kInShared = 0x8000;

// The rows that a profile has to itself stand behind it and end with a row of length 0 in no group.
struct ProfileBase {
    ProfileHead tHead;
    GroupIndex tGroups;
};
template <size_t N> struct Profile {
    ProfileBase tBase;
    Rows<N> tRows;
};
static_assert(offsetof(Profile<1>, tRows) == sizeof(ProfileBase));

inline RowView RowAt(const ProfileBase &t, uint32_t dwPlace) {
    const uint8_t *pucOwn = reinterpret_cast<const uint8_t *>(&t) + sizeof(ProfileBase);
    return {(dwPlace & kInShared) != 0 ? kSharedRowData.auc + (dwPlace & ~uint32_t{kInShared})
                                       : pucOwn + dwPlace};
}

// One record of the row at that place: alone, or for an index that stands in the low byte before the place.
uint8_t BuildAlone(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwPlace, const ProfileBase &tProfile);
uint8_t BuildIndexed(uint32_t dwIndexAndPlace, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,
                     const ProfileBase &tProfile);

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

// All rows of a profile, checked.
template <size_t... N> constexpr auto ProfileRows(const Rows<N> &...atRows) {
    const auto t = Join(atRows..., kEndOfRows);
    CheckRows(t);
    return t;
}

template <size_t N> constexpr uint8_t GroupSize(const Rows<N> &t, size_t nRow) {
    uint8_t ucRows = 0;
    for (size_t n = nRow; t.auc[n] != 0 && t.auc[n + kRowGroup] == t.auc[nRow + kRowGroup]; n += t.auc[n])
        ++ucRows;
    return ucRows;
}

template <size_t A, size_t B>
constexpr bool SameRow(const Rows<A> &tA, size_t nA, const Rows<B> &tB, size_t nB) {
    for (size_t n = 0; n < tA.auc[nA]; ++n)
        if (tA.auc[nA + n] != tB.auc[nB + n])
            return false;
    return true;
}

// Table rows are reached one by one: each that is shared need not be stored again.
constexpr bool IsTableGroup(uint8_t ucGroup) {
    return ucGroup == static_cast<uint8_t>(Group::kTable);
}
template <size_t N> constexpr bool IsSharedTableRow(const Rows<N> &t, size_t nRow) {
    for (size_t n = 0; kSharedRows.auc[n] != 0; n += kSharedRows.auc[n])
        if (IsTableGroup(t.auc[nRow + kRowGroup]) && SameRow(t, nRow, kSharedRows, n))
            return true;
    return false;
}

// Other groups are walked: one is shared when all of it is.
template <size_t N> constexpr bool IsSharedGroup(const Rows<N> &t, size_t nFirst) {
    size_t nShared = 0;
    while (kSharedRows.auc[nShared] != 0 && kSharedRows.auc[nShared + kRowGroup] != t.auc[nFirst + kRowGroup])
        nShared += kSharedRows.auc[nShared];
    if (kSharedRows.auc[nShared] == 0 || GroupSize(kSharedRows, nShared) != GroupSize(t, nFirst))
        return false;
    for (uint8_t uc = GroupSize(t, nFirst); uc != 0; --uc) {
        if (!SameRow(t, nFirst, kSharedRows, nShared))
            return false;
        nFirst += t.auc[nFirst];
        nShared += kSharedRows.auc[nShared];
    }
    return true;
}

template <size_t N> constexpr size_t FirstOfGroup(const Rows<N> &t, size_t nRow) {
    size_t n = 0;
    while (t.auc[n + kRowGroup] != t.auc[nRow + kRowGroup])
        n += t.auc[n];
    return n;
}

template <size_t N> constexpr bool IsShared(const Rows<N> &t, size_t nRow) {
    return IsTableGroup(t.auc[nRow + kRowGroup]) ? IsSharedTableRow(t, nRow)
                                                 : IsSharedGroup(t, FirstOfGroup(t, nRow));
}

// Bytes of the rows that a profile has to itself, as they are stored.
template <size_t N> constexpr size_t OwnSize(const Rows<N> &t) {
    size_t nOwn = kStoredEndSize;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        nOwn += IsShared(t, nRow) ? 0u : StoredSize(t.auc + nRow);
    return nOwn;
}

// Where a profile's row is stored.  The rows of a list and the stored ones are walked side by side.
template <size_t N> constexpr uint16_t PlaceOfShared(const Rows<N> &t, size_t nRow) {
    size_t nStored = 0;
    for (size_t n = 0; kSharedRows.auc[n] != 0; n += kSharedRows.auc[n]) {
        if (SameRow(t, nRow, kSharedRows, n))
            return static_cast<uint16_t>(nStored | kInShared);
        nStored += kSharedRowsStored.auc[nStored];
    }
    no_row_of_that_generator();
    return 0;
}
template <size_t N, size_t O> constexpr uint16_t PlaceOf(const Rows<N> &t, const Rows<O> &tOwn, size_t nRow) {
    if (IsShared(t, nRow))
        return PlaceOfShared(t, nRow);
    size_t nStored = 0;
    for (size_t n = 0; n < nRow; n += t.auc[n])
        nStored += IsShared(t, n) ? 0u : tOwn.auc[nStored];
    return static_cast<uint16_t>(nStored);
}

// A group that a profile does not have leads to the end of its rows.
template <size_t N, size_t O> constexpr GroupIndex IndexGroups(const Rows<N> &t, const Rows<O> &tOwn) {
    GroupIndex tIndex = {};
    for (uint16_t &w : tIndex.aw)
        w = static_cast<uint16_t>(O - kStoredEndSize);
    uint8_t ucLast = 0;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        if (t.auc[nRow + kRowGroup] != ucLast) {
            ucLast = t.auc[nRow + kRowGroup];
            tIndex.aw[ucLast] = PlaceOf(t, tOwn, nRow);
        }
    return tIndex;
}

template <size_t O, size_t N> constexpr Profile<O> MakeProfile(const ProfileHead &tHead, const Rows<N> &t) {
    Profile<O> tProfile = {{tHead, {}}, {}};
    uint8_t *pucTo = tProfile.tRows.auc;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        if (!IsShared(t, nRow))
            pucTo = StoreRow(pucTo, t.auc + nRow);
    tProfile.tBase.tGroups = IndexGroups(t, tProfile.tRows);
    return tProfile;
}

// Where the row of an exported generator is listed, by the function's name "<Profile>_<generator>".
inline constexpr size_t kNowhere = ~size_t{0};
template <size_t N> constexpr size_t FindGenerator(const Rows<N> &t, const char *pcGenerator) {
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        if (SameText(t.auc + nRow + kRowTexts, pcGenerator))
            return nRow;
    return kNowhere;
}

constexpr const char *AfterProfile(const ProfileName &tProfile, const char *pcFunction) {
    for (const char *pc = tProfile.acName; *pc != '\0'; ++pc)
        if (*pcFunction++ != *pc)
            no_row_of_that_generator();
    if (*pcFunction++ != '_')
        no_row_of_that_generator();
    return pcFunction;
}

// Where the row of an exported generator is stored.
template <size_t N, size_t O>
constexpr uint16_t PlaceOfGenerator(const Rows<N> &tAll, const Profile<O> &tProfile, const char *pcFunction) {
    const size_t nListed = FindGenerator(tAll, AfterProfile(tProfile.tBase.tHead.tName, pcFunction));
    if (nListed == kNowhere)
        no_row_of_that_generator();
    return PlaceOf(tAll, tProfile.tRows, nListed);
}

} // namespace oxa

// Exported generators.  A profile's file names its constants kHead, kRows and kProfile, and says for each
// function of its contract that it builds the row of the same name: alone, or one record per index.
#define OXA_GENERATOR_ENTRY(profile)                                                                         \
    [[gnu::noinline]] uint8_t BuildOne(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwPlace) {        \
        return oxa::BuildAlone(pucSDRRec, ptDEVTab, dwPlace, profile.tBase);                                 \
    }                                                                                                        \
    [[gnu::noinline]] uint8_t BuildOneOf(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,         \
                                         uint32_t dwPlace) {                                                 \
        return oxa::BuildIndexed(ucIndex | dwPlace << 8, pucSDRRec, ptDEVTab, profile.tBase);                \
    }
// The row is looked up by the compiler.
#define OXA_PLACE_OF(function) constexpr uint16_t wPlace = oxa::PlaceOfGenerator(kRows, kProfile, #function)
#define OXA_STATIC_GENERATOR(function)                                                                       \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                                            \
        OXA_PLACE_OF(function);                                                                              \
        return BuildOne(pucSDRRec, ptDEVTab, wPlace);                                                        \
    }
#define OXA_INDEXED_GENERATOR(function)                                                                      \
    uint8_t function(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                           \
        OXA_PLACE_OF(function);                                                                              \
        return BuildOneOf(ucIndex, pucSDRRec, ptDEVTab, wPlace);                                             \
    }
#define OXA_INDEX_LAST_GENERATOR(function)                                                                   \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex) {                           \
        OXA_PLACE_OF(function);                                                                              \
        return BuildOneOf(ucIndex, pucSDRRec, ptDEVTab, wPlace);                                             \
    }

#endif
