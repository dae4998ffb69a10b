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
    bool round = false, json = false;
};

// The set, the sheet, and one against the other.
struct JudgedSheet {
    std::string profile; // name
    uint32_t custom_id = 0;
    std::vector<Sensor> sensors;
    std::vector<Decoded> set;
    Sheet sheet;
    Judgement judgement;
};

// Ends the command with 2 when the sheet cannot be read, each fault in a line.
void LoadSheet(const SheetOptions &options, JudgedSheet &out);

// "limits.csv:5:23: G5: VCC12V: UC 14.43 V: a byte holds 14.4 or 14.5".
std::string FindingText(const std::string &file, const SheetFinding &finding);

// Ends the command with 2 when anything is in the way of making something of the sheet.
void EndAtFindings(const SheetOptions &options, const JudgedSheet &judged);
[[noreturn]] void EndWith(const std::vector<std::string> &faults);

void SheetRows(const SheetOptions &options);
void SheetImage(const SheetOptions &options);

} // namespace workbench
#endif
