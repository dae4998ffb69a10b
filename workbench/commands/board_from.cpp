// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/notes.h"
#include "base/output.h"
#include "commands/commands.h"
#include "replay/asked.h"
#include "replay/captured_board.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

struct BoardFromOptions {
    std::string file, output = kStandardOutput;
    bool json = false;
};

// A pass of the capture, built again from the board.
struct Checked {
    std::string profile;
    size_t recorded = 0, built = 0; // sensors
    std::string difference;         // empty: the same
};

// The first sensor that is another one.
std::string FirstDifference(const CapturedEntry &pass, const StaticSet &set) {
    const std::string &slots = pass.out[0].Bytes(), &entries = pass.out[1].Bytes();
    for (const Sensor &sensor : set.sensors) {
        const size_t at = sensor.ordinal - 1;
        const std::string record(sensor.record.begin(), sensor.record.end());
        const std::string entry(sensor.entry.begin(), sensor.entry.end());
        if (slots.compare(at * SDR_SLOT_SIZE, SDR_SLOT_SIZE, record) != 0 ||
            entries.compare(at * DEV_TAB_ENTRY_SIZE, DEV_TAB_ENTRY_SIZE, entry) != 0)
            return "sensor " + std::to_string(sensor.ordinal) + " is another one";
    }
    return "";
}

Checked CheckPass(const CapturedEntry &pass, const std::string &board) {
    Checked out{ProfileOfDriver(pass.name), 0, 0, ""};
    out.recorded = pass.out.size() == 3 ? pass.out[0].Bytes().size() / SDR_SLOT_SIZE : 0;
    const bool counted = pass.out.size() == 3 && pass.out[2].kind == Item::Kind::kNumber;
    RunOptions run;
    run.board = board;
    run.profile = out.profile;
    try {
        const StaticSet set = BuildStaticSetApart(run);
        out.built = set.sensors.size();
        if (!counted)
            out.difference = "the pass was recorded without a count";
        else if (out.built != out.recorded)
            out.difference = std::to_string(out.recorded) + " sensors were recorded";
        else
            out.difference = FirstDifference(pass, set);
    } catch (const SetError &error) {
        if (counted)
            out.difference = error.what();
    }
    return out;
}

std::vector<Checked> CheckPasses(const Capture &capture, const std::string &board) {
    std::vector<Checked> out;
    for (const CapturedEntry &entry : capture.entries) {
        const bool whole = entry.ended && entry.in.size() == 3 && entry.in[2].kind != Item::Kind::kNull;
        if (whole && !ProfileOfDriver(entry.name).empty())
            out.push_back(CheckPass(entry, board));
    }
    return out;
}

bool AllSame(const std::vector<Checked> &passes) {
    for (const Checked &pass : passes)
        if (!pass.difference.empty())
            return false;
    return true;
}

std::string CheckedText(const Checked &pass) {
    const std::string what =
        "profile " + pass.profile + ": " + std::to_string(pass.built) + " sensors built, ";
    return what + (pass.difference.empty() ? "the same as recorded" : "not as recorded: " + pass.difference);
}

std::string BoardReport(const BoardFromOptions &options, const Capture &capture,
                        const CapturedMachine &machine, const std::vector<Checked> &passes) {
    std::string out;
    for (const std::string &lack : capture.Lacks())
        out += "note: " + lack + "\n";
    for (const Checked &pass : passes)
        out += CheckedText(pass) + "\n";
    if (passes.empty())
        out += "no static pass was recorded to its end: nothing to compare with\n";
    for (const std::string &line : machine.unsaid)
        out += "not said: " + line + "\n";
    return options.output + ": written\n" + out;
}

std::string BoardFromJson(const BoardFromOptions &options, const Capture &capture,
                          const CapturedMachine &machine, const std::vector<Checked> &passes,
                          const std::string &text) {
    Json out{{"capture", options.file},
             {"same", AllSame(passes)},
             {"remarks", capture.Lacks()},
             {"passes", Json::array()},
             {"unsaid", machine.unsaid}};
    const bool to_stdout = options.output == kStandardOutput;
    out["board"] = to_stdout ? Json(nullptr) : Json(options.output);
    if (to_stdout)
        out["text"] = text;
    for (const Checked &pass : passes)
        out["passes"].push_back({{"profile", pass.profile},
                                 {"recorded", pass.recorded},
                                 {"built", pass.built},
                                 {"difference", pass.difference}});
    return Dump(out);
}

void BoardFrom(const BoardFromOptions &options) {
    const Capture capture = ReadCapture(options.file);
    const CapturedMachine machine = MachineOf(capture);
    const std::string text = CapturedBoardText(capture, machine);
    const std::vector<Checked> passes = CheckPasses(capture, "capture:" + options.file);
    const bool to_stdout = options.output == kStandardOutput;
    if (!to_stdout)
        WriteFileAtomically(options.output, text);
    if (options.json)
        PrintOut(BoardFromJson(options, capture, machine, passes, text));
    else
        PrintOut(to_stdout ? text : BoardReport(options, capture, machine, passes));
    for (const Checked &pass : passes)
        if (to_stdout && !options.json && !pass.difference.empty())
            TellNote(CheckedText(pass));
    if (!AllSame(passes))
        throw ExitStatus(kNoSet);
}

} // namespace

void AddBoardFromCommand(Command &program) {
    Command command = program.AddCommand(
        "board-from", "The board description that gives the answers recorded on a machine");
    const auto options = std::make_shared<BoardFromOptions>();
    command.AddOption("FILE", options->file, "What liboxacapture.so wrote").Required().Takes("");
    command.AddOutput(options->output, "Write the description here").ShowsDefault();
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(
        "Exit status: 0 the board builds what was recorded; 1 it does not; 2 wrong input (nothing is written).");
    command.Example("oxa-sensors board-from tests/capture/machine.cap");
    command.Runs([options] { BoardFrom(*options); });
}

} // namespace workbench
