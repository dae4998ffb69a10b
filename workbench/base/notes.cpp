// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/notes.h"

#include <cstdio>
#include <sstream>

namespace workbench {
namespace {

bool g_told = true;

} // namespace

void TellNote(const std::string &text) {
    if (g_told)
        std::fprintf(stderr, "oxa-sensors: note: %s\n", text.c_str());
}

void TellNotes(const std::string &lines) {
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);)
        TellNote(line);
}

void KeepNotesBack() {
    g_told = false;
}

} // namespace workbench
