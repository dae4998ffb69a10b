// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/captured_board.h"

#include "base/text.h"
#include "replay/board_text.h"

namespace workbench {
namespace {

constexpr std::string_view kPrefix = "capture:";

} // namespace

bool NamesCapture(const std::string &board) {
    return board.starts_with(kPrefix);
}

std::string CapturedBoardText(const Capture &capture, const CapturedMachine &machine) {
    std::string text =
        "# What a machine answered: " + Printable(capture.path) + ", library " + capture.version + ".\n";
    for (const std::string &line : machine.unsaid)
        text += "# not said here: " + OneLine(line) + "\n";
    return text + "\n" + BoardText(machine.board, machine.faults);
}

sim::BoardFile CapturedBoard(const std::string &board) {
    const Capture capture = ReadCapture(board.substr(kPrefix.size()));
    return sim::LoadBoardText(CapturedBoardText(capture, MachineOf(capture)), board);
}

} // namespace workbench
