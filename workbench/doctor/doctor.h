// SPDX-License-Identifier: GPL-3.0-or-later
//
// What is wrong with the files of a machine, each alone and against one another and the repository; what the library does
// with it at its next start; and the files as they ought to be.
#ifndef OXA_WORKBENCH_DOCTOR_DOCTOR_H
#define OXA_WORKBENCH_DOCTOR_DOCTOR_H

#include <optional>
#include <string>
#include <vector>

#include "doctor/machine.h"
#include "sets/static_set.h"

namespace workbench {

struct FileFinding {
    std::string rule; // one of FileRules()
    Which file;
    std::string place; // "slot 3"; empty: the file as a whole
    std::string text;
    std::string then; // what the library does with it
    std::string mend; // what a mended copy has instead; empty: the same
};
// Words and what they mean.
std::vector<std::pair<std::string, std::string>> FileRules();

struct Patient {
    Machine machine;
    std::optional<uint32_t> custom_id = {};             // profile of the machine, where it is known
    std::optional<std::vector<Record>> static_set = {}; // of its board, where that is known
};

struct Diagnosis {
    std::vector<FileFinding> findings; // by file, in the order of Which
    std::array<std::string, kFiles> holds;
    Machine mended;
};

// The simulated platform must have been started: the library itself tells what a device-table entry looks like.
Diagnosis Diagnose(const Patient &patient);

// What the library makes of the files when its process starts: it is started on them, with the files in memory
// (sim::KeepFilesInMemory).  A line each.
std::vector<std::string> NextStart(const Machine &machine, uint32_t custom_id);

} // namespace workbench
#endif
