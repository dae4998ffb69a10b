// SPDX-License-Identifier: GPL-3.0-or-later
//
// Records of voltages, powers, fans and states, every byte written out: the profiles, and each step that
// makes a record different.
#include "specific_sensors/generators_fixture.h"

namespace {

using namespace generators;

// ---- voltage ------------------------------------------------------------------------------------

TEST_F(LiteralRecord, VoranaCardVoltage) {
    Board(CUSTOM_ID_VORANA);
    SpecificSensorParam param = Description(kVolt, 31, 2);
    param.wBitmap = 0x12; // LC and UC
    param.ucUC = 230;
    param.ucLC = 30;
    param.ucHysteresis = 2;
    ExpectRecord(Make(kVoltGenerator, param),
                 "0000 51 01 37 20 00 00"
                 "E1 62 7F 68 02 01"
                 "04 22 04 22 12 12"       // LC 04 20 04, UC -- 02 -- 22
                 "00 04 00 00 64 00 00 00" // volts, M 100
                 "00 C0 00 00 00 00 FF 00" // R -4
                 "00 E6 00 00 1E 00 02 0205 02 1F CC",
                 "P2_SXM_Volts");
}

// ---- power --------------------------------------------------------------------------------------

TEST_F(LiteralRecord, DefaultTotalPowerOfABoardWithoutInventory) {
    Board(CUSTOM_ID_DEFAULT, 0x5502);
    SpecificSensorParam param = Description(kPower, 2, 255);
    param.wBitmap = 0x10;
    ExpectRecord(Make(kPowerGenerator, param),
                 "0000 51 01 3A 20 00 00"
                 "0B 60 7F 68 08 01" // no slot
                 "00 02 00 22 10 10"
                 "00 06 00 00 11 00 09 00" // watts, M 17, B 9: board 5502h
                 "00 00 00 00 00 00 FF 0000 64 00 00 00 00 03 03"
                 "00 FF 02 CF", // byte 44 stays 0
                 "GPU_TOTAL_POWER");
}

TEST_F(LiteralRecord, PellagoPowerOfOneGpu) {
    Board(CUSTOM_ID_PELLAGO).gpus = {{4, 350, 0x10DE}, {5, 900, 0x10DE}};
    SpecificSensorParam param = Description(kPower, 56, 4);
    param.wBitmap = 0x20;
    ExpectRecord(Make(kPowerGenerator, param),
                 "0000 51 01 35 20 00 00"
                 "0B 64 7F 68 08 01"
                 "00 08 00 48 20 20"
                 "00 06 00 00 02 00 01 00" // 350 W: M 2, B 1
                 "00 00 00 00 00 00 FF 006E 00 00 00 00 00 03 03"
                 "00 04 38 CA",
                 "GPU4_Power");
}

TEST_F(LiteralRecord, LumoraPowerIsOfAnotherSensorType) {
    Board(CUSTOM_ID_LUMORA).gpus = {{1, 255, 0x10DE}};
    SpecificSensorParam param = Description(kPower, 30, 1);
    param.wBitmap = 0;
    ExpectRecord(Make(kPowerGenerator, param),
                 "0000 51 01 34 20 00 00"
                 "E1 61 7F 68 0B 01" // 0Bh
                 "00 00 00 00 00 00"
                 "00 06 00 00 01 00 00 00" // 255 W: M 1, B 0
                 "00 00 00 00 00 00 FF 0000 00 00 00 00 00 03 03"
                 "00 01 1E C9",
                 "OAM_Power");
}

TEST_F(LiteralRecord, DurnowPowerOfACardProcessor) {
    Board(CUSTOM_ID_DURNOW);
    SpecificSensorParam param = Description(kPower, 36, 2, 3);
    param.wBitmap = 0;
    param.ucSensorSeq = 0x1B;
    ExpectRecord(Make(kPowerGenerator, param),
                 "0000 51 01 39 20 00 00"
                 "0B 62 7F 68 08 01"
                 "00 00 00 00 00 00"
                 "00 06 00 00 01 00 00 00" // M 1
                 "00 00 00 00 00 00 FF 0000 00 00 00 00 00 03 03"
                 "3B 02 24 CE", // 3 x 16 + Bh
                 "NEO2_CPU_Power");
}

// ---- fans ---------------------------------------------------------------------------------------

TEST_F(LiteralRecord, KestrinFansAreNumberedInHexadecimal) {
    Board(CUSTOM_ID_KESTRIN);
    SpecificSensorParam param = Description(kFan, 255, 10);
    param.wBitmap = 0x06; // LC and LNR
    param.ucBrenmorSensorIndex = 0x64;
    ExpectRecord(Make(kFanGenerator, param),
                 "0000 51 01 39 20 00 00"
                 "1D 6A 7F 68 04 01"
                 "14 60 14 00 06 06"       // LC 04 20 04, LNR 10 40 10
                 "00 12 00 00 64 00 00 00" // RPM, M 100
                 "00 00 00 00 00 00 FF 0000 00 00 02 05 00 03 03"
                 "00 64 FF CE", // byte 45: the accuracy byte
                 "SYS_FanA_Speed");
}

TEST_F(LiteralRecord, DurnowFansHaveTwoDigits) {
    Board(CUSTOM_ID_DURNOW);
    SpecificSensorParam param = Description(kFan, 0, 3);
    param.wBitmap = 0;
    param.ucHysteresis = 1;
    ExpectRecord(Make(kFanGenerator, param),
                 "0000 51 01 38 20 00 00"
                 "1D 63 7F 68 04 01"
                 "00 00 00 00 00 00"
                 "00 12 00 00 64 00 00 0000 00 00 00 00 00 FF 00"
                 "00 00 00 00 00 00 01 0100 00 00 CD",
                 "FAN_SPEED_03F");
}

TEST_F(LiteralRecord, FerriskFansHaveForcedLowerThresholds) {
    Board(CUSTOM_ID_FERRISK);
    SpecificSensorParam param = Description(kFan, 1, 4);
    param.wBitmap = 0x10; // UC, which stays in its byte
    param.ucLC = 21;
    param.ucBrenmorSensorIndex = 9;
    ExpectRecord(Make(kFanGenerator, param),
                 "0000 51 01 37 20 00 00"
                 "1D 64 7F 68 04 01"
                 "05 02 05 02 13 13"
                 "00 12 00 00 64 00 00 0000 00 00 00 00 00 FF 00"
                 "00 64 00 00 13 15 03 03" // LC 21 - 2, LNC 21
                 "00 09 01 CC",
                 "FAN4_R_Speed");
}

// ---- compact records ----------------------------------------------------------------------------

TEST_F(LiteralRecord, FerriskSasDiskStatus) {
    Board(CUSTOM_ID_FERRISK).disks.conversion[3] = 7;
    SpecificSensorParam param = Description(kDisk, kNvme, 3, 3);
    ExpectRecord(Make(kDiskGenerator, param),
                 "0000 51 02 26 20 00 00" // 27 + 11
                 "04 00 63 C0 0D 6F"      // disk, instance 0, drive slot
                 "0100 0100 4700"
                 "C0 00 00 01 00 00 00 00 0003 3B CB", // the slot before conversion
                 "SAS7_Status");
    EXPECT_EQ(param.SlotId, 7);
}

TEST_F(LiteralRecord, FerriskRearNvmeDiskStatus) {
    sim::Board &board = Board(CUSTOM_ID_FERRISK);
    board.disks.backplanes.push_back({24, 4, "Rear"});
    board.disks.conversion[25] = 2;
    SpecificSensorParam param = Description(kDisk, kNvme, 25, 1);
    ExpectRecord(Make(kDiskGenerator, param),
                 "0000 51 02 29 20 00 00"
                 "04 00 63 C0 0D 6F"
                 "0100 0100 4700"
                 "C0 00 00 01 00 00 00 00 0019 3B CE",
                 "NVME2_R_Status");
}

TEST_F(LiteralRecord, BoxCardStatus) {
    SpecificSensorParam param = Description(kCard, 42, 4);
    ExpectRecord(Make(kCardGenerator, param),
                 "0000 51 02 1E 20 00 00"
                 "E0 E4 63 40 15 07" // base board, 64h made device-relative; module, severity
                 "0600 0600 FF7F"
                 "00 00 00 00 01 00 00 00 0000 00 C3",
                 "BOX");
}

TEST_F(LiteralRecord, SablinGpuCardStatus) {
    Board(CUSTOM_ID_SABLIN, 0x54E0);
    SpecificSensorParam param = Description(kGpuCard, 2, 5);
    ExpectRecord(Make(kGpuCardGenerator, param),
                 "0000 51 02 2A 20 00 00"
                 "0B 65 63 40 17 6F" // add-in card, sensor-specific
                 "0600 0600 FF7F"
                 "00 00 00 00 01 00 00 00 0000 00 CF",
                 "RA3_Card_Status");
}

TEST_F(LiteralRecord, KestrinMemoryStatusOfAGpu) {
    Board(CUSTOM_ID_KESTRIN);
    SpecificSensorParam param = Description(kMemory, 18, 3);
    ExpectRecord(Make(kMemoryGenerator, param),
                 "0000 51 02 23 20 00 00"
                 "0B 60 7F 40 0C 6F" // always 60h
                 "4200 4200 4200"
                 "00 00 00 11 00 01 01 00 0000 00 C8",
                 "GPU3_Mem");
}

} // namespace
