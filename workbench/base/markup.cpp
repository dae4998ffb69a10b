// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/markup.h"

#include <cstdint>
#include <string_view>

#include "base/text.h"

namespace workbench {

std::string GithubText(const std::string &text, bool property) {
    std::string out;
    for (const char c : text)
        if (c == '%' || c == '\r' || c == '\n' || (property && (c == ':' || c == ',')))
            out += "%" + Hex(static_cast<uint8_t>(c)).substr(2);
        else
            out += c;
    return out;
}

std::string MarkdownText(const std::string &text) {
    std::string out;
    for (const char c : text) {
        if (std::string_view("|*_\\`<&[]~").find(c) != std::string_view::npos)
            out += '\\';
        out += c;
    }
    return out;
}

std::string XmlText(const std::string &text) {
    std::string out;
    for (const char c : text)
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\n': // in an attribute it would become a blank
            out += "&#10;";
            break;
        default:
            out += c;
        }
    return out;
}

} // namespace workbench
