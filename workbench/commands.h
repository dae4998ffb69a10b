// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef OXA_WORKBENCH_COMMANDS_H
#define OXA_WORKBENCH_COMMANDS_H

#include <string>

#include "workbench/static_set.h"

namespace workbench {

struct ListOptions {
    RunOptions run;
    bool json = false;
    std::string filter; // glob over names; empty: all
};
void List(const ListOptions &options);

struct ShowOptions {
    RunOptions run;
    bool json = false;
    std::string name; // exact, or a glob
};
void Show(const ShowOptions &options);

struct ExportOptions {
    RunOptions run;
    std::string format = "raw"; // raw, json, csv
    std::string output;         // empty or "-": standard output
    bool keep_ids = false;      // leave record ids at 0
    bool number = false;        // give sensor numbers
};
void Export(const ExportOptions &options);

} // namespace workbench
#endif
