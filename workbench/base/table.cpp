// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/table.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <sys/ioctl.h>
#include <unistd.h>

namespace workbench {
namespace {

std::string g_colour = "auto";

size_t Width(const std::string &text) {
    return static_cast<size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<uint8_t>(c) & 0xC0) != 0x80; }));
}

const char *Code(Style style) {
    switch (style) {
    case Style::kBold:
        return "\033[1m";
    case Style::kDim:
        return "\033[2m";
    case Style::kWarm:
        return "\033[33m";
    case Style::kHot:
        return "\033[31m";
    default:
        return "";
    }
}

std::string RenderRow(const std::vector<Column> &columns, const std::vector<size_t> &widths,
                      const std::vector<Cell> &row, bool colour) {
    std::string line;
    size_t pending = 0; // blanks that are only written when something follows
    for (size_t i = 0; i < row.size(); ++i) {
        const size_t padding = widths[i] - std::min(widths[i], Width(row[i].text));
        const size_t before = pending + (columns[i].right ? padding : 0);
        if (!row[i].text.empty()) {
            line += std::string(before, ' ') + Paint(row[i].text, row[i].style, colour);
            pending = columns[i].right ? 0 : padding;
        } else {
            pending += padding;
        }
        pending += 2;
    }
    return line + "\n";
}

} // namespace

void SetColour(const std::string &when) {
    g_colour = when;
}

bool ColourWanted() {
    if (g_colour != "auto")
        return g_colour == "always";
    const char *no_color = std::getenv("NO_COLOR");
    const char *term = std::getenv("TERM");
    if (no_color != nullptr && *no_color != '\0')
        return false;
    return isatty(STDOUT_FILENO) && term != nullptr && std::strcmp(term, "dumb") != 0;
}

size_t TerminalWidth() {
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col;
}

std::string Paint(const std::string &text, Style style, bool colour) {
    if (!colour || style == Style::kPlain || text.empty())
        return text;
    return Code(style) + text + "\033[0m";
}

std::vector<size_t> Table::Widths() const {
    std::vector<size_t> widths;
    for (const Column &column : columns_)
        widths.push_back(header_ ? workbench::Width(column.header) : 0);
    for (const auto &row : rows_)
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], workbench::Width(row[i].text));
    return widths;
}

size_t Table::Width() const {
    const std::vector<size_t> widths = Widths();
    return std::accumulate(widths.begin(), widths.end(),
                           2 * (widths.size() - 1)); // two blanks between columns
}

std::string Table::Render(bool colour) const {
    const std::vector<size_t> widths = Widths();
    std::vector<Cell> header;
    for (const Column &column : columns_)
        header.push_back({column.header, Style::kBold});
    std::string out = header_ ? RenderRow(columns_, widths, header, colour) : "";
    for (const auto &row : rows_)
        out += RenderRow(columns_, widths, row, colour);
    return out;
}

} // namespace workbench
