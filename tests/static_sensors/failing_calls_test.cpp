// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every platform call of a pass failing, alone and from then on, for each of the nine profiles: no harm is done,
// no record is half written, and what was finished before stays byte for byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "support/build_facts.h"
#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::IsEmpty;

// One or two of everything, so that every group has records.
sim::Board MiddleBoard(int variant) {
    sim::Board board = BaseBoard();
    board.board_id = 0x550F;
    board.liquid_cooling_mode = 1;
    board.cdu_enable = 1;
    board.cpus = {.count = 2, .silk_start = 1, .type = 3, .reduce_flag = 1};
    board.psus = {.count = 2, .group_count = 2, .count_per_group = 1};
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    board.pcie.slots = {{.slot = 2}, {.slot = 5}};
    board.fans.count = 2;
    board.disks.backplanes = {{0, 2, "Front"}, {8, 1, "Rear"}};
    board.disks.nvme_slots = {1, 8};
    board.disks.silk = {{1, 21}};
    board.ocp = {.count = 2, .present = 3};
    board.switch_board.supported = true;
    board.switch_board.chip_temp_count = 2;
    board.switch_board.sensors_valid = 1;
    board.switch_board.cards[2] = {true, 0x5510};
    if (variant == 1) { // the other halves
        board.cpus.type = 1;
        board.board_id = 0x5502;
        board.sensor_simplification = true;
        board.switch_board.cards[2] = {true, 0x5504};
    }
    if (variant == 2)
        board.board_id = 0x5605;
    return board;
}

constexpr size_t kShards = 2;
class EveryCallFailing : public testing::TestWithParam<std::tuple<Profile, int, size_t>> {};

struct Sweep {
    sim::Board board;
    Outcome clean;
    uint64_t calls = 0;
};
Sweep Clean(const Profile &profile, int variant) {
    Sweep sweep;
    sweep.board = MiddleBoard(variant);
    sweep.clean = RunPass(profile.driver, sweep.board);
    sweep.calls = sim::FailableCalls();
    return sweep;
}

// A record that is there at all is whole.
void ExpectWhole(const Record &record) {
    const bool full = record.sdr[3] == 1;
    ASSERT_TRUE(full || record.sdr[3] == 2);
    const size_t at = full ? 47 : 31;
    const size_t length = record.sdr[at] & 0x3F;
    EXPECT_EQ(record.sdr[at], 0xC0 + length);
    EXPECT_LE(length, 16u);
    EXPECT_GE(length, 1u);
    EXPECT_EQ(record.sdr[4], (full ? 43 : 27) + length);
    for (size_t i = 0; i < 16; ++i) {
        if (i < length)
            EXPECT_TRUE(std::isprint(record.sdr[at + 1 + i])) << i;
        else
            EXPECT_EQ(record.sdr[at + 1 + i], 0xFF) << i;
    }
    EXPECT_EQ(record.entry[21], record.sdr[8]);
    EXPECT_EQ(record.entry[22], record.sdr[9]);
    EXPECT_EQ(record.entry[23], record.sdr[10]);
    EXPECT_EQ(record.entry[24], record.sdr[12]);
    EXPECT_EQ(record.entry[25], record.sdr[13]);
    EXPECT_EQ(record.entry[26], full ? record.sdr[24] : 0);
}

TEST_P(EveryCallFailing, AloneDoesNoHarm) {
    const auto &[profile, variant, shard] = GetParam();
    const Sweep sweep = Clean(profile, variant);
    ASSERT_GT(sweep.calls, variant == 2 && profile.name == "Kestrin" ? 10u : 300u);
    size_t unwritten = 0;
    for (uint64_t k = 1 + shard; k <= sweep.calls; k += kShards * tests::SweepStep()) {
        SCOPED_TRACE("call " + std::to_string(k));
        sim::Start(sweep.board);
        std::filesystem::remove(sim::RealPath(kStorePath));
        sim::FailCall(k);
        const Outcome outcome = RunPass(profile.driver);
        ASSERT_TRUE(sim::FaultWasHit());
        ASSERT_THAT(sim::Violations(), IsEmpty());
        if (!outcome.written) {
            ++unwritten;
            EXPECT_THAT(outcome.records, IsEmpty()); // only a fatal fact ends a pass
            continue;
        }
        for (const Record &record : outcome.records)
            ExpectWhole(record);
        if (HasFailure())
            return;
    }
    EXPECT_LE(unwritten, profile.name == "Kestrin" ? 3u : 2u); // it reads the board id twice
}

TEST_P(EveryCallFailing, FromThenOnDoesNoHarmAndKeepsWhatWasFinished) {
    const auto &[profile, variant, shard] = GetParam();
    const Sweep sweep = Clean(profile, variant);
    size_t shortest = 0;
    for (uint64_t k = 1 + shard; k <= sweep.calls; k += kShards * tests::SweepStep()) {
        SCOPED_TRACE("from call " + std::to_string(k));
        sim::Start(sweep.board);
        std::filesystem::remove(sim::RealPath(kStorePath));
        sim::FailCall(k, true);
        const Outcome outcome = RunPass(profile.driver);
        ASSERT_THAT(sim::Violations(), IsEmpty());
        size_t same = 0; // the records before the first failure are those of the clean pass
        while (same < outcome.records.size() && same < sweep.clean.records.size() &&
               outcome.records[same] == sweep.clean.records[same])
            ++same;
        EXPECT_GE(same, shortest); // the later the failure, the more there is
        shortest = std::max(shortest, same);
        for (size_t i = same; outcome.written && i < outcome.records.size(); ++i)
            ExpectWhole(outcome.records[i]);
        if (HasFailure())
            return;
    }
}

std::string SweepName(const testing::TestParamInfo<std::tuple<Profile, int, size_t>> &info) {
    const char *const variants[] = {"_OneOfEach", "_Simplified", "_RackBoard"};
    return std::get<0>(info.param).name + variants[std::get<1>(info.param)] +
           std::to_string(std::get<2>(info.param));
}
INSTANTIATE_TEST_SUITE_P(Profiles, EveryCallFailing,
                         testing::Combine(testing::ValuesIn(Profiles()), testing::Range(0, 2),
                                          testing::Range<size_t>(0, kShards)),
                         SweepName);
INSTANTIATE_TEST_SUITE_P(Rack, EveryCallFailing,
                         testing::Combine(testing::Values(FindProfile("Kestrin")), testing::Values(2),
                                          testing::Range<size_t>(0, kShards)),
                         SweepName);

} // namespace
