// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: a story; its board is "board.toml".
#include "fuzz/platform.h"
#include "workbench/errors.h"
#include "workbench/scenario.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Judge([&] {
        try {
            workbench::LoadScenario(fuzz::AsFile(data, size));
        } catch (const workbench::InputError &) {
        }
    });
    return 0;
}
