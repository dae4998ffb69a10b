// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_PELLAGO_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_PELLAGO_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Pellago: the number follows the device; each accelerator also reports its own power.
inline constexpr SnrRow kPellagoRenamed[] = {
    {kTemp, kGpu, kMain, "GPU*_Temp"},
    {kTemp, kGpuMem, kMain, "GPU*_Mem_Temp"},
    {kTemp, kGpu, kPort, "GPU*_SFP#_Temp"},
    {kTemp, kRaid, kMain, "Raid*_Temp"},
    {kTemp, kRaidSingle, kMain, "RAID_Temp"},
    {kTemp, kNic, kMain, "NIC*_Temp"},
    {kTemp, kOcp, kMain, "OCP*_Temp"},
    {kTemp, kHba, kMain, "HBA*_Temp"},
    {kTemp, kAic, kMain, "AIC*_Temp"},
    {kTemp, kFc, kMain, "FC*_Temp"},
    {kPower, kGpu, kMain, "GPU_Power"},
    {kFan, kFanPlain, kMain, "FAN*_Speed"},
    {kFan, kFanFront, kMain, "FAN*_F_Speed"},
    {kFan, kFanRear, kMain, "FAN*_R_Speed"},
    {kFan, kFanPlain, kFanVariant, "FAN*_Speed"},
    {kFan, kFanFront, kFanVariant, "FAN*_F_Speed"},
    {kFan, kFanRear, kFanVariant, "FAN*_R_Speed"},
    {kTemp, kSpnc50, kMain, "PCIE*_Temp"},
    {kTemp, kPcie, kMain, "PCIE*_Temp"},
    {kTemp, kOam, kMain, "OAM*_Temp"},
    {kTemp, kSxm, kMain, "SXM*_Temp"},
    {kTemp, kOamMem, kMain, "OAM*_Mem_Temp"},
    {kTemp, kSxmMem, kMain, "SXM*_Mem_Temp"},
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
    {kTemp, kNicHt, kMain, "NIC*_Temp"},
    {kTemp, kNicSw, kMain, "NIC*_Temp"},
    {kTemp, kNic, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kNicHt, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kNicSw, kPort, "NIC*_SFP#_Temp"},
    {kTemp, kSmartNic, kMain, "SNIC*_NIC_Temp"},
    {kTemp, kSmartNic, kPort, "SNIC*_SFP#_Temp"},
    {kTemp, kOcp, kPort, "OCP*_SFP#_Temp"},
    {kTemp, kOamPcb, kMain, "OAM*_Pcb_Temp"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"},
    {kTemp, kCx6Net, kMain, "CX6_Net_Temp"},
};

inline constexpr SnrKey kPellagoDropped[] = {
    {kTemp, kSmartNicCard, kPort},
    {kTemp, kSmartNicCard, kMain},
    {kPower, kSmartNicCard, kMain},
};

inline constexpr SnrRow kPellagoAdded[] = {
    {kPower, kGpuSlotPower, kMain, "GPU*_Power"},
    {kPower, kOamSlotPower, kMain, "OAM*_Power"},
    {kPower, kSxmSlotPower, kMain, "SXM*_Power"},
};

inline constexpr SnrTable<48> kPellagoSnrInfo =
    kDefaultSnrInfo.Replaced(kPellagoRenamed).Without(kPellagoDropped).With(kPellagoAdded);

} // namespace oxa::snr
#endif
