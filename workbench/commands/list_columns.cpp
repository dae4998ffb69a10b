// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/list_columns.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"
#include "sets/sensor_table.h"

namespace workbench {
namespace {

using Value = std::optional<double>;

const Threshold *Limit(const ListLine &line, size_t index) {
    const auto &all = line.decoded.thresholds;
    return index < all.size() && all[index].readable ? &all[index] : nullptr;
}

template <size_t index> Cell LimitCell(const ListLine &line) {
    const Threshold *limit = Limit(line, index);
    if (limit == nullptr)
        return {"-", Style::kDim};
    const bool warns = limit->key == std::string("LNC") || limit->key == std::string("UNC");
    return {FormatNumber(limit->value), warns ? Style::kWarm : Style::kHot};
}

template <size_t index> Value LimitValue(const ListLine &line) {
    const Threshold *limit = Limit(line, index);
    return limit != nullptr ? Value(limit->value) : std::nullopt;
}

Value InstanceValue(const ListLine &line) {
    return line.sensor->record[SDR_ENTITY_INSTANCE];
}

Value DeviceValue(const ListLine &line) {
    return line.sensor->entry[0] * 256 + line.sensor->entry[1];
}

// Terminals are narrow: what goes first is what `show` is asked for anyway.
constexpr const char *kLeaveOut[] = {"device", "instance", "kind", "entity", "type", "number"};

const ListColumn *Find(const std::string &name) {
    for (const ListColumn &column : ListColumns())
        if (name == column.name)
            return &column;
    std::vector<std::string> names;
    for (const ListColumn &column : ListColumns())
        names.push_back(column.name);
    const auto nearest = NearestNames(name, names, 1);
    throw InputError("no column '" + name + "'" +
                     (nearest.empty() ? "" : "; did you mean " + nearest.front() + "?") + " There are " +
                     Join(names, ", "));
}

} // namespace

const std::vector<ListColumn> &ListColumns() {
    static const std::vector<ListColumn> columns = {
        {"number",
         {"#", true},
         [](const ListLine &line) {
             return Cell{std::to_string(line.sensor->ordinal), Style::kDim};
         },
         [](const ListLine &line) { return Value(line.sensor->ordinal); }},
        {"name",
         {"NAME"},
         [](const ListLine &line) {
             return Cell{line.decoded.name, Style::kBold};
         },
         nullptr},
        {"kind", {"KIND"}, [](const ListLine &line) { return Cell{KindText(line.decoded.kind)}; }, nullptr},
        {"type", {"TYPE"}, [](const ListLine &line) { return Cell{line.decoded.sensor_type_text}; }, nullptr},
        {"entity", {"ENTITY"}, [](const ListLine &line) { return Cell{line.decoded.entity_text}; }, nullptr},
        {"instance",
         {"INST"},
         [](const ListLine &line) { return Cell{Hex(line.sensor->record[SDR_ENTITY_INSTANCE])}; },
         InstanceValue},
        {"reading",
         {"READING"},
         [](const ListLine &line) {
             return Cell{ReadingText(line.decoded), line.decoded.reading ? Style::kPlain : Style::kDim};
         },
         nullptr},
        {"lnr", {"LNR", true}, LimitCell<0>, LimitValue<0>},
        {"lc", {"LC", true}, LimitCell<1>, LimitValue<1>},
        {"lnc", {"LNC", true}, LimitCell<2>, LimitValue<2>},
        {"unc", {"UNC", true}, LimitCell<3>, LimitValue<3>},
        {"uc", {"UC", true}, LimitCell<4>, LimitValue<4>},
        {"unr", {"UNR", true}, LimitCell<5>, LimitValue<5>},
        {"device",
         {"DEVICE"},
         [](const ListLine &line) {
             return line.sensor->has_entry ? Cell{DeviceText(line.sensor->entry)} : Cell{"-", Style::kDim};
         },
         DeviceValue},
    };
    return columns;
}

std::vector<const ListColumn *> ChosenColumns(const std::string &names) {
    std::vector<const ListColumn *> out;
    if (names.empty()) {
        for (const ListColumn &column : ListColumns())
            out.push_back(&column);
        return out;
    }
    for (size_t from = 0; from <= names.size();) {
        const size_t comma = std::min(names.find(',', from), names.size());
        out.push_back(Find(names.substr(from, comma - from)));
        from = comma + 1;
    }
    return out;
}

std::vector<const ListColumn *> FittingColumns(const std::vector<ListLine> &lines, size_t width) {
    std::vector<const ListColumn *> out = ChosenColumns("");
    for (const char *name : kLeaveOut) {
        if (ListTable(out, lines).Width() <= width)
            break;
        std::erase(out, Find(name));
    }
    return out;
}

void SortLines(std::vector<ListLine> &lines, const std::string &name) {
    const ListColumn &column = *Find(name);
    std::stable_sort(lines.begin(), lines.end(), [&column](const ListLine &left, const ListLine &right) {
        if (column.value == nullptr)
            return column.cell(left).text < column.cell(right).text;
        const Value a = column.value(left), b = column.value(right);
        return a && (!b || *a < *b);
    });
}

Table ListTable(const std::vector<const ListColumn *> &columns, const std::vector<ListLine> &lines) {
    std::vector<Column> headers;
    for (const ListColumn *column : columns)
        headers.push_back(column->column);
    Table table(std::move(headers));
    for (const ListLine &line : lines) {
        std::vector<Cell> row;
        for (const ListColumn *column : columns)
            row.push_back(column->cell(line));
        table.Add(std::move(row));
    }
    return table;
}

} // namespace workbench
