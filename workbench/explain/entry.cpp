// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text.h"
#include "explain/explain.h"

namespace workbench {
namespace {

struct DeviceCode {
    uint8_t code;
    const char *text;
};

// Codes that the scanner reads; only those that static sets use.
constexpr DeviceCode kDeviceCodes[] = {
    {0x00, "inlet temperature"},
    {0x3B, "rack power"},
    {0x40, "outlet temperature"},
    {0x41, "humidity"},
    {0x42, "power distribution board temperature"},
    {0x43, "PCH temperature"},
    {0x44, "12 V rail"},
    {0x45, "switch-board voltage"},
    {0x46, "switch-board current"},
    {0x47, "switch-board temperature"},
    {0x48, "switch-board inlet or outlet temperature"},
    {0x49, "CPU temperature"},
    {0x4A, "CPU voltage regulator temperature"},
    {0x4B, "CPU core voltage"},
    {0x4C, "CPU voltage domain"},
    {0x4D, "CPU state"},
    {0x4E, "memory temperature"},
    {0x4F, "PSU voltage"},
    {0x50, "PSU power"},
    {0x51, "PSU current"},
    {0x52, "PSU temperature"},
    {0x53, "PSU state"},
    {0x54, "fan state"},
    {0x55, "system event"},
    {0x56, "disk temperature"},
    {0x57, "PCIe slot state"},
    {0x58, "power module temperature"},
    {0x59, "UBB retimer temperature"},
    {0x5A, "switch chip temperature"},
    {0x5B, "LAN switch temperature"},
    {0x5C, "CPU current"},
    {0x5D, "voltage regulator power"},
    {0x5E, "leak detector"},
    {0x8F, "CDU value"},
    {0x93, "power of one board"},
    {0x95, "54 V rail"},
    {0x99, "backplane temperature"},
    {0x9A, "backplane 12 V rail"},
    {0x9E, "total power"},
    {0xA6, "CDU value"},
    {0xA9, "memory status"},
    {0xAA, "card status"},
    {0xCD, "OCP card temperature"},
    {0xD9, "power of one kind of part"},
    {0xF0, "disk status"},
    {0xF2, "NVMe disk temperature"},
};

constexpr bool HasText(uint8_t code) {
    for (const DeviceCode &row : kDeviceCodes)
        if (row.code == code)
            return true;
    return false;
}
constexpr bool IsUsed(uint8_t code) {
    for (const oxa::SensorKind &kind : oxa::kKinds)
        if (kind.tDoes.tDevice.ucCode == code)
            return true;
    return false;
}
static_assert(
    [] {
        for (const oxa::SensorKind &kind : oxa::kKinds)
            if (!HasText(kind.tDoes.tDevice.ucCode))
                return false;
        for (const DeviceCode &row : kDeviceCodes)
            if (!IsUsed(row.code))
                return false;
        return true;
    }(),
    "each device code that a kind has is explained, and no other");

std::string DeviceCodeText(uint8_t code) {
    for (const DeviceCode &row : kDeviceCodes)
        if (row.code == code)
            return row.text;
    return "no name known";
}

std::string MarkText(uint8_t mark) {
    switch (mark) {
    case 0xFF:
        return "none";
    case 0x25:
        return "disk";
    case 0x28:
        return "54 V rail";
    default:
        return std::to_string(mark);
    }
}

struct EntryRow {
    unsigned offset, size;
    const char *name;
    int record_byte; // the record's byte that it repeats, or -1
};

constexpr EntryRow kRows[] = {
    {0, 1, "device code", -1},
    {1, 1, "item", -1},
    {2, 1, "sub-item", -1},
    {3, 1, "index", -1},
    {4, 1, "sensor number", 7},
    {5, 1, "scan flag", -1},
    {6, 1, "bus", -1},
    {7, 1, "address", -1},
    {8, 1, "sub-kind", -1},
    {9, 7, "reserved", -1},
    {16, 1, "owner LUN", 6},
    {17, 3, "reserved", -1},
    {20, 1, "mark", -1},
    {21, 1, "entity ID", 8},
    {22, 1, "entity instance", 9},
    {23, 1, "initialisation", 10},
    {24, 1, "sensor type", 12},
    {25, 1, "event/reading type", 13},
    {26, 1, "M", 24},
    {27, 5, "reserved", -1},
};

std::string Meaning(const EntryRow &row, const Entry &entry) {
    const uint8_t value = entry[row.offset];
    switch (row.offset) {
    case 0:
        return DeviceCodeText(value);
    case 5:
        return value == 0x80 ? "scan flag set" : value == 0 ? "not set" : Hex(value);
    case 7:
    case 22:
    case 23:
        return Hex(value);
    case 9:
    case 17:
    case 27:
        return "0 in every entry";
    case 20:
        return MarkText(value);
    case 21:
        return EntityText(value);
    case 24:
        return SensorTypeText(value);
    case 25:
        return EventTypeText(value);
    default:
        return std::to_string(value);
    }
}

// The scanner's copy of a record byte: says so, and says so loudly when the two differ.
std::string CopyText(const EntryRow &row, const Sensor &sensor) {
    const unsigned from = static_cast<unsigned>(row.record_byte);
    if (row.offset == 26 && sensor.record[SDR_RECORD_TYPE] != 0x01)
        return "";
    const std::string byte = "SDR byte " + std::to_string(from);
    return sensor.entry[row.offset] == sensor.record[from]
               ? byte
               : "differs from " + byte + " (" + Hex(sensor.record[from]) + ")";
}

} // namespace

std::vector<Field> ExplainEntry(const Sensor &sensor) {
    const Row *built_by = RowThatBuilt(sensor);
    std::vector<Field> out;
    for (const EntryRow &row : kRows) {
        std::string origin = row.record_byte >= 0 ? CopyText(row, sensor) : Origin(built_by, 'E', row.offset);
        out.push_back({row.offset, row.size, row.name, {Meaning(row, sensor.entry)}, origin});
    }
    return out;
}

} // namespace workbench
