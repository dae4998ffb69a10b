// SPDX-License-Identifier: GPL-3.0-or-later
//
// Overlay: which record gets which entry, and which gets none.
#include <sys/mman.h>
#include <unistd.h>

#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

constexpr Six kStored = {90, 80, 70, 10, 20, 30};
constexpr char kSixteen[] = "ABCDEFGHIJKLMNOP";

class ThresholdOverlay : public ThresholdTest {
protected:
    // The record is left alone without a word.
    void ExpectUntouched(const Sdr &sdr) {
        sim::ClearTrace();
        EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
        EXPECT_THAT(Written(), IsEmpty());
    }
    void ExpectLaidOver(const Sdr &sdr, const Six &six, const std::string &name) {
        sim::ClearTrace();
        EXPECT_TRUE(tests::SameSdr(With(sdr, six), Applied(sdr)));
        EXPECT_THAT(Written(), ElementsAreArray(Updated(name, sdr[18], six, true)));
    }
};

TEST_F(ThresholdOverlay, AStoredEntryReplacesBytes36To41AndNothingElse) {
    SetLive(Image(0, {{"INPUT_TEMP", kStored, 0x3F}}));
    const Sdr before = FullRecord("INPUT_TEMP", 0x3F);
    const Sdr after = Applied(before);
    for (size_t i = 0; i < 64; ++i) {
        EXPECT_EQ(after[i], i >= 36 && i <= 41 ? kStored[i - 36] : before[i]) << i;
    }
    EXPECT_THAT(Written(),
                ElementsAre("info 42 updateSdrThreshold: update sensor "
                            "INPUT_TEMP mask 0x3f, threshold 90, 80, 70, 10, 20, 30 successfully"));
    EXPECT_THAT(Calls(), ElementsAre(kGet));
}

TEST_F(ThresholdOverlay, OnlyTheThresholdsOfTheMaskAreReplaced) {
    for (int bit = 0; bit < 6; ++bit) {
        const uint8_t mask = static_cast<uint8_t>(1u << bit);
        SetLive(Image(0, {{"A", kStored, mask}}));
        Six six = kOwn;
        six[5 - bit] = kStored[5 - bit]; // bit 0 is the last of the six
        ExpectLaidOver(FullRecord("A", mask), six, "A");
    }
}

TEST_F(ThresholdOverlay, FurtherBytesAndCustomIdDoNotMatter) {
    SetLive(Image(0x12345678, {{"A", kStored, 0x3F, {0xFF, 0xFF}}}));
    ExpectLaidOver(FullRecord("A", 0x3F), kStored, "A");
}

// ---- which records -------------------------------------------------------------------------------

TEST_F(ThresholdOverlay, OnlyFullRecordsAreLookedAt) {
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    for (unsigned type = 0; type < 256; ++type) {
        if (type == 0x01) {
            continue;
        }
        Sdr sdr = FullRecord("A", 0x3F);
        sdr[3] = static_cast<uint8_t>(type);
        ExpectUntouched(sdr);
        EXPECT_THAT(Calls(), IsEmpty()) << type;
    }
}

TEST_F(ThresholdOverlay, ANullRecordIsPassedOver) {
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    ModifySensorThresholdByFile(nullptr);
    EXPECT_THAT(sim::Trace(), IsEmpty());
}

TEST_F(ThresholdOverlay, WithoutTheTableTheRecordStays) {
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    Fail(kGet);
    // the second is what the rubbish of the failed call would fit
    for (const Sdr &sdr :
         {FullRecord("A", 0x3F), FullRecord(std::string(16, '\xA5'), 0xA5, {1, 2, 3, 6, 5, 4})}) {
        sim::ClearTrace();
        EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
        EXPECT_THAT(Written(), ElementsAreArray(FetchFailed(kApply)));
    }
}

TEST_F(ThresholdOverlay, AnEmptyTableChangesNothing) {
    Bytes image = Image(0, {{"A", kStored, 0x3F}});
    PutCount(image, 0);
    SetLive(image);
    ExpectUntouched(FullRecord("A", 0x3F));
    EXPECT_THAT(Calls(), ElementsAre(kGet));
}

TEST_F(ThresholdOverlay, TheFileIsNotTouched) {
    sim::WriteFile(kFile, Image(0, {{"A", {1, 1, 1, 1, 1, 1}, 0x3F}}));
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    ExpectLaidOver(FullRecord("A", 0x3F), kStored, "A");
    EXPECT_THAT(Calls(), ElementsAre(kGet));
}

// ---- names ---------------------------------------------------------------------------------------

TEST_F(ThresholdOverlay, ANameOf16CharactersIsFound) {
    SetLive(Image(0, {{kSixteen, kStored, 0x3F}}));
    ExpectLaidOver(FullRecord(kSixteen, 0x3F), kStored, kSixteen);
}

TEST_F(ThresholdOverlay, LengthsMustBeEqual) {
    // every beginning of the same text, longest first: the one of the record's own length is taken
    std::vector<Stored> entries;
    for (size_t length = 16; length >= 1; --length) {
        const uint8_t mark = static_cast<uint8_t>(length);
        entries.push_back({std::string(kSixteen, length), {mark, mark, mark, mark, mark, mark}, 0x01});
    }
    SetLive(Image(0, entries));
    for (size_t length = 1; length <= 16; ++length) {
        const std::string name(kSixteen, length);
        Sdr sdr = FullRecord(name, 0x01);
        std::copy_n(kSixteen, 16, sdr.begin() + 48); // characters behind the length do not count
        ExpectLaidOver(sdr, {201, 202, 203, 204, 205, static_cast<uint8_t>(length)}, name);
    }
}

TEST_F(ThresholdOverlay, TheLengthHasFiveBits) {
    SetLive(Image(0, {{"ABC", kStored, 0x3F}}));
    for (unsigned upper = 0; upper < 8; ++upper) { // 3, 35, ... and whatever the encoding bits say
        Sdr sdr = FullRecord("ABC", 0x3F);
        sdr[47] = static_cast<uint8_t>(upper << 5 | 3);
        ExpectLaidOver(sdr, kStored, "ABC");
        sdr[47] = static_cast<uint8_t>(upper << 5 | 4);
        ExpectUntouched(sdr);
    }
}

TEST_F(ThresholdOverlay, ALengthOfZeroFindsAnEntryWithoutName) {
    SetLive(Image(0, {{"X", {1, 1, 1, 1, 1, 1}, 0x3F}, {"", kStored, 0x3F}}));
    for (const uint8_t length : {0xC0, 0x00, 0xE0}) { // 0, and 32 in six bits
        Sdr sdr = FullRecord("WHATEVER", 0x3F);
        sdr[47] = length;
        ExpectLaidOver(sdr, kStored, "");
    }
}

TEST_F(ThresholdOverlay, ALengthOfZeroFindsNothingWhereAllHaveNames) {
    SetLive(Image(0, {{"X", kStored, 0x3F}}));
    ExpectUntouched(FullRecord("", 0x3F));
}

// 64 bytes that end where memory ends.
class RecordAtTheEdge {
public:
    RecordAtTheEdge() {
        const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        size_ = 2 * page;
        pages_ = static_cast<uint8_t *>(
            mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(pages_ + page, page, PROT_NONE);
        bytes = pages_ + page - 64;
    }
    ~RecordAtTheEdge() {
        munmap(pages_, size_);
    }
    uint8_t *bytes;

private:
    uint8_t *pages_;
    size_t size_;
};

TEST_F(ThresholdOverlay, Lengths17To31FindNothingAndReadNothingBehindTheRecord) {
    // entries without terminator, so that longer names would fit bytes of the entry behind the name
    Bytes image = Image(0, {{kSixteen, {'R', 'S', 'T', 'U', 'V', 'W'}, 0x3F, {'X', 'Y'}}});
    image[EntryAt(0) + 16] = 'Q';
    image[EntryAt(0) + 25] = 'Z';
    SetLive(image);
    RecordAtTheEdge record;
    for (uint8_t length = 17; length < 32; ++length) {
        Sdr before = FullRecord(kSixteen, 0x3F);
        before[47] = static_cast<uint8_t>(0xC0 + length);
        std::copy(before.begin(), before.end(), record.bytes);
        sim::ClearTrace();
        ModifySensorThresholdByFile(record.bytes);
        EXPECT_TRUE(std::equal(before.begin(), before.end(), record.bytes)) << int{length};
        EXPECT_THAT(Written(), IsEmpty()) << int{length};
    }
}

TEST_F(ThresholdOverlay, TheTerminatorsPlaceIsNotPartOfTheName) {
    Bytes image = Image(0, {{kSixteen, kStored, 0x3F}});
    image[EntryAt(0) + 16] = 'Q';
    SetLive(image);
    ExpectLaidOver(FullRecord(kSixteen, 0x3F), kStored, kSixteen);
}

TEST_F(ThresholdOverlay, WhatFollowsAnEntrysZeroIsNotPartOfItsName) {
    SetLive(Image(0, {{std::string("AB\0DEFGH", 8), kStored, 0x3F}}));
    ExpectLaidOver(FullRecord("AB", 0x3F), kStored, "AB");
    ExpectUntouched(FullRecord(std::string("AB\0DEFGH", 8), 0x3F));
}

TEST_F(ThresholdOverlay, EveryCharacterCounts) {
    SetLive(Image(0, {{kSixteen, kStored, 0x3F}}));
    for (size_t at = 0; at < 16; ++at) {
        std::string name = kSixteen;
        name[at] = static_cast<char>(name[at] ^ 0x20); // small letters
        ExpectUntouched(FullRecord(name, 0x3F));
    }
}

TEST_F(ThresholdOverlay, TheFirstOfTwoEqualEntriesCounts) {
    SetLive(Image(0, {{"A", kStored, 0x3F}, {"A", {9, 8, 7, 1, 2, 3}, 0x3F}}));
    ExpectLaidOver(FullRecord("A", 0x3F), kStored, "A");
}

TEST_F(ThresholdOverlay, AnEntryWithAnotherMaskHidesALaterOne) {
    SetLive(Image(0, {{"A", kStored, 0x38}, {"A", kStored, 0x3F}}));
    const Sdr sdr = FullRecord("A", 0x3F);
    EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
    EXPECT_THAT(Written(), ElementsAreArray(CannotModify("A", 0x38, 0x3F)));
}

// ---- 512 -----------------------------------------------------------------------------------------

TEST_F(ThresholdOverlay, AllOf512EntriesAreFound) {
    SetLive(Image(0, NumberedEntries(512)));
    for (size_t i = 0; i < 512; ++i) {
        ExpectLaidOver(FullRecord(NumberedName(i), 0x3F),
                       {90, 80, 70, 10, 20, static_cast<uint8_t>(30 + i % 8)}, NumberedName(i));
    }
}

TEST_F(ThresholdOverlay, EntriesBehindTheCountAreNotFound) {
    Bytes image = Image(0, NumberedEntries(512));
    PutCount(image, 300);
    SetLive(image);
    ExpectLaidOver(FullRecord(NumberedName(299), 0x3F), {90, 80, 70, 10, 20, 33}, NumberedName(299));
    ExpectUntouched(FullRecord(NumberedName(300), 0x3F));
}

TEST_F(ThresholdOverlay, ACountAbove512IsTakenAs512) {
    for (const unsigned count : {513u, 0x0300u, 0x8000u, 0xFFFFu}) {
        Bytes image = Image(0, NumberedEntries(512));
        PutCount(image, count);
        SetLive(image);
        ExpectLaidOver(FullRecord(NumberedName(511), 0x3F), {90, 80, 70, 10, 20, 37}, NumberedName(511));
        ExpectUntouched(FullRecord("NOWHERE", 0x3F));
        Sdr nameless = FullRecord("", 0x3F);
        ExpectUntouched(nameless);
    }
}

TEST_F(ThresholdOverlay, TheTableIsFetchedAfreshForEveryRecord) {
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    ExpectLaidOver(FullRecord("A", 0x3F), kStored, "A");
    SetLive(Image(0, {{"A", {99, 88, 77, 1, 2, 3}, 0x3F}}));
    ExpectLaidOver(FullRecord("A", 0x3F), {99, 88, 77, 1, 2, 3}, "A");
}

// ---- masks ---------------------------------------------------------------------------------------

TEST_F(ThresholdOverlay, ADifferentMaskIsToldWithBothMasks) {
    SetLive(Image(0, {{"INPUT_TEMP", kStored, 0x38}}));
    const Sdr sdr = FullRecord("INPUT_TEMP", 0x3A);
    EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
    EXPECT_THAT(Written(), ElementsAre("warn 42 updateSdrThreshold: sensor INPUT_TEMP "
                                       "last mask 38, now mask 3a, cannot modify threshold"));
}

TEST_F(ThresholdOverlay, EveryOtherMaskIsRefused) {
    for (unsigned stored = 0; stored < 256; ++stored) {
        SetLive(Image(0, {{"A", {6, 5, 4, 1, 2, 3}, static_cast<uint16_t>(stored)}}));
        for (const unsigned step : {1u, 0x10u, 0x20u, 0x40u, 0x80u, 0xFFu}) {
            const Sdr sdr = FullRecord("A", static_cast<uint8_t>(stored ^ step));
            sim::ClearTrace();
            EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
            EXPECT_THAT(Written(), ElementsAreArray(CannotModify("A", stored, stored ^ step)));
        }
    }
}

TEST_F(ThresholdOverlay, OnlyTheLowByteOfTheStoredMaskIsComparedAndPrinted) {
    SetLive(Image(0, {{"A", kStored, 0x1238}}));
    ExpectLaidOver(FullRecord("A", 0x38), {90, 80, 70, 204, 205, 206}, "A");
    const Sdr sdr = FullRecord("A", 0x12);
    sim::ClearTrace();
    EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
    EXPECT_THAT(Written(), ElementsAreArray(CannotModify("A", 0x38, 0x12)));
}

TEST_F(ThresholdOverlay, TheRecordsSettableMaskIsNotLookedAt) {
    SetLive(Image(0, {{"A", kStored, 0x3F}}));
    Sdr sdr = FullRecord("A", 0x3F);
    sdr[19] = 0;
    ExpectLaidOver(sdr, kStored, "A");
}

TEST_F(ThresholdOverlay, AMaskOfZeroOnBothSidesSucceedsAndChangesNothing) {
    SetLive(Image(0, {{"A", kStored, 0}}));
    ExpectLaidOver(FullRecord("A", 0), kOwn, "A");
    EXPECT_THAT(Written(), ElementsAreArray(Updated("A", 0, kOwn, true)));
}

TEST_F(ThresholdOverlay, MaskBitsWithoutThresholdAreComparedAndReplaceNothing) {
    SetLive(Image(0, {{"A", kStored, 0xC1}}));
    ExpectLaidOver(FullRecord("A", 0xC1), {201, 202, 203, 204, 205, 30}, "A");
}

} // namespace
