// SPDX-License-Identifier: GPL-3.0-or-later
//
// Runs without end, and processes that end in the middle.
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "oxa/platform.h"
#include "simulator/simulator.h"

namespace {

constexpr char kSdrFile[] = "/var/tmp/extSDR.dat";

using testing::KilledBySignal;

class SimulatedDeath : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
        sim::WriteFile(kSdrFile, std::vector<uint8_t>(64, 0x11));
    }
    const std::vector<uint8_t> new_slots_ = std::vector<uint8_t>(128, 0x22);

    void WriteStore() { // four calls
        const int32_t file = sigwrap_open_mode(kSdrFile, O_RDWR | O_CREAT, 0775);
        EXPECT_EQ(ftruncate(file, 0), 0);
        sigwrap_write(file, new_slots_.data(), 128);
        sigwrap_close(file);
    }
    static void WriteRecordFile() {
        IniFile *ini = nullptr;
        IniLoadFile("/var/SpecificSDRRec", &ini);
        IniSetUInt(ini, "PSU_1", "sdrRecId", 7);
        IniSaveFile(ini, "/var/SpecificSDRRec");
    }
};

TEST_F(SimulatedDeath, BeforeTheCallThatTruncatesLeavesTheOldFile) {
    EXPECT_EXIT((sim::DieAtCall(2), WriteStore()), KilledBySignal(SIGKILL), "");
    EXPECT_EQ(sim::ReadFile(kSdrFile), std::vector<uint8_t>(64, 0x11));
}

TEST_F(SimulatedDeath, BeforeTheCallThatWritesLeavesAnEmptyFile) {
    EXPECT_EXIT((sim::DieAtCall(3), WriteStore()), KilledBySignal(SIGKILL), "");
    EXPECT_THAT(sim::ReadFile(kSdrFile), testing::IsEmpty());
}

TEST_F(SimulatedDeath, InAWriteLeavesTheShareThatCame) {
    EXPECT_EXIT((sim::DieInWrite(1, 0.75), WriteStore()), KilledBySignal(SIGKILL), "");
    EXPECT_EQ(sim::ReadFile(kSdrFile), std::vector<uint8_t>(96, 0x22));
}

TEST_F(SimulatedDeath, InTheSecondWriteLetsTheFirstBe) {
    EXPECT_EXIT((sim::DieInWrite(2, 0), WriteStore(), WriteRecordFile()), KilledBySignal(SIGKILL), "");
    EXPECT_EQ(sim::ReadFile(kSdrFile), new_slots_);
    EXPECT_TRUE(sim::FileExists("/var/SpecificSDRRec"));
    EXPECT_THAT(sim::ReadFile("/var/SpecificSDRRec"), testing::IsEmpty());
}

TEST_F(SimulatedDeath, BeforeAChangeCountsOnlyCallsThatCanChangeSomething) {
    EXPECT_EXIT((sim::DieAtChange(2), WriteStore()), KilledBySignal(SIGKILL), "");
    EXPECT_THAT(sim::ReadFile(kSdrFile), testing::IsEmpty()); // emptied, not yet written
    WriteStore();
    WriteRecordFile();
    EXPECT_EQ(sim::ChangesMade(), 3U); // ftruncate, sigwrap_write, IniSaveFile
    EXPECT_EQ(sim::WritesMade(), 2U);
}

TEST_F(SimulatedDeath, WhatComesLastMayAskThePlatform) {
    const auto last = [] { // the file as it is then, for the parent to see
        sim::WriteFile("/var/last", sim::ReadFile(kSdrFile));
        sim::WriteFile("/var/calls", {static_cast<uint8_t>(sim::CountCalls("sigwrap_write"))});
    };
    EXPECT_EXIT((sim::BeforeDying(last), sim::DieInWrite(1, 0.5), WriteStore()), KilledBySignal(SIGKILL), "");
    EXPECT_EQ(sim::ReadFile("/var/last"), std::vector<uint8_t>(64, 0x22));
    EXPECT_EQ(sim::ReadFile("/var/calls"), std::vector<uint8_t>(1, 1));
}

TEST_F(SimulatedDeath, StartCallsItOff) {
    sim::DieAtCall(1);
    sim::DieAtChange(1);
    sim::DieInWrite(1, 0);
    sim::Start(sim::Board{});
    WriteStore();
    EXPECT_EQ(sim::ReadFile(kSdrFile), new_slots_);
}

TEST(SimulatedTrace, ALimitKeepsTheLatestEvents) {
    sim::Start(sim::Board{});
    sim::SetTraceLimit(10);
    for (uint32_t slot = 0; slot < 100; ++slot) {
        HalDimmDevInfo info;
        HAL_GetDimmDevInfoByDimmNum(static_cast<uint8_t>(slot), &info);
    }
    sim::SetTraceLimit(0);
    ASSERT_THAT(sim::Trace().size(), testing::AllOf(testing::Ge(10U), testing::Le(20U)));
    EXPECT_THAT(sim::Trace().back().args, testing::HasSubstr("=99"));
    EXPECT_EQ(sim::CountCalls("HAL_GetDimmDevInfoByDimmNum"), 100U);
}

TEST(SimulatedRepository, AnIdThatNamesNoRecordOrIsInUseIsNotGiven) {
    sim::Start(sim::Board{});
    sim::NextRecordId() = 0xFFFE;
    const uint8_t record[16] = {};
    for (int i = 0; i < 3; ++i) {
        if (i == 2)
            sim::NextRecordId() = 0xFFFE;
        IpmiLocalSession session = {};
        uint8_t privilege = 4, response[3];
        LIBIPMI_Create_IPMI_Local_Session(&session, "", "", &privilege, 0, 2, 10);
        IPMICMD_AddSDR(&session, record, sizeof record, response, 20);
        LIBIPMI_CloseSession(&session);
    }
    EXPECT_EQ(sim::Repository().at(0).id, 0xFFFE);
    EXPECT_EQ(sim::Repository().at(1).id, 1);
    EXPECT_EQ(sim::Repository().at(2).id, 2);
}

} // namespace
