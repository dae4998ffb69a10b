// SPDX-License-Identifier: Apache-2.0
#include "library/store/whole_file.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "library/record/log.h"

namespace oxa {
namespace {

constexpr uint32_t kSemKey = 12313; // guards both files
constexpr uint32_t kSemWait = 2000;
constexpr uint32_t kFileMode = 0775;

int32_t extSDRFileSemLock() {
    if (OAL_SemCreate(kSemKey) != 0) {
        OXA_ERROR(kModuleSdr, kFileUnit, __func__, "sem create failed, line=%d\n", __LINE__);
        return -1;
    }
    if (OAL_SemLockByKey(kSemKey, kSemWait) != 0) {
        OXA_ERROR(kModuleSdr, kFileUnit, __func__, "sem lock failed, line=%d\n", __LINE__);
        return -1;
    }
    return 0;
}

void extSDRFileSemUnLock() {
    if (OAL_SemUnLockByKey(kSemKey, kSemWait) != 0)
        OXA_ERROR(kModuleSdr, kFileUnit, __func__, "sem lock failed, line=%d\n", __LINE__);
}

// Kept out of line: the text buffer is no business of the path that every record takes.  Both lines name the
// SDR file whichever file was accessed.
[[gnu::noinline]] void ReportTransferError(bool bWrite, int nErrnum) {
    char acReason[48];
    if (oxa_strerror_s(acReason, sizeof(acReason), nErrnum) != 0)
        acReason[0] = '\0';
    if (bWrite) {
        OXA_DEBUG(kStoreDebugChannel, kFileUnit,
                  "NVRAccess.c : Error in writing to the file %s due to error: %s\n", kExtSDRFile, acReason);
    } else {
        OXA_DEBUG(kStoreDebugChannel, kFileUnit,
                  "NVRAccess.c: Error in reading the file %s due to error: %s\n", kExtSDRFile, acReason);
    }
}

bool SeekStart(int32_t sdwFd) {
    if (lseek(sdwFd, 0, SEEK_SET) == 0)
        return true;
    OXA_DEBUG(kStoreDebugChannel, kFileUnit, "lseek function getting failed\n");
    return false;
}

// An empty file is reported like one that cannot be read.  errno is cleared first, so that the reason shown
// for an empty file is not some earlier call's.
int32_t ReadWhole(int32_t sdwFd, uint8_t *pucData, uint32_t dwLen) {
    if (!SeekStart(sdwFd))
        return 0;
    errno = 0;
    const int32_t sdwCnt = sigwrap_read(sdwFd, pucData, dwLen);
    if (sdwCnt <= 0) {
        ReportTransferError(false, errno);
        return 0;
    }
    return sdwCnt;
}

// A file that cannot be emptied keeps its old content whole: a shorter image written over it would leave old
// slots behind the new ones.
void WriteWhole(int32_t sdwFd, const uint8_t *pucData, uint32_t dwLen) {
    if (!SeekStart(sdwFd))
        return;
    errno = 0;
    if (ftruncate(sdwFd, 0) != 0 || sigwrap_write(sdwFd, pucData, dwLen) != 0)
        ReportTransferError(true, errno);
}

} // namespace

int32_t ReadWriteExtSDRFile(const char *pcPath, uint8_t *pucRead, const uint8_t *pucWrite, uint32_t dwLen) {
    if (extSDRFileSemLock() != 0) {
        OXA_DEBUG(kStoreDebugChannel, kFileUnit, "Get Sem Lock Failed!\n");
        return -1;
    }
    int32_t sdwResult = 0;
    const int32_t sdwFd = sigwrap_open_mode(pcPath, O_RDWR | O_CREAT, kFileMode);
    if (sdwFd < 0) {
        OXA_DEBUG(kStoreDebugChannel, kFileUnit, "open %s failed!", pcPath);
    } else {
        if (pucRead != nullptr)
            sdwResult = ReadWhole(sdwFd, pucRead, dwLen);
        else
            WriteWhole(sdwFd, pucWrite, dwLen);
        sigwrap_close(sdwFd);
    }
    extSDRFileSemUnLock();
    return sdwResult;
}

} // namespace oxa
