// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every entry of every card family: its place in the exported table, and each field of the record that its sensor
// gives, held against what is typed in card_entries.h.
#include <cctype>
#include <map>

#include "specific_sensors/card_entries.h"
#include "specific_sensors/generators_fixture.h"

namespace {

using namespace generators;
using cards::Families;
using cards::Family;

constexpr int kSlot = 3, kPort = 1;

std::string NameOf(const CardSnrEntry &entry) {
    return std::string(entry.acName, strnlen(entry.acName, sizeof(entry.acName)));
}
std::string Place(const Family &family, size_t index) {
    return std::string(family.name) + "[" + std::to_string(index) + "]";
}
// What the rules spell; the product's own name where they leave it to it.
std::string Expected(const Family &family, size_t index) {
    return family.names[index].empty() ? NameOf(family.entries[index]) : family.names[index];
}

class CardEntries : public GeneratorTest {
protected:
    template <class Check> static void ForEveryEntry(Check check) {
        for (const Family &family : Families()) {
            for (size_t index = 0; index < family.names.size(); ++index) {
                SCOPED_TRACE(Place(family, index));
                check(family, index);
            }
        }
    }
    // The record that the repository gets for the sensor.
    static Made Offer(const Family &family, size_t index) {
        Board(CUSTOM_ID_DEFAULT);
        SpecificSensorParam param = {};
        param.dwSensorDevType = family.sensor_class;
        param.ucDeviceType = family.device_type;
        param.SlotId = kSlot;
        param.ucBrenmorSensorIndex = static_cast<uint8_t>(index);
        param.ucSensorSeq = kPort;
        sim::Repository().clear();
        EXPECT_EQ(SDR_AddSpecificSensor(&param), 0u);
        Made made;
        EXPECT_EQ(sim::Repository().size(), 1u);
        if (!sim::Repository().empty())
            made.record = sim::Repository()[0].bytes;
        return made;
    }
};

// ---- the tables -----------------------------------------------------------------------------------------------------

TEST_F(CardEntries, TheTablesAreThoseOfTheFamilies) {
    ASSERT_EQ(std::size(g_atPurchaseCardSnrInfo), Families().size());
    size_t entries = 0;
    for (size_t row = 0; row < Families().size(); ++row) {
        const Family &family = Families()[row];
        SCOPED_TRACE(family.name);
        EXPECT_EQ(g_atPurchaseCardSnrInfo[row].dwSensorDevType, family.sensor_class);
        EXPECT_EQ(g_atPurchaseCardSnrInfo[row].ucDeviceType, family.device_type);
        EXPECT_EQ(g_atPurchaseCardSnrInfo[row].ucCnt, family.names.size());
        EXPECT_EQ(g_atPurchaseCardSnrInfo[row].ptEntry, family.entries);
        entries += family.names.size();
    }
    EXPECT_EQ(entries, 129u);
}

TEST_F(CardEntries, AnEntrysIndexIsItsPlace) {
    ForEveryEntry(
        [](const Family &family, size_t index) { EXPECT_EQ(family.entries[index].ucSensorIndex, index); });
}

TEST_F(CardEntries, TheNamesThatAreSpelledStandInTheirPlaces) {
    size_t spelled = 0;
    ForEveryEntry([&](const Family &family, size_t index) {
        if (family.names[index].empty())
            return;
        ++spelled;
        EXPECT_EQ(NameOf(family.entries[index]), family.names[index]);
    });
    EXPECT_EQ(spelled, 19u);
}

// A name ends in zero bytes up to the end of its field, holds no sign that a pattern would, and is offered ("null" is
// not).
TEST_F(CardEntries, EveryNameIsAPlainNameOfOneToSixteenCharacters) {
    ForEveryEntry([](const Family &family, size_t index) {
        const std::string name = NameOf(family.entries[index]);
        EXPECT_GE(name.size(), 1u);
        EXPECT_LE(name.size(), 16u);
        EXPECT_FALSE(name.starts_with("null"));
        for (const char sign : name)
            EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(sign)) || sign == '_') << name;
        for (size_t at = name.size(); at < SENSOR_NAME_SIZE; ++at)
            EXPECT_EQ(family.entries[index].acName[at], 0) << name;
    });
}

// ---- the records ----------------------------------------------------------------------------------------------------

uint8_t Instance(const Family &family, size_t index) {
    const size_t instance = 0x60 + kSlot + (family.index_in_instance ? index : 0);
    return static_cast<uint8_t>(family.device_relative ? 0x80 | (instance & 0x7F) : instance);
}

TEST_F(CardEntries, EveryRecordBelongsToTheEntityOfItsFamily) {
    ForEveryEntry([](const Family &family, size_t index) {
        const Made made = Offer(family, index);
        EXPECT_EQ(made.At(SDR_ENTITY_ID), family.entity);
        EXPECT_EQ(made.At(SDR_ENTITY_INSTANCE), Instance(family, index));
    });
}

TEST_F(CardEntries, EveryRecordCarriesItsNameAndBothLengths) {
    ForEveryEntry([](const Family &family, size_t index) {
        const Made made = Offer(family, index);
        const std::string name = Expected(family, index);
        const bool full = family.sensor_class != kCard;
        EXPECT_EQ(made.Name(), name);
        EXPECT_EQ(made.At(SDR_RECORD_TYPE), full ? 1 : 2);
        EXPECT_EQ(made.record.size(), (full ? 48 : 32) + name.size());
        EXPECT_EQ(made.At(SDR_RECORD_LENGTH), static_cast<int>((full ? 43 : 27) + name.size()));
        EXPECT_EQ(made.At(full ? FULL_SDR_ID_TYPE_LEN : COMPACT_SDR_ID_TYPE_LEN),
                  static_cast<int>(0xC0 + name.size()));
    });
}

TEST_F(CardEntries, EveryFullRecordTellsTheScannerCardSlotAndSensor) {
    ForEveryEntry([](const Family &family, size_t index) {
        if (family.sensor_class == kCard)
            return;
        const Made made = Offer(family, index);
        EXPECT_EQ(made.At(FULL_SDR_OEM), family.device_type);
        EXPECT_EQ(made.At(FULL_SDR_SLOT), kSlot);
        EXPECT_EQ(made.At(FULL_SDR_SENSOR_INDEX), family.index_in_byte_44 ? static_cast<int>(index) : kPort);
    });
}

// Sensor type, event type, units and factor: temperatures of 1 degree a count, powers of 1 W, a severity.
TEST_F(CardEntries, EveryRecordMeasuresWhatItsClassSays) {
    const std::map<uint32_t, Bytes> wanted = {{kTemp, {0x01, 0x01, 0x80, 0x01, 1}},
                                              {kPower, {0x08, 0x01, 0x00, 0x06, 1}},
                                              {kCard, {0x15, 0x07, 0x00, 0x00, 1}}};
    ForEveryEntry([&](const Family &family, size_t index) {
        const Bytes &record = Offer(family, index).record;
        ASSERT_GT(record.size(), 24u);
        // byte 24 of a compact record is the second of its sharing bytes
        EXPECT_EQ((Bytes{record[12], record[13], record[20], record[21], record[24]}),
                  wanted.at(family.sensor_class));
    });
}

TEST_F(CardEntries, EveryRecordFindsItsScanner) {
    ForEveryEntry([](const Family &family, size_t index) {
        Bytes record = Offer(family, index).record;
        record.resize(64, 0xFF);
        DevTabEntry entry = {};
        EXPECT_EQ(GenDevTable(record.data(), &entry), 0);
        std::array<uint8_t, 32> bytes;
        std::memcpy(bytes.data(), &entry, bytes.size());
        EXPECT_EQ(bytes[0], family.scanner_code);
        EXPECT_EQ(bytes[21], family.entity);
        EXPECT_EQ(bytes[22], Instance(family, index));
    });
}

} // namespace
