// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: a board file.
#include "simulator/board_file.h"

#include "fuzz/platform.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Judge([&] {
        try {
            sim::LoadBoardText({reinterpret_cast<const char *>(data), size}, "input.toml");
        } catch (const sim::BoardError &) {
        }
    });
    return 0;
}
