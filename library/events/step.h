// SPDX-License-Identifier: Apache-2.0
//
// Event records as data.  A builder is a list of steps that turns its values (the arguments, then what was
// looked up for them) into the 16 bytes of a record.  A step puts bits into a byte or tests a value; a test
// decides about the puts that follow it, up to the next test.  Later puts win, and a put owns its bits: it
// clears what stood there.  Steps hold no pointer, so a table costs no relocation, and whoever reads records
// back reads the same tables.  Tables are plain constexpr, not inline: an inline variable is reached through
// the offset table even where it is hidden, which would be a relocation each.
#ifndef OXA_EVENTS_STEP_H
#define OXA_EVENTS_STEP_H

#include <cstddef>
#include <cstdint>

#include "oxa/events.h"

namespace oxa::sel {

// ---- values ----------------------------------------------------------------------------------------

// Everything that a record is made of.  Arguments have the names of the exported declarations.
enum Value : uint8_t {
    // the event's direction: whichever of these a builder has goes to bit 7 of byte 12
    kAssertFlag,
    kEventDir,
    // arguments
    kBankHighBit,
    kBankNum,
    kController,
    kCpuIndex,
    kCpuNum,
    kCtrlIndex,
    kDeviceIndex,
    kDimmNum,
    kDropType,
    kEntityId,
    kErrorNum,
    kEventData3,
    kEventNum,
    kIndex,
    kKind,
    kLocation,
    kLun,
    kNetPortSilkId,
    kNonCritical,
    kOffset,
    kPort,
    kReason,
    kReasonMask,
    kSensorNumber,
    kSlotNum,
    kSubIndex,
    kSubInterfaceType,
    kTargetId,
    kUsage,
    kDeassertFlag, // of the leak record
    kPosition,
    // looked up
    kFoundNumber,
    kFoundSensorType,
    kFoundEventType,
    kFoundLun,
    kFoundInletTemp,
    kValueCount,
    kFirstFound = kFoundNumber
};

// A value in a builder's list.
struct Item {
    Value eValue;
    uint8_t ucBits;  // width of the argument
    bool bZeroOrOne; // anything else is refused

    constexpr Item(Value e = kValueCount, uint8_t ucWidth = 32, bool bChecked = false)
        : eValue(e), ucBits(ucWidth), bZeroOrOne(bChecked) {}
};
constexpr Item Byte(Value e) {
    return {e, 8};
}
constexpr Item Checked(Value e) {
    return {e, 32, true};
}

// Values from ucFrom to ucTo, compared as whole words.
struct Range {
    uint8_t ucFrom;
    uint8_t ucTo;

    constexpr Range(uint8_t uc) : ucFrom(uc), ucTo(uc) {}
    constexpr Range(uint8_t ucLow, uint8_t ucHigh) : ucFrom(ucLow), ucTo(ucHigh) {}
    constexpr bool Has(uint32_t dwValue) const {
        return dwValue >= ucFrom && dwValue <= ucTo;
    }
};
template <size_t N> constexpr bool IsOneOf(uint32_t dwValue, const Range (&atRange)[N]) {
    for (const Range &tRange : atRange)
        if (tRange.Has(dwValue))
            return true;
    return false;
}

// ---- steps -----------------------------------------------------------------------------------------

// A number below SEL_RECORD_SIZE: the byte that gets the bits.
enum Test : uint8_t {
    kWhen = SEL_RECORD_SIZE, // ends the test before it
    kOrWhen,                 // one more range of it
    kAnd,                    // narrows the last kWhen
    kOrAnd,
    kUnless // narrows it the other way round
};

inline constexpr uint8_t kLiteral = 0xFF;

struct Step {
    uint8_t ucOp;
    uint8_t ucSource; // position in the builder's list of values; put: or kLiteral
    uint8_t ucLow;    // put: the bits that are set.  test: lowest value
    uint8_t ucHigh; // put: the literal, or the shift (bits 0-2 to the left; bits 4-5: which byte of the word)
                    // test: highest value
};

template <size_t N> struct Steps { Step at[N]; };

constexpr Steps<1> Set(uint8_t ucByte, uint8_t ucLiteral, uint8_t ucBits = 0xFF) {
    return {{{ucByte, kLiteral, ucBits, ucLiteral}}};
}
constexpr Steps<1> Take(uint8_t ucByte, Value eValue, uint8_t ucBits = 0xFF, uint8_t ucShift = 0) {
    return {{{ucByte, eValue, ucBits, ucShift}}};
}
constexpr Steps<2> TakeNibbles(uint8_t ucByte, Value eHigh, Value eLow) {
    return {{{ucByte, eHigh, 0xF0, 4}, {ucByte, eLow, 0x0F, 0}}};
}
constexpr Steps<4> TakeWord(uint8_t ucByte, Value eValue) { // most significant byte first
    return {{{ucByte, eValue, 0xFF, 0x30},
             {static_cast<uint8_t>(ucByte + 1), eValue, 0xFF, 0x20},
             {static_cast<uint8_t>(ucByte + 2), eValue, 0xFF, 0x10},
             {static_cast<uint8_t>(ucByte + 3), eValue, 0xFF, 0x00}}};
}
// The event type, and the builder's direction in bit 7 beside it.
constexpr Steps<2> Dir(uint8_t ucEventType) {
    return {{{SEL_EVENT_DIR_TYPE, kLiteral, 0x7F, ucEventType}, {SEL_EVENT_DIR_TYPE, kEventDir, 0x80, 7}}};
}

template <size_t N>
constexpr Steps<N> MakeTest(Test eFirst, Test eNext, Value eValue, const Range (&atRange)[N]) {
    Steps<N> t = {};
    for (size_t n = 0; n < N; ++n)
        t.at[n] = {n == 0 ? eFirst : eNext, eValue, atRange[n].ucFrom, atRange[n].ucTo};
    return t;
}
template <size_t N> constexpr Steps<N> When(Value eValue, const Range (&atRange)[N]) {
    return MakeTest(kWhen, kOrWhen, eValue, atRange);
}
template <size_t N> constexpr Steps<N> And(Value eValue, const Range (&atRange)[N]) {
    return MakeTest(kAnd, kOrAnd, eValue, atRange);
}
constexpr Steps<1> Unless(Value eValue, uint8_t ucOnly) {
    return {{{kUnless, eValue, ucOnly, ucOnly}}};
}

// ---- builders --------------------------------------------------------------------------------------

// What is logged when the record could not be sent twice.
enum class FailText : uint8_t { kFail, kFailed, kNamedFailed };

struct Head {
    char acName[22];
    FailText eFailText;
    uint8_t ucSteps;
};

template <size_t nSteps, size_t nValues> struct Builder {
    Head tHead;
    Step atStep[nSteps];
};

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void value_is_not_in_the_builders_list();
void builder_name_too_long();

template <size_t N> struct Values {
    Item at[N == 0 ? 1 : N];

    constexpr uint8_t Find(uint8_t ucValue) const {
        for (size_t n = 0; n < N; ++n)
            if (at[n].eValue == ucValue || (ucValue == kEventDir && at[n].eValue == kAssertFlag))
                return static_cast<uint8_t>(n);
        value_is_not_in_the_builders_list();
        return 0;
    }
};
template <class... T> constexpr Values<sizeof...(T)> List(T... tItem) {
    return {{Item(tItem)...}};
}

template <size_t N, size_t V>
constexpr size_t Resolve(Step *ptTo, size_t nAt, const Steps<N> &tFrom, const Values<V> &tValues) {
    for (const Step &tStep : tFrom.at) {
        ptTo[nAt] = tStep;
        if (tStep.ucSource != kLiteral)
            ptTo[nAt].ucSource = tValues.Find(tStep.ucSource);
        ++nAt;
    }
    return nAt;
}

template <size_t T, size_t V, size_t... N>
constexpr Builder<(N + ...), V> MakeBuilder(const char (&acName)[T], FailText eFailText,
                                            const Values<V> &tValues, const Steps<N> &...atSteps) {
    Builder<(N + ...), V> t = {};
    if (T > sizeof(t.tHead.acName))
        builder_name_too_long();
    for (size_t n = 0; n < T; ++n)
        t.tHead.acName[n] = acName[n];
    t.tHead.eFailText = eFailText;
    t.tHead.ucSteps = static_cast<uint8_t>((N + ...));
    size_t nAt = 0;
    ((nAt = Resolve(t.atStep, nAt, atSteps, tValues)), ...);
    return t;
}

// ---- composing a record ----------------------------------------------------------------------------

inline constexpr uint8_t kEventRevision = 0x04;

constexpr void Put(const Step &tStep, const uint32_t *pdwValue, uint8_t *pucRecord) {
    uint32_t dwBits = tStep.ucHigh;
    if (tStep.ucSource != kLiteral)
        dwBits = (pdwValue[tStep.ucSource] >> 8 * (tStep.ucHigh >> 4)) << (tStep.ucHigh & 7);
    uint8_t &ucByte = pucRecord[tStep.ucOp];
    ucByte = static_cast<uint8_t>((ucByte & ~tStep.ucLow) | (dwBits & tStep.ucLow));
}

// Which puts hold: those under the last kWhen, narrowed by what follows it.
struct Truth {
    bool bWhen = true;
    bool bAnd = true;

    constexpr void Take(uint8_t ucTest, bool bIn) {
        if (ucTest == kWhen)
            bAnd = true;
        if (ucTest <= kOrWhen)
            bWhen = bIn || (ucTest == kOrWhen && bWhen);
        else if (ucTest == kUnless)
            bAnd = !bIn;
        else
            bAnd = bIn || (ucTest == kOrAnd && bAnd);
    }
};

constexpr void Compose(const Step *ptStep, size_t nSteps, const uint32_t *pdwValue,
                       uint8_t (&aucRecord)[SEL_RECORD_SIZE]) {
    for (uint8_t &uc : aucRecord)
        uc = 0;
    aucRecord[SEL_EVM_REV] = kEventRevision;
    Truth tTruth;
    for (const Step *ptEnd = ptStep + nSteps; ptStep != ptEnd; ++ptStep)
        if (ptStep->ucOp >= SEL_RECORD_SIZE)
            tTruth.Take(ptStep->ucOp, Range(ptStep->ucLow, ptStep->ucHigh).Has(pdwValue[ptStep->ucSource]));
        else if (tTruth.bWhen && tTruth.bAnd)
            Put(*ptStep, pdwValue, aucRecord);
}

} // namespace oxa::sel
#endif
