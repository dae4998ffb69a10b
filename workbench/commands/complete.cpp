// SPDX-License-Identifier: GPL-3.0-or-later
//
// What can stand where the cursor is.  The scripts of the shells know nothing themselves: they ask here.
#include <algorithm>

#include "base/errors.h"
#include "base/output.h"
#include "commands/commands.h"
#include "commands/generate.h"

namespace workbench {
namespace {

const OptionView *FindOption(const CommandView &command, const std::string &name) {
    for (const OptionView &option : command.options)
        if (!option.positional &&
            std::find(option.names.begin(), option.names.end(), name) != option.names.end())
            return &option;
    return nullptr;
}

const CommandView *FindCommand(const CommandView &command, const std::string &name) {
    for (const CommandView &inner : command.commands)
        if (inner.name == name)
            return &inner;
    return nullptr;
}

// The line up to the word that is completed.
struct Place {
    const CommandView *command;
    const OptionView *option = nullptr; // whose value is to come
    GivenWords given;
};

void TakeWord(const std::string &word, Place &place) {
    if (place.option != nullptr) {
        place.given.options[place.option->names.back()] = word;
        place.option = nullptr;
        return;
    }
    const size_t equals = word.find('=');
    if (word.size() > 1 && word[0] == '-') {
        const OptionView *option = FindOption(*place.command, word.substr(0, equals));
        if (option == nullptr || !option->takes_value)
            return;
        if (equals == std::string::npos)
            place.option = option;
        else
            place.given.options[option->names.back()] = word.substr(equals + 1);
    } else if (const CommandView *inner = FindCommand(*place.command, word)) {
        place.command = inner;
    } else {
        place.given.arguments.push_back(word);
    }
}

// The argument that the next word would be.
const OptionView *NextArgument(const Place &place) {
    size_t passed = 0;
    for (const OptionView &option : place.command->options)
        if (option.positional && (option.repeats || passed++ == place.given.arguments.size()))
            return &option;
    return nullptr;
}

void AddLine(const std::string &begin, const std::string &word, const std::string &about, std::string &out) {
    if (word.rfind(begin, 0) == 0)
        out += word + "\t" + about.substr(0, about.find('\n')) + "\n";
}

// `front` is "--board=" where the value is written so.
std::string Values(const OptionView &option, const GivenWords &given, const std::string &begin,
                   const std::string &front) {
    std::string out;
    std::vector<std::string> words;
    try {
        if (option.completer)
            words = option.completer(given);
    } catch (const std::exception &) { // a line that is not finished may be wrong
    }
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    for (const std::string &word : words)
        AddLine(begin, front + word, "", out);
    if (option.value == "DIR")
        return out + ":folders\n";
    const std::string &name = option.names.back();
    const bool file = option.value == "FILE" || option.value == "SOURCE" || name == "FILE" ||
                      name == "INPUT" || name == "A" || name == "B";
    return file ? out + ":files\n" : out;
}

std::string Candidates(const CommandView &program, std::vector<std::string> words) {
    const std::string begin = words.empty() ? "" : words.back();
    if (!words.empty())
        words.pop_back();
    Place place{&program, nullptr, {}};
    for (const std::string &word : words)
        TakeWord(word, place);
    if (place.option != nullptr)
        return Values(*place.option, place.given, begin, "");
    const size_t equals = begin.find('=');
    if (begin.rfind("--", 0) == 0 && equals != std::string::npos) {
        const OptionView *option = FindOption(*place.command, begin.substr(0, equals));
        return option == nullptr ? "" : Values(*option, place.given, begin, begin.substr(0, equals + 1));
    }
    std::string out;
    if (!begin.empty() && begin[0] == '-') {
        for (const OptionView &option : place.command->options)
            if (!option.positional)
                for (const std::string &name : option.names)
                    AddLine(begin, name, option.about, out);
        return out;
    }
    for (const CommandView &inner : place.command->commands)
        AddLine(begin, inner.name, inner.about, out);
    const OptionView *argument = NextArgument(place);
    return argument == nullptr ? out : out + Values(*argument, place.given, begin, "");
}

} // namespace

bool IsToolWord(const std::string &word) {
    return word == "complete" || word == "generate";
}

void RunToolWord(const CommandView &program, const std::vector<std::string> &words) {
    if (words.front() == "complete")
        return PrintOut(Candidates(program, {words.begin() + 1, words.end()}));
    if (words.size() != 2)
        throw InputError("generate man|bash|zsh|fish");
    PrintOut(words[1] == "man" ? ManualPage(program) : CompletionScript(words[1]));
}

} // namespace workbench
