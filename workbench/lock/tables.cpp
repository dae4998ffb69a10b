// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/tables.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "base/text.h"
#include "library/specific_sensors/device_types_catalogue.h"
#include "oxa/specific_sensors.h"
#include "runtime/description.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

constexpr uint16_t kKeepsBitmap = 0xFFFF;

std::string Name(const char *text, size_t most) {
    return LockWord(std::string(text, strnlen(text, most)));
}

// "temperature" of "temperature (0x0100)".
std::string ClassWord(uint32_t sensor_class) {
    const std::string text = ClassText(sensor_class);
    const size_t end = text.find(" (");
    return end == std::string::npos ? Hex(sensor_class, 4) : text.substr(0, end);
}

std::string TypeWord(uint32_t sensor_class, uint8_t type) {
    if (sensor_class == oxa::snr::kClassFan)
        return std::to_string(type); // rows of fans have numbers of their own
    for (const oxa::snr::DeviceTypeWord &word : oxa::snr::kDeviceTypeWords)
        if (word.ucNumber == type && *word.pcWord != '\0')
            return std::to_string(type) + ":" + word.pcWord;
    return std::to_string(type);
}

std::string BitmapWord(uint16_t bitmap) {
    return bitmap == kKeepsBitmap ? "-" : Hex(bitmap, 4);
}

std::string ScannerWord(const oxa::snr::Scanner &scanner) {
    if (scanner.ucCode == 0)
        return "-";
    return Hex(scanner.ucCode).substr(2) + "/" + std::to_string(scanner.ucItem) + "." +
           Hex(scanner.ucFlags).substr(2);
}

// Each row of each profile, with the words that a line begins with.
void ForEachName(
    const std::function<void(const std::vector<std::string> &key, const SnrInfoRec &row)> &take) {
    for (const Profile *profile : AllProfiles())
        for (uint32_t i = 0; i < g_dwSdrCustomCnt; ++i) {
            const SnrSpecificInfoRow &table = g_atSnrSpecificInfo[i];
            if (table.dwCustomId != profile->id)
                continue;
            for (uint8_t n = 0; n < *table.pucSnrCnt; ++n) {
                const SnrInfoRec &row = table.ptInfo[n];
                take({LockWord(profile->name), ClassWord(row.dwSensorDevType),
                      TypeWord(row.dwSensorDevType, row.ucDeviceType), std::to_string(row.SubDeviceType)},
                     row);
            }
        }
}

void AddNames(std::vector<TableLine> &out) {
    ForEachName([&out](const std::vector<std::string> &key, const SnrInfoRec &row) {
        out.push_back({"@name", key, {Name(row.acName, sizeof row.acName), BitmapWord(row.wBitmap)}});
    });
}

// The library itself is asked, on a board whose one slot is a front slot.
void AddFronts(std::vector<TableLine> &out) {
    constexpr uint8_t kSlot = 1, kFront = 1;
    sim::Board board;
    board.pcie.slots.push_back({kSlot, kFront, "F-Slot1", true});
    sim::Start(std::move(board));
    ForEachName([&out](const std::vector<std::string> &key, const SnrInfoRec &row) {
        SnrQuery query{row.dwSensorDevType, row.ucDeviceType, row.SubDeviceType, 0, {}};
        std::copy(std::begin(row.acName), std::end(row.acName), query.acName);
        uint8_t slot = kSlot;
        modifyPcieSlotName(&slot, &query);
        if (const std::string name = Name(query.acName, sizeof query.acName);
            name != Name(row.acName, sizeof row.acName))
            out.push_back({"@front", key, {name}});
    });
}

void AddFamilies(std::vector<TableLine> &out) {
    for (const CardSnrRow &family : g_atPurchaseCardSnrInfo)
        for (uint8_t n = 0; n < family.ucCnt; ++n)
            out.push_back(
                {"@family",
                 {ClassWord(family.dwSensorDevType), TypeWord(family.dwSensorDevType, family.ucDeviceType),
                  std::to_string(family.ptEntry[n].ucSensorIndex)},
                 {Name(family.ptEntry[n].acName, sizeof family.ptEntry[n].acName)}});
}

void AddTypes(std::vector<TableLine> &out) {
    for (const oxa::snr::DeviceTypeWord &type : oxa::snr::kDeviceTypeWords)
        out.push_back({"@type",
                       {std::to_string(type.ucNumber)},
                       {*type.pcWord == '\0' ? "-" : LockWord(type.pcWord), Hex(type.tType.eEntity).substr(2),
                        ScannerWord(type.tType.tTemp), ScannerWord(type.tType.tPower),
                        Hex(type.tType.wTraits, 4).substr(2)}});
}

void AddCards(std::vector<TableLine> &out) {
    for (const PurchaseCardRow &card : gPurchaseCardInfo)
        out.push_back({"@card",
                       {ClassWord(card.wDevType)},
                       {Name(card.acName, sizeof card.acName), std::to_string(card.ucOEM)}});
}

} // namespace

std::vector<TableLine> RunTimeTables() {
    std::vector<TableLine> out;
    AddNames(out);
    AddFronts(out);
    AddFamilies(out);
    AddTypes(out);
    AddCards(out);
    return out;
}

bool OfProfile(const TableLine &line) {
    return line.tag == "@name" || line.tag == "@front";
}

size_t KeyWords(const std::string &tag) {
    return tag == "@name" || tag == "@front"  ? 4
           : tag == "@family"                 ? 3
           : tag == "@type" || tag == "@card" ? 1
                                              : 0;
}

} // namespace workbench
