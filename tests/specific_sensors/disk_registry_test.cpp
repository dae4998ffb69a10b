// SPDX-License-Identifier: GPL-3.0-or-later
//
// The disk registry: which sensors of a disk slot need not be added again, and the oddities that callers rely
// on.
#include <cstring>

#include "support/lookup_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTemperature = 1;
constexpr int kStatus = 2;

std::string Number(int64_t number) {
    return std::to_string(number);
}

// ---- lines as they are expected ------------------------------------------------------------------

std::string Asked(int64_t slot, int64_t kind, int count) {
    return "warn 42 isHasRegister: slotid:" + Number(slot) + ", type:" + Number(kind) +
           ", gRegisterInfo.registerSlotNum:" + Number(count) + "!\n";
}
std::string Walked(const HddRegisterEntry &entry) {
    return "info 42 isHasRegister: gRegisterInfo.tHddInfo[index].slotNum:" + Number(entry.slotNum) +
           ", gRegisterInfo.tHddInfo[index].hddType:" + Number(entry.hddType) +
           ", gRegisterInfo.tHddInfo[index].statusFlag:" + Number(entry.statusFlag) +
           ", gRegisterInfo.tHddInfo[index].tempFlag:" + Number(entry.tempFlag) + ".\n";
}
std::string Setting(int64_t slot, int64_t kind, int64_t hdd_type, int count) {
    return "info 42 setHddRegisterInfo: slotid:" + Number(slot) + ", type:" + Number(kind) +
           ", hddType:" + Number(hdd_type) + ", gRegisterInfo.registerSlotNum:" + Number(count) + "!\n";
}
std::string Was(int index, const HddRegisterEntry &entry) {
    return "info 42 setHddRegisterInfo: index:" + Number(index) +
           ", gRegisterInfo.tHddInfo[index].hddType:" + Number(entry.hddType) +
           ", gRegisterInfo.tHddInfo[index].slotNum:" + Number(entry.slotNum) +
           ", gRegisterInfo.tHddInfo[index].statusFlag:" + Number(entry.statusFlag) +
           ", gRegisterInfo.tHddInfo[index].tempFlag:" + Number(entry.tempFlag) + "\n";
}
// Slot, kind, temperature flag, status flag.
HddRegisterEntry Entry(int slot, int hdd_type, int temperature, int status) {
    return {static_cast<uint8_t>(slot), static_cast<uint8_t>(hdd_type), static_cast<uint8_t>(temperature),
            static_cast<uint8_t>(status)};
}
std::vector<int> Values(const HddRegisterEntry &entry) {
    return {entry.slotNum, entry.hddType, entry.tempFlag, entry.statusFlag};
}

class DiskRegistry : public Lookup {
protected:
    void TearDown() override {
        Lookup::TearDown();
        gRegisterInfo = {}; // also when the tests share a process
    }
    // The registry as other code of the process may leave it.
    static void Fill(int count) {
        gRegisterInfo.registerSlotNum = static_cast<uint8_t>(count);
        for (int i = 0; i < static_cast<int>(HDD_REGISTER_MAX); ++i)
            gRegisterInfo.tHddInfo[i] = Entry(i + 101, 1, 1, 0); // slots 101 to 200
    }
    static void ExpectRegistry(const std::vector<HddRegisterEntry> &entries, int count) {
        EXPECT_EQ(gRegisterInfo.registerSlotNum, count);
        ASSERT_LE(entries.size(), HDD_REGISTER_MAX);
        for (size_t i = 0; i < HDD_REGISTER_MAX; ++i) {
            const HddRegisterEntry expected = i < entries.size() ? entries[i] : HddRegisterEntry{};
            EXPECT_EQ(Values(gRegisterInfo.tHddInfo[i]), Values(expected)) << "entry " << i;
        }
    }
};

// ---- registering and asking -----------------------------------------------------------------------

TEST_F(DiskRegistry, IsEmptyWhenTheLibraryIsLoaded) {
    ExpectRegistry({}, 0);
}

TEST_F(DiskRegistry, AnswersNothingRegisteredWithoutEntries) {
    EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    EXPECT_EQ(isHasRegister(0, kStatus), 0u); // although every unused entry reads slot 0
    EXPECT_THAT(LogLines(), ElementsAre(Asked(3, 1, 0), Asked(0, 2, 0)));
    ExpectRegistry({}, 0);
}

TEST_F(DiskRegistry, AFirstTemperatureLeavesTheStatusToBeAdded) {
    EXPECT_EQ(setHddRegisterInfo(3, kTemperature, 1), 0u);
    ExpectRegistry({Entry(3, 1, 1, 0)}, 1);
    EXPECT_EQ(isHasRegister(3, kTemperature), 1u);
    EXPECT_EQ(isHasRegister(3, kStatus), 0u);
    EXPECT_THAT(LogLines(),
                ElementsAre(Setting(3, 1, 1, 0), Was(0, Entry(3, 1, 1, 0)), Asked(3, 1, 1),
                            Walked(Entry(3, 1, 1, 0)), Asked(3, 2, 1), Walked(Entry(3, 1, 1, 0))));
}

TEST_F(DiskRegistry, AFirstStatusLeavesTheTemperatureToBeAdded) {
    EXPECT_EQ(setHddRegisterInfo(3, kStatus, 1), 0u);
    ExpectRegistry({Entry(3, 1, 0, 1)}, 1);
    EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    EXPECT_EQ(isHasRegister(3, kStatus), 1u);
    EXPECT_THAT(LogLines(),
                ElementsAre(Setting(3, 2, 1, 0), Was(0, Entry(3, 1, 0, 1)), Asked(3, 1, 1),
                            Walked(Entry(3, 1, 0, 1)), Asked(3, 2, 1), Walked(Entry(3, 1, 0, 1))));
}

TEST_F(DiskRegistry, BothSensorsOfASlotShareOneEntryAndItsFirstKind) {
    setHddRegisterInfo(3, kTemperature, 1);
    sim::ClearTrace();
    EXPECT_EQ(setHddRegisterInfo(3, kStatus, 2), 0u);
    ExpectRegistry({Entry(3, 1, 1, 1)}, 1);
    EXPECT_THAT(LogLines(), ElementsAre(Setting(3, 2, 2, 1), Was(0, Entry(3, 1, 1, 1))));
    EXPECT_EQ(isHasRegister(3, kTemperature), 1u);
    EXPECT_EQ(isHasRegister(3, kStatus), 1u);
}

TEST_F(DiskRegistry, ADiskOfAnotherKindCountsAsRegisteredForBothSensors) {
    for (const int hdd_type : {2, 3, 4, 255}) {
        gRegisterInfo = {};
        setHddRegisterInfo(7, kTemperature, static_cast<uint32_t>(hdd_type));
        ExpectRegistry({Entry(7, hdd_type, 1, 0)}, 1);
        EXPECT_EQ(isHasRegister(7, kTemperature), 1u) << hdd_type;
        EXPECT_EQ(isHasRegister(7, kStatus), 1u) << hdd_type;
        EXPECT_EQ(isHasRegister(7, 9), 1u) << hdd_type;
        EXPECT_EQ(isHasRegister(8, kStatus), 0u) << hdd_type;
    }
}

TEST_F(DiskRegistry, AKindThatIsNeitherSensorCountsAsRegistered) {
    setHddRegisterInfo(3, kTemperature, 1);
    for (const int kind : {0, 3, -1, 257, 258}) {
        EXPECT_EQ(isHasRegister(3, kind), 1u) << kind;
        EXPECT_EQ(isHasRegister(4, kind), 0u) << kind; // of a slot that is not there nothing is
    }
    sim::ClearTrace();
    isHasRegister(3, -1);
    EXPECT_THAT(LogLines(), ElementsAre(Asked(3, -1, 1), Walked(Entry(3, 1, 1, 0))));
}

TEST_F(DiskRegistry, SettingAnotherKindMakesTheEntryWithoutAFlagAndWithoutTheClosingLine) {
    for (const uint32_t kind : {0u, 3u, 257u}) {
        gRegisterInfo = {};
        sim::ClearTrace();
        EXPECT_EQ(setHddRegisterInfo(5, kind, 1), 0u);
        ExpectRegistry({Entry(5, 1, 0, 0)}, 1);
        EXPECT_THAT(LogLines(), ElementsAre(Setting(5, kind, 1, 0)));
        EXPECT_EQ(isHasRegister(5, kTemperature), 0u);
        EXPECT_EQ(isHasRegister(5, kStatus), 0u);
    }
}

TEST_F(DiskRegistry, AnyFlagButZeroCounts) {
    gRegisterInfo.registerSlotNum = 1;
    gRegisterInfo.tHddInfo[0] = Entry(3, 1, 200, 0);
    EXPECT_EQ(isHasRegister(3, kTemperature), 1u);
    EXPECT_EQ(isHasRegister(3, kStatus), 0u);
    gRegisterInfo.tHddInfo[0] = Entry(3, 1, 0, 128);
    EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    EXPECT_EQ(isHasRegister(3, kStatus), 1u);
}

TEST_F(DiskRegistry, KeepsTheSlotsInTheOrderTheyCame) {
    setHddRegisterInfo(9, kTemperature, 1);
    setHddRegisterInfo(0, kStatus, 1);
    setHddRegisterInfo(255, kTemperature, 2);
    setHddRegisterInfo(0, kTemperature, 1);
    ExpectRegistry({Entry(9, 1, 1, 0), Entry(0, 1, 1, 1), Entry(255, 2, 1, 0)}, 3);
    sim::ClearTrace();
    EXPECT_EQ(isHasRegister(255, kStatus), 1u);
    EXPECT_THAT(LogLines(), ElementsAre(Asked(255, 2, 3), Walked(Entry(9, 1, 1, 0)),
                                        Walked(Entry(0, 1, 1, 1)), Walked(Entry(255, 2, 1, 0))));
}

TEST_F(DiskRegistry, LooksNoFurtherThanTheFirstEntryOfTheSlot) {
    gRegisterInfo.registerSlotNum = 3;
    gRegisterInfo.tHddInfo[0] = Entry(1, 1, 0, 0);
    gRegisterInfo.tHddInfo[1] = Entry(3, 1, 1, 0);
    gRegisterInfo.tHddInfo[2] = Entry(3, 2, 0, 1);
    EXPECT_EQ(isHasRegister(3, kStatus), 0u);
    EXPECT_THAT(LogLines(),
                ElementsAre(Asked(3, 2, 3), Walked(Entry(1, 1, 0, 0)), Walked(Entry(3, 1, 1, 0))));
    setHddRegisterInfo(3, kStatus, 1);
    ExpectRegistry({Entry(1, 1, 0, 0), Entry(3, 1, 1, 1), Entry(3, 2, 0, 1)}, 3);
}

TEST_F(DiskRegistry, EntriesBeyondTheCountAreNotLookedAt) {
    gRegisterInfo.registerSlotNum = 1;
    gRegisterInfo.tHddInfo[0] = Entry(1, 1, 1, 0);
    gRegisterInfo.tHddInfo[1] = Entry(3, 2, 1, 1);
    EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    setHddRegisterInfo(3, kTemperature,
                       1); // the next entry is already marked, so it is neither named nor counted
    ExpectRegistry({Entry(1, 1, 1, 0), Entry(3, 2, 1, 1)}, 1);
}

TEST_F(DiskRegistry, ANextEntryThatIsMarkedKeepsItsSlot) {
    gRegisterInfo.tHddInfo[0] = Entry(8, 2, 0, 0);
    EXPECT_EQ(setHddRegisterInfo(3, kStatus, 1), 0u);
    ExpectRegistry({Entry(8, 2, 0, 1)}, 0);
    EXPECT_THAT(LogLines(), ElementsAre(Setting(3, 2, 1, 0), Was(0, Entry(8, 2, 0, 1))));
}

// ---- oddities --------------------------------------------------------------------------------------

TEST_F(DiskRegistry, AKindOfZeroLeavesTheEntryUnusedAndCountsItEveryTime) {
    EXPECT_EQ(setHddRegisterInfo(7, kTemperature, 0), 0u);
    ExpectRegistry({Entry(7, 0, 1, 0)}, 1);
    EXPECT_EQ(isHasRegister(7, kTemperature), 1u); // a kind that is not 1
    EXPECT_EQ(isHasRegister(7, kStatus), 1u);
    sim::ClearTrace();
    EXPECT_EQ(setHddRegisterInfo(7, kStatus, 0), 0u);
    EXPECT_THAT(LogLines(), ElementsAre(Setting(7, 2, 0, 1), Was(0, Entry(7, 0, 1, 1))));
    ExpectRegistry({Entry(7, 0, 1, 1)}, 2); // the entry in between stays empty
    EXPECT_EQ(setHddRegisterInfo(8, kTemperature, 1), 0u);
    ExpectRegistry({Entry(7, 0, 1, 1), Entry(0, 0, 0, 0), Entry(8, 1, 1, 0)}, 3);
    EXPECT_EQ(isHasRegister(0, kTemperature), 1u); // found in the empty entry, whose kind is not 1
}

TEST_F(DiskRegistry, AnUnusedEntryTakesTheKindOfTheNextCall) {
    setHddRegisterInfo(7, kTemperature, 0);
    setHddRegisterInfo(7, kStatus, 1);
    ExpectRegistry({Entry(7, 1, 1, 1)}, 2);
    setHddRegisterInfo(7, kStatus, 1);
    ExpectRegistry({Entry(7, 1, 1, 1)}, 2);
}

TEST_F(DiskRegistry, TheHundredthSlotFits) {
    Fill(99);
    gRegisterInfo.tHddInfo[99] = {};
    EXPECT_EQ(setHddRegisterInfo(3, kTemperature, 1), 0u);
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 100);
    EXPECT_EQ(Values(gRegisterInfo.tHddInfo[99]), Values(Entry(3, 1, 1, 0)));
    EXPECT_THAT(LogLines(), ElementsAre(Setting(3, 1, 1, 99), Was(99, Entry(3, 1, 1, 0))));
    EXPECT_EQ(isHasRegister(3, kTemperature), 1u);
}

TEST_F(DiskRegistry, OneSlotMoreThanItHoldsChangesNothing) {
    for (const int count : {100, 101, 255}) {
        Fill(count);
        const HddRegisterInfo before = gRegisterInfo;
        sim::ClearTrace();
        EXPECT_EQ(setHddRegisterInfo(3, kTemperature, 1), 0u);
        EXPECT_EQ(setHddRegisterInfo(4, kStatus, 0), 0u);
        EXPECT_EQ(setHddRegisterInfo(5, 9, 1), 0u);
        EXPECT_EQ(std::memcmp(&gRegisterInfo, &before, sizeof(before)), 0) << count;
        EXPECT_THAT(LogLines(),
                    ElementsAre(Setting(3, 1, 1, count), Setting(4, 2, 0, count), Setting(5, 9, 1, count)));
        EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    }
}

TEST_F(DiskRegistry, ASlotOfAFullRegistryIsStillFoundAndMarked) {
    Fill(100);
    EXPECT_EQ(isHasRegister(200, kTemperature), 1u);
    EXPECT_EQ(isHasRegister(200, kStatus), 0u);
    setHddRegisterInfo(200, kStatus, 1);
    EXPECT_EQ(Values(gRegisterInfo.tHddInfo[99]), Values(Entry(200, 1, 1, 1)));
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 100);
}

TEST_F(DiskRegistry, WalksStopAtTheLastEntryWhateverTheCount) {
    Fill(255);
    EXPECT_EQ(isHasRegister(3, kTemperature), 0u);
    const std::vector<std::string> lines = LogLines();
    ASSERT_EQ(lines.size(), 101u);
    EXPECT_EQ(lines.front(), Asked(3, 1, 255));
    EXPECT_EQ(lines[1], Walked(Entry(101, 1, 1, 0)));
    EXPECT_EQ(lines.back(), Walked(Entry(200, 1, 1, 0)));
    EXPECT_EQ(isHasRegister(200, kTemperature), 1u);
}

TEST_F(DiskRegistry, TheCountIsOneByte) {
    Fill(255);
    gRegisterInfo.tHddInfo[0] = Entry(3, 0, 0, 0);
    setHddRegisterInfo(3, kTemperature, 1);
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 0);
    EXPECT_EQ(Values(gRegisterInfo.tHddInfo[0]), Values(Entry(3, 1, 1, 0)));
}

TEST_F(DiskRegistry, Slot259IsNotSlot3) {
    setHddRegisterInfo(3, kTemperature, 2);
    EXPECT_EQ(isHasRegister(259, kTemperature), 0u);
    EXPECT_EQ(isHasRegister(3 - 256, kTemperature), 0u);
    setHddRegisterInfo(259, kStatus, 1); // the entry holds its low byte
    ExpectRegistry({Entry(3, 2, 1, 0), Entry(3, 1, 0, 1)}, 2);
    EXPECT_EQ(isHasRegister(259, kStatus), 0u);
    EXPECT_EQ(isHasRegister(3, kStatus), 1u);
}

TEST_F(DiskRegistry, ANegativeSlotIsNotSlot255) {
    setHddRegisterInfo(255, kTemperature, 2);
    sim::ClearTrace();
    EXPECT_EQ(isHasRegister(-1, kTemperature), 0u);
    EXPECT_THAT(LogLines(), ElementsAre(Asked(-1, 1, 1), Walked(Entry(255, 2, 1, 0))));
}

TEST_F(DiskRegistry, ADiskKindIsOneByte) {
    setHddRegisterInfo(3, kTemperature, 0x101);
    ExpectRegistry({Entry(3, 1, 1, 0)}, 1);
    sim::ClearTrace();
    setHddRegisterInfo(4, kTemperature, 0x100);
    ExpectRegistry({Entry(3, 1, 1, 0), Entry(4, 0, 1, 0)}, 2);
    EXPECT_THAT(LogLines(), ElementsAre(Setting(4, 1, 0x100, 1), Was(1, Entry(4, 0, 1, 0))));
}

TEST_F(DiskRegistry, NeedsNothingOfThePlatformButItsLog) {
    setHddRegisterInfo(3, kTemperature, 1);
    isHasRegister(3, kTemperature);
    EXPECT_EQ(sim::FailableCalls(), 0u);
}

// ---- who registers disks ---------------------------------------------------------------------------

TEST_F(DiskRegistry, IsNeededInFerriskAlone) {
    for (uint32_t profile = 0; profile <= 300; ++profile) {
        Board(profile);
        EXPECT_EQ(isNeedRegisterHddSdr(), profile == CUSTOM_ID_FERRISK ? 1 : 0) << profile;
    }
    Board(0x10010);
    EXPECT_EQ(isNeedRegisterHddSdr(), 0);
}

TEST_F(DiskRegistry, WhetherItIsNeededIsUnknownWithoutAProfile) {
    Board(CUSTOM_ID_FERRISK);
    for (const int32_t result : {-1, 1, -77}) {
        sim::ClearFaults();
        sim::AddFault({.call = "IPMI_LoadCustomID", .result = result, .output = 16});
        EXPECT_EQ(isNeedRegisterHddSdr(), -1) << result;
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

} // namespace
