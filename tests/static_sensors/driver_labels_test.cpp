// SPDX-License-Identifier: GPL-3.0-or-later
//
// How each profile's driver calls the records that it builds itself: in the names of the records and in every line about
// them.  Typed from the rules, profile by profile.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

// The names on SmallBoard(): processor 1, DIMM A0, fan 1, disk 3, card 1, power supply 1.
struct Labels {
    const char *profile;
    const char *cpu_temp, *vr_temp, *cpu_status;
    const char *dimm_temp, *dimm_status;
    const char *fan, *nvme, *card_temp, *card_error; // fan: nullptr where the profile has no fan pass
    const char *vr_refused;                          // what a refusal of the VR temperature says
    const char *vin, *vout;                          // of the driver's own; nullptr: a generator of its own
};
const Labels kLabels[] = {
    // clang-format off
    {"Default", "CPU_TEMP_01", "CPU_VR_TEMP_01", "CPU_STATUS_01", "MEM_TEMP_A0", "MEM_STATUS_A0", "FAN_STATUS_01", "NVME_TEMP_03", "OCP_TEMP_01", "OCP_ERR_01", "CPU_VR_TEMP_0x", nullptr, nullptr},
    {"Kestrin", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", "SYS_Fan1_Present", "NVME3_Temp", "OCP1_Temp", "OCP1_Err", "CPUx_VR_Temp", nullptr, nullptr},
    {"Pellago", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", "FAN1_Status", "NVME_TEMP_03", "OCP1_Temp", "OCP1_Err", "CPUx_VR_Temp", "PSU1_Vin", "PSU1_Vout"},
    {"Vorana", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", nullptr, "NVME3_Temp", "NIC1_Temp", "NIC1_Err", "CPUx_VR_Temp", nullptr, nullptr},
    {"Astrel", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", "Fan1_Status", "NVME_TEMP_03", "OCP1_Temp", "OCP1_Err", "CPUx_VR_Temp", nullptr, nullptr},
    {"Quorral", "Cpu1_Temp", "Cpu1_VR_Temp", "Cpu1_Status", "DIMMA0_Temp", "DIMMA0_Status", "FAN1_Status", "NVME_TEMP_03", "OCP1_Temp", "OCP1_Err", "Cpux_VR_Temp", "PSU1_Vin", "PSU1_Vout"},
    {"Lumora", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", nullptr, "NVME3_Temp", "OCP1_Temp", "OCP1_Err", "CPUx_VR_Temp", "PSU1_Vin", "PSU1_Vout"},
    {"Durnow", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", "FAN_STATUS_01", "NVME3_Temp", "OCP1_Temp", "OCP1_Err", "CPUx_VR_Temp", nullptr, nullptr},
    {"Ferrisk", "CPU1_Temp", "CPU1_VR_Temp", "CPU1_Status", "DIMMA0_Temp", "DIMMA0_Status", nullptr, "NVME3_Temp", "NIC1_Temp", "NIC1_Err", "CPUx_VR_Temp", nullptr, nullptr},
    // clang-format on
};

class DriverLabels : public testing::TestWithParam<Profile> {
protected:
    const Labels &labels() const {
        return *std::find_if(std::begin(kLabels), std::end(kLabels),
                             [](const Labels &one) { return GetParam().name == one.profile; });
    }
    static std::string Own(const std::string &suffix) { // "_GenCPUTempSDR" becomes "Kestrin_GenCPUTempSDR"
        return GetParam().name + suffix;
    }
    static Outcome Pass() {
        return RunPass(GetParam().driver);
    }
    static Outcome Pass(const sim::Board &board) {
        return RunPass(GetParam().driver, board);
    }
    // What a pass says of the record that is stored already, with the function that says it in front.
    static LineList SaidWhenStored(const char *sensor) {
        const Outcome clean = Pass(SmallBoard());
        EXPECT_NE(clean.Find(sensor), nullptr) << sensor;
        if (clean.Find(sensor) == nullptr)
            return {};
        sim::Start(SmallBoard());
        Store({*clean.Find(sensor)});
        EXPECT_EQ(Pass().Find(sensor), nullptr) << sensor;
        LineList said;
        for (const std::string &line : LogLines())
            if (line.find(" already exist") != std::string::npos &&
                line.find(": This sensor is already exist!") == std::string::npos)
                said.push_back(line);
        return said;
    }
    static std::string Exists(const char *level, const std::string &speaker, const std::string &named) {
        return std::string(level) + " 42 " + speaker + ": " + named + " sensor already exist!\n";
    }
    // The functions that say this text, in order.
    static LineList Speakers(const std::string &text) {
        LineList speakers;
        for (const sim::Event &event : sim::Logs())
            if (event.text == text)
                speakers.push_back(event.function);
        return speakers;
    }
};
INSTANTIATE_TEST_SUITE_P(Profiles, DriverLabels, testing::ValuesIn(Profiles()), ProfileName);

// ---- names ----------------------------------------------------------------------------------------------------------

TEST_P(DriverLabels, EveryRecordOfTheDriversOwnHasTheProfilesName) {
    const Outcome outcome = Pass(SmallBoard());
    const Labels &own = labels();
    for (const char *name : {own.cpu_temp, own.vr_temp, own.cpu_status, own.dimm_temp, own.dimm_status,
                             own.nvme, own.card_temp, own.card_error})
        EXPECT_EQ(outcome.CountName(name), 1u) << name;
    EXPECT_EQ(own.fan != nullptr, GetParam().fans);
    for (const char *name : {own.fan, own.vin, own.vout})
        EXPECT_EQ(name == nullptr ? 1u : outcome.CountName(name), 1u) << name;
}

// ---- stored already -------------------------------------------------------------------------------------------------

TEST_P(DriverLabels, AStoredCpuTemperatureIsWarnedAboutInTheProfilesName) {
    EXPECT_THAT(SaidWhenStored(labels().cpu_temp),
                ElementsAre(Exists("warn", Own("_GenCPUTempSDR"), Own("_GenCPUTempSDR"))));
}

TEST_P(DriverLabels, AStoredVrTemperatureIsWarnedAboutInTheProfilesName) {
    EXPECT_THAT(SaidWhenStored(labels().vr_temp),
                ElementsAre(Exists("warn", Own("_GenCPUVRTempSDR"), Own("_GenCPUVRTempSDR"))));
}

TEST_P(DriverLabels, AStoredCpuStatusIsToldInTheProfilesName) {
    EXPECT_THAT(SaidWhenStored(labels().cpu_status),
                ElementsAre(Exists("info", Own("_GenCPUStatusSDR"), Own("_GenCPUStatusSDR"))));
}

TEST_P(DriverLabels, AStoredMemoryStatusIsToldWithTheTextOfTheProfilesCpuStatus) {
    EXPECT_THAT(SaidWhenStored(labels().dimm_status),
                ElementsAre(Exists("info", Own("_GenMEMStatusSDR"), Own("_GenCPUStatusSDR"))));
}

TEST_P(DriverLabels, NothingIsSaidOfTheOthersWhenTheyAreStored) {
    const Labels &own = labels();
    for (const char *name : {own.dimm_temp, own.fan, own.nvme, own.card_temp, own.card_error})
        if (name != nullptr) {
            EXPECT_THAT(SaidWhenStored(name), IsEmpty()) << name;
        }
}

TEST_P(DriverLabels, StoredVoltagesOfTheDriversOwnAreWarnedAboutInTheProfilesName) {
    const Labels &own = labels();
    if (own.vin == nullptr)
        return;
    EXPECT_THAT(SaidWhenStored(own.vin),
                ElementsAre(Exists("warn", Own("_GenInputVoltsSDR"), Own("_GenInputVoltsSDR"))));
    EXPECT_THAT(SaidWhenStored(own.vout),
                ElementsAre(Exists("warn", Own("_GenOutputVoltsSDR"), Own("_GenOutputVoltsSDR"))));
}

// ---- refused --------------------------------------------------------------------------------------------------------

TEST_P(DriverLabels, ABoardWithoutVrTemperatureIsWarnedAboutWithTheProfilesName) {
    sim::Board board = SmallBoard();
    board.support.sensors[SENSOR_CPU_VR_TEMP] = 0;
    EXPECT_EQ(Pass(board).CountName(labels().vr_temp), 0u);
    const std::string text =
        std::string("The board does not support adding sensor ") + labels().vr_refused + ".";
    EXPECT_EQ(CountLine({'W', 42, text}), 1u) << testing::PrintToString(Lines());
    EXPECT_THAT(Speakers(text), ElementsAre(Own("_GenCPUVRTempSDR")));
}

TEST_P(DriverLabels, BoardsWithoutPsuVoltagesAreWarnedAboutWithTheProfilesNames) {
    const Labels &own = labels();
    if (own.vin == nullptr)
        return;
    sim::Board board = SmallBoard();
    board.support.kinds[3] = board.support.kinds[4] = 0;
    Pass(board);
    for (const auto &[name, speaker] :
         {std::pair(own.vin, "_GenInputVoltsSDR"), {own.vout, "_GenOutputVoltsSDR"}}) {
        const std::string text = std::string("The board does not support adding sensor ") + name + ".";
        EXPECT_EQ(CountLine({'W', 42, text}), 1u) << testing::PrintToString(Lines());
        EXPECT_THAT(Speakers(text), ElementsAre(Own(speaker)));
    }
}

// ---- failures and facts ---------------------------------------------------------------------------------------------

TEST_P(DriverLabels, AMissingVrBusClientIsToldInTheProfilesName) {
    sim::Start(SmallBoard());
    sim::AddFault({.call = "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", .occurrence = 1, .result = -1});
    EXPECT_EQ(Pass().CountName(labels().vr_temp), 0u);
    const std::string text = Own("_GenCPUVRTempSDR") + " CPUVRTempCoreVolts_GetI2cClientByInstance failed!";
    EXPECT_EQ(CountLine({'W', 255, text}), 1u) << testing::PrintToString(Lines());
    EXPECT_THAT(Speakers(text), ElementsAre(Own("_GenCPUVRTempSDR")));
}

TEST_P(DriverLabels, AFailedQuestionForTheVrTemperatureIsToldInTheProfilesName) {
    sim::Board board = SmallBoard();
    sim::Start(board);
    const std::string text = "HAL_GetSensorNotSupportFlagBySensor(SENSOR_CPU_VR_TEMP, &ucSupportFlag) = [9]";
    sim::AddFault({.call = "HAL_GetSensorNotSupportFlagBySensor", .result = 9, .output = 1});
    EXPECT_EQ(Pass().CountName(labels().vr_temp), 1u);
    EXPECT_EQ(CountLine({'W', 255, text}), 1u);
    EXPECT_THAT(Speakers(text), ElementsAre(Own("_GenCPUVRTempSDR")));
}

TEST_P(DriverLabels, TheBoardIdIsToldInTheNamesOfCpuTemperatureAndStatus) {
    Pass(SmallBoard());
    for (const char *suffix : {"_GenCPUTempSDR", "_GenCPUStatusSDR"}) {
        const std::string text = Own(suffix) + ": sdwRet = 0 wBoardId = 1234!";
        EXPECT_EQ(CountLine({'I', 42, text}), 1u) << testing::PrintToString(Lines());
        EXPECT_THAT(Speakers(text), ElementsAre(Own(suffix)));
    }
}

TEST_P(DriverLabels, AMissingMemoryNameIsToldByTemperatureAndStatus) {
    sim::Start(SmallBoard());
    sim::AddFault({.call = "HAL_GetDimmSensorNameIndex"});
    Pass();
    EXPECT_THAT(Speakers("Get mem sensor name index fail\n"),
                ElementsAre(Own("_GenDIMMTempSDR"), Own("_GenMEMStatusSDR")));
}

// ---- fans that are left out -----------------------------------------------------------------------------------------

size_t FanLines() {
    size_t lines = 0;
    for (const Line &line : Lines())
        lines += line.text.find(" for Fan status: ") != std::string::npos ? 1 : 0;
    return lines;
}

// Default runs a fan pass as well and has no such line.
TEST_P(DriverLabels, AFanThatIsLeftOutHasNoLineOfItsOwn) {
    const size_t per_fan = GetParam().fans && GetParam().name != "Default" ? 1 : 0;
    sim::Board board = BareBoard();
    board.fans = {.count = 3, .silk = {1, 0xFF, 3}};
    Pass(board);
    EXPECT_EQ(FanLines(), 2 * per_fan);
    board.fans.silk = {1, 2, 3};
    Pass(board);
    EXPECT_EQ(FanLines(), 3 * per_fan);
    sim::Start(board);
    sim::AddFault({.call = "HalFanService.GetFanSilkByIndex", .occurrence = 2, .result = 4});
    Pass();
    EXPECT_EQ(FanLines(), 2 * per_fan);
    board.fans.silk = {0xFF, 0xFF, 0xFF};
    Pass(board);
    EXPECT_EQ(FanLines(), 0u);
}

// ---- sensors of a single profile ------------------------------------------------------------------------------------

// What is said of the one record of this name when it is stored already.
class SingleProfile : public testing::Test {
protected:
    static LineList SaidWhenStored(const std::string &profile, const char *sensor) {
        const Driver driver = FindProfile(profile).driver;
        const Outcome clean = RunPass(driver, SmallBoard());
        EXPECT_NE(clean.Find(sensor), nullptr) << sensor;
        if (clean.Find(sensor) == nullptr)
            return {"no record"};
        sim::Start(SmallBoard());
        Store({*clean.Find(sensor)});
        EXPECT_EQ(RunPass(driver).Find(sensor), nullptr);
        LineList said;
        for (const std::string &line : LogLines())
            if (line.find(" already exist") != std::string::npos &&
                line.find(": This sensor is already exist!") == std::string::npos)
                said.push_back(line);
        return said;
    }
};

TEST_F(SingleProfile, QuorralsDiskTemperatureIsPassedOverSilentlyWhenItIsStored) {
    EXPECT_THAT(SaidWhenStored("Quorral", "HDD_Temp"), IsEmpty());
}

TEST_F(SingleProfile, KestrinsSwitchTemperatureIsPassedOverSilentlyWhenItIsStored) {
    EXPECT_THAT(SaidWhenStored("Kestrin", "SwitchG_Temp"), IsEmpty());
}

// ---- the 12 V rail --------------------------------------------------------------------------------------------------

// Ferrisk has no such rail.
TEST_P(DriverLabels, AStored12VRailIsToldWithTheProfilesName) {
    if (GetParam().name == "Ferrisk")
        return;
    const std::string rail = GetParam().name == "Default" ? "VCC12V" : "SYS_12V";
    const std::string speaker = Own(GetParam().name == "Default" ? "_GenVCC12VSDR" : "_GenSYS12VSDR");
    EXPECT_THAT(SaidWhenStored(rail.c_str()),
                ElementsAre("info 42 " + speaker + ": The " + rail + " already exists in fru."));
}

} // namespace
