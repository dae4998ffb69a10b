// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a person should know beside a result that is good: "oxa-sensors: note: ..." on standard error.
#ifndef OXA_WORKBENCH_BASE_NOTES_H
#define OXA_WORKBENCH_BASE_NOTES_H

#include <string>

namespace workbench {

void TellNote(const std::string &text);
void TellNotes(const std::string &lines); // a note each
void KeepNotesBack();                     // from now on: a program reads the result, nobody the notes

} // namespace workbench
#endif
