// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/lock.h"

#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"

namespace workbench {
namespace {

struct LockOptions {
    std::string boards, output, check, format = "text";
    bool json = false;
};

constexpr const char *kFooter =
    "Exit status: 0 written, or as locked; 1 something differs; 2 wrong input, a board without a set (nothing is\n"
    "written).";

void EndAtFaults(const LockFaults &faults) {
    if (!faults.lines.empty())
        throw InputError(Join(faults.lines, "\n"));
}

std::string Written(const LockOptions &options, const Lock &lock, size_t bytes) {
    if (options.json)
        return Dump({{"lock", options.output},
                     {"boards", options.boards},
                     {"sensors", lock.sensors.size()},
                     {"table_rows", lock.tables.size()},
                     {"bytes", bytes}});
    return options.output + ": " + std::to_string(lock.sensors.size()) + " sensors and " +
           std::to_string(lock.tables.size()) + " rows of the run-time tables\n";
}

void WriteLock(const LockOptions &options) {
    KeepJsonApart(options.output, options.json);
    LockFaults faults;
    const Lock lock = BuildLock(options.boards, faults);
    EndAtFaults(faults);
    const std::string text = Text(lock);
    WriteResult(options.output, text);
    if (options.output != kStandardOutput)
        PrintOut(Written(options, lock, text.size()));
}

std::string Render(const LockOptions &options, const LockReport &report) {
    if (options.json)
        return LockAsJson(report);
    if (options.format == "github")
        return LockForGithub(report);
    return options.format == "markdown" ? LockAsMarkdown(report) : LockAsText(report);
}

void CheckLock(const LockOptions &options) {
    LockFaults faults;
    const Lock locked = ReadLock(options.check, faults);
    EndAtFaults(faults);
    const Lock now = BuildLock(options.boards, faults);
    EndAtFaults(faults);
    const LockReport report{options.check, options.boards, CompareLocks(locked, now)};
    PrintOut(Render(options, report));
    if (!report.comparison.drifts.empty())
        throw ExitStatus(1);
}

void RunLock(const LockOptions &options) {
    if (options.output.empty() == options.check.empty())
        throw InputError("lock: one of -o FILE and --check FILE is wanted");
    if (options.format != "text" && (options.json || options.check.empty()))
        throw InputError("lock: --format goes with --check, and not with --json");
    try {
        options.check.empty() ? WriteLock(options) : CheckLock(options);
    } catch (const SetError &error) { // no process, a record that cannot be decoded: nothing was compared
        throw InputError(error.what());
    }
}

} // namespace

void AddLockCommand(Command &program) {
    Command command =
        program.AddCommand("lock", "Write down what every board and profile builds, and tell what changed");
    const auto options = std::make_shared<LockOptions>();
    command.AddOption("--boards", options->boards, "Every *.toml of a folder").Required().Takes("DIR");
    command.AddOutput(options->output, "Write the lock");
    command.AddOption("--check", options->check, "Tell what differs from this lock").Takes("FILE");
    command.AddOption("--format", options->format, "With --check: text, github (annotations) or markdown")
        .OneOf({"text", "github", "markdown"})
        .Takes("WORD")
        .ShowsDefault();
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(kFooter);
    command.Example("oxa-sensors lock --boards boards -o sensors.lock");
    command.Runs([options] { RunLock(*options); });
}

} // namespace workbench
