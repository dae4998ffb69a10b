// SPDX-License-Identifier: GPL-3.0-or-later
//
// Values in units and the bytes that stand for them.
#ifndef OXA_WORKBENCH_SETS_COUNTS_H
#define OXA_WORKBENCH_SETS_COUNTS_H

#include <optional>
#include <string>

#include "sets/decode.h"

namespace workbench {

double ValueOf(const Reading &reading, uint8_t count);
std::string InUnits(const Reading &reading, double value); // "14.4 V"

// The byte of a value; where no byte has it, the nearest below and above.
struct NearCounts {
    std::optional<uint8_t> exact, below, above;
};
NearCounts FindCounts(const Reading &reading, double wanted);

} // namespace workbench
#endif
