// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/tables.h"

#include <cstring>

#include "base/text.h"
#include "library/specific_sensors/device_types_catalogue.h"
#include "oxa/specific_sensors.h"
#include "runtime/description.h"

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

void AddNames(std::vector<TableLine> &out) {
    for (const Profile *profile : AllProfiles())
        for (uint32_t i = 0; i < g_dwSdrCustomCnt; ++i) {
            const SnrSpecificInfoRow &table = g_atSnrSpecificInfo[i];
            if (table.dwCustomId != profile->id)
                continue;
            for (uint8_t n = 0; n < *table.pucSnrCnt; ++n) {
                const SnrInfoRec &row = table.ptInfo[n];
                out.push_back(
                    {"@name",
                     {LockWord(profile->name), ClassWord(row.dwSensorDevType),
                      TypeWord(row.dwSensorDevType, row.ucDeviceType), std::to_string(row.SubDeviceType)},
                     {Name(row.acName, sizeof row.acName), BitmapWord(row.wBitmap)}});
            }
        }
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
    AddFamilies(out);
    AddTypes(out);
    AddCards(out);
    return out;
}

size_t KeyWords(const std::string &tag) {
    return tag == "@name" ? 4 : tag == "@family" ? 3 : tag == "@type" || tag == "@card" ? 1 : 0;
}

} // namespace workbench
