// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_DEFAULT_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_DEFAULT_H

#include "sdr/gen_specific_sensor_data_rows.h"

namespace oxa::snr {

// Default: the table that every other profile departs from.
inline constexpr SnrTable<48> kDefaultSnrInfo = MakeSnrTable({
    {kTemp, kGpu, kMain, "GPU_TEMP_*"},
    {kTemp, kGpuMem, kMain, "GPU_MEM_TEMP_*"},
    {kTemp, kGpu, kPort, "GPU_SFP#_TEMP_*"},
    {kTemp, kRaid, kMain, "RAID_TEMP_*"},
    {kTemp, kRaidSingle, kMain, "RAID_TEMP"},
    {kTemp, kNic, kMain, "NIC_TEMP_*"},
    {kTemp, kNic, kPort, "NIC_SFP#_TEMP_*"},
    {kTemp, kNicHt, kPort, "NIC_SFP#_TEMP_*"},
    {kTemp, kNicSw, kPort, "NIC_SFP#_TEMP_*"},
    {kTemp, kOcp, kMain, "OCP_TEMP_*"},
    {kTemp, kHba, kMain, "HBA_TEMP_*"},
    {kTemp, kAic, kMain, "AIC_TEMP_*"},
    {kTemp, kFc, kMain, "FC_TEMP_*"},
    {kPower, kGpu, kMain, "GPU_TOTAL_POWER"},
    {kFan, kFanPlain, kMain, "FAN_SPEED_*"},
    {kFan, kFanFront, kMain, "FAN_F_SPEED_*"},
    {kFan, kFanRear, kMain, "FAN_R_SPEED_*"},
    {kFan, kFanPlain, kFanVariant, "FAN_SPEED_*"},
    {kFan, kFanFront, kFanVariant, "FAN_F_SPEED_*"},
    {kFan, kFanRear, kFanVariant, "FAN_R_SPEED_*"},
    {kTemp, kSpnc50, kMain, "SPNC50_TEMP_*"},
    {kTemp, kPcie, kMain, "PCIE_TEMP_*"},
    {kTemp, kOam, kMain, "OAM_TEMP_*"},
    {kTemp, kSxm, kMain, "SXM_TEMP_*"},
    {kTemp, kOamMem, kMain, "OAM_MEM_TEMP_*"},
    {kTemp, kSxmMem, kMain, "SXM_MEM_TEMP_*"},
    {kPower, kOam, kMain, "OAM_TOTAL_POWER"},
    {kPower, kSxm, kMain, "SXM_TOTAL_POWER"},
    {kTemp, kSmartNicCard, kPort, "N*_SFP_TEMP_#"},
    {kTemp, kSmartNicCard, kMain, "SNIC_TEMP_*"},
    {kPower, kSmartNicCard, kMain, "SNIC_POWER_*"},
    {kTemp, kNeo, kNeoCpu, "NEO_CPU_TEMP_*"},
    {kTemp, kNeo, kNeoInlet, "NEO_INLET_T_*"},
    {kTemp, kNeo, kNeoVr, "NEO_VR#_TEMP_*"},
    {kTemp, kNeo, kNeoNic, "NEO_NIC_TEMP_*"},
    {kTemp, kNeo, kNeoOpt, "NEO_OPT#_TEMP_*"},
    {kTemp, kNeo, kNeoDimm, "NEO_DIMM_TEMP_*"},
    {kPower, kNeo, kNeoCpu, "NEO_CPU_POWER_*"},
    {kPower, kNeo, kNeoNic, "NEO_NIC_POWER_*"},
    {kTemp, kOamMcd, kMain, "OAM_MCD_TEMP"},
    {kTemp, kNicHt, kMain, "NIC_TEMP_*"},
    {kTemp, kNicSw, kMain, "NIC_TEMP_*"},
    {kTemp, kSmartNic, kMain, "SNIC_NIC_TEMP_*"},
    {kTemp, kSmartNic, kPort, "SNIC_SFP#_T_*"},
    {kTemp, kOcp, kPort, "OCP_SFP#_TEMP_*"},
    {kTemp, kOamPcb, kMain, "OAM_PCB_TEMP_*"},
    {kTemp, kDs25Ge50, kMain, "DS25GE50_TEMP_*"},
    {kTemp, kCx6Net, kMain, "CX6_NET_TEMP"},
});

} // namespace oxa::snr
#endif
