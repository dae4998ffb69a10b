// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_DURNOW_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_DURNOW_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Durnow: the number follows the device.
inline constexpr SnrRow kDurnowRenamed[] = {
    {kTemp, kGpu, kMain, "GPU*_Temp"},
    {kTemp, kGpuMem, kMain, "GPU*_Mem_Temp"},
    {kTemp, kGpu, kPort, "GPU*_SFP#_Temp"},
    {kTemp, kRaid, kMain, "Raid*_Temp"},
    {kTemp, kRaidSingle, kMain, "RAID_Temp"},
    {kTemp, kNic, kMain, "NIC*_Temp"},
    {kTemp, kNic, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kNicHt, kMain, "NIC*_Temp"},
    {kTemp, kNicHt, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kNicSw, kMain, "NIC*_Temp"},
    {kTemp, kNicSw, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kSmartNic, kMain, "SNIC*_NIC_Temp"},
    {kTemp, kSmartNic, kPort, "SNIC*_SFP#_Temp"},
    {kTemp, kOcp, kPort, "OCP*_SFP#_Temp"},
    {kTemp, kHba, kMain, "HBA*_Temp"},
    {kTemp, kAic, kMain, "AIC*_Temp"},
    {kTemp, kFc, kMain, "FC*_Temp"},
    {kPower, kGpu, kMain, "GPU_Total_Power"},
    {kFan, kFanFront, kMain, "FAN_SPEED_*F"},
    {kFan, kFanRear, kMain, "FAN_SPEED_*R"},
    {kFan, kFanFront, kFanVariant, "FAN_SPEED_*F"},
    {kFan, kFanRear, kFanVariant, "FAN_SPEED_*R"},
    {kTemp, kSpnc50, kMain, "PCIE*_Temp"},
    {kTemp, kPcie, kMain, "PCIE*_Temp"},
    {kTemp, kNeo, kNeoCpu, "NEO*_CPU_Temp"},
    {kTemp, kNeo, kNeoInlet, "NEO*_INLET_Temp"},
    {kTemp, kNeo, kNeoVr, "NEO*_VR#_Temp"},
    {kTemp, kNeo, kNeoNic, "NEO*_NIC_Temp"},
    {kTemp, kNeo, kNeoOpt, "NEO*_OPT#_Temp"},
    {kTemp, kNeo, kNeoDimm, "NEO*_DIMM_Temp"},
    {kPower, kNeo, kNeoCpu, "NEO*_CPU_Power"},
    {kPower, kNeo, kNeoNic, "NEO*_NIC_Power"},
    {kPower, kOam, kMain, "OAM_Total_Power"},
    {kPower, kSxm, kMain, "SXM_Total_Power"},
    {kTemp, kOam, kMain, "OAM*_Temp"},
    {kTemp, kSxm, kMain, "SXM*_Temp"},
    {kTemp, kOamMem, kMain, "OAM*_Mem_Temp"},
    {kTemp, kSxmMem, kMain, "SXM*_Mem_Temp"},
    {kTemp, kOamMcd, kMain, "OAM_Mcd_Temp"},
    {kTemp, kOamPcb, kMain, "OAM*_Pcb_Temp"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"},
    {kTemp, kCx6Net, kMain, "CX6_Net_Temp"},
};

inline constexpr SnrKey kDurnowDropped[] = {
    {kTemp, kOcp, kMain},
    {kTemp, kSmartNicCard, kPort},
    {kTemp, kSmartNicCard, kMain},
    {kPower, kSmartNicCard, kMain},
};

inline constexpr SnrTable<44> kDurnowSnrInfo =
    kDefaultSnrInfo.Replaced(kDurnowRenamed).Without(kDurnowDropped);

} // namespace oxa::snr
#endif
