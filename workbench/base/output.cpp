// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/output.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/errors.h"

namespace workbench {
namespace {

bool g_printed = false;

[[noreturn]] void Fail(const std::string &path, int error) {
    throw InputError(path + ": cannot write: " + std::strerror(error));
}

// A pipe, a device: there is nothing to replace, the bytes just go in.
void WriteInPlace(const std::string &path, const std::string &content) {
    const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd < 0)
        Fail(path, errno);
    const bool written = WriteAll(fd, content);
    const int error = errno;
    close(fd);
    if (!written && error != EPIPE)
        Fail(path, error);
}

mode_t UsualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

std::string ResolveLink(const std::string &path) { // a symbolic link stays, its target is replaced
    char *real = realpath(path.c_str(), nullptr);
    const std::string out = real != nullptr ? real : path;
    std::free(real);
    return out;
}

} // namespace

bool WriteAll(int fd, const std::string &text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

bool AnythingPrinted() {
    return g_printed;
}

void PrintOut(const std::string &text) {
    g_printed = true;
    if (!WriteAll(STDOUT_FILENO, text) && errno != EPIPE)
        Fail("standard output", errno);
}

void WriteResult(const std::string &output, const std::string &content) {
    if (output == kStandardOutput)
        PrintOut(content);
    else
        WriteFileAtomically(output, content);
}

void KeepFromTerminal(const std::string &output, const std::string &what) {
    if (output == kStandardOutput && isatty(STDOUT_FILENO))
        throw InputError(what + " no text for a terminal; give -o FILE or a pipe");
}

void KeepJsonApart(const std::string &output, bool json) {
    if (output == kStandardOutput && json)
        throw InputError("--json contradicts -o -: both go to standard output");
}

void WriteFileAtomically(const std::string &path, const std::string &content) {
    struct stat old {};
    const bool exists = stat(path.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode))
        Fail(path, EISDIR);
    if (exists && !S_ISREG(old.st_mode))
        return WriteInPlace(path, content);
    if (exists && access(path.c_str(), W_OK) != 0)
        Fail(path, errno);
    const std::string target = ResolveLink(path);
    std::string temporary = target + ".XXXXXX";
    const int fd = mkstemp(temporary.data());
    if (fd < 0)
        Fail(path, errno);
    bool good = WriteAll(fd, content) && fchmod(fd, exists ? old.st_mode & 07777 : UsualMode()) == 0 &&
                fsync(fd) == 0;
    int error = errno;
    good = close(fd) == 0 && good;
    if (good && rename(temporary.c_str(), target.c_str()) == 0)
        return;
    error = good ? errno : error;
    unlink(temporary.c_str());
    Fail(path, error);
}

void WriteTemporaryFile(const std::string &path, const std::string &content) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        Fail(path, errno);
    const bool good = WriteAll(fd, content);
    const int error = errno;
    if (close(fd) == 0 && good)
        return;
    Fail(path, good ? errno : error);
}

} // namespace workbench
