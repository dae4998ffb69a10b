// SPDX-License-Identifier: Apache-2.0
//
// What the static driver runs on: a customer profile is one constant, made of its names, the order of its
// pass, where the pass departs from the others', and its rows.
#ifndef OXA_STATIC_SENSORS_PROFILE_H
#define OXA_STATIC_SENSORS_PROFILE_H

#include "library/static_sensors/row.h"

namespace oxa {

// The parts of a static pass, in the order that a profile gives them.  Every pass ends with the count.
enum class Step : uint8_t {
    kEnd,
    kRackBoard,  // the rack management board has its own table and nothing else
    kFacts,      // what the board is made of
    kTable,      // the static generator table
    kSwitchCard, // volts and currents, or temperatures, of the switch-board card
    kSwitchAir,  // inlets and outlets of the switch board
    kCpus,
    kCpuDomains, // only the processor with voltage domains
    kMemory,
    kPsus, // then the redundancy of the PSU groups
    kPcie,
    kFans,
    kDisks,
    kOcp,
    kPowerModules, // then their number is reported
    kUbbRetimers,
    kSwitchChips,
    kGpuRails,
    kLanSwitch,
    kLiquidCooling // only where a CDU is managed
};
inline constexpr size_t kStepMax = 24;

// How a profile calls itself in log lines.
struct ProfileNames {
    char acName[8];    // "Default"
    char acUnit[34];   // "gen_specific_sensor_default.c"
    char acDriver[32]; // "OXA_AddDefaultStaticSensor"
    // its helpers that ask a service
    char acFanCount[32]; // "Default_GetFanMaxCountByHal_"
    char acFanSilk[32];  // "Default_GetFanSilkByIndexByHal"
    char acNvmeSlot[36]; // "Default_CheckHddIsSupportNvmeByHal_"
};

// What a profile's pass does.
struct PassOrder {
    Step aeSteps[kStepMax]; // ends with kEnd
    // departures from the others' passes
    bool bPrintsDiskSilk = false; // disks are numbered by their printed number where it differs from the slot
    bool bOnlyPresentOcp = false; // OCP positions without a card are left out
    bool bShortFinalLine = false; // "Add<Profile>Sensor: ucCnt = %d!"
    bool bCduNamesGenerators = false; // announcements of CDU records begin with the generator's name
    uint8_t ucCduFans = 0;            // how many fans and
    uint8_t ucCduSupplies = 0;        // power supplies its liquid-cooling unit has
};

// The rows stand behind it and end with a row of length 0.
struct StaticProfile {
    ProfileNames tNames;
    PassOrder tPass;
    uint16_t awFirstRow[static_cast<size_t>(Group::kCount)]; // of each group, from the first row of all

    RowView RowAt(uint32_t dwOffset) const {
        return {reinterpret_cast<const uint8_t *>(this + 1) + dwOffset};
    }
    RowView FirstRow(Group eGroup) const { // the end row for a group that the profile does not have
        return RowAt(awFirstRow[static_cast<size_t>(eGroup)]);
    }
};

} // namespace oxa
#endif
