// SPDX-License-Identifier: GPL-3.0-or-later
//
// Temperature records, every byte written out: the profiles, and each step that makes a record different.
#include "specific_sensors/generators_fixture.h"

namespace {

using namespace generators;

// ---- temperature --------------------------------------------------------------------------------

TEST_F(LiteralRecord, DefaultGpuTemperature) {
    SpecificSensorParam param = Description(kTemp, 2, 3);
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 36 20 00 00"  // 43 + 11 bytes follow
                 "0B 63 7F 68 01 01"       // add-in card, 60h + slot 3
                 "95 7A 95 7A 3F 3F"       // every threshold
                 "80 01 00 00 01 00 00 00" // two's complement, degrees C, M 1
                 "00 00 00 00 00 00 7F 80" // -128 .. 127
                 "6E 64 5A 02 05 0A 03 03" // UNR UC UNC LNR LC LNC, the template's hysteresis
                 "05 03 02 CB",            // sub 0 and port 5, slot, device type
                 "GPU_TEMP_03");
}

TEST_F(LiteralRecord, KestrinNicPortTemperature) {
    Board(CUSTOM_ID_KESTRIN);
    SpecificSensorParam param = Description(kTemp, 43, 12, 1);
    param.wBitmap = 0x18; // UNC and UC
    param.ucHysteresis = 7;
    param.ucSensorSeq = 0x12; // the low half goes into byte 44, the whole number into the name
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 3B 20 00 00"
                 "0B 6C 7F 68 01 01"
                 "80 02 80 32 18 18" // UNC 80 -- 80 10, UC -- 02 -- 22
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 64 5A 00 00 00 07 0712 0C 2B D0", // sub 1, port 2h
                 "HT_NIC12_SFP18_T");
}

TEST_F(LiteralRecord, AstrelOnboardRaidTemperature) {
    Board(CUSTOM_ID_ASTREL);
    SpecificSensorParam param = Description(kTemp, 4, 9);
    param.wBitmap = 0;
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 34 20 00 00"
                 "0B 60 7F 68 01 01" // the one controller keeps 60h
                 "00 00 00 00 00 00" // no threshold at all
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 00 00 00 00 00 03 0305 09 04 C9",
                 "RAID_Temp");
}

TEST_F(LiteralRecord, QuorralFrontRaidTemperature) {
    Board(CUSTOM_ID_QUORRAL);
    AddSlot(4, "F-Slot2");
    SpecificSensorParam param = Description(kTemp, 3, 4);
    param.wBitmap = 0x07; // the three lower ones
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 39 20 00 00"
                 "0B 64 7F 68 01 01" // the instance and byte 45 keep the slot, the name has the silk's
                 "15 70 15 00 07 07"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 00 00 02 05 0A 03 0305 04 03 CE",
                 "PF-2_Raid_Temp");
}

TEST_F(LiteralRecord, LumoraOpticalPortOfAnOcpCard) {
    Board(CUSTOM_ID_LUMORA);
    SpecificSensorParam param = Description(kTemp, 6, 2, 1);
    param.wBitmap = 0x20; // UNR
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 37 20 00 00"
                 "97 E2 7F 68 01 01" // OCP entity, 62h made device-relative
                 "00 08 00 48 20 20"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "6E 00 00 00 00 00 03 0315 FF 06 CC", // no slot
                 "OCP_Opt_Temp");
}

TEST_F(LiteralRecord, VoranaBaseBoardInletTemperature) {
    Board(CUSTOM_ID_VORANA);
    SpecificSensorParam param = Description(kTemp, 68, 1);
    param.wBitmap = 0x10; // UC
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 39 20 00 00"
                 "E0 E1 7F 68 01 01" // base board entity: 61h made device-relative
                 "00 02 00 22 10 10"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 64 00 00 00 00 03 0305 01 44 CE",
                 "HGX_INLET_TEMP");
}

TEST_F(LiteralRecord, PellagoNetCardOfTheBoardIsDeviceRelative) {
    Board(CUSTOM_ID_PELLAGO);
    SpecificSensorParam param = Description(kTemp, 55, 255);
    param.wBitmap = 0x01; // LNC
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 37 20 00 00"
                 "96 E0 7F 68 01 01" // no slot: 60h, device-relative for type 55
                 "01 10 01 00 01 01"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 00 00 00 00 0A 03 0305 FF 37 CC",
                 "CX6_Net_Temp");
}

TEST_F(LiteralRecord, FerriskGpuTemperatureHasFixedUpperThresholds) {
    Board(CUSTOM_ID_FERRISK);
    SpecificSensorParam param = Description(kTemp, 2, 5);
    param.wBitmap = 0x02; // LC
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 34 20 00 00"
                 "0B 65 7F 68 01 01"
                 "84 2A 84 7A 38 38" // LC's 04 20 04 and what is fixed: 80 0A 80 7A
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "5A 58 55 00 05 00 03 03" // 90 88 85 -- LC stays
                 "05 05 02 C9",
                 "GPU5_Temp");
}

TEST_F(LiteralRecord, FerriskFrontDiskTemperature) {
    sim::Board &board = Board(CUSTOM_ID_FERRISK);
    board.disks.backplanes.push_back({0, 8, "Front"});
    board.disks.conversion[3] = 14;
    SpecificSensorParam param = Description(kTemp, kNvme, 3, 1);
    param.wBitmap = 0x10;
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 36 20 00 00"
                 "0B 0E 7F 68 01 01" // the converted slot as it is
                 "00 02 00 22 10 10"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 64 00 00 00 00 03 0345 03 3B CB", // front disk 4, port 5; the slot before conversion
                 "NVME14_Temp");
    EXPECT_EQ(param.SlotId, 14);
}

TEST_F(LiteralRecord, SablinGpuSensorOnTheBoardWithRenamedCards) {
    Board(CUSTOM_ID_SABLIN, 0x54E0);
    SpecificSensorParam param = Description(kTemp, 2, 8, 9);
    param.wBitmap = 0x30;
    param.ucSensorSeq = 2;
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 39 20 00 00"
                 "0B 68 7F 68 01 01"
                 "00 0A 00 6A 30 30" // UC 02 22, UNR 08 48
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "6E 64 00 00 00 00 03 0392 08 02 CE",
                 "RB3_2_Max_Temp");
}

TEST_F(LiteralRecord, CardFamilyTemperatureNumberedByTheSensorIndex) {
    SpecificSensorParam param = Description(kTemp, 17, 6, 1);
    param.ucBrenmorSensorIndex = 13;
    param.wBitmap = 0x04; // LNR
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 34 20 00 00"
                 "0B 66 7F 68 01 01"
                 "10 40 10 00 04 04"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 00 00 02 00 00 03 030D 06 11 C9", // byte 44: the index whole
                 "DPU_DIMMB");
}

TEST_F(LiteralRecord, UserThresholdsLieOverTheDescriptions) {
    SetByUser("GPU_TEMP_03", 0x18, {0xAA, 95, 85, 0xBB, 0xCC, 0xDD});
    SpecificSensorParam param = Description(kTemp, 2, 3);
    param.wBitmap = 0x18;
    ExpectRecord(Make(kTempGenerator, param),
                 "0000 51 01 36 20 00 00"
                 "0B 63 7F 68 01 01"
                 "80 02 80 32 18 18"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 5F 55 00 00 00 03 03" // only what the mask names
                 "05 03 02 CB",
                 "GPU_TEMP_03");
}

TEST_F(LiteralRecord, ANameOf16CharactersFillsTheSlot) {
    SpecificSensorParam param = Description(kTemp, 2, 3, 1);
    param.ucSensorSeq = 4;
    param.wBitmap = 0x08; // UNC
    const Made made = Make(kTempGenerator, param);
    EXPECT_EQ(made.result, 64);
    ExpectRecord(made,
                 "0000 51 01 3B 20 00 00" // 59
                 "0B 63 7F 68 01 01"
                 "80 00 80 10 08 08"
                 "80 01 00 00 01 00 00 0000 00 00 00 00 00 7F 80"
                 "00 00 5A 00 00 00 03 0314 03 02 D0",
                 "GPU_SFP4_TEMP_03");
}

} // namespace
