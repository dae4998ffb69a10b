// SPDX-License-Identifier: GPL-3.0-or-later
//
// Service objects that are there but lack an operation, asked in the middle of a pass; a list of backplanes that the
// platform writes only in part; a first socket that is empty.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

class EveryService : public testing::TestWithParam<Profile> {
protected:
    Outcome Pass(const sim::Board &board) const {
        return RunPass(GetParam().driver, board);
    }
    // From the n-th time on that it is asked for, the service has no operation.
    Outcome PassWithout(const sim::Board &board, const char *service, uint32_t nth) const {
        sim::Start(board);
        sim::AddFault({.call = service, .occurrence = nth, .from_then_on = true, .null_operation = true});
        return RunPass(GetParam().driver);
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Profiles, EveryService, testing::ValuesIn(Profiles()), ProfileName);

// Byte 3 of the entries of one device code and item.
std::vector<int> Indexes(const Outcome &outcome, uint8_t code, uint8_t item) {
    std::vector<int> indexes;
    for (const Record &record : outcome.records)
        if (record.entry[0] == code && record.entry[1] == item)
            indexes.push_back(record.entry[3]);
    return indexes;
}
std::vector<int> Fans(const Outcome &outcome) {
    return Indexes(outcome, 0x54, 1);
}
std::vector<int> Disks(const Outcome &outcome) {
    return Indexes(outcome, 0xF0, 0);
}
std::vector<int> NvmeDisks(const Outcome &outcome) {
    return Indexes(outcome, 0xF2, 0);
}

sim::Board TwoFans() {
    sim::Board board = BareBoard();
    board.fans = {.count = 2};
    return board;
}
sim::Board TwoBackplanes() {
    sim::Board board = BareBoard();
    board.disks.backplanes = {{4, 2, "Front"}, {8, 1, "Rear"}};
    board.disks.nvme_slots = {4, 8};
    return board;
}

TEST_P(EveryService, WithoutTheOperationThatCountsThereAreNoFans) {
    EXPECT_THAT(Fans(PassWithout(TwoFans(), "HalFanInst", 1)), IsEmpty());
    const std::string text = "Get fan max count failed, result:4294967295!";
    EXPECT_EQ(CountLine({'E', 42, text}), 1u);
    EXPECT_EQ(FunctionOf(text), GetParam().name + "_GetFanMaxCountByHal_");
}

TEST_P(EveryService, WithoutTheOperationThatNumbersThemFansAreLeftOut) {
    EXPECT_EQ(Fans(Pass(TwoFans())).size(), GetParam().fans ? 2u : 0u);
    EXPECT_THAT(Fans(PassWithout(TwoFans(), "HalFanInst", 2)), IsEmpty());
    const std::string who = GetParam().name + "_GetFanSilkByIndexByHal";
    for (const char *fan : {"0", "1"})
        EXPECT_EQ(CountLine({'W', 255, who + " FanIndex[" + fan + "] failed,result:4294967295!"}),
                  GetParam().fans ? 1u : 0u);
}

TEST_P(EveryService, WithoutTheOperationThatListsBackplanesThereAreNoDisks) {
    EXPECT_THAT(Disks(PassWithout(TwoBackplanes(), "HalHddBackpanelInst", 1)), IsEmpty());
}

TEST_P(EveryService, WithoutTheOperationThatTellsThemApartNoDiskIsAnNvmeDisk) {
    const Outcome outcome = PassWithout(TwoBackplanes(), "HalHddBackpanelInst", 2);
    EXPECT_THAT(Disks(outcome), ElementsAre(4, 5, 8));
    EXPECT_THAT(NvmeDisks(outcome), IsEmpty());
    for (const char *slot : {"4", "5", "8"})
        EXPECT_EQ(CountLine({'E', 42,
                             std::string("Quorral_CheckHddIsSupportNvmeByHal failed, slot:") + slot +
                                 ", result:4294967295!"}),
                  1u);
}

TEST_P(EveryService, WithoutTheOperationOfTheReduceFlagEverySocketCountsAsTaken) {
    sim::Board board = BaseBoard();
    board.cpus.reduce_flag = 1;
    board.cpus.online = {true, false};
    EXPECT_THAT(Indexes(PassWithout(board, "HalCpuInst", 1), 0x49, 1), ElementsAre(0, 1));
    EXPECT_EQ(CountLine({'W', 255, "HalCpuInst()->GetCpuReduceFlag(&message) = [FFFFFFFF]"}), 2u);
}

TEST_P(EveryService, AnEmptyFirstSocketLeavesTheSecondItsNumber) {
    sim::Board board = BaseBoard();
    board.cpus.reduce_flag = 1;
    board.cpus.online = {false, true};
    EXPECT_THAT(Indexes(Pass(board), 0x49, 1), ElementsAre(1)); // temperature
    EXPECT_EQ(CountLine({'I', 42, "OXA_CheckifAddCpuSensorByIndex CPU 0 is offline"}), 1u);
}

// The count says two, and what stands behind the first backplane is what the library has put there: no disks.
TEST_P(EveryService, ABackplaneThatIsCountedButNotWrittenHasNoDisks) {
    sim::Board board = TwoBackplanes();
    board.disks.written_bytes = 4 + 34;
    const Outcome outcome = Pass(board);
    EXPECT_THAT(Disks(outcome), ElementsAre(4, 5));
    EXPECT_THAT(NvmeDisks(outcome), ElementsAre(4));
    EXPECT_EQ(CountLine({'I', 42,
                         GetParam().DriverName() + " for Disk Sensor: hddBackPanelDevInfoList->count = 2"}),
              1u);
}

TEST_P(EveryService, AListOfWhichNothingIsWrittenHasNoBackplanes) {
    sim::Board board = TwoBackplanes();
    board.disks.written_bytes = 0;
    EXPECT_THAT(Disks(Pass(board)), IsEmpty());
}

} // namespace
