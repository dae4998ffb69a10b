// SPDX-License-Identifier: GPL-3.0-or-later
//
// The loader has written the addresses of what the library imports into a table, one for each relocation that names an
// undefined symbol, and made the table read-only.
#include "replay/redirect.h"

#include <cerrno>
#include <cstring>
#include <elf.h>
#include <link.h>
#include <map>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

#include "base/errors.h"

namespace workbench {
namespace {

#if defined(__LP64__)
using Relocation = ElfW(Rela);
constexpr auto kTable = DT_RELA, kTableSize = DT_RELASZ;
size_t SymbolOf(const Relocation &relocation) {
    return ELF64_R_SYM(relocation.r_info);
}
#else
using Relocation = ElfW(Rel);
constexpr auto kTable = DT_REL, kTableSize = DT_RELSZ;
size_t SymbolOf(const Relocation &relocation) {
    return ELF32_R_SYM(relocation.r_info);
}
#endif

struct Object {
    uintptr_t base = 0;
    const ElfW(Dyn) *dynamic = nullptr;

    uintptr_t Value(ElfW(Sxword) tag) const {
        for (const ElfW(Dyn) *at = dynamic; at->d_tag != DT_NULL; ++at)
            if (at->d_tag == tag)
                return at->d_un.d_ptr;
        return 0;
    }
    // Addresses stand there with the base added or without.
    uintptr_t Address(ElfW(Sxword) tag) const {
        const uintptr_t value = Value(tag);
        return value != 0 && value < base ? base + value : value;
    }
};

int FindLibrary(dl_phdr_info *object, size_t, void *found) {
    if (std::string_view(object->dlpi_name).find("liboxaspecificsensorinfo.so") == std::string_view::npos)
        return 0;
    Object &library = *static_cast<Object *>(found);
    library.base = object->dlpi_addr;
    for (size_t i = 0; i < object->dlpi_phnum; ++i)
        if (object->dlpi_phdr[i].p_type == PT_DYNAMIC)
            library.dynamic =
                reinterpret_cast<const ElfW(Dyn) *>(object->dlpi_addr + object->dlpi_phdr[i].p_vaddr);
    return 1;
}

void MakeWritable(uintptr_t at) {
    const uintptr_t page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    const uintptr_t first = at / page * page;
    const size_t size = at + sizeof(void *) > first + page ? 2 * page : page;
    if (mprotect(reinterpret_cast<void *>(first), size, PROT_READ | PROT_WRITE) != 0)
        throw SetError(std::string("the library may not be redirected: ") + std::strerror(errno));
}

using Functions = std::map<std::string_view, void *>;

void RedirectTable(const Object &library, ElfW(Sxword) table, ElfW(Sxword) size, const Functions &functions) {
    const auto *relocations = reinterpret_cast<const Relocation *>(library.Address(table));
    const auto *symbols = reinterpret_cast<const ElfW(Sym) *>(library.Address(DT_SYMTAB));
    const auto *names = reinterpret_cast<const char *>(library.Address(DT_STRTAB));
    for (size_t i = 0; relocations != nullptr && i < library.Value(size) / sizeof(Relocation); ++i) {
        const ElfW(Sym) &symbol = symbols[SymbolOf(relocations[i])];
        const auto found = functions.find(names + symbol.st_name);
        if (symbol.st_shndx != SHN_UNDEF || found == functions.end())
            continue;
        const uintptr_t place = library.base + relocations[i].r_offset;
        MakeWritable(place);
        *reinterpret_cast<void **>(place) = found->second;
    }
}

} // namespace

void RedirectLibrary(const Redirection *first, const Redirection *last) {
    Object library;
    dl_iterate_phdr(FindLibrary, &library);
    if (library.dynamic == nullptr)
        throw SetError("the library is not loaded as a shared object");
    Functions functions;
    for (; first != last; ++first)
        functions[first->name] = first->function;
    RedirectTable(library, kTable, kTableSize, functions);
    RedirectTable(library, DT_JMPREL, DT_PLTRELSZ, functions);
}

} // namespace workbench
