// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "simulator/board_file_sections.h"

namespace sim {
namespace {

using rules::Draft;
using rules::Fail;
using rules::Where;

std::string ReadWhole(const std::string &path) {
    const Where where{.path = path, .section = "", .key = ""};
    const std::string right = "give the path of a board file such as boards/two_socket_2u.toml";
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        Fail(where, 0, "cannot be read (it is a directory)", right);
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!file)
        Fail(where, 0, std::string("cannot be read (") + std::strerror(errno) + ")", right);
    text << file.rdbuf();
    return text.str();
}

toml::table Parse(const std::string &text, const Where &where) {
    try {
        return toml::parse(text, where.path);
    } catch (const toml::parse_error &error) {
        const std::string wrong(error.description());
        const bool again = wrong.find("redefine") != wrong.npos;
        Fail(where, error.source().begin.line, "broken TOML: " + wrong,
             again ? "give every key and every table once"
                   : "write key = value, [table] and [[table]] lines");
    }
}

Draft Load(const std::string &text, const std::string &shown_path) {
    const Where file{.path = shown_path, .section = "", .key = ""};
    const toml::table table = Parse(text, file);
    Draft draft;
    draft.board.name = std::filesystem::path(shown_path).stem().string();
    rules::ReadTable(file, table, rules::FileRules(draft));
    return draft;
}

} // namespace

Board LoadBoardFile(const std::string &path) {
    return Load(ReadWhole(path), path).board;
}

Board LoadBoardText(const std::string &text, const std::string &shown_path) {
    return Load(text, shown_path).board;
}

std::vector<Fault> LoadBoardFaults(const std::string &path) {
    return Load(ReadWhole(path), path).faults;
}

std::vector<Fault> LoadBoardFaultsText(const std::string &text, const std::string &shown_path) {
    return Load(text, shown_path).faults;
}

std::vector<BoardKey> BoardKeys() {
    Draft draft; // only its keys are looked at
    std::vector<BoardKey> keys;
    rules::ListKeys("", rules::FileRules(draft), keys);
    return keys;
}

} // namespace sim
