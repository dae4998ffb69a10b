// SPDX-License-Identifier: GPL-3.0-or-later
#include "faults/cases.h"

#include <algorithm>
#include <filesystem>
#include <random>

#include "fuzz/entry_points.h"
#include "library/profiles/catalogue.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "simulator/board_file.h"

namespace faults {
namespace {

struct LoadedBoard {
    std::string name;
    sim::Board board;
    std::vector<sim::Fault> rules;
};

const std::vector<LoadedBoard> &Boards() {
    static const std::vector<LoadedBoard> kBoards = [] {
        std::vector<LoadedBoard> boards;
        for (const auto &file : std::filesystem::recursive_directory_iterator(OXA_SOURCE_DIR "/boards")) {
            if (file.path().extension() != ".toml")
                continue;
            const std::string path = file.path().string();
            sim::BoardFile loaded = sim::LoadBoard(path);
            boards.push_back({file.path().stem(), std::move(loaded.board), std::move(loaded.faults)});
        }
        std::sort(boards.begin(), boards.end(), [](const auto &a, const auto &b) { return a.name < b.name; });
        return boards;
    }();
    return kBoards;
}

const LoadedBoard &BoardOf(const std::string &name) {
    return *std::find_if(Boards().begin(), Boards().end(), [&](const auto &b) { return b.name == name; });
}

// ---- static passes ---------------------------------------------------------------------------------------

void AddPasses(std::vector<Case> &cases, const LoadedBoard &board, bool in_pairs) {
    for (const oxa::ProfileView &profile : oxa::kProfiles) {
        if (oxa::DriverOf(profile.dwCustomId) == nullptr)
            continue;
        const uint32_t id = profile.dwCustomId;
        cases.push_back({.name = "board " + board.name + ", driver of " + profile.pcName,
                         .board = &board.board,
                         .rules = &board.rules,
                         .prepare = {},
                         .run = [id] { fuzz::RunDriver(id); },
                         .in_pairs = in_pairs,
                         // the profiles share the engine: all pairs of one, a share of the others'
                         .every = in_pairs && id != CUSTOM_ID_DEFAULT ? 7u : 1u});
    }
}

// ---- single functions ------------------------------------------------------------------------------------

// A board of a profile with something of everything that run-time sensors ask about.
const sim::Board &RunTimeBoard(uint32_t custom_id, size_t kind) {
    static const std::vector<sim::Board> kBoards = [] {
        std::vector<sim::Board> boards;
        for (const char *name : {"two_socket_2u", "small_5497"})
            for (const oxa::ProfileView &profile : oxa::kProfiles) {
                sim::Board board = BoardOf(name).board;
                board.custom_id = profile.dwCustomId;
                board.thresholds.push_back({.name = "GPU_TEMP_03", .uc = 90, .mask = 0x10});
                board.gpus.push_back({.slot = 3, .power_w = 300, .vendor = 1});
                board.cpus.reduce_flag = 1;
                boards.push_back(board);
            }
        return boards;
    }();
    constexpr size_t kProfiles = std::size(oxa::kProfiles);
    size_t at = kind * kProfiles;
    while (kBoards[at].custom_id != custom_id)
        ++at;
    return kBoards[at];
}

// Power supply 1 is in the record file and in the repository, a record is in the store, thresholds are saved.
void PrepareFiles() {
    SDR_UpdateSpecificSDRRecFile(10, 1, 1, 1);
    sim::Repository().push_back({1, std::vector<uint8_t>(20, 0)});
    writeExtSDRFile(std::vector<uint8_t>(128, 1).data(), 128);
    writeExtDevTabFile(std::vector<uint8_t>(64, 1).data(), 64);
    SavePurchaseCardFruId(gPurchaseCardInfo[0].wDevType, "card", 3, 33);
    const uint8_t six[8] = {100, 95, 90, 1, 2, 3, 0, 0};
    SaveSdrThresholdInfoInFile("GPU_TEMP_03\0\0\0\0", six, 0x38);
}

// Argument bytes: a few by hand-picked rule (small numbers reach most), the others at random, the same every time.
std::vector<std::vector<uint8_t>> ArgumentsFor(size_t size, size_t count, uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<std::vector<uint8_t>> sets(count, std::vector<uint8_t>(size));
    for (size_t n = 0; n < count; ++n)
        for (uint8_t &byte : sets[n]) {
            const uint32_t drawn = random();
            byte = static_cast<uint8_t>(n == 0 ? 1 : n % 3 == 0 ? drawn : drawn % (n % 3 == 1 ? 8 : 72));
        }
    return sets;
}

Case CallOf(const fuzz::EntryPoint &entry, uint32_t custom_id, size_t kind, std::vector<uint8_t> arguments,
            size_t n) {
    return {.name = entry.name + ", profile " + std::to_string(custom_id) + ", board " +
                    std::to_string(kind) + ", arguments " + std::to_string(n),
            .board = &RunTimeBoard(custom_id, kind),
            .rules = nullptr,
            .prepare = PrepareFiles,
            .run = [&entry, arguments = std::move(arguments)] {
                fuzz::Reader reader(arguments.data(), arguments.size());
                entry.call(reader, entry.function);
            }};
}

void AddEntryPoints(std::vector<Case> &cases) {
    constexpr size_t kArguments = 24;
    for (const fuzz::EntryPoint &entry : fuzz::EntryPoints())
        for (const oxa::ProfileView &profile : oxa::kProfiles)
            for (size_t kind = 0; kind < 2; ++kind) {
                const size_t count = entry.name == "SDR_AddSpecificSensor" ? 8 * kArguments : kArguments;
                const auto sets = ArgumentsFor(entry.argument_bytes, count, 1);
                for (size_t n = 0; n < sets.size(); ++n)
                    cases.push_back(CallOf(entry, profile.dwCustomId, kind, sets[n], n));
            }
}

void AddGenerators(std::vector<Case> &cases) {
    for (const fuzz::EntryPoint &entry : fuzz::StaticGenerators())
        for (const LoadedBoard &board : Boards())
            for (const uint8_t index : {0, 1, 2, 5}) {
                fuzz::EntryPoint const *const called = &entry;
                cases.push_back(
                    {.name = "board " + board.name + ", " + entry.name + " of index " + std::to_string(index),
                     .board = &board.board,
                     .rules = &board.rules,
                     .prepare = {},
                     .run = [called, index] {
                         fuzz::Reader reader(&index, 1);
                         called->call(reader, called->function);
                     }});
            }
}

} // namespace

std::vector<Case> CasesOf(const std::string &part) {
    std::vector<Case> cases;
    if (part == "passes")
        for (const LoadedBoard &board : Boards())
            AddPasses(cases, board, false);
    if (part == "pairs")
        for (const char *name : {"base_48", "small_5497"})
            AddPasses(cases, BoardOf(name), true);
    if (part == "entry_points")
        AddEntryPoints(cases);
    if (part == "generators")
        AddGenerators(cases);
    return cases;
}

} // namespace faults
