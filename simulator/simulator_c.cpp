// SPDX-License-Identifier: GPL-3.0-or-later
//
// The C interface: no exception leaves it, and what a program gets from it stays where it is until the next run.
#include "oxa/simulator.h"

#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "library/profiles/catalogue.h"
#include "simulator/board_file.h"
#include "simulator/simulator.h"

struct OxaSimulator {
    sim::Board board;
    std::vector<sim::Fault> faults;
    std::vector<std::array<uint8_t, SDR_SLOT_SIZE>> records;
    std::vector<DevTabEntry> entries;
};

namespace {

constexpr size_t kCapacity = 24576; // above what any board file can ask for
constexpr uint16_t kCountNotWritten = 0xFFFF;
constexpr size_t kTraceLimit = 1000; // the last line is all that is read of it

bool g_open = false;
std::string g_error;

void StartBoard(const OxaSimulator &simulator) {
    sim::KeepFilesInMemory();
    sim::RemoveMemoryFiles();
    sim::SetTraceLimit(kTraceLimit);
    sim::Start(simulator.board);
    for (const sim::Fault &fault : simulator.faults)
        sim::AddFault(fault);
}

const oxa::ProfileView &ProfileOf(const std::string &name) {
    std::string known;
    for (const oxa::ProfileView &profile : oxa::kProfiles) {
        if (oxa::DriverOf(profile.dwCustomId) == nullptr)
            continue;
        if (name == profile.pcName)
            return profile;
        known += (known.empty() ? "" : ", ") + std::string(profile.pcName);
    }
    throw std::invalid_argument("no profile '" + name + "' with a static driver; there are " + known);
}

// A pass that ends early returns right after the line that says why.
std::string WhyNoCount() {
    const auto lines = sim::LogTexts();
    return "the pass ended without a count" + (lines.empty() ? "" : "; its last line: " + lines.back());
}

void Run(OxaSimulator &simulator, const std::string &name) {
    const oxa::ProfileView &profile = ProfileOf(name);
    simulator.board.custom_id = profile.dwCustomId; // the machine belongs to the customer whose driver runs
    sim::ForgetLibraryState();
    StartBoard(simulator);
    sim::StaticArrays &arrays = sim::CallerArrays(kCapacity);
    arrays.count = kCountNotWritten;
    oxa::DriverOf(profile.dwCustomId)(arrays.slots, arrays.entries, &arrays.count);
    if (arrays.count == kCountNotWritten)
        throw std::runtime_error(WhyNoCount());
    simulator.entries.assign(arrays.entries, arrays.entries + arrays.count);
    simulator.records.resize(arrays.count);
    for (size_t i = 0; i < arrays.count; ++i)
        std::copy_n(arrays.slots + i * SDR_SLOT_SIZE, SDR_SLOT_SIZE, simulator.records[i].begin());
}

void KeepError(const std::exception &error) {
    g_error = error.what();
    while (!g_error.empty() && g_error.back() == '\n')
        g_error.pop_back();
}

} // namespace

extern "C" {

OxaSimulator *oxa_simulator_open(const char *pcBoardFile) try {
    if (pcBoardFile == nullptr)
        throw std::invalid_argument("no board file");
    if (g_open)
        throw std::logic_error("another board is open");
    sim::BoardFile file = sim::LoadBoard(pcBoardFile);
    auto *const simulator = new OxaSimulator{std::move(file.board), std::move(file.faults), {}, {}};
    g_open = true;
    StartBoard(*simulator);
    return simulator;
} catch (const std::exception &error) {
    KeepError(error);
    return nullptr;
}

int oxa_simulator_run(OxaSimulator *ptSim, const char *pcProfile) try {
    if (ptSim == nullptr || pcProfile == nullptr)
        throw std::invalid_argument(ptSim == nullptr ? "no board is open" : "no profile");
    ptSim->records.clear();
    ptSim->entries.clear();
    Run(*ptSim, pcProfile);
    return 0;
} catch (const std::exception &error) {
    KeepError(error);
    return -1;
}

size_t oxa_simulator_count(const OxaSimulator *ptSim) {
    return ptSim == nullptr ? 0 : ptSim->records.size();
}

const uint8_t *oxa_simulator_record(const OxaSimulator *ptSim, size_t nIndex) {
    return nIndex < oxa_simulator_count(ptSim) ? ptSim->records[nIndex].data() : nullptr;
}

const DevTabEntry *oxa_simulator_entry(const OxaSimulator *ptSim, size_t nIndex) {
    return nIndex < oxa_simulator_count(ptSim) ? &ptSim->entries[nIndex] : nullptr;
}

void oxa_simulator_close(OxaSimulator *ptSim) {
    g_open = g_open && ptSim == nullptr;
    delete ptSim;
}

const char *oxa_simulator_error(void) {
    return g_error.c_str();
}
}
