// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/progress.h"

#include <cstdio>
#include <unistd.h>

namespace workbench {
namespace {

bool g_kept_back = false;

} // namespace

void KeepProgressBack() {
    g_kept_back = true;
}

Progress::Progress(std::string doing, size_t all, std::string what)
    : doing_(std::move(doing)), what_(std::move(what)), all_(all),
      terminal_(!g_kept_back && isatty(STDERR_FILENO)), began_(std::chrono::steady_clock::now()) {}

Progress::~Progress() {
    if (shown_)
        std::fputs("\r\033[K", stderr);
}

void Progress::Done(size_t count) {
    if (!terminal_ || std::chrono::steady_clock::now() - began_ < std::chrono::seconds(1))
        return;
    shown_ = true;
    std::fprintf(stderr, "\r\033[K%s %zu of %zu %s", doing_.c_str(), count, all_, what_.c_str());
    std::fflush(stderr);
}

} // namespace workbench
