// SPDX-License-Identifier: GPL-3.0-or-later
//
// Rules of the compact records, and what the device table makes of them.
#include "specific_sensors/generators_table.h"

namespace {

using namespace generators;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;

class CompactRecord : public RuleTest {
protected:
    // Under the class of GPU card states any device type finds a pattern.
    static Made CardOf(const Generator &generator, int type, int slot) {
        return Offer(generator, Description(kGpuCard, type, slot));
    }
};

TEST_F(CompactRecord, EveryDeviceTypeOfACardHasItsEntityAndInstance) {
    for (const Generator &generator : {kCardGenerator, kGpuCardGenerator}) {
        for (int type = 0; type < 256; ++type) {
            for (const int slot : {0, 3, 31, 159, 160, 200, 255}) {
                const Made made = CardOf(generator, type, slot);
                ASSERT_EQ(made.Name(), "NAME") << type;
                const int instance = slot == 255 ? 0x60 : (0x60 + slot) & 0xFF;
                EXPECT_EQ(made.At(8), EntityOf(type)) << type;
                EXPECT_EQ(made.At(9), Relative(type, instance)) << type << " slot " << slot;
                EXPECT_EQ(made.At(29), 0);
                EXPECT_EQ(made.At(30), 0);
            }
        }
    }
}

TEST_F(CompactRecord, TheSablinGpuCardDiffersFromACardInItsTypeOnly) {
    Bytes card = CardOf(kCardGenerator, 2, 3).record;
    const Bytes gpu_card = CardOf(kGpuCardGenerator, 2, 3).record;
    EXPECT_EQ(card[12], 0x15);
    EXPECT_EQ(card[13], 0x07);
    EXPECT_EQ(gpu_card[12], 0x17);
    EXPECT_EQ(gpu_card[13], 0x6F);
    card[12] = 0x17;
    card[13] = 0x6F;
    EXPECT_EQ(card, gpu_card);
}

TEST_F(CompactRecord, MemoryOfEveryDeviceTypeAndSlotStandsAt60h) {
    for (int type = 0; type < 256; type += 3) {
        for (const int slot : {0, 3, 255}) {
            const Made made = Offer(kMemoryGenerator, type, slot);
            EXPECT_EQ(made.At(8), 0x0B);
            EXPECT_EQ(made.At(9), 0x60);
            EXPECT_EQ(made.At(29), 0);
            EXPECT_EQ(made.At(30), 0);
        }
    }
}

TEST_F(CompactRecord, ANameOfEveryLengthGivesItsRecordLength) {
    for (const Generator &generator : kCompactGenerators) {
        const uint32_t sensor_class = generator.sensor_class == kCard ? kGpuCard : generator.sensor_class;
        for (size_t length = 1; length <= 16; ++length) {
            ClearRows();
            const std::string name = std::string("ABCDEFGHIJKLMNOP").substr(0, length);
            AddRow(sensor_class, kNvme, 2, name);
            const Made made = Make(generator, Description(sensor_class, kNvme, 3, 2));
            EXPECT_EQ(made.result, static_cast<int>(32 + length)) << generator.name;
            EXPECT_EQ(made.At(4), static_cast<int>(27 + length));
            EXPECT_EQ(made.At(31), static_cast<int>(0xC0 + length));
            EXPECT_EQ(made.Name(), name);
        }
    }
}

TEST_F(CompactRecord, ThresholdsAndHysteresisOfTheDescriptionDoNotCount) {
    for (const Generator &generator : kCompactGenerators) {
        const uint32_t sensor_class = generator.sensor_class == kCard ? kGpuCard : generator.sensor_class;
        SpecificSensorParam param = Description(sensor_class, kNvme, 3, 2);
        const Made made = Offer(generator, param);
        param.wBitmap = 0;
        param.ucUNR = param.ucUC = param.ucUNC = param.ucLNC = param.ucLC = param.ucLNR = 0x77;
        param.ucHysteresis = 0x55;
        param.ucSensorSeq = 1;
        EXPECT_TRUE(tests::SameSdr(made.record, Offer(generator, param).record)) << generator.name;
    }
}

// ---- the device table ---------------------------------------------------------------------------

struct Entry {
    int32_t result;
    std::array<uint8_t, 32> bytes;
};
Entry EntryOf(const Made &made) {
    Bytes slot = made.record;
    slot.resize(64);
    DevTabEntry entry = {};
    Entry out{GenDevTable(slot.data(), &entry), {}};
    std::memcpy(out.bytes.data(), &entry, sizeof(entry));
    return out;
}

TEST_F(CompactRecord, TheDeviceTableTakesASablinGpuCardAndItsInstanceLess60h) {
    for (const int slot : {0, 5, 9}) {
        const Entry entry = EntryOf(CardOf(kGpuCardGenerator, 2, slot));
        EXPECT_EQ(entry.result, 0);
        EXPECT_EQ(entry.bytes[0], 0x8E);
        EXPECT_EQ(entry.bytes[3], slot);
        EXPECT_EQ(entry.bytes[20], 0xFF);
        EXPECT_EQ(entry.bytes[21], 0x0B);
        EXPECT_EQ(entry.bytes[22], 0x60 + slot);
        EXPECT_EQ(entry.bytes[23], 0x63);
        EXPECT_EQ(entry.bytes[24], 0x17);
        EXPECT_EQ(entry.bytes[25], 0x6F);
    }
}

TEST_F(CompactRecord, TheDeviceTableTakesACard) {
    const Entry entry = EntryOf(CardOf(kCardGenerator, 42, 4));
    EXPECT_EQ(entry.result, 0);
    EXPECT_EQ(entry.bytes[0], 0xAA);
    EXPECT_EQ(entry.bytes[21], 0xE0);
    EXPECT_EQ(entry.bytes[22], 0xE4);
    EXPECT_EQ(entry.bytes[23], 0x63);
    EXPECT_EQ(entry.bytes[24], 0x15);
    EXPECT_EQ(entry.bytes[25], 0x07);
}

TEST_F(CompactRecord, TheDeviceTableTakesADiskByItsDeviceType) {
    AddRow(kDisk, kNvme, 2, "NAME");
    const Entry entry = EntryOf(Make(kDiskGenerator, Description(kDisk, kNvme, 3, 2)));
    EXPECT_EQ(entry.result, 0);
    EXPECT_EQ(entry.bytes[0], 0xF0);
    EXPECT_EQ(entry.bytes[3], 3);
    EXPECT_EQ(entry.bytes[20], 0x25);
    EXPECT_EQ(entry.bytes[21], 4);
}

// A memory record carries no device type, and the table asks for one.
TEST_F(CompactRecord, TheDeviceTableRefusesMemory) {
    for (const int type : {0x12, 0x20, 0x21}) {
        const Entry entry = EntryOf(Offer(kMemoryGenerator, type, 3));
        EXPECT_EQ(entry.result, -1);
    }
    EXPECT_EQ(sim::CountText("get sensor dev table failed: sensortype = 0xc, eventtype = 0x6f, oem=0\n"), 3u);
}

// Full records: a device type per kind of entry.
TEST_F(CompactRecord, TheDeviceTableTakesTheFullRecordsOfItsKinds) {
    const std::tuple<Generator, int, int> wanted[] = {
        {kTempGenerator, 2, 0x64},   {kTempGenerator, 59, 0xF2},  {kTempGenerator, 36, 0xAF},
        {kPowerGenerator, 56, 0xD7}, {kPowerGenerator, 34, 0xB1}, {kPowerGenerator, 36, 0xAE},
        {kVoltGenerator, 31, 0x8D},  {kFanGenerator, 255, 0x66},  {kFanGenerator, 1, 0x66},
    };
    for (const auto &[generator, type, code] : wanted) {
        const Made made = Offer(generator, type, 3, 1);
        const Entry entry = EntryOf(made);
        EXPECT_EQ(entry.result, 0) << generator.name << " " << type;
        EXPECT_EQ(entry.bytes[0], code) << generator.name << " " << type;
        EXPECT_EQ(entry.bytes[21], made.At(8));
        EXPECT_EQ(entry.bytes[22], made.At(9));
    }
}

TEST_F(CompactRecord, TheDeviceTableTellsTheCardOfATemperatureByBytes44To46) {
    SpecificSensorParam param = Description(kTemp, 200, 3, 2);
    EXPECT_EQ(EntryOf(Offer(kTempGenerator, param)).result, -1) << "no such kind";
    param.ucDeviceType = 5;
    const Entry entry = EntryOf(Offer(kTempGenerator, param));
    EXPECT_EQ(entry.result, 0);
    EXPECT_THAT(Bytes(entry.bytes.begin(), entry.bytes.begin() + 4), ElementsAre(0xCE, 2, 5, 3));
}

} // namespace
