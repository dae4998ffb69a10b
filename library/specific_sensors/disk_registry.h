// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SPECIFIC_SENSORS_DISK_REGISTRY_H
#define OXA_SPECIFIC_SENSORS_DISK_REGISTRY_H

#include <cstdint>

namespace oxa {

// Which of a disk's two sensors is asked for or registered.
enum DiskSensor : uint32_t { kRegisterTemp = 1, kRegisterStatus = 2 };

} // namespace oxa
#endif
