// SPDX-License-Identifier: Apache-2.0
//
// Readings and limits in real units, worked out by the compiler.  A reading says how a record's counts convert:
// value = (M x count + B) x 10^R.  A limit is written as its value; the compiler turns it into the count and
// refuses one that no count can hold exactly, unless it is written as Rounded(...).
#ifndef OXA_RECORD_UNITS_H
#define OXA_RECORD_UNITS_H

#include <cstdint>

#include "library/record/sensor_types.h"

namespace oxa {

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void limit_in_another_unit_than_the_reading();
void limit_that_no_count_holds_exactly_say_Rounded();
void limit_outside_the_range_of_a_count();

inline constexpr uint8_t kUnitsSigned = 0x80; // two's complement
inline constexpr uint8_t kUnitsPercent = 0x01;
inline constexpr uint8_t kUnitsRate = 0x02;     // base unit per modifier unit
inline constexpr uint8_t kUnitsNoAnalog = 0xC0; // no analog reading

enum BaseUnit : uint8_t {
    kUnitNone = 0,
    kUnitCelsius = 1,
    kUnitVolt = 4,
    kUnitAmpere = 5,
    kUnitWatt = 6,
    kUnitVoltAmpere = 9,
    kUnitKilopascal = 14,
    kUnitRpm = 18,
    kUnitMinute = 23, // a modifier unit
    kUnitLitre = 37
};

struct Reading {
    uint8_t ucSensorType = 0;
    uint8_t ucUnits1 = 0x00;
    uint8_t ucBaseUnit = kUnitNone;
    uint8_t ucModifierUnit = kUnitNone;
    uint8_t ucM = 1;
    uint8_t ucB = 0;
    int sdwR = 0;
};

// What M and R make of one count: ReadsVolts(100, -3) has 0.1 V a count.
inline constexpr Reading kReadsCelsius = {
    .ucSensorType = kTypeTemperature, .ucUnits1 = kUnitsSigned, .ucBaseUnit = kUnitCelsius};
constexpr Reading ReadsVolts(uint8_t ucM, int sdwR) {
    return {.ucSensorType = kTypeVoltage, .ucBaseUnit = kUnitVolt, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading ReadsAmperes(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = kTypeCurrent, .ucBaseUnit = kUnitAmpere, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading ReadsRpm(uint8_t ucM) {
    return {.ucSensorType = kTypeFan, .ucBaseUnit = kUnitRpm, .ucM = ucM};
}
constexpr Reading ReadsWatts(uint8_t ucM, uint8_t ucSensorType = kTypePowerSupply) {
    return {.ucSensorType = ucSensorType, .ucBaseUnit = kUnitWatt, .ucM = ucM};
}
constexpr Reading ReadsPercent(uint8_t ucSensorType) {
    return {.ucSensorType = ucSensorType, .ucUnits1 = kUnitsPercent};
}

// Watts per count as the platform tells them; what no byte holds becomes the largest.
constexpr uint8_t AccuracyByte(int32_t sdwAccuracy) {
    return sdwAccuracy < 1 ? 255 : static_cast<uint8_t>(sdwAccuracy);
}

// ---- values -----------------------------------------------------------------------------------------------

struct Quantity {
    double value = 0;
    BaseUnit eUnit = kUnitNone;
    bool bGiven = false;
    bool bRounded = false; // the nearest count will do
};
consteval Quantity Celsius(double value) {
    return {value, kUnitCelsius, true, false};
}
consteval Quantity Volts(double value) {
    return {value, kUnitVolt, true, false};
}
consteval Quantity Amperes(double value) {
    return {value, kUnitAmpere, true, false};
}
consteval Quantity Watts(double value) {
    return {value, kUnitWatt, true, false};
}
consteval Quantity Rpm(double value) {
    return {value, kUnitRpm, true, false};
}
consteval Quantity Rounded(Quantity t) {
    t.bRounded = true;
    return t;
}

// Lowest first: lower non-recoverable, critical, non-critical, upper non-critical, critical, non-recoverable.
// What is left out is no limit, or in a departure the limit that was there.
struct Limits {
    Quantity lnr = {}, lc = {}, lnc = {}, unc = {}, uc = {}, unr = {};
};

constexpr double PowerOfTen(int sdw) {
    double d = 1;
    for (; sdw > 0; --sdw)
        d *= 10;
    for (; sdw < 0; ++sdw)
        d /= 10;
    return d;
}

// The count that stands for a value.
constexpr uint8_t CountOf(const Quantity &t, const Reading &tReading) {
    if (t.eUnit != tReading.ucBaseUnit)
        limit_in_another_unit_than_the_reading();
    const bool bSigned = tReading.ucUnits1 == kUnitsSigned;
    const double exact = (t.value / PowerOfTen(tReading.sdwR) - tReading.ucB) / tReading.ucM;
    const int sdwCount = static_cast<int>(exact < 0 ? exact - 0.5 : exact + 0.5);
    if (sdwCount < (bSigned ? -128 : 0) || sdwCount > (bSigned ? 127 : 255))
        limit_outside_the_range_of_a_count();
    const double off = exact - sdwCount;
    if (!t.bRounded && (off > 1e-6 || off < -1e-6))
        limit_that_no_count_holds_exactly_say_Rounded();
    return static_cast<uint8_t>(sdwCount);
}

} // namespace oxa
#endif
