// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/serve.h"
#include "sets/board.h"
#include "sets/set_json.h"

namespace workbench {

std::string AddressOf(const ServedMachine &machine) {
    return "127.0.0.1:" + std::to_string(machine.port());
}

std::string IpmiTool(const ServedMachine &machine) {
    return "ipmitool -I lanplus -C 3 -H 127.0.0.1 -p " + std::to_string(machine.port()) +
           " -U ipmiusr -P test";
}

// FreeIPMI reads sensors of other LUNs than 0 only when it may bridge.
std::string FreeIpmi(const ServedMachine &machine, const std::string &program) {
    const bool far = !machine.sensors().empty() && machine.sensors().back().decoded.owner_lun != 0;
    return program + " -D LAN_2_0 -W opensesspriv -l ADMIN -h " + AddressOf(machine) +
           " -u ipmiusr -p test --sdr-cache-directory=" + machine.folder() +
           "/cache --quiet-cache --sdr-cache-recreate" +
           (far && program == "ipmi-sensors" ? " --bridge-sensors" : "");
}

namespace {

// The sensor to show how a limit is passed: the first one that has an upper critical limit.
const ServedSensor *Example(const ServedMachine &machine) {
    for (const ServedSensor &sensor : machine.sensors())
        if (RawAboveCritical(sensor) >= 0)
            return &sensor;
    return machine.sensors().empty() ? nullptr : &machine.sensors().front();
}

std::string HowToPush(const ServedMachine &machine) {
    const ServedSensor *example = Example(machine);
    if (example == nullptr)
        return "\nEvery sensor that is added gets a file in " + machine.readings() +
               " with its reading, a value with its unit,\na raw byte, or the bits of the states that are on.\n";
    std::string out =
        "\nEvery sensor's reading is in a file of " + machine.readings() +
        ",\na value with its unit or a raw byte (bits of the states that are on). To push one:\n\n";
    const int raw = RawAboveCritical(*example);
    const std::string begin = "  oxa-sensors push " + example->decoded.name + " ";
    const std::string end = " --port " + std::to_string(machine.port());
    if (raw < 0)
        return out + begin + "1" + end + "\n";
    const Reading &reading = *example->decoded.reading;
    return out + begin + "'" + ReadingText(reading, static_cast<unsigned>(raw)) + "'" + end +
           "   # above the upper critical limit of " +
           ReadingText(reading, example->decoded.FindThreshold(FULL_SDR_UC)->raw) + "\n";
}

} // namespace

std::string WelcomeText(const ServedMachine &machine, bool waits) {
    const std::string what = machine.IsEmpty() ? "An empty repository"
                                               : std::to_string(machine.sensors().size()) + " sensors of " +
                                                     BoardText(machine.run().board) + ", profile " +
                                                     machine.run().profile + ",";
    std::string out = what + " on a BMC at 127.0.0.1 port " + std::to_string(machine.port()) +
                      (waits ? "; Ctrl-C ends it.\n\n" : ".\n\n");
    for (const char *words : {" sdr elist all", " sel elist", " fru"})
        out += "  " + IpmiTool(machine) + words + "\n";
    out += "  " + FreeIpmi(machine, "ipmi-sensors") + "\n";
    return out + "  oxa-sensors event addDiskSEL 4 3 22 0 --bmc " + AddressOf(machine) + "\n" +
           HowToPush(machine);
}

Json WelcomeJson(const ServedMachine &machine) {
    Json sensors = Json::array();
    for (const ServedSensor &s : machine.sensors())
        sensors.push_back({{"name", s.decoded.name},
                           {"record_id", s.sensor.ordinal},
                           {"sensor_number", s.decoded.sensor_number},
                           {"owner_lun", s.decoded.owner_lun},
                           {"reading_file", machine.readings() + "/" + s.file},
                           {"reading", s.reading}});
    return {
        {"host", "127.0.0.1"},
        {"port", machine.port()},
        {"user", "ipmiusr"},
        {"password", "test"},
        {"board", machine.IsEmpty() ? Json(nullptr) : Json(machine.run().board)},
        {"profile", machine.IsEmpty() ? Json(nullptr) : ProfileJson(NamedProfile(machine.run().profile).id)},
        {"ipmitool", IpmiTool(machine)},
        {"ipmi_sensors", FreeIpmi(machine, "ipmi-sensors")},
        {"readings", machine.readings()},
        {"sensors", sensors}};
}

} // namespace workbench
