// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/command_line.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <sstream>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "base/errors.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "base/version.h"

namespace workbench {
namespace {

constexpr char kName[] = "oxa-sensors";
constexpr char kAbout[] = "Builds a board's sensor records on a simulated platform and shows them decoded";

std::vector<std::string> CommandNames(const CLI::App &app) {
    std::vector<std::string> out;
    for (const CLI::App *command : app.get_subcommands({}))
        out.push_back(command->get_name());
    return out;
}

std::map<const CLI::Option *, Completer> &Completers() {
    static std::map<const CLI::Option *, Completer> completers;
    return completers;
}

void SetUp(CLI::App &app, const std::function<void(Command &program)> &describe) {
    app.set_version_flag("--version", kVersionText);
    Command program(&app);
    program.NeedsCommand();
    describe(program);
}

OptionView ViewOption(const CLI::Option &option) {
    OptionView out;
    for (const std::string &name : option.get_snames())
        out.names.push_back("-" + name);
    for (const std::string &name : option.get_lnames())
        out.names.push_back("--" + name);
    out.positional = option.get_positional();
    if (out.positional)
        out.names = {option.get_name(true)};
    out.takes_value = option.get_items_expected_max() != 0;
    out.required = option.get_required();
    out.repeats = option.get_items_expected_max() > 1;
    out.value = option.get_type_name();
    out.about = option.get_description();
    out.fallback = option.get_default_str();
    out.variable = option.get_envname();
    if (const auto found = Completers().find(&option); found != Completers().end())
        out.completer = found->second;
    return out;
}

CommandView ViewCommand(const CLI::App &app) {
    CommandView out{app.get_name(), app.get_description(), app.get_footer(), {}, {}};
    for (const CLI::Option *option : app.get_options())
        out.options.push_back(ViewOption(*option));
    for (const CLI::App *command : app.get_subcommands({}))
        out.commands.push_back(ViewCommand(*command));
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

std::string Alternatives(std::vector<std::string> words) {
    const std::string last = words.back();
    words.pop_back();
    return words.empty() ? last : Join(words, ", ") + " or " + last;
}

std::string CommandRequired(const CLI::App &app) {
    return "a command is required: " + Alternatives(CommandNames(app));
}

// The command that was named last, and how one calls it.
struct Named {
    const CLI::App *command;
    std::string call = "oxa-sensors";
};

Named InnermostNamed(const CLI::App &app) {
    Named out{&app};
    for (auto named = app.get_subcommands(); !named.empty(); named = out.command->get_subcommands()) {
        out.command = named.back();
        out.call += " " + out.command->get_name();
    }
    return out;
}

// How an option is written: "--board FILE", "NAME".
std::string Spelling(const CLI::Option &option) {
    const std::string type = option.get_positional() ? "" : option.get_type_name();
    return option.get_name() + (type.empty() ? "" : " " + type);
}

// The parser names the option that has too few or too many values at the beginning of its words.
std::string WrongCount(const CLI::App &command, const std::string &words) {
    for (const CLI::Option *option : command.get_options()) {
        const std::string name = option->get_name();
        const int count = static_cast<int>(option->count());
        if (!words.starts_with(name + ":"))
            continue;
        if (option->get_expected_min() > 1)
            return name + " takes " + std::to_string(option->get_expected_min()) + " values; write " +
                   Spelling(*option);
        if (count > 1)
            return name + " is given " + std::to_string(count) + " times; once is enough";
        return name + ": its value is missing; write " + Spelling(*option);
    }
    return words;
}

std::string Missing(const CLI::App &command, const std::string &words) {
    for (const CLI::Option *option : command.get_options())
        if (option->get_required() && option->count() == 0)
            return option->get_name() + " is required";
    return words;
}

// What is wrong with the line, in our words: the parser's are kept only for what cannot happen with our options.
std::string WhatIsWrong(const CLI::App &app, const Named &named, const CLI::ParseError &error) {
    const CLI::App &command = *named.command;
    const std::vector<std::string> early = app.remaining(), extra = app.remaining(true);
    if (!early.empty() && early.front().starts_with("-") && &command != &app)
        return "'" + early.front() + "' stands before the command; write " + named.call + " " + early.front();
    if (!extra.empty())
        return UnknownWord(command, extra.front());
    if (error.get_name() == "ArgumentMismatch")
        return WrongCount(command, error.what());
    if (error.get_name() == "RequiredError" && !CommandNames(command).empty())
        return CommandRequired(command);
    if (error.get_name() == "RequiredError")
        return Missing(command, error.what());
    return error.what();
}

// About the innermost command that was named.
[[noreturn]] void FailUsage(const CLI::App &app, const CLI::ParseError &error) {
    const Named named = InnermostNamed(app);
    throw InputError(OneLine(WhatIsWrong(app, named, error)) + " (see " + named.call + " --help)");
}

bool IsFlag(const CLI::App &command, const std::string &name) {
    const CLI::Option *const option = command.get_option_no_throw(name);
    return option != nullptr && option->get_items_expected_max() == 0;
}

// "--json=no".  Before the parser sees the line, which takes such values.
void RefuseValuesOfFlags(const CLI::App &app, int argc, char **argv) {
    Named named{&app};
    for (int i = 1; i < argc && argv[i] != std::string_view("--"); ++i) {
        const std::string word = argv[i];
        const auto commands = named.command->get_subcommands(
            [&word](const CLI::App *command) { return command->get_name() == word; });
        if (!commands.empty())
            named = {commands.front(), named.call + " " + word};
        std::string name = word.substr(0, word.find('='));
        while (name.size() > 2 && name[1] != '-' && IsFlag(*named.command, name.substr(0, 2)))
            name.erase(1, 1); // "-vh=no"
        if (word.find('=') != std::string::npos && IsFlag(*named.command, name))
            throw InputError(name + " takes no value (see " + named.call + " --help)");
    }
}

// Refuses a value in our words; the parser would put its own before those of its own kind of error.
CLI::Validator Refusing(CLI::Option *option, std::function<bool(std::string &)> good,
                        const std::string &wanted) {
    const auto check = [option, good = std::move(good), wanted](std::string &value) {
        if (!good(value))
            throw CLI::ParseError(option->get_name() + " " + (value.empty() ? "''" : value) + ": " + wanted +
                                      " is wanted",
                                  kBadInput);
        return std::string();
    };
    return {check, ""};
}

constexpr const char *kWholeNumber = "whole number"; // a validator's name

// Decimal digits and nothing else; the value becomes what the parser's conversion reads as decimal too.
bool IsWholeNumber(std::string &text, uint64_t least, uint64_t most) {
    constexpr size_t kMostDigits = 18;
    if (text.empty() || text.size() > kMostDigits ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    const uint64_t value = std::stoull(text);
    if (value < least || value > most)
        return false;
    text = std::to_string(value);
    return true;
}

CLI::Validator WholeNumber(CLI::Option *option, uint64_t least, uint64_t most) {
    return Refusing(
               option, [least, most](std::string &text) { return IsWholeNumber(text, least, most); },
               "a whole number from " + std::to_string(least) + " to " + std::to_string(most))
        .name(kWholeNumber);
}

template <class T>
CLI::Option *AddNumber(CLI::App &app, const std::string &names, T &value, const std::string &about) {
    CLI::Option *option = app.add_option(names, value, about);
    return option->transform(WholeNumber(option, 0, std::numeric_limits<T>::max()));
}

// A path or place that is empty is a variable of the shell that was not set; "--json" is an option that came too early,
// "=x" was written "-b=x".
bool CanBePlace(const std::string &text) {
    return !text.empty() && !text.starts_with("--") && !text.starts_with("=");
}

// What --help calls the value of an option that names a place, and what is wanted where it cannot be one.
constexpr std::pair<const char *, const char *> kPlaces[] = {{"FILE", "the name of a file"},
                                                             {"DIR", "the name of a folder"},
                                                             {"NEWDIR", "the name of a folder"},
                                                             {"SOURCE", "a source"},
                                                             {"SET", "a set"},
                                                             {"HOST:PORT", "HOST:PORT"}};

} // namespace

Option &Option::Takes(const std::string &word) {
    option_->type_name(word);
    for (const auto &[place, wanted] : kPlaces)
        if (word == place)
            option_->check(Refusing(option_, CanBePlace, wanted));
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

Option &Option::FromEnvironment(const std::string &variable) {
    option_->envname(variable);
    return *this;
}

Option &Option::InGroup(const std::string &title) {
    option_->group(title);
    return *this;
}

Option &Option::OneOf(const std::vector<std::string> &words) {
    const auto known = [words](const std::string &value) {
        return std::find(words.begin(), words.end(), value) != words.end();
    };
    option_->check(Refusing(option_, known, Alternatives(words)));
    return Completes([words](const GivenWords &) { return words; });
}

Option &Option::Completes(Completer completer) {
    Completers()[option_] = std::move(completer);
    return *this;
}

Option &Option::Between(unsigned least, unsigned most) {
    *option_->get_validator(kWholeNumber) = WholeNumber(option_, least, most);
    return *this;
}

Option &Option::Becomes(std::function<std::string(const std::string &)> change) {
    option_->transform([change = std::move(change)](std::string text) { return change(text); }, "");
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
    CLI::App *app = app_->add_subcommand(name, about);
    Command command(app);
    command.AddOption("--color", SetColour, "Colour; auto: on a terminal, unless NO_COLOR is set")
        .Takes("auto|always|never")
        .OneOf({"auto", "always", "never"});
    return command;
}

Option Command::AddOption(const std::string &names, std::string &value, const std::string &about) {
    return Option(app_->add_option(names, value, about));
}

Option Command::AddOption(const std::string &names, uint16_t &value, const std::string &about) {
    return Option(AddNumber(*app_, names, value, about));
}

Option Command::AddOption(const std::string &names, uint32_t &value, const std::string &about) {
    return Option(AddNumber(*app_, names, value, about));
}

Option Command::AddOption(const std::string &names, std::vector<std::string> &values,
                          const std::string &about) {
    return Option(app_->add_option(names, values, about));
}

Option Command::AddOption(const std::string &names, std::function<void(const std::string &)> take,
                          const std::string &about) {
    return Option(app_->add_option_function<std::string>(names, std::move(take), about));
}

Option Command::AddOutput(std::string &output, const std::string &about) {
    return AddOption("-o,--output", output, about + "; " + kStandardOutput + ": standard output")
        .Takes("FILE");
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

void Command::Example(const std::string &line) {
    app_->footer("Example:\n  " + line + "\n" + app_->get_footer());
}

void Command::Runs(std::function<void()> run) {
    app_->callback(std::move(run));
}

std::string EnvironmentValue(const char *variable) {
    const char *value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

CommandView ViewProgram(const std::function<void(Command &program)> &describe) {
    CLI::App app{kAbout, kName};
    SetUp(app, describe);
    return ViewCommand(app);
}

int RunCommandLine(int argc, char **argv, const std::function<void(Command &program)> &describe) {
    CLI::App app{kAbout, kName};
    SetUp(app, describe);
    RefuseValuesOfFlags(app, argc, argv);
    try {
        app.parse(argc, argv);
        return kOk;
    } catch (const CLI::Success &help) { // --help, --version
        std::ostringstream text;
        app.exit(help, text);
        PrintOut(text.str()); // std::cout would not tell that nothing was written
        return kOk;
    } catch (const CLI::ParseError &error) {
        FailUsage(app, error);
    }
}

} // namespace workbench
