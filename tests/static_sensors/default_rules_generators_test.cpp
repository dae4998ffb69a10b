// SPDX-License-Identifier: GPL-3.0-or-later
//
// What every generator of the Default set has in common: one test over all of them for each rule.
#include <gtest/gtest.h>

#include "static_sensors/default_generators.h"

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

// ---- already stored ---------------------------------------------------------------------------------------

// What is said besides the store's own line; nothing for the processor, memory and disk records.
std::vector<Line> ExistText(const std::string &name) {
    const std::string text = name + " sensor already exist!";
    if (name == "Default_GenInputVoltsSDR" || name == "Default_GenOutputVoltsSDR")
        return {{'W', 42, text + "\n"}};
    if (name == "Default_GenCPUProchotSDR")
        return {{'I', 42, text + "\n"}};
    if (name == "Default_GenSwitchBoardTempSDR")
        return {
            {'W', 42, "Default_GenSwitchBoardVoltsSDR sensor already exist!"}}; // the volts generator's text
    if (name == "Default_GenVCC12VSDR")
        return {{'I', 42, "The VCC12V already exists in fru."}};
    for (const char *silent :
         {"Default_GenCPUPowerSDR", "Default_GenMEMPowerSDR", "Default_GenCPUCOREVoltageSDR",
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

// ---- support flags ----------------------------------------------------------------------------------------

struct Gate {
    const char *generator;
    uint32_t sensor;
    const char *sensor_text;
    Line refusal;
};
const std::vector<Gate> kGates = {
    {"Default_GenCPUCOREVoltageSDR",
     102,
     "SENSOR_CPU_VOLTS",
     {'I', 42, "The board does not support adding sensor CPU_VOLTS_0x."}},
    {"Default_GenPCHTempSDR",
     121,
     "SENSOR_PCH_TEMP",
     {'I', 42, "The board does not support adding sensor PCH_TEMP."}},
    {"Default_GenPowerButtonSDR",
     122,
     "SENSOR_POWER_BUTTON",
     {'I', 42, "The board does not support adding sensor POWER_BUTTON."}},
    {"Default_GenUIDButtonSDR",
     123,
     "SENSOR_UID_BUTTON",
     {'I', 42, "The board does not support adding sensor UID_BUTTON."}},
    {"Default_GenIntrusionSDR",
     124,
     "SENSOR_INTRUSION",
     {'I', 42, "The board does not support adding sensor INTRUSION."}},
    {"Default_GenINPUTTEMPSDR",
     103,
     "SENSOR_INPUT_TEMP",
     {'I', 42, "The board does not support adding sensor INPUT_TEMP."}},
    {"Default_GenENVHUMISDR",
     105,
     "SENSOR_ENV_HUMI",
     {'I', 42, "The board does not support adding sensor ENV_HUMI."}},
    {"Default_GenMESDR", 125, "SENSOR_ME", {'I', 42, "The board does not support adding sensor ME."}},
    {"Default_GenOUTPUTTEMPSDR",
     104,
     "SENSOR_OUTPUT_TEMP",
     {'I', 42, "The board does not support adding sensor OUTPUT_TEMP."}},
    {"Default_GenVCC12VSDR",
     107,
     "SENSOR_VCC12V",
     {'I', 42, "The board does not support adding sensor VCC12V."}},
    {"Default_GenPDBTEMPSDR",
     106,
     "SENSOR_PDB_TEMP",
     {'I', 42, "The board does not support adding sensor PDB_TEMP."}},
    {"Default_GenMiddlePDBTEMPSDR",
     106,
     "SENSOR_PDB_TEMP",
     {'I', 42, "The board does not support adding sensor MIDDLEPDB_TEMP."}},
    {"Default_GenPowerFaultSDR",
     108,
     "SENSOR_POWER_FAULT",
     {'I', 42, "The board does not support adding sensor POWER_FAULT."}},
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
            EXPECT_EQ(CountLine({'W', 255,
                                 "HAL_GetSensorNotSupportFlagBySensor(" + std::string(gate.sensor_text) +
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
const Kind kKinds[] = {
    {"Default_GenInputVoltsSDR", 3, "The board does not support adding sensor INPUT_VOLTS1."},
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

} // namespace
