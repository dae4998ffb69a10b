// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/board.h"

#include <filesystem>
#include <map>

#include "base/errors.h"
#include "base/notes.h"
#include "replay/captured_board.h"

namespace workbench {
namespace {

sim::BoardFile Load(const std::string &path) {
    return NamesCapture(path) ? CapturedBoard(path) : sim::LoadBoard(path);
}

} // namespace

const sim::BoardFile &BoardOf(const std::string &path) {
    static std::map<std::string, sim::BoardFile> boards;
    const auto known = boards.find(path);
    if (known != boards.end())
        return known->second;
    try {
        const sim::BoardFile &read = boards.emplace(path, Load(path)).first->second;
        for (const sim::Mistake &note : read.notes)
            TellNote(note.Text());
        return read;
    } catch (const sim::BoardError &error) {
        throw InputError(error.what());
    }
}

std::string NameBehind(const sim::Board &board, const std::string &path) {
    const bool own = !board.name.empty() && board.name != std::filesystem::path(path).stem();
    return own ? " (\"" + board.name + "\")" : "";
}

std::string BoardText(const std::string &path) {
    return path + NameBehind(BoardOf(path).board, path);
}

} // namespace workbench
