// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sensor description that SDR_AddSpecificSensor and SDR_DeleteSpecificSDR take, as people write it: options
// of the command line or keys of a TOML table, with words for classes, device types and thresholds.
#ifndef OXA_WORKBENCH_RUNTIME_DESCRIPTION_H
#define OXA_WORKBENCH_RUNTIME_DESCRIPTION_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "oxa/records.h"

namespace workbench {

// What was said; Finish fills in what was not.
struct DescriptionDraft {
    std::optional<uint32_t> sensor_class;
    std::optional<uint8_t> device_type, slot, sub_type, index, seq, second_port;
    std::optional<uint16_t> bitmap;
    std::optional<uint8_t> unr, uc, unc, lnc, lc, lnr, hysteresis;
};

struct DescriptionKey {
    std::string key;      // of a table; the option is the same with "-" for "_"
    std::string expected; // "a number 0 to 255"
    std::string meaning;
};
std::vector<DescriptionKey> DescriptionKeys();

// A value as a word of the command line; InputError when it is not what is expected.
void SetFromWord(DescriptionDraft &draft, const std::string &key, const std::string &word);

DescriptionDraft LoadDescription(const std::string &path); // InputError with file and line

constexpr uint8_t kNoSlot = 255;

// Without a class: InputError.  Without a slot 255 (none), without a bitmap the bits of the thresholds that were
// said; a power supply's index, which the add reads from the device type and the delete from the slot, goes to
// both.
SpecificSensorParam Finish(const DescriptionDraft &draft);

constexpr uint32_t kPsuFruClass = 0xFF0A;
// A power supply goes by its number, which has no default.
bool NamesWhatGoes(const DescriptionDraft &draft);
bool IsFruClass(uint32_t sensor_class);

std::string ClassText(uint32_t sensor_class); // "temperature (0x0100)"
std::string
DescriptionText(const SpecificSensorParam &param); // "temperature (0x0100), device type 59 (...), slot 3"
Json DescriptionJson(const SpecificSensorParam &param);
std::vector<std::string> ClassWords();
std::vector<std::string> DeviceTypeWords();

} // namespace workbench
#endif
