// SPDX-License-Identifier: GPL-3.0-or-later
//
// Files under the root directory and the INI library.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "simulator/simulator.h"

using namespace sim;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<uint8_t> BytesOf(const std::string &text) {
    return {text.begin(), text.end()};
}

constexpr char kIniPath[] = "/var/tmp/purchaseCardFruId";

uint32_t ReadIni(const std::string &text, const char *section, const char *key, uint32_t fallback = 777) {
    WriteFile(kIniPath, BytesOf(text));
    IniFile *ini = nullptr;
    EXPECT_EQ(IniLoadFile(kIniPath, &ini), 0);
    const uint32_t value = IniGetUInt(ini, section, key, fallback);
    IniCloseFile(ini);
    return value;
}

} // namespace

// ---- root ----------------------------------------------------------------------------------------------

TEST(Root, StandsForTheRootOfTheLibrarysPaths) {
    Start({});
    EXPECT_EQ(RealPath("/var/tmp/extSDR.dat"), Root() + "/var/tmp/extSDR.dat");
    EXPECT_EQ(RealPath("var/x"), Root() + "/var/x");
    EXPECT_EQ(RealPath("/../../etc/passwd"), Root() + "/etc/passwd");
    EXPECT_EQ(RealPath(RealPath("/var/x")), Root() + "/var/x");
}

TEST(Root, HoldsTheBoardsFiles) {
    Board board;
    board.files["/var/tmp/extSDR.dat"] = {1, 2, 3};
    Start(board);
    EXPECT_THAT(ReadFile("/var/tmp/extSDR.dat"), ElementsAre(1, 2, 3));
    EXPECT_TRUE(std::filesystem::exists(Root() + "/var/tmp/extSDR.dat"));
    EXPECT_FALSE(FileExists("/var/tmp/extDevTab.dat"));
    EXPECT_THAT(ReadFile("/var/tmp/extDevTab.dat"), IsEmpty());
}

TEST(Root, IsMadeUnderTmpdirAndGoneAfterExit) {
    const std::string parent = testing::TempDir() + "/oxa-root-" + std::to_string(getpid());
    std::filesystem::create_directories(parent);
    setenv("TMPDIR", parent.c_str(), 1);
    const pid_t child = fork();
    if (child == 0) {
        WriteFile("/var/tmp/extSDR.dat", {1});
        const bool made = Root().starts_with(parent) && !std::filesystem::is_empty(parent);
        std::exit(made ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_TRUE(std::filesystem::is_empty(parent));
    std::filesystem::remove_all(parent);
}

TEST(Root, GivenByHandIsUsedAndStays) {
    const std::string mine = testing::TempDir() + "/oxa-mine-" + std::to_string(getpid());
    const pid_t child = fork();
    if (child == 0) {
        SetRoot(mine + "/");
        WriteFile("/var/x", {1});
        std::exit(Root() == std::filesystem::path(mine).lexically_normal().string() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_TRUE(std::filesystem::exists(mine + "/var/x"));
    std::filesystem::remove_all(mine);
}

TEST(Root, OpenMakesParentDirectoriesWhenItCreates) {
    Start({});
    EXPECT_EQ(sigwrap_open_mode("/var/tmp/extSDR.dat", O_RDWR, 0775), -1);
    EXPECT_EQ(errno, ENOENT);
    const int32_t file = sigwrap_open_mode("/var/tmp/extSDR.dat", O_RDWR | O_CREAT, 0775);
    ASSERT_GE(file, 0);
    EXPECT_EQ(sigwrap_write(file, "abcdef", 6), 0);
    EXPECT_EQ(lseek(file, 2, SEEK_SET), 2);
    char bytes[8] = {};
    EXPECT_EQ(sigwrap_read(file, bytes, 8), 4);
    EXPECT_STREQ(bytes, "cdef");
    EXPECT_EQ(ftruncate(file, 1), 0);
    EXPECT_EQ(sigwrap_close(file), 0);
    EXPECT_EQ(ReadFile("/var/tmp/extSDR.dat"), BytesOf("a"));
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Root, FileCallsAreTracedWithTheLibrarysPath) {
    Start({});
    const int32_t file = sigwrap_open_mode("/var/tmp/extSDR.dat", O_RDWR | O_CREAT, 0775);
    lseek(file, 0, SEEK_SET);
    ftruncate(file, 0) == 0 ? void() : abort();
    sigwrap_close(file);
    std::vector<std::string> lines;
    for (const Event &event : Trace()) {
        lines.push_back(Format(event));
    }
    EXPECT_THAT(lines, ElementsAre("call sigwrap_open_mode(path=\"/var/tmp/extSDR.dat\" flags=" +
                                       std::to_string(O_RDWR | O_CREAT) + " mode=509) = fd",
                                   "call lseek(file=\"/var/tmp/extSDR.dat\" offset=0 whence=0) = 0",
                                   "call ftruncate(file=\"/var/tmp/extSDR.dat\" length=0) = 0",
                                   "call sigwrap_close(file=\"/var/tmp/extSDR.dat\") = 0"));
}

TEST(Root, AccessAndUnlinkOfTheLibrarysFilesAreMapped) {
    Start({});
    EXPECT_EQ(access("/var/test_disk_fault_predict", F_OK), -1);
    EXPECT_EQ(errno, ENOENT);
    WriteFile("/var/test_disk_fault_predict", {});
    EXPECT_EQ(access("/var/test_disk_fault_predict", F_OK), 0);
    WriteFile("/conf/BMC1/sensor_threshold.dat", {1});
    EXPECT_EQ(unlink("/conf/BMC1/sensor_threshold.dat"), 0);
    EXPECT_FALSE(FileExists("/conf/BMC1/sensor_threshold.dat"));
    EXPECT_EQ(unlink("/conf/BMC1/sensor_threshold.dat"), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST(Root, OtherFilesOfTheProcessAreLeftAlone) {
    Start({});
    const std::string path = Root() + "/mine";
    FILE *stream = fopen(path.c_str(), "wb+");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fwrite("abc", 1, 3, stream), 3u);
    EXPECT_EQ(fflush(stream), 0);
    EXPECT_EQ(lseek(fileno(stream), 1, SEEK_SET), 1);
    EXPECT_EQ(ftruncate(fileno(stream), 2), 0);
    rewind(stream);
    char bytes[4] = {};
    EXPECT_EQ(fread(bytes, 1, 3, stream), 2u);
    fclose(stream);
    EXPECT_EQ(access(path.c_str(), F_OK), 0);
    EXPECT_EQ(unlink(path.c_str()), 0);
    EXPECT_EQ(access(path.c_str(), F_OK), -1);
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_EQ(FailableCalls(), 0u);
}

TEST(Root, StreamsLiveUnderTheRoot) {
    Start({});
    FILE *stream = nullptr;
    EXPECT_EQ(oxa_fopen_s(&stream, "/conf/BMC1/sensor_threshold.dat", "rb+"), ENOENT);
    ASSERT_EQ(oxa_fopen_s(&stream, "/conf/BMC1/sensor_threshold.dat", "wb"), 0);
    EXPECT_EQ(fwrite("xyz", 3, 1, stream), 1u);
    EXPECT_EQ(oxa_fclose_s(stream), 0);
    EXPECT_EQ(ReadFile("/conf/BMC1/sensor_threshold.dat"), BytesOf("xyz"));
}

TEST(Errors, HaveTheSystemsText) {
    Start({});
    char text[64] = {};
    EXPECT_EQ(oxa_strerror_s(text, sizeof(text), ENOENT), 0);
    EXPECT_STREQ(text, "No such file or directory");
    char cut[8];
    EXPECT_EQ(oxa_strerror_s(cut, sizeof(cut), ENOENT), 0);
    EXPECT_STREQ(cut, "No such");
}

TEST(Errors, CallsThatSucceedKeepErrno) {
    Start({});
    errno = EXDEV;
    uint8_t count = 0;
    HAL_GetCpuMaxCount(&count);
    _ssp_info(42, "specific_sdr_file.c", 1, "f", "%s", "text");
    EXPECT_EQ(errno, EXDEV);
}

// ---- INI -------------------------------------------------------------------------------------------------

TEST(Ini, AMissingFileLoadsAsAnEmptyOneAndIsNotMade) {
    Start({});
    IniFile *ini = nullptr;
    ASSERT_EQ(OXA_IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniGetUInt(ini, "PSU_1", "Presence", 5), 5u);
    IniCloseFile(ini);
    EXPECT_FALSE(FileExists(kIniPath));
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Ini, KeepsSectionsAndKeysWithTheirBlanks) {
    Start({});
    IniFile *ini = nullptr;
    ASSERT_EQ(OXA_IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniSetUInt(ini, "OXA UBB1.5  ", "NEO CARD_FruId ", 36), 0);
    EXPECT_EQ(IniSetUInt(ini, "OXA UBB1.5  ", "NEO CARD_SlotId ", 4294967295u), 0);
    EXPECT_EQ(IniSaveFile(ini, kIniPath), 0);
    IniCloseFile(ini);
    EXPECT_EQ(ReadFile(kIniPath),
              BytesOf("[OXA UBB1.5  ]\nNEO CARD_FruId =36\nNEO CARD_SlotId =4294967295\n"));
    ASSERT_EQ(OXA_IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniGetUInt(ini, "OXA UBB1.5  ", "NEO CARD_FruId ", 0), 36u);
    EXPECT_EQ(IniGetUInt(ini, "OXA UBB1.5  ", "NEO CARD_FruId", 7), 7u);
    EXPECT_EQ(IniGetUInt(ini, "OXA UBB1.5", "NEO CARD_FruId ", 7), 7u);
    EXPECT_EQ(IniGetUInt(ini, "OXA UBB1.5  ", "NEO CARD_SlotId ", 0), 4294967295u);
    IniCloseFile(ini);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Ini, ChangesAreLostWithoutSaving) {
    Start({});
    WriteFile(kIniPath, BytesOf("[PSU_1]\nsdrRecId=5\n"));
    IniFile *ini = nullptr;
    ASSERT_EQ(IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniSetUInt(ini, "PSU_1", "sdrRecId", 6), 0);
    EXPECT_EQ(IniGetUInt(ini, "PSU_1", "sdrRecId", 0), 6u);
    IniCloseFile(ini);
    EXPECT_EQ(ReadFile(kIniPath), BytesOf("[PSU_1]\nsdrRecId=5\n"));
}

TEST(Ini, SavingKeepsWhatWasThere) {
    Start({});
    WriteFile(kIniPath, BytesOf("[PSU_1]\nsdrRecId=5\nPresence=1\n[PSU_2]\nsdrRecId=6\n"));
    IniFile *ini = nullptr;
    ASSERT_EQ(IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniSetUInt(ini, "PSU_1", "Presence", 0), 0);
    EXPECT_EQ(IniSaveFile(ini, kIniPath), 0);
    IniCloseFile(ini);
    EXPECT_EQ(ReadFile(kIniPath), BytesOf("[PSU_1]\nsdrRecId=5\nPresence=0\n[PSU_2]\nsdrRecId=6\n"));
}

TEST(Ini, NumbersMayBeHexadecimalAndSaturate) {
    Start({});
    EXPECT_EQ(ReadIni("[s]\nk=0x1F\n", "s", "k"), 31u);
    EXPECT_EQ(ReadIni("[s]\nk= 12 \r\n", "s", "k"), 12u);
    EXPECT_EQ(ReadIni("[s]\nk=65537", "s", "k"), 65537u);
    EXPECT_EQ(ReadIni("[s]\nk=4294967296\n", "s", "k"), 4294967295u);
    EXPECT_EQ(ReadIni("[s]\nk=999999999999999999999999999999\n", "s", "k"), 4294967295u);
}

TEST(Ini, WhatIsNoNumberIsNoKey) {
    Start({});
    EXPECT_EQ(ReadIni("[s]\nk=-1\n", "s", "k"), 777u);
    EXPECT_EQ(ReadIni("[s]\nk=12x\n", "s", "k"), 777u);
    EXPECT_EQ(ReadIni("[s]\nk=\n", "s", "k"), 777u);
    EXPECT_EQ(ReadIni("[s]\nk\n", "s", "k"), 777u);
    EXPECT_EQ(ReadIni("[s]\nk=0x\n", "s", "k"), 777u);
}

TEST(Ini, TheLaterOfTwoEqualKeysCounts) {
    Start({});
    EXPECT_EQ(ReadIni("[s]\nk=1\n[t]\nk=2\n[s]\nk=3\n", "s", "k"), 3u);
}

TEST(Ini, GarbageReadsAsWhatCanBeUnderstood) {
    Start({});
    std::string garbage;
    for (int byte = 0; byte < 4096; ++byte) {
        garbage += static_cast<char>(byte * 7919 >> 3);
    }
    EXPECT_EQ(ReadIni(garbage, "s", "k"), 777u);
    EXPECT_EQ(ReadIni(garbage + "\n[s]\n=\n==\n[\n]\n[]\n[s]\nk=9\n", "s", "k"), 9u);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Ini, ADirectoryCannotBeLoaded) {
    Start({});
    std::filesystem::create_directories(RealPath(kIniPath));
    IniFile *ini = nullptr;
    EXPECT_EQ(IniLoadFile(kIniPath, &ini), -1);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Ini, TextsThatNoLineCanHoldAreRefused) {
    Start({});
    IniFile *ini = nullptr;
    ASSERT_EQ(IniLoadFile(kIniPath, &ini), 0);
    EXPECT_EQ(IniSetUInt(ini, "a\nb", "k", 1), -1);
    EXPECT_EQ(IniSetUInt(ini, "a", "k\n", 1), -1);
    EXPECT_EQ(IniSetUInt(ini, "a", "[k]", 1), -1);
    IniCloseFile(ini);
}
