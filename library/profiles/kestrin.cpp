// SPDX-License-Identifier: Apache-2.0
//
// The Kestrin profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in kestrin.def.
#include "oxa/profiles/kestrin.h"

#include <iterator>

#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_KESTRIN);

constexpr PassOrder kPass = {.aeSteps = {Step::kRackBoard, Step::kFacts, Step::kTable, Step::kCpus,
                                         Step::kMemory, Step::kCpuDomains, Step::kPsus, Step::kFans,
                                         Step::kDisks, Step::kOcp, Step::kPcie, Step::kSwitchCard,
                                         Step::kSwitchAir, Step::kPowerModules, Step::kUbbRetimers,
                                         Step::kSwitchChips, Step::kGpuRails, Step::kLiquidCooling},
                             .bPrintsDiskSilk = true,
                             .bShortFinalLine = true,
                             .bCduNamesGenerators = true,
                             .ucCduFans = 4,
                             .ucCduSupplies = 2};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/kestrin.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenKestrinStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenKestrinStaticSDRTab));
const uint8_t ucKestrinStaticSDRCnt = std::size(atGenKestrinStaticSDRTab);

constexpr StaticGenFn atKestrinCDUSDRTab[] = {
#define CDU_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atKestrinCDUSDRTab));
const uint8_t ucKestrinCDUSDRCnt = std::size(atKestrinCDUSDRTab);

constexpr StaticGenFn atGenKestrinRMCStaticSDRTab[] = {
#define RACK_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenKestrinRMCStaticSDRTab));
const uint8_t ucKestrinRMCStaticSDRCnt = std::size(atGenKestrinRMCStaticSDRTab);

void OXA_AddKestrinStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenKestrinStaticSDRTab, ucKestrinStaticSDRCnt},
                   {atKestrinCDUSDRTab, ucKestrinCDUSDRCnt},
                   {atGenKestrinRMCStaticSDRTab, ucKestrinRMCStaticSDRCnt}});
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kKestrinTraits = {.eFanNumber = FanNumber::kHexadecimal,
                                          .bKeepsMemoryState = true,
                                          .bHasMemoryOffset14 = true,
                                          .bHidesPowerForecasts = true,
                                          .bHidesDiskLife = true};

// The number follows the device, every accelerator is a "GPU".
// clang-format off
constexpr SnrInfoRec kKestrinNames[] = {
    Name(kClassTemp, kGpu, kMain, "GPU*_Temp"),
    Name(kClassTemp, kGpuMem, kMain, "GPU*_Mem_Temp"),
    Name(kClassTemp, kGpu, kPort, "GPU*_SFP#_Temp"),
    Name(kClassTemp, kRaid, kMain, "Raid*_Temp"),
    Name(kClassTemp, kRaidSingle, kMain, "RAID_Temp"),
    Name(kClassTemp, kNic, kMain, "NIC*_Temp"),
    Name(kClassTemp, kNic, kPort, "NIC*_SFP#_Temp"),
    Name(kClassTemp, kNicHt, kPort, "HT_NIC*_SFP#_T"),
    Name(kClassTemp, kNicSw, kPort, "SW_NIC*_SFP#_T"),
    Name(kClassTemp, kOcp, kMain, "OCP*_Temp"),
    Name(kClassTemp, kHba, kMain, "HBA*_Temp"),
    Name(kClassTemp, kAic, kMain, "AIC*_Temp"),
    Name(kClassTemp, kFc, kMain, "FC*_Temp"),
    Name(kClassPower, kGpu, kMain, "GPU_Total_Power"),
    Name(kClassFan, kFanPlain, kMain, "SYS_Fan*_Speed"),
    Name(kClassFan, kFanFront, kMain, "SYS_Fan*_Speed_F"),
    Name(kClassFan, kFanRear, kMain, "SYS_Fan*_Speed_R"),
    Name(kClassFan, kFanPlain, kFanVariant, "SYS_Fan*_SPD"),
    Name(kClassFan, kFanFront, kFanVariant, "SYS_Fan*_SPD_F"),
    Name(kClassFan, kFanRear, kFanVariant, "SYS_Fan*_SPD_R"),
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
    Name(kClassTemp, kNeo, kNeoOpt, "NEO*_SFP#_Temp"),
    Name(kClassTemp, kNeo, kNeoDimm, "NEO*_DIMM_Temp"),
    Name(kClassPower, kNeo, kNeoCpu, "NEO*_CPU_Power"),
    Name(kClassPower, kNeo, kNeoNic, "NEO*_NIC_Power"),
    Name(kClassTemp, kOamMcd, kMain, "GPU_Mcd_Temp"),
    Name(kClassTemp, kNicHt, kMain, "HT_NIC*_Temp"),
    Name(kClassTemp, kNicSw, kMain, "SW_NIC*_Temp"),
    Name(kClassTemp, kSmartNic, kMain, "SNIC_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kPort, "SNIC_SFP#_Temp"),
    Name(kClassTemp, kOcp, kPort, "OCP*_SFP#_Temp"),
    Name(kClassTemp, kOamPcb, kMain, "GPU*_Pcb_Temp"),
    Name(kClassTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"),
    Name(kClassTemp, kCx6Net, kMain, "CX6_Net_Temp"),
    Name(kClassMemStatus, kGpuMem, kMain, "GPU*_Mem"),
    Name(kClassMemStatus, kOamMem, kMain, "GPU*_Mem"),
    Name(kClassMemStatus, kSxmMem, kMain, "GPU*_Mem"),
};
// clang-format on
constexpr uint8_t kKestrinNameCnt = std::size(kKestrinNames);
static_assert(CheckNames(kKestrinNames, kKestrinTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atKestrinSnrInfo, g_ucSnrKestrinCnt, kKestrinNames, kKestrinNameCnt)

} // extern "C"
