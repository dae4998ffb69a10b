// SPDX-License-Identifier: GPL-3.0-or-later
//
// The columns that tables of sensors have in common.
#ifndef OXA_WORKBENCH_SETS_SENSOR_TABLE_H
#define OXA_WORKBENCH_SETS_SENSOR_TABLE_H

#include <string>
#include <vector>

#include "base/table.h"
#include "sets/decode.h"

namespace workbench {

void AddLimitColumns(std::vector<Column> &columns); // LNR to UNR

// `number` is the header of the first column; the limits are the last ones.
std::vector<Column> SensorColumns(const std::string &number);

// The cell below READING: "x * 0.01 V", "3 states".
std::string ReadingText(const Decoded &decoded);

} // namespace workbench
#endif
