// SPDX-License-Identifier: GPL-3.0-or-later
//
// The bounded functions, and the log, which drops every line unread: what the firmware's log costs is no business of
// the library.
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "bench/thin_platform.h"

extern "C" {

int memcpy_s(void *to, size_t size, const void *from, size_t count) {
    OXA_BENCH_COUNT("memcpy_s");
    if (count > size)
        return ERANGE;
    memcpy(to, from, count);
    return 0;
}

int oxa_memcpy_s(void *to, size_t size, const void *from, size_t count) {
    return memcpy_s(to, size, from, count);
}

int memset_s(void *to, size_t size, int byte, size_t count) {
    OXA_BENCH_COUNT("memset_s");
    if (count > size)
        return ERANGE;
    memset(to, byte, count);
    return 0;
}

int oxa_memset_s(void *to, size_t size, int byte, size_t count) {
    return memset_s(to, size, byte, count);
}

int snprintf_s(char *to, size_t size, const char *format, ...) {
    OXA_BENCH_COUNT("snprintf_s");
    va_list list;
    va_start(list, format);
    const int length = vsnprintf(to, size, format, list);
    va_end(list);
    return length;
}

int oxa_snprintf_s(char *to, size_t size, const char *format, ...) {
    OXA_BENCH_COUNT("oxa_snprintf_s");
    va_list list;
    va_start(list, format);
    const int length = vsnprintf(to, size, format, list);
    va_end(list);
    return length;
}

size_t strnlen_s(const char *text, size_t most) {
    OXA_BENCH_COUNT("strnlen_s");
    return text != nullptr ? strnlen(text, most) : 0;
}

size_t oxa_strnlen_s(const char *text, size_t most) {
    return strnlen_s(text, most);
}

int oxa_strerror_s(char *out, size_t size, int number) {
    OXA_BENCH_COUNT("oxa_strerror_s");
    const char *text = strerrordesc_np(number);
    const size_t length = text != nullptr ? strnlen(text, size - 1) : 0;
    memcpy(out, text, length);
    out[length] = '\0';
    return 0;
}

void _ssp_debug(uint32_t, const char *, uint32_t, const char *, const char *, ...) {
    OXA_BENCH_COUNT("_ssp_debug");
}

void _ssp_info(uint32_t, const char *, uint32_t, const char *, const char *, ...) {
    OXA_BENCH_COUNT("_ssp_info");
}

void _ssp_warn(uint32_t, const char *, uint32_t, const char *, const char *, ...) {
    OXA_BENCH_COUNT("_ssp_warn");
}

void _ssp_error(uint32_t, const char *, uint32_t, const char *, const char *, ...) {
    OXA_BENCH_COUNT("_ssp_error");
}

void sspFailedStat(const char *, uint32_t) {
    OXA_BENCH_COUNT("sspFailedStat");
}

void IDBG_LINUXAPP_DbgOut(uint32_t, const char *, ...) {
    OXA_BENCH_COUNT("IDBG_LINUXAPP_DbgOut");
}

void IDBG_LINUXAPP_AuditOut(uint32_t, const char *, ...) {
    OXA_BENCH_COUNT("IDBG_LINUXAPP_AuditOut");
}

} // extern "C"
