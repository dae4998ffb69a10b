// SPDX-License-Identifier: GPL-3.0-or-later
//
// The file of user thresholds as people read it: the one binary image that the library keeps, decoded and judged.
#ifndef OXA_WORKBENCH_THRESHOLDS_IMAGE_H
#define OXA_WORKBENCH_THRESHOLDS_IMAGE_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "oxa/platform.h"

namespace workbench {

using SixThresholds = std::array<uint8_t, 6>; // raw, in the order of entry and record: UNR UC UNC LNR LC LNC

struct ThresholdPlace {
    const char *key;    // "LNR"
    const char *option; // "lnr"
    unsigned bit;       // in masks
    unsigned index;     // in SixThresholds
};
extern const std::array<ThresholdPlace, 6> kThresholdPlaces; // lowest first, as tables show them

struct StoredThresholds {
    std::string name;
    SixThresholds six{};
    std::array<uint8_t, 2> further{};
    uint16_t mask = 0; // the low byte counts
    bool Has(const ThresholdPlace &place) const {
        return mask & place.bit;
    }
};

struct ThresholdImage {
    uint32_t custom_id = 0;
    std::vector<StoredThresholds> entries;
    // Index of the entry that is found by this name.
    std::optional<size_t> Find(const std::string &name) const;
};

using FileBytes = std::vector<uint8_t>;

// nullopt when there is no such file; InputError when it cannot be read.
std::optional<FileBytes> ReadThresholdFile(const std::string &path);

// What the library never writes: a wrong size, a count above 512, an entry without a proper name, bytes that must be zero
// and are not.
struct ImageFault {
    std::optional<size_t> entry; // nothing: of the file as a whole
    std::string text;
    bool of_size = false;
};
std::vector<ImageFault> FaultsOfImage(const FileBytes &bytes);

// As the library reads a file: zeros behind the end of a short one, at most 512 entries.
SensorThreshTable TableOf(const FileBytes &bytes);
ThresholdImage ViewThresholdImage(const FileBytes &bytes);

// InputError, one line, with the first fault.
ThresholdImage ParseThresholdImage(const std::string &path, const FileBytes &bytes);

std::string MaskText(unsigned mask); // "LNC, UC"; "none"; bits without a threshold as "0x40"

// The first pair that stands the wrong way round in the eyes of the overlay: "LC 20 is not below LNC 15"; else
// empty.
std::string OrderFault(unsigned mask, const SixThresholds &six);

std::string SavedUnder(uint32_t custom_id); // "profile 7 (lumora)"
Json StoredJson(const StoredThresholds &entry);

} // namespace workbench
#endif
