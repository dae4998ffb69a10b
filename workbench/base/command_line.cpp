// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/command_line.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/errors.h"
#include "base/text.h"

namespace workbench {
namespace {

std::vector<std::string> CommandNames(const CLI::App &app) {
    std::vector<std::string> out;
    for (const CLI::App *command : app.get_subcommands({}))
        out.push_back(command->get_name());
    return out;
}

// What a word that nobody knows may have meant: a command or, after a command, one of its options.
std::vector<std::string> KnownWords(const CLI::App &app) {
    std::vector<std::string> out = CommandNames(app);
    for (const CLI::Option *option : app.get_options())
        for (const std::string &name : option->get_lnames())
            out.push_back("--" + name);
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

} // namespace

Option &Option::Takes(const std::string &word) {
    option_->type_name(word);
    return *this;
}

Option &Option::Required(bool required) {
    option_->required(required);
    return *this;
}

Option &Option::ShowsDefault() {
    option_->capture_default_str();
    return *this;
}

Option &Option::InGroup(const std::string &title) {
    option_->group(title);
    return *this;
}

Option &Option::OneOf(const std::vector<std::string> &words) {
    option_->check(CLI::IsMember(words).description(""));
    return *this;
}

Option &Option::Between(int least, int most) {
    option_->check(CLI::Range(least, most).description(""));
    return *this;
}

Option &Option::Values(int count) {
    option_->expected(count);
    return *this;
}

Option &Option::OneValueEach() {
    option_->allow_extra_args(false);
    return *this;
}

bool Option::Given() const {
    return option_->count() > 0;
}

Command Command::AddCommand(const std::string &name, const std::string &about) {
    return Command(app_->add_subcommand(name, about));
}

Option Command::AddOption(const std::string &names, std::string &value, const std::string &about) {
    return Option(app_->add_option(names, value, about));
}

Option Command::AddOption(const std::string &names, uint16_t &value, const std::string &about) {
    return Option(app_->add_option(names, value, about));
}

Option Command::AddOption(const std::string &names, uint32_t &value, const std::string &about) {
    return Option(app_->add_option(names, value, about));
}

Option Command::AddOption(const std::string &names, std::vector<std::string> &values,
                          const std::string &about) {
    return Option(app_->add_option(names, values, about));
}

Option Command::AddOption(const std::string &names, std::function<void(const std::string &)> take,
                          const std::string &about) {
    return Option(app_->add_option_function<std::string>(names, std::move(take), about));
}

Option Command::AddFlag(const std::string &names, bool &value, const std::string &about) {
    return Option(app_->add_flag(names, value, about));
}

void Command::NeedsCommand() {
    app_->require_subcommand(1);
}

void Command::Footer(const std::string &text) {
    app_->footer(text);
}

void Command::Runs(std::function<void()> run) {
    app_->callback(std::move(run));
}

int RunCommandLine(int argc, char **argv, const std::function<void(Command &program)> &describe) {
    CLI::App app{"Builds a board's sensor records on a simulated platform and shows them decoded",
                 "oxa-sensors"};
    app.set_version_flag("--version", "oxa-sensors " OXA_VERSION);
    Command program(&app);
    program.NeedsCommand();
    describe(program);
    try {
        app.parse(argc, argv);
        return kOk;
    } catch (const CLI::Success &help) { // --help, --version
        return app.exit(help);
    } catch (const CLI::ParseError &error) {
        return FailUsage(app, error);
    }
}

} // namespace workbench
