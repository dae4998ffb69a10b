// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/errors.h"
#include "replay/captured_board.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sources/source.h"

namespace workbench {

void AddFromOption(Command &command, std::string &from) {
    command
        .AddOption(
            "--from", from,
            "Another source than the board: a file of records ('ipmitool sdr dump', 'export', 'list --json'), "
            "capture:FILE, bmc://HOST[:PORT], or PROFILE@BOARD")
        .Takes("SOURCE")
        .Completes(CompleteProfiles);
}

void AddSourceOptions(Command &command, SourceOptions &options, const std::string &more_of_profile) {
    AddBoardOption(command, options.run.board, "Board description (TOML)");
    AddProfileOption(command, options.run.profile,
                     "Customer profile: " + AvailableProfiles() + more_of_profile + "; default: the board's");
    AddFromOption(command, options.from);
    AddLoginOptions(command, options.login);
    AddTraceOptions(command, options.run.trace, options.run.log);
    command.Footer(
        "Exit status: 0 done; 1 the library built no usable set, or the BMC gives none; 2 wrong input (nothing is\n"
        "written).");
}

namespace {

// What the source did not ask for would be ignored; the environment's is a default, which may be.
void RefuseOtherBoard(const SourceOptions &options, const StaticSet &set) {
    const std::string &given = options.run.board;
    if (!given.empty() && given != set.board && given != EnvironmentValue(kBoardVariable))
        throw InputError("--board " + given + " contradicts --from " + options.from);
}

// Records do not tell whose they are; a source that does cannot be another's.
void SettleProfile(const SourceOptions &options, StaticSet &set) {
    const std::string &given = options.run.profile;
    if (given.empty())
        return;
    const Profile &profile = NamedProfile(given);
    if (set.profile == nullptr)
        set.profile = &profile;
    if (set.profile != &profile && ProfileNamed(EnvironmentValue(kProfileVariable)) != &profile)
        throw InputError("--profile " + given + " contradicts --from " + options.from + ", which is of " +
                         set.profile->name);
}

} // namespace

SourceSet LoadSource(const SourceOptions &options, const std::string &command) {
    if (options.from.empty() && options.run.board.empty())
        throw InputError("--board is required, or --from SOURCE (see oxa-sensors " + command + " --help)");
    if (options.from.empty())
        return {BuildStaticSet(options.run), options.run.board, {}};
    const bool under_another = NamesCapture(options.from) && !options.run.profile.empty();
    SourceSet out = LoadSource((under_another ? options.run.profile + "@" : "") + options.from, options.run,
                               options.login);
    RefuseOtherBoard(options, out.set);
    SettleProfile(options, out.set);
    return out;
}

std::string OriginText(const StaticSet &set) {
    const std::string profile =
        set.profile != nullptr ? std::string("profile ") + set.profile->name + ", " : "";
    return profile + (set.board.empty() ? set.source : "board " + BoardText(set.board));
}

} // namespace workbench
