// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/running.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/text.h"
#include "serve/bmc.h"
#include "simulator/temporary_folder.h"

namespace workbench {
namespace {

constexpr const char *kFile = "/serve.json";

// Nothing for a folder in which serve has not come that far.
void Add(const std::string &folder, std::vector<RunningServe> &out) {
    std::ifstream file(folder + kFile);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        return;
    const Json json = ParseJson(folder + kFile, text.str());
    RunningServe serve{folder, json.at("port"), {}};
    for (const Json &told : json.at("sensors")) {
        const std::string bytes = told.at("record");
        Sensor sensor;
        sensor.has_entry = false;
        std::istringstream words(bytes);
        unsigned byte = 0;
        for (size_t i = 0; i < sensor.record.size() && words >> std::hex >> byte; ++i)
            sensor.record[i] = static_cast<uint8_t>(byte);
        serve.sensors.push_back(SensorToServe(sensor));
        serve.sensors.back().file = told.at("file");
    }
    out.push_back(std::move(serve));
}

} // namespace

void TellOthers(const std::string &folder, uint16_t port, const std::vector<ServedSensor> &sensors) {
    Json list = Json::array();
    for (const ServedSensor &one : sensors)
        list.push_back({{"file", one.file},
                        {"record", HexBytes({one.sensor.record.data(), RecordSize(one.sensor.record)})}});
    WriteTemporaryFile(folder + kFile + ".new", Dump({{"port", port}, {"sensors", list}}));
    if (std::rename((folder + kFile + ".new").c_str(), (folder + kFile).c_str()) != 0)
        throw InputError(folder + kFile + ": cannot write");
}

std::vector<RunningServe> RunningServes() {
    std::vector<RunningServe> out;
    for (const std::string &folder : sim::LockedFolders(TemporaryFolder::Pattern()))
        Add(folder, out);
    std::sort(out.begin(), out.end(),
              [](const RunningServe &a, const RunningServe &b) { return a.port < b.port; });
    return out;
}

} // namespace workbench
