// SPDX-License-Identifier: Apache-2.0
//
// The Quorral profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in quorral.def.
#include "oxa/profiles/quorral.h"

#include <iterator>

#include "library/profiles/disk_renamer.h"
#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_QUORRAL);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                                         Step::kCpuDomains, Step::kPsus, Step::kFans, Step::kDisks,
                                         Step::kOcp, Step::kPcie, Step::kSwitchCard, Step::kSwitchAir}};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/quorral.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenQuorralStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenQuorralStaticSDRTab));
const uint8_t ucQuorralStaticSDRCnt = std::size(atGenQuorralStaticSDRTab);

void OXA_AddQuorralStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenQuorralStaticSDRTab, ucQuorralStaticSDRCnt}});
}

// ---- disk sensors that were built elsewhere ----------------------------------------------------------------

namespace {

constexpr DiskNames kDiskNames = {.acStatus = "HDD%d_Status",
                                  .acTemp = "NVME%d_Temp",
                                  .bSystemInstance = true,
                                  .acNullText = "%s failed! pucSDRRec == NULL."};

} // namespace

int32_t Quorral_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return RenameDisk(kNames, kDiskNames, pucSDRRec, ucSlotOffset, __func__);
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kQuorralTraits = {.acPsuLocator = "PS%d FRU"};

// The slot comes first ("P3_GPU_Temp").
// clang-format off
constexpr SnrInfoRec kQuorralNames[] = {
    Name(kClassTemp, kGpu, kMain, "P*_GPU_Temp"),
    Name(kClassTemp, kGpuMem, kMain, "P*_GPU_Mem_Temp"),
    Name(kClassTemp, kGpu, kPort, "P*_GPU_SFP#_Temp"),
    Name(kClassTemp, kRaid, kMain, "P*_Raid_Temp"),
    Name(kClassTemp, kRaidSingle, kMain, "P_RAID_Temp"),
    Name(kClassTemp, kNic, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kNic, kPort, "P*_Net_SFP#_Temp"),
    Name(kClassTemp, kNicHt, kPort, "P*_Net_SFP#_Temp"),
    Name(kClassTemp, kNicSw, kPort, "P*_Net_SFP#_Temp"),
    Name(kClassTemp, kOcp, kMain, "OCP*_Temp"),
    Name(kClassTemp, kHba, kMain, "P*_HBA_Temp"),
    Name(kClassTemp, kAic, kMain, "P*_AIC_Temp"),
    Name(kClassTemp, kFc, kMain, "P*_FC_Temp"),
    Name(kClassPower, kGpu, kMain, "GPU_Power"),
    Name(kClassFan, kFanPlain, kMain, "FAN*_Speed"),
    Name(kClassFan, kFanFront, kMain, "FAN*_F_Speed"),
    Name(kClassFan, kFanRear, kMain, "FAN*_R_Speed"),
    Name(kClassFan, kFanPlain, kFanVariant, "FAN*_Speed"),
    Name(kClassFan, kFanFront, kFanVariant, "FAN*_F_Speed"),
    Name(kClassFan, kFanRear, kFanVariant, "FAN*_R_Speed"),
    Name(kClassTemp, kSpnc50, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kPcie, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kOam, kMain, "P*_OAM_Temp"),
    Name(kClassTemp, kSxm, kMain, "P*_SXM_Temp"),
    Name(kClassTemp, kOamMem, kMain, "P*_OAM_Mem_Temp"),
    Name(kClassTemp, kSxmMem, kMain, "P*_SXM_Mem_Temp"),
    Name(kClassPower, kOam, kMain, "OAM_Power"),
    Name(kClassPower, kSxm, kMain, "SXM_Power"),
    Name(kClassTemp, kNeo, kNeoCpu, "NEO*_CPU_Temp"),
    Name(kClassTemp, kNeo, kNeoInlet, "NEO*_INLET_Temp"),
    Name(kClassTemp, kNeo, kNeoVr, "NEO*_VR#_Temp"),
    Name(kClassTemp, kNeo, kNeoNic, "NEO*_NIC_Temp"),
    Name(kClassTemp, kNeo, kNeoOpt, "NEO*_OPT#_Temp"),
    Name(kClassTemp, kNeo, kNeoDimm, "NEO*_DIMM_Temp"),
    Name(kClassPower, kNeo, kNeoCpu, "NEO*_CPU_Power"),
    Name(kClassPower, kNeo, kNeoNic, "NEO*_NIC_Power"),
    Name(kClassTemp, kOamMcd, kMain, "OAM_Mcd_Temp"),
    Name(kClassTemp, kNicHt, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kNicSw, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kSmartNic, kMain, "P*_SNIC_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kPort, "P*_SNIC_SFP#_T"),
    Name(kClassTemp, kOcp, kPort, "P*_OCP_SFP#_Temp"),
    Name(kClassTemp, kOamPcb, kMain, "P*_OAM_Pcb_Temp"),
    Name(kClassTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"),
    Name(kClassTemp, kCx6Net, kMain, "CX6_Net_Temp"),
};
// clang-format on
constexpr uint8_t kQuorralNameCnt = std::size(kQuorralNames);
static_assert(CheckNames(kQuorralNames, kQuorralTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atQuorralSnrInfo, g_ucSnrQuorralCnt, kQuorralNames, kQuorralNameCnt)

} // extern "C"
