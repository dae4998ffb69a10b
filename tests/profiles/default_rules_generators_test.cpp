// SPDX-License-Identifier: GPL-3.0-or-later
//
// What every generator of the Default set has in common, as one test over all of them, and what single generators do
// beside it.
#include <gtest/gtest.h>

#include "default_generators.h"

namespace {

using namespace default_set;

TEST(DefaultGenerators, AreFortyFiveWithTheTwentySixOfTheTableInItsOrder) {
    ASSERT_EQ(Generators().size(), 45u);
    ASSERT_EQ(ucDefaultStaticSDRCnt, 26);
    for (size_t row = 0; row < 26; ++row) {
        sim::Start(GeneratorBoard());
        const Built by_row = Build(atGenDefaultStaticSDRTab[row]);
        const Built by_name = Build(Generators()[row]);
        EXPECT_EQ(by_row.record, by_name.record) << row;
        EXPECT_EQ(by_row.record.Name(), Generators()[row].sensor) << row;
    }
}

TEST(DefaultGenerators, ANullSlotOrEntryIsCountedToldAndGivesNothing) {
    for (const Generator &generator : Generators()) {
        for (const bool null_slot : {true, false}) {
            SCOPED_TRACE(std::string(generator.name) + (null_slot ? " without slot" : " without entry"));
            sim::Start(GeneratorBoard());
            Bytes slot(64, kUntouched);
            DevTabEntry entry = {};
            EXPECT_EQ(generator.call(null_slot ? nullptr : slot.data(), null_slot ? &entry : nullptr), 0);
            EXPECT_EQ(slot, Bytes(64, kUntouched));
            ASSERT_EQ(sim::Trace().size(), 2u); // nothing is asked of the platform
            const sim::Event &stat = sim::Trace()[0], &error = sim::Trace()[1];
            EXPECT_EQ(stat.kind, sim::Kind::kStat);
            EXPECT_EQ(stat.file, "gen_specific_sensor_default.c");
            EXPECT_EQ(error.kind, sim::Kind::kLog);
            EXPECT_EQ(error.level, sim::Level::kError);
            EXPECT_EQ(error.number, 42u);
            EXPECT_EQ(error.file, "gen_specific_sensor_default.c");
            EXPECT_EQ(error.function, generator.name);
            EXPECT_EQ(error.text, std::string(generator.name) + " failed! The input parameter is null.");
        }
    }
}

TEST(DefaultGenerators, TheResultIsTheWholeLengthOfTheRecord) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        const Built built = Build(generator);
        ASSERT_EQ(built.record.Name(), generator.sensor);
        const size_t fixed = built.record.sdr[3] == 1 ? 48 : 32;
        EXPECT_EQ(built.result, fixed + std::strlen(generator.sensor));
        EXPECT_EQ(built.result, built.record.sdr[4] + 5);
        EXPECT_TRUE(sim::Violations().empty());
    }
}

// ---- already stored ----------------------------------------------------------------------------------------

// What is said besides the store's own line; nothing for the processor, memory and disk records.
std::vector<Line> ExistText(const std::string &name) {
    const std::string text = name + " sensor already exist!";
    if (name == "Default_GenInputVoltsSDR" || name == "Default_GenOutputVoltsSDR")
        return {{'W', 42, text + "\n"}};
    if (name == "Default_GenCPUProchotSDR")
        return {{'I', 42, text + "\n"}};
    if (name == "Default_GenSwitchBoardTempSDR")
        return {{'W', 42, "Default_GenSwitchBoardVoltsSDR sensor already exist!"}}; // the volts generator's text
    if (name == "Default_GenVCC12VSDR")
        return {{'I', 42, "The VCC12V already exists in fru."}};
    for (const char *silent : {"Default_GenCPUPowerSDR", "Default_GenMEMPowerSDR", "Default_GenCPUCOREVoltageSDR",
                               "Default_GenHDDStatusSDR", "Default_GenCPU0D0N2SDR", "Default_GenCPU0D1N2SDR",
                               "Default_GenCPU1D0N2SDR", "Default_GenCPU1D1N2SDR"})
        if (name == silent)
            return {};
    return {{'I', 42, text}};
}

TEST(DefaultGenerators, ARecordThatIsStoredAlreadyIsNotWrittenAgain) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        sim::WriteFile(kStorePath, {});
        const Built first = Build(generator);
        ASSERT_NE(first.result, 0);
        Store({first.record});
        sim::ClearTrace();
        const Built again = Build(generator);
        EXPECT_EQ(again.result, 0);
        EXPECT_TRUE(again.Untouched());
        std::vector<Line> lines = Lines();
        std::vector<Line> expected = {{'I', 42, "This sensor is already exist!"}};
        for (const Line &line : ExistText(generator.name))
            expected.push_back(line);
        ASSERT_GE(lines.size(), expected.size());
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(expected.size()));
        EXPECT_EQ(lines, expected);
    }
}

TEST(DefaultGenerators, AStoredRecordOfTheOtherTypeOrALongerNameDoesNotCount) {
    sim::Start(GeneratorBoard());
    Record stored = Build(FindGenerator("Default_GenCPUPowerSDR")).record;
    stored.sdr[3] = 2;
    Record longer = Build(FindGenerator("Default_GenOSBootSDR")).record;
    longer.sdr[31] = 0xC8;
    longer.sdr[39] = 'X'; // "OS_BOOTX"
    Store({stored, longer});
    EXPECT_NE(Build(FindGenerator("Default_GenCPUPowerSDR")).result, 0);
    EXPECT_NE(Build(FindGenerator("Default_GenOSBootSDR")).result, 0);
}

// ---- support flags -----------------------------------------------------------------------------------------

struct Gate {
    const char *generator;
    uint32_t sensor;
    const char *sensor_text;
    Line refusal;
};
const std::vector<Gate> kGates = {
    {"Default_GenCPUCOREVoltageSDR", 102, "SENSOR_CPU_VOLTS", {'I', 42, "The board does not support adding sensor CPU_VOLTS_0x."}},
    {"Default_GenPCHTempSDR", 121, "SENSOR_PCH_TEMP", {'I', 42, "The board does not support adding sensor PCH_TEMP."}},
    {"Default_GenPowerButtonSDR", 122, "SENSOR_POWER_BUTTON", {'I', 42, "The board does not support adding sensor POWER_BUTTON."}},
    {"Default_GenUIDButtonSDR", 123, "SENSOR_UID_BUTTON", {'I', 42, "The board does not support adding sensor UID_BUTTON."}},
    {"Default_GenIntrusionSDR", 124, "SENSOR_INTRUSION", {'I', 42, "The board does not support adding sensor INTRUSION."}},
    {"Default_GenINPUTTEMPSDR", 103, "SENSOR_INPUT_TEMP", {'I', 42, "The board does not support adding sensor INPUT_TEMP."}},
    {"Default_GenENVHUMISDR", 105, "SENSOR_ENV_HUMI", {'I', 42, "The board does not support adding sensor ENV_HUMI."}},
    {"Default_GenMESDR", 125, "SENSOR_ME", {'I', 42, "The board does not support adding sensor ME."}},
    {"Default_GenOUTPUTTEMPSDR", 104, "SENSOR_OUTPUT_TEMP", {'I', 42, "The board does not support adding sensor OUTPUT_TEMP."}},
    {"Default_GenVCC12VSDR", 107, "SENSOR_VCC12V", {'I', 42, "The board does not support adding sensor VCC12V."}},
    {"Default_GenPDBTEMPSDR", 106, "SENSOR_PDB_TEMP", {'I', 42, "The board does not support adding sensor PDB_TEMP."}},
    {"Default_GenMiddlePDBTEMPSDR", 106, "SENSOR_PDB_TEMP", {'I', 42, "The board does not support adding sensor MIDDLEPDB_TEMP."}},
    {"Default_GenPowerFaultSDR", 108, "SENSOR_POWER_FAULT", {'I', 42, "The board does not support adding sensor POWER_FAULT."}},
};

TEST(DefaultGates, AFlagOfZeroRefusesTheSensorAndSaysSo) {
    for (const Gate &gate : kGates) {
        SCOPED_TRACE(gate.generator);
        sim::Board board = GeneratorBoard();
        board.support.sensors[gate.sensor] = 0;
        sim::Start(board);
        const Built built = Build(FindGenerator(gate.generator));
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(Lines(), std::vector<Line>{gate.refusal});
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 1u);
    }
}

TEST(DefaultGates, AnyFlagButZeroMeansThatTheBoardHasTheSensor) {
    for (const Gate &gate : kGates) {
        SCOPED_TRACE(gate.generator);
        sim::Board board = GeneratorBoard();
        board.support.all = false;
        board.support.sensors[gate.sensor] = 0x80;
        sim::Start(board);
        EXPECT_NE(Build(FindGenerator(gate.generator)).result, 0);
    }
}

TEST(DefaultGates, AFailedQueryOnlyWarnsAndTheFlagDecides) {
    for (const Gate &gate : kGates) {
        for (const uint64_t flag : {0, 1}) {
            SCOPED_TRACE(std::string(gate.generator) + " flag " + std::to_string(flag));
            sim::Start(GeneratorBoard());
            sim::AddFault({.call = "HAL_GetSensorNotSupportFlagBySensor", .result = 0x5A, .output = flag});
            const Built built = Build(FindGenerator(gate.generator));
            EXPECT_EQ(built.result != 0, flag != 0);
            EXPECT_EQ(CountLine({'W', 255, "HAL_GetSensorNotSupportFlagBySensor(" + std::string(gate.sensor_text) +
                                               ", &ucSupportFlag) = [5A]"}),
                      1u);
            EXPECT_EQ(CountLine(gate.refusal), flag == 0 ? 1u : 0u);
        }
    }
}

TEST(DefaultGates, TheOtherGeneratorsAskForNoSupportFlag) {
    for (const Generator &generator : Generators()) {
        if (std::any_of(kGates.begin(), kGates.end(),
                        [&](const Gate &gate) { return std::string(gate.generator) == generator.name; }))
            continue;
        SCOPED_TRACE(generator.name);
        sim::Board board = GeneratorBoard();
        board.support.all = false;
        sim::Start(board);
        EXPECT_NE(Build(generator).result, 0);
        EXPECT_EQ(sim::CountCalls("HAL_GetSensorNotSupportFlagBySensor"), 0u);
    }
}

struct Kind {
    const char *generator;
    uint32_t kind;
    const char *refusal;
};
const Kind kKinds[] = {{"Default_GenInputVoltsSDR", 3, "The board does not support adding sensor INPUT_VOLTS1."},
                       {"Default_GenOutputVoltsSDR", 4, "The board does not support adding sensor OUTPUT_VOLTS1."}};

TEST(DefaultPsuVoltageGates, OnlySuccessWithZeroRefuses) {
    for (const Kind &kind : kKinds) {
        SCOPED_TRACE(kind.generator);
        sim::Board board = GeneratorBoard();
        board.support.kinds[kind.kind] = 0;
        sim::Start(board);
        const Built built = Build(FindGenerator(kind.generator));
        EXPECT_EQ(built.result, 0);
        EXPECT_TRUE(built.Untouched());
        EXPECT_EQ(Lines(), (std::vector<Line>{{'W', 42, kind.refusal}}));
    }
}

TEST(DefaultPsuVoltageGates, AFailedQueryKeepsTheSensorWhateverItLeft) {
    for (const Kind &kind : kKinds) {
        SCOPED_TRACE(kind.generator);
        sim::Start(GeneratorBoard());
        sim::AddFault({.call = "HAL_GetSensorSupportFlagBySensor", .output = 0});
        EXPECT_NE(Build(FindGenerator(kind.generator)).result, 0);
        EXPECT_TRUE(Lines().empty());
    }
}

// ---- instances ---------------------------------------------------------------------------------------------

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
    const Built one = BuildIndexed(Default_GenInputVoltsSDR, 1), last = BuildIndexed(Default_GenInputVoltsSDR, 254);
    EXPECT_EQ(one.record.sdr[9], 0x60);
    EXPECT_EQ(last.record.sdr[9], 0x60);
    EXPECT_EQ(last.record.Name(), "INPUT_VOLTS_254");
    EXPECT_EQ(last.record.entry[3], 254);
    const Built out = BuildIndexed(Default_GenOutputVoltsSDR, 254);
    EXPECT_EQ(out.record.Name(), "OUTPUT_VOLTS_254"); // sixteen characters
    EXPECT_EQ(out.record.sdr[4], 43 + 16);
    EXPECT_EQ(out.result, 64);
}

// ---- single generators -------------------------------------------------------------------------------------

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
              (std::vector<Line>{{'I', 42, "Default_GenSwitchBoardInOROutletTempSDR switchBoardTempNum[4] error!"}}));
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
        {"Default_GenSwitchBoardVoltsSDR", "HAL_SWTICH_GetI2cClientByInstance", " SWTICH_GetI2cClientByInstance failed!"},
        {"Default_GenSwitchBoardCurrentSDR", "HAL_SWTICH_GetI2cClientByInstance", " SWTICH_GetI2cClientByInstance failed!"},
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
    for (const char *name : {"Default_GenINPUTTEMPSDR", "Default_GenSwitchBoardVoltsSDR", "Default_GenCPUCOREVoltageSDR"}) {
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
        size_t threshold; // byte of the record
        const char *masks; // bytes 14 to 19
    } cases[] = {
        {0x01, 41, "01 10 01 00 01 01"}, {0x02, 40, "04 20 04 00 02 02"}, {0x04, 39, "10 40 10 00 04 04"},
        {0x08, 38, "80 00 80 10 08 08"}, {0x10, 37, "00 02 00 22 10 10"}, {0x20, 36, "00 08 00 48 20 20"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(+c.bit);
        sim::Board board = GeneratorBoard();
        board.cpus.voltages[2] = {.m = 3, .mask = c.bit, .unr = 0x36, .uc = 0x37, .unc = 0x38, .lnr = 0x39,
                                  .lc = 0x40, .lnc = 0x41};
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

// ---- power -------------------------------------------------------------------------------------------------

int BuiltM(const char *generator, void (*set)(sim::Board &, uint32_t), uint32_t accuracy) {
    sim::Board board = GeneratorBoard();
    set(board, accuracy);
    sim::Start(board);
    const Built built = Build(FindGenerator(generator));
    return built.result == 0 ? -1 : built.record.sdr[24] == built.record.entry[26] ? built.record.sdr[24] : -2;
}

TEST(DefaultPower, TheAccuracyBecomesTheFactor) {
    const auto memory = [](sim::Board &board, uint32_t value) { board.dimms.power_accuracy = value; };
    const auto disks = [](sim::Board &board, uint32_t value) { board.disks.power_accuracy = value; };
    const auto fans = [](sim::Board &board, uint32_t value) { board.fans.power_accuracy = value; };
    const struct {
        uint32_t accuracy;
        int memory, disks, fans; // -1: no record
    } cases[] = {{0, 255, -1, -1}, {1, 1, 1, 1}, {255, 255, 255, 255}, {256, 0, 0, 0}, {300, 44, 44, 44},
                 {0x80000001u, 255, 255, 255}};
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
    for (const char *call : {"HAL_GetDimmPowerAccuracy", "HAL_GetHddPowerAccuracy", "HAL_GetFanPowerAccuracy"})
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

// ---- liquid cooling and PCH --------------------------------------------------------------------------------

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
