// SPDX-License-Identifier: GPL-3.0-or-later
//
// The keys of a description for a reader of TOML tables, and the words that stand for numbers.
#ifndef OXA_WORKBENCH_RUNTIME_DESCRIPTION_RULES_H
#define OXA_WORKBENCH_RUNTIME_DESCRIPTION_RULES_H

#include <span>

#include "runtime/description.h"
#include "runtime/toml_file.h"

namespace workbench {

struct Word {
    const char *word;
    uint32_t value;
};
std::span<const Word> ClassTable();
std::span<const Word> DeviceTypeTable();
std::span<const Word> ThresholdTable(); // words of both families of tools; the first of each bit is shown

sim::rules::Rules DescriptionRules(DescriptionDraft &draft);

// Threshold bits: a number, "uc,unr", or ["uc", "unr"].
sim::rules::Reader<uint16_t> ThresholdBits();

} // namespace workbench
#endif
