// SPDX-License-Identifier: GPL-3.0-or-later
//
// A set built in a child process: the library keeps state that has no reset, so every set of a command that needs
// several of them gets a fresh library.  Result and errors come back as one answer.
#include <cstring>
#include <sys/wait.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/progress.h"
#include "sets/board.h"
#include "sets/static_set.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

// What the child sends: one of these, then the sensors or the error's text.
constexpr char kSet = 'S', kInputError = 'I', kSetError = 'E';

std::string ChildAnswer(const RunOptions &options) {
    try {
        std::string out(1, kSet);
        for (const Sensor &sensor : BuildStaticSet(options).sensors) {
            out.append(sensor.record.begin(), sensor.record.end());
            out.append(sensor.entry.begin(), sensor.entry.end());
        }
        return out;
    } catch (const InputError &error) {
        return kInputError + std::string(error.what());
    } catch (const sim::StorageError &error) {
        return kInputError + std::string(error.what());
    } catch (const std::exception &error) {
        return kSetError + std::string(error.what());
    }
}

StaticSet ParseAnswer(const RunOptions &options, const std::string &answer) {
    const std::string text = answer.empty() ? "" : answer.substr(1);
    if (answer.empty() || (answer[0] == kSetError))
        throw SetError(text.empty() ? options.board + ": the pass ended with its process" : text);
    if (answer[0] == kInputError)
        throw InputError(text);
    StaticSet set{options.board, &FindProfile(options.profile), {}, {}, {}};
    for (size_t at = 0; at + SDR_SLOT_SIZE + DEV_TAB_ENTRY_SIZE <= text.size();) {
        Sensor sensor;
        sensor.ordinal = static_cast<unsigned>(set.sensors.size()) + 1;
        std::memcpy(sensor.record.data(), text.data() + at, SDR_SLOT_SIZE);
        std::memcpy(sensor.entry.data(), text.data() + at + SDR_SLOT_SIZE, DEV_TAB_ENTRY_SIZE);
        set.sensors.push_back(sensor);
        at += SDR_SLOT_SIZE + DEV_TAB_ENTRY_SIZE;
    }
    return set;
}

StaticSet SetOf(const RunOptions &options, const Apart &answer) {
    const bool ended = WIFEXITED(answer.status) && WEXITSTATUS(answer.status) == 0;
    return ParseAnswer(options, ended ? answer.said : "");
}

// With the profile settled and the board read: a wrong name needs no process, and a pipe gives its board once.
RunOptions Settled(RunOptions options) {
    options.profile = SettledProfile(options.profile, options.board);
    FindProfile(options.profile);
    BoardOf(options.board);
    return options;
}

} // namespace

StaticSet BuildStaticSetApart(const RunOptions &given) {
    const RunOptions options = Settled(given);
    return SetOf(options, RunApart([&](const Say &say) { say(ChildAnswer(options)); }));
}

void BuildStaticSetsApart(std::vector<RunOptions> runs, const std::string &doing,
                          const std::function<void(const RunOptions &, const BuiltSet &)> &take) {
    for (RunOptions &run : runs)
        run = Settled(run);
    Progress progress(doing, runs.size(), "sets");
    RunManyApart(
        runs.size(), [&runs](size_t index, const Say &say) { say(ChildAnswer(runs[index])); },
        [&](size_t index, const Apart &answer) {
            BuiltSet built;
            try {
                built.set = SetOf(runs[index], answer);
            } catch (const SetError &error) {
                built.no_set = error.what();
            }
            take(runs[index], built);
            progress.Done(index + 1);
        });
}

} // namespace workbench
