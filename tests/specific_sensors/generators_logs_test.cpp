// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every line that the generators of single sensors write, with level, module, unit and function, in order.
#include "specific_sensors/generators_fixture.h"

namespace {

using namespace generators;
using testing::ElementsAre;
using testing::IsEmpty;

class GeneratorLines : public GeneratorTest {};

// ---- records that are made ----------------------------------------------------------------------

TEST_F(GeneratorLines, Temperature) {
    SpecificSensorParam param = Description(kTemp, 2, 3);
    param.ucBrenmorSensorIndex = 7;
    param.ucHysteresis = 4;
    Make(kTempGenerator, param);
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenSpecificTempSDR: originalHddSilk:0, SlotId:3!\n",
                                     "info 42 GenSpecificTempSDR: DeviceType = 2, SensorDevType = 256, "
                                     "SubDeviceType = 0, bitmap=0x3f, "
                                     "threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:4, "
                                     "ucBrenmorSensorIndex:7!",
                                     "info 42 GenSpecificTempSDR: Add SDR: GenSpecificTempSDR  "
                                     "Name:GPU_TEMP_03."));
}

TEST_F(GeneratorLines, Voltage) {
    Board(CUSTOM_ID_VORANA);
    Make(kVoltGenerator, Description(kVolt, 31, 2));
    EXPECT_THAT(Lines(),
                ElementsAre("info 42 GenSpecificVoltSDR: originalHddSilk:0, SlotId:2!\n",
                            "info 42 GenSpecificVoltSDR: DeviceType = 31, SensorDevType = 512, "
                            "SubDeviceType = 0, bitmap=0x3f, "
                            "threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:0, ucBrenmorSensorIndex:0!",
                            "info 42 GenSpecificVoltSDR: Add SDR: GenSpecificVoltSDR  Name:P2_SXM_Volts.",
                            "info 42 GenSpecificVoltSDR: Add SDR: GenSpecificVoltSDR: bitmap=0x3f"));
}

TEST_F(GeneratorLines, PowerOfACard) {
    Make(kPowerGenerator, Description(kPower, 34, 2));
    EXPECT_THAT(
        Lines(),
        ElementsAre("info 42 GenSpecificPowerSDR: originalHddSilk:0, SlotId:2!\n",
                    "info 42 GenSpecificPowerSDR: DeviceType = 34, SensorDevType = 2051, "
                    "SubDeviceType = 0, bitmap=0x3f, "
                    "threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:0, ucBrenmorSensorIndex:0!",
                    "info 42 GenSpecificPowerSDR: Add SDR: GenSpecificPowerSDR  Name:SNIC_POWER_02."));
}

TEST_F(GeneratorLines, PowerOfGpusTellsItsFactors) {
    Board(CUSTOM_ID_DEFAULT, 0x550F);
    Make(kPowerGenerator, Description(kPower, 2, 2));
    EXPECT_THAT(
        Lines(),
        ElementsAre("info 42 GenSpecificPowerSDR: originalHddSilk:0, SlotId:2!\n",
                    "info 42 GenSpecificPowerSDR: DeviceType = 2, SensorDevType = 2051, SubDeviceType = 0, "
                    "bitmap=0x3f, threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:0, "
                    "ucBrenmorSensorIndex:0!",
                    "info 42 GenSpecificPowerSDR: Add SDR: GenSpecificPowerSDR  Name:GPU_TOTAL_POWER.",
                    "info 42 GetGpuPowerAccuracy: Add SDR: GetGpuPowerAccuracy gpuCnt:0.",
                    "info 42 GetGpuPowerAccuracy: Add SDR: GetGpuPowerAccuracy BoardId:0x550f.",
                    "info 42 GenSpecificPowerSDR: Add SDR: GenSpecificPowerSDR: "
                    "aucTemp[FULL_SDR_M_VALUE_LS_8_BITS]:22, aucTemp[FULL_SDR_B_VALUE_LS_8_BITS]:11"));
}

TEST_F(GeneratorLines, PowerWithoutABoardId) {
    Fail("get_default_board_id");
    Make(kPowerGenerator, Description(kPower, 34, 2));
    EXPECT_THAT(LinesOf(kPowerGenerator),
                ElementsAre("info 42 GenSpecificPowerSDR: originalHddSilk:0, SlotId:2!\n", testing::_,
                            "info 42 GenSpecificPowerSDR: Add SDR: GenSpecificPowerSDR  Name:SNIC_POWER_02.",
                            "warn 42 GenSpecificPowerSDR: get Board Id failed!"));
}

TEST_F(GeneratorLines, Fan) {
    SpecificSensorParam param = Description(kFan, 255, 3);
    param.ucBrenmorSensorIndex = 77;
    param.wBitmap = 0x1A;
    Make(kFanGenerator, param);
    EXPECT_THAT(
        Lines(),
        ElementsAre("info 42 GenSpecificFanSpeedSDR: GenSpecificFanSpeedSDR: sdwRet = 0 wBoardId = 1234!",
                    "info 42 GenSpecificFanSpeedSDR: originalHddSilk:0, SlotId:3!\n",
                    "info 42 GenSpecificFanSpeedSDR: DeviceType = 255, SensorDevType = 1027, "
                    "SubDeviceType = 0, bitmap=0x1a, "
                    "threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:0, ucBrenmorSensorIndex:77!",
                    "info 42 GenSpecificFanSpeedSDR: Add SDR: GenSpecificFanSpeedSDR  called "
                    "getSensorInfo,Idx:3,BitMap:1a,Name:FAN_SPEED_03 .",
                    "info 42 GenSpecificFanSpeedSDR: ucSensorAccuracy = 77"));
}

TEST_F(GeneratorLines, FanWithoutABoardId) {
    sim::Fault fault;
    fault.call = "get_default_board_id";
    fault.result = -7;
    sim::AddFault(fault);
    EXPECT_NE(Make(kFanGenerator, Description(kFan, 255, 3)).result, 0);
    EXPECT_THAT(Lines(), testing::Contains("info 42 GenSpecificFanSpeedSDR: GenSpecificFanSpeedSDR: "
                                           "sdwRet = -7 wBoardId = 0!"));
}

TEST_F(GeneratorLines, FanOnTheBoardThatTakesNone) {
    Board(CUSTOM_ID_DEFAULT, 0x5497);
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 3)).result, GEN_SDR_FAILED);
    EXPECT_THAT(
        Lines(),
        ElementsAre("info 42 GenSpecificFanSpeedSDR: GenSpecificFanSpeedSDR: sdwRet = 0 wBoardId = 5497!",
                    "info 42 GenSpecificFanSpeedSDR: The board does not support adding sensor FAN_SPEED."));
}

TEST_F(GeneratorLines, DiskTemperatureTellsBothSlots) {
    Board(CUSTOM_ID_FERRISK).disks.conversion[3] = 14;
    Make(kTempGenerator, Description(kTemp, kNvme, 3, 1));
    EXPECT_THAT(LinesOf(kTempGenerator),
                ElementsAre("info 42 GenSpecificTempSDR: originalHddSilk:3, SlotId:14!\n",
                            "info 42 GenSpecificTempSDR: DeviceType = 59, SensorDevType = 256, "
                            "SubDeviceType = 1, bitmap=0x3f, "
                            "threshold:0x6e,0x64,0x5a,0xa,0x5,0x2, Hystersis:0, ucBrenmorSensorIndex:0!",
                            "info 42 GenSpecificTempSDR: Add SDR: GenSpecificTempSDR  Name:NVME14_R_Temp."));
}

TEST_F(GeneratorLines, DiskStatus) {
    Board(CUSTOM_ID_FERRISK).disks.conversion[3] = 14;
    Make(kDiskGenerator, Description(kDisk, kNvme, 3, 1));
    EXPECT_THAT(
        LinesOf(kDiskGenerator),
        ElementsAre("info 42 GenSpecificStatusSDR: DeviceType = 0x3b, SensorDevType = 0xd00, "
                    "SubDeviceType = 0x1, originalHddSilk = 0x3, SlotId = 0xe!",
                    "info 42 GenSpecificStatusSDR: Add SDR: GenSpecificStatusSDR  Name:NVME14_R_Status."));
}

TEST_F(GeneratorLines, CardStatus) {
    Make(kCardGenerator, Description(kCard, 42, 4));
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenSpecificCardStatusSDR: Add SDR: GenSpecificCardStatusSDR "
                                     "DeviceType = 0x2a, SensorDevType = 5377 Name:BOX."));
}

// The Sablin variant writes the card status generator's text under its own function name.
TEST_F(GeneratorLines, SablinGpuCardStatus) {
    Board(CUSTOM_ID_SABLIN, 0x54E0);
    Make(kGpuCardGenerator, Description(kGpuCard, 2, 5));
    EXPECT_THAT(LinesOf(kGpuCardGenerator),
                ElementsAre("info 42 GenSablinGPUCardStatusSDR: Add SDR: GenSpecificCardStatusSDR "
                            "DeviceType = 0x2, SensorDevType = 5888 Name:RA3_Card_Status."));
}

TEST_F(GeneratorLines, MemoryStatusHasABlankBeforeItsName) {
    Board(CUSTOM_ID_KESTRIN);
    Make(kMemoryGenerator, Description(kMemory, 18, 3));
    EXPECT_THAT(Lines(), ElementsAre("info 42 GenMEMStatusSpecificSDR: Add SDR: GenMEMStatusSpecificSDR "
                                     "DeviceType = 0x12, SensorDevType = 3073 Name: GPU3_Mem."));
}

// ---- what is not offered ------------------------------------------------------------------------

TEST_F(GeneratorLines, ANameThatTheProfileLacksIsAWarningOfEachFullGenerator) {
    for (const Generator &generator : kFullGenerators) {
        Board(CUSTOM_ID_DEFAULT);
        EXPECT_EQ(Make(generator, Description(generator, 200, 3)).result, GEN_SDR_SKIPPED);
        const std::vector<std::string> lines = Lines();
        ASSERT_GE(lines.size(), 2u);
        EXPECT_EQ(lines[lines.size() - 2], "warn 42 getSensorInfo: this sensor is not support custom id 0 !");
        EXPECT_EQ(lines.back(), std::string("warn 42 ") + generator.name + ": this sensor is not support!");
    }
}

TEST_F(GeneratorLines, ANameThatTheProfileLacksIsAWarningOfEachCompactGenerator) {
    const std::pair<Generator, const char *> wanted[] = {
        {kDiskGenerator, "DeviceType = 0xc8, SensorDevType = 3328, this sensor is not support!"},
        {kCardGenerator, "DeviceType = 0xc8, SensorDevType = 5377, this sensor is not support!"},
        {kGpuCardGenerator, "DeviceType = 0xc8, SensorDevType = 5888, this sensor is not support!"},
        {kMemoryGenerator, "DeviceType = 0xc8, SensorDevType = 3073, this sensor is not supported!"},
    };
    for (const auto &[generator, text] : wanted) {
        Board(CUSTOM_ID_DEFAULT);
        EXPECT_EQ(Make(generator, Description(generator, 200, 3)).result, GEN_SDR_SKIPPED);
        ASSERT_FALSE(LinesOf(generator).empty()) << generator.name;
        EXPECT_EQ(LinesOf(generator).back(), std::string("warn 42 ") + generator.name + ": " + text);
    }
}

TEST_F(GeneratorLines, ANameOfMoreThan16CharactersIsAnErrorOfAFullGenerator) {
    Board(CUSTOM_ID_KESTRIN);
    // "NEO*_INLET_Temp" takes two digits, not three
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 36, 10, 4)).Name(), "NEO10_INLET_Temp");
    sim::ClearTrace();
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 36, 100, 4)).result, GEN_SDR_FAILED);
    EXPECT_THAT(LinesOf(kTempGenerator),
                ElementsAre("info 42 GenSpecificTempSDR: originalHddSilk:0, SlotId:100!\n", testing::_,
                            "error 42 GenSpecificTempSDR: Unable to Get Sensor Name!"));
}

TEST_F(GeneratorLines, ANameOfMoreThan16CharactersIsAnErrorOfACompactGenerator) {
    Board(CUSTOM_ID_SABLIN, 0x54E0);
    EXPECT_EQ(Make(kGpuCardGenerator, Description(kGpuCard, 2, 99)).Name(), "GU99_Card_Status");
    sim::ClearTrace();
    EXPECT_EQ(Make(kGpuCardGenerator, Description(kGpuCard, 2, 100)).result, GEN_SDR_FAILED);
    EXPECT_THAT(LinesOf(kGpuCardGenerator),
                ElementsAre("error 42 GenSablinGPUCardStatusSDR: DeviceType = 0x2, SensorDevType = 5888, "
                            "Unable to Get Sensor Name!"));
}

TEST_F(GeneratorLines, ADiskTemperatureOfAnotherSubTypeIsADebugLine) {
    Board(CUSTOM_ID_FERRISK).disks.conversion[3] = 14;
    for (const int sub : {0, 2, 3, 4, 5, 255}) {
        sim::ClearTrace();
        SpecificSensorParam param = Description(kTemp, kNvme, 3, sub);
        EXPECT_EQ(Make(kTempGenerator, param).result, GEN_SDR_SKIPPED);
        EXPECT_THAT(Lines(), ElementsAre("debug 42 GenSpecificTempSDR: this sensor is not support, "
                                         "ucCardType:59, ucSubCardType:" +
                                         std::to_string(sub) + "!"));
        EXPECT_EQ(param.SlotId, 3) << "not converted yet";
    }
}

TEST_F(GeneratorLines, VoltagePowerAndFanKnowTheDiskStepToo) {
    Board(CUSTOM_ID_FERRISK);
    for (const Generator &generator : {kVoltGenerator, kPowerGenerator, kFanGenerator}) {
        sim::ClearTrace();
        EXPECT_EQ(Make(generator, Description(generator, kNvme, 3, 2)).result, GEN_SDR_SKIPPED);
        ASSERT_FALSE(LinesOf(generator).empty()) << generator.name;
        EXPECT_EQ(LinesOf(generator).back(), std::string("debug 42 ") + generator.name +
                                                 ": this sensor is not support, ucCardType:59, "
                                                 "ucSubCardType:2!");
    }
}

// ---- what is there already ----------------------------------------------------------------------

struct Offered {
    Generator generator;
    uint32_t custom_id;
    int device_type;
    int sub_type;
};
const std::vector<Offered> &OneOfEach() {
    static const std::vector<Offered> offered = {
        {kTempGenerator, CUSTOM_ID_DEFAULT, 2, 0},   {kVoltGenerator, CUSTOM_ID_VORANA, 31, 0},
        {kPowerGenerator, CUSTOM_ID_DEFAULT, 34, 0}, {kFanGenerator, CUSTOM_ID_DEFAULT, 255, 0},
        {kDiskGenerator, CUSTOM_ID_FERRISK, 59, 2},  {kCardGenerator, CUSTOM_ID_DEFAULT, 42, 0},
        {kGpuCardGenerator, CUSTOM_ID_SABLIN, 2, 0}, {kMemoryGenerator, CUSTOM_ID_KESTRIN, 18, 0},
    };
    return offered;
}

TEST_F(GeneratorLines, TheSameDescriptionOfferedTwiceYieldsARecordOnce) {
    for (const Offered &offered : OneOfEach()) {
        Board(offered.custom_id, 0x54E0);
        const auto offer = [&] {
            return Make(offered.generator,
                        Description(offered.generator, offered.device_type, 3, offered.sub_type));
        };
        const Made first = offer();
        ASSERT_GT(first.record.size(), 0u) << offered.generator.name;
        Store({Bytes(64, 0x00), first.record});
        const size_t before = Lines().size();
        EXPECT_EQ(offer().result, GEN_SDR_SKIPPED) << offered.generator.name;
        const std::vector<std::string> lines = Lines();
        ASSERT_GE(lines.size(), before + 2);
        EXPECT_EQ(lines[lines.size() - 2], "info 42 checkSensorExist: This sensor is already exist!");
        EXPECT_EQ(lines.back(),
                  std::string("warn 42 ") + offered.generator.name + ": This sensor is already exist!");
    }
}

TEST_F(GeneratorLines, ARecordOfTheOtherTypeOrOfAnotherNameIsNoObstacle) {
    for (const Offered &offered : OneOfEach()) {
        Board(offered.custom_id, 0x54E0);
        const auto offer = [&](int slot) {
            return Make(offered.generator,
                        Description(offered.generator, offered.device_type, slot, offered.sub_type));
        };
        Bytes other = offer(3).record;
        other.back() = '?';
        Bytes other_type = offer(3).record;
        other_type[SDR_RECORD_TYPE] = other_type[SDR_RECORD_TYPE] == 0x01 ? 0x02 : 0x01;
        Store({other, other_type});
        EXPECT_GT(offer(3).record.size(), 0u) << offered.generator.name;
    }
}

// ---- null arguments -----------------------------------------------------------------------------

TEST_F(GeneratorLines, EachNullArgumentIsOneErrorAndTheFirstThingLookedAt) {
    for (const Generator &generator : kAllGenerators) {
        Board(CUSTOM_ID_DEFAULT);
        SpecificSensorParam param = Description(generator, 2, 3);
        Bytes out(64, kPattern);
        EXPECT_EQ(generator.function(nullptr, out.data(), generator.sensor_class), GEN_SDR_FAILED);
        EXPECT_EQ(generator.function(&param, nullptr, generator.sensor_class), GEN_SDR_FAILED);
        EXPECT_EQ(generator.function(nullptr, nullptr, generator.sensor_class), GEN_SDR_FAILED);
        EXPECT_THAT(out, testing::Each(kPattern));
        const std::string line = std::string("error 42 ") + generator.name + ": " + generator.name +
                                 " failed! The input parameter is null.";
        EXPECT_THAT(Lines(), ElementsAre(line, line, line));
        for (const sim::Event &event : sim::Trace()) {
            EXPECT_NE(event.kind, sim::Kind::kCall) << generator.name << " called " << event.function;
        }
    }
}

TEST_F(GeneratorLines, TheKeyIsIgnored) {
    for (const Offered &offered : OneOfEach()) {
        for (const uint32_t key : {0u, 0x0100u, 0xFFFFFFFFu}) {
            Board(offered.custom_id, 0x54E0);
            SpecificSensorParam param =
                Description(offered.generator, offered.device_type, 3, offered.sub_type);
            std::array<uint8_t, 64> out{};
            const Made made = Make(offered.generator, param);
            EXPECT_EQ(offered.generator.function(&param, out.data(), key), made.result);
            EXPECT_EQ(Bytes(out.begin(), out.begin() + made.result), made.record);
        }
    }
}

} // namespace
