// SPDX-License-Identifier: GPL-3.0-or-later
//
// list --profile all: how many sensors of each group every profile has on one board.
#include <algorithm>
#include <map>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/list_options.h"
#include "sets/board.h"
#include "sets/decode.h"
#include "sets/groups.h"
#include "sets/select.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

struct ProfileCounts {
    const Profile *profile = nullptr;
    std::map<std::string, size_t> by_group;
    size_t total = 0, full = 0;
    std::string no_set; // why it has none
};

ProfileCounts Count(const ListOptions &options, const RunOptions &run, const BuiltSet &built) {
    ProfileCounts out{&FindProfile(run.profile), {}, 0, 0, built.no_set};
    const Decoder decoder;
    for (const Sensor &sensor : built.set.sensors) {
        const Decoded decoded = decoder.Decode(sensor);
        const auto is_meant = [&decoded](const std::string &word) { return IsMeant(decoded.name, word); };
        if (!options.filter.empty() && std::none_of(options.filter.begin(), options.filter.end(), is_meant))
            continue; // a name that one profile has not is no mistake here
        ++out.by_group[GroupOf(sensor)];
        ++out.total;
        out.full += decoded.kind == RecordKind::kFull;
    }
    return out;
}

std::vector<ProfileCounts> CountAll(const ListOptions &options) {
    std::vector<ProfileCounts> out;
    std::vector<RunOptions> runs;
    for (const Profile *profile : ProfilesWithDriver()) {
        runs.push_back(options.run);
        runs.back().profile = profile->name;
    }
    BuildStaticSetsApart(runs, "building", [&](const RunOptions &run, const BuiltSet &built) {
        out.push_back(Count(options, run, built));
    });
    return out;
}

size_t CountOf(const ProfileCounts &counts, const std::string &group) {
    const auto found = counts.by_group.find(group);
    return found == counts.by_group.end() ? 0 : found->second;
}

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string RenderTable(const ListOptions &options, const std::vector<ProfileCounts> &all) {
    std::vector<Column> columns = {{"PROFILE"}, {"ALL", true}, {"FULL", true}, {"COMPACT", true}};
    for (const std::string &group : GroupNames())
        columns.push_back({Upper(group), true});
    Table table(columns);
    for (const ProfileCounts &counts : all) {
        if (!counts.no_set.empty()) {
            table.Add({{counts.profile->name, Style::kBold}, {"no set", Style::kHot}});
            continue;
        }
        std::vector<Cell> row = {{counts.profile->name, Style::kBold},
                                 {std::to_string(counts.total)},
                                 {std::to_string(counts.full), Style::kDim},
                                 {std::to_string(counts.total - counts.full), Style::kDim}};
        for (const std::string &group : GroupNames()) {
            const size_t count = CountOf(counts, group);
            row.push_back(count != 0 ? Cell{std::to_string(count)} : Cell{"-", Style::kDim});
        }
        table.Add(row);
    }
    if (options.no_header) {
        table.WithoutHeader();
        return table.Render(ColourWanted());
    }
    return table.Render(ColourWanted()) + "\n" + std::to_string(all.size()) + " profiles, board " +
           BoardText(options.run.board) +
           (options.filter.empty() ? "" : ", names like " + Join(options.filter, ", ")) + "\n";
}

std::string RenderJson(const ListOptions &options, const std::vector<ProfileCounts> &all) {
    Json out{{"board", options.run.board}, {"groups", GroupNames()}};
    out["profiles"] = Json::array();
    for (const ProfileCounts &counts : all) {
        Json groups = Json::object();
        for (const std::string &group : GroupNames())
            groups[group] = CountOf(counts, group);
        if (!counts.no_set.empty()) {
            Json entry = ProfileJson(counts.profile->id);
            entry["no_set"] = counts.no_set;
            out["profiles"].push_back(std::move(entry));
            continue;
        }
        out["profiles"].push_back({{"name", counts.profile->name},
                                   {"id", counts.profile->id},
                                   {"count", counts.total},
                                   {"full", counts.full},
                                   {"compact", counts.total - counts.full},
                                   {"groups", groups}});
    }
    return Dump(out);
}

} // namespace

void ListAll(const ListOptions &options) {
    const std::vector<ProfileCounts> all = CountAll(options);
    PrintOut(options.json ? RenderJson(options, all) : RenderTable(options, all));
    bool whole = true;
    for (const ProfileCounts &counts : all)
        if (!counts.no_set.empty()) {
            std::fprintf(stderr, "oxa-sensors: profile %s: %s\n", counts.profile->name,
                         counts.no_set.c_str());
            whole = false;
        }
    if (!whole)
        throw ExitStatus(kNoSet);
}

} // namespace workbench
