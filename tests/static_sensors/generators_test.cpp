// SPDX-License-Identifier: GPL-3.0-or-later
//
// What every exported generator has in common: one test over all of a profile's for each rule.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "oxa/exports.h"
#include "static_sensors/generators.h"
#include "support/build_facts.h"

namespace {

using namespace tests;

class ExportedGenerators : public testing::TestWithParam<Profile> {};
INSTANTIATE_TEST_SUITE_P(Profiles, ExportedGenerators, testing::ValuesIn(Profiles()), ProfileName);

// ---- the list and the tables ------------------------------------------------------------------------------

// What the headers of the profiles declare: function and shape.
std::set<std::pair<std::string, std::string>> DeclaredGenerators() {
    const std::regex comment(R"(/\*[^*]*\*+(?:[^/*][^*]*\*+)*/)");
    const std::regex declaration(R"(uint8_t\s+(\w+)\(([^)]*)\);)");
    std::set<std::pair<std::string, std::string>> declared;
    for (const auto &file : std::filesystem::directory_iterator(tests::InSource("include/oxa/profiles"))) {
        std::ifstream header(file.path());
        std::stringstream whole;
        whole << header.rdbuf();
        const std::string text = std::regex_replace(whole.str(), comment, "");
        for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at) {
            const std::string arguments = (*at)[2];
            const bool first = arguments.starts_with("uint8_t ucIndex");
            const bool last = arguments.ends_with("uint8_t ucIndex");
            declared.insert({(*at)[1], first ? "indexed" : last ? "indexed_last" : "static"});
        }
    }
    return declared;
}

TEST(GeneratorList, HoldsAllThatAreExportedWithTheirShape) {
    const std::set<std::pair<std::string, std::string>> exported = DeclaredGenerators();
    std::set<std::pair<std::string, std::string>> listed;
    for (const Generator &generator : Generators())
        EXPECT_TRUE(listed.insert({generator.name, generator.shape}).second) << generator.name;
    EXPECT_EQ(listed, exported);
    EXPECT_EQ(listed.size(), 392u);
    EXPECT_TRUE(listed.contains({"Quorral_GenPSUSypplyDR", "indexed"})); // spelled so
}

struct Table {
    const char *profile, *table; // as the list has them
    const StaticGenFn *rows;
    uint8_t count;
    size_t wanted;
};

TEST(GeneratorTables, HoldTheirGeneratorsInOrderAndTellHowMany) {
    const Table tables[] = {
        {"Default", "table", atGenDefaultStaticSDRTab, ucDefaultStaticSDRCnt, 26},
        {"Default", "unit", atGenDefaultCDUSDRTab, ucDefaultCDUSDRCnt, 12},
        {"Kestrin", "table", atGenKestrinStaticSDRTab, ucKestrinStaticSDRCnt, 40},
        {"Kestrin", "rack", atGenKestrinRMCStaticSDRTab, ucKestrinRMCStaticSDRCnt, 2},
        {"Kestrin", "unit", atKestrinCDUSDRTab, ucKestrinCDUSDRCnt, 14},
        {"Pellago", "table", atGenPellagoStaticSDRTab, ucPellagoStaticSDRCnt, 21},
        {"Vorana", "table", atGenVoranaStaticSDRTab, ucVoranaStaticSDRCnt, 24},
        {"Astrel", "table", atGenAstrelStaticSDRTab, ucAstrelStaticSDRCnt, 21},
        {"Quorral", "table", atGenQuorralStaticSDRTab, ucQuorralStaticSDRCnt, 28},
        {"Lumora", "table", atGenLumoraStaticSDRTab, ucLumoraStaticSDRCnt, 28},
        {"Durnow", "table", atGenDurnowStaticSDRTab, ucDurnowStaticSDRCnt, 19},
        {"Ferrisk", "table", atGenFerriskStaticSDRTab, ucFerriskStaticSDRCnt, 25},
    };
    for (const Table &table : tables) {
        SCOPED_TRACE(std::string(table.profile) + " " + table.table);
        ASSERT_EQ(table.count, table.wanted);
        size_t row = 0;
        for (const Generator &generator : GeneratorsOf(FindProfile(table.profile))) {
            if (generator.table != table.table)
                continue;
            ASSERT_LT(row, table.wanted);
            sim::Start(GeneratorBoard());
            EXPECT_TRUE(SameRecord(generator.record, Build(table.rows[row]).record)) << row;
            EXPECT_TRUE(SameRecord(generator.record, Build(generator).record)) << row;
            ++row;
        }
        EXPECT_EQ(row, table.wanted);
    }
}

// ---- one call ---------------------------------------------------------------------------------------------

TEST_P(ExportedGenerators, WriteTheModelsRecordAndReturnItsWholeLength) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        const Built built = Build(generator);
        ASSERT_NE(built.result, 0);
        EXPECT_TRUE(SameRecord(generator.record, built.record));
        EXPECT_EQ(built.record.Name(), generator.sensor);
        EXPECT_EQ(built.result, (built.record.sdr[3] == 1 ? 48 : 32) + generator.sensor.size());
        EXPECT_EQ(built.result, built.record.sdr[4] + 5);
        EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
    }
}

TEST_P(ExportedGenerators, ANullSlotOrEntryIsCountedToldAndGivesNothing) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        for (const bool null_slot : {true, false}) {
            SCOPED_TRACE(generator.name + (null_slot ? " without slot" : " without entry"));
            sim::Start(GeneratorBoard());
            Bytes slot(64, kUntouched);
            DevTabEntry entry = {};
            EXPECT_EQ(generator.Call(null_slot ? nullptr : slot.data(), null_slot ? &entry : nullptr), 0);
            EXPECT_EQ(slot, Bytes(64, kUntouched));
            EXPECT_EQ(sim::Trace().size(), 2u); // nothing is asked of the platform
            EXPECT_EQ(AllLines(GetParam().File()),
                      (LineList{"stat", "error 42 " + generator.name + ": " + generator.name +
                                            " failed! The input parameter is null."}));
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
               "CPU0D0N2SDR", "CPU0D1N2SDR", "CPU1D0N2SDR", "CPU1D1N2SDR", "DiskStatusSDR", "HDDStatusSDR"}))
        return Exist::kSilent;
    if (OneOf(suffix,
              {"RackPowerSDR",         "ENTEMPSDR",          "GPUBoardPowerSDR",    "PDBBoardPowerSDR",
               "NICPowerSDR",          "SYS54VoltSDR",       "GPU54VoltSDR",        "CPUSinglePowerSDR",
               "TotalPowerSDR",        "FrontBPTempSDR",     "RearBPTempSDR",       "FrontBp12VSDR",
               "RearBp12VSDR",         "CPUVcoreCurrentSDR", "CPUVcore1CurrentSDR", "CPUVSOCCurrentSDR",
               "CPUDDRVdd1CurrentSDR", "CpuxMEMG0HotSDR",    "HDDTempSDR",          "SwitchGTempSDR"}) ||
        generator.name == "Kestrin_GenSwitchBoardPowerSDR")
        return Exist::kSilent;
    // Sensors of one profile that no other text speaks of: either habit would do.
    if (OneOf(suffix, {"CPUTjmaxSDR", "CPUTControlSDR", "CPUDTSTempSDR", "CPUxVRPwrSDR", "PxDIMMVRPwrSDR",
                       "PwrModuleTempSDR", "UBBRTTempSDR"}))
        return Exist::kOpen;
    return Exist::kSaid;
}

Line ExistText(const Generator &generator) {
    const std::string suffix = generator.Suffix(), text = " sensor already exist!";
    if (OneOf(suffix,
              {"InputVoltsSDR", "OutputVoltsSDR", "PSVinSDR", "PSVoutSDR", "PSUVinSDR", "PSUVoutSDR"}))
        return {'W', 42, generator.name + text + "\n"};
    if (suffix == "CPUProchotSDR")
        return {'I', 42, generator.name + text + "\n"};
    if (suffix == "SwitchBoardTempSDR") // the volts generator's text
        return {'W', 42, generator.Prefix() + "SwitchBoardVoltsSDR" + text};
    if (suffix == "LanSwitchBoardTempSDR")
        return {'I', 42, "Default_GenSwitchBoardVoltsSDR" + text};
    if (suffix == "SYS12VSDR" || suffix == "VCC12VSDR")
        return {'I', 42, "The " + generator.sensor + " already exists in fru."};
    return {'I', 42, generator.name + text};
}

TEST_P(ExportedGenerators, WriteARecordThatIsStoredAlreadyNotAgain) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
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

// The name field of the same record in the other kind, and of a name that only begins alike.
TEST_P(ExportedGenerators, TakeARecordOfTheOtherTypeOrALongerNameForAnother) {
    for (const Generator &generator : GeneratorsOf(GetParam())) {
        SCOPED_TRACE(generator.name);
        sim::Start(GeneratorBoard());
        Record other = generator.record, longer = generator.record;
        const size_t at = other.sdr[3] == 1 ? 47 : 31;
        other.sdr[3] = other.sdr[3] == 1 ? 2 : 1;
        const size_t length = generator.sensor.size();
        if (length < 16) {
            longer.sdr[at] = static_cast<uint8_t>(0xC0 + length + 1);
            longer.sdr[at + 1 + length] = 'X';
        }
        Store(length < 16 ? std::vector{other, longer} : std::vector{other});
        EXPECT_NE(Build(generator).result, 0);
    }
}

} // namespace
