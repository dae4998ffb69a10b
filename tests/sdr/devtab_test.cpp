// SPDX-License-Identifier: GPL-3.0-or-later
//
// Device-table entries: each expected entry is written out from the tables of codes, byte by byte.
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/exports.h"
#include "simulator/simulator.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Record = std::array<uint8_t, 64>;
using Entry = std::array<uint8_t, 32>;

constexpr char kUnit[] = "gen_specific_sensor_devtab.c";

// A full record whose bytes are all told apart: byte 44 has the nibbles Ah and 7h, byte 45 is 09h, M is 05h.
Record FullRecord(uint8_t sensor_type, uint8_t oem) {
    Record sdr{};
    sdr.fill(0xD3); // what no handler reads
    sdr[3] = 0x01;
    sdr[6] = 0x02;  // owner LUN
    sdr[7] = 0x11;  // sensor number
    sdr[8] = 0x0B;  // entity id
    sdr[9] = 0x63;  // entity instance
    sdr[10] = 0x7F; // initialisation
    sdr[12] = sensor_type;
    sdr[13] = 0x01;
    sdr[24] = 0x05;
    sdr[44] = 0xA7;
    sdr[45] = 0x09;
    sdr[46] = oem;
    return sdr;
}

Record CompactRecord(uint8_t sensor_type, uint8_t event_type, uint8_t slot, uint8_t oem) {
    Record sdr{};
    sdr.fill(0xD3);
    sdr[3] = 0x02;
    sdr[6] = 0x01;
    sdr[7] = 0x12;
    sdr[8] = 0x04;
    sdr[9] = 0x65;
    sdr[10] = 0x63;
    sdr[12] = sensor_type;
    sdr[13] = event_type;
    sdr[29] = slot;
    sdr[30] = oem;
    return sdr;
}

// Builds an entry into memory that held something else before; a free entry has device code 0.
struct Built {
    int32_t result = 0;
    Entry entry{};
};
Built Build(const Record &sdr, uint8_t code_before = 0) {
    struct { // the entry stands between guard bytes
        std::array<uint8_t, 32> below;
        DevTabEntry entry;
        std::array<uint8_t, 32> above;
    } area;
    std::memset(&area, 0xEE, sizeof(area));
    area.entry.ucDevCode = code_before;
    Built built;
    built.result = GenDevTable(sdr.data(), &area.entry);
    std::memcpy(built.entry.data(), &area.entry, sizeof(area.entry));
    EXPECT_THAT(area.below, testing::Each(0xEE));
    EXPECT_THAT(area.above, testing::Each(0xEE));
    return built;
}

// Every call of this name fails.
void Fail(const std::string &call) {
    sim::Fault fault;
    fault.call = call;
    sim::AddFault(fault);
}

struct LogLine {
    sim::Level level;
    uint32_t module;
    std::string function;
    std::string text;
    bool operator==(const LogLine &) const = default;
};
void PrintTo(const LogLine &line, std::ostream *out) {
    *out << "level " << static_cast<int>(line.level) << " module " << line.module << " " << line.function
         << ": " << line.text;
}

std::vector<LogLine> Lines() {
    std::vector<LogLine> lines;
    for (const sim::Event &event : sim::Logs()) {
        EXPECT_EQ(event.file, kUnit);
        lines.push_back({event.level, event.number, event.function, event.text});
    }
    return lines;
}

class DeviceTable : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};
class TemperatureEntry : public DeviceTable {};
class PowerEntry : public DeviceTable {};
class S5Slot : public DeviceTable {};
class DiskStatusEntry : public DeviceTable {};
class MemoryStatusEntry : public DeviceTable {};
class VoltageEntry : public DeviceTable {};

// ---- the handler table
// ---------------------------------------------------------------------------------------

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

// ---- whole entries, one per handler
// ---------------------------------------------------------------------------

TEST_F(TemperatureEntry, OfAGpuIsThese32Bytes) {
    const Built built = Build(FullRecord(0x01, 0x02), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x64, 0x0A, 0x07, 0x09, 0x11, 0x00, 0x00, 0x00, // code, nibbles, b45, number
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, // LUN, mark, entity, init
                            0x01, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PowerEntry, OfAGpuIsThese32Bytes) {
    const Built built = Build(FullRecord(0x08, 0x02));
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xD7, 0x00, 0x00, 0x09, 0x11, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                            0x08, 0x01, 0x05, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
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
    EXPECT_EQ(built.entry, expected);
}

TEST_F(DeviceTable, CardStatusEntryIsThese32Bytes) {
    const Built built = Build(CompactRecord(0x15, 0x07, 0x00, 0x00), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xAA, 0x00, 0x00, 0x00, 0x12, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0xFF, 0x04, 0x65, 0x63, //
                            0x15, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
}

TEST_F(DeviceTable, GpuCardStatusEntryIsThese32Bytes) {
    const Built built = Build(CompactRecord(0x17, 0x6F, 0x77, 0x02), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x8E, 0x00, 0x00, 0x05, 0x12, 0x00, 0x00, 0x00, // instance 65h less 60h
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0xFF, 0x04, 0x65, 0x63, //
                            0x17, 0x6F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
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
    EXPECT_EQ(built.entry, expected);
}

TEST_F(DiskStatusEntry, IsThese32Bytes) {
    const Built built = Build(CompactRecord(0x0D, 0x6F, 0x17, 0x3B), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0xF0, 0x00, 0x00, 0x17, 0x12, 0x00, 0x00, 0x00, // slot from byte 29
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x01, 0x00, 0x00, 0x00, 0x25, 0x04, 0x65, 0x63, // the disks' mark
                            0x0D, 0x6F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
}

TEST_F(VoltageEntry, OfKind1FhIsThese32Bytes) {
    const Built built = Build(FullRecord(0x02, 0x1F), 0xEE);
    EXPECT_EQ(built.result, 0);
    const Entry expected = {0x8D, 0x01, 0x00, 0x09, 0x11, 0x00, 0x00, 0x00, //
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                            0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                            0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(built.entry, expected);
}

TEST_F(VoltageEntry, OfAnyOtherKindHasNoItemAndNoIndex) {
    for (const uint8_t oem : {0x00, 0x02, 0x1E, 0x20, 0xFF}) {
        const Built built = Build(FullRecord(0x02, oem), 0xEE);
        EXPECT_EQ(built.result, 0);
        const Entry expected = {0x8D, 0x00, 0x00, 0x00, 0x11, 0x00, 0x00, 0x00, //
                                0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, //
                                0x02, 0x00, 0x00, 0x00, 0xFF, 0x0B, 0x63, 0x7F, //
                                0x02, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
        EXPECT_EQ(built.entry, expected) << "kind " << int{oem};
    }
}

// ---- temperature kinds
// ---------------------------------------------------------------------------------------

// Byte 44 is A7h, byte 45 is 09h, byte 24 is 05h in every record of the table.
struct KindCase {
    uint8_t oem;
    uint8_t code;  // offset 0
    uint8_t item;  // offset 1
    uint8_t sub;   // offset 2
    uint8_t index; // offset 3
    uint8_t scan;  // offset 5
    uint8_t flag;  // offset 8
    uint8_t mark;  // offset 20
    uint8_t m;     // offset 26
};

Entry Expected(const KindCase &kind, uint8_t sensor_type) {
    return {kind.code,   kind.item, kind.sub, kind.index, 0x11,      kind.scan, 0x00, 0x00,
            kind.flag,   0x00,      0x00,     0x00,       0x00,      0x00,      0x00, 0x00,
            0x02,        0x00,      0x00,     0x00,       kind.mark, 0x0B,      0x63, 0x7F,
            sensor_type, 0x01,      kind.m,   0x00,       0x00,      0x00,      0x00, 0x00};
}

constexpr KindCase kTemperatureKinds[] = {
    // kind code   o1    o2    o3    o5    o8    o20   o26
    {0x02, 0x64, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x03, 0xDD, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x04, 0xDC, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x05, 0xCE, 0x0A, 0x07, 0x09, 0x00, 0x01, 0xFF, 0x00},
    {0x06, 0xCD, 0x0A, 0x07, 0x09, 0x80, 0x00, 0xFF, 0x00},
    {0x0D, 0xCB, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x0F, 0xCC, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x10, 0xD1, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x11, 0xBF, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x12, 0xBE, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x14, 0xB9, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x15, 0xB7, 0x0A, 0x07, 0xA7, 0x00, 0x00, 0xFF, 0x00},
    {0x16, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x16, 0xFF, 0x00},
    {0x17, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x17, 0xFF, 0x00},
    {0x18, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x18, 0xFF, 0x00},
    {0x19, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x19, 0xFF, 0x00},
    {0x1A, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x1A, 0xFF, 0x00},
    {0x1B, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x1B, 0xFF, 0x00},
    {0x1C, 0xB5, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x1D, 0xB5, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x1E, 0x64, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x1F, 0x64, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x20, 0xBE, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x21, 0xBE, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x22, 0xB2, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x23, 0xB0, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x24, 0xAF, 0x0A, 0x07, 0x09, 0x80, 0x00, 0xFF, 0x05},
    {0x25, 0xAD, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x26, 0xAC, 0x0A, 0x07, 0xA7, 0x00, 0x26, 0xFF, 0x00},
    {0x27, 0xAC, 0x0A, 0x07, 0xA7, 0x00, 0x27, 0xFF, 0x00},
    {0x28, 0xAC, 0x0A, 0x07, 0xA7, 0x00, 0x28, 0xFF, 0x00},
    {0x29, 0xAC, 0x0A, 0x07, 0xA7, 0x00, 0x29, 0xFF, 0x00},
    {0x2B, 0xCE, 0x0A, 0x07, 0x09, 0x00, 0x01, 0xFF, 0x00},
    {0x2C, 0xCE, 0x0A, 0x07, 0x09, 0x00, 0x01, 0xFF, 0x00},
    {0x2D, 0xAC, 0x0A, 0x07, 0xA7, 0x00, 0x2D, 0xFF, 0x00},
    {0x2E, 0xA8, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x2F, 0xB7, 0x0A, 0x07, 0xA7, 0x00, 0x00, 0xFF, 0x00},
    {0x30, 0xA3, 0x0A, 0x07, 0xA7, 0x00, 0x00, 0xFF, 0x00},
    {0x31, 0xA2, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x32, 0xA4, 0x0A, 0x07, 0xA7, 0x00, 0x32, 0xFF, 0x00},
    {0x33, 0xA4, 0x0A, 0x07, 0xA7, 0x00, 0x33, 0xFF, 0x00},
    {0x34, 0xA4, 0x0A, 0x07, 0xA7, 0x00, 0x34, 0xFF, 0x00},
    {0x35, 0xA4, 0x0A, 0x07, 0xA7, 0x00, 0x35, 0xFF, 0x00},
    {0x36, 0x9F, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x37, 0x9F, 0x0A, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x3B, 0xF2, 0x0A, 0x07, 0x09, 0x00, 0x00, 0x25, 0x00},
    {0x3C, 0x96, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x3D, 0x94, 0x0A, 0x07, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x3E, 0x92, 0x03, 0x07, 0xA7, 0x00, 0x3E, 0xFF, 0x00},
    {0x3F, 0x92, 0x03, 0x07, 0xA7, 0x00, 0x3F, 0xFF, 0x00},
    {0x40, 0x92, 0x03, 0x07, 0xA7, 0x00, 0x40, 0xFF, 0x00},
    {0x41, 0x91, 0x0A, 0x07, 0xA7, 0x00, 0x41, 0xFF, 0x00},
    {0x42, 0x92, 0x05, 0x07, 0xA7, 0x00, 0x00, 0xFF, 0x00},
    {0x43, 0x92, 0x08, 0x07, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x44, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x44, 0xFF, 0x00},
    {0x45, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x45, 0xFF, 0x00},
    {0x46, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x46, 0xFF, 0x00},
    {0x47, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x47, 0xFF, 0x00},
    {0x48, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x48, 0xFF, 0x00},
    {0x49, 0xB6, 0x0A, 0x07, 0xA7, 0x00, 0x49, 0xFF, 0x00},
};

TEST_F(TemperatureEntry, OfEveryKindFollowsTheTable) {
    for (const KindCase &kind : kTemperatureKinds) {
        const Built built = Build(FullRecord(0x01, kind.oem), 0xEE);
        EXPECT_EQ(built.result, 0) << "kind " << int{kind.oem};
        EXPECT_EQ(built.entry, Expected(kind, 0x01)) << "kind " << int{kind.oem};
    }
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(sim::CountCalls("GetBlueFieldS5PcieSlotNum"), 0u);
}

TEST_F(TemperatureEntry, OfEveryKindThatIsNotInTheTableIsRefused) {
    std::vector<int> refused;
    for (int oem = 0; oem < 256; ++oem) {
        if (oem != 0x13 && Build(FullRecord(0x01, static_cast<uint8_t>(oem))).result == -1) {
            refused.push_back(oem);
        }
    }
    std::vector<int> expected = {0x00, 0x01, 0x07, 0x08, 0x09, 0x0A, 0x0B,
                                 0x0C, 0x0E, 0x2A, 0x38, 0x39, 0x3A};
    for (int oem = 0x4A; oem < 256; ++oem) {
        expected.push_back(oem);
    }
    EXPECT_EQ(refused, expected);
}

TEST_F(TemperatureEntry, OfAnUnknownKindSaysSo) {
    EXPECT_EQ(Build(FullRecord(0x01, 0x2A)).result, -1);
    EXPECT_THAT(Lines(), ElementsAre(LogLine{
                             sim::Level::kError, 42, "GenDevTable",
                             "get sensor dev table failed: sensortype = 0x1, eventtype = 0x1, oem=42\n"}));
}

// ---- the smart NIC that stays powered in S5
// ---------------------------------------------------------------------

TEST_F(S5Slot, FlagsTheCardWhoseInstanceIsTheSlotPlus60h) {
    sim::CurrentBoard().pcie.s5_slot = 3;
    const Built built = Build(FullRecord(0x01, 0x13), 0xEE); // instance 63h
    EXPECT_EQ(built.result, 0);
    EXPECT_EQ(built.entry, Expected({0x13, 0xCE, 0x0A, 0x07, 0x09, 0x80, 0x01, 0xFF, 0x00}, 0x01));
    EXPECT_THAT(Lines(), ElementsAre(LogLine{sim::Level::kWarn, 42, "getSNICGpioCtrlStatus",
                                             "entityInstance 99 is S5 slot, is support power off sacn!!\n"}));
}

TEST_F(S5Slot, LeavesACardInAnotherSlotUnflagged) {
    sim::CurrentBoard().pcie.s5_slot = 4;
    const Built built = Build(FullRecord(0x01, 0x13), 0xEE);
    EXPECT_EQ(built.result, 0);
    EXPECT_EQ(built.entry, Expected({0x13, 0xCE, 0x0A, 0x07, 0x09, 0x00, 0x01, 0xFF, 0x00}, 0x01));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(S5Slot, DoesNotTakeTheInstanceItselfForTheSlot) {
    sim::CurrentBoard().pcie.s5_slot = 0x63;
    EXPECT_EQ(Build(FullRecord(0x01, 0x13)).entry[5], 0x00);
}

TEST_F(S5Slot, AFailedQueryWarnsAndLeavesTheFlagOut) {
    Fail("GetBlueFieldS5PcieSlotNum");
    const Built built = Build(FullRecord(0x01, 0x13), 0xEE);
    EXPECT_EQ(built.result, 0);
    EXPECT_EQ(built.entry, Expected({0x13, 0xCE, 0x0A, 0x07, 0x09, 0x00, 0x01, 0xFF, 0x00}, 0x01));
    EXPECT_THAT(Lines(), ElementsAre(LogLine{sim::Level::kWarn, 42, "genTempSensorDevTable",
                                             "getSNICGpioCtrlStatus failed!!\n"}));
}

TEST_F(S5Slot, WhatAFailedQueryLeftBehindIsNotASlot) {
    sim::Fault fault;
    fault.call = "GetBlueFieldS5PcieSlotNum";
    fault.output = 3;
    sim::AddFault(fault);
    const Built built = Build(FullRecord(0x01, 0x13)); // instance 63h
    EXPECT_EQ(built.entry[5], 0x00);
    EXPECT_THAT(Lines(), SizeIs(1));
}

// ---- power kinds
// -----------------------------------------------------------------------------------------------

constexpr KindCase kPowerKinds[] = {
    // kind code   o1    o2    o3    o5    o8    o20   o26
    {0x02, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x1E, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x1F, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x38, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x39, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x3A, 0xD7, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x0A, 0xDA, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x08, 0xD9, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x14, 0xB8, 0x00, 0x00, 0xA7, 0x80, 0x00, 0xFF, 0x00},
    {0x09, 0xD8, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x00},
    {0x22, 0xB1, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x05},
    {0x24, 0xAE, 0x0A, 0x07, 0x09, 0x80, 0x00, 0xFF, 0x05},
};

TEST_F(PowerEntry, OfEveryKindFollowsTheTableForBothSensorTypes) {
    for (const uint8_t sensor_type : {0x08, 0x0B}) {
        for (const KindCase &kind : kPowerKinds) {
            const Built built = Build(FullRecord(sensor_type, kind.oem));
            EXPECT_EQ(built.result, 0) << "kind " << int{kind.oem};
            EXPECT_EQ(built.entry, Expected(kind, sensor_type)) << "kind " << int{kind.oem};
        }
    }
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PowerEntry, OfEveryKindThatIsNotInTheTableIsRefused) {
    std::vector<int> accepted;
    for (int oem = 0; oem < 256; ++oem) {
        const int32_t result = Build(FullRecord(0x08, static_cast<uint8_t>(oem))).result;
        EXPECT_TRUE(result == 0 || result == -1);
        if (result == 0) {
            accepted.push_back(oem);
        }
    }
    EXPECT_THAT(accepted,
                ElementsAre(0x02, 0x08, 0x09, 0x0A, 0x14, 0x1E, 0x1F, 0x22, 0x24, 0x38, 0x39, 0x3A));
}

TEST_F(PowerEntry, OfAnUnknownKindSaysSo) {
    EXPECT_EQ(Build(FullRecord(0x0B, 0x0B)).result, -1);
    EXPECT_THAT(Lines(), ElementsAre(LogLine{
                             sim::Level::kError, 42, "GenDevTable",
                             "get sensor dev table failed: sensortype = 0xb, eventtype = 0x1, oem=11\n"}));
}

TEST_F(PowerEntry, ThatAlreadyHasACodeIsLeftAsItIsAfterTheBoardIdWasRead) {
    Entry before;
    before.fill(0xEE);
    before[0] = 0x01;
    const Built built = Build(FullRecord(0x08, 0x02), 0x01);
    EXPECT_EQ(built.result, 0);
    EXPECT_EQ(built.entry, before);
    EXPECT_EQ(sim::CountCalls("get_default_board_id"), 1u);
}

TEST_F(PowerEntry, ThatAlreadyHasACodeIsNoFailureForAnUnknownKind) {
    EXPECT_EQ(Build(FullRecord(0x08, 0x00), 0xD7).result, 0);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PowerEntry, IsBuiltAllTheSameWhenTheBoardIdCannotBeRead) {
    Fail("get_default_board_id");
    const Built built = Build(FullRecord(0x08, 0x0A));
    EXPECT_EQ(built.result, 0);
    EXPECT_EQ(built.entry, Expected({0x0A, 0xDA, 0x00, 0x00, 0x09, 0x00, 0x00, 0xFF, 0x00}, 0x08));
    EXPECT_THAT(Lines(), ElementsAre(LogLine{sim::Level::kError, 42, "genPowerSensorDevTable",
                                             "get Board Id failed\n"}));
}

TEST_F(PowerEntry, ThatHasACodeStillReportsAnUnreadableBoardId) {
    Fail("get_default_board_id");
    EXPECT_EQ(Build(FullRecord(0x08, 0x0A), 0xDA).result, 0);
    EXPECT_THAT(Lines(), ElementsAre(LogLine{sim::Level::kError, 42, "genPowerSensorDevTable",
                                             "get Board Id failed\n"}));
}

// ---- status records
// --------------------------------------------------------------------------------------------

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
    EXPECT_THAT(Lines(), ElementsAre(LogLine{
                             sim::Level::kError, 42, "GenDevTable",
                             "get sensor dev table failed: sensortype = 0xc, eventtype = 0x6f, oem=19\n"}));
}

TEST_F(DiskStatusEntry, WhoseByte30IsNot3BhIsRefused) {
    for (int oem = 0; oem < 256; ++oem) {
        const int32_t result = Build(CompactRecord(0x0D, 0x6F, 0x01, static_cast<uint8_t>(oem))).result;
        EXPECT_EQ(result, oem == 0x3B ? 0 : -1) << "kind " << oem;
    }
}

TEST_F(DiskStatusEntry, OfAnotherKindSaysSo) {
    EXPECT_EQ(Build(CompactRecord(0x0D, 0x6F, 0x01, 0x02)).result, -1);
    EXPECT_THAT(Lines(), ElementsAre(LogLine{
                             sim::Level::kError, 42, "GenDevTable",
                             "get sensor dev table failed: sensortype = 0xd, eventtype = 0x6f, oem=2\n"}));
}

// ---- which handler
// ---------------------------------------------------------------------------------------------

TEST_F(DeviceTable, ARecordWithoutARowIsWarnedAboutAndRefused) {
    Record sdr = FullRecord(0x01, 0x02);
    sdr[13] = 0x6F;
    const Built built = Build(sdr, 0xEE);
    EXPECT_EQ(built.result, -1);
    Entry untouched;
    untouched.fill(0xEE);
    EXPECT_EQ(built.entry, untouched);
    EXPECT_THAT(Lines(),
                ElementsAre(LogLine{sim::Level::kWarn, 42, "GenDevTable",
                                    "There is not DevType for SensorType= 0x1 and EventType = 0x6f\n"}));
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
    const LogLine line{sim::Level::kError, 42, "GenDevTable",
                       "GenDevTable failed! The input parameter is null."};
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
