// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board.h"

namespace sim {

std::string ChannelLetters(uint32_t channel) {
    std::string letters;
    for (uint32_t rest = channel + 1; rest != 0; rest = (rest - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
    return letters;
}

std::string DefaultDimmName(uint32_t dimm) {
    return ChannelLetters(dimm / 2) + std::to_string(dimm % 2);
}

std::string DimmName(const Dimms &dimms, uint32_t dimm) {
    return dimm < dimms.names.size() ? dimms.names[dimm] : DefaultDimmName(dimm);
}

} // namespace sim
