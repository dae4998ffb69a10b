// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board_file_toml.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

#include "simulator/board_file.h"
#include "simulator/board_file_rules.h"
#include "simulator/input.h"

namespace sim {
namespace {

using rules::Where;

size_t StartOfLine(const std::string &text, uint32_t line) {
    size_t at = 0;
    for (; line > 1 && at != text.npos; --line)
        at = text.find('\n', at) + 1;
    return at;
}

bool IsToml(const std::string &text) {
    try {
        [[maybe_unused]] const toml::table table = toml::parse(text);
        return true;
    } catch (const toml::parse_error &) {
        return false;
    }
}

// A key that is wrong by itself hides no other: the line is emptied, so that what follows is looked at as well.  A header,
// or a line that is wrong only with those before it, would let mistakes appear that are none.
bool LeaveOut(std::string &text, uint32_t line) {
    const size_t begin = StartOfLine(text, line);
    const size_t end = std::min(text.find('\n', begin), text.size());
    const std::string all = text.substr(begin, end - begin);
    const size_t first = all.find_first_not_of(" \t");
    if (first == all.npos || all[first] == '[' || all.find('=') == all.npos || IsToml(all))
        return false;
    std::fill(text.begin() + static_cast<long>(begin), text.begin() + static_cast<long>(end), ' ');
    return true;
}

// The parser cuts what it quotes when its message gets too long.
std::string Description(const toml::parse_error &error) {
    constexpr size_t kCut = 500;
    const std::string text(error.description());
    return text.size() < kCut ? text : text + " ...";
}

Mistake Broken(const toml::parse_error &error, const std::string &path) {
    const std::string wrong = Description(error);
    const bool again = wrong.find("redefine") != wrong.npos;
    return rules::MakeMistake(
        {.path = path, .section = "", .key = ""}, {error.source().begin.line, error.source().begin.column},
        "broken TOML: " + wrong,
        again ? "give every key and every table once" : "write key = value, [table] and [[table]] lines");
}

} // namespace

toml::table ParseToml(const std::string &text, const std::string &shown_path) {
    std::vector<Mistake> mistakes;
    for (std::string rest = text; mistakes.size() <= kMostMistakes;)
        try {
            toml::table table = toml::parse(rest, shown_path);
            if (mistakes.empty())
                return table;
            break;
        } catch (const toml::parse_error &error) {
            mistakes.push_back(Broken(error, shown_path));
            if (!LeaveOut(rest, error.source().begin.line))
                break;
        }
    throw BoardError(std::move(mistakes));
}

toml::table LoadToml(const std::string &path, const std::string &example) {
    const Where where{.path = path, .section = "", .key = ""};
    const std::string right = "give the path of " + example;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        rules::Fail(where, {}, "cannot be read (it is a directory)", right);
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        rules::Fail(where, {}, std::string("cannot be read (") + std::strerror(errno) + ")", right);
    const std::optional<std::string> text = ReadAll(file);
    if (!text)
        rules::Fail(where, {}, "has more than " + std::to_string(kMostInputMegabytes) + " MB", right);
    return ParseToml(*text, path);
}

} // namespace sim
