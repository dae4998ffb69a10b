// SPDX-License-Identifier: Apache-2.0
//
// The sensors that profiles share: what each looks like, once.  A profile's rows give them names.
#ifndef OXA_PROFILES_SENSOR_KINDS_H
#define OXA_PROFILES_SENSOR_KINDS_H

#include "sdr/sensor_row.h"

namespace oxa {

enum Kind : uint8_t {
    // board: air, temperature, rails
    kInletTemp,
    kOutletTemp,
    kPchTemp,
    kEnvHumidity,
    kPdbTemp,
    kMiddlePdbTemp,
    kVcc12V,
    // power
    kBoardPower,
    kCpuPower,
    kMemPower,
    kDiskPower,
    kFanPower,
    // per CPU
    kCpuProchot,
    kCpuTemp,
    kCpuVrTemp,
    kCpuCoreVolts,
    kCpuStatus,
    kCpu0Domain0Volts,
    kCpu0Domain1Volts,
    kCpu1Domain0Volts,
    kCpu1Domain1Volts,
    // per DIMM
    kDimmTemp,
    kDimmStatus,
    kDimmGroupTemp,
    // per PSU
    kPsuInputVolts,
    kPsuOutputVolts,
    kPsuStatus,
    kPsuTemp,
    kPsuInputPower,
    kPsuOutputPower,
    kPsuRedundancy,
    // fans
    kFanStatus,
    kFanRedundancy,
    // disks and cards
    kDiskStatus,
    kNvmeTemp,
    kDiskGroupTemp,
    kOcpTemp,
    kOcpError,
    kPcieStatus,
    // switch board
    kSwitchVolts,
    kSwitchCurrent,
    kSwitchTemp,
    kSwitchAirTemp,
    // discrete sensors of the system
    kLeakage,
    kPowerButton,
    kUidButton,
    kEventLog,
    kOsBoot,
    kAcpiState,
    kSystemRestart,
    kBmcBootUp,
    kOsStop,
    kIntrusion,
    kManagementEngine,
    kNtpSyncFail,
    kPowerFault,
    kKindCount
};

struct KindTable {
    SensorKind at[kKindCount];
};
[[gnu::visibility("hidden")]] extern const KindTable kSensorKinds;

} // namespace oxa
#endif
