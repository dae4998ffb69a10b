// SPDX-License-Identifier: GPL-3.0-or-later
//
// The commands; each adds itself, with its options, to the command line.  A command whose result is printed and is no
// success ends with an ExitStatus.
#ifndef OXA_WORKBENCH_COMMANDS_COMMANDS_H
#define OXA_WORKBENCH_COMMANDS_COMMANDS_H

#include "base/command_line.h"

namespace workbench {

void AddListCommand(Command &program);
void AddShowCommand(Command &program);
void AddExportCommand(Command &program);
void AddReportCommand(Command &program);
void AddDiffCommand(Command &program);
void AddCheckCommand(Command &program);
void AddLockCommand(Command &program);
void AddVerifyCommand(Command &program);
void AddDoctorCommand(Command &program);
void AddEventCommand(Command &program);
void AddDecodeSelCommand(Command &program);
void AddServeCommand(Command &program);
void AddPushCommand(Command &program);
void AddAddRemoveCommands(Command &program); // add and remove
void AddScenarioCommand(Command &program);
void AddExploreCommand(Command &program);
void AddWhyCommand(Command &program);
void AddSchemaCommand(Command &program);
void AddReplayCommand(Command &program);
void AddBoardFromCommand(Command &program);
void AddSheetCommand(Command &program);      // sheet export, check, rows, image
void AddThresholdsCommand(Command &program); // thresholds show, set, preflight

// What shells and the build ask of the program; no command, and not in --help.
//   complete WORD...       candidates for the last word, a line each: the word, a tab, what it is; ":files" and
//                          ":folders" stand for names of files
//   generate man|bash|zsh|fish
bool IsToolWord(const std::string &word);
void RunToolWord(const CommandView &program, const std::vector<std::string> &words);

} // namespace workbench
#endif
