// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sixteen bytes of every builder that only places its arguments, written out, for every branch of its rules.
#include "events/event_fixture.h"

namespace {

using namespace seltest;

using EventRecords = Sel;
constexpr uint32_t kWide = 0xABCDEF00; // what a word holds beyond its low byte goes nowhere

TEST_F(EventRecords, MemPredictiveFaultPlacesModuleAndDirection) {
    ExpectSent(addMemPredictiveFault(3, 0), "00 00 02 00 00 00 00 20 00 04 0C 00 04 01 03 00");
    ExpectSent(addMemPredictiveFault(3, 1), "00 00 02 00 00 00 00 20 00 04 0C 00 84 01 03 00");
    ExpectSent(addMemPredictiveFault(kWide | 0xFE, 1), "00 00 02 00 00 00 00 20 00 04 0C 00 84 01 FE 00");
}

TEST_F(EventRecords, PostErrorIsFixed) {
    ExpectSent(addPOSTErrorSel(), "00 00 02 00 00 00 00 20 00 04 0F 00 6F 80 FA 00");
}

TEST_F(EventRecords, S0PowerButtonIsFixedAndHasNoRevisionByte) {
    ExpectSent(addS0PowerButtonSel(), "00 00 CD 00 00 00 00 DD B3 00 BA CB 02 00 00 00");
}

TEST_F(EventRecords, GpuSlotErrorPlacesTheSlot) {
    ExpectSent(addGpuSlotErrorSel(12), "00 00 02 00 00 00 00 20 00 04 1B 00 6F 01 0C 00");
    ExpectSent(addGpuSlotErrorSel(kWide | 0xFF), "00 00 02 00 00 00 00 20 00 04 1B 00 6F 01 FF 00");
}

TEST_F(EventRecords, MinorCduFaultPlacesTheReason) {
    ExpectSent(addMinorCDUFaultSel(5, 0), "00 00 C0 00 00 00 00 E4 00 04 15 00 07 A1 05 FF");
    ExpectSent(addMinorCDUFaultSel(5, 1), "00 00 C0 00 00 00 00 E4 00 04 15 00 87 A1 05 FF");
}

TEST_F(EventRecords, MajorCduFaultPlacesReasonAndSlot) {
    ExpectSent(addMajorCDUFaultSel(5, 2, 0), "00 00 C0 00 00 00 00 E4 00 04 15 00 07 A2 05 02");
    ExpectSent(addMajorCDUFaultSel(5, 2, 1), "00 00 C0 00 00 00 00 E4 00 04 15 00 87 A2 05 02");
}

// Only the lowest bit of an unchecked direction counts.
TEST_F(EventRecords, ADirectionOf2IsAnAssertionAndOf3ADeassertion) {
    ExpectSent(addMinorCDUFaultSel(5, 2), "00 00 C0 00 00 00 00 E4 00 04 15 00 07 A1 05 FF");
    ExpectSent(addMinorCDUFaultSel(5, 3), "00 00 C0 00 00 00 00 E4 00 04 15 00 87 A1 05 FF");
    ExpectSent(addMinorCDUFaultSel(5, 0xFFFFFFFE), "00 00 C0 00 00 00 00 E4 00 04 15 00 07 A1 05 FF");
}

TEST_F(EventRecords, NetPortPacksSubInterfaceAndDevice) {
    ExpectSent(addNETPortSEL(0x2C, 4, 7, 2, 3, 5, 6, 40, 0),
               "00 00 C0 00 00 00 00 2C 56 23 27 00 6F 00 04 07");
    ExpectSent(addNETPortSEL(0x2C, 4, 7, 2, 3, 5, 6, 40, 1),
               "00 00 C0 00 00 00 00 2C 56 23 27 00 EF 00 04 07");
}

TEST_F(EventRecords, NetPortFieldsKeepToTheirFourBits) {
    ExpectSent(addNETPortSEL(0x2C, 4, 7, 0x12, 0x13, 0x15, 0x16, 0, 0),
               "00 00 C0 00 00 00 00 2C 56 23 27 00 6F 00 04 07");
    ExpectSent(addNETPortSEL(0, 0, 0, 0xFFFFFFFF, 0, 0xFF, 0, 0, 0),
               "00 00 C0 00 00 00 00 00 F0 F0 27 00 6F 00 00 00");
    ExpectSent(addNETPortSEL(0, 0, 0, 0, 0xFF, 0, 0xFF, 0, 0),
               "00 00 C0 00 00 00 00 00 0F 0F 27 00 6F 00 00 00");
}

TEST_F(EventRecords, NetPortEventNumberStandsOnlyInTheLine) {
    ExpectSent(addNETPortSEL(1, 2, 3, 4, 5, 6, 7, 0, 1), "00 00 C0 00 00 00 00 01 67 45 27 00 EF 00 02 03");
    EXPECT_EQ(addNETPortSEL(1, 2, 3, 4, 5, 6, 7, 255, 1), 0u);
    ExpectLines(Info("addNETPortSEL", "addNETPortSEL EntityID[1], SlotNum[2], NetPortSilkId[3], "
                                      "DeviceIndex[4], Port[5], NetPortSubinterfacetype[6], "
                                      "NetPortSubindex[7], EventNum[255], EventDir[1]."));
    EXPECT_THAT(seltest::Records(), ElementsAre("00 00 C0 00 00 00 00 01 67 45 27 00 EF 00 02 03"));
}

TEST_F(EventRecords, ControllerEvent18IsTemperature) {
    ExpectSent(addControllerSEL(0x0B, 2, 18, 0), "00 00 C0 00 00 00 00 0B 12 04 01 00 07 A2 02 00");
    ExpectSent(addControllerSEL(0x0B, 2, 18, 1), "00 00 C0 00 00 00 00 0B 12 04 01 00 87 A2 02 00");
}

TEST_F(EventRecords, ControllerEvent19IsTheBattery) {
    ExpectSent(addControllerSEL(0x0B, 2, 19, 0), "00 00 C0 00 00 00 00 0B 13 04 29 00 6F A0 02 00");
    ExpectSent(addControllerSEL(0x0B, 2, 19, 1), "00 00 C0 00 00 00 00 0B 13 04 29 00 EF A0 02 00");
}

TEST_F(EventRecords, OtherControllerEventsHaveNoTypesAndNoDirection) {
    ExpectSent(addControllerSEL(0x0B, 2, 20, 1), "00 00 C0 00 00 00 00 0B 14 04 00 00 00 00 02 00");
    ExpectSent(addControllerSEL(0x0B, 2, 17, 1), "00 00 C0 00 00 00 00 0B 11 04 00 00 00 00 02 00");
    ExpectSent(addControllerSEL(0x0B, 2, 256 + 18, 1), "00 00 C0 00 00 00 00 0B 12 04 00 00 00 00 02 00");
}

TEST_F(EventRecords, LogicalDiskEventsAreRedundancyEvents) {
    ExpectSent(addLDSEL(0x0B, 129, 2, 5, 0), "00 00 C0 00 00 00 00 0B 81 04 0D 00 0B A6 02 05");
    ExpectSent(addLDSEL(0x0B, 132, 2, 5, 1), "00 00 C0 00 00 00 00 0B 84 04 0D 00 8B A6 02 05");
}

TEST_F(EventRecords, LogicalDiskEvent130HasItsOwnData) {
    ExpectSent(addLDSEL(0x0B, 130, 2, 5, 0), "00 00 C0 00 00 00 00 0B 82 04 0D 00 0B A2 02 05");
    ExpectSent(addLDSEL(0x0B, 130, 2, 5, 1), "00 00 C0 00 00 00 00 0B 82 04 0D 00 8B A2 02 05");
}

TEST_F(EventRecords, LogicalDiskEvent131IsADisksAndSpecific) {
    ExpectSent(addLDSEL(0x0B, 131, 2, 5, 0), "00 00 C0 00 00 00 00 04 83 04 0D 00 6F A6 02 05");
    ExpectSent(addLDSEL(0x0B, 131, 2, 5, 1), "00 00 C0 00 00 00 00 04 83 04 0D 00 EF A6 02 05");
}

TEST_F(EventRecords, LogicalDiskEventsAreComparedAsWords) {
    ExpectSent(addLDSEL(0x0B, 256 + 131, 2, 5, 0), "00 00 C0 00 00 00 00 0B 83 04 0D 00 0B A6 02 05");
}

TEST_F(EventRecords, UsageTakesTheSensorTypeOfTheEntity) {
    ExpectSent(addUsageSEL(26, 91, 80, 4, 0), "00 00 C0 00 00 00 00 1A 5B 04 0D 00 05 A1 04 50");
    ExpectSent(addUsageSEL(32, 91, 80, 4, 1), "00 00 C0 00 00 00 00 20 5B 04 0C 00 85 A1 04 50");
    ExpectSent(addUsageSEL(3, 91, 80, 4, 1), "00 00 C0 00 00 00 00 03 5B 04 07 00 85 A1 04 50");
}

TEST_F(EventRecords, UsageOfOtherEntitiesHasNoSensorTypeButItsDirection) {
    ExpectSent(addUsageSEL(4, 91, 80, 4, 1), "00 00 C0 00 00 00 00 04 5B 04 00 00 85 A1 04 50");
    ExpectSent(addUsageSEL(256 + 26, 91, 80, 4, 1), "00 00 C0 00 00 00 00 1A 5B 04 00 00 85 A1 04 50");
}

TEST_F(EventRecords, AlarmOfTheFanCooling) {
    ExpectSent(addSELAlarm(29, 7, 0), "00 00 C0 00 00 00 00 1D 07 04 04 00 0A 04 00 00");
    ExpectSent(addSELAlarm(29, 7, 1), "00 00 C0 00 00 00 00 1D 07 04 04 00 8A 04 00 00");
}

TEST_F(EventRecords, AlarmOfTheCoolingUnitDependsOnTheReason) {
    ExpectSent(addSELAlarm(30, 9, 0), "00 00 C0 00 00 00 00 1E 09 04 21 00 6F A0 79 00");
    ExpectSent(addSELAlarm(30, 10, 1), "00 00 C0 00 00 00 00 1E 0A 04 21 00 EF A0 79 00");
    ExpectSent(addSELAlarm(30, 11, 0), "00 00 C0 00 00 00 00 1E 0B 04 21 00 6F A0 79 00");
    ExpectSent(addSELAlarm(30, 20, 0), "00 00 C0 00 00 00 00 1E 14 04 21 00 6F A0 79 00");
    ExpectSent(addSELAlarm(30, 12, 0), "00 00 C0 00 00 00 00 1E 0C 04 21 00 6F A9 78 01");
    ExpectSent(addSELAlarm(30, 13, 1), "00 00 C0 00 00 00 00 1E 0D 04 21 00 EF A9 78 01");
    ExpectSent(addSELAlarm(30, 14, 0), "00 00 C0 00 00 00 00 1E 0E 04 21 00 6F A4 78 00");
    ExpectSent(addSELAlarm(30, 15, 0), "00 00 C0 00 00 00 00 1E 0F 04 21 00 6F A9 79 02");
    ExpectSent(addSELAlarm(30, 16, 0), "00 00 C0 00 00 00 00 1E 10 04 21 00 6F A9 79 02");
    ExpectSent(addSELAlarm(30, 17, 0), "00 00 C0 00 00 00 00 1E 11 04 21 00 6F A9 79 02");
    ExpectSent(addSELAlarm(30, 18, 1), "00 00 C0 00 00 00 00 1E 12 04 21 00 EF A9 79 02");
}

TEST_F(EventRecords, AlarmOfTheCoolingUnitForOtherReasonsHasTypesAndDirectionButNoData) {
    ExpectSent(addSELAlarm(30, 8, 1), "00 00 C0 00 00 00 00 1E 08 04 21 00 EF 00 00 00");
    ExpectSent(addSELAlarm(30, 19, 0), "00 00 C0 00 00 00 00 1E 13 04 21 00 6F 00 00 00");
    ExpectSent(addSELAlarm(30, 21, 0), "00 00 C0 00 00 00 00 1E 15 04 21 00 6F 00 00 00");
    ExpectSent(addSELAlarm(30, 0, 0), "00 00 C0 00 00 00 00 1E 00 04 21 00 6F 00 00 00");
}

TEST_F(EventRecords, AlarmOfTheAirInletCarriesItsTemperature) {
    ExpectSent(addSELAlarm(55, 3, 0), "00 00 C0 00 00 00 00 37 03 04 28 00 6F E4 1F 00");
    ExpectSent(addSELAlarm(55, 3, 1), "00 00 C0 00 00 00 00 37 03 04 28 00 EF E4 1F 00");
}

TEST_F(EventRecords, AlarmOfTheChassisKnowsThreeReasons) {
    ExpectSent(addSELAlarm(144, 0, 0), "00 00 C0 00 00 00 00 90 00 04 18 00 0A 02 00 00");
    ExpectSent(addSELAlarm(144, 1, 1), "00 00 C0 00 00 00 00 90 01 04 18 00 8A 02 00 00");
    ExpectSent(addSELAlarm(144, 32, 1), "00 00 C0 00 00 00 00 90 20 04 21 00 EF A8 7A 00");
}

TEST_F(EventRecords, OtherChassisReasonsAndOtherEntitiesAreSentBare) {
    ExpectSent(addSELAlarm(144, 2, 1), "00 00 C0 00 00 00 00 90 02 04 00 00 00 00 00 00");
    ExpectSent(addSELAlarm(144, 31, 1), "00 00 C0 00 00 00 00 90 1F 04 00 00 00 00 00 00");
    ExpectSent(addSELAlarm(31, 9, 1), "00 00 C0 00 00 00 00 1F 09 04 00 00 00 00 00 00");
    ExpectSent(addSELAlarm(0, 0, 1), "00 00 C0 00 00 00 00 00 00 04 00 00 00 00 00 00");
    ExpectSent(addSELAlarm(256 + 30, 9, 1), "00 00 C0 00 00 00 00 1E 09 04 00 00 00 00 00 00");
}

TEST_F(EventRecords, I2cStatusTakesTheSensorFromItsCaller) {
    ExpectSent(addI2CStatusSel(0x33, 0, 0x44, 1), "00 00 02 00 00 00 00 20 01 04 21 44 6F B8 7B 33");
    ExpectSent(addI2CStatusSel(0x33, 1, 0x44, 1), "00 00 02 00 00 00 00 20 01 04 21 44 EF B8 7B 33");
}

TEST_F(EventRecords, I2cStatusTakesTheLowTwoBitsOfTheLun) {
    ExpectSent(addI2CStatusSel(0x1FF, 0, 0x144, 7), "00 00 02 00 00 00 00 20 03 04 21 44 6F B8 7B FF");
    ExpectSent(addI2CStatusSel(0, 0, 0, 4), "00 00 02 00 00 00 00 20 00 04 21 00 6F B8 7B 00");
}

TEST_F(EventRecords, TrapAlarmPlacesEventNumberAndReason) {
    ExpectSent(addTrapSELAlarm(0x2D, 8, 66, 0), "00 00 C0 00 00 00 00 2D 42 04 24 00 6F 03 08 00");
    ExpectSent(addTrapSELAlarm(0x2D, 8, 66, 1), "00 00 C0 00 00 00 00 2D 42 04 24 00 EF 03 08 00");
}

TEST_F(EventRecords, TrapAlarmPrintsTheEventNumberWhereItsLineSaysDirection) {
    EXPECT_EQ(addTrapSELAlarm(0x2D, 8, 66, 1), 0u);
    ExpectLines(Info("addTrapSELAlarm", "addTrapSELAlarm EntityID[45], Reason[8], EventDir[66]."));
}

TEST_F(EventRecords, AlarmOfTheFanCoolingSaysItsSensorNumberBeforeItSends) {
    FailAlways(kSession);
    EXPECT_EQ(addSELAlarm(29, 7, 1), 0xFFFFu);
    ExpectLines(Info("addSELAlarm", "addSELAlarm EntityID[29], Reason[7], EventDir[1].") +
                Info("addSELAlarm", "IPMI_ENTITY_ID_FAN_COOLING ucSelRec[SEL_SENSOR_NUM] = 0.") +
                NoSession() + NoSession() + Error("addSELAlarm", "ipmi_add_sel_entry failed"));
}

TEST_F(EventRecords, OnlyTheInletAlarmAsksForTheTemperature) {
    EXPECT_EQ(addSELAlarm(29, 7, 1), 0u);
    EXPECT_EQ(addSELAlarm(30, 9, 1), 0u);
    EXPECT_EQ(addSELAlarm(144, 0, 1), 0u);
    EXPECT_EQ(sim::CountCalls("MW_GetInletTempInfo"), 0u);
    EXPECT_EQ(addSELAlarm(55, 0, 1), 0u);
    EXPECT_EQ(sim::CountCalls("MW_GetInletTempInfo"), 1u);
}

TEST_F(EventRecords, AnUnreadableInletTemperatureIs0AndSilent) {
    FailAlways("MW_GetInletTempInfo");
    EXPECT_EQ(addSELAlarm(55, 3, 1), 0u);
    ExpectLines(Info("addSELAlarm", "addSELAlarm EntityID[55], Reason[3], EventDir[1]."));
    EXPECT_THAT(seltest::Records(), ElementsAre("00 00 C0 00 00 00 00 37 03 04 28 00 EF E4 00 00"));
}

TEST_F(EventRecords, LinesPrintWholeWords) {
    EXPECT_EQ(addUsageSEL(0xFFFFFFFF, 0x80000000, 256, 257, 0x100000000 - 2), 0u);
    ExpectLines(Info("addUsageSEL", "addUsageSEL ucEntityID:4294967295, ucUsage:2147483648, "
                                    "ucNonCritical:256, ucIndex:257, ucEventDir:4294967294"));
    EXPECT_THAT(seltest::Records(), ElementsAre("00 00 C0 00 00 00 00 FF 00 04 00 00 05 A1 01 00"));
}

} // namespace
