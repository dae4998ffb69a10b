// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where a power record departs from the model: factors, instance, sensor index, sensor type.
#include "specific_sensors/generators_table.h"

namespace {

using namespace generators;
using testing::Contains;

class PowerRecord : public RuleTest {
protected:
    static bool IsGpu(int type) {
        return type == 2 || type == 30 || type == 31 || IsSingleGpu(type);
    }
    static bool IsSingleGpu(int type) {
        return type == 56 || type == 57 || type == 58;
    }
    static void ExpectFactors(int type, int slot, int m, int b, const std::string &why) {
        const Made made = Offer(kPowerGenerator, type, slot);
        EXPECT_EQ(made.At(24), m) << why << ", type " << type << " slot " << slot;
        EXPECT_EQ(made.At(26), b) << why << ", type " << type << " slot " << slot;
        EXPECT_EQ(made.At(25), 0);
        EXPECT_EQ(made.At(27), 0);
        EXPECT_EQ(made.At(29), 0);
    }
};

TEST_F(PowerRecord, OnlyLumoraUsesTheOtherSensorType) {
    for (const auto &[profile, folder] : tests::NamedProfiles()) {
        Board(profile);
        EXPECT_EQ(Offer(kPowerGenerator, 34, 3).At(12), profile == CUSTOM_ID_LUMORA ? 0x0B : 0x08);
        EXPECT_EQ(Offer(kTempGenerator, 34, 3).At(12), 0x01);
    }
}

TEST_F(PowerRecord, EveryDeviceTypeHasItsEntityAndTheSlotAddedAndNothingElse) {
    for (const uint32_t profile : {0u, 7u}) {
        Board(profile);
        for (int type = 0; type < 256; ++type) {
            for (const auto &[slot, instance] :
                 {std::pair{3, 0x63}, std::pair{200, 0x28}, std::pair{254, 0x5E}, std::pair{255, 0x60}}) {
                SpecificSensorParam param = Description(kPower, type, slot, 1);
                param.ucBrenmorSensorIndex = 1; // card power has two
                const Made made = Offer(kPowerGenerator, param);
                ASSERT_GT(made.result, 48) << type;
                EXPECT_EQ(made.At(8), EntityOf(type)) << type;
                EXPECT_EQ(made.At(9), instance) << type << " slot " << slot;
                EXPECT_EQ(made.At(45), slot);
                EXPECT_EQ(made.At(46), type);
            }
        }
    }
}

TEST_F(PowerRecord, TheSensorIndexStandsForTwoDeviceTypesOnly) {
    for (int type = 0; type < 256; ++type) {
        SpecificSensorParam param = Description(kPower, type, 3, 1);
        param.ucBrenmorSensorIndex = 1;
        param.ucSensorSeq = 0x3C;
        EXPECT_EQ(Offer(kPowerGenerator, param).At(44), type == 20 ? 1 : type == 36 ? 0x1C : 0) << type;
    }
    SpecificSensorParam param = Description(kPower, 36, 3, 0xF8);
    EXPECT_EQ(Offer(kPowerGenerator, param).At(44), 0x85) << "F8h x 16 + 5, eight bits of it";
}

TEST_F(PowerRecord, OneWattPerCountForThreeCardsAndFiveForAllOthersButGpus) {
    for (int type = 0; type < 256; ++type) {
        if (IsGpu(type) || type == kNvme) {
            continue;
        }
        ExpectFactors(type, 3, type == 20 || type == 34 || type == 36 ? 1 : 5, 0, "no GPU");
    }
}

TEST_F(PowerRecord, WithoutAnInventoryTheBoardDecidesAboutTheWholeBoard) {
    for (const auto &[board, m, b] : {std::array{0x5502, 17, 9}, std::array{0x550F, 22, 11},
                                      std::array{0x1234, 4, 2}, std::array{0, 4, 2}}) {
        Board(CUSTOM_ID_DEFAULT, static_cast<uint16_t>(board));
        for (const int type : {2, 30, 31}) {
            ExpectFactors(type, 3, m, b, "fallback");
        }
        for (const int type : {56, 57, 58}) {
            ExpectFactors(type, 3, 0, 0, "nobody in the slot");
        }
    }
}

TEST_F(PowerRecord, TheWholeBoardIsTheSumOfTheGpus) {
    Board(CUSTOM_ID_DEFAULT, 0x5502).gpus = {
        {1, 300, 0x10DE}, {2, 0xFFFFFFFF, 0x10DE}, {82, 5000, 0x10DE}, {3, 400, 0xCABC}, {3, 400, 0xCABC}};
    for (const int type : {2, 30, 31}) {
        ExpectFactors(type, 3, 3, 2, "700 W"); // 699 / 255 + 1, (3 - 1) / 2 + 1
    }
}

TEST_F(PowerRecord, OneSlotIsTheGpusOfThatSlot) {
    Board(CUSTOM_ID_DEFAULT, 0x5502).gpus = {{1, 300, 0x10DE}, {3, 400, 0xCABC}, {3, 400, 0xCABC},
                                             {4, 255, 0x10DE}, {4, 1, 0x10DE},   {81, 511, 0x10DE}};
    for (const int type : {56, 57, 58}) {
        ExpectFactors(type, 1, 2, 1, "300 W");
        ExpectFactors(type, 2, 0, 0, "empty");
        ExpectFactors(type, 3, 2, 1, "400 W, reported twice");
        ExpectFactors(type, 4, 2, 1, "256 W");
        ExpectFactors(type, 81, 3, 2, "511 W");
        ExpectFactors(type, 255, 0, 0, "no slot");
    }
}

TEST_F(PowerRecord, FactorsStepWithThePower) {
    const std::array<uint32_t, 3> steps[] = {
        {0, 0, 0},         {1, 1, 0},         {255, 1, 0},      {256, 2, 1},  {510, 2, 1},
        {511, 3, 2},       {765, 3, 2},       {766, 4, 2},      {1020, 4, 2}, {1021, 5, 3},
        {64770, 254, 127}, {64771, 255, 128}, {65024, 255, 128}};
    for (const auto &[watts, m, b] : steps) {
        Board(CUSTOM_ID_DEFAULT, 0x5502).gpus = {{3, watts, 0x10DE}};
        for (const int type : {2, 30, 31, 56, 57, 58}) {
            ExpectFactors(type, 3, static_cast<int>(m), static_cast<int>(b), std::to_string(watts) + " W");
        }
    }
}

TEST_F(PowerRecord, MoreThanAReadingCanHoldIsAnErrorAndTheGreatestFactors) {
    Board(CUSTOM_ID_DEFAULT, 0x5502).gpus = {{1, 65000, 0x10DE}, {2, 25, 0x10DE}, {3, 1, 0x10DE}};
    ExpectFactors(2, 3, 255, 128, "65025 W");
    EXPECT_THAT(Lines(), Contains("error 42 GetGpuPowerAccuracy: Add SDR: GetGpuPowerAccuracy  "
                                  "gpuTotalPowerW:65025 is over MAC_SENSOR_READING."));
}

TEST_F(PowerRecord, AnInventoryOfMoreThan29GpusIsNoneForTheWholeBoard) {
    sim::Board &board = Board(CUSTOM_ID_DEFAULT, 0x5502);
    board.gpus.assign(29, {1, 10, 0x10DE});
    ExpectFactors(2, 1, 2, 1, "290 W");
    board.gpus.push_back({9, 10, 0x10DE});
    ExpectFactors(2, 1, 17, 9, "30 GPUs");
    ExpectFactors(56, 1, 2, 1, "290 W in slot 1");
    ExpectFactors(56, 9, 0, 0, "the thirtieth is not reached");
}

TEST_F(PowerRecord, OnlyGpusAskForTheInventoryAndTellTheirFactors) {
    for (int type = 0; type < 256; ++type) {
        sim::ClearTrace();
        Offer(kPowerGenerator, type, 3);
        if (type == kNvme) {
            continue;
        }
        EXPECT_EQ(sim::CountCalls("MW_GetGPUAssetInfo"), IsGpu(type) ? 1u : 0u) << type;
        EXPECT_EQ(sim::CountCalls("get_default_board_id"), 1u) << type;
        const std::string factors = IsSingleGpu(type) ? ":0, aucTemp[FULL_SDR_B_VALUE_LS_8_BITS]:0"
                                                      : ":4, aucTemp[FULL_SDR_B_VALUE_LS_8_BITS]:2";
        const std::string line = "info 42 GenSpecificPowerSDR: Add SDR: GenSpecificPowerSDR: "
                                 "aucTemp[FULL_SDR_M_VALUE_LS_8_BITS]" +
                                 factors;
        EXPECT_EQ(std::ranges::count(LinesOf(kPowerGenerator), line), IsGpu(type) ? 1 : 0) << type;
    }
}

TEST_F(PowerRecord, TheOcpRuleOfLumoraIsNotForPower) {
    Board(CUSTOM_ID_LUMORA);
    const Made made = Offer(kPowerGenerator, 6, 2, 1);
    EXPECT_EQ(made.At(9), 0x62);
    EXPECT_EQ(made.At(45), 2);
}

} // namespace
