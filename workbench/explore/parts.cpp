// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/parts.h"

#include <algorithm>
#include <sstream>

#include "base/errors.h"
#include "base/text.h"
#include "events/sel_calls.h"
#include "simulator/board_file_rules.h"

namespace workbench {
namespace {

constexpr size_t kMostParts = 32;

struct Kind {
    const char *name;
    std::vector<Words> descriptions;
    const char *event; // "*" is the part's number
};

const std::vector<Kind> &Kinds() {
    static const std::vector<Kind> kinds = {
        {"disk",
         {{{"class", "temperature"},
           {"device_type", "nvme-disk"},
           {"sub_type", "1"},
           {"unc", "65"},
           {"uc", "70"}},
          {{"class", "disk-status"}, {"device_type", "nvme-disk"}, {"sub_type", "1"}, {"bitmap", "1"}}},
         "addDiskSEL entityId=4 slotNum=* eventNum=19 eventDir=0"},
        {"psu", {{{"class", "psu-fru"}}}, "addPEMSEL location=* eventNum=17 eventDir=0"},
        {"gpu",
         {{{"class", "temperature"}, {"device_type", "gpu"}, {"uc", "90"}}},
         "addGpuSlotErrorSel slotNum=*"},
        {"nic", {{{"class", "temperature"}, {"device_type", "nic"}, {"uc", "95"}}}, ""},
        {"card", {{{"class", "neo-card-fru"}}}, ""},
        {"ubb", {{{"class", "hgx-ubb-fru"}}}, ""},
    };
    return kinds;
}

[[noreturn]] void Refuse(const std::string &word, const std::string &why) {
    throw InputError("--parts: '" + word + "': " + why + "; give parts as 'disk:0-3,psu:1-2,gpu:1'");
}

const Kind &KindOf(const std::string &word, const std::string &name) {
    for (const Kind &kind : Kinds())
        if (SameName(kind.name, name))
            return kind;
    const std::vector<std::string> nearest = NearestNames(name, PartKinds(), 1);
    Refuse(word, "there are parts " + Join(PartKinds(), ", ") +
                     (nearest.empty() ? "" : "; did you mean " + nearest[0] + "?"));
}

uint8_t NumberOf(const std::string &word, const std::string &text) {
    const auto number = sim::rules::ParseNumber(text);
    if (!number || *number < 0 || *number > 254)
        Refuse(word, "a number is 0 to 254");
    return static_cast<uint8_t>(*number);
}

Part MakePart(const Kind &kind, uint8_t number) {
    Part part{kind.name, number, kind.descriptions, {}, kind.event, {}};
    if (const size_t star = part.event.find('*'); star != std::string::npos)
        part.event.replace(star, 1, std::to_string(number));
    for (const Words &words : part.descriptions) {
        DescriptionDraft draft;
        for (const auto &[key, word] : words)
            SetFromWord(draft, key, word);
        draft.slot = number;
        part.params.push_back(Finish(draft));
    }
    return part;
}

// "disk:0-3"
void AddParts(const std::string &word, std::vector<Part> &out) {
    const size_t colon = word.find(':'), dash = word.find('-', colon == std::string::npos ? 0 : colon);
    if (colon == std::string::npos)
        Refuse(word, "its number is missing");
    const Kind &kind = KindOf(word, word.substr(0, colon));
    const uint8_t first =
        NumberOf(word, word.substr(colon + 1, dash == std::string::npos ? dash : dash - colon - 1));
    const uint8_t last = dash == std::string::npos ? first : NumberOf(word, word.substr(dash + 1));
    if (last < first)
        Refuse(word, "the last is below the first");
    for (unsigned number = first; number <= last; ++number) {
        if (std::any_of(out.begin(), out.end(),
                        [&](const Part &p) { return p.kind == kind.name && p.number == number; }))
            Refuse(word, std::string(kind.name) + " " + std::to_string(number) + " is named twice");
        out.push_back(MakePart(kind, static_cast<uint8_t>(number)));
    }
}

} // namespace

EventCall Part::Event() const {
    std::istringstream stream(event);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    const BuilderView &builder = FindBuilder(words.front());
    words.erase(words.begin());
    return {BuilderName(builder), ParseArguments(builder, words)};
}

std::vector<std::string> PartKinds() {
    std::vector<std::string> out;
    for (const Kind &kind : Kinds())
        out.push_back(kind.name);
    return out;
}

std::vector<Part> ReadParts(const std::string &text) {
    std::vector<Part> out;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ',');)
        AddParts(word, out);
    if (text.ends_with(','))
        Refuse(text, "nothing stands behind its last comma");
    if (out.empty())
        Refuse(text, "no part");
    if (out.size() > kMostParts)
        Refuse(text, "more than " + std::to_string(kMostParts) + " parts");
    return out;
}

std::string DescriptionToml(const Words &description, uint8_t slot) {
    std::string out = "{ ";
    for (const auto &[key, word] : description)
        out += key + " = " + (sim::rules::ParseNumber(word) ? word : "\"" + word + "\"") + ", ";
    return out + "slot = " + std::to_string(slot) + " }";
}

} // namespace workbench
