// SPDX-License-Identifier: GPL-3.0-or-later
//
// The commands as they are described: what the manual page and the completion of shells are made from.
#ifndef OXA_WORKBENCH_BASE_COMMAND_VIEW_H
#define OXA_WORKBENCH_BASE_COMMAND_VIEW_H

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace workbench {

// What stands on a line before the word that is completed.
struct GivenWords {
    std::map<std::string, std::string> options; // values by their long name, "--board"
    std::vector<std::string> arguments;         // by position
};

// What a word can be; it need not begin with what is there already.
using Completer = std::function<std::vector<std::string>(const GivenWords &)>;

struct OptionView {
    std::vector<std::string> names; // "-b", "--board"; of an argument by position: "FILE"
    bool positional = false, takes_value = false, required = false, repeats = false;
    std::string value; // "FILE", may be empty
    std::string about, fallback, variable;
    Completer completer; // may be empty
};

struct CommandView {
    std::string name, about, footer;
    std::vector<OptionView> options;
    std::vector<CommandView> commands;
};

} // namespace workbench
#endif
