// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board_file.h"

#include <algorithm>
#include <filesystem>

#include "simulator/board_file_sections.h"
#include "simulator/board_file_toml.h"

namespace sim {
namespace {

using rules::Draft;

std::string AllMistakes(const std::vector<Mistake> &mistakes) {
    std::string text;
    for (size_t i = 0; i < std::min(mistakes.size(), kMostMistakes); ++i)
        text += (i == 0 ? "" : "\n") + mistakes[i].Text();
    if (mistakes.size() > kMostMistakes)
        text += "\n" + mistakes.front().path + ": more than " + std::to_string(kMostMistakes) +
                " mistakes; the others are told when these are gone";
    return text;
}

BoardFile FromTable(toml::table table, const std::string &shown_path) {
    Draft draft = rules::ReadBoard(table, shown_path);
    return {std::move(draft.board), std::move(draft.notes), std::move(draft.faults),
            LinesOf(std::move(table))};
}

} // namespace

std::string Mistake::Text() const {
    std::string text = path;
    if (place.line != 0)
        text += ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
    return text + ": " + wrong + "; " + right;
}

BoardError::BoardError(std::vector<Mistake> mistakes)
    : std::runtime_error(AllMistakes(mistakes)), mistakes_(std::move(mistakes)) {}

BoardFile LoadBoard(const std::string &path) {
    return FromTable(LoadToml(path, rules::kBoardExample), path);
}

BoardFile LoadBoardText(const std::string &text, const std::string &shown_path) {
    return FromTable(ParseToml(text, shown_path), shown_path);
}

rules::Draft rules::ReadBoard(const toml::table &table, const std::string &shown_path) {
    const Where file{.path = shown_path, .section = "", .key = ""};
    Draft draft;
    draft.board.name = std::filesystem::path(shown_path).stem().string();
    ReadTable(file, table, FileRules(draft));
    return draft;
}

std::vector<BoardKey> BoardKeys() {
    Draft draft; // only its keys are looked at
    std::vector<BoardKey> keys;
    rules::ListKeys("", rules::FileRules(draft), keys);
    return keys;
}

} // namespace sim
