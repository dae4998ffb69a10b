// SPDX-License-Identifier: GPL-3.0-or-later
//
// The JSON form of sensors: the same in list, show and export; keys keep their order.
#ifndef OXA_WORKBENCH_JSON_H
#define OXA_WORKBENCH_JSON_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "workbench/decode.h"
#include "workbench/explain.h"

namespace workbench {

using Json = nlohmann::ordered_json;

Json SetJson(const StaticSet &set); // board, profile, counts; sensors are added by the caller
Json SensorJson(const Sensor &sensor, const Decoded &decoded);
Json FieldsJson(const std::vector<Field> &fields, std::span<const uint8_t> bytes);
std::string Dump(const Json &json);

} // namespace workbench
#endif
