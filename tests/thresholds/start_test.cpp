// SPDX-License-Identifier: GPL-3.0-or-later
//
// Start: the stored image goes to the platform, or away when the machine has become another customer's.
#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

class ThresholdStart : public ThresholdTest {
protected:
    // A live table that no file of these tests holds.
    Bytes before = Image(99, {{"BEFORE", {6, 5, 4, 1, 2, 3}, 0x3F}});
    void SetUp() override {
        ThresholdTest::SetUp();
        SetLive(before);
    }
};

Lines LastCustomId(const std::string &stored, const std::string &now) {
    return Warning(kInit, "last customid " + stored + ", now: " + now + ", delete sensor thread");
}

TEST_F(ThresholdStart, AnImageOfTheSameCustomerGoesToThePlatformByteForByte) {
    Bytes image(kImageSize);
    for (size_t i = 0; i < kImageSize; ++i) {
        image[i] = static_cast<uint8_t>(i * 7 + i / 256); // every byte of it, whatever it means
    }
    PutCustomId(image, 16);
    sim::WriteFile(kFile, image);
    InitSdrThresholdInfoFromFile(16);
    EXPECT_EQ(Live(), image);
    EXPECT_EQ(sim::ReadFile(kFile), image);
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(sim::CountCalls(kSet), 1u);
    EXPECT_EQ(sim::CountCalls(kGet), 0u);
}

TEST_F(ThresholdStart, TheFileIsOpenedForReadingAndUpdatingAndClosedAgain) {
    sim::WriteFile(kFile, Image(0, {}));
    InitSdrThresholdInfoFromFile(0);
    EXPECT_EQ(ArgsOf("oxa_fopen_s"), "path=\"/conf/BMC1/sensor_threshold.dat\" mode=\"rb+\"");
    EXPECT_EQ(sim::CountCalls("fread"), 1u);
    EXPECT_EQ(sim::CountCalls("oxa_fclose_s"), 1u);
    EXPECT_EQ(sim::CountCalls("unlink"), 0u);
}

TEST_F(ThresholdStart, AMissingFileIsAnErrorThatNamesThePath) {
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(),
                ElementsAreArray(Error(kInit, "oxa_fopen_s /conf/BMC1/sensor_threshold.dat failed")));
    EXPECT_THAT(Calls(), ElementsAre("oxa_fopen_s"));
    EXPECT_EQ(Live(), before);
}

TEST_F(ThresholdStart, AnotherCustomersFileIsDeletedAndNothingIsHandedOver) {
    sim::WriteFile(kFile, Image(7, {{"INPUT_TEMP", {60, 55, 50, 0, 0, 0}, 0x38}}));
    InitSdrThresholdInfoFromFile(11);
    EXPECT_THAT(Written(), ElementsAreArray(LastCustomId("7", "11")));
    EXPECT_EQ(ArgsOf("unlink"), "path=\"/conf/BMC1/sensor_threshold.dat\"");
    EXPECT_FALSE(sim::FileExists(kFile));
    EXPECT_EQ(sim::CountCalls(kSet), 0u);
    EXPECT_EQ(Live(), before);
}

TEST_F(ThresholdStart, AFileIsClosedBeforeItIsDeleted) {
    sim::WriteFile(kFile, Image(7, {}));
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Calls(), ElementsAre("oxa_fopen_s", "fread", "oxa_fclose_s", "unlink"));
}

TEST_F(ThresholdStart, CustomIdsAreWordsAndPrintedWithoutSign) {
    sim::WriteFile(kFile, Image(0xFFFFFFFF, {}));
    InitSdrThresholdInfoFromFile(0x80000000);
    EXPECT_THAT(Written(), ElementsAreArray(LastCustomId("4294967295", "2147483648")));
}

TEST_F(ThresholdStart, AllFourBytesOfTheCustomIdAreCompared) {
    for (int bit = 0; bit < 32; ++bit) {
        sim::WriteFile(kFile, Image(16u ^ 1u << bit, {}));
        sim::ClearTrace();
        InitSdrThresholdInfoFromFile(16);
        EXPECT_THAT(Written(), ElementsAreArray(LastCustomId(std::to_string(16u ^ 1u << bit), "16")));
        EXPECT_EQ(sim::CountCalls(kSet), 0u) << bit;
        EXPECT_FALSE(sim::FileExists(kFile)) << bit;
    }
}

TEST_F(ThresholdStart, ADeleteThatFailsIsToldAndLeavesTheFile) {
    const Bytes image = Image(7, {{"A", {}, 0}});
    sim::WriteFile(kFile, image);
    Fail("unlink");
    InitSdrThresholdInfoFromFile(0);
    Lines lines = LastCustomId("7", "0");
    lines.push_back(Line("info", kInit, "unlink failed!!!"));
    EXPECT_THAT(Written(), ElementsAreArray(lines));
    EXPECT_EQ(sim::ReadFile(kFile), image);
    EXPECT_EQ(Live(), before);
}

TEST_F(ThresholdStart, AnEmptyFileUnderIdZeroHandsOverZeros) {
    sim::WriteFile(kFile, {});
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(), ElementsAreArray(Info(kInit, "fread failed!!!")));
    EXPECT_EQ(Live(), Bytes(kImageSize, 0));
    EXPECT_TRUE(sim::FileExists(kFile));
}

TEST_F(ThresholdStart, AnEmptyFileUnderAnotherIdIsDeleted) {
    sim::WriteFile(kFile, {});
    InitSdrThresholdInfoFromFile(4);
    Lines lines = Info(kInit, "fread failed!!!");
    lines.push_back(LastCustomId("0", "4").front());
    EXPECT_THAT(Written(), ElementsAreArray(lines));
    EXPECT_FALSE(sim::FileExists(kFile));
    EXPECT_EQ(Live(), before);
}

TEST_F(ThresholdStart, WhatFollowsTheImageIsNotRead) {
    Bytes image = Image(3, NumberedEntries(512));
    Bytes longer = image;
    longer.insert(longer.end(), 5000, 0xA5);
    sim::WriteFile(kFile, longer);
    InitSdrThresholdInfoFromFile(3);
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(Live(), image);
    EXPECT_EQ(sim::ReadFile(kFile), longer);
}

TEST_F(ThresholdStart, APlatformThatRefusesTheTableIsNotAskedAgain) {
    sim::WriteFile(kFile, Image(0, {{"A", {}, 0}}));
    Fail(kSet);
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(sim::CountCalls(kSet), 1u);
    EXPECT_EQ(Live(), before);
}

TEST_F(ThresholdStart, ACloseThatFailsChangesNothing) {
    const Bytes image = Image(0, {{"A", {}, 0}});
    sim::WriteFile(kFile, image);
    Fail("oxa_fclose_s");
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(Live(), image);
}

// Nothing came: the table is what an empty file gives, whatever the failed call left in the buffer.
TEST_F(ThresholdStart, AReadThatFailsUnderIdZeroHandsOverZeros) {
    const Bytes image = Image(0, NumberedEntries(3));
    sim::WriteFile(kFile, image);
    Fail("fread");
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(), ElementsAreArray(Info(kInit, "fread failed!!!")));
    EXPECT_EQ(Live(), Bytes(kImageSize, 0));
    EXPECT_EQ(sim::ReadFile(kFile), image);
}

TEST_F(ThresholdStart, AReadThatFailsUnderAnotherIdDeletesTheFile) {
    sim::WriteFile(kFile, Image(16, NumberedEntries(3)));
    Fail("fread");
    InitSdrThresholdInfoFromFile(16);
    Lines lines = Info(kInit, "fread failed!!!");
    lines.push_back(LastCustomId("0", "16").front());
    EXPECT_THAT(Written(), ElementsAreArray(lines));
    EXPECT_EQ(Live(), before);
    EXPECT_FALSE(sim::FileExists(kFile));
}

TEST_F(ThresholdStart, TheIdIsRememberedEvenWithoutAFile) {
    InitSdrThresholdInfoFromFile(0x01020304);
    const char name[16] = "A";
    const uint8_t info[8] = {};
    SaveSdrThresholdInfoInFile(name, info, 0);
    const Bytes written = sim::ReadFile(kFile);
    ASSERT_EQ(written.size(), kImageSize);
    EXPECT_THAT(Bytes(written.begin(), written.begin() + 4), ElementsAre(4, 3, 2, 1));
}

TEST_F(ThresholdStart, TheFileThatASaveWroteIsHandedOverAtTheNextStart) {
    InitSdrThresholdInfoFromFile(20);
    const char name[16] = "GPU_TEMP_01";
    const uint8_t info[8] = {90, 88, 85, 1, 2, 3, 0xAB, 0xCD};
    SetLive(Image(20, {}));
    SaveSdrThresholdInfoInFile(name, info, 0x38);
    SetLive(before);
    InitSdrThresholdInfoFromFile(20);
    EXPECT_EQ(Live(), Image(20, {{"GPU_TEMP_01", {90, 88, 85, 1, 2, 3}, 0x38, {0xAB, 0xCD}}}));
}

TEST_F(ThresholdStart, ThresholdsOfAnEarlierCustomerDoNotComeBackWithHim) {
    sim::WriteFile(kFile, Image(7, {{"A", {}, 0}}));
    InitSdrThresholdInfoFromFile(11);
    InitSdrThresholdInfoFromFile(7);
    EXPECT_EQ(Live(), before);
    EXPECT_FALSE(sim::FileExists(kFile));
}

} // namespace
