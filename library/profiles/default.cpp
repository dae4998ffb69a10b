// SPDX-License-Identifier: Apache-2.0
//
// The Default profile: the order of its pass, what it does otherwise, its tables, and the names of sensors that come
// at run time.  Its static sensors are listed in default.def.
#include "oxa/profiles/default.h"

#include <iterator>

#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"
#include "library/static_sensors/pass.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_DEFAULT);

constexpr PassOrder kPass = {.aeSteps = {Step::kFacts, Step::kSwitchCard, Step::kCpus, Step::kPsus,
                                         Step::kMemory, Step::kPcie, Step::kFans, Step::kDisks, Step::kOcp,
                                         Step::kTable, Step::kCpuDomains, Step::kLiquidCooling,
                                         Step::kSwitchAir},
                             .ucCduFans = 6};

} // namespace

#define OXA_SENSOR_LIST "library/profiles/default.def"
#include "library/static_sensors/sensors_of_list.h"

constexpr StaticGenFn atGenDefaultStaticSDRTab[] = {
#define STATIC_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenDefaultStaticSDRTab));
const uint8_t ucDefaultStaticSDRCnt = std::size(atGenDefaultStaticSDRTab);

constexpr StaticGenFn atGenDefaultCDUSDRTab[] = {
#define CDU_TABLE(kind, function, ...) function,
#include OXA_SENSOR_LIST
};
static_assert(IsAsLongAsDeclared(atGenDefaultCDUSDRTab));
const uint8_t ucDefaultCDUSDRCnt = std::size(atGenDefaultCDUSDRTab);

void OXA_AddDefaultStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt) {
    RunStaticPass(
        pucSDRRec, ptDEVTab, pucSensorCnt, kProfile.tProfile,
        {{atGenDefaultStaticSDRTab, ucDefaultStaticSDRCnt}, {atGenDefaultCDUSDRTab, ucDefaultCDUSDRCnt}});
}

// ---- sensors that come at run time ------------------------------------------------------------------------

extern "C" {

constexpr ProfileTraits kDefaultTraits = {.bTwoDigitSlots = true};

constexpr SnrInfoRec kDefaultNames[] = {
#include "library/profiles/default_names.def"
};
constexpr uint8_t kDefaultNameCnt = std::size(kDefaultNames);
static_assert(CheckNames(kDefaultNames, kDefaultTraits.bTwoDigitSlots));
OXA_EXPORT_NAMES(g_atDefaultSnrInfo, g_ucSnrDefaultCnt, kDefaultNames, kDefaultNameCnt)

} // extern "C"
