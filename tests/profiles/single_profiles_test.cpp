// SPDX-License-Identifier: GPL-3.0-or-later
//
// What single profiles have of their own.
//
// Not shown: a rack table or a liquid-cooling table of length 0.  Lengths and tables are read-only data of
// the library; no board reaches a pass over an empty one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/profiles/ferrisk.h"
#include "oxa/profiles/kestrin.h"
#include "oxa/profiles/pellago.h"
#include "oxa/profiles/quorral.h"
#include "oxa/profiles/vorana.h"
#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PellagoDriver, ACpuBelowTheSilkStartHasNoPowerRecord) {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 4;
    sim::Start(board);
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Pellago_GenCPUSinglePowerSDR(slot.data(), &entry, 3), 0);
    EXPECT_EQ(slot, Bytes(64, kUntouched));
    EXPECT_NE(Pellago_GenCPUSinglePowerSDR(slot.data(), &entry, 5), 0);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 35 20 00 00 03 E0 7F 68 08 01 00x6 00 06 00 00 03 00x9 FF 00 00x6 03 03 00 00 00 CA 'CPU5_Power' FFx6"),
            Literal("D9 03 00 01 00x16 FF 03 E0 7F 08 01 03 00x5")},
        record));
}

TEST(PellagoDriver, AFailedSilkReadCountsAsZeroAndWarns) {
    sim::Board board = BaseBoard();
    board.cpus.silk_start = 4;
    sim::Start(board);
    sim::AddFault({.call = "HAL_GetCpuSilkScreenIndexFixValue", .result = 0x10});
    Bytes slot(64);
    DevTabEntry entry = {};
    EXPECT_NE(Pellago_GenCPUSinglePowerSDR(slot.data(), &entry, 3), 0);
    EXPECT_EQ(reinterpret_cast<const uint8_t *>(&entry)[3], 3);
    EXPECT_EQ(CountLine({'W', 255, "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [10]"}), 1u);
}

// Initialised like the sensors of the system board, unlike the cards that come at run time.
TEST(KestrinDriver, TheMotherBoardIsInitialisedLikeTheOtherSensorsOfItsBoard) {
    sim::Start(BaseBoard());
    Record record{Bytes(64, kUntouched), Bytes(32)};
    DevTabEntry entry = {};
    EXPECT_EQ(Kestrin_GenMotherBoardSDR(record.sdr.data(), &entry), 39 + 5);
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 02 27 20 00 00 07 60 67 40 15 07 06 00 06 00 FF 7F 00 00 00 00 01 00 00 00 00 00 00 CC 'Mother_Board' FFx4 00x16"),
            Literal("55 40 00x18 FF 07 60 67 15 07 00x6")},
        record));
}

TEST(FerriskDriver, CardsThatAreNotPluggedHaveNoRecords) {
    sim::Board board = SmallBoard();
    board.ocp = {.count = 4, .present = 0b1010};
    std::vector<std::string> cards;
    for (const std::string &name : RunPass(OXA_AddFerriskStaticSensor, board).Names())
        if (name.starts_with("NIC"))
            cards.push_back(name);
    EXPECT_THAT(cards, ElementsAre("NIC2_Temp", "NIC2_Err", "NIC4_Temp", "NIC4_Err"));
}

TEST(FerriskDriver, BackplaneRailByHand) {
    sim::Start(BaseBoard());
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Ferrisk_GenFrontBp12VSDR(slot.data(), &entry), 60);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 37 20 00 00 0B E0 7F 68 02 01 85 32 85 32 1B 1B 00 04 00 00 64 00 00 00 00 D0 00x4 FF 00 00 90 84 00 60 6C 03 03 00 00 00 CC 'Front_BP_12V' FFx4"),
            Literal("9A 01 00x18 FF 0B E0 7F 02 01 64 00x5")},
        record));
    EXPECT_NE(Ferrisk_GenRearBPTempSDR(slot.data(), &entry), 0);
    EXPECT_TRUE(SameSdr(
        Literal(
            "00 00 51 01 38 20 00 00 0B E0 7F 68 01 01 80 02 80 32 18 18 80 01 00 00 01 00x9 7F 80 00 3C 3A 00 00 00 02 02 00 00 00 CD 'BP_R_Temp_Max' FFx3"),
        slot));
}

TEST(QuorralDriver, TheMemoryHotRecordByHand) {
    sim::Start(BaseBoard());
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Quorral_GenCpuxMEMG0HotSDR(slot.data(), &entry, 1), 62);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 39 20 00 00 08 E0 7F 68 0C 6F 00 04 00 04 00 04 C0 00x26 CE 'Cpu1_MEMG0_Hot' FF FF"),
            Literal("4D 03 00 01 00x16 FF 08 E0 7F 0C 6F 00 00x5")},
        record));
}

// ---- Vorana and Lumora ------------------------------------------------------------------------------------

TEST(VoranaDriver, ACurrentByHand) {
    sim::Start(BaseBoard());
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Vorana_GenCPUVSOCCurrentSDR(slot.data(), &entry, 1), 59);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 36 20 00 00 03 E0 7F 68 03 01 00x6 00 05 00 00 02 00x9 FF 00 00x6 03 03 00 00 00 CB 'CPU1_VSOC_A' FFx5"),
            Literal("5C 03 00 01 00x16 FF 03 E0 7F 03 01 02 00x5")},
        record));
}

TEST(LumoraDriver, ItsPowerRecordsAreOfTypeOtherUnits) {
    size_t watts = 0;
    for (const Record &record : RunPass(OXA_AddLumoraStaticSensor, SmallBoard()).records)
        if (record.sdr[3] == 1 && record.sdr[21] == 6) {
            ++watts;
            EXPECT_EQ(record.sdr[12], 0x0B) << record.Name();
        }
    EXPECT_EQ(watts, 7u); // total, processors, memory, fans, disks, and the input and output of the PSU
}

TEST(LumoraDriver, TotalPowerAndLanSwitchByHand) {
    const Outcome outcome = RunPass(OXA_AddLumoraStaticSensor, SmallBoard());
    ASSERT_NE(outcome.Find("Total_Power"), nullptr);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 36 20 00 00 07 E0 7F 68 0B 01 00x6 00 06 00 00 11 00x9 FF 00 00x6 03 03 00 00 00 CB 'Total_Power' FFx5"),
            Literal("9E 00 00 00 00 80 00x14 FF 07 E0 7F 0B 01 11 00x5")},
        *outcome.Find("Total_Power")));
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 36 20 00 00 10 E0 7F 68 01 01 00x6 80 01 00 00 01 00x9 7F 80 00x6 03 03 00 00 00 CB 'LAN_SW_Temp' FFx5"),
            Literal("5B 00x19 FF 10 E0 7F 01 01 01 00x5")},
        outcome.records.back()));
}

// ---- Kestrin ----------------------------------------------------------------------------------------------

TEST(KestrinDriver, TheBoardIdComesBeforeEverythingElse) {
    RunPass(OXA_AddKestrinStaticSensor, BaseBoard());
    ASSERT_FALSE(sim::Trace().empty());
    EXPECT_EQ(sim::Trace()[0].function, "get_default_board_id");
}

sim::Board RackBoard() {
    sim::Board board = SmallBoard();
    board.board_id = 0x5605;
    board.cdu_enable = 1;
    board.inlet_client = {4, 0x4C};
    return board;
}

TEST(KestrinRackBoard, HasTwoRecordsByHandAndAsksForNothingElse) {
    const Outcome outcome = RunPass(OXA_AddKestrinStaticSensor, RackBoard());
    EXPECT_EQ(outcome.count, 2);
    ASSERT_EQ(outcome.records.size(), 2u);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 31 20 00 00 37 E0 7F 68 01 01 80 0A 80 7A 38 38 80 01 00 00 01 00x9 7F 80 34 32 2D 00 00 00 03 03 00 00 00 C6 'EnTemp' FFx10"),
            Literal("00 00 00 00 00 80 04 4C 00x12 FF 37 E0 7F 01 01 01 00x5")},
        outcome.records[0]));
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 34 20 00 00 07 E0 7F 68 0B 01 00x6 00 09 00 00 EC 00 76 00x7 FF 00 00x6 00 00 00 00 00 C9 'RackPower' FFx7"),
            Literal("3B 00 00 FF 00 80 00x14 FF 07 E0 7F 0B 01 EC 00x5")},
        outcome.records[1]));
    EXPECT_THAT(Lines(), ElementsAre(Line{'I', 42,
                                          "OXA_AddKestrinRMCStaticSensor: ucIndex = 0, ucCnt = 0, "
                                          "ucKestrinRMCStaticSDRCnt = 2!"},
                                     Line{'I', 42,
                                          "OXA_AddKestrinRMCStaticSensor: ucIndex = 1, ucCnt = 1, "
                                          "ucKestrinRMCStaticSDRCnt = 2!"}))
        << "no other line but the store's";
    for (const char *call : {"HAL_GetPsuMaxCount", "HAL_GetCpuMaxCount", "IPMI_GetCduManageConfig",
                             "HalFanInst", "GetOcpNetCardMaxCount"})
        EXPECT_EQ(sim::CountCalls(call), 0u) << call;
    EXPECT_EQ(sim::CountCalls("get_default_board_id"), 1u);
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST(KestrinRackBoard, AFailedInletClientLeavesTheRackPower) {
    sim::Start(RackBoard());
    sim::AddFault({.call = "HAL_InputTemp_GetI2cClient"});
    const Outcome outcome = RunPass(OXA_AddKestrinStaticSensor);
    EXPECT_EQ(outcome.count, 1);
    EXPECT_THAT(outcome.Names(), ElementsAre("RackPower"));
    EXPECT_EQ(CountLine({'W', 255, "Kestrin_GenENTEMPSDR InputTemp_GetI2cClient failed!"}), 1u);
}

TEST(KestrinRackBoard, AnUnknownBoardIdEndsThePassWithoutACount) {
    sim::Start(RackBoard());
    sim::AddFault({.call = "get_default_board_id"});
    const Outcome outcome = RunPass(OXA_AddKestrinStaticSensor);
    EXPECT_FALSE(outcome.written);
    EXPECT_THAT(outcome.records, IsEmpty());
    EXPECT_THAT(Lines(), ElementsAre(Line{'E', 42, "get Board Id failed\n"}));
}

TEST(KestrinRackBoard, StoredRecordsAreLeftOut) {
    const Outcome clean = RunPass(OXA_AddKestrinStaticSensor, RackBoard());
    sim::Start(RackBoard());
    Store(clean.records);
    const Outcome outcome = RunPass(OXA_AddKestrinStaticSensor);
    EXPECT_TRUE(outcome.written);
    EXPECT_EQ(outcome.count, 0);
}

// The switch total power by board, cards and validity.
bool HasSwitchPower(uint16_t board_id, uint8_t card, bool online, uint16_t card_id, uint8_t valid = 0) {
    sim::Board board;
    board.board_id = board_id;
    board.switch_board.cards[card] = {online, card_id};
    board.switch_board.sensors_valid = valid;
    return RunPass(OXA_AddKestrinStaticSensor, board).CountName("SW_Total_Power") == 1;
}

TEST(KestrinSwitchPower, IsDecidedByBoardAndCard) {
    EXPECT_TRUE(HasSwitchPower(0x5600, 1, true, 0x560A));
    EXPECT_FALSE(HasSwitchPower(0x5600, 1, false, 0x560A));
    EXPECT_FALSE(HasSwitchPower(0x5600, 1, true, 0x5510));
    EXPECT_FALSE(HasSwitchPower(0x5600, 2, true, 0x560A));
    EXPECT_TRUE(HasSwitchPower(0x5502, 1, false, 0, 1));
    EXPECT_TRUE(HasSwitchPower(0x5502, 1, false, 0, 7));
    EXPECT_FALSE(HasSwitchPower(0x5502, 2, true, 0x5510, 0));
    for (const uint16_t id : {0x55DE, 0x550F}) {
        EXPECT_TRUE(HasSwitchPower(id, 2, true, 0x5510));
        EXPECT_FALSE(HasSwitchPower(id, 2, false, 0x5510));
        EXPECT_FALSE(HasSwitchPower(id, 2, true, 0x5517));
        EXPECT_FALSE(HasSwitchPower(id, 1, true, 0x5510, 1));
    }
    EXPECT_FALSE(HasSwitchPower(0x55D8, 2, true, 0x5510, 1));
    EXPECT_FALSE(HasSwitchPower(0x1234, 2, true, 0x5510, 1));
    EXPECT_EQ(CountLine({'I', 42, "The board does not support adding sensor SW_Total_Power."}), 1u);
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddKestrinSensor for SW_Total_Power: sdwRet = 0 wBoardId = 0x1234!"}),
              1u);
}

TEST(KestrinSwitchPower, AFailedValidityQueryRefuses) {
    sim::Board board;
    board.board_id = 0x5502;
    board.switch_board.sensors_valid = 1;
    sim::Start(board);
    sim::AddFault({.call = "MW_GetSWSensorVail", .output = 1});
    EXPECT_EQ(RunPass(OXA_AddKestrinStaticSensor).CountName("SW_Total_Power"), 0u);
    EXPECT_EQ(CountLine({'I', 42, "The board does not support adding sensor SW_Total_Power."}), 1u);
}

std::string ModuleCall() { // the arguments of the one report
    std::string args = "none";
    for (const sim::Event &event : sim::Trace())
        if (event.kind == sim::Kind::kCall && event.function == "MW_SetPWRModuleOnlineNum")
            args = args == "none" ? event.args : "more than one";
    return args;
}

TEST(KestrinPowerModules, TheNumberOfRecordsAddedIsReportedOnce) {
    const Outcome clean = RunPass(OXA_AddKestrinStaticSensor, SmallBoard());
    EXPECT_EQ(ModuleCall(), "num=4");
    ASSERT_NE(clean.Find("PWR_Mod3_Temp"), nullptr);
    sim::Start(SmallBoard());
    Store({*clean.Find("PWR_Mod3_Temp")});
    RunPass(OXA_AddKestrinStaticSensor);
    EXPECT_EQ(ModuleCall(), "num=3");
    sim::Board board = SmallBoard();
    board.support.sensors[126] = 0;
    const Outcome none = RunPass(OXA_AddKestrinStaticSensor, board);
    EXPECT_EQ(ModuleCall(), "num=0");
    EXPECT_EQ(none.CountName("PWR_Mod1_Temp"), 0u);
}

TEST(KestrinPowerModules, AFailedReportChangesNothing) {
    const Outcome clean = RunPass(OXA_AddKestrinStaticSensor, SmallBoard());
    sim::Start(SmallBoard());
    std::filesystem::remove(sim::RealPath(kStorePath));
    sim::AddFault({.call = "MW_SetPWRModuleOnlineNum"});
    EXPECT_TRUE(SameRecords(clean.records, RunPass(OXA_AddKestrinStaticSensor).records));
}

TEST(KestrinDisks, TheSilkNumberIsPrintedWhereItDiffersAndTheInstanceStaysTheSlot) {
    sim::Board board = BaseBoard();
    board.disks.backplanes = {{1, 3, "Front"}};
    board.disks.nvme_slots = {1, 2, 3};
    board.disks.silk = {{1, 21}, {3, 23}};
    board.disks.conversion = {{2, 12}, {3, 13}};
    sim::Start(board);
    Outcome outcome = RunPass(OXA_AddKestrinStaticSensor);
    for (const auto &[name, slot] : {std::pair("HDD21_Status", 1),
                                     {"NVME21_Temp", 1},
                                     {"HDD2_Status", 2},
                                     {"NVME12_Temp", 2},
                                     {"HDD23_Status", 3},
                                     {"NVME23_Temp", 3}}) {
        SCOPED_TRACE(name);
        const Record *record = outcome.Find(name);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->sdr[9], slot);
        EXPECT_EQ(record->entry[3], slot);
    }
    sim::Start(board);
    sim::AddFault({.call = "Hal_GetHddSilkByHddSlot"});
    outcome = RunPass(OXA_AddKestrinStaticSensor);
    EXPECT_EQ(outcome.CountName("HDD1_Status"), 1u); // the slot
    EXPECT_EQ(outcome.CountName("HDD3_Status"), 1u);
}

TEST(KestrinDisks, ANumberThatDiffersFromTheSlotIsNotConvertedAgain) {
    sim::Board board = BaseBoard();
    board.disks.backplanes = {{1, 1, "Front"}};
    board.disks.nvme_slots = {1};
    board.disks.silk = {{1, 21}};
    board.disks.conversion = {{1, 31}, {21, 41}};
    const Outcome outcome = RunPass(OXA_AddKestrinStaticSensor, board);
    EXPECT_EQ(outcome.CountName("HDD21_Status"), 1u);
    EXPECT_EQ(outcome.CountName("NVME21_Temp"), 1u);
    EXPECT_EQ(sim::CountCalls("oxa_CustomSlotConversion"), 0u);
}

TEST(KestrinFans, PresentIsShortenedWhenItDoesNotFit) {
    sim::Board board = BaseBoard();
    board.fans = {.count = 3, .silk = {9, 15, 16}};
    std::vector<std::string> fans;
    for (const std::string &name : RunPass(OXA_AddKestrinStaticSensor, board).Names())
        if (name.starts_with("SYS_Fan"))
            fans.push_back(name);
    EXPECT_THAT(fans, ElementsAre("SYS_Fan9_Present", "SYS_FanF_Present", "SYS_Fan10_PRES"));
}

TEST(KestrinRails, TheGpuIndexStandsInNameAndEntryAndTheInstanceIsFixed) {
    sim::Start(BaseBoard());
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Kestrin_GenGPU54VoltSDR(slot.data(), &entry, 2), 62);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 39 20 00 00 E0 60 7F 68 02 01 85 32 85 32 1B 1B 00 04 00 00 1E 00 00 00 00 E0 00x4 FF 00 00 EB E9 00 66 6B 03 03 00 00 00 CE 'GPU2_PWR_Volts' FF FF"),
            Literal("95 02 00 02 00x16 28 E0 60 7F 02 01 1E 00x5")},
        record));
}

TEST(KestrinGates, TheGpuBoardPowerByHandAndAFlagThatAFailedCallLeft) {
    sim::Start(BaseBoard());
    sim::AddFault({.call = "HAL_GetSensorNotSupportFlagBySensor", .result = 0x77, .output = 1});
    Bytes slot(64, kUntouched);
    DevTabEntry entry = {};
    EXPECT_EQ(Kestrin_GenGPUBoardPowerSDR(slot.data(), &entry), 63);
    Record record{slot, Bytes(32)};
    std::memcpy(record.entry.data(), &entry, 32);
    EXPECT_TRUE(SameRecord(
        Record{
            Literal(
                "00 00 51 01 3A 20 00 00 E0 E0 7F 68 08 01 00x6 00 06 00 00 08 00x9 FF 00 00x6 03 03 00 00 00 CF 'GPU_Board_Power' FF"),
            Literal("93 03 00x18 FF E0 E0 7F 08 01 08 00x5")},
        record));
    EXPECT_EQ(
        CountLine(
            {'W', 255, "HAL_GetSensorNotSupportFlagBySensor(SENSOR_GPU_BOARD_POWER, &ucSupportFlag) = [77]"}),
        1u);
}

} // namespace
