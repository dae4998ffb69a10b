// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/counts.h"

#include <cmath>

#include "base/text.h"

namespace workbench {

double ValueOf(const Reading &reading, uint8_t count) {
    return Rounded(reading.factor * (reading.is_signed ? static_cast<int8_t>(count) : count) +
                   reading.offset);
}

std::string InUnits(const Reading &reading, double value) {
    return FormatNumber(value) + (reading.unit.empty() ? "" : " " + reading.unit);
}

NearCounts FindCounts(const Reading &reading, double wanted) {
    NearCounts near;
    for (unsigned raw = 0; raw < 256; ++raw) {
        const uint8_t count = static_cast<uint8_t>(raw);
        const double value = ValueOf(reading, count);
        if (value == Rounded(wanted)) {
            near.exact = count;
            return near;
        }
        std::optional<uint8_t> &side = value < wanted ? near.below : near.above;
        if (!side || std::abs(value - wanted) < std::abs(ValueOf(reading, *side) - wanted))
            side = count;
    }
    return near;
}

} // namespace workbench
