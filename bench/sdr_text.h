// SPDX-License-Identifier: GPL-3.0-or-later
//
// Records as the text that `sdrcomp` reads.
#ifndef OXA_BENCH_SDR_TEXT_H
#define OXA_BENCH_SDR_TEXT_H

#include <cstdint>
#include <string>

namespace bench {

// One full or compact record.  Fields that are 0 are left out, as somebody would who writes it by hand.
std::string RecordText(const uint8_t *slot);

} // namespace bench
#endif
