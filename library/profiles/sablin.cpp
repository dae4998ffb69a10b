// SPDX-License-Identifier: Apache-2.0
//
// The Sablin profile: the names of sensors that come at run time, and what it does otherwise.  It has no static
// driver.
#include "library/profiles/profiles.h"
#include "library/specific_sensors/name_tables.h"

using namespace oxa;
using namespace oxa::snr;

namespace {

// The Default names, but each GPU unit reports temperatures, power and status of its own and there is no total
// power.  The GPU units are renamed once more by their place on one board.
constexpr SnrInfoRec kDefaultLines[] = {
#include "library/profiles/default_names.def"
};
constexpr SnrInfoRec kDropped[] = {Name(kClassPower, kGpu, kMain, "GPU_TOTAL_POWER")};
constexpr SnrInfoRec kAdded[] = {
    Name(kClassTemp, kGpu, kGpuMax, "GU*_#_Max_Temp"),
    Name(kClassTemp, kGpu, kGpuAvg, "GU*_#_Avg_Temp"),
    Name(kClassPower, kGpuSlotPower, kMain, "GU*_Board_Power"),
    Name(kClassGpuCard, kGpu, kMain, "GU*_Card_Status"),
};

} // namespace

extern "C" {

constexpr ProfileTraits kSablinTraits = {
    .bTwoDigitSlots = true, .bGpusNamedByPlace = true, .ucFruIdOffset = 8, .dwFruIdOffsetProduct = 7};

extern const NameTable<51> kSablinNameTable;
constexpr NameTable<51> kSablinNameTable = Depart(kDefaultLines, kDropped, kAdded);
constexpr uint8_t kSablinNameCnt = 51;
static_assert(CheckNames(kSablinNameTable.at, kSablinTraits.bTwoDigitSlots));
extern const SnrInfoRec kSablinNames[51] __attribute__((alias("kSablinNameTable")));
OXA_EXPORT_NAMES(g_atSablinSnrInfo, g_ucSnrSablinCnt, kSablinNameTable, kSablinNameCnt)

} // extern "C"
