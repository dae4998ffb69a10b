// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors push: a reading into a serve that runs.
#include <algorithm>
#include <ctime>
#include <fstream>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "serve/readings.h"
#include "serve/running.h"
#include "sets/select.h"

namespace workbench {
namespace {

struct PushOptions {
    std::string name, reading;
    uint16_t port = 0; // 0: the one that runs
    bool json = false;
};

struct PushedReading {
    const ServedSensor *sensor;
    unsigned raw;
};

std::string PortsOf(const std::vector<RunningServe> &serves) {
    std::vector<std::string> out;
    for (const RunningServe &serve : serves)
        out.push_back(std::to_string(serve.port));
    return Join(out, ", ");
}

RunningServe Chosen(const PushOptions &options) {
    const std::vector<RunningServe> all = RunningServes();
    if (all.empty())
        throw SetError("no serve of yours runs; 'oxa-sensors serve --board FILE' starts one");
    if (options.port == 0 && all.size() > 1)
        throw InputError("which serve? --port N, of " + PortsOf(all));
    const auto found = std::find_if(all.begin(), all.end(), [&options](const RunningServe &serve) {
        return options.port == 0 || serve.port == options.port;
    });
    if (found == all.end())
        throw SetError("no serve of yours runs at port " + std::to_string(options.port) + "; there are " +
                       PortsOf(all));
    return *found;
}

// Every sensor that is meant, and what it will read; nothing is written unless all of them can hold it.
std::vector<PushedReading> Meant(const PushOptions &options, const RunningServe &serve) {
    std::vector<PushedReading> out;
    std::vector<std::string> names;
    const bool exact =
        std::any_of(serve.sensors.begin(), serve.sensors.end(),
                    [&options](const ServedSensor &one) { return one.decoded.name == options.name; });
    for (const ServedSensor &sensor : serve.sensors) {
        const std::string &name = sensor.decoded.name;
        names.push_back(name);
        if (exact ? name == options.name : IsMeant(name, options.name))
            out.push_back({&sensor, ParseReading(sensor.decoded, options.reading)});
    }
    if (!out.empty())
        return out;
    const auto nearest = NearestNames(options.name, names);
    throw InputError("no sensor '" + options.name + "' at port " + std::to_string(serve.port) +
                     (nearest.empty() ? "" : "; did you mean " + Join(nearest, ", ") + "?"));
}

// serve looks several times a second.
bool IsTaken(const std::string &path, unsigned raw) {
    constexpr timespec kLookAgain{0, 20'000'000};
    for (int tries = 100; tries > 0; --tries) {
        unsigned found = 0;
        if (std::ifstream(path) >> found && found == raw)
            return true;
        nanosleep(&kLookAgain, nullptr);
    }
    return false;
}

std::string PushedText(const PushedReading &pushed) {
    const Decoded &decoded = pushed.sensor->decoded;
    return decoded.reading
               ? ReadingText(*decoded.reading, pushed.raw) + " (raw " + std::to_string(pushed.raw) + ")"
               : "states " + Hex(pushed.raw, 4);
}

std::string Render(const PushOptions &options, const RunningServe &serve,
                   const std::vector<PushedReading> &all) {
    std::string text;
    Json list = Json::array();
    for (const PushedReading &one : all) {
        text += one.sensor->decoded.name + ": " + PushedText(one) + "\n";
        list.push_back({{"name", one.sensor->decoded.name}, {"raw", one.raw}, {"reading", PushedText(one)}});
    }
    return options.json ? Dump({{"port", serve.port}, {"sensors", list}}) : text;
}

void Push(const PushOptions &options) {
    const RunningServe serve = Chosen(options);
    const std::vector<PushedReading> all = Meant(options, serve);
    for (const PushedReading &one : all)
        WriteFileAtomically(serve.folder + "/readings/" + one.sensor->file, std::to_string(one.raw) + "\n");
    for (const PushedReading &one : all)
        if (!IsTaken(serve.folder + "/raw/" + one.sensor->file, one.raw))
            throw SetError("serve at port " + std::to_string(serve.port) + " does not take the reading of " +
                           one.sensor->decoded.name);
    PrintOut(Render(options, serve, all));
}

std::vector<std::string> CompleteServed(const GivenWords &) {
    std::vector<std::string> out;
    for (const RunningServe &serve : RunningServes())
        for (const ServedSensor &sensor : serve.sensors)
            out.push_back(sensor.decoded.name);
    return out;
}

} // namespace

void AddPushCommand(Command &program) {
    Command command = program.AddCommand("push", "Give a sensor of a running serve another reading");
    const auto options = std::make_shared<PushOptions>();
    command.AddOption("NAME", options->name, "Sensor name, or a pattern such as 'CPU_TEMP_*', in any case")
        .Required()
        .Takes("")
        .Completes(CompleteServed);
    command
        .AddOption(
            "READING", options->reading,
            "A value with the sensor's unit (51C, '2.36 V'), or a raw byte; of a discrete sensor the bits of "
            "its states")
        .Required()
        .Takes("");
    command.AddOption("--port", options->port, "The serve at this port; needed where several run").Takes("N");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(
        "Exit status: 0 the sensor reads so; 1 no such serve runs, or it does not take it; 2 wrong input.");
    command.Example("oxa-sensors push INPUT_TEMP 51C");
    command.Runs([options] { Push(*options); });
}

} // namespace workbench
