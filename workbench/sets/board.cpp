// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/board.h"

#include <map>

#include "base/errors.h"

namespace workbench {

const sim::BoardFile &BoardOf(const std::string &path) {
    static std::map<std::string, sim::BoardFile> boards;
    const auto known = boards.find(path);
    if (known != boards.end())
        return known->second;
    try {
        return boards.emplace(path, sim::LoadBoard(path)).first->second;
    } catch (const sim::BoardError &error) {
        throw InputError(error.what());
    }
}

} // namespace workbench
