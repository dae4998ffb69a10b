// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a program needs that makes many runs in one process: files in memory, a library that forgets, two calls that fail.
#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "simulator/simulator.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<uint8_t>;

constexpr char kStore[] = "/var/tmp/extSDR.dat";

class FilesInMemory : public testing::Test {
protected:
    void SetUp() override {
        sim::KeepFilesInMemory();
        sim::Start(sim::Board{});
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};

TEST_F(FilesInMemory, AreReadAsTheyWereWritten) {
    const Bytes slots(100, 7);
    ASSERT_EQ(writeExtSDRFile(slots.data(), 100), 0);
    EXPECT_EQ(sim::ReadFile(kStore), slots);
    Bytes read(200);
    EXPECT_EQ(readExtSDRFile(read.data(), 200), 100);
    EXPECT_EQ(read[99], 7);
    EXPECT_EQ(read[100], 0);
}

TEST_F(FilesInMemory, AreNotOnDisk) {
    sim::WriteFile("/var/oxa-memory-only", {1, 2, 3});
    EXPECT_TRUE(sim::FileExists("/var/oxa-memory-only"));
    EXPECT_NE(::faccessat(AT_FDCWD, "/var/oxa-memory-only", F_OK, 0), 0);
}

TEST_F(FilesInMemory, AShorterContentReplacesALongerOne) {
    writeExtSDRFile(Bytes(100, 7).data(), 100);
    writeExtSDRFile(Bytes(10, 8).data(), 10);
    EXPECT_EQ(sim::ReadFile(kStore), Bytes(10, 8));
}

TEST_F(FilesInMemory, ATornWriteLeavesTheShareThatCame) {
    const auto see = [](std::vector<uint8_t> wanted) { // memory dies with the process: it is looked at there
        return [wanted] { sim::ReadFile(kStore) == wanted ? _exit(0) : _exit(1); };
    };
    EXPECT_EXIT((sim::BeforeDying(see(Bytes(25, 7))), sim::DieInWrite(1, 0.25),
                 writeExtSDRFile(Bytes(100, 7).data(), 100)),
                testing::ExitedWithCode(0), "");
}

TEST_F(FilesInMemory, KeepCardIdsOverAnIniFile) {
    uint8_t slot = 0, id = 0;
    ASSERT_EQ(SavePurchaseCardFruId(gPurchaseCardInfo[0].wDevType, "card", 3, 33), 0);
    ASSERT_EQ(LoadPurchaseCardFruId(gPurchaseCardInfo[0].wDevType, "card", &slot, &id), 0);
    EXPECT_EQ(slot, 3);
    EXPECT_EQ(id, 33);
}

TEST_F(FilesInMemory, AreGoneWhenTheyAreRemoved) {
    writeExtSDRFile(Bytes(10, 8).data(), 10);
    sim::RemoveMemoryFiles();
    EXPECT_FALSE(sim::FileExists(kStore));
}

TEST(LibraryState, IsForgotten) {
    sim::Start(sim::Board{});
    setHddRegisterInfo(3, 1, 1);
    ASSERT_EQ(gRegisterInfo.registerSlotNum, 1);
    g_extSdrData[sizeof(g_extSdrData) - 1] = 1;
    const uint8_t first = GetNoUsedFruIdForPurchaseCard();
    ASSERT_NE(GetNoUsedFruIdForPurchaseCard(), first);
    sim::ForgetLibraryState();
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 0);
    EXPECT_EQ(g_extSdrData[sizeof(g_extSdrData) - 1], 0);
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), first);
}

TEST(TwoCalls, FailAndTheOneBetweenThemDoesNot) {
    sim::Start(sim::Board{});
    sim::FailBothCalls(1, 3);
    uint32_t id = 0;
    std::vector<int32_t> results;
    for (int call = 0; call < 4; ++call)
        results.push_back(MW_GetCustomid(&id));
    EXPECT_THAT(results, ElementsAre(-1, 0, -1, 0));
    sim::FailCall(0);
    EXPECT_EQ(MW_GetCustomid(&id), 0);
}

TEST(LinesThatAreNotTraced, ArePrintedAllTheSameWhenAskedFor) {
    sim::Start(sim::Board{});
    sim::SetTracing(false);
    IDBG_LINUXAPP_DbgOut(130, "no prefix");
    EXPECT_THAT(sim::Violations(), IsEmpty());
    sim::SetPrintingLines(true);
    IDBG_LINUXAPP_DbgOut(130, "no prefix");
    EXPECT_THAT(sim::Violations(), ElementsAre("debug line without \"[file:line]\": no prefix"));
    EXPECT_THAT(sim::Trace(), IsEmpty());
}

TEST(KeptByLibrary, IsAllThatTheLibraryForgets) {
    sim::Start(sim::Board{});
    sim::ForgetLibraryState(); // what a sanitizer keeps beside it, too
    const sim::LibraryMemory before = sim::KeptByLibrary();
    ASSERT_GE(before.bytes.size(), sizeof g_extSdrData + sizeof gRegisterInfo);
    setHddRegisterInfo(3, 1, 1);
    GetNoUsedFruIdForPurchaseCard();
    const sim::LibraryMemory after = sim::KeptByLibrary();
    EXPECT_NE(after.bytes, before.bytes);
    const auto at = reinterpret_cast<const uint8_t *>(&gRegisterInfo) - after.begin;
    EXPECT_EQ(after.bytes[static_cast<size_t>(at)], 1); // disks registered
    sim::ForgetLibraryState();
    EXPECT_EQ(sim::KeptByLibrary().bytes, before.bytes);
}

} // namespace
