// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/memory_files.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>

namespace sim {
namespace memory {
namespace {

constexpr int kFirstDescriptor = 3072; // far above what a process of ours has open
constexpr int kMostOpen = 64;

struct OpenFile {
    bool open = false;
    std::string path;
    size_t at = 0;
    int flags = 0;
};

struct Files {
    bool on = false;
    std::map<std::string, std::vector<uint8_t>> content;
    OpenFile open[kMostOpen];
};

Files &TheFiles() {
    static Files *const files = new Files;
    return *files;
}

OpenFile &Of(int descriptor) {
    return TheFiles().open[descriptor - kFirstDescriptor];
}
// A stream is the address of its file's place in the table.
int DescriptorOf(FILE *stream) {
    return kFirstDescriptor + static_cast<int>(reinterpret_cast<OpenFile *>(stream) - TheFiles().open);
}

std::string Normal(const std::string &path) {
    const bool plain =
        path.starts_with('/') && path.find("/.") == std::string::npos && path.find("//") == std::string::npos;
    return plain ? path : (std::filesystem::path("/") / path).lexically_normal().string();
}

} // namespace

bool On() {
    return TheFiles().on;
}

int Open(const std::string &path, int flags) {
    Files &files = TheFiles();
    OpenFile *const free =
        std::find_if(std::begin(files.open), std::end(files.open), [](const OpenFile &f) { return !f.open; });
    if (free == std::end(files.open)) {
        errno = EMFILE;
        return -1;
    }
    const std::string normal = Normal(path);
    const auto found = files.content.find(normal);
    if (found == files.content.end() && (flags & O_CREAT) == 0) {
        errno = ENOENT;
        return -1;
    }
    std::vector<uint8_t> &bytes = found == files.content.end() ? files.content[normal] : found->second;
    if ((flags & O_TRUNC) != 0)
        bytes.clear();
    *free = {true, normal, 0, flags};
    return kFirstDescriptor + static_cast<int>(free - files.open);
}

ssize_t Read(int descriptor, void *buffer, size_t size) {
    OpenFile &file = Of(descriptor);
    const std::vector<uint8_t> &bytes = TheFiles().content[file.path];
    const size_t got = file.at >= bytes.size() ? 0 : std::min(size, bytes.size() - file.at);
    if (got != 0)
        std::memcpy(buffer, bytes.data() + file.at, got);
    file.at += got;
    return static_cast<ssize_t>(got);
}

ssize_t Write(int descriptor, const void *buffer, size_t size) {
    OpenFile &file = Of(descriptor);
    if ((file.flags & O_ACCMODE) == O_RDONLY) {
        errno = EBADF;
        return -1;
    }
    std::vector<uint8_t> &bytes = TheFiles().content[file.path];
    if ((file.flags & O_APPEND) != 0)
        file.at = bytes.size();
    if (bytes.size() < file.at + size)
        bytes.resize(file.at + size);
    if (size != 0)
        std::memcpy(bytes.data() + file.at, buffer, size);
    file.at += size;
    return static_cast<ssize_t>(size);
}

off_t Seek(int descriptor, off_t offset, int whence) {
    OpenFile &file = Of(descriptor);
    const size_t from = whence == SEEK_SET   ? 0
                        : whence == SEEK_CUR ? file.at
                                             : TheFiles().content[file.path].size();
    if (offset < 0 && static_cast<size_t>(-offset) > from) {
        errno = EINVAL;
        return -1;
    }
    file.at = from + static_cast<size_t>(offset);
    return static_cast<off_t>(file.at);
}

int Truncate(int descriptor, off_t length) {
    TheFiles().content[Of(descriptor).path].resize(static_cast<size_t>(length));
    return 0;
}

void Close(int descriptor) {
    Of(descriptor) = {};
}

int Remove(const std::string &path) {
    if (TheFiles().content.erase(Normal(path)) != 0)
        return 0;
    errno = ENOENT;
    return -1;
}

FILE *OpenStream(const std::string &path, const char *mode) {
    const int access = std::strchr(mode, '+') != nullptr ? O_RDWR : *mode == 'r' ? O_RDONLY : O_WRONLY;
    const int make = *mode == 'r' ? 0 : *mode == 'a' ? O_CREAT | O_APPEND : O_CREAT | O_TRUNC;
    const int descriptor = Open(path, access | make);
    return descriptor < 0 ? nullptr : reinterpret_cast<FILE *>(&Of(descriptor));
}

size_t ReadStream(FILE *stream, void *buffer, size_t size, size_t count) {
    return size == 0 ? 0 : static_cast<size_t>(Read(DescriptorOf(stream), buffer, size * count)) / size;
}

size_t WriteStream(FILE *stream, const void *buffer, size_t size, size_t count) {
    const ssize_t put = size == 0 ? 0 : Write(DescriptorOf(stream), buffer, size * count);
    return put <= 0 ? 0 : static_cast<size_t>(put) / size;
}

void CloseStream(FILE *stream) {
    Close(DescriptorOf(stream));
}

const std::vector<uint8_t> *Find(const std::string &path) {
    const auto found = TheFiles().content.find(Normal(path));
    return found == TheFiles().content.end() ? nullptr : &found->second;
}

void Put(const std::string &path, const std::vector<uint8_t> &bytes) {
    TheFiles().content[Normal(path)] = bytes;
}

void RemoveAll() {
    TheFiles().content.clear();
}

} // namespace memory

void KeepFilesInMemory() {
    memory::TheFiles().on = true;
}

void RemoveMemoryFiles() {
    memory::RemoveAll();
}

} // namespace sim
