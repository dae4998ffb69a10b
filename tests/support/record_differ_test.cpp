// SPDX-License-Identifier: GPL-3.0-or-later
//
// What is told of two records that differ.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/record_differ.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Degrees, signed, factor 1; UNR 52, UC 50, UNC 45.
const Bytes kTemperature = Literal(
    "00 00 51 01 35 20 00 00 37 60 7F 68 01 01 80 0A 80 7A 38 38 80 01 00 00 01 00x9 7F 80 34 32 2D 00 00 00 03 03 00 00 00 CA 'INPUT_TEMP' FFx6");
// Volts, unsigned, M = 100, result times 10^-3; UC 14.4, UNC 13.2, LC 9.6, LNC 10.8.
const Bytes kVoltage = Literal(
    "00 00 51 01 31 20 00 00 07 60 7F 68 02 01 85 32 85 32 1B 1B 00 04 00 00 64 00x4 D0 00x4 FF 00 00 90 84 00 60 6C 03 03 00 00 00 C6 'VCC12V' FFx10");
const Bytes kStatus = Literal(
    "00 00 51 02 28 20 00 00 04 09 63 C0 0D 6F 01 00 01 00 47 00 C0 00 00 01 00 00 00 00 00 09 00 CD 'HDD_STATUS_09' FFx3 00x16");
const Bytes kLocator = Literal("00 00 51 11 13 20 13 80 13 00 10 00 0A 03 00 C8 'PSU3_FRU'");
const Bytes kEntry = Literal("F0 00 00 09 00 80 00x14 25 04 09 63 0D 6F 00x6");

Bytes With(Bytes bytes, size_t at, uint8_t value) {
    bytes.at(at) = value;
    return bytes;
}

TEST(SdrDiff, OfEqualRecordsIsEmpty) {
    for (const Bytes &record : {kTemperature, kVoltage, kStatus, kLocator}) {
        EXPECT_THAT(SdrDiff(record, record), IsEmpty());
        EXPECT_TRUE(SameSdr(record, record));
    }
    EXPECT_THAT(EntryDiff(kEntry, kEntry), IsEmpty());
}

TEST(SdrDiff, TellsThresholdsInTheUnitsOfTheRecord) {
    EXPECT_THAT(SdrDiff(kTemperature, With(kTemperature, 37, 48)), ElementsAre("byte 37, UC: 50 -> 48 °C"));
    EXPECT_THAT(SdrDiff(kTemperature, With(kTemperature, 41, 0xFE)), ElementsAre("byte 41, LNC: 0 -> -2 °C"));
    EXPECT_THAT(SdrDiff(kVoltage, With(kVoltage, 37, 0x91)), ElementsAre("byte 37, UC: 14.4 -> 14.5 V"));
    EXPECT_THAT(SdrDiff(kVoltage, With(kVoltage, 42, 5)),
                ElementsAre("byte 42, positive hysteresis: 0.3 -> 0.5 V"));
}

TEST(SdrDiff, UsesOffsetExponentsAndUnitsOfEachRecord) {
    Bytes power = With(With(kVoltage, 20, 0x00), 21, 6); // W
    power[24] = 0x02;                                    // M = 2 + 1 << 8
    power[25] = 0x40;
    power[26] = 0xF6; // B = -10
    power[27] = 0xC0;
    power[29] = 0x01; // times 10^0, offset times 10^1
    EXPECT_THAT(SdrDiff(power, With(power, 38, 0x85)), ElementsAre("byte 38, UNC: 33956 -> 34214 W"));
    Bytes flow = With(With(With(kVoltage, 20, 0x02), 21, 37), 22, 23);
    flow[24] = 1;
    flow[29] = 0;
    EXPECT_THAT(SdrDiff(flow, With(flow, 34, 250)), ElementsAre("byte 34, sensor maximum: 255 -> 250 l/min"));
    EXPECT_THAT(SdrDiff(kTemperature, With(With(kTemperature, 21, 4), 36, 0x35)),
                ElementsAre("byte 21, base unit: 0x01 -> 0x04", "byte 36, UNR: 52 °C -> 53 V"));
}

TEST(SdrDiff, FallsBackToBytesWhereReadingsAreNotLinearOrAlike) {
    EXPECT_THAT(SdrDiff(With(kVoltage, 23, 0x70), With(With(kVoltage, 23, 0x70), 37, 0x91)),
                ElementsAre("byte 37, UC: 0x90 -> 0x91"));
    EXPECT_THAT(SdrDiff(With(kVoltage, 24, 0), With(With(kVoltage, 24, 0), 37, 0x91)),
                ElementsAre("byte 37, UC: 0x90 -> 0x91"));
}

TEST(SdrDiff, NamesTheFieldsOfEachKind) {
    EXPECT_THAT(SdrDiff(kTemperature, With(With(kTemperature, 15, 0x0B), 24, 2)),
                ElementsAre("bytes 14-15, assertion mask: 0x0A80 -> 0x0B80", "byte 24, M: 1 -> 2"));
    EXPECT_THAT(SdrDiff(kStatus, With(With(kStatus, 11, 0x40), 29, 10)),
                ElementsAre("byte 11, capabilities: 0xC0 -> 0x40", "byte 29, slot: 9 -> 10"));
    EXPECT_THAT(SdrDiff(kLocator, With(kLocator, 6, 0x14)), ElementsAre("byte 6, FRU id: 19 -> 20"));
}

TEST(SdrDiff, TellsNamesAsText) {
    Bytes renamed = kStatus;
    renamed[31] = 0xCC;
    renamed[44] = 0xFF;
    EXPECT_THAT(SdrDiff(kStatus, renamed), ElementsAre("byte 32, name: 'HDD_STATUS_09' -> 'HDD_STATUS_0'"));
    EXPECT_THAT(SdrDiff(kStatus, With(kStatus, 46, 0x00)),
                ElementsAre("byte 46, filling after the name: 0xFF -> 0x00"));
    EXPECT_THAT(SdrDiff(kStatus, With(kStatus, 31, 0x8D)),
                ElementsAre("byte 31, name type and length: 0xCD -> 0x8D"));
}

TEST(SdrDiff, TellsWhatIsMissingAndOtherKinds) {
    Bytes cut = kTemperature;
    cut.resize(37);
    EXPECT_THAT(SdrDiff(kTemperature, cut), testing::Contains("byte 37, UC: 0x32 -> (missing)"));
    EXPECT_THAT(SdrDiff(kTemperature, kStatus), testing::Contains("byte 3, record type: 0x01 -> 0x02"));
    EXPECT_FALSE(SameSdr(kTemperature, Bytes()));
}

TEST(EntryDiff, NamesTheFieldsOfAnEntry) {
    EXPECT_THAT(EntryDiff(kEntry, With(kEntry, 5, 0x00)),
                ElementsAre("entry byte 5, scan flag: 0x80 -> 0x00"));
    EXPECT_STREQ(SameEntry(kEntry, With(kEntry, 5, 0x00)).message(),
                 "the entry differs, expected -> got:\n  entry byte 5, scan flag: 0x80 -> 0x00\n");
    EXPECT_THAT(EntryDiff(kEntry, With(With(kEntry, 3, 8), 30, 1)),
                ElementsAre("entry byte 3, index: 9 -> 8",
                            "entry bytes 27-31, reserved: 0x0000000000 -> 0x0001000000"));
}

TEST(EveryByte, ThatDiffersIsTold) {
    for (const Bytes &record : {kTemperature, kVoltage, kStatus, kLocator})
        for (size_t at = 0; at < record.size(); ++at)
            EXPECT_FALSE(SdrDiff(record, With(record, at, record[at] ^ 0x55)).empty()) << at;
    for (size_t at = 0; at < kEntry.size(); ++at)
        EXPECT_EQ(EntryDiff(kEntry, With(kEntry, at, kEntry[at] ^ 0x55)).size(), 1u) << at;
}

TEST(SameRecords, TellsTheRecordOrWhatIsMissing) {
    const Record temperature{kTemperature, kEntry}, voltage{kVoltage, kEntry};
    EXPECT_TRUE(SameRecords({temperature, voltage}, {temperature, voltage}));
    const Record other{With(kVoltage, 37, 0x91), With(kEntry, 5, 0)};
    EXPECT_STREQ(SameRecords({temperature, voltage}, {temperature, other}).message(),
                 "record 1 'VCC12V' differs, expected -> got:\n"
                 "  byte 37, UC: 14.4 -> 14.5 V\n"
                 "  entry byte 5, scan flag: 0x80 -> 0x00\n");
    EXPECT_STREQ(SameRecords({temperature, voltage}, {voltage}).message(),
                 "2 -> 1 records; missing: 'INPUT_TEMP'; too much: nothing");
    EXPECT_THAT(SameRecord(voltage, other).message(), HasSubstr("UC: 14.4 -> 14.5 V"));
}

} // namespace
