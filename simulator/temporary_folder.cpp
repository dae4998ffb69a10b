// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {
namespace {

namespace fs = std::filesystem;

constexpr size_t kRandom = 6; // characters that mkdtemp fills in

// A descriptor of a folder of ours that cannot be somebody else's; -1 for anything else.
int OpenOwn(const fs::path &path) {
    const int fd = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat facts {};
    if (fd >= 0 && fstat(fd, &facts) == 0 && facts.st_uid == geteuid() && (facts.st_mode & 0777) == 0700)
        return fd;
    if (fd >= 0)
        close(fd);
    return -1;
}

// A folder that is locked belongs to somebody who lives.
void RemoveUnlessLocked(const fs::path &path) {
    const int fd = OpenOwn(path);
    if (fd < 0)
        return;
    std::error_code ignored;
    if (flock(fd, LOCK_EX | LOCK_NB) == 0)
        fs::remove_all(path, ignored); // links in it are removed, not followed
    close(fd);
}

std::vector<fs::path> OfThisKind(const fs::path &pattern) {
    const std::string name = pattern.filename().string();
    const std::string begin = name.substr(0, name.size() - kRandom);
    std::vector<fs::path> out;
    std::error_code ignored;
    for (const auto &entry : fs::directory_iterator(pattern.parent_path(), ignored)) {
        const std::string found = entry.path().filename().string();
        if (found.size() == name.size() && found.starts_with(begin))
            out.push_back(entry.path());
    }
    return out;
}

void Sweep(const fs::path &pattern) {
    for (const fs::path &path : OfThisKind(pattern))
        RemoveUnlessLocked(path);
}

bool IsLocked(const fs::path &path) {
    const int fd = OpenOwn(path);
    if (fd < 0)
        return false;
    const bool free = flock(fd, LOCK_SH | LOCK_NB) == 0;
    close(fd);
    return !free;
}

bool IsStill(int fd, const std::string &path) {
    struct stat ours {
    }, there{};
    return fstat(fd, &ours) == 0 && stat(path.c_str(), &there) == 0 && ours.st_ino == there.st_ino &&
           ours.st_dev == there.st_dev;
}

} // namespace

std::vector<std::string> LockedFolders(const std::string &pattern) {
    std::vector<std::string> out;
    for (const fs::path &path : OfThisKind(pattern))
        if (IsLocked(path))
            out.push_back(path.string());
    return out;
}

bool MakeTemporaryFolder(std::string &path) {
    const std::string pattern = path;
    Sweep(pattern);
    for (;;) {
        path = pattern;
        if (mkdtemp(path.data()) == nullptr)
            return false;
        const int fd = OpenOwn(path);
        if (fd >= 0 && (flock(fd, LOCK_EX) != 0 || IsStill(fd, path)))
            return true; // the descriptor stays open, for the lock; what cannot be locked is not swept either
        if (fd >= 0)
            close(fd);
        if (std::error_code ignored; fs::exists(path, ignored))
            return true; // not lockable
    }                    // swept before it was locked
}

} // namespace sim
