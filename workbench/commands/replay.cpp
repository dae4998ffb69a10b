// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "commands/commands.h"
#include "replay/replay.h"

namespace workbench {
namespace {

struct ReplayOptions {
    std::string file;
    bool calls = false;
    bool json = false;
};

// Of an entry that did not return; the entry itself, where it had called nothing.
const CapturedCall &LastCall(const CapturedEntry &entry) {
    return entry.calls.empty() ? entry : entry.calls.back();
}

// The last entry that did not return; null: all of them did.
const CapturedEntry *OpenEntry(const Capture &capture) {
    const auto open = std::find_if(capture.entries.rbegin(), capture.entries.rend(),
                                   [](const CapturedEntry &entry) { return !entry.ended; });
    return open == capture.entries.rend() ? nullptr : &*open;
}

std::string CodeText(const Capture &capture) {
    return Hex(capture.code, 8);
}

std::string Counted(size_t count, const char *one, const char *more) {
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

std::string CaptureText(const Capture &capture) {
    return capture.path + ": library " + capture.version + " (" + capture.library + ", code " +
           CodeText(capture) + "), " + std::to_string(8 * capture.pointer_size) + " bits, process " +
           std::to_string(capture.process) + "; " + Counted(capture.entries.size(), "entry", "entries") +
           ", " + Counted(capture.Calls(), "call", "calls") + "\n";
}

// What the file says of itself that a reader should know.
std::vector<std::string> Remarks(const Capture &capture) {
    std::vector<std::string> out = capture.Lacks();
    if (!capture.missing.empty())
        out.push_back("the firmware does not have " + Join(capture.missing, ", "));
    if (capture.threads > 1)
        out.push_back(std::to_string(capture.threads) +
                      " threads called the library; their entries are played one after the other");
    const bool cut = !capture.stopped.empty() || !capture.torn.empty(); // the process went on
    for (size_t i = 0; i < capture.entries.size(); ++i)
        if (const CapturedEntry &entry = capture.entries[i]; !entry.ended)
            out.push_back(
                (cut ? "the capture ends within entry " : "the process had not come back from entry ") +
                std::to_string(i + 1) + ", " + CallText(entry) +
                "; its last call: " + CallText(LastCall(entry)) + " = " + AnswerText(LastCall(entry)));
    if (!capture.ended && !cut && OpenEntry(capture) == nullptr)
        out.push_back("the process still ran, or died between two entries");
    return out;
}

std::string CallsText(const Capture &capture) {
    std::string out;
    for (size_t i = 0; i < capture.entries.size(); ++i) {
        const CapturedEntry &entry = capture.entries[i];
        out += std::to_string(i + 1) + "  " + CallText(entry) + "\n";
        for (const CapturedCall &call : entry.calls)
            out += "   " + CallText(call) + " = " + AnswerText(call) + "\n";
        out += "   = " + AnswerText(entry) + "\n";
    }
    return out;
}

std::string DifferenceText(const ReplayDifference &difference) {
    const std::string call = difference.call != 0 ? ", call " + std::to_string(difference.call) : "";
    return "entry " + std::to_string(difference.entry) + call + ": " + difference.where + ": " +
           difference.what + "\n";
}

bool SameAgain(const Replayed &replayed) {
    return replayed.differences.empty() && replayed.died.empty() && replayed.notes.empty();
}

std::string ReplayText(const Capture &capture, const Replayed &replayed, bool calls) {
    std::string out = CaptureText(capture);
    for (const std::string &remark : Remarks(capture))
        out += "note: " + remark + "\n";
    if (replayed.moved != 0)
        out += "note: " + Counted(replayed.moved, "log line stands", "log lines stand") +
               " on another line of the source; the numbers of source lines are not compared\n";
    for (const std::string &note : replayed.notes)
        out += "note: " + note + "\n";
    if (calls)
        out += CallsText(capture);
    for (const ReplayDifference &difference : replayed.differences)
        out += DifferenceText(difference);
    if (!replayed.died.empty())
        out += "the library ended its process: " + replayed.died + "\n";
    out += Counted(replayed.entries, "entry", "entries") + " played, " +
           Counted(replayed.calls, "call", "calls") + " answered: ";
    if (SameAgain(replayed))
        return out + "everything came out the same, byte for byte\n";
    const std::string left = replayed.notes.empty()
                                 ? ""
                                 : ", " + Counted(replayed.notes.size(), "entry", "entries") + " not played";
    return out + Counted(replayed.differences.size(), "difference", "differences") + left + "\n";
}

Json ItemsJson(const std::vector<Item> &items) {
    Json out = Json::array();
    for (const Item &item : items)
        out.push_back(item.kind == Item::Kind::kRoom ? Json(nullptr) : Json(ItemText(item)));
    return out;
}

Json CallJson(const CapturedCall &call) {
    Json out{{"call", Printable(call.name)},
             {"thread", call.thread},
             {"returned", call.ended},
             {"in", ItemsJson(call.in)},
             {"out", ItemsJson(call.out)}};
    out["result"] = call.result ? Json(ItemText(*call.result)) : Json(nullptr);
    return out;
}

Json EntriesJson(const Capture &capture) {
    Json out = Json::array();
    for (const CapturedEntry &entry : capture.entries) {
        Json one = CallJson(entry);
        one["calls"] = Json::array();
        for (const CapturedCall &call : entry.calls)
            one["calls"].push_back(CallJson(call));
        out.push_back(std::move(one));
    }
    return out;
}

std::string ReplayJson(const Capture &capture, const Replayed &replayed, bool calls) {
    Json out{
        {"capture", capture.path},   {"version", capture.version},           {"library", capture.library},
        {"code", CodeText(capture)}, {"pointer_size", capture.pointer_size}, {"process", capture.process},
        {"bytes", capture.bytes},    {"entries", capture.entries.size()},    {"calls", capture.Calls()},
        {"ended", capture.ended},    {"remarks", Remarks(capture)}};
    const CapturedEntry *open = OpenEntry(capture);
    out["last_call"] = open != nullptr ? CallJson(LastCall(*open)) : Json(nullptr);
    if (calls)
        out["recorded"] = EntriesJson(capture);
    Json differences = Json::array();
    for (const ReplayDifference &d : replayed.differences)
        differences.push_back({{"entry", d.entry}, {"call", d.call}, {"where", d.where}, {"what", d.what}});
    out["played"] = {{"entries", replayed.entries},          {"calls", replayed.calls},
                     {"same", SameAgain(replayed)},          {"died", replayed.died},
                     {"moved_lines", replayed.moved},        {"notes", replayed.notes},
                     {"differences", std::move(differences)}};
    return Dump(out);
}

void RunReplay(const ReplayOptions &options) {
    const Capture capture = ReadCapture(options.file);
    const Replayed replayed = Replay(capture);
    PrintOut(options.json ? ReplayJson(capture, replayed, options.calls)
                          : ReplayText(capture, replayed, options.calls));
    if (!SameAgain(replayed))
        throw ExitStatus(kNoSet);
}

} // namespace

void AddReplayCommand(Command &program) {
    Command command = program.AddCommand(
        "replay", "Ask the library again what was recorded on a machine, and compare every byte");
    const auto options = std::make_shared<ReplayOptions>();
    command.AddOption("FILE", options->file, "What liboxacapture.so wrote").Required().Takes("");
    command.AddFlag("--calls", options->calls, "Print what was recorded too, a line for each call");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer("Exit status: 0 everything came out the same; 1 it did not; 2 wrong input.");
    command.Example("oxa-sensors replay tests/capture/machine.cap");
    command.Runs([options] { RunReplay(*options); });
}

} // namespace workbench
