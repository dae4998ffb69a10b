// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: board, profile, six numbers of parts, which call fails; then functions and their arguments, one after the other.
#include <utility>

#include "fuzz/entry_points.h"
#include "fuzz/platform.h"
#include "library/profiles/catalogue.h"
#include "simulator/simulator.h"

namespace {

using fuzz::Reader;

constexpr size_t kMostCalls = 12;

// 255 leaves what the board has.
void Change(uint8_t &target, Reader &input) {
    const uint8_t value = input.Byte();
    if (value != 255)
        target = value % 12;
}

sim::Board BoardOf(Reader &input) {
    sim::Board board = fuzz::Boards()[input.Byte() % fuzz::Boards().size()];
    board.custom_id = oxa::kProfiles[input.Byte() % std::size(oxa::kProfiles)].dwCustomId;
    Change(board.cpus.count, input);
    Change(board.psus.count, input);
    Change(board.fans.count, input);
    Change(board.dimms.count, input);
    Change(board.ocp.count, input);
    Change(board.cpus.silk_start, input);
    return board;
}

void Fail(Reader &input) {
    const uint16_t call = input.Take<uint16_t>();
    if (call != 0)
        sim::FailCall(1 + (call & 0x3FFF), (call & 0x8000) != 0);
}

void CallOne(Reader &input, uint32_t custom_id, bool &passed) {
    const auto &entries = fuzz::EntryPoints();
    const auto &generators = fuzz::StaticGenerators();
    const uint8_t pick = input.Byte();
    if (pick < 200) {
        const fuzz::EntryPoint &entry = entries[pick % entries.size()];
        return entry.call(input, entry.function);
    }
    if (pick < 250) {
        const fuzz::EntryPoint &entry = generators[input.Take<uint16_t>() % generators.size()];
        return entry.call(input, entry.function);
    }
    if (!std::exchange(passed, true)) // a pass costs as much as a hundred other calls
        fuzz::RunDriver(custom_id);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Reader input(data, size);
    const sim::Board board = BoardOf(input);
    fuzz::Restart(board);
    Fail(input);
    fuzz::Judge([&] {
        bool passed = false;
        for (size_t call = 0; call < kMostCalls && !input.Empty(); ++call)
            CallOne(input, board.custom_id, passed);
    });
    return 0;
}
