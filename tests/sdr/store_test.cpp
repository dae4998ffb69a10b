// SPDX-License-Identifier: GPL-3.0-or-later
//
// The extended store: its two files, the semaphore around them, and the question whether a sensor is stored.
#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/exports.h"
#include "simulator/simulator.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

constexpr char kSdrFile[] = "/var/tmp/extSDR.dat";
constexpr char kDevTabFile[] = "/var/tmp/extDevTab.dat";
constexpr char kUnit[] = "specific_sdr_file.c";

using Bytes = std::vector<uint8_t>;
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

std::vector<std::string> Calls() {
    std::vector<std::string> names;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function != "oxa_strerror_s") {
            names.push_back(event.function);
        }
    }
    return names;
}

const sim::Event &CallOf(const std::string &function) {
    static const sim::Event kNone;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function == function) {
            return event;
        }
    }
    ADD_FAILURE() << function << " was not called";
    return kNone;
}

// Debug lines without their "[file:line]", which is checked here.
std::vector<std::string> DebugLines() {
    std::vector<std::string> lines;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind != sim::Kind::kDebug) {
            continue;
        }
        EXPECT_EQ(event.number, 132u);
        EXPECT_THAT(event.text, MatchesRegex("\\[specific_sdr_file\\.c:[0-9]+\\](.|\n)*"));
        lines.push_back(event.text.substr(event.text.find(']') + 1));
    }
    return lines;
}

// Log lines as "level module function: text", the number of a "line=" masked.
std::vector<std::string> LogLines() {
    std::vector<std::string> lines;
    for (const sim::Event &event : sim::Logs()) {
        EXPECT_EQ(event.file, kUnit);
        static const char *const kLevels[] = {"debug", "info", "warn", "error"};
        std::string text = event.text;
        const size_t at = text.find("line=");
        if (at != std::string::npos) {
            const size_t end = text.find_first_not_of("0123456789", at + 5);
            EXPECT_GT(end, at + 5) << text;
            text = text.substr(0, at + 5) + "#" + (end == std::string::npos ? "" : text.substr(end));
        }
        lines.push_back(std::string(kLevels[static_cast<int>(event.level)]) + " " +
                        std::to_string(event.number) + " " + event.function + ": " + text);
    }
    return lines;
}

// Every call of this name fails.
void Fail(const std::string &call, int errno_value = 0) {
    sim::Fault fault;
    fault.call = call;
    fault.errno_value = errno_value;
    sim::AddFault(fault);
}

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

class StoreTest : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
        std::filesystem::remove_all(sim::RealPath("/var")); // also when the tests share a process
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};
class ExtendedStore : public StoreTest {};
class DuplicateTest : public StoreTest {};
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

// ---- reading and writing
// ---------------------------------------------------------------------------------------

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

// ---- what can go wrong
// -------------------------------------------------------------------------------------------

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
    EXPECT_THAT(DebugLines(), ElementsAre("Get Sem Lock Failed!\n"));
    EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate"));
    EXPECT_TRUE(BufferUntouched());
    EXPECT_EQ(sim::ReadFile(routine().file), kOld);
}

TEST_P(EveryFileRoutine, WithoutTheLockGivesMinusOneAndLeavesTheFileAlone) {
    sim::WriteFile(routine().file, kOld);
    Fail("OAL_SemLockByKey");
    EXPECT_EQ(Run(), -1);
    EXPECT_THAT(LogLines(), ElementsAre("error 42 extSDRFileSemLock: sem lock failed, line=#\n"));
    EXPECT_THAT(DebugLines(), ElementsAre("Get Sem Lock Failed!\n"));
    EXPECT_THAT(Calls(), ElementsAre("OAL_SemCreate", "OAL_SemLockByKey"));
    EXPECT_TRUE(BufferUntouched());
    EXPECT_EQ(sim::ReadFile(routine().file), kOld);
}

TEST_P(EveryFileRoutine, ThatCannotOpenNamesItsFileAndUnlocksWithoutClosing) {
    Fail("sigwrap_open_mode");
    EXPECT_EQ(Run(), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("open " + std::string(routine().file) + " failed!"));
    EXPECT_THAT(LogLines(), IsEmpty());
    EXPECT_THAT(Calls(),
                ElementsAre("OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "OAL_SemUnLockByKey"));
    EXPECT_TRUE(BufferUntouched());
}

TEST_P(EveryFileRoutine, ThatCannotSeekGivesZeroAndLeavesTheFileAlone) {
    sim::WriteFile(routine().file, kOld);
    Fail("lseek");
    EXPECT_EQ(Run(), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("lseek function getting failed\n"));
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
    const std::string line = routine().writes ? "NVRAccess.c : Error in writing to the file "
                                              : "NVRAccess.c: Error in reading the file ";
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
        MatchesRegex("NVRAccess\\.c: Error in reading the file /var/tmp/extSDR\\.dat due to error: .*\n"));
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
            ElementsAre("NVRAccess.c : Error in writing to the file /var/tmp/extSDR.dat due to error: " +
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

TEST_F(ExtendedStore, ADirectoryInPlaceOfTheFileIsAnOpenFailure) {
    std::filesystem::create_directories(sim::RealPath(kSdrFile));
    uint8_t data[4];
    EXPECT_EQ(readExtSDRFile(data, 4), 0);
    EXPECT_THAT(DebugLines(), ElementsAre("open /var/tmp/extSDR.dat failed!"));
}

TEST_F(ExtendedStore, AReasonThatCannotBeToldIsLeftOut) {
    Fail("sigwrap_read");
    Fail("oxa_strerror_s");
    uint8_t data[4];
    EXPECT_EQ(readExtSDRFile(data, 4), 0);
    EXPECT_THAT(DebugLines(),
                ElementsAre("NVRAccess.c: Error in reading the file /var/tmp/extSDR.dat due to error: \n"));
}

// ---- number of entries
// -------------------------------------------------------------------------------------------

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

// ---- is a sensor stored?
// -------------------------------------------------------------------------------------------

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

std::vector<Record> FullStore() {
    std::vector<Record> slots;
    for (int i = 0; i < 255; ++i) {
        slots.push_back(i % 2 == 0 ? Full("S" + std::to_string(i)) : Compact("S" + std::to_string(i)));
    }
    return slots;
}

TEST_F(DuplicateTest, AllOf255SlotsAreSearched) {
    Store(FullStore());
    for (int i = 0; i < 255; ++i) {
        const std::string name = "S" + std::to_string(i);
        EXPECT_EQ(Exists(Full(name)), i % 2 == 0 ? 1 : 0) << name;
        EXPECT_EQ(Exists(Compact(name)), i % 2 == 0 ? 0 : 1) << name;
    }
    EXPECT_EQ(Exists(Full("S255")), 0);
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

// ---- the rule itself, against any names
// ------------------------------------------------------------------------

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
