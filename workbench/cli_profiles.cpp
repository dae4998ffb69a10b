// SPDX-License-Identifier: GPL-3.0-or-later
#include "workbench/cli_profiles.h"

namespace workbench {
namespace {

constexpr const char *kDiffFooter =
    "A and B: PROFILE (with --board), PROFILE@BOARD, or a file of 'oxa-sensors export' (JSON or raw).\n"
    "Exit status: 0 equal; 1 different; 2 wrong input, or a side that has no set.\n"
    "Colour is used on a terminal only; NO_COLOR switches it off.";
constexpr const char *kCheckFooter =
    "Exit status: 0 nothing found, or known findings only; 1 new findings; 2 wrong input.\n"
    "Colour is used on a terminal only; NO_COLOR switches it off.";

} // namespace

void AddDiff(CLI::App &app, DiffOptions &options) {
    CLI::App *command =
        app.add_subcommand("diff", "What differs between two profiles, boards or exported sets");
    command->add_option("A", options.left, "The set as it was")->required()->type_name("");
    command->add_option("B", options.right, "The set as it is to be")->required()->type_name("");
    command
        ->add_option("-b,--board", options.run.board, "Board description (TOML) for a side that names none")
        ->type_name("FILE");
    command->add_flag("--json", options.json, "JSON with every field that differs");
    command->footer(kDiffFooter);
    command->callback([&options] { Diff(options); });
}

void AddCheck(CLI::App &app, CheckOptions &options) {
    options.run.profile = "all";
    CLI::App *command =
        app.add_subcommand("check", "Names, instances, thresholds, scales and FRU ids that cannot be right");
    command
        ->add_option("-b,--board", options.run.board,
                     "Board description (TOML); without one: the name tables only")
        ->type_name("FILE");
    command->add_option("--boards", options.boards, "Every *.toml of a folder")->type_name("DIR");
    command->add_option("-p,--profile", options.run.profile, "One customer profile, or all")
        ->type_name("NAME")
        ->capture_default_str();
    command->add_flag("-v,--verbose", options.verbose, "Full scale and step of every analog sensor too");
    command->add_flag("--json", options.json, "JSON");
    command->footer(kCheckFooter);
    command->callback([&options] { Check(options); });
}

} // namespace workbench
