// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/notes.h"

#include <cstdio>

namespace workbench {
namespace {

bool g_told = true;

} // namespace

void TellNote(const std::string &text) {
    if (g_told)
        std::fprintf(stderr, "oxa-sensors: note: %s\n", text.c_str());
}

void KeepNotesBack() {
    g_told = false;
}

} // namespace workbench
