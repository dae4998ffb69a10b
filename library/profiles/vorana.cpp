// SPDX-License-Identifier: Apache-2.0
//
// The Vorana profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in vorana.def.
#include "oxa/profiles/vorana.h"

#include <iterator>

#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_VORANA);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                                         Step::kCpuDomains, Step::kPsus, Step::kDisks, Step::kOcp,
                                         Step::kPcie, Step::kSwitchCard, Step::kSwitchAir}};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/vorana.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenVoranaStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenVoranaStaticSDRTab));
const uint8_t ucVoranaStaticSDRCnt = std::size(atGenVoranaStaticSDRTab);

void OXA_AddVoranaStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenVoranaStaticSDRTab, ucVoranaStaticSDRCnt}});
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kVoranaTraits = {.bReportsPowerDrop = true};

// The slot comes first ("P3_GPU_Temp"), OCP cards are NICs and HBAs are RAID cards, and the HGX
// module reports more temperatures.
// clang-format off
constexpr SnrInfoRec kVoranaNames[] = {
    Name(kClassTemp, kGpu, kMain, "P*_GPU_Temp"),
    Name(kClassTemp, kGpuMem, kMain, "P*_GPU_Mem_Temp"),
    Name(kClassTemp, kGpu, kPort, "P*_GPU_SFP#_Temp"),
    Name(kClassTemp, kRaid, kMain, "RAID*_Temp"),
    Name(kClassTemp, kRaidSingle, kMain, "EMBED_RAID_Temp"),
    Name(kClassTemp, kNic, kMain, "P*_NIC_Temp"),
    Name(kClassTemp, kNic, kPort, "P*_NIC_SFP#_Temp"),
    Name(kClassTemp, kNicHt, kPort, "P*_NIC_SFP#_Temp"),
    Name(kClassTemp, kNicSw, kPort, "P*_NIC_SFP#_Temp"),
    Name(kClassTemp, kOcp, kMain, "NIC*_Temp"),
    Name(kClassTemp, kHba, kMain, "RAID*_Temp"),
    Name(kClassTemp, kAic, kMain, "AIC*_Temp"),
    Name(kClassTemp, kFc, kMain, "FC*_Temp"),
    Name(kClassPower, kGpu, kMain, "GPU_Power"),
    Name(kClassFan, kFanPlain, kMain, "FAN* Speed"),
    Name(kClassFan, kFanFront, kMain, "FAN* F Speed"),
    Name(kClassFan, kFanRear, kMain, "FAN* R Speed"),
    Name(kClassFan, kFanPlain, kFanVariant, "FAN* Speed"),
    Name(kClassFan, kFanFront, kFanVariant, "FAN* F Speed"),
    Name(kClassFan, kFanRear, kFanVariant, "FAN* R Speed"),
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
    Name(kClassTemp, kNicHt, kMain, "P*_NIC_Temp"),
    Name(kClassTemp, kNicSw, kMain, "P*_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kMain, "P*_SNIC_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kPort, "P*_SNIC_SFP#_T"),
    Name(kClassTemp, kOcp, kPort, "P*_OCP_SFP#_Temp"),
    Name(kClassTemp, kOamPcb, kMain, "P*_OAM_Pcb_Temp"),
    Name(kClassTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"),
    Name(kClassTemp, kCx6Net, kMain, "CX6_Net_Temp"),
    Name(kClassMemStatus, kGpuMem, kMain, "P*_GPU_Mem"),
    Name(kClassMemStatus, kOamMem, kMain, "P*_GPU_Mem"),
    Name(kClassMemStatus, kSxmMem, kMain, "P*_GPU_Mem"),
    Name(kClassTemp, kHgxNswitch, kMain, "HGX_NSWITCH*_T"),
    Name(kClassTemp, kSxmMargin, kMain, "P*_SXM_Margin_T"),
    Name(kClassTemp, kHgxInlet, kMain, "HGX_INLET_TEMP"),
    Name(kClassTemp, kHgxOutlet, kMain, "HGX_OUTLET_TEMP"),
    Name(kClassTemp, kHgxRetimer, kMain, "HGX_RETIMER*_T"),
    Name(kClassVolt, kSxm, kMain, "P*_SXM_Volts"),
    Name(kClassTemp, kHgxHsc, kMain, "HGX_HSC*_TEMP"),
    Name(kClassTemp, kHgxHscStandby, kMain, "HGX_HSC_STBY_T"),
};
// clang-format on
constexpr uint8_t kVoranaNameCnt = std::size(kVoranaNames);
static_assert(CheckNames(kVoranaNames, kVoranaTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atVoranaSnrInfo, g_ucSnrVoranaCnt, kVoranaNames, kVoranaNameCnt)

} // extern "C"
