// SPDX-License-Identifier: GPL-3.0-or-later
//
// The Default driver beside what all drivers do: the numbers of the base board, the order of its facts, where
// its guards stand, and what boards and cards change.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

// ---- facts ----------------------------------------------------------------------------

TEST(DefaultDriver, TheNumbersOfTheBaseBoard) {
    sim::Board board = BaseBoard();
    EXPECT_EQ(RunPass(board).count, 48);
    board.liquid_cooling_mode = 1;
    EXPECT_EQ(RunPass(board).count, 49);
    board.liquid_cooling_mode = 2;
    EXPECT_EQ(RunPass(board).count, 46);
    board.liquid_cooling_mode = 0;
    board.cpus.type = 3;
    EXPECT_EQ(RunPass(board).count, 51);
    board.cpus = {.count = 0, .type = 1};
    EXPECT_EQ(RunPass(board).count, 38);
}

TEST(DefaultDriver, TheFactsAreAskedForInOrder) {
    RunPass(BaseBoard());
    std::vector<std::string> calls;
    for (const sim::Event &event : sim::Trace())
        if (event.kind == sim::Kind::kCall && calls.size() < 14)
            calls.push_back(event.function);
    EXPECT_THAT(calls, ElementsAre("HAL_GetCpuMaxCount", "HAL_GetCpuSilkScreenIndexFixValue",
                                   "HAL_GetDimmMaxCount", "Hal_GetStandPcieSlotCounts", "HAL_GetCpuType",
                                   "HalFanInst", "HalFanService.GetFanMaxCount", "GetOcpNetCardMaxCount",
                                   "HAL_IsNeedSensorSimplification", "GetSwitchBoardSupportFlag",
                                   "HAL_GetPsuMaxCount", "HAL_GetIsSupportPowerManage",
                                   "get_default_board_id", testing::_));
}

// ---- guards -----------------------------------------------------------------------------------------------

struct Guard {
    const char *name;
    void (*set)(sim::Board &, uint8_t);
    uint8_t trips, passes;
    Line line;
    const char *last_before;  // the last record before the group
    const char *first_inside; // a record that the group gives when the guard does not trip
};

const std::vector<Guard> kGuards = {
    {"cpu",
     [](sim::Board &board, uint8_t value) { board.cpus.silk_start = value; },
     254,
     253,
     {'W', 42, "ucIndex may overflow. (ucCPUCnt+ucCpuSilkStart) = 256!\n"},
     "",
     "CPU_TEMP_254"},
    {"psu",
     [](sim::Board &board, uint8_t value) { board.psus.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. dwPSUCnt = 255!\n"},
     "CPU_STATUS_01",
     "PSU_PIN_254"},
    {"dimm",
     [](sim::Board &board, uint8_t value) { board.dimms.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. dwDimmCnt = 255!\n"},
     "PSU_REDUNDANT",
     "MEM_TEMP_A0"},
    {"pcie",
     [](sim::Board &board, uint8_t value) { board.pcie.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucPcieCnt = 255!\n"},
     "PSU_REDUNDANT",
     "PCIE_STATUS_09"},
    {"fan",
     [](sim::Board &board, uint8_t value) { board.fans.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucFanCnt = 255!\n"},
     "PCIE_STATUS_09",
     "FAN_STATUS_159"},
    {"ocp",
     [](sim::Board &board, uint8_t value) { board.ocp.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucOCPCnt = 255!\n"},
     "HDD_STATUS_200",
     "OCP_ERR_254"},
    {"disk",
     [](sim::Board &board, uint8_t value) {
         board.disks.backplanes.push_back({250, value, "Rear"});
     },
     6,
     5,
     {'I', 42, "diskIndex may overflow.\n"},
     "HDD_STATUS_200",
     "HDD_STATUS_254"},
};

sim::Board GuardBoard() {
    sim::Board board = BaseBoard();
    board.pcie.slots = {{.slot = 9}};
    board.disks.backplanes = {{200, 1, "Front"}};
    return board;
}

TEST(DefaultGuards, EachGuardEndsThePassWithoutACountWhenItsTurnComes) {
    for (const Guard &guard : kGuards) {
        SCOPED_TRACE(guard.name);
        sim::Board board = GuardBoard();
        guard.set(board, guard.trips);
        const Outcome outcome = RunPass(board);
        EXPECT_FALSE(outcome.written);
        EXPECT_EQ(outcome.count, kCallersCount);
        EXPECT_EQ(Lines().back(), guard.line);
        EXPECT_EQ(outcome.records.empty() ? "" : outcome.records.back().Name(), guard.last_before);
        EXPECT_EQ(outcome.CountName("CPU_POWER"), 0u); // the static table is not reached
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
}

TEST(DefaultGuards, TheValueBelowEachGuardIsBuilt) {
    for (const Guard &guard : kGuards) {
        SCOPED_TRACE(guard.name);
        sim::Board board = GuardBoard();
        guard.set(board, guard.passes);
        const Outcome outcome = RunPass(board);
        EXPECT_TRUE(outcome.written);
        EXPECT_EQ(CountLine(guard.line), 0u);
        EXPECT_GE(outcome.CountName(guard.first_inside), 1u);
        EXPECT_EQ(outcome.CountName("CPU_POWER"), 1u);
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
}

TEST(DefaultGuards, AnEarlierBackplaneIsBuiltBeforeTheGuardOfALaterOne) {
    sim::Board board = BaseBoard();
    board.disks.backplanes = {{0, 2, "Front"}, {255, 1, "Rear"}, {4, 1, "Rear"}};
    const Outcome outcome = RunPass(board);
    EXPECT_FALSE(outcome.written);
    EXPECT_EQ(outcome.records.back().Name(), "HDD_STATUS_01");
}

// ---- board rules ------------------------------------------------------------------------------------------

TEST(DefaultBoardRules, TheSmallBoardHasNoPsuPcieFanAndOcpRecordsAndNoCpuNumbers) {
    sim::Board board = BaseBoard();
    board.board_id = 0x5497;
    board.psus.count = board.fans.count = board.ocp.count = 255;
    board.pcie.count = 255;
    board.dimms.count = 1;
    board.disks.backplanes = {{7, 1, "Front"}};
    board.cpus.count = 1;
    const Outcome outcome = RunPass(board);
    ASSERT_TRUE(outcome.written);
    auto names = outcome.Names();
    names.resize(9);
    EXPECT_THAT(names, ElementsAre("CPU_PROCHOT", "CPU_TEMP", "CPU_VR_TEMP_00", "CPU_VOLTS_00", "CPU_STATUS",
                                   "MEM_TEMP_A0", "MEM_STATUS_A0", "HDD_STATUS_07", "FAN_REDUNDANCY"));
    EXPECT_EQ(outcome.CountName("POWER_WATTS"), 0u);
    EXPECT_EQ(outcome.count, 8 + 24);
}

std::vector<std::string> SwitchNames(uint16_t board_id, uint16_t card, bool supported = true,
                                     bool online = true) {
    sim::Board board = BaseBoard();
    board.board_id = board_id;
    board.switch_board.supported = supported;
    board.switch_board.cards[2] = {online, card};
    std::vector<std::string> names;
    for (const std::string &name : RunPass(board).Names())
        if (name.starts_with("SW_"))
            names.push_back(name);
    return names;
}

TEST(DefaultBoardRules, TheSwitchBoardCardGivesVoltsAndCurrentOfFourInstances) {
    for (uint16_t id : {0x550F, 0x55DE, 0x55D8}) {
        EXPECT_THAT(SwitchNames(id, 0x5510),
                    ElementsAre("SW_VOLT_01", "SW_CURRENT_01", "SW_VOLT_02", "SW_CURRENT_02", "SW_VOLT_03",
                                "SW_CURRENT_03", "SW_VOLT_04", "SW_CURRENT_04"));
        EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for SwitchBoard!"}), 1u);
    }
}

TEST(DefaultBoardRules, TheOtherSwitchBoardCardGivesEightTemperatures) {
    EXPECT_THAT(SwitchNames(0x550F, 0x5517),
                ElementsAre("SW_TEMP_01", "SW_TEMP_02", "SW_TEMP_03", "SW_TEMP_04", "SW_TEMP_05",
                            "SW_TEMP_06", "SW_TEMP_07", "SW_TEMP_08"));
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for SwitchBoard!"}), 1u);
}

TEST(DefaultBoardRules, NoSwitchBoardRecordsWithoutSupportCardOrBoard) {
    EXPECT_THAT(SwitchNames(0x550F, 0x5504), IsEmpty());
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for SwitchBoard!"}), 0u);
    EXPECT_THAT(SwitchNames(0x550F, 0x5510, false), IsEmpty());
    EXPECT_THAT(SwitchNames(0x550F, 0x5510, true, false), IsEmpty());
    EXPECT_THAT(SwitchNames(0x5502, 0x5510), IsEmpty());
    EXPECT_THAT(SwitchNames(0x5502, 0x5504, false), IsEmpty());
    EXPECT_THAT(SwitchNames(0x5502, 0x5504, true, false), IsEmpty());
    EXPECT_THAT(SwitchNames(0x5481, 0x5504), IsEmpty());
}

TEST(DefaultBoardRules, InletAndOutletTemperaturesComeLast) {
    EXPECT_THAT(SwitchNames(0x5502, 0x5504),
                ElementsAre("SW_INPUT_TEMP_01", "SW_INPUT_TEMP_02", "SW_OUTPUT_T_01", "SW_OUTPUT_T_02"));
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultStaticSensor for SwitchBoard Temp!"}), 1u);
    const Outcome outcome = RunPass(sim::CurrentBoard());
    EXPECT_EQ(outcome.records.back().Name(), "SW_OUTPUT_T_02");
    EXPECT_EQ(outcome.count, 52);
}

} // namespace
