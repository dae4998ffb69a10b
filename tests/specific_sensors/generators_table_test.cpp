// SPDX-License-Identifier: GPL-3.0-or-later
//
// The table that the rules are shown with stands in the place of the library's; what patterns and bitmaps of
// a row do.
#include "specific_sensors/generators_table.h"

#include "support/replaced_tables.h"

namespace generators {
namespace {
SnrInfoRec test_rows[16];
uint8_t test_row_count = 0;
} // namespace

void ClearRows() {
    test_row_count = 0;
}
void AddRow(uint32_t sensor_class, int device_type, int sub_type, const std::string &pattern,
            uint16_t bitmap) {
    SnrInfoRec &row = test_rows[test_row_count++ % std::size(test_rows)];
    row = {};
    row.dwSensorDevType = sensor_class;
    row.ucDeviceType = static_cast<uint8_t>(device_type);
    row.SubDeviceType = static_cast<uint8_t>(sub_type);
    row.wBitmap = bitmap;
    std::memcpy(row.acName, pattern.data(), std::min<size_t>(pattern.size(), 16));
}
} // namespace generators

#define ROW(profile)                                                                                         \
    { profile, &generators::test_row_count, generators::test_rows }
extern "C" const SnrSpecificInfoRow g_atSnrSpecificInfo[10] = {
    ROW(0), ROW(1), ROW(2), ROW(3), ROW(4), ROW(6), ROW(7), ROW(11), ROW(20), ROW(16),
};

namespace {

using namespace generators;
using testing::Contains;
using testing::ElementsAre;

class RowsOfATable : public RuleTest {};

TEST_F(RowsOfATable, TheLibraryReadsTheTestsTable) {
    AddRow(kTemp, 200, 7, "ANY_*_NAME");
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 200, 3, 7)).Name(), "ANY_03_NAME");
}

TEST_F(RowsOfATable, APatternOfNullIsNotOffered) {
    for (const Generator &generator : kAllGenerators) {
        for (const char *const pattern : {"null", ""}) {
            ClearRows();
            AddRow(generator.sensor_class, 200, 0, pattern);
            EXPECT_EQ(Make(generator, Description(generator, 200, 3)).result, GEN_SDR_SKIPPED)
                << generator.name << " \"" << pattern << "\"";
        }
    }
}

TEST_F(RowsOfATable, ANameOf17CharactersIsRefusedByEveryGenerator) {
    for (const Generator &generator : kAllGenerators) {
        // the card status generator finds no pattern under its own class
        const uint32_t sensor_class = generator.sensor_class == kCard ? kGpuCard : generator.sensor_class;
        ClearRows();
        AddRow(sensor_class, 200, 0, "0123456789ABCD*");
        EXPECT_EQ(Make(generator, Description(sensor_class, 200, 99)).Name(), "0123456789ABCD99")
            << generator.name;
        EXPECT_EQ(Make(generator, Description(sensor_class, 200, 100)).result, GEN_SDR_FAILED)
            << generator.name;
        ASSERT_FALSE(LinesOf(generator).empty());
        EXPECT_THAT(LinesOf(generator).back(),
                    testing::MatchesRegex(std::string("error 42 ") + generator.name +
                                          ": (DeviceType = 0xc8, SensorDevType = [0-9]+, )?"
                                          "Unable to Get Sensor Name!"));
        EXPECT_EQ(LinesOf(generator).back().find("DeviceType") == std::string::npos, generator.full);
    }
}

TEST_F(RowsOfATable, TheBitmapOfARowReplacesTheDescriptionsAndIsWrittenBack) {
    for (const Generator &generator : kFullGenerators) {
        for (const uint16_t bitmap : {uint16_t{0x12}, uint16_t{0}, uint16_t{0xFFFE}}) {
            ClearRows();
            AddRow(generator.sensor_class, 200, 0, "NAME", bitmap);
            SpecificSensorParam param = Description(generator, 200, 3);
            const Made made = Make(generator, param);
            EXPECT_EQ(param.wBitmap, bitmap) << generator.name;
            EXPECT_EQ(made.At(18), bitmap & 0xFF) << generator.name;
            EXPECT_EQ(made.At(19), bitmap & 0xFF);
            EXPECT_EQ(made.At(37), bitmap == 0 ? 0 : 100);
            EXPECT_EQ(made.At(36), bitmap == 0xFFFE ? 110 : 0);
        }
    }
}

TEST_F(RowsOfATable, ABitmapOf65535KeepsTheDescriptions) {
    for (const Generator &generator : kFullGenerators) {
        SpecificSensorParam param = Description(generator, 200, 3);
        param.wBitmap = 0x0011;
        const Made made = Offer(generator, param);
        EXPECT_EQ(param.wBitmap, 0x0011);
        EXPECT_EQ(made.At(18), 0x11);
    }
}

TEST_F(RowsOfATable, TheBitmapIsWrittenBackAlsoWhenTheSensorIsThereAlready) {
    for (const Generator &generator : kFullGenerators) {
        Board(CUSTOM_ID_DEFAULT);
        ClearRows();
        AddRow(generator.sensor_class, 200, 0, "NAME", 0x12);
        const Made first = Make(generator, Description(generator, 200, 3));
        Store({first.record});
        SpecificSensorParam param = Description(generator, 200, 3);
        EXPECT_EQ(Make(generator, param).result, GEN_SDR_SKIPPED);
        EXPECT_EQ(param.wBitmap, 0x12) << generator.name;
    }
}

TEST_F(RowsOfATable, LinesTellTheDescriptionsBitmap) {
    for (const Generator &generator : kFullGenerators) {
        sim::ClearTrace();
        ClearRows();
        AddRow(generator.sensor_class, 200, 0, "NAME", 0x12);
        Make(generator, Description(generator, 200, 3));
        std::string bitmaps;
        for (const std::string &line : LinesOf(generator)) {
            for (const std::string key : {"bitmap=0x", "BitMap:"}) {
                const size_t at = line.find(key);
                if (at != std::string::npos) {
                    bitmaps += line.substr(at + key.size(), 2) + " ";
                }
            }
        }
        const bool two_lines = generator.sensor_class == kVolt || generator.sensor_class == kFan;
        EXPECT_EQ(bitmaps, two_lines ? "3f 3f " : "3f ") << generator.name;
    }
}

TEST_F(RowsOfATable, CompactRecordsLeaveTheBitmapAlone) {
    for (const Generator &generator : kCompactGenerators) {
        const uint32_t sensor_class = generator.sensor_class == kCard ? kGpuCard : generator.sensor_class;
        ClearRows();
        AddRow(sensor_class, 59, 2, "NAME", 0x12);
        SpecificSensorParam param = Description(sensor_class, 59, 3, 2);
        EXPECT_EQ(Make(generator, param).Name(), "NAME") << generator.name;
        EXPECT_EQ(param.wBitmap, 0x3F) << generator.name;
    }
}

TEST_F(RowsOfATable, NothingElseOfTheDescriptionIsWritten) {
    for (const Generator &generator : kAllGenerators) {
        const uint32_t sensor_class = generator.sensor_class == kCard ? kGpuCard : generator.sensor_class;
        SpecificSensorParam param = Description(sensor_class, 200, 3, 2);
        const SpecificSensorParam before = param;
        EXPECT_EQ(Offer(generator, param).Name(), "NAME");
        EXPECT_EQ(std::memcmp(&param, &before, sizeof(param)), 0) << generator.name;
    }
}

TEST_F(RowsOfATable, APortOfAVoltageIsTheSecondPortByte) {
    AddRow(kVolt, 200, 0, "V*_#");
    AddRow(kTemp, 200, 0, "T*_#");
    AddRow(kPower, 200, 0, "P*_#");
    EXPECT_EQ(Make(kVoltGenerator, Description(kVolt, 200, 3)).Name(), "V03_09");
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 200, 3)).Name(), "T03_05");
    EXPECT_EQ(Make(kPowerGenerator, Description(kPower, 200, 3)).Name(), "P03_00");
}

} // namespace
