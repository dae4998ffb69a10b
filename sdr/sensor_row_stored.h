// SPDX-License-Identifier: Apache-2.0
//
// Rows as the library stores them.  What is only read for a log line is coded: in a generator's name a byte
// from 80h on is a word of the list below or one of the codes behind it.
#ifndef OXA_SDR_SENSOR_ROW_STORED_H
#define OXA_SDR_SENSOR_ROW_STORED_H

#include "sdr/sensor_row.h"

namespace oxa {

enum StoredByte : uint8_t { kStoredLength, kStoredGroup, kStoredKind, kStoredName, kStoredTexts };

// The group's byte.
enum StoredGroup : uint8_t { kGroupBits = 0x1F, kHasVariant = 0x20, kHasAnnouncement = 0x40 };
static_assert(static_cast<uint8_t>(Group::kCount) <= kGroupBits + 1);

// The text behind a text.
constexpr const char *Behind(const char *pcText) {
    while (*pcText++ != '\0') {
    }
    return pcText;
}
constexpr size_t TextSize(const char *pcText) {
    return static_cast<size_t>(Behind(pcText) - pcText);
}

// ---- words of generators' names ---------------------------------------------------------------------------

inline constexpr uint8_t kFirstWord = 0x80;
inline constexpr uint8_t kAsNamed = 0xFE; // "Gen", the row's name without '_' and numbers, "SDR"
inline constexpr uint8_t kSdrAndEnd = 0xFF;

// Chosen so that the names and this list together are small: a word is worth its room when it saves more than
// its own letters.
constexpr char kNameWords[] = "Gen\0"
                              "SwitchBoard\0"
                              "GenCPU\0"
                              "Temp\0"
                              "GenCDU\0"
                              "Status\0"
                              "GenPSU\0"
                              "Power\0"
                              "Current\0"
                              "Volt\0"
                              "COREVoltage\0"
                              "GenMiddlePDBTEMP\0"
                              "putVolts\0"
                              "GenPSUPOut\0"
                              "GenP\0"
                              "GenPSUPIn\0"
                              "GenPSURedundant\0";

constexpr size_t WordCount() {
    size_t n = 0;
    for (const char *pc = kNameWords; *pc != '\0'; pc = Behind(pc))
        ++n;
    return n;
}
static_assert(kFirstWord + WordCount() <= kAsNamed);

// Compile-time fault.
void generator_name_holds_no_plain_letters();

struct CodedName {
    uint8_t auc[64] = {};
    uint8_t ucSize = 0;
};

// Characters that the word at pcWord and the text have in common: all of the word or none.
constexpr size_t WordLengthAt(const uint8_t *pucText, const char *pcWord) {
    size_t n = 0;
    for (; pcWord[n] != '\0'; ++n)
        if (pucText[n] != static_cast<uint8_t>(pcWord[n]))
            return 0;
    return n;
}

// The longest word that the text begins with.
struct FoundWord {
    uint8_t ucCode = 0;
    size_t nLength = 0;
};
constexpr FoundWord FindWord(const uint8_t *pucText) {
    FoundWord tFound;
    uint8_t ucCode = kFirstWord;
    for (const char *pc = kNameWords; *pc != '\0'; ++pc, ++ucCode) {
        const size_t nLength = *pc == static_cast<char>(*pucText) ? WordLengthAt(pucText, pc) : 0;
        if (nLength > tFound.nLength)
            tFound = {ucCode, nLength};
        while (*pc != '\0')
            ++pc;
    }
    return tFound;
}

constexpr bool IsSdrAndEnd(const uint8_t *puc) {
    return puc[0] == 'S' && puc[1] == 'D' && puc[2] == 'R' && puc[3] == '\0';
}

// Where a sensor's name goes on with a letter that is also in its generator's name: past blanks and numbers.
template <typename Char> constexpr const Char *NextSaid(const Char *pc) {
    while (*pc == '_' || *pc == '%')
        if (*pc++ == '%')
            while (*pc++ <= '9') { // the width, and the letter behind it
            }
    return pc;
}
constexpr bool IsAsNamed(const uint8_t *pucGenerator, const uint8_t *pucName) {
    if (pucGenerator[0] != 'G' || pucGenerator[1] != 'e' || pucGenerator[2] != 'n')
        return false;
    pucGenerator += 3;
    for (pucName = NextSaid(pucName); *pucName != '\0'; pucName = NextSaid(pucName + 1))
        if (*pucGenerator++ != *pucName)
            return false;
    return IsSdrAndEnd(pucGenerator);
}

constexpr CodedName Coded(const uint8_t *pucListed) {
    const uint8_t *pucName = pucListed + kRowTexts;
    if (IsAsNamed(pucName, pucListed + pucListed[kRowName]))
        return {.auc = {kAsNamed}, .ucSize = 1};
    CodedName t;
    while (*pucName != '\0' && !IsSdrAndEnd(pucName)) {
        if (*pucName >= kFirstWord)
            generator_name_holds_no_plain_letters();
        const FoundWord tWord = FindWord(pucName);
        t.auc[t.ucSize++] = tWord.nLength == 0 ? *pucName : tWord.ucCode;
        pucName += tWord.nLength == 0 ? 1 : tWord.nLength;
    }
    t.auc[t.ucSize++] = *pucName == '\0' ? 0 : kSdrAndEnd;
    return t;
}

// ---- storing ----------------------------------------------------------------------------------------------

// Bytes of a listed row that are stored as they are: its texts without the generator.
constexpr size_t PlainSize(const uint8_t *pucListed) {
    return pucListed[kRowLength] - pucListed[kRowName];
}
constexpr size_t StoredSize(const uint8_t *pucListed) {
    return kStoredTexts + Coded(pucListed).ucSize + PlainSize(pucListed);
}

// Stores a listed row; where the next one goes.
constexpr uint8_t *StoreRow(uint8_t *pucTo, const uint8_t *pucListed) {
    const CodedName tName = Coded(pucListed);
    const size_t nPlain = PlainSize(pucListed);
    pucTo[kStoredLength] = static_cast<uint8_t>(kStoredTexts + tName.ucSize + nPlain);
    pucTo[kStoredGroup] =
        static_cast<uint8_t>(pucListed[kRowGroup] | (pucListed[kRowVariant] != 0 ? kHasVariant : 0) |
                             (pucListed[kRowAnnounced] != 0 ? kHasAnnouncement : 0));
    pucTo[kStoredKind] = pucListed[kRowKind];
    pucTo[kStoredName] = static_cast<uint8_t>(kStoredTexts + tName.ucSize);
    pucTo += kStoredTexts;
    for (uint8_t uc = 0; uc < tName.ucSize; ++uc)
        *pucTo++ = tName.auc[uc];
    for (size_t n = 0; n < nPlain; ++n)
        *pucTo++ = pucListed[pucListed[kRowName] + n];
    return pucTo;
}

// All rows of a list and the end row.
inline constexpr size_t kStoredEndSize = 2;
template <size_t N> constexpr size_t StoredSizeOf(const Rows<N> &t) {
    size_t nSize = kStoredEndSize;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        nSize += StoredSize(t.auc + nRow);
    return nSize;
}
template <size_t S, size_t N> constexpr Rows<S> StoreRows(const Rows<N> &t) {
    Rows<S> tStored;
    uint8_t *pucTo = tStored.auc;
    for (size_t nRow = 0; t.auc[nRow] != 0; nRow += t.auc[nRow])
        pucTo = StoreRow(pucTo, t.auc + nRow);
    return tStored;
}

// ---- a row as the engine reads it -------------------------------------------------------------------------

struct RowView {
    const uint8_t *puc;

    Group GroupOf() const {
        return static_cast<Group>(puc[kStoredGroup] & kGroupBits);
    }
    uint8_t Kind() const {
        return puc[kStoredKind];
    }
    const char *Generator() const { // coded
        return reinterpret_cast<const char *>(puc + kStoredTexts);
    }
    const char *Name() const {
        return reinterpret_cast<const char *>(puc + puc[kStoredName]);
    }
    const char *Variant() const;
    bool HasVariant() const {
        return (puc[kStoredGroup] & kHasVariant) != 0;
    }
    const char *Announced() const;
    bool IsAnnounced() const {
        return (puc[kStoredGroup] & kHasAnnouncement) != 0;
    }
    bool IsEnd() const {
        return puc[kStoredLength] == 0;
    }
    RowView Next() const {
        return {puc + puc[kStoredLength]};
    }
};

} // namespace oxa
#endif
