// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the FRU locators, of their pools and of the two INI files share: machines with and
// without FRU id offset, a generator's record between guard bytes, and every line as one text.
#ifndef OXA_TESTS_SUPPORT_FRU_FIXTURE_H
#define OXA_TESTS_SUPPORT_FRU_FIXTURE_H

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/platform.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/child.h"
#include "support/log_lines.h"
#include "support/record_differ.h"

namespace fru {

using tests::Bytes;

inline constexpr char kIdFile[] = "/var/tmp/purchaseCardFruId";
inline constexpr char kRecordFile[] = "/var/SpecificSDRRec";

inline constexpr uint16_t kUnknownCard = 0x09E0; // in no row of the catalogue
inline constexpr uint32_t kPsuClass = 0xFF0A;
inline constexpr uint32_t kSubCardClass = 0x170B;
inline constexpr uint16_t kSl200 = 0x040B;

// ---- machines -----------------------------------------------------------------------------------

inline sim::Board Machine(uint32_t custom_id, uint32_t inner_product_id) {
    sim::Board board;
    board.custom_id = custom_id;
    board.inner_product_id = inner_product_id;
    return board;
}
inline sim::Board PlainMachine() { // FRU id offset 0
    return Machine(CUSTOM_ID_DEFAULT, 0);
}
inline sim::Board ShiftedMachine() { // FRU id offset 8
    return Machine(CUSTOM_ID_SABLIN, 7);
}

// ---- one record ---------------------------------------------------------------------------------

inline SpecificSensorParam Card(uint32_t type, uint8_t slot) {
    SpecificSensorParam param;
    std::memset(&param, 0xC3, sizeof(param)); // what no locator reads
    param.dwSensorDevType = type;
    param.SlotId = slot;
    return param;
}

inline SpecificSensorParam Psu(uint8_t index) {
    SpecificSensorParam param = Card(kPsuClass, index);
    param.ucDeviceType = index;
    return param;
}

struct Built {
    uint8_t length = 0;
    Bytes record; // the first `length` bytes of the output
};

// Calls a generator as the dispatch does: zero-filled output, here between guard bytes.  A locator is 32
// bytes at most; what lies behind it is not its business, and neither is the description.
inline Built Build(GenSpecificSDRFn generator, SpecificSensorParam param, uint32_t key = 0x5AA5F00F) {
    struct {
        std::array<uint8_t, 32> below;
        std::array<uint8_t, SDR_SLOT_SIZE> sdr;
        std::array<uint8_t, 32> above;
    } area;
    area.below.fill(0xEE);
    area.sdr.fill(0);
    area.above.fill(0xEE);
    const SpecificSensorParam before = param;
    Built built;
    built.length = generator(&param, area.sdr.data(), key);
    EXPECT_EQ(std::memcmp(&before, &param, sizeof(param)), 0) << "the description was changed";
    EXPECT_THAT(area.below, testing::Each(0xEE));
    EXPECT_THAT(area.above, testing::Each(0xEE));
    EXPECT_THAT(Bytes(area.sdr.begin() + 32, area.sdr.end()), testing::Each(0));
    EXPECT_LE(built.length, 32);
    built.record.assign(area.sdr.begin(), area.sdr.begin() + std::min<size_t>(built.length, area.sdr.size()));
    return built;
}
inline Built BuildPsu(uint8_t index) {
    return Build(GenFruOfPsuSpecificSDR, Psu(index));
}
inline Built BuildCard(uint16_t type, uint8_t slot) {
    return Build(GenFruOfPurchaseCardSpecificSDR, Card(type, slot));
}
inline Built BuildSl200(uint8_t slot, uint16_t type = kSl200) {
    return Build(GenFruOfSL200CardSpecificSDR, Card(type, slot));
}
inline Built BuildSubCard(uint8_t slot) {
    return Build(GenFruOfSubCardSpecificSDR, Card(kSubCardClass, slot));
}

// ---- what was said ------------------------------------------------------------------------------

// Every line in order: "info 42 GenFruOfPsuSpecificSDR: text", "debug 130: text", "audit 191: text".
inline std::vector<std::string> Lines() {
    return tests::LinesOfUnits({sim::Kind::kLog, sim::Kind::kDebug, sim::Kind::kAudit});
}

// The calls of the INI library, in order: "IniSetUInt(file=... section=...)".
inline std::vector<std::string> IniCalls() {
    std::vector<std::string> calls;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function.find("Ini") != std::string::npos) {
            calls.push_back(event.function + "(" + event.args + ")");
        }
    }
    return calls;
}

// ---- files and faults ---------------------------------------------------------------------------

inline std::string TextOf(const char *path) {
    const Bytes bytes = sim::ReadFile(path);
    return {bytes.begin(), bytes.end()};
}
inline void Put(const char *path, const std::string &text) {
    sim::WriteFile(path, Bytes(text.begin(), text.end()));
}
inline void PutDirectory(const char *path) {
    std::filesystem::create_directories(sim::RealPath(path));
}
inline std::string EveryByte() {
    std::string text;
    for (int byte = 0; byte < 256; ++byte) {
        text += static_cast<char>(byte);
    }
    return text;
}

// Every call of this name fails.
inline void Fail(const std::string &call, const std::string &args = "") {
    sim::Fault fault;
    fault.call = call;
    if (!args.empty()) {
        fault.args = args;
    }
    sim::AddFault(fault);
}

inline void StartClean(const sim::Board &board) {
    sim::Start(sim::Board{}); // no files yet
    std::filesystem::remove_all(sim::RealPath("/var"));
    sim::Start(board);
}

// Runs the work with a fresh copy of the library: pools and offset cache have no reset.  The work calls Start
// itself; the caller must not have used the library.
template <class Work> void Apart(const std::string &what, const Work &work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SCOPED_TRACE(what);
        work();
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
        tests::EndChild(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << what << ": status " << status;
}

class FruTest : public testing::Test {
protected:
    void SetUp() override {
        StartClean(PlainMachine());
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    }
};

} // namespace fru
#endif
