// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/set_document.h"

#include <sys/wait.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/progress.h"
#include "explain/explain.h"
#include "report/pool.h"
#include "sets/groups.h"
#include "sets/set_json.h"
#include "why/why.h"
#include "why/why_json.h"

namespace workbench {
namespace {

Json PlacesOfAnswers(const Present &present, Pool &asked) {
    Json out = Json::array();
    for (const Asked &one : present.asked) {
        Json told = AskedJson(one);
        told["of_group"] = one.of_group;
        told["record_bytes"] = one.record_bytes;
        told["entry_bytes"] = one.entry_bytes;
        told["gone_when"] = one.gone_when;
        out.push_back(asked.PlaceOf(told));
    }
    return out;
}

Json WhyOfSet(const RunOptions &run) {
    const Trials trials(run);
    const std::vector<Sensor> &sensors = trials.AsItIs().sensors;
    Pool rows, asked;
    Json out{{"sensors", Json(sensors.size(), nullptr)}};
    for (const Row &row : RowsOf(trials.profile()))
        for (const Sensor &sensor : sensors)
            if (Built(row, sensor))
                out["sensors"][sensor.ordinal - 1] = {
                    {"row", rows.PlaceOf(RowJson(row))},
                    {"asked", PlacesOfAnswers(WhyPresent(trials, row, sensor), asked)}};
    out["rows"] = rows.Take();
    out["asked"] = asked.Take();
    return out;
}

// As in show --json, but for the bytes: those stand in the sensor.
Json PlacesOfFields(const std::vector<Field> &fields, Pool &pool) {
    Json out = Json::array();
    for (const Field &f : fields) {
        Json field{{"offset", f.offset}, {"size", f.size}, {"field", f.name}, {"meaning", f.meaning}};
        field["set_by"] = f.set_by.empty() ? Json(nullptr) : Json(f.set_by);
        out.push_back(pool.PlaceOf(field));
    }
    return out;
}

} // namespace

std::vector<Json> WhyOfSets(const std::vector<RunOptions> &runs) {
    std::vector<Json> out;
    Progress progress("asking why in", runs.size(), "sets");
    RunManyApart(
        runs.size(),
        [&runs](size_t index, const Say &say) {
            say(WhyOfSet(runs[index]).dump(-1, ' ', false, Json::error_handler_t::replace));
        },
        [&](size_t index, const Apart &answer) {
            if (!WIFEXITED(answer.status) || WEXITSTATUS(answer.status) != 0)
                throw SetError(runs[index].board + ": asking why ended with its process");
            out.push_back(Json::parse(answer.said));
            progress.Done(index + 1);
        });
    return out;
}

Json SetDocument(const StaticSet &set, const std::vector<Decoded> &decoded, const Json &why,
                 const Json &differences) {
    Json out = SetJson(set);
    Pool fields;
    out["groups"] = GroupNames();
    out["sensors"] = Json::array();
    for (size_t i = 0; i < set.sensors.size(); ++i) {
        Json sensor = SensorJson(set.sensors[i], decoded[i]);
        sensor["group"] = GroupOf(set.sensors[i]);
        sensor["record_fields"] = PlacesOfFields(ExplainRecord(set.sensors[i], decoded[i]), fields);
        sensor["entry_fields"] = PlacesOfFields(ExplainEntry(set.sensors[i]), fields);
        sensor.update(why["sensors"][i]);
        if (!differences.is_null() && !differences["sensors"].empty() && !differences["sensors"][i].is_null())
            sensor["change"] = differences["sensors"][i];
        out["sensors"].push_back(std::move(sensor));
    }
    out["fields"] = fields.Take();
    out["rows"] = why["rows"];
    out["asked"] = why["asked"];
    if (!differences.is_null()) {
        out["against"] = differences;
        out["against"].erase("sensors");
    }
    return out;
}

} // namespace workbench
