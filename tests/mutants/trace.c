// SPDX-License-Identifier: GPL-3.0-or-later
//
// Linked into a library compiled with -fsanitize-coverage=trace-pc: marks every block that runs, a byte for each
// address, in the file that OXA_MUTANTS_TRACE names.  The file is shared by all processes of a test and is complete
// however they end.  System calls are made directly: the simulated platform stands in for some of libc's.
#define _GNU_SOURCE
#include <fcntl.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { kSize = 1 << 24 };

extern const char __ehdr_start[] __attribute__((visibility("hidden")));

static unsigned char *volatile g_map;

static unsigned char *Map(void) {
    static unsigned char unwanted[kSize];
    const char *name = getenv("OXA_MUTANTS_TRACE");
    if (name == NULL)
        return unwanted;
    const long file = syscall(SYS_openat, AT_FDCWD, name, O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (file < 0 || syscall(SYS_ftruncate, file, (long)kSize) != 0)
        return unwanted;
    const long at = syscall(SYS_mmap, NULL, (long)kSize, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0L);
    syscall(SYS_close, file);
    return at < 0 ? unwanted : (unsigned char *)at;
}

__attribute__((visibility("default"))) void __sanitizer_cov_trace_pc(void) {
    if (g_map == NULL)
        g_map = Map();
    const uintptr_t at = (uintptr_t)__builtin_return_address(0) - (uintptr_t)__ehdr_start;
    if (at < kSize)
        g_map[at] = 1;
}
