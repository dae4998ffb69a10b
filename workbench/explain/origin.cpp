// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where the bytes come from that differ from sensor to sensor of one kind.
#include "explain/explain.h"

namespace workbench {
namespace {

// Sensors of one kind have one device code and item in every profile, whatever their names are.
constexpr int kAnyItem = -1;

struct OriginRow {
    uint8_t code;
    int item;
    char where; // 'S' record, 'E' entry
    unsigned offset;
    const char *text;
};

constexpr const char *kCpuInstance = "0x60 + CPU number from 0";
constexpr const char *kCpuIndex = "CPU number from 0";
constexpr const char *kPsuInstance = "0x60 + PSU index from 1";
constexpr const char *kPsuBoundInstance = "0x60 + PSU index from 1; 0x60 for an index above 159";
constexpr const char *kPsuIndex = "PSU index from 1";
constexpr const char *kCduInstance = "0xE0 + index from 1";
constexpr const char *kSwitchInstance = "0x60 + instance from 1";
constexpr const char *kSwitchClient = "bus client of the switch-board instance";
constexpr const char *kRegulatorClient = "bus client of the CPU's voltage regulator";
constexpr const char *kInletClient = "bus client of the inlet sensor";
constexpr const char *kVoltageMask = "the platform's threshold mask of this voltage";

constexpr OriginRow kOrigins[] = {
    // record: entity instances
    {0x49, 1, 'S', 9, kCpuInstance},
    {0x49, 4, 'S', 9, kCpuInstance},
    {0x4A, kAnyItem, 'S', 9, kCpuInstance},
    {0x4D, 1, 'S', 9, kCpuInstance},
    {0x4D, 2, 'S', 9, kCpuInstance},
    {0x5D, kAnyItem, 'S', 9, kCpuInstance},
    {0x4E, 1, 'S', 9, "0x60 + DIMM number from 0"},
    {0xA9, kAnyItem, 'S', 9, "0x60 + DIMM number from 0"},
    {0x4E, 2, 'S', 9, "0x60 + DIMM group from 0"},
    {0x53, 2, 'S', 9, "0x60 + PSU group from 0"},
    {0x53, kAnyItem, 'S', 9, kPsuInstance},
    {0x50, kAnyItem, 'S', 9, kPsuBoundInstance},
    {0x51, kAnyItem, 'S', 9, kPsuBoundInstance},
    {0x52, kAnyItem, 'S', 9, kPsuBoundInstance},
    {0x57, kAnyItem, 'S', 9, "0x60 + PCIe slot"},
    {0x54, 1, 'S', 9, "0x60 + the fan's silk-screen number"},
    {0xF0, kAnyItem, 'S', 9, "disk slot"},
    {0xF2, kAnyItem, 'S', 9, "disk slot (the name carries the converted number)"},
    {0x56, 1, 'S', 9, "0x60 + disk group from 0"},
    {0xCD, kAnyItem, 'S', 9, "0x60 + OCP index from 1"},
    {0xAA, kAnyItem, 'S', 9, "0x60 + OCP index from 1; 0x60 for an index above 159"},
    {0x45, kAnyItem, 'S', 9, kSwitchInstance},
    {0x46, kAnyItem, 'S', 9, kSwitchInstance},
    {0x47, kAnyItem, 'S', 9, kSwitchInstance},
    {0x48, kAnyItem, 'S', 9, "0x60 + place 0..3"},
    {0x58, kAnyItem, 'S', 9, "0x60 + power module from 1"},
    {0x59, kAnyItem, 'S', 9, "0x60 + retimer from 1"},
    {0x5A, 1, 'S', 9, "0x60 + switch chip from 1"},
    {0x8F, 10, 'S', 9, kCduInstance},
    {0x8F, 11, 'S', 9, kCduInstance},
    {0x8F, 12, 'S', 9, kCduInstance},
    {0x8F, 13, 'S', 9, kCduInstance},
    {0xA6, 9, 'S', 9, kCduInstance},
    // record: conversion and slots that the platform gives
    {0xD9, 2, 'S', 24, "memory power accuracy of the platform"},
    {0xD9, 4, 'S', 24, "disk power accuracy of the platform"},
    {0xD9, 5, 'S', 24, "fan power accuracy of the platform"},
    {0x5D, 2, 'S', 24, "memory power accuracy of the platform"},
    {0x4C, kAnyItem, 'S', 14, kVoltageMask},
    {0x4C, kAnyItem, 'S', 16, kVoltageMask},
    {0x4C, kAnyItem, 'S', 18, kVoltageMask},
    {0x4C, kAnyItem, 'S', 19, kVoltageMask},
    {0x4C, kAnyItem, 'S', 24, "the platform's M of this voltage"},
    {0x4C, kAnyItem, 'S', 26, "the platform's B of this voltage"},
    {0x4C, kAnyItem, 'S', 29, "the platform's exponents of this voltage"},
    {0xF0, kAnyItem, 'S', 29, "disk slot"},
    // entry: index
    {0x49, 1, 'E', 3, kCpuIndex},
    {0x49, 4, 'E', 3, kCpuIndex},
    {0x4A, kAnyItem, 'E', 3, kCpuIndex},
    {0x4B, kAnyItem, 'E', 3, kCpuIndex},
    {0x4D, kAnyItem, 'E', 3, kCpuIndex},
    {0x5C, kAnyItem, 'E', 3, kCpuIndex},
    {0x5D, kAnyItem, 'E', 3, kCpuIndex},
    {0xD9, 3, 'E', 3, kCpuIndex},
    {0x4E, 1, 'E', 3, "DIMM number from 0"},
    {0xA9, kAnyItem, 'E', 3, "DIMM number from 0"},
    {0x4E, 2, 'E', 3, "DIMM group from 0"},
    {0x53, 2, 'E', 3, "PSU group from 0"},
    {0x53, kAnyItem, 'E', 3, kPsuIndex},
    {0x4F, kAnyItem, 'E', 3, kPsuIndex},
    {0x50, kAnyItem, 'E', 3, kPsuIndex},
    {0x51, kAnyItem, 'E', 3, kPsuIndex},
    {0x52, kAnyItem, 'E', 3, kPsuIndex},
    {0x57, kAnyItem, 'E', 3, "PCIe slot"},
    {0x54, 1, 'E', 3, "the fan's silk-screen number"},
    {0xF0, kAnyItem, 'E', 3, "disk slot"},
    {0xF2, kAnyItem, 'E', 3, "disk slot"},
    {0x56, 1, 'E', 3, "disk group from 0"},
    {0xCD, kAnyItem, 'E', 3, "OCP index from 1"},
    {0xAA, kAnyItem, 'E', 3, "OCP slot that the platform restores from the index"},
    {0x45, kAnyItem, 'E', 3, "instance from 1"},
    {0x46, kAnyItem, 'E', 3, "instance from 1"},
    {0x47, kAnyItem, 'E', 3, "instance from 1"},
    {0x48, kAnyItem, 'E', 3, "place 0..3"},
    {0x58, kAnyItem, 'E', 3, "power module from 1"},
    {0x59, kAnyItem, 'E', 3, "retimer from 1"},
    {0x5A, 1, 'E', 3, "switch chip from 1"},
    {0x95, 2, 'E', 3, "GPU from 1"},
    {0x8F, 10, 'E', 3, "index from 1"},
    {0x8F, 11, 'E', 3, "index from 1"},
    {0x8F, 12, 'E', 3, "index from 1"},
    {0x8F, 13, 'E', 3, "index from 1"},
    // entry: item and bus client
    {0x48, kAnyItem, 'E', 1, "place + 1"},
    {0x4C, kAnyItem, 'E', 1, "voltage index 1..4"},
    {0x4A, kAnyItem, 'E', 6, kRegulatorClient},
    {0x4A, kAnyItem, 'E', 7, kRegulatorClient},
    {0x4B, kAnyItem, 'E', 6, kRegulatorClient},
    {0x4B, kAnyItem, 'E', 7, kRegulatorClient},
    {0x4C, kAnyItem, 'E', 6, kRegulatorClient},
    {0x4C, kAnyItem, 'E', 7, kRegulatorClient},
    {0x45, kAnyItem, 'E', 6, kSwitchClient},
    {0x45, kAnyItem, 'E', 7, kSwitchClient},
    {0x46, kAnyItem, 'E', 6, kSwitchClient},
    {0x46, kAnyItem, 'E', 7, kSwitchClient},
    {0x00, 0, 'E', 6, kInletClient},
    {0x00, 0, 'E', 7, kInletClient},
};

// A record without entry (all bytes 0) is not taken for the inlet sensor.
constexpr uint8_t kInletCode = 0x00, kAirInlet = 0x37;

} // namespace

std::string Origin(const Sensor &sensor, char where, unsigned offset) {
    if (sensor.entry[0] == kInletCode && sensor.record[SDR_ENTITY_ID] != kAirInlet)
        return "";
    for (const OriginRow &row : kOrigins)
        if (row.code == sensor.entry[0] && (row.item == kAnyItem || row.item == sensor.entry[1]) &&
            row.where == where && row.offset == offset)
            return row.text;
    return "";
}

} // namespace workbench
