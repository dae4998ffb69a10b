// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/replay.h"

#include <csignal>
#include <cstring>
#include <sys/wait.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/json.h"
#include "base/text.h"
#include "replay/answers.h"
#include "replay/play_entry.h"

namespace workbench {
namespace {

// What the child says: a line of JSON for each of these.
constexpr char kBegins[] = "begins", kEnds[] = "ends", kNote[] = "note", kFails[] = "fails";

Json DifferenceJson(const ReplayDifference &difference) {
    return {{"entry", difference.entry},
            {"call", difference.call},
            {"where", difference.where},
            {"what", difference.what}};
}

void PlayAll(const Capture &capture, const Say &say) {
    const auto tell = [&say](const Json &line) { say(line.dump() + "\n"); };
    LetPlayersAnswer();
    for (size_t i = 0; i < capture.entries.size(); ++i) {
        const CapturedEntry &entry = capture.entries[i];
        tell({{kBegins, i + 1}});
        std::vector<ReplayDifference> differences;
        Player player(entry, i + 1, differences);
        UsePlayer(&player);
        const std::string refused = PlayEntry(entry, player);
        if (!refused.empty()) {
            tell({{kNote, "entry " + std::to_string(i + 1) + ", " + Printable(entry.name) +
                              ": not played: " + refused}});
            continue;
        }
        Json told{{kEnds, player.Asked()}, {"moved", player.Moved()}, {"differences", Json::array()}};
        for (const ReplayDifference &difference : differences)
            told["differences"].push_back(DifferenceJson(difference));
        tell(told);
    }
}

void TakeLine(const Json &line, Replayed &out, size_t &playing) {
    if (line.contains(kBegins)) {
        playing = line[kBegins];
    } else if (line.contains(kNote)) {
        out.notes.push_back(line[kNote]);
    } else if (line.contains(kFails)) {
        throw SetError(line[kFails].get<std::string>());
    } else {
        playing = 0;
        ++out.entries;
        out.calls += line[kEnds].get<size_t>();
        out.moved += line["moved"].get<size_t>();
        for (const Json &one : line["differences"])
            out.differences.push_back({one["entry"], one["call"], one["where"], one["what"]});
    }
}

std::string EndText(int status, const Capture &capture, size_t playing) {
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return "";
    const std::string how =
        WIFSIGNALED(status) ? strsignal(WTERMSIG(status)) : "exit " + std::to_string(WEXITSTATUS(status));
    if (playing == 0)
        return how;
    return how + " in entry " + std::to_string(playing) + ", " + CallText(capture.entries[playing - 1]);
}

} // namespace

Replayed Replay(const Capture &capture) {
    const Apart apart = RunApart([&capture](const Say &say) {
        try {
            PlayAll(capture, say);
        } catch (const SetError &error) {
            say(Json{{kFails, error.what()}}.dump() + "\n");
        }
    });
    Replayed out;
    size_t playing = 0; // from 1; 0: none
    for (size_t at = 0, end; (end = apart.said.find('\n', at)) != std::string::npos; at = end + 1)
        TakeLine(Json::parse(apart.said.substr(at, end - at)), out, playing);
    out.died = EndText(apart.status, capture, playing);
    return out;
}

} // namespace workbench
