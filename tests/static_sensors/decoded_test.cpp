// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sets through the eyes of a decoder that none of us wrote: names, types, units, states, and, of the Default set,
// limits in real units.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include <freeipmi/freeipmi.h>

#include "support/boards.h"
#include "support/static_pass.h"

namespace {

using namespace tests;

struct DestroyContext {
    void operator()(ipmi_sdr_ctx_t context) const {
        ipmi_sdr_ctx_destroy(context);
    }
};
using Context = std::unique_ptr<std::remove_pointer_t<ipmi_sdr_ctx_t>, DestroyContext>;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

struct Limits { // in real units; kNone: the decoder sees no such threshold
    double unr = kNone, uc = kNone, unc = kNone, lnr = kNone, lc = kNone, lnc = kNone;
};

class Decoder {
public:
    explicit Decoder(const Record &record)
        : sdr_(record.sdr.data()), length_(static_cast<unsigned>(record.sdr[4] + 5)) {}

    bool Full() const {
        return sdr_[3] == 1;
    }
    std::string Name() {
        char text[64] = {};
        Check(ipmi_sdr_parse_id_string(context_.get(), sdr_, length_, text, sizeof text) < 0 ? -1 : 0);
        return text;
    }
    std::string Type() {
        uint8_t type = 0;
        Check(ipmi_sdr_parse_sensor_type(context_.get(), sdr_, length_, &type));
        const char *text = ipmi_get_sensor_type_string(type);
        return text == nullptr ? "(unknown)" : text;
    }
    std::string Units() {
        uint8_t percentage = 0, modifier = 0, rate = 0, base = 0, second = 0;
        Check(ipmi_sdr_parse_sensor_units(context_.get(), sdr_, length_, &percentage, &modifier, &rate, &base,
                                          &second));
        char text[128] = {};
        ipmi_sensor_units_string(percentage, modifier, rate, base, second, text, sizeof text, 1);
        return text;
    }
    uint8_t EventType() {
        uint8_t type = 0;
        Check(ipmi_sdr_parse_event_reading_type_code(context_.get(), sdr_, length_, &type));
        return type;
    }
    std::pair<int, int> Entity() {
        uint8_t id = 0, instance = 0, kind = 0;
        Check(ipmi_sdr_parse_entity_id_instance_type(context_.get(), sdr_, length_, &id, &instance, &kind));
        return {id, instance};
    }
    double Value(uint8_t raw) {
        int8_t r = 0, b_exponent = 0;
        int16_t m = 0, b = 0;
        uint8_t linearization = 0, format = 0;
        Check(ipmi_sdr_parse_sensor_decoding_data(context_.get(), sdr_, length_, &r, &b_exponent, &m, &b,
                                                  &linearization, &format));
        double value = kNone;
        EXPECT_EQ(ipmi_sensor_decode_value(r, b_exponent, m, b, linearization, format, raw, &value), 0);
        return value;
    }
    Limits Thresholds() {
        double *lnc = nullptr, *lc = nullptr, *lnr = nullptr, *unc = nullptr, *uc = nullptr, *unr = nullptr;
        Check(ipmi_sdr_parse_thresholds(context_.get(), sdr_, length_, &lnc, &lc, &lnr, &unc, &uc, &unr));
        const Limits all{Take(unr), Take(uc), Take(unc), Take(lnr), Take(lc), Take(lnc)};
        uint8_t readable[6] = {}; // the decoder gives a number for a threshold that is not there, too
        Check(ipmi_sdr_parse_threshold_readable(context_.get(), sdr_, length_, &readable[0], &readable[1],
                                                &readable[2], &readable[3], &readable[4], &readable[5]));
        const auto if_there = [](double value, uint8_t there) { return there ? value : kNone; };
        return {if_there(all.unr, readable[5]), if_there(all.uc, readable[4]),
                if_there(all.unc, readable[3]), if_there(all.lnr, readable[2]),
                if_there(all.lc, readable[1]),  if_there(all.lnc, readable[0])};
    }
    std::pair<int, int> Hysteresis() {
        uint8_t positive = 0, negative = 0;
        Check(ipmi_sdr_parse_hysteresis(context_.get(), sdr_, length_, &positive, &negative));
        return {positive, negative};
    }
    uint16_t States() { // of a discrete sensor: what is asserted
        uint8_t s[15] = {};
        Check(ipmi_sdr_parse_assertion_supported(context_.get(), sdr_, length_, &s[0], &s[1], &s[2], &s[3],
                                                 &s[4], &s[5], &s[6], &s[7], &s[8], &s[9], &s[10], &s[11],
                                                 &s[12], &s[13], &s[14]));
        uint16_t states = 0;
        for (size_t i = 0; i < 15; ++i)
            states = static_cast<uint16_t>(states | s[i] << i);
        return states;
    }
    // Everything else that the decoder can be asked of such a record.
    void Rest() {
        uint8_t b[12] = {};
        uint16_t id = 0;
        Check(ipmi_sdr_parse_record_id_and_type(context_.get(), sdr_, length_, &id, &b[0]));
        EXPECT_EQ(id, 0);
        EXPECT_EQ(b[0], sdr_[3]);
        Check(ipmi_sdr_parse_sensor_owner_id(context_.get(), sdr_, length_, &b[0], &b[1]));
        EXPECT_EQ(b[1] << 1 | b[0], 0x20);
        Check(ipmi_sdr_parse_sensor_owner_lun(context_.get(), sdr_, length_, &b[0], &b[1]));
        EXPECT_EQ(b[0], 0);
        Check(ipmi_sdr_parse_sensor_number(context_.get(), sdr_, length_, &b[0]));
        EXPECT_EQ(b[0], 0);
        Check(ipmi_sdr_parse_sensor_capabilities(context_.get(), sdr_, length_, &b[0], &b[1], &b[2], &b[3],
                                                 &b[4]));
        Check(ipmi_sdr_parse_sensor_direction(context_.get(), sdr_, length_, &b[0]));
        if (!Full()) {
            Check(ipmi_sdr_parse_sensor_record_sharing(context_.get(), sdr_, length_, &b[0], &b[1], &b[2],
                                                       &b[3]));
            return;
        }
        Check(ipmi_sdr_parse_threshold_assertion_supported(context_.get(), sdr_, length_, &b[0], &b[1], &b[2],
                                                           &b[3], &b[4], &b[5], &b[6], &b[7], &b[8], &b[9],
                                                           &b[10], &b[11]));
        Check(ipmi_sdr_parse_threshold_deassertion_supported(context_.get(), sdr_, length_, &b[0], &b[1],
                                                             &b[2], &b[3], &b[4], &b[5], &b[6], &b[7], &b[8],
                                                             &b[9], &b[10], &b[11]));
        Check(ipmi_sdr_parse_threshold_readable(context_.get(), sdr_, length_, &b[0], &b[1], &b[2], &b[3],
                                                &b[4], &b[5]));
        Check(ipmi_sdr_parse_threshold_settable(context_.get(), sdr_, length_, &b[0], &b[1], &b[2], &b[3],
                                                &b[4], &b[5]));
        double *nominal = nullptr, *normal_max = nullptr, *normal_min = nullptr, *max = nullptr,
               *min = nullptr;
        Check(ipmi_sdr_parse_sensor_reading_ranges(context_.get(), sdr_, length_, &nominal, &normal_max,
                                                   &normal_min, &max, &min));
        for (double *value : {nominal, normal_max, normal_min})
            Take(value);
        Check(ipmi_sdr_parse_sensor_reading_ranges_specified(context_.get(), sdr_, length_, &b[0], &b[1],
                                                             &b[2]));
        EXPECT_EQ(b[0] | b[1] | b[2], 0);
        const bool upwards = Take(max) > Take(min); // Kestrin's inlet is signed with the unsigned range
        EXPECT_EQ(upwards, Name() != "CDU_Inlet_Temp");
    }

private:
    static double Take(double *value) {
        const double result = value == nullptr ? kNone : *value;
        free(value);
        return result;
    }
    void Check(int result) {
        EXPECT_EQ(result, 0) << ipmi_sdr_ctx_errormsg(context_.get());
    }
    Context context_{ipmi_sdr_ctx_create()};
    const uint8_t *sdr_;
    unsigned length_;
};

Outcome FullestSet() {
    return RunPass(LoadBoard("fullest"));
}

class DecodedSet : public testing::TestWithParam<Profile> {};
INSTANTIATE_TEST_SUITE_P(Profiles, DecodedSet, testing::ValuesIn(Profiles()), ProfileName);

// Readings with a hysteresis of their own.
std::pair<int, int> HysteresisOf(const std::string &name) {
    return name == "BP_F_Temp_Max" || name == "BP_R_Temp_Max" ? std::pair(2, 2) : std::pair(3, 3);
}

TEST_P(DecodedSet, NoRecordOfTheFullestBoardIsRefusedInAnyPart) {
    const Outcome outcome = RunPass(GetParam().driver, LoadBoard("fullest"));
    ASSERT_GT(outcome.records.size(), 500u);
    for (const Record &record : outcome.records) {
        SCOPED_TRACE(record.Name());
        Decoder decoder(record);
        EXPECT_EQ(decoder.Name(), record.Name());
        EXPECT_NE(decoder.Type(), "(unknown)");
        EXPECT_EQ(decoder.Entity().first, record.sdr[8]);
        EXPECT_EQ(decoder.EventType(), record.sdr[13]);
        if (record.Name().ends_with("_MEMG0_Hot")) // an event in the shape of a reading: no thresholds
            continue;
        decoder.Units();
        decoder.Rest();
        if (decoder.Full()) {
            decoder.Thresholds();
            EXPECT_EQ(decoder.Hysteresis(), HysteresisOf(record.Name()));
        } else { // the leak detectors report their state and no events
            EXPECT_EQ(decoder.States() != 0, !record.Name().starts_with("CDU_LQD_"));
        }
    }
}

struct Reading {
    const char *name, *type, *units;
    double of_one, of_ff; // what the readings 01h and FFh mean
    Limits limits;
};

void ExpectLimit(const char *what, double ours, double wanted) {
    if (std::isnan(wanted))
        EXPECT_TRUE(std::isnan(ours)) << what << " is " << ours;
    else
        EXPECT_NEAR(ours, wanted, 1e-9) << what;
}

void ExpectReadings(const Outcome &outcome, const std::vector<Reading> &readings) {
    for (const Reading &reading : readings) {
        SCOPED_TRACE(reading.name);
        const Record *record = outcome.Find(reading.name);
        ASSERT_NE(record, nullptr);
        Decoder decoder(*record);
        EXPECT_EQ(decoder.Name(), reading.name);
        EXPECT_EQ(decoder.Type(), reading.type);
        EXPECT_EQ(decoder.Units(), reading.units);
        EXPECT_NEAR(decoder.Value(0x01), reading.of_one, 1e-9);
        EXPECT_NEAR(decoder.Value(0xFF), reading.of_ff, 1e-9);
        const Limits limits = decoder.Thresholds();
        ExpectLimit("upper non-recoverable", limits.unr, reading.limits.unr);
        ExpectLimit("upper critical", limits.uc, reading.limits.uc);
        ExpectLimit("upper non-critical", limits.unc, reading.limits.unc);
        ExpectLimit("lower non-recoverable", limits.lnr, reading.limits.lnr);
        ExpectLimit("lower critical", limits.lc, reading.limits.lc);
        ExpectLimit("lower non-critical", limits.lnc, reading.limits.lnc);
    }
}

TEST(DecodedDefaultSet, ReadingsAndLimitsInRealUnits) {
    ExpectReadings(
        FullestSet(),
        {
            {"CPU_TEMP_03", "Temperature", "C", 1, -1, {}},
            {"CPU_VR_TEMP_00", "Temperature", "C", 1, -1, {}},
            {"CPU_VOLTS_07",
             "Voltage",
             "V",
             0.01,
             2.55,
             {.unr = 2.4, .uc = 2.35, .unc = 2.3, .lnr = 1.2, .lc = 1.25, .lnc = 1.3}},
            {"CPU0_D0_N2",
             "Voltage",
             "V",
             0.005,
             1.275,
             {.unr = 1.25, .uc = 1.2, .unc = 1.15, .lnr = 0.65, .lc = 0.7, .lnc = 0.75}},
            {"INPUT_VOLTS_12", "Voltage", "V", 2, 510, {}},
            {"OUTPUT_VOLTS_12", "Voltage", "V", 1, 255, {}},
            {"PSU_TEMP_01", "Temperature", "C", 1, -1, {}},
            {"PSU_PIN_01", "Power Supply", "W", 14, 3570, {}},
            {"PSU_POUT_01", "Power Supply", "W", 13, 3315, {}},
            {"MEM_TEMP_0A0", "Temperature", "C", 1, -1, {}},
            {"NVME_TEMP_00", "Temperature", "C", 1, -1, {.uc = 70}},
            {"OCP_TEMP_08", "Temperature", "C", 1, -1, {}},
            {"SW_VOLT_01", "Voltage", "V", 0.2, 51, {}},
            {"SW_CURRENT_04", "Current", "A", 1, 255, {}},
            {"CPU_POWER", "Power Supply", "W", 6, 1530, {}},
            {"MEM_POWER", "Power Supply", "W", 10, 2550, {}},
            {"HDD_POWER", "Power Supply", "W", 10, 2550, {}},
            {"FAN_POWER", "Power Supply", "W", 8, 2040, {}},
            {"POWER_WATTS", "Power Supply", "W", 17, 4335, {}},
            {"INPUT_TEMP", "Temperature", "C", 1, -1, {.unr = 52, .uc = 50, .unc = 45}},
            {"ENV_HUMI", "Other Units Based Sensor", "%", 1, 255, {}},
            {"OUTPUT_TEMP", "Temperature", "C", 1, -1, {}},
            {"VCC12V", "Voltage", "V", 0.1, 25.5, {.uc = 14.4, .unc = 13.2, .lc = 9.6, .lnc = 10.8}},
            {"PDB_TEMP", "Temperature", "C", 1, -1, {}},
        });
}

TEST(DecodedDefaultSet, ReadingsOfTheOtherBoards) {
    ExpectReadings(RunPass(LoadBoard("two_socket_2u")), {{"PCH_TEMP", "Temperature", "C", 1, -1, {}}});
    ExpectReadings(RunPass(LoadBoard("simplified")), {{"DIMMG1_TEMP", "Temperature", "C", 1, -1, {}},
                                                      {"DISKG2_TEMP", "Temperature", "C", 1, -1, {}}});
    ExpectReadings(RunPass(LoadBoard("gpu_8_5502")), {{"SW_OUTPUT_T_01", "Temperature", "C", 1, -1, {}}});
    ExpectReadings(RunPass(LoadBoard("gpu_8_5517")), {{"SW_TEMP_08", "Temperature", "C", 1, -1, {}}});
}

TEST(DecodedDefaultSet, StatesOfTheDiscreteSensors) {
    const Outcome outcome = FullestSet();
    const struct {
        const char *name, *type;
        int event_type;
        std::vector<int> states;
        std::pair<int, int> entity;
    } cases[] = {
        {"CPU_STATUS_07", "Processor", 0x6F, {0, 1, 5, 7, 10, 11}, {3, 0x67}},
        {"CPU_PROCHOT", "Processor", 0x6F, {10}, {3, 0x60}},
        {"PSU_STATUS_12", "Power Supply", 0x6F, {0, 1, 2, 3, 6}, {10, 0x6C}},
        {"PSU_REDUNDANT_M", "Power Supply", 0x0B, {0, 1}, {19, 0x61}},
        {"MEM_STATUS_7H1", "Memory", 0x6F, {1, 6}, {32, 0xDF}},
        {"PCIE_STATUS_32", "Slot/Connector", 0x6F, {0, 2}, {11, 0x80}},
        {"FAN_STATUS_20", "Fan", 0x08, {0}, {29, 0x74}},
        {"HDD_STATUS_95", "Drive Slot", 0x6F, {0}, {4, 95}},
        {"OCP_ERR_08", "Module/Board", 0x07, {1, 2}, {0x97, 0x68}},
        {"FAN_REDUNDANCY", "Fan", 0x0B, {0, 1}, {30, 0x60}},
        {"LEAKAGE", "Cooling Device", 0x03, {1}, {30, 0x60}},
        {"POWER_BUTTON", "Button/Switch", 0x6F, {0}, {12, 0x60}},
        {"EVENT_LOG", "Event Logging Disabled", 0x6F, {2, 4, 5}, {6, 0x60}},
        {"ACPI_STATUS", "System ACPI Power State", 0x6F, {0, 5, 6}, {7, 0x60}},
        {"OS_BOOT", "OS Boot", 0x6F, {0, 1, 2, 3, 4, 5, 6}, {35, 0x60}},
        {"INTRUSION", "Physical Security", 0x6F, {0}, {23, 0x60}},
        {"NTP_SYNC_FAIL", "System Event", 0x6F, {5}, {33, 0x60}},
        {"POWER_FAULT", "Power Supply", 0x6F, {1}, {19, 0x60}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Record *record = outcome.Find(c.name);
        ASSERT_NE(record, nullptr);
        Decoder decoder(*record);
        EXPECT_EQ(decoder.Name(), c.name);
        EXPECT_EQ(decoder.Type(), c.type);
        EXPECT_EQ(decoder.EventType(), c.event_type);
        uint16_t states = 0;
        for (int state : c.states)
            states = static_cast<uint16_t>(states | 1 << state);
        EXPECT_EQ(decoder.States(), states);
        EXPECT_EQ(decoder.Entity().first, c.entity.first);
        EXPECT_EQ(record->sdr[9], c.entity.second); // the decoder splits the instance
        EXPECT_EQ(decoder.Entity().second, c.entity.second & 0x7F);
    }
}

} // namespace
