// SPDX-License-Identifier: GPL-3.0-or-later
//
// Bounded memory, string and file functions.  A bound that the caller breaks is refused and noted as a
// violation: the library tests its lengths itself.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "simulator/library_files.h"
#include "simulator/memory_files.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

// Refuses a count that does not fit.
bool Fits(Call &call, const char *function, size_t size, size_t count) {
    if (count <= size)
        return true;
    call.state().Violate(std::string(function) + ": " + std::to_string(count) + " bytes into " +
                         std::to_string(size));
    return false;
}

int Refuse(Call &call, void *destination, size_t size) {
    if (destination != nullptr)
        call.SpoilBuffer(destination, size);
    return call.Return<int>(kBoundBroken);
}

int Copy(Call &call, const char *function, void *destination, size_t size, const void *source, size_t count) {
    if (call.FailsOrNull({destination, source}) || !Fits(call, function, size, count))
        return Refuse(call, destination, std::min(size, count));
    const uint8_t *const to = static_cast<uint8_t *>(destination);
    const uint8_t *const from = static_cast<const uint8_t *>(source);
    if (to < from + count && from < to + count && count != 0)
        call.state().Violate(std::string(function) + ": source and destination overlap");
    std::memmove(destination, source, count);
    return call.Return<int>(0);
}

int Fill(Call &call, const char *function, void *destination, size_t size, int byte, size_t count) {
    if (call.FailsOrNull({destination}) || !Fits(call, function, size, count))
        return Refuse(call, destination, std::min(size, count));
    std::memset(destination, byte, count);
    return call.Return<int>(0);
}

int PrintInto(Call &call, char *destination, size_t size, const char *format, va_list list) {
    if (call.FailsOrNull({destination, format}) || size == 0) {
        Refuse(call, destination, size);
        return call.Return<int>(-1);
    }
    const int length = std::vsnprintf(destination, size, format, list);
    if (call.Traced())
        call.SetText(destination);
    return call.Return<int>(length);
}

FILE *OpenStream(const char *path, const char *mode) {
    if (memory::On())
        return memory::OpenStream(path, mode);
    const std::string real_path = RealPath(path);
    if (*mode != 'r')
        MakeParents(real_path);
    FILE *const stream = std::fopen(real_path.c_str(), mode);
    if (stream == nullptr)
        NoteStorageTrouble(real_path, errno);
    return stream;
}

size_t Length(Call &call, const char *text, size_t most) {
    return call.Value<size_t>(text != nullptr ? strnlen(text, most) : 0);
}

} // namespace

extern "C" {

int memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount) {
    Call call(Id("memcpy_s"), "size", nDstMax, "count", nCount);
    return Copy(call, "memcpy_s", pvDst, nDstMax, pvSrc, nCount);
}

int oxa_memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount) {
    Call call(Id("oxa_memcpy_s"), "size", nDstMax, "count", nCount);
    return Copy(call, "oxa_memcpy_s", pvDst, nDstMax, pvSrc, nCount);
}

int memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount) {
    Call call(Id("memset_s"), "size", nDstMax, "byte", nByte, "count", nCount);
    return Fill(call, "memset_s", pvDst, nDstMax, nByte, nCount);
}

int oxa_memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount) {
    Call call(Id("oxa_memset_s"), "size", nDstMax, "byte", nByte, "count", nCount);
    return Fill(call, "oxa_memset_s", pvDst, nDstMax, nByte, nCount);
}

int snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) {
    Call call(Id("snprintf_s"), "size", nDstMax, "format", pcFmt);
    va_list list;
    va_start(list, pcFmt);
    const int result = PrintInto(call, pcDst, nDstMax, pcFmt, list);
    va_end(list);
    return result;
}

int oxa_snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) {
    Call call(Id("oxa_snprintf_s"), "size", nDstMax, "format", pcFmt);
    va_list list;
    va_start(list, pcFmt);
    const int result = PrintInto(call, pcDst, nDstMax, pcFmt, list);
    va_end(list);
    return result;
}

size_t strnlen_s(const char *pcStr, size_t nMax) {
    Call call(Id("strnlen_s"), "max", nMax);
    return Length(call, pcStr, nMax);
}

size_t oxa_strnlen_s(const char *pcStr, size_t nMax) {
    Call call(Id("oxa_strnlen_s"), "max", nMax);
    return Length(call, pcStr, nMax);
}

int oxa_fopen_s(FILE **pptFile, const char *pcPath, const char *pcMode) {
    Call call(Id("oxa_fopen_s"), "path", pcPath, "mode", pcMode);
    int error = call.FaultErrno(EACCES);
    FILE *stream = nullptr;
    if (!call.FailsOrNull({pptFile, pcPath, pcMode})) {
        stream = OpenStream(pcPath, pcMode);
        error = errno;
    }
    if (stream == nullptr) {
        if (pptFile != nullptr)
            call.SpoilBuffer(pptFile, sizeof(*pptFile));
        call.SetErrno(error);
        return call.Return<int>(error);
    }
    call.state().streams[stream] = pcPath;
    MarkLibraryStream(stream, true);
    *pptFile = stream;
    return call.Return<int>(0);
}

int oxa_fclose_s(FILE *ptFile) {
    Call call(Id("oxa_fclose_s"), "file", FileOf{.stream = ptFile});
    if (!call.state().streams.contains(ptFile)) {
        call.state().Violate("oxa_fclose_s: the stream is not open");
        return call.Return<int>(kBoundBroken);
    }
    const std::string path = call.state().streams.extract(ptFile).mapped(); // also when the call fails
    MarkLibraryStream(ptFile, false);
    CloseStream(ptFile, path);
    return call.Return<int>(call.Fails() ? kBoundBroken : 0);
}

int oxa_strerror_s(char *pcBuf, size_t nBufMax, int nErrnum) {
    Call call(Id("oxa_strerror_s"), "size", nBufMax, "errnum", nErrnum);
    if (call.FailsOrNull({pcBuf}) || nBufMax == 0)
        return Refuse(call, pcBuf, nBufMax);
    char scratch[128];
    std::snprintf(pcBuf, nBufMax, "%s", strerror_r(nErrnum, scratch, sizeof(scratch)));
    call.SetText(pcBuf);
    return call.Return<int>(0);
}

} // extern "C"
