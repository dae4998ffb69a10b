// SPDX-License-Identifier: GPL-3.0-or-later
//
// The simulated platform's files held in memory, see KeepFilesInMemory: paths are the library's, descriptors are numbers
// that the system gives to nobody, and a stream is a handle that only the functions here read.  Every function is called
// with the platform's lock held.
#ifndef OXA_SIMULATOR_MEMORY_FILES_H
#define OXA_SIMULATOR_MEMORY_FILES_H

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace sim::memory {

bool On();

// As the calls of the system: -1, or null, with errno.
int Open(const std::string &path, int flags);
ssize_t Read(int descriptor, void *buffer, size_t size);
ssize_t Write(int descriptor, const void *buffer, size_t size);
off_t Seek(int descriptor, off_t offset, int whence);
int Truncate(int descriptor, off_t length);
void Close(int descriptor);
int Remove(const std::string &path);

FILE *OpenStream(const std::string &path, const char *mode);
size_t ReadStream(FILE *stream, void *buffer, size_t size, size_t count);
size_t WriteStream(FILE *stream, const void *buffer, size_t size, size_t count);
void CloseStream(FILE *stream);

const std::vector<uint8_t> *Find(const std::string &path); // null when absent
void Put(const std::string &path, const std::vector<uint8_t> &bytes);
void RemoveAll();

} // namespace sim::memory
#endif
