// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the Default driver says of stored records, and the order of its records and lines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "profiles/default_support.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

// ---- the store --------------------------------------------------------------------------------------------

sim::Board FullBoard() {
    sim::Board board = DiskBoard();
    board.cpus = {.count = 1, .type = 1};
    board.psus = {.count = 1, .group_count = 1, .count_per_group = 1};
    board.dimms = {.count = 1, .names = {"A0"}};
    board.pcie.slots = {{.slot = 2}};
    board.fans.count = 1;
    board.ocp.count = 1;
    return board;
}

TEST(DefaultStore, WhatTheDriverSaysOfItsOwnStoredRecords) {
    const Outcome clean = RunPass(FullBoard());
    const struct {
        const char *sensor;
        std::vector<Line> lines;
    } cases[] = {
        {"CPU_TEMP_00", {{'W', 42, "Default_GenCPUTempSDR sensor already exist!\n"}}},
        {"CPU_VR_TEMP_00", {{'W', 42, "Default_GenCPUVRTempSDR sensor already exist!\n"}}},
        {"CPU_STATUS_00", {{'I', 42, "Default_GenCPUStatusSDR sensor already exist!\n"}}},
        {"MEM_STATUS_A0",
         {{'I', 42, "Default_GenCPUStatusSDR sensor already exist!\n"}}}, // the CPU text, kept
        {"MEM_TEMP_A0", {}},
        {"FAN_STATUS_01", {}},
        {"NVME_TEMP_01", {}},
        {"OCP_TEMP_01", {}},
        {"OCP_ERR_01", {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.sensor);
        sim::Start(FullBoard());
        ASSERT_NE(clean.Find(c.sensor), nullptr);
        Store({*clean.Find(c.sensor)});
        RunPass();
        std::vector<Line> about;
        for (const Line &line : Lines())
            if (line.text.find("already") != std::string::npos &&
                line.text != "This sensor is already exist!")
                about.push_back(line);
        EXPECT_EQ(about, c.lines);
    }
}

TEST(DefaultStore, EqualNamesWithinOnePassBothStay) {
    sim::Board board = BareBoard();
    board.dimms = {.count = 2, .names = {"A0", "A0"}};
    EXPECT_THAT(GroupNames(RunPass(board)),
                ElementsAre("MEM_TEMP_A0", "MEM_STATUS_A0", "MEM_TEMP_A0", "MEM_STATUS_A0"));
}

// ---- order ------------------------------------------------------------------------------------------------

TEST(DefaultOrder, GroupsThenTableThenDomains) {
    sim::Board board = FullBoard();
    board.cpus.type = 3;
    board.liquid_cooling_mode = 1;
    EXPECT_THAT(RunPass(board).Names(),
                ElementsAre("CPU_PROCHOT", "CPU_TEMP_00", "CPU_VR_TEMP_00", "CPU_VOLTS_00", "CPU_STATUS_00",
                            "INPUT_VOLTS_01", "OUTPUT_VOLTS_01", "PSU_STATUS_01", "PSU_TEMP_01", "PSU_PIN_01",
                            "PSU_POUT_01", "PSU_REDUNDANT", "MEM_TEMP_A0", "MEM_STATUS_A0", "PCIE_STATUS_02",
                            "FAN_STATUS_01", "HDD_STATUS_00", "HDD_STATUS_01", "NVME_TEMP_01",
                            "HDD_STATUS_20", "NVME_TEMP_99", "OCP_TEMP_01", "OCP_ERR_01", "FAN_REDUNDANCY",
                            "CPU_POWER", "MEM_POWER", "HDD_POWER", "POWER_WATTS", "FAN_POWER", "POWER_BUTTON",
                            "EVENT_LOG", "OS_BOOT", "ACPI_STATUS", "SYS_RESTART", "UID_BUTTON", "BMC_BOOT_UP",
                            "OS_STOP", "INTRUSION", "LEAKAGE", "INPUT_TEMP", "ENV_HUMI", "ME", "OUTPUT_TEMP",
                            "VCC12V", "PDB_TEMP", "MIDDLEPDB_TEMP", "NTP_SYNC_FAIL", "POWER_FAULT",
                            "CPU0_D0_N2", "CPU0_D1_N2", "CPU1_D0_N2", "CPU1_D1_N2"));
}

TEST(DefaultOrder, TheLinesOfASmallPass) {
    sim::Board board = FullBoard();
    board.cpus.silk_start = 1;
    board.disks.backplanes = {{3, 1, "Front"}};
    board.disks.nvme_slots = {3};
    RunPass(board);
    const std::string driver = "OXA_AddDefaultStaticSensor";
    std::vector<Line> expected = {
        {'I', 42, driver + " for CPU: dwIndex = 1,ucCPUCnt = 1, dwCnt = 2!"},
        {'I', 42, "Default_GenCPUProchotSDR: sdwRet = 0 wBoardId = 1234!"},
        {'I', 42, "Default_GenCPUTempSDR: sdwRet = 0 wBoardId = 1234!"},
        {'I', 42, "Default_GenCPUStatusSDR: sdwRet = 0 wBoardId = 1234!"},
        {'I', 42, driver + " for PSU Sensor: dwIndex = 1, ucCnt = 5!"},
        {'I', 42, driver + " for Mem Status Sensor: ucDimmCnt = 1!"},
        {'I', 42, driver + " for Pcie Status Sensor ucPcieCnt = 1!"},
        {'I', 42, driver + " for Disk Sensor: hddBackPanelDevInfoList->count = 1"},
        {'I', 42, driver + " for Disk Sensor: backPanelIndex = 0, ucCnt = 16!,startslt = 3, diskCnt = 1"},
        {'I', 42, driver + " for OCP temp: ucIndex = 1, ucCnt = 18, ucOCPCnt:1!"},
    };
    for (int row = 0; row < 26; ++row) {
        const int count = 20 + row - (row > 16 ? 1 : 0); // row 16, leakage, gives nothing
        expected.push_back(
            {'I', 42,
             driver + ": ucIndex = " + std::to_string(row) + ", ucCnt = " + std::to_string(count) + "!"});
        if (row == 1)
            expected.push_back(
                {'I', 42, "OXA_AddDefaultSensor for POWER_WATTS: sdwRet = 0 wBoardId = 1234!"});
        if (row == 4) {
            expected.push_back(
                {'I', 42, "OXA_AddDefaultSensor for POWER_WATTS: sdwRet = 0 wBoardId = 1234!"});
            expected.push_back({'I', 42, "OXA_AddDefaultSensor for POWER_WATTS: sdwRet = 0 productId = 0!"});
        }
        if (row == 16)
            expected.push_back({'E', 255, "assertion failed: GetLiquidCoolingFlag() == (1)"});
        if (row == 17)
            expected.push_back({'I', 42, "OXA_AddDefaultSensor for INPUT_TEMP: sdwRet = 0 wBoardId = 1234!"});
    }
    expected.push_back({'I', 42, driver + ": ucCnt = 45!"});
    EXPECT_THAT(Lines(), testing::ElementsAreArray(expected));
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

} // namespace
