// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: a story; its board is "board.toml".
#include "base/errors.h"
#include "fuzz/platform.h"
#include "scenario/scenario.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Judge([&] {
        try {
            workbench::LoadScenario(fuzz::AsFile(data, size));
        } catch (const workbench::InputError &) {
        }
    });
    return 0;
}
