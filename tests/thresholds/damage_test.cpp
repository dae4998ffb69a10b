// SPDX-License-Identifier: GPL-3.0-or-later
//
// Damaged files: every length, every byte.  Whatever a file holds, the platform gets it as it is or not at all, and
// a record gets one entry's thresholds or none.
#include <fstream>

#include "support/build_facts.h"
#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

constexpr uint32_t kId = 0x04030201;

std::string Customer(uint32_t stored, uint32_t now) {
    return Line("warn", kInit,
                "last customid " + std::to_string(stored) + ", now: " + std::to_string(now) +
                    ", delete sensor thread");
}
uint32_t IdOf(const Bytes &image) {
    return image[0] | image[1] << 8 | image[2] << 16 | static_cast<uint32_t>(image[3]) << 24;
}

class ThresholdDamage : public ThresholdTest {
protected:
    const Bytes before = Image(99, {{"BEFORE", {6, 5, 4, 1, 2, 3}, 0x3F}});

    // Starts on a file of these bytes and looks at everything that a start leaves; true when the table went live.
    bool Start(const Bytes &content, uint32_t id) {
        sim::WriteFile(kFile, content);
        SetLive(before);
        InitSdrThresholdInfoFromFile(id);
        Bytes expected = content;
        expected.resize(kImageSize, 0);
        Lines lines;
        if (content.size() < kImageSize) {
            lines.push_back(Line("info", kInit, "fread failed!!!"));
        }
        const bool good = IdOf(expected) == id;
        if (!good) {
            lines.push_back(Customer(IdOf(expected), id));
        }
        EXPECT_EQ(Written(), lines);
        EXPECT_EQ(Live() == (good ? expected : before), true);
        EXPECT_EQ(sim::FileExists(kFile), good);
        return good;
    }
    void ExpectApplied(const Bytes &image, const Sdr &sdr) {
        sim::ClearTrace();
        const Outcome expected = Expected(image, sdr);
        EXPECT_TRUE(tests::SameSdr(expected.sdr, Applied(sdr)));
        EXPECT_EQ(Written(), expected.lines);
    }
};

// 512 sensors with names of every length and every kind of outcome.
std::vector<Stored> MixedEntries() {
    std::vector<Stored> entries;
    for (size_t i = 0; i < kEntries; ++i) {
        Stored entry{NumberedName(i), {90, 80, 70, 10, 20, 30}, 0x3F, {0x5A, 0xA5}};
        entry.name += std::string("_LONGER_NAME", i % 13);
        if (i % 3 == 1) {
            entry.six[i % 6] = 25; // in order or not
        }
        entries.push_back(entry);
    }
    return entries;
}

class EveryLength : public ThresholdDamage, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(ThresholdDamage, EveryLength, testing::Range(0, 4));

TEST_P(EveryLength, AShortFileGoesLiveAsFarAsItCame) {
    const auto entries = MixedEntries();
    const Bytes whole = Image(kId, entries);
    const size_t from = kImageSize / 4 * GetParam(),
                 to = GetParam() == 3 ? kImageSize : from + kImageSize / 4;
    for (size_t length = from; length <= to && !HasFailure(); length += tests::SweepStep()) {
        SCOPED_TRACE(length);
        const Bytes content(whole.begin(), whole.begin() + length);
        const bool good = Start(content, kId);
        EXPECT_EQ(good, length >= 4);
        Bytes live = good ? content : before;
        live.resize(kImageSize, 0);
        const size_t entry = std::min<size_t>(length < 6 ? 0 : (length - 6) / 28, kEntries - 1);
        ExpectApplied(live, FullRecord(entries[entry].name, 0x3F)); // the one that is cut
    }
}

TEST_F(ThresholdDamage, AShortFileWhoseIdIsCutIsTakenUnderTheRestOfIt) {
    const Bytes whole = Image(kId, MixedEntries());
    for (size_t length = 0; length < 4; ++length) {
        const uint32_t rest = kId & ((1u << 8 * length) - 1); // 0, 0x01, 0x0201, 0x030201
        EXPECT_TRUE(Start(Bytes(whole.begin(), whole.begin() + length), rest));
        EXPECT_FALSE(Start(Bytes(whole.begin(), whole.begin() + length), kId));
    }
}

TEST_F(ThresholdDamage, AnEntryThatIsCutBehindItsNameHasAMaskOfZero) {
    const Bytes whole = Image(0, {{"INPUT_TEMP", {60, 55, 50, 1, 2, 3}, 0x38}});
    Start(Bytes(whole.begin(), whole.begin() + EntryAt(0) + 20), 0);
    sim::ClearTrace();
    const Sdr sdr = FullRecord("INPUT_TEMP", 0x38);
    EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
    EXPECT_THAT(Written(), ElementsAreArray(CannotModify("INPUT_TEMP", 0, 0x38)));
}

TEST_F(ThresholdDamage, TheNextSaveOfASensorPutsTheZeroBackIntoByte25OfItsEntry) {
    Bytes image = Image(kId, {{"INPUT_TEMP", {60, 55, 50, 1, 2, 3}, 0x38}});
    image[EntryAt(0) + 25] = 0x5A;
    EXPECT_TRUE(Start(image, kId));
    const char name[17] = "INPUT_TEMP";
    const uint8_t eight[] = {61, 56, 51, 4, 5, 6, 7, 8};
    SaveSdrThresholdInfoInFile(name, eight, 0x3F);
    std::copy(std::begin(eight), std::end(eight), image.begin() + EntryAt(0) + 17);
    image[EntryAt(0) + 25] = 0;
    image[EntryAt(0) + 26] = 0x3F;
    EXPECT_EQ(Live(), image);
    EXPECT_EQ(sim::ReadFile(kFile), image);
}

// What one changed byte does: at the start, to the record of its entry, and to the next save.
class EveryByte : public ThresholdDamage, public testing::WithParamInterface<int> {
protected:
    const std::vector<Stored> entries = MixedEntries();
    const Bytes whole = Image(kId, entries);

    void ExpectSaveKeepsTheDamage(const Bytes &damaged, size_t entry) {
        const uint8_t eight[8] = {99, 88, 77, 11, 22, 33, 1, 2};
        const std::string name = entries[entry].name + std::string(16 - entries[entry].name.size(), '\0');
        sim::ClearTrace();
        SaveSdrThresholdInfoInFile(name.c_str(), eight, 0x3F);
        const size_t at = EntryAt(entry);
        Bytes expected = damaged;
        const bool found = std::equal(name.begin(), name.end(), expected.begin() + at) &&
                           (damaged[4] | damaged[5] << 8) > static_cast<int>(entry);
        if (!found) {
            return; // refused or appended: told elsewhere
        }
        std::copy(std::begin(eight), std::end(eight), expected.begin() + at + 17);
        expected[at + entries[entry].name.size()] = 0;
        expected[at + 25] = 0; // always
        expected[at + 26] = 0x3F;
        expected[at + 27] = 0;
        EXPECT_TRUE(std::equal(expected.begin() + 6, expected.end(), Live().begin() + 6));
        EXPECT_EQ(Live(), sim::ReadFile(kFile));
        EXPECT_THAT(Written(), IsEmpty());
    }
    void Flip(size_t at, uint8_t bits, bool save) {
        SCOPED_TRACE(testing::Message() << "byte " << at << " bits " << int{bits});
        Bytes damaged = whole;
        damaged[at] ^= bits;
        const bool good = Start(damaged, kId);
        EXPECT_EQ(good, at >= 4);
        const size_t entry = at < 6 ? 0 : std::min<size_t>((at - 6) / 28, kEntries - 1);
        const Bytes &live = good ? damaged : before;
        ExpectApplied(live, FullRecord(entries[entry].name, 0x3F));
        std::string changed(damaged.begin() + EntryAt(entry), damaged.begin() + EntryAt(entry) + 16);
        changed.resize(std::min(changed.find('\0'), changed.size()));
        ExpectApplied(live,
                      FullRecord(changed, damaged[EntryAt(entry) + 26])); // the sensor it now stands for
        if (good && save) {
            ExpectSaveKeepsTheDamage(damaged, entry);
        }
    }
};
INSTANTIATE_TEST_SUITE_P(ThresholdDamage, EveryByte, testing::Range(0, 8));

TEST_P(EveryByte, FlippedWhollyDoesNothingButWhatItSays) {
    const size_t from = kImageSize / 8 * GetParam(), to = from + kImageSize / 8;
    for (size_t at = from; at < to && !HasFailure(); at += tests::SweepStep()) {
        Flip(at, 0xFF, at % 7 == 0);
    }
}

TEST_P(EveryByte, OneBitFlippedDoesNothingButWhatItSays) {
    const uint8_t bit = static_cast<uint8_t>(1u << GetParam());
    for (size_t at = 0; at < EntryAt(2) && !HasFailure(); at += tests::SweepStep()) {
        Flip(at, bit, true);
    }
    for (size_t at = EntryAt(511); at < kImageSize && !HasFailure(); at += tests::SweepStep()) {
        Flip(at, bit, true);
    }
}

TEST_F(ThresholdDamage, AFileOfOneByteValueIsHarmless) {
    for (const int value : {0x00, 0xFF, 0x41, 0xA5}) {
        const Bytes image(kImageSize, static_cast<uint8_t>(value));
        EXPECT_TRUE(Start(image, IdOf(image)));
        const std::string name(16, static_cast<char>(value));
        for (const uint8_t length : {0, 1, 15, 16, 17, 31}) {
            for (const int mask : {value, 0x3F}) {
                Sdr sdr = FullRecord(name, static_cast<uint8_t>(mask));
                sdr[47] = static_cast<uint8_t>(0xC0 | length);
                ExpectApplied(image, sdr);
            }
        }
        const uint8_t eight[8] = {};
        SaveSdrThresholdInfoInFile("NEW_SENSOR\0\0\0\0\0", eight, 0);
    }
}

TEST_F(ThresholdDamage, ATextFileUnderItsOwnIdIsHarmless) {
    std::string text;
    while (text.size() < kImageSize + 100) {
        text += "[sensors]\r\nINPUT_TEMP = 55\r\n";
    }
    const Bytes content(text.begin(), text.begin() + kImageSize);
    EXPECT_TRUE(Start(content, IdOf(content)));
    ExpectApplied(content, FullRecord("INPUT_TEMP", 0x38));
    EXPECT_FALSE(Start(content, 0));
}

TEST_F(ThresholdDamage, AFolderInTheFilesPlaceIsAnOpenError) {
    std::filesystem::create_directories(sim::RealPath(kFile));
    SetLive(before);
    InitSdrThresholdInfoFromFile(0);
    EXPECT_THAT(Written(), ElementsAreArray(Error(kInit, std::string("oxa_fopen_s ") + kFile + " failed")));
    const uint8_t eight[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    sim::ClearTrace();
    SaveSdrThresholdInfoInFile("A\0\0\0\0\0\0\0\0\0\0\0\0\0\0", eight, 0x3F);
    EXPECT_THAT(Written(), ElementsAreArray(Error(kWrite, "oxa_fopen_s failed")));
}

} // namespace
