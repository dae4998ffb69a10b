// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/generate.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"
#include "base/version.h"

namespace workbench {
namespace {

// ---- the manual page ---------------------------------------------------------------------------------

// Text as roff shows it, not as it reads it.
std::string Roff(const std::string &text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool begins = i == 0 || text[i - 1] == '\n';
        if (begins && (text[i] == '.' || text[i] == '\''))
            out += "\\&";
        if (text[i] == '\\')
            out += "\\e";
        else if (text[i] == '-')
            out += "\\-";
        else if (text.compare(i, 2, "\xC2\xB0") == 0) // the degree sign
            out += "\\(de", ++i;
        else
            out += text[i];
    }
    return out;
}

std::string Bold(const std::string &text) {
    return "\\fB" + Roff(text) + "\\fR";
}

std::string Italic(const std::string &text) {
    return text.empty() ? "" : "\\fI" + Roff(text) + "\\fR";
}

std::string OptionText(const OptionView &option) {
    std::vector<std::string> names;
    for (const std::string &name : option.names)
        names.push_back(option.positional ? Italic(name) : Bold(name));
    std::string out = ".TP\n" + Join(names, ", ");
    if (!option.positional && option.takes_value && !option.value.empty())
        out += " " + Italic(option.value);
    out += "\n" + Roff(option.about) + ".\n";
    if (option.required)
        out += "Required.\n";
    if (!option.fallback.empty())
        out += "Default: " + Roff(option.fallback) + ".\n";
    if (!option.variable.empty())
        out += "Else from " + Bold(option.variable) + ".\n";
    return out;
}

std::string CommandText(const CommandView &command, const std::string &path) {
    std::string out =
        ".SS " + Roff(path) + "\n" + Roff(command.about) + ".\n.PP\n" + Bold("oxa-sensors " + path);
    for (const OptionView &option : command.options)
        if (option.positional)
            out += " " + (option.required ? Italic(option.names[0]) : "[" + Italic(option.names[0]) + "]");
    out += command.commands.empty() ? " [" + Italic("OPTIONS") + "]\n" : " " + Italic("COMMAND") + "\n";
    for (const OptionView &option : command.options)
        if (option.names.back() != "--help")
            out += OptionText(option);
    if (!command.footer.empty())
        out += ".PP\n.nf\n" + Roff(command.footer) + (command.footer.back() == '\n' ? "" : "\n") + ".fi\n";
    for (const CommandView &inner : command.commands)
        out += CommandText(inner, path + " " + inner.name);
    return out;
}

constexpr char kEnvironment[] = R"(.SH ENVIRONMENT
.TP
.B OXA_BOARD
The board of a command that is given none.
.TP
.B OXA_PROFILE
The profile of a command that is given none; without it the board's own, else default.
.TP
.B NO_COLOR
Not empty: no colour, unless \fB\-\-color=always\fR is given.
.SH SEE ALSO
.BR ipmitool (1),
.BR ipmi\-sensors (8)
)";

// ---- completion --------------------------------------------------------------------------------------

// Values after "=" are completed alone where readline takes "=" for the end of a word.
constexpr char kBash[] = R"(# bash completion for oxa-sensors; it asks the program itself
_oxa_sensors() {
    local cur prev words cword line files=
    _get_comp_words_by_ref -n = cur prev words cword || return
    COMPREPLY=()
    while IFS= read -r line; do
        case $line in
        :files) files=-f ;;
        :folders) files=-d ;;
        *) COMPREPLY+=("${line%%$'\t'*}") ;;
        esac
    done < <("${words[0]}" complete "${words[@]:1:cword}" 2>/dev/null)
    if [[ $cur == *=* && $COMP_WORDBREAKS == *=* ]]; then
        COMPREPLY=("${COMPREPLY[@]#*=}")
    fi
    if [[ -n $files ]]; then
        compopt -o filenames
        while IFS= read -r line; do
            [[ " ${COMPREPLY[*]} " == *" $line "* ]] || COMPREPLY+=("$line")
        done < <(compgen "$files" -- "${cur#--*=}")
    elif [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
}
complete -F _oxa_sensors oxa-sensors
)";

constexpr char kZsh[] = R"(#compdef oxa-sensors
# zsh completion for oxa-sensors; it asks the program itself
_oxa_sensors() {
    local line meaning
    local -a candidates
    for line in "${(@f)$("${words[1]}" complete "${(@)words[2,CURRENT]}" 2>/dev/null)}"; do
        case $line in
        :files) _files ;;
        :folders) _files -/ ;;
        ?*) meaning=${line#*$'\t'}
            candidates+=("${${line%%$'\t'*}//:/\\:}${meaning:+:$meaning}") ;;
        esac
    done
    (( ${#candidates} )) && _describe -V oxa-sensors candidates
}
if [[ $funcstack[1] == _oxa-sensors ]]; then
    _oxa_sensors "$@"
else
    compdef _oxa_sensors oxa-sensors
fi
)";

constexpr char kFish[] = R"(# fish completion for oxa-sensors; it asks the program itself
function __oxa_sensors_complete
    set -l words (commandline -opc) (commandline -ct)
    for line in ($words[1] complete $words[2..-1] 2>/dev/null)
        switch $line
            case ':files'
                __fish_complete_path (commandline -ct)
            case ':folders'
                __fish_complete_directories (commandline -ct)
            case '*'
                echo $line
        end
    end
end
complete -c oxa-sensors -f -a '(__oxa_sensors_complete)'
)";

} // namespace

std::string ManualPage(const CommandView &program) {
    std::string out = ".TH OXA\\-SENSORS 1 \"\" \"oxa\\-sensors " + Roff(kVersion) + "\" \"User Commands\"\n";
    out += ".SH NAME\noxa\\-sensors \\- " + Roff(program.about) + "\n";
    out +=
        ".SH SYNOPSIS\n" + Bold("oxa-sensors") + " " + Italic("COMMAND") + " [" + Italic("OPTIONS") + "]\n";
    out += ".SH OPTIONS\n";
    for (const OptionView &option : program.options)
        out += OptionText(option);
    out += ".SH COMMANDS\n";
    for (const CommandView &command : program.commands)
        out += CommandText(command, command.name);
    return out + ".SH EXIT STATUS\n" + Roff(program.footer) + "\n" + kEnvironment;
}

std::string CompletionScript(const std::string &shell) {
    if (shell == "bash")
        return kBash;
    if (shell == "zsh")
        return kZsh;
    if (shell == "fish")
        return kFish;
    throw InputError("generate: no completion for '" + shell + "'; there are bash, zsh, fish");
}

} // namespace workbench
