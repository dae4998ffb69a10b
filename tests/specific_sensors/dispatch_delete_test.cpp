// SPDX-License-Identifier: GPL-3.0-or-later
//
// Deleting the FRU record of a power supply: every way through it, its request, its lines, and the record file
// afterwards.
#include "specific_sensors/dispatch_fixture.h"

namespace {

using namespace dispatch;

class DispatchDelete : public Dispatch {
protected:
    static constexpr char kName[] = "SDR_DeleteSpecificSDR";

    static std::string Warning(const std::string &text) {
        return std::string("warn 42 ") + kName + ": " + kName + ": " + text;
    }
    static std::string Deleted(int result, uint32_t record_id) { // also when nothing failed
        return Error(std::string(kName) + ": delete sdr failed, result:" + std::to_string(result) +
                         ", recordid:" + HexNumber(record_id) + ".\n",
                     kName);
    }
    static std::string Result(int result, uint32_t record_id) {
        return Info(std::string(kName) + ": result of DelSDR is " + std::to_string(result) + ", wRecID is " +
                        HexNumber(record_id) + ".\n",
                    kName);
    }
    static std::string Asked(const std::string &request, int result = 0) {
        return std::string(kDelete) + "(session=1 request=\"" + request +
               "\" arg=20) = " + std::to_string(result);
    }
    // The repository holds a supply's record under this id.
    static void Store(uint16_t id) {
        sim::Repository().push_back({id, {0x00, 0x00, 0x51, 0x11, 0x0B}});
    }
    static std::vector<int> Ids() {
        std::vector<int> ids;
        for (const sim::RepositoryRecord &record : sim::Repository())
            ids.push_back(record.id);
        return ids;
    }
    // Supplies 1 and 2 with records 5 and 0x1234.
    static void TwoSupplies() {
        Write(kRecordFile, kTwoSupplies);
        Store(5);
        Store(0x1234);
    }
    static inline const std::string kTwoSupplies = Section("PSU_1", 5, 1) + Section("PSU_2", 0x1234, 1);
    static inline const std::string kSecondGone = Section("PSU_1", 5, 1) + Section("PSU_2", 0, 0);

    static void ExpectNothingDone() {
        EXPECT_THAT(SessionCalls(), IsEmpty());
        EXPECT_EQ(sim::CountCalls("IniSetUInt"), 0u);
        EXPECT_EQ(sim::CountCalls("IniSaveFile"), 0u);
    }
};

TEST_F(DispatchDelete, ANullDescriptionIsAWarning) {
    EXPECT_EQ(SDR_DeleteSpecificSDR(nullptr), -1);
    EXPECT_THAT(LinesOf(), ElementsAre(Warning("input is null.\n")));
    EXPECT_EQ(LinesOf(), UnitLines());
    EXPECT_EQ(sim::FailableCalls(), 0u);
}

TEST_F(DispatchDelete, OnlyPowerSuppliesCanGo) {
    TwoSupplies();
    const struct {
        uint32_t sensor_class;
        const char *printed;
    } others[] = {{0x010B, "267"},
                  {0, "0"},
                  {0x0100, "256"},
                  {0x0A, "10"},
                  {0x0AFF, "2815"},
                  {0x1FF0A, "130826"},
                  {0x8000FF0A, "-2147418358"},
                  {0xFFFFFFFF, "-1"}};
    for (const auto &[sensor_class, printed] : others) {
        sim::ClearTrace();
        EXPECT_EQ(Delete(Description(sensor_class, 2, 2)), 1) << printed;
        EXPECT_THAT(LinesOf(), ElementsAre(Warning(std::string("input device type is not support, ") +
                                                   printed + ".\n")));
        EXPECT_EQ(LinesOf(), UnitLines());
    }
    ExpectNothingDone();
    EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
}

TEST_F(DispatchDelete, AClassOfTheTableIsNoReasonToDelete) {
    for (uint32_t row = 0; row < g_dwAddSDRHndlrCnt; ++row) {
        const uint32_t sensor_class = g_atAddSDRHndlrTab[row].dwSensorDevType;
        if (sensor_class != 0xFF0A) {
            EXPECT_EQ(Delete(Description(sensor_class, 2, 2)), 1) << HexNumber(sensor_class);
        }
    }
}

TEST_F(DispatchDelete, ASupplyThatIsNotThereIsNoFailure) {
    for (const std::string &content :
         {std::string(), Section("PSU_3", 7, 1), Section("PSU_2", 7, 0), Section("PSU_2", 7, 2),
          Section("PSU_2", 0, 1), Section("PSU_2", 0x10000, 1), std::string("[PSU_2]\nsdrRecId=7\n"),
          Section("PurchaseCard_2", 7, 1), Section("PSU_02", 7, 1), std::string("\xFF\x00]=[", 5)}) {
        Use(sim::Board{});
        Store(7);
        if (!content.empty())
            Write(kRecordFile, content);
        EXPECT_EQ(Delete(Psu(2)), 0) << content;
        EXPECT_THAT(UnitLines(), IsEmpty());
        ExpectNothingDone();
        EXPECT_EQ(Text(kRecordFile), content);
        EXPECT_THAT(Ids(), ElementsAre(7));
    }
}

TEST_F(DispatchDelete, ARecordFileThatDoesNotLoadHidesTheSupply) {
    TwoSupplies();
    Fail("IniLoadFile");
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_THAT(UnitLines(), IsEmpty());
    ExpectNothingDone();
    EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
}

TEST_F(DispatchDelete, TakesTheRecordOutAndClearsItsEntry) {
    TwoSupplies();
    EXPECT_EQ(Delete(Psu(2)), 0);
    const auto file_line = [](const std::string &function) { // class, index, record id
        return Info(function + ":=====ucEntityID:ucEntityInstance:wRecID: a, 2, 0.\n", function);
    };
    EXPECT_THAT(LinesOf(), ElementsAre(file_line("SDR_GetSepcificFruSDRRecID"), Deleted(0, 0x1234),
                                       Result(0, 0x1234), file_line("SDR_UpdateSpecificSDRRecFile")));
    EXPECT_THAT(UnitLines(), ElementsAre(Deleted(0, 0x1234), Result(0, 0x1234)));
    EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Asked("00 00 34 12"), Closed(1)));
    EXPECT_EQ(Text(kRecordFile), kSecondGone);
    EXPECT_THAT(Ids(), ElementsAre(5));
}

TEST_F(DispatchDelete, IsNothingTheSecondTime) {
    TwoSupplies();
    EXPECT_EQ(Delete(Psu(2)), 0);
    sim::ClearTrace();
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_THAT(UnitLines(), IsEmpty());
    ExpectNothingDone();
}

TEST_F(DispatchDelete, TheIndexIsTheSlotOfTheDescription) {
    for (const int index : {0, 1, 99, 255}) {
        Use(sim::Board{});
        Write(kRecordFile, Section("PSU_" + std::to_string(index), 9, 1));
        Store(9);
        SpecificSensorParam param = Description(0xFF0A, 7, index, 3);
        EXPECT_EQ(SDR_DeleteSpecificSDR(&param), 0);
        EXPECT_THAT(Ids(), IsEmpty()) << index;
        EXPECT_EQ(Text(kRecordFile), Section("PSU_" + std::to_string(index), 0, 0));
        EXPECT_EQ(param.SlotId, index); // the description stays as it is
        EXPECT_EQ(param.ucDeviceType, 7);
    }
}

TEST_F(DispatchDelete, TheRequestNamesTheRecordLowByteFirst) {
    const struct {
        uint32_t stored;
        const char *request;
        uint32_t record_id;
    } cases[] = {{1, "00 00 01 00", 1},
                 {0x00FF, "00 00 FF 00", 0xFF},
                 {0x0100, "00 00 00 01", 0x100},
                 {0xFFFF, "00 00 FF FF", 0xFFFF},
                 {0xABCD8001, "00 00 01 80", 0x8001}}; // the low 16 bits
    for (const auto &[stored, request, record_id] : cases) {
        Use(sim::Board{});
        Write(kRecordFile, Section("PSU_2", stored, 1));
        Store(static_cast<uint16_t>(record_id));
        EXPECT_EQ(Delete(Psu(2)), 0);
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Asked(request), Closed(1)));
        EXPECT_THAT(UnitLines(), ElementsAre(Deleted(0, record_id), Result(0, record_id)));
    }
}

TEST_F(DispatchDelete, WithoutASessionItsCodeIsTheResultAndTheEntryStays) {
    for (const int code : {1, 0xC3, 0xFFFF}) {
        Use(sim::Board{});
        TwoSupplies();
        Fail(kSession, code);
        EXPECT_EQ(Delete(Psu(2)), code);
        EXPECT_THAT(UnitLines(), ElementsAre(NoSession(static_cast<uint32_t>(code), "deleteSDRFromIPMI"),
                                             Result(code, 0x1234)));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(code))); // nothing to close
        EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
        EXPECT_THAT(Ids(), ElementsAre(5, 0x1234));
    }
}

TEST_F(DispatchDelete, ARefusedDeleteClosesTheSessionAndTheEntryStays) {
    for (const int code : {1, 0xC3, 0xFFFF}) {
        Use(sim::Board{});
        TwoSupplies();
        Fail(kDelete, code);
        EXPECT_EQ(Delete(Psu(2)), code);
        EXPECT_THAT(UnitLines(), ElementsAre(Deleted(code, 0x1234), Result(code, 0x1234)));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Asked("00 00 34 12", code), Closed(1)));
        EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
        EXPECT_THAT(Ids(), ElementsAre(5, 0x1234));
    }
}

TEST_F(DispatchDelete, ARecordThatTheRepositoryDoesNotHoldIsAFailure) {
    Write(kRecordFile, kTwoSupplies);
    Store(5);
    EXPECT_EQ(Delete(Psu(2)), 0xCB);
    EXPECT_THAT(UnitLines(), ElementsAre(Deleted(203, 0x1234), Result(203, 0x1234)));
    EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
    EXPECT_THAT(Ids(), ElementsAre(5));
}

TEST_F(DispatchDelete, TheLinesStandAroundTheClosingOfTheSession) {
    TwoSupplies();
    EXPECT_EQ(Delete(Psu(2)), 0);
    Lines order;
    for (const sim::Event &event : sim::Trace()) {
        const bool ours = event.kind == sim::Kind::kLog && event.file == kUnit;
        if (ours || (event.kind == sim::Kind::kCall && !event.function.starts_with("IniGet")))
            order.push_back(ours ? tests::LevelName(event.level) : event.function);
    }
    EXPECT_THAT(order, ElementsAre("IniLoadFile", "IniCloseFile", kSession, kDelete, "error", kClose, "info",
                                   "IniLoadFile", "IniSetUInt", "IniSetUInt", "IniSaveFile", "IniCloseFile"));
}

TEST_F(DispatchDelete, ASessionThatDoesNotCloseChangesNothing) {
    TwoSupplies();
    Fail(kClose);
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_THAT(UnitLines(), ElementsAre(Deleted(0, 0x1234), Result(0, 0x1234)));
    EXPECT_EQ(Text(kRecordFile), kSecondGone);
}

TEST_F(DispatchDelete, ASupplyWhoseEntryCannotBeClearedIsGoneAllTheSame) {
    TwoSupplies();
    sim::AddFault({.call = "IniLoadFile", .occurrence = 2});
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_THAT(UnitLines(), ElementsAre(Deleted(0, 0x1234), Result(0, 0x1234)));
    EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
    EXPECT_THAT(Ids(), ElementsAre(5));
    Use(sim::Board{});
    TwoSupplies();
    Fail("IniSaveFile");
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_EQ(Text(kRecordFile), kTwoSupplies);
}

TEST_F(DispatchDelete, ASupplyThatWasDeletedCanBeAddedAgain) {
    Write(kRecordFile, Section("PSU_2", 1, 1));
    EXPECT_EQ(Add(Psu(2)), 0xFFFFu); // recorded
    Store(1);
    EXPECT_EQ(Delete(Psu(2)), 0);
    EXPECT_EQ(Add(Psu(2)), 0u);
    EXPECT_THAT(Names(), ElementsAre("PSU2_FRU"));
    EXPECT_EQ(Text(kRecordFile), Section("PSU_2", 0, 0));
}

} // namespace
