// SPDX-License-Identifier: GPL-3.0-or-later
//
// FRU device locators of power supplies and of the sub card, and what holds for all four kinds.
#include "specific_sensors/fru_records.h"

namespace {

using namespace fru;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class PsuLocator : public FruTest {};
class SubCardLocator : public FruTest {};
class FruLocators : public FruTest {};

// ---- power supplies -----------------------------------------------------------------------------

const char kPsu3Line[] = "info 42 GenFruOfPsuSpecificSDR: GenFruOfPsuSpecificSDR: index=3\n";
const char kPsu3Lookup[] = "info 42 SDR_GetSepcificFruSDRRecID: "
                           "SDR_GetSepcificFruSDRRecID:=====ucEntityID:ucEntityInstance:wRecID: a, 3, 0.\n";

TEST_F(PsuLocator, OfPsu3IsThisRecord) {
    const Built built = BuildPsu(3);
    EXPECT_EQ(built.length, 24);
    EXPECT_TRUE(tests::SameSdr(kPsu3, built.record));
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup));
}

TEST_F(PsuLocator, OnTheShiftedMachineHasAFruIdEightHigher) {
    StartClean(ShiftedMachine());
    const Built built = BuildPsu(3);
    EXPECT_EQ(built.length, 24);
    EXPECT_TRUE(tests::SameSdr(kPsu3Shifted, built.record));
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup));
}

TEST_F(PsuLocator, OfQuorralIsNamedWithABlank) {
    StartClean(Machine(CUSTOM_ID_QUORRAL, 0));
    const Built built = BuildPsu(3);
    EXPECT_EQ(built.length, 23);
    EXPECT_TRUE(tests::SameSdr(kPsu3Quorral, built.record));
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup));
}

TEST_F(PsuLocator, IsNamedAlikeInEveryOtherProfile) {
    for (const uint32_t custom_id : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 11u, 16u, 20u, 0xFFFFFFFFu}) {
        Apart("profile " + std::to_string(custom_id), [custom_id] {
            StartClean(Machine(custom_id, 0));
            EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record));
        });
    }
}

// A name counts 16 characters at most, whatever its length is said to be.
TEST_F(PsuLocator, ANameWhoseLengthIsBeyondTheBoundCountsSixteenCharacters) {
    sim::AddFault({.call = "strnlen_s", .result = 17});
    const Built built = BuildPsu(1);
    EXPECT_EQ(built.length, 32);
    EXPECT_EQ(built.record[4], 27);    // 11 and the name
    EXPECT_EQ(built.record[15], 0xD0); // text of 16 characters
}

TEST_F(PsuLocator, OfPsu1IsThisRecord) {
    const Built built = BuildPsu(1);
    EXPECT_EQ(built.length, 24);
    EXPECT_EQ(built.record, (Bytes{0x00, 0x00, 0x51, 0x11, 0x13, 0x20, 0x11, 0x80, 0x11, 0x00, 0x10, 0x00,
                                   0x0A, 0x01, 0x00, 0xC8, 'P',  'S',  'U',  '1',  '_',  'F',  'R',  'U'}));
}

TEST_F(PsuLocator, OfPsu99HasTwoDigits) {
    const Built built = BuildPsu(99);
    EXPECT_EQ(built.length, 25);
    EXPECT_EQ(built.record,
              (Bytes{0x00, 0x00, 0x51, 0x11, 0x14, 0x20, 0x73, 0x80, 0x73, 0x00, 0x10, 0x00, 0x0A,
                     0x63, 0x00, 0xC9, 'P',  'S',  'U',  '9',  '9',  '_',  'F',  'R',  'U'}));
}

TEST_F(PsuLocator, OfPsu120IsAcceptedAndGetsFruId136) {
    const Built built = BuildPsu(120);
    EXPECT_EQ(built.length, 26);
    EXPECT_EQ(built.record,
              (Bytes{0x00, 0x00, 0x51, 0x11, 0x15, 0x20, 0x88, 0x80, 0x88, 0x00, 0x10, 0x00, 0x0A,
                     0x78, 0x00, 0xCA, 'P',  'S',  'U',  '1',  '2',  '0',  '_',  'F',  'R',  'U'}));
    EXPECT_THAT(sim::LogTexts(sim::Level::kWarn), IsEmpty());
}

TEST_F(PsuLocator, FruIdsWrapAbove255) {
    const struct { uint8_t index, fru_id; } kRows[] = {{239, 255}, {240, 0}, {241, 1}, {255, 15}};
    for (const auto &row : kRows) {
        const Built built = BuildPsu(row.index);
        EXPECT_EQ(built.length, 26);
        EXPECT_EQ(built.record.at(6), row.fru_id) << int(row.index);
        EXPECT_EQ(built.record.at(8), row.fru_id) << int(row.index);
        EXPECT_EQ(built.record.at(13), row.index);
    }
}

TEST_F(PsuLocator, TheOffsetTakesPartInTheWrap) {
    StartClean(ShiftedMachine());
    EXPECT_EQ(BuildPsu(231).record.at(6), 255);
    const Built built = BuildPsu(232);
    EXPECT_EQ(built.length, 26);
    EXPECT_EQ(built.record.at(6), 0);
    EXPECT_EQ(built.record.at(8), 0);
}

TEST_F(PsuLocator, OfPsu0IsRefused) {
    EXPECT_EQ(BuildPsu(0).length, 0);
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenFruOfPsuSpecificSDR: GenFruOfPsuSpecificSDR: index=0\n",
                                     "warn 42 GenFruOfPsuSpecificSDR: "
                                     "Add SDR: GenFruOfPsuSpecificSDR: index 0 out of range(1~99)\n"));
    EXPECT_THAT(IniCalls(), IsEmpty());
}

TEST_F(PsuLocator, TheIndexIsTheDeviceTypeByteNotTheSlot) {
    SpecificSensorParam param = Psu(3);
    param.SlotId = 77;
    EXPECT_TRUE(tests::SameSdr(kPsu3, Build(GenFruOfPsuSpecificSDR, param).record));
    param.ucDeviceType = 0;
    EXPECT_EQ(Build(GenFruOfPsuSpecificSDR, param).length, 0);
}

TEST_F(PsuLocator, OfARecordedPsuIsNotBuiltAgain) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=12\nPresence=1\n");
    EXPECT_EQ(BuildPsu(3).length, 0);
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup));
    EXPECT_EQ(BuildPsu(4).length, 24) << "only PSU 3 is recorded";
}

TEST_F(PsuLocator, IsBuiltAgainOnceTheRecordIsCleared) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 12, 1);
    EXPECT_EQ(BuildPsu(3).length, 0);
    SDR_UpdateSpecificSDRRecFile(10, 3, 0, 0);
    EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record));
}

TEST_F(PsuLocator, ARecordOfId0OrOfAnotherPresenceDoesNotCount) {
    for (const char *text : {"[PSU_3]\nsdrRecId=0\nPresence=1\n", "[PSU_3]\nsdrRecId=65536\nPresence=1\n",
                             "[PSU_3]\nsdrRecId=12\nPresence=2\n", "[PSU_3]\nsdrRecId=12\nPresence=0\n",
                             "[PSU_3]\nsdrRecId=12\n", "[PSU_3]\nPresence=1\n"}) {
        Put(kRecordFile, text);
        EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record)) << text;
    }
}

TEST_F(PsuLocator, IsBuiltBesideADamagedRecordFile) {
    for (const std::string &text :
         {std::string("[PSU_3\nPresence\n=1\nsdrRecId=12"), EveryByte(), std::string(),
          std::string("[PSU_30]\nsdrRecId=12\nPresence=1\n"), std::string("Presence=1\nsdrRecId=12\n"),
          std::string("[PSU_3]\nsdrRecId=12\nPresence=99999999999999999999\n")}) {
        Put(kRecordFile, text);
        EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record)) << text;
        EXPECT_EQ(TextOf(kRecordFile), text);
    }
}

TEST_F(PsuLocator, IsBuiltWhenTheRecordFileCannotBeLoaded) {
    const char *const kNotLoaded =
        "error 42 SDR_GetSepcificFruSDRRecID: SDR_GetSepcificFruSDRRecID: file creation failed.\n";
    PutDirectory(kRecordFile);
    EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record));
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup, kNotLoaded));
    StartClean(PlainMachine());
    Fail("IniLoadFile");
    EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record));
    EXPECT_THAT(Lines(), ElementsAre(kPsu3Line, kPsu3Lookup, kNotLoaded));
}

TEST_F(PsuLocator, NeitherTheRecordFileNorTheIdFileIsWritten) {
    EXPECT_EQ(BuildPsu(3).length, 24);
    EXPECT_FALSE(sim::FileExists(kRecordFile));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_EQ(sim::CountCalls("IniSaveFile"), 0u);
    EXPECT_EQ(sim::CountCalls("OXA_IniLoadFile"), 0u);
}

TEST_F(PsuLocator, AnUnreadableProfileIsProfile0) {
    StartClean(Machine(CUSTOM_ID_QUORRAL, 0));
    Fail("IPMI_LoadCustomID");
    EXPECT_TRUE(tests::SameSdr(kPsu3, BuildPsu(3).record));
}

// ---- the sub card -------------------------------------------------------------------------------

TEST_F(SubCardLocator, IsThisRecord) {
    const Built built = BuildSubCard(15);
    EXPECT_EQ(built.length, 27);
    EXPECT_TRUE(tests::SameSdr(kSubCard, built.record));
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenFruOfSubCardSpecificSDR: ucSlotId = 15 !",
                                     "info 42 GenFruOfSubCardSpecificSDR: FruId = 59 Is Allocated !"));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_FALSE(sim::FileExists(kRecordFile));
}

TEST_F(SubCardLocator, HasFruId59OnTheShiftedMachineToo) {
    StartClean(ShiftedMachine());
    EXPECT_TRUE(tests::SameSdr(kSubCard, BuildSubCard(15).record));
}

TEST_F(SubCardLocator, InAnyOtherSlotIsRefusedAndTakesNoFruId) {
    EXPECT_EQ(BuildSubCard(14).length, 0);
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenFruOfSubCardSpecificSDR: ucSlotId = 14 !",
                                     "warn 42 GenFruOfSubCardSpecificSDR: Add SDR: "
                                     "GenFruOfSubCardSpecificSDR: index 14 out of range(1~99)\n"));
    for (int slot = 0; slot < 256; ++slot) {
        if (slot != 15) {
            EXPECT_EQ(BuildSubCard(static_cast<uint8_t>(slot)).length, 0) << slot;
        }
    }
    EXPECT_TRUE(tests::SameSdr(kSubCard, BuildSubCard(15).record));
}

TEST_F(SubCardLocator, ASecondOneIsRefused) {
    EXPECT_EQ(BuildSubCard(15).length, 27);
    sim::ClearTrace();
    EXPECT_EQ(BuildSubCard(15).length, 0);
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenFruOfSubCardSpecificSDR: ucSlotId = 15 !",
                                     "info 42 GenFruOfSubCardSpecificSDR: FruId = 59 Has Been Used !",
                                     "error 42 GenFruOfSubCardSpecificSDR: SubCard Get Valid FruId Fail, "
                                     "ucSlotId:15!"));
}

// ---- null arguments -----------------------------------------------------------------------------

TEST_F(FruLocators, ANullArgumentIsAnErrorAndGives0) {
    for (const Generator &generator : kGenerators) {
        SpecificSensorParam param = generator.param;
        uint8_t sdr[SDR_SLOT_SIZE] = {};
        const std::string name = generator.name;
        std::vector<std::string> lines;
        if (generator.says_exec) {
            lines.push_back("info 42 " + name + ": " + name + " is exec!!!\n");
        }
        lines.push_back("error 42 " + name + ": " + name + " failed! The input parameter is null.");
        for (int null = 1; null <= 3; ++null) {
            sim::ClearTrace();
            EXPECT_EQ(generator.run(null & 1 ? nullptr : &param, null & 2 ? nullptr : sdr, 0), 0) << name;
            EXPECT_THAT(Lines(), ElementsAreArray(lines)) << name << " " << null;
        }
        EXPECT_THAT(sdr, testing::Each(0));
    }
    EXPECT_THAT(IniCalls(), IsEmpty());
    EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record)) << "no FRU id was taken";
    EXPECT_EQ(BuildSubCard(15).length, 27);
}

} // namespace
