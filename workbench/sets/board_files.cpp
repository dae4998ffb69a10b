// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/board_files.h"

#include <algorithm>
#include <filesystem>

#include "base/errors.h"
#include "replay/captured_board.h"

namespace workbench {

std::vector<std::string> BoardFilesOf(const std::string &folder) {
    std::error_code error;
    if (NamesCapture(folder)) { // one machine
        const std::string file = folder.substr(folder.find(':') + 1);
        if (std::filesystem::is_directory(file, error))
            throw InputError(folder +
                             ": a capture is a file, and this a folder; for the boards in it write " + file);
        return {folder};
    }
    std::vector<std::string> out;
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
