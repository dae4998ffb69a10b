// SPDX-License-Identifier: Apache-2.0
//
// How the tables of names of run-time sensors are written down: a line for each sensor class, device type and
// sub type, in the order in which they are searched.  A mistake ends the build at the call of a function that is
// named after the fault.
#ifndef OXA_SPECIFIC_SENSORS_NAME_TABLES_H
#define OXA_SPECIFIC_SENSORS_NAME_TABLES_H

#include <cstddef>

#include "library/specific_sensors/device_types.h"
#include "oxa/specific_sensors.h"

namespace oxa::snr {

inline constexpr uint16_t kKeepBitmap = 65535; // the description's threshold bitmap stands

// Never defined: naming one of them in a constant expression is the error message.
void name_pattern_is_empty_or_unprintable();
void name_table_holds_a_key_twice();
void name_pattern_prints_more_than_16_characters();
void profile_drops_a_name_that_its_base_does_not_have();

// 1 to 16 printable characters and nothing but NUL after them.
constexpr bool GoodName(const char (&acName)[SENSOR_NAME_SIZE]) {
    size_t nLen = 0;
    for (; nLen < SENSOR_NAME_SIZE && acName[nLen] != '\0'; ++nLen)
        if (acName[nLen] < ' ' || acName[nLen] > '~')
            return false;
    for (size_t n = nLen; n < SENSOR_NAME_SIZE; ++n)
        if (acName[n] != '\0')
            return false;
    return nLen > 0 && nLen < SENSOR_NAME_SIZE;
}

// One line of a table.  "*" stands for the slot number, "#" for the port number.
template <size_t N>
consteval SnrInfoRec Name(uint32_t dwClass, uint8_t ucDeviceType, uint8_t ucSubType,
                          const char (&acPattern)[N], uint16_t wBitmap = kKeepBitmap) {
    SnrInfoRec t = {dwClass, ucDeviceType, ucSubType, wBitmap, {}};
    if (N > SENSOR_NAME_SIZE)
        name_pattern_is_empty_or_unprintable();
    for (size_t n = 0; n < N; ++n)
        t.acName[n] = acPattern[n];
    if (!GoodName(t.acName))
        name_pattern_is_empty_or_unprintable();
    return t;
}

constexpr bool SameKey(const SnrInfoRec &tA, const SnrInfoRec &tB) {
    return tA.dwSensorDevType == tB.dwSensorDevType && tA.ucDeviceType == tB.ucDeviceType &&
           tA.SubDeviceType == tB.SubDeviceType;
}

// Length of a pattern once every "*" and "#" holds a number of so many digits.
constexpr size_t PrintedLength(const char *pcPattern, size_t nSlotDigits, size_t nPortDigits) {
    size_t nLen = 0;
    for (; *pcPattern != '\0'; ++pcPattern)
        nLen += *pcPattern == '*' ? nSlotDigits : *pcPattern == '#' ? nPortDigits : 1;
    return nLen;
}

// Every key once, and every name fits with the numbers that a profile always prints: slots of two digits
// where they are padded, else of one (longer ones are refused when they turn up), ports of one.
template <size_t N> consteval bool CheckNames(const SnrInfoRec (&at)[N], bool bTwoDigitSlots) {
    for (size_t n = 0; n < N; ++n) {
        for (size_t nOther = n + 1; nOther < N; ++nOther)
            if (SameKey(at[n], at[nOther]))
                name_table_holds_a_key_twice();
        if (PrintedLength(at[n].acName, bTwoDigitSlots ? 2 : 1, 1) >= SENSOR_NAME_SIZE)
            name_pattern_prints_more_than_16_characters();
    }
    return true;
}

// A table told as its departures from another: without the keys of atDropped, and atAdded behind it.
template <size_t S> struct NameTable { SnrInfoRec at[S]; };
template <size_t N, size_t D, size_t A>
consteval NameTable<N - D + A> Depart(const SnrInfoRec (&atBase)[N], const SnrInfoRec (&atDropped)[D],
                                      const SnrInfoRec (&atAdded)[A]) {
    NameTable<N - D + A> t = {};
    size_t nTo = 0;
    size_t nDropped = 0;
    for (const SnrInfoRec &tRow : atBase) {
        bool bDrop = false;
        for (const SnrInfoRec &tDrop : atDropped)
            bDrop |= SameKey(tRow, tDrop);
        nDropped += bDrop;
        if (!bDrop)
            t.at[nTo++] = tRow;
    }
    if (nDropped != D)
        profile_drops_a_name_that_its_base_does_not_have();
    for (const SnrInfoRec &tRow : atAdded)
        t.at[nTo++] = tRow;
    return t;
}

} // namespace oxa::snr

// Exports a profile's own table and its count, which are hidden, under the names that other programs know: a
// pointer at an exported name could be preempted and would cost a symbol lookup when the library is loaded.
#define OXA_EXPORT_NAMES(exported, exported_count, own, own_count)                                           \
    extern const SnrInfoRec exported[sizeof(own) / sizeof(SnrInfoRec)]                                       \
        __attribute__((alias(#own), visibility("default")));                                                 \
    extern const uint8_t exported_count __attribute__((alias(#own_count), visibility("default")));

#endif
