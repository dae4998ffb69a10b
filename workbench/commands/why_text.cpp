// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/why_text.h"

#include <algorithm>

#include "base/text.h"

namespace workbench {
namespace {

constexpr size_t kWordLineWidth = 96;

std::vector<NamedByte> NamedOf(const std::set<unsigned> &bytes, const std::vector<Field> &fields) {
    std::vector<NamedByte> out;
    for (const Field &field : fields)
        if (field.name != "unused" && std::any_of(bytes.begin(), bytes.end(), [&field](unsigned at) {
                return at >= field.offset && at < field.offset + field.size;
            }))
            out.push_back({field.offset, field.size, field.name});
    return out;
}

std::string ByteText(const NamedByte &byte) {
    const std::string last = byte.size > 1 ? "-" + std::to_string(byte.offset + byte.size - 1) : "";
    return std::to_string(byte.offset) + last + " " + byte.field;
}

std::string GoneText(const std::vector<std::string> &when) {
    std::vector<std::string> values;
    for (const std::string &word : when)
        values.push_back(word == "fails" ? word : "answers " + word);
    return OrText(values);
}

} // namespace

NamedBytes Named(const std::set<unsigned> &record, const std::set<unsigned> &entry,
                 const std::vector<Field> &record_fields, const std::vector<Field> &entry_fields) {
    return {NamedOf(record, record_fields), NamedOf(entry, entry_fields)};
}

std::string SetsText(const NamedBytes &bytes) {
    std::vector<std::string> words;
    for (const NamedByte &byte : bytes.record)
        words.push_back("record " + ByteText(byte));
    for (const NamedByte &byte : bytes.entry)
        words.push_back("entry " + ByteText(byte));
    return Join(words, ", ");
}

Json BytesJson(const std::vector<NamedByte> &bytes) {
    Json out = Json::array();
    for (const NamedByte &byte : bytes)
        out.push_back({{"offset", byte.offset}, {"size", byte.size}, {"field", byte.field}});
    return out;
}

std::string WordLine(const std::string &word, const std::string &text) {
    std::string out;
    for (const std::string &part : Wrap(text, kWordLineWidth))
        out += (out.empty() ? "  " + word + std::string(8 - word.size(), ' ') : std::string(10, ' ')) + part +
               "\n";
    return text.empty() ? "" : out;
}

std::string OrText(const std::vector<std::string> &parts) {
    if (parts.size() < 2)
        return Join(parts, "");
    return Join({parts.begin(), parts.end() - 1}, ", ") + " or " + parts.back();
}

std::string AskedText(const Asked &asked, const std::string &sets) {
    std::string out = WordLine("asked", CallText(asked.event) + " = " + ValueText(asked.event));
    out += WordLine("  from", asked.from);
    out += WordLine("  sets", sets);
    return out + WordLine("  gone", asked.gone_when.empty() ? "" : "when it " + GoneText(asked.gone_when));
}

} // namespace workbench
