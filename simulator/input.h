// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whole files of others, for the readers of every program here.
#ifndef OXA_SIMULATOR_INPUT_H
#define OXA_SIMULATOR_INPUT_H

#include <istream>
#include <optional>
#include <string>

namespace sim {

// No board, story, record, log or list is longer, and a device or a pipe may have no end.
inline constexpr unsigned kMostInputMegabytes = 16;

// All of a stream; nothing when it has more than kMostInputMegabytes.
std::optional<std::string> ReadAll(std::istream &stream);

} // namespace sim
#endif
