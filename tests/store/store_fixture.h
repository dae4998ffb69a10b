// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the extended store share: its files, and what a call left in the trace.
#ifndef OXA_TESTS_STORE_STORE_FIXTURE_H
#define OXA_TESTS_STORE_STORE_FIXTURE_H

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/exports.h"
#include "simulator/simulator.h"

namespace store {

inline constexpr char kSdrFile[] = "/var/tmp/extSDR.dat";
inline constexpr char kDevTabFile[] = "/var/tmp/extDevTab.dat";
inline constexpr char kUnit[] = "specific_sdr_file.c";

using Bytes = std::vector<uint8_t>;

inline std::vector<std::string> Calls() {
    std::vector<std::string> names;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function != "oxa_strerror_s") {
            names.push_back(event.function);
        }
    }
    return names;
}

inline const sim::Event &CallOf(const std::string &function) {
    static const sim::Event kNone;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function == function) {
            return event;
        }
    }
    ADD_FAILURE() << function << " was not called";
    return kNone;
}

// Debug lines without their "[file:line]", which is checked here.
inline std::vector<std::string> DebugLines() {
    std::vector<std::string> lines;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind != sim::Kind::kDebug) {
            continue;
        }
        EXPECT_EQ(event.number, 132u);
        EXPECT_THAT(event.text, testing::MatchesRegex("\\[specific_sdr_file\\.c:[0-9]+\\](.|\n)*"));
        lines.push_back(event.text.substr(event.text.find(']') + 1));
    }
    return lines;
}

// Log lines as "level module function: text", the number of a "line=" masked.
inline std::vector<std::string> LogLines() {
    std::vector<std::string> lines;
    for (const sim::Event &event : sim::Logs()) {
        EXPECT_EQ(event.file, kUnit);
        static const char *const kLevels[] = {"debug", "info", "warn", "error"};
        std::string text = event.text;
        const size_t at = text.find("line=");
        if (at != std::string::npos) {
            const size_t end = text.find_first_not_of("0123456789", at + 5);
            EXPECT_GT(end, at + 5) << text;
            text = text.substr(0, at + 5) + "#" + (end == std::string::npos ? "" : text.substr(end));
        }
        lines.push_back(std::string(kLevels[static_cast<int>(event.level)]) + " " +
                        std::to_string(event.number) + " " + event.function + ": " + text);
    }
    return lines;
}

// Every call of this name fails.
inline void Fail(const std::string &call, int errno_value = 0) {
    sim::Fault fault;
    fault.call = call;
    fault.errno_value = errno_value;
    sim::AddFault(fault);
}

class StoreTest : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(sim::Board{});
        std::filesystem::remove_all(sim::RealPath("/var")); // also when the tests share a process
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    }
};

} // namespace store
#endif
