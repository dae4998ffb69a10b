// SPDX-License-Identifier: GPL-3.0-or-later
//
// Event records as people have them: hexadecimal text, binary files, and what other programs print.
#ifndef OXA_WORKBENCH_EVENTS_SEL_INPUT_H
#define OXA_WORKBENCH_EVENTS_SEL_INPUT_H

#include <string>
#include <vector>

#include "events/sel_inverse.h"

namespace workbench {

struct InputRecord {
    SelRecord record;
    std::string where;   // "record 3" of a binary file, "line 12" of a text
    bool binary = false; // from a binary file, see TurnedRound
};

// Takes, by itself telling which it is:
//   16-byte records back to back (ipmitool sel writeraw);
//   hexadecimal text, 16 bytes a line (blanks, commas, 0x, xxd's offsets);
//   ipmitool sel list -v and sel elist -v, and the lines of OEM records of sel list;
//   ipmi-sel --hex-dump.
// InputError when it is none of these, a record is cut short, or there is no record at all.
std::vector<InputRecord> ReadRecords(const std::string &content, const std::string &shown_name);

// ipmitool sel writeraw writes bytes 7 to 9 of time-stamped OEM records in reverse order, other programs do
// not. The record in the other order; itself where that makes no difference.
SelRecord TurnedRound(const SelRecord &record);

} // namespace workbench
#endif
