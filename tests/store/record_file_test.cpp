// SPDX-License-Identifier: GPL-3.0-or-later
//
// The record file: which FRU locator has which record id in the repository, and whether its device is there.
#include "support/fru_fixture.h"

namespace {

using namespace fru;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordFileWriter : public FruTest {};
class RecordFileReader : public FruTest {};

const char kLoadCall[] = "IniLoadFile(path=\"/var/SpecificSDRRec\")";
const char kCloseCall[] = "IniCloseFile(file=\"/var/SpecificSDRRec\")";
const char kSaveCall[] = "IniSaveFile(file=\"/var/SpecificSDRRec\" path=\"/var/SpecificSDRRec\")";

std::string WriterLine(const std::string &numbers) {
    return "info 42 SDR_UpdateSpecificSDRRecFile: "
           "SDR_UpdateSpecificSDRRecFile:=====ucEntityID:ucEntityInstance:wRecID: " +
           numbers + ".\n";
}
std::string ReaderLine(const std::string &numbers) {
    return "info 42 SDR_GetSepcificFruSDRRecID: "
           "SDR_GetSepcificFruSDRRecID:=====ucEntityID:ucEntityInstance:wRecID: " +
           numbers + ".\n";
}
const char kNotWritten[] =
    "error 42 SDR_UpdateSpecificSDRRecFile: SDR_UpdateSpecificSDRRecFile: file creation failed.\n";
const char kNotRead[] =
    "error 42 SDR_GetSepcificFruSDRRecID: SDR_GetSepcificFruSDRRecID: file creation failed.\n";

std::string SetCall(const std::string &section, const std::string &key, uint32_t value) {
    return "IniSetUInt(file=\"/var/SpecificSDRRec\" section=\"" + section + "\" key=\"" + key +
           "\" value=" + std::to_string(value) + ")";
}
std::string GetCall(const std::string &section, const std::string &key) {
    return "IniGetUInt(file=\"/var/SpecificSDRRec\" section=\"" + section + "\" key=\"" + key +
           "\" default=0)";
}

// ---- writing ------------------------------------------------------------------------------------

TEST_F(RecordFileWriter, EntersAPsu) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=77\nPresence=1\n");
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 77")));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, SetCall("PSU_3", "sdrRecId", 77),
                                        SetCall("PSU_3", "Presence", 1), kSaveCall, kCloseCall));
}

TEST_F(RecordFileWriter, EntersAPurchaseCard) {
    SDR_UpdateSpecificSDRRecFile(11, 12, 5, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PurchaseCard_12]\nsdrRecId=5\nPresence=1\n");
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("b, 12, 5")));
}

TEST_F(RecordFileWriter, EntersAPurchaseUbb) {
    SDR_UpdateSpecificSDRRecFile(224, 0, 6, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PurchaseUBB_0]\nsdrRecId=6\nPresence=1\n");
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("e0, 0, 6")));
}

TEST_F(RecordFileWriter, AnyOtherClassIsNotSupportedAndSavesNothing) {
    for (const uint32_t device_class : {0u, 1u, 9u, 12u, 223u, 225u, 266u, 0x10Bu, 0x1E0u}) {
        sim::ClearTrace();
        SDR_UpdateSpecificSDRRecFile(device_class, 3, 77, 1);
        char hex[16];
        std::snprintf(hex, sizeof(hex), "%x", device_class);
        EXPECT_THAT(Lines(), ElementsAre(WriterLine(std::string(hex) + ", 3, 77"),
                                         "info 42 SDR_UpdateSpecificSDRRecFile: "
                                         "SDR_UpdateSpecificSDRRecFile: input device type is not support, " +
                                             std::to_string(device_class) + ".\n"));
        EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, kCloseCall));
    }
    EXPECT_FALSE(sim::FileExists(kRecordFile));
}

TEST_F(RecordFileWriter, Presence0StoresRecordId0) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 0);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=0\nPresence=0\n") << "the section stays";
}

TEST_F(RecordFileWriter, AnyOtherPresenceIsStoredAsItIsWithRecordId0) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 2);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=0\nPresence=2\n");
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 0xFFFFFFFF);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=0\nPresence=4294967295\n");
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 0x101);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=0\nPresence=257\n");
}

TEST_F(RecordFileWriter, KeepsTheWholeRecordId) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 0x12345, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=74565\nPresence=1\n");
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 74565")));
}

TEST_F(RecordFileWriter, KeepsAllOtherSections) {
    Put(kRecordFile, "[Own]\n note = 5\n[PSU_3]\nother=1\nPresence=0\n");
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    SDR_UpdateSpecificSDRRecFile(10, 30, 78, 1);
    SDR_UpdateSpecificSDRRecFile(11, 3, 79, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[Own]\n note =5\n[PSU_3]\nother=1\nPresence=1\nsdrRecId=77\n"
                                   "[PSU_30]\nsdrRecId=78\nPresence=1\n"
                                   "[PurchaseCard_3]\nsdrRecId=79\nPresence=1\n");
}

TEST_F(RecordFileWriter, SectionNamesAreCutTo16CharactersAndStillWritten) {
    const struct {
        uint32_t device_class, index;
        const char *section;
    } kRows[] = {{11, 999, "PurchaseCard_999"},       {11, 1000, "PurchaseCard_100"},
                 {11, 123456789, "PurchaseCard_123"}, {224, 9999, "PurchaseUBB_9999"},
                 {224, 12345, "PurchaseUBB_1234"},    {10, 999999999, "PSU_999999999"}};
    for (const auto &row : kRows) {
        StartClean(PlainMachine());
        SDR_UpdateSpecificSDRRecFile(row.device_class, row.index, 8, 1);
        EXPECT_EQ(TextOf(kRecordFile), std::string("[") + row.section + "]\nsdrRecId=8\nPresence=1\n");
        EXPECT_THAT(sim::LogTexts(), testing::SizeIs(1));
    }
}

TEST_F(RecordFileWriter, AFileThatCannotBeLoadedIsLeftAsItIs) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=77\nPresence=1\n");
    fru::Fail("IniLoadFile");
    SDR_UpdateSpecificSDRRecFile(10, 3, 0, 0);
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 0"), kNotWritten));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=77\nPresence=1\n");
}

TEST_F(RecordFileWriter, ASuccessWithoutAHandleIsAFileThatCannotBeLoaded) {
    sim::AddFault({.call = "IniLoadFile", .output = 0, .succeed = true});
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 77"), kNotWritten));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
}

TEST_F(RecordFileWriter, AnUnsupportedClassIsOnlyToldOnceTheFileIsLoaded) {
    fru::Fail("IniLoadFile");
    SDR_UpdateSpecificSDRRecFile(12, 3, 7, 1);
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("c, 3, 7"), kNotWritten));
}

TEST_F(RecordFileWriter, ResultsOfSettingAndSavingAreNotLookedAt) {
    fru::Fail("IniSetUInt", "sdrRecId");
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nPresence=1\n");
    sim::ClearFaults();
    fru::Fail("IniSetUInt", "Presence");
    SDR_UpdateSpecificSDRRecFile(10, 4, 78, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nPresence=1\n[PSU_4]\nsdrRecId=78\n");
    sim::ClearFaults();
    fru::Fail("IniSaveFile");
    SDR_UpdateSpecificSDRRecFile(10, 5, 79, 1);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nPresence=1\n[PSU_4]\nsdrRecId=78\n");
    EXPECT_EQ(sim::CountCalls("IniCloseFile"), 3u);
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 77"), WriterLine("a, 4, 78"), WriterLine("a, 5, 79")));
}

TEST_F(RecordFileWriter, ADamagedFileIsReplacedByWhatCouldBeRead) {
    const struct {
        std::string before, after;
    } kRows[] = {
        {"", ""},
        {"not an INI file\n[PSU_3\nPresence 1\n", ""},
        {"[PSU_2]\nPresence=99999999999999999999\n", "[PSU_2]\nPresence=4294967295\n"},
        {std::string(70000, '\xFF'), ""},
        {std::string("\0\0\n\0", 4), ""},
    };
    for (const auto &row : kRows) {
        Put(kRecordFile, row.before);
        SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
        EXPECT_EQ(TextOf(kRecordFile), row.after + "[PSU_3]\nsdrRecId=77\nPresence=1\n");
    }
}

TEST_F(RecordFileWriter, ABinaryFileTakesTheEntry) {
    Put(kRecordFile, EveryByte() + EveryByte());
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 77);
}

TEST_F(RecordFileWriter, ADirectoryInPlaceOfTheFileIsAnError) {
    PutDirectory(kRecordFile);
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
    EXPECT_THAT(Lines(), ElementsAre(WriterLine("a, 3, 77"), kNotWritten));
    EXPECT_TRUE(std::filesystem::is_directory(sim::RealPath(kRecordFile)));
}

TEST_F(RecordFileWriter, WhicheverCallFailsTheFileHoldsRightEntriesOnly) {
    const std::string kWhole = "[PSU_3]\nsdrRecId=77\nPresence=1\n";
    uint64_t k = 1;
    for (bool hit = true; hit; ++k) {
        ASSERT_LT(k, 100u);
        StartClean(PlainMachine());
        sim::FailCall(k);
        SDR_UpdateSpecificSDRRecFile(10, 3, 77, 1);
        hit = sim::FaultWasHit();
        EXPECT_THAT(TextOf(kRecordFile),
                    testing::AnyOf("", "[PSU_3]\nsdrRecId=77\n", "[PSU_3]\nPresence=1\n", kWhole))
            << k;
        EXPECT_TRUE(hit || TextOf(kRecordFile) == kWhole);
        EXPECT_THAT(sim::Violations(), IsEmpty()) << k;
    }
    EXPECT_GT(k, 5u) << "load, two values and the write can fail";
}

// ---- reading ------------------------------------------------------------------------------------

TEST_F(RecordFileReader, GivesTheRecordIdOfAPsu) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=77\nPresence=1\n[PSU_4]\nsdrRecId=78\nPresence=1\n");
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 77);
    EXPECT_THAT(Lines(), ElementsAre(ReaderLine("a, 3, 0")));
    EXPECT_THAT(IniCalls(), testing::UnorderedElementsAre(kLoadCall, GetCall("PSU_3", "Presence"),
                                                          GetCall("PSU_3", "sdrRecId"), kCloseCall));
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 4), 78);
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=77\nPresence=1\n[PSU_4]\nsdrRecId=78\nPresence=1\n");
}

TEST_F(RecordFileReader, ReadsWhatTheWriterWroteUpToIndex255) {
    for (uint32_t index = 0; index < 256; index += 15) {
        SDR_UpdateSpecificSDRRecFile(10, index, 1000 + index, 1);
    }
    for (uint32_t index = 0; index < 256; index += 15) {
        EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, static_cast<uint8_t>(index)), 1000 + index);
    }
}

TEST_F(RecordFileReader, AMissingFileSectionOrKeyGives0) {
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0);
    EXPECT_THAT(Lines(), ElementsAre(ReaderLine("a, 3, 0")));
    EXPECT_FALSE(sim::FileExists(kRecordFile)) << "reading creates nothing";
    for (const char *text : {"[PSU_30]\nsdrRecId=77\nPresence=1\n", "[PSU_3]\nPresence=1\n",
                             "[PSU_3]\nsdrRecId=77\n", "[psu_3]\nsdrRecId=77\nPresence=1\n",
                             "[PSU_03]\nsdrRecId=77\nPresence=1\n", "[PSU_3 ]\nsdrRecId=77\nPresence=1\n"}) {
        Put(kRecordFile, text);
        EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0) << text;
    }
}

TEST_F(RecordFileReader, OnlyPresence1Counts) {
    for (const char *presence : {"0", "2", "255", "256", "257", "65537", "4294967295", "99999999999", "-1"}) {
        Put(kRecordFile, std::string("[PSU_3]\nsdrRecId=77\nPresence=") + presence + "\n");
        EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0) << presence;
    }
}

TEST_F(RecordFileReader, WhatWasWrittenWithPresence2ReadsAs0) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 77, 2);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0);
}

TEST_F(RecordFileReader, ARecordIdAboveFFFFGivesItsLow16Bits) {
    SDR_UpdateSpecificSDRRecFile(10, 3, 0x12345, 1);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0x2345);
    Put(kRecordFile, "[PSU_3]\nsdrRecId=99999999999999999999\nPresence=1\n"
                     "[PSU_4]\nsdrRecId=65536\nPresence=1\n[PSU_5]\nsdrRecId=65535\nPresence=1\n");
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0xFFFF);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 4), 0);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 5), 0xFFFF);
}

TEST_F(RecordFileReader, AnyOtherClassIsAWarningAndGives0) {
    SDR_UpdateSpecificSDRRecFile(11, 3, 77, 1);
    SDR_UpdateSpecificSDRRecFile(224, 3, 78, 1);
    const Bytes before = sim::ReadFile(kRecordFile);
    for (const int device_class : {11, 224, 0, 9, 12, 255}) {
        sim::ClearTrace();
        EXPECT_EQ(SDR_GetSepcificFruSDRRecID(static_cast<uint8_t>(device_class), 3), 0);
        char hex[16];
        std::snprintf(hex, sizeof(hex), "%x", static_cast<unsigned>(device_class));
        EXPECT_THAT(Lines(), ElementsAre(ReaderLine(std::string(hex) + ", 3, 0"),
                                         "warn 42 SDR_GetSepcificFruSDRRecID: "
                                         "SDR_GetSepcificFruSDRRecID: input device type is not support, " +
                                             std::to_string(device_class) + ".\n"));
        EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, kCloseCall));
    }
    EXPECT_EQ(sim::ReadFile(kRecordFile), before);
}

TEST_F(RecordFileReader, AFileThatCannotBeLoadedIsAnErrorAndGives0) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=77\nPresence=1\n");
    fru::Fail("IniLoadFile");
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(11, 3), 0);
    EXPECT_THAT(Lines(), ElementsAre(ReaderLine("a, 3, 0"), kNotRead, ReaderLine("b, 3, 0"), kNotRead));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, kLoadCall));
    EXPECT_EQ(TextOf(kRecordFile), "[PSU_3]\nsdrRecId=77\nPresence=1\n");
}

TEST_F(RecordFileReader, ASuccessWithoutAHandleIsAnErrorAndGives0) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=77\nPresence=1\n");
    sim::AddFault({.call = "IniLoadFile", .output = 0, .succeed = true});
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0);
    EXPECT_THAT(Lines(), ElementsAre(ReaderLine("a, 3, 0"), kNotRead));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
}

TEST_F(RecordFileReader, ADirectoryInPlaceOfTheFileIsAnErrorAndGives0) {
    PutDirectory(kRecordFile);
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0);
    EXPECT_THAT(Lines(), ElementsAre(ReaderLine("a, 3, 0"), kNotRead));
}

TEST_F(RecordFileReader, ADamagedFileGives0) {
    for (const std::string &text :
         {std::string(), EveryByte(), std::string("[PSU_3\nsdrRecId=77\nPresence=1\n"),
          std::string("sdrRecId=77\nPresence=1\n"), std::string("[PSU_3]\nsdrRecId 77\nPresence:1\n"),
          std::string("[PSU_3]\nsdrRecId=77\nPresence=1 or so\n"), std::string(100000, 'P'),
          std::string("[PSU_3]\nsdrRecId=-5\nPresence=1\n"), std::string(2000, '\0')}) {
        Put(kRecordFile, text);
        EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 3), 0) << text;
        EXPECT_EQ(TextOf(kRecordFile), text);
    }
}

TEST_F(RecordFileReader, WhicheverCallFailsTheAnswerIs0) {
    uint64_t k = 1;
    for (bool hit = true; hit; ++k) {
        ASSERT_LT(k, 100u);
        StartClean(PlainMachine());
        Put(kRecordFile, "[PSU_3]\nsdrRecId=77\nPresence=1\n");
        sim::FailCall(k);
        const uint16_t id = SDR_GetSepcificFruSDRRecID(10, 3);
        hit = sim::FaultWasHit();
        EXPECT_EQ(id, hit ? 0 : 77) << k;
        EXPECT_THAT(sim::Violations(), IsEmpty()) << k;
    }
    EXPECT_GT(k, 2u);
}

} // namespace
