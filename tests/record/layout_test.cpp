// SPDX-License-Identifier: GPL-3.0-or-later
//
// The small functions behind the SDR bytes: entity, instance, sensor index and conversion factors.
#include "support/lookup_fixture.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class Layout : public Lookup {};

// ---- entity ------------------------------------------------------------------------------------

// Device types 0..79, ten a line, written down type by type; everything above is an add-in card.
const uint8_t kEntityIds[80] = {
    0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x97, 0x0B, 0x0B, 0x0B, // 0: 6 OCP
    0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, // 10
    0x0B, 0xE0, 0xE0, 0xE0, 0xE0, 0xE0, 0xE0, 0xE0, 0x0B, 0x0B, // 20: 21-27
    0xE1, 0xE1, 0xE1, 0xE1, 0x96, 0x0B, 0x0B, 0xE1, 0xE0, 0xE0, // 30: 30-33, 34, 37, 38-39
    0xE0, 0xE2, 0xE0, 0x0B, 0x0B, 0xE0, 0x0B, 0xE0, 0xE0, 0xE1, // 40: 40, 41, 42, 45, 47-48, 49
    0xE0, 0xE0, 0xE0, 0xE0, 0x0B, 0x96, 0x0B, 0x0B, 0x0B, 0x0B, // 50: 50-53, 55
    0x0B, 0x0B, 0xE0, 0xE0, 0xE0, 0x0B, 0xE0, 0xE1, 0xE0, 0xE0, // 60: 62-64, 66, 67, 68-69
    0xE0, 0xE0, 0xE0, 0xE0, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, 0x0B, // 70: 70-73
};

TEST_F(Layout, EveryDeviceTypeHasItsEntityId) {
    for (int type = 0; type < 256; ++type) {
        EXPECT_EQ(getentityid(static_cast<uint8_t>(type)), type < 80 ? kEntityIds[type] : 0x0B) << type;
    }
}

TEST_F(Layout, DeviceRelativeInstancesGetBit7) {
    for (int type = 0; type < 256; ++type) {
        for (const int entity : {0x00, 0x0B, 0x96, 0x97, 0xE0, 0xE1, 0xE2, 0xFF}) {
            const bool relative = type == 28 || type == 35 || type == 37 || type == 55 || entity == 0xE0;
            for (const int before : {0x00, 0x61, 0x7F, 0x80, 0xE5, 0xFF}) {
                uint8_t instance = static_cast<uint8_t>(before);
                modifyEntityInstance(&instance, static_cast<uint8_t>(entity), static_cast<uint8_t>(type));
                ASSERT_EQ(instance, relative ? (0x80 | (before & 0x7F)) : before) << type << "/" << entity;
            }
        }
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(Layout, ANullInstanceIsAnAssertion) {
    modifyEntityInstance(nullptr, 0xE0, 28);
    EXPECT_THAT(LogLines(),
                ElementsAre("error 255 modifyEntityInstance: assertion failed: entityInstance != 0"));
}

TEST_F(Layout, SeventeenDeviceTypesNumberTheirSensorsByTheirOwnIndex) {
    const std::vector<int> own = {17, 20, 35, 38, 39, 40, 41, 45, 46, 48, 50, 60, 61, 62, 63, 64, 66};
    ASSERT_EQ(own.size(), 17u);
    std::vector<int> found;
    for (int type = 0; type < 256; ++type) {
        if (useBrenmorSensorIndex(static_cast<uint8_t>(type))) {
            found.push_back(type);
        }
    }
    EXPECT_THAT(found, ElementsAreArray(own));
}

// ---- conversion factors ------------------------------------------------------------------------

TEST_F(Layout, OnlyDeviceType31HasItsOwnVoltAccuracy) {
    for (int type = 0; type < 256; ++type) {
        uint8_t m = 200, exponents = 0xE0;
        GetVoltAccuracy(static_cast<uint8_t>(type), &m, &exponents);
        EXPECT_EQ(m, type == 31 ? 100 : 200) << type;
        EXPECT_EQ(exponents, type == 31 ? 0xC0 : 0xE0) << type;
    }
}

TEST_F(Layout, ANullPointerLeavesTheVoltAccuracyUnchanged) {
    uint8_t m = 200, exponents = 0xE0;
    GetVoltAccuracy(31, nullptr, &exponents);
    GetVoltAccuracy(31, &m, nullptr);
    GetVoltAccuracy(31, nullptr, nullptr);
    EXPECT_EQ(m, 200);
    EXPECT_EQ(exponents, 0xE0);
}

TEST_F(Layout, AConfiguredNumberBecomesOneByteAndNoReadingBelow1) {
    const std::pair<int32_t, uint8_t> cases[] = {
        {0, 255}, {-5, 255},  {INT32_MIN, 255}, {-1, 255}, {1, 1},
        {17, 17}, {255, 255}, {256, 0},         {300, 44}, {0x7FFFFF34, 0x34},
    };
    for (const auto &[value, byte] : cases) {
        EXPECT_EQ(ConvertIntToUnsignedChar(value), byte) << value;
    }
}

// ---- GPU power ---------------------------------------------------------------------------------

struct Factors {
    int m, b;
    bool operator==(const Factors &) const = default;
};
void PrintTo(const Factors &factors, std::ostream *out) {
    *out << "M=" << factors.m << " B=" << factors.b;
}

constexpr uint32_t kUnknown = 0xFFFFFFFF;
constexpr uint16_t kTwice = 0xCABC; // the vendor whose cards are reported twice
constexpr int kTotal = 2, kSingle = 56;

class GpuPower : public Lookup {
protected:
    static void Gpus(const std::vector<sim::Gpu> &gpus) {
        sim::CurrentBoard().gpus = gpus;
    }
    static Factors Get(int device_type, uint8_t slot = 0, uint16_t board = 0x5500) {
        uint8_t m = 0xEE, b = 0xDD;
        GetGpuPowerAccuracy(board, static_cast<uint8_t>(device_type), slot, &m, &b);
        return {m, b};
    }
    static std::string Line(const std::string &text) {
        return "info 42 GetGpuPowerAccuracy: Add SDR: GetGpuPowerAccuracy " + text;
    }
};

TEST_F(GpuPower, NullPointersAreAssertionsAndNothingIsWrittenOrAsked) {
    Gpus({{1, 300, 1}});
    uint8_t m = 0xEE, b = 0xDD;
    GetGpuPowerAccuracy(0x5502, kTotal, 0, nullptr, &b);
    GetGpuPowerAccuracy(0x5502, kTotal, 0, &m, nullptr);
    EXPECT_EQ(m, 0xEE);
    EXPECT_EQ(b, 0xDD);
    EXPECT_THAT(LogLines(), ElementsAre("error 255 GetGpuPowerAccuracy: assertion failed: ucSdrM != 0",
                                        "error 255 GetGpuPowerAccuracy: assertion failed: ucSdrB != 0"));
    EXPECT_EQ(sim::CountCalls("MW_GetGPUAssetInfo"), 0u);
}

TEST_F(GpuPower, TheTotalIsAddedUpAndEveryCardLogged) {
    Gpus({{1, 350, 0x10DE}, {2, 450, 0x1002}, {3, 400, 0x10DE}}); // 1200 W: 4.7 counts of 255
    EXPECT_EQ(Get(kTotal), (Factors{5, 3}));
    EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:3."), Line("gpuIndex:0 gpuPower:350 vendor 0x10de."),
                                        Line("gpuIndex:1 gpuPower:450 vendor 0x1002."),
                                        Line("gpuIndex:2 gpuPower:400 vendor 0x10de.")));
}

TEST_F(GpuPower, EveryOtherDeviceTypeTakesTheTotal) {
    for (int type = 0; type < 256; ++type) {
        Board(CUSTOM_ID_DEFAULT);
        Gpus({{1, 350, 1}, {2, 450, 1}, {3, 400, 1}});
        const bool single = type == 56 || type == 57 || type == 58;
        EXPECT_EQ(Get(type, 2), single ? (Factors{2, 1}) : (Factors{5, 3})) << type;
    }
}

TEST_F(GpuPower, TheFactorsAreTheSmallestThatHoldThePower) {
    const struct {
        uint32_t watts;
        Factors factors;
    } cases[] = {
        {1, {1, 0}},         {255, {1, 0}},       {256, {2, 1}},       {510, {2, 1}},   {511, {3, 2}},
        {765, {3, 2}},       {766, {4, 2}},       {5600, {22, 11}},    {4335, {17, 9}}, {65023, {255, 128}},
        {64770, {254, 127}}, {64771, {255, 128}}, {65024, {255, 128}},
    };
    for (const auto &c : cases) {
        Board(CUSTOM_ID_DEFAULT);
        Gpus({{1, c.watts, 1}});
        EXPECT_EQ(Get(kTotal), c.factors) << c.watts << " W total";
        EXPECT_EQ(Get(kSingle, 1), c.factors) << c.watts << " W single";
        EXPECT_THAT(sim::LogTexts(sim::Level::kError), IsEmpty()) << c.watts;
    }
}

TEST_F(GpuPower, ATotalAbove65024IsAnErrorAndEndsTheWalk) {
    Gpus({{1, 65000, 1}, {2, 25, 1}, {3, 300, 1}});
    EXPECT_EQ(Get(kTotal), (Factors{255, 128}));
    EXPECT_THAT(
        LogLines(),
        ElementsAre(Line("gpuCnt:3."), Line("gpuIndex:0 gpuPower:65000 vendor 0x1."),
                    Line("gpuIndex:1 gpuPower:25 vendor 0x1."),
                    "error 42 GetGpuPowerAccuracy: Add SDR: GetGpuPowerAccuracy  gpuTotalPowerW:65025 "
                    "is over MAC_SENSOR_READING."));
}

TEST_F(GpuPower, ATotalBeyond32BitsDoesNotWrapBelowTheLimit) {
    Gpus({{1, 65000, 1}, {2, 0xFFFFFFF0, 1}}); // 64984 modulo 2^32
    EXPECT_EQ(Get(kTotal), (Factors{255, 128}));
    EXPECT_EQ(sim::LogTexts(sim::Level::kError).size(), 1u);
}

TEST_F(GpuPower, UnknownPowersAndSlotsAbove81AreLeftOut) {
    Gpus({{1, kUnknown, 1}, {81, 200, 1}, {82, 5000, 1}, {255, 5000, 1}, {2, 100, 1}});
    EXPECT_EQ(Get(kTotal), (Factors{2, 1})); // 300 W
    EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:5."), Line("gpuIndex:1 gpuPower:200 vendor 0x1."),
                                        Line("gpuIndex:4 gpuPower:100 vendor 0x1.")));
}

TEST_F(GpuPower, OnlyUnknownPowersGiveNoFactors) {
    Gpus({{1, kUnknown, 1}});
    EXPECT_EQ(Get(kTotal), (Factors{0, 0}));
    Gpus({{1, 0, 1}});
    EXPECT_EQ(Get(kTotal), (Factors{0, 0}));
}

TEST_F(GpuPower, ACardThatIsReportedTwiceCountsOnce) {
    Gpus({{7, 300, kTwice}, {7, 300, kTwice}, {8, 300, kTwice}});
    EXPECT_EQ(Get(kTotal), (Factors{3, 2})); // 600 W
    EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:3."), Line("gpuIndex:0 gpuPower:300 vendor 0xcabc."),
                                        Line("gpuIndex:2 gpuPower:300 vendor 0xcabc.")));
}

TEST_F(GpuPower, AnyVendorTakesTheSlotButOnlyTheOneIsSkippedByIt) {
    Gpus({{7, 300, 1}, {7, 300, kTwice}, {7, 300, 2}});
    EXPECT_EQ(Get(kTotal), (Factors{3, 2})); // the first and the third
    Board(CUSTOM_ID_DEFAULT);
    Gpus({{7, kUnknown, 1}, {7, 300, kTwice}});
    EXPECT_EQ(Get(kTotal), (Factors{2, 1})) << "a card that is left out takes no slot";
}

TEST_F(GpuPower, TheSlotFlagsAreFreshInEveryCall) {
    Gpus({{81, 300, kTwice}});
    EXPECT_EQ(Get(kTotal), (Factors{2, 1}));
    EXPECT_EQ(Get(kTotal), (Factors{2, 1}));
    EXPECT_EQ(Get(kSingle, 81), (Factors{2, 1}));
}

TEST_F(GpuPower, NoSlotIsTakenForAnother) {
    sim::SetTracing(false);
    for (uint8_t slot = 0; slot <= 81; ++slot) {
        for (uint8_t other = 0; other <= 81; ++other) {
            Gpus({{slot, 200, kTwice}, {other, 200, kTwice}});
            ASSERT_EQ(Get(kTotal), slot == other ? (Factors{1, 0}) : (Factors{2, 1}))
                << +slot << " " << +other;
        }
    }
}

TEST_F(GpuPower, TwentyNineCardsAreStillAdded) {
    std::vector<sim::Gpu> gpus;
    for (uint8_t slot = 1; slot <= 29; ++slot) {
        gpus.push_back({slot, 100, 1});
    }
    Gpus(gpus);
    EXPECT_EQ(Get(kTotal), (Factors{12, 6})); // 2900 W
    EXPECT_EQ(LogLines().size(), 30u);
}

struct BoardCase {
    uint16_t board;
    Factors factors;
    const char *text;
};
const BoardCase kBoards[] = {{0x5502, {17, 9}, "BoardId:0x5502."},
                             {0x550F, {22, 11}, "BoardId:0x550f."},
                             {0x5497, {4, 2}, "BoardId:0x5497."},
                             {0, {4, 2}, "BoardId:0x0."}};

TEST_F(GpuPower, AnUnreadableInventoryFallsBackToTheBoard) {
    for (const BoardCase &c : kBoards) {
        Board(CUSTOM_ID_DEFAULT);
        Gpus({{1, 300, 1}});
        Fail("MW_GetGPUAssetInfo");
        EXPECT_EQ(Get(kTotal, 1, c.board), c.factors);
        EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:0."), Line(c.text)));
    }
}

TEST_F(GpuPower, AnEmptyInventoryFallsBackToTheBoard) {
    for (const BoardCase &c : kBoards) {
        Board(CUSTOM_ID_DEFAULT);
        EXPECT_EQ(Get(kTotal, 1, c.board), c.factors);
        EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:0."), Line(c.text)));
    }
}

TEST_F(GpuPower, ThirtyCardsFallBackToTheBoard) {
    Gpus(std::vector<sim::Gpu>(30, sim::Gpu{1, 100, 1}));
    EXPECT_EQ(Get(kTotal, 1, 0x5502), (Factors{17, 9}));
    EXPECT_THAT(LogLines(), ElementsAre(Line("gpuCnt:30."), Line("BoardId:0x5502.")));
}

TEST_F(GpuPower, OneSlotAddsItsOwnRecordsOnly) {
    Gpus({{4, 300, 1}, {5, 350, 1}, {5, 350, 2}});
    EXPECT_EQ(Get(kSingle, 5), (Factors{3, 2})); // 700 W
    EXPECT_THAT(LogLines(), ElementsAre(Line("single power gpuSlot:5 gpuPower:700.")));
}

TEST_F(GpuPower, ASlotWithoutACardHasNoFactors) {
    Gpus({{4, 300, 1}});
    EXPECT_EQ(Get(57, 5), (Factors{0, 0}));
    EXPECT_THAT(LogLines(), ElementsAre(Line("single power gpuSlot:5 gpuPower:0.")));
}

TEST_F(GpuPower, OneSlotLeavesOutUnknownPowersAndSlotsAbove81) {
    Gpus({{5, kUnknown, 1}, {5, 300, 1}, {82, 300, 1}});
    EXPECT_EQ(Get(58, 5), (Factors{2, 1}));
    EXPECT_EQ(Get(58, 82), (Factors{0, 0}));
    Gpus({{81, 300, 1}});
    EXPECT_EQ(Get(58, 81), (Factors{2, 1}));
}

TEST_F(GpuPower, ACardReportedTwiceEndsTheWalkOfItsSlot) {
    Gpus({{5, 300, 1}, {5, 300, kTwice}, {5, 300, 1}});
    EXPECT_EQ(Get(kSingle, 5), (Factors{2, 1})); // the first only
    EXPECT_THAT(LogLines(), ElementsAre(Line("single power gpuSlot:5 gpuPower:300.")));
}

TEST_F(GpuPower, ASumPast32BitsEndsTheWalk) {
    Gpus({{5, 300, 1}, {5, 0xFFFFFFF0, 1}, {5, 300, 1}});
    EXPECT_EQ(Get(kSingle, 5), (Factors{2, 1}));
    EXPECT_THAT(LogLines(), ElementsAre(Line("single power gpuSlot:5 gpuPower:300.")));
}

TEST_F(GpuPower, FactorsOfOneSlotAreCutToEightBits) {
    Gpus({{5, 0xFFFFFFF0, 1}}); // M = 0x01010101, B = 0x00808081
    EXPECT_EQ(Get(kSingle, 5), (Factors{0x01, 0x81}));
    Gpus({{5, 65280, 1}}); // M = 256, B = (255 >> 1) + 1
    EXPECT_EQ(Get(kSingle, 5), (Factors{0, 128}));
}

TEST_F(GpuPower, OneSlotWithoutAnInventoryHasNoFactorsAndNoFallback) {
    Gpus({{5, 300, 1}});
    Fail("MW_GetGPUAssetInfo");
    EXPECT_EQ(Get(kSingle, 5, 0x5502), (Factors{0, 0}));
    EXPECT_THAT(LogLines(), testing::Not(testing::Contains(testing::HasSubstr("BoardId"))));
}

TEST_F(GpuPower, OneSlotOfAnOverlongInventoryIsNotReadPastItsEnd) {
    Gpus(std::vector<sim::Gpu>(60, sim::Gpu{5, 10, 1}));
    Get(kSingle, 5);
    EXPECT_EQ(sim::CountCalls("MW_GetGPUAssetInfo"), 1u);
    EXPECT_THAT(LogLines(), testing::Not(testing::Contains(testing::HasSubstr("BoardId"))));
}

} // namespace
