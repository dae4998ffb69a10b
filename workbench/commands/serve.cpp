// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors serve: a BMC simulator that holds a board's set, with readings.
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "serve/bmc.h"
#include "serve/fru.h"
#include "serve/readings.h"
#include "serve/sensors.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sets/set_numbers.h"

namespace workbench {
namespace {

struct ServeOptions {
    RunOptions run;
    bool empty = false;
    uint16_t port = 9001;
    std::string command; // to run instead of waiting
    bool json = false;
};

struct Served {
    StaticSet set; // empty with --empty
    std::vector<ServedSensor> sensors;
    std::string folder;
    uint16_t port = 0;
    std::optional<ReadingFiles> files;
    const std::string &readings() const {
        return files->readings();
    }
};

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

// ---- the simulator's files ---------------------------------------------------------------------------

constexpr const char *kController = "mc_setbmc 0x20\n"
                                    "mc_add 0x20 0 no-device-sdrs 0x23 9 8 0x9f 0x1291 0xf02\n"
                                    "sel_enable 0x20 1000 0x0a\n";

std::string Machine(const ServeOptions &options) {
    return options.empty ? "empty repository" : std::filesystem::path(options.run.board).stem().string();
}

void WriteFiles(const ServeOptions &options, Served &served, const std::string &plugin) {
    for (const char *name : {"/state", "/cache"})
        if (mkdir((served.folder + name).c_str(), 0700) != 0)
            throw InputError(served.folder + name + ": cannot make a folder");
    served.files.emplace(served.folder);
    std::string commands =
        kController + FruCommands(Machine(options), options.empty ? "" : "profile " + options.run.profile);
    for (const ServedSensor &sensor : served.sensors) {
        commands += SimulatorCommands(sensor, served.files->raw());
        served.files->Put(sensor);
    }
    WriteTemporaryFile(served.folder + "/set.sdr", RawText(served.set));
    WriteTemporaryFile(served.folder + "/sim.emu", commands + "mc_enable 0x20\n");
    WriteTemporaryFile(served.folder + "/lan.conf",
                       LanConfiguration(plugin, served.folder + "/set.sdr", served.port));
}

// ---- sensors that are added --------------------------------------------------------------------------

// The records that the repository was given since the last time, in their order.
std::vector<Sensor> FetchAdded(const std::string &path, std::streamoff &at) {
    std::vector<Sensor> out;
    std::ifstream file(path, std::ios::binary);
    Sensor sensor;
    char *bytes = reinterpret_cast<char *>(sensor.record.data());
    constexpr std::streamsize kHeader = 5;
    for (file.seekg(at); file.read(bytes, kHeader); sensor = {}) {
        const std::streamsize rest = RecordSize(sensor.record) - kHeader;
        if (rest > SDR_SLOT_SIZE - kHeader || !file.read(bytes + kHeader, rest))
            break; // the rest of it is still being written
        at += kHeader + rest;
        sensor.ordinal = sensor.record[SDR_RECORD_ID] | sensor.record[SDR_RECORD_ID + 1] << 8;
        out.push_back(sensor);
    }
    return out;
}

bool IsNewSensor(const Served &served, const Record &record) {
    const bool has_reading = record[SDR_RECORD_TYPE] == 1 || record[SDR_RECORD_TYPE] == 2; // full, compact
    return has_reading &&
           std::none_of(served.sensors.begin(), served.sensors.end(), [&](const ServedSensor &other) {
               return other.sensor.record[SDR_SENSOR_NUM] == record[SDR_SENSOR_NUM] &&
                      other.sensor.record[SDR_OWNER_LUN] == record[SDR_OWNER_LUN];
           });
}

// A sensor that came over the network gets a reading like those of the set.
void ServeAdded(Served &served, std::streamoff &at, SimulatorProcess &simulator) {
    for (const Sensor &sensor : FetchAdded(served.folder + "/set.sdr.added", at)) {
        if (!IsNewSensor(served, sensor.record))
            continue;
        try {
            ServedSensor added = SensorToServe(sensor);
            if (std::filesystem::exists(served.readings() + "/" + added.file))
                added.file.append(".").append(std::to_string(sensor.ordinal));
            served.files->Put(added);
            simulator.Command(SimulatorCommands(added, served.files->raw()));
            served.sensors.push_back(std::move(added));
        } catch (const SetError &) {
            // a record that nobody can read has no reading either
        }
    }
}

// ---- what there is to try ----------------------------------------------------------------------------

std::string Address(const Served &served) {
    return "127.0.0.1:" + std::to_string(served.port);
}

std::string IpmiTool(const Served &served) {
    return "ipmitool -I lanplus -C 3 -H 127.0.0.1 -p " + std::to_string(served.port) + " -U ipmiusr -P test";
}

// FreeIPMI reads sensors of other LUNs than 0 only when it may bridge.
std::string FreeIpmi(const Served &served, const std::string &program) {
    const bool far = !served.sensors.empty() && served.sensors.back().decoded.owner_lun != 0;
    return program + " -D LAN_2_0 -W opensesspriv -l ADMIN -h " + Address(served) +
           " -u ipmiusr -p test --sdr-cache-directory=" + served.folder +
           "/cache --quiet-cache --sdr-cache-recreate" +
           (far && program == "ipmi-sensors" ? " --bridge-sensors" : "");
}

// The sensor to show how a limit is passed: the first one that has an upper critical limit.
const ServedSensor *Example(const Served &served) {
    for (const ServedSensor &sensor : served.sensors)
        if (RawAboveCritical(sensor) >= 0)
            return &sensor;
    return served.sensors.empty() ? nullptr : &served.sensors.front();
}

std::string HowToPush(const Served &served) {
    const ServedSensor *example = Example(served);
    if (example == nullptr)
        return "\nEvery sensor that is added gets a file in " + served.readings() +
               " with its reading, a value with its unit,\na raw byte, or the bits of the states that are on.\n";
    std::string out =
        "\nEvery sensor's reading is in a file of " + served.readings() +
        ",\na value with its unit or a raw byte (bits of the states that are on). To push one:\n\n";
    const int raw = RawAboveCritical(*example);
    const std::string file = " > " + served.readings() + "/" + example->file;
    if (raw < 0)
        return out + "  echo 1" + file + "\n";
    const Reading &reading = *example->decoded.reading;
    out += "  echo '" + ReadingText(reading, static_cast<unsigned>(raw)) + "'" + file +
           "   # above the upper critical limit of " +
           ReadingText(reading, example->decoded.FindThreshold(FULL_SDR_UC)->raw);
    return out + "\n";
}

std::string Welcome(const ServeOptions &options, const Served &served) {
    const std::string what = options.empty ? "An empty repository"
                                           : std::to_string(served.sensors.size()) + " sensors of " +
                                                 BoardText(options.run.board) + ", profile " +
                                                 options.run.profile + ",";
    std::string out = what + " on a BMC at 127.0.0.1 port " + std::to_string(served.port) +
                      (options.command.empty() ? "; Ctrl-C ends it.\n\n" : ".\n\n");
    for (const char *words : {" sdr elist all", " sel elist", " fru"})
        out += "  " + IpmiTool(served) + words + "\n";
    out += "  " + FreeIpmi(served, "ipmi-sensors") + "\n";
    return out + "  oxa-sensors event addDiskSEL 4 3 22 0 --bmc " + Address(served) + "\n" +
           HowToPush(served);
}

std::string WelcomeJson(const ServeOptions &options, const Served &served) {
    Json sensors = Json::array();
    for (const ServedSensor &s : served.sensors)
        sensors.push_back({{"name", s.decoded.name},
                           {"record_id", s.sensor.ordinal},
                           {"sensor_number", s.decoded.sensor_number},
                           {"owner_lun", s.decoded.owner_lun},
                           {"reading_file", served.readings() + "/" + s.file},
                           {"reading", s.reading}});
    return Dump(
        {{"host", "127.0.0.1"},
         {"port", served.port},
         {"user", "ipmiusr"},
         {"password", "test"},
         {"board", options.empty ? Json(nullptr) : Json(options.run.board)},
         {"profile", options.empty ? Json(nullptr) : ProfileJson(NamedProfile(options.run.profile).id)},
         {"ipmitool", IpmiTool(served)},
         {"ipmi_sensors", FreeIpmi(served, "ipmi-sensors")},
         {"readings", served.readings()},
         {"sensors", sensors}});
}

// ---- the command's life ------------------------------------------------------------------------------

void Settle(ServeOptions &options) {
    if (options.empty && !options.run.board.empty())
        throw InputError("--empty contradicts --board");
    if (options.empty)
        return;
    if (options.run.board.empty())
        options.run.board = EnvironmentValue(kBoardVariable);
    if (options.run.board.empty())
        throw InputError("serve: which board? --board FILE, or --empty");
    options.run.profile = SettledProfile(options.run.profile, options.run.board);
}

// What --run runs; ends with this object at the latest.
class ShellCommand {
public:
    ShellCommand(const Served &served, const std::string &command, const sigset_t &mask) {
        std::fflush(nullptr);
        process_ = fork();
        if (process_ != 0)
            return;
        setenv("OXA_BMC", Address(served).c_str(), 1);
        setenv("OXA_IPMITOOL", IpmiTool(served).c_str(), 1);
        setenv("OXA_IPMI_SENSORS", FreeIpmi(served, "ipmi-sensors").c_str(), 1);
        setenv("OXA_READINGS", served.readings().c_str(), 1);
        sigprocmask(SIG_SETMASK, &mask, nullptr);
        std::signal(SIGPIPE, SIG_DFL);
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    ~ShellCommand() {
        if (process_ <= 0)
            return;
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
    ShellCommand(const ShellCommand &) = delete;
    ShellCommand &operator=(const ShellCommand &) = delete;

    // The exit status of a command that has ended; nothing while it runs.
    std::optional<int> Ended() {
        int status = 0;
        if (process_ > 0 && waitpid(process_, &status, WNOHANG) != process_)
            return std::nullopt;
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t process_ = -1;
};

// Until a signal, the command's end or the simulator's.
int WaitForTheEnd(const ServeOptions &options, Served &served, const Signals &signals,
                  SimulatorProcess &simulator) {
    std::optional<ShellCommand> command;
    if (!options.command.empty())
        command.emplace(served, options.command, signals.before());
    for (std::streamoff fetched = 0;;) {
        ServeAdded(served, fetched, simulator);
        served.files->Pass(served.sensors);
        if (const auto status = command ? command->Ended() : std::nullopt)
            return *status;
        if (!simulator.IsRunning())
            throw SetError("ipmi_sim has ended: " + simulator.LastWords());
        if (const int signal = signals.Wait(kLookAgain); signal != 0 && signal != SIGCHLD)
            return kOk;
    }
}

// The exit status.
int Serve(ServeOptions &options) {
    Settle(options);
    Served served;
    if (!options.empty) {
        served.set = BuildStaticSetApart(options.run);
        served.sensors = SensorsToServe(served.set);
    }
    served.port = SettlePort(options.port);
    const std::string program = FindSimulator();
    const std::string plugin = FindPlugin();
    const Signals signals; // before there is anything to leave behind
    const TemporaryFolder folder;
    served.folder = folder.path();
    WriteFiles(options, served, plugin);
    SimulatorProcess simulator(program, served.folder, served.port);
    if (const unsigned count = CountRecordsAndSetClock(served.port); count != served.sensors.size())
        throw SetError("ipmi_sim holds " + std::to_string(count) + " of " +
                       std::to_string(served.sensors.size()) + " records: " + simulator.LastWords());
    if (options.command.empty() || options.json)
        PrintOut(options.json ? WelcomeJson(options, served) : Welcome(options, served));
    return WaitForTheEnd(options, served, signals, simulator);
}

} // namespace

void AddServeCommand(Command &program) {
    Command command =
        program.AddCommand("serve", "Put a board's set behind a real BMC simulator, with readings");
    const auto options = std::make_shared<ServeOptions>();
    command
        .AddOption("-b,--board", options->run.board,
                   "Board description (TOML); default: OXA_BOARD, unless --empty is given")
        .Takes("FILE")
        .Completes(CompleteBoards);
    AddProfileOption(command, options->run.profile,
                     "Customer profile: " + AvailableProfiles() + "; default: the board's");
    command.AddFlag("--empty", options->empty,
                    "An empty repository, for add, remove and scenario with --bmc");
    command.AddOption("--port", options->port, "UDP port on 127.0.0.1; 0: one that is free")
        .Takes("N")
        .ShowsDefault();
    command
        .AddOption(
            "--run", options->command,
            "Run a shell command beside the BMC, then end with its exit status; OXA_BMC is the "
            "address, OXA_IPMITOOL and OXA_IPMI_SENSORS begin command lines, OXA_READINGS is the folder")
        .Takes("COMMAND");
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
