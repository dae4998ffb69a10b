// SPDX-License-Identifier: Apache-2.0
//
// The device types with the words that people use for them: for programs that list or read descriptions.  The
// library itself has no use for it, and its objects hold none of it.
#ifndef OXA_SPECIFIC_SENSORS_DEVICE_TYPES_CATALOGUE_H
#define OXA_SPECIFIC_SENSORS_DEVICE_TYPES_CATALOGUE_H

#include "library/specific_sensors/device_types.h"

namespace oxa::snr {

struct DeviceTypeWord {
    const char *pcWord; // empty: it has none
    uint8_t ucNumber;
    DeviceType tType;
};
inline constexpr DeviceTypeWord kDeviceTypeWords[] = {
#define DEVICE_TYPE(name, number, word, ...) {word, number, __VA_ARGS__},
#include "library/specific_sensors/device_types.def"
#undef DEVICE_TYPE
};

} // namespace oxa::snr
#endif
