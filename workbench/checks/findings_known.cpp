// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/errors.h"
#include "base/text.h"
#include "checks/findings.h"
#include "checks/known_findings_text.h"
#include "simulator/toml_text.h"

namespace workbench {
namespace {

std::string Text(const toml::table &table, const char *key) {
    const auto value = table[key].value<std::string>();
    if (!value)
        throw SetError(std::string("known_findings.toml: a finding lacks '") + key + "'");
    return *value;
}

} // namespace

KnownFindings::KnownFindings() {
    const toml::table file = toml::parse(kKnownFindingsText);
    const toml::array *list = file["finding"].as_array();
    for (size_t i = 0; list != nullptr && i < list->size(); ++i) {
        const toml::table &table = *list->get(i)->as_table();
        entries_.push_back(
            {Text(table, "rule"), Text(table, "profile"), Text(table, "subject"), Text(table, "reason")});
    }
}

void KnownFindings::Explain(Finding &finding) {
    for (Entry &entry : entries_)
        if (entry.rule == finding.rule && entry.subject == finding.subject &&
            MatchesGlob(finding.profile, entry.profile)) {
            finding.reason = entry.reason;
            entry.used = true;
            return;
        }
}

std::vector<std::string> KnownFindings::Unused() const {
    std::vector<std::string> out;
    for (const Entry &entry : entries_)
        if (!entry.used)
            out.push_back(entry.rule + ", " + entry.profile + ", " + entry.subject);
    return out;
}

} // namespace workbench
