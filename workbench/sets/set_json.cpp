// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/set_json.h"

#include <algorithm>
#include <cctype>

#include "base/text.h"
#include "sets/aside.h"

namespace workbench {
namespace {

Json ReadingJson(const Decoded &d) {
    if (!d.reading)
        return nullptr;
    const Reading &r = *d.reading;
    return {{"formula", r.formula},
            {"unit", r.unit},
            {"unit_text", d.unit_text},
            {"signed", r.is_signed},
            {"factor", Rounded(r.factor)},
            {"offset", Rounded(r.offset)},
            {"m", r.m},
            {"b", r.b},
            {"r_exponent", r.r_exponent},
            {"b_exponent", r.b_exponent},
            {"linearization", r.linearization},
            {"minimum", Rounded(r.minimum)},
            {"maximum", Rounded(r.maximum)}};
}

Json HysteresisJson(const Decoded &d, uint8_t raw) {
    Json out{{"raw", raw}};
    out["value"] =
        d.reading && d.reading->IsLinear() ? Json(Rounded(raw * d.reading->factor)) : Json(nullptr);
    return out;
}

Json StatesJson(const std::vector<State> &states) {
    Json out = Json::array();
    for (const State &s : states)
        out.push_back({{"bit", s.offset}, {"text", s.text}});
    return out;
}

// "active" is there when the BMC was asked.
Json LimitJson(const Threshold &t) {
    Json out{{"raw", t.raw}, {"value", Rounded(t.value)}, {"settable", t.settable}};
    if (t.active_raw)
        out["active"] = {{"raw", *t.active_raw}, {"value", Rounded(t.active_value)}};
    return out;
}

Json DeviceJson(const Entry &entry) {
    return {{"code", entry[0]},    {"item", entry[1]},         {"sub_item", entry[2]},
            {"index", entry[3]},   {"scan", entry[5] == 0x80}, {"bus", entry[6]},
            {"address", entry[7]}, {"sub_kind", entry[8]},     {"mark", entry[20]}};
}

} // namespace

std::string LowerKey(const Threshold &threshold) {
    std::string out = threshold.key;
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

Json ThresholdsJson(const Decoded &d) {
    if (d.thresholds.empty())
        return nullptr;
    Json out;
    for (const Threshold &t : d.thresholds)
        if (t.readable)
            out[LowerKey(t)] = LimitJson(t);
        else
            out[LowerKey(t)] = nullptr;
    return out;
}

Json ProfileJson(uint32_t id) {
    return {{"name", ProfileName(id)}, {"id", id}};
}

Json SetJson(const StaticSet &set) {
    const auto full = std::count_if(set.sensors.begin(), set.sensors.end(),
                                    [](const Sensor &s) { return s.record[SDR_RECORD_TYPE] == 0x01; });
    Json out{{"board", set.board.empty() ? Json(nullptr) : Json(set.board)},
             {"profile", set.profile == nullptr ? Json(nullptr) : ProfileJson(set.profile->id)},
             {"count", set.sensors.size()},
             {"full", full},
             {"compact", set.sensors.size() - static_cast<size_t>(full)}};
    if (set.source.empty())
        return out;
    out["source"] = set.source;
    out["set_aside"] = AsideJson(set.aside);
    return out;
}

Json SensorJson(const Sensor &sensor, const Decoded &d) {
    const std::span<const uint8_t> record(sensor.record.data(), RecordSize(sensor.record));
    return {
        {"ordinal", sensor.ordinal},
        {"name", d.name},
        {"kind", KindText(d.kind)},
        {"record_id", d.record_id},
        {"sensor_number", d.sensor_number},
        {"owner_id", d.owner_id},
        {"owner_lun", d.owner_lun},
        {"sensor_type", {{"code", d.sensor_type}, {"text", d.sensor_type_text}}},
        {"event_type", {{"code", d.event_type}, {"text", d.event_type_text}}},
        {"entity",
         {{"id", d.entity_id}, {"text", d.entity_text}, {"instance", sensor.record[SDR_ENTITY_INSTANCE]}}},
        {"reading", ReadingJson(d)},
        {"thresholds", ThresholdsJson(d)},
        {"hysteresis",
         {{"positive", HysteresisJson(d, d.hysteresis_positive)},
          {"negative", HysteresisJson(d, d.hysteresis_negative)}}},
        {"events",
         {{"assertion", StatesJson(d.assertion)},
          {"deassertion", StatesJson(d.deassertion)},
          {"reading", StatesJson(d.readable)}}},
        {"device", sensor.has_entry ? DeviceJson(sensor.entry) : Json(nullptr)},
        {"record", HexBytes(record)},
        {"entry", sensor.has_entry ? Json(HexBytes(sensor.entry)) : Json(nullptr)}};
}

} // namespace workbench
