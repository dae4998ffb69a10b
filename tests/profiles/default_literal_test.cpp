// SPDX-License-Identifier: GPL-3.0-or-later
//
// Literal bytes of one record, or more, of every template and every group of the Default set.  They were
// worked out by hand from the layout: 00 00 51 <kind> <length> 20 00 00 <entity> <instance> <init> <caps>
// <type> <event>, three masks with the low byte first, units, then factors, limits and thresholds of a full
// record or the sharing bytes and hystereses of a compact one, and the name.
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;

struct Expected {
    const char *name;
    const char *sdr;
    const char *entry;
    size_t nth = 0; // which record of that name
};

void ExpectRecords(const sim::Board &board, const std::vector<Expected> &expected) {
    const Outcome outcome = RunPass(board);
    ASSERT_TRUE(outcome.written);
    for (const Expected &e : expected) {
        SCOPED_TRACE(e.name);
        const Bytes sdr = Literal(e.sdr), entry = Literal(e.entry);
        ASSERT_EQ(sdr.size(), 64u);
        ASSERT_EQ(entry.size(), 32u);
        const Record *record = outcome.Find(e.name, e.nth);
        ASSERT_NE(record, nullptr);
        EXPECT_TRUE(SameRecord({sdr, entry}, *record));
    }
}

sim::Board LiteralBoard() {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 1;
    board.cpus.vr_clients = {{0, {2, 0x61}}, {1, {3, 0x62}}};
    board.dimms = {.count = 3, .names = {"000", "001", "010"}, .power_accuracy = 4};
    board.fans = {.count = 2, .silk = {1, 12}, .power_accuracy = 7};
    board.disks.backplanes = {{8, 2, "Front"}};
    board.disks.nvme_slots = {9};
    board.disks.conversion = {{9, 41}};
    board.disks.power_accuracy = 5;
    board.pcie.slots = {{.slot = 5}};
    board.ocp = {.count = 2, .present = 3, .restored = {{2, 7}}};
    board.inlet_client = {6, 0x4C};
    return board;
}

TEST(DefaultLiteralProcessors, EveryRecordOfACpu) {
    ExpectRecords(
        LiteralBoard(),
        {{"CPU_PROCHOT",
          "00 00 51 02 26 20 00 00 03 61 67 40 07 6F 00 04 00 04 00 04 00 00 00 11 00 01 01 00 00 00 00 CB 'CPU_PROCHOT' FFx5 00x16",
          "4D 02 00 01 00x16 FF 03 61 67 07 6F 00x6", 1},
         {"CPU_TEMP_02",
          "00 00 51 01 36 20 00 00 03 61 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'CPU_TEMP_02' FFx5",
          "49 01 00 01 00x16 FF 03 61 7F 01 01 01 00x5"},
         {"CPU_VR_TEMP_01",
          "00 00 51 01 39 20 00 00 03 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CE 'CPU_VR_TEMP_01' FFx2",
          "4A 00 00 00 00 00 02 61 00x12 FF 03 60 7F 01 01 01 00x5"},
         {"CPU_VOLTS_02",
          "00 00 51 01 37 20 00 00 03 60 7F 68 02 01 95 7A 95 7A 3F 3F 00 04 00 00 64 00 00 00 00 C0 00 00 00 00 FF 00 F0 EB E6 78 7D 82 03 03 00 00 00 CC 'CPU_VOLTS_02' FFx4",
          "4B 00 00 01 00 00 03 62 00x12 FF 03 60 7F 02 01 64 00x5"},
         {"CPU_STATUS_01",
          "00 00 51 02 28 20 00 00 03 60 67 40 07 6F A3 0C A3 0C A3 0C 00 00 00 11 00 01 01 00 00 00 00 CD 'CPU_STATUS_01' FFx3 00x16",
          "4D 01 00 00 00x16 FF 03 60 67 07 6F 00x6"}});
}

TEST(DefaultLiteralPowerSupplies, EveryRecordOfAPsuAndTheGroup) {
    ExpectRecords(
        LiteralBoard(),
        {{"INPUT_VOLTS_02",
          "00 00 51 01 39 20 00 00 0A 60 7F 68 02 01 00x6 00 04 00 00 C8 00 00 00 00 E0 00 00 00 00 FF 00 00x6 03 03 00 00 00 CE 'INPUT_VOLTS_02' FFx2",
          "4F 01 00 02 00 80 00x14 FF 0A 60 7F 02 01 C8 00x5"},
         {"OUTPUT_VOLTS_01",
          "00 00 51 01 3A 20 00 00 0A 60 7F 68 02 01 00x6 00 04 00 00 01 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 CF 'OUTPUT_VOLTS_01' FF",
          "4F 02 00 01 00 80 00x14 FF 0A 60 7F 02 01 01 00x5"},
         {"PSU_STATUS_02",
          "00 00 51 02 28 20 00 00 0A 62 67 40 08 6F 4F 00 4F 00 4F 00 00 00 00 11 00 01 01 00 00 00 00 CD 'PSU_STATUS_02' FFx3 00x16",
          "53 01 00 02 00 80 00x14 FF 0A 62 67 08 6F 00x6"},
         {"PSU_TEMP_01",
          "00 00 51 01 36 20 00 00 0A 61 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'PSU_TEMP_01' FFx5",
          "52 00 00 01 00 80 00x14 FF 0A 61 7F 01 01 01 00x5"},
         {"PSU_PIN_01",
          "00 00 51 01 35 20 00 00 0A 61 7F 68 08 01 00x6 00 06 00 00 0E 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 CA 'PSU_PIN_01' FFx6",
          "50 01 00 01 00 80 00x14 FF 0A 61 7F 08 01 0E 00x5"},
         {"PSU_POUT_02",
          "00 00 51 01 36 20 00 00 0A 62 7F 68 08 01 00x6 00 06 00 00 0D 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 CB 'PSU_POUT_02' FFx5",
          "50 02 00 02 00 80 00x14 FF 0A 62 7F 08 01 0D 00x5"},
         {"PSU_REDUNDANT",
          "00 00 51 02 28 20 00 00 13 60 67 40 08 0B 03 00 03 00 03 00 00 00 00 11 00 01 01 00 00 00 00 CD 'PSU_REDUNDANT' FFx3 00x16",
          "53 02 00 00 00 80 00x14 FF 13 60 67 08 0B 00x6"}});
}

TEST(DefaultLiteralPowerSupplies, TheSecondGroup) {
    sim::Board board = LiteralBoard();
    board.psus.group_count = 2;
    ExpectRecords(
        board,
        {{"PSU_REDUNDANT_M",
          "00 00 51 02 2A 20 00 00 13 61 67 40 08 0B 03 00 03 00 03 00 00 00 00 11 00 01 01 00 00 00 00 CF 'PSU_REDUNDANT_M' FF 00x16",
          "53 02 00 01 00 80 00x14 FF 13 61 67 08 0B 00x6"}});
}

TEST(DefaultLiteralMemory, TemperatureAndStatusOfADimm) {
    ExpectRecords(
        LiteralBoard(),
        {{"MEM_TEMP_010",
          "00 00 51 01 37 20 00 00 20 62 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CC 'MEM_TEMP_010' FFx4",
          "4E 01 00 02 00x16 FF 20 62 7F 01 01 01 00x5"},
         {"MEM_STATUS_001",
          "00 00 51 02 29 20 00 00 20 61 7F 40 0C 6F 42 00 42 00 42 00 00 00 00 11 00 01 01 00 00 00 00 CE 'MEM_STATUS_001' FFx2 00x16",
          "A9 00 00 01 00x16 FF 20 61 7F 0C 6F 00x6"}});
}

TEST(DefaultLiteralGroups, DimmAndDiskGroups) {
    sim::Board board = LiteralBoard();
    board.sensor_simplification = true;
    board.disks.backplanes = {{0, 1, "Front"}, {8, 2, "Rear"}};
    ExpectRecords(
        board,
        {{"DIMMG1_TEMP",
          "00 00 51 01 36 20 00 00 08 61 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'DIMMG1_TEMP' FFx5",
          "4E 02 00 01 00x16 FF 08 61 7F 01 01 01 00x5"},
         {"DISKG1_TEMP",
          "00 00 51 01 36 20 00 00 04 61 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'DISKG1_TEMP' FFx5",
          "56 01 00 01 00x16 FF 04 61 7F 01 01 01 00x5"}});
}

TEST(DefaultLiteralSlots, PcieSlotAndFan) {
    ExpectRecords(
        LiteralBoard(),
        {{"PCIE_STATUS_05",
          "00 00 51 02 29 20 00 00 0B 65 67 40 21 6F 05 00 05 00 05 00 00 00 00 11 00 01 01 00 00 00 00 CE 'PCIE_STATUS_05' FFx2 00x16",
          "57 00 00 05 00x16 FF 0B 65 67 21 6F 00x6"},
         {"FAN_STATUS_12",
          "00 00 51 02 28 20 00 00 1D 6C 67 40 04 08 01 00 01 00 03 00 00 00 00 11 00 01 01 00 00 00 00 CD 'FAN_STATUS_12' FFx3 00x16",
          "54 01 00 0C 00 80 00x14 FF 1D 6C 67 04 08 00x6"}});
}

TEST(DefaultLiteralSlots, DiskAndNvmeTemperatureWithAConvertedNumber) {
    ExpectRecords(
        LiteralBoard(),
        {{"HDD_STATUS_09",
          "00 00 51 02 28 20 00 00 04 09 63 C0 0D 6F 01 00 01 00 47 00 C0 00 00 01 00 00 00 00 00 09 00 CD 'HDD_STATUS_09' FFx3 00x16",
          "F0 00 00 09 00x16 25 04 09 63 0D 6F 00x6"},
         {"NVME_TEMP_41",
          "00 00 51 01 37 20 00 00 04 09 7F 68 01 01 00 02 00 22 10 10 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00 46 00 00 00 00 03 03 00 00 00 CC 'NVME_TEMP_41' FFx4",
          "F2 00 00 09 00x16 25 04 09 7F 01 01 01 00x5"}});
}

TEST(DefaultLiteralSlots, OcpTemperatureAndError) {
    ExpectRecords(
        LiteralBoard(),
        {{"OCP_TEMP_02",
          "00 00 51 01 36 20 00 00 97 62 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'OCP_TEMP_02' FFx5",
          "CD 00 00 02 00 80 00x14 FF 97 62 7F 01 01 01 00x5"},
         {"OCP_ERR_02",
          "00 00 51 02 25 20 00 00 97 62 63 40 15 07 06 00 06 00 FF 7F 00 00 00 00 01 00 00 00 00 00 00 CA 'OCP_ERR_02' FFx6 00x16",
          "AA 00 00 07 00x16 FF 97 62 63 15 07 00x6"}});
}

TEST(DefaultLiteralTable, PowerRecords) {
    ExpectRecords(
        LiteralBoard(),
        {{"CPU_POWER",
          "00 00 51 01 34 20 00 00 03 60 7F 68 08 01 00x6 00 06 00 00 06 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 C9 'CPU_POWER' FFx7",
          "D9 01 00x18 FF 03 60 7F 08 01 06 00x5"},
         {"MEM_POWER",
          "00 00 51 01 34 20 00 00 20 60 7F 68 08 01 00x6 00 06 00 00 04 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 C9 'MEM_POWER' FFx7",
          "D9 02 00x18 FF 20 60 7F 08 01 04 00x5"},
         {"HDD_POWER",
          "00 00 51 01 34 20 00 00 04 60 7F 68 08 01 00x6 00 06 00 00 05 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 C9 'HDD_POWER' FFx7",
          "D9 04 00x18 FF 04 60 7F 08 01 05 00x5"},
         {"POWER_WATTS",
          "00 00 51 01 36 20 00 00 07 60 7F 68 08 01 00x6 00 06 00 00 11 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 CB 'POWER_WATTS' FFx5",
          "9E 00 00 00 00 80 00x14 FF 07 60 7F 08 01 11 00x5"},
         {"FAN_POWER",
          "00 00 51 01 34 20 00 00 1D 60 7F 68 08 01 00x6 00 06 00 00 07 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 C9 'FAN_POWER' FFx7",
          "D9 05 00x18 FF 1D 60 7F 08 01 07 00x5"}});
}

TEST(DefaultLiteralTable, EnvironmentRecords) {
    ExpectRecords(
        LiteralBoard(),
        {{"INPUT_TEMP",
          "00 00 51 01 35 20 00 00 37 60 7F 68 01 01 80 0A 80 7A 38 38 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 34 32 2D 00 00 00 03 03 00 00 00 CA 'INPUT_TEMP' FFx6",
          "00 00 00 00 00 80 06 4C 00x12 FF 37 60 7F 01 01 01 00x5"},
         {"ENV_HUMI",
          "00 00 51 01 33 20 00 00 37 60 7F 68 0B 01 00x6 01 00 00 00 01 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 C8 'ENV_HUMI' FFx8",
          "41 00 00 00 00 80 00x14 FF 37 60 7F 0B 01 01 00x5"},
         {"OUTPUT_TEMP",
          "00 00 51 01 36 20 00 00 07 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CB 'OUTPUT_TEMP' FFx5",
          "40 00x19 FF 07 60 7F 01 01 01 00x5"},
         {"PCH_TEMP",
          "00 00 51 01 33 20 00 00 07 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 C8 'PCH_TEMP' FFx8",
          "43 00x19 FF 07 60 7F 01 01 01 00x5"},
         {"VCC12V",
          "00 00 51 01 31 20 00 00 07 60 7F 68 02 01 85 32 85 32 1B 1B 00 04 00 00 64 00 00 00 00 D0 00 00 00 00 FF 00 00 90 84 00 60 6C 03 03 00 00 00 C6 'VCC12V' FFx10",
          "44 01 00x18 FF 07 60 7F 02 01 64 00x5"},
         {"PDB_TEMP",
          "00 00 51 01 33 20 00 00 15 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 C8 'PDB_TEMP' FFx8",
          "42 01 00 00 00 80 00x14 FF 15 60 7F 01 01 01 00x5"},
         {"MIDDLEPDB_TEMP",
          "00 00 51 01 39 20 00 00 15 61 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CE 'MIDDLEPDB_TEMP' FFx2",
          "42 02 00 00 00 80 00x14 FF 15 61 7F 01 01 01 00x5"}});
}

TEST(DefaultLiteralTable, FanRedundancyAndLeakage) {
    sim::Board board = LiteralBoard();
    board.liquid_cooling_mode = 1;
    ExpectRecords(
        board,
        {{"FAN_REDUNDANCY",
          "00 00 51 02 29 20 00 00 1E 60 67 40 04 0B 03 00 03 00 03 00 00 00 00 11 00 01 01 00 00 00 00 CE 'FAN_REDUNDANCY' FFx2 00x16",
          "54 02 00 00 00 80 00x14 FF 1E 60 67 04 0B 00x6"},
         {"LEAKAGE",
          "00 00 51 02 22 20 00 00 1E 60 67 40 0A 03 02 00 02 00 03 00 00 00 00 11 00 01 01 00 00 00 00 C7 'LEAKAGE' FFx9 00x16",
          "5E 00 00 00 00 80 00x14 FF 1E 60 67 0A 03 00x6"}});
}

TEST(DefaultLiteralTable, EventSensors) {
    ExpectRecords(
        LiteralBoard(),
        {{"POWER_BUTTON",
          "00 00 51 02 27 20 00 00 0C 60 67 40 14 6F 01 00 01 00 01 00 00 00 00 11 00 01 01 00 00 00 00 CC 'POWER_BUTTON' FFx4 00x16",
          "55 01 00 00 00 80 00x14 FF 0C 60 67 14 6F 00x6"},
         {"EVENT_LOG",
          "00 00 51 02 24 20 00 00 06 60 67 40 10 6F 34 00 34 00 34 00 00 00 00 11 00 01 01 00 00 00 00 C9 'EVENT_LOG' FFx7 00x16",
          "55 03 00 00 00 80 00x14 FF 06 60 67 10 6F 00x6"},
         {"OS_BOOT",
          "00 00 51 02 22 20 00 00 23 60 67 40 1F 6F 7F 00 7F 00 7F 00 00 00 00 11 00 01 01 00 00 00 00 C7 'OS_BOOT' FFx9 00x16",
          "55 04 00 00 00 80 00x14 FF 23 60 67 1F 6F 00x6"},
         {"ACPI_STATUS",
          "00 00 51 02 26 20 00 00 07 60 67 40 22 6F 61 00 61 00 61 00 00 00 00 11 00 01 01 00 00 00 00 CB 'ACPI_STATUS' FFx5 00x16",
          "55 05 00 00 00 80 00x14 FF 07 60 67 22 6F 00x6"},
         {"SYS_RESTART",
          "00 00 51 02 26 20 00 00 07 60 67 40 1D 6F FF 00 FF 00 FF 00 00 00 00 11 00 01 01 00 00 00 00 CB 'SYS_RESTART' FFx5 00x16",
          "55 06 00 00 00 80 00x14 FF 07 60 67 1D 6F 00x6"},
         {"UID_BUTTON",
          "00 00 51 02 25 20 00 00 0C 60 67 40 14 03 02 00 02 00 02 00 00 00 00 11 00 01 01 00 00 00 00 CA 'UID_BUTTON' FFx6 00x16",
          "55 02 00 00 00 80 00x14 FF 0C 60 67 14 03 00x6"},
         {"BMC_BOOT_UP",
          "00 00 51 02 26 20 00 00 2E 60 67 40 28 03 02 00 02 00 02 00 00 00 00 11 00 01 01 00 00 00 00 CB 'BMC_BOOT_UP' FFx5 00x16",
          "55 08 00 00 00 80 00x14 FF 2E 60 67 28 03 00x6"},
         {"OS_STOP",
          "00 00 51 02 22 20 00 00 23 60 67 40 20 6F 3F 00 3F 00 3F 00 00 00 00 11 00 01 01 00 00 00 00 C7 'OS_STOP' FFx9 00x16",
          "55 09 00 00 00 80 00x14 FF 23 60 67 20 6F 00x6"},
         {"INTRUSION",
          "00 00 51 02 24 20 00 00 17 60 67 40 05 6F 01 00 01 00 01 00 00 00 00 11 00 01 01 00 00 00 00 C9 'INTRUSION' FFx7 00x16",
          "55 0A 00 00 00 80 00x14 FF 17 60 67 05 6F 00x6"},
         {"ME",
          "00 00 51 02 1D 20 00 00 2E 60 67 40 28 6F 3F 00 3F 00 3F 00 00 00 00 11 00 01 01 00 00 00 00 C2 'ME' FFx14 00x16",
          "55 0C 00 00 00 80 00x14 FF 2E 60 67 28 6F 00x6"},
         {"NTP_SYNC_FAIL",
          "00 00 51 02 28 20 00 00 21 60 67 40 12 6F 20 00 20 00 20 00 00 00 00 11 00 01 01 00 00 00 00 CD 'NTP_SYNC_FAIL' FFx3 00x16",
          "55 0D 00 00 00 80 00x14 FF 21 60 67 12 6F 00x6"},
         {"POWER_FAULT",
          "00 00 51 02 26 20 00 00 13 60 67 40 08 6F 02 00 02 00 02 00 00 00 00 11 00 01 01 00 00 00 00 CB 'POWER_FAULT' FFx5 00x16",
          "55 0E 00 00 00 80 00x14 FF 13 60 67 08 6F 00x6"}});
}

TEST(DefaultLiteralDomains, AVoltageDomainOfEachCpu) {
    sim::Board board = LiteralBoard();
    board.cpus.type = 3;
    board.cpus.voltages[1] = {.m = 5,
                              .b = 2,
                              .exponents = 0xD1,
                              .mask = 0x3F,
                              .unr = 0x21,
                              .uc = 0x20,
                              .unc = 0x1F,
                              .lnr = 0x10,
                              .lc = 0x11,
                              .lnc = 0x12};
    board.cpus.voltages[4] = {.m = 9,
                              .b = 0,
                              .exponents = 0xE0,
                              .mask = 0x12,
                              .unr = 0x61,
                              .uc = 0x60,
                              .unc = 0x5F,
                              .lnr = 0x30,
                              .lc = 0x31,
                              .lnc = 0x32};
    ExpectRecords(
        board,
        {{"CPU1_D0_N2",
          "00 00 51 01 35 20 00 00 03 60 7F 68 02 01 95 7A 95 7A 3F 3F 00 04 00 00 05 00 02 00 00 D1 00 00 00 00 FF 00 21 20 1F 10 11 12 03 03 00 00 00 CA 'CPU1_D0_N2' FFx6",
          "4C 01 00 00 00 00 02 61 00x12 FF 03 60 7F 02 01 05 00x5"},
         {"CPU2_D1_N2",
          "00 00 51 01 35 20 00 00 03 60 7F 68 02 01 04 22 04 22 12 12 00 04 00 00 09 00 00 00 00 E0 00 00 00 00 FF 00 00 60 00 00 31 00 03 03 00 00 00 CA 'CPU2_D1_N2' FFx6",
          "4C 04 00 00 00 00 03 62 00x12 FF 03 60 7F 02 01 09 00x5"}});
}

TEST(DefaultLiteralDomains, TheSmallBoardNamesItsFirstDomainCpuVolts) {
    sim::Board board = LiteralBoard();
    board.board_id = 0x5497;
    board.cpus.type = 3;
    board.cpus.voltages[1] = {.m = 100, .exponents = 0xC0};
    ExpectRecords(
        board,
        {{"CPU_VOLTS",
          "00 00 51 01 34 20 00 00 03 E0 7F 68 02 01 00x6 00 04 00 00 64 00 00 00 00 C0 00 00 00 00 FF 00 00x6 03 03 00 00 00 C9 'CPU_VOLTS' FFx7",
          "4C 01 00 00 00 00 02 61 00x12 FF 03 E0 7F 02 01 64 00x5"},
         {"CPU_TEMP",
          "00 00 51 01 33 20 00 00 03 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 C8 'CPU_TEMP' FFx8",
          "49 01 00 00 00x16 FF 03 60 7F 01 01 01 00x5"},
         {"CPU_STATUS",
          "00 00 51 02 25 20 00 00 03 61 67 40 07 6F A3 0C A3 0C A3 0C 00 00 00 11 00 01 01 00 00 00 00 CA 'CPU_STATUS' FFx6 00x16",
          "4D 01 00 01 00x16 FF 03 61 67 07 6F 00x6", 1}});
}

sim::Board SwitchBoard(uint16_t board_id, uint16_t card_id) {
    sim::Board board = BaseBoard();
    board.board_id = board_id;
    board.switch_board.supported = true;
    board.switch_board.cards[2] = {.online = true, .board_id = card_id};
    board.switch_board.clients[3] = {9, 0x4E};
    return board;
}

TEST(DefaultLiteralSwitchBoard, VoltsAndCurrentOfAnInstance) {
    ExpectRecords(
        SwitchBoard(0x550F, 0x5510),
        {{"SW_VOLT_03",
          "00 00 51 01 35 20 00 00 10 63 7F 68 02 01 00x6 00 04 00 00 C8 00 00 00 00 D0 00 00 00 00 FF 00 00x6 03 03 00 00 00 CA 'SW_VOLT_03' FFx6",
          "45 00 00 03 00 00 09 4E 00x12 FF 10 63 7F 02 01 C8 00x5"},
         {"SW_CURRENT_03",
          "00 00 51 01 38 20 00 00 10 63 7F 68 03 01 00x6 00 05 00 00 01 00 00 00 00 00 00 00 00 00 FF 00 00x6 03 03 00 00 00 CD 'SW_CURRENT_03' FFx3",
          "46 00 00 03 00 00 09 4E 00x12 FF 10 63 7F 03 01 01 00x5"}});
}

TEST(DefaultLiteralSwitchBoard, TemperatureOfAnInstanceAsksForNoBus) {
    ExpectRecords(
        SwitchBoard(0x55DE, 0x5517),
        {{"SW_TEMP_08",
          "00 00 51 01 35 20 00 00 10 68 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CA 'SW_TEMP_08' FFx6",
          "47 00 00 08 00x16 FF 10 68 7F 01 01 01 00x5"}});
}

TEST(DefaultLiteralSwitchBoard, InletAndOutletTemperatures) {
    ExpectRecords(
        SwitchBoard(0x5502, 0x5504),
        {{"SW_INPUT_TEMP_01",
          "00 00 51 01 3B 20 00 00 10 60 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 D0 'SW_INPUT_TEMP_01'",
          "48 01 00 00 00x16 FF 10 60 7F 01 01 01 00x5"},
         {"SW_OUTPUT_T_02",
          "00 00 51 01 39 20 00 00 10 63 7F 68 01 01 00x6 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 00x6 03 03 00 00 00 CE 'SW_OUTPUT_T_02' FFx2",
          "48 04 00 03 00x16 FF 10 63 7F 01 01 01 00x5"}});
}

} // namespace
