// SPDX-License-Identifier: GPL-3.0-or-later
//
// The folder of --root: it keeps the library's files and the repository from one call to the next.
#ifndef OXA_WORKBENCH_RUNTIME_ROOT_H
#define OXA_WORKBENCH_RUNTIME_ROOT_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "runtime/platform.h"

namespace workbench {

class Root {
public:
    // The folder is this process's alone until it ends: others that want it are waited for, then InputError.
    // The record file holds ids of one repository, so a folder belongs to that in memory or to a BMC's.
    Root(const std::string &directory, bool at_bmc);
    Root(const Root &) = delete;
    Root &operator=(const Root &) = delete;

    bool Used() const; // by an earlier call: the board's files are there already
    RepositoryState Repository() const;
    // Remembers what the library and the board may write over; before the platform starts.
    void Remember(const sim::Board &board);
    void Save(const RepositoryState &repository) const;
    // The library's files as they were remembered, after a call that did not come to its end.
    void PutBack() const noexcept;

private:
    void Lock() const;

    std::string given_, path_;
    bool at_bmc_;
    std::map<std::string, std::optional<std::vector<uint8_t>>> files_; // nothing: was not there
};

} // namespace workbench
#endif
