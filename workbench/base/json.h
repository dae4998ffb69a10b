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

// Text that somebody else wrote, by the name of its file; InputError with the place where it is no JSON.
Json ParseJson(const std::string &path, const std::string &text);

} // namespace workbench
#endif
