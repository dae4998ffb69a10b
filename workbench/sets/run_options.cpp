// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/run_options.h"

#include <filesystem>

#include "base/text.h"
#include "sets/decode.h"

namespace workbench {
namespace {

// "Kestrin" and "1" are kestrin; what is unknown is refused where it is known which profiles will do.
std::string UsualName(const std::string &given) {
    constexpr const char *kAll = "all";
    const Profile *profile = ProfileNamed(given);
    return profile != nullptr ? profile->name : SameName(given, kAll) ? kAll : given;
}

Option AsBoard(Option option) {
    return option.Takes("FILE").FromEnvironment(kBoardVariable).Completes(CompleteBoards);
}

Option AsProfile(Option option) {
    return option.Takes("NAME")
        .FromEnvironment(kProfileVariable)
        .Becomes(UsualName)
        .Completes(CompleteProfiles);
}

} // namespace

std::vector<std::string> CompleteBoards(const GivenWords &) {
    std::vector<std::string> out;
    std::error_code ignored;
    for (const auto &file : std::filesystem::directory_iterator("boards", ignored))
        if (file.path().extension() == ".toml")
            out.push_back(file.path().string());
    return out;
}

std::vector<std::string> CompleteProfiles(const GivenWords &) {
    std::vector<std::string> out;
    for (const Profile *profile : AllProfiles())
        out.push_back(profile->name);
    return out;
}

std::vector<std::string> CompleteSensors(const GivenWords &given) {
    const auto value = [&given](const char *option, const char *variable) {
        const auto found = given.options.find(option);
        return found != given.options.end() ? found->second : EnvironmentValue(variable);
    };
    RunOptions run;
    run.board = value("--board", kBoardVariable);
    run.profile = value("--profile", kProfileVariable);
    std::vector<std::string> out;
    const StaticSet set = BuildStaticSet(run);
    const Decoder decoder;
    for (const Sensor &sensor : set.sensors)
        out.push_back(decoder.Decode(sensor).name);
    return out;
}

Option AddBoardOption(Command &command, std::string &board, const std::string &about) {
    return AsBoard(command.AddOption("-b,--board", board, about));
}

Option AddBoardsOption(Command &command, std::vector<std::string> &boards, const std::string &about) {
    return AsBoard(command.AddOption("-b,--board", boards, about)).OneValueEach();
}

Option AddProfileOption(Command &command, std::string &profile, const std::string &about) {
    return AsProfile(command.AddOption("-p,--profile", profile, about));
}

Option AddProfilesOption(Command &command, std::vector<std::string> &profiles, const std::string &about) {
    return AsProfile(command.AddOption("-p,--profile", profiles, about)).OneValueEach();
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
