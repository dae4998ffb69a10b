// SPDX-License-Identifier: GPL-3.0-or-later
//
// What every exported generator of the profiles has in common: one test over all of them for each rule.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>

#include "static_sensors/profiles_generators.h"

namespace {

using namespace profile_sets;

// Every "OXA_GEN" line of the header that belongs to the profiles of the table.
std::set<std::string> ExportedGenerators() {
    std::ifstream header(OXA_SOURCE_DIR "/include/oxa/exports.h");
    const std::regex declaration("OXA_GEN\\((STATIC|INDEXED|INDEXLAST), (\\w+)\\);.*");
    std::set<std::string> names;
    std::smatch match;
    for (std::string line; std::getline(header, line);)
        if (std::regex_match(line, match, declaration)) {
            const std::string name = match[2];
            if (!name.starts_with("Default_") || name.find("_GenCDU") != std::string::npos)
                names.insert(name);
        }
    return names;
}

TEST(ProfileGenerators, AreAllThatAreExported) {
    std::set<std::string> names;
    for (const Generator &generator : Generators())
        EXPECT_TRUE(names.insert(generator.name).second) << generator.name;
    EXPECT_EQ(names, ExportedGenerators());
    EXPECT_TRUE(names.contains("Quorral_GenPSUSypplyDR")); // spelled so
}

struct Table {
    const char *first; // the generator of its first row; the others follow it in Generators()
    const StaticGenFn *rows;
    uint8_t count;
    size_t wanted;
};

TEST(ProfileTables, HoldTheirGeneratorsInOrderAndTellHowMany) {
    const Table tables[] = {
        {"Kestrin_GenCPUTjmaxSDR", atGenKestrinStaticSDRTab, ucKestrinStaticSDRCnt, 40},
        {"Kestrin_GenENTEMPSDR", atGenKestrinRMCStaticSDRTab, ucKestrinRMCStaticSDRCnt, 2},
        {"Kestrin_GenCDUInletTempSDR", atKestrinCDUSDRTab, ucKestrinCDUSDRCnt, 14},
        {"Default_GenCDUInletTempSDR", atGenDefaultCDUSDRTab, ucDefaultCDUSDRCnt, 12},
        {"Pellago_GenCPUPowerSDR", atGenPellagoStaticSDRTab, ucPellagoStaticSDRCnt, 21},
        {"Vorana_GenFanRedundancySDR", atGenVoranaStaticSDRTab, ucVoranaStaticSDRCnt, 24},
        {"Astrel_GenFanRedundancySDR", atGenAstrelStaticSDRTab, ucAstrelStaticSDRCnt, 21},
        {"Quorral_GenCPUPowerSDR", atGenQuorralStaticSDRTab, ucQuorralStaticSDRCnt, 28},
        {"Lumora_GenInletTempSDR", atGenLumoraStaticSDRTab, ucLumoraStaticSDRCnt, 28},
        {"Durnow_GenHDDTotalPowerSDR", atGenDurnowStaticSDRTab, ucDurnowStaticSDRCnt, 19},
        {"Ferrisk_GenCPUPowerSDR", atGenFerriskStaticSDRTab, ucFerriskStaticSDRCnt, 25},
    };
    for (const Table &table : tables) {
        SCOPED_TRACE(table.first);
        ASSERT_EQ(table.count, table.wanted);
        const Generator *generator = &FindGenerator(table.first);
        for (size_t row = 0; row < table.wanted; ++row, ++generator) {
            sim::Start(GeneratorBoard());
            const Built by_row = Build(table.rows[row]);
            EXPECT_EQ(by_row.record.Name(), generator->sensor) << row;
            EXPECT_EQ(by_row.record, Build(*generator).record) << row;
        }
    }
}

TEST(ProfileGenerators, TheResultIsTheWholeLengthOfTheRecord) {
    for (const Generator &generator : Generators()) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        const Built built = Build(generator);
        ASSERT_NE(built.result, 0);
        EXPECT_EQ(built.record.Name(), generator.sensor);
        EXPECT_EQ(built.result, (built.record.sdr[3] == 1 ? 48 : 32) + generator.sensor.size());
        EXPECT_EQ(built.result, built.record.sdr[4] + 5);
        EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
    }
}

TEST(ProfileGenerators, ANullSlotOrEntryIsCountedToldAndGivesNothing) {
    for (const Generator &generator : Generators()) {
        for (const bool null_slot : {true, false}) {
            SCOPED_TRACE(generator.name + (null_slot ? " without slot" : " without entry"));
            sim::Start(GeneratorBoard());
            Bytes slot(64, kUntouched);
            DevTabEntry entry = {};
            EXPECT_EQ(generator.call(null_slot ? nullptr : slot.data(), null_slot ? &entry : nullptr), 0);
            EXPECT_EQ(slot, Bytes(64, kUntouched));
            ASSERT_EQ(sim::Trace().size(), 2u); // nothing is asked of the platform
            const sim::Event &stat = sim::Trace()[0], &error = sim::Trace()[1];
            EXPECT_EQ(stat.kind, sim::Kind::kStat);
            EXPECT_EQ(stat.file, generator.File());
            EXPECT_EQ(error.kind, sim::Kind::kLog);
            EXPECT_EQ(error.level, sim::Level::kError);
            EXPECT_EQ(error.number, 42u);
            EXPECT_EQ(error.file, generator.File());
            EXPECT_EQ(error.function, generator.name);
            EXPECT_EQ(error.text, generator.name + " failed! The input parameter is null.");
        }
    }
}

// ---- already stored ---------------------------------------------------------------------------------------

enum class Exist { kSilent, kSaid, kOpen };

// Whether a stored record is spoken about: not by the processor, memory and disk generators, not by the
// sensors that only one profile has, not by those of the liquid-cooling unit.
Exist ExistHabit(const Generator &generator) {
    const std::string suffix = generator.Suffix();
    if (suffix.starts_with("CDU") ||
        OneOf(suffix,
              {"CPUPowerSDR", "CPUTotalPowerSDR", "MEMPowerSDR", "MEMTotalPowerSDR", "CPUCOREVoltageSDR",
               "CPU0D0N2SDR", "CPU0D1N2SDR", "CPU1D0N2SDR", "CPU1D1N2SDR", "DiskStatusSDR"}))
        return Exist::kSilent;
    if (OneOf(suffix,
              {"RackPowerSDR", "ENTEMPSDR", "GPUBoardPowerSDR", "PDBBoardPowerSDR", "NICPowerSDR",
               "SYS54VoltSDR", "GPU54VoltSDR", "CPUSinglePowerSDR", "TotalPowerSDR", "FrontBPTempSDR",
               "RearBPTempSDR", "FrontBp12VSDR", "RearBp12VSDR", "CPUVcoreCurrentSDR", "CPUVcore1CurrentSDR",
               "CPUVSOCCurrentSDR", "CPUDDRVdd1CurrentSDR", "CpuxMEMG0HotSDR"}) ||
        generator.name == "Kestrin_GenSwitchBoardPowerSDR")
        return Exist::kSilent;
    // Sensors of one profile that no other text speaks of: either habit would do.
    if (OneOf(suffix, {"CPUTjmaxSDR", "CPUTControlSDR", "CPUDTSTempSDR", "CPUxVRPwrSDR", "PxDIMMVRPwrSDR",
                       "PwrModuleTempSDR", "UBBRTTempSDR", "SwitchGTempSDR"}))
        return Exist::kOpen;
    return Exist::kSaid;
}

Line ExistText(const Generator &generator) {
    const std::string suffix = generator.Suffix(), text = " sensor already exist!";
    if (OneOf(suffix,
              {"InputVoltsSDR", "OutputVoltsSDR", "PSVinSDR", "PSVoutSDR", "PSUVinSDR", "PSUVoutSDR"}))
        return {'W', 42, generator.name + text + "\n"};
    if (suffix == "SwitchBoardTempSDR") // the volts generator's text
        return {'W', 42, generator.Prefix() + "SwitchBoardVoltsSDR" + text};
    if (suffix == "LanSwitchBoardTempSDR")
        return {'I', 42, "Default_GenSwitchBoardVoltsSDR" + text};
    if (suffix == "SYS12VSDR")
        return {'I', 42, "The SYS_12V already exists in fru."};
    return {'I', 42, generator.name + text};
}

TEST(ProfileGenerators, ARecordThatIsStoredAlreadyIsNotWrittenAgain) {
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
        std::vector<Line> about; // what is said from the find on
        for (const Line &line : Lines())
            if (!about.empty() || line.text == "This sensor is already exist!")
                about.push_back(line);
        const Exist habit = ExistHabit(generator);
        if (habit == Exist::kOpen)
            continue;
        std::vector<Line> expected = {{'I', 42, "This sensor is already exist!"}};
        if (habit == Exist::kSaid)
            expected.push_back(ExistText(generator));
        EXPECT_EQ(about, expected);
    }
}

} // namespace
