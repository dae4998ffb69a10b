// SPDX-License-Identifier: GPL-3.0-or-later
//
// The two renames: cards in front slots, and the GPUs of a Sablin machine.
#include "specific_sensors/formed_names.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// ---- front slots -------------------------------------------------------------------------------

class FrontSlot : public Lookup {};

TEST_F(FrontSlot, TheNumberIsReadFromTheSilkTextInBase10) {
    const struct {
        const char *silk;
        int32_t result;
        uint8_t number;
    } cases[] = {
        {"F-Slot2", 0, 2},     {"F-Slot", 0, 0},      {"F-Slot007", 0, 7}, {"F-Slot010", 0, 10},
        {"F-Slot255", 0, 255}, {"F-Slot300", 0, 44},  {"F-Slot12", 0, 12}, {"F-Slot2a", -1, 0},
        {"f-slot2", -1, 0},    {"F-SLOT2", -1, 0},    {"F-Slot-2", -1, 0}, {"F-Slot 2", -1, 0},
        {"F-Slo", -1, 0},      {"XF-Slot2", -1, 0},   {"Slot2", -1, 0},    {"", -1, 0},
        {"F-Slot2 ", -1, 0},   {"F-Slot0x10", -1, 0}, {"F-Slot+2", -1, 0},
    };
    for (const auto &c : cases) {
        Board(CUSTOM_ID_DEFAULT);
        AddSlot(5, c.silk);
        uint8_t number = 99;
        EXPECT_EQ(getFSlotInfo(5, &number), c.result) << c.silk;
        if (c.result == 0) {
            EXPECT_EQ(number, c.number) << c.silk;
        }
    }
}

// 32 characters fill the buffer: the number is read up to the last of them and no further.
TEST_F(FrontSlot, ASilkTextWithoutNulIsReadToTheEndOfItsBuffer) {
    AddSlot(5, "F-Slot" + std::string(24, '0') + "1234");
    uint8_t number = 99;
    EXPECT_EQ(getFSlotInfo(5, &number), 0);
    EXPECT_EQ(number, 1); // 31 characters and the NUL
    sim::CurrentBoard().pcie.slots[0].silk_nul = false;
    EXPECT_EQ(getFSlotInfo(5, &number), 0);
    EXPECT_EQ(number, 12);
}

TEST_F(FrontSlot, OnlyLocation1IsTheFront) {
    for (int location = 0; location < 256; ++location) {
        Board(CUSTOM_ID_DEFAULT);
        AddSlot(5, "F-Slot2", static_cast<uint8_t>(location));
        uint8_t number = 99;
        EXPECT_EQ(getFSlotInfo(5, &number), location == 1 ? 0 : -1) << location;
    }
}

TEST_F(FrontSlot, AnUnreadableLocationIsNoFrontSlot) {
    AddSlot(5, "F-Slot2");
    sim::Fault fault;
    fault.call = "Hal_GetPcieLocationByPcieSlot";
    fault.output = 1;
    sim::AddFault(fault);
    uint8_t number = 99;
    EXPECT_EQ(getFSlotInfo(5, &number), -1);
}

TEST_F(FrontSlot, AnUnreadableSilkIsNoFrontSlot) {
    AddSlot(5, "F-Slot2");
    Fail("Hal_GetPcieSilkByPcieSlot");
    uint8_t number = 99;
    EXPECT_EQ(getFSlotInfo(5, &number), -1);
}

TEST_F(FrontSlot, ANullNumberIsAnAssertionAndNoFrontSlot) {
    AddSlot(5, "F-Slot2");
    EXPECT_EQ(getFSlotInfo(5, nullptr), -1);
    EXPECT_THAT(LogLines(), ElementsAre("error 255 getFSlotInfo: assertion failed: changedSlot != 0"));
}

struct Rename {
    const char *rear;
    const char *front;
};
const Rename kRenames[24] = {
    {"RAID_TEMP_*", "RAID_TEMP_F-*"},
    {"Raid*_Temp", "RaidF-*_Temp"},
    {"P*_Raid_Temp", "PF-*_Raid_Temp"},
    {"RAID*_Temp", "RAIDF-*_Temp"},
    {"HBA_TEMP_*", "HBA_TEMP_F-*"},
    {"HBA*_Temp", "HBAF-*_Temp"},
    {"P*_HBA_Temp", "PF-*_HBA_Temp"},
    {"NIC_SFP#_TEMP_*", "NIC_SFP#_T_F-*"},
    {"NIC*_SFP#_Temp", "NICF-*_SFP#_Temp"},
    {"P*_Net_SFP#_Temp", "PF-*_Net_SFP#_T"},
    {"P*_NIC_SFP#_Temp", "PF-*_NIC_SFP#_T"},
    {"NIC_TEMP_*", "NIC_TEMP_F-*"},
    {"NIC*_Temp", "NICF-*_Temp"},
    {"P*_Net_Temp", "PF-*_Net_Temp"},
    {"P*_NIC_Temp", "PF-*_NIC_Temp"},
    {"FC_TEMP_*", "FC_TEMP_F-*"},
    {"FC*_Temp", "FCF-*_Temp"},
    {"P*_FC_Temp", "PF-*_FC_Temp"},
    {"SNIC_NIC_TEMP_*", "SNIC_NIC_T_F-*"},
    {"SNIC*_NIC_Temp", "SNICF-*_NIC_Temp"},
    {"P*_SNIC_NIC_Temp", "PF-*_SNIC_NIC_T"},
    {"SNIC_SFP#_T_*", "SNIC_SFP#_T_F-*"},
    {"SNIC*_SFP#_Temp", "SNICF-*_SFP#_T"},
    {"P*_SNIC_SFP#_T", "PF-*_SNIC_SFP#_T"},
};

TEST_F(FrontSlot, AllTwentyFourPatternsAndTheSlotAreReplaced) {
    AddSlot(5, "F-Slot2");
    for (const Rename &rename : kRenames) {
        SnrQuery query = Query(kTemp, 3, 0, rename.rear);
        uint8_t slot = 5;
        modifyPcieSlotName(&slot, &query);
        EXPECT_EQ(Name(query), rename.front);
        EXPECT_EQ(slot, 2) << rename.rear;
        EXPECT_EQ(query.wBitmap, 0x1234);
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

// The walk over the patterns relies on no count of the platform's.
TEST_F(FrontSlot, AWrongLengthFromThePlatformChangesNoRename) {
    AddSlot(5, "F-Slot2");
    for (const int64_t length : {0, 1, 16, 255}) {
        sim::ClearFaults();
        sim::AddFault({.call = "strnlen_s", .result = length});
        for (const Rename &rename : kRenames) {
            SnrQuery query = Query(kTemp, 3, 0, rename.rear);
            uint8_t slot = 5;
            modifyPcieSlotName(&slot, &query);
            EXPECT_EQ(Name(query), rename.front) << length;
            EXPECT_EQ(slot, 2) << length;
        }
        SnrQuery other = Query(kTemp, 3, 0, "Z_TEMP_*");
        uint8_t slot = 5;
        modifyPcieSlotName(&slot, &other);
        EXPECT_EQ(Name(other), "Z_TEMP_*") << length;
        EXPECT_EQ(slot, 5) << length;
    }
}

TEST_F(FrontSlot, OnlyFiveDeviceTypesTakePart) {
    AddSlot(5, "F-Slot2");
    for (int device = 0; device < 256; ++device) {
        SnrQuery query = Query(kTemp, device, 0, "RAID_TEMP_*");
        uint8_t slot = 5;
        modifyPcieSlotName(&slot, &query);
        const bool part = device == 3 || device == 5 || device == 15 || device == 16 || device == 19;
        EXPECT_EQ(Name(query), part ? "RAID_TEMP_F-*" : "RAID_TEMP_*") << device;
        EXPECT_EQ(slot, part ? 2 : 5) << device;
    }
}

TEST_F(FrontSlot, OtherPatternsAndTheirSlotStay) {
    AddSlot(5, "F-Slot2");
    for (const char *pattern :
         {"RAID_TEMP", "RAID_TEMP_**", "raid_temp_*", "XRAID_TEMP_*", "HT_NIC*_Temp", ""}) {
        SnrQuery query = Query(kTemp, 5, 0, pattern);
        uint8_t slot = 5;
        modifyPcieSlotName(&slot, &query);
        EXPECT_EQ(Name(query), pattern);
        EXPECT_EQ(slot, 5) << pattern;
    }
}

TEST_F(FrontSlot, ARearSlotKeepsNameAndSlot) {
    AddSlot(5, "F-Slot2", 2);
    SnrQuery query = Query(kTemp, 3, 0, "RAID_TEMP_*");
    uint8_t slot = 5;
    modifyPcieSlotName(&slot, &query);
    EXPECT_EQ(Name(query), "RAID_TEMP_*");
    EXPECT_EQ(slot, 5);
}

TEST_F(FrontSlot, NullPointersAreAssertions) {
    SnrQuery query = Query(kTemp, 3, 0, "RAID_TEMP_*");
    uint8_t slot = 5;
    modifyPcieSlotName(nullptr, &query);
    modifyPcieSlotName(&slot, nullptr);
    EXPECT_THAT(LogLines(), ElementsAre("error 255 modifyPcieSlotName: assertion failed: ucInstance != 0",
                                        "error 255 modifyPcieSlotName: assertion failed: ptInfo != 0"));
    EXPECT_EQ(Name(query), "RAID_TEMP_*");
    EXPECT_EQ(slot, 5);
}

TEST_F(FrontSlot, ADefaultRaidCardInFSlot2IsNamedAfterIt) {
    AddSlot(5, "F-Slot2");
    SnrQuery query = Query(kTemp, 3, 0);
    EXPECT_EQ(getSensorInfo(&query, 5, 0), 14);
    EXPECT_EQ(Name(query), "RAID_TEMP_F-02");
    query = Query(kTemp, 5, 1);
    EXPECT_EQ(getSensorInfo(&query, 5, 3), 15);
    EXPECT_EQ(Name(query), "NIC_SFP3_T_F-02");
}

TEST_F(FrontSlot, ADefaultRaidCardInFSlot2aKeepsTheRearNameAndNumber) {
    AddSlot(5, "F-Slot2a");
    SnrQuery query = Query(kTemp, 3, 0);
    EXPECT_EQ(getSensorInfo(&query, 5, 0), 12);
    EXPECT_EQ(Name(query), "RAID_TEMP_05");
}

// ---- Sablin GPUs -------------------------------------------------------------------------------

constexpr uint16_t kRaxBoard = 0x54E0;
const char kNotRax[] = "info 42 modifySablinGpuSensorName: The board does not support adding sensor RAx.";

std::string BoardLine(int result, const char *board) {
    return "info 42 modifySablinGpuSensorName: modifySablinGpuSensorName: sdwRet = " +
           std::to_string(result) + " wBoardId = " + board + "!";
}

class SablinRename : public Lookup {
protected:
    void SetUp() override {
        Board(CUSTOM_ID_SABLIN, kRaxBoard);
    }
};

TEST_F(SablinRename, AllEightNeedlesAreReplaced) {
    const Rename needles[8] = {{"GU05", "RA3"}, {"GU04", "RA2"}, {"GU03", "RA1"}, {"GU08", "RB3"},
                               {"GU07", "RB2"}, {"GU06", "RB1"}, {"GU10", "RC2"}, {"GU09", "RC1"}};
    for (const Rename &needle : needles) {
        SnrQuery query = Query(kTemp, 2, 9, std::string(needle.rear) + "_1_Max_Temp");
        EXPECT_EQ(modifySablinGpuSensorName(&query), 14);
        EXPECT_EQ(Name(query), std::string(needle.front) + "_1_Max_Temp");
    }
}

TEST_F(SablinRename, TheNeedleMayStandAnywhere) {
    SnrQuery query = Query(kTemp, 2, 10, "Card_GU08_x");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 10);
    EXPECT_EQ(Name(query), "Card_RB3_x");
}

TEST_F(SablinRename, TheFirstNeedleOfTheTableWins) {
    SnrQuery query = Query(kTemp, 2, 10, "GU09_GU05");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 8);
    EXPECT_EQ(Name(query), "GU09_RA3");
}

TEST_F(SablinRename, ANameWithoutANeedleStays) {
    SnrQuery query = Query(kTemp, 2, 9, "GU01_1_Max_Temp");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 15);
    EXPECT_EQ(Name(query), "GU01_1_Max_Temp");
    EXPECT_THAT(LogLines(), ElementsAre(BoardLine(0, "54e0")));
}

TEST_F(SablinRename, ItAppliesToFourKindsOnly) {
    const uint32_t classes[] = {0x0100, 0x0803, 0x1700, 0x0403};
    for (const uint32_t sensor_class : classes) {
        for (const int device : {2, 5, 56}) {
            for (int sub = 0; sub < 256; ++sub) {
                SnrQuery query = Query(sensor_class, device, sub, "GU05_x");
                const bool applies = (sensor_class == 0x0100 && device == 2 && (sub == 9 || sub == 10)) ||
                                     (sensor_class == 0x0803 && device == 56 && sub == 0) ||
                                     (sensor_class == 0x1700 && device == 2 && sub == 0);
                ASSERT_EQ(modifySablinGpuSensorName(&query), applies ? 5 : 6)
                    << sensor_class << "/" << device << "/" << sub;
                ASSERT_EQ(Name(query), applies ? "RA3_x" : "GU05_x");
            }
        }
    }
}

TEST_F(SablinRename, OnAnotherBoardTheKindsAreDropped) {
    Board(CUSTOM_ID_SABLIN, 0x54E1);
    SnrQuery query = Query(0x1700, 2, 0, "GU05_Card_Status");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 0);
    EXPECT_THAT(LogLines(), ElementsAre(BoardLine(0, "54e1"), kNotRax));
}

TEST_F(SablinRename, OnAnotherBoardOtherKindsStay) {
    Board(CUSTOM_ID_SABLIN, 0x54E1);
    SnrQuery query = Query(kTemp, 2, 0, "GU05");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 4);
    EXPECT_EQ(Name(query), "GU05");
    EXPECT_THAT(LogLines(), ElementsAre(BoardLine(0, "54e1")));
}

TEST_F(SablinRename, AnUnreadableBoardIdDropsTheKinds) {
    sim::Fault fault;
    fault.call = "get_default_board_id";
    fault.result = -5;
    fault.output = kRaxBoard;
    sim::AddFault(fault);
    SnrQuery query = Query(kTemp, 2, 9, "GU05_1_Max_Temp");
    EXPECT_EQ(modifySablinGpuSensorName(&query), 0);
    EXPECT_THAT(LogLines(), ElementsAre(BoardLine(-5, "0"), kNotRax));
}

TEST_F(SablinRename, ANullQueryGivesZeroAndOneError) {
    EXPECT_EQ(modifySablinGpuSensorName(nullptr), 0);
    ASSERT_EQ(sim::LogTexts(sim::Level::kError).size(), 1u);
    EXPECT_EQ(sim::Logs().back().function, "modifySablinGpuSensorName");
}

TEST_F(SablinRename, WholeNamesOfASablinMachine) {
    const struct {
        uint32_t sensor_class;
        int device, sub;
        uint8_t slot;
        const char *name;
    } cases[] = {
        {0x0100, 2, 9, 5, "RA3_1_Max_Temp"},   {0x0100, 2, 10, 9, "RC1_1_Avg_Temp"},
        {0x0803, 56, 0, 7, "RB2_Board_Power"}, {0x1700, 2, 0, 10, "RC2_Card_Status"},
        {0x0100, 2, 9, 2, "GU02_1_Max_Temp"},  {0x0100, 2, 0, 5, "GPU_TEMP_05"},
    };
    for (const auto &c : cases) {
        SnrQuery query = Query(c.sensor_class, c.device, c.sub);
        EXPECT_EQ(getSensorInfo(&query, c.slot, 1), std::string(c.name).size()) << c.name;
        EXPECT_EQ(Name(query), c.name);
    }
}

TEST_F(SablinRename, ASablinGpuOnAnotherBoardIsNotOffered) {
    Board(CUSTOM_ID_SABLIN, 0x5497);
    SnrQuery query = Query(kTemp, 2, 9);
    EXPECT_EQ(getSensorInfo(&query, 5, 1), 0);
    EXPECT_THAT(LogLines(), ElementsAre(BoardLine(0, "5497"), kNotRax));
}

TEST_F(SablinRename, OtherProfilesAreNotRenamed) {
    Board(CUSTOM_ID_DEFAULT, kRaxBoard);
    SnrQuery query = Query(0x1700, 2, 0, "GU05_Card_Status");
    EXPECT_EQ(getSensorInfo(&query, 5, 1), 16);
    EXPECT_EQ(Name(query), "GU05_Card_Status");
    EXPECT_EQ(sim::CountCalls("get_default_board_id"), 0u);
}

} // namespace
