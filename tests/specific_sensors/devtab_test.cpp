// SPDX-License-Identifier: GPL-3.0-or-later
//
// Device-table entries: the handler table, one whole entry per handler, and what is refused.
#include "specific_sensors/devtab_fixture.h"

namespace {

using namespace devtab;
using testing::ElementsAre;
using testing::IsEmpty;

class DiskStatusEntry : public DeviceTable {};
class MemoryStatusEntry : public DeviceTable {};
class VoltageEntry : public DeviceTable {};

// ---- the handler table --------------------------------------------------------------------------

TEST_F(DeviceTable, HasTheseNineRowsInThisOrder) {
    const uint8_t expected[9][2] = {{0x01, 0x01}, {0x08, 0x01}, {0x0B, 0x01}, {0x04, 0x01}, {0x15, 0x07},
                                    {0x17, 0x6F}, {0x0C, 0x6F}, {0x0D, 0x6F}, {0x02, 0x01}};
    ASSERT_EQ(g_dwDevTabCnt, 9u);
    for (size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(g_atSensorDevTab[i].ucSensorType, expected[i][0]) << "row " << i;
        EXPECT_EQ(g_atSensorDevTab[i].ucEventType, expected[i][1]) << "row " << i;
        EXPECT_EQ(g_atSensorDevTab[i].aucZero[0], 0) << "row " << i;
        EXPECT_EQ(g_atSensorDevTab[i].aucZero[1], 0) << "row " << i;
        EXPECT_NE(g_atSensorDevTab[i].pfnGen, nullptr) << "row " << i;
    }
}

TEST_F(DeviceTable, PowerHasOneHandlerForBothItsTypesAndTheOthersHaveOneEach) {
    for (size_t i = 0; i < 9; ++i) {
        for (size_t k = i + 1; k < 9; ++k) {
            const bool both_power = i == 1 && k == 2;
            EXPECT_EQ(g_atSensorDevTab[i].pfnGen == g_atSensorDevTab[k].pfnGen, both_power) << i << " " << k;
        }
    }
}

// ---- whole entries, one per handler -------------------------------------------------------------

TEST_F(TemperatureEntry, OfAGpuIsThese32Bytes) {
    const Built built = Build(FullRecord(0x01, 0x02), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x64, 0x0A, 0x07, 0x09, 0x11, 0x00, 0x00, 0x00, // code, nibbles, b45, number
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, // LUN, mark, entity, init
                            0x01, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PowerEntry, OfAGpuIsThese32Bytes) {
    const Built built = Build(FullRecord(0x08, 0x02));
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xD7, 0x00, 0x00, 0x09, 0x11, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                            0x08, 0x01, 0x05, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(DeviceTable, FanSpeedEntryIsThese32Bytes) {
    Record sdr = FullRecord(0x04, 0x00);
    sdr[8] = 0x1D;
    sdr[24] = 100;
    const Built built = Build(sdr, 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x66, 0x00, 0x00, 0x09, 0x11, 0x80, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x1D, 0x63, 0x7F, //
                            0x04, 0x01, 0x64, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(DeviceTable, CardStatusEntryIsThese32Bytes) {
    const Built built = Build(CompactRecord(0x15, 0x07, 0x00, 0x00), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xAA, 0x00, 0x00, 0x00, 0x12, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0xFF, 0x04, 0x65, 0x63, //
                            0x15, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(DeviceTable, GpuCardStatusEntryIsThese32Bytes) {
    const Built built = Build(CompactRecord(0x17, 0x6F, 0x77, 0x02), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x8E, 0x00, 0x00, 0x05, 0x12, 0x00, 0x00, 0x00, // instance 65h less 60h
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0xFF, 0x04, 0x65, 0x63, //
                            0x17, 0x6F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(DeviceTable, GpuCardStatusIndexIsTheInstanceLess60hModulo256) {
    Record sdr = CompactRecord(0x17, 0x6F, 0, 0x02);
    sdr[9] = 0x60;
    EXPECT_EQ(Build(sdr).entry[3], 0x00);
    sdr[9] = 0x5F;
    EXPECT_EQ(Build(sdr).entry[3], 0xFF);
    sdr[9] = 0xE4;
    EXPECT_EQ(Build(sdr).entry[3], 0x84);
}

TEST_F(MemoryStatusEntry, IsThese32Bytes) {
    const Built built = Build(CompactRecord(0x0C, 0x6F, 0x77, 0x12), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xA9, 0x00, 0x00, 0x05, 0x12, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0xFF, 0x04, 0x65, 0x63, //
                            0x0C, 0x6F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(DiskStatusEntry, IsThese32Bytes) {
    const Built built = Build(CompactRecord(0x0D, 0x6F, 0x17, 0x3B), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xF0, 0x00, 0x00, 0x17, 0x12, 0x00, 0x00, 0x00, // slot from byte 29
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0x25, 0x04, 0x65, 0x63, // the disks' mark
                            0x0D, 0x6F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(VoltageEntry, OfKind1FhIsThese32Bytes) {
    const Built built = Build(FullRecord(0x02, 0x1F), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x8D, 0x01, 0x00, 0x09, 0x11, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                            0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_TRUE(tests::SameEntry(expected, built.entry));
}

TEST_F(VoltageEntry, OfAnyOtherKindHasNoItemAndNoIndex) {
    for (const uint8_t oem : {0x00, 0x02, 0x1E, 0x20, 0xFF}) {
        const Built built = Build(FullRecord(0x02, oem), 0xEE);
        EXPECT_EQ(built.result, 0);
        const Entry expected = {0x8D, 0x00, 0x00, 0x00, 0x11, 0x00, 0x00, 0x00, //
                                0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                                0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                                0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
        EXPECT_TRUE(tests::SameEntry(expected, built.entry)) << "kind " << int{oem};
    }
}

// ---- status records -----------------------------------------------------------------------------

TEST_F(MemoryStatusEntry, IsAcceptedForThreeKindsOnly) {
    std::vector<int> accepted;
    for (int oem = 0; oem < 256; ++oem) {
        if (Build(CompactRecord(0x0C, 0x6F, 0x00, static_cast<uint8_t>(oem))).result == 0) {
            accepted.push_back(oem);
        }
    }
    EXPECT_THAT(accepted, ElementsAre(0x12, 0x20, 0x21));
}

TEST_F(MemoryStatusEntry, IndexIsTheInstanceLess60hFrom60hOn) {
    Record sdr = CompactRecord(0x0C, 0x6F, 0x77, 0x20);
    const uint8_t expected[][2] = {{0x00, 0x00}, {0x5F, 0x5F}, {0x60, 0x00}, {0x61, 0x01}, {0xFF, 0x9F}};
    for (const auto &[instance, index] : expected) {
        sdr[9] = instance;
        const Built built = Build(sdr);
        EXPECT_EQ(built.result, 0);
        EXPECT_EQ(built.entry[3], index) << "instance " << int{instance};
        EXPECT_EQ(built.entry[22], instance);
    }
}

TEST_F(MemoryStatusEntry, OfAnotherKindSaysSo) {
    Record sdr = CompactRecord(0x0C, 0x6F, 0x00, 0x13);
    sdr[46] = 0x12; // a compact record's kind stands in byte 30
    EXPECT_EQ(Build(sdr).result, -1);
    EXPECT_THAT(
        Lines(),
        ElementsAre(
            "error 42 GenDevTable: get sensor dev table failed: sensortype = 0xc, eventtype = 0x6f, oem=19\n"));
}

TEST_F(DiskStatusEntry, WhoseByte30IsNot3BhIsRefused) {
    for (int oem = 0; oem < 256; ++oem) {
        const int32_t result = Build(CompactRecord(0x0D, 0x6F, 0x01, static_cast<uint8_t>(oem))).result;
        EXPECT_EQ(result, oem == 0x3B ? 0 : -1) << "kind " << oem;
    }
}

TEST_F(DiskStatusEntry, OfAnotherKindSaysSo) {
    EXPECT_EQ(Build(CompactRecord(0x0D, 0x6F, 0x01, 0x02)).result, -1);
    EXPECT_THAT(
        Lines(),
        ElementsAre(
            "error 42 GenDevTable: get sensor dev table failed: sensortype = 0xd, eventtype = 0x6f, oem=2\n"));
}

// ---- which handler ------------------------------------------------------------------------------

TEST_F(DeviceTable, ARecordWithoutARowIsWarnedAboutAndRefused) {
    Record sdr = FullRecord(0x01, 0x02);
    sdr[13] = 0x6F;
    const Built built = Build(sdr, 0xEE);
    EXPECT_EQ(built.result, -1);
    Entry untouched;
    untouched.fill(0xEE);
    EXPECT_TRUE(tests::SameEntry(untouched, built.entry));
    EXPECT_THAT(
        Lines(),
        ElementsAre("warn 42 GenDevTable: There is not DevType for SensorType= 0x1 and EventType = 0x6f\n"));
}

TEST_F(DeviceTable, OnlyTheNinePairsOfSensorAndEventTypeHaveAHandler) {
    std::vector<std::pair<int, int>> handled;
    for (int sensor_type = 0; sensor_type < 256; ++sensor_type) {
        for (int event_type = 0; event_type < 256; ++event_type) {
            Record sdr = FullRecord(static_cast<uint8_t>(sensor_type), 0x1F);
            sdr[13] = static_cast<uint8_t>(event_type);
            sdr[30] = sensor_type == 0x0D ? 0x3B : 0x12;
            if (Build(sdr).result == 0) {
                handled.emplace_back(sensor_type, event_type);
            }
        }
        sim::ClearTrace();
    }
    EXPECT_THAT(handled, testing::UnorderedElementsAre(
                             std::pair{0x01, 0x01}, std::pair{0x08, 0x01}, std::pair{0x0B, 0x01},
                             std::pair{0x04, 0x01}, std::pair{0x15, 0x07}, std::pair{0x17, 0x6F},
                             std::pair{0x0C, 0x6F}, std::pair{0x0D, 0x6F}, std::pair{0x02, 0x01}));
}

TEST_F(DeviceTable, ANullRecordOrEntryIsAnError) {
    DevTabEntry entry{};
    const Record sdr = FullRecord(0x01, 0x02);
    EXPECT_EQ(GenDevTable(nullptr, &entry), -1);
    EXPECT_EQ(GenDevTable(sdr.data(), nullptr), -1);
    const std::string line = "error 42 GenDevTable: GenDevTable failed! The input parameter is null.";
    EXPECT_THAT(Lines(), ElementsAre(line, line));
}

// The rows are the interface too: a caller may take a handler from the table.
TEST_F(DeviceTable, AHandlerTakenFromTheTableGivesMinusOneWithoutAMessage) {
    DevTabEntry entry{};
    const Record sdr = CompactRecord(0x0D, 0x6F, 0x01, 0x02);
    EXPECT_EQ(g_atSensorDevTab[7].pfnGen(sdr.data(), &entry), -1);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(DeviceTable, TheRecordIsOnlyRead) {
    for (const uint8_t sensor_type : {0x01, 0x02, 0x04, 0x08, 0x0B}) {
        const Record before = FullRecord(sensor_type, 0x1F);
        Record sdr = before;
        Build(sdr);
        EXPECT_EQ(sdr, before);
    }
}

} // namespace
