// SPDX-License-Identifier: GPL-3.0-or-later
//
// Tables as spreadsheets save them: comma, semicolon or tab; quoted cells; any line end; a byte order mark.
#ifndef OXA_WORKBENCH_SHEET_CSV_H
#define OXA_WORKBENCH_SHEET_CSV_H

#include <string>
#include <vector>

namespace workbench {

// Where something stands: line and column of the text, and the cell as a spreadsheet calls it.
struct SheetPlace {
    size_t line = 0, column = 0; // from 1, the column in characters; 0: nowhere
    std::string cell;            // "G5"
};

struct SheetFault {
    SheetPlace place;
    std::string text;
};

struct SheetCell {
    std::string text; // without quotes, without blanks at its ends
    SheetPlace place;
};

struct CsvTable {
    char separator = ',';
    std::vector<std::vector<SheetCell>> rows; // empty ones are left out
};

std::string Trimmed(const std::string &text); // of blanks and no-break spaces

// The separator is the one that the first line has most of, outside quotes.
CsvTable ParseCsv(const std::string &bytes, std::vector<SheetFault> &faults);

enum class CsvStyle {
    kComma,     // decimal point, lines end in LF
    kSemicolon, // decimal comma, byte order mark, CR LF: as spreadsheets of most of Europe save and read
    kTab        // decimal point
};
// Cells as texts; numbers have a decimal point.
std::string WriteCsv(const std::vector<std::vector<std::string>> &rows, CsvStyle style);

} // namespace workbench
#endif
