// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/active.h"

#include <algorithm>

#include "base/text.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

std::string InUnits(const Decoded &sensor, double value) {
    const std::string &unit = sensor.reading->unit;
    return FormatNumber(value) + (unit.empty() ? "" : " " + unit);
}

} // namespace

std::vector<std::string> ActiveLines(const Decoded &sensor) {
    std::vector<std::string> out;
    for (const Threshold &t : sensor.thresholds)
        if (t.IsSetOtherwise())
            out.push_back(std::string(t.key) + " " + (t.readable ? InUnits(sensor, t.value) : "absent") +
                          ", active " + InUnits(sensor, t.active_value) + ": set by a user");
    return out;
}

std::string ActiveText(const std::vector<Decoded> &sensors, const std::string &where) {
    std::string out;
    for (const Decoded &sensor : sensors)
        for (const std::string &line : ActiveLines(sensor))
            out += "  " + sensor.name + ": " + line + "\n";
    return out.empty() ? "" : "In force at " + where + ", other than the records say:\n" + out;
}

Json ActiveJson(const std::vector<Decoded> &sensors) {
    bool asked = false;
    Json out = Json::array();
    for (const Decoded &sensor : sensors)
        for (const Threshold &t : sensor.thresholds) {
            asked = asked || t.active_raw;
            if (t.IsSetOtherwise())
                out.push_back({{"name", sensor.name},
                               {"threshold", LowerKey(t)},
                               {"record", t.readable ? Json(Rounded(t.value)) : Json(nullptr)},
                               {"active", Rounded(t.active_value)}});
        }
    return asked ? out : Json(nullptr);
}

} // namespace workbench
