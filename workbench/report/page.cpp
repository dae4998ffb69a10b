// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/page.h"

#include <cstdlib>
#include <utility>

#include "report/page_text.h"

namespace workbench {
namespace {

// A value of Content-Security-Policy has its sums in Base64.
std::string Base64OfHex(std::string_view hex) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits; // a character for each of them
    for (const char digit : hex) {
        const auto value = std::strtoul(std::string(1, digit).c_str(), nullptr, 16);
        for (int bit = 3; bit >= 0; --bit)
            bits += static_cast<char>('0' + (value >> bit & 1));
    }
    while (bits.size() % 6 != 0)
        bits += '0';
    std::string out;
    for (size_t at = 0; at < bits.size(); at += 6)
        out += kDigits[std::strtoul(bits.substr(at, 6).c_str(), nullptr, 2)];
    while (out.size() % 4 != 0)
        out += '=';
    return out;
}

// Nothing is fetched from anywhere, and no script or style runs but the page's own, whatever a name of a board says.
std::string Policy() {
    return "default-src 'none'; img-src data:; base-uri 'none'; form-action 'none'; style-src 'sha256-" +
           Base64OfHex(kPageStyleSum) + "'; script-src 'sha256-" + Base64OfHex(kPageScriptSum) + "'";
}

// JSON within a script element: without "<" nothing in it can end the element or begin another.
std::string DataElement(const std::string &id, const Json &json) {
    std::string out = "<script type=\"application/json\" id=\"" + id + "\">";
    for (const char c : json.dump(-1, ' ', true, Json::error_handler_t::replace))
        out += c == '<' ? std::string("\\u003c") : std::string(1, c);
    return out + "</script>\n";
}

using Values = std::vector<std::pair<std::string_view, std::string>>;

// Every "{{name}}" of the page becomes its value; what is put in is not looked at again.
std::string Filled(std::string_view page, const Values &values) {
    std::string out;
    for (size_t at = 0; at < page.size();) {
        const size_t open = page.find("{{", at), close = page.find("}}", open);
        if (close == std::string_view::npos)
            return out.append(page.substr(at));
        out.append(page.substr(at, open - at));
        const std::string_view name = page.substr(open + 2, close - open - 2);
        for (const auto &[key, value] : values)
            if (key == name)
                out += value;
        at = close + 2;
    }
    return out;
}

} // namespace

std::string PageText(const Json &report, const std::vector<Json> &sets) {
    std::string data = DataElement("report", report);
    for (size_t i = 0; i < sets.size(); ++i)
        if (!sets[i].is_null())
            data += DataElement("set-" + std::to_string(i), sets[i]);
    return Filled(kPageHtml, {{"policy", Policy()},
                              {"style", std::string(kPageStyle)},
                              {"data", data},
                              {"script", std::string(kPageScript)}});
}

} // namespace workbench
