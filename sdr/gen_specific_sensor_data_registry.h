// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_REGISTRY_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_REGISTRY_H

#include <cstdint>

namespace oxa {

// Which of a disk's two sensors is asked for or registered.
enum RegisterKind : uint32_t { kRegisterTemp = 1, kRegisterStatus = 2 };

} // namespace oxa
#endif
