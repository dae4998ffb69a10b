// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a record says, read by libfreeipmi: software that knows nothing of how it was built.
#ifndef OXA_WORKBENCH_SETS_DECODE_H
#define OXA_WORKBENCH_SETS_DECODE_H

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sets/static_set.h"

namespace workbench {

enum class RecordKind { kFull, kCompact };

struct Threshold {
    const char *key = "";  // "LNR"
    const char *name = ""; // "lower non-recoverable"
    unsigned offset = 0;   // SDR byte
    uint8_t raw = 0;
    bool readable = false; // announced by the readable mask: the threshold exists
    bool settable = false;
    double value = 0; // in units, whether announced or not
    // What the BMC goes by, where it was asked and has the limit.
    std::optional<uint8_t> active_raw;
    double active_value = 0;
    bool IsSetOtherwise() const {
        return active_raw && *active_raw != raw;
    }
};

struct Reading { // how a raw byte becomes a number
    int m = 0, b = 0, r_exponent = 0, b_exponent = 0;
    uint8_t linearization = 0, format = 0;
    double factor = 0,
           offset = 0; // value = factor * raw + offset, to which the function of the linearization applies
    bool is_signed = false;
    bool IsLinear() const {
        return linearization == 0;
    }
    std::string unit;    // "V", "°C", "%"
    std::string formula; // "x * 0.01 V"
    double minimum = 0, maximum = 0;
    double nominal = 0, normal_maximum = 0, normal_minimum = 0;
    bool has_nominal = false, has_normal_maximum = false, has_normal_minimum = false;
};

struct State { // one bit of an event or reading mask
    unsigned offset = 0;
    std::string text;
};

struct Decoded {
    RecordKind kind = RecordKind::kFull;
    uint16_t record_id = 0;
    std::string name;
    uint8_t sensor_number = 0, owner_id = 0, owner_lun = 0;
    uint8_t sensor_type = 0;
    std::string sensor_type_text;
    uint8_t event_type = 0;
    std::string event_type_text;                // "threshold", "sensor-specific", ...
    uint8_t entity_id = 0, entity_instance = 0; // instance without bit 7
    bool entity_is_container = false;           // bit 7
    std::string entity_text;
    std::string unit_text;             // long form, e.g. "degrees C"
    std::optional<Reading> reading;    // full records with an analog reading
    std::vector<Threshold> thresholds; // all six, lowest first; empty for discrete sensors
    std::vector<State> assertion, deassertion;
    std::vector<State> readable; // discrete sensors: states that a reading can show
    uint8_t hysteresis_positive = 0, hysteresis_negative = 0;
    uint8_t init = 0, capabilities = 0;
    uint8_t auto_rearm = 0, hysteresis_support = 0, threshold_support = 0, event_control = 0,
            entity_ignore = 0;
    uint8_t share_count = 0, share_modifier_type = 0, share_modifier_offset = 0, share_instances = 0;
    bool IsThreshold() const {
        return event_type == 0x01;
    }
    const Threshold *FindThreshold(unsigned offset) const;
};

// Reads records; throws SetError for one that libfreeipmi refuses.
class Decoder {
public:
    Decoder();
    ~Decoder();
    Decoded Decode(const Sensor &sensor) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// A name whose type/length byte stands at that place, in any of the codes that there are.
std::string IdText(std::span<const uint8_t> record, size_t at);

// Texts of single codes.
std::string SensorTypeText(uint8_t type);
std::string EntityText(uint8_t id);
std::string EventTypeText(uint8_t event_type);
std::string StateText(uint8_t event_type, uint8_t sensor_type, unsigned offset);
const char *KindText(RecordKind kind);      // "full", "compact"
std::string DeviceText(const Entry &entry); // "0x4B/0": device code and item

} // namespace workbench
#endif
