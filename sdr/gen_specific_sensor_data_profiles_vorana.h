// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_VORANA_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_VORANA_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Vorana: the slot comes first ("P3_GPU_Temp"), OCP cards are NICs and HBAs are RAID cards, and the HGX
// module reports more temperatures.
inline constexpr SnrRow kVoranaRenamed[] = {
    {kTemp, kGpu, kMain, "P*_GPU_Temp"},
    {kTemp, kGpuMem, kMain, "P*_GPU_Mem_Temp"},
    {kTemp, kGpu, kPort, "P*_GPU_SFP#_Temp"},
    {kTemp, kRaid, kMain, "RAID*_Temp"},
    {kTemp, kRaidSingle, kMain, "EMBED_RAID_Temp"},
    {kTemp, kNic, kMain, "P*_NIC_Temp"},
    {kTemp, kOcp, kMain, "NIC*_Temp"},
    {kTemp, kHba, kMain, "RAID*_Temp"},
    {kTemp, kAic, kMain, "AIC*_Temp"},
    {kTemp, kFc, kMain, "FC*_Temp"},
    {kPower, kGpu, kMain, "GPU_Power"},
    {kFan, kFanPlain, kMain, "FAN* Speed"},
    {kFan, kFanFront, kMain, "FAN* F Speed"},
    {kFan, kFanRear, kMain, "FAN* R Speed"},
    {kFan, kFanPlain, kFanVariant, "FAN* Speed"},
    {kFan, kFanFront, kFanVariant, "FAN* F Speed"},
    {kFan, kFanRear, kFanVariant, "FAN* R Speed"},
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
    {kTemp, kNicHt, kMain, "P*_NIC_Temp"},
    {kTemp, kNicSw, kMain, "P*_NIC_Temp"},
    {kTemp, kNic, kPort, "P*_NIC_SFP#_Temp"},
    {kTemp, kNicHt, kPort, "P*_NIC_SFP#_Temp"},
    {kTemp, kNicSw, kPort, "P*_NIC_SFP#_Temp"},
    {kTemp, kSmartNic, kMain, "P*_SNIC_NIC_Temp"},
    {kTemp, kSmartNic, kPort, "P*_SNIC_SFP#_T"},
    {kTemp, kOcp, kPort, "P*_OCP_SFP#_Temp"},
    {kTemp, kOamPcb, kMain, "P*_OAM_Pcb_Temp"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"},
    {kTemp, kCx6Net, kMain, "CX6_Net_Temp"},
};

inline constexpr SnrKey kVoranaDropped[] = {
    {kTemp, kSmartNicCard, kPort},
    {kTemp, kSmartNicCard, kMain},
    {kPower, kSmartNicCard, kMain},
};

inline constexpr SnrRow kVoranaAdded[] = {
    {kMemStatus, kGpuMem, kMain, "P*_GPU_Mem"},
    {kMemStatus, kOamMem, kMain, "P*_GPU_Mem"},
    {kMemStatus, kSxmMem, kMain, "P*_GPU_Mem"},
    {kTemp, kHgxNswitch, kMain, "HGX_NSWITCH*_T"},
    {kTemp, kSxmMargin, kMain, "P*_SXM_Margin_T"},
    {kTemp, kHgxInlet, kMain, "HGX_INLET_TEMP"},
    {kTemp, kHgxOutlet, kMain, "HGX_OUTLET_TEMP"},
    {kTemp, kHgxRetimer, kMain, "HGX_RETIMER*_T"},
    {kVolt, kSxm, kMain, "P*_SXM_Volts"},
    {kTemp, kHgxHsc, kMain, "HGX_HSC*_TEMP"},
    {kTemp, kHgxHscStandby, kMain, "HGX_HSC_STBY_T"},
};

inline constexpr SnrTable<56> kVoranaSnrInfo =
    kDefaultSnrInfo.Replaced(kVoranaRenamed).Without(kVoranaDropped).With(kVoranaAdded);

} // namespace oxa::snr
#endif
