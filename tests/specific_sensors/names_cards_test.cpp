// SPDX-License-Identifier: GPL-3.0-or-later
//
// Card families: their tables and the names that come out of them.
#include <set>

#include "support/lookup_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Family {
    uint32_t sensor_class;
    int device_type;
    int count;
    const CardSnrEntry *entries;
};

const std::vector<Family> &Families() {
    static const std::vector<Family> families = {
        {0x0100, 17, 14, atBrenmorSensorInfo},
        {0x0100, 20, 7, atHyperTempSensorInfo},
        {0x0803, 20, 2, atHyperPowerSensorInfo},
        {0x0100, 21, 1, atBirenRetimerTempSensorInfo},
        {0x0100, 22, 1, atHGXNSWITCHTempSensorInfo},
        {0x0100, 23, 1, atHGXPSWITCHTempSensorInfo},
        {0x0100, 24, 1, atHGXRETIMERTempSensorInfo},
        {0x0100, 25, 1, atHGXFPGATempSensorInfo},
        {0x0100, 26, 1, atHGXHMCTempSensorInfo},
        {0x0100, 27, 1, atHGXHSCTempSensorInfo},
        {0x0100, 35, 4, atGIGAHYPER3FPGATempSensorInfo},
        {0x0100, 38, 8, atMLUPcieRetimerTempSensorInfo},
        {0x0100, 39, 4, atMLUSdrdesRetimerTempSensorInfo},
        {0x0100, 40, 2, atMLUUBBTempSensorInfo},
        {0x0100, 41, 4, atMLUUBBSfpTempSensorInfo},
        {0x0100, 45, 4, atMLUInletTempSensorInfo},
        {0x1501, 42, 1, atX2000BOXSensorInfo},
        {0x0100, 46, 8, atHalvikTempSensorInfo},
        {0x0100, 47, 1, atILURetimerTempSensorInfo},
        {0x0100, 48, 8, atMETAXRetimerTempSensorInfo},
        {0x0100, 50, 4, atMGXNSWITCHTempSensorInfo},
        {0x0100, 51, 1, atMGXPSWITCHTempSensorInfo},
        {0x0100, 52, 1, atMGXFPGATempSensorInfo},
        {0x0100, 53, 1, atMGXHMCTempSensorInfo},
        {0x0100, 60, 17, atNebulaMatrixSensorInfo},
        {0x0100, 61, 6, atSP925DTempSensorInfo},
        {0x0100, 62, 1, atOxaUbbPowerBrickTempSensorInfo},
        {0x0100, 63, 1, atOxaUbbInletTempSensorInfo},
        {0x0100, 64, 3, atOxaUbbOutletTempSensorInfo},
        {0x0100, 65, 8, atMTRetimerTempSensorInfo},
        {0x0100, 66, 12, atBR166RetimerTempSensorInfo},
    };
    return families;
}

std::string EntryName(const CardSnrEntry &entry) {
    return std::string(entry.acName, strnlen(entry.acName, sizeof(entry.acName)));
}

SpecificSensorParam Description(uint32_t sensor_class, uint8_t slot = 3) {
    SpecificSensorParam param = {};
    param.dwSensorDevType = sensor_class;
    param.SlotId = slot;
    param.ucSensorSeq = 6;
    param.ucSecondPort = 9;
    return param;
}

class CardNames : public Lookup {};

TEST_F(CardNames, TheFamilyTableHasItsThirtyOneRowsInOrder) {
    ASSERT_EQ(Families().size(), std::size(g_atPurchaseCardSnrInfo));
    for (size_t row = 0; row < Families().size(); ++row) {
        const Family &family = Families()[row];
        const CardSnrRow &actual = g_atPurchaseCardSnrInfo[row];
        EXPECT_EQ(actual.dwSensorDevType, family.sensor_class) << "row " << row;
        EXPECT_EQ(actual.ucDeviceType, family.device_type) << "row " << row;
        EXPECT_EQ(actual.ucCnt, family.count) << "row " << row;
        EXPECT_EQ(actual.ptEntry, family.entries) << "row " << row;
    }
}

TEST_F(CardNames, NamesAreOneToSixteenCharactersAndUniqueInTheirTable) {
    for (const Family &family : Families()) {
        std::set<std::string> names;
        std::set<int> indexes;
        for (int entry = 0; entry < family.count; ++entry) {
            const std::string name = EntryName(family.entries[entry]);
            EXPECT_GE(name.size(), 1u) << "family " << family.device_type << " entry " << entry;
            EXPECT_LE(name.size(), 16u) << name;
            EXPECT_TRUE(names.insert(name).second) << name;
            EXPECT_TRUE(indexes.insert(family.entries[entry].ucSensorIndex).second) << name;
        }
    }
}

TEST_F(CardNames, TheSpelledOutNamesStandWhereTheyBelong) {
    EXPECT_EQ(EntryName(atBrenmorSensorInfo[0]), "DPU_Cpu_Inlet1");
    EXPECT_EQ(atBrenmorSensorInfo[0].ucSensorIndex, 0);
    EXPECT_EQ(EntryName(atBrenmorSensorInfo[13]), "DPU_DIMMB");
    EXPECT_EQ(atBrenmorSensorInfo[13].ucSensorIndex, 13);
    EXPECT_EQ(EntryName(atHGXNSWITCHTempSensorInfo[0]), "HGX_NSWITCH_TEMP");
    EXPECT_EQ(EntryName(atX2000BOXSensorInfo[0]), "BOX");
    EXPECT_EQ(EntryName(atNebulaMatrixSensorInfo[0]), "DPU_CPU_Inlet1");
    EXPECT_EQ(EntryName(atNebulaMatrixSensorInfo[16]), "DPU_QSFP2");
    for (int entry = 0; entry < 8; ++entry) {
        EXPECT_EQ(EntryName(atMLUPcieRetimerTempSensorInfo[entry]),
                  "MLU_PRT" + std::to_string(entry) + "_TEMP");
    }
}

// Retimers, ports and the like are told apart by a number, which is the sensor index, and by nothing else.
TEST_F(CardNames, NamesOfANumberedFamilyDifferInTheirNumberOnly) {
    const std::set<int> numbered = {35, 38, 39, 40, 41, 45, 46, 48, 50, 64, 65, 66};
    for (const Family &family : Families()) {
        if (numbered.count(family.device_type) == 0)
            continue;
        const std::string first = EntryName(family.entries[0]);
        const size_t zero = first.rfind('0');
        ASSERT_NE(zero, std::string::npos) << first;
        for (int entry = 1; entry < family.count; ++entry)
            EXPECT_EQ(EntryName(family.entries[entry]),
                      std::string(first).replace(zero, 1, std::to_string(entry)));
    }
}

TEST_F(CardNames, EveryEntryIsFoundByItsSensorIndex) {
    for (const Family &family : Families()) {
        for (int entry = 0; entry < family.count; ++entry) {
            SnrQuery query = Query(family.sensor_class, family.device_type, 0, "LEFTOVER_NAME_16");
            const SpecificSensorParam param = Description(family.sensor_class);
            const std::string expected = EntryName(family.entries[entry]);
            EXPECT_EQ(getPurchaseCardInfo(&query, &param, family.entries[entry].ucSensorIndex),
                      expected.size());
            EXPECT_EQ(Name(query), expected);
        }
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(CardNames, AFamilyWithoutTheIndexGivesZeroAndNoFallback) {
    SnrQuery query = Query(0x0100, 20, 0, "KEPT");
    const SpecificSensorParam param = Description(0x0100);
    EXPECT_EQ(getPurchaseCardInfo(&query, &param, 200), 0);
    EXPECT_EQ(sim::CountCalls("IPMI_LoadCustomID"), 0u) << "the generic lookup must not be asked";
}

TEST_F(CardNames, TheClassComesFromTheDescriptionAndTheDeviceTypeFromTheQuery) {
    SnrQuery query = Query(0x0100, 20, 0);
    SpecificSensorParam param = Description(0x0803);
    param.ucDeviceType = 17; // not looked at
    EXPECT_EQ(getPurchaseCardInfo(&query, &param, atHyperPowerSensorInfo[1].ucSensorIndex),
              EntryName(atHyperPowerSensorInfo[1]).size());
    EXPECT_EQ(Name(query), EntryName(atHyperPowerSensorInfo[1]));
}

TEST_F(CardNames, TheDescriptionsClassIsComparedAsAWholeWord) {
    SnrQuery query = Query(0x0100, 20, 0);
    const SpecificSensorParam param = Description(0x00010100);
    EXPECT_EQ(getPurchaseCardInfo(&query, &param, 0), 0);
    EXPECT_EQ(sim::CountCalls("IPMI_LoadCustomID"), 0u);
}

TEST_F(CardNames, EachNullPointerIsReportedAndGivesZero) {
    SnrQuery query = Query(0x0100, 2, 0);
    const SpecificSensorParam param = Description(0x0100);
    EXPECT_EQ(getPurchaseCardInfo(nullptr, &param, 0), 0);
    EXPECT_EQ(getPurchaseCardInfo(&query, nullptr, 0), 0);
    EXPECT_EQ(getPurchaseCardInfo(nullptr, nullptr, 0), 0);
    const std::string line =
        "error 42 getPurchaseCardInfo: getPurchaseCardInfo failed! The input parameter is null.";
    EXPECT_THAT(LogLines(), ElementsAre(line, line, line));
}

// A pattern that no table holds stays in the query, so "#" shows the port that the fallback was given.
// Profile 2 prints numbers plainly.
struct Fallback {
    uint32_t sensor_class;
    const char *name;
};
void PrintTo(const Fallback &fallback, std::ostream *out) {
    *out << std::hex << fallback.sensor_class;
}
class CardFallback : public Lookup, public testing::WithParamInterface<Fallback> {};

TEST_P(CardFallback, TheGenericLookupGetsTheSlotAndThePortOfTheClass) {
    Board(CUSTOM_ID_PELLAGO);
    SnrQuery query = Query(GetParam().sensor_class, 200, 0, "S*P#");
    const SpecificSensorParam param = Description(GetParam().sensor_class, 3);
    EXPECT_EQ(getPurchaseCardInfo(&query, &param, 0), 4);
    EXPECT_EQ(Name(query), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Classes, CardFallback,
                         testing::Values(Fallback{0x0100, "S3P6"}, Fallback{0x0803, "S3P0"},
                                         Fallback{0x0C01, "S3P0"}, Fallback{0x0D00, "S3P0"},
                                         Fallback{0x1700, "S3P0"}, Fallback{0x0200, "S3P9"}),
                         [](const auto &info) {
                             char text[8];
                             snprintf(text, sizeof(text), "%04X", info.param.sensor_class);
                             return std::string(text);
                         });

TEST_F(CardNames, AnyOtherClassWithoutAFamilyGivesZero) {
    for (const uint32_t sensor_class : {0x0403u, 0x1501u, 0xFF0Au, 0u, 0x00020100u}) {
        SnrQuery query = Query(sensor_class, 200, 0, "S*P#");
        const SpecificSensorParam param = Description(sensor_class);
        EXPECT_EQ(getPurchaseCardInfo(&query, &param, 0), 0) << sensor_class;
    }
    EXPECT_EQ(sim::CountCalls("IPMI_LoadCustomID"), 0u);
}

TEST_F(CardNames, AnEntryOfARowIsCopiedAndItsLengthReturned) {
    const CardSnrEntry entries[] = {{4, "FOUR"}, {9, "SIXTEENCHARSLONG"}};
    const CardSnrRow row = {0x0100, 99, 2, entries};
    SnrQuery query = Query(0x0100, 99, 0, "LEFTOVER_NAME_16");
    EXPECT_EQ(getNameInfo(&query, 4, &row), 4);
    EXPECT_EQ(Name(query), "FOUR");
    EXPECT_EQ(getNameInfo(&query, 9, &row), 16);
    EXPECT_EQ(Name(query), "SIXTEENCHARSLONG");
    EXPECT_EQ(getNameInfo(&query, 5, &row), 0);
}

TEST_F(CardNames, OnlyTheCountedEntriesOfARowAreLookedAt) {
    const CardSnrEntry entries[] = {{4, "FOUR"}, {9, "NINE"}};
    const CardSnrRow row = {0x0100, 99, 1, entries};
    SnrQuery query = Query(0x0100, 99, 0);
    EXPECT_EQ(getNameInfo(&query, 9, &row), 0);
}

TEST_F(CardNames, ANullQueryOrRowGivesZeroAndOneErrorEach) {
    SnrQuery query = Query(0x0100, 99, 0);
    const CardSnrEntry entry = {4, "FOUR"};
    const CardSnrRow row = {0x0100, 99, 1, &entry};
    EXPECT_EQ(getNameInfo(nullptr, 4, &row), 0);
    EXPECT_EQ(getNameInfo(&query, 4, nullptr), 0);
    const std::vector<sim::Event> logs = sim::Logs();
    ASSERT_EQ(logs.size(), 2u);
    for (const sim::Event &log : logs) {
        EXPECT_EQ(log.level, sim::Level::kError);
        EXPECT_EQ(log.number, 42u);
        EXPECT_EQ(log.function, "getNameInfo");
        EXPECT_EQ(log.text, "getNameInfo failed! The input parameter is null.");
    }
}

TEST_F(CardNames, ARowWithoutEntriesGivesZeroAndAnError) {
    SnrQuery query = Query(0x0100, 99, 0, "LEFT");
    const CardSnrRow row = {0x0100, 99, 1, nullptr};
    EXPECT_EQ(getNameInfo(&query, 4, &row), 0);
    EXPECT_EQ(Name(query), "LEFT");
    EXPECT_THAT(LogLines(), testing::ElementsAre(
                                "error 42 getNameInfo: getNameInfo failed! The input parameter is null."));
}

} // namespace
