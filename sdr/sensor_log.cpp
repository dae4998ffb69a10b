// SPDX-License-Identifier: Apache-2.0
#include "sdr/sensor_log.h"

namespace oxa {

// Longest: "Default_GenSwitchBoardInOROutletTempSDR"; 39 characters and a NUL.
Label::Label(const ProfileName &tProfile, const char *pcGenerator) {
    const bool bDriver = *pcGenerator == '\0';
    const char *const apc[] = {bDriver ? "OXA_Add" : "", tProfile.acName, bDriver ? "StaticSensor" : "_",
                               pcGenerator};
    size_t n = 0;
    for (const char *pc : apc)
        while (*pc != '\0' && n < sizeof(ac) - 1)
            ac[n++] = *pc++;
    ac[n] = '\0';
}

namespace {

using Logger = void (*)(uint32_t, const char *, uint32_t, const char *, const char *, ...);

uint32_t ModuleOf(Remark tRemark) {
    return tRemark >> 8 & 0xFF;
}
uint32_t LineOf(Remark tRemark) {
    return tRemark >> 16;
}

Logger Open(const ProfileName &tProfile, Remark tRemark) {
    switch (tRemark & 0xFF) {
    case kInfo:
        return _ssp_info;
    case kWarn:
        return _ssp_warn;
    default:
        break;
    }
    sspFailedStat(tProfile.acFile, LineOf(tRemark));
    return _ssp_error;
}

} // namespace

void Say(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat, int sdwA,
         int sdwB) {
    const Label tLabel(tProfile, pcGenerator);
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac, pcFormat, sdwA,
                            sdwB);
}

void SayNamed(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
              int sdwA, int sdwB, int sdwC, int sdwD) {
    const Label tLabel(tProfile, pcGenerator);
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac, pcFormat,
                            tLabel.ac, sdwA, sdwB, sdwC, sdwD);
}

void SayText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
             const char *pcText, int sdwA, int sdwB) {
    const Label tLabel(tProfile, pcGenerator);
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac, pcFormat, pcText,
                            sdwA, sdwB);
}

void SayNamedText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
                  const char *pcText, int sdwA, int sdwB) {
    const Label tLabel(tProfile, pcGenerator);
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac, pcFormat,
                            tLabel.ac, pcText, sdwA, sdwB);
}

void SayAsDriver(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
                 int sdwA, int sdwB) {
    const Label tLabel(tProfile, pcGenerator);
    SayText(tProfile, "", tRemark, pcFormat, tLabel.ac, sdwA, sdwB);
}

void SayRackRow(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, int sdwIndex,
                int sdwCnt, int sdwRows) {
    const Label tLabel(tProfile, pcGenerator);
    const char *pcName = tProfile.acName;
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac,
                            "OXA_Add%sRMCStaticSensor: ucIndex = %d, ucCnt = %d, uc%sRMCStaticSDRCnt = %d!",
                            pcName, sdwIndex, sdwCnt, pcName, sdwRows);
}

void SayProfileText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark,
                    const char *pcFormat, const char *pcText) {
    const Label tLabel(tProfile, pcGenerator);
    Open(tProfile, tRemark)(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac, pcFormat,
                            tProfile.acName, pcText);
}

void SayRefusal(const ProfileName &tProfile, RowView tRow, Remark tRemark, uint8_t ucIndex) {
    const Label tLabel(tProfile, tRow.Generator());
    const char *pcText = tRow.HasVariant() ? tRow.Variant() : tRow.Name();
    int nBefore = 0;
    while (pcText[nBefore] != '\0' && pcText[nBefore] != '%')
        ++nBefore;
    const Logger pfnLog = Open(tProfile, tRemark);
    if (pcText[nBefore] == '\0')
        pfnLog(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac,
               "The board does not support adding sensor %s.", pcText);
    else
        pfnLog(ModuleOf(tRemark), tProfile.acFile, LineOf(tRemark), tLabel.ac,
               "The board does not support adding sensor %.*s%u%s.", nBefore, pcText, ucIndex,
               pcText + nBefore + 2);
}

} // namespace oxa
