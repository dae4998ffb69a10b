// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fnmatch.h>
#include <map>
#include <numeric>

namespace workbench {

std::string Printable(std::string text) {
    for (char &c : text)
        if (c < ' ' || c > '~')
            c = '?';
    return text;
}
namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

size_t EditDistance(const std::string &a, const std::string &b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t substituted = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, substituted});
        }
    }
    return row[b.size()];
}

// A name that merely lacks or adds an end ("PSU_TEMP" for "PSU_TEMP_01") is nearer than its letters say.
size_t Distance(const std::string &wanted, const std::string &candidate) {
    const std::string a = Lower(wanted), b = Lower(candidate);
    if (std::min(a.size(), b.size()) >= 3 &&
        (b.find(a) != std::string::npos || a.find(b) != std::string::npos))
        return a == b ? 0 : 1;
    return EditDistance(a, b) + 1;
}

} // namespace

std::string OneLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    for (char &c : text)
        c = c == '\n' ? ' ' : c;
    return text;
}

std::string Pattern(const std::string &name) {
    std::string out;
    for (const char c : name) {
        const bool digit = std::isdigit(static_cast<unsigned char>(c)) != 0;
        if (!digit || out.empty() || out.back() != '*')
            out += digit ? '*' : c;
    }
    return out;
}

std::string NamesText(const std::vector<std::string> &names, size_t most) {
    std::map<std::string, std::vector<std::string>> alike;
    for (const std::string &name : names)
        alike[Pattern(name)].push_back(name);
    std::vector<std::string> told;
    for (const auto &[pattern, list] : alike)
        if (told.size() < most)
            told.push_back(list.size() == 1 ? list[0] : pattern + " (" + std::to_string(list.size()) + ")");
    if (alike.size() > most)
        told.push_back(std::to_string(alike.size() - most) + " more");
    return Join(told, ", ");
}

std::string FormatNumber(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.7g", value == 0 ? 0.0 : value); // no "-0"
    return text;
}

double Rounded(double value) {
    return std::strtod(FormatNumber(value).c_str(), nullptr);
}

std::vector<std::string> Wrap(const std::string &text, size_t width) {
    std::vector<std::string> lines;
    size_t from = 0;
    while (text.size() - from > width) {
        size_t end = text.rfind(' ', from + width);
        if (end == std::string::npos || end <= from)
            end = std::min(text.find(' ', from), text.size()); // one word that is too long
        if (end == text.size())
            break;
        lines.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    lines.push_back(text.substr(from));
    return lines;
}

std::string Hex(unsigned value, unsigned digits) {
    char text[20];
    std::snprintf(text, sizeof text, "0x%0*X", static_cast<int>(digits), value);
    return text;
}

std::string HexBytes(std::span<const uint8_t> bytes) {
    std::string out;
    char text[4];
    for (const uint8_t byte : bytes) {
        std::snprintf(text, sizeof text, "%02X", byte);
        out += out.empty() ? "" : " ";
        out += text;
    }
    return out;
}

std::string Join(const std::vector<std::string> &parts, const std::string &separator) {
    std::string out;
    for (size_t i = 0; i < parts.size(); ++i)
        out += (i == 0 ? "" : separator) + parts[i];
    return out;
}

bool SameName(const std::string &a, const std::string &b) {
    return Lower(a) == Lower(b);
}

bool HasWildcard(const std::string &pattern) {
    return pattern.find_first_of("*?[") != std::string::npos;
}

bool MatchesGlob(const std::string &name, const std::string &pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

std::vector<std::string> NearestNames(const std::string &wanted, const std::vector<std::string> &candidates,
                                      size_t limit) {
    std::vector<std::pair<size_t, std::string>> ranked;
    for (const std::string &candidate : candidates)
        if (const size_t distance = Distance(wanted, candidate); distance <= wanted.size() / 2 + 1)
            ranked.emplace_back(distance, candidate);
    std::stable_sort(ranked.begin(), ranked.end(), [](auto &a, auto &b) { return a.first < b.first; });
    std::vector<std::string> out;
    for (const auto &[distance, candidate] : ranked)
        if (out.size() < limit && std::find(out.begin(), out.end(), candidate) == out.end())
            out.push_back(candidate);
    return out;
}

} // namespace workbench
