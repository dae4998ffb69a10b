// SPDX-License-Identifier: GPL-3.0-or-later
//
// The driver's groups of power supplies, memory, slots, fans, disks and cards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "profiles/default_support.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kInstanceWrap[] = "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n";

// ---- power supplies ---------------------------------------------------------------------------------------

TEST(DefaultPsus, SixRecordsEachThenTheGroups) {
    sim::Board board = BareBoard();
    board.psus = {.count = 1, .group_count = 2, .count_per_group = 1};
    EXPECT_THAT(GroupNames(RunPass(board)),
                ElementsAre("INPUT_VOLTS_01", "OUTPUT_VOLTS_01", "PSU_STATUS_01", "PSU_TEMP_01", "PSU_PIN_01",
                            "PSU_POUT_01", "PSU_REDUNDANT", "PSU_REDUNDANT_M"));
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for PSU Sensor: dwIndex = 1, ucCnt = 0!"}), 1u);
}

size_t RedundancyRecords(uint8_t psus, uint8_t groups, uint8_t per_group, const char *failing = nullptr) {
    sim::Board board = BareBoard();
    board.psus = {.count = psus, .group_count = groups, .count_per_group = per_group};
    sim::Start(board);
    if (failing != nullptr)
        sim::AddFault({.call = failing, .output = 1});
    const Outcome outcome = RunPass();
    return outcome.CountName("PSU_REDUNDANT") + 2 * outcome.CountName("PSU_REDUNDANT_M");
}

TEST(DefaultPsus, RedundancyNeedsOneOrTwoGroupsWithPsusInThem) {
    EXPECT_EQ(RedundancyRecords(2, 1, 2), 1u);
    EXPECT_EQ(RedundancyRecords(2, 2, 1), 3u);
    EXPECT_EQ(RedundancyRecords(2, 0, 2), 0u);
    EXPECT_EQ(RedundancyRecords(2, 3, 2), 0u);
    EXPECT_EQ(RedundancyRecords(2, 1, 0), 0u);
    EXPECT_EQ(RedundancyRecords(0, 1, 2), 0u);
    EXPECT_EQ(RedundancyRecords(2, 1, 2, "HAL_GetPsuGroupCount"), 0u);
    EXPECT_EQ(RedundancyRecords(2, 1, 2, "HAL_GetPsuCountPerGroup"), 0u);
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

TEST(DefaultMemory, ANameThatCannotBeHadDropsThatRecordAlone) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    for (const char *call : {"HAL_GetDimmDevInfoByDimmNum", "HAL_GetDimmSensorNameIndex"}) {
        SCOPED_TRACE(call);
        sim::Start(board);
        sim::AddFault({.call = call, .occurrence = 2});
        EXPECT_THAT(GroupNames(RunPass()), ElementsAre("MEM_TEMP_A0", "MEM_TEMP_B0", "MEM_STATUS_B0"));
        EXPECT_EQ(CountLine({'E', 42, "Get mem sensor name index fail\n"}), 1u);
        EXPECT_THAT(sim::Violations(), IsEmpty());
        sim::Start(board);
        sim::AddFault({.call = call});
        EXPECT_THAT(GroupNames(RunPass()), IsEmpty());
        EXPECT_EQ(CountLine({'E', 42, "Get mem sensor name index fail\n"}), 4u); // once per record
    }
}

TEST(DefaultMemory, ADimmAbove159IsDropped) {
    sim::Board board = BareBoard();
    board.dimms.count = 161;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.count, kBare + 320);
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 2u);
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

TEST(DefaultMemory, OnlyAFlagOfOneSimplifies) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 1, .names = {"A0"}};
    sim::Start(board);
    sim::AddFault({.call = "HAL_IsNeedSensorSimplification", .output = 2, .succeed = true});
    EXPECT_THAT(GroupNames(RunPass()), ElementsAre("MEM_TEMP_A0", "MEM_STATUS_A0"));
}

// ---- slots and fans ---------------------------------------------------------------------------------------

TEST(DefaultPcie, AnIndexWithoutSlotIsToldAndPassedOver) {
    sim::Board board = BareBoard();
    board.pcie.slots = {{.slot = 3}, {.slot = 4, .present = false}, {.slot = 160}, {.slot = 159}};
    const Outcome outcome = RunPass(board);
    EXPECT_THAT(GroupNames(outcome), ElementsAre("PCIE_STATUS_03", "PCIE_STATUS_159"));
    EXPECT_EQ(sim::CountText("OXA_AddDefaultStaticSensor for Pcie Status Sensor failed! ucIndex = 2!"), 1u);
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for Pcie Status Sensor ucPcieCnt = 4!"}), 1u);
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 1u);
}

TEST(DefaultFans, PrintedNumbersInstancesAndTheFanThatIsLeftOut) {
    sim::Board board = BareBoard();
    board.fans = {.count = 5, .silk = {0, 0xFF, 159, 160, 7}};
    const Outcome outcome = RunPass(board);
    EXPECT_THAT(GroupNames(outcome), ElementsAre("FAN_STATUS_00", "FAN_STATUS_159", "FAN_STATUS_07"));
    EXPECT_EQ(outcome.records[1].sdr[9], 0xFF);
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 1u);
}

TEST(DefaultFans, AnUnreadableNumberSkipsTheFan) {
    sim::Board board = BareBoard();
    board.fans.count = 2;
    sim::Start(board);
    sim::AddFault({.call = "HalFanService.GetFanSilkByIndex", .occurrence = 1, .result = 4});
    EXPECT_THAT(GroupNames(RunPass()), ElementsAre("FAN_STATUS_02"));
    EXPECT_EQ(sim::CountText("Default_GetFanSilkByIndexByHal FanIndex[0] failed,result:4!"), 1u);
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST(DefaultFans, WithoutServiceAtTheCountThereAreNone) {
    sim::Board board = BareBoard();
    board.fans = {.service = false, .count = 2};
    EXPECT_EQ(RunPass(board).count, kBare);
    EXPECT_EQ(CountLine({'E', 255, "assertion failed: halFan != 0"}), 1u);
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST(DefaultFans, WithoutServiceLaterEveryFanIsBuiltWithNumberZero) {
    sim::Board board = BareBoard();
    board.fans = {.count = 3, .silk = {4, 5, 6}};
    sim::Start(board);
    sim::AddFault({.call = "HalFanInst", .occurrence = 2, .from_then_on = true, .null_object = true});
    const Outcome outcome = RunPass();
    EXPECT_THAT(GroupNames(outcome), ElementsAre("FAN_STATUS_00", "FAN_STATUS_00", "FAN_STATUS_00"));
    EXPECT_EQ(outcome.records[0].sdr[9], 0x60);
    EXPECT_EQ(CountLine({'E', 255, "assertion failed: halFan != 0"}), 3u);
    EXPECT_THAT(sim::Violations(), IsEmpty());
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

TEST(DefaultDisks, AGroupPerBackplaneWithDisksAfterItsSlots) {
    sim::Board board = DiskBoard();
    board.sensor_simplification = true;
    EXPECT_THAT(GroupNames(RunPass(board)),
                ElementsAre("HDD_STATUS_00", "HDD_STATUS_01", "NVME_TEMP_01", "DISKG0_TEMP", "HDD_STATUS_20",
                            "NVME_TEMP_99", "DISKG2_TEMP"));
}

TEST(DefaultDisks, NoneWithoutThePathChoiceTheServiceOrTheList) {
    sim::Board board = DiskBoard();
    board.disks.enabled = false;
    EXPECT_EQ(RunPass(board).count, kBare);
    EXPECT_EQ(sim::CountCalls("HalHddBackpanelInst"), 0u);
    board.disks.enabled = true;
    RunPass(BareBoard());
    const auto lines_without_disks = Lines();
    board.disks.service = false;
    EXPECT_EQ(RunPass(board).count, kBare);
    // without a list even the line with its count is missing
    EXPECT_EQ(Lines().size(), lines_without_disks.size() - 1);
    sim::Start(DiskBoard());
    sim::AddFault({.call = "HalHddBackpanelService.GetBackPanelList"});
    EXPECT_EQ(RunPass().count, kBare);
    EXPECT_EQ(Lines().size(), lines_without_disks.size() - 1);
}

TEST(DefaultDisks, AnyOtherPathChoiceThanOneLeavesThemOut) {
    sim::Start(DiskBoard());
    sim::AddFault({.call = "FruSdrInitPathChoice", .result = 2, .succeed = true});
    EXPECT_EQ(RunPass().count, kBare);
}

TEST(DefaultDisks, AtMost32BackplanesAreWalked) {
    sim::Board board = BareBoard();
    for (uint8_t i = 0; i < 32; ++i)
        board.disks.backplanes.push_back({i, 1, "Front"});
    board.disks.reported_count = 1000;
    EXPECT_EQ(RunPass(board).count, kBare + 32);
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST(DefaultDisks, AnUnansweredNvmeQuestionIsAnErrorAndMeansNo) {
    sim::Start(DiskBoard());
    sim::AddFault({.call = "HalHddBackpanelService.CheckHddIsSupportNvme", .result = 6, .output = 1});
    EXPECT_THAT(GroupNames(RunPass()), ElementsAre("HDD_STATUS_00", "HDD_STATUS_01", "HDD_STATUS_20"));
    EXPECT_EQ(CountLine({'E', 42, "Quorral_CheckHddIsSupportNvmeByHal failed, slot:20, result:6!"}), 1u);
    EXPECT_THAT(sim::Violations(), IsEmpty());
    EXPECT_EQ(FunctionOf("Quorral_CheckHddIsSupportNvmeByHal failed, slot:20, result:6!"),
              "Default_CheckHddIsSupportNvmeByHal_");
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

TEST(DefaultOcp, TheErrorRecordStaysWhenTheTemperatureIsDropped) {
    sim::Board board = BareBoard();
    board.ocp.count = 161;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.Find("OCP_TEMP_159")->sdr[9], 0xFF);
    EXPECT_EQ(outcome.Find("OCP_ERR_159")->sdr[9], 0xFF);
    EXPECT_EQ(outcome.CountName("OCP_TEMP_160"), 0u);
    EXPECT_EQ(outcome.CountName("OCP_TEMP_161"), 0u);
    ASSERT_EQ(outcome.CountName("OCP_ERR_161"), 1u);
    EXPECT_EQ(outcome.Find("OCP_ERR_161")->sdr[9], 0x60);
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 2u);
    EXPECT_EQ(sim::CountCalls("RestoreOcpSlot"), 161u);
}

} // namespace
