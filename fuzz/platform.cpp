// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace fuzz {
namespace {

[[noreturn]] void Crash(const std::string &what) {
    std::fprintf(stderr, "broken: %s\n", what.c_str());
    std::abort();
}

void PrepareOnce() {
    static const bool done = [] {
        sim::KeepFilesInMemory();
        sim::SetTracing(false);
        sim::SetPrintingLines(true);
        return true;
    }();
    static_cast<void>(done);
}

// Removed when the program ends by itself; a crash leaves a few bytes behind.
const std::string &Folder() {
    static const std::string kFolder = [] {
        std::string path =
            std::filesystem::is_directory("/dev/shm") ? "/dev/shm/oxa-fuzz-XXXXXX" : "/tmp/oxa-fuzz-XXXXXX";
        if (mkdtemp(path.data()) == nullptr)
            Crash("no folder for files: " + path);
        std::filesystem::copy_file(OXA_SOURCE_DIR "/boards/small_5497.toml", path + "/board.toml");
        return path;
    }();
    static const int kRemoved = std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(Folder(), ignored);
    });
    static_cast<void>(kRemoved);
    return kFolder;
}

} // namespace

void Restart(const sim::Board &board) {
    PrepareOnce();
    sim::ForgetLibraryState();
    sim::RemoveMemoryFiles();
    sim::Start(board);
}

void Judge(const std::function<void()> &run) {
    try {
        run();
    } catch (const std::exception &error) {
        Crash(error.what());
    }
    const std::vector<std::string> violations = sim::Violations();
    if (!violations.empty())
        Crash(violations.front());
}

const std::vector<sim::Board> &Boards() {
    static const std::vector<sim::Board> kBoards = [] {
        std::vector<sim::Board> boards;
        for (const auto &file : std::filesystem::directory_iterator(OXA_SOURCE_DIR "/boards"))
            if (file.path().extension() == ".toml" && file.path().stem() != "fullest")
                boards.push_back(sim::LoadBoard(file.path().string()).board);
        std::sort(boards.begin(), boards.end(), [](const auto &a, const auto &b) { return a.name < b.name; });
        return boards;
    }();
    return kBoards;
}

std::string AsFile(const uint8_t *data, size_t size) {
    const std::string path = Folder() + "/input.toml";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size))
        Crash("cannot write " + path);
    close(file);
    return path;
}

} // namespace fuzz
