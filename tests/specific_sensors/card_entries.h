// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sensors of the card families as the rules have them: which family, how many entries, where its sensors belong
// and by what the scanner finds them.  Typed from the rules, not from the library.  A name stands here where the rules
// spell it, or where another family of the same make shows how it is formed; the others are the product's own choice,
// and "" stands for them.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_CARD_ENTRIES_H
#define OXA_TESTS_SPECIFIC_SENSORS_CARD_ENTRIES_H

#include <string>
#include <vector>

#include "oxa/specific_sensors.h"

namespace cards {

struct Family {
    const char *name; // of the exported table
    const CardSnrEntry *entries;
    uint32_t sensor_class;
    uint8_t device_type;
    uint8_t entity;
    bool device_relative;   // the instance is counted within the device: bit 7 is set
    bool index_in_instance; // the entry's index is added to the instance
    bool index_in_byte_44;  // the scanner finds the sensor by the entry's index
    uint8_t scanner_code;   // byte 0 of the device-table entry
    std::vector<std::string> names;
};

inline const std::vector<std::string> Unspelled(size_t count) {
    return std::vector<std::string>(count);
}

inline std::vector<std::string> SpelledAtTheEnds(const std::string &first, size_t between,
                                                 const std::string &last) {
    std::vector<std::string> names(between + 2);
    names.front() = first;
    names.back() = last;
    return names;
}

#define FAMILY(table) #table, table
inline const std::vector<Family> &Families() {
    constexpr uint32_t kTemp = 0x0100, kPower = 0x0803, kCard = 0x1501;
    constexpr bool kRelative = true, kAbsolute = false, kAdded = true, kApart = false, kByIndex = true,
                   kByPort = false;
    static const std::vector<Family> kFamilies = {
        // clang-format off
        {FAMILY(atBrenmorSensorInfo), kTemp, 17, 0x0B, kAbsolute, kApart, kByIndex, 0xBF, SpelledAtTheEnds("DPU_Cpu_Inlet1", 12, "DPU_DIMMB")},
        {FAMILY(atHyperTempSensorInfo), kTemp, 20, 0x0B, kAbsolute, kApart, kByIndex, 0xB9, Unspelled(7)},
        {FAMILY(atHyperPowerSensorInfo), kPower, 20, 0x0B, kAbsolute, kApart, kByIndex, 0xB8, Unspelled(2)},
        {FAMILY(atBirenRetimerTempSensorInfo), kTemp, 21, 0xE0, kRelative, kApart, kByPort, 0xB7, Unspelled(1)},
        {FAMILY(atHGXNSWITCHTempSensorInfo), kTemp, 22, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_NSWITCH_TEMP"}},
        {FAMILY(atHGXPSWITCHTempSensorInfo), kTemp, 23, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_PSWITCH_TEMP"}},
        {FAMILY(atHGXRETIMERTempSensorInfo), kTemp, 24, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_RETIMER_TEMP"}},
        {FAMILY(atHGXFPGATempSensorInfo), kTemp, 25, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_FPGA_TEMP"}},
        {FAMILY(atHGXHMCTempSensorInfo), kTemp, 26, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_HMC_TEMP"}},
        {FAMILY(atHGXHSCTempSensorInfo), kTemp, 27, 0xE0, kRelative, kApart, kByPort, 0xB6, {"HGX_HSC_TEMP"}},
        {FAMILY(atGIGAHYPER3FPGATempSensorInfo), kTemp, 35, 0x0B, kRelative, kApart, kByIndex, 0xB0, Unspelled(4)},
        {FAMILY(atMLUPcieRetimerTempSensorInfo), kTemp, 38, 0xE0, kRelative, kApart, kByIndex, 0xAC, {"MLU_PRT0_TEMP", "MLU_PRT1_TEMP", "MLU_PRT2_TEMP", "MLU_PRT3_TEMP", "MLU_PRT4_TEMP", "MLU_PRT5_TEMP", "MLU_PRT6_TEMP", "MLU_PRT7_TEMP"}},
        {FAMILY(atMLUSdrdesRetimerTempSensorInfo), kTemp, 39, 0xE0, kRelative, kApart, kByIndex, 0xAC, Unspelled(4)},
        {FAMILY(atMLUUBBTempSensorInfo), kTemp, 40, 0xE0, kRelative, kApart, kByIndex, 0xAC, Unspelled(2)},
        {FAMILY(atMLUUBBSfpTempSensorInfo), kTemp, 41, 0xE2, kAbsolute, kAdded, kByIndex, 0xAC, Unspelled(4)},
        {FAMILY(atMLUInletTempSensorInfo), kTemp, 45, 0xE0, kRelative, kApart, kByIndex, 0xAC, Unspelled(4)},
        {FAMILY(atX2000BOXSensorInfo), kCard, 42, 0xE0, kRelative, kApart, kByPort, 0xAA, {"BOX"}},
        {FAMILY(atHalvikTempSensorInfo), kTemp, 46, 0x0B, kAbsolute, kApart, kByIndex, 0xA8, Unspelled(8)},
        {FAMILY(atILURetimerTempSensorInfo), kTemp, 47, 0xE0, kRelative, kApart, kByPort, 0xB7, Unspelled(1)},
        {FAMILY(atMETAXRetimerTempSensorInfo), kTemp, 48, 0xE0, kRelative, kApart, kByIndex, 0xA3, Unspelled(8)},
        {FAMILY(atMGXNSWITCHTempSensorInfo), kTemp, 50, 0xE0, kRelative, kApart, kByIndex, 0xA4, Unspelled(4)},
        {FAMILY(atMGXPSWITCHTempSensorInfo), kTemp, 51, 0xE0, kRelative, kApart, kByPort, 0xA4, Unspelled(1)},
        {FAMILY(atMGXFPGATempSensorInfo), kTemp, 52, 0xE0, kRelative, kApart, kByPort, 0xA4, Unspelled(1)},
        {FAMILY(atMGXHMCTempSensorInfo), kTemp, 53, 0xE0, kRelative, kApart, kByPort, 0xA4, Unspelled(1)},
        {FAMILY(atNebulaMatrixSensorInfo), kTemp, 60, 0x0B, kAbsolute, kApart, kByIndex, 0x96, SpelledAtTheEnds("DPU_CPU_Inlet1", 15, "DPU_QSFP2")},
        {FAMILY(atSP925DTempSensorInfo), kTemp, 61, 0x0B, kAbsolute, kApart, kByIndex, 0x94, Unspelled(6)},
        {FAMILY(atOxaUbbPowerBrickTempSensorInfo), kTemp, 62, 0xE0, kRelative, kApart, kByIndex, 0x92, Unspelled(1)},
        {FAMILY(atOxaUbbInletTempSensorInfo), kTemp, 63, 0xE0, kRelative, kApart, kByIndex, 0x92, Unspelled(1)},
        {FAMILY(atOxaUbbOutletTempSensorInfo), kTemp, 64, 0xE0, kRelative, kApart, kByIndex, 0x92, Unspelled(3)},
        {FAMILY(atMTRetimerTempSensorInfo), kTemp, 65, 0x0B, kAbsolute, kApart, kByPort, 0x91, Unspelled(8)},
        {FAMILY(atBR166RetimerTempSensorInfo), kTemp, 66, 0xE0, kRelative, kApart, kByIndex, 0x92, Unspelled(12)},
        // clang-format on
    };
    return kFamilies;
}
#undef FAMILY

} // namespace cards
#endif
