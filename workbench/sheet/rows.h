// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a sheet makes of a profile's list of sensors (library/profiles/*.def): Limits(...) behind the rows.
#ifndef OXA_WORKBENCH_SHEET_ROWS_H
#define OXA_WORKBENCH_SHEET_ROWS_H

#include <string>
#include <vector>

#include "sheet/judge.h"

namespace workbench {

struct ListEdit {
    size_t line = 0; // of the list, from 1
    std::string old, now;
    std::vector<std::string> sensors; // whose limits it is about
    unsigned bytes = 0;               // that the packed row grows by
};

struct ListEdits {
    std::vector<ListEdit> edits;
    std::vector<std::string> faults; // "LIST:LINE: ..."
};

// The lines to change; those whose sensors have what the sheet says stay.
ListEdits EditList(const std::string &path, const std::vector<SheetSensor> &sensors);

// The edits as a patch, without lines around them.
std::string Patch(const std::string &path, const std::vector<ListEdit> &edits);

} // namespace workbench
#endif
