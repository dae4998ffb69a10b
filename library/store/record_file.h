// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_STORE_RECORD_FILE_H
#define OXA_STORE_RECORD_FILE_H

#include <cstdint>

namespace oxa {

// Device classes that the record file has sections for; FRU entity ids at the same time.
enum DeviceClass : uint8_t { kDeviceClassPsu = 10, kDeviceClassCard = 11, kDeviceClassUbb = 224 };

} // namespace oxa
#endif
