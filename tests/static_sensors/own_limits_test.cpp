// SPDX-License-Identifier: GPL-3.0-or-later
//
// Limits that a row of a profile's list sets in the place of its kind's: a profile of the test's own, built by the
// library's engine.  Bytes are worked out from the layout: masks from the thresholds that the record has, 38h for
// 56 counts.
#include <gtest/gtest.h>

#include "library/profiles/profiles.h"
#include "library/static_sensors/pass.h"
#include "support/static_pass.h"

extern "C" {
uint8_t Test_GenOutletSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
uint8_t Test_GenRailSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
uint8_t Test_GenPdbSDR(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
}

namespace {
constexpr oxa::ProfileNames kNames = oxa::NamesOf(CUSTOM_ID_DEFAULT);
constexpr oxa::PassOrder kPass = {.aeSteps = {oxa::Step::kTable}};
} // namespace

#define OXA_SENSOR_LIST "static_sensors/own_limits.def"
#include "library/static_sensors/sensors_of_list.h"

namespace {

void ExpectRecord(StaticGenFn generator, const char *sdr, const char *entry) {
    sim::Start(tests::BaseBoard());
    tests::Record record{tests::Bytes(64), tests::Bytes(32)};
    DevTabEntry built = {};
    EXPECT_NE(generator(record.sdr.data(), &built), 0);
    std::memcpy(record.entry.data(), &built, 32);
    EXPECT_TRUE(tests::SameRecord(tests::Record{tests::Literal(sdr), tests::Literal(entry)}, record));
}

TEST(LimitsOfARow, MakeThresholdsWhereTheKindHasNone) {
    ExpectRecord(
        Test_GenOutletSDR,
        "00 00 51 01 31 20 00 00 07 60 7F 68 01 01 04 22 04 22 12 12 80 01 00 00 01 00x9 7F 80 00 3C 00 00 FB 00 03 03 00 00 00 C6 'Outlet' FFx10",
        "40 00x19 FF 07 60 7F 01 01 01 00x5");
}

TEST(LimitsOfARow, LeaveTheKindsOthersAsTheyAre) {
    ExpectRecord(
        Test_GenRailSDR,
        "00 00 51 01 2F 20 00 00 07 60 7F 68 02 01 85 32 85 32 1B 1B 00 04 00 00 64 00x4 D0 00x4 FF 00 00 8C 84 00 60 6C 03 03 00 00 00 C4 'Rail' FFx12",
        "44 01 00x18 FF 07 60 7F 02 01 64 00x5");
}

TEST(LimitsOfARow, AreTheNearestCountWhereTheRowSaysRounded) {
    ExpectRecord(
        Test_GenPdbSDR,
        "00 00 51 01 2E 20 00 00 15 60 7F 68 01 01 80 00 80 10 08 08 80 01 00 00 01 00x9 7F 80 00 00 2E 00 00 00 03 03 00 00 00 C3 'Pdb' FFx13",
        "42 01 00 00 00 80 00x14 FF 15 60 7F 01 01 01 00x5");
}

// One degree a count, -45 is D3h.
consteval int CountOfRounded(double value) {
    return oxa::CountOf(oxa::Quantity{value, oxa::kUnitCelsius, true, true}, oxa::kReadsCelsius);
}

TEST(LimitsOfARow, RoundToTheNearestCountOnBothSidesOfZero) {
    EXPECT_EQ(CountOfRounded(45.45), 45);
    EXPECT_EQ(CountOfRounded(45.55), 46);
    EXPECT_EQ(CountOfRounded(-45.45), 0xD3);
    EXPECT_EQ(CountOfRounded(-45.55), 0xD2);
}

} // namespace
