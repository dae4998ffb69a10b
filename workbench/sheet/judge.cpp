// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/judge.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <set>

#include "base/text.h"
#include "sets/counts.h"
#include "sets/rows.h"

namespace workbench {
namespace {

// Each is a search of the whole set, and in the sheet of another set no name is known.
constexpr size_t kMostSuggestions = 20;

// "°C", "degC" and "C" are one unit, however the degree sign came through.
std::string PlainUnit(const std::string &unit) {
    std::string out;
    for (const char c : unit)
        if (std::isalpha(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 0x80)
            out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        else if (c == '%')
            out += c;
    return out.starts_with("DEG") ? out.substr(3) : out;
}

class Judge {
public:
    Judge(const Sheet &sheet, const std::vector<Decoded> &set, const Profile &profile, bool round)
        : sheet_(sheet), profile_(profile), round_(round) {
        for (const Decoded &sensor : set) {
            names_.push_back(sensor.name);
            if (CanHaveLimits(sensor))
                analog_[sensor.name].push_back(&sensor);
            else
                discrete_.insert(sensor.name);
        }
    }

    Judgement Run() {
        for (const SheetRow &row : sheet_.rows)
            JudgeRow(row);
        for (const auto &[name, sensors] : analog_)
            if (!seen_.contains(name))
                Find("missing", {}, name, "not in the sheet" + LimitsOf(*sensors[0]), false);
        std::stable_sort(out_.sensors.begin(), out_.sensors.end(),
                         [](const SheetSensor &a, const SheetSensor &b) {
                             return a.sensor < b.sensor; // places in the set
                         });
        return std::move(out_);
    }

private:
    void Find(const char *rule, const SheetPlace &place, const std::string &name, const std::string &text,
              bool in_the_way) {
        out_.findings.push_back({rule, name, text, place, in_the_way});
    }

    static std::string LimitsOf(const Decoded &sensor) {
        std::string out;
        for (const Threshold &t : sensor.thresholds)
            if (t.readable)
                out += std::string(out.empty() ? "; the set has " : ", ") + t.key + " " +
                       InUnits(*sensor.reading, t.value);
        return out;
    }

    void JudgeRow(const SheetRow &row) {
        const auto found = analog_.find(row.name);
        if (found == analog_.end())
            return JudgeUnknown(row);
        seen_.insert(row.name);
        const Decoded &first = *found->second[0];
        if (!row.unit.empty() && PlainUnit(row.unit) != PlainUnit(first.reading->unit))
            return Find("unit", row.unit_place, row.name,
                        "the sheet says " + Printable(row.unit) + ", the sensor reads in " +
                            (first.reading->unit.empty() ? "nothing" : first.reading->unit),
                        true);
        for (const Decoded *sensor : found->second)
            JudgeSensor(row, *sensor);
    }

    void JudgeUnknown(const SheetRow &row) {
        if (discrete_.contains(row.name))
            return Find("discrete", row.place, row.name, "a sensor of states: it has no limits",
                        row.HasLimits());
        const std::vector<Row> &rows = RowsOf(profile_);
        if (std::any_of(rows.begin(), rows.end(),
                        [&](const Row &known) { return MakesName(known, row.name); }))
            return Find("absent", row.place, Printable(row.name),
                        std::string("not on this board, though profile ") + profile_.name +
                            " has a row for it",
                        true);
        std::vector<std::string> nearest;
        if (++unknown_ <= kMostSuggestions)
            nearest = NearestNames(row.name, names_);
        Find("name", row.place, Printable(row.name),
             "no such sensor in the set" +
                 (nearest.empty() ? "" : "; did you mean " + Join(nearest, ", ") + "?"),
             true);
    }

    void JudgeSensor(const SheetRow &row, const Decoded &sensor) {
        SheetSensor out{&sensor, &row, {}};
        bool any = row.HasLimits();
        for (size_t i = 0; i < kSheetLimits; ++i) {
            any = any || sensor.thresholds[i].readable;
            if (row.limits[i])
                out.counts[i] = JudgeLimit(row, sensor, i);
            else if (sensor.thresholds[i].readable)
                Find("gone", row.place, row.name,
                     Of(sensor, i, sensor.thresholds[i].value) + " of the set is empty in the sheet", false);
        }
        if (!any)
            out_.without_limits.push_back(sensor.name);
        JudgeOrder(row, sensor);
        out_.sensors.push_back(out);
    }

    static std::string Of(const Decoded &sensor, size_t i, double value) {
        return std::string(kSheetLimitKeys[i]) + " " + InUnits(*sensor.reading, value);
    }

    std::optional<uint8_t> JudgeLimit(const SheetRow &row, const Decoded &sensor, size_t i) {
        const SheetLimit &limit = *row.limits[i];
        const Reading &reading = *sensor.reading;
        const NearCounts near = FindCounts(reading, limit.value);
        if (!near.exact && (!near.below || !near.above)) {
            const uint8_t end = near.below ? *near.below : *near.above;
            Find("range", limit.place, row.name,
                 Of(sensor, i, limit.value) + ": a byte " + (near.below ? "ends" : "begins") + " at " +
                     InUnits(reading, ValueOf(reading, end)),
                 true);
            return std::nullopt;
        }
        if (!near.exact && !round_) {
            Find("byte", limit.place, row.name,
                 Of(sensor, i, limit.value) + ": a byte holds " +
                     FormatNumber(ValueOf(reading, *near.below)) + " or " +
                     FormatNumber(ValueOf(reading, *near.above)),
                 true);
            return std::nullopt;
        }
        const uint8_t count = near.exact ? *near.exact : Nearest(reading, near, limit.value);
        CompareLimit(row, sensor, i, count);
        return count;
    }

    // As the compiler rounds: a half goes away from zero.
    static uint8_t Nearest(const Reading &reading, const NearCounts &near, double value) {
        const double down = value - ValueOf(reading, *near.below), up = ValueOf(reading, *near.above) - value;
        return std::abs(up - down) < 1e-9 ? (value < 0 ? *near.below : *near.above)
               : up < down                ? *near.above
                                          : *near.below;
    }

    void CompareLimit(const SheetRow &row, const Decoded &sensor, size_t i, uint8_t count) {
        const Threshold &t = sensor.thresholds[i];
        if (!t.readable)
            Find("new", row.limits[i]->place, row.name,
                 Of(sensor, i, row.limits[i]->value) + ": the set has no " + t.key, false);
        else if (t.raw != count)
            Find("value", row.limits[i]->place, row.name,
                 Of(sensor, i, row.limits[i]->value) + ", the set has " + FormatNumber(t.value), false);
    }

    // With the set's where the sheet says nothing.
    void JudgeOrder(const SheetRow &row, const Decoded &sensor) {
        std::optional<size_t> last;
        const auto value = [&](size_t i) {
            return row.limits[i] ? row.limits[i]->value : sensor.thresholds[i].value;
        };
        for (size_t i = 0; i < kSheetLimits; ++i) {
            if (!row.limits[i] && !sensor.thresholds[i].readable)
                continue;
            const bool of_the_sheet = row.limits[i] || (last && row.limits[*last]);
            if (last && of_the_sheet && value(*last) >= value(i))
                Find("order", (row.limits[i] ? row.limits[i] : row.limits[*last])->place, row.name,
                     Of(sensor, i, value(i)) + (row.limits[i] ? "" : " of the set") + " is not above " +
                         Of(sensor, *last, value(*last)) + (row.limits[*last] ? "" : " of the set"),
                     true);
            last = i;
        }
    }

    const Sheet &sheet_;
    const Profile &profile_;
    const bool round_;
    std::vector<std::string> names_; // of the set
    std::set<std::string> discrete_;
    size_t unknown_ = 0;
    std::map<std::string, std::vector<const Decoded *>> analog_;
    std::set<std::string> seen_;
    Judgement out_;
};

} // namespace

bool SheetSensor::Changes() const {
    for (size_t i = 0; i < kSheetLimits; ++i)
        if (counts[i] && (!sensor->thresholds[i].readable || sensor->thresholds[i].raw != *counts[i]))
            return true;
    return false;
}

Judgement JudgeSheet(const Sheet &sheet, const std::vector<Decoded> &set, const Profile &profile,
                     bool round) {
    return Judge(sheet, set, profile, round).Run();
}

} // namespace workbench
