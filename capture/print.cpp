/* SPDX-License-Identifier: Apache-2.0 */
#include "capture/print.h"

#include <errno.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

namespace oxa::capture {
namespace {

// Writes as long as there is room.
struct Text {
    char *pcNext, *pcEnd;

    void Add(char cOne) {
        if (pcNext < pcEnd)
            *pcNext++ = cOne;
    }
    void Add(const char *pcText, size_t nLength) {
        const size_t nRoom = static_cast<size_t>(pcEnd - pcNext);
        const size_t nTaken = nLength < nRoom ? nLength : nRoom;
        memcpy(pcNext, pcText, nTaken);
        pcNext += nTaken;
    }
};

struct Field { // what stands between % and its letter
    unsigned dwWidth = 0;
    char cPad = ' ';
};

// Two divisors that the compiler knows: the oldest of the processors have no instruction for others.
unsigned Reverse(char *pcTo, uint32_t dwValue, const char *pcHexDigits) {
    unsigned dwLength = 0;
    do {
        pcTo[dwLength++] =
            pcHexDigits != nullptr ? pcHexDigits[dwValue % 16] : static_cast<char>('0' + dwValue % 10);
        dwValue = pcHexDigits != nullptr ? dwValue / 16 : dwValue / 10;
    } while (dwValue != 0);
    return dwLength;
}

// `pcHexDigits`: null for a decimal number.
void AddNumber(Text &tText, uint32_t dwValue, bool bMinus, const char *pcHexDigits, const Field &tField) {
    char acReversed[16];
    unsigned dwLength = Reverse(acReversed, dwValue, pcHexDigits);
    unsigned dwPads = tField.dwWidth > dwLength + bMinus ? tField.dwWidth - dwLength - bMinus : 0;
    if (bMinus && tField.cPad == '0')
        tText.Add('-');
    for (; dwPads != 0; --dwPads)
        tText.Add(tField.cPad);
    if (bMinus && tField.cPad != '0')
        tText.Add('-');
    while (dwLength != 0)
        tText.Add(acReversed[--dwLength]);
}

Field ReadField(const char *&pcFormat) {
    Field tField;
    if (*pcFormat == '0') {
        tField.cPad = '0';
        ++pcFormat;
    }
    for (; *pcFormat >= '0' && *pcFormat <= '9' && tField.dwWidth < 100; ++pcFormat)
        tField.dwWidth = 10 * tField.dwWidth + static_cast<unsigned>(*pcFormat - '0');
    return tField;
}

// False: a letter that is not among the usual ones.
bool AddUsual(Text &tText, char cLetter, const Field &tField, va_list &tList) {
    if (cLetter == 's' && tField.dwWidth == 0) {
        const char *const pcText = va_arg(tList, const char *);
        if (pcText != nullptr)
            tText.Add(pcText, strlen(pcText));
        return pcText != nullptr;
    }
    if (cLetter == 'd') {
        const int nValue = va_arg(tList, int);
        const uint32_t dwValue = static_cast<uint32_t>(nValue);
        AddNumber(tText, nValue < 0 ? 0u - dwValue : dwValue, nValue < 0, nullptr, tField);
        return true;
    }
    if (cLetter != 'u' && cLetter != 'x' && cLetter != 'X')
        return false;
    const char *const pcHexDigits = cLetter == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    AddNumber(tText, va_arg(tList, unsigned), false, cLetter == 'u' ? nullptr : pcHexDigits, tField);
    return true;
}

// False: not all of it is usual, or it fills the room.
bool PrintUsual(Text &tText, const char *pcFormat, va_list &tList) {
    for (;;) {
        const char *const pcNext = strchrnul(pcFormat, '%');
        tText.Add(pcFormat, static_cast<size_t>(pcNext - pcFormat));
        if (*pcNext == '\0')
            break;
        pcFormat = pcNext + 1;
        const Field tField = ReadField(pcFormat);
        if (!AddUsual(tText, *pcFormat, tField, tList))
            return false;
        ++pcFormat;
    }
    return tText.pcNext < tText.pcEnd;
}

} // namespace

int Print(char *pcTo, size_t nRoom, const char *pcFormat, va_list tList) {
    va_list tUsual;
    va_copy(tUsual, tList);
    Text tText{pcTo, pcTo + nRoom};
    const bool bUsual = PrintUsual(tText, pcFormat, tUsual);
    va_end(tUsual);
    if (bUsual) {
        *tText.pcNext = '\0';
        return static_cast<int>(tText.pcNext - pcTo);
    }
    const int nErrno = errno;
    const int nLength = vsnprintf(pcTo, nRoom, pcFormat, tList);
    errno = nErrno;
    return nLength;
}

} // namespace oxa::capture
