// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/machine.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "base/errors.h"
#include "base/output.h"
#include "serve/fru.h"
#include "serve/running.h"
#include "sets/set_numbers.h"

namespace workbench {
namespace {

constexpr const char *kController = "mc_setbmc 0x20\n"
                                    "mc_add 0x20 0 no-device-sdrs 0x23 9 8 0x9f 0x1291 0xf02\n"
                                    "sel_enable 0x20 1000 0x0a\n";

// The records that the repository was given since the last time, in their order.
std::vector<Sensor> FetchAdded(const std::string &path, std::streamoff &at) {
    std::vector<Sensor> out;
    std::ifstream file(path, std::ios::binary);
    Sensor sensor;
    char *bytes = reinterpret_cast<char *>(sensor.record.data());
    constexpr std::streamsize kHeader = 5;
    for (file.seekg(at); file.read(bytes, kHeader); sensor = {}) {
        const std::streamsize rest = RecordSize(sensor.record) - kHeader;
        if (rest > SDR_SLOT_SIZE - kHeader || !file.read(bytes + kHeader, rest))
            break; // the rest of it is still being written
        at += kHeader + rest;
        sensor.ordinal = sensor.record[SDR_RECORD_ID] | sensor.record[SDR_RECORD_ID + 1] << 8;
        out.push_back(sensor);
    }
    return out;
}

} // namespace

ServedMachine::ServedMachine(const RunOptions &run, StaticSet set, uint16_t port)
    : run_(run), set_(std::move(set)), sensors_(SensorsToServe(set_)), port_(SettlePort(port)),
      files_(folder_.path()) {
    const std::string program = FindSimulator();
    WriteFiles();
    simulator_ = std::make_unique<SimulatorProcess>(program, folder(), port_);
    if (const unsigned count = CountRecordsAndSetClock(port_); count != sensors_.size())
        throw SetError("ipmi_sim holds " + std::to_string(count) + " of " + std::to_string(sensors_.size()) +
                       " records: " + simulator_->LastWords());
    TellOthers(folder(), port_, sensors_);
}

void ServedMachine::WriteFiles() {
    for (const char *name : {"/state", "/cache"})
        if (mkdir((folder() + name).c_str(), 0700) != 0)
            throw InputError(folder() + name + ": cannot make a folder");
    const std::string machine =
        IsEmpty() ? "empty repository" : std::filesystem::path(run_.board).stem().string();
    std::string commands = kController + FruCommands(machine, IsEmpty() ? "" : "profile " + run_.profile);
    for (const ServedSensor &sensor : sensors_) {
        commands += SimulatorCommands(sensor, files_.raw());
        files_.Put(sensor);
    }
    WriteTemporaryFile(folder() + "/set.sdr", RawText(set_));
    WriteTemporaryFile(folder() + "/sim.emu", commands + "mc_enable 0x20\n");
    WriteTemporaryFile(folder() + "/lan.conf", LanConfiguration(FindPlugin(), folder() + "/set.sdr", port_));
}

bool ServedMachine::IsNewSensor(const Record &record) const {
    const bool has_reading = record[SDR_RECORD_TYPE] == 1 || record[SDR_RECORD_TYPE] == 2; // full, compact
    return has_reading &&
           std::none_of(sensors_.begin(), sensors_.end(), [&record](const ServedSensor &other) {
               return other.sensor.record[SDR_SENSOR_NUM] == record[SDR_SENSOR_NUM] &&
                      other.sensor.record[SDR_OWNER_LUN] == record[SDR_OWNER_LUN];
           });
}

// A sensor that came over the network gets a reading like those of the set.
void ServedMachine::ServeAdded() {
    const size_t before = sensors_.size();
    for (const Sensor &sensor : FetchAdded(folder() + "/set.sdr.added", fetched_)) {
        if (!IsNewSensor(sensor.record))
            continue;
        try {
            ServedSensor added = SensorToServe(sensor);
            if (std::filesystem::exists(readings() + "/" + added.file))
                added.file.append(".").append(std::to_string(sensor.ordinal));
            files_.Put(added);
            simulator_->Command(SimulatorCommands(added, files_.raw()));
            sensors_.push_back(std::move(added));
        } catch (const SetError &) {
            // a record that nobody can read has no reading either
        }
    }
    if (sensors_.size() != before)
        TellOthers(folder(), port_, sensors_);
}

void ServedMachine::Pass() {
    ServeAdded();
    files_.Pass(sensors_);
    if (!simulator_->IsRunning())
        throw SetError("ipmi_sim has ended: " + simulator_->LastWords());
}

} // namespace workbench
