// SPDX-License-Identifier: GPL-3.0-or-later
//
// The numbers in log lines: they are those of the sources, and an error and its statistic say the same one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "oxa/exports.h"
#include "support/build_facts.h"
#include "support/log_places.h"
#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::IsEmpty;

// ---- the check itself -----------------------------------------------------------------------------------------------

// A line that the library writes, to be spoilt.
sim::Event ALine() {
    sim::Start(BaseBoard());
    getSensorInfo(nullptr, 1, 1);
    return sim::Logs().at(0);
}

TEST(LogPlaces, AnotherNumberUnitOrTextIsWrong) {
    EXPECT_EQ(WrongPlace(ALine()), "");
    sim::Event other = ALine();
    other.line += 3; // the call before it or behind it has another text
    EXPECT_NE(WrongPlace(other), "");
    other = ALine();
    other.line = 0;
    EXPECT_NE(WrongPlace(other), "");
    other = ALine();
    other.file = "specific_sdr_file.c";
    EXPECT_NE(WrongPlace(other), "");
    other = ALine();
    other.text += "!";
    EXPECT_NE(WrongPlace(other), "");
}

TEST(LogPlaces, AreFoundInAllRoomsThatWriteLines) {
    std::map<std::string, size_t> rooms;
    size_t without_text = 0;
    for (const LogPlace &place : LogPlaces()) {
        ++rooms[place.source.substr(0, place.source.rfind('/'))];
        without_text += place.texts.empty() ? 1 : 0;
    }
    for (const char *room :
         {"library/events", "library/profiles", "library/specific_sensors", "library/static_sensors",
          "library/store", "library/thresholds", "library/record"})
        EXPECT_GT(rooms[room], 0u) << room;
    RecordProperty("places", static_cast<int>(LogPlaces().size()));
    RecordProperty("places_without_text", static_cast<int>(without_text));
}

// ---- passes ---------------------------------------------------------------------------------------------------------

sim::Board Full(uint16_t id, uint16_t card, uint8_t cpu_type, bool simplified) {
    sim::Board board = BaseBoard();
    board.board_id = id;
    board.liquid_cooling_mode = 1;
    board.cdu_enable = 1;
    board.cpus = {.count = 2, .silk_start = 1, .type = cpu_type, .reduce_flag = 1};
    board.psus = {.count = 2, .group_count = 2, .count_per_group = 1};
    board.dimms = {.count = 2, .names = {"A0", "B0"}};
    board.pcie.slots = {{.slot = 2}, {.slot = 4, .present = false}, {.slot = 160}};
    board.fans = {.count = 2, .silk = {1, 160}};
    board.disks.backplanes = {{0, 2, "Front"}, {8, 1, "Rear"}};
    board.disks.nvme_slots = {1, 8};
    board.ocp = {.count = 2, .present = 3};
    board.switch_board.supported = true;
    board.switch_board.chip_temp_count = 2;
    board.switch_board.sensors_valid = 1;
    board.switch_board.cards[2] = {true, card};
    board.sensor_simplification = simplified;
    return board;
}

// Boards that refuse, and boards whose counts end the pass.
std::vector<sim::Board> Boards() {
    std::vector<sim::Board> boards = {Full(0x550F, 0x5510, 3, false), Full(0x5502, 0x5504, 1, true),
                                      Full(0x550F, 0x5517, 1, false)};
    sim::Board refusing = Full(0x5497, 0, 2, false);
    refusing.support.all = false;
    refusing.support.kinds[3] = refusing.support.kinds[4] = 0;
    refusing.liquid_cooling_mode = 2;
    refusing.cpus.online = {true, false};
    boards.push_back(refusing);
    refusing.board_id = 0x1234;
    boards.push_back(refusing);
    for (const auto &spoil : std::vector<std::function<void(sim::Board &)>>{
             [](sim::Board &board) { board.cpus.silk_start = 254; },
             [](sim::Board &board) { board.psus.count = 255; },
             [](sim::Board &board) { board.dimms.count = 255; },
             [](sim::Board &board) { board.pcie.count = 255; },
             [](sim::Board &board) { board.fans.count = 255; },
             [](sim::Board &board) { board.ocp.count = 255; },
             [](sim::Board &board) {
                 board.disks.backplanes = {{250, 6, "Rear"}};
             },
             [](sim::Board &board) { board.board_id = 0x5605; },
             [](sim::Board &board) { board.fans.service = false; },
             [](sim::Board &board) { board.psus.alarm_config = false; }}) {
        sim::Board board = Full(0x1234, 0, 1, false);
        spoil(board);
        boards.push_back(board);
    }
    return boards;
}

class LogPlacesOfProfile : public testing::TestWithParam<Profile> {};
INSTANTIATE_TEST_SUITE_P(Profiles, LogPlacesOfProfile, testing::ValuesIn(Profiles()), ProfileName);

TEST_P(LogPlacesOfProfile, EveryLineOfAPassNamesItsCall) {
    for (const sim::Board &board : Boards()) {
        const Outcome clean = RunPass(GetParam().driver, board);
        ASSERT_THAT(WrongPlaces(), IsEmpty());
        sim::Start(board);
        Store(clean.records);
        RunPass(GetParam().driver);
        ASSERT_THAT(WrongPlaces(), IsEmpty());
    }
}

TEST_P(LogPlacesOfProfile, EveryLineNamesItsCallWhicheverCallFails) {
    for (const sim::Board &board : {Full(0x550F, 0x5510, 3, false), Full(0x5502, 0x5504, 1, true)}) {
        RunPass(GetParam().driver, board);
        const uint64_t calls = sim::FailableCalls();
        for (uint64_t k = 1; k <= calls; k += LongSweepStep()) {
            sim::Start(board);
            std::filesystem::remove(sim::RealPath(kStorePath));
            sim::FailCall(k);
            RunPass(GetParam().driver);
            ASSERT_THAT(WrongPlaces(), IsEmpty()) << "call " << k;
        }
    }
}

// ---- sensors that come at run time, and what else is called ---------------------------------------------------------

SpecificSensorParam Description(uint32_t sensor_class, uint8_t device, uint8_t sub, uint8_t slot) {
    SpecificSensorParam param = {};
    param.dwSensorDevType = sensor_class;
    param.ucDeviceType = device;
    param.SubDeviceType = sub;
    param.SlotId = slot;
    param.wBitmap = 0x3F;
    return param;
}

void Everything(uint32_t sensor_class) {
    for (const uint8_t device : {0, 2, 5, 6, 20, 34, 36, 56, 59, 255})
        for (const uint8_t slot : {3, 15, 200})
            for (const uint8_t sub : {0, 1, 2}) {
                SpecificSensorParam param = Description(sensor_class, device, sub, slot);
                SDR_AddSpecificSensor(&param);
                SDR_DeleteSpecificSDR(&param);
            }
}

TEST(LogPlacesOfSensors, EveryLineOfAnOfferNamesItsCall) {
    for (const uint32_t profile : {0u, 7u, 16u, 20u}) {
        sim::Board board = Full(0x54E0, 0, 1, false);
        board.custom_id = profile;
        sim::Start(board);
        for (uint32_t row = 0; row < g_dwAddSDRHndlrCnt; ++row)
            Everything(g_atAddSDRHndlrTab[row].dwSensorDevType);
        Everything(0x0104);
        ASSERT_THAT(WrongPlaces(), IsEmpty());
    }
}

TEST(LogPlacesOfSensors, EveryLineNamesItsCallWhicheverCallFails) {
    for (uint32_t row = 0; row < g_dwAddSDRHndlrCnt; ++row) {
        SpecificSensorParam first = Description(g_atAddSDRHndlrTab[row].dwSensorDevType, 2, 0, 3);
        sim::Board board = Full(0x1234, 0, 1, false);
        for (uint64_t k = 1, calls = 1; k <= calls; ++k) {
            sim::Start(board);
            sim::FailCall(k, k % 2 == 0);
            SpecificSensorParam param = first;
            SDR_AddSpecificSensor(&param);
            SDR_DeleteSpecificSDR(&param);
            calls = std::max(calls, sim::FailableCalls());
            ASSERT_THAT(WrongPlaces(), IsEmpty()) << "row " << row << " call " << k;
        }
    }
}

// Whatever is asked about nothing is an error, and an error is counted.
TEST(LogPlacesOfSensors, ComplaintsAboutNullNameTheirCall) {
    sim::Start(BaseBoard());
    uint8_t byte = 0;
    DevTabEntry entry = {};
    GenDevTable(nullptr, &entry);
    SDR_AddSpecificSensor(nullptr);
    SDR_DeleteSpecificSDR(nullptr);
    SendSubCardStatusToFRU(nullptr);
    getSensorInfo(nullptr, 1, 1);
    getCustomSensorInfo(nullptr, 0);
    getNameInfo(nullptr, 0, nullptr);
    getPurchaseCardInfo(nullptr, nullptr, 0);
    strrpc(nullptr, "a", "b", "c");
    modifyEntityInstance(nullptr, 0, 0);
    GetGpuPowerAccuracy(0, 0, 0, nullptr, &byte);
    for (uint32_t row = 0; row < g_dwAddSDRHndlrCnt; ++row)
        g_atAddSDRHndlrTab[row].pfnGen(nullptr, nullptr, 0);
    EXPECT_GE(sim::Logs().size(), 20u);
    EXPECT_THAT(WrongPlaces(), IsEmpty());
}

} // namespace
