// SPDX-License-Identifier: GPL-3.0-or-later
//
// The extended store: reading and writing its two files under the semaphore, and counting entries.
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "store/store_fixture.h"

namespace {

using namespace store;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

// The four file routines under one roof.
struct Routine {
    const char *name;
    const char *file;
    bool writes;
    int32_t Run(uint8_t *data, uint32_t length) const {
        const std::string which = name;
        return which == "readExtSDRFile"      ? readExtSDRFile(data, length)
               : which == "writeExtSDRFile"   ? writeExtSDRFile(data, length)
               : which == "readExtDevTabFile" ? readExtDevTabFile(data, length)
                                              : writeExtDevTabFile(data, length);
    }
};
void PrintTo(const Routine &routine, std::ostream *out) {
    *out << routine.name;
}
constexpr Routine kRoutines[] = {{"readExtSDRFile", kSdrFile, false},
                                 {"writeExtSDRFile", kSdrFile, true},
                                 {"readExtDevTabFile", kDevTabFile, false},
                                 {"writeExtDevTabFile", kDevTabFile, true}};

class ExtendedStore : public StoreTest {};
class EntryCount : public StoreTest {};
class EveryFileRoutine : public StoreTest, public testing::WithParamInterface<Routine> {
protected:
    const Routine &routine() const {
        return GetParam();
    }
    uint8_t data[4] = {0x11, 0x22, 0x33, 0x44};
    const Bytes kOld = {0xA1, 0xA2, 0xA3, 0xA4};
    int32_t Run() {
        return routine().Run(data, sizeof(data));
    }
    bool BufferUntouched() const {
        return std::equal(data, data + 4, "\x11\x22\x33\x44");
    }
};
INSTANTIATE_TEST_SUITE_P(ExtendedStore, EveryFileRoutine, testing::ValuesIn(kRoutines),
                         [](const auto &info) { return std::string(info.param.name); });

// ---- reading and writing ------------------------------------------------------------------------

TEST_F(ExtendedStore, ReadGivesTheFilesBytesAndTheirCount) {
    const Bytes content = {1, 2, 3, 4, 5};
    sim::WriteFile(kSdrFile, content);
    Bytes data(16, 0xEE);
    EXPECT_EQ(readExtSDRFile(data.data(), 16), 5);
    EXPECT_EQ(data, (Bytes{1, 2, 3, 4, 5, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}));
    EXPECT_EQ(sim::ReadFile(kSdrFile), content);
}

TEST_F(ExtendedStore, ReadStopsAtTheGivenLength) {
    sim::WriteFile(kDevTabFile, {1, 2, 3, 4, 5});
    Bytes data(5, 0xEE);
    EXPECT_EQ(readExtDevTabFile(data.data(), 3), 3);
    EXPECT_EQ(data, (Bytes{1, 2, 3, 0xEE, 0xEE}));
}

TEST_F(ExtendedStore, WriteReplacesTheWholeFile) {
    sim::WriteFile(kSdrFile, Bytes(640, 0xA5));
    const Bytes content = {9, 8, 7};
    EXPECT_EQ(writeExtSDRFile(content.data(), 3), 0);
    EXPECT_EQ(sim::ReadFile(kSdrFile), content);
    EXPECT_THAT(DebugLines(), IsEmpty());
}

TEST_F(ExtendedStore, TheTwoFilesAreNotMixedUp) {
    const Bytes slots = {1, 1}, entries = {2, 2, 2};
    writeExtSDRFile(slots.data(), 2);
    writeExtDevTabFile(entries.data(), 3);
    EXPECT_EQ(sim::ReadFile(kSdrFile), slots);
    EXPECT_EQ(sim::ReadFile(kDevTabFile), entries);
}

TEST_P(EveryFileRoutine, OpensItsFileUnderTheSemaphoreAndGivesBothBack) {
    sim::WriteFile(routine().file, kOld);
    EXPECT_EQ(Run(), routine().writes ? 0 : 4);
    if (routine().writes) {
        EXPECT_THAT(Calls(),
                    ElementsAre("OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek",
                                "ftruncate", "sigwrap_write", "sigwrap_close", "OAL_SemUnLockByKey"));
        EXPECT_EQ(sim::ReadFile(routine().file), (Bytes{0x11, 0x22, 0x33, 0x44}));
    } else {
        EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek",
                                         "sigwrap_read", "sigwrap_close", "OAL_SemUnLockByKey"));
        EXPECT_TRUE(std::equal(data, data + 4, kOld.begin()));
    }
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_THAT(DebugLines(), IsEmpty());
}

TEST_P(EveryFileRoutine, UsesSemaphore12313WithAWaitOf2000) {
    Run();
    EXPECT_THAT(CallOf("OAL_SemCreate").args, HasSubstr("key=12313"));
    EXPECT_THAT(CallOf("OAL_SemLockByKey").args, HasSubstr("key=12313 wait=2000"));
    EXPECT_THAT(CallOf("OAL_SemUnLockByKey").args, HasSubstr("key=12313 wait=2000"));
}

TEST_P(EveryFileRoutine, OpensReadWriteAndCreatesTheFileWithMode0775) {
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(sim::FileExists(routine().file));
    const std::string args = CallOf("sigwrap_open_mode").args;
    EXPECT_THAT(args, HasSubstr(routine().file));
    EXPECT_THAT(args, HasSubstr("flags=" + std::to_string(O_RDWR | O_CREAT)));
    EXPECT_THAT(args, HasSubstr("mode=" + std::to_string(0775)));
}

// ---- what can go wrong --------------------------------------------------------------------------

TEST_P(EveryFileRoutine, RefusesNullDataBeforeAnythingElse) {
    EXPECT_EQ(routine().Run(nullptr, 4), 0);
    const std::string name = routine().name;
    EXPECT_THAT(LogLines(), ElementsAre("error 42 " + name + ": " + name + " failed! pData == NULL."));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_P(EveryFileRoutine, WithoutTheSemaphoreGivesMinusOne) {
    sim::WriteFile(routine().file, kOld);
    Fail("OAL_SemCreate");
    EXPECT_EQ(Run(), -1);
    EXPECT_THAT(LogLines(), ElementsAre("error 42 extSDRFileSemLock: sem create failed, line=#\n"));
    EXPECT_THAT(DebugLines(), ElementsAre("debug 132: Get Sem Lock Failed!\n"));
    EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate"));
    EXPECT_TRUE(BufferUntouched());
    EXPECT_EQ(sim::ReadFile(routine().file), kOld);
}

TEST_P(EveryFileRoutine, WithoutTheLockGivesMinusOneAndLeavesTheFileAlone) {
    sim::WriteFile(routine().file, kOld);
    Fail("OAL_SemLockByKey");
    EXPECT_EQ(Run(), -1);
    EXPECT_THAT(LogLines(), ElementsAre("error 42 extSDRFileSemLock: sem lock failed, line=#\n"));
    EXPECT_THAT(DebugLines(), ElementsAre("debug 132: Get Sem Lock Failed!\n"));
    EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate", "OAL_SemLockByKey"));
    EXPECT_TRUE(BufferUntouched());
    EXPECT_EQ(sim::ReadFile(routine().file), kOld);
}

TEST_P(EveryFileRoutine, ThatCannotOpenNamesItsFileAndUnlocksWithoutClosing) {
    Fail("sigwrap_open_mode");
    EXPECT_EQ(Run(), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("debug 132: open " + std::string(routine().file) + " failed!"));
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_THAT(Calls(),
                ElementsAre("OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "OAL_SemUnLockByKey"));
    EXPECT_TRUE(BufferUntouched());
}

TEST_P(EveryFileRoutine, ThatCannotSeekGivesZeroAndLeavesTheFileAlone) {
    sim::WriteFile(routine().file, kOld);
    Fail("lseek");
    EXPECT_EQ(Run(), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("debug 132: lseek function getting failed\n"));
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek",
                                     "sigwrap_close", "OAL_SemUnLockByKey"));
    EXPECT_TRUE(BufferUntouched());
    EXPECT_EQ(sim::ReadFile(routine().file), kOld);
}

TEST_P(EveryFileRoutine, WhoseTransferFailsGivesZeroAndNamesTheSdrFileEitherWay) {
    sim::WriteFile(routine().file, kOld);
    Fail(routine().writes ? "sigwrap_write" : "sigwrap_read", ENOSPC);
    EXPECT_EQ(Run(), 0);
    const std::string line = routine().writes ? "debug 132: NVRAccess.c : Error in writing to the file "
                                              : "debug 132: NVRAccess.c: Error in reading the file ";
    EXPECT_THAT(DebugLines(),
                ElementsAre(line + "/var/tmp/extSDR.dat due to error: " + std::strerror(ENOSPC) + "\n"));
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_EQ(Calls().back(), "OAL_SemUnLockByKey");
    EXPECT_EQ(sim::CountCalls("sigwrap_close"), 1u);
}

TEST_P(EveryFileRoutine, LosesNothingWhenCloseFails) {
    sim::WriteFile(routine().file, kOld);
    Fail("sigwrap_close");
    EXPECT_EQ(Run(), routine().writes ? 0 : 4);
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_THAT(DebugLines(), IsEmpty());
    EXPECT_EQ(sim::CountCalls("OAL_SemUnLockByKey"), 1u);
}

TEST_P(EveryFileRoutine, KeepsItsResultWhenUnlockFails) {
    sim::WriteFile(routine().file, kOld);
    Fail("OAL_SemUnLockByKey");
    EXPECT_EQ(Run(), routine().writes ? 0 : 4);
    EXPECT_THAT(LogLines(), ElementsAre("error 42 extSDRFileSemUnLock: sem lock failed, line=#\n"));
    EXPECT_THAT(DebugLines(), IsEmpty());
}

TEST_F(ExtendedStore, AnEmptyFileIsReportedLikeOneThatCannotBeRead) {
    sim::WriteFile(kDevTabFile, {});
    uint8_t data[32];
    EXPECT_EQ(readExtDevTabFile(data, sizeof(data)), 0);
    ASSERT_THAT(DebugLines(), SizeIs(1));
    EXPECT_THAT(
        DebugLines()[0],
        MatchesRegex(
            "debug 132: NVRAccess\\.c: Error in reading the file /var/tmp/extSDR\\.dat due to error: .*\n"));
}

TEST_F(ExtendedStore, AnyWriteResultButZeroIsReported) {
    const Bytes content(64, 0x42);
    for (const int64_t result : {-1, 1, 64}) {
        sim::ClearFaults();
        sim::ClearTrace();
        sim::Fault fault;
        fault.call = "sigwrap_write";
        fault.result = result;
        fault.errno_value = EIO;
        sim::AddFault(fault);
        EXPECT_EQ(writeExtSDRFile(content.data(), 64), 0) << result;
        EXPECT_THAT(
            DebugLines(),
            ElementsAre(
                "debug 132: NVRAccess.c : Error in writing to the file /var/tmp/extSDR.dat due to error: " +
                std::string(std::strerror(EIO)) + "\n"))
            << result;
    }
}

TEST_F(ExtendedStore, AFileThatCannotBeEmptiedStillEndsInCloseUnlockAndZero) {
    Fail("ftruncate");
    const Bytes content(64, 0x42);
    EXPECT_EQ(writeExtSDRFile(content.data(), 64), 0);
    EXPECT_EQ(sim::CountCalls("sigwrap_close"), 1u);
    EXPECT_EQ(sim::CountCalls("OAL_SemUnLockByKey"), 1u);
}

TEST_F(ExtendedStore, AFileThatCannotBeEmptiedKeepsItsOldContent) {
    const Bytes old(128, 0x11), content(64, 0x42);
    sim::WriteFile("/var/tmp/extSDR.dat", old);
    Fail("ftruncate");
    EXPECT_EQ(writeExtSDRFile(content.data(), 64), 0);
    EXPECT_EQ(sim::ReadFile("/var/tmp/extSDR.dat"), old);
    EXPECT_EQ(sim::CountCalls("sigwrap_write"), 0u);
}

TEST_F(ExtendedStore, ADirectoryInPlaceOfTheFileIsAnOpenFailure) {
    std::filesystem::create_directories(sim::RealPath(kSdrFile));
    uint8_t data[4];
    EXPECT_EQ(readExtSDRFile(data, 4), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("debug 132: open /var/tmp/extSDR.dat failed!"));
}

TEST_F(ExtendedStore, AReasonThatCannotBeToldIsLeftOut) {
    Fail("sigwrap_read");
    Fail("oxa_strerror_s");
    uint8_t data[4];
    EXPECT_EQ(readExtSDRFile(data, 4), 0);
    EXPECT_THAT(
        DebugLines(),
        ElementsAre(
            "debug 132: NVRAccess.c: Error in reading the file /var/tmp/extSDR.dat due to error: \n"));
}

// ---- number of entries --------------------------------------------------------------------------

TEST_F(EntryCount, AFileOf40BytesCountsAsOneEntry) {
    sim::WriteFile(kDevTabFile, Bytes(40, 1));
    EXPECT_EQ(getExtDevTabCount(), 1u);
}

TEST_F(EntryCount, CountsWholeEntriesUpTo255) {
    const std::pair<size_t, uint32_t> cases[] = {{1, 0},  {31, 0},     {32, 1},     {63, 1},
                                                 {64, 2}, {8159, 254}, {8160, 255}, {8192, 255}};
    for (const auto &[size, count] : cases) {
        sim::WriteFile(kDevTabFile, Bytes(size, 0));
        EXPECT_EQ(getExtDevTabCount(), count) << size << " bytes";
    }
}

TEST_F(EntryCount, ReadsAtMost8160Bytes) {
    sim::WriteFile(kDevTabFile, Bytes(32, 0));
    getExtDevTabCount();
    EXPECT_THAT(CallOf("sigwrap_read").args, HasSubstr("len=8160"));
    EXPECT_THAT(CallOf("sigwrap_open_mode").args, HasSubstr(kDevTabFile));
}

TEST_F(EntryCount, IsZeroForAMissingOrEmptyFile) {
    EXPECT_EQ(getExtDevTabCount(), 0u);
    sim::WriteFile(kDevTabFile, {});
    EXPECT_EQ(getExtDevTabCount(), 0u);
}

TEST_F(EntryCount, IsZeroWhateverFailsOnTheWay) {
    sim::WriteFile(kDevTabFile, Bytes(96, 0));
    for (const char *call :
         {"OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek", "sigwrap_read"}) {
        sim::ClearFaults();
        Fail(call);
        EXPECT_EQ(getExtDevTabCount(), 0u) << call;
    }
    sim::ClearFaults();
    EXPECT_EQ(getExtDevTabCount(), 3u);
}

} // namespace
