// SPDX-License-Identifier: GPL-3.0-or-later
//
// A customer's list of limits: a row for each sensor, a column for each limit, in real units.
#ifndef OXA_WORKBENCH_SHEET_SHEET_H
#define OXA_WORKBENCH_SHEET_SHEET_H

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "sets/decode.h"
#include "sheet/csv.h"

namespace workbench {

constexpr size_t kSheetLimits = 6; // in the order of Decoded::thresholds: LNR LC LNC UNC UC UNR
extern const std::array<const char *, kSheetLimits> kSheetLimitKeys; // "LNR"

struct SheetLimit {
    double value = 0;
    SheetPlace place;
};

struct SheetRow {
    std::string name, unit; // unit: empty where the sheet has none
    SheetPlace place, unit_place;
    std::array<std::optional<SheetLimit>, kSheetLimits> limits;
    bool HasLimits() const;
};

struct Sheet {
    std::vector<SheetRow> rows;
    std::vector<SheetCell> ignored; // headers of columns that are not looked at
};

// Faults: no header, a cell that is no number, a sensor twice.  A path that cannot be read is an InputError.
Sheet ReadSheet(const std::string &path, std::vector<SheetFault> &faults);

// Sensors that can have limits: full records with an analog reading.
bool CanHaveLimits(const Decoded &sensor);

std::string SheetOf(const std::vector<Decoded> &set, CsvStyle style);

} // namespace workbench
#endif
