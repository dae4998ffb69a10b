// SPDX-License-Identifier: Apache-2.0
//
// A row gives a kind a name in one profile, and may depart from it.  Rows are packed one behind the other
// without a pointer, so that a profile costs no relocation:
//
//     length, group, kind, offsets of name, variant, announcement and limits; function\0 name\0 ...
//
// The function is the exported generator's name as it stands in log lines; records that a driver builds under
// its own name have an empty one.  What a row does not have has offset 0.
#ifndef OXA_STATIC_SENSORS_ROW_H
#define OXA_STATIC_SENSORS_ROW_H

#include "library/static_sensors/kinds/kinds.h"

namespace oxa {

// The parts of a board's set; a profile's rows of one group stand together, in the order of their records.
enum class Group : uint8_t {
    kNone,
    kTable,         // reached through the profile's static generator table
    kRackTable,     // through the table of the rack management board
    kCduTable,      // through the table of the liquid-cooling unit
    kSwitchPower,   // switch-board card: volts and current per instance
    kSwitchTemp,    // switch-board card: temperatures
    kSwitchAir,     // switch-board inlet and outlet
    kCpu,           // per CPU
    kCpuMore,       // per CPU, behind kCpu
    kCpuDomain,     // voltage domains, two per CPU
    kPsu,           // per PSU
    kPsuRedundancy, // per PSU group
    kDimm,          // per DIMM
    kDimmGroup,     // per CPU under sensor simplification
    kPcie,          // per PCIe slot
    kFan,           // per fan
    kDisk,          // per disk slot
    kNvme,          // per NVMe disk
    kDiskGroup,     // per backplane under sensor simplification
    kOcp,           // per OCP card
    kOcpError,      // per OCP card, behind kOcp
    kPowerModule,   // per power module
    kUbbRetimer,    // per retimer of the GPU base board
    kSwitchChip,    // per switch chip
    kGpuRail,       // per GPU supply rail
    kLanSwitch,     // LAN switch board
    kCduFan,        // per fan of the liquid-cooling unit
    kCduSupply,     // per power supply of the liquid-cooling unit
    kCount
};

enum RowByte : uint8_t {
    kRowLength,
    kRowGroup,
    kRowKind,
    kRowName,
    kRowVariant,
    kRowAnnounced,
    kRowLimits,
    kRowTexts
};
inline constexpr uint8_t kLastOfGroup = 0x80; // in the group's byte

// Limits of a row that departs from its kind: SDR bytes 14 to 19 and 36 to 41.
inline constexpr uint8_t kRowMaskBytes = FULL_SDR_LINEARIZATION - SDR_ASSERT_MASK - 3;
inline constexpr uint8_t kRowLimitBytes = FULL_SDR_HYST_POSITIVE - FULL_SDR_UNR;
static_assert(kRowMaskBytes == 6 && kRowLimitBytes == 6);

// A row as the engine reads it.
struct RowView {
    const uint8_t *puc;

    bool IsLastOfGroup() const {
        return (puc[kRowGroup] & kLastOfGroup) != 0;
    }
    uint8_t Kind() const {
        return puc[kRowKind];
    }
    const char *Function() const {
        return reinterpret_cast<const char *>(puc + kRowTexts);
    }
    const char *Name() const {
        return Text(kRowName);
    }
    const char *Variant() const {
        return Text(kRowVariant);
    }
    bool HasVariant() const {
        return puc[kRowVariant] != 0;
    }
    const char *Announced() const {
        return Text(kRowAnnounced);
    }
    bool IsAnnounced() const {
        return puc[kRowAnnounced] != 0;
    }
    const uint8_t *OwnLimits() const { // null: those of the kind
        return puc[kRowLimits] == 0 ? nullptr : puc + puc[kRowLimits];
    }
    bool IsEnd() const {
        return puc[kRowLength] == 0;
    }
    RowView Next() const {
        return {puc + puc[kRowLength]};
    }

private:
    const char *Text(RowByte eOffset) const {
        return reinterpret_cast<const char *>(puc + puc[eOffset]);
    }
};

} // namespace oxa
#endif
