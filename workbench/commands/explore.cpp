// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors explore: walks all stories of parts that come, go and fail, of restarts and kills.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/notes.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "explore/known.h"
#include "explore/story.h"
#include "explore/walk.h"
#include "replay/captured_board.h"
#include "runtime/platform.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

constexpr size_t kStoryWidth = 100;
constexpr unsigned kMostDepth = 20;

struct ExploreOptions {
    std::string board, profile, parts, stories;
    uint32_t depth = 3, faults = 0;
    bool json = false;
};

World WorldOf(const ExploreOptions &options) {
    World world;
    world.parts = ReadParts(options.parts);
    world.board = LoadBoardFor(options.board, options.profile);
    world.board_faults = BoardOf(options.board).faults;
    world.board_path = options.board;
    world.faults = options.faults;
    return world;
}

// ---- files -----------------------------------------------------------------------------------------

std::string StoryFile(size_t number, const BrokenStory &story) {
    std::string name = story.rule;
    std::replace(name.begin(), name.end(), ' ', '-');
    const std::string digits = std::to_string(number);
    return std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits + "-" + name + ".toml";
}

// Before the walk, which may take hours.
void MakeFolder(const ExploreOptions &options) {
    if (options.stories.empty())
        return;
    if (NamesCapture(options.board))
        throw InputError(
            "--stories: a story names a board file, no capture; oxa-sensors board-from makes one of it");
    std::error_code error;
    std::filesystem::create_directories(options.stories, error);
    if (error)
        throw InputError("--stories " + options.stories + ": " + error.message());
}

void WriteStories(const ExploreOptions &options, const World &world, const WalkResult &result) {
    if (options.stories.empty())
        return;
    size_t number = 0;
    for (const BrokenStory &story : result.broken)
        WriteFileAtomically(options.stories + "/" + StoryFile(++number, story),
                            StoryToml(world, story, options.stories));
}

// ---- telling it ------------------------------------------------------------------------------------

size_t NewOnes(const WalkResult &result) {
    return static_cast<size_t>(std::count_if(
        result.broken.begin(), result.broken.end(),
        [](const BrokenStory &story) { return KnownOf(story) == nullptr; }));
}

void AddLines(std::string &out, std::string head, const std::string &text) {
    for (const std::string &line : Wrap(text, kStoryWidth - head.size())) {
        out += head + line + "\n";
        head = std::string(head.size(), ' ');
    }
}

std::string FindingText(const World &world, const BrokenStory &story) {
    const KnownStory *const known = KnownOf(story);
    std::string out =
        (known ? Paint("known", Style::kDim, ColourWanted()) : Paint("NEW", Style::kHot, ColourWanted())) +
        "  " + story.rule + ": " + story.subject + "\n";
    for (size_t i = 0; i < story.moves.size(); ++i)
        AddLines(out, "    " + std::to_string(i + 1) + " ", MoveText(world, story.moves[i]));
    AddLines(out, "    -> ", story.text);
    if (known)
        AddLines(out, "    = ", known->reason);
    return out + "\n";
}

std::string Text(const ExploreOptions &options, const World &world, const WalkResult &result) {
    std::string out;
    for (const bool told_known : {false, true}) // new ones first
        for (const BrokenStory &story : result.broken)
            if ((KnownOf(story) != nullptr) == told_known)
                out += FindingText(world, story);
    const size_t fresh = NewOnes(result);
    return out + std::to_string(result.states) + " states, " + std::to_string(result.steps) +
           " steps, depth " + std::to_string(options.depth) + ", faults " + std::to_string(options.faults) +
           ": " + std::to_string(fresh) + " new findings, " + std::to_string(result.broken.size() - fresh) +
           " known; profile " + ProfileName(world.board.custom_id) + ", board " + options.board + "\n";
}

std::string JsonText(const ExploreOptions &options, const World &world, const WalkResult &result) {
    Json out{{"board", options.board},   {"profile", ProfileJson(world.board.custom_id)},
             {"parts", Json::array()},   {"depth", options.depth},
             {"faults", options.faults}, {"states", result.states},
             {"steps", result.steps},    {"levels", result.levels},
             {"new", NewOnes(result)},   {"findings", Json::array()}};
    for (const Part &part : world.parts)
        out["parts"].push_back(part.Text());
    size_t number = 0;
    for (const BrokenStory &story : result.broken) {
        const KnownStory *const known = KnownOf(story);
        Json one{{"known", known != nullptr},
                 {"rule", story.rule},
                 {"subject", story.subject},
                 {"text", story.text},
                 {"reason", known ? Json(known->reason) : Json(nullptr)},
                 {"story", Json::array()}};
        for (const Move &move : story.moves)
            one["story"].push_back(MoveText(world, move));
        ++number;
        one["file"] = options.stories.empty() ? Json(nullptr) : Json(StoryFile(number, story));
        out["findings"].push_back(std::move(one));
    }
    return Dump(out);
}

void RunExplore(const ExploreOptions &options) {
    if (options.depth < 1 || options.depth > kMostDepth)
        throw InputError("--depth: 1 to " + std::to_string(kMostDepth) + " steps");
    World world = WorldOf(options);
    sim::KeepFilesInMemory();
    LearnNames(world);
    MakeFolder(options);
    const auto began = std::chrono::steady_clock::now();
    const WalkResult result = Walk(world, options.depth);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    WriteStories(options, world, result);
    if (seconds > 1)
        TellNote(std::to_string(static_cast<long>(static_cast<double>(result.steps) / seconds * 60)) +
                 " steps a minute, " + std::to_string(static_cast<long>(seconds)) + " seconds");
    PrintOut(options.json ? JsonText(options, world, result) : Text(options, world, result));
    if (NewOnes(result) != 0)
        throw ExitStatus(1);
}

} // namespace

void AddExploreCommand(Command &program) {
    Command command = program.AddCommand(
        "explore",
        "All stories of parts that come, go and fail, of restarts and kills: which of them break something");
    const auto options = std::make_shared<ExploreOptions>();
    AddBoardOption(command, options->board, "Board description (TOML)").Required();
    AddProfileOption(command, options->profile, "Customer profile; default: the board's");
    command
        .AddOption("--parts", options->parts,
                   "Parts and their numbers, as 'disk:0-3,psu:1-2,gpu:1'; there are " +
                       Join(PartKinds(), ", "))
        .Required()
        .Takes("LIST");
    command.AddOption("--depth", options->depth, "Steps of the longest story").ShowsDefault();
    command
        .AddOption("--faults", options->faults,
                   "Platform calls that fail and kills of the process, in one story at most so many")
        .ShowsDefault();
    command
        .AddOption("--stories", options->stories,
                   "Write the story of every finding into this folder, for oxa-sensors scenario")
        .Takes("DIR");
    command.AddFlag("--json", options->json, "JSON");
    command.Footer("Exit status: 0 nothing found, or known findings only; 1 new findings; 2 wrong input, or\n"
                   "the walk cannot go on.");
    command.Example("oxa-sensors explore --board boards/two_socket_2u.toml --profile ferrisk "
                    "--parts 'disk:0,psu:1' --depth 2 --faults 1");
    command.Runs([options] {
        try {
            RunExplore(*options);
        } catch (const SetError &error) { // a walk that cannot go on has found nothing
            throw InputError(error.what());
        }
    });
}

} // namespace workbench
