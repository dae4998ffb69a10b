// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/story.h"

#include <filesystem>

#include "base/text.h"
#include "explore/life.h"
#include "sets/static_set.h"
#include "simulator/board_file_rules.h"

namespace workbench {
namespace {

std::string Step(const std::string &name, const std::string &text) {
    return "\n[[step]]\nname = " + sim::rules::schema::Quoted(name) + "\n" + text;
}

std::string ProfileToml(uint32_t id) {
    const Profile *const named = ProfileNamed(std::to_string(id));
    return named == nullptr ? std::to_string(id) : sim::rules::schema::Quoted(named->name);
}

std::string FaultToml(const Move &move) {
    const FaultKind &kind = FaultKinds()[move.fault - 1];
    std::string out = std::string("fault = { call = \"") + kind.call +
                      "\", occurrence = " + std::to_string(move.occurrence);
    if (kind.result >= 0)
        out += ", result = " + std::to_string(kind.result);
    return out + " }\n";
}

std::string KillToml(const Kill &kill) {
    if (kill.change != 0)
        return "kill = { change = " + std::to_string(kill.change) + " }\n";
    return "kill = { write = " + std::to_string(kill.write) + ", percent = " + std::to_string(kill.percent) +
           " }\n";
}

std::string LimitsToml(const UserThresholds &limits) {
    const char *const keys[] = {"unr", "uc", "unc", "lnr", "lc", "lnc"};
    std::string out = "thresholds = { sensor = " + sim::rules::schema::Quoted(limits.sensor);
    for (size_t i = 0; i < std::size(keys); ++i)
        out += std::string(", ") + keys[i] + " = " + std::to_string(limits.values[i]);
    return out + ", mask = " + std::to_string(limits.mask) + " }\n";
}

std::string Action(const World &world, const Move &move, const Life &life) {
    if (move.what == What::kRestart)
        return "restart = true\n";
    if (move.what == What::kLimits)
        return LimitsToml(*life.LastLimits());
    const Part &part = world.parts[move.part];
    if (move.what == What::kGoes)
        return "remove = " + DescriptionToml(part.descriptions.front(), part.number) + "\n";
    if (move.what == What::kFails)
        return "event = " + sim::rules::schema::Quoted(part.event) + "\n";
    std::string out = "add = [\n";
    for (const Words &words : part.descriptions)
        out += "    " + DescriptionToml(words, part.number) + ",\n";
    return out + "]\n";
}

std::string MoveToml(const World &world, const Move &move, const Life &life) {
    std::string out;
    if (move.what == What::kLimits && !life.LastLimits())
        return ""; // there was no sensor to set any for
    if (move.fault != 0)
        out += Step(std::string("the next step: ") + FaultKinds()[move.fault - 1].words, FaultToml(move));
    out += Step(MoveText(world, move), Action(world, move, life) + (move.Dies() ? KillToml(move.kill) : ""));
    if (move.fault != 0)
        out += Step("all goes well again", "clear_faults = true\n");
    if (move.Dies())
        out += Step("the process starts anew", "restart = true\n");
    return out;
}

} // namespace

std::string StoryToml(const World &world, const BrokenStory &story, const std::string &folder) {
    std::error_code ignored;
    std::string board = std::filesystem::proximate(world.board_path, folder, ignored).string();
    if (ignored)
        board = std::filesystem::absolute(world.board_path).string();
    std::string out = "# Written by oxa-sensors explore: the shortest story after which this is so:\n#   " +
                      Printable(story.rule + ": " + story.text) +
                      "\nname = " + sim::rules::schema::Quoted(story.rule + ": " + story.subject) +
                      "\nboard = " + sim::rules::schema::Quoted(board) +
                      "\nprofile = " + ProfileToml(world.board.custom_id) + "\n";
    Life life(world); // tells which limits a user sets
    life.Begin();
    for (const Move &move : story.moves) {
        if (&move != &story.moves.back() ||
            move.what == What::kLimits) // the last one may be what ends the process
            life.Make(move);
        out += MoveToml(world, move, life);
    }
    return out;
}

} // namespace workbench
