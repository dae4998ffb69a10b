// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the library said, as tests write it down.  Line numbers of sources are no promise: they are cut off or
// masked.
#ifndef OXA_TESTS_SUPPORT_LOG_LINES_H
#define OXA_TESTS_SUPPORT_LOG_LINES_H

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "simulator/simulator.h"

namespace tests {

using LineList = std::vector<std::string>;

// ---- the text of an event -----------------------------------------------------------------------

inline std::string LevelName(sim::Level level) {
    static const char *const kNames[] = {"debug", "info", "warn", "error"};
    return kNames[static_cast<int>(level)];
}

// Whether a text begins with "[unit.c:123]".
inline bool BeginsWithItsPlace(const std::string &text) {
    const size_t colon = text.find(".c:"), end = text.find(']');
    if (!text.starts_with('[') || colon == std::string::npos || end == std::string::npos || colon + 3 >= end)
        return false;
    return text.find_first_not_of("abcdefghijklmnopqrstuvwxyz_", 1) == colon &&
           text.find_first_not_of("0123456789", colon + 3) == end;
}

// An assertion on the debug channel names no place.
inline bool IsBareAssertion(const sim::Event &event) {
    return event.kind == sim::Kind::kDebug && event.text.starts_with("assertion failed: ");
}

// Debug and audit lines begin with "[file:line]"; a log line may hold "line=123".
inline std::string WithoutLineNumber(const sim::Event &event) {
    if (IsBareAssertion(event))
        return event.text;
    if (event.kind != sim::Kind::kLog) {
        EXPECT_TRUE(BeginsWithItsPlace(event.text)) << event.text;
        return event.text.substr(event.text.find(']') + 1);
    }
    const size_t at = event.text.find("line=");
    if (at == std::string::npos)
        return event.text;
    const size_t end = std::min(event.text.find_first_not_of("0123456789", at + 5), event.text.size());
    EXPECT_GT(end, at + 5) << event.text;
    return event.text.substr(0, at + 5) + "#" + event.text.substr(end);
}

// The source file that an event names.
inline std::string UnitOf(const sim::Event &event) {
    return event.kind == sim::Kind::kDebug || event.kind == sim::Kind::kAudit
               ? event.text.substr(1, event.text.find(':') - 1)
               : event.file;
}

// The unit that single sensors' functions name; the channels name no function.
inline std::string UnitOfFunction(const std::string &function) {
    static const std::pair<const char *, const char *> kUnits[] = {
        {"SDR_UpdateSpecificSDRRecFile", "specific_sdr_file.c"},
        {"SDR_GetSepcificFruSDRRecID", "specific_sdr_file.c"},
        {"checkSensorExist", "specific_sdr_file.c"},
        {"SDR_AddSpecificSensor", "oxa_specific_sdr.c"},
        {"addSDRtoIPMI", "oxa_specific_sdr.c"},
        {"ModifySensorThresholdByFile", "modify_sensor_threshold.c"},
        {"updateSdrThreshold", "modify_sensor_threshold.c"}};
    for (const auto &[name, unit] : kUnits)
        if (function == name)
            return unit;
    return "gen_specific_sensor_data.c";
}

// "info 42 getSensorInfo: text", "stat", "debug 130: text", "audit 191: text".
inline std::string LineOf(const sim::Event &event) {
    switch (event.kind) {
    case sim::Kind::kLog:
        return LevelName(event.level) + " " + std::to_string(event.number) + " " + event.function + ": " +
               WithoutLineNumber(event);
    case sim::Kind::kDebug:
        return "debug " + std::to_string(event.number) + ": " + WithoutLineNumber(event);
    case sim::Kind::kAudit:
        return "audit " + std::to_string(event.number) + ": " + WithoutLineNumber(event);
    case sim::Kind::kStat:
        return "stat";
    default:
        return "";
    }
}

// ---- the lines of a trace -----------------------------------------------------------------------

// Lines of these kinds in order; all of them must name the unit where one is given.
inline LineList LinesOf(std::initializer_list<sim::Kind> kinds, const std::string &unit = "") {
    LineList lines;
    for (const sim::Event &event : sim::Trace()) {
        if (std::find(kinds.begin(), kinds.end(), event.kind) == kinds.end())
            continue;
        if (!unit.empty()) {
            EXPECT_EQ(UnitOf(event), unit) << event.text;
        }
        if (event.kind == sim::Kind::kLog || event.kind == sim::Kind::kStat) {
            EXPECT_NE(event.line, 0u) << event.text;
        }
        lines.push_back(LineOf(event));
    }
    return lines;
}
// Lines of these kinds in order; every function must speak in the name of its own unit.
inline LineList LinesOfUnits(std::initializer_list<sim::Kind> kinds) {
    for (const sim::Event &event : sim::Trace()) {
        if (std::find(kinds.begin(), kinds.end(), event.kind) != kinds.end() && !IsBareAssertion(event)) {
            EXPECT_EQ(UnitOf(event), UnitOfFunction(event.function)) << event.text;
        }
    }
    return LinesOf(kinds);
}
inline LineList LogLines(const std::string &unit = "") {
    return LinesOf({sim::Kind::kLog}, unit);
}
inline LineList LogLinesFrom(const std::string &unit) { // those of one unit among others
    LineList lines;
    for (const sim::Event &event : sim::Logs())
        if (event.file == unit)
            lines.push_back(LineOf(event));
    return lines;
}
// Everything that is said, counted or shown.
inline LineList AllLines(const std::string &unit = "") {
    return LinesOf({sim::Kind::kLog, sim::Kind::kStat, sim::Kind::kDebug, sim::Kind::kAudit}, unit);
}

// ---- lines whose function is left open ----------------------------------------------------------

struct Line {
    char level; // D debug, I info, W warning, E error; C the debug channel
    uint32_t module;
    std::string text;
    bool operator==(const Line &) const = default;
    auto operator<=>(const Line &) const = default;
};
inline std::ostream &operator<<(std::ostream &out, const Line &line) {
    return out << line.level << ' ' << line.module << " \"" << line.text << '"';
}
inline char Letter(sim::Level level) {
    return "DIWE"[static_cast<int>(level)];
}
// Log lines in order; debug-channel lines only when asked for.
inline std::vector<Line> Lines(bool debug_channel = false) {
    std::vector<Line> out;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kLog)
            out.push_back({Letter(event.level), event.number, WithoutLineNumber(event)});
        if (event.kind == sim::Kind::kDebug && debug_channel)
            out.push_back({'C', event.number, WithoutLineNumber(event)});
    }
    return out;
}
inline size_t CountLine(const Line &line) {
    const auto lines = Lines(true);
    return static_cast<size_t>(std::count(lines.begin(), lines.end(), line));
}
inline std::string FunctionOf(const std::string &text) { // the function that a line names
    for (const sim::Event &event : sim::Logs())
        if (event.text == text)
            return event.function;
    return "(no such line)";
}

} // namespace tests
#endif
