// SPDX-License-Identifier: GPL-3.0-or-later
//
// The extended store: is a sensor of this type and name already stored?
#include <algorithm>
#include <array>
#include <random>

#include "store/store_fixture.h"

namespace {

using namespace store;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Record = std::array<uint8_t, 64>;

// A slot whose name field holds `name` and then `after` (what a template or an older name left there).
Record MakeRecord(uint8_t type, size_t offset, const std::string &name, uint8_t length_byte, uint8_t after) {
    Record sdr;
    sdr.fill(after);
    std::fill(sdr.begin(), sdr.begin() + offset, uint8_t{0x5C});
    sdr[3] = type;
    sdr[offset - 1] = length_byte;
    std::copy_n(name.begin(), std::min(name.size(), 64 - offset), sdr.begin() + offset);
    return sdr;
}
Record Full(const std::string &name, uint8_t after = 0xFF) {
    return MakeRecord(0x01, 48, name, static_cast<uint8_t>(0xC0 + name.size()), after);
}
Record Compact(const std::string &name, uint8_t after = 0x00) {
    return MakeRecord(0x02, 32, name, static_cast<uint8_t>(0xC0 + name.size()), after);
}

Bytes Join(const std::vector<Record> &slots) {
    Bytes bytes;
    for (const Record &slot : slots) {
        bytes.insert(bytes.end(), slot.begin(), slot.end());
    }
    return bytes;
}
void Store(const std::vector<Record> &slots) {
    sim::WriteFile(kSdrFile, Join(slots));
}
int32_t Exists(const Record &sdr) {
    return checkSensorExist(sdr.data());
}

class DuplicateTest : public StoreTest {};

// ---- is a sensor stored? ------------------------------------------------------------------------

TEST_F(DuplicateTest, ANullRecordIsAnErrorAndReadsNothing) {
    EXPECT_EQ(checkSensorExist(nullptr), 0);
    EXPECT_THAT(LogLines(),
                ElementsAre("error 42 checkSensorExist: checkSensorExist failed! pSDRData == NULL."));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(DuplicateTest, NothingIsStoredInAMissingOrEmptyFile) {
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 0);
    sim::WriteFile(kSdrFile, {});
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 0);
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(DuplicateTest, AFullRecordOfTheSameNameIsFoundAndSaidSo) {
    Store({Full("CPU1_Temp")});
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 1);
    EXPECT_THAT(LogLines(), ElementsAre("info 42 checkSensorExist: This sensor is already exist!"));
}

TEST_F(DuplicateTest, ACompactRecordOfTheSameNameIsFoundAndSaidSo) {
    Store({Compact("CPU1_Status")});
    EXPECT_EQ(Exists(Compact("CPU1_Status")), 1);
    EXPECT_THAT(LogLines(), ElementsAre("info 42 checkSensorExist: This sensor is already exist!"));
}

TEST_F(DuplicateTest, OnlyTypeAndNameCount) {
    Record stored = Full("CPU1_Temp");
    for (const size_t offset : {0, 1, 2, 4, 5, 7, 8, 9, 12, 24, 44, 45, 46}) {
        stored[offset] = static_cast<uint8_t>(~stored[offset]);
    }
    Store({stored});
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 1);
}

TEST_F(DuplicateTest, FullAndCompactRecordsOfOneNameAreTwoSensors) {
    Store({Full("CPU1_Status"), Full("DIMM")});
    EXPECT_EQ(Exists(Compact("CPU1_Status")), 0);
    Store({Compact("CPU1_Status"), Compact("DIMM")});
    EXPECT_EQ(Exists(Full("CPU1_Status")), 0);
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(DuplicateTest, RecordsOfOtherTypesNeverMatch) {
    for (const uint8_t type : {0x00, 0x03, 0x11, 0xC0, 0xFF}) {
        Record sdr = Full("PSU1_FRU");
        sdr[3] = type;
        sdr[31] = sdr[47];
        Store({sdr});
        EXPECT_EQ(Exists(sdr), 0) << "type " << int{type};
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(DuplicateTest, AStoredNameThatBeginsTheWantedOneIsAnother) {
    for (const uint8_t after : {0x00, 0xFF, 0x20}) {
        Store({Full("CPU1", after)});
        EXPECT_EQ(Exists(Full("CPU1_Temp", after)), 0);
        Store({Compact("CPU1", after)});
        EXPECT_EQ(Exists(Compact("CPU1_Temp", after)), 0);
    }
}

TEST_F(DuplicateTest, AStoredNameThatTheWantedOneBeginsIsAnother) {
    for (const uint8_t after : {0x00, 0xFF, 0x20}) {
        Store({Full("CPU1_Temp", after)});
        EXPECT_EQ(Exists(Full("CPU1", after)), 0);
        Store({Compact("CPU1_Temp", after)});
        EXPECT_EQ(Exists(Compact("CPU1", after)), 0);
    }
}

// The longer length decides, whatever the shorter one says: bytes that agree over it are the same name.
TEST_F(DuplicateTest, BytesThatAgreeOverTheLongerLengthMatchWhateverTheShorterOneSays) {
    Record stored = Full("CPU1_Temp");
    stored[47] = 0xC4;
    Store({stored});
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 1);
    Record wanted = Full("CPU1_Temp");
    wanted[47] = 0xC4;
    Store({Full("CPU1_Temp")});
    EXPECT_EQ(Exists(wanted), 1);
}

TEST_F(DuplicateTest, TheTopTwoBitsOfTheLengthByteDoNotCount) {
    Record stored = Full("CPU1_Temp");
    stored[47] = 0x09;
    Store({stored});
    EXPECT_EQ(Exists(Full("CPU1_Temp")), 1);
    Record compact = Compact("CPU1_Status");
    compact[31] = 0x8B;
    Store({compact});
    EXPECT_EQ(Exists(Compact("CPU1_Status")), 1);
}

TEST_F(DuplicateTest, EveryCharacterOfANameCounts) {
    const std::string name = "ABCDEFGHIJKLMNOP";
    for (size_t length = 1; length <= 16; ++length) {
        const std::string wanted = name.substr(0, length);
        Store({Full(wanted, 0x00), Compact(wanted, 0x00)});
        EXPECT_EQ(Exists(Full(wanted, 0xFF)), 1) << length;
        EXPECT_EQ(Exists(Compact(wanted, 0xFF)), 1) << length;
        for (size_t at = 0; at < length; ++at) {
            std::string other = wanted;
            other[at] = '#';
            EXPECT_EQ(Exists(Full(other)), 0) << other;
            EXPECT_EQ(Exists(Compact(other)), 0) << other;
        }
    }
}

TEST_F(DuplicateTest, TwoNamelessRecordsOfOneTypeAreTheSame) {
    Store({Full("", 0x11)});
    EXPECT_EQ(Exists(Full("", 0x22)), 1);
    EXPECT_EQ(Exists(Compact("", 0x22)), 0);
    EXPECT_EQ(Exists(Full("A")), 0);
}

TEST_F(DuplicateTest, AFullRecordsNameEndsWithTheSlotWhateverItsLengthSays) {
    Record stored = Full("ABCDEFGHIJKLMNOP");
    for (const uint8_t length_byte : {0xD0, 0xD1, 0xE0, 0xFE, 0xFF, 0x3F}) {
        stored[47] = length_byte; // 16, 17, 32, 62, 63, 63
        Record next = Full("XXXXXXXX");
        Store({stored, next});
        EXPECT_EQ(Exists(Full("ABCDEFGHIJKLMNOP")), 1) << int{length_byte};
        EXPECT_EQ(Exists(stored), 1) << int{length_byte};
        EXPECT_EQ(Exists(Full("ABCDEFGHIJKLMNOQ")), 0) << int{length_byte};
        EXPECT_EQ(Exists(Full("ABCDEFGHIJKLMNO")), 0) << int{length_byte};
    }
}

TEST_F(DuplicateTest, ACompactRecordsNameMayFillTheSlotAndEndsWithIt) {
    Record stored = Compact("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef"); // 32
    for (const uint8_t length_byte : {0xE0, 0xE1, 0xFF}) {
        stored[31] = length_byte;
        Store({stored});
        Record wanted = Compact("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef");
        EXPECT_EQ(Exists(wanted), 1) << int{length_byte};
        EXPECT_EQ(Exists(stored), 1) << int{length_byte};
        wanted[63] = 'g';
        EXPECT_EQ(Exists(wanted), 0) << int{length_byte};
        wanted[63] = 'f';
        wanted[48] = '#'; // the seventeenth character
        EXPECT_EQ(Exists(wanted), 0) << int{length_byte};
    }
}

TEST_F(DuplicateTest, TheLongerLengthDecidesAlsoBeyondSixteenCharacters) {
    Store({Compact("ABCDEFGHIJKLMNOP#")});
    EXPECT_EQ(Exists(Compact("ABCDEFGHIJKLMNOPQ")), 0);
    Record shorter = Compact("ABCDEFGHIJKLMNOP#");
    shorter[31] = 0xD0; // 16
    Store({shorter});
    EXPECT_EQ(Exists(Compact("ABCDEFGHIJKLMNOPQRST")), 0);
    EXPECT_EQ(Exists(Compact("ABCDEFGHIJKLMNOP#")), 1);
}

std::string SlotName(int slot) {
    return std::to_string(slot) + "_S";
}

std::vector<Record> FullStore() {
    std::vector<Record> slots;
    for (int i = 0; i < 255; ++i) {
        slots.push_back(i % 2 == 0 ? Full(SlotName(i)) : Compact(SlotName(i)));
    }
    return slots;
}

TEST_F(DuplicateTest, AllOf255SlotsAreSearched) {
    Store(FullStore());
    for (int i = 0; i < 255; ++i) {
        const std::string name = SlotName(i);
        EXPECT_EQ(Exists(Full(name)), i % 2 == 0 ? 1 : 0) << name;
        EXPECT_EQ(Exists(Compact(name)), i % 2 == 0 ? 0 : 1) << name;
    }
    EXPECT_EQ(Exists(Full(SlotName(255))), 0);
}

// With a length of 63 the last slot's name would run 47 bytes past the image.
TEST_F(DuplicateTest, TheLastSlotIsReadToItsEndAndNoFurther) {
    for (const bool compact : {false, true}) {
        std::vector<Record> slots = FullStore();
        slots[254] = compact ? Compact("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef") : Full("ABCDEFGHIJKLMNOP");
        slots[254][compact ? 31 : 47] = 0xFF;
        Store(slots);
        Record wanted = slots[254];
        EXPECT_EQ(Exists(wanted), 1);
        wanted[63] ^= 1;
        EXPECT_EQ(Exists(wanted), 0);
    }
}

TEST_F(DuplicateTest, WhatStandsBehind255SlotsIsNotSearched) {
    std::vector<Record> slots = FullStore();
    slots.push_back(Full("Late"));
    Store(slots);
    EXPECT_EQ(Exists(Full("Late")), 0);
    EXPECT_THAT(CallOf("sigwrap_read").args, HasSubstr("len=16320"));
}

TEST_F(DuplicateTest, AnUnfinishedSlotAtTheEndDoesNotCount) {
    Bytes bytes = Join({Full("First"), Full("Second")});
    bytes.pop_back();
    sim::WriteFile(kSdrFile, bytes);
    EXPECT_EQ(Exists(Full("First")), 1);
    EXPECT_EQ(Exists(Full("Second")), 0);
}

TEST_F(DuplicateTest, AFileShorterThanOneSlotHoldsNothing) {
    Bytes bytes = Join({Full("First")});
    bytes.pop_back();
    sim::WriteFile(kSdrFile, bytes);
    EXPECT_EQ(Exists(Full("First")), 0);
}

TEST_F(DuplicateTest, WhatAnEarlierCallReadIsNotSearchedAgain) {
    Store({Full("First"), Full("Second")});
    EXPECT_EQ(Exists(Full("Second")), 1);
    for (const char *call :
         {"OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek", "sigwrap_read"}) {
        sim::ClearFaults();
        Fail(call);
        EXPECT_EQ(Exists(Full("Second")), 0) << call;
    }
    sim::ClearFaults();
    Store({Full("First")});
    EXPECT_EQ(Exists(Full("Second")), 0);
}

TEST_F(DuplicateTest, AShortReadCountsTheSlotsThatCame) {
    Store({Full("First"), Full("Second"), Full("Third")});
    sim::Fault fault;
    fault.call = "sigwrap_read";
    fault.result = 128;
    fault.succeed = true;
    sim::AddFault(fault);
    EXPECT_EQ(Exists(Full("Second")), 1);
    EXPECT_EQ(Exists(Full("Third")), 0);
}

TEST_F(DuplicateTest, AFailedUnlockDoesNotHideTheRecord) {
    Store({Full("First")});
    Fail("OAL_SemUnLockByKey");
    EXPECT_EQ(Exists(Full("First")), 1);
}

TEST_F(DuplicateTest, ReadsTheFileIntoTheExportedImageAndWritesNothing) {
    const std::vector<Record> slots = {Full("First"), Compact("Second")};
    Store(slots);
    EXPECT_EQ(Exists(Full("Third")), 0);
    EXPECT_EQ(Bytes(g_extSdrData, g_extSdrData + 128), Join(slots));
    EXPECT_EQ(sim::CountCalls("sigwrap_write"), 0u);
    EXPECT_EQ(sim::ReadFile(kSdrFile), Join(slots));
}

TEST_F(DuplicateTest, AskingDoesNotStore) {
    EXPECT_EQ(Exists(Full("First")), 0);
    EXPECT_EQ(Exists(Full("First")), 0);
    EXPECT_THAT(sim::ReadFile(kSdrFile), IsEmpty());
}

// ---- the rule itself, against any names ---------------------------------------------------------

bool SameByTheRule(const Record &a, const Record &b) {
    if (a[3] != b[3] || (a[3] != 1 && a[3] != 2)) {
        return false;
    }
    const size_t offset = a[3] == 1 ? 48 : 32;
    const size_t longer = std::max(a[offset - 1] & 0x3F, b[offset - 1] & 0x3F);
    for (size_t i = offset; i < 64 && i < offset + longer; ++i) {
        if (a[i] != b[i]) {
            return false;
        }
    }
    return true;
}

TEST_F(DuplicateTest, AgreesWithThePlainRuleOnRandomNames) {
    std::mt19937 random(20240611); // few letters and lengths: near misses are common
    const auto any = [&](int from, int to) {
        return static_cast<int>(random() % static_cast<unsigned>(to - from + 1)) + from;
    };
    const auto any_record = [&] {
        Record sdr;
        std::generate(sdr.begin(), sdr.end(),
                      [&] { return static_cast<uint8_t>(any(0, 9) == 0 ? 'B' : 'A'); });
        sdr[3] = static_cast<uint8_t>(any(1, 3));
        const int length = any(0, 3) == 0 ? any(0, 63) : any(0, 18);
        sdr[sdr[3] == 2 ? 31 : 47] = static_cast<uint8_t>(any(0, 3) << 6 | length);
        return sdr;
    };
    int found = 0;
    constexpr int kRounds = 400;
    for (int round = 0; round < kRounds; ++round) {
        std::vector<Record> slots(static_cast<size_t>(any(1, 4)));
        std::generate(slots.begin(), slots.end(), any_record);
        const Record wanted = any_record();
        Store(slots);
        const bool expected = std::any_of(slots.begin(), slots.end(),
                                          [&](const Record &slot) { return SameByTheRule(slot, wanted); });
        ASSERT_EQ(Exists(wanted), expected ? 1 : 0) << "round " << round;
        found += expected;
        sim::ClearTrace();
    }
    EXPECT_GT(found, kRounds / 20); // both answers occur
    EXPECT_LT(found, kRounds - kRounds / 20);
}

} // namespace
