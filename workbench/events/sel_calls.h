// SPDX-License-Identifier: GPL-3.0-or-later
//
// Calls of the library's event builders: by name, with arguments as text, on the simulated platform.
#ifndef OXA_WORKBENCH_EVENTS_SEL_CALLS_H
#define OXA_WORKBENCH_EVENTS_SEL_CALLS_H

#include <cstdint>
#include <string>
#include <vector>

#include "events/sel_inverse.h"

namespace workbench {

std::vector<std::string> BuilderNames();
std::string BuilderName(const BuilderView &builder);
const BuilderView &FindBuilder(const std::string &name); // InputError, with the nearest names

// How many values of the builder's list are arguments; what follows is looked up.
size_t ArgumentCount(const BuilderView &builder);
std::string Signature(const BuilderView &builder); // "addLDSEL entityId eventNum ..."

// Words of the command line, by position ("4") or by name ("slotNum=4"), decimal or hexadecimal; "?" is a
// value that nobody knows and becomes 0.  InputError when they do not give every argument once.
std::vector<uint32_t> ParseArguments(const BuilderView &builder, const std::vector<std::string> &words);

// "addLDSEL entityId=3 eventNum=130 ..." of the first values; those that are told unknown are shown as "?".
std::string CallText(const BuilderView &builder, const std::vector<uint32_t> &values,
                     const std::vector<bool> &unknown = {});

// Runs the exported function; the simulated platform must have been started.
uint32_t CallBuilder(const BuilderView &builder, const std::vector<uint32_t> &arguments);

// Profiles under which the library, asked with the candidate's arguments on a platform that answers what the
// candidate says was looked up, writes the candidate's record.  Starts the platform anew.
std::vector<std::string> ProfilesThatWrite(const Candidate &candidate);

SelBytes Composed(const Candidate &candidate); // id and time stamp 0

} // namespace workbench
#endif
