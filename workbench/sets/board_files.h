// SPDX-License-Identifier: GPL-3.0-or-later
//
// The board descriptions of a folder.
#ifndef OXA_WORKBENCH_SETS_BOARD_FILES_H
#define OXA_WORKBENCH_SETS_BOARD_FILES_H

#include <string>
#include <vector>

namespace workbench {

// Every *.toml of it, sorted, or the one capture that it names; InputError for a folder that cannot be read or has none.
std::vector<std::string> BoardFilesOf(const std::string &folder);

} // namespace workbench
#endif
