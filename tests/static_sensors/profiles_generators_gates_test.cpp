// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the profiles' generators ask the platform before they build, and what becomes of each answer.
#include <gtest/gtest.h>

#include <map>

#include "static_sensors/profiles_generators.h"

namespace {

using namespace profile_sets;

// ---- support flags ----------------------------------------------------------------------------------------

bool AsksForFlag(const Generator &generator) {
    return generator.ask == Ask::kFlag || generator.ask == Ask::kPch;
}

std::string FlagName(uint32_t number) {
    static const std::map<uint32_t, std::string> kNames = {
        {19, "BP_FRONT_12V"},
        {20, "BP_REAR_12V"},
        {21, "BP_FRONT_TEMP"},
        {22, "BP_REAR_TEMP"},
        {25, "SYS_54_VOLT"},
        {26, "GPU_54_VOLT"},
        {27, "PDB_BOARD_POWER"},
        {28, "NIC_POWER"},
        {29, "GPU_BOARD_POWER"},
        {102, "CPU_VOLTS"},
        {103, "INPUT_TEMP"},
        {104, "OUTPUT_TEMP"},
        {105, "ENV_HUMI"},
        {106, "PDB_TEMP"},
        {107, "VCC12V"},
        {108, "POWER_FAULT"},
        {109, "CPU_VCORE_CURRENT"},
        {110, "CPU_VCORE1_CURRENT1"},
        {111, "CPU_VSOC_CURRENT"},
        {112, "CPU_DDR_VDD1_CURRENT"},
        {121, "PCH_TEMP"},
        {122, "POWER_BUTTON"},
        {123, "UID_BUTTON"},
        {124, "INTRUSION"},
        {125, "ME"},
        {126, "PWR_MODULE_TEMP"},
        {127, "UBB_RT_TEMP"},
    };
    return "SENSOR_" + kNames.at(number);
}

Line Refusal(const Generator &generator, char level = 'I') {
    return {level, 42, "The board does not support adding sensor " + generator.refused + "."};
}

TEST(ProfileGates, AFlagOfZeroRefusesTheSensorAndSaysSo) {
    size_t seen = 0;
    for (const Generator &generator : Generators()) {
        if (!AsksForFlag(generator))
            continue;
        SCOPED_TRACE(generator.name);
        ++seen;
        sim::Board board = GeneratorBoard();
        board.support.sensors[generator.number] = 0;
        sim::Start(board);
        const Built built = Build(generator);
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(Lines(), std::vector<Line>{Refusal(generator)});
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 1u);
    }
    EXPECT_GT(seen, 80u);
}

TEST(ProfileGates, AFailedQueryOnlyWarnsAndTheFlagDecides) {
    for (const Generator &generator : Generators()) {
        if (!AsksForFlag(generator))
            continue;
        for (const uint64_t flag : {0, 1}) {
            SCOPED_TRACE(generator.name + " flag " + std::to_string(flag));
            sim::Start(GeneratorBoard());
            sim::AddFault({.call = "HAL_GetSensorNotSupportFlagBySensor", .result = 0x5A, .output = flag});
            const Built built = Build(generator);
            EXPECT_EQ(built.result != 0, flag != 0);
            EXPECT_EQ(CountLine({'W', 255,
                                 "HAL_GetSensorNotSupportFlagBySensor(" + FlagName(generator.number) +
                                     ", &ucSupportFlag) = [5A]"}),
                      1u);
            EXPECT_EQ(CountLine(Refusal(generator)), flag == 0 ? 1u : 0u);
        }
    }
}

TEST(ProfileGates, AnyFlagButZeroMeansThatTheBoardHasTheSensorAndOthersAskForNone) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.support.all = false;
        if (AsksForFlag(generator))
            board.support.sensors[generator.number] = 0x80;
        sim::Start(board);
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), AsksForFlag(generator) ? 1u : 0u);
    }
}

TEST(ProfileGates, PsuVoltagesAreRefusedBySuccessWithZeroOnly) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.support.kinds[generator.number] = 0;
        sim::Start(board);
        const Built built = Build(generator);
        if (generator.ask != Ask::kKind) {
            EXPECT_EQ(sim::CountCalls("HAL_GetSensorSupportFlagBySensor"), 0u);
            continue;
        }
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(Lines(), std::vector<Line>{Refusal(generator, 'W')});
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetSensorSupportFlagBySensor", .output = 0});
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_TRUE(Lines().empty());
    }
}

// ---- processor type, board and cooling mode ---------------------------------------------------------------

TEST(ProfileGates, TjmaxTcontrolAndPchNeedTheIntelProcessor) {
    for (const Generator &generator : Generators()) {
        if (generator.ask != Ask::kIntel && generator.ask != Ask::kPch)
            continue;
        const Line refusal =
            generator.ask == Ask::kPch
                ? Line{'I', 42, "The board has no pch"}
                : Line{'I', 42,
                       "OXA_AddKestrinStaticSensor: CpuType != CPU_TYPE_INTEL, no " + generator.refused};
        for (const uint8_t type : {0, 2, 3}) {
            SCOPED_TRACE(generator.name + " type " + std::to_string(type));
            sim::Board board = GeneratorBoard();
            board.cpus.type = type;
            sim::Start(board);
            const Built built = Build(generator);
            EXPECT_EQ(built.result, 0);
            EXPECT_TRUE(built.Untouched());
            EXPECT_EQ(Lines(), std::vector<Line>{refusal});
        }
        SCOPED_TRACE(generator.name + " unknown type");
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetCpuType", .result = 3, .output = 1});
        EXPECT_EQ(Build(generator).result, 0);
        EXPECT_EQ(Lines(), (std::vector<Line>{{'W', 255, "HAL_GetCpuType(&ucCpuType) = [3]"}, refusal}));
    }
}

TEST(ProfileGates, FansAreLeftOutInModeTwoAndLeakageNeedsModeOne) {
    for (const Generator &generator : Generators()) {
        const bool leakage = generator.ask == Ask::kLeakage;
        if (!leakage && generator.ask != Ask::kFans && generator.ask != Ask::kFansAndAccuracy)
            continue;
        for (const uint8_t mode : {0, 1, 2, 3}) {
            SCOPED_TRACE(generator.name + " mode " + std::to_string(mode));
            const bool refused = leakage ? mode != 1 : mode == 2;
            sim::Board board = GeneratorBoard();
            board.liquid_cooling_mode = mode;
            sim::Start(board);
            EXPECT_EQ(Build(generator).result == 0, refused);
            EXPECT_EQ(CountLine({'E', 255,
                                 leakage ? "assertion failed: GetLiquidCoolingFlag() == (1)"
                                         : "assertion failed: GetLiquidCoolingFlag() != (2)"}),
                      refused ? 1u : 0u);
            EXPECT_TRUE(sim::Violations().empty());
        }
    }
}

TEST(ProfileGates, BoardPowerTellsBothIdsAndIsRefusedOnTheSmallBoard) {
    size_t seen = 0;
    for (const Generator &generator : Generators()) {
        if (generator.ask != Ask::kNotSmallBoard)
            continue;
        ++seen;
        SCOPED_TRACE(generator.name);
        const std::string driver = "OXA_Add" + generator.name.substr(0, generator.name.find('_')) + "Sensor";
        sim::Board board = GeneratorBoard();
        board.inner_product_id = 0x2A;
        sim::Start(board);
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(CountLine({'I', 42, driver + " for POWER_WATTS: sdwRet = 0 wBoardId = 5502!"}), 1u);
        EXPECT_EQ(CountLine({'I', 42, driver + " for POWER_WATTS: sdwRet = 0 productId = 2a!"}), 1u);
        board.board_id = 0x5497;
        sim::Start(board);
        EXPECT_EQ(Build(generator).result, 0);
        EXPECT_EQ(Lines().back(), Refusal(generator));
    }
    EXPECT_EQ(seen, 7u); // Lumora has a total power without a gate in its place
}

TEST(ProfileGates, LumorasTotalPowerReadsTheProductIdAndTellsIt) {
    sim::Board board = GeneratorBoard();
    board.inner_product_id = 0x2A;
    board.board_id = 0x5497; // no gate
    sim::Start(board);
    EXPECT_NE(Build("Lumora_GenTotalPowerSDR").result, 0);
    EXPECT_EQ(CountLine({'I', 42, "Lumora_GenTotalPowerSDR for POWER_WATTS: sdwRet = 0 productId = 2a!"}),
              1u);
    sim::AddFault({.call = "MW_GetInnerProductId"});
    EXPECT_NE(Build("Lumora_GenTotalPowerSDR").result, 0);
}

// ---- bus clients, accuracies, registers -------------------------------------------------------------------

const char *ClientCall(const Generator &generator) {
    const std::string suffix = generator.Suffix();
    if (OneOf(suffix, {"INLETTEMPSDR", "InletTempSDR", "INPUTTEMPSDR", "ENTEMPSDR"}))
        return "HAL_InputTemp_GetI2cClient";
    if (OneOf(suffix, {"SwitchBoardVoltsSDR", "SwitchBoardCurrentSDR"}))
        return "HAL_SWTICH_GetI2cClientByInstance";
    if (OneOf(suffix, {"CPUCOREVoltageSDR", "CPU0D0N2SDR", "CPU0D1N2SDR", "CPU1D0N2SDR", "CPU1D1N2SDR"}))
        return "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance";
    return nullptr;
}

TEST(ProfileClients, AFailedBusClientDropsTheRecordAndNobodyElseAsks) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        for (const char *call : {"HAL_InputTemp_GetI2cClient", "HAL_SWTICH_GetI2cClientByInstance",
                                 "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"})
            sim::AddFault({.call = call, .result = -5});
        const Built built = Build(generator);
        const char *call = ClientCall(generator);
        EXPECT_EQ(built.result == 0, call != nullptr);
        if (!call)
            continue;
        EXPECT_TRUE(built.Untouched());
        const std::string text = std::string(call).substr(4) + " failed!";
        EXPECT_EQ(CountLine({'W', 255, generator.name + " " + text}), 1u) << testing::PrintToString(Lines());
    }
}

TEST(ProfilePower, AnUnreadableAccuracyIsToldAndGivesNoRecord) {
    size_t seen = 0;
    for (const Generator &generator : Generators()) {
        const std::string suffix = generator.Suffix();
        const bool fans = generator.ask == Ask::kFansAndAccuracy;
        if (!fans && generator.ask != Ask::kAccuracy)
            continue;
        ++seen;
        SCOPED_TRACE(generator.name);
        const bool memory =
            suffix.find("MEM") != std::string::npos || suffix.find("DIMM") != std::string::npos;
        sim::Start(GeneratorBoard());
        for (const char *call :
             {"HAL_GetDimmPowerAccuracy", "HAL_GetHddPowerAccuracy", "HAL_GetFanPowerAccuracy"})
            sim::AddFault({.call = call});
        const Built built = Build(generator);
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        const Line text = memory ? Line{'C', 130, "get mem power accuracy failed\n"}
                          : fans
                              ? Line{'W', 255, "get fan power accuracy failed or Accuracy is 0."}
                              : Line{'W', 255, "get hdd power accuracy failed or dwHDDPowerAccuracy = 0.\n"};
        EXPECT_EQ(CountLine(text), 1u) << testing::PrintToString(Lines(true));
        // an accuracy of 0 drops fan and disk power and makes memory power unreadable
        sim::Board board = GeneratorBoard();
        board.dimms.power_accuracy = board.disks.power_accuracy = board.fans.power_accuracy = 0;
        sim::Start(board);
        const Built zero = Build(generator);
        EXPECT_EQ(zero.result != 0, memory);
        if (memory) {
            EXPECT_EQ(zero.record.sdr[24], 255);
        }
    }
    EXPECT_EQ(seen, 8u * 3 + 1);
}

TEST(ProfilePower, PowerFaultReadsAndWritesBackBothRegistersAndStaysWithoutThem) {
    for (const Generator &generator : Generators()) {
        if (generator.Suffix() != "PowerFaultSDR")
            continue;
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.power_registers = {{1, 0x3C}, {2, 0xC3}};
        sim::Start(board);
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(sim::CountCalls("epldio_read"), 2u);
        EXPECT_EQ(sim::CountCalls("epldio_write"), 2u);
        EXPECT_EQ(sim::CurrentBoard().power_registers, (std::map<uint32_t, uint8_t>{{1, 0x3C}, {2, 0xC3}}));
        sim::AddFault({.call = "epldio_read"});
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(CountLine({'W', 255, "epldio_read PMIC_POWER_FAULT_REG_5350 failed.\n"}), 1u);
        EXPECT_EQ(CountLine({'W', 255, "epldio_read PMIC_POWER_FAULT_REG_6900G5 failed.\n"}), 1u);
    }
}

// ---- PSU status -------------------------------------------------------------------------------------------

TEST(ProfilePsuStatus, LoadsTheAlarmConfigurationAndRefusesAnIndexAboveTheMaximum) {
    const struct {
        const char *name;
        uint8_t (*call)(uint8_t, uint8_t *, DevTabEntry *);
    } cases[] = {{"Kestrin", Kestrin_GenPSStatusSDR},
                 {"Astrel", Astrel_GenPSUStatusSDR},
                 {"Vorana", Vorana_GenPSUStatusSDR},
                 {"Ferrisk", Ferrisk_GenPSUStatusSDR}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        sim::Board board = GeneratorBoard();
        board.psus.alarm_config = false;
        sim::Start(board);
        EXPECT_NE(BuildIndexed(c.call, 2).result, 0);
        EXPECT_EQ(CountLine({'W', 255, "LoadPsuAlarmCfg failed!"}), 1u);
        EXPECT_EQ(BuildIndexed(c.call, 3).result, 0);
        EXPECT_EQ(CountLine({'I', 42, "pem ucInstance large max pem num!"}), 1u);
    }
    sim::Start(GeneratorBoard()); // the supply record loads nothing
    EXPECT_NE(BuildIndexed(Quorral_GenPSUSypplyDR, 1).result, 0);
    EXPECT_EQ(sim::CountCalls("LoadPsuAlarmCfg"), 0u);
}

} // namespace
