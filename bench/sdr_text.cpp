// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/sdr_text.h"

#include "bench/recording.h"
#include "oxa/records.h"

namespace bench {
namespace {

struct Field {
    const char *name;
    uint8_t byte;
    uint8_t shift;
    uint8_t bits;
    bool is_signed = false;
};

// Of full and compact records alike.
constexpr Field kCommon[] = {{"sensor_owner_id", 5, 0, 8},
                             {"channel_number", 6, 4, 4},
                             {"sensor_owner_lun", 6, 0, 2},
                             {"sensor_number", 7, 0, 8},
                             {"entity_id", 8, 0, 8},
                             {"logical_entity", 9, 7, 1},
                             {"entity_instance", 9, 0, 7},
                             {"init_scanning", 10, 6, 1},
                             {"init_events", 10, 5, 1},
                             {"init_thresholds", 10, 4, 1},
                             {"init_sensor_type", 10, 2, 1},
                             {"default_event_gen_on", 10, 1, 1},
                             {"default_sensor_scan_on", 10, 0, 1},
                             {"ignore_if_no_entity", 11, 7, 1},
                             {"sensor_auto_rearm", 11, 6, 1},
                             {"sensor_hysteresis", 11, 4, 2},
                             {"sensor_threshold_access", 11, 2, 2},
                             {"sensor_event_msg_ctrl", 11, 0, 2},
                             {"sensor_type", 12, 0, 8},
                             {"event_reading_type_code", 13, 0, 8},
                             {"rate_unit", 20, 3, 3},
                             {"modifier_unit", 20, 1, 2},
                             {"percentage", 20, 0, 1},
                             {"base_unit", 21, 0, 8},
                             {"modifier_unit_code", 22, 0, 8}};

constexpr Field kFullOnly[] = {{"init_hysteresis", 10, 3, 1},
                               {"analog_data_format", 20, 6, 2},
                               {"linearization", 23, 0, 7},
                               {"tolerance", 25, 0, 6},
                               {"accuracy_exp", 28, 2, 2},
                               {"sensor_direction", 28, 0, 2},
                               {"r_exp", 29, 4, 4, true},
                               {"b_exp", 29, 0, 4, true},
                               {"normal_min_specified", 30, 2, 1},
                               {"normal_max_specified", 30, 1, 1},
                               {"nominal_specified", 30, 0, 1},
                               {"nominal_reading", 31, 0, 8},
                               {"normal_maximum", 32, 0, 8},
                               {"normal_minimum", 33, 0, 8},
                               {"sensor_maximum", 34, 0, 8},
                               {"sensor_minimum", 35, 0, 8},
                               {"unr_thresh", 36, 0, 8},
                               {"uc_thresh", 37, 0, 8},
                               {"unc_thresh", 38, 0, 8},
                               {"lnr_thresh", 39, 0, 8},
                               {"lc_thresh", 40, 0, 8},
                               {"lnc_thresh", 41, 0, 8},
                               {"positive_hysteresis", 42, 0, 8},
                               {"negative_hysteresis", 43, 0, 8},
                               {"oem", 46, 0, 8}};

// The first one is spelled so by sdrcomp.
constexpr Field kCompactOnly[] = {{"init_systeresis", 10, 3, 1},
                                  {"sensor_direction", 23, 6, 2},
                                  {"id_string_modifier", 23, 4, 2},
                                  {"share_count", 23, 0, 4},
                                  {"entity_instance_incr", 24, 7, 1},
                                  {"instance_modifier_off", 24, 0, 7},
                                  {"positive_hysteresis", 25, 0, 8},
                                  {"negative_hysteresis", 26, 0, 8},
                                  {"oem", 30, 0, 8}};

int Value(const uint8_t *slot, const Field &field) {
    const int value = slot[field.byte] >> field.shift & ((1 << field.bits) - 1);
    return field.is_signed && value >= 1 << (field.bits - 1) ? value - (1 << field.bits) : value;
}

std::string Assign(const std::string &name, const std::string &value) {
    return " " + name + " " + value + "\n";
}

template <size_t N> std::string Fields(const uint8_t *slot, const Field (&fields)[N]) {
    std::string text;
    for (const Field &field : fields) {
        const int value = Value(slot, field);
        const bool flag = field.bits == 1;
        const bool required = !flag && field.byte <= SDR_EVENT_TYPE;
        if (value != 0 || required)
            text += Assign(field.name, flag ? "true" : std::to_string(value));
    }
    return text;
}

// Three masks of 15 bits.
std::string Masks(const uint8_t *slot) {
    std::string text;
    for (int bit = 0; bit < 15; ++bit) {
        const std::string number = std::to_string(bit);
        if (slot[SDR_ASSERT_MASK + bit / 8] >> bit % 8 & 1)
            text += " assert_event" + number + " true\n";
        if (slot[SDR_DEASSERT_MASK + bit / 8] >> bit % 8 & 1)
            text += " deassert_event" + number + " true\n";
        if (slot[SDR_READING_MASK + bit / 8] >> bit % 8 & 1)
            text += " event" + number + "_state_ret true\n";
    }
    return text;
}

// Numbers of ten bits, in two bytes each.
std::string Factors(const uint8_t *slot) {
    const auto wide = [slot](int low, int high) { return slot[low] | (slot[high] & 0xC0) << 2; };
    const auto with_sign = [](int value) { return value >= 512 ? value - 1024 : value; };
    const int accuracy = (slot[27] & 0x3F) | (slot[28] & 0xF0) << 2;
    return Assign("m", std::to_string(with_sign(wide(24, 25)))) +
           Assign("b", std::to_string(with_sign(wide(26, 27)))) +
           Assign("accuracy", std::to_string(accuracy));
}

} // namespace

std::string RecordText(const uint8_t *slot) {
    const bool full = slot[SDR_RECORD_TYPE] == 1;
    std::string text = full ? "sdr type 1\n" : "sdr type 2\n";
    text += Fields(slot, kCommon) + Masks(slot);
    text += full ? Fields(slot, kFullOnly) + Factors(slot) : Fields(slot, kCompactOnly);
    const std::string name(reinterpret_cast<const char *>(slot) + NameOffset(slot), NameLength(slot));
    return text + " id_string \"" + name + "\"\nendsdr\n";
}

} // namespace bench
