// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where a fan record departs from the model: the board that takes none, instance, accuracy byte, forced
// thresholds.
#include "specific_sensors/generators_table.h"

namespace {

using namespace generators;

class FanRecord : public RuleTest {};

TEST_F(FanRecord, OneBoardTakesNoneInAnyProfile) {
    for (const auto &[profile, folder] : tests::NamedProfiles()) {
        for (const int type : {255, 0, 1, 200}) {
            Board(profile, 0x5497);
            EXPECT_EQ(Offer(kFanGenerator, type, 3).result, GEN_SDR_FAILED) << profile;
            EXPECT_EQ(sim::CountText("The board does not support adding sensor FAN_SPEED."), 1u);
            Board(profile, 0x5498);
            EXPECT_EQ(Offer(kFanGenerator, type, 3).Name(), "NAME") << profile;
        }
    }
}

TEST_F(FanRecord, EveryDeviceTypeIsAFanWithTheSlotAdded) {
    for (int type = 0; type < 256; ++type) {
        for (const auto &[slot, instance] :
             {std::pair{0, 0x60}, std::pair{3, 0x63}, std::pair{159, 0xFF}, std::pair{160, 0x00},
              std::pair{200, 0x28}, std::pair{255, 0x5F}}) {
            if (type == kNvme) {
                continue;
            }
            SpecificSensorParam param = Description(kFan, type, slot, 1);
            param.ucBrenmorSensorIndex = 0x7B;
            const Made made = Offer(kFanGenerator, param);
            EXPECT_EQ(made.At(8), 0x1D) << type;
            EXPECT_EQ(made.At(9), instance) << type << " slot " << slot;
            EXPECT_EQ(made.At(24), 100);
            EXPECT_EQ(made.At(44), 0) << type;
            EXPECT_EQ(made.At(45), 0x7B);
            EXPECT_EQ(made.At(46), type);
        }
    }
}

TEST_F(FanRecord, FerriskForcesTheLowerThresholdsOfPlainFans) {
    Board(CUSTOM_ID_FERRISK);
    for (const int type : {255, 0, 1}) {
        for (const int bitmap : {0x00, 0x3F, 0x10, 0x13, 0x20}) {
            for (const auto &[lc, lower] : {std::pair{21, 19}, std::pair{2, 0}, std::pair{1, 255},
                                            std::pair{0, 254}, std::pair{255, 253}}) {
                SpecificSensorParam param = Description(kFan, type, 4);
                param.wBitmap = static_cast<uint16_t>(bitmap);
                param.ucLC = static_cast<uint8_t>(lc);
                const Made made = Offer(kFanGenerator, param);
                EXPECT_EQ(Bytes(made.record.begin() + 14, made.record.begin() + 20), Literal("050205021313"));
                EXPECT_EQ(made.At(41), lc);
                EXPECT_EQ(made.At(40), lower);
                EXPECT_EQ(made.At(36), (bitmap & 0x20) != 0 ? 110 : 0) << "the upper ones stay";
                EXPECT_EQ(made.At(37), (bitmap & 0x10) != 0 ? 100 : 0);
                EXPECT_EQ(made.At(38), (bitmap & 0x08) != 0 ? 90 : 0);
                EXPECT_EQ(made.At(39), (bitmap & 0x04) != 0 ? 2 : 0);
                EXPECT_EQ(param.wBitmap, bitmap);
            }
        }
    }
}

TEST_F(FanRecord, NoOtherFanIsForced) {
    for (const auto &[profile, folder] : tests::NamedProfiles()) {
        Board(profile);
        for (int type = 0; type < 256; ++type) {
            const bool plain = type == 255 || type == 0 || type == 1;
            const Made made = Offer(kFanGenerator, type, 4, 1);
            EXPECT_EQ(made.At(18), profile == CUSTOM_ID_FERRISK && plain ? 0x13 : 0x3F)
                << profile << " type " << type;
        }
    }
}

// Only the generic names: a card family of the same device type is not asked.
TEST_F(FanRecord, TheNameIsTheTablesAlsoForACardFamily) {
    AddRow(kFan, 20, 0, "F*");
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 20, 3)).Name(), "F03");
    ClearRows();
    AddRow(kTemp, 22, 0, "F*"); // the description's class, not the generator, picks the row
    EXPECT_EQ(Make(kFanGenerator, Description(kTemp, 22, 3)).Name(), "F03");
}

// ---- what is said of a name ------------------------------------------------------------------------------------------

bool NameIsTold() {
    for (const std::string &line : LinesOf(kFanGenerator)) {
        if (line.find("called getSensorInfo") != std::string::npos) {
            return true;
        }
    }
    return false;
}

TEST_F(FanRecord, ANameOfOneToSixteenCharactersIsTold) {
    for (const std::string name : {"F", "0123456789ABCDEF"}) {
        ClearRows();
        AddRow(kFan, 200, 0, name);
        sim::ClearTrace();
        EXPECT_EQ(Make(kFanGenerator, Description(kFan, 200, 3)).Name(), name);
        EXPECT_TRUE(NameIsTold()) << name;
    }
}

TEST_F(FanRecord, AnEmptyNameIsNotTold) {
    for (const std::string name : {"", "null"}) {
        ClearRows();
        AddRow(kFan, 200, 0, name);
        sim::ClearTrace();
        EXPECT_EQ(Make(kFanGenerator, Description(kFan, 200, 3)).result, GEN_SDR_SKIPPED);
        EXPECT_FALSE(LinesOf(kFanGenerator).empty());
        EXPECT_FALSE(NameIsTold()) << name;
    }
}

TEST_F(FanRecord, ANameOfMoreThanSixteenCharactersIsNotTold) {
    ClearRows();
    AddRow(kFan, 200, 0, "0123456789ABCD*");
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 200, 100)).result, GEN_SDR_FAILED);
    EXPECT_FALSE(LinesOf(kFanGenerator).empty());
    EXPECT_FALSE(NameIsTold());
}

} // namespace
