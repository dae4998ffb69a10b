// SPDX-License-Identifier: GPL-3.0-or-later
//
// The columns of `list`: what --columns and --sort know by name.
#ifndef OXA_WORKBENCH_COMMANDS_LIST_COLUMNS_H
#define OXA_WORKBENCH_COMMANDS_LIST_COLUMNS_H

#include <optional>
#include <string>
#include <vector>

#include "base/table.h"
#include "sets/decode.h"
#include "sets/select.h"

namespace workbench {

using ListLine = Selected;

struct ListColumn {
    const char *name; // "uc"
    Column column;
    Cell (*cell)(const ListLine &line);
    std::optional<double> (*value)(const ListLine &line); // to sort by; null: by the text
};

// In the order in which the table shows them.
const std::vector<ListColumn> &ListColumns();

// Of "name,uc"; InputError with the nearest for a name that is none.
std::vector<const ListColumn *> ChosenColumns(const std::string &names);

// Those that fit into a terminal; the ones that are missed least go first.
std::vector<const ListColumn *> FittingColumns(const std::vector<ListLine> &lines, size_t width);

void SortLines(std::vector<ListLine> &lines, const std::string &column); // lines without a value come last

Table ListTable(const std::vector<const ListColumn *> &columns, const std::vector<ListLine> &lines);

} // namespace workbench
#endif
