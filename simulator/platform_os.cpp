// SPDX-License-Identifier: GPL-3.0-or-later
//
// Operating-system abstraction: semaphores (kept within the process) and signal-safe file calls.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

#include "simulator/library_files.h"
#include "simulator/memory_files.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

bool IsOpen(Call &call, const char *function, int descriptor) {
    if (call.state().descriptors.contains(descriptor))
        return true;
    call.state().Violate(std::string(function) + ": the descriptor is not open");
    return false;
}

int Open(const char *path, int flags, mode_t mode) {
    if (memory::On())
        return memory::Open(path, flags);
    const std::string real_path = RealPath(path);
    if ((flags & O_CREAT) != 0)
        MakeParents(real_path);
    const int descriptor = open(real_path.c_str(), flags | O_CLOEXEC, mode);
    if (descriptor < 0)
        NoteStorageTrouble(real_path, errno);
    return descriptor;
}

// All of it or -1 with errno; a system that takes a part says only of the rest why.
ssize_t WriteAll(int descriptor, const void *bytes, size_t size) {
    if (memory::On())
        return memory::Write(descriptor, bytes, size);
    for (size_t done = 0; done < size;) {
        const ssize_t put = write(descriptor, static_cast<const char *>(bytes) + done, size - done);
        if (put <= 0)
            return -1;
        done += static_cast<size_t>(put);
    }
    return static_cast<ssize_t>(size);
}

// -1 with errno.
int32_t FileError(Call &call, int error) {
    call.SetErrno(call.FaultErrno(error));
    return call.Return<int32_t>(-1);
}

} // namespace

extern "C" {

int32_t OAL_SemCreate(uint32_t dwKey) {
    Call call(Id("OAL_SemCreate"), "key", dwKey);
    if (!call.Fails())
        call.state().semaphores[dwKey].created = true;
    return Plain(call);
}

int32_t OAL_SemLockByKey(uint32_t dwKey, uint32_t dwWait) {
    Call call(Id("OAL_SemLockByKey"), "key", dwKey, "wait", dwWait);
    if (call.Fails())
        return call.Return<int32_t>(-1);
    Semaphore &semaphore = call.state().semaphores[dwKey];
    if (!semaphore.created) {
        call.state().Violate("semaphore " + std::to_string(dwKey) + " is locked before it was created");
        return call.Return<int32_t>(-1);
    }
    if (semaphore.locked && semaphore.holder == std::this_thread::get_id()) { // would wait for itself
        call.state().Violate("semaphore " + std::to_string(dwKey) + " is locked twice");
        return call.Return<int32_t>(-1);
    }
    if (!call.Wait(call.state().semaphore_freed, dwWait, [&semaphore] { return !semaphore.locked; }))
        return call.Return<int32_t>(-1);
    semaphore.locked = true;
    semaphore.holder = std::this_thread::get_id();
    return call.Return<int32_t>(0);
}

int32_t OAL_SemUnLockByKey(uint32_t dwKey, uint32_t dwWait) {
    Call call(Id("OAL_SemUnLockByKey"), "key", dwKey, "wait", dwWait);
    Semaphore &semaphore = call.state().semaphores[dwKey];
    if (!semaphore.locked) {
        call.state().Violate("semaphore " + std::to_string(dwKey) + " is unlocked without being locked");
        return call.Return<int32_t>(-1);
    }
    semaphore.locked = false; // also when the call fails: the library has done its duty
    call.state().semaphore_freed.notify_one();
    return Plain(call);
}

int32_t sigwrap_open_mode(const char *pcPath, int32_t sdwFlags, uint32_t dwMode) {
    Call call(Id("sigwrap_open_mode"), "path", pcPath, "flags", sdwFlags, "mode", dwMode);
    if (call.FailsOrNull({pcPath}))
        return FileError(call, EACCES);
    const int descriptor = Open(pcPath, sdwFlags, static_cast<mode_t>(dwMode));
    if (descriptor < 0) {
        call.SetErrno(errno);
        return call.Return<int32_t>(-1);
    }
    call.state().descriptors[descriptor] = pcPath;
    MarkLibraryDescriptor(descriptor, true);
    return call.Return<int32_t>(descriptor);
}

int32_t sigwrap_read(int32_t sdwFd, void *pvBuf, uint32_t dwLen) {
    Call call(Id("sigwrap_read"), "file", FileOf{.descriptor = sdwFd}, "len", dwLen);
    if (call.FailsOrNull({pvBuf}) || !IsOpen(call, "sigwrap_read", sdwFd)) {
        if (pvBuf != nullptr)
            call.SpoilBuffer(pvBuf, dwLen);
        return FileError(call, EIO);
    }
    const Fault *rule = call.rule(); // a short read: as many bytes as the rule says
    const bool cut = rule != nullptr && rule->result && *rule->result >= 0;
    const uint32_t wanted = cut ? std::min(dwLen, static_cast<uint32_t>(*rule->result)) : dwLen;
    const ssize_t got = memory::On() ? memory::Read(sdwFd, pvBuf, wanted) : read(sdwFd, pvBuf, wanted);
    call.SetErrno(errno);
    if (got > 0 && rule != nullptr && rule->output)
        call.SpoilBuffer(pvBuf, static_cast<size_t>(got));
    return call.Return<int32_t>(static_cast<int32_t>(got));
}

int32_t sigwrap_write(int32_t sdwFd, const void *pvBuf, uint32_t dwLen) {
    Call call(Id("sigwrap_write"), "file", FileOf{.descriptor = sdwFd}, "len", dwLen);
    if (call.FailsOrNull({pvBuf}) || !IsOpen(call, "sigwrap_write", sdwFd))
        return FileError(call, EIO);
    if (const auto last = LastBytes(call.state(), dwLen)) {
        [[maybe_unused]] const ssize_t part = WriteAll(sdwFd, pvBuf, *last);
        Die();
    }
    const ssize_t put = WriteAll(sdwFd, pvBuf, dwLen);
    if (put < 0 || static_cast<size_t>(put) != dwLen) {
        const int error = put < 0 ? errno : ENOSPC;
        NoteStorageTrouble(RealPath(call.state().descriptors[sdwFd]), error);
        call.SetErrno(error);
        return call.Return<int32_t>(-1);
    }
    return call.Return<int32_t>(0);
}

int32_t sigwrap_close(int32_t sdwFd) {
    Call call(Id("sigwrap_close"), "file", FileOf{.descriptor = sdwFd});
    if (!IsOpen(call, "sigwrap_close", sdwFd))
        return FileError(call, EBADF);
    call.state().descriptors.erase(sdwFd); // also when the call fails
    MarkLibraryDescriptor(sdwFd, false);
    CloseDescriptor(sdwFd);
    return call.Fails() ? FileError(call, EIO) : call.Return<int32_t>(0);
}

} // extern "C"
