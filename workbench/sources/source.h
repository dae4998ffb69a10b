// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where sets come from: a profile on a board, a capture, a file of records, or a BMC on the network.  Every command that takes a
// source takes all of them.
#ifndef OXA_WORKBENCH_SOURCES_SOURCE_H
#define OXA_WORKBENCH_SOURCES_SOURCE_H

#include <string>

#include "base/command_line.h"
#include "runtime/bmc_options.h"
#include "sets/static_set.h"

namespace workbench {

constexpr char kSourceHelp[] =
    "PROFILE (on --board), PROFILE@BOARD, capture:FILE (what liboxacapture.so wrote), a file of 'ipmitool sdr dump',\n"
    "'oxa-sensors export' or 'list --json', or bmc://HOST[:PORT], which is asked for the thresholds in force too.\n";

// How often a repository changed last, of a BMC: what caches of it remember.
struct RepositoryStamps {
    uint8_t version = 0x51; // of the SDR commands
    uint32_t added_at = 0, erased_at = 0;
};

// A set and what it was made from.
struct SourceSet {
    StaticSet set;
    std::string label; // what the user wrote, completed by the board
    RepositoryStamps stamps;
};

// InputError for what is no source, and for a set that cannot be built or read; SetError for a BMC that does not answer.
SourceSet LoadSource(const std::string &text, const RunOptions &run, const LoginOptions &login);

// The same for a comparison: where there is no set there is nothing to compare, so that is an InputError too.
SourceSet LoadSourceToCompare(const std::string &text, const RunOptions &run, const LoginOptions &login);

// What a BMC holds; thresholds: those in force are asked for too, a command for each sensor.  SetError as above.
SourceSet ReadBmc(const sim::Bmc &bmc, const std::string &label, bool thresholds);

// --board, --profile, --from, --trace, --log and what a session needs: the options of commands about one set.
struct SourceOptions {
    RunOptions run;
    std::string from; // empty: the board
    LoginOptions login;
};

void AddSourceOptions(Command &command, SourceOptions &options, const std::string &more_of_profile = "");
void AddFromOption(Command &command, std::string &from);

// The set of --from, else the board's, built in this process; `command` is named when there is neither.
SourceSet LoadSource(const SourceOptions &options, const std::string &command);

// "profile kestrin, board boards/base_48.toml", "bmc://10.0.0.1".
std::string OriginText(const StaticSet &set);

} // namespace workbench
#endif
