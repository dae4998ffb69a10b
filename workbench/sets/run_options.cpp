// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/run_options.h"

#include "base/text.h"

namespace workbench {
namespace {

// "Kestrin" and "1" are kestrin; what is unknown is refused where it is known which profiles will do.
std::string UsualName(const std::string &given) {
    constexpr const char *kAll = "all";
    const Profile *profile = ProfileNamed(given);
    return profile != nullptr ? profile->name : SameName(given, kAll) ? kAll : given;
}

} // namespace

Option AddBoardOption(Command &command, std::string &board, const std::string &about) {
    return command.AddOption("-b,--board", board, about).Takes("FILE").FromEnvironment(kBoardVariable);
}

Option AddProfileOption(Command &command, std::string &profile, const std::string &about) {
    return command.AddOption("-p,--profile", profile, about)
        .Takes("NAME")
        .FromEnvironment(kProfileVariable)
        .Becomes(UsualName);
}

void AddRunOptions(Command &command, RunOptions &run, const std::string &more) {
    AddBoardOption(command, run.board, "Board description (TOML)").Required();
    AddProfileOption(command, run.profile,
                     "Customer profile: " + AvailableProfiles() + more + "; default: the board's");
    AddTraceOptions(command, run.trace, run.log);
    command.Footer(
        "Exit status: 0 done; 1 the library built no usable set; 2 wrong input (nothing is written).");
}

void AddFilterOption(Command &command, std::vector<std::string> &filter) {
    command
        .AddOption(
            "-f,--filter", filter,
            "Only sensors of this name, or whose name matches, e.g. 'CPU_*', in any case; several times for "
            "several")
        .Takes("GLOB")
        .OneValueEach();
}

void AddTraceOptions(Command &command, bool &trace, bool &log) {
    command.AddFlag("--trace", trace, "Print everything that crossed the platform border to standard error");
    command.AddFlag("--log", log, "Print the library's log lines to standard error");
}

} // namespace workbench
