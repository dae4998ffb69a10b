// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the generators ask the platform before they build, and what becomes of each answer.
#include <gtest/gtest.h>

#include <map>

#include "static_sensors/generators.h"

namespace {

using namespace tests;

// ---- support flags ----------------------------------------------------------------------------------------

class GeneratorGates : public testing::TestWithParam<Profile> {};
INSTANTIATE_TEST_SUITE_P(Profiles, GeneratorGates, testing::ValuesIn(Profiles()), ProfileName);

bool AsksForFlag(const Generator &generator) {
    return generator.asks == "flag" || generator.asks == "pch";
}

TEST(GeneratorList, TellsHowManyAskForWhat) {
    std::map<std::string, size_t> asked, suffixes;
    for (const Generator &generator : Generators()) {
        ++asked[generator.asks];
        ++suffixes[generator.Suffix()];
    }
    const std::map<std::string, size_t> wanted = {
        {"flag", 103},
        {"kind", 12},
        {"intel", 2},
        {"pch", 8},
        {"fans", 7},
        {"leakage", 8},
        {"accuracy", 19},
        {"fans_and_accuracy", 9},
        {"not_small_board", 8}, // Lumora has a total power without a gate in its place
        {"switch_power", 1},
        {"nothing", 215}};
    EXPECT_EQ(asked, wanted);
    EXPECT_EQ(suffixes["PowerFaultSDR"], 9u);
    EXPECT_EQ(suffixes["PSUStatusSDR"] + suffixes["PSStatusSDR"], 5u);
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

TEST_P(GeneratorGates, AFlagOfZeroRefusesTheSensorAndSaysSo) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (!AsksForFlag(generator))
            continue;
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.support.sensors[generator.number] = 0;
        sim::Start(board);
        const Built built = Build(generator);
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(Lines(), std::vector<Line>{Refusal(generator)});
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 1u);
    }
}

TEST_P(GeneratorGates, AFailedQueryOnlyWarnsAndTheFlagDecides) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
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

TEST_P(GeneratorGates, AnyFlagButZeroMeansThatTheBoardHasTheSensorAndOthersAskForNone) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
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

TEST_P(GeneratorGates, PsuVoltagesAreRefusedBySuccessWithZeroOnly) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.support.kinds[generator.number] = 0;
        sim::Start(board);
        const Built built = Build(generator);
        if (generator.asks != "kind") {
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

TEST_P(GeneratorGates, TjmaxTcontrolAndPchNeedTheIntelProcessor) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (generator.asks != "intel" && generator.asks != "pch")
            continue;
        const Line refusal =
            generator.asks == "pch"
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
            EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 0u);
        }
        SCOPED_TRACE(generator.name + " unknown type");
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetCpuType", .result = 3, .output = 1});
        EXPECT_EQ(Build(generator).result, 0);
        EXPECT_EQ(Lines(), (std::vector<Line>{{'W', 255, "HAL_GetCpuType(&ucCpuType) = [3]"}, refusal}));
    }
}

TEST_P(GeneratorGates, FansAreLeftOutInModeTwoAndLeakageNeedsModeOne) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        const bool leakage = generator.asks == "leakage";
        if (!leakage && generator.asks != "fans" && generator.asks != "fans_and_accuracy")
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

TEST_P(GeneratorGates, BoardPowerTellsBothIdsAndIsRefusedOnTheSmallBoard) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (generator.asks != "not_small_board")
            continue;
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

TEST_P(GeneratorGates, AFailedBusClientDropsTheRecordAndNobodyElseAsks) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
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

TEST_P(GeneratorGates, OnlyANegativeResultOfABusClientIsAFailure) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (!ClientCall(generator))
            continue;
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = ClientCall(generator), .result = 7, .succeed = true});
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_TRUE(sim::FaultWasHit());
    }
}

TEST_P(GeneratorGates, AnUnreadableVoltageDomainIsAnErrorAndNothingElse) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (!OneOf(generator.Suffix(), {"CPU0D0N2SDR", "CPU0D1N2SDR", "CPU1D0N2SDR", "CPU1D1N2SDR"}))
            continue;
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetCpuVoltSdrInfoforSensor"});
        const Built built = Build(generator);
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(CountLine({'E', 42, "Get Cpu Voltage Sensor SDR Info fail!"}), 1u);
        EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
    }
}

// The factor that an accuracy becomes; -1: no record.
int FactorOf(const Generator &generator, uint32_t accuracy) {
    sim::Board board = GeneratorBoard();
    board.dimms.power_accuracy = board.disks.power_accuracy = board.fans.power_accuracy = accuracy;
    sim::Start(board);
    const Built built = Build(generator);
    if (built.result == 0)
        return -1;
    EXPECT_EQ(built.record.sdr[24], built.record.entry[26]);
    return built.record.sdr[24];
}

TEST_P(GeneratorGates, TheAccuracyBecomesTheFactor) {
    const struct {
        uint32_t accuracy;
        int factor;
    } cases[] = {{1, 1}, {255, 255}, {256, 0}, {300, 44}, {0x80000001u, 255}};
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        if (generator.asks != "accuracy" && generator.asks != "fans_and_accuracy")
            continue;
        for (const auto &[accuracy, factor] : cases)
            EXPECT_EQ(FactorOf(generator, accuracy), factor) << generator.name << ' ' << accuracy;
    }
}

TEST_P(GeneratorGates, AnUnreadableAccuracyIsToldAndGivesNoRecord) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        const std::string suffix = generator.Suffix();
        const bool fans = generator.asks == "fans_and_accuracy";
        if (!fans && generator.asks != "accuracy")
            continue;
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
        } else {
            EXPECT_EQ(CountLine(text), 1u);
        }
    }
}

TEST_P(GeneratorGates, PowerFaultReadsAndWritesBackBothRegistersAndStaysWithoutThem) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
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

TEST_P(GeneratorGates, PsuStatusLoadsTheAlarmConfigurationAndRefusesAnIndexAboveTheMaximum) {
    for (Generator generator : GeneratorsOf(GetParam())) {
        const bool status = OneOf(generator.Suffix(), {"PSUStatusSDR", "PSStatusSDR"});
        if (!status && generator.Suffix() != "PSUSypplyDR")
            continue;
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.psus.alarm_config = false;
        sim::Start(board);
        generator.index = 2;
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(CountLine({'W', 255, "LoadPsuAlarmCfg failed!"}), status ? 1u : 0u);
        EXPECT_EQ(sim::CountCalls("LoadPsuAlarmCfg"), status ? 1u : 0u); // the supply record loads nothing
        EXPECT_EQ(CountLine({'I', 42, "pem ucInstance large max pem num!"}), 0u);
        if (!status)
            continue;
        generator.index = 3;
        EXPECT_EQ(Build(generator).result, 0);
        EXPECT_EQ(CountLine({'I', 42, "pem ucInstance large max pem num!"}), 1u);
    }
}

// ---- one profile ------------------------------------------------------------------------------------------

TEST(LumoraTotalPower, ReadsTheProductIdAndTellsItWithoutAGate) {
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

} // namespace
