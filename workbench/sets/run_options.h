// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which machine a command is about: --board, else OXA_BOARD; --profile, else OXA_PROFILE, else the board's own, else
// default.  And the options of every command that builds one set: these two, --trace, --log.
#ifndef OXA_WORKBENCH_SETS_RUN_OPTIONS_H
#define OXA_WORKBENCH_SETS_RUN_OPTIONS_H

#include <string>
#include <vector>

#include "base/command_line.h"
#include "sets/static_set.h"

namespace workbench {

constexpr char kBoardVariable[] = "OXA_BOARD";
constexpr char kProfileVariable[] = "OXA_PROFILE";

Option AddBoardOption(Command &command, std::string &board, const std::string &about);
Option AddProfileOption(Command &command, std::string &profile, const std::string &about);
// The same, several times for several.
Option AddBoardsOption(Command &command, std::vector<std::string> &boards, const std::string &about);
Option AddProfilesOption(Command &command, std::vector<std::string> &profiles, const std::string &about);

// What shells offer: the boards of a folder "boards", every profile, the names in the set of the board that is given.
std::vector<std::string> CompleteBoards(const GivenWords &given);
std::vector<std::string> CompleteProfiles(const GivenWords &given);
std::vector<std::string> CompleteSensors(const GivenWords &given);

// `more` is added to the list of profiles.
void AddRunOptions(Command &command, RunOptions &run, const std::string &more = "");
void AddFilterOption(Command &command, std::vector<std::string> &filter); // see sets/select.h
void AddTraceOptions(Command &command, bool &trace, bool &log);

} // namespace workbench
#endif
