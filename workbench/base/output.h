// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where results go: whole or not at all.
#ifndef OXA_WORKBENCH_BASE_OUTPUT_H
#define OXA_WORKBENCH_BASE_OUTPUT_H

#include <string>

namespace workbench {

// False with errno when not all of it could be written.
bool WriteAll(int fd, const std::string &text);

// Writes everything to standard output.  A reader that has gone away ("| head") is no error.
void PrintOut(const std::string &text);

// Whether anything was given to PrintOut.
bool AnythingPrinted();

// What -o says for standard output.
constexpr char kStandardOutput[] = "-";
// Puts a result where -o says.
void WriteResult(const std::string &output, const std::string &content);
// InputError, before any work is done, where `what` ("raw records are") would go to a terminal and is no text.
void KeepFromTerminal(const std::string &output, const std::string &what);
// InputError where --json, which tells of the file that is written, would stand beside the result itself.
void KeepJsonApart(const std::string &output, bool json);

// Puts the content at the path in one step: readers see the old file or the new one, never half of it.
void WriteFileAtomically(const std::string &path, const std::string &content);

// The same for a file in a folder that goes with this process: nobody reads it yet, and nothing has to outlive a power cut.
// A sync takes milliseconds, and there may be hundreds of them.
void WriteTemporaryFile(const std::string &path, const std::string &content);

} // namespace workbench
#endif
