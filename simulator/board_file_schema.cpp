// SPDX-License-Identifier: GPL-3.0-or-later
//
// Rules of TOML tables as JSON Schema, in the words that editors understand (draft 7).
#include "simulator/board_file_rules.h"

namespace sim::rules::schema {
namespace {

std::string Joined(const std::vector<std::string> &parts) {
    std::string out;
    for (const std::string &part : parts)
        out += (out.empty() ? "" : ", ") + part;
    return out;
}

// Digits of 0 to `max`, without leading zeros; only the limits that keys and lists have.
std::string Digits(int64_t min, int64_t max) {
    if (max < 10)
        return "[" + std::to_string(min) + "-" + std::to_string(max) + "]";
    if (max == 31)
        return "[12]?[0-9]|3[01]";
    return max == 255 ? "[1-9]?[0-9]|1[0-9]{2}|2[0-4][0-9]|25[0-5]" : "[0-9]+";
}

std::string HexDigits(int64_t min, int64_t max) {
    if (max < 10)
        return Digits(min, max);
    return max == 31 ? "[01]?[0-9a-fA-F]" : max == 255 ? "[0-9a-fA-F]{1,2}" : "[0-9a-fA-F]{1,8}";
}

} // namespace

std::string Quoted(const std::string &text) {
    std::string out = "\"";
    for (const char c : text)
        out += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return out + "\"";
}

std::string Integer(int64_t min, int64_t max) {
    return R"({"type": "integer", "minimum": )" + std::to_string(min) + R"(, "maximum": )" +
           std::to_string(max) + "}";
}

std::string Pattern(const std::string &pattern) {
    return R"({"type": "string", "pattern": )" + Quoted("^(" + pattern + ")$") + "}";
}

std::string Enumeration(const std::vector<std::string> &words) {
    std::vector<std::string> quoted;
    for (const std::string &word : words)
        quoted.push_back(Quoted(word));
    return R"({"enum": [)" + Joined(quoted) + "]}";
}

std::string AnyOf(const std::vector<std::string> &schemas) {
    return R"({"anyOf": [)" + Joined(schemas) + "]}";
}

std::string ListOf(const std::string &schema, std::optional<size_t> most) {
    return R"({"type": "array", )" + (most ? R"("maxItems": )" + std::to_string(*most) + ", " : "") +
           R"("items": )" + schema + "}";
}

std::string Table(const Rules &rules) {
    std::vector<std::string> properties, required;
    for (const Rule &rule : rules) {
        properties.push_back(Quoted(rule.key) + ": " + (rule.schema ? rule.schema() : "{}"));
        if (rule.required)
            required.push_back(Quoted(rule.key));
    }
    return R"({"type": "object", "additionalProperties": false, )" +
           (required.empty() ? "" : R"("required": [)" + Joined(required) + "], ") + R"("properties": {)" +
           Joined(properties) + "}}";
}

std::string Keyed(const std::string &key_pattern, const std::string &value) {
    return R"({"type": "object", "propertyNames": {"pattern": )" + Quoted("^(" + key_pattern + ")$") +
           R"(}, "additionalProperties": )" + value + "}";
}

std::string NumberPattern(int64_t min, int64_t max) {
    return "0*(" + Digits(min, max) + ")|0[xX]0*(" + HexDigits(min, max) + ")";
}

std::string NumberList(int64_t max) {
    const std::string number = "(" + NumberPattern(0, max) + ")";
    return ListOf(AnyOf({Integer(0, max), Pattern(number + "(-" + number + ")?")}));
}

} // namespace sim::rules::schema
