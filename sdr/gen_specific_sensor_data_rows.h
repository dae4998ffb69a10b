// SPDX-License-Identifier: Apache-2.0
//
// Sensor information tables as data: the words that their rows are written in, and a table type that lets a
// profile be told as its departures from another table.  Everything here happens at compile time; a mistake
// in a table ends the build at the call of a function that is named after the fault.
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_ROWS_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_ROWS_H

#include "sdr/gen_specific_sensor_data_kinds.h"

namespace oxa::snr {

struct SnrKey {
    uint32_t dwSensorDevType;
    uint8_t ucDeviceType;
    uint8_t SubDeviceType;
};

// One row as it is written: SnrInfoRec with the bitmap last, because hardly any row overrides it.
struct SnrRow {
    uint32_t dwSensorDevType;
    uint8_t ucDeviceType;
    uint8_t SubDeviceType;
    char acName[SENSOR_NAME_SIZE]; // "*" slot number, "#" port number
    uint16_t wBitmap = kKeepBitmap;
};

// Never defined: naming one of them in a constant expression is the error message.
void ProfileReplacesARowThatItsBaseDoesNotHave();
void ProfileReplacesARowByTheSameRow();
void ProfileDropsARowThatItsBaseDoesNotHave();
void ProfileAddsARowThatItAlreadyHas();
void TableHoldsTheSameKeyTwice();
void NamePatternIsEmptyOrUnprintable();

constexpr bool SameKey(const auto &a, const auto &b) {
    return a.dwSensorDevType == b.dwSensorDevType && a.ucDeviceType == b.ucDeviceType &&
           a.SubDeviceType == b.SubDeviceType;
}

constexpr bool SameName(const char *pcA, const char *pcB) {
    for (uint32_t i = 0; i < SENSOR_NAME_SIZE; i++) {
        if (pcA[i] != pcB[i])
            return false;
    }
    return true;
}

// 1 to 16 printable characters and nothing but NUL after them.
constexpr bool GoodName(const char *pcName) {
    uint32_t dwLen = 0;
    while (dwLen < SENSOR_NAME_SIZE && pcName[dwLen] != '\0') {
        if (pcName[dwLen] < ' ' || pcName[dwLen] > '~')
            return false;
        dwLen++;
    }
    for (uint32_t i = dwLen; i < SENSOR_NAME_SIZE; i++) {
        if (pcName[i] != '\0')
            return false;
    }
    return dwLen > 0 && dwLen < SENSOR_NAME_SIZE;
}

constexpr SnrInfoRec ToRecord(const SnrRow &tRow) {
    SnrInfoRec tRec{tRow.dwSensorDevType, tRow.ucDeviceType, tRow.SubDeviceType, tRow.wBitmap, {}};
    if (!GoodName(tRow.acName))
        NamePatternIsEmptyOrUnprintable();
    for (uint32_t i = 0; i < SENSOR_NAME_SIZE; i++)
        tRec.acName[i] = tRow.acName[i];
    return tRec;
}

template <size_t N> struct SnrTable {
    SnrInfoRec at[N];

    constexpr size_t Find(const auto &tKey) const {
        size_t i = 0;
        while (i < N && !SameKey(at[i], tKey))
            i++;
        return i;
    }

    // The same keys in the same places, other patterns or bitmaps.
    template <size_t C> consteval SnrTable<N> Replaced(const SnrRow (&atRow)[C]) const {
        SnrTable<N> tOut = *this;
        for (const SnrRow &tRow : atRow) {
            const size_t i = Find(tRow);
            if (i == N)
                ProfileReplacesARowThatItsBaseDoesNotHave();
            if (SameName(at[i].acName, tRow.acName) && at[i].wBitmap == tRow.wBitmap)
                ProfileReplacesARowByTheSameRow();
            tOut.at[i] = ToRecord(tRow);
        }
        return tOut;
    }

    // The rest in its order.
    template <size_t C> consteval SnrTable<N - C> Without(const SnrKey (&atKey)[C]) const {
        bool abDropped[N] = {};
        for (const SnrKey &tKey : atKey) {
            const size_t i = Find(tKey);
            if (i == N || abDropped[i])
                ProfileDropsARowThatItsBaseDoesNotHave();
            abDropped[i] = true;
        }
        SnrTable<N - C> tOut{};
        size_t nTo = 0;
        for (size_t i = 0; i < N; i++) {
            if (!abDropped[i])
                tOut.at[nTo++] = at[i];
        }
        return tOut;
    }

    // New rows at the end.
    template <size_t C> consteval SnrTable<N + C> With(const SnrRow (&atRow)[C]) const {
        SnrTable<N + C> tOut{};
        for (size_t i = 0; i < N; i++)
            tOut.at[i] = at[i];
        for (size_t i = 0; i < C; i++) {
            if (Find(atRow[i]) != N)
                ProfileAddsARowThatItAlreadyHas();
            tOut.at[N + i] = ToRecord(atRow[i]);
        }
        return tOut;
    }
};

template <size_t N> consteval SnrTable<N> MakeSnrTable(const SnrRow (&atRow)[N]) {
    SnrTable<N> tOut{};
    for (size_t i = 0; i < N; i++)
        tOut.at[i] = ToRecord(atRow[i]);
    return tOut;
}

// Length of a pattern once every "*" and "#" holds a number of so many digits.
constexpr uint32_t PrintedLength(const char *pcPattern, uint32_t dwSlotDigits, uint32_t dwPortDigits) {
    uint32_t dwLen = 0;
    for (uint32_t i = 0; pcPattern[i] != '\0'; i++)
        dwLen += pcPattern[i] == '*' ? dwSlotDigits : pcPattern[i] == '#' ? dwPortDigits : 1;
    return dwLen;
}

// Every key once, and every name fits with the numbers that a profile always prints: slots of two digits
// where they are padded, else of one (longer ones are refused when they turn up), ports of one.
template <size_t N> consteval bool Checked(const SnrTable<N> &tTable, uint32_t dwSlotDigits) {
    for (size_t i = 0; i < N; i++) {
        for (size_t k = i + 1; k < N; k++) {
            if (SameKey(tTable.at[i], tTable.at[k]))
                TableHoldsTheSameKeyTwice();
        }
        if (PrintedLength(tTable.at[i].acName, dwSlotDigits, 1) >= SENSOR_NAME_SIZE)
            return false;
    }
    return true;
}

} // namespace oxa::snr
#endif
