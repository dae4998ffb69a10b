// SPDX-License-Identifier: Apache-2.0
#include "library/specific_sensors/device_types.h"

namespace oxa::snr {

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void device_type_stands_twice();
void device_type_beyond_the_table();

namespace {

constexpr uint8_t kTypes = kHgxHscStandby + 1;

struct DeviceTypeTable {
    DeviceType at[kTypes];
    DeviceType tOther; // of all other numbers
};

struct Line {
    uint8_t ucNumber;
    DeviceType tType;
};
constexpr Line kLines[] = {
#define DEVICE_TYPE(name, number, word, ...) {number, __VA_ARGS__},
#include "library/specific_sensors/device_types.def"
#undef DEVICE_TYPE
};

consteval DeviceTypeTable ByNumber() {
    DeviceTypeTable t = {};
    bool abSeen[kTypes] = {};
    for (const Line &tLine : kLines) {
        if (tLine.ucNumber >= kTypes)
            device_type_beyond_the_table();
        if (abSeen[tLine.ucNumber])
            device_type_stands_twice();
        abSeen[tLine.ucNumber] = true;
        t.at[tLine.ucNumber] = tLine.tType;
    }
    return t;
}

constexpr DeviceTypeTable kDeviceTypes = ByNumber();

} // namespace

const DeviceType &DeviceTypeOf(uint8_t ucNumber) {
    return ucNumber < kTypes ? kDeviceTypes.at[ucNumber] : kDeviceTypes.tOther;
}

} // namespace oxa::snr
