// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors serve: BMC simulators that hold boards' sets, with readings.
#include "commands/serve.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/errors.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/serve_thresholds.h"
#include "sets/run_options.h"

namespace workbench {
namespace {

struct ServeOptions {
    RunOptions run; // the board is one of `boards` in turn
    std::vector<std::string> boards;
    bool empty = false;
    uint16_t port = 9001;
    std::string command; // to run instead of waiting
    std::string user_thresholds;
    bool json = false;
};

using ServedMachines = std::vector<std::unique_ptr<ServedMachine>>;

constexpr timespec kLookAgain{0, 100'000'000}; // for sensors that were added

// ---- what ends it ------------------------------------------------------------------------------------

// SIGINT, SIGTERM, SIGHUP and the end of a child wait to be fetched, as long as this lives.
class Signals {
public:
    Signals() {
        sigemptyset(&set_);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGCHLD})
            sigaddset(&set_, signal);
        sigprocmask(SIG_BLOCK, &set_, &before_);
    }
    ~Signals() {
        while (Wait({}) != 0) {
        }
        sigprocmask(SIG_SETMASK, &before_, nullptr);
    }
    // 0: the time is over.
    int Wait(const timespec &time) const {
        const int signal = sigtimedwait(&set_, nullptr, &time);
        return signal < 0 ? 0 : signal;
    }
    const sigset_t &before() const {
        return before_;
    }

private:
    sigset_t set_{}, before_{};
};

// ---- the machines ------------------------------------------------------------------------------------

void Settle(ServeOptions &options) {
    if (options.empty && !options.boards.empty())
        throw InputError("--empty contradicts --board");
    if (options.user_thresholds != "" && (options.empty || options.boards.size() > 1))
        throw InputError("--user-thresholds goes with one board");
    if (!options.run.profile.empty())
        NamedProfile(options.run.profile); // an empty repository would not ask for it
    if (options.empty)
        options.boards = {""};
    if (options.boards.empty())
        options.boards = {EnvironmentValue(kBoardVariable)};
    if (!options.empty && options.boards.front().empty())
        throw InputError("serve: which board? --board FILE, or --empty");
    if (!options.user_thresholds.empty())
        RefuseUnwritable(options.user_thresholds);
}

// The sets first: a board without one is told before there is anything to leave behind.
ServedMachines Start(const ServeOptions &options) {
    std::vector<RunOptions> runs;
    std::vector<StaticSet> sets;
    for (const std::string &board : options.boards) {
        runs.push_back(options.run);
        runs.back().board = board;
        if (!options.empty)
            runs.back().profile = SettledProfile(options.run.profile, board);
        sets.push_back(options.empty ? StaticSet() : BuildStaticSetApart(runs.back()));
    }
    ServedMachines out;
    for (size_t i = 0; i < runs.size(); ++i) {
        const size_t port = options.port == 0 ? 0 : options.port + i;
        if (port > 65535)
            throw InputError("--port " + std::to_string(options.port) + ": no port is left for " +
                             runs[i].board);
        out.push_back(
            std::make_unique<ServedMachine>(runs[i], std::move(sets[i]), static_cast<uint16_t>(port)));
    }
    return out;
}

// ---- what is told ------------------------------------------------------------------------------------

std::string Addresses(const ServedMachines &machines) {
    std::vector<std::string> out;
    for (const auto &machine : machines)
        out.push_back(AddressOf(*machine));
    return Join(out, " ");
}

std::string TextOf(const ServedMachines &machines, bool waits) {
    if (machines.size() == 1)
        return WelcomeText(*machines.front(), waits);
    Table table({{"BMC"}, {"BOARD"}, {"PROFILE"}, {"SENSORS", true}, {"READINGS"}});
    for (const auto &machine : machines)
        table.Add({{AddressOf(*machine), Style::kBold},
                   {machine->run().board},
                   {machine->run().profile},
                   {std::to_string(machine->sensors().size())},
                   {machine->readings()}});
    return table.Render(ColourWanted()) + "\n" + std::to_string(machines.size()) + " machines" +
           (waits ? "; Ctrl-C ends them.\n" : ".\n");
}

std::string JsonOf(const ServedMachines &machines) {
    if (machines.size() == 1)
        return Dump(WelcomeJson(*machines.front()));
    Json list = Json::array();
    for (const auto &machine : machines)
        list.push_back(WelcomeJson(*machine));
    return Dump({{"machines", list}});
}

// ---- the command's life ------------------------------------------------------------------------------

// What --run runs; ends with this object at the latest.
class ShellCommand {
public:
    ShellCommand(const ServedMachines &machines, const std::string &command, const sigset_t &mask) {
        std::fflush(nullptr);
        process_ = fork();
        if (process_ < 0)
            throw SetError(std::string("no process: ") + std::strerror(errno));
        if (process_ != 0)
            return;
        const ServedMachine &first = *machines.front();
        setenv("OXA_BMC", AddressOf(first).c_str(), 1);
        setenv("OXA_BMCS", Addresses(machines).c_str(), 1);
        setenv("OXA_IPMITOOL", IpmiTool(first).c_str(), 1);
        setenv("OXA_IPMI_SENSORS", FreeIpmi(first, "ipmi-sensors").c_str(), 1);
        setenv("OXA_READINGS", first.readings().c_str(), 1);
        sigprocmask(SIG_SETMASK, &mask, nullptr);
        std::signal(SIGPIPE, SIG_DFL);
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    ~ShellCommand() {
        if (process_ <= 0)
            return;
        kill(process_, SIGTERM);
        for (int tries = kEndMs / kLookMs; tries > 0; --tries) {
            if (waitpid(process_, nullptr, WNOHANG) != 0)
                return;
            usleep(kLookMs * 1000);
        }
        kill(process_, SIGKILL); // it does not listen, and nobody waits for ever
        waitpid(process_, nullptr, 0);
    }
    ShellCommand(const ShellCommand &) = delete;
    ShellCommand &operator=(const ShellCommand &) = delete;

    // The exit status of a command that has ended; nothing while it runs.
    std::optional<int> Ended() {
        int status = 0;
        if (waitpid(process_, &status, WNOHANG) != process_)
            return std::nullopt;
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    static constexpr int kEndMs = 2000, kLookMs = 20; // to end by itself

    pid_t process_ = -1;
};

// Until a signal, the command's end or a simulator's.
int WaitForTheEnd(const ServeOptions &options, const ServedMachines &machines, const Signals &signals) {
    std::optional<ThresholdKeeper> thresholds;
    if (!options.user_thresholds.empty())
        thresholds.emplace(options.user_thresholds, *machines.front());
    std::optional<ShellCommand> command;
    if (!options.command.empty())
        command.emplace(machines, options.command, signals.before());
    for (;;) {
        for (const auto &machine : machines)
            machine->Pass();
        if (thresholds)
            thresholds->Pass();
        std::optional<int> status = command ? command->Ended() : std::nullopt;
        if (const int signal = status ? 0 : signals.Wait(kLookAgain); signal != 0 && signal != SIGCHLD)
            status = kOk;
        if (!status)
            continue;
        if (thresholds)
            thresholds->Pass(true);
        return *status;
    }
}

// The exit status.
int Serve(ServeOptions &options) {
    Settle(options);
    const Signals signals; // before there is anything to leave behind
    const ServedMachines machines = Start(options);
    if (options.command.empty() || options.json)
        PrintOut(options.json ? JsonOf(machines) : TextOf(machines, options.command.empty()));
    return WaitForTheEnd(options, machines, signals);
}

// What is done beside serving.
void AddWorkOptions(Command &command, ServeOptions &options) {
    command
        .AddOption(
            "--run", options.command,
            "Run a shell command beside the BMC, then end with its exit status; OXA_BMC is the "
            "address (of several machines the first one's, and OXA_BMCS all), OXA_IPMITOOL and OXA_IPMI_SENSORS begin "
            "command lines, OXA_READINGS is the folder")
        .Takes("COMMAND");
    command
        .AddOption(
            "--user-thresholds", options.user_thresholds,
            "File of user thresholds that gets those that somebody sets at the BMC; made when it is not there")
        .Takes("FILE");
}

} // namespace

void AddServeCommand(Command &program) {
    Command command =
        program.AddCommand("serve", "Put a board's set behind a real BMC simulator, with readings");
    const auto options = std::make_shared<ServeOptions>();
    command
        .AddOption(
            "-b,--board", options->boards,
            "Board description (TOML), several times for several machines; default: OXA_BOARD, unless --empty "
            "is given")
        .Takes("FILE")
        .OneValueEach()
        .Completes(CompleteBoards);
    AddProfileOption(command, options->run.profile,
                     "Customer profile: " + AvailableProfiles() + "; default: the board's");
    command.AddFlag("--empty", options->empty,
                    "An empty repository, for add, remove and scenario with --bmc");
    command
        .AddOption("--port", options->port,
                   "UDP port on 127.0.0.1, of several machines the first one's; 0: one that is free")
        .Takes("N")
        .ShowsDefault();
    AddWorkOptions(command, *options);
    AddTraceOptions(command, options->run.trace, options->run.log);
    command.AddFlag("--json", options->json, "Tell address, readings and sensors as JSON");
    command.Footer("Exit status: 0 ended by a signal (--run: the command's); 1 the library built no usable "
                   "set, or there is no BMC simulator; 2 wrong input.");
    command.Example("oxa-sensors serve --board boards/base_48.toml --run '$OXA_IPMITOOL sdr elist all'");
    command.Runs([options] {
        if (const int status = Serve(*options); status != kOk)
            throw ExitStatus(status);
    });
}

} // namespace workbench
