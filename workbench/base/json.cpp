// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/json.h"

#include <algorithm>

#include "base/errors.h"

namespace workbench {

std::string Dump(const Json &json) {
    Json document{{"format", kJsonFormat}};
    document.update(json);
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string ErrorDocument(const std::string &message, int status) {
    return Dump({{"error", {{"message", message}, {"status", status}}}});
}

Json ParseJson(const std::string &path, const std::string &text) {
    try {
        return Json::parse(text);
    } catch (const Json::parse_error &error) {
        const size_t at =
            std::min(std::max<size_t>(error.byte, 1) - 1, text.size()); // of the byte that cannot be
        const auto lines = std::count(text.begin(), text.begin() + static_cast<long>(at), '\n');
        const size_t before = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
        const size_t column = at - (before == std::string::npos ? 0 : before + 1);
        throw InputError(path + ":" + std::to_string(lines + 1) + ":" + std::to_string(column + 1) + ": " +
                         (at == text.size() ? "the JSON ends here, but is not complete" : "this is no JSON"));
    }
}

} // namespace workbench
