// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors: what the library builds for a board, decoded.
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <sstream>
#include <string_view>
#include <unistd.h>

#include "base/errors.h"
#include "base/json.h"
#include "base/notes.h"
#include "base/output.h"
#include "commands/commands.h"
#include "simulator/simulator.h"

namespace {

using namespace workbench;

// In the order of --help.
void AddCommands(Command &program) {
    program.Footer(
        "Exit status: 0 done; 1 not done, or not as expected (COMMAND --help says what); 2 wrong input.");
    program.Example("oxa-sensors list --board boards/base_48.toml");
    AddListCommand(program);
    AddShowCommand(program);
    AddWhyCommand(program);
    AddExportCommand(program);
    AddReportCommand(program);
    AddDiffCommand(program);
    AddCheckCommand(program);
    AddLockCommand(program);
    AddVerifyCommand(program);
    AddDoctorCommand(program);
    AddEventCommand(program);
    AddDecodeSelCommand(program);
    AddServeCommand(program);
    AddPushCommand(program);
    AddAddRemoveCommands(program);
    AddScenarioCommand(program);
    AddExploreCommand(program);
    AddThresholdsCommand(program);
    AddSchemaCommand(program);
    AddSheetCommand(program);
    AddReplayCommand(program);
    AddBoardFromCommand(program);
}

// Whether the line asks for JSON, also when the rest of it cannot be understood.
bool WantsJson(int argc, char **argv) {
    return std::find(argv + 1, argv + argc, std::string_view("--json")) != argv + argc;
}

// An error that tells of several mistakes has a line for each.
int Fail(const std::string &text, int status, bool json) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::fprintf(stderr, "oxa-sensors: %s\n", line.c_str());
    if (json && !AnythingPrinted())
        WriteAll(STDOUT_FILENO, ErrorDocument(text, status)); // nobody is left to hear that it failed
    return status;
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is seen where it is written to
    std::signal(SIGXFSZ, SIG_IGN); // and so is the limit of a file's size
    sim::RemoveRootWhenInterrupted();
    const bool json = argc > 0 && WantsJson(argc, argv);
    if (json)
        KeepNotesBack();
    try {
        if (argc > 1 && IsToolWord(argv[1]))
            return RunToolWord(ViewProgram(AddCommands), {argv + 1, argv + argc}), kOk;
        return RunCommandLine(argc, argv, AddCommands);
    } catch (const ExitStatus &end) {
        return end.status;
    } catch (const sim::StorageError &error) {
        return Fail(error.what(), kBadInput, json);
    } catch (const InputError &error) {
        return Fail(error.what(), kBadInput, json);
    } catch (const SetError &error) {
        return Fail(error.what(), kNoSet, json);
    } catch (const std::exception &error) {
        return Fail(std::string("unexpected: ") + error.what(), kNoSet, json);
    }
}
