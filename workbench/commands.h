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
void ListAll(const ListOptions &options); // profile "all": counts per profile and group

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

struct DiffOptions {
    RunOptions run;          // board: where a side names none
    std::string left, right; // PROFILE, PROFILE@BOARD, or a file that export wrote
    bool json = false;
    int exit_code = 0; // out: 0 equal, 1 different
};
void Diff(DiffOptions &options);

struct CheckOptions {
    RunOptions run;     // board: empty for none; profile: one or "all"
    std::string boards; // folder of board files; empty: none
    bool json = false;
    bool verbose = false;
    int exit_code = 0; // out: 0 nothing or known findings only, 1 others
};
void Check(CheckOptions &options);

} // namespace workbench
#endif
