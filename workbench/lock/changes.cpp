// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/changes.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "base/text.h"

namespace workbench {
namespace {

using Limit = std::pair<std::string, std::string>;

constexpr const char *kKeys[] = {"lnr", "lc", "lnc", "unc", "uc", "unr"};

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string UnitText(const SensorLine &line) {
    const std::string &word = line.words[kLockUnit];
    if (word == "-")
        return "";
    std::string out = " " + word;
    std::replace(out.begin(), out.end(), '_', ' ');
    return out;
}

uint8_t Byte(const std::string &word, size_t at) {
    return at + 2 <= word.size() ? static_cast<uint8_t>(std::strtoul(word.substr(at, 2).c_str(), nullptr, 16))
                                 : uint8_t{0};
}

std::string ReadingText(const SensorLine &line) {
    return line.words[kLockFactor] == "-" ? "none" : line.words[kLockFactor] + UnitText(line);
}

std::string EntityWords(const SensorLine &line) {
    const std::string &word = line.words[kLockEntity];
    return EntityText(Byte(word, 0)) + " " + Hex(Byte(word, 3));
}

std::string TypeWords(const SensorLine &line) {
    const std::string &word = line.words[kLockType];
    return SensorTypeText(Byte(word, 0)) + " (" + word + ")";
}

// The low byte of the reading mask: which limits there are.
uint8_t ReadableMask(const SensorLine &line) {
    return Byte(line.words[kLockMasks], 10);
}

std::string ValueOf(const std::vector<Limit> &limits, const std::string &key) {
    for (const Limit &limit : limits)
        if (limit.first == key)
            return limit.second;
    return "";
}

// Whether the limits that there are tell the masks as well.
bool AddLimits(const SensorLine &old, const SensorLine &now, std::vector<LineChange> &out) {
    const auto before = old.Limits(), after = now.Limits();
    bool gone_or_new = false;
    for (const char *key : kKeys) {
        const std::string from = ValueOf(before, key), to = ValueOf(after, key);
        if (from == to && (from.empty() || UnitText(old) == UnitText(now)))
            continue;
        gone_or_new = gone_or_new || from.empty() || to.empty();
        out.push_back({Upper(key), from.empty() ? "" : from + UnitText(old),
                       to.empty() ? "" : to + UnitText(now), true});
    }
    return gone_or_new;
}

void AddWord(const SensorLine &old, const SensorLine &now, LockColumn column, const std::string &name,
             std::vector<LineChange> &out) {
    if (old.words[column] != now.words[column])
        out.push_back({name, old.words[column], now.words[column]});
}

std::string ArrowText(const LineChange &change) {
    if (change.from.empty())
        return change.what + " " + change.to + " is new";
    if (change.to.empty())
        return change.what + " " + change.from + " is gone";
    return (change.what.empty() ? "" : change.what + " ") + change.from + " -> " + change.to;
}

} // namespace

std::vector<LineChange> DifferencesOf(const SensorLine &old, const SensorLine &now) {
    std::vector<LineChange> out;
    AddWord(old, now, kLockKind, "record", out);
    if (old.words[kLockType] != now.words[kLockType])
        out.push_back({"type", TypeWords(old), TypeWords(now)});
    if (old.words[kLockEntity] != now.words[kLockEntity])
        out.push_back({"", EntityWords(old), EntityWords(now)});
    AddWord(old, now, kLockDevice, "device", out);
    if (ReadingText(old) != ReadingText(now))
        out.push_back({"reading", ReadingText(old), ReadingText(now)});
    const bool masks_told = AddLimits(old, now, out);
    if (!masks_told)
        AddWord(old, now, kLockMasks, "masks", out);
    AddWord(old, now, kLockHysteresis, "hysteresis", out);
    AddWord(old, now, kLockSetup, "initialisation and capabilities", out);
    return out;
}

std::vector<std::string> ChangesOf(const SensorLine &old, const SensorLine &now) {
    std::vector<std::string> out;
    bool within_limits = false; // those of a sensor are told together
    for (const LineChange &change : DifferencesOf(old, now)) {
        if (change.is_limit && within_limits)
            out.back() += ", " + ArrowText(change);
        else
            out.push_back(ArrowText(change));
        within_limits = change.is_limit;
    }
    if (out.empty() && old.words[kLockSum] != now.words[kLockSum])
        out.push_back("bytes that the lock does not spell out; 'oxa-sensors show' has all of them");
    return out;
}

bool CanHaveThresholds(const SensorLine &line) {
    return line.words[kLockKind] == "full" && Byte(line.words[kLockType], 3) == 0x01 &&
           ReadableMask(line) != 0;
}

bool KeepsThresholds(const SensorLine &old, const SensorLine &now) {
    return old.Name() == now.Name() && now.words[kLockKind] == "full" &&
           ReadableMask(old) == ReadableMask(now);
}

bool ReadsOtherwise(const SensorLine &old, const SensorLine &now) {
    for (const LockColumn column : {kLockKind, kLockType, kLockFactor, kLockUnit})
        if (old.words[column] != now.words[column])
            return true;
    return old.words[kLockFactor] == "-" &&
           old.words[kLockMasks].substr(10) != now.words[kLockMasks].substr(10);
}

std::string WhatText(const SensorLine &line) {
    std::string out = line.words[kLockKind] + ", " + SensorTypeText(Byte(line.words[kLockType], 0)) + ", " +
                      EntityText(Byte(line.words[kLockEntity], 0));
    if (line.words[kLockFactor] != "-")
        out += ", " + ReadingText(line);
    for (const Limit &limit : line.Limits())
        out += ", " + Upper(limit.first) + " " + limit.second + UnitText(line);
    return out;
}

} // namespace workbench
