// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/input.h"

#include "base/errors.h"

namespace workbench {

std::string ReadAllOf(std::istream &stream, const std::string &name) {
    constexpr size_t kMost = 64 << 20;
    std::string out;
    char part[1 << 16];
    while (stream.read(part, sizeof part), stream.gcount() > 0) {
        out.append(part, static_cast<size_t>(stream.gcount()));
        if (out.size() > kMost)
            throw InputError(name + ": more than 64 MB");
    }
    return out;
}

} // namespace workbench
