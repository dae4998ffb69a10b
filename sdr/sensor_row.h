// SPDX-License-Identifier: Apache-2.0
//
// Sensors as data.  A kind says what a sensor's record looks like and what is asked of the board before it is
// built; a row gives a kind a name in one profile.  A profile is one constant: its head and its rows, packed
// one behind the other without a pointer, so that it costs no relocation.
//
// Both are written down readably and stored small; the compiler turns one form into the other.  A row as it
// is listed:
//
//     length, group, kind, offsets of name, variant, announcement; generator\0 name\0 variant\0 ...
//
// and as it is stored (sensor_row_stored.h):
//
//     length, group and what follows the name, kind, offset of name; coded generator, name\0 variant\0 ...
//
// The generator is the exported function's name without "<Profile>_"; records that the driver builds under
// its own name have an empty one.  Variant and announcement may be missing (offset 0).
#ifndef OXA_SDR_SENSOR_ROW_H
#define OXA_SDR_SENSOR_ROW_H

#include <cstddef>
#include <cstdint>

#include "sdr/sdr_layout.h"

namespace oxa {

// ---- kinds ------------------------------------------------------------------------------------------------

// What is asked before anything is built.  A gate that refuses logs why and no record comes out.
enum class Gate : uint8_t {
    kNone,
    kBoardHas,     // the board has the sensor ucGateId; asked with the flag preset to 0
    kKindWanted,   // PSU voltages: refused only when the board answers 0 to kind ucGateId; preset 1
    kPch,          // an Intel processor, then as kBoardHas
    kPowerFault,   // as kBoardHas, then the power-fault registers are read and written back
    kLiquidNot2,   // not on a machine without fans
    kLiquidIs1,    // only with a leak sensor
    kFanAccuracy,  // as kLiquidNot2, then M = watts per count of the fans
    kDimmAccuracy, // M = watts per count of the memory
    kDiskAccuracy, // M = watts per count of the disks
    kBoardPower,   // logs board id and product id; not on the small board
    kPsuStatus,    // loads the alarm configuration; not beyond the number of PSUs
    kPsuInRange,   // not beyond the number of PSUs
    kCpuIntel,     // only with an Intel processor
    kSwitchPower,  // only with the switch card, or the valid switch sensors, that the board wants
    kProductLine,  // logs the product id
    kDimmName,     // the name's text is the DIMM's own
    kCpuVoltage,   // conversion and limits are described by the platform, domain ucGateId
    kAirIndex      // switch-board inlets and outlets: 0 to 3
};

// What the index does to the entity instance and to the entry's index (offset 3).
enum class Place : uint8_t {
    kNone,         // nothing; offset 3 stays 0
    kIndexOnly,    // offset 3 = index
    kAdd,          // instance += index, dropped where that would pass 255
    kAllOnes,      // offset 3 = FFh: no index
    kAddOnly,      // the same, but offset 3 stays 0
    kAddOrKeep,    // instance += index where it fits
    kSlot,         // instance = index
    kCpu,          // instance += CPU number counted from 0, dropped where that would pass 255
    kCpuIndexOnly, // offset 3 = CPU number counted from 0
    kCpuClientOnly // the CPU number is only needed for the bus client
};

enum class Client : uint8_t { kNone, kCpuRegulator, kInlet, kSwitch };

// The line with the board id that some sensors write on their way.
enum class BoardLine : uint8_t { kNone, kOwn, kPowerWatts, kInputTemp };

// What is said when a record of that name is already stored.
enum class Known : uint8_t {
    kSilent,
    kInfo,            // "<generator> sensor already exist!"
    kInfoNewline,     // the same with a newline
    kWarnNewline,     // and as a warning
    kSwitchVoltsWarn, // the text of the profile's switch-board volts generator, as a warning
    kSwitchVolts,     // the text of Default's
    kCpuStatus,       // the text of the profile's CPU status
    kFru              // "The <name> already exists in fru."
};

// How the name is chosen.
enum class Naming : uint8_t {
    kNumber,      // printed with the number
    kText,        // printed with a text of the platform
    kSecondGroup, // index 0 the name, index 1 the variant
    kInletOutlet, // 0, 1: the name with '1', '2'; 2, 3: the variant with '1', '2'
    kSmallBoard,  // the variant on the small board, else printed with the number
    kLongNumber   // the variant where the number has more than one hexadecimal digit
};

enum KindFlag : uint8_t {
    kRelativeOnSmallBoard = 0x01, // instance bit 7 on the small board
    kSlotInRecord = 0x02,         // compact byte 29 = index
    kSilkReread = 0x04,           // asks for the first printed CPU number
    kRefusalWarns = 0x08,         // the refusal is a warning instead of an info
    kIndexInItem = 0x10,          // the entry's item number (offset 1) counts on with the index
    kDropBelowSilk = 0x20         // not built for a printed CPU number below the first one
};
inline constexpr uint8_t kScanned = 0x80; // of a device, and among the flags as they are stored

struct Device { // device-table entry
    uint8_t ucCode = 0;
    uint8_t ucItem = 0;
    uint8_t ucScanFlag = 0; // kScanned or none
    uint8_t ucMark = 0xFF;  // 0x25 disks, 0x28 54 V rails
};

// What a sensor does on its way, as it is written down.
struct Behaviour {
    Device tDevice = {};
    Gate eGate = Gate::kNone;
    uint8_t ucGateId = 0; // SENSOR_... number, kind, or voltage domain
    Place ePlace = Place::kNone;
    Client eClient = Client::kNone;
    BoardLine eBoardLine = BoardLine::kNone;
    Known eKnown = Known::kSilent;
    Naming eNaming = Naming::kNumber;
    uint8_t ucFlags = 0;
};

// A sensor as it is written down.
struct SensorKind {
    SdrHead tHead;
    Behaviour tDoes;
};

constexpr bool Asks(const Behaviour &t) {
    return t.eGate != Gate::kNone || (t.ucFlags & kSilkReread) != 0 || t.eBoardLine != BoardLine::kNone;
}
constexpr bool Changes(const Behaviour &t) {
    return t.eClient != Client::kNone || t.eGate == Gate::kCpuVoltage || t.eGate == Gate::kFanAccuracy ||
           t.eGate == Gate::kDimmAccuracy || t.eGate == Gate::kDiskAccuracy ||
           (t.ucFlags & (kSlotInRecord | kRelativeOnSmallBoard | kIndexInItem)) != 0;
}

constexpr SensorKind MakeKind(const SdrHead &tHead, const Behaviour &t) {
    return {tHead, t};
}
constexpr SensorKind Full(const FullFields &t, const Behaviour &tBehaviour) {
    return MakeKind(FullHead(t), tBehaviour);
}
constexpr SensorKind Compact(const CompactFields &t, const Behaviour &tBehaviour) {
    SdrHead tHead = CompactHead(t);
    for (uint8_t uc = 0; uc < kNameMax; ++uc)
        tHead.auc[COMPACT_SDR_NAME + uc] = kNameFill; // the name field
    return MakeKind(tHead, tBehaviour);
}

// The same as the engine reads it.  Many sensors share a head but for entity, instance and byte 24 (M of a
// full record); heads stand behind one another without the part that a compact record has no use for.  Most
// sensors do nothing odd, and two bits say so.
struct StoredKind {
    uint8_t ucHead; // where among the heads, in steps of kHeadStep
    uint8_t ucByte24;
    uint8_t aucEntity[2]; // id and instance
    uint8_t aucDevice[2]; // the entry's code and item
    uint8_t ucMark;
    uint8_t ucGateId;
    Gate eGate : 5;
    bool bAsks : 1;    // gate, first CPU number or board id before anything is filled in
    bool bChanges : 1; // the template is changed by what the board told, or a bus client is needed
    bool bFull : 1;
    Place ePlace : 4;
    Client eClient : 2;
    BoardLine eBoardLine : 2;
    Naming eNaming : 3;
    Known eKnown : 5;
    uint8_t ucFlags; // and kScanned
};
static_assert(sizeof(StoredKind) == 12);
inline constexpr uint8_t kHeadStep = 16;
static_assert(kFullHeadSize % kHeadStep == 0 && kCompactHeadSize % kHeadStep == 0);

// ---- rows -------------------------------------------------------------------------------------------------

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

enum RowByte : uint8_t { kRowLength, kRowGroup, kRowKind, kRowName, kRowVariant, kRowAnnounced, kRowTexts };

// One packed row, or several.
template <size_t N> struct Rows {
    uint8_t auc[N] = {};
};

// Compile-time faults: calling one of these stops the build and its name says what is wrong.
void sensor_name_longer_than_16_characters();
void sensor_row_too_long();
void sensor_name_twice_in_a_profile();
void no_row_of_that_generator();
void row_stands_outside_its_group();

// Characters that a name pattern prints at most: a decimal has up to nDigits, a hexadecimal two (one where
// the pattern asks for a width of one), a character is one, a DIMM's name has up to five.
constexpr size_t PrintedLength(const char *pcPattern, size_t nDigits) {
    size_t n = 0;
    for (const char *pc = pcPattern; *pc != '\0'; ++pc, ++n) {
        if (*pc != '%')
            continue;
        const bool bOne = pc[1] == '1';
        while (pc[1] >= '0' && pc[1] <= '9')
            ++pc;
        ++pc;
        n += (*pc == 's' ? 5 : *pc == 'X' ? (bOne ? 1 : 2) : *pc == 'c' ? 1 : nDigits) - 1;
    }
    return n;
}

constexpr void CheckName(const char *pcPattern, size_t nDigits = 3) {
    if (PrintedLength(pcPattern, nDigits) > kNameMax)
        sensor_name_longer_than_16_characters();
}

// A text of a row; an empty one takes no room.
template <size_t N> constexpr size_t Room(const char (&)[N]) {
    return N > 1 ? N : 0;
}
template <size_t S, size_t N>
constexpr size_t PutText(Rows<S> &t, size_t nAt, const char (&acText)[N], RowByte eOffset) {
    t.auc[eOffset] = static_cast<uint8_t>(N > 1 ? nAt : 0);
    for (size_t n = 0; N > 1 && n < N; ++n)
        t.auc[nAt + n] = static_cast<uint8_t>(acText[n]);
    return nAt + Room(acText);
}

template <size_t G, size_t P, size_t V, size_t A>
constexpr auto MakeRow(uint8_t ucKind, const char (&acGenerator)[G], const char (&acName)[P],
                       const char (&acVariant)[V], const char (&acAnnounced)[A]) {
    constexpr size_t nSize = kRowTexts + G + P + (V > 1 ? V : 0) + (A > 1 ? A : 0);
    if (nSize > 255)
        sensor_row_too_long();
    Rows<nSize> t = {};
    t.auc[kRowLength] = static_cast<uint8_t>(nSize);
    t.auc[kRowKind] = ucKind;
    for (size_t n = 0; n < G; ++n)
        t.auc[kRowTexts + n] = static_cast<uint8_t>(acGenerator[n]);
    size_t nAt = PutText(t, kRowTexts + G, acName, kRowName);
    nAt = PutText(t, nAt, acVariant, kRowVariant);
    PutText(t, nAt, acAnnounced, kRowAnnounced);
    return t;
}

template <size_t N, size_t M> constexpr size_t CopyRows(Rows<N> &tTo, size_t nAt, const Rows<M> &tFrom) {
    for (size_t n = 0; n < M; ++n)
        tTo.auc[nAt + n] = tFrom.auc[n];
    return nAt + M;
}

template <size_t... N> constexpr Rows<(N + ...)> Join(const Rows<N> &...atRows) {
    Rows<(N + ...)> t = {};
    size_t nAt = 0;
    ((nAt = CopyRows(t, nAt, atRows)), ...);
    return t;
}

template <size_t... N> constexpr Rows<(N + ...)> InGroup(Group eGroup, const Rows<N> &...atRows) {
    Rows<(N + ...)> t = Join(atRows...);
    for (size_t n = 0; n < sizeof(t.auc); n += t.auc[n])
        t.auc[n + kRowGroup] = static_cast<uint8_t>(eGroup);
    return t;
}

constexpr bool SameText(const uint8_t *puc, const char *pc) {
    for (; *puc == static_cast<uint8_t>(*pc); ++puc, ++pc)
        if (*pc == '\0')
            return true;
    return false;
}

} // namespace oxa
#endif
