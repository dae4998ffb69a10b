// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/sheet.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "base/errors.h"
#include "base/input.h"
#include "base/text.h"

namespace workbench {

const std::array<const char *, kSheetLimits> kSheetLimitKeys = {"LNR", "LC", "LNC", "UNC", "UC", "UNR"};

namespace {

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

struct Columns {
    std::optional<size_t> name, unit;
    std::array<std::optional<size_t>, kSheetLimits> limits;
};

class Reader {
public:
    explicit Reader(std::vector<SheetFault> &faults) : faults_(faults) {}

    Sheet Read(const CsvTable &table) {
        if (table.rows.empty()) {
            Fault({1, 1, "A1"},
                  "nothing in it; the first row names the columns: Name, Unit, LNR, LC, LNC, UNC, UC, UNR");
            return {};
        }
        ReadHeader(table.rows[0]);
        width_ = table.rows[0].size();
        if (!faults_.empty())
            return {};
        for (size_t i = 1; i < table.rows.size(); ++i)
            ReadRow(table.rows[i]);
        return std::move(sheet_);
    }

private:
    void Fault(const SheetPlace &place, const std::string &text) {
        faults_.push_back({place, text});
    }

    std::optional<size_t> *PlaceOf(const std::string &word) {
        if (word == "NAME" || word == "SENSOR")
            return &columns_.name;
        if (word == "UNIT")
            return &columns_.unit;
        for (size_t i = 0; i < kSheetLimits; ++i)
            if (word == kSheetLimitKeys[i])
                return &columns_.limits[i];
        return nullptr;
    }

    void ReadHeader(const std::vector<SheetCell> &row) {
        bool any = false;
        for (size_t i = 0; i < row.size(); ++i) {
            std::optional<size_t> *place = PlaceOf(Upper(row[i].text));
            if (place == nullptr) {
                if (!row[i].text.empty())
                    sheet_.ignored.push_back(row[i]);
                continue;
            }
            if (*place)
                Fault(row[i].place, "a second column '" + row[i].text + "'");
            *place = i;
            any = any || (place != &columns_.name && place != &columns_.unit);
        }
        if (!columns_.name)
            Fault(row[0].place, "no column 'Name' in the first row");
        if (!any)
            Fault(row[0].place, "no column LNR, LC, LNC, UNC, UC or UNR in the first row");
    }

    static SheetCell At(const std::vector<SheetCell> &row, const std::optional<size_t> &column) {
        if (!column || *column >= row.size())
            return {"", row[0].place};
        return row[*column];
    }

    void ReadRow(const std::vector<SheetCell> &cells) {
        SheetRow row;
        const SheetCell name = At(cells, columns_.name), unit = At(cells, columns_.unit);
        const auto behind =
            std::find_if(cells.begin() + static_cast<long>(std::min(width_, cells.size())), cells.end(),
                         [](const SheetCell &cell) { return !cell.text.empty(); });
        if (behind != cells.end())
            return Fault(behind->place,
                         "'" + Printable(behind->text) +
                             "' is behind the last column of the first row (a number with a decimal "
                             "comma must be quoted where commas part the cells)");
        if (name.text.empty())
            return Fault(cells[0].place, "a row without a name");
        row.name = name.text;
        row.place = name.place;
        row.unit = unit.text;
        row.unit_place = unit.place;
        const auto [first, is_new] = lines_.emplace(row.name, row.place.cell);
        if (!is_new)
            return Fault(row.place, Printable(row.name) + " is in " + first->second + " already");
        for (size_t i = 0; i < kSheetLimits; ++i)
            if (const SheetCell cell = At(cells, columns_.limits[i]); !cell.text.empty() && cell.text != "-")
                if (const auto value = NumberOf(cell, row.unit))
                    row.limits[i] = SheetLimit{*value, cell.place};
        sheet_.rows.push_back(std::move(row));
    }

    // "14.4", "14,4", "14,4 V", with the minus sign of either character set.
    std::optional<double> NumberOf(const SheetCell &cell, const std::string &unit) {
        std::string text = cell.text;
        if (!unit.empty() && text.ends_with(unit))
            text.erase(text.size() - unit.size());
        text = Trimmed(text);
        if (text.starts_with("\xE2\x88\x92"))
            text.replace(0, 3, "-");
        const auto comma = std::count(text.begin(), text.end(), ',');
        if (comma + std::count(text.begin(), text.end(), '.') > 1) {
            Fault(cell.place, "'" + Printable(cell.text) +
                                  "': one decimal point or comma is wanted, nothing between thousands");
            return std::nullopt;
        }
        std::replace(text.begin(), text.end(), ',', '.');
        double value = 0;
        const bool plus = text.starts_with("+") && !text.starts_with("+-");
        const char *begin = text.c_str() + (plus ? 1 : 0), *end = text.c_str() + text.size();
        const auto [last, error] = std::from_chars(begin, end, value);
        if (begin != end && error == std::errc() && last == end && std::isfinite(value))
            return value;
        Fault(cell.place, "'" + Printable(cell.text) + "' is no number");
        return std::nullopt;
    }

    std::vector<SheetFault> &faults_;
    Sheet sheet_;
    Columns columns_;
    size_t width_ = 0;                         // cells of the first row
    std::map<std::string, std::string> lines_; // cells by name
};

} // namespace

bool SheetRow::HasLimits() const {
    return std::any_of(
        limits.begin(), limits.end(), [](const auto &limit) { return limit.has_value(); });
}

Sheet ReadSheet(const std::string &path, std::vector<SheetFault> &faults) {
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        throw InputError(path + ": cannot read: " + (file ? "a folder" : std::strerror(errno)));
    const CsvTable table = ParseCsv(ReadAllOf(file, path), faults);
    if (!faults.empty())
        return {};
    return Reader(faults).Read(table);
}

bool CanHaveLimits(const Decoded &sensor) {
    return !sensor.thresholds.empty();
}

std::string SheetOf(const std::vector<Decoded> &set, CsvStyle style) {
    std::vector<std::vector<std::string>> rows = {{"Name", "Unit"}};
    rows[0].insert(rows[0].end(), kSheetLimitKeys.begin(), kSheetLimitKeys.end());
    std::set<std::string> told;
    for (const Decoded &sensor : set) {
        if (!CanHaveLimits(sensor) || !told.insert(sensor.name).second)
            continue;
        std::vector<std::string> row = {sensor.name, sensor.reading->unit};
        for (const Threshold &t : sensor.thresholds)
            row.push_back(t.readable ? FormatNumber(t.value) : "");
        rows.push_back(std::move(row));
    }
    return WriteCsv(rows, style);
}

} // namespace workbench
