// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the library keeps between calls is in the part of its writable segment that the loader fills with zeros, and
// nowhere else (it has no .data).
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "simulator/simulator.h"

namespace sim {
namespace {

struct Zeros {
    volatile uint8_t *begin = nullptr;
    size_t size = 0;
};

int FindZeros(dl_phdr_info *object, size_t, void *found) {
    if (std::string_view(object->dlpi_name).find("liboxaspecificsensorinfo.so") == std::string_view::npos)
        return 0;
    uintptr_t begin = 0;
    uintptr_t end = 0;
    uintptr_t sealed = 0; // up to where the loader made the segment read-only
    for (size_t i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr) &part = object->dlpi_phdr[i];
        const uintptr_t at = object->dlpi_addr + part.p_vaddr;
        if (part.p_type == PT_GNU_RELRO)
            sealed = at + part.p_memsz;
        if (part.p_type != PT_LOAD || (part.p_flags & PF_W) == 0 || part.p_memsz == part.p_filesz)
            continue;
        begin = at + part.p_filesz;
        end = at + part.p_memsz;
    }
    begin = std::max(begin, sealed);
    *static_cast<Zeros *>(found) = {reinterpret_cast<volatile uint8_t *>(begin), end - begin};
    return 1;
}

const Zeros &TheZeros() {
    static const Zeros zeros = [] {
        Zeros found;
        dl_iterate_phdr(FindZeros, &found);
        return found;
    }();
    if (zeros.begin == nullptr)
        throw std::runtime_error("the library is not loaded as a shared object");
    return zeros;
}

// Not by memset or memcpy, and not looked at by a sanitizer: between the variables stand its own guard bytes.
#if defined(__clang__)
#define NOT_LOOKED_AT __attribute__((no_sanitize("address", "undefined", "coverage")))
#else
#define NOT_LOOKED_AT __attribute__((no_sanitize("address", "undefined")))
#endif

NOT_LOOKED_AT void CopyOut(const Zeros &zeros, uint8_t *to) {
    for (size_t at = 0; at < zeros.size; ++at)
        to[at] = zeros.begin[at];
}

} // namespace

LibraryMemory KeptByLibrary() {
    const Zeros &zeros = TheZeros();
    LibraryMemory out{const_cast<const uint8_t *>(zeros.begin), std::vector<uint8_t>(zeros.size)};
    CopyOut(zeros, out.bytes.data());
    return out;
}

NOT_LOOKED_AT
void ForgetLibraryState() {
    const Zeros &zeros = TheZeros();
    size_t at = 0;
    for (; at < zeros.size && reinterpret_cast<uintptr_t>(zeros.begin + at) % sizeof(uint64_t) != 0; ++at)
        zeros.begin[at] = 0;
    for (; at + sizeof(uint64_t) <= zeros.size; at += sizeof(uint64_t))
        *reinterpret_cast<volatile uint64_t *>(zeros.begin + at) = 0;
    for (; at < zeros.size; ++at)
        zeros.begin[at] = 0;
}

} // namespace sim
