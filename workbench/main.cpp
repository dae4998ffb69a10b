// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors: what the library builds for a board, decoded.
#include <csignal>
#include <cstdio>

#include "base/errors.h"
#include "commands/commands.h"

namespace {

using namespace workbench;

// In the order of --help.
void AddCommands(Command &program) {
    program.Footer(
        "Exit status: 0 done; 1 not done, or not as expected (COMMAND --help says what); 2 wrong input.\n"
        "Colour is used on a terminal only; NO_COLOR switches it off.");
    AddListCommand(program);
    AddShowCommand(program);
    AddExportCommand(program);
    AddDiffCommand(program);
    AddCheckCommand(program);
    AddEventCommand(program);
    AddDecodeSelCommand(program);
    AddServeCommand(program);
    AddAddRemoveCommands(program);
    AddScenarioCommand(program);
    AddThresholdsCommand(program);
}

int Fail(const std::exception &error, int status) {
    std::fprintf(stderr, "oxa-sensors: %s\n", error.what());
    return status;
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is seen where it is written to
    try {
        return RunCommandLine(argc, argv, AddCommands);
    } catch (const ExitStatus &end) {
        return end.status;
    } catch (const InputError &error) {
        return Fail(error, kBadInput);
    } catch (const SetError &error) {
        return Fail(error, kNoSet);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "oxa-sensors: unexpected: %s\n", error.what());
        return kNoSet;
    }
}
