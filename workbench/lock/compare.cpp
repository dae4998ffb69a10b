// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/compare.h"

#include <algorithm>
#include <functional>

#include "base/text.h"
#include "lock/changes.h"

namespace workbench {
namespace {

using Lines = SensorLines;
using Sets = std::map<std::string, std::map<std::string, Lines>>; // by board and profile

Sets SetsOf(const Lock &lock) {
    Sets out;
    for (const SensorLine &line : lock.sensors)
        out[line.Board()][line.Profile()].push_back(&line);
    return out;
}

// Tells drifts that are alike once.
class Drifts {
public:
    void Add(const std::string &what, const std::string &profile, const std::string &name,
             const std::string &text, const std::string &board, size_t line) {
        const std::string pattern = Pattern(name);
        const std::string key = Join({what, profile, pattern, WithoutNumbersOf(what, text)}, "\n");
        const auto [found, is_new] = places_.emplace(key, drifts_.size());
        if (is_new)
            drifts_.push_back({what, profile, name, text, {}, {}, 0, line});
        Drift &drift = drifts_[found->second];
        ++drift.count;
        if (drift.subject != name && drift.subject != pattern) {
            drift.subject = pattern;
            drift.text = WithoutNumbersOf(what, text);
        }
        Once(drift.names, name);
        Once(drift.boards, board);
    }
    std::vector<Drift> Take() {
        return std::move(drifts_);
    }

private:
    // The new name of a renamed sensor counts on like the old one; in a value numbers matter.
    static std::string WithoutNumbersOf(const std::string &what, const std::string &text) {
        return what == "renamed" ? Pattern(text) : text;
    }
    static void Once(std::vector<std::string> &list, const std::string &word) {
        if (!word.empty() && std::find(list.begin(), list.end(), word) == list.end())
            list.push_back(word);
    }

    std::vector<Drift> drifts_;
    std::map<std::string, size_t> places_;
};

// Partners of one set's lines: by name and place, by name, then by place alone, which is a renamed sensor.
class Matching {
public:
    Matching(const Lines &old, const Lines &now) : old_(old), now_(now), partner_(old.size(), nullptr) {
        for (const auto &key : {NameAndPlace, NameOnly, PlaceOnly})
            Match(key);
    }
    const SensorLine *PartnerOf(size_t i) const {
        return partner_[i];
    }
    Lines New() const {
        Lines out;
        for (const SensorLine *line : now_)
            if (!taken_.contains(line))
                out.push_back(line);
        return out;
    }

private:
    static std::string NameOnly(const SensorLine &line) {
        return line.Name();
    }
    // What the scanner reads for it; not over which bus.
    static std::string PlaceOnly(const SensorLine &line) {
        const std::string &device = line.words[kLockDevice];
        return device.substr(0, device.find('@')) + " " + line.words[kLockEntity].substr(0, 2);
    }
    static std::string NameAndPlace(const SensorLine &line) {
        return NameOnly(line) + "\n" + PlaceOnly(line);
    }
    void Match(std::string (*key)(const SensorLine &)) {
        std::map<std::string, Lines> free;
        for (const SensorLine *line : now_)
            if (!taken_.contains(line))
                free[key(*line)].push_back(line);
        for (size_t i = 0; i < old_.size(); ++i) {
            Lines &candidates = free[key(*old_[i])];
            if (partner_[i] != nullptr || candidates.empty())
                continue;
            partner_[i] = candidates.front();
            taken_.insert(candidates.front());
            candidates.erase(candidates.begin());
        }
    }

    const Lines &old_, &now_;
    std::vector<const SensorLine *> partner_;
    std::set<const SensorLine *> taken_;
};

class SetComparison {
public:
    SetComparison(const Lines &old, const Lines &now, Drifts &drifts, DriftMeaning &meaning)
        : old_(old), now_(now), profile_(old.front()->Profile()), board_(old.front()->Board()),
          drifts_(drifts), meaning_(meaning) {
        for (const SensorLine *line : now)
            names_.insert(line->Name());
    }

    void Run() {
        const Matching matching(old_, now_);
        Lines stayed;
        for (size_t i = 0; i < old_.size(); ++i)
            if (const SensorLine *partner = matching.PartnerOf(i)) {
                Compare(*old_[i], *partner);
                stayed.push_back(partner);
            } else {
                Tell("removed", *old_[i], WhatText(*old_[i]));
                Lost(*old_[i]);
            }
        for (const SensorLine *line : matching.New())
            drifts_.Add("added", profile_, line->Name(), WhatText(*line), board_, 0);
        TellOrder(stayed);
    }

private:
    void Tell(const char *what, const SensorLine &old, const std::string &text) {
        drifts_.Add(what, profile_, old.Name(), text, board_, old.number);
    }
    void Lost(const SensorLine &old) {
        if (CanHaveThresholds(old))
            meaning_.dropped[profile_].insert(old.Name());
        if (!names_.contains(old.Name()))
            meaning_.names_gone[profile_].insert(old.Name());
    }
    void Compare(const SensorLine &old, const SensorLine &now) {
        const std::vector<std::string> changes = ChangesOf(old, now);
        const bool renamed = old.Name() != now.Name();
        if (renamed)
            Tell("renamed", old, now.Name());
        for (const std::string &change : changes)
            if (!renamed || change.rfind("bytes that", 0) != 0) // the name is in the record
                Tell("changed", old, change);
        if (renamed)
            return Lost(old);
        if (ReadsOtherwise(old, now))
            meaning_.new_meaning[profile_].insert(old.Name());
        if (CanHaveThresholds(old))
            TellThresholds(old, now);
    }
    void TellThresholds(const SensorLine &old, const SensorLine &now) {
        if (!KeepsThresholds(old, now))
            meaning_.dropped[profile_].insert(old.Name());
        else if (old.words[kLockFactor] != now.words[kLockFactor] ||
                 old.words[kLockUnit] != now.words[kLockUnit])
            meaning_.read_anew[profile_].insert(old.Name());
        else if (old.words[kLockLimits] != now.words[kLockLimits])
            meaning_.outranked[profile_].insert(old.Name());
    }
    // The sensors that stayed, in the order of the locked set: they should stand in that order now.
    void TellOrder(const Lines &stayed) {
        std::map<const SensorLine *, size_t> place;
        for (size_t i = 0; i < now_.size(); ++i)
            place[now_[i]] = i;
        for (size_t i = 1; i < stayed.size(); ++i)
            if (place[stayed[i]] < place[stayed[i - 1]]) {
                drifts_.Add("order", profile_, stayed[i]->Name(),
                            "stands before " + stayed[i - 1]->Name() + " now", board_, 0);
                return;
            }
    }

    const Lines &old_, &now_;
    const std::string profile_, board_;
    Drifts &drifts_;
    DriftMeaning &meaning_;
    std::set<std::string> names_;
};

std::string Sensors(size_t count) {
    return std::to_string(count) + (count == 1 ? " sensor" : " sensors");
}

void CompareSets(const Sets &locked, const Sets &now, Drifts &drifts, DriftMeaning &meaning) {
    for (const auto &[board, profiles] : locked) {
        const auto same = now.find(board);
        if (same == now.end()) {
            drifts.Add("board", "", board, "is in the lock and not among the boards", board,
                       profiles.begin()->second.front()->number);
            continue;
        }
        for (const auto &[profile, lines] : profiles)
            if (const auto found = same->second.find(profile); found != same->second.end())
                SetComparison(lines, found->second, drifts, meaning).Run();
            else
                drifts.Add("profile", profile, "", "is in the lock and has no sensors now", board,
                           lines.front()->number);
    }
    for (const auto &[board, profiles] : now) {
        const auto same = locked.find(board);
        size_t count = 0;
        for (const auto &[profile, lines] : profiles) {
            count += lines.size();
            if (same != locked.end() && !same->second.contains(profile))
                drifts.Add("profile", profile, "", "is new: not in the lock", board, 0);
        }
        if (same == locked.end())
            drifts.Add("board", "", board,
                       "is new: " + Sensors(count) + " of " + std::to_string(profiles.size()) +
                           " profiles are not in the lock",
                       board, 0);
    }
}

// ---- the tables of run-time sensors ----------------------------------------------------------------------

std::string KeyOf(const TableLine &line) {
    return line.tag + " " + Join(line.key, " ");
}

void TellTable(const TableLine &line, const std::string &text, Drifts &drifts) {
    const size_t from = OfProfile(line) ? 1 : 0;
    const std::string subject =
        line.tag.substr(1) + " " + Join({line.key.begin() + static_cast<long>(from), line.key.end()}, " ");
    drifts.Add("table", from == 1 ? FromLockWord(line.key[0]) : "", subject, text, "", line.number);
}

// The words that differ, where the lines are equally long.
std::string TableChange(std::vector<std::string> old, std::vector<std::string> now) {
    for (size_t i = old.size(); old.size() == now.size() && i-- > 0;)
        if (old[i] == now[i]) {
            old.erase(old.begin() + static_cast<long>(i));
            now.erase(now.begin() + static_cast<long>(i));
        }
    return Join(old, " ") + " -> " + Join(now, " ");
}

// Names that are asked for, and thresholds that are stored under them.
void TellNameLost(const TableLine &old, const TableLine *now, DriftMeaning &meaning) {
    if (!OfProfile(old) && old.tag != "@family")
        return;
    const std::string profile = OfProfile(old) ? FromLockWord(old.key[0]) : "all";
    const std::string &sensor_class = old.key[OfProfile(old) ? 1 : 0];
    const std::string name = FromLockWord(old.value[0]);
    const bool full = sensor_class == "temperature" || sensor_class == "voltage" || sensor_class == "power" ||
                      sensor_class == "fan";
    const bool renamed = now == nullptr || now->value[0] != old.value[0];
    if (renamed)
        meaning.names_gone[profile].insert(name);
    if (full && (renamed || now->value != old.value))
        meaning.dropped[profile].insert(name);
}

void CompareTables(const Lock &locked, const Lock &now, Drifts &drifts, DriftMeaning &meaning) {
    std::map<std::string, const TableLine *> built;
    for (const TableLine &line : now.tables)
        built[KeyOf(line)] = &line;
    for (const TableLine &line : locked.tables) {
        const auto found = built.find(KeyOf(line));
        const TableLine *partner = found == built.end() ? nullptr : found->second;
        if (partner == nullptr)
            TellTable(line, Join(line.value, " ") + " is gone", drifts);
        else if (partner->value != line.value)
            TellTable(line, TableChange(line.value, partner->value), drifts);
        if (partner == nullptr || partner->value != line.value)
            TellNameLost(line, partner, meaning);
        if (partner != nullptr)
            built.erase(found);
    }
    for (const TableLine &line : now.tables)
        if (built.contains(KeyOf(line)))
            TellTable(line, Join(line.value, " ") + " is new", drifts);
}

} // namespace

SensorLines PartnersOf(const SensorLines &locked, const SensorLines &now) {
    const Matching matching(locked, now);
    SensorLines out;
    for (size_t i = 0; i < locked.size(); ++i)
        out.push_back(matching.PartnerOf(i));
    return out;
}

LockComparison CompareLocks(const Lock &locked, const Lock &now) {
    LockComparison out;
    Drifts drifts;
    const Sets sets = SetsOf(now);
    CompareSets(SetsOf(locked), sets, drifts, out.meaning);
    CompareTables(locked, now, drifts, out.meaning);
    out.drifts = drifts.Take();
    out.sensors = now.sensors.size();
    for (const auto &[board, profiles] : sets)
        out.sets += profiles.size();
    return out;
}

} // namespace workbench
