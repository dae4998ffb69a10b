// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where the bytes come from that differ from sensor to sensor of one kind.
#include "workbench/explain.h"
#include "workbench/text.h"

namespace workbench {
namespace {

struct OriginRow {
    const char *names; // glob
    char where;        // 'S' record, 'E' entry
    unsigned offset;
    const char *text;
};

constexpr OriginRow kOrigins[] = {
    // record: entity instances
    {"CPU_TEMP*", 'S', 9, "0x60 + CPU number from 0"},
    {"CPU_VR_TEMP*", 'S', 9, "0x60 + CPU number from 0"},
    {"CPU_STATUS*", 'S', 9, "0x60 + CPU number from 0"},
    {"CPU_PROCHOT", 'S', 9, "0x60 + CPU number from 0"},
    {"MEM_TEMP_*", 'S', 9, "0x60 + DIMM number from 0"},
    {"MEM_STATUS_*", 'S', 9, "0x60 + DIMM number from 0"},
    {"DIMMG*_TEMP", 'S', 9, "0x60 + DIMM group from 0"},
    {"PSU_STATUS_*", 'S', 9, "0x60 + PSU index from 1"},
    {"PSU_TEMP_*", 'S', 9, "0x60 + PSU index from 1; 0x60 for an index above 159"},
    {"PSU_P*_*", 'S', 9, "0x60 + PSU index from 1; 0x60 for an index above 159"},
    {"PSU_REDUNDANT*", 'S', 9, "0x60 + PSU group from 0"},
    {"PCIE_STATUS_*", 'S', 9, "0x60 + PCIe slot"},
    {"FAN_STATUS_*", 'S', 9, "0x60 + the fan's silk-screen number"},
    {"HDD_STATUS_*", 'S', 9, "disk slot"},
    {"NVME_TEMP_*", 'S', 9, "disk slot (the name carries the converted number)"},
    {"DISKG*_TEMP", 'S', 9, "0x60 + disk group from 0"},
    {"OCP_TEMP_*", 'S', 9, "0x60 + OCP index from 1"},
    {"OCP_ERR_*", 'S', 9, "0x60 + OCP index from 1; 0x60 for an index above 159"},
    {"SW_VOLT_*", 'S', 9, "0x60 + instance from 1"},
    {"SW_CURRENT_*", 'S', 9, "0x60 + instance from 1"},
    {"SW_TEMP_*", 'S', 9, "0x60 + instance from 1"},
    {"SW_INPUT_TEMP_*", 'S', 9, "0x60 + place 0..3"},
    {"SW_OUTPUT_T_*", 'S', 9, "0x60 + place 0..3"},
    // record: conversion and slots that the platform gives
    {"MEM_POWER", 'S', 24, "memory power accuracy of the platform"},
    {"HDD_POWER", 'S', 24, "disk power accuracy of the platform"},
    {"FAN_POWER", 'S', 24, "fan power accuracy of the platform"},
    {"CPU?_D?_N2", 'S', 14, "the platform's threshold mask of this voltage"},
    {"CPU?_D?_N2", 'S', 16, "the platform's threshold mask of this voltage"},
    {"CPU?_D?_N2", 'S', 18, "the platform's threshold mask of this voltage"},
    {"CPU?_D?_N2", 'S', 19, "the platform's threshold mask of this voltage"},
    {"CPU?_D?_N2", 'S', 24, "the platform's M of this voltage"},
    {"CPU?_D?_N2", 'S', 26, "the platform's B of this voltage"},
    {"CPU?_D?_N2", 'S', 29, "the platform's exponents of this voltage"},
    {"HDD_STATUS_*", 'S', 29, "disk slot"},
    // entry: index
    {"CPU_TEMP*", 'E', 3, "CPU number from 0"},
    {"CPU_VR_TEMP*", 'E', 3, "CPU number from 0"},
    {"CPU_VOLTS_*", 'E', 3, "CPU number from 0"},
    {"CPU_STATUS*", 'E', 3, "CPU number from 0"},
    {"CPU_PROCHOT", 'E', 3, "CPU number from 0"},
    {"MEM_TEMP_*", 'E', 3, "DIMM number from 0"},
    {"MEM_STATUS_*", 'E', 3, "DIMM number from 0"},
    {"DIMMG*_TEMP", 'E', 3, "DIMM group from 0"},
    {"INPUT_VOLTS_*", 'E', 3, "PSU index from 1"},
    {"OUTPUT_VOLTS_*", 'E', 3, "PSU index from 1"},
    {"PSU_REDUNDANT*", 'E', 3, "PSU group from 0"},
    {"PSU_*", 'E', 3, "PSU index from 1"},
    {"PCIE_STATUS_*", 'E', 3, "PCIe slot"},
    {"FAN_STATUS_*", 'E', 3, "the fan's silk-screen number"},
    {"HDD_STATUS_*", 'E', 3, "disk slot"},
    {"NVME_TEMP_*", 'E', 3, "disk slot"},
    {"DISKG*_TEMP", 'E', 3, "disk group from 0"},
    {"OCP_TEMP_*", 'E', 3, "OCP index from 1"},
    {"OCP_ERR_*", 'E', 3, "OCP slot that the platform restores from the index"},
    {"SW_INPUT_TEMP_*", 'E', 3, "place 0..3"},
    {"SW_OUTPUT_T_*", 'E', 3, "place 0..3"},
    {"SW_*", 'E', 3, "instance from 1"},
    // entry: item and bus client
    {"SW_INPUT_TEMP_*", 'E', 1, "place + 1"},
    {"SW_OUTPUT_T_*", 'E', 1, "place + 1"},
    {"CPU?_D?_N2", 'E', 1, "voltage index 1..4"},
    {"CPU_VR_TEMP*", 'E', 6, "bus client of the CPU's voltage regulator"},
    {"CPU_VR_TEMP*", 'E', 7, "bus client of the CPU's voltage regulator"},
    {"CPU_VOLTS_*", 'E', 6, "bus client of the CPU's voltage regulator"},
    {"CPU_VOLTS_*", 'E', 7, "bus client of the CPU's voltage regulator"},
    {"CPU?_D?_N2", 'E', 6, "bus client of the CPU's voltage regulator"},
    {"CPU?_D?_N2", 'E', 7, "bus client of the CPU's voltage regulator"},
    {"SW_VOLT_*", 'E', 6, "bus client of the switch-board instance"},
    {"SW_VOLT_*", 'E', 7, "bus client of the switch-board instance"},
    {"SW_CURRENT_*", 'E', 6, "bus client of the switch-board instance"},
    {"SW_CURRENT_*", 'E', 7, "bus client of the switch-board instance"},
    {"INPUT_TEMP", 'E', 6, "bus client of the inlet sensor"},
    {"INPUT_TEMP", 'E', 7, "bus client of the inlet sensor"},
};

} // namespace

std::string Origin(const std::string &name, char where, unsigned offset) {
    for (const OriginRow &row : kOrigins)
        if (row.where == where && row.offset == offset && MatchesGlob(name, row.names))
            return row.text;
    return "";
}

} // namespace workbench
