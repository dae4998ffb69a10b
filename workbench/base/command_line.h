// SPDX-License-Identifier: GPL-3.0-or-later
//
// The command line: commands, their options, and what each of them does.  The option parser stands behind
// command_line.cpp alone: its headers cost seconds in every unit that reads them.
#ifndef OXA_WORKBENCH_BASE_COMMAND_LINE_H
#define OXA_WORKBENCH_BASE_COMMAND_LINE_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/command_view.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace workbench {

// An option or argument that was added, to say more of it.
class Option {
public:
    explicit Option(CLI::Option *option) : option_(option) {}
    Option &Takes(const std::string &word); // what --help shows for its value: "FILE"; empty: nothing
    Option &Required(bool required = true);
    Option &ShowsDefault();
    Option &FromEnvironment(const std::string &variable); // when the line does not give it
    Option &InGroup(const std::string &title);
    Option &OneOf(const std::vector<std::string> &words);
    Option &Completes(Completer completer); // what a shell offers for its value
    Option &Between(unsigned least, unsigned most);
    Option &Becomes(std::function<std::string(const std::string &)> change); // its value, before it is taken
    Option &Values(int count);                                               // that many after one mention
    Option &OneValueEach(); // several mentions, a value after each
    bool Given() const;

private:
    CLI::Option *option_;
};

// A command, or the program itself.  What is bound must live until the command has run.
class Command {
public:
    explicit Command(CLI::App *app) : app_(app) {}
    Command AddCommand(const std::string &name, const std::string &about);
    // "-b,--board" is an option, "FILE" an argument by position.
    Option AddOption(const std::string &names, std::string &value, const std::string &about);
    Option AddOption(const std::string &names, uint16_t &value, const std::string &about);
    Option AddOption(const std::string &names, uint32_t &value, const std::string &about);
    Option AddOption(const std::string &names, std::vector<std::string> &values, const std::string &about);
    Option AddOption(const std::string &names, std::function<void(const std::string &)> take,
                     const std::string &about);
    Option AddOutput(std::string &output, const std::string &about); // -o FILE, for WriteResult
    // "--record,!--no-record": the second name switches off.
    Option AddFlag(const std::string &names, bool &value, const std::string &about);
    void NeedsCommand();
    void Footer(const std::string &text);
    void Example(const std::string &line); // before the footer, which is set first
    void Runs(std::function<void()> run);

private:
    CLI::App *app_;
};

// Value of a variable of the environment; empty when it is not set.
std::string EnvironmentValue(const char *variable);

// Lets `describe` add commands, reads the line and runs the command that it names.  Returns the exit status.  InputError
// for usage that cannot be understood; what the command throws comes out.
int RunCommandLine(int argc, char **argv, const std::function<void(Command &program)> &describe);

// The same commands, looked at and not run.
CommandView ViewProgram(const std::function<void(Command &program)> &describe);

} // namespace workbench
#endif
