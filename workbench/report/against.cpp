// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/against.h"

#include <filesystem>

#include "base/errors.h"
#include "base/text.h"
#include "lock/changes.h"
#include "lock/compare.h"

namespace workbench {
namespace {

Json LineOfChange(const FieldChange &change) {
    return {{"where", change.in_entry ? "entry" : "record"},
            {"offset", change.offset},
            {"field", change.field},
            {"was", change.left},
            {"now", change.right}};
}

Json Changed(const std::string &was, const std::string &now, Json lines) {
    if (was == now && lines.empty())
        return nullptr;
    Json out{{"what", was == now ? "changed" : "renamed"}, {"lines", std::move(lines)}};
    if (was != now)
        out["was"] = was;
    return out;
}

Json Added() {
    return {{"what", "added"}, {"lines", Json::array()}};
}

Lock LoadLock(const std::string &path) {
    LockFaults faults;
    Lock lock = ReadLock(path, faults);
    if (!faults.lines.empty())
        throw InputError(Join(faults.lines, "\n"));
    return lock;
}

} // namespace

Against::Against(const std::string &text, const std::vector<RunOptions> &runs, const LoginOptions &login)
    : text_(text) {
    if (IsLock(text)) {
        lock_ = LoadLock(text);
        return;
    }
    const bool of_each_board = ProfileNamed(text) != nullptr;
    for (const RunOptions &run : runs)
        if (of_each_board || sources_.empty()) {
            SourceSet source = LoadSourceToCompare(text, run, login);
            sources_.push_back(MakeSide(std::move(source.set), source.label));
        }
}

Json Against::Of(size_t run, const std::string &board, const Side &side) const {
    return lock_ ? OfLock(board, side) : OfSource(sources_[sources_.size() == 1 ? 0 : run], side);
}

Json Against::OfSource(const Side &was, const Side &side) const {
    const Comparison comparison = CompareSources(was, side);
    Json out{{"label", was.label},
             {"removed", Json::array()},
             {"sensors", Json(side.set.sensors.size(), nullptr)}};
    for (const size_t i : comparison.removed)
        out["removed"].push_back({{"name", was.decoded[i].name}, {"what", WhatText(was, i)}});
    for (const size_t k : comparison.added)
        out["sensors"][k] = Added();
    for (const SensorPair &pair : comparison.pairs) {
        Json lines = Json::array();
        for (const FieldChange &change : pair.changes)
            lines.push_back(LineOfChange(change));
        out["sensors"][pair.right] =
            Changed(was.decoded[pair.left].name, side.decoded[pair.right].name, std::move(lines));
    }
    return out;
}

Json Against::OfLock(const std::string &board, const Side &side) const {
    const std::string stem = std::filesystem::path(board).stem().string();
    Json out{
        {"label", text_}, {"removed", Json::array()}, {"sensors", Json(side.set.sensors.size(), nullptr)}};
    std::vector<SensorLine> lines;
    for (size_t i = 0; i < side.set.sensors.size(); ++i)
        lines.push_back(LineOf(stem, *side.set.profile, side.set.sensors[i], side.decoded[i]));
    SensorLines old, now;
    for (const SensorLine &line : lock_->sensors)
        if (line.Board() == stem && line.Profile() == side.set.profile->name)
            old.push_back(&line);
    for (const SensorLine &line : lines)
        now.push_back(&line);
    if (old.empty()) {
        out["nothing"] = "not in the lock";
        return out;
    }
    for (Json &sensor : out["sensors"])
        sensor = Added();
    const SensorLines partners = PartnersOf(old, now);
    for (size_t i = 0; i < old.size(); ++i) {
        if (partners[i] == nullptr) {
            out["removed"].push_back({{"name", old[i]->Name()}, {"what", WhatText(*old[i])}});
            continue;
        }
        Json texts = Json::array();
        for (const std::string &text : ChangesOf(*old[i], *partners[i]))
            texts.push_back({{"text", text}});
        out["sensors"][static_cast<size_t>(partners[i] - lines.data())] =
            Changed(old[i]->Name(), partners[i]->Name(), std::move(texts));
    }
    return out;
}

} // namespace workbench
