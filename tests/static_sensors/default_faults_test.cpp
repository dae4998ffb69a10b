// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every platform call of a pass failing alone, each with its exact outcome: the records that stay, and every
// line; and every call from the k-th on failing together, which must do no harm.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "static_sensors/default_faults_expect.h"
#ifdef OXA_BOARD_FILES
#include "support/boards.h"
#include "support/build_facts.h"
#endif

namespace {

using namespace tests;
using testing::IsEmpty;

// A board with one or two of everything: every group has records.
sim::Board OneOfEach() {
    sim::Board board = BaseBoard();
    board.board_id = 0x550F;
    board.liquid_cooling_mode = 1;
    board.cdu_enable = 1;
    board.cpus.type = 3;
    board.cpus.reduce_flag = 1; // all CPUs are online
    board.psus = {.count = 2, .group_count = 2, .count_per_group = 1};
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    board.pcie.slots = {{.slot = 2}, {.slot = 5}};
    board.fans.count = 2;
    board.disks.backplanes = {{0, 2, "Front"}, {8, 1, "Rear"}};
    board.disks.nvme_slots = {1, 8};
    board.ocp.count = 1;
    board.switch_board.supported = true;
    board.switch_board.cards[2] = {true, 0x5510};
    return board;
}

sim::Board Simplified() {
    sim::Board board = OneOfEach();
    board.cpus.type = 1;
    board.sensor_simplification = true;
    board.switch_board.cards[2] = {true, 0x5517};
    return board;
}

sim::Board InletAndOutlet() {
    sim::Board board = BaseBoard();
    board.board_id = 0x5502;
    board.cpus.count = 1;
    board.psus.count = 0;
    board.switch_board.supported = true;
    board.switch_board.cards[2] = {true, 0x5504};
    return board;
}

std::vector<Line> Sorted(std::vector<Line> lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::vector<Line> Without(const std::vector<Line> &lines, std::vector<Line> others) {
    std::vector<Line> rest;
    others = Sorted(others);
    std::set_difference(lines.begin(), lines.end(), others.begin(), others.end(), std::back_inserter(rest));
    return rest;
}

// Fails one call and judges the pass.
void FailOne(const CleanPass &clean, size_t k) {
    const FailableCall &call = clean.calls[k - 1];
    SCOPED_TRACE("call " + std::to_string(k) + ": " + call.name + "(" + call.args + ") no. " +
                 std::to_string(call.occurrence) + ", record " + std::to_string(call.record));
    const Expectation expected = Expect(clean, call);
    ASSERT_TRUE(expected.known) << "no rule for this call";

    std::vector<Record> records = clean.outcome.records;
    std::vector<Line> lines = clean.lines;
    if (expected.like) {
        sim::Board board = clean.board;
        expected.like(board);
        records = RunPass(board).records;
        lines = ComparableLines();
    }
    for (const auto &[at, record] : expected.changed)
        records[at] = record;
    for (size_t i = expected.missing.size(); i-- > 0;) {
        ASSERT_LT(expected.missing[i], records.size());
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(expected.missing[i]));
    }

    sim::Start(clean.board);
    std::filesystem::remove(sim::RealPath(kStorePath));
    sim::FailCall(k);
    const Outcome outcome = RunPass();
    ASSERT_TRUE(sim::FaultWasHit());
    EXPECT_THAT(sim::Violations(), IsEmpty());
    EXPECT_EQ(outcome.written, expected.written);
    if (!expected.written) {
        EXPECT_EQ(outcome.count, kCallersCount);
        EXPECT_THAT(outcome.records, IsEmpty());
        EXPECT_EQ(ComparableLines(), Sorted(expected.more));
        return;
    }
    EXPECT_EQ(outcome.count, records.size());
    EXPECT_TRUE(SameRecords(records, outcome.records));
    const std::vector<Line> ours = ComparableLines();
    const std::vector<Line> wanted_base = Without(lines, expected.fewer);
    ASSERT_EQ(wanted_base.size() + expected.fewer.size(), lines.size())
        << "a line that should go was never there";
    EXPECT_EQ(Without(ours, wanted_base), Sorted(expected.more)) << "lines that come";
    EXPECT_THAT(Without(wanted_base, ours), IsEmpty()) << "lines that go";
}

constexpr size_t kShards = 4;
class EveryCallOfDefaultFailing : public testing::TestWithParam<std::tuple<std::string, size_t>> {};

sim::Board MakeBoard(const std::string &name) {
    return name == "OneOfEach" ? OneOfEach() : name == "Simplified" ? Simplified() : InletAndOutlet();
}

TEST_P(EveryCallOfDefaultFailing, AloneHasItsExactOutcome) {
    const auto [board, shard] = GetParam();
    const CleanPass clean = RunCleanPass(MakeBoard(board));
    ASSERT_EQ(clean.calls.size(), sim::FailableCalls());
    for (size_t k = 1 + shard; k <= clean.calls.size(); k += kShards * tests::SweepStep()) {
        FailOne(clean, k);
        if (HasFatalFailure())
            return;
    }
}

TEST_P(EveryCallOfDefaultFailing, FromThenOnDoesNoHarm) {
    const auto [board, shard] = GetParam();
    const CleanPass clean = RunCleanPass(MakeBoard(board));
    for (size_t k = 1 + shard; k <= clean.calls.size(); k += kShards * tests::SweepStep()) {
        SCOPED_TRACE("from call " + std::to_string(k) + ": " + clean.calls[k - 1].name);
        sim::Start(clean.board);
        std::filesystem::remove(sim::RealPath(kStorePath));
        sim::FailCall(k, true);
        const Outcome outcome = RunPass();
        EXPECT_THAT(sim::Violations(), IsEmpty());
        // What was finished before is there.
        const FailableCall &call = clean.calls[k - 1];
        const size_t finished = call.record == 0 ? 0 : call.record - 1;
        ASSERT_GE(outcome.records.size(), outcome.written ? finished : 0);
        for (size_t i = 0; i < std::min(finished, outcome.records.size()); ++i)
            ASSERT_TRUE(SameRecord(clean.outcome.records[i], outcome.records[i]));
    }
}

std::string ShardName(const testing::TestParamInfo<std::tuple<std::string, size_t>> &info) {
    return std::get<0>(info.param) + std::to_string(std::get<1>(info.param));
}
INSTANTIATE_TEST_SUITE_P(Boards, EveryCallOfDefaultFailing,
                         testing::Combine(testing::Values<std::string>("OneOfEach", "Simplified",
                                                                       "InletAndOutlet"),
                                          testing::Range<size_t>(0, kShards)),
                         ShardName);

#ifdef OXA_BOARD_FILES
#ifdef OXA_WHOLE_SWEEP
// The calls of the biggest board's pass, one after the other: some ten thousand passes when it is all of them, in shares.
constexpr size_t kSweepShards = 12;
class EveryCallFailingOnTheFullestBoard : public testing::TestWithParam<size_t> {};

TEST_P(EveryCallFailingOnTheFullestBoard, AloneHasItsExactOutcome) {
    const CleanPass clean = RunCleanPass(LoadBoard("fullest"));
    ASSERT_EQ(clean.calls.size(), sim::FailableCalls());
    for (size_t k = 1 + GetParam(); k <= clean.calls.size(); k += kSweepShards * tests::LongSweepStep()) {
        FailOne(clean, k);
        if (HasFatalFailure())
            return;
    }
}
INSTANTIATE_TEST_SUITE_P(Shards, EveryCallFailingOnTheFullestBoard, testing::Range(size_t{0}, kSweepShards));
#endif

constexpr size_t kSlowest = 100; // the step where a pass takes seconds

// On the biggest board the same rules hold wherever in the pass a call fails: the first two, the middle and
// the last call of every function.
TEST(EveryFunctionFailingOnTheFullestBoard, HasItsExactOutcome) {
    const CleanPass clean = RunCleanPass(LoadBoard("fullest"));
    ASSERT_EQ(clean.calls.size(), sim::FailableCalls());
    std::map<std::string, std::vector<size_t>> by_name;
    for (size_t k = 1; k <= clean.calls.size(); ++k)
        by_name[clean.calls[k - 1].name].push_back(k);
    for (const auto &[name, calls] : by_name) {
        std::vector<size_t> some = {calls.front()};
        if (tests::SweepStep() < kSlowest)
            some.insert(some.end(), {calls[std::min<size_t>(1, calls.size() - 1)], calls[calls.size() / 2],
                                     calls.back()});
        std::sort(some.begin(), some.end());
        some.erase(std::unique(some.begin(), some.end()), some.end());
        for (size_t k : some) {
            FailOne(clean, k);
            if (HasFatalFailure())
                return;
        }
    }
}
#endif

} // namespace
