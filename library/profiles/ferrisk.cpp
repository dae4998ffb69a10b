// SPDX-License-Identifier: Apache-2.0
//
// The Ferrisk profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in ferrisk.def.
#include "oxa/profiles/ferrisk.h"

#include <iterator>

#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_FERRISK);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kTable, Step::kCpus, Step::kMemory, Step::kPsus,
                                         Step::kDisks, Step::kOcp, Step::kSwitchCard, Step::kSwitchAir},
                             .bOnlyPresentOcp = true};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/ferrisk.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenFerriskStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenFerriskStaticSDRTab));
const uint8_t ucFerriskStaticSDRCnt = std::size(atGenFerriskStaticSDRTab);

void OXA_AddFerriskStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
                  {{atGenFerriskStaticSDRTab, ucFerriskStaticSDRCnt}});
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kFerriskTraits = {
    .bNicsCountOnFromOcp = true,
    .atFixedLimits = {{.ucDeviceType = kGpu, .ucUNC = 85, .ucUC = 88, .ucUNR = 90},
                      {.ucDeviceType = kNic, .ucUNC = 100, .ucUC = 105, .ucUNR = 110}},
    .bForcesFanLimits = true,
    .bRegistersDisks = true};

// Few cards; disks are named here.
// clang-format off
constexpr SnrInfoRec kFerriskNames[] = {
    Name(kClassTemp, kGpu, kMain, "GPU*_Temp"),
    Name(kClassTemp, kRaid, kMain, "RAID*_Temp"),
    Name(kClassTemp, kNic, kMain, "NIC*_Temp"),
    Name(kClassTemp, kOcp, kMain, "NIC*_Temp"),
    Name(kClassFan, kFanPlain, kMain, "FAN*_Speed"),
    Name(kClassFan, kFanFront, kMain, "FAN*_F_Speed"),
    Name(kClassFan, kFanRear, kMain, "FAN*_R_Speed"),
    Name(kClassPower, kGpuSlotPower, kMain, "GPU*_Power"),
    Name(kClassDiskStatus, kNvmeDisk, kSata, "SATA*_Status"),
    Name(kClassDiskStatus, kNvmeDisk, kSas, "SAS*_Status"),
    Name(kClassDiskStatus, kNvmeDisk, kNvmeFront, "NVME*_Status"),
    Name(kClassDiskStatus, kNvmeDisk, kNvmeRear, "NVME*_R_Status"),
    Name(kClassTemp, kNvmeDisk, kNvmeFront, "NVME*_Temp"),
    Name(kClassTemp, kNvmeDisk, kNvmeRear, "NVME*_R_Temp"),
};
// clang-format on
constexpr uint8_t kFerriskNameCnt = std::size(kFerriskNames);
static_assert(CheckNames(kFerriskNames, kFerriskTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atFerriskSnrInfo, g_ucSnrFerriskCnt, kFerriskNames, kFerriskNameCnt)

} // extern "C"
