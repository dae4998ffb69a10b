// SPDX-License-Identifier: Apache-2.0
//
// The unit that a log line names, one for each part of the library.  Readers of the firmware's log know them;
// they say nothing about where a source file lies.  (The units of the profiles stand in the list of profiles.)
#ifndef OXA_RECORD_UNIT_NAMES_H
#define OXA_RECORD_UNIT_NAMES_H

namespace oxa {

constexpr const char *kFileUnit = "specific_sdr_file.c"; // stores, record file, CPU presence
constexpr const char *kThresholdUnit = "modify_sensor_threshold.c";
constexpr const char *kEventUnit = "oxa_specific_sel.c";
constexpr const char *kDispatchUnit = "oxa_specific_sdr.c";
constexpr const char *kSensorDataUnit = "gen_specific_sensor_data.c";
constexpr const char *kDeviceTableUnit = "gen_specific_sensor_devtab.c";

} // namespace oxa
#endif
