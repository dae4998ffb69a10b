// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_FERRISK_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_PROFILES_FERRISK_H

#include "sdr/gen_specific_sensor_data_profiles_default.h"

namespace oxa::snr {

// Ferrisk: few cards; disks are named here.
inline constexpr SnrRow kFerriskRenamed[] = {
    {kTemp, kGpu, kMain, "GPU*_Temp"},       {kTemp, kRaid, kMain, "RAID*_Temp"},
    {kTemp, kOcp, kMain, "NIC*_Temp"},       {kTemp, kNic, kMain, "NIC*_Temp"},
    {kFan, kFanPlain, kMain, "FAN*_Speed"},  {kFan, kFanFront, kMain, "FAN*_F_Speed"},
    {kFan, kFanRear, kMain, "FAN*_R_Speed"},
};

inline constexpr SnrKey kFerriskDropped[] = {
    {kTemp, kGpuMem, kMain},       {kTemp, kGpu, kPort},           {kTemp, kRaidSingle, kMain},
    {kTemp, kNic, kPort},          {kTemp, kNicHt, kPort},         {kTemp, kNicSw, kPort},
    {kTemp, kHba, kMain},          {kTemp, kAic, kMain},           {kTemp, kFc, kMain},
    {kPower, kGpu, kMain},         {kFan, kFanPlain, kFanVariant}, {kFan, kFanFront, kFanVariant},
    {kFan, kFanRear, kFanVariant}, {kTemp, kSpnc50, kMain},        {kTemp, kPcie, kMain},
    {kTemp, kOam, kMain},          {kTemp, kSxm, kMain},           {kTemp, kOamMem, kMain},
    {kTemp, kSxmMem, kMain},       {kPower, kOam, kMain},          {kPower, kSxm, kMain},
    {kTemp, kSmartNicCard, kPort}, {kTemp, kSmartNicCard, kMain},  {kPower, kSmartNicCard, kMain},
    {kTemp, kNeo, kNeoCpu},        {kTemp, kNeo, kNeoInlet},       {kTemp, kNeo, kNeoVr},
    {kTemp, kNeo, kNeoNic},        {kTemp, kNeo, kNeoOpt},         {kTemp, kNeo, kNeoDimm},
    {kPower, kNeo, kNeoCpu},       {kPower, kNeo, kNeoNic},        {kTemp, kOamMcd, kMain},
    {kTemp, kNicHt, kMain},        {kTemp, kNicSw, kMain},         {kTemp, kSmartNic, kMain},
    {kTemp, kSmartNic, kPort},     {kTemp, kOcp, kPort},           {kTemp, kOamPcb, kMain},
    {kTemp, kDs25Ge50, kMain},     {kTemp, kCx6Net, kMain},
};

inline constexpr SnrRow kFerriskAdded[] = {
    {kPower, kGpuSlotPower, kMain, "GPU*_Power"},
    {kDiskStatus, kNvmeDisk, kSata, "SATA*_Status"},
    {kDiskStatus, kNvmeDisk, kSas, "SAS*_Status"},
    {kDiskStatus, kNvmeDisk, kNvmeFront, "NVME*_Status"},
    {kDiskStatus, kNvmeDisk, kNvmeRear, "NVME*_R_Status"},
    {kTemp, kNvmeDisk, kNvmeFront, "NVME*_Temp"},
    {kTemp, kNvmeDisk, kNvmeRear, "NVME*_R_Temp"},
};

inline constexpr SnrTable<14> kFerriskSnrInfo =
    kDefaultSnrInfo.Replaced(kFerriskRenamed).Without(kFerriskDropped).With(kFerriskAdded);

} // namespace oxa::snr
#endif
