// SPDX-License-Identifier: GPL-3.0-or-later
#include "faults/workers.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

namespace faults {

std::string Desk::Told() const {
    std::string told = name;
    if (first == 0)
        return told + ", no call fails";
    told += ", call " + std::to_string(first);
    if (second != 0)
        return told + " and call " + std::to_string(second) + " fail";
    return told + (from_then_on ? " and all after it fail" : " fails");
}

namespace {

Desk *SharedDesks(size_t count) {
    void *const memory =
        mmap(nullptr, count * sizeof(Desk), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    return new (memory) Desk[count];
}

bool EndedWell(pid_t process, const Desk &desk) {
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return true;
    if (WIFSIGNALED(status))
        std::printf("ended by signal %d (%s): %s\n", WTERMSIG(status), strsignal(WTERMSIG(status)),
                    desk.Told().c_str());
    else
        std::printf("ended with %d: %s\n", WEXITSTATUS(status), desk.Told().c_str());
    return false;
}

} // namespace

Total ShareOut(const std::function<void(size_t, size_t, Desk &)> &work) {
    const size_t workers = std::max(1u, std::thread::hardware_concurrency());
    Desk *const desks = SharedDesks(workers);
    std::vector<pid_t> processes;
    std::fflush(stdout);
    for (size_t worker = 0; worker < workers; ++worker) {
        const pid_t process = fork();
        if (process == 0) {
            work(worker, workers, desks[worker]);
            std::fflush(stdout);
            _exit(0);
        }
        processes.push_back(process);
    }
    Total total;
    for (size_t worker = 0; worker < workers; ++worker) {
        total.crashes += EndedWell(processes[worker], desks[worker]) ? 0 : 1;
        total.runs += desks[worker].runs;
        total.hits += desks[worker].hits;
        total.broken += desks[worker].broken;
    }
    return total;
}

} // namespace faults
