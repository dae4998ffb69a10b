// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/csv.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string_view>

namespace workbench {
namespace {

constexpr char kMark[] = "\xEF\xBB\xBF";
constexpr size_t kMostCells = 1000000; // each takes some hundred bytes; the largest set has some thousand

std::string Cell(size_t row, size_t column) {
    std::string letters;
    for (size_t n = column + 1; n > 0; n = (n - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (n - 1) % 26));
    return letters + std::to_string(row + 1);
}

char SeparatorOf(const std::string &text) {
    size_t count[3] = {};
    constexpr char kAll[] = ",;\t";
    bool quoted = false;
    for (const char c : text) {
        quoted = quoted != (c == '"');
        if (!quoted && (c == '\n' || c == '\r'))
            break;
        for (size_t i = 0; i < 3; ++i)
            count[i] += !quoted && c == kAll[i];
    }
    return kAll[std::max_element(count, count + 3) - count];
}

class Scanner {
public:
    Scanner(const std::string &text, char separator, std::vector<SheetFault> &faults)
        : text_(text), separator_(separator), faults_(faults) {}

    std::vector<std::vector<SheetCell>> Rows() {
        while (at_ < text_.size()) {
            std::vector<SheetCell> row = Row();
            if (std::any_of(row.begin(), row.end(), [](const SheetCell &cell) { return !cell.text.empty(); }))
                rows_.push_back(std::move(row));
            ++row_;
            if (cells_ > kMostCells) {
                faults_.push_back({{line_, column_, ""}, "more than a million cells; no sheet is that long"});
                break;
            }
        }
        return std::move(rows_);
    }

private:
    bool AtLineEnd() const {
        return at_ >= text_.size() || text_[at_] == '\n' || text_[at_] == '\r';
    }
    void Step() {
        const char c = text_[at_++];
        const bool crlf = c == '\r' && at_ < text_.size() && text_[at_] == '\n';
        if ((c == '\n' || c == '\r') && !crlf) {
            ++line_;
            column_ = 1;
        } else {
            column_ += (static_cast<uint8_t>(c) & 0xC0) != 0x80 && !crlf; // a character, not a byte
        }
    }
    std::vector<SheetCell> Row() {
        std::vector<SheetCell> row;
        for (;;) {
            row.push_back(NextCell(row.size()));
            if (++cells_ > kMostCells || AtLineEnd())
                break;
            Step(); // the separator
        }
        if (at_ < text_.size()) {
            const bool crlf = text_.compare(at_, 2, "\r\n") == 0;
            Step();
            if (crlf)
                Step();
        }
        return row;
    }
    SheetCell NextCell(size_t number) {
        SheetCell cell{"", {line_, column_, Cell(row_, number)}};
        while (at_ < text_.size() && text_[at_] == ' ')
            Step();
        if (at_ < text_.size() && text_[at_] == '"')
            Quoted(cell);
        while (!AtLineEnd() && text_[at_] != separator_) {
            cell.text += text_[at_];
            Step();
        }
        cell.text = Trimmed(cell.text);
        return cell;
    }
    // Two quotes are one; the end of the file ends no cell.
    void Quoted(SheetCell &cell) {
        for (Step(); at_ < text_.size(); Step()) {
            if (text_[at_] != '"') {
                cell.text += text_[at_];
            } else if (at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
                cell.text += '"';
                Step();
            } else {
                return Step();
            }
        }
        faults_.push_back({cell.place, "the quote that opens here is not closed"});
    }

    const std::string &text_;
    const char separator_;
    std::vector<SheetFault> &faults_;
    std::vector<std::vector<SheetCell>> rows_;
    size_t at_ = 0, row_ = 0, line_ = 1, column_ = 1, cells_ = 0;
};

} // namespace

std::string Trimmed(const std::string &text) {
    constexpr std::string_view kBlanks[] = {" ", "\t", "\xC2\xA0"};
    std::string_view rest = text;
    for (bool stripped = true; stripped;) {
        stripped = false;
        for (const std::string_view blank : kBlanks) {
            const bool front = rest.starts_with(blank);
            rest.remove_prefix(front ? blank.size() : 0);
            const bool back = rest.ends_with(blank);
            rest.remove_suffix(back ? blank.size() : 0);
            stripped = stripped || front || back;
        }
    }
    return std::string(rest);
}

CsvTable ParseCsv(const std::string &bytes, std::vector<SheetFault> &faults) {
    if (bytes.find('\0') != std::string::npos) {
        faults.push_back({{1, 1, ""}, "zero bytes: no text (a workbook, or UTF-16); save it as CSV, UTF-8"});
        return {};
    }
    const std::string text = bytes.starts_with(kMark) ? bytes.substr(sizeof kMark - 1) : bytes;
    CsvTable table;
    table.separator = SeparatorOf(text);
    table.rows = Scanner(text, table.separator, faults).Rows();
    return table;
}

std::string WriteCsv(const std::vector<std::vector<std::string>> &rows, CsvStyle style) {
    const bool semicolon = style == CsvStyle::kSemicolon;
    const char separator = semicolon ? ';' : style == CsvStyle::kTab ? '\t' : ',';
    std::string out = semicolon ? kMark : "";
    for (const std::vector<std::string> &row : rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            std::string cell = row[i];
            const bool number =
                !cell.empty() && cell.find_first_not_of("-0123456789.e+") == std::string::npos;
            if (semicolon && number)
                std::replace(cell.begin(), cell.end(), '.', ',');
            if (cell.find_first_of(std::string("\"\r\n") + separator) != std::string::npos) {
                for (size_t at = 0; (at = cell.find('"', at)) != std::string::npos; at += 2)
                    cell.insert(at, 1, '"');
                cell = '"' + cell + '"';
            }
            out += (i == 0 ? "" : std::string(1, separator)) + cell;
        }
        out += semicolon ? "\r\n" : "\n";
    }
    return out;
}

} // namespace workbench
