// SPDX-License-Identifier: GPL-3.0-or-later
//
// Arguments and events as text.
#include <cctype>
#include <cstdio>

#include "simulator/platform_call.h"

namespace sim {

std::string Hex(const uint8_t *data, size_t size) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(size * 3);
    for (size_t at = 0; at < size; ++at) {
        if (at != 0)
            text += ' ';
        text += kDigits[data[at] >> 4];
        text += kDigits[data[at] & 15];
    }
    return text;
}

namespace {

// Control characters made visible, so that an event stays one line.
std::string Visible(const std::string &text) {
    std::string out;
    for (const char c : text) {
        const uint8_t byte = static_cast<uint8_t>(c);
        if (c == '\n') {
            out += "\\n";
        } else if (byte < 0x20 || byte >= 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof(escaped), "\\x%02X", byte);
            out += escaped;
        } else {
            out += c;
        }
    }
    return out;
}

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// The digits after `mark` become "#"; `close` must follow them when it is not NUL.
void MaskAfter(std::string &text, const std::string &mark, char close) {
    for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + mark.size())) {
        const size_t begin = at + mark.size();
        size_t end = begin;
        while (end < text.size() && IsDigit(text[end]))
            ++end;
        if (end != begin && (close == '\0' || (end < text.size() && text[end] == close)))
            text.replace(begin, end - begin, "#");
    }
}

std::string Masked(std::string text) {
    MaskAfter(text, ".c:", ']');
    MaskAfter(text, "line=", '\0');
    return Visible(text);
}

const char *Name(Level level) {
    switch (level) {
    case Level::kDebug:
        return "debug";
    case Level::kInfo:
        return "info";
    case Level::kWarn:
        return "warn";
    case Level::kError:
        return "error";
    }
    return "?";
}

std::string FormatCall(const Event &event) {
    std::string line = "call " + event.function + "(" + Visible(event.args) + ") = ";
    // the number of a descriptor is the system's business
    line += event.function == "sigwrap_open_mode" && event.result >= 0 ? "fd" : std::to_string(event.result);
    if (!event.text.empty())
        line += " \"" + Visible(event.text) + "\"";
    return event.failed ? line + " FAILED" : line;
}

} // namespace

std::string Format(const Event &event) {
    const std::string number = std::to_string(event.number);
    switch (event.kind) {
    case Kind::kCall:
        return FormatCall(event);
    case Kind::kLog:
        return std::string(Name(event.level)) + " " + number + " " + Visible(event.file) + ":# " +
               Visible(event.function) + ": " + Masked(event.text);
    case Kind::kStat:
        return "stat " + Visible(event.file) + ":#";
    case Kind::kDebug:
        return "dbgout " + number + " " + Masked(event.text);
    case Kind::kAudit:
        return "audit " + number + " " + Masked(event.text);
    case Kind::kNote:
        return "note " + Visible(event.text);
    }
    return "?";
}

void AppendQuoted(std::string &out, const char *text) {
    out += '"';
    out += text;
    out += '"';
}

void AppendValue(std::string &out, const char *text) {
    if (text == nullptr)
        out += "null";
    else
        AppendQuoted(out, text);
}

void AppendValue(std::string &out, const Bytes &bytes) {
    if (bytes.data == nullptr)
        out += "null";
    else
        AppendQuoted(out, Hex(bytes.data, bytes.size).c_str());
}

void AppendValue(std::string &out, const FileOf &file) {
    const State &state = TheState();
    std::string path = "unknown";
    if (file.descriptor)
        path = Lookup(state.descriptors, *file.descriptor, path);
    else if (file.stream != nullptr)
        path = Lookup(state.streams, file.stream, path);
    else if (const auto found = state.inis.find(file.ini); found != state.inis.end())
        path = found->second->path;
    AppendQuoted(out, path.c_str());
}

void AppendValue(std::string &out, const SessionOf &session) {
    const State &state = TheState();
    const auto found = state.sessions.find(session.session);
    out += found == state.sessions.end() ? "none" : std::to_string(found->second);
}

} // namespace sim
