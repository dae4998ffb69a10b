// SPDX-License-Identifier: GPL-3.0-or-later
//
// The liquid-cooling sets of Default (18 records) and Kestrin (24 records): bytes, order, switch, lines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAreArray;
using testing::IsEmpty;

sim::Board CduBoard(uint8_t enable = 1) {
    sim::Board board;
    board.board_id = 0x1234;
    board.cdu_enable = enable;
    return board;
}

// ---- the 42 records ---------------------------------------------------------------------------------------

struct Analog {
    const char *name;
    uint8_t instance, type, units1, base, modifier, m, exponents, maximum, minimum, item, index;
};
Record Expected(const Analog &a, uint8_t code) {
    const std::string name = a.name;
    Record r{Bytes(64), Bytes(32)};
    const auto length = static_cast<uint8_t>(name.size());
    const Bytes head = {0,    0,    0x51,   1,    static_cast<uint8_t>(43 + length),
                        0x20, 0,    0,      0xE4, a.instance,
                        0x7F, 0x68, a.type, 0x01};
    std::copy(head.begin(), head.end(), r.sdr.begin());
    r.sdr[20] = a.units1;
    r.sdr[21] = a.base;
    r.sdr[22] = a.modifier;
    r.sdr[24] = a.m;
    r.sdr[29] = a.exponents;
    r.sdr[34] = a.maximum;
    r.sdr[35] = a.minimum;
    r.sdr[42] = r.sdr[43] = 3;
    r.sdr[47] = static_cast<uint8_t>(0xC0 + length);
    std::fill(r.sdr.begin() + 48, r.sdr.end(), 0xFF);
    std::copy(name.begin(), name.end(), r.sdr.begin() + 48);
    r.entry[0] = code;
    r.entry[1] = a.item;
    r.entry[3] = a.index;
    r.entry[5] = 0x80;
    const Bytes tail = {0xFF, 0xE4, a.instance, 0x7F, a.type, 0x01, a.m};
    std::copy(tail.begin(), tail.end(), r.entry.begin() + 20);
    return r;
}
Record Detector(const std::string &name, uint8_t item) {
    Record r{
        Literal("00 00 51 02 00 20 00 00 E4 E0 67 40 0A 03 00x4 FF FF 00x3 11 00 01 01 00x4 00 FFx16 00x16"),
        Literal("8F 00 00x3 80 00x14 FF E4 E0 67 0A 03 00x6")};
    r.sdr[4] = static_cast<uint8_t>(27 + name.size());
    r.sdr[31] = static_cast<uint8_t>(0xC0 + name.size());
    std::copy(name.begin(), name.end(), r.sdr.begin() + 32);
    r.entry[1] = item;
    return r;
}

std::vector<Record> DefaultSet() {
    const Analog rows[] = {
        {"CDU_INLET_TEMP", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0x7F, 0x80, 1, 0},
        {"CDU_DEW_TEMP", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0x7F, 0x80, 2, 0},
        {"CDU_SUPPLY_TEMP", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0x7F, 0x80, 3, 0},
        {"CDU_DIFF_TEMP", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0x7F, 0x80, 4, 0},
        {"CDU_ENV_HUMI", 0xE0, 0x15, 0x01, 0, 0, 1, 0x00, 0xFF, 0x00, 5, 0},
        {"CDU_SET_FAN_SPD", 0xE0, 0x04, 0x01, 0, 0, 1, 0x00, 0xFF, 0x00, 6, 0},
        {"CDU_SUPPLY_PRESS", 0xE0, 0x0B, 0x00, 14, 0, 100, 0x00, 0xFF, 0x00, 7, 0},
        {"CDU_FLOW_RATE", 0xE0, 0x0B, 0x02, 37, 23, 1, 0x00, 0xFF, 0x00, 8, 0},
        {"CDU_RETURN_TEMP", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0x7F, 0x80, 10, 0},
        {"CDU_RETURN_PRESS", 0xE0, 0x0B, 0x00, 14, 0, 4, 0x00, 0xFF, 0x00, 11, 0},
        {"CDU_DIFF_PRESS", 0xE0, 0x0B, 0x00, 14, 0, 4, 0x00, 0xFF, 0x00, 12, 0},
        {"CDU_EC_us/cm", 0xE0, 0x0B, 0x00, 0, 0, 8, 0x00, 0xFF, 0x00, 13, 0},
        {"CDU_FAN_SPD_01", 0xE1, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
        {"CDU_FAN_SPD_02", 0xE2, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
        {"CDU_FAN_SPD_03", 0xE3, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
        {"CDU_FAN_SPD_04", 0xE4, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
        {"CDU_FAN_SPD_05", 0xE5, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
        {"CDU_FAN_SPD_06", 0xE6, 0x04, 0x00, 18, 0, 100, 0x00, 0xFF, 0x00, 9, 0},
    };
    std::vector<Record> set;
    for (const Analog &row : rows)
        set.push_back(Expected(row, 0xA6));
    return set;
}

std::vector<Record> KestrinSet() {
    const Analog first[] = {
        {"CDU_Inlet_Temp", 0xE0, 0x01, 0x80, 1, 0, 1, 0x00, 0xFF, 0x00, 1, 0},
        {"CDU_Coolant_Tin", 0xE0, 0x01, 0x80, 1, 0, 7, 0x00, 0x7F, 0x80, 2, 0},
        {"CDU_Coolant_Tout", 0xE0, 0x01, 0x80, 1, 0, 7, 0x00, 0x7F, 0x80, 3, 0},
        {"CDU_Flow_Rate", 0xE0, 0x0B, 0x02, 37, 23, 5, 0xE0, 0xFF, 0x00, 4, 0},
        {"CDU_Supply_Press", 0xE0, 0x0B, 0x00, 14, 0, 5, 0xE0, 0xFF, 0x00, 5, 0},
        {"CDU_Return_Press", 0xE0, 0x0B, 0x00, 14, 0, 5, 0xE0, 0xFF, 0x00, 6, 0},
        {"CDU_PS_Out_Power", 0xE0, 0x08, 0x00, 6, 0, 11, 0x00, 0xFF, 0x00, 7, 0},
        {"CDU_Fan_Power", 0xE0, 0x08, 0x00, 6, 0, 6, 0x00, 0xFF, 0x00, 8, 0},
        {"CDU_Pump_Power", 0xE0, 0x08, 0x00, 6, 0, 4, 0x00, 0xFF, 0x00, 9, 0},
    };
    const Analog last[] = {
        {"CDU_Fan1_Speed", 0xE1, 0x04, 0x00, 18, 0, 28, 0x00, 0xFF, 0x00, 10, 1},
        {"CDU_Fan2_Speed", 0xE2, 0x04, 0x00, 18, 0, 28, 0x00, 0xFF, 0x00, 10, 2},
        {"CDU_Fan3_Speed", 0xE3, 0x04, 0x00, 18, 0, 28, 0x00, 0xFF, 0x00, 10, 3},
        {"CDU_Fan4_Speed", 0xE4, 0x04, 0x00, 18, 0, 28, 0x00, 0xFF, 0x00, 10, 4},
        {"CDU_PS1_Vin", 0xE1, 0x02, 0x00, 4, 0, 1, 0x00, 0xFF, 0x00, 11, 1},
        {"CDU_PS1_Vout", 0xE1, 0x02, 0x00, 4, 0, 25, 0xE0, 0xFF, 0x00, 12, 1},
        {"CDU_PS1_Iout", 0xE1, 0x03, 0x00, 5, 0, 2, 0xF0, 0xFF, 0x00, 13, 1},
        {"CDU_PS2_Vin", 0xE2, 0x02, 0x00, 4, 0, 1, 0x00, 0xFF, 0x00, 11, 2},
        {"CDU_PS2_Vout", 0xE2, 0x02, 0x00, 4, 0, 25, 0xE0, 0xFF, 0x00, 12, 2},
        {"CDU_PS2_Iout", 0xE2, 0x03, 0x00, 5, 0, 2, 0xF0, 0xFF, 0x00, 13, 2},
    };
    std::vector<Record> set;
    for (const Analog &row : first)
        set.push_back(Expected(row, 0x8F));
    const char *const detectors[] = {"CDU_LQD_Leakage", "CDU_LQD_Level", "CDU_LQD_Flow", "CDU_LQD_PRESS_H",
                                     "CDU_LQD_PRESS_L"};
    for (uint8_t i = 0; i < 5; ++i)
        set.push_back(Detector(detectors[i], static_cast<uint8_t>(14 + i)));
    for (const Analog &row : last)
        set.push_back(Expected(row, 0x8F));
    return set;
}

struct Set {
    const char *name;
    Driver driver;
    std::vector<Record> records;
};
inline std::ostream &operator<<(std::ostream &out, const Set &set) {
    return out << set.name;
}
class LiquidCooling : public testing::TestWithParam<Set> {};
INSTANTIATE_TEST_SUITE_P(Sets, LiquidCooling,
                         testing::Values(Set{"Default", OXA_AddDefaultStaticSensor, DefaultSet()},
                                         Set{"Kestrin", OXA_AddKestrinStaticSensor, KestrinSet()}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_P(LiquidCooling, TheSetStandsAtTheEndOfThePassByteForByte) {
    const Outcome off = RunPass(GetParam().driver, CduBoard(0)), on = RunPass(GetParam().driver, CduBoard(1));
    std::vector<Record> expected = off.records;
    expected.insert(expected.end(), GetParam().records.begin(), GetParam().records.end());
    EXPECT_TRUE(SameRecords(expected, on.records));
    EXPECT_EQ(on.count, off.count + GetParam().records.size());
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST_P(LiquidCooling, OnlyTheValueOneSwitchesItOn) {
    const Outcome off = RunPass(GetParam().driver, CduBoard(0));
    const auto lines = Lines();
    for (const uint8_t enable : {2, 0x81, 255}) {
        EXPECT_TRUE(SameRecords(off.records, RunPass(GetParam().driver, CduBoard(enable)).records))
            << +enable;
        EXPECT_EQ(Lines(), lines);
    }
}

TEST_P(LiquidCooling, AFailedConfigurationAddsNothingAndSaysNothing) {
    const Outcome off = RunPass(GetParam().driver, CduBoard(0));
    const auto lines = Lines();
    for (const uint64_t left : {0x00, 0x01, 0xA5}) {
        sim::Start(CduBoard(1));
        std::filesystem::remove(sim::RealPath(kStorePath));
        sim::AddFault({.call = "IPMI_GetCduManageConfig", .output = left});
        EXPECT_TRUE(SameRecords(off.records, RunPass(GetParam().driver).records));
        EXPECT_EQ(Lines(), lines);
    }
}

TEST_P(LiquidCooling, EveryStoredRecordAloneIsSkippedSilently) {
    const Outcome clean = RunPass(GetParam().driver, CduBoard(1));
    const size_t first = clean.records.size() - GetParam().records.size();
    for (size_t i = first; i < clean.records.size(); ++i) {
        SCOPED_TRACE(clean.records[i].Name());
        sim::Start(CduBoard(1));
        Store({clean.records[i]});
        const Outcome outcome = RunPass(GetParam().driver);
        std::vector<Record> expected = clean.records;
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_TRUE(SameRecords(expected, outcome.records));
        EXPECT_EQ(outcome.count, clean.count - 1);
        size_t about = 0;
        for (const Line &line : Lines())
            about += line.text.find("already") != std::string::npos ? 1 : 0;
        EXPECT_EQ(about, 1u); // the store's own line
    }
}

TEST_P(LiquidCooling, ASecondPassOverAFullStoreAddsNoneOfThem) {
    const Outcome clean = RunPass(GetParam().driver, CduBoard(1));
    sim::Start(CduBoard(1));
    Store(clean.records);
    EXPECT_EQ(RunPass(GetParam().driver).count, 0);
}

// ---- by hand ----------------------------------------------------------------------------------------------

void ExpectByHand(const std::vector<Record> &set, const char *name, const char *sdr, const char *entry) {
    SCOPED_TRACE(name);
    for (const Record &record : set)
        if (record.Name() == name) {
            EXPECT_TRUE(SameRecord({Literal(sdr), Literal(entry)}, record));
            return;
        }
    ADD_FAILURE() << "not built";
}

TEST(LiquidCoolingByHand, EightRecords) {
    const auto ours = RunPass(OXA_AddDefaultStaticSensor, CduBoard(1)).records;
    ExpectByHand(
        ours, "CDU_EC_us/cm",
        "00 00 51 01 37 20 00 00 E4 E0 7F 68 0B 01 00 00 00 00 00 00 00 00 00 00 08 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CC 'CDU_EC_us/cm' FF FF FF FF",
        "A6 0D 00 00 00 80 00x14 FF E4 E0 7F 0B 01 08 00x5");
    ExpectByHand(
        ours, "CDU_FLOW_RATE",
        "00 00 51 01 38 20 00 00 E4 E0 7F 68 0B 01 00 00 00 00 00 00 02 25 17 00 01 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CD 'CDU_FLOW_RATE' FF FF FF",
        "A6 08 00 00 00 80 00x14 FF E4 E0 7F 0B 01 01 00x5");
    ExpectByHand(
        ours, "CDU_FAN_SPD_06",
        "00 00 51 01 39 20 00 00 E4 E6 7F 68 04 01 00 00 00 00 00 00 00 12 00 00 64 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CE 'CDU_FAN_SPD_06' FF FF",
        "A6 09 00 00 00 80 00x14 FF E4 E6 7F 04 01 64 00x5");
    ExpectByHand(
        ours, "CDU_ENV_HUMI",
        "00 00 51 01 37 20 00 00 E4 E0 7F 68 15 01 00 00 00 00 00 00 01 00 00 00 01 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CC 'CDU_ENV_HUMI' FF FF FF FF",
        "A6 05 00 00 00 80 00x14 FF E4 E0 7F 15 01 01 00x5");
    const auto theirs = RunPass(OXA_AddKestrinStaticSensor, CduBoard(1)).records;
    ExpectByHand(
        theirs, "CDU_Inlet_Temp", // signed with the unsigned range
        "00 00 51 01 39 20 00 00 E4 E0 7F 68 01 01 00 00 00 00 00 00 80 01 00 00 01 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CE 'CDU_Inlet_Temp' FF FF",
        "8F 01 00 00 00 80 00x14 FF E4 E0 7F 01 01 01 00x5");
    ExpectByHand(
        theirs, "CDU_LQD_PRESS_H",
        "00 00 51 02 2A 20 00 00 E4 E0 67 40 0A 03 00 00 00 00 FF FF 00 00 00 11 00 01 01 00 00 00 00 CF 'CDU_LQD_PRESS_H' FF 00x16",
        "8F 11 00 00 00 80 00x14 FF E4 E0 67 0A 03 00 00x5");
    ExpectByHand(
        theirs, "CDU_Fan3_Speed",
        "00 00 51 01 39 20 00 00 E4 E3 7F 68 04 01 00 00 00 00 00 00 00 12 00 00 1C 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CE 'CDU_Fan3_Speed' FF FF",
        "8F 0A 00 03 00 80 00x14 FF E4 E3 7F 04 01 1C 00x5");
    ExpectByHand(
        theirs, "CDU_PS2_Iout",
        "00 00 51 01 37 20 00 00 E4 E2 7F 68 03 01 00 00 00 00 00 00 00 05 00 00 02 00 00 00 00 F0 00 00 00 00 FF 00 00 00 00 00 00 00 03 03 00 00 00 CC 'CDU_PS2_Iout' FF FF FF FF",
        "8F 0D 00 02 00 80 00x14 FF E4 E2 7F 03 01 02 00x5");
}

// ---- lines ------------------------------------------------------------------------------------------------

std::vector<Line> CduLines(Driver driver) {
    RunPass(driver, CduBoard(1));
    std::vector<Line> lines;
    for (const Line &line : Lines())
        if (line.text.find("CDU") != std::string::npos)
            lines.push_back(line);
    return lines;
}

TEST(LiquidCoolingLines, OfDefault) {
    const int before = RunPass(OXA_AddDefaultStaticSensor, CduBoard(0)).count;
    std::vector<Line> expected;
    for (int row = 0; row < 12; ++row)
        expected.push_back({'I', 42,
                            "OXA_AddDefaultCDUSensor: ucIndex = " + std::to_string(row) +
                                ", ucCnt = " + std::to_string(before + row) + "!"});
    for (int fan = 1; fan <= 6; ++fan)
        expected.push_back({'I', 42,
                            "OXA_AddDefaultStaticSensor for CDU: ucIndex = " + std::to_string(fan) +
                                ", ucCnt = " + std::to_string(before + 11 + fan) + "!"});
    EXPECT_THAT(CduLines(OXA_AddDefaultStaticSensor), ElementsAreArray(expected));
}

TEST(LiquidCoolingLines, OfKestrin) {
    int count = RunPass(OXA_AddKestrinStaticSensor, CduBoard(0)).count;
    std::vector<Line> expected;
    const auto add = [&](const std::string &who, int index) {
        expected.push_back(
            {'I', 42,
             who + ": ucIndex = " + std::to_string(index) + ", ucCnt = " + std::to_string(count++) + "!"});
    };
    for (int row = 0; row < 14; ++row)
        add("OXA_AddKestrinCDUSensor", row);
    for (int fan = 1; fan <= 4; ++fan)
        add("Kestrin_GenCDUFanSpeedSDR for CDU", fan);
    for (int supply : {1, 2}) {
        add("Kestrin_GenCDUPsVinSDR for CDU", supply);
        add("Kestrin_GenCDUPsVoutSDR for CDU", supply);
        add("Kestrin_GenCDUPsIoutSDR for CDU", supply);
    }
    EXPECT_THAT(CduLines(OXA_AddKestrinStaticSensor), ElementsAreArray(expected));
    EXPECT_EQ(Lines().back(), (Line{'I', 42, "AddKestrinSensor: ucCnt = " + std::to_string(count) + "!"}));
}

TEST(LiquidCoolingOrder, DefaultPutsTheSwitchBoardTemperaturesBehindAndKestrinBefore) {
    sim::Board board = CduBoard(1);
    board.board_id = 0x5502;
    board.switch_board.supported = true;
    board.switch_board.cards[2] = {true, 0x5504};
    EXPECT_EQ(RunPass(OXA_AddDefaultStaticSensor, board).Names().back(), "SW_OUTPUT_T_02");
    EXPECT_EQ(RunPass(OXA_AddKestrinStaticSensor, board).Names().back(), "CDU_PS2_Iout");
}

} // namespace
