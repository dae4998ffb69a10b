// SPDX-License-Identifier: GPL-3.0-or-later
//
// Builders that ask somebody first: flag checks, profile rules, lookups, and what is said about them, in order.
#include "events/event_fixture.h"

namespace {

using namespace seltest;

using Rules = Sel;

Lines AfterRecord(const std::string &function) { // calls of a builder that sends once, without its lines
    return {function, kSession, kAdd, kClose};
}
Lines Asked() { // the calls that are no log lines
    return Calls();
}

// ---- memory, predicted -----------------------------------------------------------------------------

TEST_F(Rules, MemPredictiveFaultRefusesAFlagAbove1BeforeItAsksForTheProfile) {
    for (const uint32_t flag : {2u, 3u, 256u, 0x80000001u}) {
        ExpectNothingSent(addMemPredictiveFault(3, flag), 0xFFFF);
        const std::string text = std::to_string(flag);
        ExpectLines(Info("addMemPredictiveFault", "addMemPredictiveFault dimmNum:3, assertFlag:" + text) +
                    Error("addMemPredictiveFault", "assertFlag " + text + " is illegal"));
        EXPECT_THAT(Asked(), IsEmpty());
        Forget();
    }
}

TEST_F(Rules, MemPredictiveFaultSetsTheInvertedStateForKestrinInsteadOfARecord) {
    Profile(1);
    ExpectNothingSent(addMemPredictiveFault(3, 1), 0);
    ExpectNothingSent(addMemPredictiveFault(0x12345678, 0), 0);
    EXPECT_THAT(CallArguments("MW_SetMemPredictiveFailureState"),
                ElementsAre("dimm=3 state=0", "dimm=305419896 state=1"));
    ExpectLines(Info("addMemPredictiveFault", "addMemPredictiveFault dimmNum:3, assertFlag:1") +
                Info("addMemPredictiveFault", "addMemPredictiveFault dimmNum:305419896, assertFlag:0"));
}

TEST_F(Rules, MemPredictiveFaultIgnoresWhatBecomesOfTheState) {
    Profile(1);
    FailAlways("MW_SetMemPredictiveFailureState");
    ExpectNothingSent(addMemPredictiveFault(3, 1), 0);
    EXPECT_EQ(sim::LogTexts().size(), 1u);
}

TEST_F(Rules, MemPredictiveFaultSendsWhenTheProfileCannotBeRead) {
    Profile(1);
    FailAlways("MW_GetCustomid");
    ExpectSent(addMemPredictiveFault(3, 1), "00 00 02 00 00 00 00 20 00 04 0C 00 84 01 03 00");
}

// ---- processors ------------------------------------------------------------------------------------

TEST_F(Rules, CpuErrorCarriesTheProcessorsSensor) {
    ExpectSent(addCPUError(0, 0, 4, 3, 0), "00 00 02 00 00 00 00 20 00 04 07 11 6F 03 00 04");
    ExpectSent(addCPUError(1, 0, 4, 3, 1), "00 00 02 00 00 00 00 20 00 04 07 12 EF 03 01 04");
}

TEST_F(Rules, CpuErrorPlacesTheHighBitOnlyForOffset11) {
    ExpectSent(addCPUError(1, 1, 4, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 84");
    ExpectSent(addCPUError(1, 0, 4, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 04");
    ExpectSent(addCPUError(1, 1, 4, 10, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0A 01 04");
    ExpectSent(addCPUError(1, 1, 4, 12, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0C 01 04");
    ExpectSent(addCPUError(1, 1, 4, 256 + 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 04");
}

TEST_F(Rules, CpuErrorLeavesAnUnknownBankAlone) {
    ExpectSent(addCPUError(1, 0, 0xFF, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 FF");
    ExpectSent(addCPUError(1, 1, 0xFF, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 FF");
}

// Bit 7 is the high bit's alone there; elsewhere it is the bank's.
TEST_F(Rules, CpuErrorHighBitOwnsBit7) {
    ExpectSent(addCPUError(1, 0, 0x84, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 04");
    ExpectSent(addCPUError(1, 2, 0x04, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 04");
    ExpectSent(addCPUError(1, 3, 0x04, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 84");
    ExpectSent(addCPUError(1, 0, 0x1FF, 11, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 7F");
    ExpectSent(addCPUError(1, 0, 0x84, 3, 0), "00 00 02 00 00 00 00 20 00 04 07 12 6F 03 01 84");
}

TEST_F(Rules, CpuErrorSaysWhatItFoundBeforeItSends) {
    FailAlways(kSession);
    EXPECT_EQ(addCPUError(1, 1, 4, 11, 0), 0xFFFFu);
    ExpectLines(Info("addCPUError", "addCPUError ucCPUNum:1, ucOffset:11, ucBankNum:4,assertFlag:0") +
                Info("addCPUError", "ucCPUNum:1, dwSensorNum:18") + NoSession() + NoSession() +
                Error("addCPUError", "ipmi_add_sel_entry fail"));
    EXPECT_THAT(Asked(), ElementsAre("MW_GetCPUSensorNumber", kSession, kSession));
}

TEST_F(Rules, CpuErrorSendsNumber0WhenTheLookupFails) {
    FailAlways("MW_GetCPUSensorNumber");
    EXPECT_EQ(addCPUError(1, 1, 4, 11, 0), 0u);
    ExpectLines(Info("addCPUError", "addCPUError ucCPUNum:1, ucOffset:11, ucBankNum:4,assertFlag:0") +
                Error("addCPUError", "get sensor number fail") +
                Info("addCPUError", "ucCPUNum:1, dwSensorNum:0"));
    EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 07 00 6F 0B 01 84"));
}

TEST_F(Rules, CpuErrorStoresTheLowByteOfAWideNumber) {
    EXPECT_EQ(addCPUError(300, 0, 4, 3, 0), 0u);
    ExpectLines(Info("addCPUError", "addCPUError ucCPUNum:300, ucOffset:3, ucBankNum:4,assertFlag:0") +
                Info("addCPUError", "ucCPUNum:300, dwSensorNum:4660"));
    EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 07 34 6F 03 2C 04"));
}

TEST_F(Rules, CpuErrorRefusesAFlagAbove1BeforeTheLookup) {
    ExpectNothingSent(addCPUError(1, 1, 4, 11, 2), 0xFFFF);
    ExpectLines(Info("addCPUError", "addCPUError ucCPUNum:1, ucOffset:11, ucBankNum:4,assertFlag:2") +
                Error("addCPUError", "assertFlag 2 is illegal"));
    EXPECT_THAT(Asked(), IsEmpty());
}

// ---- memory ----------------------------------------------------------------------------------------

TEST_F(Rules, MemErrorCarriesTheModulesSensor) {
    ExpectSent(addMemError(0, 1, 9, 0), "00 00 02 00 00 00 00 20 00 04 0C 21 6F 01 00 09");
    ExpectSent(addMemError(7, 1, 9, 1), "00 00 02 00 00 00 00 20 00 04 0C 27 EF 01 07 09");
}

TEST_F(Rules, MemErrorWithOffset14IsOnlyForKestrin) {
    Profile(1);
    ExpectSent(addMemError(7, 14, 9, 1), "00 00 02 00 00 00 00 20 00 04 0C 27 EF 0E 07 09");
    for (const uint32_t other : {0u, 2u, 3u, 7u, 20u}) {
        Profile(other);
        ExpectNothingSent(addMemError(7, 14, 9, 1), 0);
        ExpectLines(Info("addMemError", "addMemrror dimmNum:7, ucOffset:14, ucErrorNum:9,assertFlag:1"));
        EXPECT_THAT(Asked(), ElementsAre("MW_GetCustomid")); // no lookup
        Forget();
    }
}

TEST_F(Rules, MemErrorWithOffset14IsNothingWhenTheProfileCannotBeRead) {
    Profile(1);
    FailAlways("MW_GetCustomid");
    ExpectNothingSent(addMemError(7, 14, 9, 1), 0);
    EXPECT_EQ(sim::LogTexts().size(), 1u);
}

TEST_F(Rules, MemErrorWithOtherOffsetsAsksForNoProfile) {
    ExpectSent(addMemError(7, 13, 9, 1), "00 00 02 00 00 00 00 20 00 04 0C 27 EF 0D 07 09");
    EXPECT_EQ(addMemError(7, 256 + 14, 9, 1), 0u);
    EXPECT_THAT(Asked(), ElementsAreArray(AfterRecord("MW_GetMemSensorNumber")));
    EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 0C 27 EF 0E 07 09"));
}

TEST_F(Rules, MemErrorRefusesAFlagAbove1EvenAtOffset14) {
    ExpectNothingSent(addMemError(7, 14, 9, 2), 0xFFFF);
    ExpectLines(Info("addMemError", "addMemrror dimmNum:7, ucOffset:14, ucErrorNum:9,assertFlag:2") +
                Error("addMemError", "assertFlag 2 is illegal"));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(Rules, MemErrorSendsNumber0WhenTheLookupFails) {
    FailAlways("MW_GetMemSensorNumber");
    EXPECT_EQ(addMemError(7, 1, 9, 1), 0u);
    ExpectLines(Info("addMemError", "addMemrror dimmNum:7, ucOffset:1, ucErrorNum:9,assertFlag:1") +
                Error("addMemError", "get sensor number fail") +
                Info("addMemError", "dimmNum:7, dwSensorNum:0"));
    EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 0C 00 EF 01 07 09"));
}

// ---- power modules ---------------------------------------------------------------------------------

TEST_F(Rules, PowerModuleEventsByNumber) {
    struct Case {
        uint32_t event;
        const char *bytes; // 10 to 13
    };
    const Case cases[] = {{16, "08 31 00 00"}, {17, "08 31 EF A1"}, {18, "08 31 EF A2"}, {19, "08 31 EF A1"},
                          {20, "08 31 EF A2"}, {21, "08 31 EF A1"}, {22, "08 31 EF A2"}, {23, "08 31 EF A1"},
                          {24, "08 31 EF A2"}, {25, "08 31 EF A1"}, {26, "08 31 EF A1"}, {27, "08 31 EF A2"},
                          {28, "08 31 EF A1"}, {29, "08 31 EF A2"}, {30, "04 00 84 A1"}, {31, "04 00 84 A1"},
                          {32, "04 00 84 A1"}, {33, "04 00 84 A1"}, {34, "09 31 85 A1"}, {35, "08 31 00 00"},
                          {0, "08 31 00 00"},  {255, "08 31 00 00"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.event);
        char number[4];
        std::snprintf(number, sizeof(number), "%02X", c.event);
        ExpectSent(addPEMSEL(1, c.event, 1),
                   std::string("00 00 C0 00 00 00 00 0A 00 04 ") + c.bytes + " 01 " + number);
    }
}

TEST_F(Rules, PowerModuleDirectionIsPlacedOnlyBesideAType) {
    ExpectSent(addPEMSEL(1, 17, 0), "00 00 C0 00 00 00 00 0A 00 04 08 31 6F A1 01 11");
    ExpectSent(addPEMSEL(1, 30, 0), "00 00 C0 00 00 00 00 0A 00 04 04 00 04 A1 01 1E");
    ExpectSent(addPEMSEL(1, 34, 0), "00 00 C0 00 00 00 00 0A 00 04 09 31 05 A1 01 22");
    ExpectSent(addPEMSEL(1, 35, 1), "00 00 C0 00 00 00 00 0A 00 04 08 31 00 00 01 23");
    ExpectSent(addPEMSEL(1, 256 + 17, 1), "00 00 C0 00 00 00 00 0A 00 04 08 31 00 00 01 11");
}

TEST_F(Rules, PowerModulePrintsABigNumberNegative) {
    EXPECT_EQ(addPEMSEL(2, 17, 1), 0u);
    ExpectLines(Info("addPEMSEL", "addPEMSEL uclocation:2, ucEventNum:17, ucEventDir:1") +
                Info("addPEMSEL", "addPEMSEL dwSensorNum:-2147483598"));
    EXPECT_THAT(Records(), ElementsAre("00 00 C0 00 00 00 00 0A 00 04 08 32 EF A1 02 11"));
}

TEST_F(Rules, PowerModuleForecastsAreRefusedForKestrinSilentlyAfterTheLookup) {
    Profile(1);
    for (const uint32_t event : {30u, 31u, 32u, 33u}) {
        ExpectNothingSent(addPEMSEL(1, event, 1), 0xFFFF);
        ExpectLines(Info("addPEMSEL",
                         "addPEMSEL uclocation:1, ucEventNum:" + std::to_string(event) + ", ucEventDir:1") +
                    Info("addPEMSEL", "addPEMSEL dwSensorNum:49"));
        EXPECT_THAT(Asked(), ElementsAre("MW_GetPemSensorNumber", "MW_GetCustomid"));
        Forget();
    }
    ExpectSent(addPEMSEL(1, 29, 1), "00 00 C0 00 00 00 00 0A 00 04 08 31 EF A2 01 1D");
    ExpectSent(addPEMSEL(1, 34, 1), "00 00 C0 00 00 00 00 0A 00 04 09 31 85 A1 01 22");
}

TEST_F(Rules, PowerModuleForecastsAreSentWhenTheProfileCannotBeRead) {
    Profile(1);
    FailAlways("MW_GetCustomid");
    ExpectSent(addPEMSEL(1, 30, 1), "00 00 C0 00 00 00 00 0A 00 04 04 00 84 A1 01 1E");
}

TEST_F(Rules, PowerModuleEventsOtherwiseAskForNoProfile) {
    EXPECT_EQ(addPEMSEL(1, 17, 1), 0u);
    EXPECT_THAT(Asked(), ElementsAreArray(AfterRecord("MW_GetPemSensorNumber")));
}

TEST_F(Rules, PowerModuleSendsNumber0WhenTheLookupFails) {
    FailAlways("MW_GetPemSensorNumber");
    EXPECT_EQ(addPEMSEL(1, 17, 1), 0u);
    ExpectLines(Info("addPEMSEL", "addPEMSEL uclocation:1, ucEventNum:17, ucEventDir:1") +
                Error("addPEMSEL", "get sensor number fail") + Info("addPEMSEL", "addPEMSEL dwSensorNum:0"));
    EXPECT_THAT(Records(), ElementsAre("00 00 C0 00 00 00 00 0A 00 04 08 00 EF A1 01 11"));
}

// ---- power drops -----------------------------------------------------------------------------------

TEST_F(Rules, PowerDropPacksProcessorAndTypeAndPutsTheNumberInTwoBytes) {
    Profile(3);
    ExpectSent(addPowerDropSEL(2, 1, 0x81, 0), "00 00 02 00 00 00 00 20 03 04 08 77 6F 01 12 81");
    ExpectSent(addPowerDropSEL(2, 1, 0x81, 1), "00 00 02 00 00 00 00 20 03 04 08 77 EF 01 12 81");
    sim::CurrentBoard().sensor_numbers.power_fault = 0x1A6;
    ExpectSent(addPowerDropSEL(0x32, 0x1F, 0x181, 1), "00 00 02 00 00 00 00 20 02 04 08 A6 EF 01 F2 81");
}

TEST_F(Rules, PowerDropIsOnlyForVoranaAndSaysSoBeforeItLooksAtTheFlag) {
    for (const uint32_t other : {0u, 1u, 2u, 4u, 259u}) {
        Profile(other);
        ExpectNothingSent(addPowerDropSEL(2, 1, 0x81, 2), 0xFFFF);
        ExpectLines(Info("addPowerDropSEL",
                         "addPowerDropSEL ucDropType:2, ucCpuIndex:1, ucReasonMask:129,ucEventDir:2") +
                    Error("addPowerDropSEL",
                          "customId:" + std::to_string(other) + ", only vorana support addPowerDropSEL"));
        EXPECT_THAT(Asked(), ElementsAre("MW_GetCustomid"));
        Forget();
    }
}

TEST_F(Rules, PowerDropCountsAnUnreadableProfileAs0) {
    Profile(3);
    FailAlways("MW_GetCustomid");
    ExpectNothingSent(addPowerDropSEL(2, 1, 0x81, 1), 0xFFFF);
    EXPECT_THAT(sim::LogTexts(sim::Level::kError),
                ElementsAre("customId:0, only vorana support addPowerDropSEL"));
}

TEST_F(Rules, PowerDropRefusesADirectionAbove1BeforeTheLookup) {
    Profile(3);
    ExpectNothingSent(addPowerDropSEL(2, 1, 0x81, 2), 0xFFFF);
    ExpectLines(
        Info("addPowerDropSEL", "addPowerDropSEL ucDropType:2, ucCpuIndex:1, ucReasonMask:129,ucEventDir:2") +
        Error("addPowerDropSEL", "assertFlag 2 is illegal"));
    EXPECT_THAT(Asked(), ElementsAre("MW_GetCustomid"));
}

TEST_F(Rules, PowerDropSendsNumber0WhenTheLookupFails) {
    Profile(3);
    FailAlways("MW_GetPowerFaultSensorNum");
    EXPECT_EQ(addPowerDropSEL(2, 1, 0x81, 1), 0u);
    ExpectLines(
        Info("addPowerDropSEL", "addPowerDropSEL ucDropType:2, ucCpuIndex:1, ucReasonMask:129,ucEventDir:1") +
        Error("addPowerDropSEL", "get sensor number fail"));
    EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 08 00 EF 01 12 81"));
}

// ---- I2C status ------------------------------------------------------------------------------------

TEST_F(Rules, I2cStatusRefusesAFlagAbove1AndHasNoInfoLine) {
    ExpectNothingSent(addI2CStatusSel(0x33, 2, 0x44, 0), 0xFFFF);
    ExpectLines(Error("addI2CStatusSel", "assertFlag 2 is illegal"));
    Forget();
    EXPECT_EQ(addI2CStatusSel(0x33, 1, 0x44, 0), 0u);
    ExpectLines({});
}

// ---- leaks -----------------------------------------------------------------------------------------

constexpr LeakageInfo kLeak = {0, 5};
constexpr LeakageInfo kGone = {1, 5};

TEST_F(Rules, LeakageAsksForTheSensorOfTheStaticLeakageRecord) {
    EXPECT_EQ(addLeakageSel(1, &kLeak), 0u);
    EXPECT_THAT(CallArguments("MW_GetSpecificSensorInfo"), ElementsAre("key=\"1E 0A 03 00 00\""));
    EXPECT_THAT(Asked(), ElementsAreArray(AfterRecord("MW_GetSpecificSensorInfo")));
    ExpectLines({});
}

TEST_F(Rules, LeakageOfKinds1To3SaysWhere) {
    ExpectSent(addLeakageSel(1, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 81 51 00");
    ExpectSent(addLeakageSel(2, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 81 52 00");
    ExpectSent(addLeakageSel(3, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 81 53 00");
    const LeakageInfo high = {0, 0xFA};
    ExpectSent(addLeakageSel(3, &high), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 81 A3 00");
}

TEST_F(Rules, LeakageOfOtherKindsDoesNotSayWhere) {
    ExpectSent(addLeakageSel(0, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 01 FF 00");
    ExpectSent(addLeakageSel(4, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 01 FF 00");
    ExpectSent(addLeakageSel(257, &kLeak), "00 00 02 00 00 00 00 20 00 04 0A 5E 03 01 FF 00");
}

TEST_F(Rules, LeakageIsGoneOnlyForLumora) {
    Profile(7);
    ExpectSent(addLeakageSel(2, &kGone), "00 00 02 00 00 00 00 20 00 04 0A 5E 83 81 52 00");
    ExpectSent(addLeakageSel(9, &kGone), "00 00 02 00 00 00 00 20 00 04 0A 5E 83 01 FF 00");
    for (const uint32_t other : {0u, 1u, 3u, 263u}) {
        Profile(other);
        ExpectNothingSent(addLeakageSel(2, &kGone), 0xFFFF);
        ExpectLines({});
        EXPECT_THAT(Asked(), ElementsAre("MW_GetSpecificSensorInfo", "MW_GetCustomid"));
        Forget();
    }
}

TEST_F(Rules, LeakageIsNotGoneWhenTheProfileCannotBeRead) {
    Profile(7);
    FailAlways("MW_GetCustomid");
    ExpectNothingSent(addLeakageSel(2, &kGone), 0xFFFF);
    ExpectLines({});
}

TEST_F(Rules, LeakageCountsAnyFlagBut1AsAssertionAndAsksForNoProfile) {
    for (const uint8_t flag : {0, 2, 3, 255}) {
        const LeakageInfo info = {flag, 5};
        EXPECT_EQ(addLeakageSel(2, &info), 0u);
        EXPECT_EQ(sim::CountCalls("MW_GetCustomid"), 0u);
        EXPECT_THAT(Records(), ElementsAre("00 00 02 00 00 00 00 20 00 04 0A 5E 03 81 52 00"));
        Forget();
    }
}

TEST_F(Rules, LeakageWithoutInformationIsAnAssertionLine) {
    ExpectNothingSent(addLeakageSel(2, nullptr), 0xFFFF);
    ExpectLines(Error("addLeakageSel", "assertion failed: ptLeakageInfo != 0", 255));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(Rules, LeakageEndsWhenTheLookupFails) {
    FailAlways("MW_GetSpecificSensorInfo");
    ExpectNothingSent(addLeakageSel(2, &kGone), 0xFFFF);
    ExpectLines(Error("addLeakageSel", "MW_GetSpecificSensorInfo fail"));
    EXPECT_THAT(Asked(), ElementsAre("MW_GetSpecificSensorInfo"));
}

} // namespace
