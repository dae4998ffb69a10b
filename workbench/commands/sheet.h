// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the four sheet commands have in common.
#ifndef OXA_WORKBENCH_COMMANDS_SHEET_H
#define OXA_WORKBENCH_COMMANDS_SHEET_H

#include <string>
#include <vector>

#include "base/output.h"
#include "sets/static_set.h"
#include "sheet/judge.h"

namespace workbench {

struct SheetOptions {
    std::string file; // the sheet
    RunOptions run;
    std::string output = kStandardOutput, style = "comma", list;
    bool round = false, skip_absent = false, json = false;
};

// The set, the sheet, and one against the other.
struct JudgedSheet {
    const Profile *profile = nullptr;
    std::vector<Sensor> sensors;
    std::vector<Decoded> set;
    Sheet sheet;
    Judgement judgement;
    std::vector<std::string> skipped; // of the sheet: the profile's, and not of this board
};

// Ends the command with 2 when the sheet cannot be read, each fault in a line.
void LoadSheet(const SheetOptions &options, JudgedSheet &out);

// "limits.csv:5:23: G5: VCC12V: UC 14.43 V: a byte holds 14.4 or 14.5".
std::string FindingText(const std::string &file, const SheetFinding &finding);

// "2 sensors are not on this board and left out: PSU*_Vin (2)", a line; empty: none.
std::string SkippedText(const JudgedSheet &judged);

// Ends the command with 2 when anything is in the way of making something of the sheet.
void EndAtFindings(const SheetOptions &options, const JudgedSheet &judged);
[[noreturn]] void EndWith(const std::vector<std::string> &faults);

void SheetRows(const SheetOptions &options);
void SheetImage(const SheetOptions &options);

} // namespace workbench
#endif
