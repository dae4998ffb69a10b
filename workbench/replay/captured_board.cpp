// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/captured_board.h"

#include "base/text.h"
#include "replay/board_text.h"
#include "replay/machine_files.h"

namespace workbench {
namespace {

constexpr std::string_view kPrefix = "capture:";
constexpr size_t kMostUnsayable = 100;  // answers that no board file can say; with more it is told as it is
constexpr size_t kMostQuestions = 4096; // above what any machine is asked

using Questions = std::vector<AskedOnce>;

bool CanBeRead(const Capture &capture, const Questions &questions, size_t first) {
    const Questions some(questions.begin(), questions.begin() + static_cast<long>(first));
    try {
        sim::LoadBoardText(CapturedBoardText(capture, MachineOf(capture, some)), capture.path);
        return true;
    } catch (const sim::BoardError &) {
        return false;
    }
}

// The place of a question with which the board cannot be read any more; their number: all of it can be read.
size_t Unsayable(const Capture &capture, const Questions &questions) {
    size_t good = 0, bad = questions.size(); // so many of them
    if (CanBeRead(capture, questions, bad))
        return bad;
    while (bad - good > 1) {
        const size_t middle = good + (bad - good) / 2;
        (CanBeRead(capture, questions, middle) ? good : bad) = middle;
    }
    return good;
}

} // namespace

bool NamesCapture(const std::string &board) {
    return board.starts_with(kPrefix);
}

CapturedMachine MachineOf(const Capture &capture) {
    Questions questions = AskedOnceIn(capture);
    std::vector<std::string> unsaid;
    while (questions.size() <= kMostQuestions && unsaid.size() < kMostUnsayable) {
        const size_t at = Unsayable(capture, questions);
        if (at == questions.size())
            break;
        const CapturedCall &call = *questions[at].call;
        unsaid.push_back(CallText(call) + ": answered " + AnswerText(call) + ", which no board file can say");
        questions.erase(questions.begin() + static_cast<long>(at));
    }
    CapturedMachine machine = MachineOf(capture, questions);
    AddFiles(capture, machine);
    machine.unsaid.insert(machine.unsaid.begin(), unsaid.begin(), unsaid.end());
    return machine;
}

std::string CapturedBoardText(const Capture &capture, const CapturedMachine &machine) {
    std::string text =
        "# What a machine answered: " + Printable(capture.path) + ", library " + capture.version + ".\n";
    for (const std::string &lack : capture.Lacks())
        text += "# " + OneLine(lack) + ".\n";
    for (const std::string &line : machine.unsaid)
        text += "# not said here: " + OneLine(line) + "\n";
    return text + "\n" + BoardText(machine.board, machine.faults);
}

sim::BoardFile CapturedBoard(const std::string &board) {
    const Capture capture = ReadCapture(board.substr(kPrefix.size()));
    sim::BoardFile out = sim::LoadBoardText(CapturedBoardText(capture, MachineOf(capture)), board);
    for (const std::string &lack : capture.Lacks())
        out.notes.push_back({board, {}, lack, "what was asked behind that has its default"});
    return out;
}

} // namespace workbench
