// SPDX-License-Identifier: GPL-3.0-or-later
//
// A set built in a child process: the library keeps state that has no reset, so every set of a command that needs
// several of them gets a fresh library.  Result and errors come back through a pipe.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

#include "workbench/errors.h"
#include "workbench/static_set.h"

namespace workbench {
namespace {

// What the child sends: one of these, then the sensors or the error's text.
constexpr char kSet = 'S', kInputError = 'I', kSetError = 'E';

std::string ChildAnswer(const RunOptions &options) {
    try {
        std::string out(1, kSet);
        for (const Sensor &sensor : BuildStaticSet(options).sensors) {
            out.append(sensor.record.begin(), sensor.record.end());
            out.append(sensor.entry.begin(), sensor.entry.end());
        }
        return out;
    } catch (const InputError &error) {
        return kInputError + std::string(error.what());
    } catch (const std::exception &error) {
        return kSetError + std::string(error.what());
    }
}

[[noreturn]] void RunChild(int fd, const RunOptions &options) {
    const std::string answer = ChildAnswer(options);
    for (size_t done = 0; done < answer.size();) {
        const ssize_t n = write(fd, answer.data() + done, answer.size() - done);
        if (n < 0 && errno != EINTR)
            std::exit(1);
        done += n > 0 ? static_cast<size_t>(n) : 0;
    }
    close(fd);
    std::exit(0); // not _exit: the simulated platform removes its files
}

std::string ReadAll(int fd) {
    std::string out;
    char chunk[16384];
    ssize_t n;
    while ((n = read(fd, chunk, sizeof chunk)) > 0 || (n < 0 && errno == EINTR))
        out.append(chunk, n > 0 ? static_cast<size_t>(n) : 0);
    close(fd);
    return out;
}

StaticSet ParseAnswer(const RunOptions &options, const std::string &answer) {
    const std::string text = answer.empty() ? "" : answer.substr(1);
    if (answer.empty() || (answer[0] == kSetError))
        throw SetError(text.empty() ? options.board + ": the pass ended with its process" : text);
    if (answer[0] == kInputError)
        throw InputError(text);
    StaticSet set{options.board, &FindProfile(options.profile), {}};
    for (size_t at = 0; at + SDR_SLOT_SIZE + DEV_TAB_ENTRY_SIZE <= text.size();) {
        Sensor sensor;
        sensor.ordinal = static_cast<unsigned>(set.sensors.size()) + 1;
        std::memcpy(sensor.record.data(), text.data() + at, SDR_SLOT_SIZE);
        std::memcpy(sensor.entry.data(), text.data() + at + SDR_SLOT_SIZE, DEV_TAB_ENTRY_SIZE);
        set.sensors.push_back(sensor);
        at += SDR_SLOT_SIZE + DEV_TAB_ENTRY_SIZE;
    }
    return set;
}

} // namespace

StaticSet BuildStaticSetApart(const RunOptions &options) {
    FindProfile(options.profile); // a wrong name needs no process
    int ends[2];
    if (pipe(ends) != 0)
        throw SetError(std::string("no pipe: ") + std::strerror(errno));
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw SetError(std::string("no process: ") + std::strerror(errno));
    if (child == 0) {
        close(ends[0]);
        RunChild(ends[1], options);
    }
    close(ends[1]);
    const std::string answer = ReadAll(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return ParseAnswer(options, WIFEXITED(status) && WEXITSTATUS(status) == 0 ? answer : "");
}

} // namespace workbench
