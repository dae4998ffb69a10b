// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/board_files.h"

#include <algorithm>
#include <filesystem>

#include "base/errors.h"
#include "replay/captured_board.h"

namespace workbench {

std::vector<std::string> BoardFilesOf(const std::string &folder) {
    if (NamesCapture(folder)) // one machine
        return {folder};
    std::vector<std::string> out;
    std::error_code error;
    for (const auto &file : std::filesystem::directory_iterator(folder, error))
        if (file.path().extension() == ".toml")
            out.push_back(file.path().string());
    if (error)
        throw InputError(folder + ": " + error.message());
    if (out.empty())
        throw InputError(folder + ": no board descriptions (*.toml) in it");
    std::sort(out.begin(), out.end());
    return out;
}

} // namespace workbench
