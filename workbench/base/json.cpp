// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/json.h"

namespace workbench {

std::string Dump(const Json &json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace workbench
