// SPDX-License-Identifier: GPL-3.0-or-later
//
// JSON whose keys keep their order, and the form of every document that is printed.
#ifndef OXA_WORKBENCH_BASE_JSON_H
#define OXA_WORKBENCH_BASE_JSON_H

#include <nlohmann/json.hpp>
#include <string>

namespace workbench {

using Json = nlohmann::ordered_json;

// The number goes up when a key that was there goes away or means something else; new keys may come any time.
constexpr int kJsonFormat = 1;

// A document: "format" first, then what the command has to say.
std::string Dump(const Json &json);

// Text that somebody else wrote, by the name of its file; InputError with the place where it is no JSON.
Json ParseJson(const std::string &path, const std::string &text);

// What stands on standard output in place of a result: {"format": 1, "error": {"message": ..., "status": 2}}.
std::string ErrorDocument(const std::string &message, int status);

} // namespace workbench
#endif
