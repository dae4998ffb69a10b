// SPDX-License-Identifier: GPL-3.0-or-later
//
// A table of profiles that lacks parts, in the place of the library's.
#include "support/lookup_fixture.h"
#include "support/replaced_tables.h"

#include "oxa/specific_sensors.h"

namespace {
const uint8_t one = 1;
const SnrInfoRec wrong[] = {{0x0100, 1, 0, 0xFFFF, "WRONG"}};
const SnrInfoRec right[] = {{0x0100, 1, 0, 0xFFFF, "RIGHT"}};
} // namespace

extern "C" const SnrSpecificInfoRow g_atSnrSpecificInfo[10] = {
    {0, nullptr, wrong}, {0, &one, nullptr}, {0, &one, right},  {1, nullptr, wrong}, {2, &one, nullptr},
    {6, &one, wrong},    {7, &one, wrong},   {11, &one, wrong}, {16, &one, wrong},   {20, &one, wrong},
};

namespace {

class IncompleteRow : public Lookup {
protected:
    static std::string NameIn(uint32_t profile) {
        SnrQuery query = Query(0x0100, 1, 0, "NONE");
        getCustomSensorInfo(&query, profile);
        return Name(query);
    }
};

TEST_F(IncompleteRow, WithoutCountOrNamesIsPassedOverForTheNextOfItsProfile) {
    EXPECT_EQ(NameIn(0), "RIGHT");
}

TEST_F(IncompleteRow, WithoutCountHasNoNames) {
    EXPECT_EQ(NameIn(1), "NONE");
}

TEST_F(IncompleteRow, WithoutNamesHasNoNames) {
    EXPECT_EQ(NameIn(2), "NONE");
}

} // namespace
