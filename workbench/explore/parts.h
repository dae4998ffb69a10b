// SPDX-License-Identifier: GPL-3.0-or-later
//
// The parts that come, go and fail: 'disk:0-3,psu:1-2,gpu:1'.
#ifndef OXA_WORKBENCH_EXPLORE_PARTS_H
#define OXA_WORKBENCH_EXPLORE_PARTS_H

#include <string>
#include <utility>
#include <vector>

#include "oxa/records.h"
#include "scenario/scenario.h"

namespace workbench {

// A description as a story writes it: keys and words, in this order, without the slot.
using Words = std::vector<std::pair<std::string, std::string>>;

struct Part {
    std::string kind; // "disk"
    uint8_t number = 0;
    std::vector<Words> descriptions;         // offered one after the other when it comes
    std::vector<SpecificSensorParam> params; // the same
    std::string event;                       // when it fails; empty: it cannot
    std::vector<std::string> names;          // of its records, type and name; see LearnNames
    std::string Text() const {
        return kind + " " + std::to_string(number);
    }
    EventCall Event() const;
};

std::vector<Part> ReadParts(const std::string &text); // InputError
std::vector<std::string> PartKinds();
std::string DescriptionToml(const Words &description, uint8_t slot); // { class = "psu-fru", slot = 1 }

} // namespace workbench
#endif
