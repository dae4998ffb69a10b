// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/apart.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

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

// A child at work.
class Child {
public:
    explicit Child(const std::function<void(const Say &)> &work) : Child(Ends(), work) {}
    int fd() const {
        return in_.fd();
    }
    // Takes what there is to read; false at the end, when the child has ended too.
    bool Read() {
        char chunk[16384];
        const ssize_t n = read(in_.fd(), chunk, sizeof chunk);
        if (n < 0 && errno == EINTR)
            return true;
        if (n > 0) {
            result_.said.append(chunk, static_cast<size_t>(n));
            return true;
        }
        in_.Close();
        while (waitpid(process_, &result_.status, 0) < 0 && errno == EINTR) {
        }
        return false;
    }
    const Apart &result() const {
        return result_;
    }

private:
    struct Ends {
        Ends() {
            if (pipe2(fd, O_CLOEXEC) != 0)
                throw SetError(std::string("no pipe: ") + std::strerror(errno));
        }
        int fd[2];
    };
    Child(const Ends &ends, const std::function<void(const Say &)> &work) : in_(ends.fd[0]) {
        Descriptor out(ends.fd[1]);
        std::fflush(nullptr);
        process_ = fork();
        if (process_ < 0)
            throw SetError(std::string("no process: ") + std::strerror(errno));
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL); // nobody else would end it
            in_.Close();
            RunChild(out, work);
        }
    }
    Descriptor in_;
    pid_t process_ = -1;
    Apart result_;
};

// Reads from those that have something to say; the ones that have ended are let go after `ended`.
void ReadSome(std::map<size_t, std::unique_ptr<Child>> &running,
              const std::function<void(size_t, const Apart &)> &ended) {
    std::vector<pollfd> waiting;
    for (const auto &[index, child] : running)
        waiting.push_back({child->fd(), POLLIN, 0});
    if (poll(waiting.data(), waiting.size(), -1) <= 0)
        return;
    size_t n = 0;
    for (auto at = running.begin(); at != running.end(); ++n) {
        const bool more = waiting[n].revents == 0 || at->second->Read();
        if (!more)
            ended(at->first, at->second->result());
        at = more ? std::next(at) : running.erase(at);
    }
}

} // namespace

Apart RunApart(const std::function<void(const Say &)> &work) {
    Child child(work);
    while (child.Read()) {
    }
    return child.result();
}

void RunManyApart(size_t count, const std::function<void(size_t, const Say &)> &work,
                  const std::function<void(size_t, const Apart &)> &take, size_t at_once) {
    if (at_once == 0)
        at_once = std::max(std::thread::hardware_concurrency(), 1u);
    std::map<size_t, std::unique_ptr<Child>> running;
    std::map<size_t, Apart> done; // that wait for an earlier one
    for (size_t started = 0, taken = 0; taken < count;) {
        for (; started < count && running.size() < at_once; ++started)
            running[started] =
                std::make_unique<Child>([&work, started](const Say &say) { work(started, say); });
        ReadSome(running, [&done](size_t index, const Apart &apart) { done[index] = apart; });
        for (auto next = done.find(taken); next != done.end(); next = done.find(++taken)) {
            take(taken, next->second);
            done.erase(next);
        }
    }
}

} // namespace workbench
