// SPDX-License-Identifier: Apache-2.0
//
// Kinds and groups with their names and places, and what a board must answer before a pass walks a group: for programs
// that explain sets.  The library itself has no use for it, and its objects hold none of it.
#ifndef OXA_STATIC_SENSORS_CATALOGUE_H
#define OXA_STATIC_SENSORS_CATALOGUE_H

#include "library/record/boards.h"
#include "library/static_sensors/make_row.h"

namespace oxa {

struct KindPlace {
    const char *pcName;
    const char *pcFile;
    int sdwLine;
};
inline constexpr KindPlace kKindPlaces[] = {
#define KIND(name, ...) {#name, __FILE__, __LINE__},
#include "library/static_sensors/kinds/kinds.def"
#undef KIND
};
static_assert(sizeof(kKindPlaces) / sizeof(kKindPlaces[0]) == kKindCount);

// pcIndex is what the index of the group's sensors counts, null where it counts nothing; pcEntryIndex what stands in the
// device-table entry, where that is something else.
struct GroupWords {
    Group eGroup;
    const char *pcName;
    const char *pcWords;
    const char *pcIndex = nullptr;
    const char *pcEntryIndex = nullptr;
};
inline constexpr GroupWords kGroupWords[] = {
    {Group::kTable, "kTable", "the static table"},
    {Group::kRackTable, "kRackTable", "the table of the rack management board"},
    {Group::kCduTable, "kCduTable", "the table of the liquid-cooling unit"},
    {Group::kSwitchPower, "kSwitchPower", "volts and currents of the switch-board card", "instance from 1"},
    {Group::kSwitchTemp, "kSwitchTemp", "temperatures of the switch-board card", "instance from 1"},
    {Group::kSwitchAir, "kSwitchAir", "inlets and outlets of the switch board", "place 0..3"},
    {Group::kCpu, "kCpu", "per CPU", "printed CPU number"},
    {Group::kCpuMore, "kCpuMore", "per CPU, behind the others", "printed CPU number"},
    {Group::kCpuDomain, "kCpuDomain", "voltage domains, two per CPU", "printed CPU number"},
    {Group::kPsu, "kPsu", "per PSU", "PSU index from 1"},
    {Group::kPsuRedundancy, "kPsuRedundancy", "per PSU group", "PSU group from 0"},
    {Group::kDimm, "kDimm", "per DIMM", "DIMM number from 0"},
    {Group::kDimmGroup, "kDimmGroup", "per CPU, in place of the DIMMs", "DIMM group from 0"},
    {Group::kPcie, "kPcie", "per PCIe slot", "PCIe slot"},
    {Group::kFan, "kFan", "per fan", "the fan's silk-screen number"},
    {Group::kDisk, "kDisk", "per disk slot", "disk slot"},
    {Group::kNvme, "kNvme", "per NVMe disk", "disk slot"},
    {Group::kDiskGroup, "kDiskGroup", "per backplane", "disk group from 0"},
    {Group::kOcp, "kOcp", "per OCP card", "OCP index from 1"},
    {Group::kOcpError, "kOcpError", "per OCP card, behind the temperature", "OCP index from 1",
     "OCP slot that the platform gives for the index"},
    {Group::kPowerModule, "kPowerModule", "per power module", "power module from 1"},
    {Group::kUbbRetimer, "kUbbRetimer", "per retimer of the GPU base board", "retimer from 1"},
    {Group::kSwitchChip, "kSwitchChip", "per switch chip", "switch chip from 1"},
    {Group::kGpuRail, "kGpuRail", "per GPU supply rail", "GPU from 1"},
    {Group::kLanSwitch, "kLanSwitch", "the LAN switch board"},
    {Group::kCduFan, "kCduFan", "per fan of the liquid-cooling unit", "index from 1"},
    {Group::kCduSupply, "kCduSupply", "per power supply of the liquid-cooling unit", "index from 1"},
};
static_assert(sizeof(kGroupWords) / sizeof(kGroupWords[0]) == static_cast<size_t>(Group::kCount) - 1);

// What the answer to a platform call must be.
enum class Want : uint8_t { kIs, kIsNot, kAtLeast };

// One thing that a pass asks before it walks a group's rows.  A call that is made for each index (bEach) leaves out
// that index, any other the group; a count (bCount) says how many there are.
struct Need {
    Group eGroup;
    const char *pcCall;
    const char *pcArgs; // "card=2", or empty: whatever they are
    Want eWant;
    uint16_t awValues[3];
    uint8_t ucValues;
    bool bCount = false;
    bool bEach = false;
};
// In the order in which each group's are decided.  Boards that a step leaves out have their ids beside the step
// (steps_boards.cpp, facts.cpp).  Whether each of them is true is tried by the workbench's tests.
// clang-format off
inline constexpr Need kNeeds[] = {
    {Group::kRackTable, "get_default_board_id", "", Want::kIs, {kBoardRack}, 1},
    {Group::kCduTable, "IPMI_GetCduManageConfig", "", Want::kIs, {1}, 1},
    {Group::kCduFan, "IPMI_GetCduManageConfig", "", Want::kIs, {1}, 1},
    {Group::kCduSupply, "IPMI_GetCduManageConfig", "", Want::kIs, {1}, 1},
    {Group::kSwitchPower, "get_default_board_id", "", Want::kIs, {kBoardSwitchCardA, kBoardSwitchCardB, kBoardSwitchCardC}, 3},
    {Group::kSwitchPower, "GetSwitchBoardSupportFlag", "", Want::kIs, {1}, 1},
    {Group::kSwitchPower, "GetCardOnlineStatus", "card=2", Want::kIs, {1}, 1},
    {Group::kSwitchPower, "GetCardBoardId", "card=2", Want::kIs, {kCardSwitchPower}, 1},
    {Group::kSwitchTemp, "get_default_board_id", "", Want::kIs, {kBoardSwitchCardA, kBoardSwitchCardB, kBoardSwitchCardC}, 3},
    {Group::kSwitchTemp, "GetSwitchBoardSupportFlag", "", Want::kIs, {1}, 1},
    {Group::kSwitchTemp, "GetCardOnlineStatus", "card=2", Want::kIs, {1}, 1},
    {Group::kSwitchTemp, "GetCardBoardId", "card=2", Want::kIs, {kCardSwitchTemp}, 1},
    {Group::kSwitchAir, "get_default_board_id", "", Want::kIs, {kBoardSwitchAir}, 1},
    {Group::kSwitchAir, "GetSwitchBoardSupportFlag", "", Want::kIs, {1}, 1},
    {Group::kSwitchAir, "GetCardOnlineStatus", "card=2", Want::kIs, {1}, 1},
    {Group::kSwitchAir, "GetCardBoardId", "card=2", Want::kIs, {kCardSwitchAir}, 1},
    {Group::kCpu, "HAL_GetCpuMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kCpu, "HAL_GetCpuOnlineStatus", "", Want::kIs, {1}, 1, false, true},
    {Group::kCpuMore, "HAL_GetCpuMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kCpuMore, "HAL_GetCpuOnlineStatus", "", Want::kIs, {1}, 1, false, true},
    {Group::kCpuDomain, "HAL_GetCpuType", "", Want::kIs, {CPU_TYPE_DOMAIN_VOLT}, 1},
    {Group::kCpuDomain, "HAL_GetCpuOnlineStatus", "", Want::kIs, {1}, 1, false, true},
    {Group::kPsu, "get_default_board_id", "", Want::kIsNot, {kBoardSmall}, 1},
    {Group::kPsu, "HAL_GetPsuMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kPsuRedundancy, "get_default_board_id", "", Want::kIsNot, {kBoardSmall}, 1},
    {Group::kPsuRedundancy, "HAL_GetPsuMaxCount", "", Want::kAtLeast, {1}, 1},
    {Group::kPsuRedundancy, "HAL_GetPsuGroupCount", "", Want::kIs, {1, 2}, 2, true},
    {Group::kPsuRedundancy, "HAL_GetPsuCountPerGroup", "", Want::kAtLeast, {1}, 1},
    {Group::kDimm, "HAL_IsNeedSensorSimplification", "", Want::kIsNot, {1}, 1},
    {Group::kDimm, "HAL_GetDimmMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kDimmGroup, "HAL_IsNeedSensorSimplification", "", Want::kIs, {1}, 1},
    {Group::kDimmGroup, "HAL_GetDimmMaxCount", "", Want::kAtLeast, {1}, 1},
    {Group::kDimmGroup, "HAL_GetCpuMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kPcie, "get_default_board_id", "", Want::kIsNot, {kBoardSmall}, 1},
    {Group::kPcie, "Hal_GetStandPcieSlotCounts", "", Want::kAtLeast, {1}, 1, true},
    {Group::kPcie, "Hal_GetPcieSlotByIndex", "", Want::kAtLeast, {0}, 1, false, true},
    {Group::kFan, "get_default_board_id", "", Want::kIsNot, {kBoardSmall}, 1},
    {Group::kFan, "HalFanInst", "", Want::kIs, {1}, 1},
    {Group::kFan, "HalFanService.GetFanMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kFan, "HalFanService.GetFanSilkByIndex", "", Want::kIsNot, {0xFF}, 1, false, true},
    {Group::kDisk, "FruSdrInitPathChoice", "", Want::kIs, {1}, 1},
    {Group::kDisk, "HalHddBackpanelInst", "", Want::kIs, {1}, 1},
    {Group::kDisk, "HalHddBackpanelService.GetBackPanelList", "", Want::kAtLeast, {1}, 1, true},
    {Group::kNvme, "FruSdrInitPathChoice", "", Want::kIs, {1}, 1},
    {Group::kNvme, "HalHddBackpanelInst", "", Want::kIs, {1}, 1},
    {Group::kNvme, "HalHddBackpanelService.GetBackPanelList", "", Want::kAtLeast, {1}, 1, true},
    {Group::kNvme, "HalHddBackpanelService.CheckHddIsSupportNvme", "", Want::kIs, {1}, 1, false, true},
    {Group::kDiskGroup, "FruSdrInitPathChoice", "", Want::kIs, {1}, 1},
    {Group::kDiskGroup, "HalHddBackpanelInst", "", Want::kIs, {1}, 1},
    {Group::kDiskGroup, "HAL_IsNeedSensorSimplification", "", Want::kIs, {1}, 1},
    {Group::kDiskGroup, "HalHddBackpanelService.GetBackPanelList", "", Want::kAtLeast, {1}, 1, true},
    {Group::kOcp, "get_default_board_id", "", Want::kIsNot, {kBoardSmall, kBoardNoOcpA, kBoardNoOcpB}, 3},
    {Group::kOcp, "GetOcpNetCardMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kOcp, "GetOcpPresentStatus", "", Want::kAtLeast, {1}, 1},
    {Group::kOcpError, "get_default_board_id", "", Want::kIsNot, {kBoardSmall, kBoardNoOcpA, kBoardNoOcpB}, 3},
    {Group::kOcpError, "GetOcpNetCardMaxCount", "", Want::kAtLeast, {1}, 1, true},
    {Group::kOcpError, "GetOcpPresentStatus", "", Want::kAtLeast, {1}, 1},
    {Group::kSwitchChip, "Hal_GetSwiTempSensorCnt", "", Want::kAtLeast, {1}, 1, true},
};
// clang-format on

} // namespace oxa
#endif
