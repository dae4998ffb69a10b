// SPDX-License-Identifier: GPL-3.0-or-later
//
// The driver's processor records: numbers, instances, presence, regulator clients and voltage domains.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/store.h"
#include "profiles/default_support.h"

namespace {

using namespace tests;
using testing::ElementsAre;

// ---- processors -------------------------------------------------------------------------------------------

TEST(DefaultCpus, NumbersStartAtTheSilkStartInstancesAtZero) {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 5;
    const Outcome outcome = RunPass(board);
    ASSERT_EQ(outcome.CountName("CPU_TEMP_06"), 1u);
    EXPECT_EQ(outcome.Find("CPU_TEMP_05")->sdr[9], 0x60);
    EXPECT_EQ(outcome.Find("CPU_TEMP_06")->sdr[9], 0x61);
    EXPECT_EQ(outcome.Find("CPU_STATUS_06")->entry[3], 1);
    EXPECT_EQ(outcome.CountName("CPU_PROCHOT"), 2u); // one name for all, and both stay
    EXPECT_EQ(
        CountLine({'I', 42, "OXA_AddDefaultStaticSensor for CPU: dwIndex = 6,ucCPUCnt = 2, dwCnt = 4!"}), 1u);
}

TEST(DefaultCpus, AnEmptySocketGetsItsSensorsUnlessTheReduceFlagIsSet) {
    sim::Board board = BaseBoard();
    board.cpus.online = {true, false};
    EXPECT_EQ(RunPass(board).count, 48);
    EXPECT_EQ(sim::CountCalls("HAL_GetCpuOnlineStatus"), 0u);
    board.cpus.reduce_flag = 1;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.count, 43);
    EXPECT_EQ(outcome.CountName("CPU_TEMP_01"), 0u);
    EXPECT_EQ(CountLine({'I', 42, "OXA_CheckifAddCpuSensorByIndex CPU 1 is offline"}), 1u);
    const auto logs = sim::Logs();
    EXPECT_TRUE(std::any_of(logs.begin(), logs.end(), [](const sim::Event &event) {
        return event.text.ends_with("CPU 1 is offline") && event.file == "specific_sdr_file.c";
    }));
}

TEST(DefaultCpus, ThePresenceTestAnswersByFlagAndStatus) {
    sim::Board board = BaseBoard();
    board.cpus.reduce_flag = 1;
    board.cpus.online = {true, false};
    sim::Start(board);
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(0), 1);
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(1), 0);
    sim::AddFault({.call = "HalCpuService.GetCpuReduceFlag", .result = 0x21, .output = 1});
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(1), 1); // the flag counts as 0
    EXPECT_EQ(CountLine({'W', 255, "HalCpuInst()->GetCpuReduceFlag(&message) = [21]"}), 1u);
    sim::ClearFaults();
    sim::AddFault({.call = "HalCpuInst", .null_object = true});
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(1), 1);
    EXPECT_EQ(CountLine({'W', 255, "HalCpuInst()->GetCpuReduceFlag(&message) = [FFFFFFFF]"}), 1u);
    sim::ClearFaults();
    sim::AddFault({.call = "HAL_GetCpuOnlineStatus", .result = 0x22, .output = 1});
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(0), 0);
    EXPECT_EQ(CountLine({'W', 255, "HAL_GetCpuOnlineStatus(ucCpuIndex, &sdwOnlineStatus) = [22]"}), 1u);
    EXPECT_EQ(CountLine({'I', 42, "OXA_CheckifAddCpuSensorByIndex CPU 0 is offline"}), 1u);
}

TEST(DefaultCpus, AnyStatusButOneIsOffline) {
    sim::Board board = BaseBoard();
    board.cpus.reduce_flag = 1;
    sim::Start(board);
    sim::AddFault({.call = "HAL_GetCpuOnlineStatus", .output = 2, .succeed = true});
    EXPECT_EQ(OXA_CheckifAddCpuSensorByIndex(0), 0);
}

TEST(DefaultCpus, TheSecondFigureOfTheLineIsZeroAbove121Cpus) {
    sim::Board board = BaseBoard();
    board.cpus.count = 0x79;
    RunPass(board);
    EXPECT_EQ(
        CountLine({'I', 42, "OXA_AddDefaultStaticSensor for CPU: dwIndex = 0,ucCPUCnt = 121, dwCnt = 242!"}),
        1u);
    board.cpus.count = 0x7A;
    RunPass(board);
    EXPECT_EQ(
        CountLine({'I', 42, "OXA_AddDefaultStaticSensor for CPU: dwIndex = 0,ucCPUCnt = 122, dwCnt = 0!"}),
        1u);
}

TEST(DefaultCpus, ACpuAbove159LosesAllButItsCoreVoltage) {
    sim::Board board = BaseBoard();
    board.cpus.count = 161;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.Find("CPU_TEMP_159")->sdr[9], 0xFF);
    for (const char *name : {"CPU_TEMP_160", "CPU_VR_TEMP_160", "CPU_STATUS_160"})
        EXPECT_EQ(outcome.CountName(name), 0u) << name;
    EXPECT_EQ(outcome.CountName("CPU_VOLTS_160"), 1u);
    EXPECT_EQ(outcome.CountName("CPU_PROCHOT"), 160u);
    EXPECT_EQ(sim::CountCalls("HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"),
              321u); // the dropped one asks for none
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 4u);
}

TEST(DefaultCpus, TheRegulatorTemperatureHasAGateOfItsOwn) {
    sim::Board board = BaseBoard();
    board.support.sensors[101] = 0;
    EXPECT_EQ(RunPass(board).count, 46);
    EXPECT_EQ(CountLine({'W', 42, "The board does not support adding sensor CPU_VR_TEMP_0x."}), 2u);
    sim::Start(BaseBoard());
    sim::AddFault({.call = "HAL_GetSensorNotSupportFlagBySensor", .occurrence = 1, .result = 9, .output = 0});
    EXPECT_EQ(RunPass().count, 47);
    EXPECT_EQ(CountLine({'W', 255,
                         "HAL_GetSensorNotSupportFlagBySensor(SENSOR_CPU_VR_TEMP, &ucSupportFlag) = [9]"}),
              1u);
}

TEST(DefaultCpus, TheRegulatorsClientIsAskedForTheZeroBasedCpu) {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 1;
    sim::Start(board);
    sim::AddFault({.call = "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", .occurrence = 3});
    const Outcome outcome = RunPass();
    EXPECT_EQ(outcome.CountName("CPU_VR_TEMP_01"), 1u);
    EXPECT_EQ(outcome.Find("CPU_VR_TEMP_01")->entry[6], 0); // the client of CPU 0
    EXPECT_EQ(outcome.CountName("CPU_VR_TEMP_02"), 0u);     // the third call
    EXPECT_EQ(outcome.CountName("CPU_VOLTS_02"), 1u);
    EXPECT_EQ(
        CountLine({'W', 255, "Default_GenCPUVRTempSDR CPUVRTempCoreVolts_GetI2cClientByInstance failed!"}),
        1u);
}

TEST(DefaultCpus, VoltageDomainsNeedCpuTypeThreeAndComeAfterTheTable) {
    sim::Board board = BaseBoard();
    board.cpus.count = 1; // the second pair is built all the same
    board.cpus.type = 3;
    const Outcome outcome = RunPass(board);
    auto names = outcome.Names();
    ASSERT_GE(names.size(), 5u);
    EXPECT_THAT(std::vector<std::string>(names.end() - 5, names.end()),
                ElementsAre("POWER_FAULT", "CPU0_D0_N2", "CPU0_D1_N2", "CPU1_D0_N2", "CPU1_D1_N2"));
    for (int count = outcome.count - 3; count <= outcome.count; ++count)
        EXPECT_EQ(CountLine({'I', 42,
                             "OXA_AddDefaultStaticSensor for CPU Voltage:  ucCnt = " + std::to_string(count) +
                                 "!"}),
                  1u);
}

TEST(DefaultCpuDomains, TheFirstOfThemNamesTheBoardItReads) {
    sim::Board board = BaseBoard();
    board.cpus.type = 3;
    board.board_id = 0x1A2B;
    RunPass(board);
    EXPECT_EQ(CountLine({'I', 42, "Default_GenCPU0D0N2SDR: sdwRet = 0 wBoardId = 1a2b!"}), 1u);
    sim::Start(board);
    sim::AddFault({.call = "HAL_GetCpuVoltSdrInfoforSensor", .result = 9, .output = 0});
    const Outcome outcome = RunPass();
    for (const char *name : {"CPU0_D0_N2", "CPU0_D1_N2", "CPU1_D0_N2", "CPU1_D1_N2"})
        EXPECT_EQ(outcome.CountName(name), 0u) << name;
    EXPECT_EQ(CountLine({'E', 42, "Get Cpu Voltage Sensor SDR Info fail!"}), 4u);
}

} // namespace
