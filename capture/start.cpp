/* SPDX-License-Identifier: Apache-2.0 */
#include "capture/start.h"

#include <link.h>
#include <unistd.h>

#include "capture/block.h"
#include "capture/file.h"

namespace oxa::capture {
namespace {

struct Library {
    uintptr_t dwWithin; // an address of it
    char acPath[256];
    uint32_t dwCode; // checksum of what the loader left as it was
};

int FindLibrary(dl_phdr_info *ptObject, size_t, void *pvFound) {
    Library &tLibrary = *static_cast<Library *>(pvFound);
    bool bIsIt = false;
    uint32_t dwCode = kChecksumStart;
    for (unsigned i = 0; i < ptObject->dlpi_phnum; ++i) {
        const ElfW(Phdr) &tPart = ptObject->dlpi_phdr[i];
        const uintptr_t dwAt = ptObject->dlpi_addr + tPart.p_vaddr;
        if (tPart.p_type == PT_LOAD)
            bIsIt = bIsIt || (tLibrary.dwWithin >= dwAt && tLibrary.dwWithin < dwAt + tPart.p_memsz);
    }
    if (!bIsIt)
        return 0;
    for (unsigned i = 0; i < ptObject->dlpi_phnum; ++i) {
        const ElfW(Phdr) &tPart = ptObject->dlpi_phdr[i];
        if (tPart.p_type == PT_LOAD && (tPart.p_flags & (PF_R | PF_W)) == PF_R)
            dwCode = Checksum(dwCode, reinterpret_cast<const void *>(ptObject->dlpi_addr + tPart.p_vaddr),
                              static_cast<uint32_t>(tPart.p_filesz));
    }
    tLibrary.dwCode = dwCode;
    strncpy(tLibrary.acPath, ptObject->dlpi_name, sizeof(tLibrary.acPath) - 1);
    return 1;
}

} // namespace

void TellStart(const void *pvWithinLibrary) {
    Library tLibrary{};
    tLibrary.dwWithin = reinterpret_cast<uintptr_t>(pvWithinLibrary);
    dl_iterate_phdr(FindLibrary, &tLibrary);
    uint8_t *const pucHeader = Room(kFileHeaderSize + kRunningSize);
    memcpy(pucHeader, kMagic, 8);
    const uint8_t aucFormat[4] = {kFormat & 0xFF, kFormat >> 8, sizeof(void *), kLittleEndian};
    memcpy(pucHeader + 8, aucFormat, 4);
    const uint32_t dwSum = Checksum(kChecksumStart, pucHeader, 12);
    memcpy(pucHeader + 12, &dwSum, 4);
    Take(kFileHeaderSize + kRunningSize); // which is zeros
    Block tBlock(Room(1024), kStart, 0, 0);
    tBlock.AddText(OXA_VERSION);
    tBlock.AddText(tLibrary.acPath);
    tBlock.AddUnsigned(kUnsigned, tLibrary.dwCode);
    tBlock.AddUnsigned(kUnsigned, static_cast<uint32_t>(getpid()));
    Take(tBlock.End());
}

} // namespace oxa::capture
