// SPDX-License-Identifier: GPL-3.0-or-later
//
// Disk events: the test marker, predicted faults, disk life, the slot's sensor.
#include "events/event_fixture.h"

namespace {

using namespace seltest;

class Disk : public Sel {
protected:
    static void InTestMode() {
        sim::WriteFile(kMarker, {});
    }
    static Lines InfoLine(uint32_t slot, uint32_t event, uint32_t direction = 1) {
        return Info("addDiskSEL", "addDiskSEL EntityID[26], SlotNum[" + std::to_string(slot) +
                                      "], EventNum[" + std::to_string(event) + "], EventDir[" +
                                      std::to_string(direction) + "].");
    }
    static Lines Trace(const std::string &slot, const std::string &event) {
        return Error("addDiskSEL", "dwSlotNum: " + slot + " ucEventNum: 0x" + event, 67);
    }
};

TEST_F(Disk, EveryEventNumber) {
    struct Case {
        uint32_t event;
        const char *bytes; // 7 to 15
    };
    const Case cases[] = {{0, "1A 00 04 0D 00 EF A1 00 00"},       {18, "1A 00 04 0D 00 EF A1 00 12"},
                          {19, "04 00 04 0D 43 EF A1 00 13"},      {20, "1A 00 04 01 00 87 A1 00 14"},
                          {21, "04 00 04 0D 43 EF A2 00 15"},      {22, "1A 00 04 0D 00 EF A2 00 16"},
                          {23, "1A 00 04 0D 00 EF A1 00 17"},      {24, "04 00 04 0D 43 EF A1 00 18"},
                          {25, "1A 00 04 01 00 87 A2 00 19"},      {26, "1A 00 04 0D 00 EF A1 00 1A"},
                          {27, "04 00 04 0D 43 EF A1 00 18"},      {28, "04 00 04 0D 43 EF A1 00 18"},
                          {29, "04 00 04 0D 43 EF A1 00 18"},      {30, "04 00 04 0D 43 EF A1 00 1E"},
                          {31, "04 00 04 0D 43 EF A2 00 1F"},      {32, "1A 00 04 0D 00 EF A1 00 20"},
                          {255, "1A 00 04 0D 00 EF A1 00 FF"},     {256 + 21, "1A 00 04 0D 00 EF A1 00 15"},
                          {256 + 28, "1A 00 04 0D 00 EF A1 00 1C"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.event);
        ExpectSent(addDiskSEL(26, 3, c.event, 1), std::string("00 00 E0 00 00 00 03 ") + c.bytes);
    }
}

TEST_F(Disk, TheDirectionStandsBesideBothEventTypes) {
    ExpectSent(addDiskSEL(26, 3, 19, 0), "00 00 E0 00 00 00 03 04 00 04 0D 43 6F A1 00 13");
    ExpectSent(addDiskSEL(26, 3, 25, 0), "00 00 E0 00 00 00 03 1A 00 04 01 00 07 A2 00 19");
    ExpectSent(addDiskSEL(26, 3, 25, 2), "00 00 E0 00 00 00 03 1A 00 04 01 00 07 A2 00 19");
    ExpectSent(addDiskSEL(26, 3, 28, 0), "00 00 E0 00 00 00 03 04 00 04 0D 43 6F A1 00 18");
}

TEST_F(Disk, TheSlotStandsMostSignificantByteFirst) {
    ExpectSent(addDiskSEL(26, 0x12345678, 22, 0), "00 00 E0 12 34 56 78 1A 00 04 0D 00 6F A2 00 16");
    ExpectSent(addDiskSEL(26, 0xFFFFFFFF, 22, 0), "00 00 E0 FF FF FF FF 1A 00 04 0D 00 6F A2 00 16");
}

TEST_F(Disk, TheTraceLineIsAnErrorOfItsOwnModuleAfterTheInfoLine) {
    EXPECT_EQ(addDiskSEL(26, 3, 22, 1), 0u);
    ExpectLines(InfoLine(3, 22) + Trace("3", "16"));
}

TEST_F(Disk, TheTraceLinePrintsABigSlotNegativeAndTheEventInHexadecimal) {
    EXPECT_EQ(addDiskSEL(26, 0x80000000, 0xABCD, 1), 0u);
    ExpectLines(InfoLine(0x80000000, 0xABCD) + Trace("-2147483648", "abcd"));
    EXPECT_THAT(Records(), ElementsAre("00 00 E0 80 00 00 00 1A 00 04 0D 00 EF A1 00 CD"));
}

TEST_F(Disk, PredictedFaultsAreTracedAndWrittenAsEvent24) {
    for (const uint32_t event : {27u, 28u, 29u}) {
        EXPECT_EQ(addDiskSEL(26, 3, event, 1), 0u);
        ExpectLines(InfoLine(3, event) + Trace("3", "18"));
        EXPECT_THAT(Records(), ElementsAre("00 00 E0 00 00 00 03 04 00 04 0D 43 EF A1 00 18"));
        EXPECT_EQ(sim::CountCalls("MW_GetCustomid"), 0u);
        Forget();
    }
}

// ---- the marker ------------------------------------------------------------------------------------

TEST_F(Disk, TheMarkerIsLookedForOnEveryCall) {
    EXPECT_EQ(addDiskSEL(26, 3, 22, 1), 0u);
    EXPECT_EQ(addDiskSEL(26, 3, 28, 1), 0u);
    EXPECT_THAT(CallArguments("access"), ElementsAre("path=\"/var/test_disk_fault_predict\" mode=0",
                                                     "path=\"/var/test_disk_fault_predict\" mode=0"));
}

TEST_F(Disk, InTestModeOtherEventsEndAfterTheInfoLine) {
    InTestMode();
    for (const uint32_t event : {0u, 19u, 20u, 21u, 22u, 24u, 25u, 26u, 30u, 31u, 256u + 28u}) {
        ExpectNothingSent(addDiskSEL(26, 3, event, 1), 0);
        ExpectLines(InfoLine(3, event));
        EXPECT_THAT(Calls(), ElementsAre("access"));
        Forget();
    }
}

TEST_F(Disk, InTestModePredictedFaultsComeThrough) {
    InTestMode();
    for (const uint32_t event : {27u, 28u, 29u}) {
        EXPECT_EQ(addDiskSEL(26, 3, event, 0), 0u);
        ExpectLines(InfoLine(3, event, 0) + Trace("3", "18"));
        EXPECT_THAT(Records(), ElementsAre("00 00 E0 00 00 00 03 04 00 04 0D 43 6F A1 00 18"));
        Forget();
    }
}

TEST_F(Disk, AMarkerThatCannotBeSeenIsNoTestMode) {
    InTestMode();
    FailAlways("access");
    ExpectSent(addDiskSEL(26, 3, 22, 0), "00 00 E0 00 00 00 03 1A 00 04 0D 00 6F A2 00 16");
}

// ---- disk life -------------------------------------------------------------------------------------

TEST_F(Disk, DiskLifeIsIgnoredForKestrinAfterTheTraceLine) {
    Profile(1);
    ExpectNothingSent(addDiskSEL(26, 3, 21, 1), 0);
    ExpectLines(InfoLine(3, 21) + Trace("3", "15") +
                Info("addDiskSEL", "addDiskSEL ignore Disk life for Kestrin."));
    EXPECT_THAT(Calls(), ElementsAre("access", "MW_GetCustomid"));
}

TEST_F(Disk, DiskLifeIsSentForOtherProfilesAndWhenTheProfileCannotBeRead) {
    Profile(2);
    ExpectSent(addDiskSEL(26, 3, 21, 1), "00 00 E0 00 00 00 03 04 00 04 0D 43 EF A2 00 15");
    Profile(1);
    FailAlways("MW_GetCustomid");
    EXPECT_EQ(addDiskSEL(26, 3, 21, 1), 0u);
    ExpectLines(InfoLine(3, 21) + Trace("3", "15"));
    EXPECT_THAT(Records(), ElementsAre("00 00 E0 00 00 00 03 04 00 04 0D 43 EF A2 00 15"));
}

TEST_F(Disk, OnlyDiskLifeAsksForTheProfile) {
    Profile(1);
    for (const uint32_t event : {19u, 20u, 22u, 24u, 25u, 28u, 30u, 31u}) {
        EXPECT_EQ(addDiskSEL(26, 3, event, 1), 0u);
    }
    EXPECT_EQ(sim::CountCalls("MW_GetCustomid"), 0u);
}

// ---- the slot's sensor -----------------------------------------------------------------------------

TEST_F(Disk, TheSensorIsAskedByTheSlotAfterTheProfile) {
    EXPECT_EQ(addDiskSEL(26, 255, 21, 1), 0u);
    EXPECT_THAT(CallArguments("MW_GetSensorNumber"), ElementsAre("key=\"04 0D 6F FF 00\""));
    EXPECT_THAT(Calls(),
                ElementsAre("access", "MW_GetCustomid", "MW_GetSensorNumber", kSession, kAdd, kClose));
    EXPECT_THAT(Records(), ElementsAre("00 00 E0 00 00 00 FF 04 00 04 0D 3F EF A2 00 15"));
}

TEST_F(Disk, TheSensorIsAskedForEightEventsOnly) {
    for (uint32_t event = 0; event < 64; ++event) {
        const bool asked = event == 19 || event == 21 || event == 24 || (event >= 27 && event <= 31);
        EXPECT_EQ(addDiskSEL(26, 3, event, 1), 0u);
        EXPECT_EQ(sim::CountCalls("MW_GetSensorNumber"), asked ? 1u : 0u) << event;
        Forget();
    }
}

TEST_F(Disk, AFailedLookupHasItsOwnLineAndSendsNumber0) {
    FailAlways("MW_GetSensorNumber");
    EXPECT_EQ(addDiskSEL(26, 3, 24, 1), 0u);
    ExpectLines(InfoLine(3, 24) + Trace("3", "18") +
                Error("addDiskSEL", "addDiskSEL get sensor number fail, slot id 3"));
    EXPECT_THAT(Records(), ElementsAre("00 00 E0 00 00 00 03 04 00 04 0D 00 EF A1 00 18"));
}

TEST_F(Disk, ASlotFrom256IsNotAskedForAndIsADisksAllTheSame) {
    for (const uint32_t slot : {256u, 300u}) {
        EXPECT_EQ(addDiskSEL(26, slot, 19, 1), 0u);
        ExpectLines(InfoLine(slot, 19) + Trace(std::to_string(slot), "13"));
        EXPECT_EQ(sim::CountCalls("MW_GetSensorNumber"), 0u);
        EXPECT_THAT(Records(), ElementsAre(slot == 256 ? "00 00 E0 00 00 01 00 04 00 04 0D 00 EF A1 00 13"
                                                       : "00 00 E0 00 00 01 2C 04 00 04 0D 00 EF A1 00 13"));
        Forget();
    }
}

TEST_F(Disk, AWideNumberIsStoredByItsLowByte) {
    sim::CurrentBoard().sensor_numbers.by_key["04 0D 6F 03 00"] = 0x12345;
    ExpectSent(addDiskSEL(26, 3, 19, 0), "00 00 E0 00 00 00 03 04 00 04 0D 45 6F A1 00 13");
}

} // namespace
