// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the extended store share: its files, and what a call left in the trace.
#ifndef OXA_TESTS_STORE_STORE_FIXTURE_H
#define OXA_TESTS_STORE_STORE_FIXTURE_H

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/store.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"

namespace store {

inline constexpr char kSdrFile[] = "/var/tmp/extSDR.dat";
inline constexpr char kDevTabFile[] = "/var/tmp/extDevTab.dat";
inline constexpr char kUnit[] = "specific_sdr_file.c";

using tests::Bytes;

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

inline std::vector<std::string> DebugLines() {
    return tests::LinesOf({sim::Kind::kDebug}, kUnit);
}
inline std::vector<std::string> LogLines() {
    return tests::LogLines(kUnit);
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
