// SPDX-License-Identifier: GPL-3.0-or-later
//
// INI file library.  A file is lines "[section]" and "key=value"; section and key texts are kept to the
// letter, blanks included.  The key ends at the last "=" (values hold none).  A value is decimal or
// 0x-hexadecimal, blanks around it are skipped; one above 32 bits counts as 4294967295.  A line that is
// neither section nor key with a number is ignored, so that a damaged or binary file reads as whatever can be
// understood of it.  Of two equal keys the later one counts; equal sections are one.
#include <algorithm>

#include "simulator/library_files.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

std::optional<uint32_t> Number(const std::string &text) {
    const size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos)
        return std::nullopt;
    const bool hex = text.compare(begin, 2, "0x") == 0 || text.compare(begin, 2, "0X") == 0;
    const uint64_t base = hex ? 16 : 10;
    const size_t first = begin + (hex ? 2 : 0);
    uint64_t value = 0;
    size_t at = first;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        const int digit = c >= '0' && c <= '9'          ? c - '0'
                          : hex && c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : hex && c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                        : -1;
        if (digit < 0)
            break;
        value = std::min<uint64_t>(value * base + static_cast<uint64_t>(digit), UINT32_MAX);
    }
    if (at == first || text.find_first_not_of(" \t\r", at) != std::string::npos)
        return std::nullopt;
    return static_cast<uint32_t>(value);
}

auto &Section(OpenIni &ini, const std::string &name) {
    for (auto &[known, keys] : ini.sections)
        if (known == name)
            return keys;
    return ini.sections.emplace_back(name, std::vector<std::pair<std::string, uint32_t>>{}).second;
}

void Set(OpenIni &ini, const std::string &section, const std::string &key, uint32_t value) {
    auto &keys = Section(ini, section);
    for (auto &[known, stored] : keys) {
        if (known == key) {
            stored = value;
            return;
        }
    }
    keys.emplace_back(key, value);
}

// Places are looked up, not searched for: what a machine has in the place of such a file can have a hundred thousand lines.
class Parser {
public:
    explicit Parser(OpenIni &ini) : ini_(ini) {}

    void Section(const std::string &name) {
        const auto [found, is_new] = sections_.emplace(name, ini_.sections.size());
        if (is_new)
            ini_.sections.emplace_back(name, std::vector<std::pair<std::string, uint32_t>>{});
        current_ = found->second;
    }
    void Key(const std::string &name, uint32_t value) {
        if (ini_.sections.empty())
            Section("");
        auto &keys = ini_.sections[current_].second;
        const auto [found, is_new] = keys_.emplace(std::pair(current_, name), keys.size());
        if (is_new)
            keys.emplace_back(name, value);
        else
            keys[found->second].second = value;
    }

private:
    OpenIni &ini_;
    size_t current_ = 0;
    std::map<std::string, size_t> sections_;
    std::map<std::pair<size_t, std::string>, size_t> keys_;
};

void Parse(OpenIni &ini, const std::string &text) {
    Parser parser(ini);
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        begin = end + 1;
        const size_t equals = line.rfind('=');
        const size_t bracket = line.rfind(']');
        if (!line.empty() && line.front() == '[' && bracket != std::string::npos)
            parser.Section(line.substr(1, bracket - 1));
        else if (equals != std::string::npos)
            if (const auto value = Number(line.substr(equals + 1)))
                parser.Key(line.substr(0, equals), *value);
    }
}

std::string Print(const OpenIni &ini) {
    std::string text;
    for (const auto &[section, keys] : ini.sections) {
        if (!section.empty())
            text += "[" + section + "]\n";
        for (const auto &[key, value] : keys)
            text += key + "=" + std::to_string(value) + "\n";
    }
    return text;
}

// The handle's file; a handle that is not open is a violation.
OpenIni *Find(Call &call, const char *function, const IniFile *handle) {
    const auto found = call.state().inis.find(handle);
    if (found == call.state().inis.end()) {
        call.state().Violate(std::string(function) + ": the INI handle is not open");
        return nullptr;
    }
    return found->second.get();
}

// Text that a line cannot hold cannot be kept as given.
bool CanBeKept(const std::string &section, const std::string &key) {
    return section.find('\n') == std::string::npos && key.find('\n') == std::string::npos &&
           !(!key.empty() && key.front() == '[' && key.find(']') != std::string::npos);
}

int32_t Load(Call &call, const char *path, IniFile **out) {
    int error = 0;
    std::unique_ptr<OpenIni> ini;
    if (!call.FailsOrNull({path, out})) {
        const auto bytes = ReadWhole(RealPath(path), error);
        if (bytes || error == ENOENT || error == ENOTDIR) {
            ini = std::make_unique<OpenIni>();
            ini->path = path;
            const std::vector<uint8_t> content = bytes.value_or(std::vector<uint8_t>{});
            Parse(*ini, {content.begin(), content.end()});
        }
    }
    if (ini == nullptr) {
        if (out != nullptr)
            call.SpoilBuffer(out, sizeof(*out));
        return call.Return<int32_t>(-1);
    }
    if (call.rule() != nullptr && call.rule()->output) { // another handle: the file's is not given out
        *out = nullptr;
        call.Override(out);
        return call.Return<int32_t>(0);
    }
    IniFile *const handle = reinterpret_cast<IniFile *>(ini.get());
    call.state().inis[handle] = std::move(ini);
    *out = handle;
    return call.Return<int32_t>(0);
}

} // namespace

extern "C" {

int32_t IniLoadFile(const char *pcPath, IniFile **pptIni) {
    Call call(Id("IniLoadFile"), "path", pcPath);
    return Load(call, pcPath, pptIni);
}

int32_t OXA_IniLoadFile(const char *pcPath, IniFile **pptIni) {
    Call call(Id("OXA_IniLoadFile"), "path", pcPath);
    return Load(call, pcPath, pptIni);
}

uint32_t IniGetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwDefault) {
    Call call(Id("IniGetUInt"), "file", FileOf{.ini = ptIni}, "section", pcSection, "key", pcKey, "default",
              dwDefault);
    uint32_t value = dwDefault;
    const bool null = call.FailsOrNull({pcSection, pcKey});
    const OpenIni *ini = Find(call, "IniGetUInt", ptIni);
    if (!null && ini != nullptr) {
        for (const auto &[section, keys] : ini->sections) {
            for (const auto &[key, stored] : keys)
                if (section == pcSection && key == pcKey)
                    value = stored;
        }
    }
    return call.Value<uint32_t>(value);
}

int32_t IniSetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwValue) {
    Call call(Id("IniSetUInt"), "file", FileOf{.ini = ptIni}, "section", pcSection, "key", pcKey, "value",
              dwValue);
    const bool fails = call.FailsOrNull({pcSection, pcKey});
    OpenIni *ini = Find(call, "IniSetUInt", ptIni);
    if (fails || ini == nullptr || !CanBeKept(pcSection, pcKey))
        return call.Return<int32_t>(-1);
    Set(*ini, pcSection, pcKey, dwValue);
    return call.Return<int32_t>(0);
}

int32_t IniSaveFile(IniFile *ptIni, const char *pcPath) {
    Call call(Id("IniSaveFile"), "file", FileOf{.ini = ptIni}, "path", pcPath);
    const bool fails = call.FailsOrNull({pcPath});
    const OpenIni *ini = Find(call, "IniSaveFile", ptIni);
    if (fails || ini == nullptr)
        return call.Return<int32_t>(-1);
    const std::string text = Print(*ini);
    if (const auto last = LastBytes(call.state(), text.size())) {
        WriteWhole(RealPath(pcPath), {text.begin(), text.begin() + static_cast<std::ptrdiff_t>(*last)});
        Die();
    }
    return call.Return<int32_t>(WriteWhole(RealPath(pcPath), {text.begin(), text.end()}) ? 0 : -1);
}

void IniCloseFile(IniFile *ptIni) {
    Call call(Id("IniCloseFile"), "file", FileOf{.ini = ptIni});
    if (Find(call, "IniCloseFile", ptIni) != nullptr)
        call.state().inis.erase(ptIni);
}

} // extern "C"
