// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_SABLIN_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_SABLIN_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Sablin: the Default names; each GPU unit reports temperatures, power and status of its own and there is no
// total power.  The GPU units are renamed once more by their place on board 0x54E0.
inline constexpr SnrKey kSablinDropped[] = {
    {kPower, kGpu, kMain},
};

inline constexpr SnrRow kSablinAdded[] = {
    {kTemp, kGpu, kGpuMax, "GU*_#_Max_Temp"},
    {kTemp, kGpu, kGpuAvg, "GU*_#_Avg_Temp"},
    {kPower, kGpuSlotPower, kMain, "GU*_Board_Power"},
    {kGpuCard, kGpu, kMain, "GU*_Card_Status"},
};

inline constexpr SnrTable<51> kSablinSnrInfo = kDefaultSnrInfo.Without(kSablinDropped).With(kSablinAdded);

} // namespace oxa::snr
#endif
