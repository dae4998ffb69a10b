/* SPDX-License-Identifier: Apache-2.0 */
#include "capture/file.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "capture/format.h"

namespace oxa::capture {
namespace {

constexpr uint32_t kUsualLimit = 8u << 20;
constexpr uint32_t kLeastLimit = 64u << 10;
constexpr uint32_t kMostLimit = 16u << 20; // what a desk reads
constexpr uint32_t kStep = 64u << 10;      // the file grows by that much
constexpr size_t kPathSize = 4096;

uint8_t *g_pucBase;
uint32_t g_dwAt, g_dwReady, g_dwLimit;
int g_nFd = -1;
struct stat64 g_tFile; // what it was when it was opened
pid_t g_nPid;
Full g_eFull;
uint8_t g_aucZeros[16384];

// Beyond what the process may write a signal would come.
uint32_t Allowed(uint32_t dwWanted) {
    rlimit tLimit{};
    if (getrlimit(RLIMIT_FSIZE, &tLimit) == 0 && tLimit.rlim_cur < dwWanted)
        dwWanted = static_cast<uint32_t>(tLimit.rlim_cur);
    return dwWanted & ~(kStep - 1);
}

uint32_t Limit() {
    const char *pcText = getenv("OXA_CAPTURE_LIMIT");
    char *pcEnd = nullptr;
    const unsigned long ulGiven = pcText != nullptr ? strtoul(pcText, &pcEnd, 10) : 0;
    const bool bSound =
        pcText != nullptr && *pcEnd == '\0' && ulGiven >= kLeastLimit && ulGiven <= kMostLimit;
    return Allowed(bSound ? static_cast<uint32_t>(ulGiven) : kUsualLimit);
}

// "%p" becomes the number of the process.
bool FillIn(const char *pcGiven, char *pcPath) {
    const char *pcMark = strstr(pcGiven, "%p");
    const int nLength = pcMark == nullptr
                            ? snprintf(pcPath, kPathSize, "%s", pcGiven)
                            : snprintf(pcPath, kPathSize, "%.*s%d%s", static_cast<int>(pcMark - pcGiven),
                                       pcGiven, static_cast<int>(getpid()), pcMark + 2);
    return nLength > 0 && static_cast<size_t>(nLength) < kPathSize;
}

// Not fstat(): that of the newest libc is a symbol which older ones do not have.
bool Facts(int nFd, struct stat64 &tFacts) {
#ifdef SYS_fstat64
    return syscall(SYS_fstat64, nFd, &tFacts) == 0;
#else
    return syscall(SYS_fstat, nFd, &tFacts) == 0;
#endif
}

// A file that nobody else writes; negative: none.  Devices and pipes are the firmware's.
int OpenAlone(const char *pcPath, struct stat64 &tFacts) {
    const int nFd = open(pcPath, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (Facts(nFd, tFacts) && S_ISREG(tFacts.st_mode) && flock(nFd, LOCK_EX | LOCK_NB) == 0)
        return nFd;
    close(nFd); // or nothing, where it is not open
    return -1;
}

// A file of somebody else could be read and cut by him, which would end this process.
bool IsNew(const struct stat64 &tFacts) {
    return tFacts.st_size == 0 && tFacts.st_uid == geteuid();
}

// What an earlier process wrote, which may have died of what is looked for, is kept under another name.
int OpenNew(const char *pcPath) {
    char acKept[kPathSize + sizeof(".1")];
    snprintf(acKept, sizeof(acKept), "%s.1", pcPath);
    for (int nTries = 2; nTries != 0; --nTries) {
        const int nFd = OpenAlone(pcPath, g_tFile);
        if (nFd < 0 || IsNew(g_tFile))
            return nFd;
        const bool bMoved = rename(pcPath, acKept) == 0;
        close(nFd);
        if (!bMoved)
            break;
    }
    return -1;
}

// A program may close every descriptor that it does not know, and open files of its own under their numbers.
bool IsStillOpen() {
    struct stat64 tNow;
    return Facts(g_nFd, tNow) && tNow.st_dev == g_tFile.st_dev && tNow.st_ino == g_tFile.st_ino;
}

// Written, not skipped over: a page that the file system has not given yet would end the process when it is touched.  One
// that is there but not mapped costs the firmware a fault.
bool MakeReady(uint32_t dwUpTo) {
    constexpr int kPopulateWrite = 23; // of newer kernels, which the headers may not know; others refuse it
    const uint32_t dwBefore = g_dwReady;
    while (g_dwReady < dwUpTo) {
        const ssize_t nDone = pwrite(g_nFd, g_aucZeros, sizeof(g_aucZeros), static_cast<off_t>(g_dwReady));
        if (nDone <= 0)
            return false;
        g_dwReady += static_cast<uint32_t>(nDone);
    }
    madvise(g_pucBase + dwBefore, g_dwReady - dwBefore, kPopulateWrite);
    return true;
}

bool Map() {
    g_dwLimit = Limit();
    if (g_dwLimit == 0 || fchmod(g_nFd, 0600) != 0)
        return false;
    void *const pvBase = mmap(nullptr, g_dwLimit, PROT_READ | PROT_WRITE, MAP_SHARED, g_nFd, 0);
    g_pucBase = static_cast<uint8_t *>(pvBase);
    return pvBase != MAP_FAILED;
}

// Makes the file longer; why it cannot be.
Full Grow(uint32_t dwUpTo) {
    if (!IsStillOpen())
        return Full::kClosed;
    return MakeReady((dwUpTo + kStep - 1) & ~(kStep - 1)) ? Full::kNo : Full::kDisk;
}

} // namespace

bool OpenFile() {
    const char *pcGiven = getenv("OXA_CAPTURE");
    char acPath[kPathSize];
    if (pcGiven == nullptr || *pcGiven == '\0' || !FillIn(pcGiven, acPath))
        return false;
    g_nFd = OpenNew(acPath);
    g_nPid = getpid();
    if (g_nFd >= 0 && Map() && MakeReady(kStep))
        return true;
    close(g_nFd);
    return false;
}

bool IsOurProcess() {
    return g_nPid == getpid();
}

uint8_t *Room(uint32_t dwSize) {
    if (g_eFull != Full::kNo)
        return nullptr;
    const uint32_t dwUpTo = g_dwAt + dwSize + kLastRoom;
    if (dwUpTo > g_dwLimit || dwUpTo < dwSize)
        g_eFull = Full::kLimit;
    else if (dwUpTo > g_dwReady)
        g_eFull = Grow(dwUpTo);
    return g_eFull == Full::kNo ? g_pucBase + g_dwAt : nullptr;
}

uint8_t *LastRoom() {
    return g_pucBase + g_dwAt;
}

uint8_t *RunningCalls() {
    return g_pucBase + kFileHeaderSize;
}

void Take(uint32_t dwSize) {
    g_dwAt += dwSize;
}

Full WhyFull() {
    return g_eFull;
}

void CloseFile() {
    if (!IsStillOpen())
        return;
    // not the ftruncate that stands before the library's
    [[maybe_unused]] const long lIgnored = syscall(SYS_ftruncate, g_nFd, static_cast<long>(g_dwAt));
}

} // namespace oxa::capture
