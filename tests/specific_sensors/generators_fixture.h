// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the generators of single sensors share: descriptions, records as bytes, a call whose
// output area shows every byte written, and the lines that the call left.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_GENERATORS_FIXTURE_H
#define OXA_TESTS_SPECIFIC_SENSORS_GENERATORS_FIXTURE_H

#include <array>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/platform.h"
#include "oxa/specific_sensors.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"
#include "support/record_differ.h"

namespace generators {

using tests::Bytes;
using tests::Literal;

inline constexpr uint32_t kTemp = 0x0100, kVolt = 0x0200, kFan = 0x0403, kPower = 0x0803, kMemory = 0x0C01,
                          kDisk = 0x0D00, kCard = 0x1501, kGpuCard = 0x1700;
inline constexpr int kNvme = 59;
inline constexpr char kStoreFile[] = "/var/tmp/extSDR.dat";

struct Generator {
    const char *name;
    GenSpecificSDRFn function;
    uint32_t sensor_class;
    bool full; // a full record, else a compact one
};
inline constexpr Generator kTempGenerator = {"GenSpecificTempSDR", GenSpecificTempSDR, kTemp, true};
inline constexpr Generator kVoltGenerator = {"GenSpecificVoltSDR", GenSpecificVoltSDR, kVolt, true};
inline constexpr Generator kPowerGenerator = {"GenSpecificPowerSDR", GenSpecificPowerSDR, kPower, true};
inline constexpr Generator kFanGenerator = {"GenSpecificFanSpeedSDR", GenSpecificFanSpeedSDR, kFan, true};
inline constexpr Generator kDiskGenerator = {"GenSpecificStatusSDR", GenSpecificStatusSDR, kDisk, false};
inline constexpr Generator kCardGenerator = {"GenSpecificCardStatusSDR", GenSpecificCardStatusSDR, kCard,
                                             false};
inline constexpr Generator kGpuCardGenerator = {"GenSablinGPUCardStatusSDR", GenSablinGPUCardStatusSDR,
                                                kGpuCard, false};
inline constexpr Generator kMemoryGenerator = {"GenMEMStatusSpecificSDR", GenMEMStatusSpecificSDR, kMemory,
                                               false};
inline const std::vector<Generator> kAllGenerators = {kTempGenerator,    kVoltGenerator,  kPowerGenerator,
                                                      kFanGenerator,     kDiskGenerator,  kCardGenerator,
                                                      kGpuCardGenerator, kMemoryGenerator};
inline const std::vector<Generator> kFullGenerators = {kTempGenerator, kVoltGenerator, kPowerGenerator,
                                                       kFanGenerator};
inline const std::vector<Generator> kCompactGenerators = {kDiskGenerator, kCardGenerator, kGpuCardGenerator,
                                                          kMemoryGenerator};

// All thresholds told apart, in order, and none of them at home in a template.
inline SpecificSensorParam Description(uint32_t sensor_class, int device_type, int slot, int sub_type = 0) {
    SpecificSensorParam param = {};
    param.dwSensorDevType = sensor_class;
    param.ucDeviceType = static_cast<uint8_t>(device_type);
    param.SlotId = static_cast<uint8_t>(slot);
    param.wBitmap = 0x3F;
    param.ucUNR = 110;
    param.ucUC = 100;
    param.ucUNC = 90;
    param.ucLNC = 10;
    param.ucLC = 5;
    param.ucLNR = 2;
    param.ucBrenmorSensorIndex = 0;
    param.SubDeviceType = static_cast<uint8_t>(sub_type);
    param.ucSensorSeq = 5;
    param.ucSecondPort = 9;
    param.ucReserved = 0xEE;
    return param;
}
inline SpecificSensorParam Description(const Generator &generator, int device_type, int slot,
                                       int sub_type = 0) {
    return Description(generator.sensor_class, device_type, slot, sub_type);
}

struct Made {
    int result = -1;
    Bytes record; // as many bytes as the result says
    int At(size_t offset) const {
        return offset < record.size() ? record[offset] : -1;
    }
    std::string Name() const {
        const size_t at = At(SDR_RECORD_TYPE) == 0x01 ? 48u : 32u;
        return record.size() > at ? std::string(record.begin() + static_cast<long>(at), record.end()) : "";
    }
};

// The output area is longer than any record and filled with a pattern: what the generator did not promise to
// write must still be there.  A bounded copy that is made to fail leaves rubbish by itself: then only the
// surroundings count.
inline constexpr uint8_t kPattern = 0xC9;
enum class Output { kChecked, kMayBeSpoilt };
inline Made Make(const Generator &generator, SpecificSensorParam &param, Output output = Output::kChecked) {
    std::array<uint8_t, 96> area;
    area.fill(kPattern);
    Made made;
    made.result = generator.function(&param, area.data() + 16, param.dwSensorDevType);
    const bool written = made.result != GEN_SDR_FAILED && made.result != GEN_SDR_SKIPPED;
    const size_t length = written ? static_cast<size_t>(made.result) : 0;
    EXPECT_LE(length, 64u);
    const size_t own = output == Output::kChecked ? length : 64;
    for (size_t at = 0; at < area.size(); ++at) {
        if (at < 16 || at >= 16 + own) {
            EXPECT_EQ(area[at], kPattern) << generator.name << " wrote byte " << static_cast<int>(at) - 16;
        }
    }
    made.record.assign(area.begin() + 16,
                       area.begin() + 16 + static_cast<long>(std::min<size_t>(length, 64)));
    return made;
}
inline Made Make(const Generator &generator, SpecificSensorParam &&param) {
    return Make(generator, param);
}

// "warn 42 GenSpecificTempSDR: this sensor is not support!"
inline std::vector<std::string> Lines() {
    return tests::LinesOfUnits({sim::Kind::kLog});
}
// Only what the generator itself said.
inline std::vector<std::string> LinesOf(const Generator &generator) {
    std::vector<std::string> lines;
    for (const std::string &line : Lines()) {
        if (line.find(std::string(" ") + generator.name + ": ") != std::string::npos) {
            lines.push_back(line);
        }
    }
    return lines;
}

inline void Fail(const std::string &call) {
    sim::Fault fault;
    fault.call = call;
    sim::AddFault(fault);
}
inline void Fail(const std::string &call, uint32_t occurrence) {
    sim::Fault fault;
    fault.call = call;
    fault.occurrence = occurrence;
    sim::AddFault(fault);
}

// These records stand in the extended store, one slot each.
inline void Store(const std::vector<Bytes> &records) {
    Bytes file;
    for (Bytes record : records) {
        record.resize(64, 0xFF);
        file.insert(file.end(), record.begin(), record.end());
    }
    sim::WriteFile(kStoreFile, file);
}

class GeneratorTest : public testing::Test {
protected:
    void SetUp() override {
        Board(CUSTOM_ID_DEFAULT);
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    }
    static sim::Board &Board(uint32_t custom_id, uint16_t board_id = 0x1234) {
        sim::Board board;
        board.custom_id = custom_id;
        board.board_id = board_id;
        sim::Start(board);
        std::filesystem::remove_all(sim::RealPath("/var")); // also when the tests share a process
        return sim::CurrentBoard();
    }
    // The slot stands at the front of the machine and carries this silk text.
    static void AddSlot(uint8_t slot, const std::string &silk) {
        sim::PcieSlot pcie;
        pcie.slot = slot;
        pcie.location = 1;
        pcie.silk = silk;
        sim::CurrentBoard().pcie.slots.push_back(pcie);
    }
    // A user set UNR UC UNC LNR LC LNC of this sensor, under this mask.
    static void SetByUser(const std::string &name, uint16_t mask, const std::array<uint8_t, 6> &thresholds) {
        sim::ThresholdEntry entry;
        entry.name = name;
        entry.mask = mask;
        uint8_t *const fields[] = {&entry.unr, &entry.uc, &entry.unc, &entry.lnr, &entry.lc, &entry.lnc};
        for (size_t i = 0; i < thresholds.size(); ++i) {
            *fields[i] = thresholds[i];
        }
        sim::CurrentBoard().thresholds = {entry};
    }
};

class LiteralRecord : public GeneratorTest {
protected:
    // `head` is all of the record but its name.
    static void ExpectRecord(const Made &made, const std::string &head, const std::string &name) {
        Bytes record = Literal(head);
        record.insert(record.end(), name.begin(), name.end());
        EXPECT_EQ(made.Name(), name);
        EXPECT_EQ(made.result, static_cast<int>(record.size()));
        EXPECT_TRUE(tests::SameSdr(record, made.record));
    }
};

} // namespace generators
#endif
