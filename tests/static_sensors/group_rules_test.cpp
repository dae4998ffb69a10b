// SPDX-License-Identifier: GPL-3.0-or-later
//
// The groups of processors, power supplies, memory, slots, fans, disks and cards, which all profiles build alike and name
// each in its own way: records are told by the code and the item of their entries.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

struct Kind {
    uint8_t code;
    uint8_t item;
};
constexpr Kind kCpuTemperature = {0x49, 1}, kCpuStatus = {0x4D, 1}, kRedundancy = {0x53, 2},
               kDimmTemperature = {0x4E, 1}, kDimmGroup = {0x4E, 2}, kDimmStatus = {0xA9, 0},
               kSlot = {0x57, 0}, kFan = {0x54, 1}, kDisk = {0xF0, 0}, kNvme = {0xF2, 0},
               kDiskGroup = {0x56, 1}, kCardTemperature = {0xCD, 0}, kCardError = {0xAA, 0};

class EveryGroup : public testing::TestWithParam<Profile> {
protected:
    Outcome Pass(const sim::Board &board) const {
        return RunPass(GetParam().driver, board);
    }
    Outcome PassAsItStands() const {
        return RunPass(GetParam().driver);
    }
    size_t Wraps() const {
        return CountLine({'C', 130, "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n"});
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Profiles, EveryGroup, testing::ValuesIn(Profiles()), ProfileName);

std::vector<Record> Of(const Outcome &outcome, Kind kind) {
    std::vector<Record> records;
    for (const Record &record : outcome.records)
        if (record.entry[0] == kind.code && record.entry[1] == kind.item)
            records.push_back(record);
    return records;
}
std::vector<int> Indexes(const Outcome &outcome, Kind kind) { // byte 3 of the entries
    std::vector<int> indexes;
    for (const Record &record : Of(outcome, kind))
        indexes.push_back(record.entry[3]);
    return indexes;
}

// ---- processors -------------------------------------------------------------------------------------------

TEST_P(EveryGroup, CpuInstancesStartAtZeroWhateverTheSilkStart) {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 5;
    const Outcome outcome = Pass(board);
    EXPECT_THAT(Indexes(outcome, kCpuTemperature), ElementsAre(0, 1));
    EXPECT_THAT(Indexes(outcome, kCpuStatus), ElementsAre(0, 1));
    EXPECT_EQ(Of(outcome, kCpuTemperature)[1].sdr[9], 0x61);
}

TEST_P(EveryGroup, AnEmptySocketGetsItsSensorsUnlessTheReduceFlagIsSet) {
    sim::Board board = BaseBoard();
    board.cpus.online = {true, false};
    EXPECT_THAT(Indexes(Pass(board), kCpuTemperature), ElementsAre(0, 1));
    EXPECT_EQ(sim::CountCalls("HAL_GetCpuOnlineStatus"), 0u);
    board.cpus.reduce_flag = 1;
    EXPECT_THAT(Indexes(Pass(board), kCpuTemperature), ElementsAre(0));
    EXPECT_EQ(CountLine({'I', 42, "OXA_CheckifAddCpuSensorByIndex CPU 1 is offline"}), 1u);
}

TEST_P(EveryGroup, VoltageDomainsNeedCpuTypeThreeAndTheirCpu) {
    sim::Board board = BaseBoard();
    const auto domains = [&] {
        const Outcome outcome = Pass(board);
        std::vector<int> items;
        for (const Record &record : outcome.records)
            if (record.entry[0] == 0x4C)
                items.push_back(record.entry[1]);
        return items;
    };
    const bool has = GetParam().name != "Ferrisk";
    EXPECT_THAT(domains(), IsEmpty());
    board.cpus.type = 3;
    EXPECT_EQ(domains(), has ? (std::vector<int>{1, 2, 3, 4}) : std::vector<int>{});
    board.cpus.count = 1; // the second pair is built all the same
    EXPECT_EQ(domains(), has ? (std::vector<int>{1, 2, 3, 4}) : std::vector<int>{});
    board.cpus.count = 2;
    board.cpus.reduce_flag = 1;
    board.cpus.online = {false, true};
    EXPECT_EQ(domains(), has ? (std::vector<int>{3, 4}) : std::vector<int>{});
}

// ---- power supplies ---------------------------------------------------------------------------------------

TEST_P(EveryGroup, RedundancyNeedsOneOrTwoGroupsWithPsusInThem) {
    const struct {
        uint8_t psus, groups, per_group;
        std::vector<int> wanted;
    } cases[] = {{2, 1, 2, {0}}, {2, 2, 1, {0, 1}}, {2, 0, 2, {}},
                 {2, 3, 2, {}},  {2, 1, 0, {}},     {0, 1, 2, {}}};
    sim::Board board = BareBoard();
    for (const auto &c : cases) {
        board.psus = {.count = c.psus, .group_count = c.groups, .count_per_group = c.per_group};
        EXPECT_EQ(Indexes(Pass(board), kRedundancy), c.wanted) << +c.psus << +c.groups << +c.per_group;
    }
    board.psus = {.count = 2, .group_count = 1, .count_per_group = 2};
    for (const char *call : {"HAL_GetPsuGroupCount", "HAL_GetPsuCountPerGroup"}) {
        sim::Start(board);
        sim::AddFault({.call = call, .output = 1});
        EXPECT_THAT(Of(PassAsItStands(), kRedundancy), IsEmpty()) << call;
    }
}

// ---- memory -----------------------------------------------------------------------------------------------

sim::Board TwoDimms() {
    sim::Board board = BareBoard();
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    return board;
}

TEST_P(EveryGroup, AMemoryNameThatIsTooLongIsCutToSixteenCharacters) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 1, .names = {"CPU0_CHANNEL_A_SLOT_0"}};
    const Outcome outcome = Pass(board);
    const auto temperatures = Of(outcome, kDimmTemperature), states = Of(outcome, kDimmStatus);
    ASSERT_EQ(temperatures.size(), 1u);
    ASSERT_EQ(states.size(), 1u);
    EXPECT_EQ(temperatures[0].sdr[4], 43 + 16);
    EXPECT_EQ(temperatures[0].sdr[47], 0xD0);
    EXPECT_EQ(states[0].sdr[4], 27 + 16);
    EXPECT_EQ(states[0].sdr[31], 0xD0);
}

TEST_P(EveryGroup, AMemoryNameThatCannotBeHadDropsThatRecordAlone) {
    for (const char *call : {"HAL_GetDimmDevInfoByDimmNum", "HAL_GetDimmSensorNameIndex"}) {
        SCOPED_TRACE(call);
        sim::Start(TwoDimms());
        sim::AddFault({.call = call, .occurrence = 2});
        const Outcome one = PassAsItStands();
        EXPECT_THAT(Indexes(one, kDimmTemperature), ElementsAre(0, 1));
        EXPECT_THAT(Indexes(one, kDimmStatus), ElementsAre(1));
        EXPECT_EQ(CountLine({'E', 42, "Get mem sensor name index fail\n"}), 1u);
        sim::Start(TwoDimms());
        sim::AddFault({.call = call});
        const Outcome none = PassAsItStands();
        EXPECT_THAT(Of(none, kDimmTemperature), IsEmpty());
        EXPECT_THAT(Of(none, kDimmStatus), IsEmpty());
        EXPECT_EQ(CountLine({'E', 42, "Get mem sensor name index fail\n"}), 4u); // once per record
    }
}

TEST_P(EveryGroup, ADimmAbove159IsDropped) {
    sim::Board board = BareBoard();
    const size_t bare = Pass(board).count;
    board.dimms.count = 161;
    EXPECT_EQ(Pass(board).count, bare + 320);
    EXPECT_EQ(Wraps(), 2u);
}

TEST_P(EveryGroup, SimplifiedThereIsAMemoryGroupPerCpuAndNoStatus) {
    sim::Board board = BareBoard();
    board.sensor_simplification = true;
    board.dimms.count = 8;
    board.cpus.count = 2;
    const Outcome outcome = Pass(board);
    EXPECT_THAT(Indexes(outcome, kDimmGroup), ElementsAre(0, 1));
    EXPECT_THAT(Of(outcome, kDimmTemperature), IsEmpty());
    EXPECT_THAT(Of(outcome, kDimmStatus), IsEmpty());
    board.dimms.count = 0;
    EXPECT_THAT(Of(Pass(board), kDimmGroup), IsEmpty());
}

TEST_P(EveryGroup, OnlyAFlagOfOneSimplifies) {
    sim::Start(TwoDimms());
    sim::AddFault({.call = "HAL_IsNeedSensorSimplification", .output = 2, .succeed = true});
    EXPECT_THAT(Indexes(PassAsItStands(), kDimmTemperature), ElementsAre(0, 1));
}

// ---- slots and fans ---------------------------------------------------------------------------------------

TEST_P(EveryGroup, APcieIndexWithoutSlotIsToldAndPassedOver) {
    sim::Board board = BareBoard();
    board.pcie.slots = {{.slot = 3}, {.slot = 4, .present = false}, {.slot = 160}, {.slot = 159}};
    const Outcome outcome = Pass(board);
    const size_t one = GetParam().pcie ? 1 : 0;
    EXPECT_EQ(Indexes(outcome, kSlot), GetParam().pcie ? (std::vector<int>{3, 159}) : std::vector<int>{});
    EXPECT_EQ(sim::CountText(GetParam().DriverName() + " for Pcie Status Sensor failed! ucIndex = 2!"), one);
    EXPECT_EQ(CountLine({'I', 42, GetParam().DriverName() + " for Pcie Status Sensor ucPcieCnt = 4!"}), one);
    EXPECT_EQ(Wraps(), one);
}

TEST_P(EveryGroup, FansStandByTheirPrintedNumberAndFfhIsLeftOut) {
    sim::Board board = BareBoard();
    board.fans = {.count = 5, .silk = {0, 0xFF, 159, 160, 7}};
    const Outcome outcome = Pass(board);
    EXPECT_EQ(Indexes(outcome, kFan), GetParam().fans ? (std::vector<int>{0, 159, 7}) : std::vector<int>{});
    EXPECT_EQ(Wraps(), GetParam().fans ? 1u : 0u);
    EXPECT_TRUE(!GetParam().fans || Of(outcome, kFan)[1].sdr[9] == 0xFF);
}

TEST_P(EveryGroup, AnUnreadableNumberSkipsTheFan) {
    sim::Board board = BareBoard();
    board.fans.count = 2;
    sim::Start(board);
    sim::AddFault({.call = "HalFanService.GetFanSilkByIndex", .occurrence = 1, .result = 4});
    EXPECT_EQ(Indexes(PassAsItStands(), kFan), GetParam().fans ? std::vector<int>{2} : std::vector<int>{});
    EXPECT_EQ(sim::CountText(GetParam().name + "_GetFanSilkByIndexByHal FanIndex[0] failed,result:4!"),
              GetParam().fans ? 1u : 0u);
}

TEST_P(EveryGroup, WithoutServiceAtTheCountThereAreNoFans) {
    const Outcome bare = Pass(BareBoard());
    sim::Board board = BareBoard();
    board.fans = {.service = false, .count = 2};
    EXPECT_TRUE(SameRecords(bare.records, Pass(board).records));
    EXPECT_EQ(CountLine({'E', 255, "assertion failed: halFan != 0"}), 1u);
}

// ---- disks ------------------------------------------------------------------------------------------------

sim::Board ThreeBackplanes() {
    sim::Board board = BareBoard();
    board.disks.backplanes = {{0, 2, "Front"}, {10, 0, "Rear"}, {20, 1, "Rear"}};
    board.disks.nvme_slots = {1, 20};
    return board;
}

TEST_P(EveryGroup, DisksComeSlotBySlotAndTheirGroupsBehind) {
    sim::Board board = ThreeBackplanes();
    Outcome outcome = Pass(board);
    EXPECT_THAT(Indexes(outcome, kDisk), ElementsAre(0, 1, 20));
    EXPECT_THAT(Indexes(outcome, kNvme), ElementsAre(1, 20));
    EXPECT_THAT(Of(outcome, kDiskGroup), IsEmpty());
    board.sensor_simplification = true;
    outcome = Pass(board);
    EXPECT_THAT(Indexes(outcome, kDiskGroup), ElementsAre(0, 2)); // of the backplanes with disks
    std::vector<int> codes;
    for (const Record &record : outcome.records)
        if (record.entry[0] == 0xF0 || record.entry[0] == 0xF2 ||
            (record.entry[0] == 0x56 && record.entry[1] == 1))
            codes.push_back(record.entry[0]);
    EXPECT_THAT(codes, ElementsAre(0xF0, 0xF0, 0xF2, 0x56, 0xF0, 0xF2, 0x56));
}

TEST_P(EveryGroup, NoDisksWithoutThePathChoiceTheServiceOrTheList) {
    const Outcome bare = Pass(BareBoard());
    const size_t lines_without_disks = Lines().size();
    sim::Board board = ThreeBackplanes();
    board.disks.enabled = false;
    EXPECT_TRUE(SameRecords(bare.records, Pass(board).records));
    EXPECT_EQ(sim::CountCalls("HalHddBackpanelInst"), 0u);
    board.disks.enabled = true;
    board.disks.service = false;
    EXPECT_TRUE(SameRecords(bare.records, Pass(board).records));
    EXPECT_EQ(Lines().size(), lines_without_disks - 1); // even the line with the count of the list is missing
    sim::Start(ThreeBackplanes());
    sim::AddFault({.call = "HalHddBackpanelService.GetBackPanelList"});
    EXPECT_TRUE(SameRecords(bare.records, PassAsItStands().records));
    EXPECT_EQ(Lines().size(), lines_without_disks - 1);
}

TEST_P(EveryGroup, AnyOtherPathChoiceThanOneLeavesTheDisksOut) {
    sim::Start(ThreeBackplanes());
    sim::AddFault({.call = "FruSdrInitPathChoice", .result = 2, .succeed = true});
    EXPECT_THAT(Of(PassAsItStands(), kDisk), IsEmpty());
}

TEST_P(EveryGroup, AtMost32BackplanesAreWalked) {
    sim::Board board = BareBoard();
    for (uint8_t i = 0; i < 32; ++i)
        board.disks.backplanes.push_back({i, 1, "Front"});
    board.disks.reported_count = 1000;
    EXPECT_EQ(Of(Pass(board), kDisk).size(), 32u);
}

TEST_P(EveryGroup, AnUnansweredNvmeQuestionIsAnErrorAndMeansNo) {
    sim::Start(ThreeBackplanes());
    sim::AddFault({.call = "HalHddBackpanelService.CheckHddIsSupportNvme", .result = 6, .output = 1});
    const Outcome outcome = PassAsItStands();
    EXPECT_THAT(Indexes(outcome, kDisk), ElementsAre(0, 1, 20));
    EXPECT_THAT(Of(outcome, kNvme), IsEmpty());
    const std::string text = "Quorral_CheckHddIsSupportNvmeByHal failed, slot:20, result:6!";
    EXPECT_EQ(CountLine({'E', 42, text}), 1u); // one text for all
    EXPECT_EQ(FunctionOf(text), GetParam().name + "_CheckHddIsSupportNvmeByHal_");
}

// ---- cards ------------------------------------------------------------------------------------------------

TEST_P(EveryGroup, ACardsErrorStandsByItsRestoredSlot) {
    sim::Board board = BareBoard();
    board.ocp = {.count = 2, .present = 3, .restored = {{1, 44}}};
    const Outcome outcome = Pass(board);
    EXPECT_THAT(Indexes(outcome, kCardTemperature), ElementsAre(1, 2));
    EXPECT_THAT(Indexes(outcome, kCardError), ElementsAre(44, 2));
}

TEST_P(EveryGroup, ACardsErrorStaysWhenItsTemperatureIsDropped) {
    sim::Board board = BareBoard();
    board.ocp = {.count = 161, .present = 0xFFFFFFFF};
    const Outcome outcome = Pass(board);
    const auto temperatures = Of(outcome, kCardTemperature), errors = Of(outcome, kCardError);
    if (GetParam().name == "Ferrisk") { // it asks which cards are plugged, 32 at most
        EXPECT_EQ(temperatures.size(), 32u);
        EXPECT_EQ(errors.size(), 32u);
        return;
    }
    ASSERT_EQ(temperatures.size(), 159u);
    ASSERT_EQ(errors.size(), 161u);
    EXPECT_EQ(temperatures[158].sdr[9], 0xFF);
    EXPECT_EQ(errors[158].sdr[9], 0xFF);
    EXPECT_EQ(errors[160].sdr[9], 0x60);
    EXPECT_EQ(Wraps(), 2u);
    EXPECT_EQ(sim::CountCalls("RestoreOcpSlot"), 161u);
}

} // namespace
