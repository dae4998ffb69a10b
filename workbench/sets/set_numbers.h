// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a repository gives to the records of a set when it takes them: record ids and sensor numbers.
#ifndef OXA_WORKBENCH_SETS_SET_NUMBERS_H
#define OXA_WORKBENCH_SETS_SET_NUMBERS_H

#include <string>

#include "sets/static_set.h"

namespace workbench {

void SetRecordIds(StaticSet &set); // from 1

// 1 to 254 on LUN 0, then on LUN 1 and LUN 3.  SetError when there are not enough; `who` gives them.
void SetSensorNumbers(StaticSet &set, const std::string &who);

// Records back to back, each its header of 5 bytes and its body: what "ipmitool sdr dump" writes.
std::string RawText(const StaticSet &set);

} // namespace workbench
#endif
