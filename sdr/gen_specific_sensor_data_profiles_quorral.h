// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_QUORRAL_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_QUORRAL_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Quorral: the slot comes first ("P3_GPU_Temp").
inline constexpr SnrRow kQuorralRenamed[] = {
    {kTemp, kGpu, kMain, "P*_GPU_Temp"},
    {kTemp, kGpuMem, kMain, "P*_GPU_Mem_Temp"},
    {kTemp, kGpu, kPort, "P*_GPU_SFP#_Temp"},
    {kTemp, kRaid, kMain, "P*_Raid_Temp"},
    {kTemp, kRaidSingle, kMain, "P_RAID_Temp"},
    {kTemp, kNic, kMain, "P*_Net_Temp"},
    {kTemp, kOcp, kMain, "OCP*_Temp"},
    {kTemp, kHba, kMain, "P*_HBA_Temp"},
    {kTemp, kAic, kMain, "P*_AIC_Temp"},
    {kTemp, kFc, kMain, "P*_FC_Temp"},
    {kPower, kGpu, kMain, "GPU_Power"},
    {kFan, kFanPlain, kMain, "FAN*_Speed"},
    {kFan, kFanFront, kMain, "FAN*_F_Speed"},
    {kFan, kFanRear, kMain, "FAN*_R_Speed"},
    {kFan, kFanPlain, kFanVariant, "FAN*_Speed"},
    {kFan, kFanFront, kFanVariant, "FAN*_F_Speed"},
    {kFan, kFanRear, kFanVariant, "FAN*_R_Speed"},
    {kTemp, kSpnc50, kMain, "PCIE*_Temp"},
    {kTemp, kPcie, kMain, "PCIE*_Temp"},
    {kTemp, kOam, kMain, "P*_OAM_Temp"},
    {kTemp, kSxm, kMain, "P*_SXM_Temp"},
    {kTemp, kOamMem, kMain, "P*_OAM_Mem_Temp"},
    {kTemp, kSxmMem, kMain, "P*_SXM_Mem_Temp"},
    {kPower, kOam, kMain, "OAM_Power"},
    {kPower, kSxm, kMain, "SXM_Power"},
    {kTemp, kNeo, kNeoCpu, "NEO*_CPU_Temp"},
    {kTemp, kNeo, kNeoInlet, "NEO*_INLET_Temp"},
    {kTemp, kNeo, kNeoVr, "NEO*_VR#_Temp"},
    {kTemp, kNeo, kNeoNic, "NEO*_NIC_Temp"},
    {kTemp, kNeo, kNeoOpt, "NEO*_OPT#_Temp"},
    {kTemp, kNeo, kNeoDimm, "NEO*_DIMM_Temp"},
    {kPower, kNeo, kNeoCpu, "NEO*_CPU_Power"},
    {kPower, kNeo, kNeoNic, "NEO*_NIC_Power"},
    {kTemp, kOamMcd, kMain, "OAM_Mcd_Temp"},
    {kTemp, kNicHt, kMain, "P*_Net_Temp"},
    {kTemp, kNicSw, kMain, "P*_Net_Temp"},
    {kTemp, kNic, kPort, "P*_Net_SFP#_Temp"},
    {kTemp, kNicHt, kPort, "P*_Net_SFP#_Temp"},
    {kTemp, kNicSw, kPort, "P*_Net_SFP#_Temp"},
    {kTemp, kSmartNic, kMain, "P*_SNIC_NIC_Temp"},
    {kTemp, kSmartNic, kPort, "P*_SNIC_SFP#_T"},
    {kTemp, kOcp, kPort, "P*_OCP_SFP#_Temp"},
    {kTemp, kOamPcb, kMain, "P*_OAM_Pcb_Temp"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"},
    {kTemp, kCx6Net, kMain, "CX6_Net_Temp"},
};

inline constexpr SnrKey kQuorralDropped[] = {
    {kTemp, kSmartNicCard, kPort},
    {kTemp, kSmartNicCard, kMain},
    {kPower, kSmartNicCard, kMain},
};

inline constexpr SnrTable<45> kQuorralSnrInfo =
    kDefaultSnrInfo.Replaced(kQuorralRenamed).Without(kQuorralDropped);

} // namespace oxa::snr
#endif
