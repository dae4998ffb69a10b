// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/apart.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/output.h"

namespace workbench {
namespace {

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        Close();
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int fd() const {
        return fd_;
    }
    void Close() {
        if (fd_ >= 0)
            close(fd_);
        fd_ = -1;
    }

private:
    int fd_;
};

// An exception must not get out of here: the child would go on as a second parent.
[[noreturn]] void RunChild(Descriptor &out, const std::function<void(const Say &)> &work) noexcept {
    work([&out](const std::string &text) {
        if (!WriteAll(out.fd(), text))
            std::exit(1);
    });
    out.Close();
    std::exit(0); // not _exit: the simulated platform removes its files
}

std::string ReadAll(int fd) {
    std::string out;
    char chunk[16384];
    ssize_t n;
    while ((n = read(fd, chunk, sizeof chunk)) > 0 || (n < 0 && errno == EINTR))
        out.append(chunk, n > 0 ? static_cast<size_t>(n) : 0);
    return out;
}

} // namespace

Apart RunApart(const std::function<void(const Say &)> &work) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw SetError(std::string("no pipe: ") + std::strerror(errno));
    Descriptor in(ends[0]), out(ends[1]);
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw SetError(std::string("no process: ") + std::strerror(errno));
    if (child == 0) {
        in.Close();
        RunChild(out, work);
    }
    out.Close();
    Apart apart;
    apart.said = ReadAll(in.fd());
    while (waitpid(child, &apart.status, 0) < 0 && errno == EINTR) {
    }
    return apart;
}

} // namespace workbench
