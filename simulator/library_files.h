// SPDX-License-Identifier: GPL-3.0-or-later
//
// The files of the library: real ones under the root folder, or in memory; and which descriptors, streams and paths
// of the process are the library's.
#ifndef OXA_SIMULATOR_LIBRARY_FILES_H
#define OXA_SIMULATOR_LIBRARY_FILES_H

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace sim {

void CloseDescriptor(int descriptor);
void CloseStream(FILE *stream, const std::string &library_path);
void MakeParents(const std::string &real_path);
std::optional<std::vector<uint8_t>> ReadWhole(const std::string &real_path, int &error); // error: errno
bool WriteWhole(const std::string &real_path, const std::vector<uint8_t> &bytes);        // errno
void NoteStorageTrouble(const std::string &real_path, int error); // kept when it is one of the storage
// Without a lock, for the functions of the C library that the simulator stands in front of.
bool IsLibraryDescriptor(int descriptor);
void MarkLibraryDescriptor(int descriptor, bool ours);
bool IsLibraryStream(FILE *stream);
void MarkLibraryStream(FILE *stream, bool ours);
bool IsLibraryPath(const char *path);

} // namespace sim
#endif
