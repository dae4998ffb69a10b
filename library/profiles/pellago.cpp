// SPDX-License-Identifier: Apache-2.0
//
// The Pellago profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in pellago.def.
#include "oxa/profiles/pellago.h"

#include <iterator>

#include "library/profiles/disk_renamer.h"
#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_PELLAGO);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                                         Step::kCpuDomains, Step::kPsus, Step::kFans, Step::kDisks,
                                         Step::kOcp, Step::kPcie, Step::kSwitchCard, Step::kSwitchAir}};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/pellago.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenPellagoStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenPellagoStaticSDRTab));
const uint8_t ucPellagoStaticSDRCnt = std::size(atGenPellagoStaticSDRTab);

void OXA_AddPellagoStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenPellagoStaticSDRTab, ucPellagoStaticSDRCnt}});
}

// ---- disk sensors that were built elsewhere ----------------------------------------------------------------

namespace {

constexpr DiskNames kDiskNames = {.acStatus = "Disk%d_Status",
                                  .acTemp = "Disk%d_Temp",
                                  .bSystemInstance = false,
                                  .acNullText = "%s failed! The input parameter pucSDRRec is null."};

} // namespace

int32_t Pellago_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return RenameDisk(kNames, kDiskNames, pucSDRRec, ucSlotOffset, __func__);
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kPellagoTraits = {};

// The number follows the device; each accelerator also reports its own power.
// clang-format off
constexpr SnrInfoRec kPellagoNames[] = {
    Name(kClassTemp, kGpu, kMain, "GPU*_Temp"),
    Name(kClassTemp, kGpuMem, kMain, "GPU*_Mem_Temp"),
    Name(kClassTemp, kGpu, kPort, "GPU*_SFP#_Temp"),
    Name(kClassTemp, kRaid, kMain, "Raid*_Temp"),
    Name(kClassTemp, kRaidSingle, kMain, "RAID_Temp"),
    Name(kClassTemp, kNic, kMain, "NIC*_Temp"),
    Name(kClassTemp, kNic, kPort, "NIC*_SFP#_Temp"),
    Name(kClassTemp, kNicHt, kPort, "NIC*_SFP#_Temp"),
    Name(kClassTemp, kNicSw, kPort, "NIC*_SFP#_Temp"),
    Name(kClassTemp, kOcp, kMain, "OCP*_Temp"),
    Name(kClassTemp, kHba, kMain, "HBA*_Temp"),
    Name(kClassTemp, kAic, kMain, "AIC*_Temp"),
    Name(kClassTemp, kFc, kMain, "FC*_Temp"),
    Name(kClassPower, kGpu, kMain, "GPU_Power"),
    Name(kClassFan, kFanPlain, kMain, "FAN*_Speed"),
    Name(kClassFan, kFanFront, kMain, "FAN*_F_Speed"),
    Name(kClassFan, kFanRear, kMain, "FAN*_R_Speed"),
    Name(kClassFan, kFanPlain, kFanVariant, "FAN*_Speed"),
    Name(kClassFan, kFanFront, kFanVariant, "FAN*_F_Speed"),
    Name(kClassFan, kFanRear, kFanVariant, "FAN*_R_Speed"),
    Name(kClassTemp, kSpnc50, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kPcie, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kOam, kMain, "OAM*_Temp"),
    Name(kClassTemp, kSxm, kMain, "SXM*_Temp"),
    Name(kClassTemp, kOamMem, kMain, "OAM*_Mem_Temp"),
    Name(kClassTemp, kSxmMem, kMain, "SXM*_Mem_Temp"),
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
    Name(kClassTemp, kNicHt, kMain, "NIC*_Temp"),
    Name(kClassTemp, kNicSw, kMain, "NIC*_Temp"),
    Name(kClassTemp, kSmartNic, kMain, "SNIC*_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kPort, "SNIC*_SFP#_Temp"),
    Name(kClassTemp, kOcp, kPort, "OCP*_SFP#_Temp"),
    Name(kClassTemp, kOamPcb, kMain, "OAM*_Pcb_Temp"),
    Name(kClassTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"),
    Name(kClassTemp, kCx6Net, kMain, "CX6_Net_Temp"),
    Name(kClassPower, kGpuSlotPower, kMain, "GPU*_Power"),
    Name(kClassPower, kOamSlotPower, kMain, "OAM*_Power"),
    Name(kClassPower, kSxmSlotPower, kMain, "SXM*_Power"),
};
// clang-format on
constexpr uint8_t kPellagoNameCnt = std::size(kPellagoNames);
static_assert(CheckNames(kPellagoNames, kPellagoTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atPellagoSnrInfo, g_ucSnrPellagoCnt, kPellagoNames, kPellagoNameCnt)

} // extern "C"
