// SPDX-License-Identifier: GPL-3.0-or-later
//
// Names as the library forms them, for the tests of names.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_FORMED_NAMES_H
#define OXA_TESTS_SPECIFIC_SENSORS_FORMED_NAMES_H

#include "support/lookup_fixture.h"

inline constexpr uint32_t kTemp = 0x0100, kPower = 0x0803, kFan = 0x0403;

inline std::string Formed(uint32_t sensor_class, int device, int sub, uint8_t slot, uint8_t port = 0) {
    SnrQuery query = Query(sensor_class, device, sub);
    const uint8_t length = getSensorInfo(&query, slot, port);
    const std::string name = Name(query);
    EXPECT_EQ(length, name.size());
    return name;
}

#endif
