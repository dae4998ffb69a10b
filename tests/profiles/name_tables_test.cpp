// SPDX-License-Identifier: GPL-3.0-or-later
//
// The exported tables of the name lookups: the profile table and the ten sensor information tables.
#include <map>
#include <set>
#include <tuple>

#include "profiles/expected_name_tables.h"
#include "support/lookup_fixture.h"

namespace {

using Key = std::tuple<uint32_t, int, int>;

std::vector<std::string> Rows(const SnrInfoRec *rows, size_t count) {
    std::vector<std::string> texts;
    for (size_t row = 0; row < count; ++row) {
        const SnrInfoRec &rec = rows[row];
        EXPECT_NE(memchr(rec.acName, 0, sizeof(rec.acName)), nullptr) << "row " << row << " has no end";
        char text[64];
        snprintf(text, sizeof(text), "%04X/%u/%u %.17s %u", rec.dwSensorDevType, rec.ucDeviceType,
                 rec.SubDeviceType, rec.acName, rec.wBitmap);
        texts.push_back(text);
    }
    return texts;
}

// Every pattern keeps the description's bitmap: 65535.
std::vector<std::string> Rows(const std::vector<ExpectedRow> &rows) {
    std::vector<std::string> texts;
    for (const ExpectedRow &row : rows) {
        char text[64];
        snprintf(text, sizeof(text), "%04X/%d/%d %s 65535", row.sensor_class, row.device_type, row.sub_type,
                 row.pattern);
        texts.push_back(text);
    }
    return texts;
}

void ExpectUniqueKeys(const SnrInfoRec *rows, size_t count) {
    std::set<Key> keys;
    for (size_t row = 0; row < count; ++row) {
        const bool fresh =
            keys.emplace(rows[row].dwSensorDevType, rows[row].ucDeviceType, rows[row].SubDeviceType).second;
        EXPECT_TRUE(fresh) << "row " << row << " can never be found";
    }
}

#define EXPECT_TABLE(table, counter, expected)                                                               \
    do {                                                                                                     \
        EXPECT_EQ(counter, (expected).size());                                                               \
        EXPECT_THAT(Rows(table, std::size(table)), testing::UnorderedElementsAreArray(Rows(expected)));      \
        ExpectUniqueKeys(table, std::size(table));                                                           \
    } while (0)

TEST(ProfileTables, DefaultHoldsItsRowsInOrder) {
    EXPECT_EQ(g_ucSnrDefaultCnt, 48);
    EXPECT_THAT(Rows(g_atDefaultSnrInfo, std::size(g_atDefaultSnrInfo)),
                testing::ElementsAreArray(Rows(kExpectedDefault)));
    ExpectUniqueKeys(g_atDefaultSnrInfo, std::size(g_atDefaultSnrInfo));
}

TEST(ProfileTables, KestrinHoldsItsRows) {
    EXPECT_TABLE(g_atKestrinSnrInfo, g_ucSnrKestrinCnt, kExpectedKestrin);
}

TEST(ProfileTables, PellagoHoldsItsRows) {
    EXPECT_TABLE(g_atPellagoSnrInfo, g_ucSnrPellagoCnt, kExpectedPellago);
}

TEST(ProfileTables, VoranaHoldsItsRows) {
    EXPECT_TABLE(g_atVoranaSnrInfo, g_ucSnrVoranaCnt, kExpectedVorana);
}

TEST(ProfileTables, AstrelHoldsItsRows) {
    EXPECT_TABLE(g_atAstrelSnrInfo, g_ucSnrAstrelCnt, kExpectedAstrel);
}

TEST(ProfileTables, QuorralHoldsItsRows) {
    EXPECT_TABLE(g_atQuorralSnrInfo, g_ucSnrQuorralCnt, kExpectedQuorral);
}

TEST(ProfileTables, LumoraHoldsItsRows) {
    EXPECT_TABLE(g_atLmSnrInfo, g_ucSnrLmCnt, kExpectedLumora);
}

TEST(ProfileTables, DurnowHoldsItsRows) {
    EXPECT_TABLE(g_atDurnowSnrInfo, g_ucSnrDurnowCnt, kExpectedDurnow);
}

TEST(ProfileTables, SablinHoldsItsRows) {
    EXPECT_TABLE(g_atSablinSnrInfo, g_ucSnrSablinCnt, kExpectedSablin);
}

TEST(ProfileTables, FerriskHoldsItsRows) {
    EXPECT_TABLE(g_atFerriskSnrInfo, g_ucSnrFerriskCnt, kExpectedFerrisk);
}

TEST(ProfileTables, TenProfilesStandInSearchOrderWithSablinBeforeFerrisk) {
    struct Row {
        uint32_t id;
        const uint8_t *count;
        const SnrInfoRec *table;
    };
    const Row expected[] = {
        {0, &g_ucSnrDefaultCnt, g_atDefaultSnrInfo}, {1, &g_ucSnrKestrinCnt, g_atKestrinSnrInfo},
        {2, &g_ucSnrPellagoCnt, g_atPellagoSnrInfo}, {3, &g_ucSnrVoranaCnt, g_atVoranaSnrInfo},
        {4, &g_ucSnrAstrelCnt, g_atAstrelSnrInfo},   {6, &g_ucSnrQuorralCnt, g_atQuorralSnrInfo},
        {7, &g_ucSnrLmCnt, g_atLmSnrInfo},           {11, &g_ucSnrDurnowCnt, g_atDurnowSnrInfo},
        {20, &g_ucSnrSablinCnt, g_atSablinSnrInfo},  {16, &g_ucSnrFerriskCnt, g_atFerriskSnrInfo},
    };
    ASSERT_EQ(g_dwSdrCustomCnt, 10u);
    for (size_t row = 0; row < 10; ++row) {
        EXPECT_EQ(g_atSnrSpecificInfo[row].dwCustomId, expected[row].id) << "row " << row;
        EXPECT_EQ(g_atSnrSpecificInfo[row].pucSnrCnt, expected[row].count) << "row " << row;
        EXPECT_EQ(g_atSnrSpecificInfo[row].ptInfo, expected[row].table) << "row " << row;
    }
}

} // namespace
