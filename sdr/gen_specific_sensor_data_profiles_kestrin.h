// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_KESTRIN_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_KESTRIN_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Kestrin: the number follows the device, every accelerator is a "GPU".
inline constexpr SnrRow kKestrinRenamed[] = {
    {kTemp, kGpu, kMain, "GPU*_Temp"},
    {kTemp, kGpuMem, kMain, "GPU*_Mem_Temp"},
    {kTemp, kGpu, kPort, "GPU*_SFP#_Temp"},
    {kTemp, kRaid, kMain, "Raid*_Temp"},
    {kTemp, kRaidSingle, kMain, "RAID_Temp"},
    {kTemp, kNic, kMain, "NIC*_Temp"},
    {kTemp, kNic, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kNicHt, kMain, "HT_NIC*_Temp"},
    {kTemp, kNicHt, kPort, "HT_NIC*_SFP#_T"},
    {kTemp, kNicSw, kMain, "SW_NIC*_Temp"},
    {kTemp, kNicSw, kPort, "SW_NIC*_SFP#_T"},
    {kTemp, kSmartNic, kMain, "SNIC_NIC_Temp"},
    {kTemp, kSmartNic, kPort, "SNIC_SFP#_Temp"},
    {kTemp, kOcp, kMain, "OCP*_Temp"},
    {kTemp, kOcp, kPort, "OCP*_SFP#_Temp"},
    {kTemp, kHba, kMain, "HBA*_Temp"},
    {kTemp, kAic, kMain, "AIC*_Temp"},
    {kTemp, kFc, kMain, "FC*_Temp"},
    {kPower, kGpu, kMain, "GPU_Total_Power"},
    {kFan, kFanPlain, kMain, "SYS_Fan*_Speed"},
    {kFan, kFanFront, kMain, "SYS_Fan*_Speed_F"},
    {kFan, kFanRear, kMain, "SYS_Fan*_Speed_R"},
    {kFan, kFanPlain, kFanVariant, "SYS_Fan*_SPD"},
    {kFan, kFanFront, kFanVariant, "SYS_Fan*_SPD_F"},
    {kFan, kFanRear, kFanVariant, "SYS_Fan*_SPD_R"},
    {kTemp, kSpnc50, kMain, "PCIE*_Temp"},
    {kTemp, kPcie, kMain, "PCIE*_Temp"},
    {kTemp, kOam, kMain, "GPU*_Temp"},
    {kTemp, kSxm, kMain, "GPU*_Temp"},
    {kTemp, kOamMem, kMain, "GPU*_Mem_Temp"},
    {kTemp, kSxmMem, kMain, "GPU*_Mem_Temp"},
    {kPower, kOam, kMain, "GPU_Total_Power"},
    {kPower, kSxm, kMain, "GPU_Total_Power"},
    {kTemp, kNeo, kNeoCpu, "NEO*_CPU_Temp"},
    {kTemp, kNeo, kNeoInlet, "NEO*_INLET_Temp"},
    {kTemp, kNeo, kNeoVr, "NEO*_VR#_Temp"},
    {kTemp, kNeo, kNeoNic, "NEO*_NIC_Temp"},
    {kTemp, kNeo, kNeoOpt, "NEO*_SFP#_Temp"},
    {kTemp, kNeo, kNeoDimm, "NEO*_DIMM_Temp"},
    {kPower, kNeo, kNeoCpu, "NEO*_CPU_Power"},
    {kPower, kNeo, kNeoNic, "NEO*_NIC_Power"},
    {kTemp, kOamMcd, kMain, "GPU_Mcd_Temp"},
    {kTemp, kOamPcb, kMain, "GPU*_Pcb_Temp"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"},
    {kTemp, kCx6Net, kMain, "CX6_Net_Temp"},
};

inline constexpr SnrKey kKestrinDropped[] = {
    {kTemp, kSmartNicCard, kPort},
    {kTemp, kSmartNicCard, kMain},
    {kPower, kSmartNicCard, kMain},
};

inline constexpr SnrRow kKestrinAdded[] = {
    {kMemStatus, kGpuMem, kMain, "GPU*_Mem"},
    {kMemStatus, kOamMem, kMain, "GPU*_Mem"},
    {kMemStatus, kSxmMem, kMain, "GPU*_Mem"},
};

inline constexpr SnrTable<48> kKestrinSnrInfo =
    kDefaultSnrInfo.Replaced(kKestrinRenamed).Without(kKestrinDropped).With(kKestrinAdded);

} // namespace oxa::snr
#endif
