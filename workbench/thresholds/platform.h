// SPDX-License-Identifier: GPL-3.0-or-later
//
// The library's own threshold functions on the simulated platform: what a save makes of a file, and what the
// overlay makes of a record.
#ifndef OXA_WORKBENCH_THRESHOLDS_PLATFORM_H
#define OXA_WORKBENCH_THRESHOLDS_PLATFORM_H

#include <optional>
#include <string>
#include <vector>

#include "sets/decode.h"
#include "thresholds/image.h"

namespace workbench {

// Where records come from that stored thresholds are held against.
struct RecordOptions {
    std::string board;
    std::string profile;                   // as given; may be empty
    std::vector<std::string> descriptions; // TOML files of sensors that are added at run time
    bool trace = false, log = false;
};

struct OfferedRecord {
    std::string origin; // "static set, 40", "run time, gpu.toml"
    Sensor sensor;
    Decoded decoded;
    bool IsFull() const {
        return sensor.record[SDR_RECORD_TYPE] == 0x01;
    }
    uint8_t Mask() const {
        return sensor.record[SDR_READING_MASK];
    }
    SixThresholds Six() const;
    // "55 °C"
    std::string InUnits(uint8_t raw) const;
    std::optional<double> Value(uint8_t raw) const; // nullopt: the record has no reading
};

// Id of the profile that was given, else the board's own, else the one that the image was saved under.
uint32_t SettledMachine(const RecordOptions &options, const ThresholdImage &image);

// The static set of the board and what the library makes of the descriptions, without stored thresholds, on a
// machine of the profile that the file is for.
std::vector<OfferedRecord> CollectRecords(const RecordOptions &options, const std::string &file,
                                          uint32_t custom_id);

// Puts a machine of this profile under the library, with the file (nullopt: none), and lets the library start.
// False when the library deleted the file.
bool StartWithThresholds(uint32_t custom_id, const std::optional<FileBytes> &file);

enum class Overlay { kNoEntry, kApplied, kOtherMask, kOutOfOrder };
struct OverlayResult {
    Overlay what = Overlay::kNoEntry;
    SixThresholds after{};
    std::string line; // what the library logged
};
OverlayResult OfferToOverlay(const Record &record);

// The file as the library leaves it; InputError with its own words when it refuses.
FileBytes SaveOnPlatform(const StoredThresholds &entry);

// A full record of this name and mask and nothing else, to ask the overlay about an entry.
Record BareRecord(const StoredThresholds &entry);

} // namespace workbench
#endif
