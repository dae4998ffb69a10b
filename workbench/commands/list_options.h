// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef OXA_WORKBENCH_COMMANDS_LIST_OPTIONS_H
#define OXA_WORKBENCH_COMMANDS_LIST_OPTIONS_H

#include <string>
#include <vector>

#include "sources/source.h"

namespace workbench {

struct ListOptions : SourceOptions {
    bool json = false;
    std::vector<std::string> filter; // names and patterns; empty: all
    std::string columns, sort;       // names of columns; empty: as it comes
    bool reverse = false, no_header = false;
};

void ListAll(const ListOptions &options); // profile "all": counts per profile and group

} // namespace workbench
#endif
