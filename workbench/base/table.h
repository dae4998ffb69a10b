// SPDX-License-Identifier: GPL-3.0-or-later
//
// Aligned columns for people.  Widths are counted in characters, not bytes ("°C" is two wide).
#ifndef OXA_WORKBENCH_BASE_TABLE_H
#define OXA_WORKBENCH_BASE_TABLE_H

#include <string>
#include <vector>

namespace workbench {

enum class Style { kPlain, kBold, kDim, kWarm, kHot };

struct Cell {
    std::string text;
    Style style = Style::kPlain;
};

struct Column {
    std::string header;
    bool right = false;
};

// As the line asks for it, "always" or "never"; else ("auto") when standard output is a terminal that wants colour:
// NO_COLOR unset or empty, TERM not "dumb".
void SetColour(const std::string &when);
bool ColourWanted();

// Characters in a line of the terminal that standard output is; 0 when it is none.
size_t TerminalWidth();
std::string Paint(const std::string &text, Style style, bool colour);

class Table {
public:
    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}
    void Add(std::vector<Cell> row) {
        rows_.push_back(std::move(row));
    }
    void WithoutHeader() {
        header_ = false;
    }
    std::string Render(bool colour) const; // header line first; no blanks at line ends
    size_t Width() const;                  // of the longest line

private:
    std::vector<size_t> Widths() const;
    std::vector<Column> columns_;
    bool header_ = true;
    std::vector<std::vector<Cell>> rows_;
};

} // namespace workbench
#endif
