// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/groups.h"

namespace workbench {
namespace {

constexpr int kAnyItem = -1;

// A record is counted for what the machine has several of, told by device code and item of its entry; the
// first row that fits decides.
struct GroupRow {
    uint8_t code;
    int item;
    const char *group;
};
constexpr GroupRow kRows[] = {
    {0x49, 2, "table"}, // one maximum and one target temperature for all CPUs
    {0x49, 3, "table"},
    {0x49, kAnyItem, "CPU"},
    {0x4A, kAnyItem, "CPU"},
    {0x4B, kAnyItem, "CPU"},
    {0x4C, kAnyItem, "CPU"},
    {0x4D, kAnyItem, "CPU"},
    {0x5C, kAnyItem, "CPU"},
    {0x5D, kAnyItem, "CPU"}, // its regulator's and its DIMMs' regulator's power
    {0xD9, 3, "CPU"},        // single power; the other items are sums of one kind of part
    {0x4E, kAnyItem, "memory"},
    {0xA9, kAnyItem, "memory"},
    {0x4F, kAnyItem, "PSU"},
    {0x50, kAnyItem, "PSU"},
    {0x51, kAnyItem, "PSU"},
    {0x52, kAnyItem, "PSU"},
    {0x53, kAnyItem, "PSU"},
    {0x54, 1, "fan"},  // 2 is the redundancy of all fans
    {0x56, 1, "disk"}, // 2 is the hottest of all disks
    {0xF0, kAnyItem, "disk"},
    {0xF2, kAnyItem, "disk"},
    {0xCD, kAnyItem, "OCP"},
    {0xAA, kAnyItem, "OCP"},
    {0x57, kAnyItem, "PCIe"},
    {0x45, kAnyItem, "switch board"},
    {0x46, kAnyItem, "switch board"},
    {0x47, kAnyItem, "switch board"},
    {0x48, kAnyItem, "switch board"},
    {0x58, kAnyItem, "extras"},
    {0x59, kAnyItem, "extras"},
    {0x5A, 1, "extras"}, // 2 is the one sensor in the table
    {0x5B, kAnyItem, "extras"},
    {0x95, 2, "extras"},
    {0x8F, kAnyItem, "liquid cooling"},
    {0xA6, kAnyItem, "liquid cooling"},
};

} // namespace

const std::vector<std::string> &GroupNames() {
    static const std::vector<std::string> names = {"table",        "CPU",    "memory",        "PSU",
                                                   "fan",          "disk",   "OCP",           "PCIe",
                                                   "switch board", "extras", "liquid cooling"};
    return names;
}

const std::string &GroupOf(const Sensor &sensor) {
    for (const GroupRow &row : kRows)
        if (row.code == sensor.entry[0] && (row.item == kAnyItem || row.item == sensor.entry[1]))
            for (const std::string &name : GroupNames())
                if (name == row.group)
                    return name;
    return GroupNames().front();
}

} // namespace workbench
