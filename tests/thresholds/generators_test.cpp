// SPDX-License-Identifier: GPL-3.0-or-later
//
// Stored thresholds have the last word in every full record that is generated at run time, and no word in a compact
// one.
#include <functional>

#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

// A description that one generator builds a record from.
struct Case {
    std::string what;
    GenSpecificSDRFn generate;
    uint32_t custom_id;
    uint16_t board_id;
    SpecificSensorParam param;
    std::string name; // of the record that comes out
};
void PrintTo(const Case &c, std::ostream *out) {
    *out << c.what;
}

SpecificSensorParam Description(uint32_t word, uint8_t device, uint8_t sub, uint8_t slot, uint16_t bitmap) {
    SpecificSensorParam param{};
    param.dwSensorDevType = word;
    param.ucDeviceType = device;
    param.SubDeviceType = sub;
    param.SlotId = slot;
    param.wBitmap = bitmap;
    param.ucUNR = 120;
    param.ucUC = 110;
    param.ucUNC = 100;
    param.ucLNC = 30;
    param.ucLC = 20;
    param.ucLNR = 10;
    return param;
}

const Case kFull[] = {
    {"Temperature", GenSpecificTempSDR, 0, 0x5500, Description(0x0100, 2, 0, 3, 0x3F), "GPU_TEMP_03"},
    {"Voltage", GenSpecificVoltSDR, 3, 0x5500, Description(0x0200, 31, 0, 3, 0x3F), "P3_SXM_Volts"},
    {"Power", GenSpecificPowerSDR, 0, 0x5500, Description(0x0803, 2, 0, 3, 0x3F), "GPU_TOTAL_POWER"},
    {"Fan", GenSpecificFanSpeedSDR, 0, 0x5500, Description(0x0403, 255, 0, 3, 0x3F), "FAN_SPEED_03"},
};
const Case kCompact[] = {
    {"DiskStatus", GenSpecificStatusSDR, 16, 0x5500, Description(0x0D00, 59, 2, 5, 0x47), "SATA5_Status"},
    {"CardStatus", GenSpecificCardStatusSDR, 0, 0x5500, Description(0x1501, 42, 0, 1, 0), "BOX"},
    {"SablinGpuStatus", GenSablinGPUCardStatusSDR, 20, 0x54E0, Description(0x1700, 2, 0, 5, 0),
     "RA3_Card_Status"},
    {"MemoryStatus", GenMEMStatusSpecificSDR, 1, 0x5500, Description(0x0C01, 18, 0, 3, 0), "GPU3_Mem"},
};

struct Made {
    unsigned length = 0;
    Sdr sdr{};
};
Made Generate(const Case &c) {
    sim::CurrentBoard().custom_id = c.custom_id;
    sim::CurrentBoard().board_id = c.board_id;
    SpecificSensorParam param = c.param;
    Made made;
    made.length = c.generate(&param, made.sdr.data(), param.dwSensorDevType);
    return made;
}
Lines UpdateLines() { // and what was counted with them
    Lines lines;
    for (const sim::Event &event : sim::Trace())
        if (event.file == kUnit)
            lines.push_back(tests::LineOf(event));
    return lines;
}

class FullRecordOf : public ThresholdTest, public testing::WithParamInterface<Case> {};
INSTANTIATE_TEST_SUITE_P(ThresholdGenerators, FullRecordOf, testing::ValuesIn(kFull),
                         [](const auto &info) { return info.param.what; });

TEST_P(FullRecordOf, HasTheDescriptionsThresholdsWithoutAnEntry) {
    SetLive(Image(0, {{"OTHER", {9, 8, 7, 1, 2, 3}, 0x3F}}));
    const Made made = Generate(GetParam());
    EXPECT_EQ(made.length, 48 + GetParam().name.size());
    EXPECT_EQ(made.sdr[18], 0x3F);
    EXPECT_EQ(std::string(made.sdr.begin() + 48, made.sdr.begin() + 48 + GetParam().name.size()),
              GetParam().name);
    EXPECT_THAT(std::vector<uint8_t>(made.sdr.begin() + 36, made.sdr.begin() + 42),
                ElementsAre(120, 110, 100, 10, 20, 30));
    EXPECT_THAT(UpdateLines(), IsEmpty());
}

TEST_P(FullRecordOf, HasTheStoredThresholdsAndNothingElseChanged) {
    const Made plain = Generate(GetParam());
    SetLive(Image(0, {{"OTHER", {}, 0x3F}, {GetParam().name, {250, 240, 230, 1, 2, 3}, 0x3F}}));
    const Made made = Generate(GetParam());
    EXPECT_EQ(made.length, plain.length);
    EXPECT_TRUE(tests::SameSdr(With(plain.sdr, {250, 240, 230, 1, 2, 3}), made.sdr));
    EXPECT_THAT(UpdateLines(),
                ElementsAreArray(Updated(GetParam().name, 0x3F, {250, 240, 230, 1, 2, 3}, true)));
}

TEST_P(FullRecordOf, KeepsItsOwnThresholdsWhenTheMaskDiffers) {
    const Made plain = Generate(GetParam());
    SetLive(Image(0, {{GetParam().name, {250, 240, 230, 1, 2, 3}, 0x38}}));
    EXPECT_EQ(Generate(GetParam()).sdr, plain.sdr);
    EXPECT_THAT(UpdateLines(), ElementsAreArray(CannotModify(GetParam().name, 0x38, 0x3F)));
}

TEST_P(FullRecordOf, KeepsItsOwnThresholdsWhenTheStoredOnesAreOutOfOrder) {
    const Made plain = Generate(GetParam());
    SetLive(Image(0, {{GetParam().name, {250, 240, 230, 3, 2, 1}, 0x3F}}));
    EXPECT_EQ(Generate(GetParam()).sdr, plain.sdr);
    EXPECT_THAT(UpdateLines(),
                ElementsAreArray(Updated(GetParam().name, 0x3F, {250, 240, 230, 3, 2, 1}, false)));
}

TEST_P(FullRecordOf, MergesWithTheDescriptionsThresholds) {
    Case c = GetParam();
    c.param.wBitmap = 0x12; // UC and LC
    SetLive(Image(0, {{c.name, {255, 150, 255, 255, 15, 255}, 0x12}}));
    const Made made = Generate(c);
    EXPECT_THAT(std::vector<uint8_t>(made.sdr.begin() + 36, made.sdr.begin() + 42),
                ElementsAre(0, 150, 0, 0, 15, 0));
}

TEST_P(FullRecordOf, IsBuiltAlsoWhenTheTableCannotBeFetched) {
    const Made plain = Generate(GetParam());
    sim::ClearTrace();
    Fail(kGet);
    EXPECT_EQ(Generate(GetParam()).sdr, plain.sdr);
    EXPECT_THAT(UpdateLines(), ElementsAreArray(FetchFailed(kApply)));
}

TEST_P(FullRecordOf, FetchesTheTableOnce) {
    Generate(GetParam());
    EXPECT_EQ(sim::CountCalls(kGet), 1u);
    EXPECT_EQ(sim::CountCalls(kSet), 0u);
}

class CompactRecordOf : public ThresholdTest, public testing::WithParamInterface<Case> {};
INSTANTIATE_TEST_SUITE_P(ThresholdGenerators, CompactRecordOf, testing::ValuesIn(kCompact),
                         [](const auto &info) { return info.param.what; });

TEST_P(CompactRecordOf, HasNoThresholds) {
    const Made plain = Generate(GetParam());
    ASSERT_EQ(plain.length, 32 + GetParam().name.size());
    ASSERT_EQ(plain.sdr[3], 0x02);
    SetLive(Image(0, {{GetParam().name, {90, 80, 70, 10, 20, 30}, plain.sdr[18]},
                      {"", {90, 80, 70, 10, 20, 30}, plain.sdr[18]}}));
    const Made made = Generate(GetParam());
    EXPECT_EQ(made.length, plain.length);
    EXPECT_TRUE(tests::SameSdr(plain.sdr, made.sdr));
    EXPECT_THAT(UpdateLines(), IsEmpty());
    EXPECT_EQ(sim::CountCalls(kGet), 0u);
}

class ThresholdGenerators : public ThresholdTest {};

TEST_F(ThresholdGenerators, TheFactorOfAPowerRecordIsSetAfterTheOverlay) {
    // type 34 has 1 W a count; whatever is stored, only bytes 36 to 41 are of it
    const Case c = {"", GenSpecificPowerSDR, 0, 0x5500, Description(0x0803, 34, 0, 3, 0x10), "SNIC_POWER_03"};
    SetLive(Image(0, {{c.name, {0, 200, 0, 0, 0, 0}, 0x10}}));
    const Made made = Generate(c);
    EXPECT_EQ(made.sdr[24], 1);
    EXPECT_EQ(made.sdr[37], 200);
}

TEST_F(ThresholdGenerators, FerrisksFixedThresholdsYieldToStoredOnes) {
    // a GPU of profile 16: UNC 85, UC 88, UNR 90, masks 38h, whatever the description holds
    Case c = {"", GenSpecificTempSDR, 16, 0x5500, Description(0x0100, 2, 0, 3, 0x01), ""};
    const Made plain = Generate(c);
    ASSERT_GT(plain.length, 48u);
    ASSERT_NE(plain.length, 255u);
    const std::string name(plain.sdr.begin() + 48, plain.sdr.begin() + plain.length);
    EXPECT_EQ(plain.sdr[18], 0x38);
    EXPECT_THAT(std::vector<uint8_t>(plain.sdr.begin() + 36, plain.sdr.begin() + 39),
                ElementsAre(90, 88, 85));
    SetLive(Image(16, {{name, {95, 93, 91, 0, 0, 77}, 0x38}}));
    const Made made = Generate(c);
    EXPECT_THAT(std::vector<uint8_t>(made.sdr.begin() + 36, made.sdr.begin() + 39), ElementsAre(95, 93, 91));
    EXPECT_EQ(made.sdr[41], plain.sdr[41]);
}

TEST_F(ThresholdGenerators, FerrisksFixedMaskDecidesAndNotTheDescriptions) {
    Case c = {"", GenSpecificTempSDR, 16, 0x5500, Description(0x0100, 2, 0, 3, 0x01), ""};
    const Made plain = Generate(c);
    const std::string name(plain.sdr.begin() + 48, plain.sdr.begin() + plain.length);
    SetLive(Image(16, {{name, {95, 93, 91, 0, 0, 77}, 0x01}}));
    EXPECT_EQ(Generate(c).sdr, plain.sdr);
    EXPECT_THAT(UpdateLines(), ElementsAreArray(CannotModify(name, 0x01, 0x38)));
}

TEST_F(ThresholdGenerators, FerrisksForcedFanThresholdsYieldToStoredOnes) {
    // masks 13h; LNC is the description's LC, LC two below it
    Case c = {"", GenSpecificFanSpeedSDR, 16, 0x5500, Description(0x0403, 255, 0, 3, 0x3F), ""};
    const Made plain = Generate(c);
    ASSERT_GT(plain.length, 48u);
    ASSERT_NE(plain.length, 255u);
    const std::string name(plain.sdr.begin() + 48, plain.sdr.begin() + plain.length);
    EXPECT_EQ(plain.sdr[18], 0x13);
    EXPECT_EQ(plain.sdr[41], 20);
    EXPECT_EQ(plain.sdr[40], 18);
    SetLive(Image(16, {{name, {1, 240, 1, 1, 5, 6}, 0x13}}));
    Sdr expected = plain.sdr;
    expected[37] = 240;
    expected[40] = 5;
    expected[41] = 6;
    EXPECT_EQ(Generate(c).sdr, expected);
}

TEST_F(ThresholdGenerators, ANameOf16CharactersIsFound) {
    // "GPU_MEM_TEMP_*" for slot 103
    Case c = {"", GenSpecificTempSDR, 0, 0x5500, Description(0x0100, 18, 0, 103, 0x10), "GPU_MEM_TEMP_103"};
    ASSERT_EQ(c.name.size(), 16u);
    SetLive(Image(0, {{c.name, {0, 88, 0, 0, 0, 0}, 0x10}}));
    const Made made = Generate(c);
    EXPECT_EQ(made.length, 64u);
    EXPECT_EQ(made.sdr[37], 88);
}

} // namespace
