// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/known.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"
#include "explore/known_findings_text.h"
#include "simulator/toml_text.h"

namespace workbench {
namespace {

std::string TextIn(const toml::table &table, const char *key) {
    const auto value = table[key].value<std::string>();
    if (!value)
        throw SetError(std::string("explore/known_findings.toml: a finding lacks '") + key + "'");
    return *value;
}

std::vector<KnownStory> Read() {
    const toml::table file = toml::parse(kKnownStoriesText);
    std::vector<KnownStory> out;
    const toml::array *list = file["finding"].as_array();
    for (size_t i = 0; list != nullptr && i < list->size(); ++i) {
        const toml::table &table = *list->get(i)->as_table();
        KnownStory known{TextIn(table, "rule"), TextIn(table, "subject"), TextIn(table, "reason"), {}};
        const toml::array *story = table["story"].as_array();
        for (size_t n = 0; story != nullptr && n < story->size(); ++n)
            known.story.push_back(story->get(n)->value_or(std::string()));
        if (known.story.empty())
            throw SetError("explore/known_findings.toml: " + known.rule + ", " + known.subject +
                           " lacks its story");
        out.push_back(std::move(known));
    }
    return out;
}

} // namespace

const std::vector<KnownStory> &KnownStories() {
    static const std::vector<KnownStory> known = Read();
    return known;
}

const KnownStory *KnownOf(const BrokenStory &broken) {
    for (const KnownStory &known : KnownStories())
        if (MatchesGlob(broken.rule, known.rule) && MatchesGlob(broken.subject, known.subject))
            return &known;
    return nullptr;
}

} // namespace workbench
