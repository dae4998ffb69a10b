// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whole files of others.
#ifndef OXA_WORKBENCH_BASE_INPUT_H
#define OXA_WORKBENCH_BASE_INPUT_H

#include <istream>
#include <string>

namespace workbench {

// All of a stream.  InputError, naming it, when it is longer than any input may be (simulator/input.h).
std::string ReadAllOf(std::istream &stream, const std::string &name);

} // namespace workbench
#endif
