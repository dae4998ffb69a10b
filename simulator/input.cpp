// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/input.h"

namespace sim {

std::optional<std::string> ReadAll(std::istream &stream) {
    constexpr size_t kMost = size_t{kMostInputMegabytes} << 20;
    std::string out;
    char part[1 << 16];
    while (stream.read(part, sizeof part), stream.gcount() > 0) {
        out.append(part, static_cast<size_t>(stream.gcount()));
        if (out.size() > kMost)
            return std::nullopt;
    }
    return out;
}

} // namespace sim
