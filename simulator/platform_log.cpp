// SPDX-License-Identifier: GPL-3.0-or-later
//
// Logging: lines are printed here and kept in the trace; what every line must keep to is checked on the way.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "library/profiles/catalogue.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

constexpr uint32_t kModules[] = {42, 43, 52, 67, 255};
constexpr uint32_t kDebugLevels[] = {130, 132};
constexpr uint32_t kAuditLevel = 191;

template <size_t N> bool IsOneOf(uint32_t value, const uint32_t (&set)[N]) {
    return std::find(std::begin(set), std::end(set), value) != std::end(set);
}

std::string Print(const char *format, va_list list) {
    char most[256]; // of what is written; the few longer lines are printed once more
    va_list again;
    va_copy(again, list);
    const int length = std::vsnprintf(most, sizeof(most), format, list);
    std::string text(most, std::min(length > 0 ? static_cast<size_t>(length) : 0, sizeof(most) - 1));
    if (length >= static_cast<int>(sizeof(most))) {
        text.resize(static_cast<size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

// Beside the units of the profiles.
constexpr std::string_view kSharedUnits[] = {
    "gen_specific_sensor_data.c", "gen_specific_sensor_devtab.c", "specific_sdr_file.c", "NVRAccess.c",
    "oxa_specific_sdr.c",         "modify_sensor_threshold.c",    "oxa_specific_sel.c",
};

// Source file names that may stand in lines.
bool IsLibraryUnit(const char *file) {
    if (file == nullptr || *file == '\0')
        return false;
    return std::find(std::begin(kSharedUnits), std::end(kSharedUnits), file) != std::end(kSharedUnits) ||
           std::any_of(
               std::begin(oxa::kProfiles), std::end(oxa::kProfiles),
               [file](const oxa::ProfileView &profile) { return std::string_view(profile.pcUnit) == file; });
}

std::string Where(const char *file, uint32_t line) {
    return std::string(file != nullptr ? file : "null") + ":" + std::to_string(line);
}

// An error line takes the statistic that was counted for it.
void TakeStat(Call &call, const char *file, uint32_t line) {
    PendingStat &pending = ThePendingStat();
    const bool counted = pending.epoch == call.state().epoch;
    if (!counted) {
        call.state().Violate("error line at " + Where(file, line) +
                             " has no sspFailedStat directly before it");
    } else if (file != nullptr && std::strncmp(pending.file, file, sizeof(pending.file)) != 0) {
        call.state().Violate("error line at " + Where(file, line) + " was counted for " + pending.file);
    } else if (pending.line != line) {
        call.state().Violate("error line at " + Where(file, line) + " was counted at line " +
                             std::to_string(pending.line));
    }
    pending.epoch = 0;
}

bool IsPrinted(Call &call) {
    return call.Traced() || call.state().printing_lines;
}

void CheckLine(Call &call, const char *name, uint32_t module, const char *file, uint32_t line,
               const char *function) {
    State &state = call.state();
    const std::string where = std::string(name) + " at " + Where(file, line);
    if (!IsOneOf(module, kModules))
        state.Violate(where + ": module number " + std::to_string(module));
    if (!IsLibraryUnit(file))
        state.Violate(where + ": not a source file of the library");
    if (function == nullptr || *function == '\0')
        state.Violate(where + ": no function name");
}

bool LineIsSound(uint32_t module, const char *file, const char *function) {
    return IsOneOf(module, kModules) && IsLibraryUnit(file) && function != nullptr && *function != '\0';
}

void Line(Call &call, const char *name, Level level, uint32_t module, const char *file, uint32_t line,
          const char *function, const char *format, va_list list) {
    if (!LineIsSound(module, file, function))
        CheckLine(call, name, module, file, line, function);
    if (level == Level::kError)
        TakeStat(call, file, line);
    if (call.FailsOrNull({format}) || !IsPrinted(call))
        return;
    Event event;
    event.kind = Kind::kLog;
    event.level = level;
    event.number = module;
    event.file = file != nullptr ? file : "";
    event.line = line;
    event.function = function != nullptr ? function : "";
    event.text = Print(format, list);
    if (call.Traced())
        call.state().Record(std::move(event));
}

// "[file:line]" with a source file of the library.
bool HasPrefix(const std::string &text) {
    const size_t colon = text.find(':');
    const size_t close = text.find(']');
    if (text.empty() || text.front() != '[' || colon == std::string::npos || close == std::string::npos ||
        close < colon + 2)
        return false;
    const std::string digits = text.substr(colon + 1, close - colon - 1);
    return IsLibraryUnit(text.substr(1, colon - 1).c_str()) &&
           digits.find_first_not_of("0123456789") == std::string::npos;
}

void Channel(Call &call, Kind kind, uint32_t level, const char *format, va_list list) {
    if (call.FailsOrNull({format}) || !IsPrinted(call))
        return;
    Event event;
    event.kind = kind;
    event.number = level;
    event.text = Print(format, list);
    // an assertion on the channel stands by itself
    if (kind == Kind::kDebug && !HasPrefix(event.text) && !event.text.starts_with("assertion failed: "))
        call.state().Violate("debug line without \"[file:line]\": " + event.text);
    if (call.Traced())
        call.state().Record(std::move(event));
}

} // namespace

extern "C" {

void _ssp_debug(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt,
                ...) {
    Call call(Id("_ssp_debug"));
    va_list list;
    va_start(list, pcFmt);
    Line(call, "_ssp_debug", Level::kDebug, dwModule, pcFile, dwLine, pcFunc, pcFmt, list);
    va_end(list);
}

void _ssp_info(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt,
               ...) {
    Call call(Id("_ssp_info"));
    va_list list;
    va_start(list, pcFmt);
    Line(call, "_ssp_info", Level::kInfo, dwModule, pcFile, dwLine, pcFunc, pcFmt, list);
    va_end(list);
}

void _ssp_warn(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt,
               ...) {
    Call call(Id("_ssp_warn"));
    va_list list;
    va_start(list, pcFmt);
    Line(call, "_ssp_warn", Level::kWarn, dwModule, pcFile, dwLine, pcFunc, pcFmt, list);
    va_end(list);
}

void _ssp_error(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt,
                ...) {
    Call call(Id("_ssp_error"));
    va_list list;
    va_start(list, pcFmt);
    Line(call, "_ssp_error", Level::kError, dwModule, pcFile, dwLine, pcFunc, pcFmt, list);
    va_end(list);
}

void sspFailedStat(const char *pcFile, uint32_t dwLine) {
    Call call(Id("sspFailedStat"));
    State &state = call.state();
    if (!IsLibraryUnit(pcFile))
        state.Violate("sspFailedStat at " + Where(pcFile, dwLine) + ": not a source file of the library");
    PendingStat &pending = ThePendingStat();
    pending.epoch = state.epoch;
    pending.line = dwLine;
    std::snprintf(pending.file, sizeof(pending.file), "%s", pcFile != nullptr ? pcFile : "null");
    if (call.Traced()) {
        Event event;
        event.kind = Kind::kStat;
        event.file = pcFile != nullptr ? pcFile : "";
        event.line = dwLine;
        state.Record(std::move(event));
    }
}

void IDBG_LINUXAPP_DbgOut(uint32_t dwLevel, const char *pcFmt, ...) {
    Call call(Id("IDBG_LINUXAPP_DbgOut"));
    if (!IsOneOf(dwLevel, kDebugLevels))
        call.state().Violate("debug line with level " + std::to_string(dwLevel));
    va_list list;
    va_start(list, pcFmt);
    Channel(call, Kind::kDebug, dwLevel, pcFmt, list);
    va_end(list);
}

void IDBG_LINUXAPP_AuditOut(uint32_t dwLevel, const char *pcFmt, ...) {
    Call call(Id("IDBG_LINUXAPP_AuditOut"));
    if (dwLevel != kAuditLevel)
        call.state().Violate("audit line with level " + std::to_string(dwLevel));
    va_list list;
    va_start(list, pcFmt);
    Channel(call, Kind::kAudit, dwLevel, pcFmt, list);
    va_end(list);
}

} // extern "C"
