// SPDX-License-Identifier: Apache-2.0
//
// Rows as they are written down, packed and checked by the compiler.  A mistake stops the build in the line of
// the list that makes it, at the call of a function that is named after the fault.
#ifndef OXA_STATIC_SENSORS_MAKE_ROW_H
#define OXA_STATIC_SENSORS_MAKE_ROW_H

#include "library/static_sensors/row.h"

namespace oxa {

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void sensor_name_longer_than_16_characters();
void sensor_row_too_long();
void limits_of_a_sensor_that_has_none();
void row_says_the_same_as_its_kind();
void row_lacks_the_text_of_its_refusal();
void dimm_group_without_Announced();

// A text that a row is made of; an empty one takes no room.
template <size_t N> struct RowText {
    char ac[N] = {};
    constexpr RowText() = default;
    constexpr RowText(const char (&acText)[N]) {
        for (size_t n = 0; n < N; ++n)
            ac[n] = acText[n];
    }
};

// What a row may add behind its name.
template <size_t N> struct VariantText : RowText<N> { using RowText<N>::RowText; };
template <size_t N> struct AnnouncedText : RowText<N> { using RowText<N>::RowText; };
template <size_t N> struct TwoDigitName : RowText<N> { using RowText<N>::RowText; };

// Characters that a name pattern prints at most: a decimal has up to nDigits, a hexadecimal two (one where
// the pattern asks for a width of one), a character is one, a DIMM's name has up to five.
constexpr size_t PrintedLength(const char *pcPattern, size_t nDigits) {
    size_t n = 0;
    for (const char *pc = pcPattern; *pc != '\0'; ++pc, ++n) {
        if (*pc != '%')
            continue;
        const bool bOne = pc[1] == '1';
        while (pc[1] >= '0' && pc[1] <= '9')
            ++pc;
        ++pc;
        n += (*pc == 's' ? 5 : *pc == 'X' ? (bOne ? 1 : 2) : *pc == 'c' ? 1 : nDigits) - 1;
    }
    return n;
}
constexpr void CheckName(const char *pcPattern, size_t nDigits = 3) {
    if (PrintedLength(pcPattern, nDigits) > kNameMax)
        sensor_name_longer_than_16_characters();
}

// "The board does not support adding sensor <text>.", where the text is not the name.
template <size_t N> consteval VariantText<N> Refused(const char (&acText)[N]) {
    return {acText};
}
template <size_t N> consteval VariantText<N> OnSmallBoard(const char (&acText)[N]) {
    CheckName(acText);
    return {acText};
}
template <size_t N> consteval VariantText<N> Second(const char (&acText)[N]) {
    CheckName(acText);
    return {acText};
}
// The driver writes "... for <text>: ucIndex = %d, ucCnt = %d!" before each record of the row.
template <size_t N> consteval AnnouncedText<N> Announced(const char (&acText)[N]) {
    return {acText};
}
// A name that is at most 16 characters with two digits; with more it is cut.
template <size_t N> consteval TwoDigitName<N> TwoDigits(const char (&acText)[N]) {
    return {acText};
}

// ---- limits -----------------------------------------------------------------------------------------------

constexpr Reading ReadingOf(const SdrHead &tHead) {
    const uint8_t *puc = tHead.auc;
    return {.ucSensorType = puc[SDR_SENSOR_TYPE],
            .ucUnits1 = puc[SDR_UNITS_1],
            .ucBaseUnit = puc[SDR_BASE_UNIT],
            .ucModifierUnit = puc[SDR_MODIFIER_UNIT],
            .ucM = puc[FULL_SDR_M_VALUE_LS_8_BITS],
            .ucB = puc[FULL_SDR_B_VALUE_LS_8_BITS],
            .sdwR = static_cast<int8_t>(puc[FULL_SDR_EXPONENTS]) >> 4};
}

// A limit that a head holds, as a value; one that it does not announce is not given.
constexpr Quantity LimitOf(const SdrHead &tHead, uint8_t ucBit) {
    const Reading tReading = ReadingOf(tHead);
    const uint8_t uc = tHead.auc[kThresholdMasks[ucBit].ucOffset];
    const int sdwCount = tReading.ucUnits1 == kUnitsSigned ? static_cast<int8_t>(uc) : uc;
    return {(tReading.ucM * sdwCount + tReading.ucB) * PowerOfTen(tReading.sdwR),
            static_cast<BaseUnit>(tReading.ucBaseUnit), (tHead.auc[SDR_READING_MASK] >> ucBit & 1) != 0,
            true};
}

// The kind's head with the limits that the row gives in the place of the kind's.
constexpr SdrHead Depart(SdrHead tHead, const Limits &t) {
    if (tHead.auc[SDR_RECORD_TYPE] != kRecordFull || tHead.auc[SDR_EVENT_TYPE] != kEventThreshold)
        limits_of_a_sensor_that_has_none();
    const auto Chosen = [&](const Quantity &tGiven, uint8_t ucBit) {
        return tGiven.bGiven ? tGiven : LimitOf(tHead, ucBit);
    };
    const Limits tAll = {.lnr = Chosen(t.lnr, 2),
                         .lc = Chosen(t.lc, 1),
                         .lnc = Chosen(t.lnc, 0),
                         .unc = Chosen(t.unc, 3),
                         .uc = Chosen(t.uc, 4),
                         .unr = Chosen(t.unr, 5)};
    for (uint8_t uc = 0; uc < kRowMaskBytes; ++uc)
        tHead.auc[SDR_ASSERT_MASK + uc] = 0;
    PutLimits(tHead, tAll, ReadingOf(tHead));
    return tHead;
}

// ---- packing ----------------------------------------------------------------------------------------------

// One packed row, or several.
template <size_t N> struct Rows {
    uint8_t auc[N] = {};
};

// The parts of a row in any order behind its name; what is absent is empty.
template <size_t V, size_t A> struct Departures {
    VariantText<V> tVariant = {};
    AnnouncedText<A> tAnnounced = {};
    Limits tLimits = {};
    bool bLimits = false;
};
constexpr Departures<1, 1> Collect() {
    return {};
}
template <size_t V, class... T> constexpr auto Collect(const VariantText<V> &t, const T &...tMore) {
    const auto tRest = Collect(tMore...);
    return Departures<V, sizeof(tRest.tAnnounced.ac)>{t, tRest.tAnnounced, tRest.tLimits, tRest.bLimits};
}
template <size_t A, class... T> constexpr auto Collect(const AnnouncedText<A> &t, const T &...tMore) {
    const auto tRest = Collect(tMore...);
    return Departures<sizeof(tRest.tVariant.ac), A>{tRest.tVariant, t, tRest.tLimits, tRest.bLimits};
}
template <class... T> constexpr auto Collect(const Limits &t, const T &...tMore) {
    auto tRest = Collect(tMore...);
    tRest.tLimits = t;
    tRest.bLimits = true;
    return tRest;
}

template <size_t S> struct RowWriter {
    Rows<S> t = {};
    size_t nAt = kRowTexts;

    template <size_t N> constexpr void Put(const char (&acText)[N]) {
        for (size_t n = 0; n < N; ++n)
            t.auc[nAt++] = static_cast<uint8_t>(acText[n]);
    }
    template <size_t N> constexpr void PutOptional(const char (&acText)[N], RowByte eOffset) {
        if (N == 1)
            return;
        t.auc[eOffset] = static_cast<uint8_t>(nAt);
        Put(acText);
    }
    constexpr void PutLimits(const SdrHead &tHead) {
        t.auc[kRowLimits] = static_cast<uint8_t>(nAt);
        for (uint8_t uc = 0; uc < kRowMaskBytes; ++uc)
            t.auc[nAt++] = tHead.auc[SDR_ASSERT_MASK + uc];
        for (uint8_t uc = 0; uc < kRowLimitBytes; ++uc)
            t.auc[nAt++] = tHead.auc[FULL_SDR_UNR + uc];
    }
};

constexpr bool SameHead(const SdrHead &tA, const SdrHead &tB) {
    for (uint8_t uc = 0; uc < kFullHeadSize; ++uc)
        if (tA.auc[uc] != tB.auc[uc])
            return false;
    return true;
}

template <bool kLimits, size_t F, size_t P, size_t V, size_t A>
constexpr auto Pack(Group eGroup, Kind eKind, const char (&acFunction)[F], const char (&acName)[P],
                    const Departures<V, A> &tDepartures) {
    constexpr size_t nSize = kRowTexts + F + P + (V > 1 ? V : 0) + (A > 1 ? A : 0) +
                             (kLimits ? kRowMaskBytes + kRowLimitBytes : 0);
    if (nSize > 255)
        sensor_row_too_long();
    RowWriter<nSize> tWriter;
    tWriter.t.auc[kRowLength] = static_cast<uint8_t>(nSize);
    tWriter.t.auc[kRowGroup] = static_cast<uint8_t>(eGroup);
    tWriter.t.auc[kRowKind] = eKind;
    tWriter.Put(acFunction);
    tWriter.PutOptional(acName, kRowName);
    tWriter.PutOptional(tDepartures.tVariant.ac, kRowVariant);
    tWriter.PutOptional(tDepartures.tAnnounced.ac, kRowAnnounced);
    if (kLimits) {
        const SdrHead tHead = Depart(kKinds[eKind].tHead, tDepartures.tLimits);
        if (SameHead(tHead, kKinds[eKind].tHead))
            row_says_the_same_as_its_kind();
        tWriter.PutLimits(tHead);
    }
    return tWriter.t;
}

template <class... T> inline constexpr bool kHasLimits = (__is_same(T, Limits) || ...);

constexpr size_t Numbers(const char *pcPattern) {
    size_t n = 0;
    for (; *pcPattern != '\0'; ++pcPattern)
        n += *pcPattern == '%';
    return n;
}
constexpr bool NamesWhatItRefuses(Gate e) {
    return e == Gate::kBoardHas || e == Gate::kPch || e == Gate::kPowerFault || e == Gate::kBoardPower ||
           e == Gate::kSwitchPower;
}
// What a refusal names is printed as it is; of parts of which there are several it has the index as "%d".
constexpr void CheckRefusal(Kind eKind, const char *pcName, const char *pcVariant) {
    const Gate eGate = kKinds[eKind].tDoes.eGate;
    const char *pcText = *pcVariant != '\0' ? pcVariant : pcName;
    if ((NamesWhatItRefuses(eGate) && Numbers(pcText) != 0) ||
        (eGate == Gate::kPartWanted && Numbers(pcText) != 1))
        row_lacks_the_text_of_its_refusal();
}
// The driver writes the line of a DIMM group without asking whether there is one.
constexpr void CheckAnnounced(Group eGroup, const char *pcAnnounced) {
    if (eGroup == Group::kDimmGroup && *pcAnnounced == '\0')
        dimm_group_without_Announced();
}

template <size_t F, size_t P, class... T>
consteval auto MakeRow(Group eGroup, Kind eKind, const char (&acFunction)[F], const char (&acName)[P],
                       const T &...tDepartures) {
    CheckName(acName);
    const auto tCollected = Collect(tDepartures...);
    CheckRefusal(eKind, acName, tCollected.tVariant.ac);
    CheckAnnounced(eGroup, tCollected.tAnnounced.ac);
    return Pack<kHasLimits<T...>>(eGroup, eKind, acFunction, acName, tCollected);
}
template <size_t F, size_t P, class... T>
consteval auto MakeRow(Group eGroup, Kind eKind, const char (&acFunction)[F], const TwoDigitName<P> &tName,
                       const T &...tDepartures) {
    CheckName(tName.ac, 2);
    const auto tCollected = Collect(tDepartures...);
    CheckRefusal(eKind, tName.ac, tCollected.tVariant.ac);
    CheckAnnounced(eGroup, tCollected.tAnnounced.ac);
    return Pack<kHasLimits<T...>>(eGroup, eKind, acFunction, tName.ac, tCollected);
}

} // namespace oxa
#endif
