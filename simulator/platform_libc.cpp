// SPDX-License-Identifier: GPL-3.0-or-later
//
// The few functions that the library takes straight from the C library.  The program's symbols win over the C
// library's, so these stand in front of them for the whole process: they act on files that the simulated
// platform handed out (lseek, ftruncate, fread, fwrite) and on the library's own paths (unlink, access), and
// pass everything else on untouched.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "simulator/library_files.h"
#include "simulator/memory_files.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

template <class R> R FileError(Call &call, int error) {
    call.SetErrno(call.FaultErrno(error));
    return call.Return<R>(static_cast<R>(-1));
}

off_t SeekIn(int descriptor, off_t offset, int whence) {
    return memory::On() ? memory::Seek(descriptor, offset, whence)
                        : static_cast<off_t>(syscall(SYS_lseek, descriptor, offset, whence));
}

int TruncateIt(int descriptor, off_t length) {
    return memory::On() ? memory::Truncate(descriptor, length)
                        : static_cast<int>(syscall(SYS_ftruncate, descriptor, length));
}

int Remove(const char *path) {
    return memory::On() ? memory::Remove(path) : unlinkat(AT_FDCWD, RealPath(path).c_str(), 0);
}

int Reach(const char *path, int mode) {
    if (!memory::On())
        return faccessat(AT_FDCWD, RealPath(path).c_str(), mode, 0);
    if (memory::Find(path) != nullptr)
        return 0;
    errno = ENOENT;
    return -1;
}

size_t ReadLocked(void *buffer, size_t size, size_t count, FILE *stream) {
    flockfile(stream);
    const size_t done = fread_unlocked(buffer, size, count, stream);
    funlockfile(stream);
    return done;
}

size_t WriteLocked(const void *buffer, size_t size, size_t count, FILE *stream) {
    flockfile(stream);
    const size_t done = fwrite_unlocked(buffer, size, count, stream);
    funlockfile(stream);
    return done;
}

} // namespace

extern "C" {

off_t lseek(int descriptor, off_t offset, int whence) noexcept {
    if (!IsLibraryDescriptor(descriptor))
        return static_cast<off_t>(syscall(SYS_lseek, descriptor, offset, whence));
    Call call(Id("lseek"), "file", FileOf{.descriptor = descriptor}, "offset", offset, "whence", whence);
    if (call.Fails())
        return FileError<off_t>(call, EIO);
    const off_t position = SeekIn(descriptor, offset, whence);
    call.SetErrno(errno);
    return call.Return(position);
}

int ftruncate(int descriptor, off_t length) noexcept {
    if (!IsLibraryDescriptor(descriptor))
        return static_cast<int>(syscall(SYS_ftruncate, descriptor, length));
    Call call(Id("ftruncate"), "file", FileOf{.descriptor = descriptor}, "length", length);
    if (call.Fails())
        return FileError<int>(call, EIO);
    const int result = TruncateIt(descriptor, length);
    call.SetErrno(errno);
    return call.Return(result);
}

size_t fread(void *buffer, size_t size, size_t count, FILE *stream) {
    if (!IsLibraryStream(stream))
        return ReadLocked(buffer, size, count, stream);
    Call call(Id("fread"), "file", FileOf{.stream = stream}, "size", size, "count", count);
    if (call.FailsOrNull({buffer})) {
        if (buffer != nullptr)
            call.SpoilBuffer(buffer, size * count);
        call.SetErrno(call.FaultErrno(EIO));
        return call.Return<size_t>(0);
    }
    const size_t done = memory::On() ? memory::ReadStream(stream, buffer, size, count)
                                     : ReadLocked(buffer, size, count, stream);
    call.SetErrno(errno);
    return call.Return(done);
}

size_t fwrite(const void *buffer, size_t size, size_t count, FILE *stream) {
    if (!IsLibraryStream(stream))
        return WriteLocked(buffer, size, count, stream);
    Call call(Id("fwrite"), "file", FileOf{.stream = stream}, "size", size, "count", count);
    if (call.FailsOrNull({buffer})) {
        call.SetErrno(call.FaultErrno(EIO));
        return call.Return<size_t>(0);
    }
    if (const auto last = LastBytes(call.state(), size * count)) {
        if (memory::On())
            memory::WriteStream(stream, buffer, 1, *last);
        else
            WriteLocked(buffer, 1, *last, stream);
        if (!memory::On())
            std::fflush(stream);
        Die();
    }
    const size_t done = memory::On() ? memory::WriteStream(stream, buffer, size, count)
                                     : WriteLocked(buffer, size, count, stream);
    call.SetErrno(errno);
    if (done != count)
        NoteStorageTrouble(RealPath(call.state().streams[stream]), errno);
    return call.Return(done);
}

int unlink(const char *path) noexcept {
    if (!IsLibraryPath(path))
        return unlinkat(AT_FDCWD, path, 0);
    Call call(Id("unlink"), "path", path);
    if (call.Fails())
        return FileError<int>(call, EIO);
    const int result = Remove(path);
    call.SetErrno(errno);
    return call.Return(result);
}

int access(const char *path, int mode) noexcept {
    if (!IsLibraryPath(path))
        return faccessat(AT_FDCWD, path, mode, 0);
    Call call(Id("access"), "path", path, "mode", mode);
    if (call.Fails())
        return FileError<int>(call, EACCES);
    const int result = Reach(path, mode);
    call.SetErrno(errno);
    return call.Return(result);
}

} // extern "C"
