// SPDX-License-Identifier: GPL-3.0-or-later
//
// The Default set's groups beside what all profiles do: their names and lines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "profiles/default_support.h"

namespace {

using namespace tests;
using testing::ElementsAre;

// ---- power supplies ---------------------------------------------------------------------------------------

TEST(DefaultPsus, SixRecordsEachThenTheGroups) {
    sim::Board board = BareBoard();
    board.psus = {.count = 1, .group_count = 2, .count_per_group = 1};
    EXPECT_THAT(GroupNames(RunPass(board)),
                ElementsAre("INPUT_VOLTS_01", "OUTPUT_VOLTS_01", "PSU_STATUS_01", "PSU_TEMP_01", "PSU_PIN_01",
                            "PSU_POUT_01", "PSU_REDUNDANT", "PSU_REDUNDANT_M"));
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for PSU Sensor: dwIndex = 1, ucCnt = 0!"}), 1u);
}

TEST(DefaultPsus, Above159ThePsuKeepsAllButItsStatus) {
    sim::Board board = BareBoard();
    board.psus.count = 160;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.CountName("PSU_STATUS_159"), 1u);
    EXPECT_EQ(outcome.CountName("PSU_STATUS_160"), 0u);
    for (const char *name :
         {"INPUT_VOLTS_160", "OUTPUT_VOLTS_160", "PSU_TEMP_160", "PSU_PIN_160", "PSU_POUT_160"}) {
        ASSERT_EQ(outcome.CountName(name), 1u) << name;
        EXPECT_EQ(outcome.Find(name)->sdr[9], 0x60) << name;
    }
}

TEST(DefaultPsus, ARefusedVoltageLeavesTheOthers) {
    sim::Board board = BareBoard();
    board.psus.count = 2;
    board.support.kinds = {{4, 0}};
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.count, kBare + 10);
    EXPECT_EQ(CountLine({'W', 42, "The board does not support adding sensor OUTPUT_VOLTS2."}), 1u);
}

// ---- memory -----------------------------------------------------------------------------------------------

TEST(DefaultMemory, TemperatureThenStatusOfEachDimm) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    EXPECT_THAT(GroupNames(RunPass(board)),
                ElementsAre("MEM_TEMP_A0", "MEM_STATUS_A0", "MEM_TEMP_B0", "MEM_STATUS_B0"));
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for Mem Status Sensor: ucDimmCnt = 2!"}), 1u);
}

TEST(DefaultMemory, ANameThatIsTooLongIsCutToSixteenCharacters) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 1, .names = {"CPU0_CHANNEL_A_SLOT_0"}};
    const Outcome outcome = RunPass(board);
    ASSERT_THAT(GroupNames(outcome), ElementsAre("MEM_TEMP_CPU0_CH", "MEM_STATUS_CPU0_"));
    EXPECT_EQ(outcome.records[0].sdr[4], 43 + 16);
    EXPECT_EQ(outcome.records[0].sdr[47], 0xD0);
    EXPECT_EQ(outcome.records[1].sdr[4], 27 + 16);
    EXPECT_EQ(outcome.records[1].sdr[31], 0xD0);
}

TEST(DefaultMemory, SimplifiedThereIsAGroupPerCpuAndNoStatus) {
    sim::Board board = BareBoard();
    board.sensor_simplification = true;
    board.dimms.count = 8;
    board.cpus.count = 2;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.CountName("DIMMG0_TEMP"), 1u);
    EXPECT_EQ(outcome.CountName("DIMMG1_TEMP"), 1u);
    EXPECT_EQ(outcome.count, kBare + 10 + 2);
    EXPECT_EQ(CountLine({'C', 130, "OXA_AddDefaultStaticSensor for dimm group: ucIndex = 0, ucCnt = 10!"}),
              1u);
    EXPECT_EQ(CountLine({'C', 130, "OXA_AddDefaultStaticSensor for dimm group: ucIndex = 1, ucCnt = 11!"}),
              1u);
    board.dimms.count = 0;
    EXPECT_EQ(RunPass(board).count, kBare + 10);
}

// ---- disks ------------------------------------------------------------------------------------------------

TEST(DefaultDisks, StatusThenTemperatureOfTheNvmeSlots) {
    const Outcome outcome = RunPass(DiskBoard());
    EXPECT_THAT(GroupNames(outcome), ElementsAre("HDD_STATUS_00", "HDD_STATUS_01", "NVME_TEMP_01",
                                                 "HDD_STATUS_20", "NVME_TEMP_99"));
    EXPECT_EQ(outcome.records[4].sdr[9], 20);
    EXPECT_EQ(CountLine({'I', 42,
                         "OXA_AddDefaultStaticSensor for Disk Sensor: hddBackPanelDevInfoList->count = 3"}),
              1u);
    EXPECT_EQ(
        CountLine({'I', 42,
                   "OXA_AddDefaultStaticSensor for Disk Sensor: backPanelIndex = 2, ucCnt = 3!,startslt "
                   "= 20, diskCnt = 1"}),
        1u);
}

// ---- cards ------------------------------------------------------------------------------------------------

TEST(DefaultOcp, TemperatureThenErrorWithTheRestoredSlotInItsEntry) {
    sim::Board board = BareBoard();
    board.ocp = {.count = 2, .present = 0, .restored = {{1, 44}}};
    const Outcome outcome = RunPass(board);
    EXPECT_THAT(GroupNames(outcome), ElementsAre("OCP_TEMP_01", "OCP_ERR_01", "OCP_TEMP_02", "OCP_ERR_02"));
    EXPECT_EQ(outcome.records[0].entry[3], 1);
    EXPECT_EQ(outcome.records[1].entry[3], 44);
    EXPECT_EQ(outcome.records[3].entry[3], 2);
    EXPECT_EQ(
        CountLine({'I', 42, "OXA_AddDefaultStaticSensor for OCP temp: ucIndex = 2, ucCnt = 2, ucOCPCnt:2!"}),
        1u);
}

} // namespace
