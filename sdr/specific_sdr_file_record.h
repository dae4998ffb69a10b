// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_SPECIFIC_SDR_FILE_RECORD_H
#define OXA_SDR_SPECIFIC_SDR_FILE_RECORD_H

#include <cstdint>

namespace oxa {

// Device classes that the record file has sections for; FRU entity ids at the same time.
enum DeviceClass : uint8_t { kDeviceClassPsu = 10, kDeviceClassCard = 11, kDeviceClassUbb = 224 };

} // namespace oxa
#endif
