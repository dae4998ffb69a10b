// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the device-table entries share: records whose bytes are told apart, and the entry built.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_DEVTAB_FIXTURE_H
#define OXA_TESTS_SPECIFIC_SENSORS_DEVTAB_FIXTURE_H

#include <array>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/specific_sensors.h"
#include "simulator/simulator.h"
#include "support/log_lines.h"
#include "support/record_differ.h"

namespace devtab {

using Record = std::array<uint8_t, 64>;
using Entry = std::array<uint8_t, 32>;

inline constexpr char kUnit[] = "gen_specific_sensor_devtab.c";

// A full record whose bytes are all told apart: byte 44 has the nibbles Ah and 7h, byte 45 is 09h, M is 05h.
inline Record FullRecord(uint8_t sensor_type, uint8_t oem) {
    Record sdr{};
    sdr.fill(0xD3); // what no handler reads
    sdr[3] = 0x01;
    sdr[6] = 0x02;  // owner LUN
    sdr[7] = 0x11;  // sensor number
    sdr[8] = 0x0B;  // entity id
    sdr[9] = 0x63;  // entity instance
    sdr[10] = 0x7F; // initialisation
    sdr[12] = sensor_type;
    sdr[13] = 0x01;
    sdr[24] = 0x05;
    sdr[44] = 0xA7;
    sdr[45] = 0x09;
    sdr[46] = oem;
    return sdr;
}

inline Record CompactRecord(uint8_t sensor_type, uint8_t event_type, uint8_t slot, uint8_t oem) {
    Record sdr{};
    sdr.fill(0xD3);
    sdr[3] = 0x02;
    sdr[6] = 0x01;
    sdr[7] = 0x12;
    sdr[8] = 0x04;
    sdr[9] = 0x65;
    sdr[10] = 0x63;
    sdr[12] = sensor_type;
    sdr[13] = event_type;
    sdr[29] = slot;
    sdr[30] = oem;
    return sdr;
}

// Builds an entry into memory that held something else before; a free entry has device code 0.
struct Built {
    int32_t result = 0;
    Entry entry{};
};
inline Built Build(const Record &sdr, uint8_t code_before = 0) {
    struct { // the entry stands between guard bytes
        std::array<uint8_t, 32> below;
        DevTabEntry entry;
        std::array<uint8_t, 32> above;
    } area;
    std::memset(&area, 0xEE, sizeof(area));
    area.entry.ucDevCode = code_before;
    Built built;
    built.result = GenDevTable(sdr.data(), &area.entry);
    std::memcpy(built.entry.data(), &area.entry, sizeof(area.entry));
    EXPECT_THAT(area.below, testing::Each(0xEE));
    EXPECT_THAT(area.above, testing::Each(0xEE));
    return built;
}

// Every call of this name fails.
inline void Fail(const std::string &call) {
    sim::Fault fault;
    fault.call = call;
    sim::AddFault(fault);
}

inline std::vector<std::string> Lines() {
    return tests::LogLines(kUnit);
}

class DeviceTable : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    }
};

class TemperatureEntry : public DeviceTable {};
class PowerEntry : public DeviceTable {};

} // namespace devtab
#endif
