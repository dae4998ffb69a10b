// SPDX-License-Identifier: GPL-3.0-or-later
//
// The extended store: a file and a semaphore of the operating system, or the same bytes from memory.
#include <fcntl.h>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "bench/thin_platform.h"

namespace bench {
namespace {

std::string g_store_path;
key_t g_semaphore_key = 0;
int g_semaphore = -1;
std::vector<uint8_t> g_bytes;
bool g_in_memory = false;

constexpr int kMemoryFd = 1 << 20; // no file has it

[[noreturn]] void Refuse(const char *what) {
    throw std::system_error(errno, std::generic_category(), what);
}

// A key that nobody else has.
void MakeSemaphore() {
    g_semaphore_key = getpid() << 8;
    do
        g_semaphore = semget(++g_semaphore_key, 1, IPC_CREAT | IPC_EXCL | 0600);
    while (g_semaphore < 0 && errno == EEXIST);
    if (g_semaphore < 0 || semctl(g_semaphore, 0, SETVAL, 1) != 0)
        Refuse("no semaphore");
}

int32_t ChangeSemaphore(short by, uint32_t wait_ms) {
    sembuf change = {0, by, 0};
    const timespec wait = {wait_ms / 1000, wait_ms % 1000 * 1000000};
    return semtimedop(g_semaphore, &change, 1, &wait);
}

} // namespace

Store::Store() {
    std::string pattern = (std::filesystem::temp_directory_path() / "oxa-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        Refuse("no directory for the extended store");
    directory_ = pattern;
    g_store_path = directory_ + "/extSDR.dat";
    MakeSemaphore();
}

Store::~Store() {
    semctl(g_semaphore, 0, IPC_RMID);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void Store::Fill(const std::vector<uint8_t> &bytes) {
    FILE *file = std::fopen(g_store_path.c_str(), "wb");
    if (file == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() ||
        std::fclose(file) != 0)
        Refuse("the extended store cannot be written");
    g_bytes = bytes;
}

void Store::KeepInMemory(bool on) {
    g_in_memory = on;
}

} // namespace bench

using namespace bench;

extern "C" {

int32_t OAL_SemCreate(uint32_t) {
    OXA_BENCH_COUNT("OAL_SemCreate");
    return g_in_memory || semget(g_semaphore_key, 1, IPC_CREAT | 0600) >= 0 ? 0 : -1;
}

int32_t OAL_SemLockByKey(uint32_t, uint32_t wait) {
    OXA_BENCH_COUNT("OAL_SemLockByKey");
    return g_in_memory ? 0 : ChangeSemaphore(-1, wait);
}

int32_t OAL_SemUnLockByKey(uint32_t, uint32_t wait) {
    OXA_BENCH_COUNT("OAL_SemUnLockByKey");
    return g_in_memory ? 0 : ChangeSemaphore(1, wait);
}

int32_t sigwrap_open_mode(const char *, int32_t flags, uint32_t mode) {
    OXA_BENCH_COUNT("sigwrap_open_mode");
    return g_in_memory ? kMemoryFd : open(g_store_path.c_str(), flags | O_CLOEXEC, static_cast<mode_t>(mode));
}

// In front of the C library's for the whole program: other files have other descriptors.
off_t lseek(int fd, off_t offset, int whence) noexcept {
    OXA_BENCH_COUNT("lseek");
    return fd == kMemoryFd ? offset : static_cast<off_t>(syscall(SYS_lseek, fd, offset, whence));
}

int32_t sigwrap_read(int32_t fd, void *out, uint32_t size) {
    OXA_BENCH_COUNT("sigwrap_read");
    if (!g_in_memory)
        return static_cast<int32_t>(read(fd, out, size));
    const size_t given = std::min<size_t>(size, g_bytes.size());
    memcpy(out, g_bytes.data(), given);
    return static_cast<int32_t>(given);
}

int32_t sigwrap_write(int32_t fd, const void *bytes, uint32_t size) {
    OXA_BENCH_COUNT("sigwrap_write");
    return write(fd, bytes, size) == static_cast<ssize_t>(size) ? 0 : -1;
}

int32_t sigwrap_close(int32_t fd) {
    OXA_BENCH_COUNT("sigwrap_close");
    return g_in_memory ? 0 : close(fd);
}

} // extern "C"
