// SPDX-License-Identifier: GPL-3.0-or-later
//
// The name tables of the sensors that are added at run time.  Lengths are not computed here: the library itself
// forms every name, for every slot that a machine can have.
#include <algorithm>
#include <cstring>
#include <span>

#include "base/text.h"
#include "checks/findings.h"
#include "oxa/specific_sensors.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

constexpr unsigned kMaxSlot = 99; // silk numbers have at most two digits
constexpr uint8_t kPorts[] = {1, 9};
constexpr uint8_t kDeviceOcp = 6, kDeviceNvme = 59;
constexpr uint16_t kGpuBoard = 0x54E0; // the one board on which Sablin offers its accelerators

std::span<const SnrInfoRec> TableOf(uint32_t profile_id) {
    for (uint32_t i = 0; i < g_dwSdrCustomCnt; ++i)
        if (g_atSnrSpecificInfo[i].dwCustomId == profile_id)
            return {g_atSnrSpecificInfo[i].ptInfo, *g_atSnrSpecificInfo[i].pucSnrCnt};
    return {};
}

std::string PatternOf(const SnrInfoRec &row) {
    return std::string(row.acName, strnlen(row.acName, SENSOR_NAME_SIZE));
}

bool Holds(const SnrInfoRec &row, char placeholder) {
    return PatternOf(row).find(placeholder) != std::string::npos;
}

void StartTables(const Profile &profile, bool front_slots) {
    sim::Board board;
    board.custom_id = profile.id;
    board.board_id = kGpuBoard;
    for (unsigned slot = 1; front_slots && slot <= kMaxSlot; ++slot)
        board.pcie.slots.push_back({static_cast<uint8_t>(slot), 1, "F-Slot" + std::to_string(slot), true});
    sim::Start(std::move(board));
    sim::SetTracing(false);
}

uint8_t NameLength(const SnrInfoRec &row, unsigned slot) {
    uint8_t longest = 0;
    for (const uint8_t port : kPorts) {
        SnrQuery query{row.dwSensorDevType, row.ucDeviceType, row.SubDeviceType, 0, {}};
        longest = std::max(longest, getSensorInfo(&query, static_cast<uint8_t>(slot), port));
    }
    return longest;
}

void CheckLengths(const Profile &profile, bool front_slots, std::vector<Finding> &out) {
    StartTables(profile, front_slots);
    for (const SnrInfoRec &row : TableOf(profile.id))
        for (unsigned slot = 1; slot <= kMaxSlot; ++slot)
            if (const uint8_t length = NameLength(row, slot); length > kLongestName) {
                const std::string subject = PatternOf(row) + (front_slots ? " (front slot)" : "");
                const std::string text = std::to_string(length) + " characters from number " +
                                         std::to_string(slot) + " on: the sensor is refused";
                const bool told = std::any_of(out.begin(), out.end(), [&](const Finding &finding) {
                    return finding.subject == subject ||
                           (finding.subject == PatternOf(row) && finding.text == text);
                });
                if (!told)
                    out.push_back({"name-length", profile.name, subject, text, {}, ""});
                break;
            }
}

// Rows whose Default pattern carries the number that tells the devices apart.
void CheckNumbers(const Profile &profile, std::vector<Finding> &out) {
    for (const SnrInfoRec &row : TableOf(profile.id))
        for (const SnrInfoRec &base : TableOf(CUSTOM_ID_DEFAULT)) {
            if (row.dwSensorDevType != base.dwSensorDevType || row.ucDeviceType != base.ucDeviceType ||
                row.SubDeviceType != base.SubDeviceType)
                continue;
            if (Holds(base, '*') && !Holds(row, '*'))
                out.push_back({"name-number",
                               profile.name,
                               PatternOf(row),
                               "no slot in the name: equal in all slots",
                               {},
                               ""});
            if (Holds(base, '#') && !Holds(row, '#'))
                out.push_back({"name-number",
                               profile.name,
                               PatternOf(row),
                               "no port in the name: equal for all ports",
                               {},
                               ""});
        }
}

// OCP cards are numbered by themselves, everything else by slot.
void CheckEqualPatterns(const Profile &profile, std::vector<Finding> &out) {
    for (const SnrInfoRec &row : TableOf(profile.id))
        for (const SnrInfoRec &other : TableOf(profile.id))
            if (row.ucDeviceType == kDeviceOcp && other.ucDeviceType != kDeviceOcp &&
                row.dwSensorDevType == other.dwSensorDevType && PatternOf(row) == PatternOf(other))
                out.push_back(
                    {"name-meets",
                     profile.name,
                     PatternOf(row),
                     "OCP cards and device type " + std::to_string(other.ucDeviceType) + " have one pattern",
                     {},
                     ""});
}

struct ClassRow { // class word: record kind and sensor type that it is built with
    uint32_t word;
    RecordKind kind;
    uint8_t sensor_type;
};
constexpr ClassRow kClasses[] = {{0x0100, RecordKind::kFull, 0x01},    {0x0803, RecordKind::kFull, 0x08},
                                 {0x0403, RecordKind::kFull, 0x04},    {0x0C01, RecordKind::kCompact, 0x0C},
                                 {0x0D00, RecordKind::kCompact, 0x0D}, {0x1700, RecordKind::kCompact, 0x17}};

bool SameKind(const SnrInfoRec &row, const Decoded &d) {
    return std::any_of(
        std::begin(kClasses), std::end(kClasses),
        [&](const ClassRow &c) {
            return c.word == row.dwSensorDevType && c.kind == d.kind && c.sensor_type == d.sensor_type;
        });
}

bool SameDevice(const SnrInfoRec &row, const Sensor &sensor) {
    const uint8_t code = sensor.entry[0];
    return (code == 0xCD && row.ucDeviceType == kDeviceOcp) ||
           ((code == 0xF0 || code == 0xF2) && row.ucDeviceType == kDeviceNvme);
}

bool CanPrint(const SnrInfoRec &row, const std::string &name) {
    std::string pattern = PatternOf(row);
    std::replace(pattern.begin(), pattern.end(), '#', '*');
    return pattern == Pattern(name);
}

} // namespace

std::vector<Finding> CheckTables(const Profile &profile) {
    std::vector<Finding> out;
    CheckLengths(profile, false, out);
    CheckLengths(profile, true, out);
    CheckNumbers(profile, out);
    CheckEqualPatterns(profile, out);
    return out;
}

std::vector<Finding> CheckMeetings(const StaticSet &set, const std::vector<Decoded> &decoded) {
    std::vector<Finding> out;
    for (size_t i = 0; i < decoded.size(); ++i)
        for (const SnrInfoRec &row : TableOf(set.profile->id)) {
            const std::string subject = Pattern(decoded[i].name);
            const bool told = std::any_of(out.begin(), out.end(),
                                          [&subject](const Finding &f) { return f.subject == subject; });
            if (!told && set.sensors[i].has_entry && SameKind(row, decoded[i]) &&
                !SameDevice(row, set.sensors[i]) && CanPrint(row, decoded[i].name))
                out.push_back({"name-meets-static",
                               set.profile->name,
                               subject,
                               "a static sensor (device " + DeviceText(set.sensors[i].entry) +
                                   ") and run-time sensors of device type " +
                                   std::to_string(row.ucDeviceType) + " can have one name",
                               {set.Label()},
                               ""});
        }
    return out;
}

} // namespace workbench
