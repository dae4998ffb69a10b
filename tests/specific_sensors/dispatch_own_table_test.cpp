// SPDX-License-Identifier: GPL-3.0-or-later
//
// The dispatch over a table of the test's own: what it hands to a generator, what it makes of each answer, and
// rows that the firmware's table does not have. The program holds the library's objects without the table.
#include "specific_sensors/dispatch_fixture.h"

// The library's table, which is constant there, as data that a test can fill.
AddSDRHndlrRow own_table[21] __asm__("g_atAddSDRHndlrTab");
uint32_t own_count __asm__("g_dwAddSDRHndlrCnt");

namespace {

using namespace dispatch;

// What the last generator got, and what it answers.
struct Given {
    int calls = 0;
    const SpecificSensorParam *param = nullptr;
    Bytes buffer;
    uint32_t key = 0;
};
Given given;
uint8_t answer = 0;
uint8_t converted_slot = 0; // 0: the slot stays

uint8_t Generate(SpecificSensorParam *param, uint8_t *sdr, uint32_t key) {
    ++given.calls;
    given.param = param;
    given.buffer.assign(sdr, sdr + SDR_SLOT_SIZE);
    given.key = key;
    if (converted_slot != 0)
        param->SlotId = converted_slot;
    for (size_t i = 0; i < SDR_SLOT_SIZE; ++i)
        sdr[i] = static_cast<uint8_t>(i + 1);
    return answer;
}
uint8_t NeverCalled(SpecificSensorParam *, uint8_t *, uint32_t) {
    ADD_FAILURE() << "the wrong row was taken";
    return 0;
}
Bytes FirstBytes(size_t length) {
    Bytes bytes;
    for (size_t i = 0; i < length; ++i)
        bytes.push_back(static_cast<uint8_t>(i + 1));
    return bytes;
}

class OwnTable : public Dispatch {
protected:
    void SetUp() override {
        Dispatch::SetUp();
        given = {};
        answer = 10;
        converted_slot = 0;
        Table({});
    }
    static void Table(const std::vector<AddSDRHndlrRow> &rows) {
        std::fill(std::begin(own_table), std::end(own_table), AddSDRHndlrRow{});
        std::copy(rows.begin(), rows.end(), own_table);
        own_count = static_cast<uint32_t>(rows.size());
    }
};

TEST_F(OwnTable, AnEmptyTableSupportsNothing) {
    own_table[0] = {0x0100, NeverCalled};
    EXPECT_EQ(Add(GpuTemperature()), 0xFFFEu);
    EXPECT_THAT(LinesOf(), ElementsAre(Adding(0x0100), NotInTable(0x0100)));
    EXPECT_THAT(SessionCalls(), IsEmpty());
}

TEST_F(OwnTable, RowsBeyondTheCountAreNotLookedAt) {
    Table({{0x0200, NeverCalled}});
    own_table[1] = {0x0100, NeverCalled};
    EXPECT_EQ(Add(GpuTemperature()), 0xFFFEu);
    EXPECT_THAT(LinesOf(), ElementsAre(Adding(0x0100), NotInTable(0x0100)));
}

TEST_F(OwnTable, ARowWithoutAGeneratorIsAFailure) {
    Table({{0x0100, nullptr}, {0xFFFFFF0A, nullptr}});
    EXPECT_EQ(Add(GpuTemperature()), 0xFFFFu);
    EXPECT_EQ(Add(Description(0xFFFFFF0A, 0, 0)), 0xFFFFu);
    EXPECT_THAT(LinesOf(),
                ElementsAre(Adding(0x0100), Info("There is no hndlr function for device type 256!\n"),
                            Adding(0xFFFFFF0A), Info("There is no hndlr function for device type -246!\n")));
    EXPECT_THAT(SessionCalls(), IsEmpty());
}

TEST_F(OwnTable, ARowWithoutAGeneratorRegistersNoDisk) {
    Table({{0x0100, nullptr}, {0x0D00, nullptr}});
    EXPECT_EQ(Add(DiskTemperature(3)), 0xFFFFu);
    EXPECT_EQ(Add(DiskStatus(3, 1, 1)), 0xFFFFu);
    EXPECT_THAT(Registered(), IsEmpty());
}

TEST_F(OwnTable, TheFirstOfEqualRowsDecides) {
    Table({{0x0200, NeverCalled}, {0x0100, Generate}, {0x0100, NeverCalled}});
    EXPECT_EQ(Add(GpuTemperature()), 0u);
    EXPECT_EQ(given.calls, 1);
    Table({{0x0100, nullptr}, {0x0100, NeverCalled}});
    EXPECT_EQ(Add(GpuTemperature()), 0xFFFFu);
}

TEST_F(OwnTable, TheLastRowIsReached) {
    std::vector<AddSDRHndlrRow> rows;
    for (uint32_t i = 0; i < 20; ++i)
        rows.push_back({0x1000 + i, NeverCalled});
    rows.push_back({0x0100, Generate});
    Table(rows);
    EXPECT_EQ(Add(GpuTemperature()), 0u);
    EXPECT_EQ(given.calls, 1);
}

TEST_F(OwnTable, TheWholeWordIsCompared) {
    Table({{0x00000100, NeverCalled}, {0x01000100, NeverCalled}, {0x00010100, Generate}});
    EXPECT_EQ(Add(Description(0x00010100, kDisk, 3)), 0u);
    EXPECT_EQ(given.key, 0x00010100u);
    EXPECT_THAT(Registered(), IsEmpty()); // and no disk's class
    EXPECT_EQ(Add(Description(0x80010100, kDisk, 3)), 0xFFFEu);
}

TEST_F(OwnTable, AGeneratorGetsTheDescriptionAnEmptyBufferAndTheKey) {
    Table({{0x0100, Generate}, {0x0803, Generate}});
    SpecificSensorParam param = GpuTemperature();
    const SpecificSensorParam before = param;
    EXPECT_EQ(SDR_AddSpecificSensor(&param), 0u);
    EXPECT_EQ(given.param, &param);
    EXPECT_EQ(given.buffer, Bytes(SDR_SLOT_SIZE, 0));
    EXPECT_EQ(given.key, 0x0100u);
    EXPECT_EQ(std::memcmp(&param, &before, sizeof(param)), 0); // left alone by the dispatch itself
    EXPECT_EQ(Add(Description(0x0803, 2, 3)), 0u);
    EXPECT_EQ(given.key, 0x0803u);
    EXPECT_EQ(given.buffer, Bytes(SDR_SLOT_SIZE, 0));
}

TEST_F(OwnTable, AsManyBytesAreAddedAsTheGeneratorWrote) {
    Table({{0x0100, Generate}});
    for (int length = 1; length <= static_cast<int>(SDR_SLOT_SIZE); ++length) {
        Use(sim::Board{});
        answer = static_cast<uint8_t>(length);
        EXPECT_EQ(Add(GpuTemperature()), 0u);
        ASSERT_EQ(sim::Repository().size(), 1u) << length;
        EXPECT_EQ(sim::Repository()[0].bytes, FirstBytes(static_cast<size_t>(length)));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Added(1, length), Closed(1)));
        EXPECT_THAT(LinesOf(), ElementsAre(Adding(0x0100)));
    }
}

TEST_F(OwnTable, AnAnswerOfZeroIsAFailureAndRegistersNoDisk) {
    Table({{0x0100, Generate}, {0x0D00, Generate}});
    answer = 0;
    converted_slot = 30;
    EXPECT_EQ(Add(DiskTemperature(3)), 0xFFFFu);
    EXPECT_EQ(Add(DiskStatus(3, 1, 1)), 0xFFFFu);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), Failed(), Adding(0x0D00), Failed()));
    EXPECT_THAT(Registered(), IsEmpty());
    EXPECT_THAT(SessionCalls(), IsEmpty());
    EXPECT_EQ(RegistryLines().size(), 2u); // asked, never told
}

TEST_F(OwnTable, AnAnswerOf255IsNotSupportedAndRegistersNoDisk) {
    Table({{0x0100, Generate}, {0x0D00, Generate}});
    answer = 255;
    converted_slot = 30;
    EXPECT_EQ(Add(DiskTemperature(3)), 0xFFFEu);
    EXPECT_EQ(Add(DiskStatus(3, 1, 1)), 0xFFFEu);
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), Declined(), Adding(0x0D00), Declined()));
    EXPECT_THAT(Registered(), IsEmpty());
    EXPECT_THAT(SessionCalls(), IsEmpty());
    EXPECT_EQ(RegistryLines().size(), 2u);
}

TEST_F(OwnTable, ADiskIsRegisteredUnderTheSlotThatItsGeneratorConverted) {
    Table({{0x0100, Generate}, {0x0D00, Generate}});
    converted_slot = 30;
    EXPECT_EQ(Add(DiskTemperature(3, 2)),
              0u); // the kinds are the description's, whatever the generator thinks
    EXPECT_EQ(Add(DiskStatus(4, 9, 0xFF01)), 0u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 2, 1, 0}, Bytes{4, 1, 0, 1}));
    EXPECT_EQ(given.calls, 2);
    EXPECT_EQ(Add(DiskTemperature(3, 1)), 0xFFFFu); // another kind's entry
    EXPECT_EQ(Add(DiskStatus(4, 1, 1)), 0xFFFFu);
    EXPECT_EQ(given.calls, 2); // the generator does not run
    EXPECT_EQ(Add(DiskTemperature(4, 1)), 0u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 2, 1, 0}, Bytes{4, 1, 1, 1}));
}

TEST_F(OwnTable, EveryOtherCardTypePassesByTheRegistry) {
    Table({{0x0100, Generate}, {0x0D00, Generate}, {0x0803, Generate}});
    for (int device_type = 0; device_type <= 255; ++device_type) {
        if (device_type == kDisk)
            continue;
        EXPECT_EQ(Add(Description(0x0100, device_type, 3)), 0u);
        EXPECT_EQ(Add(Description(0x0D00, device_type, 3)), 0u);
    }
    EXPECT_EQ(Add(Description(0x0803, kDisk, 3)), 0u);
    EXPECT_THAT(RegistryLines(), IsEmpty());
    EXPECT_THAT(Registered(), IsEmpty());
}

} // namespace
