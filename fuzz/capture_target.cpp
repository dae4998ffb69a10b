// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: a capture.  It is read, and a board is made of it; nothing of it is played, since the library trusts its caller.
// Checksums would keep a fuzzer out: they are put right first, as far as the sizes of the blocks lead.
#include <algorithm>
#include <cstring>

#include "base/errors.h"
#include "capture/format.h"
#include "fuzz/platform.h"
#include "replay/captured_board.h"

namespace {

namespace format = oxa::capture;

void PutSum(std::string &bytes, size_t at, uint32_t sum) {
    std::memcpy(bytes.data() + at, &sum, sizeof sum);
}

std::string WithChecksums(const uint8_t *data, size_t size) {
    std::string bytes(reinterpret_cast<const char *>(data), size);
    const size_t first = format::kFileHeaderSize + format::kRunningSize;
    if (size < first)
        return bytes;
    PutSum(bytes, 12, format::Checksum(format::kChecksumStart, bytes.data(), 12));
    for (size_t at = first; at + format::kBlockHeaderSize <= size;) {
        uint32_t payload = 0;
        std::memcpy(&payload, bytes.data() + at, sizeof payload);
        if ((payload & format::kAgainBit) != 0) {
            PutSum(bytes, at,
                   format::AgainWord(static_cast<uint8_t>(payload >> 16), static_cast<uint16_t>(payload)));
            at += sizeof payload;
            continue;
        }
        const size_t room = size - at - format::kBlockHeaderSize;
        const auto filled =
            static_cast<uint32_t>(std::min<size_t>((size_t{payload} + 3) / 4 * 4, room / 4 * 4));
        const uint32_t sum = format::Checksum(format::kChecksumStart, bytes.data() + at, 8);
        PutSum(bytes, at + 8, format::Checksum(sum, bytes.data() + at + format::kBlockHeaderSize, filled));
        at += format::kBlockHeaderSize + filled;
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Judge([&] {
        try {
            const workbench::Capture capture = workbench::ParseCapture("x.cap", WithChecksums(data, size));
            for (const workbench::CapturedEntry &entry : capture.entries)
                workbench::CallText(entry);
            sim::LoadBoardText(workbench::CapturedBoardText(capture, workbench::MachineOf(capture)),
                               "x.toml");
        } catch (const workbench::InputError &) {
        } catch (const sim::BoardError &) {
        }
    });
    return 0;
}
