// SPDX-License-Identifier: GPL-3.0-or-later
//
// Disks: which slot goes where, front and rear, and what is written back.
#include "specific_sensors/generators_table.h"

namespace {

using namespace generators;

class DiskSensor : public RuleTest {
protected:
    // Slots 0..7 at the front, 24..31 at the rear; the front's slot 3 is printed as 30, the rear's 30 as 3.
    void SetUp() override {
        RuleTest::SetUp();
        sim::Board &board = sim::CurrentBoard();
        board.disks.backplanes = {{0, 8, "Front"}, {24, 8, "Rear"}};
        board.disks.conversion = {{3, 30}, {30, 3}, {5, 255}};
    }
    static void AddDisks(uint32_t sensor_class) {
        for (int sub = 0; sub < 8; ++sub) {
            AddRow(sensor_class, kNvme, sub, "S" + std::to_string(sub) + "_*");
        }
    }
};

TEST_F(DiskSensor, TemperatureAndVoltageKeepTheOldSlotInByte45AndShowTheConvertedOne) {
    for (const Generator &generator : {kTempGenerator, kVoltGenerator}) {
        for (const auto &[slot, printed, sub] :
             {std::array{3, 30, 4}, std::array{30, 3, 5}, std::array{4, 4, 4}, std::array{25, 25, 5},
              std::array{7, 7, 4}, std::array{8, 8, 5}, std::array{100, 100, 5}}) {
            ClearRows();
            AddDisks(generator.sensor_class);
            SpecificSensorParam param = Description(generator, kNvme, slot, 1);
            param.ucSensorSeq = 0x9A;
            const Made made = Make(generator, param);
            char name[16];
            std::snprintf(name, sizeof(name), "S%d_%02d", sub, printed);
            EXPECT_EQ(made.Name(), name);
            EXPECT_EQ(param.SlotId, printed) << "converted in place";
            EXPECT_EQ(param.SubDeviceType, 1) << "front and rear live in the query";
            EXPECT_EQ(made.At(8), 0x0B);
            EXPECT_EQ(made.At(9), printed);
            EXPECT_EQ(made.At(44), sub << 4 | 0x0A);
            EXPECT_EQ(made.At(45), slot);
            EXPECT_EQ(made.At(46), kNvme);
        }
    }
}

TEST_F(DiskSensor, ASlotConvertedTo255IsTheInstanceAsItIs) {
    AddDisks(kTemp);
    const Made made = Make(kTempGenerator, Description(kTemp, kNvme, 5, 1));
    EXPECT_EQ(made.At(9), 255);
    EXPECT_EQ(made.At(45), 5);
}

TEST_F(DiskSensor, EveryFullGeneratorTakesOnlySubType1) {
    for (const Generator &generator : kFullGenerators) {
        ClearRows();
        AddDisks(generator.sensor_class);
        for (int sub = 0; sub < 256; ++sub) {
            SpecificSensorParam param = Description(generator, kNvme, 3, sub);
            const Made made = Make(generator, param);
            EXPECT_EQ(made.result == GEN_SDR_SKIPPED, sub != 1) << generator.name << " " << sub;
            EXPECT_EQ(param.SlotId, sub == 1 ? 30 : 3) << generator.name << " " << sub;
        }
    }
}

TEST_F(DiskSensor, PowerAndFanAreNamedByTheConvertedSlotToo) {
    for (const Generator &generator : {kPowerGenerator, kFanGenerator}) {
        ClearRows();
        AddDisks(generator.sensor_class);
        SpecificSensorParam param = Description(generator, kNvme, 3, 1);
        const Made made = Make(generator, param);
        EXPECT_EQ(made.Name(), "S4_30") << generator.name;
        EXPECT_EQ(made.At(9), 0x60 + 30) << generator.name;
        EXPECT_EQ(made.At(46), kNvme);
    }
}

TEST_F(DiskSensor, TheSlotIsConvertedOncePerRecordAndOnlyForDisks) {
    for (const Generator &generator : kFullGenerators) {
        sim::ClearTrace();
        ClearRows();
        AddDisks(generator.sensor_class);
        AddRow(generator.sensor_class, 58, 1, "X*");
        Make(generator, Description(generator, kNvme, 3, 1));
        EXPECT_EQ(sim::CountCalls("oxa_CustomSlotConversion"), 1u) << generator.name;
        SpecificSensorParam param = Description(generator, 58, 3, 1);
        EXPECT_EQ(Make(generator, param).Name(), "X03") << generator.name;
        EXPECT_EQ(param.SlotId, 3);
        EXPECT_EQ(sim::CountCalls("oxa_CustomSlotConversion"), 1u) << generator.name;
        EXPECT_EQ(sim::CountCalls("HalHddBackpanelInst"), 1u) << generator.name;
    }
}

TEST_F(DiskSensor, TheSlotStaysConvertedWhenNothingComesOfIt) {
    SpecificSensorParam param = Description(kTemp, kNvme, 3, 1);
    EXPECT_EQ(Make(kTempGenerator, param).result, GEN_SDR_SKIPPED) << "no name";
    EXPECT_EQ(param.SlotId, 30);
    AddDisks(kTemp);
    param = Description(kTemp, kNvme, 3, 1);
    Store({Make(kTempGenerator, param).record});
    param = Description(kTemp, kNvme, 3, 1);
    EXPECT_EQ(Make(kTempGenerator, param).result, GEN_SDR_SKIPPED) << "there already";
    EXPECT_EQ(param.SlotId, 30);
}

TEST_F(DiskSensor, AStatusOfSubType1IsFrontOrRearAndAnyOtherStaysAsItIs) {
    AddDisks(kDisk);
    for (const auto &[slot, printed, place] :
         {std::array{3, 30, 4}, std::array{30, 3, 5}, std::array{7, 7, 4}, std::array{8, 8, 5}}) {
        for (int sub = 0; sub < 8; ++sub) {
            SpecificSensorParam param = Description(kDisk, kNvme, slot, sub);
            const Made made = Make(kDiskGenerator, param);
            char name[16];
            std::snprintf(name, sizeof(name), "S%d_%02d", sub == 1 ? place : sub, printed);
            EXPECT_EQ(made.Name(), name);
            EXPECT_EQ(param.SlotId, printed) << "converted in place";
            EXPECT_EQ(param.SubDeviceType, sub);
            EXPECT_EQ(param.wBitmap, 0x3F);
            EXPECT_EQ(made.At(8), 4);
            EXPECT_EQ(made.At(9), 0);
            EXPECT_EQ(made.At(29), slot) << "before conversion";
            EXPECT_EQ(made.At(30), kNvme);
        }
    }
}

} // namespace
