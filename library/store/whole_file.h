// SPDX-License-Identifier: Apache-2.0
//
// Whole-file access for the extended store.  Several BMC processes share its two files, so every access runs
// under one system-wide semaphore.
#ifndef OXA_STORE_WHOLE_FILE_H
#define OXA_STORE_WHOLE_FILE_H

#include <cstdint>

namespace oxa {

constexpr const char *kExtSDRFile = "/var/tmp/extSDR.dat";
constexpr const char *kExtDevTabFile = "/var/tmp/extDevTab.dat";

// Reads up to dwLen bytes of the file into pucRead, or, when pucRead is null, replaces the file by the dwLen
// bytes at pucWrite.  Returns the number of bytes read (0 = none) or 0 for a write; -1 without the semaphore.
int32_t ReadWriteExtSDRFile(const char *pcPath, uint8_t *pucRead, const uint8_t *pucWrite, uint32_t dwLen);

} // namespace oxa
#endif
