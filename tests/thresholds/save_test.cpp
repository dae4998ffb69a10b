// SPDX-License-Identifier: GPL-3.0-or-later
//
// Save: one sensor's thresholds into the live table and the file, byte by byte, and everything that stops it.
#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

constexpr uint8_t kEight[8] = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr Six kOneToSix = {1, 2, 3, 4, 5, 6};

// A name field as the library gets it: 16 bytes and no terminator of its own.
struct Field {
    char bytes[16];
    explicit Field(const std::string &name, char fill = '\0') {
        std::memset(bytes, fill, sizeof(bytes));
        std::memcpy(bytes, name.data(), name.size());
        if (name.size() < sizeof(bytes)) {
            bytes[name.size()] = '\0';
        }
    }
};

void Save(const std::string &name, const uint8_t *eight = kEight, uint16_t mask = 0x3F) {
    SaveSdrThresholdInfoInFile(Field(name).bytes, eight, mask);
}

// Stands first: a start is remembered for the rest of the process.
TEST_F(ThresholdTest, BeforeAnyStartTheIdOfASaveIsZero) {
    SetLive(Image(99, {}));
    Save("A");
    EXPECT_EQ(sim::ReadFile(kFile), Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
    EXPECT_EQ(Live(), sim::ReadFile(kFile));
}

class ThresholdSave : public ThresholdTest {
protected:
    void SetUp() override {
        ThresholdTest::SetUp();
        InitSdrThresholdInfoFromFile(0); // another id may be left over where the tests share a process
        SetLive(Image(0, {}));
    }
    // Nothing went to the platform, nothing to the file.
    void ExpectNothingSaved(const Bytes &live) {
        EXPECT_EQ(sim::CountCalls(kSet), 0u);
        EXPECT_EQ(sim::CountCalls("oxa_fopen_s"), 0u);
        EXPECT_FALSE(sim::FileExists(kFile));
        EXPECT_EQ(Live(), live);
    }
    void ExpectSaved(const Bytes &image) {
        EXPECT_EQ(sim::ReadFile(kFile), image);
        EXPECT_EQ(Live(), image);
    }
};

// ---- what is written -----------------------------------------------------------------------------

TEST_F(ThresholdSave, AnEntryStandsInTheFileByteForByte) {
    InitSdrThresholdInfoFromFile(0x00000B16);
    sim::ClearTrace();
    Save("INPUT_TEMP", kEight, 0x1238);
    Bytes image(kImageSize, 0);
    const uint8_t head[] = {0x16, 0x0B, 0x00, 0x00, 0x01, 0x00, // id, count
                            'I',  'N',  'P',  'U',  'T',  '_',  'T', 'E', 'M', 'P', 0, 0,
                            0,    0,    0,    0,    0,    1,    2,   3,   4,   5,   6, // thresholds
                            7,    8,    0,                                             // further, zero
                            0x38, 0x12};                                               // mask
    static_assert(sizeof(head) == 6 + 28);
    std::copy(std::begin(head), std::end(head), image.begin());
    ExpectSaved(image);
    EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ThresholdSave, TheTableIsFetchedHandedOverAndThenWritten) {
    Save("A");
    EXPECT_THAT(Calls(), ElementsAre(kGet, kSet, "oxa_fopen_s", "fwrite", "oxa_fclose_s"));
    EXPECT_EQ(ArgsOf("oxa_fopen_s"), "path=\"/conf/BMC1/sensor_threshold.dat\" mode=\"wb\"");
    EXPECT_EQ(ArgsOf(kSet), "customid=0 count=1");
}

TEST_F(ThresholdSave, EntriesFollowOneAnother) {
    Save("A", kEight, 0x01);
    Save("B", kEight, 0x02);
    Save("SENSOR_NAME_0016", kEight, 0x03);
    ExpectSaved(Image(0, {{"A", kOneToSix, 1, {7, 8}},
                          {"B", kOneToSix, 2, {7, 8}},
                          {"SENSOR_NAME_0016", kOneToSix, 3, {7, 8}}}));
}

TEST_F(ThresholdSave, ANameOf16CharactersHasAZeroBehindIt) {
    const std::string name = "EXACTLY_16_CHARS";
    ASSERT_EQ(name.size(), 16u);
    Save(name);
    const Bytes image = Live();
    EXPECT_EQ(std::string(image.begin() + 6, image.begin() + 22), name);
    EXPECT_EQ(image[22], 0);
    ExpectSaved(Image(0, {{name, kOneToSix, 0x3F, {7, 8}}}));
    const uint8_t other[8] = {8, 7, 6, 5, 4, 3, 2, 1};
    Save(name, other, 0x20); // found again
    ExpectSaved(Image(0, {{name, {8, 7, 6, 5, 4, 3}, 0x20, {2, 1}}}));
}

TEST_F(ThresholdSave, NothingIsReadBehindThe16BytesOfAName) {
    // the last character of the first is the last that counts
    const std::string two = "ABCDEFGHIJKLMNOPQRST";
    SaveSdrThresholdInfoInFile(two.c_str(), kEight, 1);
    SaveSdrThresholdInfoInFile("ABCDEFGHIJKLMNOPxyz", kEight, 2);
    ExpectSaved(Image(0, {{"ABCDEFGHIJKLMNOP", kOneToSix, 2, {7, 8}}}));
}

TEST_F(ThresholdSave, EveryNameLengthIsStoredAsItIs) {
    std::vector<Stored> entries;
    for (size_t length = 1; length <= 16; ++length) {
        const std::string name = std::string("ABCDEFGHIJKLMNOP").substr(0, length);
        Save(name, kEight, static_cast<uint16_t>(length));
        entries.push_back({name, kOneToSix, static_cast<uint16_t>(length), {7, 8}});
        ExpectSaved(Image(0, entries));
    }
}

TEST_F(ThresholdSave, AnExistingEntryIsReplacedInPlace) {
    SetLive(Image(0, NumberedEntries(5)));
    const uint8_t eight[8] = {0xF6, 0xF5, 0xF4, 0xF1, 0xF2, 0xF3, 0xFF, 0xFE};
    Save(NumberedName(2), eight, 0xFF07);
    auto entries = NumberedEntries(5);
    entries[2] = {NumberedName(2), {0xF6, 0xF5, 0xF4, 0xF1, 0xF2, 0xF3}, 0xFF07, {0xFF, 0xFE}};
    ExpectSaved(Image(0, entries));
}

TEST_F(ThresholdSave, TheFirstOfTwoEqualEntriesIsReplaced) {
    SetLive(Image(0, {{"X", {}, 1}, {"DOUBLE", {}, 2}, {"DOUBLE", {}, 3}}));
    Save("DOUBLE", kEight, 0x3F);
    ExpectSaved(Image(0, {{"X", {}, 1}, {"DOUBLE", kOneToSix, 0x3F, {7, 8}}, {"DOUBLE", {}, 3}}));
}

TEST_F(ThresholdSave, CapitalsAndSmallLettersDiffer) {
    Save("Fan");
    Save("FAN");
    ExpectSaved(Image(0, {{"Fan", kOneToSix, 0x3F, {7, 8}}, {"FAN", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, TheValuesAreNotJudged) {
    const uint8_t upside_down[8] = {1, 2, 3, 6, 5, 4, 0, 0};
    Save("A", upside_down, 0x3F);
    ExpectSaved(Image(0, {{"A", {1, 2, 3, 6, 5, 4}, 0x3F}}));
    EXPECT_THAT(Written(), IsEmpty());
}

// ---- all 16 bytes are compared -------------------------------------------------------------------

TEST_F(ThresholdSave, BytesBehindTheNamesEndArePartOfTheComparison) {
    // what is stored has zeros there, so a field with something else never finds it again
    SaveSdrThresholdInfoInFile(Field("AB", 'x').bytes, kEight, 1);
    ExpectSaved(Image(0, {{"AB", kOneToSix, 1, {7, 8}}}));
    SaveSdrThresholdInfoInFile(Field("AB", 'x').bytes, kEight, 2);
    ExpectSaved(Image(0, {{"AB", kOneToSix, 1, {7, 8}}, {"AB", kOneToSix, 2, {7, 8}}}));
    Save("AB", kEight, 3);
    ExpectSaved(Image(0, {{"AB", kOneToSix, 3, {7, 8}}, {"AB", kOneToSix, 2, {7, 8}}}));
}

TEST_F(ThresholdSave, EachOfThe16BytesCounts) {
    const std::string name = "ABCDEFGHIJKLMNOP";
    std::vector<Stored> entries;
    for (size_t at = 0; at < 16; ++at) {
        std::string other = name;
        other[at] = '#';
        entries.push_back({other, {}, 0});
    }
    SetLive(Image(0, entries));
    Save(name);
    entries.push_back({name, kOneToSix, 0x3F, {7, 8}});
    ExpectSaved(Image(0, entries));
}

TEST_F(ThresholdSave, Byte25OfAnEntryIsZeroWhateverStoodThere) {
    Bytes image = Image(0, {{"FOUND", {}, 0}});
    image[EntryAt(0) + 25] = 0xA5;
    image[EntryAt(1) + 25] = 0xA5; // behind the count
    SetLive(image);
    Save("FOUND");
    Save("NEW");
    ExpectSaved(Image(0, {{"FOUND", kOneToSix, 0x3F, {7, 8}}, {"NEW", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, AFoundEntryGetsAZeroBehindItsName) {
    // a table of other making, with the same 16 bytes as the field and something in the terminator's place
    Bytes image = Image(0, {{"ABCDEFGHIJKLMNOP", {}, 0}});
    image[EntryAt(0) + 16] = 'Q';
    SetLive(image);
    Save("ABCDEFGHIJKLMNOP");
    ExpectSaved(Image(0, {{"ABCDEFGHIJKLMNOP", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, ANewEntrysNameFieldIsClearedFirst) {
    Bytes image = Image(0, {{"A", {}, 0}});
    std::fill_n(image.begin() + EntryAt(1), 17, 'z'); // left over behind the count
    SetLive(image);
    Save("NEW");
    ExpectSaved(Image(0, {{"A", {}, 0}, {"NEW", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, EntriesBehindTheCountAreNotFound) {
    Bytes image = Image(0, {{"A", {}, 0}, {"B", {}, 0}, {"C", {}, 0}});
    PutCount(image, 1);
    SetLive(image);
    Save("C");
    Bytes expected = Image(0, {{"A", {}, 0}, {"C", kOneToSix, 0x3F, {7, 8}}, {"C", {}, 0}});
    PutCount(expected, 2);
    ExpectSaved(expected);
}

// ---- 512 -----------------------------------------------------------------------------------------

TEST_F(ThresholdSave, The512thSensorIsTheLast) {
    for (size_t i = 0; i < 512; ++i) {
        Save(NumberedName(i), kEight, static_cast<uint16_t>(i));
    }
    std::vector<Stored> entries;
    for (size_t i = 0; i < 512; ++i) {
        entries.push_back({NumberedName(i), kOneToSix, static_cast<uint16_t>(i), {7, 8}});
    }
    const Bytes full = Image(0, entries);
    ExpectSaved(full);
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(full[14342] | full[14343], 0);
    sim::ClearTrace();
    Save("THE_513TH");
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "sensorCount:512 >= SENSOR_MAX_COUNT!!!")));
    EXPECT_THAT(Calls(), ElementsAre(kGet));
    ExpectSaved(full);
}

TEST_F(ThresholdSave, AnExistingEntryIsReplacedAlsoWhenTheTableIsFull) {
    SetLive(Image(0, NumberedEntries(512)));
    Save(NumberedName(511), kEight, 9);
    auto entries = NumberedEntries(512);
    entries[511] = {NumberedName(511), kOneToSix, 9, {7, 8}};
    ExpectSaved(Image(0, entries));
    EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ThresholdSave, ACountBeyondTheTableIsPrintedAsItIsAndNeverIndexed) {
    for (const unsigned count : {513u, 600u, 0x8000u, 0xFFFFu}) {
        Bytes image = Image(0, NumberedEntries(512));
        PutCount(image, count);
        SetLive(image);
        Save("NEW");
        EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "sensorCount:" + std::to_string(count) +
                                                                 " >= SENSOR_MAX_COUNT!!!")));
        ExpectNothingSaved(image);
    }
}

TEST_F(ThresholdSave, AnEntryIsFoundUnderACountBeyondTheTable) {
    Bytes image = Image(0, NumberedEntries(512));
    PutCount(image, 0xFFFF);
    SetLive(image);
    Save(NumberedName(300), kEight, 9);
    EXPECT_THAT(Written(), IsEmpty());
    const Bytes live = Live();
    EXPECT_EQ(live, sim::ReadFile(kFile));
    auto entries = NumberedEntries(512);
    entries[300] = {NumberedName(300), kOneToSix, 9, {7, 8}};
    const Bytes expected = Image(0, entries);
    EXPECT_TRUE(std::equal(live.begin() + 6, live.end(), expected.begin() + 6));
}

// ---- what stops it -------------------------------------------------------------------------------

TEST_F(ThresholdSave, ANullNameIsRefused) {
    SaveSdrThresholdInfoInFile(nullptr, kEight, 1);
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "assertion failed: sensorName != 0", 255)));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ThresholdSave, NullThresholdsAreRefused) {
    SaveSdrThresholdInfoInFile(Field("A").bytes, nullptr, 1);
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "assertion failed: thresholdInfo != 0", 255)));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ThresholdSave, TheNameIsLookedAtBeforeTheThresholds) {
    SaveSdrThresholdInfoInFile(nullptr, nullptr, 1);
    ASSERT_GE(Written().size(), 2u);
    EXPECT_EQ(Written()[1], Line("error", kSave, "assertion failed: sensorName != 0", 255));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ThresholdSave, WithoutTheTableNothingIsSaved) {
    const Bytes live = Live();
    Fail(kGet);
    Save("A");
    EXPECT_THAT(Written(), ElementsAreArray(FetchFailed(kSave)));
    sim::ClearFaults();
    ExpectNothingSaved(live);
}

TEST_F(ThresholdSave, TheFetchComesBeforeTheLookAtTheName) {
    Fail(kGet);
    Save("");
    EXPECT_THAT(Written(), ElementsAreArray(FetchFailed(kSave)));
}

TEST_F(ThresholdSave, AnEmptyNameIsRefused) {
    Save("");
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "oxa_strnlen_s failed, ")));
    ExpectNothingSaved(Image(0, {}));
}

TEST_F(ThresholdSave, AnEmptyNameIsRefusedAlsoWhereAnEntryHasIt) {
    const Bytes image = Image(0, {{"", {9, 9, 9, 9, 9, 9}, 0x3F}});
    SetLive(image);
    Save("");
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "oxa_strnlen_s failed, ")));
    ExpectNothingSaved(image);
}

TEST_F(ThresholdSave, AFullTableIsToldBeforeAnEmptyName) {
    const Bytes image = Image(0, NumberedEntries(512));
    SetLive(image);
    Save("");
    EXPECT_THAT(Written(), ElementsAreArray(Error(kSave, "sensorCount:512 >= SENSOR_MAX_COUNT!!!")));
    ExpectNothingSaved(image);
}

TEST_F(ThresholdSave, ATableThatThePlatformRefusesIsWrittenAllTheSame) {
    Fail(kSet);
    Save("A");
    EXPECT_THAT(Written(), IsEmpty());
    EXPECT_EQ(sim::ReadFile(kFile), Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, AFileThatCannotBeOpenedStaysStale) {
    const Bytes stale = Image(5, {{"OLD", {}, 0}});
    sim::WriteFile(kFile, stale);
    Fail("oxa_fopen_s");
    Save("A");
    EXPECT_THAT(Written(), ElementsAreArray(Error(kWrite, "oxa_fopen_s failed")));
    EXPECT_EQ(sim::CountCalls("oxa_fclose_s"), 0u);
    EXPECT_EQ(sim::ReadFile(kFile), stale);
    EXPECT_EQ(Live(), Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, AWriteThatDoesNotCompleteIsToldAndTheFileClosed) {
    Fail("fwrite");
    Save("A");
    EXPECT_THAT(Written(), ElementsAreArray(Info(kWrite, "writeCount:0 != 1!!!")));
    EXPECT_EQ(sim::CountCalls("oxa_fclose_s"), 1u);
    EXPECT_EQ(Live(), Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
}

TEST_F(ThresholdSave, ACloseThatFailsIsNotTold) {
    Fail("oxa_fclose_s");
    Save("A");
    EXPECT_THAT(Written(), IsEmpty());
    ExpectSaved(Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
}

// ---- the custom id -------------------------------------------------------------------------------

TEST_F(ThresholdSave, EverySaveHasTheIdOfTheLastStart) {
    InitSdrThresholdInfoFromFile(11);
    Save("A");
    EXPECT_EQ(sim::ReadFile(kFile)[0], 11);
    std::filesystem::remove(sim::RealPath(kFile));
    InitSdrThresholdInfoFromFile(20);
    Save("A");
    Save("A");
    EXPECT_EQ(sim::ReadFile(kFile)[0], 20);
    EXPECT_EQ(Live()[0], 20);
}

TEST_F(ThresholdSave, AFileOfAnyLengthIsReplacedByOneImage) {
    sim::WriteFile(kFile, Bytes(40000, 0xA5));
    Save("A");
    ExpectSaved(Image(0, {{"A", kOneToSix, 0x3F, {7, 8}}}));
}

} // namespace
