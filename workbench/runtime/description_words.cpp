// SPDX-License-Identifier: GPL-3.0-or-later
//
// Descriptions in words.
#include "base/text.h"
#include "library/specific_sensors/device_types_catalogue.h"
#include "runtime/description.h"
#include "runtime/description_rules.h"

namespace workbench {
namespace {

constexpr Word kClasses[] = {
    {"temperature", 0x0100},     {"voltage", 0x0200},
    {"power", 0x0803},           {"fan", 0x0403},
    {"card-status", 0x1501},     {"memory-status", 0x0C01},
    {"disk-status", 0x0D00},     {"gpu-status", 0x1700},
    {"psu-fru", kPsuFruClass},   {"sub-card-fru", 0x170B},
    {"hypercard-fru", 0x010B},   {"neo-card-fru", 0x020B},
    {"halvik-card-fru", 0x030B}, {"sl200-card-fru", 0x040B},
    {"biren-ubb-fru", 0x01E0},   {"hgx-ubb-fru", 0x02E0},
    {"p800-ubb-fru", 0x03E0},    {"hbb-m9d-fru", 0x04E0},
    {"oxa-ubb1.5-fru", 0x05E0},  {"metax-ubb-fru", 0x06E0},
    {"mt-ubb-fru", 0x07E0},
};

const std::vector<Word> &DeviceTypes() {
    static const std::vector<Word> words = [] {
        std::vector<Word> out;
        for (const oxa::snr::DeviceTypeWord &type : oxa::snr::kDeviceTypeWords)
            if (*type.pcWord != '\0')
                out.push_back({type.pcWord, type.ucNumber});
        out.push_back({"fan-front", oxa::snr::kFanFront});
        out.push_back({"fan-rear", oxa::snr::kFanRear});
        out.push_back({"fan-plain", oxa::snr::kFanPlain});
        return out;
    }();
    return words;
}

// The names of the two families of tools, the first of each bit is shown.
constexpr Word kThresholdBits[] = {
    {"lnc", THRESH_BIT_LNC}, {"lc", THRESH_BIT_LC}, {"lcr", THRESH_BIT_LC}, {"lnr", THRESH_BIT_LNR},
    {"unc", THRESH_BIT_UNC}, {"uc", THRESH_BIT_UC}, {"ucr", THRESH_BIT_UC}, {"unr", THRESH_BIT_UNR},
};

constexpr uint32_t kFanClass = 0x0403;

std::string WordOf(std::span<const Word> words, uint32_t value) {
    for (const Word &word : words)
        if (word.value == value)
            return word.word;
    return "";
}

// 0, 1 and 255 are fan rows in the class of fans only.
std::string DeviceTypeText(const SpecificSensorParam &param) {
    const uint8_t type = param.ucDeviceType;
    const bool fan_row = type <= 1 || type == 255;
    const std::string word = fan_row && param.dwSensorDevType != kFanClass ? "" : WordOf(DeviceTypes(), type);
    return "device type " + std::to_string(type) + (word.empty() ? "" : " (" + word + ")");
}

std::string ThresholdsText(const SpecificSensorParam &param) {
    const struct {
        const char *name;
        uint8_t value;
    } all[] = {{"LNR", param.ucLNR}, {"LC", param.ucLC}, {"LNC", param.ucLNC},
               {"UNC", param.ucUNC}, {"UC", param.ucUC}, {"UNR", param.ucUNR}};
    std::string out;
    for (const auto &[name, value] : all)
        if (value != 0)
            out += std::string(", ") + name + " " + std::to_string(value);
    return out;
}

} // namespace

std::span<const Word> ClassTable() {
    return kClasses;
}

std::span<const Word> DeviceTypeTable() {
    return DeviceTypes();
}

std::span<const Word> ThresholdTable() {
    return kThresholdBits;
}

bool IsFruClass(uint32_t sensor_class) {
    const std::string word = WordOf(kClasses, sensor_class);
    return word.size() > 4 && word.compare(word.size() - 4, 4, "-fru") == 0;
}

std::string ClassText(uint32_t sensor_class) {
    const std::string word = WordOf(kClasses, sensor_class);
    const std::string number = Hex(sensor_class, 4);
    return word.empty() ? "class " + number : word + " (" + number + ")";
}

std::string DescriptionText(const SpecificSensorParam &param) {
    std::string out = ClassText(param.dwSensorDevType);
    if (param.dwSensorDevType == kPsuFruClass && param.ucDeviceType == param.SlotId)
        return out + ", power supply " + std::to_string(param.SlotId);
    if (!IsFruClass(param.dwSensorDevType) || param.ucDeviceType != 0)
        out += ", " + DeviceTypeText(param);
    out += param.SlotId == kNoSlot ? ", no slot" : ", slot " + std::to_string(param.SlotId);
    const struct {
        const char *name;
        uint8_t value;
    } more[] = {{"sub type", param.SubDeviceType},
                {"index", param.ucBrenmorSensorIndex},
                {"port", param.ucSensorSeq},
                {"second port", param.ucSecondPort}};
    for (const auto &[name, value] : more)
        if (value != 0)
            out += std::string(", ") + name + " " + std::to_string(value);
    if (param.wBitmap != 0)
        out += ", bitmap " + Hex(param.wBitmap);
    out += ThresholdsText(param);
    if (param.ucHysteresis != 0)
        out += ", hysteresis " + std::to_string(param.ucHysteresis);
    return out;
}

Json DescriptionJson(const SpecificSensorParam &param) {
    return {{"class", param.dwSensorDevType},
            {"class_text", ClassText(param.dwSensorDevType)},
            {"device_type", param.ucDeviceType},
            {"slot", param.SlotId},
            {"sub_type", param.SubDeviceType},
            {"index", param.ucBrenmorSensorIndex},
            {"seq", param.ucSensorSeq},
            {"second_port", param.ucSecondPort},
            {"bitmap", param.wBitmap},
            {"unr", param.ucUNR},
            {"uc", param.ucUC},
            {"unc", param.ucUNC},
            {"lnc", param.ucLNC},
            {"lc", param.ucLC},
            {"lnr", param.ucLNR},
            {"hysteresis", param.ucHysteresis}};
}

std::vector<std::string> ClassWords() {
    std::vector<std::string> out;
    for (const Word &word : kClasses)
        out.push_back(word.word);
    return out;
}

std::vector<std::string> DeviceTypeWords() {
    std::vector<std::string> out;
    for (const Word &word : DeviceTypes())
        out.push_back(word.word);
    return out;
}

} // namespace workbench
