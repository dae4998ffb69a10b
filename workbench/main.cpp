// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors: what the library builds for a board, decoded.  This unit is the command line and nothing else.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>

#include "workbench/cli_profiles.h"
#include "workbench/command_thresholds.h"
#include "workbench/commands.h"
#include "workbench/errors.h"
#include "workbench/runtime_commands.h"
#include "workbench/sel_commands.h"
#include "workbench/serve_commands.h"
#include "workbench/text.h"

namespace {

using namespace workbench;

constexpr const char *kProgramFooter =
    "Exit status: 0 done; 1 not done, or not as expected (COMMAND --help says what); 2 wrong input.\n"
    "Colour is used on a terminal only; NO_COLOR switches it off.";
constexpr const char *kSetFooter =
    "Exit status: 0 done; 1 the library built no usable set; 2 wrong input (nothing is written).\n"
    "Colour is used on a terminal only; NO_COLOR switches it off.";

void AddRunOptions(CLI::App &command, RunOptions &run, const std::string &more = "") {
    command.add_option("-b,--board", run.board, "Board description (TOML)")->required()->type_name("FILE");
    command.add_option("-p,--profile", run.profile, "Customer profile: " + AvailableProfiles() + more)
        ->type_name("NAME")
        ->capture_default_str();
    command.add_flag("--trace", run.trace,
                     "Print everything that crossed the platform border to standard error");
    command.add_flag("--log", run.log, "Print the library's log lines to standard error");
    command.footer(kSetFooter);
}

void AddList(CLI::App &app, ListOptions &options) {
    CLI::App *command = app.add_subcommand("list", "One line per sensor of a board's set, decoded");
    AddRunOptions(*command, options.run, "; all: counts of every profile");
    command->add_option("-f,--filter", options.filter, "Only sensors whose name matches, e.g. 'CPU_*'")
        ->type_name("GLOB");
    command->add_flag("--json", options.json, "JSON with raw and decoded values");
    command->callback([&options] { List(options); });
}

void AddShow(CLI::App &app, ShowOptions &options) {
    CLI::App *command = app.add_subcommand("show", "Every byte of a sensor's record and device-table entry");
    AddRunOptions(*command, options.run);
    command->add_option("NAME", options.name, "Sensor name, or a pattern such as 'PSU_*_01'")
        ->required()
        ->type_name("");
    command->add_flag("--json", options.json, "JSON with the fields of record and entry");
    command->callback([&options] { Show(options); });
}

// --json is what every other command has; beside another format it is a contradiction.
void SettleFormat(ExportOptions &options, bool json, bool format_given) {
    if (json && format_given && options.format != "json")
        throw InputError("--json contradicts --format " + options.format);
    if (json)
        options.format = "json";
}

void AddExport(CLI::App &app, ExportOptions &options, bool &json) {
    CLI::App *command = app.add_subcommand("export", "Write a board's set for other programs");
    AddRunOptions(*command, options.run);
    CLI::Option *format =
        command
            ->add_option(
                "--format", options.format,
                "raw (default): records as 'ipmitool sdr dump' writes them; json; csv: one line per sensor")
            ->check(CLI::IsMember({"raw", "json", "csv"}).description(""))
            ->type_name("raw|json|csv");
    command->add_option("-o,--output", options.output, "Replace FILE in one step; default: standard output")
        ->type_name("FILE");
    command->add_flag("--json", json, "The same as --format json");
    command->add_flag("--keep-ids", options.keep_ids,
                      "Leave record ids at 0 instead of numbering them from 1");
    command->add_flag("--number", options.number,
                      "Number the sensors 1 to 254, then on LUN 1 and LUN 3; default: 0, as built");
    command->callback([&options, &json, format] {
        SettleFormat(options, json, format->count() > 0);
        Export(options);
    });
}

// What a word that nobody knows may have meant: a command or, after a command, one of its options.
std::vector<std::string> KnownWords(const CLI::App &app) {
    std::vector<std::string> out;
    for (const CLI::App *command : app.get_subcommands({}))
        out.push_back(command->get_name());
    for (const CLI::Option *option : app.get_options())
        for (const std::string &name : option->get_lnames())
            out.push_back("--" + name);
    return out;
}

std::vector<std::string> CommandNames(const CLI::App &app) {
    std::vector<std::string> out;
    for (const CLI::App *command : app.get_subcommands({}))
        out.push_back(command->get_name());
    return out;
}

std::string UnknownWord(const CLI::App &app, const std::string &word) {
    const auto nearest = NearestNames(word, KnownWords(app), 1);
    const std::string kind = word.rfind('-', 0) == 0     ? "option"
                             : CommandNames(app).empty() ? "argument"
                                                         : "command";
    return "unknown " + kind + " '" + word + "'" +
           (nearest.empty() ? "" : "; did you mean " + nearest[0] + "?");
}

std::string CommandRequired(const CLI::App &app) {
    std::vector<std::string> names = CommandNames(app);
    const std::string last = names.back();
    names.pop_back();
    return "a command is required: " + Join(names, ", ") + " or " + last;
}

// The parser's own words, except where they do not say which word is wrong.  They are about the innermost command
// that was named.
int FailUsage(const CLI::App &app, const CLI::ParseError &error) {
    const CLI::App *current = &app;
    std::string path;
    for (auto named = app.get_subcommands(); !named.empty(); named = current->get_subcommands()) {
        current = named.back();
        path += " " + current->get_name();
    }
    const std::vector<std::string> extra = app.remaining(true);
    std::string text = error.what();
    if (!extra.empty())
        text = UnknownWord(*current, extra.front());
    else if (!CommandNames(*current).empty())
        text = CommandRequired(*current);
    for (char &c : text)
        c = c == '\n' ? ' ' : c;
    std::fprintf(stderr, "oxa-sensors: %s (see oxa-sensors%s --help)\n", text.c_str(), path.c_str());
    return kBadInput;
}

int Run(int argc, char **argv) {
    CLI::App app{"Builds a board's sensor records on a simulated platform and shows them decoded",
                 "oxa-sensors"};
    ListOptions list;
    ShowOptions show;
    ExportOptions exporting;
    bool export_json = false;
    DiffOptions diff;
    CheckOptions check;
    app.require_subcommand(1);
    app.set_version_flag("--version", "oxa-sensors " OXA_VERSION);
    app.footer(kProgramFooter);
    AddList(app, list);
    AddShow(app, show);
    AddExport(app, exporting, export_json);
    AddDiff(app, diff);
    AddCheck(app, check);
    AddEventCommand(app);
    AddDecodeSelCommand(app);
    AddServeCommand(app);
    AddRuntimeCommands(app);
    AddThresholdsCommand(app);
    try {
        app.parse(argc, argv);
        return std::max(diff.exit_code, check.exit_code);
    } catch (const CLI::Success &help) { // --help, --version
        return app.exit(help);
    } catch (const CLI::RuntimeError &end) { // a command with an exit status of its own
        return end.get_exit_code();
    } catch (const CLI::ParseError &error) {
        return FailUsage(app, error);
    }
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is seen where it is written to
    try {
        return Run(argc, argv);
    } catch (const InputError &error) {
        std::fprintf(stderr, "oxa-sensors: %s\n", error.what());
        return kBadInput;
    } catch (const SetError &error) {
        std::fprintf(stderr, "oxa-sensors: %s\n", error.what());
        return kNoSet;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "oxa-sensors: unexpected: %s\n", error.what());
        return kNoSet;
    }
}
