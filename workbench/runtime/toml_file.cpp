// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/toml_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "base/input.h"

namespace workbench {

toml::table LoadToml(const std::string &path, const std::string &example) {
    const sim::rules::Where where{.path = path, .section = "", .key = ""};
    const std::string right = "give the path of a file such as " + example;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        sim::rules::Fail(where, 0, "cannot be read (it is a directory)", right);
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        sim::rules::Fail(where, 0, std::string("cannot be read (") + std::strerror(errno) + ")", right);
    const std::string text = ReadAllOf(file, path);
    try {
        return toml::parse(text, path);
    } catch (const toml::parse_error &error) {
        sim::rules::Fail(where, error.source().begin.line, "broken TOML: " + std::string(error.description()),
                         "write key = value, [table] and [[table]] lines");
    }
}

} // namespace workbench
