// SPDX-License-Identifier: GPL-3.0-or-later
//
// What single generators of the Default set do beside what all have in common: instances, switch boards, core
// voltages, voltage domains.
#include <gtest/gtest.h>

#include "oxa/profiles/default.h"
#include "static_sensors/generators.h"

namespace {

using namespace tests;

// ---- instances --------------------------------------------------------------------------------------------

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

TEST(DefaultSwitchBoard, AVoltageAbove159IsDroppedBeforeItsBusIsAskedFor) {
    sim::Start(GeneratorBoard());
    sim::AddFault({.call = "HAL_SWTICH_GetI2cClientByInstance"});
    EXPECT_TRUE(BuildIndexed(Default_GenSwitchBoardVoltsSDR, 160).Untouched());
    EXPECT_EQ(CountLine({'C', 130, kInstanceWrap}), 1u);
    EXPECT_EQ(sim::CountCalls("HAL_SWTICH_GetI2cClientByInstance"), 0u);
}

TEST(DefaultRedundancy, AGroupAboveOneHasNoNameAndNoRecord) {
    sim::Start(GeneratorBoard());
    EXPECT_NE(BuildIndexed(Default_GenPSURedundantSDR, 1).result, 0);
    for (const uint8_t group : {2, 3, 255}) {
        const Built built = BuildIndexed(Default_GenPSURedundantSDR, group);
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
    }
}

// Six bits hold the length of a name: 255 less the two that say it is text.
TEST(DefaultNames, ALengthThatItsByteCannotHoldDropsTheRecord) {
    sim::Start(GeneratorBoard());
    sim::AddFault({.call = "strnlen_s", .result = 64});
    const Built built = BuildIndexed(Default_GenPSUPInSDR, 1);
    EXPECT_EQ(built.result, 0);
    EXPECT_TRUE(built.Untouched());
    EXPECT_EQ(CountLine({'C', 130, "ucNameLen + 0xC0 may wrap!\n"}), 1u);
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

} // namespace
