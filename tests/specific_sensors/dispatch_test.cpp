// SPDX-License-Identifier: GPL-3.0-or-later
//
// Adding one sensor: the table of handlers, what every outcome returns and says, and the session.
#include <functional>
#include <set>

#include "specific_sensors/dispatch_fixture.h"

namespace {

using namespace dispatch;

// ---- the table -------------------------------------------------------------------------------------

TEST(HandlerTable, HasItsRowsInTheirOrder) {
    const struct {
        uint32_t sensor_class;
        GenSpecificSDRFn generator;
    } rows[] = {
        {0x0100, GenSpecificTempSDR},
        {0x0803, GenSpecificPowerSDR},
        {0x0403, GenSpecificFanSpeedSDR},
        {0x1501, GenSpecificCardStatusSDR},
        {0xFF0A, GenFruOfPsuSpecificSDR},
        {0x010B, GenFruOfPurchaseCardSpecificSDR},
        {0x01E0, GenFruOfPurchaseCardSpecificSDR},
        {0x02E0, GenFruOfPurchaseCardSpecificSDR},
        {0x020B, GenFruOfPurchaseCardSpecificSDR},
        {0x03E0, GenFruOfPurchaseCardSpecificSDR},
        {0x04E0, GenFruOfPurchaseCardSpecificSDR},
        {0x0C01, GenMEMStatusSpecificSDR},
        {0x030B, GenFruOfPurchaseCardSpecificSDR},
        {0x170B, GenFruOfSubCardSpecificSDR},
        {0x05E0, GenFruOfPurchaseCardSpecificSDR},
        {0x06E0, GenFruOfPurchaseCardSpecificSDR},
        {0x0D00, GenSpecificStatusSDR},
        {0x07E0, GenFruOfPurchaseCardSpecificSDR},
        {0x1700, GenSablinGPUCardStatusSDR},
        {0x0200, GenSpecificVoltSDR},
        {0x040B, GenFruOfSL200CardSpecificSDR},
    };
    ASSERT_EQ(std::size(rows), 21u);
    EXPECT_EQ(g_dwAddSDRHndlrCnt, 21u);
    std::set<uint32_t> keys;
    for (size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(g_atAddSDRHndlrTab[i].dwSensorDevType, rows[i].sensor_class) << "row " << i + 1;
        EXPECT_EQ(g_atAddSDRHndlrTab[i].pfnGen, rows[i].generator) << "row " << i + 1;
        keys.insert(g_atAddSDRHndlrTab[i].dwSensorDevType);
    }
    EXPECT_EQ(keys.size(), 21u);
}

// ---- every row, through the dispatch ---------------------------------------------------------------

struct Row {
    uint32_t sensor_class;
    SpecificSensorParam param;
    uint32_t profile;
    uint8_t record_type;
    std::string name; // of the record that is added
};
void PrintTo(const Row &row, std::ostream *out) {
    *out << HexNumber(row.sensor_class);
}

Row Card(uint32_t sensor_class, const std::string &name) {
    return {sensor_class, Description(sensor_class, 0, 1), CUSTOM_ID_DEFAULT, 0x11, name};
}
std::vector<Row> Rows() {
    return {
        {0x0100, GpuTemperature(3), CUSTOM_ID_DEFAULT, 1, "GPU_TEMP_03"},
        {0x0803, Description(0x0803, 34, 5), CUSTOM_ID_DEFAULT, 1, "SNIC_POWER_05"},
        {0x0403, Description(0x0403, 255, 2), CUSTOM_ID_DEFAULT, 1, "FAN_SPEED_02"},
        {0x1501, Description(0x1501, 42, 1), CUSTOM_ID_DEFAULT, 2, "BOX"},
        {0xFF0A, Psu(2), CUSTOM_ID_DEFAULT, 0x11, "PSU2_FRU"},
        Card(0x010B, "HyperCard"),
        Card(0x01E0, "Biren UBB"),
        Card(0x02E0, "HGX UBB"),
        Card(0x020B, "NEO CARD"),
        Card(0x03E0, "P800 UBB"),
        Card(0x04E0, "HBB-M9D"),
        {0x0C01, Description(0x0C01, 18, 3), CUSTOM_ID_KESTRIN, 2, "GPU3_Mem"},
        Card(0x030B, "HalvikCard"),
        {0x170B, Description(0x170B, 0, 15), CUSTOM_ID_DEFAULT, 0x11, "SUB CARD"},
        Card(0x05E0, "OXA UBB1.5  "),
        Card(0x06E0, "METAX UBB"),
        {0x0D00, DiskStatus(4, 2, 2), CUSTOM_ID_FERRISK, 2, "SATA4_Status"},
        Card(0x07E0, "MT UBB"),
        {0x1700, Description(0x1700, 2, 5), CUSTOM_ID_SABLIN, 2, "RA3_Card_Status"},
        {0x0200, Description(0x0200, 31, 3), CUSTOM_ID_VORANA, 1, "P3_SXM_Volts"},
        {0x040B, Description(0x040B, 0, 1), CUSTOM_ID_DEFAULT, 0x11, "SL200 Card 36"},
    };
}

class EveryRow : public Dispatch, public testing::WithParamInterface<Row> {
protected:
    static sim::Board Machine() {
        sim::Board board;
        board.custom_id = GetParam().profile;
        board.board_id = 0x54E0; // where graphics units have their places
        return board;
    }
};

TEST_P(EveryRow, AddsTheRecordOfItsGenerator) {
    Use(Machine());
    EXPECT_EQ(Add(GetParam().param), 0u);
    ASSERT_EQ(sim::Repository().size(), 1u);
    const Bytes &added = sim::Repository()[0].bytes;
    Bytes record = added;
    if (GetParam().sensor_class == 0x170B) { // handed on with three bytes more than the record has
        ASSERT_EQ(record.size(), 27u);
        EXPECT_EQ(Bytes(record.end() - 3, record.end()), (Bytes{0xFF, 0xFF, 0xFF}));
        record.resize(24);
    }
    EXPECT_EQ(NameOf(record), GetParam().name);
    EXPECT_EQ(record[2], 0x51);
    EXPECT_EQ(record[3], GetParam().record_type);
    EXPECT_EQ(record[4] + 5u, record.size());
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(GetParam().sensor_class)));
    EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Added(1, static_cast<int>(added.size())), Closed(1)));
}

TEST_P(EveryRow, SaysWhatTheRepositoryAnsweredWhenItRefuses) {
    Use(Machine());
    Fail(kAdd, 0xC4);
    EXPECT_EQ(Add(GetParam().param), 0xC4u);
    EXPECT_THAT(sim::Repository(), IsEmpty());
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(GetParam().sensor_class), NotAdded(0xC4), AddFailed(0xC4)));
    EXPECT_EQ(sim::CountCalls(kClose), 1u);
}

TEST_P(EveryRow, NeedsItsWholeWord) {
    Use(Machine());
    for (const uint32_t upper : {0x00010000u, 0x80000000u, 0xFFFF0000u}) {
        SpecificSensorParam param = GetParam().param;
        param.dwSensorDevType |= upper;
        sim::ClearTrace();
        EXPECT_EQ(Add(param), 0xFFFEu);
        EXPECT_THAT(LinesOf(), ElementsAre(Adding(param.dwSensorDevType), NotInTable(param.dwSensorDevType)));
    }
    EXPECT_THAT(SessionCalls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Handlers, EveryRow, testing::ValuesIn(Rows()),
                         [](const testing::TestParamInfo<Row> &info) {
                             return "Class_" + HexNumber(info.param.sensor_class).substr(2);
                         });

TEST(HandlerTable, EveryRowIsAddedOnce) {
    const std::vector<Row> rows = Rows();
    ASSERT_EQ(rows.size(), g_dwAddSDRHndlrCnt);
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].sensor_class, g_atAddSDRHndlrTab[i].dwSensorDevType);
        EXPECT_EQ(rows[i].param.dwSensorDevType, rows[i].sensor_class);
    }
}

// ---- outcomes --------------------------------------------------------------------------------------

TEST_F(Dispatch, ANullDescriptionIsAnErrorAndReturnsZero) {
    EXPECT_EQ(SDR_AddSpecificSensor(nullptr), 0u);
    EXPECT_THAT(LinesOf(), ElementsAre(Error("SDR_AddSpecificSensor failed! ptParam == NULL.")));
    EXPECT_EQ(LinesOf(), UnitLines());
    EXPECT_EQ(sim::FailableCalls(), 0u);
    EXPECT_THAT(Registered(), IsEmpty());
}

TEST_F(Dispatch, AddsTheRecordByteForByte) {
    EXPECT_EQ(Add(GpuTemperature(3)), 0u);
    ASSERT_EQ(sim::Repository().size(), 1u);
    EXPECT_EQ(sim::Repository()[0].bytes, GpuTemperatureRecord());
}

TEST_F(Dispatch, OpensOneSessionPerSensor) {
    EXPECT_EQ(Add(GpuTemperature(3)), 0u);
    EXPECT_EQ(Add(GpuTemperature(4)), 0u);
    EXPECT_THAT(SessionCalls(),
                ElementsAre(Opened(), Added(1, 59), Closed(1), Opened(), Added(2, 59), Closed(2)));
    EXPECT_THAT(Names(), ElementsAre("GPU_TEMP_03", "GPU_TEMP_04"));
}

TEST_F(Dispatch, TheGeneratorIsDoneBeforeTheSessionOpens) {
    Add(GpuTemperature(3));
    size_t opened = 0;
    const std::vector<sim::Event> &trace = sim::Trace();
    for (size_t i = 0; i < trace.size(); ++i) {
        if (trace[i].function == kSession)
            opened = i;
    }
    ASSERT_GT(opened, 0u);
    for (size_t i = opened; i < trace.size(); ++i) {
        EXPECT_TRUE(trace[i].kind == sim::Kind::kNote || trace[i].function.starts_with("LIBIPMI_") ||
                    trace[i].function == kAdd)
            << sim::Format(trace[i]);
    }
}

TEST_F(Dispatch, AClassThatIsNotInTheTableIsNotSupported) {
    for (const uint32_t sensor_class :
         {0u, 1u, 0x0101u, 0x0001u, 0x00010100u, 0x01000000u, 0x0A0Bu, 0xFFFFu, 0xFFFFFFFFu}) {
        sim::ClearTrace();
        EXPECT_EQ(Add(Description(sensor_class, 2, 3)), 0xFFFEu);
        EXPECT_THAT(LinesOf(), ElementsAre(Adding(sensor_class), NotInTable(sensor_class)));
    }
    EXPECT_THAT(SessionCalls(), IsEmpty());
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(Dispatch, ASensorThatTheProfileDoesNotOfferIsNotSupported) {
    EXPECT_EQ(Add(Description(0x0100, 99, 3)), 0xFFFEu);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), Declined()));
    EXPECT_THAT(SessionCalls(), IsEmpty());
}

TEST_F(Dispatch, ASensorThatIsStoredAlreadyIsNotSupported) {
    Bytes slot = GpuTemperatureRecord();
    slot.resize(SDR_SLOT_SIZE, 0xFF);
    sim::WriteFile(kStoreFile, slot);
    EXPECT_EQ(Add(GpuTemperature(3)), 0xFFFEu);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), Declined()));
    EXPECT_EQ(Add(GpuTemperature(4)), 0u);
    EXPECT_THAT(Names(), ElementsAre("GPU_TEMP_04"));
}

TEST_F(Dispatch, AGeneratorThatFailsIsAnError) {
    EXPECT_EQ(Add(Psu(0)), 0xFFFFu);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0xFF0A), Failed()));
    EXPECT_THAT(SessionCalls(), IsEmpty());
}

TEST_F(Dispatch, WhatNeedsNoRecordFailsAsWell) {
    sim::Board board;
    board.board_id = 0x5497;
    Use(board);
    Write(kRecordFile, Section("PSU_3", 7, 1));
    EXPECT_EQ(Add(Psu(3)), 0xFFFFu);                      // recorded already
    EXPECT_EQ(Add(Description(0x010B, 0, 0)), 0xFFFFu);   // a card in no slot
    EXPECT_EQ(Add(Description(0x170B, 0, 14)), 0xFFFFu);  // the sub card's slot is 15
    EXPECT_EQ(Add(Description(0x0403, 255, 1)), 0xFFFFu); // a board that has no fan sensors
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0xFF0A), Failed(), Adding(0x010B), Failed(), Adding(0x170B),
                                         Failed(), Adding(0x0403), Failed()));
    EXPECT_THAT(SessionCalls(), IsEmpty());
    EXPECT_EQ(Add(Psu(4)), 0u);
}

TEST_F(Dispatch, TheFifthCardFails) {
    for (const uint32_t card : {0x010Bu, 0x01E0u, 0x02E0u, 0x020Bu})
        EXPECT_EQ(Add(Description(card, 0, 1)), 0u);
    EXPECT_EQ(Add(Description(0x03E0, 0, 1)), 0xFFFFu);
    EXPECT_THAT(Names(), ElementsAre("HyperCard", "Biren UBB", "HGX UBB", "NEO CARD"));
}

// ---- sessions --------------------------------------------------------------------------------------

TEST_F(Dispatch, WithoutASessionItsCodeIsTheResult) {
    for (const int code : {1, 0xC3, 0xD4, 0xFFFE, 0xFFFF}) {
        sim::ClearFaults();
        sim::ClearTrace();
        Fail(kSession, code);
        const uint32_t expected = static_cast<uint32_t>(code);
        EXPECT_EQ(Add(GpuTemperature(3)), expected);
        EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), NoSession(expected), AddFailed(expected)));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(code))); // nothing to close
    }
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(Dispatch, ARefusedRecordClosesTheSessionAndItsCodeIsTheResult) {
    for (const int code : {1, 0xC4, 0xCB, 0xFFFE, 0xFFFF}) {
        Use(sim::Board{});
        Fail(kAdd, code);
        const uint32_t expected = static_cast<uint32_t>(code);
        EXPECT_EQ(Add(GpuTemperature(3)), expected);
        EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), NotAdded(expected), AddFailed(expected)));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Added(1, 59, code), Closed(1)));
    }
}

TEST_F(Dispatch, TheErrorsComeInTheOrderOfTheCalls) {
    Fail(kAdd, 0xC4);
    Add(GpuTemperature(3));
    Lines order;
    for (const sim::Event &event : sim::Trace()) {
        if (event.function == kAdd || event.function == kClose)
            order.push_back(event.function);
        if (event.kind == sim::Kind::kLog && event.level == sim::Level::kError)
            order.push_back(event.text);
    }
    EXPECT_THAT(order, ElementsAre(kAdd, "Failed to add SDR to IPMI: 0xc4\n", kClose,
                                   "Add SDR Record failed for retCode = 0xc4"));
}

TEST_F(Dispatch, AFullRepositoryIsNotAskedAgain) {
    sim::Board board;
    board.sdr_limit = 1;
    Use(board);
    EXPECT_EQ(Add(GpuTemperature(3)), 0u);
    EXPECT_EQ(Add(GpuTemperature(4)), 0xC4u);
    EXPECT_EQ(sim::CountCalls(kAdd), 2u);
    EXPECT_THAT(Names(), ElementsAre("GPU_TEMP_03"));
}

TEST_F(Dispatch, ASessionThatDoesNotCloseChangesNothing) {
    Fail(kClose);
    EXPECT_EQ(Add(GpuTemperature(3)), 0u);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100)));
    EXPECT_THAT(Names(), ElementsAre("GPU_TEMP_03"));
}

TEST_F(Dispatch, ASensorIsAddedAgainAfterAFailedAdd) {
    sim::AddFault({.call = kAdd, .occurrence = 1, .result = 0xC4});
    EXPECT_EQ(Add(GpuTemperature(3)), 0xC4u);
    EXPECT_EQ(Add(GpuTemperature(3)), 0u);
    EXPECT_THAT(Names(), ElementsAre("GPU_TEMP_03"));
}

TEST_F(Dispatch, NeverWritesTheRecordFile) {
    EXPECT_EQ(Add(Psu(2)), 0u);
    EXPECT_FALSE(sim::FileExists(kRecordFile));
    EXPECT_EQ(sim::CountCalls("IniSetUInt"), 0u);
    EXPECT_EQ(sim::CountCalls("IniSaveFile"), 0u);
    EXPECT_EQ(Add(Psu(2)), 0u); // so the same supply can be added twice
    EXPECT_THAT(Names(), ElementsAre("PSU2_FRU", "PSU2_FRU"));
    Write(kRecordFile, Section("PSU_2", 1, 1));
    EXPECT_EQ(Add(Description(0x010B, 0, 1)), 0u);
    EXPECT_EQ(Text(kRecordFile), Section("PSU_2", 1, 1));
}

} // namespace
