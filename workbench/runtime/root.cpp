// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/root.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

#include "base/errors.h"

namespace workbench {
namespace {

// The workbench's file under a root directory: records back to back with their ids, as export writes them; or an
// empty one that says that the repository is a BMC's.
std::string RepositoryPath(const std::string &root, bool at_bmc) {
    return root + (at_bmc ? "/repository.bmc" : "/repository.sdr");
}

bool Exists(const std::string &path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

} // namespace

Root::Root(const std::string &directory, bool at_bmc) : given_("--root " + directory), at_bmc_(at_bmc) {
    try {
        sim::SetRoot(directory);
    } catch (const std::filesystem::filesystem_error &error) {
        throw InputError(given_ + ": " + error.code().message());
    }
    Lock();
    path_ = RepositoryPath(sim::Root(), at_bmc);
    if (Exists(RepositoryPath(sim::Root(), !at_bmc)))
        throw InputError(given_ + " was used " + (at_bmc ? "without" : "with") +
                         " --bmc; its record ids are of that repository");
}

// The lock is the folder's own and goes with the process, however that ends.
void Root::Lock() const {
    constexpr int kSeconds = 10, kTriesPerSecond = 20;
    const int folder = open(sim::Root().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        throw InputError(given_ + ": " + std::strerror(errno));
    for (int left = kSeconds * kTriesPerSecond; flock(folder, LOCK_EX | LOCK_NB) != 0; --left) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            throw InputError(given_ + ": cannot be locked: " + std::strerror(errno));
        if (left == 0)
            throw InputError(given_ + ": another oxa-sensors has been working in it for " +
                             std::to_string(kSeconds) + " seconds; try again when it is done");
        std::this_thread::sleep_for(std::chrono::milliseconds(1000 / kTriesPerSecond));
    }
}

bool Root::Used() const {
    return Exists(path_);
}

RepositoryState Root::Repository() const {
    return LoadRepository(path_); // of a BMC: empty
}

void Root::Remember(const sim::Board &board) {
    std::vector<std::string> paths = sim::LibraryPaths();
    for (const auto &file : board.files)
        paths.push_back(file.first);
    for (const std::string &path : paths)
        files_[path] = sim::FileExists(path) ? std::optional(sim::ReadFile(path)) : std::nullopt;
}

void Root::Save(const RepositoryState &repository) const {
    SaveRepository(path_, at_bmc_ ? RepositoryState{} : repository);
}

void Root::PutBack() const noexcept {
    for (const auto &file : files_) // first what is new: that makes room
        if (!file.second)
            unlink(sim::RealPath(file.first).c_str());
    for (const auto &[path, bytes] : files_)
        try {
            if (bytes && sim::ReadFile(path) != *bytes)
                sim::WriteFile(path, *bytes);
        } catch (const std::exception &) { // the caller tells what is wrong with the folder
        }
}

} // namespace workbench
