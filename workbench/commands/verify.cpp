// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors verify: the machines of a list, held against a lock.
#include "commands/verify.h"

#include <memory>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"

namespace workbench {
namespace {

struct VerifyOptions : FleetOptions {
    std::string lock, hosts, format = "text";
    bool json = false;
};

std::string Render(const VerifyOptions &options, const FleetReport &report) {
    if (options.json)
        return FleetAsJson(report);
    if (options.format == "junit")
        return FleetAsJunit(report);
    if (options.format == "github")
        return FleetForGithub(report);
    return options.format == "markdown" ? FleetAsMarkdown(report) : FleetAsText(report);
}

void Verify(const VerifyOptions &options) {
    if (options.json && options.format != "text")
        throw InputError("--json contradicts --format " + options.format);
    LockFaults faults;
    const Lock lock = ReadLock(options.lock, faults);
    if (!faults.lines.empty())
        throw InputError(Join(faults.lines, "\n"));
    const std::vector<Host> hosts = ReadHosts(options.hosts, lock);
    BmcAt(hosts.front().address, options.login,
          hosts.front().address); // a password that is none is told once
    const FleetReport report{options.lock, options.hosts, VerifyFleet(hosts, lock, options), options.active};
    PrintOut(Render(options, report));
    if (report.Different() + report.Unread() != 0)
        throw ExitStatus(1);
}

} // namespace

void AddVerifyCommand(Command &program) {
    Command command = program.AddCommand("verify", "Hold the sensors of many machines against a lock");
    const auto options = std::make_shared<VerifyOptions>();
    command.AddOption("LOCK", options->lock, "What 'oxa-sensors lock' wrote").Required().Takes("FILE");
    command.AddOption("--hosts", options->hosts, "The machines, a line each: HOST[:PORT] BOARD PROFILE")
        .Required()
        .Takes("FILE");
    command.AddOption("--at-once", options->at_once, "Machines that are read at a time")
        .Takes("N")
        .Between(1, 1000)
        .ShowsDefault();
    command
        .AddOption("--retries", options->retries, "How often a machine that could not be read is tried again")
        .Takes("N")
        .Between(0, 20)
        .ShowsDefault();
    command.AddOption("--limit", options->limit, "Seconds for one machine, retries and all")
        .Takes("N")
        .Between(1, 3600)
        .ShowsDefault();
    command.AddFlag("--active", options->active,
                    "Tell thresholds that users set, too: a command more for every sensor that has some");
    AddLoginOptions(command, options->login);
    command.AddOption("--format", options->format, "text, junit (XML), github (annotations) or markdown")
        .OneOf({"text", "junit", "github", "markdown"})
        .Takes("WORD")
        .ShowsDefault();
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(
        "Exit status: 0 all machines are as locked; 1 one differs or could not be read; 2 wrong input.");
    command.Example("oxa-sensors verify boards/sensors.lock --hosts hosts.txt --password-file secret");
    command.Runs([options] { Verify(*options); });
}

} // namespace workbench
