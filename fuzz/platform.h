// SPDX-License-Identifier: GPL-3.0-or-later
//
// The simulated platform between two inputs, and the end of an input: a broken rule is a crash.
#ifndef OXA_FUZZ_PLATFORM_H
#define OXA_FUZZ_PLATFORM_H

#include <functional>
#include <string>
#include <vector>

#include "simulator/board.h"

namespace fuzz {

// The library as freshly loaded, no files, this board.
void Restart(const sim::Board &board);

// Runs what the input asks for; a broken promise or invariant is printed and ends the program.
void Judge(const std::function<void()> &run);

// The boards of the tree by name, but those about a guard and the fullest, a pass over which takes too long.
const std::vector<sim::Board> &Boards();

// A file in memory-backed storage that holds the bytes, for readers that take a path; its folder also holds board.toml.
std::string AsFile(const uint8_t *data, size_t size);

} // namespace fuzz
#endif
