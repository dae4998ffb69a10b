// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every invariant catches a planted violation, and nothing else is reported.
#include <fcntl.h>
#include <gmock/gmock.h>

#include <cstring>
#include <thread>

#include "simulator/firmware_calls.h"
#include "simulator/simulator.h"

using namespace sim;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// ---- statistics and lines --------------------------------------------------------------------------------

TEST(FailureStatistic, DirectlyBeforeAnErrorLineIsSound) {
    Start({});
    sspFailedStat(kUnit, 5);
    _ssp_error(42, kUnit, 5, "f", "x");
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(FailureStatistic, MissingBeforeAnErrorLineIsReported) {
    Start({});
    _ssp_error(42, kUnit, 5, "f", "x");
    EXPECT_THAT(Violations(),
                ElementsAre("error line at specific_sdr_file.c:5 has no sspFailedStat directly before it"));
}

TEST(FailureStatistic, CountsForOneErrorLineOnly) {
    Start({});
    sspFailedStat(kUnit, 5);
    _ssp_error(42, kUnit, 5, "f", "x");
    _ssp_error(42, kUnit, 6, "f", "y");
    EXPECT_THAT(Violations(), ElementsAre(HasSubstr("specific_sdr_file.c:6 has no sspFailedStat")));
}

TEST(FailureStatistic, WithAnotherCallInBetweenIsReported) {
    Start({});
    sspFailedStat(kUnit, 5);
    _ssp_warn(42, kUnit, 6, "f", "x");
    EXPECT_THAT(Violations(),
                ElementsAre("sspFailedStat (specific_sdr_file.c:5) is followed by _ssp_warn, not by "
                            "an error line"));
}

TEST(FailureStatistic, ABoundedCallInBetweenIsReportedToo) {
    Start({});
    char text[4];
    sspFailedStat(kUnit, 5);
    memset_s(text, 4, 0, 4);
    _ssp_error(42, kUnit, 6, "f", "x");
    EXPECT_THAT(Violations(),
                ElementsAre(HasSubstr("followed by memset_s"), HasSubstr("has no sspFailedStat")));
}

TEST(FailureStatistic, CountedTwiceIsReported) {
    Start({});
    sspFailedStat(kUnit, 5);
    sspFailedStat(kUnit, 5);
    _ssp_error(42, kUnit, 5, "f", "x");
    EXPECT_THAT(Violations(), ElementsAre(HasSubstr("followed by sspFailedStat")));
}

TEST(FailureStatistic, AtTheEndIsReported) {
    Start({});
    sspFailedStat(kUnit, 5);
    EXPECT_THAT(Violations(), ElementsAre("sspFailedStat (specific_sdr_file.c:5) is followed by nothing"));
}

TEST(FailureStatistic, OfAnotherFileIsReported) {
    Start({});
    sspFailedStat("NVRAccess.c", 5);
    _ssp_error(42, kUnit, 5, "f", "x");
    EXPECT_THAT(Violations(), ElementsAre("error line at specific_sdr_file.c:5 was counted for NVRAccess.c"));
}

TEST(FailureStatistic, OfAnotherLineIsReported) {
    Start({});
    sspFailedStat(kUnit, 5);
    _ssp_error(42, kUnit, 6, "f", "x");
    EXPECT_THAT(Violations(), ElementsAre("error line at specific_sdr_file.c:6 was counted at line 5"));
}

TEST(FailureStatistic, IsForgottenByStart) {
    Start({});
    sspFailedStat(kUnit, 5);
    Start({});
    uint8_t count;
    HAL_GetCpuMaxCount(&count);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(FailureStatistic, IsJudgedWithTheTraceOffToo) {
    Start({});
    SetTracing(false);
    _ssp_error(42, kUnit, 5, "f", "x");
    EXPECT_EQ(Violations().size(), 1u);
}

TEST(Line, HasAModuleOfTheSet) {
    Start({});
    for (const uint32_t module : {42, 43, 52, 67, 255}) {
        _ssp_info(module, kUnit, 1, "f", "x");
    }
    EXPECT_THAT(Violations(), IsEmpty());
    _ssp_info(44, kUnit, 1, "f", "x");
    EXPECT_THAT(Violations(), ElementsAre("_ssp_info at specific_sdr_file.c:1: module number 44"));
}

TEST(Line, NamesASourceFileOfTheLibrary) {
    Start({});
    for (const char *unit :
         {"gen_specific_sensor_data.c", "gen_specific_sensor_devtab.c", "specific_sdr_file.c", "NVRAccess.c",
          "oxa_specific_sdr.c", "modify_sensor_threshold.c", "oxa_specific_sel.c",
          "gen_specific_sensor_default.c", "gen_specific_sensor_kestrin.c", "gen_specific_sensor_astrel.c",
          "gen_specific_sensor_pellago.c", "gen_specific_sensor_vorana.c", "gen_specific_sensor_lumora.c",
          "gen_specific_sensor_quorral.c", "gen_specific_sensor_durnow.c", "gen_specific_sensor_ferrisk.c"}) {
        _ssp_info(42, unit, 1, "f", "x");
    }
    EXPECT_THAT(Violations(), IsEmpty());
    _ssp_info(42, "gen_specific_sensor_data_names.cpp", 1, "f", "x");
    sspFailedStat("other.c", 2);
    _ssp_error(42, "other.c", 2, "f", "x");
    EXPECT_THAT(Violations(),
                ElementsAre(HasSubstr("_ssp_info at gen_specific_sensor_data_names.cpp:1: not a"),
                            HasSubstr("sspFailedStat at other.c:2: not a"),
                            HasSubstr("_ssp_error at other.c:2: not a")));
}

TEST(Line, HasAFunctionName) {
    Start({});
    _ssp_warn(42, kUnit, 1, "", "x");
    _ssp_warn(42, kUnit, 2, nullptr, "x");
    EXPECT_THAT(Violations(), ElementsAre("_ssp_warn at specific_sdr_file.c:1: no function name",
                                          "_ssp_warn at specific_sdr_file.c:2: no function name"));
}

TEST(DebugChannel, HasLevel130Or132AndTheFileInFront) {
    Start({});
    IDBG_LINUXAPP_DbgOut(130, "[%s:%d]open %s failed!", kUnit, 1, "x");
    IDBG_LINUXAPP_DbgOut(132, "[%s:%d]open %s failed!", kUnit, 1, "x");
    IDBG_LINUXAPP_AuditOut(191, "[%s:%d]x", kUnit, 1);
    EXPECT_THAT(Violations(), IsEmpty());
    IDBG_LINUXAPP_DbgOut(131, "[%s:%d]x", kUnit, 1);
    IDBG_LINUXAPP_DbgOut(130, "no prefix");
    IDBG_LINUXAPP_DbgOut(130, "[other.c:3]x");
    IDBG_LINUXAPP_DbgOut(130, "[%s:]x", kUnit);
    IDBG_LINUXAPP_AuditOut(130, "x");
    EXPECT_THAT(Violations(),
                ElementsAre("debug line with level 131", "debug line without \"[file:line]\": no prefix",
                            "debug line without \"[file:line]\": [other.c:3]x",
                            "debug line without \"[file:line]\": [specific_sdr_file.c:]x",
                            "audit line with level 130"));
}

// ---- balance -------------------------------------------------------------------------------------------

TEST(Balance, AnOpenSessionIsReportedUntilItIsClosed) {
    Start({});
    IpmiLocalSession session{};
    OpenSession(session);
    EXPECT_THAT(Violations(), ElementsAre("session 1 is still open"));
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Balance, ClosingASessionTwiceIsReported) {
    Start({});
    IpmiLocalSession session{};
    OpenSession(session);
    LIBIPMI_CloseSession(&session);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(Violations(), ElementsAre("LIBIPMI_CloseSession without an open session"));
}

TEST(Balance, CommandsWithoutASessionAreRefusedAndReported) {
    Start({});
    IpmiLocalSession session{};
    uint8_t bytes[25] = {};
    uint8_t response[4];
    EXPECT_NE(IPMICMD_AddSDR(&session, bytes, 16, response, 20), 0);
    EXPECT_NE(IPMICMD_DeleteSDR(&session, bytes, response, 20), 0);
    EXPECT_NE(IPMICMD_AddSELEntry(&session, bytes, response, 100), 0);
    EXPECT_NE(LIBIPMI_HL_SendMsgToFRU(&session, bytes, 20), 0);
    EXPECT_EQ(Violations().size(), 4u);
    EXPECT_THAT(Repository(), IsEmpty());
    EXPECT_THAT(EventLog(), IsEmpty());
}

TEST(Balance, ASessionBlockMustBeZeroFilled) {
    Start({});
    IpmiLocalSession session{};
    session.aucRaw[41] = 1;
    OpenSession(session);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(Violations(), ElementsAre(HasSubstr("not zero-filled")));
}

TEST(Balance, AnOpenIniFileIsReported) {
    Start({});
    IniFile *ini = nullptr;
    IniLoadFile("/var/SpecificSDRRec", &ini);
    EXPECT_THAT(Violations(), ElementsAre("INI file /var/SpecificSDRRec is still open"));
    IniCloseFile(ini);
    EXPECT_THAT(Violations(), IsEmpty());
    IniCloseFile(ini);
    EXPECT_THAT(Violations(), ElementsAre("IniCloseFile: the INI handle is not open"));
}

TEST(Balance, TheHandleOfAFailedLoadIsUnusable) {
    Start({});
    AddFault({.call = "IniLoadFile"});
    IniFile *ini = nullptr;
    ASSERT_EQ(IniLoadFile("/var/SpecificSDRRec", &ini), -1);
    EXPECT_EQ(IniGetUInt(ini, "s", "k", 3), 3u);
    EXPECT_NE(IniSetUInt(ini, "s", "k", 3), 0);
    EXPECT_NE(IniSaveFile(ini, "/var/SpecificSDRRec"), 0);
    EXPECT_EQ(Violations().size(), 3u);
}

TEST(Balance, AnOpenFileIsReported) {
    Start({});
    const int32_t file = sigwrap_open_mode("/var/tmp/extSDR.dat", O_RDWR | O_CREAT, 0775);
    EXPECT_THAT(Violations(), ElementsAre("file /var/tmp/extSDR.dat is still open (descriptor)"));
    sigwrap_close(file);
    EXPECT_THAT(Violations(), IsEmpty());
    sigwrap_close(file);
    EXPECT_THAT(Violations(), ElementsAre("sigwrap_close: the descriptor is not open"));
}

TEST(Balance, AnOpenStreamIsReported) {
    Start({});
    FILE *stream = nullptr;
    ASSERT_EQ(oxa_fopen_s(&stream, "/conf/BMC1/sensor_threshold.dat", "wb"), 0);
    EXPECT_THAT(Violations(), ElementsAre("file /conf/BMC1/sensor_threshold.dat is still open (stream)"));
    oxa_fclose_s(stream);
    EXPECT_THAT(Violations(), IsEmpty());
    oxa_fclose_s(stream);
    EXPECT_THAT(Violations(), ElementsAre("oxa_fclose_s: the stream is not open"));
}

TEST(Balance, ALockedSemaphoreIsReported) {
    Start({});
    EXPECT_EQ(OAL_SemCreate(12313), 0);
    EXPECT_EQ(OAL_SemLockByKey(12313, 2000), 0);
    EXPECT_THAT(Violations(), ElementsAre("semaphore 12313 is still locked"));
    EXPECT_EQ(OAL_SemUnLockByKey(12313, 2000), 0);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Balance, ASecondLockIsReportedAndFails) {
    Start({});
    OAL_SemCreate(12313);
    OAL_SemLockByKey(12313, 2000);
    EXPECT_EQ(OAL_SemLockByKey(12313, 2000), -1);
    OAL_SemUnLockByKey(12313, 2000);
    EXPECT_THAT(Violations(), ElementsAre("semaphore 12313 is locked twice"));
}

TEST(Balance, ALockThatAnotherThreadHoldsIsWaitedForAsLongAsIsSaid) {
    Start({});
    OAL_SemCreate(12313);
    OAL_SemLockByKey(12313, 2000);
    std::thread in_vain([] { EXPECT_EQ(OAL_SemLockByKey(12313, 1), -1); });
    in_vain.join();
    std::thread patient([] {
        EXPECT_EQ(OAL_SemLockByKey(12313, 60000), 0);
        OAL_SemUnLockByKey(12313, 2000);
    });
    OAL_SemUnLockByKey(12313, 2000);
    patient.join();
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Balance, AnUnlockWithoutALockAndALockWithoutACreationAreReported) {
    Start({});
    EXPECT_EQ(OAL_SemLockByKey(12313, 2000), -1);
    EXPECT_EQ(OAL_SemUnLockByKey(12313, 2000), -1);
    EXPECT_THAT(Violations(), ElementsAre("semaphore 12313 is locked before it was created",
                                          "semaphore 12313 is unlocked without being locked"));
}

// ---- memory --------------------------------------------------------------------------------------------

TEST(Bounds, ACountAboveTheSizeIsRefusedAndReported) {
    Start({});
    uint8_t small[8];
    std::memset(small, 0, sizeof(small));
    const uint8_t source[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_NE(memcpy_s(small, 4, source, 5), 0);
    EXPECT_NE(oxa_memset_s(small, 4, 1, 8), 0);
    EXPECT_THAT(std::vector<uint8_t>(small + 4, small + 8), testing::Each(0));
    EXPECT_THAT(Violations(), ElementsAre("memcpy_s: 5 bytes into 4", "oxa_memset_s: 8 bytes into 4"));
}

TEST(Bounds, OverlappingCopiesAreReported) {
    Start({});
    uint8_t bytes[16] = {};
    EXPECT_EQ(memcpy_s(bytes, 8, bytes + 8, 8), 0);
    EXPECT_THAT(Violations(), IsEmpty());
    memcpy_s(bytes, 8, bytes + 7, 8);
    EXPECT_THAT(Violations(), ElementsAre("memcpy_s: source and destination overlap"));
}

TEST(Bounds, ALongTextIsCutAndItsLengthReturned) {
    Start({});
    char text[5];
    EXPECT_EQ(snprintf_s(text, sizeof(text), "%s", "abcdefgh"), 8);
    EXPECT_STREQ(text, "abcd");
    EXPECT_EQ(strnlen_s("abcdefgh", 3), 3u);
    EXPECT_EQ(oxa_strnlen_s(nullptr, 3), 0u);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(NullPointers, AreReportedAndDoNotCrash) {
    Start({});
    uint8_t bytes[32] = {};
    uint8_t privilege = 4;
    IpmiLocalSession session{};
    IniFile *ini = nullptr;
    IniLoadFile("/var/SpecificSDRRec", &ini);
    const std::vector<int64_t> results = {
        HAL_GetCpuMaxCount(nullptr),
        get_default_board_id(nullptr),
        HAL_GetDimmSensorNameIndex(nullptr, reinterpret_cast<char *>(bytes), 4),
        MW_GetSensorNumber(nullptr, nullptr),
        MW_GetSpecificSensorInfo(nullptr, nullptr),
        MW_SetSensorThreshInfo(nullptr),
        LIBIPMI_Create_IPMI_Local_Session(nullptr, "", "", &privilege, 0, 2, 10),
        LIBIPMI_Create_IPMI_Local_Session(&session, nullptr, nullptr, nullptr, 0, 2, 10),
        IPMICMD_AddSDR(nullptr, nullptr, 4, nullptr, 20),
        IPMICMD_DeleteSDR(nullptr, nullptr, nullptr, 20),
        IPMICMD_AddSELEntry(nullptr, nullptr, nullptr, 100),
        LIBIPMI_HL_SendMsgToFRU(nullptr, nullptr, 20),
        IniLoadFile(nullptr, nullptr),
        IniSetUInt(ini, nullptr, nullptr, 1),
        IniSaveFile(ini, nullptr),
        sigwrap_open_mode(nullptr, 0, 0),
        memcpy_s(nullptr, 4, bytes, 4),
        memcpy_s(bytes, 4, nullptr, 4),
        memset_s(nullptr, 4, 0, 4),
        snprintf_s(nullptr, 4, "x"),
        oxa_fopen_s(nullptr, nullptr, nullptr),
        oxa_strerror_s(nullptr, 4, 1),
    };
    EXPECT_THAT(results, testing::Each(testing::Ne(0)));
    EXPECT_EQ(IniGetUInt(ini, nullptr, "k", 5), 5u);
    oxa_CustomSlotConversion(nullptr);
    IniCloseFile(ini);
    const std::vector<std::string> violations = Violations();
    EXPECT_EQ(violations.size(), results.size() + 2);
    EXPECT_THAT(violations, testing::Each(testing::StartsWith("null pointer given to ")));
}

TEST(GuardBytes, OfTheCallerArraysAreWatched) {
    Start({});
    StaticArrays &arrays = CallerArrays(4, 0xEE);
    ASSERT_EQ(arrays.capacity, 4u);
    std::memset(arrays.slots, 1, 4 * 64);
    std::memset(static_cast<void *>(arrays.entries), 1, 4 * 32);
    EXPECT_EQ(&CallerArrays(), &arrays);
    EXPECT_THAT(Violations(), IsEmpty());
    arrays.slots[4 * 64] = 1;
    EXPECT_THAT(Violations(),
                ElementsAre("guard bytes between slots and entries are overwritten at offset 0"));
    arrays.slots[-1] = 1;
    reinterpret_cast<uint8_t *>(arrays.entries)[4 * 32 + 2] = 1;
    EXPECT_THAT(Violations(), ElementsAre("guard bytes before the slots are overwritten at offset 4095",
                                          "guard bytes between slots and entries are overwritten at offset 0",
                                          "guard bytes after the entries are overwritten at offset 2"));
}

TEST(GuardBytes, ArraysAreFilledAndMadeAfreshByStart) {
    Start({});
    CallerArrays(2, 0x11).slots[128] = 0;
    Start({});
    EXPECT_THAT(Violations(), IsEmpty());
    const StaticArrays &arrays = CallerArrays(3, 0x22);
    EXPECT_EQ(arrays.capacity, 3u);
    EXPECT_EQ(arrays.slots[0], 0x22);
    EXPECT_EQ(arrays.slots[191], 0x22);
    EXPECT_EQ(reinterpret_cast<const uint8_t *>(arrays.entries)[95], 0x22);
}
