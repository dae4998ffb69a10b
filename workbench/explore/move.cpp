// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/move.h"

namespace workbench {

const std::vector<FaultKind> &FaultKinds() {
    static const std::vector<FaultKind> kinds = {
        {"IPMICMD_AddSDR", "the repository refuses the record", 0xC4},
        {"IPMICMD_DeleteSDR", "the repository refuses the removal"},
        {"LIBIPMI_Create_IPMI_Local_Session", "there is no session"},
        {"OAL_SemLockByKey", "the store's semaphore is not had"},
        {"sigwrap_open_mode", "the store cannot be opened"},
        {"sigwrap_read", "the store cannot be read"},
        {"ftruncate", "the store cannot be emptied"},
        {"sigwrap_write", "the store cannot be written"},
        {"IniLoadFile", "the record file cannot be loaded"},
        {"IniSaveFile", "an INI file cannot be saved"},
        {"OXA_IniLoadFile", "the FRU id file cannot be loaded"},
        {"oxa_fopen_s", "the limits cannot be opened"},
        {"fwrite", "the limits cannot be written"},
        {"MW_GetSensorThreshInfo", "the live limits cannot be had"},
    };
    return kinds;
}

std::vector<Move> PlainMoves(const World &world) {
    std::vector<Move> out;
    for (size_t i = 0; i < world.parts.size(); ++i) {
        const auto part = static_cast<uint8_t>(i);
        out.push_back({What::kComes, part});
        out.push_back({What::kGoes, part});
        if (!world.parts[i].event.empty())
            out.push_back({What::kFails, part});
    }
    out.push_back({What::kLimits});
    out.push_back({What::kRestart});
    return out;
}

namespace {

std::string Happens(const World &world, const Move &move, bool numbers) {
    if (move.what == What::kLimits)
        return "a user sets limits";
    if (move.what == What::kRestart)
        return "the process starts anew";
    const Part &part = world.parts[move.part];
    return (numbers ? part.Text() : part.kind) + (move.what == What::kComes  ? " comes"
                                                  : move.what == What::kGoes ? " goes"
                                                                             : " fails");
}

} // namespace

std::string MoveText(const World &world, const Move &move) {
    std::string out = Happens(world, move, true);
    if (move.fault != 0)
        out += std::string("; ") + FaultKinds()[move.fault - 1].words +
               (move.occurrence > 1 ? " (call " + std::to_string(move.occurrence) + ")" : "");
    if (move.kill.change != 0)
        out += "; killed before change " + std::to_string(move.kill.change);
    if (move.kill.write != 0)
        out += "; killed in write " + std::to_string(move.kill.write) + ", after " +
               std::to_string(move.kill.percent) + " % of it";
    return out;
}

std::string MoveClass(const World &world, const Move &move) {
    std::string out = Happens(world, move, false);
    if (move.fault != 0)
        out += std::string(", ") + FaultKinds()[move.fault - 1].words;
    return out + (move.Dies() ? ", killed" : "");
}

} // namespace workbench
