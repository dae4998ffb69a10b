// SPDX-License-Identifier: GPL-3.0-or-later
//
// A line of a lock file.  Each says by itself what it is about: board and profile stand in it, nothing is a heading, so
// that a merge of two branches can put lines together in any order.
//
//     BOARD PROFILE NAME KIND TYPE ENTITY DEVICE FACTOR UNIT LIMITS MASKS HYSTERESIS SETUP SUM    a sensor
//     @TAG  ...                                                          a row of the tables of run-time sensors
#ifndef OXA_WORKBENCH_LOCK_LINE_H
#define OXA_WORKBENCH_LOCK_LINE_H

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

enum LockColumn {
    kLockBoard,
    kLockProfile,
    kLockName,       // "#2" behind it: the second of the set whose line would begin alike
    kLockKind,       // full, compact
    kLockType,       // sensor type and event/reading type: 01/01
    kLockEntity,     // entity and instance: 37.60
    kLockDevice,     // code/item.sub-item.index, with a bus or an address @bus.address: 4B/0.0.1@3.62
    kLockFactor,     // x*0.01, x*2-5, signed*1; "-" without a reading
    kLockUnit,       // "-" without one
    kLockLimits,     // lc=9.6,lnc=10.8; "-" without any
    kLockMasks,      // assertion, deassertion, reading mask as they stand in the record: 8032.8018.1818
    kLockHysteresis, // counts: 1/1
    kLockSetup,      // initialisation and capabilities: 7F68
    kLockSum,        // CRC-32 of record and entry: no byte changes without a change of the line
    kLockColumns
};

struct SensorLine {
    std::array<std::string, kLockColumns> words; // as they stand in the file
    size_t number = 0;                           // of the line, from 1; 0: not read from a file
    std::string Board() const;                   // without escapes, as the other two
    std::string Profile() const;
    std::string Name() const;
    std::vector<std::pair<std::string, std::string>> Limits() const; // key and value, lowest first
};

struct TableLine {
    std::string tag;                     // "@name"
    std::vector<std::string> key, value; // words as they stand in the file
    size_t number = 0;
};

// Words have no blanks, begin with neither "@" nor "#", and are printable ASCII: what is not becomes %XX.
std::string LockWord(const std::string &text);
std::string FromLockWord(const std::string &word); // "?" for a control character: it is for people to read

SensorLine LineOf(const std::string &board, const Profile &profile, const Sensor &sensor,
                  const Decoded &decoded);
std::string Text(const SensorLine &line); // without line end
std::string Text(const TableLine &line);

} // namespace workbench
#endif
