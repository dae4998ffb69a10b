// SPDX-License-Identifier: GPL-3.0-or-later
//
// Setting up the simulated platform for commands about run time: board and profile, files that stay, a
// repository that stays.
#ifndef OXA_WORKBENCH_RUNTIME_PLATFORM_H
#define OXA_WORKBENCH_RUNTIME_PLATFORM_H

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/simulator.h"

namespace workbench {

// Board of a file, for the profile (empty: the board's own).  InputError.
sim::Board LoadBoardFor(const std::string &path, const std::string &profile);

struct RepositoryState {
    std::vector<sim::RepositoryRecord> records;
    uint16_t next_id = 1;
};

// Starts the platform; the repository holds what is given and goes on from there.
void StartWith(sim::Board board, const std::vector<sim::Fault> &faults, const RepositoryState &repository);
RepositoryState CurrentRepository();

// Records back to back with their ids, as export writes them.
struct RecordsRead {
    RepositoryState state; // up to the first fault
    size_t whole = 0;      // bytes of these records
    std::string fault;     // "record 3: the file ends within it"; empty: none
};
RecordsRead ReadRecords(const std::string &bytes);
std::string RecordsBytes(const RepositoryState &repository); // what was sent behind a record is none of it
RepositoryState LoadRepository(const std::string &path);     // InputError
void SaveRepository(const std::string &path, const RepositoryState &repository);

} // namespace workbench
#endif
