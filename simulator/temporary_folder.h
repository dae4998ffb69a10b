// SPDX-License-Identifier: GPL-3.0-or-later
//
// Folders that go with their process.  A process that is killed leaves its own behind; the next one that makes a folder
// of the same kind removes it.
#ifndef OXA_SIMULATOR_TEMPORARY_FOLDER_H
#define OXA_SIMULATOR_TEMPORARY_FOLDER_H

#include <string>
#include <vector>

namespace sim {

// As mkdtemp: "/tmp/oxa-sim.XXXXXX" becomes the folder's name; false with errno when there can be none.  The folder is
// locked until this process and all that it forked have ended; those of its kind that nobody has locked are removed
// before.
bool MakeTemporaryFolder(std::string &path);

// The folders of this kind whose process lives.
std::vector<std::string> LockedFolders(const std::string &pattern);

} // namespace sim
#endif
