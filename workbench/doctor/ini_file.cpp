// SPDX-License-Identifier: GPL-3.0-or-later
#include "doctor/ini_file.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "base/text.h"

namespace workbench {
namespace {

std::string Trimmed(const std::string &text) {
    const size_t begin = text.find_first_not_of(" \t\r");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

std::optional<uint32_t> DecimalOf(const std::string &text) {
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = !text.empty() && error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

class Reader {
public:
    void Take(const std::string &line) {
        ++number_;
        if (Trimmed(line).empty())
            return;
        if (line.front() == '[' && line.back() == ']')
            return Begin(line.substr(1, line.size() - 2));
        const size_t equals = line.rfind('=');
        const auto value =
            equals == std::string::npos ? std::nullopt : DecimalOf(Trimmed(line.substr(equals + 1)));
        if (!value)
            return Fault("'" + Printable(line.substr(0, 40)) +
                         "' is neither a section nor a key with a number");
        if (sections_.empty())
            return Fault("a key outside of all sections");
        const std::string key = line.substr(0, equals);
        if (!keys_.emplace(current_, key).second)
            Fault("key '" + Printable(key) + "' is there twice");
        text.sections[current_].keys.push_back({key, *value, number_});
    }
    IniText text;

private:
    void Fault(const std::string &fault) {
        text.faults.push_back({number_, fault});
    }
    void Begin(const std::string &name) {
        const auto [found, is_new] = sections_.emplace(name, text.sections.size());
        current_ = found->second;
        if (!is_new)
            return Fault("section [" + Printable(name) + "] is there twice");
        text.sections.push_back({name, number_, {}});
    }
    size_t number_ = 0;
    // Places are looked up, not searched for: a file of something else can have a hundred thousand lines.
    std::map<std::string, size_t> sections_;        // places by name
    std::set<std::pair<size_t, std::string>> keys_; // that are there
    size_t current_ = 0;
};

} // namespace

std::optional<uint32_t> IniSection::Value(const std::string &key) const {
    const auto found =
        std::find_if(keys.rbegin(), keys.rend(), [&](const IniKey &k) { return k.name == key; });
    return found == keys.rend() ? std::nullopt : std::optional(found->value);
}

IniText ReadIni(const std::vector<uint8_t> &bytes) {
    const std::string text(bytes.begin(), bytes.end());
    Reader reader;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        reader.Take(text.substr(begin, end - begin));
        begin = end + 1;
    }
    reader.text.torn = !text.empty() && text.back() != '\n';
    return std::move(reader.text);
}

std::vector<uint8_t> WriteIni(const std::vector<IniSection> &sections) {
    std::string text;
    for (const IniSection &section : sections) {
        text += "[" + section.name + "]\n";
        for (const IniKey &key : section.keys)
            text += key.name + "=" + std::to_string(key.value) + "\n";
    }
    return {text.begin(), text.end()};
}

} // namespace workbench
