// SPDX-License-Identifier: GPL-3.0-or-later
//
// JSON whose keys keep their order, and how it is printed.
#ifndef OXA_WORKBENCH_BASE_JSON_H
#define OXA_WORKBENCH_BASE_JSON_H

#include <nlohmann/json.hpp>
#include <string>

namespace workbench {

using Json = nlohmann::ordered_json;

std::string Dump(const Json &json);

} // namespace workbench
#endif
