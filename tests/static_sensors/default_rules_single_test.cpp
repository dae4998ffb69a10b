// SPDX-License-Identifier: GPL-3.0-or-later
//
// What single generators of the Default set do beside what all have in common: instances, bus clients,
// voltage domains, power factors, liquid cooling, the PCH.
#include <gtest/gtest.h>

#include "static_sensors/default_generators.h"

namespace {

using namespace default_set;

// ---- instances --------------------------------------------------------------------------------------------

constexpr char kInstanceWrap[] = "aucSDR[SDR_ENTITY_INSTANCE] + ucInstance may wrap!\n";

template <class Function> void ExpectGuarded(Function function, const char *name) {
    SCOPED_TRACE(name);
    sim::Board board = GeneratorBoard();
    board.psus.count = 254;
    sim::Start(board);
    const Built last = BuildIndexed(function, 159);
    EXPECT_NE(last.result, 0);
    EXPECT_EQ(last.record.sdr[9], 0xFF);
    EXPECT_EQ(last.record.entry[22], 0xFF);
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 0u);
    const Built over = BuildIndexed(function, 160);
    EXPECT_EQ(over.result, 0);
    EXPECT_TRUE(over.Untouched());
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 1u);
    const auto &trace = sim::Trace();
    EXPECT_TRUE(std::any_of(trace.begin(), trace.end(), [](const sim::Event &event) {
        return event.kind == sim::Kind::kDebug && event.text.starts_with("[gen_specific_sensor_default.c:");
    }));
}

TEST(DefaultInstances, AnIndexAbove159WouldWrapAndDropsTheRecord) {
    ExpectGuarded(Default_GenSwitchBoardVoltsSDR, "volts");
    ExpectGuarded(Default_GenSwitchBoardCurrentSDR, "current");
    ExpectGuarded(Default_GenSwitchBoardTempSDR, "temperature");
    ExpectGuarded(Default_GenPSUStatusSDR, "PSU status");
    ExpectGuarded(Default_GenPCIeStatusSDR, "PCIe status");
    ExpectGuarded(Default_GenCPUProchotSDR, "prochot");
}

template <class Function> void ExpectKept(Function function, const char *name) {
    SCOPED_TRACE(name);
    sim::Start(GeneratorBoard());
    const Built last = BuildIndexed(function, 159), over = BuildIndexed(function, 160);
    EXPECT_EQ(last.record.sdr[9], 0xFF);
    EXPECT_NE(over.result, 0);
    EXPECT_EQ(over.record.sdr[9], 0x60);
    EXPECT_EQ(over.record.entry[22], 0x60);
    EXPECT_EQ(over.record.entry[3], 160);
}

TEST(DefaultInstances, PsuPowerAndTemperatureKeepTheBaseAbove159) {
    ExpectKept(Default_GenPSUPInSDR, "input power");
    ExpectKept(Default_GenPSUPOutSDR, "output power");
    ExpectKept(Default_GenPSUTempSDR, "temperature");
}

TEST(DefaultInstances, PsuVoltagesShareOneInstanceAndDifferByNameAndIndex) {
    sim::Start(GeneratorBoard());
    const Built one = BuildIndexed(Default_GenInputVoltsSDR, 1),
                last = BuildIndexed(Default_GenInputVoltsSDR, 254);
    EXPECT_EQ(one.record.sdr[9], 0x60);
    EXPECT_EQ(last.record.sdr[9], 0x60);
    EXPECT_EQ(last.record.Name(), "INPUT_VOLTS_254");
    EXPECT_EQ(last.record.entry[3], 254);
    const Built out = BuildIndexed(Default_GenOutputVoltsSDR, 254);
    EXPECT_EQ(out.record.Name(), "OUTPUT_VOLTS_254"); // sixteen characters
    EXPECT_EQ(out.record.sdr[4], 43 + 16);
    EXPECT_EQ(out.result, 64);
}

// ---- single generators ------------------------------------------------------------------------------------

TEST(DefaultPsuStatus, AnIndexBeyondThePsuMaximumIsRefused) {
    sim::Start(GeneratorBoard());
    EXPECT_NE(BuildIndexed(Default_GenPSUStatusSDR, 2).result, 0);
    EXPECT_EQ(CountLine({'I', 42, "pem ucInstance large max pem num!"}), 0u);
    EXPECT_EQ(BuildIndexed(Default_GenPSUStatusSDR, 3).result, 0);
    EXPECT_EQ(CountLine({'I', 42, "pem ucInstance large max pem num!"}), 1u);
}

TEST(DefaultPsuStatus, AnUnloadableAlarmConfigurationIsToldAndTheRecordStays) {
    sim::Board board = GeneratorBoard();
    board.psus.alarm_config = false;
    sim::Start(board);
    EXPECT_NE(BuildIndexed(Default_GenPSUStatusSDR, 1).result, 0);
    EXPECT_EQ(CountLine({'W', 255, "LoadPsuAlarmCfg failed!"}), 1u);
}

TEST(DefaultSwitchBoard, AnIndexAboveThreeHasNoTemperature) {
    sim::Start(GeneratorBoard());
    const Built built = BuildIndexed(Default_GenSwitchBoardInOROutletTempSDR, 4);
    EXPECT_EQ(built.result, 0);
    EXPECT_TRUE(built.Untouched());
    EXPECT_EQ(Lines(),
              (std::vector<Line>{
                  {'I', 42, "Default_GenSwitchBoardInOROutletTempSDR switchBoardTempNum[4] error!"}}));
}

TEST(DefaultSwitchBoard, TheFourTemperaturesAreNamedInOrder) {
    sim::Start(GeneratorBoard());
    const char *const names[] = {"SW_INPUT_TEMP_01", "SW_INPUT_TEMP_02", "SW_OUTPUT_T_01", "SW_OUTPUT_T_02"};
    for (uint8_t x = 0; x < 4; ++x)
        EXPECT_EQ(BuildIndexed(Default_GenSwitchBoardInOROutletTempSDR, x).record.Name(), names[x]);
}

TEST(DefaultClients, AFailedBusClientDropsTheRecord) {
    const struct {
        const char *generator, *call, *text;
    } cases[] = {
        {"Default_GenINPUTTEMPSDR", "HAL_InputTemp_GetI2cClient", " InputTemp_GetI2cClient failed!"},
        {"Default_GenSwitchBoardVoltsSDR", "HAL_SWTICH_GetI2cClientByInstance",
         " SWTICH_GetI2cClientByInstance failed!"},
        {"Default_GenSwitchBoardCurrentSDR", "HAL_SWTICH_GetI2cClientByInstance",
         " SWTICH_GetI2cClientByInstance failed!"},
        {"Default_GenCPUCOREVoltageSDR", "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance",
         " CPUVRTempCoreVolts_GetI2cClientByInstance failed!"},
        {"Default_GenCPU1D1N2SDR", "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance",
         " CPUVRTempCoreVolts_GetI2cClientByInstance failed!"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.generator);
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = c.call, .result = -5});
        const Built built = Build(FindGenerator(c.generator));
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(CountLine({'W', 255, std::string(c.generator) + c.text}), 1u);
    }
}

TEST(DefaultClients, OnlyANegativeResultIsAFailure) {
    for (const char *name :
         {"Default_GenINPUTTEMPSDR", "Default_GenSwitchBoardVoltsSDR", "Default_GenCPUCOREVoltageSDR"}) {
        SCOPED_TRACE(name);
        sim::Start(GeneratorBoard());
        for (const char *call : {"HAL_InputTemp_GetI2cClient", "HAL_SWTICH_GetI2cClientByInstance",
                                 "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"})
            sim::AddFault({.call = call, .result = 7, .succeed = true});
        EXPECT_NE(Build(FindGenerator(name)).result, 0);
    }
}

TEST(DefaultCoreVoltage, AnIndexBelowTheSilkStartIsBuiltWithoutABusClient) {
    sim::Board board = GeneratorBoard();
    board.cpus.silk_start = 4;
    sim::Start(board);
    const Built built = BuildIndexed(Default_GenCPUCOREVoltageSDR, 3);
    EXPECT_NE(built.result, 0);
    EXPECT_EQ(built.record.Name(), "CPU_VOLTS_03");
    EXPECT_EQ(sim::CountCalls("HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"), 0u);
    EXPECT_EQ(built.record.entry[6], 0);
    EXPECT_EQ(built.record.entry[7], 0);
}

TEST(DefaultCoreVoltage, TheClientIsAskedForTheCpuCountedFromTheSilkStart) {
    sim::Board board = GeneratorBoard();
    board.cpus.silk_start = 4;
    board.cpus.vr_clients[1] = {0x11, 0x22};
    sim::Start(board);
    const Built built = BuildIndexed(Default_GenCPUCOREVoltageSDR, 5);
    EXPECT_EQ(built.record.entry[3], 1);
    EXPECT_EQ(built.record.entry[6], 0x11);
    EXPECT_EQ(built.record.entry[7], 0x22);
}

TEST(DefaultCoreVoltage, AFailedSilkReadCountsAsZeroAndWarns) {
    sim::Board board = GeneratorBoard();
    board.cpus.silk_start = 4;
    board.cpus.vr_clients[5] = {0x33, 0x44};
    sim::Start(board);
    sim::AddFault({.call = "HAL_GetCpuSilkScreenIndexFixValue", .result = 0x10});
    const Built built = BuildIndexed(Default_GenCPUCOREVoltageSDR, 5);
    EXPECT_EQ(built.record.entry[3], 5);
    EXPECT_EQ(built.record.entry[6], 0x33);
    EXPECT_EQ(CountLine({'W', 255, "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [10]"}), 1u);
}

TEST(DefaultDomains, EveryMaskBitCopiesItsThresholdAndWidensTheMasks) {
    const struct {
        uint8_t bit;
        size_t threshold;  // byte of the record
        const char *masks; // bytes 14 to 19
    } cases[] = {
        {0x01, 41, "01 10 01 00 01 01"}, {0x02, 40, "04 20 04 00 02 02"}, {0x04, 39, "10 40 10 00 04 04"},
        {0x08, 38, "80 00 80 10 08 08"}, {0x10, 37, "00 02 00 22 10 10"}, {0x20, 36, "00 08 00 48 20 20"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(+c.bit);
        sim::Board board = GeneratorBoard();
        board.cpus.voltages[2] = {.m = 3,
                                  .mask = c.bit,
                                  .unr = 0x36,
                                  .uc = 0x37,
                                  .unc = 0x38,
                                  .lnr = 0x39,
                                  .lc = 0x40,
                                  .lnc = 0x41};
        sim::Start(board);
        const Bytes sdr = BuildIndexed(Default_GenCPU0D1N2SDR, 0).record.sdr;
        EXPECT_EQ(Hex({sdr.begin() + 14, sdr.begin() + 20}), Hex(Literal(c.masks)));
        const uint8_t values[] = {0x36, 0x37, 0x38, 0x39, 0x40, 0x41};
        for (size_t at = 36; at < 42; ++at)
            EXPECT_EQ(sdr[at], at == c.threshold ? values[at - 36] : 0) << at;
    }
}

TEST(DefaultDomains, AMaskOfZeroLeavesMasksAndThresholdsZero) {
    sim::Board board = GeneratorBoard();
    board.cpus.voltages[3] = {.m = 3, .mask = 0, .unr = 1, .uc = 2, .unc = 3, .lnr = 4, .lc = 5, .lnc = 6};
    sim::Start(board);
    const Bytes sdr = BuildIndexed(Default_GenCPU1D0N2SDR, 1).record.sdr;
    EXPECT_EQ(Bytes(sdr.begin() + 14, sdr.begin() + 20), Bytes(6));
    EXPECT_EQ(Bytes(sdr.begin() + 36, sdr.begin() + 42), Bytes(6));
}

TEST(DefaultDomains, AnUnreadableDescriptionIsAnErrorAndNothingElse) {
    for (const char *name : {"Default_GenCPU0D0N2SDR", "Default_GenCPU0D1N2SDR", "Default_GenCPU1D0N2SDR",
                             "Default_GenCPU1D1N2SDR"}) {
        SCOPED_TRACE(name);
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetCpuVoltSdrInfoforSensor"});
        const Built built = Build(FindGenerator(name));
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(CountLine({'E', 42, "Get Cpu Voltage Sensor SDR Info fail!"}), 1u);
        EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
    }
}

TEST(DefaultDomains, ThePrintedNumberOfTheSecondCpuWrapsAt256) {
    sim::Board board = GeneratorBoard();
    board.cpus.silk_start = 255;
    board.cpus.count = 0;
    board.cpus.type = 3;
    const Outcome outcome = RunPass(board);
    EXPECT_EQ(outcome.CountName("CPU255_D0_N2"), 1u);
    EXPECT_EQ(outcome.CountName("CPU0_D0_N2"), 1u);
    EXPECT_EQ(outcome.CountName("CPU0_D1_N2"), 1u);
}

// ---- power ------------------------------------------------------------------------------------------------

int BuiltM(const char *generator, void (*set)(sim::Board &, uint32_t), uint32_t accuracy) {
    sim::Board board = GeneratorBoard();
    set(board, accuracy);
    sim::Start(board);
    const Built built = Build(FindGenerator(generator));
    return built.result == 0                                ? -1
           : built.record.sdr[24] == built.record.entry[26] ? built.record.sdr[24]
                                                            : -2;
}

TEST(DefaultPower, TheAccuracyBecomesTheFactor) {
    const auto memory = [](sim::Board &board, uint32_t value) { board.dimms.power_accuracy = value; };
    const auto disks = [](sim::Board &board, uint32_t value) { board.disks.power_accuracy = value; };
    const auto fans = [](sim::Board &board, uint32_t value) { board.fans.power_accuracy = value; };
    const struct {
        uint32_t accuracy;
        int memory, disks, fans; // -1: no record
    } cases[] = {{0, 255, -1, -1}, {1, 1, 1, 1},      {255, 255, 255, 255},
                 {256, 0, 0, 0},   {300, 44, 44, 44}, {0x80000001u, 255, 255, 255}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.accuracy);
        EXPECT_EQ(BuiltM("Default_GenMEMPowerSDR", memory, c.accuracy), c.memory);
        EXPECT_EQ(BuiltM("Default_GenHDDPowerSDR", disks, c.accuracy), c.disks);
        EXPECT_EQ(BuiltM("Default_GenFANPowerSDR", fans, c.accuracy), c.fans);
    }
}

TEST(DefaultPower, AnUnreadableOrZeroAccuracyIsTold) {
    sim::Board board = GeneratorBoard();
    board.disks.power_accuracy = 0;
    board.fans.power_accuracy = 0;
    sim::Start(board);
    Build(FindGenerator("Default_GenHDDPowerSDR"));
    Build(FindGenerator("Default_GenFANPowerSDR"));
    EXPECT_EQ(CountLine({'W', 255, "get hdd power accuracy failed or dwHDDPowerAccuracy = 0.\n"}), 1u);
    EXPECT_EQ(CountLine({'W', 255, "get fan power accuracy failed or Accuracy is 0."}), 1u);

    sim::Start(GeneratorBoard());
    for (const char *call :
         {"HAL_GetDimmPowerAccuracy", "HAL_GetHddPowerAccuracy", "HAL_GetFanPowerAccuracy"})
        sim::AddFault({.call = call});
    for (const char *name : {"Default_GenMEMPowerSDR", "Default_GenHDDPowerSDR", "Default_GenFANPowerSDR"})
        EXPECT_EQ(Build(FindGenerator(name)).result, 0) << name;
    EXPECT_EQ(CountLine({'C', 130, "get mem power accuracy failed\n"}), 1u);
    EXPECT_EQ(CountLine({'W', 255, "get hdd power accuracy failed or dwHDDPowerAccuracy = 0.\n"}), 1u);
    EXPECT_EQ(CountLine({'W', 255, "get fan power accuracy failed or Accuracy is 0."}), 1u);
}

TEST(DefaultPower, BoardPowerTellsBothIdsAndIsRefusedOnTheSmallBoard) {
    sim::Board board = GeneratorBoard();
    board.inner_product_id = 0x2A;
    sim::Start(board);
    EXPECT_NE(Build(FindGenerator("Default_GenBoardPowerSDR")).result, 0);
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultSensor for POWER_WATTS: sdwRet = 0 wBoardId = 1234!"}), 1u);
    EXPECT_EQ(CountLine({'I', 42, "OXA_AddDefaultSensor for POWER_WATTS: sdwRet = 0 productId = 2a!"}), 1u);
    board.board_id = 0x5497;
    sim::Start(board);
    EXPECT_EQ(Build(FindGenerator("Default_GenBoardPowerSDR")).result, 0);
    EXPECT_EQ(CountLine({'I', 42, "The board does not support adding sensor POWER_WATTS."}), 1u);
}

TEST(DefaultPower, PowerFaultReadsAndWritesBackBothRegisters) {
    sim::Board board = GeneratorBoard();
    board.power_registers = {{1, 0x3C}, {2, 0xC3}};
    sim::Start(board);
    EXPECT_NE(Build(FindGenerator("Default_GenPowerFaultSDR")).result, 0);
    EXPECT_EQ(sim::CountCalls("epldio_read"), 2u);
    EXPECT_EQ(sim::CountCalls("epldio_write"), 2u);
    EXPECT_EQ(sim::CurrentBoard().power_registers, (std::map<uint32_t, uint8_t>{{1, 0x3C}, {2, 0xC3}}));
}

TEST(DefaultPower, PowerFaultIsBuiltWhenTheRegistersCannotBeRead) {
    sim::Start(GeneratorBoard());
    sim::AddFault({.call = "epldio_read"});
    EXPECT_NE(Build(FindGenerator("Default_GenPowerFaultSDR")).result, 0);
    EXPECT_EQ(CountLine({'W', 255, "epldio_read PMIC_POWER_FAULT_REG_5350 failed.\n"}), 1u);
    EXPECT_EQ(CountLine({'W', 255, "epldio_read PMIC_POWER_FAULT_REG_6900G5 failed.\n"}), 1u);
}

// ---- liquid cooling and PCH -------------------------------------------------------------------------------

TEST(DefaultLiquidCooling, FansAreLeftOutInModeTwoAndLeakageNeedsModeOne) {
    const struct {
        const char *generator, *text;
    } cases[] = {
        {"Default_GenFanRedundancySDR", "assertion failed: GetLiquidCoolingFlag() != (2)"},
        {"Default_GenFANPowerSDR", "assertion failed: GetLiquidCoolingFlag() != (2)"},
        {"Default_GenLeakageSDR", "assertion failed: GetLiquidCoolingFlag() == (1)"},
    };
    for (const auto &c : cases) {
        for (uint8_t mode : {0, 1, 2, 3}) {
            SCOPED_TRACE(std::string(c.generator) + " mode " + std::to_string(mode));
            const bool leakage = std::string(c.generator) == "Default_GenLeakageSDR";
            const bool refused = leakage ? mode != 1 : mode == 2;
            sim::Board board = GeneratorBoard();
            board.liquid_cooling_mode = mode;
            sim::Start(board);
            EXPECT_EQ(Build(FindGenerator(c.generator)).result == 0, refused);
            EXPECT_EQ(CountLine({'E', 255, c.text}), refused ? 1u : 0u);
            EXPECT_TRUE(sim::Violations().empty());
        }
    }
}

TEST(DefaultPch, OnlyTheIntelProcessorHasOne) {
    for (uint8_t type : {0, 2, 3}) {
        sim::Board board = GeneratorBoard();
        board.cpus.type = type;
        sim::Start(board);
        EXPECT_EQ(Build(FindGenerator("Default_GenPCHTempSDR")).result, 0);
        EXPECT_EQ(Lines(), (std::vector<Line>{{'I', 42, "The board has no pch"}}));
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 0u);
    }
}

TEST(DefaultPch, AnUnknownCpuTypeWarnsAndHasNoPch) {
    sim::Start(GeneratorBoard());
    sim::AddFault({.call = "HAL_GetCpuType", .result = 3, .output = 1});
    EXPECT_EQ(Build(FindGenerator("Default_GenPCHTempSDR")).result, 0);
    EXPECT_EQ(Lines(), (std::vector<Line>{{'W', 255, "HAL_GetCpuType(&ucCpuType) = [3]"},
                                          {'I', 42, "The board has no pch"}}));
}

} // namespace
