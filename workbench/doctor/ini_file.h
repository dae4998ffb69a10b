// SPDX-License-Identifier: GPL-3.0-or-later
//
// The platform's INI files, line by line, so that what stands in none of its sections is seen too.
#ifndef OXA_WORKBENCH_DOCTOR_INI_FILE_H
#define OXA_WORKBENCH_DOCTOR_INI_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

struct IniKey {
    std::string name; // to the letter, blanks too
    uint32_t value = 0;
    size_t line = 0;
};

struct IniSection {
    std::string name;
    size_t line = 0;
    std::vector<IniKey> keys;
    std::optional<uint32_t> Value(const std::string &key) const; // the last one counts
};

struct IniFault {
    size_t line = 0;
    std::string text;
};

struct IniText {
    std::vector<IniSection> sections; // of each name once
    std::vector<IniFault> faults;     // lines that are neither section nor key, names that come twice
    bool torn = false;                // the last line does not end
};

IniText ReadIni(const std::vector<uint8_t> &bytes);
std::vector<uint8_t> WriteIni(const std::vector<IniSection> &sections); // "key=value"; names as they are

} // namespace workbench
#endif
