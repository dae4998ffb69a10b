// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the stored thresholds share: the file image and a full record put together byte by byte, the
// live table, and the lines that a call left.
#ifndef OXA_TESTS_THRESHOLDS_THRESHOLD_FIXTURE_H
#define OXA_TESTS_THRESHOLDS_THRESHOLD_FIXTURE_H

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/specific_sensors.h"
#include "oxa/thresholds.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"
#include "support/record_differ.h"

namespace thresh {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using tests::Bytes;
using Lines = tests::LineList;
using Six = std::array<uint8_t, 6>; // UNR UC UNC LNR LC LNC

constexpr char kFile[] = "/conf/BMC1/sensor_threshold.dat";
constexpr char kUnit[] = "modify_sensor_threshold.c";
constexpr char kInit[] = "InitSdrThresholdInfoFromFile";
constexpr char kSave[] = "SaveSdrThresholdInfoInFile";
constexpr char kWrite[] = "WriteSdrThresholdInfoToFile";
constexpr char kApply[] = "ModifySensorThresholdByFile";
constexpr char kUpdate[] = "updateSdrThreshold";
constexpr char kGet[] = "MW_GetSensorThreshInfo";
constexpr char kSet[] = "MW_SetSensorThreshInfo";

// ---- the image, by offsets and not by the record types ---------------------------------------------

constexpr size_t kImageSize = 14344;
constexpr size_t kEntries = 512;
constexpr size_t EntryAt(size_t index) {
    return 6 + 28 * index;
}

struct Stored {
    std::string name; // up to 16 bytes, any of them may be zero
    Six six{};
    uint16_t mask = 0;
    std::array<uint8_t, 2> further{};
};

inline void PutCustomId(Bytes &image, uint32_t id) {
    for (int i = 0; i < 4; ++i) {
        image[i] = static_cast<uint8_t>(id >> 8 * i);
    }
}
inline void PutCount(Bytes &image, unsigned count) {
    image[4] = static_cast<uint8_t>(count);
    image[5] = static_cast<uint8_t>(count >> 8);
}
inline void PutEntry(Bytes &image, size_t index, const Stored &entry) {
    const size_t at = EntryAt(index);
    std::fill(image.begin() + at, image.begin() + at + 28, 0);
    std::copy(entry.name.begin(), entry.name.end(), image.begin() + at);
    std::copy(entry.six.begin(), entry.six.end(), image.begin() + at + 17);
    image[at + 23] = entry.further[0];
    image[at + 24] = entry.further[1];
    image[at + 26] = static_cast<uint8_t>(entry.mask);
    image[at + 27] = static_cast<uint8_t>(entry.mask >> 8);
}
inline Bytes Image(uint32_t id, const std::vector<Stored> &entries) {
    Bytes image(kImageSize, 0);
    PutCustomId(image, id);
    PutCount(image, static_cast<unsigned>(entries.size()));
    for (size_t i = 0; i < entries.size(); ++i) {
        PutEntry(image, i, entries[i]);
    }
    return image;
}

// "S001" ..., all different.
inline std::string NumberedName(size_t number) {
    const std::string digits = std::to_string(number);
    return "S" + std::string(3 - std::min<size_t>(digits.size(), 3), '0') + digits;
}
inline std::vector<Stored> NumberedEntries(size_t count) {
    std::vector<Stored> entries;
    for (size_t i = 0; i < count; ++i) {
        entries.push_back({NumberedName(i), {90, 80, 70, 10, 20, static_cast<uint8_t>(30 + i % 8)}, 0x3F});
    }
    return entries;
}

// ---- the platform's live table ---------------------------------------------------------------------

inline void SetLive(const Bytes &image) {
    static_assert(sizeof(SensorThreshTable) == kImageSize);
    static SensorThreshTable table;
    std::memcpy(&table, image.data(), kImageSize);
    MW_SetSensorThreshInfo(&table);
    sim::ClearTrace();
}
inline Bytes Live() {
    static SensorThreshTable table;
    table = sim::ThresholdTable();
    Bytes image(kImageSize);
    std::memcpy(image.data(), &table, kImageSize);
    return image;
}

// ---- a full record ---------------------------------------------------------------------------------

using Sdr = std::array<uint8_t, 64>;
constexpr Six kOwn = {201, 202, 203, 204, 205, 206};

inline Sdr FullRecord(const std::string &name, uint8_t mask, const Six &six = kOwn) {
    Sdr sdr;
    for (size_t i = 0; i < sdr.size(); ++i) {
        sdr[i] = static_cast<uint8_t>(0x80 + i); // whatever is not read must stay
    }
    sdr[3] = 0x01;
    sdr[18] = mask;
    std::copy(six.begin(), six.end(), sdr.begin() + 36);
    sdr[47] = static_cast<uint8_t>(0xC0 + name.size());
    std::copy(name.begin(), name.end(), sdr.begin() + 48);
    return sdr;
}
inline Sdr With(Sdr sdr, const Six &six) {
    std::copy(six.begin(), six.end(), sdr.begin() + 36);
    return sdr;
}
inline Sdr Applied(Sdr sdr) {
    ModifySensorThresholdByFile(sdr.data());
    return sdr;
}

// ---- lines and calls -------------------------------------------------------------------------------

inline std::string Line(const std::string &level, const std::string &function, const std::string &text,
                        int module = 42) {
    return level + " " + std::to_string(module) + " " + function + ": " + text;
}
inline Lines Error(const std::string &function, const std::string &text, int module = 42) {
    return {"stat", Line("error", function, text, module)};
}
inline Lines Info(const std::string &function, const std::string &text) {
    return {Line("info", function, text)};
}
inline Lines Warning(const std::string &function, const std::string &text) {
    return {Line("warn", function, text)};
}
inline Lines Updated(const std::string &name, uint8_t mask, const Six &six, bool good) {
    char text[160];
    std::snprintf(text, sizeof(text), "update sensor %s mask 0x%x, threshold %u, %u, %u, %u, %u, %u %s",
                  name.c_str(), mask, six[0], six[1], six[2], six[3], six[4], six[5],
                  good ? "successfully" : "failed");
    return Info(kUpdate, text);
}
inline Lines CannotModify(const std::string &name, unsigned entry_mask, unsigned sdr_mask) {
    char text[96];
    std::snprintf(text, sizeof(text), "sensor %s last mask %x, now mask %x, cannot modify threshold",
                  name.c_str(), entry_mask, sdr_mask);
    return Warning(kUpdate, text);
}
inline Lines FetchFailed(const std::string &function) {
    return Error(function, "MW Get Sensor Thresh Info failed!");
}

// Everything that was said and counted.
inline Lines Written() {
    return tests::AllLines(kUnit);
}
inline Lines Calls() {
    Lines calls;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall) {
            calls.push_back(event.function);
        }
    }
    return calls;
}
inline std::string ArgsOf(const std::string &function) {
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function == function) {
            return event.args;
        }
    }
    return "not called";
}

inline void Fail(const std::string &call) {
    sim::Fault fault;
    fault.call = call;
    sim::AddFault(fault);
}

// ---- what the overlay does, told once more ---------------------------------------------------------
// An order rule: the threshold `below` lies under the threshold `above` (indices into Six).
struct Rule {
    int below, above;
};
enum { kUnr, kUc, kUnc, kLnr, kLc, kLnc };

// By the three bits of one side, from the least significant: LNC LC LNR, or UNC UC UNR.
inline std::vector<Rule> RulesOf(unsigned mask) {
    const std::vector<Rule> lower[8] = {{},
                                        {},
                                        {},
                                        {{kLc, kLnc}}, // LC and LNC
                                        {},
                                        {{kLnr, kLnc}},              // LNR and LNC
                                        {{kLnr, kLc}},               // LNR and LC
                                        {{kLc, kLnc}, {kLnr, kLc}}}; // all three
    const std::vector<Rule> upper[8] = {{},
                                        {},
                                        {},
                                        {{kUnc, kUc}}, // UNC and UC
                                        {},
                                        {{kUnc, kUnr}},              // UNC and UNR
                                        {{kUc, kUnr}},               // UC and UNR
                                        {{kUnc, kUc}, {kUc, kUnr}}}; // all three
    std::vector<Rule> rules = lower[mask & 7];
    const std::vector<Rule> &more = upper[mask >> 3 & 7];
    rules.insert(rules.end(), more.begin(), more.end());
    return rules;
}
inline bool InOrder(unsigned mask, const Six &six) {
    for (const Rule &rule : RulesOf(mask)) {
        if (six[rule.below] >= six[rule.above]) {
            return false;
        }
    }
    return true;
}
// Bit 5 of the mask is the first of the six, bit 0 the last.
inline Six Merged(unsigned mask, const Six &own, const Six &stored) {
    Six six = own;
    for (int i = 0; i < 6; ++i) {
        if (mask & 0x20u >> i) {
            six[i] = stored[i];
        }
    }
    return six;
}

struct Outcome {
    Sdr sdr;
    Lines lines;
};
inline size_t NameLength(const Bytes &image, size_t at) {
    size_t length = 0;
    while (length < 16 && image[at + length] != 0) {
        ++length;
    }
    return length;
}
inline Outcome Expected(const Bytes &image, const Sdr &sdr) {
    const size_t count = std::min<size_t>(image[4] | image[5] << 8, kEntries);
    const size_t wanted = sdr[47] % 32;
    for (size_t i = 0; sdr[3] == 1 && i < count; ++i) {
        const size_t at = EntryAt(i);
        if (NameLength(image, at) != wanted ||
            !std::equal(sdr.begin() + 48, sdr.begin() + 48 + wanted, image.begin() + at)) {
            continue;
        }
        const std::string name(image.begin() + at, image.begin() + at + wanted);
        const unsigned mask = image[at + 26];
        if (mask != sdr[18]) {
            return {sdr, CannotModify(name, mask, sdr[18])};
        }
        Six own, stored;
        std::copy_n(sdr.begin() + 36, 6, own.begin());
        std::copy_n(image.begin() + at + 17, 6, stored.begin());
        const Six six = Merged(mask, own, stored);
        const bool good = InOrder(mask, six);
        return {good ? With(sdr, six) : sdr, Updated(name, sdr[18], six, good)};
    }
    return {sdr, {}};
}

class ThresholdTest : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
        std::filesystem::remove_all(
            sim::RealPath("/conf")); // of a test before, where one process runs several
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
};

} // namespace thresh
#endif
