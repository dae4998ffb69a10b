// SPDX-License-Identifier: GPL-3.0-or-later
//
// A sheet held against a set.
#ifndef OXA_WORKBENCH_SHEET_JUDGE_H
#define OXA_WORKBENCH_SHEET_JUDGE_H

#include <string>
#include <vector>

#include "sheet/sheet.h"

namespace workbench {

struct SheetFinding {
    // "value", "gone", "new", "byte", "range", "order", "name", "absent", "discrete", "unit", "missing"
    std::string rule;
    std::string name, text;
    SheetPlace place;
    bool in_the_way = false; // nothing can be made of the sheet before it is put right
};

// A sensor that the sheet has a row for, and what its limits are as bytes.
struct SheetSensor {
    const Decoded *sensor = nullptr;
    const SheetRow *row = nullptr;
    std::array<std::optional<uint8_t>, kSheetLimits>
        counts;           // those of the sheet that a byte holds, or is near to
    bool Changes() const; // another byte than the record's, or a limit that it lacks
};

struct Judgement {
    std::vector<SheetFinding> findings;      // in the order of the sheet
    std::vector<SheetSensor> sensors;        // in the order of the set
    std::vector<std::string> without_limits; // in sheet and set
};

// The set is one of the profile.  With `round` a value that no byte holds is its nearest byte, and no finding.
Judgement JudgeSheet(const Sheet &sheet, const std::vector<Decoded> &set, const Profile &profile, bool round);

} // namespace workbench
#endif
