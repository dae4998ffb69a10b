// SPDX-License-Identifier: Apache-2.0
//
// The Lumora profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in lumora.def.
#include "oxa/profiles/lumora.h"

#include <iterator>

#include "library/profiles/profiles.h"
#include "library/record/sensor_types.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_LUMORA);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory,
                                         Step::kCpuDomains, Step::kPsus, Step::kDisks, Step::kOcp,
                                         Step::kSwitchCard, Step::kSwitchAir, Step::kLanSwitch}};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/lumora.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenLumoraStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenLumoraStaticSDRTab));
const uint8_t ucLumoraStaticSDRCnt = std::size(atGenLumoraStaticSDRTab);

void OXA_AddLumoraStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenLumoraStaticSDRTab, ucLumoraStaticSDRCnt}});
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kLumoraTraits = {
    .bRelativeOcpPorts = true, .ucPowerSensorType = kTypeOtherUnits, .bReportsLeakGone = true};

// The slot comes first ("P3_GPU_Temp"); no OCP card temperature and no NEO card.
// clang-format off
constexpr SnrInfoRec kLumoraNames[] = {
    Name(kClassTemp, kGpu, kMain, "P*_GPU_Temp"),
    Name(kClassTemp, kGpuMem, kMain, "P*_GPU_Mem_Temp"),
    Name(kClassTemp, kGpu, kPort, "P*_GPU_SFP#_Temp"),
    Name(kClassTemp, kRaid, kMain, "P*_Raid_Temp"),
    Name(kClassTemp, kRaidSingle, kMain, "P_RAID_Temp"),
    Name(kClassTemp, kNic, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kNic, kPort, "P*_Net_SFP#_Temp"),
    Name(kClassTemp, kNicHt, kPort, "P*_Net_SFP#_Temp"),
    Name(kClassTemp, kNicSw, kPort, "P*_Net_SFP#_Temp"),
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
    Name(kClassTemp, kOamMcd, kMain, "OAM_Mcd_Temp"),
    Name(kClassTemp, kNicHt, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kNicSw, kMain, "P*_Net_Temp"),
    Name(kClassTemp, kSmartNic, kMain, "P*_SNIC_NIC_Temp"),
    Name(kClassTemp, kSmartNic, kPort, "P*_SNIC_SFP#_T"),
    Name(kClassTemp, kOcp, kPort, "OCP_Opt_Temp"),
    Name(kClassTemp, kOamPcb, kMain, "P*_OAM_Pcb_Temp"),
    Name(kClassTemp, kDs25Ge50, kMain, "DS25GE50_Temp_*"),
    Name(kClassTemp, kCx6Net, kMain, "CX6_Net_Temp"),
    Name(kClassMemStatus, kGpuMem, kMain, "P*_GPU_Mem"),
    Name(kClassMemStatus, kOamMem, kMain, "P*_GPU_Mem"),
    Name(kClassMemStatus, kSxmMem, kMain, "P*_GPU_Mem"),
};
// clang-format on
constexpr uint8_t kLumoraNameCnt = std::size(kLumoraNames);
static_assert(CheckNames(kLumoraNames, kLumoraTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atLmSnrInfo, g_ucSnrLmCnt, kLumoraNames, kLumoraNameCnt)

} // extern "C"
