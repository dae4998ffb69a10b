// SPDX-License-Identifier: Apache-2.0
//
// The Astrel profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in astrel.def.
#include "oxa/profiles/astrel.h"

#include <iterator>

#include "library/profiles/disk_renamer.h"
#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_ASTREL);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                                         Step::kCpuDomains, Step::kPsus, Step::kFans, Step::kDisks,
                                         Step::kOcp, Step::kPcie, Step::kSwitchCard, Step::kSwitchAir}};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/astrel.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenAstrelStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenAstrelStaticSDRTab));
const uint8_t ucAstrelStaticSDRCnt = std::size(atGenAstrelStaticSDRTab);

void OXA_AddAstrelStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenAstrelStaticSDRTab, ucAstrelStaticSDRCnt}});
}

// ---- disk sensors that were built elsewhere ----------------------------------------------------------------

namespace {

constexpr DiskNames kDiskNames = {.acStatus = "Disk%d_Status",
                                  .acTemp = "Disk%d_Temp",
                                  .bSystemInstance = true,
                                  .acNullText = "%s failed! pucSDRRec == NULL."};

} // namespace

int32_t Astrel_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset) {
    return RenameDisk(kNames, kDiskNames, pucSDRRec, ucSlotOffset, __func__);
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kAstrelTraits = {};

// The number follows the device, every accelerator is a "GPU".
// clang-format off
constexpr SnrInfoRec kAstrelNames[] = {
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
    Name(kClassPower, kGpu, kMain, "GPU_Total_Power"),
    Name(kClassFan, kFanPlain, kMain, "Fan*_Speed"),
    Name(kClassFan, kFanFront, kMain, "Fan*_Speed_F"),
    Name(kClassFan, kFanRear, kMain, "Fan*_Speed_R"),
    Name(kClassFan, kFanPlain, kFanVariant, "Fan*_Speed"),
    Name(kClassFan, kFanFront, kFanVariant, "Fan*_Speed_F"),
    Name(kClassFan, kFanRear, kFanVariant, "Fan*_Speed_R"),
    Name(kClassTemp, kSpnc50, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kPcie, kMain, "PCIE*_Temp"),
    Name(kClassTemp, kOam, kMain, "GPU*_Temp"),
    Name(kClassTemp, kSxm, kMain, "GPU*_Temp"),
    Name(kClassTemp, kOamMem, kMain, "GPU*_Mem_Temp"),
    Name(kClassTemp, kSxmMem, kMain, "GPU*_Mem_Temp"),
    Name(kClassPower, kOam, kMain, "GPU_Total_Power"),
    Name(kClassPower, kSxm, kMain, "GPU_Total_Power"),
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
};
// clang-format on
constexpr uint8_t kAstrelNameCnt = std::size(kAstrelNames);
static_assert(CheckNames(kAstrelNames, kAstrelTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atAstrelSnrInfo, g_ucSnrAstrelCnt, kAstrelNames, kAstrelNameCnt)

} // extern "C"
