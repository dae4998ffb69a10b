// SPDX-License-Identifier: Apache-2.0
#include "sdr/sensor_log.h"

#include "sdr/sensor_engine_draft.h"

namespace oxa {

namespace {

// The letters of a text, those of the words that it is coded in among them.
class Letters {
public:
    explicit Letters(const char *pcText) : pc(pcText) {}

    char Next() { // NUL at the end
        for (;;) {
            if (bNamed)
                pc = NextSaid(pc);
            const uint8_t uc = static_cast<uint8_t>(*pc++);
            if (uc == kSdrAndEnd)
                pc = "SDR";
            else if (uc >= kFirstWord)
                Enter(uc);
            else if (uc != 0)
                return static_cast<char>(uc);
            else if (!Leave())
                return '\0';
        }
    }

private:
    void Enter(uint8_t ucWord) {
        pcBehindWord = pc;
        bNamed = ucWord == kAsNamed;
        if (bNamed)
            ucWord = kFirstWord; // "Gen"
        for (pc = kNameWords; ucWord > kFirstWord; --ucWord)
            pc = Behind(pc);
    }
    // At the end of a word, of the name, of all; false then.
    bool Leave() {
        if (*pcBehindWord == '\0' && !bNamed)
            return false;
        if (*pcBehindWord == '\0')
            bNamed = false;
        pc = *pcBehindWord != '\0' ? pcBehindWord : "SDR";
        pcBehindWord = "";
        return true;
    }

    const char *pc;
    const char *pcBehindWord = "";
    bool bNamed = false; // in the row's name, or in the word before it
};

} // namespace

const char *RowView::Variant() const {
    return Behind(Name());
}
const char *RowView::Announced() const {
    return HasVariant() ? Behind(Variant()) : Variant();
}

// Longest: "Default_GenSwitchBoardInOROutletTempSDR"; 39 characters and a NUL.
Label::Label(const ProfileName &tProfile, const char *pcGenerator) {
    const bool bDriver = *pcGenerator == '\0';
    const char *const apc[] = {bDriver ? "OXA_Add" : "", tProfile.acName, bDriver ? "StaticSensor" : "_",
                               pcGenerator};
    size_t n = 0;
    for (const char *pc : apc) {
        Letters tLetters(pc);
        for (char c; (c = tLetters.Next()) != '\0' && n < sizeof(ac) - 1;)
            ac[n++] = c;
    }
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

void Say(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdw) {
    Say(DRAFT_SPEAKER(tDraft), tRemark, pcFormat, sdw);
}
void SayNamed(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdw) {
    SayNamed(DRAFT_SPEAKER(tDraft), tRemark, pcFormat, sdw);
}
void SayNamed(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdwA, int sdwB) {
    SayNamed(DRAFT_SPEAKER(tDraft), tRemark, pcFormat, sdwA, sdwB);
}

} // namespace oxa
