// SPDX-License-Identifier: Apache-2.0
#include "library/specific_sensors/name_text.h"

#include <cstring>

#include "library/record/layout.h"
#include "library/record/log.h"
#include "library/specific_sensors/generator.h"

namespace oxa::snr {

namespace {

// Whether a text of nLeft characters goes on with a pattern.  Who looks for one compares its first character before
// he asks: most characters are not it.
bool GoesOnWith(const char *pcText, size_t nLeft, const char *pcPattern, size_t nPattern) {
    return nPattern <= nLeft && memcmp(pcText, pcPattern, nPattern) == 0;
}

} // namespace

uint8_t NameLength(const SnrQuery *ptInfo) {
    return static_cast<uint8_t>(strnlen_s(ptInfo->acName, kNameMax));
}

bool Contains(const char *pcText, const char *pcNeedle) {
    const size_t nNeedle = strnlen_s(pcNeedle, kNameMax);
    const size_t nText = strnlen_s(pcText, kNameMax);
    const char cFirst = *pcNeedle;
    const char *const pcEnd = pcText + nText;
    for (; pcText != pcEnd; ++pcText)
        if (*pcText == cFirst && GoesOnWith(pcText, static_cast<size_t>(pcEnd - pcText), pcNeedle, nNeedle))
            return true;
    return false;
}

uint8_t ReplaceInName(SnrQuery &tInfo, const char *pcPattern, const char *pcReplacement) {
    char acNew[SENSOR_NAME_SIZE];
    const uint8_t ucLen = strrpc(acNew, tInfo.acName, pcPattern, pcReplacement);
    memcpy(tInfo.acName, acNew, sizeof(acNew));
    return ucLen;
}

} // namespace oxa::snr

using namespace oxa;
using namespace oxa::snr;

uint8_t strrpc(char *pcOut, const char *pcSrc, const char *pcPattern, const char *pcReplacement) {
    if (pcOut == nullptr) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "%s failed! The input parameter is null.", __func__);
        return 0;
    }
    if (ReportNull(__func__, pcSrc, pcPattern) || ReportNull(__func__, pcReplacement))
        return 0;
    const size_t nSrc = strnlen_s(pcSrc, kNameMax);
    const size_t nPattern = strnlen_s(pcPattern, SENSOR_NAME_SIZE);
    size_t nOut = 0; // the whole length; only what fits is written
    const auto Append = [&](char c) __attribute__((always_inline)) {
        if (nOut < kNameMax)
            pcOut[nOut] = c;
        ++nOut;
    };
    for (size_t n = 0; n < nSrc;) {
        // an empty pattern stands nowhere
        if (nPattern == 0 || pcSrc[n] != *pcPattern ||
            !GoesOnWith(pcSrc + n, nSrc - n, pcPattern, nPattern)) {
            Append(pcSrc[n++]);
            continue;
        }
        for (const char *pc = pcReplacement; *pc != '\0'; ++pc)
            Append(*pc);
        n += nPattern;
    }
    pcOut[nOut < kNameMax ? nOut : kNameMax] = '\0';
    return static_cast<uint8_t>(nOut < UINT8_MAX ? nOut : UINT8_MAX);
}
