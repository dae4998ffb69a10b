// SPDX-License-Identifier: GPL-3.0-or-later
//
// Rules of the full records: thresholds and masks, hysteresis, entity and instance, sensor index, fixed
// thresholds, and the thresholds that a user set.
#include "specific_sensors/generators_table.h"

namespace {

using namespace generators;
using testing::Contains;
using testing::ElementsAre;

class FullRecord : public RuleTest {
protected:
    static void UserThreshold(uint16_t mask, const std::array<uint8_t, 6> &thresholds) {
        SetByUser("NAME", mask, thresholds);
    }
    static std::vector<int> Thresholds(const Made &made) {
        return {made.At(36), made.At(37), made.At(38), made.At(39), made.At(40), made.At(41)};
    }
};

// ---- thresholds of the description --------------------------------------------------------------

struct ThresholdBit {
    int bit;
    size_t byte;
    int value;               // of the description used here
    std::array<int, 4> mask; // bytes 14..17
};
constexpr ThresholdBit kBits[] = {
    {0, 41, 10, {0x01, 0x10, 0x01, 0x00}},  {1, 40, 5, {0x04, 0x20, 0x04, 0x00}},
    {2, 39, 2, {0x10, 0x40, 0x10, 0x00}},   {3, 38, 90, {0x80, 0x00, 0x80, 0x10}},
    {4, 37, 100, {0x00, 0x02, 0x00, 0x22}}, {5, 36, 110, {0x00, 0x08, 0x00, 0x48}},
};

TEST_F(FullRecord, EveryCombinationOfThresholdBitsGivesItsMasksAndValues) {
    for (const Generator &generator : kFullGenerators) {
        for (int bitmap = 0; bitmap < 64; ++bitmap) {
            SpecificSensorParam param = Description(generator, 200, 3);
            param.wBitmap = static_cast<uint16_t>(bitmap);
            const Made made = Offer(generator, param);
            std::array<int, 4> masks{};
            for (const ThresholdBit &bit : kBits) {
                const bool set = (bitmap >> bit.bit & 1) != 0;
                EXPECT_EQ(made.At(bit.byte), set ? bit.value : 0) << generator.name << " " << bitmap;
                for (size_t at = 0; set && at < 4; ++at) {
                    masks[at] |= bit.mask[at];
                }
            }
            for (size_t at = 0; at < 4; ++at) {
                EXPECT_EQ(made.At(14 + at), masks[at]) << generator.name << " " << bitmap << " byte " << at;
            }
            EXPECT_EQ(made.At(18), bitmap);
            EXPECT_EQ(made.At(19), bitmap);
        }
    }
}

TEST_F(FullRecord, BitsWithoutAThresholdOnlyReachTheTwoMaskBytes) {
    for (const Generator &generator : kFullGenerators) {
        SpecificSensorParam param = Description(generator, 200, 3);
        param.wBitmap = 0x0FC0;
        const Made made = Offer(generator, param);
        EXPECT_EQ(Bytes(made.record.begin() + 14, made.record.begin() + 20), Literal("00000000C0C0"));
        EXPECT_THAT(Thresholds(made), testing::Each(0));
        EXPECT_EQ(param.wBitmap, 0x0FC0);
    }
}

TEST_F(FullRecord, AHysteresisOf0KeepsTheTemplates) {
    for (const Generator &generator : kFullGenerators) {
        for (const int hysteresis : {0, 1, 3, 200, 255}) {
            SpecificSensorParam param = Description(generator, 200, 3);
            param.ucHysteresis = static_cast<uint8_t>(hysteresis);
            const Made made = Offer(generator, param);
            EXPECT_EQ(made.At(42), hysteresis == 0 ? 3 : hysteresis) << generator.name;
            EXPECT_EQ(made.At(43), hysteresis == 0 ? 3 : hysteresis) << generator.name;
        }
    }
}

// ---- entity, instance, sensor index -------------------------------------------------------------

// Temperature and voltage share the model; a card family takes its name from the catalogue, so names are not
// compared.
TEST_F(FullRecord, EveryDeviceTypeHasItsEntityInstanceAndIndex) {
    for (const Generator &generator : {kTempGenerator, kVoltGenerator}) {
        for (int type = 0; type < 256; ++type) {
            for (const int slot : {0, 3, 159, 160, 200, 254, 255}) {
                if (type == kNvme) {
                    continue; // a test of its own
                }
                SpecificSensorParam param = Description(generator, type, slot, 2);
                param.ucSensorSeq = 0xF7;
                const Made made = Offer(generator, param);
                ASSERT_GT(made.result, 48) << generator.name << " type " << type;
                const bool counted = type != 4 && slot < 255;
                const int instance = Relative(type, (0x60 + (counted ? slot : 0)) & 0xFF);
                EXPECT_EQ(made.At(8), EntityOf(type)) << "type " << type;
                EXPECT_EQ(made.At(9), instance) << "type " << type << " slot " << slot;
                EXPECT_EQ(made.At(44), IsNumberedByIndex(type) ? 0x00 : 0x27) << "type " << type;
                EXPECT_EQ(made.At(45), slot);
                EXPECT_EQ(made.At(46), type);
            }
        }
    }
}

TEST_F(FullRecord, ASlotWrapsInTheInstanceWithoutAWord) {
    EXPECT_EQ(Offer(kTempGenerator, 200, 159).At(9), 0xFF);
    EXPECT_EQ(Offer(kTempGenerator, 200, 160).At(9), 0x00);
    EXPECT_EQ(Offer(kTempGenerator, 200, 200).At(9), 0x28);
    for (const sim::Event &event : sim::Trace()) {
        EXPECT_EQ(event.text.find("may"), std::string::npos) << event.text;
        if (event.kind == sim::Kind::kLog) {
            EXPECT_EQ(event.level, sim::Level::kInfo) << event.text;
        }
    }
}

TEST_F(FullRecord, TheSensorIndexIsTheBrenmorByteOrSubTypeAndPort) {
    SpecificSensorParam param = Description(kVolt, 17, 3, 2);
    param.ucBrenmorSensorIndex = 0xAB;
    EXPECT_EQ(Offer(kVoltGenerator, param).At(44), 0xAB);
    param.ucDeviceType = 18;
    EXPECT_EQ(Offer(kVoltGenerator, param).At(44), 0x25);
    param.SubDeviceType = 0x1F; // only the low half fits
    param.ucSensorSeq = 0x30;
    EXPECT_EQ(Offer(kVoltGenerator, param).At(44), 0xF0);
}

TEST_F(FullRecord, Type41AddsItsIndexAndWraps) {
    for (const auto &[slot, index, instance] :
         {std::array{3, 2, 0x65}, std::array{159, 3, 0x02}, std::array{255, 1, 0x61}}) {
        SpecificSensorParam param = Description(kTemp, 41, slot);
        param.ucBrenmorSensorIndex = static_cast<uint8_t>(index);
        const Made made = Offer(kTempGenerator, param);
        EXPECT_EQ(made.At(9), instance);
        EXPECT_EQ(made.At(8), 0xE2);
        EXPECT_EQ(made.At(44), index);
    }
    SpecificSensorParam param = Description(kVolt, 41, 200);
    param.ucBrenmorSensorIndex = 250;
    EXPECT_EQ(Offer(kVoltGenerator, param).At(9), 0x22) << "28h + FAh";
}

TEST_F(FullRecord, OnlyType41AddsAnIndex) {
    for (const int type : {17, 20, 38, 40, 42, 60}) {
        SpecificSensorParam param = Description(kVolt, type, 3);
        param.ucBrenmorSensorIndex = 9;
        EXPECT_EQ(Offer(kVoltGenerator, param).At(9), Relative(type, 0x63)) << type;
    }
}

TEST_F(FullRecord, AnOcpPortOfLumoraIsDeviceRelativeAndHasNoSlot) {
    for (const auto &[profile, folder] : tests::NamedProfiles()) {
        Board(profile);
        for (const int type : {5, 6, 7}) {
            for (const int sub : {0, 1, 2}) {
                for (const auto &[slot, instance] :
                     {std::pair{2, 0xE2}, std::pair{200, 0xA8}, std::pair{255, 0xE0}}) {
                    const Made made = Offer(kTempGenerator, type, slot, sub);
                    const bool port = profile == CUSTOM_ID_LUMORA && type == 6 && sub == 1;
                    const int plain = slot == 255 ? 0x60 : (0x60 + slot) & 0xFF;
                    EXPECT_EQ(made.At(9), port ? instance : plain) << profile << " " << type << " " << sub;
                    EXPECT_EQ(made.At(45), port ? 0xFF : slot);
                }
            }
        }
    }
}

// ---- templates ----------------------------------------------------------------------------------

// Bytes 0..7, 10..13 and 20..35 of the records of a device type that no step treats specially.
TEST_F(FullRecord, TheRestIsTheTemplates) {
    const std::pair<Generator, const char *> wanted[] = {
        {kTempGenerator, "80010000010000000000000000007f80"},
        {kVoltGenerator, "00040000c800000000e0000000 00ff00"},
        {kPowerGenerator, "000600000500000000000000 0000ff00"},
        {kFanGenerator, "001200006400000000000000 0000ff00"},
    };
    const std::string types[] = {"01", "02", "08", "04"};
    for (size_t i = 0; i < 4; ++i) {
        const auto &[generator, units] = wanted[i];
        const Bytes record = Offer(generator, 200, 3).record;
        ASSERT_EQ(record.size(), 52u);
        EXPECT_EQ(Bytes(record.begin(), record.begin() + 8), Literal("0000 51 01 2F 20 00 00"));
        EXPECT_EQ(Bytes(record.begin() + 10, record.begin() + 14), Literal("7F 68" + types[i] + "01"));
        EXPECT_EQ(tests::Hex(Bytes(record.begin() + 20, record.begin() + 36)), tests::Hex(Literal(units)))
            << generator.name;
        EXPECT_EQ(record[47], 0xC4);
    }
}

TEST_F(FullRecord, OnlyVoltagesOfType31AreFiner) {
    for (int type = 0; type < 256; ++type) {
        const Made made = Offer(kVoltGenerator, type, 3, 1);
        EXPECT_EQ(made.At(24), type == 31 ? 100 : 200) << type;
        EXPECT_EQ(made.At(29), type == 31 ? 0xC0 : 0xE0) << type;
    }
}

TEST_F(FullRecord, ANameOfEveryLengthGivesItsRecordLength) {
    for (const Generator &generator : kFullGenerators) {
        for (size_t length = 1; length <= 16; ++length) {
            ClearRows();
            const std::string name = std::string("ABCDEFGHIJKLMNOP").substr(0, length);
            AddRow(generator.sensor_class, 200, 0, name);
            const Made made = Make(generator, Description(generator, 200, 3));
            EXPECT_EQ(made.result, static_cast<int>(48 + length)) << generator.name;
            EXPECT_EQ(made.At(4), static_cast<int>(43 + length));
            EXPECT_EQ(made.At(47), static_cast<int>(0xC0 + length));
            EXPECT_EQ(made.Name(), name);
        }
    }
}

// ---- fixed thresholds of Ferrisk ----------------------------------------------------------------

TEST_F(FullRecord, FerriskFixesTheUpperThresholdsOfGpusAndNics) {
    Board(CUSTOM_ID_FERRISK);
    for (const auto &[type, unr, uc, unc] : {std::array{2, 90, 88, 85}, std::array{5, 110, 105, 100}}) {
        for (const int bitmap : {0x00, 0x07, 0x02, 0x3F, 0x38}) {
            SpecificSensorParam param = Description(kTemp, type, 3);
            param.wBitmap = static_cast<uint16_t>(bitmap);
            param.ucUNR = param.ucUC = param.ucUNC = 77;
            const Made made = Offer(kTempGenerator, param);
            const auto lower = [&](int bit, int value) { return (bitmap >> bit & 1) != 0 ? value : 0; };
            EXPECT_THAT(Thresholds(made), ElementsAre(unr, uc, unc, lower(2, 2), lower(1, 5), lower(0, 10)));
            EXPECT_EQ(made.At(18), 0x38) << "assigned, not added";
            EXPECT_EQ(made.At(19), 0x38);
            EXPECT_EQ(made.At(14), 0x80 | lower(0, 0x01) | lower(1, 0x04) | lower(2, 0x10));
            EXPECT_EQ(made.At(15), 0x0A | lower(0, 0x10) | lower(1, 0x20) | lower(2, 0x40));
            EXPECT_EQ(made.At(16), made.At(14));
            EXPECT_EQ(made.At(17), 0x7A);
            EXPECT_EQ(param.wBitmap, bitmap) << "the description keeps its bitmap";
        }
    }
}

TEST_F(FullRecord, NothingElseIsFixed) {
    for (const auto &[profile, folder] : tests::NamedProfiles()) {
        Board(profile);
        for (int type = 0; type < 256; ++type) {
            const bool fixed = profile == CUSTOM_ID_FERRISK && (type == 2 || type == 5);
            const Made made = Offer(kTempGenerator, type, 3, 1);
            EXPECT_EQ(made.At(18), fixed ? 0x38 : 0x3F) << profile << " " << type;
        }
    }
    Board(CUSTOM_ID_FERRISK);
    EXPECT_EQ(Offer(kVoltGenerator, 2, 3).At(18), 0x3F);
    EXPECT_EQ(Offer(kPowerGenerator, 2, 3).At(18), 0x3F);
    EXPECT_EQ(Offer(kFanGenerator, 2, 3).At(18), 0x3F);
}

// ---- thresholds that a user set -----------------------------------------------------------------

TEST_F(FullRecord, UserThresholdsWinOverTheDescriptions) {
    for (const Generator &generator : kFullGenerators) {
        UserThreshold(0x3F, {120, 111, 99, 1, 6, 12});
        EXPECT_THAT(Thresholds(Offer(generator, 200, 3)), ElementsAre(120, 111, 99, 1, 6, 12))
            << generator.name;
        EXPECT_THAT(Lines(), Contains("info 42 updateSdrThreshold: update sensor "
                                      "NAME mask 0x3f, threshold 120, 111, 99, 1, 6, 12 successfully"));
        sim::ClearTrace();
    }
}

TEST_F(FullRecord, UserThresholdsWinOverTheFixedOnes) {
    Board(CUSTOM_ID_FERRISK);
    UserThreshold(0x38, {99, 95, 80, 1, 1, 1});
    EXPECT_THAT(Thresholds(Offer(kTempGenerator, 2, 3)), ElementsAre(99, 95, 80, 2, 5, 10));
}

TEST_F(FullRecord, UserThresholdsOfAnotherMaskAreLeftOut) {
    Board(CUSTOM_ID_FERRISK);
    UserThreshold(0x3F, {99, 95, 80, 1, 6, 12}); // the record's own mask is 38h
    EXPECT_THAT(Thresholds(Offer(kTempGenerator, 2, 3)), ElementsAre(90, 88, 85, 2, 5, 10));
    EXPECT_THAT(Lines(), Contains("warn 42 updateSdrThreshold: sensor NAME last mask "
                                  "3f, now mask 38, cannot modify threshold"));
}

TEST_F(FullRecord, UserThresholdsOutOfOrderAreLeftOut) {
    for (const Generator &generator : kFullGenerators) {
        UserThreshold(0x3F, {120, 99, 111, 1, 6, 12});
        EXPECT_THAT(Thresholds(Offer(generator, 200, 3)), ElementsAre(110, 100, 90, 2, 5, 10));
    }
}

TEST_F(FullRecord, ForcedFanThresholdsCanBeSetByAUserUnderTheirOwnMask) {
    Board(CUSTOM_ID_FERRISK);
    UserThreshold(0x13, {0, 222, 0, 0, 31, 41});
    EXPECT_THAT(Thresholds(Offer(kFanGenerator, 255, 3)), ElementsAre(110, 222, 90, 2, 31, 41));
}

TEST_F(FullRecord, UserThresholdsAreLookedForOncePerRecord) {
    for (const Generator &generator : kFullGenerators) {
        sim::ClearTrace();
        Offer(generator, 200, 3);
        EXPECT_EQ(sim::CountCalls("MW_GetSensorThreshInfo"), 1u) << generator.name;
    }
}

} // namespace
