// SPDX-License-Identifier: GPL-3.0-or-later
//
// Descriptions in words.
#include "workbench/description.h"
#include "workbench/description_rules.h"
#include "workbench/text.h"

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

constexpr Word kDeviceTypes[] = {
    {"gpu", 2},
    {"raid", 3},
    {"raid-single", 4},
    {"nic", 5},
    {"ocp", 6},
    {"aic", 13},
    {"hba", 15},
    {"fc", 16},
    {"brenmor", 17},
    {"gpu-memory", 18},
    {"smart-nic", 19},
    {"hyper", 20},
    {"biren-retimer", 21},
    {"hgx-nswitch-all", 22},
    {"hgx-pswitch", 23},
    {"hgx-retimer-all", 24},
    {"hgx-fpga", 25},
    {"hgx-hmc", 26},
    {"hgx-hsc-all", 27},
    {"spnc50", 28},
    {"pcie", 29},
    {"oam", 30},
    {"sxm", 31},
    {"oam-memory", 32},
    {"sxm-memory", 33},
    {"smart-nic-card", 34},
    {"giga-hyper3", 35},
    {"neo", 36},
    {"oam-mcd", 37},
    {"mlu-pcie-retimer", 38},
    {"mlu-serdes-retimer", 39},
    {"mlu-ubb", 40},
    {"mlu-ubb-sfp", 41},
    {"x2000-box", 42},
    {"nic-ht", 43},
    {"nic-sw", 44},
    {"mlu-inlet", 45},
    {"halvik", 46},
    {"ilu-retimer", 47},
    {"metax-retimer", 48},
    {"oam-pcb", 49},
    {"mgx-nswitch", 50},
    {"mgx-pswitch", 51},
    {"mgx-fpga", 52},
    {"mgx-hmc", 53},
    {"ds25ge50", 54},
    {"cx6-net", 55},
    {"gpu-slot-power", 56},
    {"oam-slot-power", 57},
    {"sxm-slot-power", 58},
    {"nvme-disk", 59},
    {"nebula-matrix", 60},
    {"sp925d", 61},
    {"ubb-power-brick", 62},
    {"ubb-inlet", 63},
    {"ubb-outlet", 64},
    {"mt-retimer", 65},
    {"br166-retimer", 66},
    {"sxm-margin", 67},
    {"hgx-inlet", 68},
    {"hgx-outlet", 69},
    {"hgx-nswitch", 70},
    {"hgx-retimer", 71},
    {"hgx-hsc", 72},
    {"hgx-hsc-standby", 73},
    {"fan-front", 0},
    {"fan-rear", 1},
    {"fan-plain", 255},
};

// The names of the two families of tools, the first of each bit is shown.
constexpr Word kThresholdBits[] = {
    {"lnc", THRESH_BIT_LNC}, {"lc", THRESH_BIT_LC}, {"lcr", THRESH_BIT_LC}, {"lnr", THRESH_BIT_LNR},
    {"unc", THRESH_BIT_UNC}, {"uc", THRESH_BIT_UC}, {"ucr", THRESH_BIT_UC}, {"unr", THRESH_BIT_UNR},
};

constexpr uint8_t kNoSlot = 255;
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
    const std::string word = fan_row && param.dwSensorDevType != kFanClass ? "" : WordOf(kDeviceTypes, type);
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
    return kDeviceTypes;
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
    for (const Word &word : kDeviceTypes)
        out.push_back(word.word);
    return out;
}

} // namespace workbench
