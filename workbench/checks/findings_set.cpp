// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "base/text.h"
#include "checks/findings.h"

namespace workbench {
namespace {

using Places = std::map<std::string, std::vector<size_t>>;

Finding Make(const StaticSet &set, const char *rule, const std::string &subject, const std::string &text) {
    return {rule, ProfileWord(set), subject, text, {set.Label()}, ""};
}

void CheckNames(const StaticSet &set, const std::vector<Decoded> &decoded, std::vector<Finding> &out) {
    Places by_name;
    for (size_t i = 0; i < decoded.size(); ++i) {
        const std::string &name = decoded[i].name;
        by_name[std::string(KindText(decoded[i].kind)) + " sensors\n" + name].push_back(i);
        if (name.empty() || name.size() > kLongestName)
            out.push_back(Make(set, "name-length", name, std::to_string(name.size()) + " characters"));
        if (!std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; }))
            out.push_back(
                Make(set, "name-printable", name, "holds a byte that is no printable ASCII character"));
    }
    for (const auto &[key, places] : by_name)
        if (places.size() > 1)
            out.push_back(Make(set, "name-unique", decoded[places[0]].name,
                               std::to_string(places.size()) + " " + key.substr(0, key.find('\n')) +
                                   " have this name"));
}

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// The numbers that tell two names apart as "*": "CPU*_Vcore1_A".
std::string CommonPattern(const std::string &a, const std::string &b) {
    if (Pattern(a) != Pattern(b))
        return Pattern(a);
    std::string out;
    for (size_t i = 0, k = 0; i < a.size();) {
        size_t i_end = i, k_end = k;
        while (i_end < a.size() && IsDigit(a[i_end]))
            ++i_end;
        while (k_end < b.size() && IsDigit(b[k_end]))
            ++k_end;
        if (i_end == i) // no number: the same character in both
            ++i_end, ++k_end;
        out += a.substr(i, i_end - i) == b.substr(k, k_end - k) ? a.substr(i, i_end - i) : "*";
        i = i_end;
        k = k_end;
    }
    return out;
}

// Sensors of one kind (device code and item) tell their parts apart by the entity instance.
void CheckInstances(const StaticSet &set, const std::vector<Decoded> &decoded, std::vector<Finding> &out) {
    Places by_place;
    for (size_t i = 0; i < decoded.size(); ++i) {
        const Sensor &s = set.sensors[i];
        if (!s.has_entry) // of which kind it is stands in the entry
            continue;
        by_place[DeviceText(s.entry) + " " + Hex(s.record[SDR_ENTITY_ID]) +
                 Hex(s.record[SDR_ENTITY_INSTANCE])]
            .push_back(i);
    }
    for (const auto &[key, places] : by_place) {
        const size_t first = places[0];
        if (places.size() > 1)
            out.push_back(Make(
                set, "entity-instance", CommonPattern(decoded[first].name, decoded[places[1]].name),
                std::to_string(places.size()) + " sensors of one kind share " + decoded[first].entity_text +
                    " " + Hex(set.sensors[first].record[SDR_ENTITY_INSTANCE])));
    }
}

void CheckThresholds(const StaticSet &set, const Decoded &d, std::vector<Finding> &out) {
    const Threshold *last = nullptr; // thresholds come lowest first
    for (const Threshold &t : d.thresholds) {
        if (!t.readable)
            continue;
        if (last != nullptr && !(last->value < t.value))
            out.push_back(Make(set, "threshold-order", d.name,
                               std::string(last->key) + " " + FormatNumber(last->value) + " is not below " +
                                   t.key + " " + FormatNumber(t.value) + " " +
                                   (d.reading ? d.reading->unit : "")));
        last = &t;
    }
}

void CheckScale(const StaticSet &set, const Decoded &d, std::vector<Finding> &out) {
    if (!d.reading)
        return;
    if (d.reading->factor == 0)
        out.push_back(Make(set, "scale", d.name, "every reading is " + FormatNumber(d.reading->offset)));
    else if (!(d.reading->minimum < d.reading->maximum))
        out.push_back(Make(set, "scale", d.name, "its maximum is not above its minimum"));
}

} // namespace

std::string ProfileWord(const StaticSet &set) {
    return set.profile != nullptr ? set.profile->name : "-";
}

std::vector<Finding> CheckSet(const StaticSet &set, const std::vector<Decoded> &decoded) {
    std::vector<Finding> out;
    CheckNames(set, decoded, out);
    CheckInstances(set, decoded, out);
    for (const Decoded &d : decoded) {
        CheckThresholds(set, d, out);
        CheckScale(set, d, out);
    }
    if (set.profile == nullptr)
        return out;
    for (Finding &finding : CheckMeetings(set, decoded))
        out.push_back(std::move(finding));
    return out;
}

} // namespace workbench
