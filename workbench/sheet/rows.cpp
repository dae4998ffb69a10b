// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/rows.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "base/errors.h"
#include "base/input.h"
#include "base/text.h"
#include "sets/counts.h"

namespace workbench {
namespace {

constexpr unsigned kOwnLimits = 12;  // masks and limits of a packed row
constexpr size_t kLongestRow = 1000; // in letters: an expression goes as deep as its text is long

struct NamePattern {
    std::regex names;
    size_t letters = 0; // that are not a number's: the more, the nearer
};

struct ListRow {
    size_t line = 0;
    std::string text;
    std::vector<NamePattern> names; // of the row, and of its variant
};

// A limit as the list writes it: "Celsius(43)".
using Written = std::array<std::string, kSheetLimits>;

constexpr const char *kMembers[kSheetLimits] = {"lnr", "lc", "lnc", "unc", "uc", "unr"};

NamePattern PatternOf(const std::string &format) {
    std::string expression;
    size_t letters = 0;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            expression += std::strchr("\\^$.|?*+()[]{}", format[i]) != nullptr ? "\\" : "";
            expression += format[i];
            ++letters;
            continue;
        }
        for (++i; i + 1 < format.size() && format[i] >= '0' && format[i] <= '9'; ++i) {
        }
        const char c = format[i];
        expression += c == 's' ? ".+" : c == 'c' ? "." : c == 'X' || c == 'x' ? "[0-9A-Fa-f]+" : "[0-9]+";
    }
    return {std::regex(expression), letters};
}

std::vector<ListRow> ReadList(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        throw InputError(path + ": cannot read: " + (file ? "a folder" : std::strerror(errno)) +
                         "; --list names the profile's list");
    std::istringstream in(ReadAllOf(file, path));
    // A row is a line; its name is the first text, its second name that of OnSmallBoard or Second.
    static const std::regex kRow(R"re(^[A-Z_]+\([^"]*"([^"]+)")re");
    static const std::regex kSecond(R"re((?:OnSmallBoard|Second)\("([^"]+)"\))re");
    std::vector<ListRow> out;
    std::string line;
    for (size_t number = 1; std::getline(in, line); ++number) {
        std::smatch name, second;
        if (line.starts_with("#") || line.starts_with("//") || line.size() > kLongestRow ||
            !std::regex_search(line, name, kRow))
            continue;
        out.push_back({number, line, {PatternOf(name[1])}});
        if (std::regex_search(line, second, kSecond))
            out.back().names.push_back(PatternOf(second[1]));
    }
    return out;
}

// How near the row's pattern comes to the name; 0: it prints another.
size_t Nearness(const ListRow &row, const std::string &name) {
    size_t best = 0;
    for (const NamePattern &pattern : row.names)
        if (std::regex_match(name, pattern.names))
            best = std::max(best, pattern.letters + 1);
    return best;
}

std::vector<size_t> RowsOf(const std::vector<ListRow> &list, const std::string &name) {
    size_t best = 1;
    for (const ListRow &row : list)
        best = std::max(best, Nearness(row, name));
    std::vector<size_t> out;
    for (size_t i = 0; i < list.size(); ++i)
        if (Nearness(list[i], name) == best)
            out.push_back(i);
    return out;
}

std::string FunctionOf(const std::string &unit) {
    static const std::map<std::string, std::string> kFunctions = {
        {"°C", "Celsius"}, {"V", "Volts"}, {"A", "Amperes"}, {"W", "Watts"}, {"RPM", "Rpm"}};
    const auto found = kFunctions.find(unit);
    return found == kFunctions.end() ? "" : found->second;
}

std::string LimitText(const SheetSensor &sensor, size_t i) {
    const Reading &reading = *sensor.sensor->reading;
    const double value = sensor.row->limits[i]->value;
    const std::string text = FunctionOf(reading.unit) + "(" + FormatNumber(value) + ")";
    return ValueOf(reading, *sensor.counts[i]) == Rounded(value) ? text : "Rounded(" + text + ")";
}

// Whether limits can be written behind the row: it ends with its line, and so do the limits that it has.
bool IsWhole(const std::string &line) {
    const size_t last = line.find_last_not_of(" \t\r"), limits = line.find(", Limits({");
    return last != std::string::npos && line[last] == ')' && line.find("//") == std::string::npos &&
           (limits == std::string::npos || line.find("})", limits) != std::string::npos);
}

// Takes the limits out that the line has: its text without them, and they.
Written TakeLimits(std::string &line) {
    Written out;
    const size_t from = line.find(", Limits({");
    if (from == std::string::npos)
        return out;
    const size_t to = line.find("})", from);
    const std::string inner = line.substr(from + 10, to - from - 10);
    static const std::regex kOne(R"(\.(\w+) = (Rounded\(\w+\([^)]*\)\)|\w+\([^)]*\)))");
    for (std::sregex_iterator it(inner.begin(), inner.end(), kOne), end; it != end; ++it)
        for (size_t i = 0; i < kSheetLimits; ++i)
            if ((*it)[1] == kMembers[i])
                out[i] = (*it)[2];
    line.erase(from, to + 2 - from);
    return out;
}

std::string WithLimits(const std::string &line, const Written &limits) {
    std::vector<std::string> parts;
    for (size_t i = 0; i < kSheetLimits; ++i)
        if (!limits[i].empty())
            parts.push_back(std::string(".") + kMembers[i] + " = " + limits[i]);
    const size_t end = std::min(line.rfind(')'), line.size());
    return line.substr(0, end) + ", Limits({" + Join(parts, ", ") + "})" + line.substr(end);
}

class Editor {
public:
    explicit Editor(const std::string &path) : path_(path), list_(ReadList(path)) {}

    ListEdits Run(const std::vector<SheetSensor> &sensors) {
        for (const SheetSensor &sensor : sensors)
            Take(sensor);
        for (const auto &[row, own] : wanted_)
            Edit(list_[row], own);
        return std::move(out_);
    }

private:
    void Fault(size_t line, const std::string &text) {
        out_.faults.push_back(path_ + (line == 0 ? "" : ":" + std::to_string(line)) + ": " + text);
    }
    // Every sensor of a row counts, also those that stay: one row cannot build two kinds of limits.
    void Take(const SheetSensor &sensor) {
        const std::string &name = sensor.sensor->name;
        const std::vector<size_t> rows = RowsOf(list_, name);
        if (rows.empty() && sensor.Changes())
            Fault(0, "no row prints " + name);
        for (const size_t row : rows)
            wanted_[row].push_back(&sensor);
    }
    void Edit(const ListRow &row, const std::vector<const SheetSensor *> &sensors) {
        const bool changes =
            std::any_of(sensors.begin(), sensors.end(), [](const SheetSensor *s) { return s->Changes(); });
        if (!changes)
            return;
        if (!IsWhole(row.text))
            return Fault(row.line, "the row does not end with its line; its limits must be written by hand");
        std::string text = row.text;
        Written limits = TakeLimits(text);
        const bool had = text.size() != row.text.size();
        ListEdit edit{row.line, row.text, "", {}, had ? 0 : kOwnLimits};
        for (const SheetSensor *sensor : sensors) {
            if (FunctionOf(sensor->sensor->reading->unit).empty())
                return Fault(row.line, sensor->sensor->name + " reads in " + sensor->sensor->reading->unit +
                                           ", which limits of a list cannot be written in");
            if (!SameLimits(*sensors[0], *sensor))
                return Fault(row.line, "one row builds " + sensors[0]->sensor->name + " and " +
                                           sensor->sensor->name +
                                           ", and the sheet gives them different limits");
            edit.sensors.push_back(sensor->sensor->name);
        }
        for (size_t i = 0; i < kSheetLimits; ++i)
            if (Differs(sensors, i))
                limits[i] = LimitText(*sensors[0], i);
        edit.now = WithLimits(text, limits);
        out_.edits.push_back(std::move(edit));
    }
    static bool SameLimits(const SheetSensor &a, const SheetSensor &b) {
        for (size_t i = 0; i < kSheetLimits; ++i)
            if (a.row->limits[i].has_value() != b.row->limits[i].has_value() ||
                (a.row->limits[i] && a.row->limits[i]->value != b.row->limits[i]->value))
                return false;
        return true;
    }
    static bool Differs(const std::vector<const SheetSensor *> &sensors, size_t i) {
        return std::any_of(
            sensors.begin(), sensors.end(),
            [i](const SheetSensor *s) {
                const Threshold &t = s->sensor->thresholds[i];
                return s->counts[i] && (!t.readable || t.raw != *s->counts[i]);
            });
    }

    const std::string &path_;
    const std::vector<ListRow> list_;
    std::map<size_t, std::vector<const SheetSensor *>> wanted_; // by place in the list
    ListEdits out_;
};

} // namespace

ListEdits EditList(const std::string &path, const std::vector<SheetSensor> &sensors) {
    return Editor(path).Run(sensors);
}

std::string Patch(const std::string &path, const std::vector<ListEdit> &edits) {
    std::string out = edits.empty() ? "" : "--- a/" + path + "\n+++ b/" + path + "\n";
    for (const ListEdit &edit : edits) {
        const std::string line = std::to_string(edit.line);
        out += "@@ -" + line + " +" + line + " @@\n-" + edit.old + "\n+" + edit.now + "\n";
    }
    return out;
}

} // namespace workbench
