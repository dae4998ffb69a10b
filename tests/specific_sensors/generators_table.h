// SPDX-License-Identifier: GPL-3.0-or-later
//
// An information table that the test writes: every profile's row of the profile table leads to it, so any
// class, device type, pattern and bitmap can be offered.  generators_table_test.cpp defines it.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_GENERATORS_TABLE_H
#define OXA_TESTS_SPECIFIC_SENSORS_GENERATORS_TABLE_H

#include "specific_sensors/generators_fixture.h"
#include "support/profiles.h"

namespace generators {

void ClearRows();
void AddRow(uint32_t sensor_class, int device_type, int sub_type, const std::string &pattern,
            uint16_t bitmap = 0xFFFF);

class RuleTest : public GeneratorTest {
protected:
    void SetUp() override {
        GeneratorTest::SetUp();
        ClearRows();
    }
    // Offers a sensor that the table knows as "NAME".
    static Made Offer(const Generator &generator, SpecificSensorParam &param) {
        ClearRows();
        for (const int sub : {static_cast<int>(param.SubDeviceType), 4, 5}) {
            AddRow(param.dwSensorDevType, param.ucDeviceType, sub, "NAME");
        }
        return Make(generator, param);
    }
    static Made Offer(const Generator &generator, SpecificSensorParam &&param) {
        return Offer(generator, param);
    }
    static Made Offer(const Generator &generator, int device_type, int slot, int sub_type = 0) {
        return Offer(generator, Description(generator, device_type, slot, sub_type));
    }
};

// The entity of a device type, and whether an instance of it is device-relative.
inline int EntityOf(int device_type) {
    static const std::pair<std::pair<int, int>, int> kEntities[] = {
        {{6, 6}, 0x97},   {{21, 27}, 0xE0}, {{30, 33}, 0xE1}, {{34, 34}, 0x96}, {{37, 37}, 0xE1},
        {{38, 40}, 0xE0}, {{41, 41}, 0xE2}, {{42, 42}, 0xE0}, {{45, 45}, 0xE0}, {{47, 48}, 0xE0},
        {{49, 49}, 0xE1}, {{50, 53}, 0xE0}, {{55, 55}, 0x96}, {{62, 64}, 0xE0}, {{66, 66}, 0xE0},
        {{67, 67}, 0xE1}, {{68, 73}, 0xE0},
    };
    for (const auto &[range, entity] : kEntities) {
        if (range.first <= device_type && device_type <= range.second) {
            return entity;
        }
    }
    return 0x0B;
}
inline bool IsDeviceRelative(int device_type) {
    return device_type == 28 || device_type == 35 || device_type == 37 || device_type == 55 ||
           EntityOf(device_type) == 0xE0;
}
inline int Relative(int device_type, int instance) {
    return IsDeviceRelative(device_type) ? 0x80 | (instance & 0x7F) : instance;
}
inline bool IsNumberedByIndex(int device_type) {
    for (const int one : {17, 20, 35, 38, 39, 40, 41, 45, 46, 48, 50, 60, 61, 62, 63, 64, 66}) {
        if (one == device_type) {
            return true;
        }
    }
    return false;
}

} // namespace generators
#endif
