// SPDX-License-Identifier: Apache-2.0
//
// A kind says once what a static sensor looks like and what is asked of the board before it is built, whether
// one profile has it or all of them.  Kinds hold no pointer, so that they cost no relocation.
#ifndef OXA_STATIC_SENSORS_KIND_H
#define OXA_STATIC_SENSORS_KIND_H

#include "library/record/device_codes.h"
#include "library/record/head.h"

namespace oxa {

// What is asked before anything is built.  A gate that refuses logs why and no record comes out.
enum class Gate : uint8_t {
    kNone,
    kBoardHas,     // the board has the sensor ucGateId; asked with the flag preset to 0
    kPartWanted,   // PSU voltages: refused only when the board answers 0 to ucGateId; preset 1
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
enum class InstanceRule : uint8_t {
    kNone,          // nothing; offset 3 stays 0
    kIndexOnly,     // offset 3 = index
    kAdd,           // instance += index, dropped where that would pass 255
    kAllOnes,       // offset 3 = FFh: no index
    kAddOnly,       // the same as kAdd, but offset 3 stays 0
    kAddOrKeep,     // instance += index where it fits
    kSlot,          // instance = index
    kSlotAndByte29, // the same, and byte 29 of the compact record = index
    kCpu,           // instance += CPU number counted from 0, dropped where that would pass 255
    kCpuIndexOnly,  // offset 3 = CPU number counted from 0
    kCpuClientOnly  // the CPU number is only needed for the bus client
};

// Whose bus client the entry names.
enum class Client : uint8_t { kNone, kCpuRegulator, kInlet, kSwitch };

// The line with the board id that some sensors write on their way.
enum class BoardLine : uint8_t { kNone, kOwn, kPowerWatts, kInputTemp };

// What is said when a record of that name is already stored.
enum class DuplicateNotice : uint8_t {
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
    kCpuFromFirst = 0x02,         // asks for the first printed CPU number
    kRefusalWarns = 0x04,         // the refusal is a warning instead of an info
    kIndexInItem = 0x08,          // the entry's item number (offset 1) counts on with the index
    kDropBelowFirstCpu = 0x10     // not built for a printed CPU number below the first one
};

struct Device { // device-table entry
    uint8_t ucCode = 0;
    uint8_t ucItem = 0;
    uint8_t ucScanFlag = 0; // kScanned or none
    uint8_t ucMark = kMarkNone;
};

// What a sensor does on its way, as it is written down.
struct Behaviour {
    Device tDevice = {};
    Gate eGate = Gate::kNone;
    uint8_t ucGateId = 0; // SENSOR_... number, part, or voltage domain
    InstanceRule eInstance = InstanceRule::kNone;
    Client eClient = Client::kNone;
    BoardLine eBoardLine = BoardLine::kNone;
    DuplicateNotice eNotice = DuplicateNotice::kSilent;
    Naming eNaming = Naming::kNumber;
    uint8_t ucFlags = 0;
};

struct SensorKind {
    SdrHead tHead;
    Behaviour tDoes;
    // Worked out once; the engine looks here before it looks closer.
    uint8_t ucHeadSize;      // of a full or of a compact record
    bool bAsksForFacts;      // first CPU number or board id, before anything is filled in
    bool bHasPlatformValues; // the platform's answers change the record, or a bus client is needed
};

constexpr bool AsksForFacts(const Behaviour &t) {
    return (t.ucFlags & kCpuFromFirst) != 0 || t.eBoardLine != BoardLine::kNone;
}
constexpr bool HasPlatformValues(const Behaviour &t) {
    return t.eClient != Client::kNone || t.eGate == Gate::kCpuVoltage || t.eGate == Gate::kFanAccuracy ||
           t.eGate == Gate::kDimmAccuracy || t.eGate == Gate::kDiskAccuracy ||
           (t.ucFlags & (kRelativeOnSmallBoard | kIndexInItem)) != 0;
}

constexpr SensorKind MakeKind(const SdrHead &tHead, const Behaviour &tDoes) {
    const bool bFull = tHead.auc[SDR_RECORD_TYPE] == kRecordFull;
    return {tHead, tDoes, bFull ? kFullHeadSize : kCompactHeadSize, AsksForFacts(tDoes),
            HasPlatformValues(tDoes)};
}
constexpr SensorKind Full(const FullFields &t, const Behaviour &tDoes) {
    return MakeKind(FullHead(t), tDoes);
}
constexpr SensorKind Compact(const CompactFields &t, const Behaviour &tDoes) {
    SdrHead tHead = CompactHead(t);
    for (uint8_t uc = 0; uc < kNameMax; ++uc)
        tHead.auc[COMPACT_SDR_NAME + uc] = kNameFill; // the name field
    return MakeKind(tHead, tDoes);
}
} // namespace oxa
#endif
