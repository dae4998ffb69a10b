// SPDX-License-Identifier: GPL-3.0-or-later
//
// Names of DIMMs: "MEM_STATUS_%s" leaves five characters within the sixteen of a sensor name, so the default
// names are short: "A0", "A1", "B0", ...
#include "simulator/board_file_sections.h"

#include <algorithm>
namespace sim {
namespace {

std::string Padded(uint32_t number, size_t width) {
    std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// The text that stands for one placeholder ("n:2"); nothing when there is no such placeholder.
std::optional<std::string> Placeholder(std::string_view text, uint32_t dimm, const DimmPlaces &places) {
    const size_t colon = text.find(':');
    const std::string_view word = text.substr(0, colon);
    const std::optional<int64_t> width = colon == text.npos ? 0 : rules::ParseNumber(text.substr(colon + 1));
    if (!width || *width > 9)
        return std::nullopt;
    const uint32_t in_cpu = places.per_cpu == 0 ? dimm : dimm % places.per_cpu;
    const uint32_t channel = in_cpu / places.per_channel;
    if (word == "letter")
        return ChannelLetters(channel);
    const std::pair<std::string_view, uint32_t> numbers[] = {
        {"n", dimm},
        {"cpu", places.per_cpu == 0 ? 0 : dimm / places.per_cpu},
        {"channel", channel},
        {"slot", in_cpu % places.per_channel},
    };
    for (const auto &[name, number] : numbers)
        if (name == word)
            return Padded(number, static_cast<size_t>(*width));
    return std::nullopt;
}

} // namespace

std::optional<std::string> DimmNameByPattern(std::string_view pattern, uint32_t dimm,
                                             const DimmPlaces &places) {
    std::string name;
    while (!pattern.empty()) {
        const size_t open = pattern.find('{');
        name += pattern.substr(0, open);
        if (open == pattern.npos)
            break;
        const size_t close = pattern.find('}', open);
        if (close == pattern.npos)
            return std::nullopt;
        const auto text = Placeholder(pattern.substr(open + 1, close - open - 1), dimm, places);
        if (!text)
            return std::nullopt;
        name += *text;
        pattern.remove_prefix(close + 1);
    }
    return name;
}

namespace rules {
namespace {

const Reader<std::string> kName = Text(1, 63);
constexpr const char *kNamesText =
    "a list of texts or a pattern of {n} {cpu} {channel} {letter} {slot}, with a width as in {n:2}";

void ReadNames(DimmNaming &naming, const Where &where, const toml::node &node) {
    if (const auto *list = node.as_array()) {
        for (const toml::node &element : *list)
            naming.names.push_back(kName.Get(where, element));
        return;
    }
    const auto pattern = kName.parse(node);
    if (!pattern || !DimmNameByPattern(*pattern, 0, naming.places))
        Mismatch(where, node, kNamesText);
    naming.pattern = *pattern;
}

} // namespace

Rules DimmRules(Draft &draft) {
    Dimms &dimms = draft.board.dimms;
    DimmNaming &naming = draft.dimm_naming;
    auto read_names = [&naming](const Where &where, const toml::node &node) {
        ReadNames(naming, where, node);
    };
    return {
        Value("count", dimms.count),
        {.key = "names",
         .expected = kNamesText,
         .read = read_names,
         .schema =
             [] {
                 return schema::AnyOf(
                     {schema::ListOf(kName.schema),
                      schema::Pattern("([ -z|}~]|\\{(n|cpu|channel|letter|slot)(:[^{}]*)?\\})*")});
             }},
        Value("dimms_per_cpu", naming.places.per_cpu, Number<uint8_t>(1)),
        Value("slots_per_channel", naming.places.per_channel, Number<uint8_t>(1)),
        Value("power_accuracy", dimms.power_accuracy),
    };
}

// Every DIMM gets a name, and one of its own.
void NameDimms(Draft &draft, const Where &where, const toml::table &table) {
    const DimmNaming &naming = draft.dimm_naming;
    std::vector<std::string> &names = draft.board.dimms.names;
    const Place place = PlaceOf(table, "names");
    const Where at = where.At("names");
    names = naming.names;
    if (names.size() > draft.board.dimms.count)
        Fail(where, place, at.Label() + " names " + std::to_string(names.size()) + " DIMMs",
             "'count' is " + std::to_string(draft.board.dimms.count));
    for (auto dimm = static_cast<uint32_t>(names.size()); dimm < draft.board.dimms.count; ++dimm)
        names.push_back(naming.pattern.empty() ? DefaultDimmName(dimm)
                                               : *DimmNameByPattern(naming.pattern, dimm, naming.places));
    std::vector<std::string> sorted = names;
    std::sort(sorted.begin(), sorted.end());
    const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
    if (twice != sorted.end())
        Fail(where, place, at.Label() + " gives the name \"" + *twice + "\" twice",
             "every DIMM needs a name of its own");
}

} // namespace rules
} // namespace sim
