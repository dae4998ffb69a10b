// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the Default set share: one pass over a board, its records, and literal bytes.
#ifndef OXA_TESTS_STATIC_SENSORS_DEFAULT_SUPPORT_H
#define OXA_TESTS_STATIC_SENSORS_DEFAULT_SUPPORT_H

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace default_set {

using Bytes = std::vector<uint8_t>;

constexpr uint16_t kCallersCount = 0xBEEF; // what the caller's count holds before a pass
constexpr char kStorePath[] = "/var/tmp/extSDR.dat";
constexpr uint8_t kUntouched = 0xEE; // what the caller's slots and entries hold before a pass

struct Record {
    Bytes sdr;   // 64 bytes
    Bytes entry; // 32 bytes
    bool operator==(const Record &) const = default;

    std::string Name() const {
        const size_t at = sdr[3] == 1 ? 47 : 31;
        const size_t length = std::min<size_t>(sdr[at] & 0x3F, 16);
        return {reinterpret_cast<const char *>(sdr.data()) + at + 1, length};
    }
};

inline std::string Hex(const Bytes &bytes) {
    static const char kDigits[] = "0123456789abcdef";
    std::string out;
    for (uint8_t byte : bytes) {
        out += kDigits[byte >> 4];
        out += kDigits[byte & 15];
    }
    return out;
}

inline std::ostream &operator<<(std::ostream &out, const Record &record) {
    return out << record.Name() << ' ' << Hex(record.sdr) << ' ' << Hex(record.entry);
}

// Literal bytes: hex pairs, 'text' and FFx5 (a byte repeated), parted by blanks.
inline Bytes Literal(const std::string &text) {
    Bytes out;
    for (size_t at = 0; at < text.size();) {
        if (text[at] == ' ') {
            ++at;
        } else if (text[at] == '\'') {
            const size_t end = text.find('\'', at + 1);
            out.insert(out.end(), text.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                       text.begin() + static_cast<std::ptrdiff_t>(end));
            at = end + 1;
        } else {
            const size_t end = std::min(text.find(' ', at), text.size());
            const std::string token = text.substr(at, end - at);
            const size_t times = token.size() > 3 ? std::stoul(token.substr(3)) : 1;
            out.insert(out.end(), times, static_cast<uint8_t>(std::stoul(token.substr(0, 2), nullptr, 16)));
            at = end;
        }
    }
    return out;
}

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

// Runs the driver over the platform as it stands (after sim::Start and faults).
inline Outcome RunPass() {
    sim::StaticArrays &arrays = sim::CallerArrays(4096, kUntouched);
    arrays.count = kCallersCount;
    OXA_AddDefaultStaticSensor(arrays.slots, arrays.entries, &arrays.count);
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

inline Outcome RunPass(const sim::Board &board) {
    sim::Start(board);
    std::filesystem::remove(sim::RealPath(kStorePath)); // of an earlier pass of the same test
    return RunPass();
}

// Two processors of one maker, two power supplies in one group, and nothing else.
inline sim::Board BaseBoard() {
    sim::Board board;
    board.board_id = 0x1234;
    board.cpus.count = 2;
    board.cpus.type = 1;
    board.psus = {.count = 2, .group_count = 1, .count_per_group = 2};
    return board;
}

inline sim::Board LoadBoard(const std::string &name) {
    return sim::LoadBoardFile(std::string(OXA_SOURCE_DIR "/boards/") + name);
}

// The content of the store of run-time records that holds these records.
inline Bytes StoreOf(const std::vector<Record> &records) {
    Bytes out;
    for (const Record &record : records)
        out.insert(out.end(), record.sdr.begin(), record.sdr.end());
    return out;
}
inline void Store(const std::vector<Record> &records) {
    sim::WriteFile(kStorePath, StoreOf(records));
}

// ---- log lines --------------------------------------------------------------------------------------------
struct Line {
    char level; // D debug, I info, W warning, E error
    uint32_t module;
    std::string text;
    bool operator==(const Line &) const = default;
    auto operator<=>(const Line &) const = default;
};
inline std::ostream &operator<<(std::ostream &out, const Line &line) {
    return out << line.level << ' ' << line.module << " \"" << line.text << '"';
}
inline char Letter(sim::Level level) {
    switch (level) {
    case sim::Level::kDebug:
        return 'D';
    case sim::Level::kInfo:
        return 'I';
    case sim::Level::kWarn:
        return 'W';
    case sim::Level::kError:
        return 'E';
    }
    return '?';
}
// Log lines in order; debug-channel lines only when asked for, with the "[file:line]" prefix cut off.
inline std::vector<Line> Lines(bool debug_channel = false) {
    std::vector<Line> out;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kLog)
            out.push_back({Letter(event.level), event.number, event.text});
        if (event.kind == sim::Kind::kDebug && debug_channel)
            out.push_back({'C', event.number, event.text.substr(event.text.find(']') + 1)});
    }
    return out;
}
inline std::string FunctionOf(const std::string &text) { // the function that a line names
    for (const sim::Event &event : sim::Logs())
        if (event.text == text)
            return event.function;
    return "(no such line)";
}
inline size_t CountLine(const Line &line) {
    const auto lines = Lines(true);
    return static_cast<size_t>(std::count(lines.begin(), lines.end(), line));
}

} // namespace default_set

#endif
