// SPDX-License-Identifier: GPL-3.0-or-later
//
// The root directory that stands for "/" of the library's paths, and the caller arrays with their guard
// bytes.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "simulator/library_files.h"
#include "simulator/memory_files.h"
#include "simulator/state.h"
#include "simulator/temporary_folder.h"

namespace sim {

namespace {

struct RootDirectory {
    std::mutex mutex;
    std::string path;
    bool made_here = false;
    pid_t owner = 0;
};

RootDirectory &TheRoot() {
    static RootDirectory *const root = new RootDirectory;
    return *root;
}

void RemoveRoot() {
    const RootDirectory &root = TheRoot();
    if (root.made_here && root.owner == getpid()) { // not in a forked child
        std::error_code ignored;
        std::filesystem::remove_all(root.path, ignored);
    }
}

// For the handler of signals, which may use neither a lock nor a string.
char g_fresh_root[4096];
volatile pid_t g_fresh_owner;

void RemoveRootAndEnd(int signal) {
    const pid_t remover =
        g_fresh_owner == getpid() ? fork() : -1; // a tree cannot be removed within a handler
    if (remover == 0) {
        execl("/bin/rm", "rm", "-rf", "--", g_fresh_root, nullptr);
        _exit(127);
    }
    if (remover > 0)
        waitpid(remover, nullptr, 0);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

void NoteFreshRoot(const RootDirectory &root) {
    if (root.path.size() >= sizeof g_fresh_root)
        return;
    std::memcpy(g_fresh_root, root.path.c_str(), root.path.size() + 1);
    g_fresh_owner = root.owner;
}

constexpr int kInterruptions[] = {SIGINT, SIGTERM, SIGHUP};

// A folder that is made and not yet noted would stay behind: an interruption waits.
class Uninterrupted {
public:
    Uninterrupted() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : kInterruptions)
            sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() {
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    Uninterrupted(const Uninterrupted &) = delete;
    Uninterrupted &operator=(const Uninterrupted &) = delete;

private:
    sigset_t before_;
};

void MakeFreshRoot(RootDirectory &root) {
    const Uninterrupted until_noted;
    const char *parent = std::getenv("TMPDIR");
    std::string path =
        std::string(parent != nullptr && *parent != '\0' ? parent : "/tmp") + "/oxa-sim.XXXXXX";
    if (!MakeTemporaryFolder(path))
        throw StorageError("TMPDIR: no folder can be made in " +
                           std::filesystem::path(path).parent_path().string() + " (" + std::strerror(errno) +
                           ")");
    root.path = path;
    root.made_here = true;
    root.owner = getpid();
    NoteFreshRoot(root);
    std::atexit(RemoveRoot);
}

} // namespace

void RemoveRootWhenInterrupted() {
    for (const int signal : kInterruptions)
        if (std::signal(signal, RemoveRootAndEnd) == SIG_IGN)
            std::signal(signal, SIG_IGN); // nohup
}

void SetRoot(const std::string &directory) {
    std::filesystem::create_directories(directory);
    RemoveRoot();
    g_fresh_owner = 0;
    RootDirectory &root = TheRoot();
    const std::lock_guard lock(root.mutex);
    root.path = std::filesystem::absolute(directory).lexically_normal().string();
    while (root.path.size() > 1 && root.path.back() == '/')
        root.path.pop_back();
    root.made_here = false;
}

std::string Root() {
    RootDirectory &root = TheRoot();
    const std::lock_guard lock(root.mutex);
    if (root.path.empty())
        MakeFreshRoot(root);
    return root.path;
}

// While an exception can still get out: a platform call has the library above it.
void MakeRoot() {
    if (!memory::On())
        Root();
}

// "/var/x": nothing in it needs looking at.  Nearly every path is such, and paths are asked for at every file call.
static bool IsPlain(const std::string &path) {
    return path.starts_with("/") && path.find("//") == path.npos && path.find("/.") == path.npos;
}

std::string RealPath(const std::string &library_path) {
    if (memory::On())
        return library_path;
    const std::string root = Root();
    if (root == "/" || (library_path.starts_with(root) && library_path.substr(root.size()).starts_with("/")))
        return library_path;
    if (IsPlain(library_path))
        return root + library_path;
    // "/../x" stays inside: a normal absolute path never climbs above "/"
    return root + (std::filesystem::path("/") / library_path).lexically_normal().string();
}

void MakeParents(const std::string &real_path) {
    std::error_code ignored; // the open that follows tells
    std::filesystem::create_directories(std::filesystem::path(real_path).parent_path(), ignored);
}

std::optional<std::vector<uint8_t>> ReadWhole(const std::string &real_path, int &error) {
    if (memory::On()) {
        const std::vector<uint8_t> *const bytes = memory::Find(real_path);
        error = bytes != nullptr ? 0 : ENOENT;
        return bytes != nullptr ? std::optional(*bytes) : std::nullopt;
    }
    const int descriptor =
        open(real_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // not for ever on a pipe
    if (descriptor < 0) {
        error = errno;
        return std::nullopt;
    }
    std::vector<uint8_t> bytes;
    std::array<uint8_t, 4096> part;
    ssize_t got = 0;
    while ((got = read(descriptor, part.data(), part.size())) > 0)
        bytes.insert(bytes.end(), part.begin(), part.begin() + got);
    error = got < 0 ? errno : 0;
    close(descriptor);
    return got < 0 ? std::nullopt : std::optional(std::move(bytes));
}

bool WriteWhole(const std::string &real_path, const std::vector<uint8_t> &bytes) {
    if (memory::On()) {
        memory::Put(real_path, bytes);
        return true;
    }
    MakeParents(real_path);
    const int descriptor =
        open(real_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0664);
    size_t done = 0;
    while (descriptor >= 0 && done < bytes.size()) {
        const ssize_t put = write(descriptor, bytes.data() + done, bytes.size() - done);
        if (put <= 0)
            break;
        done += static_cast<size_t>(put);
    }
    int error = descriptor < 0 || done < bytes.size() ? errno : 0;
    if (descriptor >= 0 && close(descriptor) != 0 && error == 0)
        error = errno;
    NoteStorageTrouble(real_path, error);
    errno = error;
    return error == 0;
}

namespace {

struct Trouble {
    std::mutex mutex;
    std::string text;
};

Trouble &TheTrouble() {
    static Trouble *const trouble = new Trouble;
    return *trouble;
}

std::string CannotWrite(const std::string &real_path, int error) {
    return "cannot write " + real_path + ": " + std::strerror(error);
}

} // namespace

void NoteStorageTrouble(const std::string &real_path, int error) {
    if (error != ENOSPC && error != EDQUOT && error != EFBIG && error != EIO && error != EROFS)
        return; // any other is about the file, and the library's matter
    Trouble &trouble = TheTrouble();
    const std::lock_guard lock(trouble.mutex);
    if (trouble.text.empty())
        trouble.text = CannotWrite(real_path, error);
    errno = error;
}

void CheckStorage() {
    Trouble &trouble = TheTrouble();
    const std::lock_guard lock(trouble.mutex);
    if (!trouble.text.empty())
        throw StorageError(trouble.text);
}

std::vector<uint8_t> ReadFile(const std::string &library_path) {
    int error = 0;
    return ReadWhole(RealPath(library_path), error).value_or(std::vector<uint8_t>{});
}

void WriteFile(const std::string &library_path, const std::vector<uint8_t> &bytes) {
    if (!WriteWhole(RealPath(library_path), bytes))
        throw StorageError(CannotWrite(RealPath(library_path), errno));
}

bool FileExists(const std::string &library_path) {
    if (memory::On())
        return memory::Find(library_path) != nullptr;
    struct stat facts;
    return stat(RealPath(library_path).c_str(), &facts) == 0;
}

// ---- which files are the library's --------------------------------------------------------------

namespace {

constexpr int kMostDescriptors = 4096;
std::atomic<bool> g_descriptors[kMostDescriptors];
std::atomic<FILE *> g_streams[64];

constexpr std::string_view kLibraryPaths[] = {
    "/var/SpecificSDRRec",
    "/var/tmp/extSDR.dat",
    "/var/tmp/extDevTab.dat",
    "/var/tmp/purchaseCardFruId",
    "/conf/BMC1/sensor_threshold.dat",
    "/var/test_disk_fault_predict",
};

} // namespace

bool IsLibraryDescriptor(int descriptor) {
    return descriptor >= 0 && descriptor < kMostDescriptors && g_descriptors[descriptor].load();
}

void MarkLibraryDescriptor(int descriptor, bool ours) {
    if (descriptor >= 0 && descriptor < kMostDescriptors)
        g_descriptors[descriptor].store(ours);
}

bool IsLibraryStream(FILE *stream) {
    return stream != nullptr && std::any_of(
                                    std::begin(g_streams), std::end(g_streams),
                                    [&](const auto &known) { return known.load() == stream; });
}

void MarkLibraryStream(FILE *stream, bool ours) {
    for (std::atomic<FILE *> &known : g_streams) {
        FILE *expected = ours ? nullptr : stream;
        if (known.compare_exchange_strong(expected, ours ? stream : nullptr))
            return;
    }
}

std::vector<std::string> LibraryPaths() {
    return {std::begin(kLibraryPaths), std::end(kLibraryPaths)};
}

bool IsLibraryPath(const char *path) {
    return path != nullptr &&
           std::find(std::begin(kLibraryPaths), std::end(kLibraryPaths), path) != std::end(kLibraryPaths);
}

void CloseDescriptor(int descriptor) {
    if (memory::On())
        memory::Close(descriptor);
    else
        close(descriptor);
}

void CloseStream(FILE *stream, const std::string &library_path) {
    if (memory::On())
        memory::CloseStream(stream);
    else if (std::fclose(stream) != 0) // what fwrite had kept back
        NoteStorageTrouble(RealPath(library_path), errno);
}

void CloseEverything(State &state) {
    for (const auto &[descriptor, path] : state.descriptors) {
        MarkLibraryDescriptor(descriptor, false);
        CloseDescriptor(descriptor);
    }
    for (const auto &[stream, path] : state.streams) {
        MarkLibraryStream(stream, false);
        CloseStream(stream, path);
    }
    state.descriptors.clear();
    state.streams.clear();
    state.sessions.clear();
    state.inis.clear();
    state.semaphores.clear();
}

// ---- caller arrays ------------------------------------------------------------------------------
// One block: guard, slots, guard, entries, guard.

namespace {
constexpr size_t kGuardSize = 4096;
constexpr uint8_t kGuardByte = 0xC5;
} // namespace

StaticArrays &CallerArrays(size_t capacity, uint8_t fill) {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    Guarded &guarded = state.guarded;
    if (!guarded.made) {
        const size_t slots = capacity * SDR_SLOT_SIZE;
        const size_t entries = capacity * DEV_TAB_ENTRY_SIZE;
        guarded.memory.assign(3 * kGuardSize + slots + entries, kGuardByte);
        guarded.arrays.slots = guarded.memory.data() + kGuardSize;
        uint8_t *const first_entry = guarded.arrays.slots + slots + kGuardSize;
        guarded.arrays.entries = reinterpret_cast<DevTabEntry *>(first_entry);
        guarded.arrays.capacity = capacity;
        std::memset(guarded.arrays.slots, fill, slots);
        std::memset(first_entry, fill, entries);
        guarded.made = true;
    }
    return guarded.arrays;
}

void CheckGuards(const State &state, std::vector<std::string> &violations) {
    const Guarded &guarded = state.guarded;
    if (!guarded.made)
        return;
    const size_t slots = guarded.arrays.capacity * SDR_SLOT_SIZE;
    const size_t entries = guarded.arrays.capacity * DEV_TAB_ENTRY_SIZE;
    const struct {
        size_t begin;
        const char *where;
    } guards[] = {{0, "before the slots"},
                  {kGuardSize + slots, "between slots and entries"},
                  {2 * kGuardSize + slots + entries, "after the entries"}};
    for (const auto &guard : guards) {
        const auto begin = guarded.memory.begin() + static_cast<std::ptrdiff_t>(guard.begin);
        const auto broken =
            std::find_if(begin, begin + kGuardSize, [](uint8_t b) { return b != kGuardByte; });
        if (broken != begin + kGuardSize) {
            violations.push_back("guard bytes " + std::string(guard.where) + " are overwritten at offset " +
                                 std::to_string(broken - begin));
        }
    }
}

} // namespace sim
