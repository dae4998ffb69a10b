// SPDX-License-Identifier: GPL-3.0-or-later
//
// One pass of a profile's driver over a board, and boards that many tests start from.
#ifndef OXA_TESTS_SUPPORT_STATIC_PASS_H
#define OXA_TESTS_SUPPORT_STATIC_PASS_H

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"
#include "support/profiles.h"
#include "support/record_differ.h"

namespace tests {

constexpr uint16_t kCallersCount = 0xBEEF; // what the caller's count holds before a pass
constexpr char kStorePath[] = "/var/tmp/extSDR.dat";
constexpr uint8_t kUntouched = 0xEE; // what the caller's slots and entries hold before a pass

struct Outcome {
    bool written = false;        // the count was written
    uint16_t count = 0;          // what the caller's count holds afterwards
    std::vector<Record> records; // the slots that hold a record, in order

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const Record &record : records)
            names.push_back(record.Name());
        return names;
    }
    const Record *Find(const std::string &name, size_t nth = 0) const {
        for (const Record &record : records)
            if (record.Name() == name && nth-- == 0)
                return &record;
        return nullptr;
    }
    size_t CountName(const std::string &name) const {
        const auto names = Names();
        return static_cast<size_t>(std::count(names.begin(), names.end(), name));
    }
};

// Over the platform as it stands (after sim::Start and faults).
inline Outcome RunPass(Driver driver = OXA_AddDefaultStaticSensor) {
    sim::StaticArrays &arrays = sim::CallerArrays(4096, kUntouched);
    arrays.count = kCallersCount;
    driver(arrays.slots, arrays.entries, &arrays.count);
    Outcome out{arrays.count != kCallersCount, arrays.count, {}};
    const size_t slots = out.written ? arrays.count : arrays.capacity;
    for (size_t i = 0; i < slots; ++i) {
        Record record{{arrays.slots + 64 * i, arrays.slots + 64 * i + 64}, Bytes(32)};
        if (!out.written && record.sdr == Bytes(64, kUntouched))
            break;
        std::memcpy(record.entry.data(), arrays.entries + i, 32);
        out.records.push_back(record);
    }
    return out;
}

inline Outcome RunPass(Driver driver, const sim::Board &board) {
    sim::Start(board);
    std::filesystem::remove(sim::RealPath(kStorePath)); // of an earlier pass of the same test
    return RunPass(driver);
}
inline Outcome RunPass(const sim::Board &board) {
    return RunPass(OXA_AddDefaultStaticSensor, board);
}

// ---- boards ---------------------------------------------------------------------------------------------------

// Two processors of one maker, two power supplies in one group, and nothing else.
inline sim::Board BaseBoard() {
    sim::Board board;
    board.board_id = 0x1234;
    board.cpus.count = 2;
    board.cpus.type = 1;
    board.psus = {.count = 2, .group_count = 1, .count_per_group = 2};
    return board;
}

// One of everything, and two records of an NVMe disk.
inline sim::Board SmallBoard() {
    sim::Board board = BaseBoard();
    board.cpus = {.count = 1, .silk_start = 1, .type = 1};
    board.psus = {.count = 1, .group_count = 1, .count_per_group = 1};
    board.dimms = {.count = 1, .names = {"A0"}};
    board.pcie.slots = {{.slot = 2}};
    board.fans.count = 1;
    board.ocp = {.count = 1, .present = 1};
    board.disks.backplanes = {{3, 1, "Front"}};
    board.disks.nvme_slots = {3};
    return board;
}

// Nothing but the rows of the static table, 24 records of Default: no PCH and no leakage.
inline sim::Board BareBoard() {
    sim::Board board;
    board.board_id = 0x1234;
    return board;
}

// ---- the store of run-time records ------------------------------------------------------------------------------

inline void Store(const std::vector<Record> &records) {
    Bytes content;
    for (const Record &record : records)
        content.insert(content.end(), record.sdr.begin(), record.sdr.end());
    sim::WriteFile(kStorePath, content);
}

inline std::string Replace(std::string text, const std::string &what, const std::string &with) {
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

} // namespace tests

#endif
