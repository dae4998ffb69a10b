// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/input.h"

#include "base/errors.h"
#include "simulator/input.h"

namespace workbench {

std::string ReadAllOf(std::istream &stream, const std::string &name) {
    if (std::optional<std::string> all = sim::ReadAll(stream))
        return std::move(*all);
    throw InputError(name + ": more than " + std::to_string(sim::kMostInputMegabytes) +
                     " MB; no file that is read here is that long");
}

} // namespace workbench
